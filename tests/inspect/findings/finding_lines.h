#pragma once

#include <string>
#include <utility>
#include <vector>

#include "dalvo/inspect/findings/check.h"
#include "dalvo/inspect/findings/finding.h"
#include "dalvo/inspect/findings/rules.h"
#include "dalvo/inspect/runs/run.h"

/// Findings as lines of text, so that a row of a test can hold them.
namespace dalvo::testing {

using Lines = std::vector<std::string>;

/// "line:column-end_column", behind the source where that is not "t".
inline std::string shown_place(const inspect::Place &place)
{
    return (place.source == "t" ? "" : place.source + ":") + std::to_string(place.line) + ":" +
           std::to_string(place.column) + "-" + std::to_string(place.end_column);
}

/// "line:column-end_column rule severity: message".
inline std::string shown_finding(const inspect::Finding &finding)
{
    return shown_place(finding.place) + " " + std::string(inspect::info_of(finding.rule).name) +
           (finding.severity == inspect::Severity::error ? " error: " : " warning: ") + finding.message;
}

/// The findings, a line each.
inline Lines shown(const std::vector<inspect::Finding> &findings)
{
    Lines lines;
    for (const inspect::Finding &finding : findings) {
        lines.push_back(shown_finding(finding));
    }
    return lines;
}

/// The findings with all that they carry. A note whose place the message names is "told".
inline Lines shown_whole(const std::vector<inspect::Finding> &findings)
{
    Lines lines;
    for (const inspect::Finding &finding : findings) {
        lines.push_back(shown_finding(finding));
        if (!finding.accepted.empty()) {
            lines.push_back("  accepts: " + finding.accepted);
        }
        for (const std::string &suggestion : finding.suggestions) {
            lines.push_back("  suggests: " + suggestion);
        }
        for (const inspect::Note &note : finding.notes) {
            const std::string start = note.is_in_message ? "  told " : "  note ";
            lines.push_back(start + shown_place(note.place) + ": " + note.message);
        }
        for (const inspect::Fix &fix : finding.fixes) {
            lines.push_back((fix.is_safe ? "  safe fix: " : "  fix: ") + fix.title);
        }
    }
    return lines;
}

/// A section that a row chooses: null for a look at every section.
using Chosen = const char *;
constexpr Chosen every_section = nullptr;
constexpr Chosen no_section = "";

/// The findings of `run`, with `section` chosen.
inline std::vector<inspect::Finding> findings_of(inspect::Run run, Chosen section)
{
    if (section == every_section) {
        return inspect::check_every_section(run);
    }
    run.choose_section(section);
    return inspect::check(run);
}

/// The built-in text, and on top of it `text`, called "t".
inline inspect::Run run_with(const std::string &text,
                             const inspect::Catalogue &catalogue = inspect::Catalogue::standard())
{
    inspect::Run run(catalogue);
    run.add_default();
    run.add_text("t", text);
    return run;
}

} // namespace dalvo::testing
