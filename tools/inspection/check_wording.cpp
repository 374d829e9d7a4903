#include <algorithm>
#include <initializer_list>
#include <map>
#include <tuple>
#include <utility>

#include "tools/inspection/check_text.h"

namespace dalvo::tools {

namespace {

std::string quoted(std::string_view text)
{
    return "'" + shown(text) + "'";
}

/// One string of all pieces, in one allocation: large texts have many findings.
std::string join(std::initializer_list<std::string_view> pieces)
{
    std::size_t size = 0;
    for (const std::string_view piece : pieces) {
        size += piece.size();
    }
    std::string joined;
    joined.reserve(size);
    for (const std::string_view piece : pieces) {
        joined += piece;
    }
    return joined;
}

std::string at_line(std::uint64_t line)
{
    return " (line " + std::to_string(line) + ")";
}

/// "a bool", "a 32-bit int", ...
std::string kind_of(const OptionInfo &option)
{
    const bool is_number = option.type == OPT_INT || option.type == OPT_FLOAT;
    return (is_number ? "a 32-bit " : "a ") + option.type_name();
}

/// Whether findings of marks that compare equal are the same finding.
auto identity(const Mark &mark)
{
    return std::make_tuple(mark.line, mark.column, mark.problem, mark.subject, mark.other);
}

/// Puts marks into words.
class Wording {
public:
    explicit Wording(const CheckedText &checked) : text(checked) {}

    /// Adds all but the place.
    void describe(const Mark &mark, Finding &finding)
    {
        switch (mark.problem) {
        case Problem::malformed_header: finding.text = "malformed header: " + text.details[mark.detail]; break;
        case Problem::unknown_option: unknown_option(mark, finding); break;
        case Problem::invalid_value: invalid_value(mark, finding); break;
        case Problem::out_of_range: out_of_range(mark, finding); break;
        case Problem::replaced: replaced(mark, finding); break;
        case Problem::no_equals: finding.text = "no '=': the whole line is the name, and the value is empty"; break;
        case Problem::empty_value: finding.text = "empty value for " + kind_of(option_of(mark)); break;
        case Problem::comment_in_value: finding.text = "'#' starts no comment here: it is part of the value"; break;
        case Problem::quoted_value: finding.text = "the quotes are part of the value"; break;
        case Problem::byte_order_mark:
            finding.text = "byte-order mark: it is part of the first line, and makes that line wrong";
            break;
        case Problem::negative_code: negative_code(mark, finding); break;
        case Problem::default_among_names:
            finding.text = "'default' among several names is an ordinary section, not the unnamed one";
            break;
        case Problem::repeated_name:
            finding.text = "section " + quoted(text.sections[mark.subject].name) + " is named twice in this header";
            break;
        case Problem::similar_section: similar_section(mark, finding); break;
        case Problem::forced: forced(mark, finding); break;
        case Problem::disabled_theory: disabled_theory(mark, finding); break;
        }
        if (is_of_assignment(mark)) {
            finding.option = subject(mark).name;
        }
    }

private:
    static bool is_of_assignment(const Mark &mark)
    {
        return mark.subject != none && mark.problem != Problem::repeated_name &&
               mark.problem != Problem::similar_section;
    }

    const CheckedAssignment &subject(const Mark &mark) const { return text.assignments[mark.subject]; }
    const CheckedAssignment &other(const Mark &mark) const { return text.assignments[mark.other]; }
    const OptionInfo &option_of(const Mark &mark) const { return all_options()[subject(mark).option]; }

    /// Looked up once for each name: the search for what may be meant goes through the catalogue.
    void unknown_option(const Mark &mark, Finding &finding)
    {
        const auto [found, is_new] = unknown.try_emplace(subject(mark).name);
        auto &[message, suggested] = found->second;
        if (is_new) {
            const std::string name(found->first);
            suggested = suggestions(name, 3);
            message = name.empty() ? "no option name before '='" : tools::unknown_option(name);
        }
        finding.text = message;
        finding.suggestions = suggested;
    }

    void invalid_value(const Mark &mark, Finding &finding) const
    {
        const CheckedAssignment &assignment = subject(mark);
        finding.accepted = option_of(mark).accepted();
        finding.text = "invalid value " + quoted(assignment.value) + ": " + option_of(mark).name + " is " +
                       kind_of(option_of(mark)) + " and accepts " + finding.accepted;
        if (assignment.value.empty()) {
            finding.text.replace(0, finding.text.find(':'), "the value is empty");
        }
    }

    void out_of_range(const Mark &mark, Finding &finding) const
    {
        finding.accepted = option_of(mark).accepted();
        finding.text = "value " + shown(subject(mark).value) + " is out of range: " + option_of(mark).name +
                       " accepts " + finding.accepted;
    }

    void replaced(const Mark &mark, Finding &finding) const
    {
        finding.related_line = other(mark).line;
        finding.text = join(
            {option_of(mark).name, at_line(mark.line), " is replaced by line ", std::to_string(finding.related_line)});
    }

    void negative_code(const Mark &mark, Finding &finding) const
    {
        finding.text =
            shown(subject(mark).value) + " is none of the codes of " + option_of(mark).name + ", which start at 0";
    }

    void similar_section(const Mark &mark, Finding &finding) const
    {
        finding.text = "section " + quoted(text.sections[mark.subject].name) + " is one edit away from ";
        if (mark.other == none) {
            finding.text += "'default'";
            return;
        }
        const CheckedSection &near = text.sections[mark.other];
        finding.related_line = near.line;
        finding.text += quoted(near.name) + at_line(near.line);
    }

    void forced(const Mark &mark, Finding &finding) const
    {
        finding.related_line = other(mark).line;
        finding.text = join({option_of(mark).name, " has no effect: ", other(mark).name, at_line(finding.related_line),
                             " forces it to ", shown(text.details[mark.detail])});
    }

    void disabled_theory(const Mark &mark, Finding &finding) const
    {
        finding.related_line = other(mark).line;
        finding.text = join(
            {option_of(mark).name, " has no effect: ", other(mark).name, at_line(finding.related_line), " is false"});
    }

    const CheckedText &text;
    std::map<std::string_view, std::pair<std::string, std::vector<std::string>>> unknown;
};

} // namespace

std::vector<Finding> findings_of(CheckedText &text, const std::string &file_name)
{
    std::vector<Mark> &marks = text.marks;
    std::sort(marks.begin(), marks.end(), [](const Mark &a, const Mark &b) { return identity(a) < identity(b); });
    marks.erase(std::unique(marks.begin(), marks.end(),
                            [](const Mark &a, const Mark &b) { return identity(a) == identity(b); }),
                marks.end());
    Wording wording(text);
    std::vector<Finding> findings;
    findings.reserve(marks.size());
    for (const Mark &mark : marks) {
        Finding &finding = findings.emplace_back();
        finding.file = file_name;
        finding.line = mark.line;
        finding.column = mark.column;
        finding.problem = mark.problem;
        finding.severity = is_warning(mark.problem) ? Severity::warning : Severity::error;
        wording.describe(mark, finding);
        finding.excerpt = excerpt(text.line(mark.line), mark.column);
    }
    return findings;
}

} // namespace dalvo::tools
