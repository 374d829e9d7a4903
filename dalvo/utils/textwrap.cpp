#include "dalvo/utils/textwrap.h"

#include <algorithm>

namespace dalvo::str {

namespace {

std::size_t columns(std::string_view text)
{
    const auto starts_code_point = [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; };
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), starts_code_point));
}

/// Takes the next word off `text`, with the blanks before it.
std::string_view take_word(std::string_view &text)
{
    const std::size_t start = std::min(text.find_first_not_of(' '), text.size());
    const std::size_t end = std::min(text.find(' ', start), text.size());
    const std::string_view word = text.substr(0, end);
    text.remove_prefix(end);
    return word;
}

void wrap_line(std::string_view text, std::size_t width, std::vector<std::string> &lines)
{
    const std::string indent = text.substr(0, 2) == "- " ? "  " : "";
    std::string line(take_word(text));
    while (!text.empty()) {
        const std::string_view word = take_word(text);
        const std::size_t blanks = word.find_first_not_of(' ');
        if (columns(line) + columns(word) <= width) {
            line += word;
        } else if (blanks != std::string_view::npos) {
            lines.push_back(std::move(line));
            line = indent;
            line += word.substr(blanks);
        }
    }
    lines.push_back(std::move(line));
}

} // namespace

std::vector<std::string> wrap(std::string_view text, std::size_t width)
{
    std::vector<std::string> lines;
    for (;;) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        wrap_line(text.substr(0, end), width, lines);
        if (end == text.size()) {
            return lines;
        }
        text.remove_prefix(end + 1);
    }
}

} // namespace dalvo::str
