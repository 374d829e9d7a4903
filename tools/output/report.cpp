#include "tools/output/report.h"

#include <algorithm>
#include <ostream>

#include "tools/output/diagnostics.h"
#include "tools/output/jsontext.h"

namespace dalvo::tools {

namespace {

constexpr const char *bold = "\033[1m";
constexpr const char *red = "\033[1;31m";
constexpr const char *magenta = "\033[1;35m";
constexpr const char *green = "\033[1;32m";
constexpr const char *plain_text = "\033[0m";

const char *severity_name(Severity severity)
{
    return severity == Severity::error ? "error" : "warning";
}

std::string in_colour(const std::string &text, const char *colour, bool with_colour)
{
    return with_colour ? colour + text + plain_text : text;
}

std::string number_of(std::size_t number, const std::string &thing)
{
    return std::to_string(number) + " " + thing + (number == 1 ? "" : "s");
}

nlohmann::ordered_json json_of(const Finding &finding)
{
    nlohmann::ordered_json json;
    json["file"] = finding.file;
    json["line"] = finding.line;
    json["column"] = finding.column;
    json["severity"] = severity_name(finding.severity);
    json["name"] = name_of(finding.problem);
    json["text"] = finding.text;
    if (!finding.option.empty()) {
        json["option"] = finding.option;
    }
    if (!finding.accepted.empty()) {
        json["accepted"] = finding.accepted;
    }
    if (!finding.suggestions.empty()) {
        json["suggestions"] = finding.suggestions;
    }
    if (finding.related_line != 0) {
        json["related_line"] = finding.related_line;
    }
    return json;
}

} // namespace

std::size_t count(const std::vector<Finding> &findings, Severity severity)
{
    return static_cast<std::size_t>(
        std::count_if(findings.begin(), findings.end(), [&](const Finding &f) { return f.severity == severity; }));
}

void write_text(std::ostream &out, const std::vector<Finding> &findings, bool with_colour)
{
    for (const Finding &finding : findings) {
        const std::string place =
            escaped(finding.file) + ":" + std::to_string(finding.line) + ":" + std::to_string(finding.column) + ":";
        const char *const colour = finding.severity == Severity::error ? red : magenta;
        out << in_colour(place, bold, with_colour) << ' '
            << in_colour(std::string(severity_name(finding.severity)) + ":", colour, with_colour) << ' '
            << finding.text;
        if (is_warning(finding.problem)) {
            out << " [" << name_of(finding.problem) << ']';
        }
        // Indented, so that no line of a text can pass for a finding.
        out << "\n    " << finding.excerpt.text << "\n    " << std::string(finding.excerpt.caret, ' ')
            << in_colour("^", green, with_colour) << '\n';
    }
}

void write_json(std::ostream &out, const std::vector<Finding> &findings)
{
    nlohmann::ordered_json json;
    json["findings"] = nlohmann::ordered_json::array();
    for (const Finding &finding : findings) {
        json["findings"].push_back(json_of(finding));
    }
    json["errors"] = count(findings, Severity::error);
    json["warnings"] = count(findings, Severity::warning);
    out << json_text(json);
}

std::string counts(const std::vector<Finding> &findings)
{
    const std::size_t errors = count(findings, Severity::error);
    const std::size_t warnings = count(findings, Severity::warning);
    if (warnings == 0) {
        return number_of(errors, "error");
    }
    return (errors != 0 ? number_of(errors, "error") + ", " : "") + number_of(warnings, "warning");
}

} // namespace dalvo::tools
