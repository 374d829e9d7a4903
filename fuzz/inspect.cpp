// Any run, looked at: it applies where a setter loads and applies it, and to the same record; there is an error among
// its findings exactly where it does not; what is printed is fit for a terminal; and each fix mends its finding.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "dalvo/inspect/findings/check.h"
#include "dalvo/inspect/findings/print.h"
#include "dalvo/inspect/runs/resolution.h"
#include "fuzz/target.h"
#include "tests/inspect/findings/filled_by_setter.h"
#include "tests/inspect/random_runs.h"
#include "tests/support/records.h"

namespace {

using dalvo::Configuration;
using dalvo::fuzz::require;
using dalvo::inspect::Catalogue;
using dalvo::inspect::Finding;
using dalvo::inspect::Fix;
using dalvo::inspect::Run;
using dalvo::testing::RunPlan;

using Findings = std::vector<Finding>;
using Pieces = std::vector<std::string>;

// Each look at a text takes its time, and most of it goes into suggestions for unknown names.
constexpr std::size_t most_bytes = 1024; // of an input that count
constexpr std::size_t most_sections = 2; // that are chosen in turn, the unnamed one among them
constexpr std::size_t most_fixes = 3;    // of the last text that are made

Pieces split(const std::string &bytes, char separator)
{
    Pieces pieces(1);
    for (const char c : bytes) {
        if (c == separator) {
            pieces.emplace_back();
        } else {
            pieces.back() += c;
        }
    }
    return pieces;
}

/// Up to three texts with a separator before each; before the first one stands a line with the section that is chosen,
/// then an assignment by hand a line. A single piece is a text.
RunPlan plan_of(const std::string &bytes)
{
    RunPlan plan;
    plan.has_default_text = !bytes.empty() && bytes.front() % 4 != 0; // most inputs come on top of the built-in text
    const Pieces pieces = split(bytes, '\x1e');
    if (pieces.size() == 1) {
        plan.texts = pieces;
        return plan;
    }
    const Pieces head = split(pieces[0], '\n');
    plan.section = head[0];
    for (std::size_t i = 1; i < head.size(); ++i) {
        const std::size_t equals = std::min(head[i].find('='), head[i].size());
        plan.direct.emplace_back(head[i].substr(0, equals), head[i].substr(std::min(equals + 1, head[i].size())));
    }
    for (std::size_t i = 1; i < std::min<std::size_t>(pieces.size(), 4); ++i) {
        plan.texts.push_back(pieces[i]);
    }
    return plan;
}

Run run_of(const RunPlan &plan)
{
    return dalvo::testing::run_of(plan, Catalogue::standard());
}

std::string printed(const Findings &findings)
{
    std::ostringstream out;
    print(out, findings);
    return out.str();
}

/// No byte of it does anything to a terminal but show, or end a line.
void require_printable(const Findings &findings)
{
    const std::string text = printed(findings);
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        const bool is_control = (byte < 0x20 && byte != '\n') || byte == 0x7F;
        const bool is_control_of_utf8 = byte == 0xC2 && static_cast<unsigned char>(text[i + 1]) < 0xA0;
        require(!is_control && !is_control_of_utf8, "what is printed has no control byte", text);
    }
}

/// What `check` says of the run, once it is held to what a setter does.
Findings checked(const RunPlan &plan)
{
    const Run run = run_of(plan);
    Findings findings = check(run);
    const dalvo::inspect::Resolution resolution(run);
    const std::optional<Configuration> filled = dalvo::testing::filled_by_setter(plan);
    require(resolution.applies() == filled.has_value(), "a run applies where a setter loads and applies it",
            printed(findings));
    require(has_errors(findings) != filled.has_value(), "there is an error where a setter throws, and only there",
            printed(findings));
    if (filled) {
        for (const std::string &field : dalvo::testing::differing_fields(resolution.record(), *filled)) {
            require(false, "a run comes to the record that a setter fills", field);
        }
    }
    return findings;
}

/// What `check_every_section` says is what `check` says of some section, or of none.
void require_all_sections(const RunPlan &plan)
{
    const Findings every = check_every_section(run_of(plan));
    require_printable(every);
    const auto sections = run_of(plan).sections(); // the unnamed one is among them
    bool is_wrong = false;
    RunPlan chosen = plan;
    for (std::size_t i = 0; i < std::min(sections.size(), most_sections); ++i) {
        chosen.section = sections[i].name;
        is_wrong = has_errors(checked(chosen)) || is_wrong;
    }
    require(!is_wrong || has_errors(every), "an error with a section chosen is one of a look at all", printed(every));
    require(is_wrong || !has_errors(every) || sections.size() > most_sections,
            "an error of a look at all is one with some section chosen", printed(every));
}

/// How many findings of a rule a line of that content has.
std::map<std::pair<dalvo::inspect::Rule, std::string>, std::size_t> counts_of(const std::string &text,
                                                                              const Findings &findings)
{
    const Pieces lines = split(text, '\n');
    std::map<std::pair<dalvo::inspect::Rule, std::string>, std::size_t> counts;
    for (const Finding &finding : findings) {
        ++counts[{finding.rule, lines[finding.place.line - 1]}];
    }
    return counts;
}

void require_mended(const std::string &text, const Findings &findings, const Finding &finding, const Fix &fix)
{
    const std::string mended = fixed_text(text, fix);
    const std::pair<dalvo::inspect::Rule, std::string> key = {finding.rule, split(text, '\n')[finding.place.line - 1]};
    require(counts_of(mended, dalvo::inspect::check_text("t", mended))[key] < counts_of(text, findings)[key],
            "a fix mends its finding", mended);
}

void require_fixes(const std::string &text)
{
    const Findings findings = dalvo::inspect::check_text("t", text);
    std::size_t left = most_fixes;
    for (const Finding &finding : findings) {
        for (const Fix &fix : finding.fixes) {
            if (left > 0) {
                require_mended(text, findings, finding, fix);
                --left;
            }
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const RunPlan plan = plan_of(dalvo::fuzz::bytes_of(data, std::min(size, most_bytes)));
    require_printable(checked(plan));
    require_all_sections(plan);
    require_fixes(plan.texts.back());
    return 0;
}
