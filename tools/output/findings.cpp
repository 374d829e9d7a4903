#include "tools/output/findings.h"

#include <unistd.h>

#include <algorithm>
#include <iostream>
#include <sstream>

#include "dalvo/inspect/findings/check.h"
#include "dalvo/inspect/findings/print.h"
#include "tools/output/diagnostics.h"
#include "tools/output/jsontext.h"
#include "tools/output/terminal.h"
#include "tools/output/width.h"

namespace dalvo::tools {

namespace {

using inspect::Finding;
using nlohmann::ordered_json;

/// null where there is none.
template <class Number> ordered_json number_json(Number number)
{
    return number != 0 ? ordered_json(number) : ordered_json();
}

ordered_json note_json(const inspect::Note &note)
{
    ordered_json json = {{"text", note.message}};
    json["file"] = note.place.source.empty() ? ordered_json() : ordered_json(note.place.source);
    json["line"] = number_json(note.place.line);
    json["column"] = number_json(note.place.line != 0 ? note.place.column : 0);
    json["end_column"] = number_json(note.place.line != 0 ? note.place.end_column : 0);
    return json;
}

/// The line that the message names; 0 for none.
std::uint64_t related_line(const Finding &finding)
{
    for (const inspect::Note &note : finding.notes) {
        if (note.is_in_message && note.place.source == finding.place.source) {
            return note.place.line;
        }
    }
    return 0;
}

ordered_json json_of(const Finding &finding)
{
    const bool has_line = finding.place.line != 0;
    ordered_json json;
    json["file"] = finding.place.source.empty() ? ordered_json() : ordered_json(finding.place.source);
    json["line"] = number_json(finding.place.line);
    json["column"] = number_json(has_line ? finding.place.column : 0);
    json["end_column"] = number_json(has_line ? finding.place.end_column : 0);
    json["severity"] = finding.severity == inspect::Severity::error ? "error" : "warning";
    json["name"] = info_of(finding.rule).name;
    json["text"] = finding.message;
    if (!finding.option.empty()) {
        json["option"] = finding.option;
    }
    if (!finding.accepted.empty()) {
        json["accepted"] = finding.accepted;
    }
    if (!finding.suggestions.empty()) {
        json["suggestions"] = finding.suggestions;
    }
    if (related_line(finding) != 0) {
        json["related_line"] = related_line(finding);
    }
    if (!finding.notes.empty()) {
        json["notes"] = ordered_json::array();
        std::transform(finding.notes.begin(), finding.notes.end(), std::back_inserter(json["notes"]), note_json);
    }
    return json;
}

bool is_about_input(const Finding &finding)
{
    return finding.rule == inspect::Rule::unreadable_file || finding.rule == inspect::Rule::unknown_section;
}

} // namespace

void add_colour(CLI::App &command, ColourChoice &choice)
{
    command.add_option("--color", choice.when, "Whether findings are coloured: auto, always or never")
        ->check(CLI::IsMember({"auto", "always", "never"}))
        ->type_name("WHEN");
}

void report(const std::vector<Finding> &findings, const ColourChoice &choice, bool with_counts)
{
    const bool is_coloured = choice.when == "auto" ? has_colour(STDERR_FILENO) : choice.when == "always";
    std::ostringstream text;
    print(text, findings, {is_coloured, columns_of});
    if (with_counts && !findings.empty()) {
        text << counts(findings) << '\n';
    }
    std::cerr << text.str();
}

int report_errors(const inspect::Run &run, const ColourChoice &choice)
{
    std::vector<Finding> findings = check(run);
    const auto is_warning = [](const Finding &finding) { return finding.severity == inspect::Severity::warning; };
    findings.erase(std::remove_if(findings.begin(), findings.end(), is_warning), findings.end());
    report(findings, choice, false);
    return status_of(findings);
}

int status_of(const std::vector<Finding> &findings)
{
    return std::any_of(findings.begin(), findings.end(), is_about_input) ? status_usage
           : has_errors(findings)                                        ? status_problem
                                                                         : status_fine;
}

void write_findings_json(std::ostream &out, const std::vector<Finding> &findings)
{
    ordered_json json;
    json["findings"] = ordered_json::array();
    std::transform(findings.begin(), findings.end(), std::back_inserter(json["findings"]), json_of);
    json["errors"] = count(findings, inspect::Severity::error);
    json["warnings"] = count(findings, inspect::Severity::warning);
    out << json_text(json);
}

} // namespace dalvo::tools
