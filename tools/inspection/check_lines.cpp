#include <algorithm>

#include "dalvo/configuration/configurationsetter.h"
#include "dalvo/utils/str.h"
#include "tools/inspection/check_text.h"

namespace dalvo::tools {

namespace {

/// The offset of the first "#" that looks as if it were to start a comment; npos when there is none.
std::size_t comment_start(std::string_view value)
{
    std::size_t at = value.find('#');
    while (at != std::string_view::npos && at > 0 && !str::is_space(value[at - 1])) {
        at = value.find('#', at + 1);
    }
    return at;
}

bool is_quoted(std::string_view value)
{
    return value.size() >= 2 && value.front() == value.back() && (value.front() == '"' || value.front() == '\'');
}

bool has_codes_from_zero(const OptionInfo &option)
{
    const auto lowest = std::min_element(option.codes.begin(), option.codes.end(),
                                         [](const Code &a, const Code &b) { return a.value < b.value; });
    return lowest != option.codes.end() && lowest->value == 0;
}

/// Looks at one line after the other.
class LineChecker {
public:
    explicit LineChecker(CheckedText &target) : text(target)
    {
        setter.initialize_options();
        for (const OptionParser::Option &option : setter.options().options()) {
            positions.emplace(option.name, parsed.size());
            parsed.push_back(&option);
        }
    }

    void check(std::size_t position)
    {
        CheckedAssignment &assignment = text.assignments[position];
        if (!assignment.has_equals) {
            text.mark_name(position, Problem::no_equals);
        }
        check_marks_in_value(position);
        const auto found = positions.find(assignment.name);
        if (found == positions.end()) {
            text.mark_name(position, Problem::unknown_option);
            return;
        }
        assignment.option = found->second;
        assignment.verdict = verdict(assignment);
        if (assignment.verdict == Verdict::invalid) {
            text.mark_value(position, Problem::invalid_value);
            if (assignment.value.empty()) {
                text.mark_value(position, Problem::empty_value);
            } else if (comment_start(assignment.value) == std::string_view::npos) {
                mark_comment(position, assignment.value.find('#')); // "1#x" is no text that somebody meant
            }
        } else if (assignment.verdict == Verdict::accepted && is_negative_code(assignment.option)) {
            text.mark_value(position, Problem::negative_code);
        }
    }

private:
    void check_marks_in_value(std::size_t position)
    {
        const std::string_view whole = text.assignments[position].value;
        const std::size_t start = comment_start(whole);
        if (is_quoted(str::stripped(whole.substr(0, start), str::is_space))) {
            text.mark_value(position, Problem::quoted_value);
        }
        mark_comment(position, start);
    }

    /// `start` is the offset of the "#" in the value; npos for none.
    void mark_comment(std::size_t position, std::size_t start)
    {
        if (start != std::string_view::npos) {
            const CheckedAssignment &assignment = text.assignments[position];
            text.marks.push_back(
                {assignment.line, assignment.value_column + start, Problem::comment_in_value, position});
        }
    }

    /// The library's own, on the line's option; unless it is invalid, the option's parser then holds the value.
    Verdict verdict(const CheckedAssignment &assignment)
    {
        const OptionInfo &option = all_options()[assignment.option];
        value = assignment.value;
        try {
            setter.set_option(option.name, value, 0);
        } catch (const OptionParser::error &) {
            return Verdict::invalid;
        }
        return option.applied.accepts(parsed[assignment.option]->value) ? Verdict::accepted : Verdict::rejected;
    }

    bool is_negative_code(std::size_t option) const
    {
        const auto *const code = std::get_if<std::int32_t>(&parsed[option]->value);
        return code != nullptr && *code < 0 && has_codes_from_zero(all_options()[option]);
    }

    CheckedText &text;
    ConfigurationSetter setter;
    std::vector<const OptionParser::Option *> parsed; // in the order of all_options()
    std::unordered_map<std::string_view, std::size_t> positions;
    std::string value;
};

} // namespace

void check_lines(CheckedText &text)
{
    LineChecker checker(text);
    for (std::size_t position = 0; position < text.assignments.size(); ++position) {
        checker.check(position);
    }
}

} // namespace dalvo::tools
