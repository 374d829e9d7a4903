#include "dalvo/inspect/findings/fixes.h"

#include "dalvo/utils/str.h"

namespace dalvo::inspect {

namespace {

std::size_t offset_of(const Text &text, const char *at)
{
    return static_cast<std::size_t>(at - text.contents.data());
}

/// `comment` with a "#" in front in place of what else starts comments elsewhere.
std::string as_comment(std::string_view comment)
{
    const std::size_t mark = comment.substr(0, 2) == "//" ? 2 : comment.front() == ';' ? 1 : 0;
    return mark == 0 ? std::string(comment) : str::joined({"#", comment.substr(mark)});
}

/// A line with `comment`, to be put in before the line that starts at `line_start` and is read from `first` on: it is
/// indented and ended as that one.
std::string comment_line(const Text &text, const char *line_start, const char *first, std::string_view comment)
{
    const std::size_t end = text.contents.find('\n', offset_of(text, first));
    const bool has_carriage_return = end != std::string::npos && end > 0 && text.contents[end - 1] == '\r';
    const std::string_view indentation(line_start, static_cast<std::size_t>(first - line_start));
    return str::joined({indentation, as_comment(comment), has_carriage_return ? "\r\n" : "\n"});
}

/// Where the line begins that starts at `line_start`: behind a byte-order mark, which is no indentation.
const char *readable_start(const Text &text, const char *line_start)
{
    return text.has_byte_order_mark && line_start == text.contents.data() ? line_start + 3 : line_start;
}

} // namespace

void fix_piece(Finding &finding, const Text &text, const Filed &assignment, std::string_view piece,
               const std::string &replacement, bool is_safe, const std::string &title)
{
    if (assignment.line != 0) {
        const std::size_t begin = offset_of(text, piece.data());
        finding.fixes.push_back({title, is_safe, {{begin, begin + piece.size(), replacement}}});
    }
}

void fix_value(Finding &finding, const Text &text, const Filed &assignment, const std::string &value,
               std::string_view comment, bool is_safe, const std::string &title)
{
    if (assignment.line == 0) {
        return;
    }
    const std::size_t begin = offset_of(text, assignment.value.data());
    Fix fix{title, is_safe, {{begin, begin + assignment.value.size(), value}}};
    if (!comment.empty()) {
        const char *const start = readable_start(text, assignment.line_start);
        const std::size_t line = offset_of(text, start);
        fix.edits.insert(fix.edits.begin(), {line, line, comment_line(text, start, assignment.name.data(), comment)});
    }
    finding.fixes.push_back(std::move(fix));
}

void fix_header_comment(Finding &finding, const Text &text, const HeaderProblem &problem)
{
    const std::string_view comment = problem.piece;
    if (comment.front() != '#' && comment.front() != ';' && comment.substr(0, 2) != "//") {
        return;
    }
    const char *const start = readable_start(text, problem.line_start);
    const std::string_view before(start, static_cast<std::size_t>(comment.data() - start));
    const char *const open = start + before.find('[');
    const std::size_t close = offset_of(text, start) + before.rfind(']') + 1; // right before the comment
    const std::size_t end = offset_of(text, comment.data()) + comment.size();
    const std::size_t line = offset_of(text, start);
    finding.fixes.push_back({"put the comment on a line of its own",
                             true,
                             {{line, line, comment_line(text, start, open, comment)}, {close, end, ""}}});
}

void fix_repeated_name(Finding &finding, const Text &text, const HeaderProblem &problem)
{
    std::size_t begin = offset_of(text, problem.piece.data());
    const std::size_t end = begin + problem.piece.size();
    begin = text.contents.rfind(',', begin); // the first of the two stands before it
    const std::string_view before(problem.line_start, begin - offset_of(text, problem.line_start));
    const bool is_last = str::stripped(std::string_view(text.contents).substr(end, text.contents.find('\n', end) - end),
                                       str::is_space) == "]";
    if (problem.piece == "default" && is_last && before.find(',') == std::string_view::npos) {
        return; // what is left would be the unnamed section
    }
    finding.fixes.push_back({"take the second one out", true, {{begin, end, ""}}});
}

} // namespace dalvo::inspect
