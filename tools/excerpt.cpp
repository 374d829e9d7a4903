#include "tools/excerpt.h"

#include <algorithm>

#include "tools/diagnostics.h"

namespace dalvo::tools {

namespace {

constexpr std::size_t widest = 100;      // columns of an excerpt, about
constexpr std::size_t longest_word = 60; // columns of what a message quotes, about
constexpr const char *cut_mark = "...";

std::size_t byte_at(std::string_view text, std::size_t at)
{
    return static_cast<unsigned char>(text[at]);
}

bool is_continuation(std::string_view text, std::size_t at)
{
    return at < text.size() && (byte_at(text, at) & 0xC0U) == 0x80;
}

/// Whether terminals show the code point in a column of its own, without side effects.
bool is_printable(std::size_t code)
{
    const bool is_control = code < 0xA0 || (code >= 0xD800 && code <= 0xDFFF);
    const bool is_unseen = code == 0xFEFF || (code >= 0x200B && code <= 0x200F) || (code >= 0x2028 && code <= 0x202E) ||
                           (code >= 0x2060 && code <= 0x2069);
    return !is_control && !is_unseen && code <= 0x10FFFF;
}

/// The bytes of the code point at the start of `text`, when it is well-formed UTF-8 beyond ASCII and printable; else 0.
std::size_t code_point_size(std::string_view text)
{
    const std::size_t first = byte_at(text, 0);
    const std::size_t size = first < 0xC2 || first > 0xF4 ? 0 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
    std::size_t code = first & (0xFFU >> (size + 1));
    for (std::size_t i = 1; i < size; ++i) {
        if (!is_continuation(text, i)) {
            return 0;
        }
        code = (code << 6U) | (byte_at(text, i) & 0x3FU);
    }
    constexpr std::size_t smallest[] = {0, 0, 0x80, 0x800, 0x10000};
    return code >= smallest[size] && is_printable(code) ? size : 0;
}

/// The number of bytes at the start of `text` that are plain ASCII.
std::size_t plain_size(std::string_view text)
{
    const auto end = std::find_if_not(text.begin(), text.end(), [](char c) { return c >= ' ' && c < '\x7F'; });
    return static_cast<std::size_t>(end - text.begin());
}

/// Text made fit for a terminal, piece by piece.
class Shown {
public:
    explicit Shown(std::string start) : text(std::move(start)), columns(text.size()) {}

    /// Adds what stands for `added` until `most` columns are full; false when not all of it was needed for that.
    bool add(std::string_view added, std::size_t most, bool tabs_are_blanks)
    {
        while (!added.empty() && columns < most) {
            std::size_t size = plain_size(added.substr(0, most - columns));
            if (size != 0) {
                append(added.substr(0, size), size);
            } else if ((size = code_point_size(added)) != 0) {
                append(added.substr(0, size), 1);
            } else {
                size = 1;
                const std::string escape = added.front() == '\t' && tabs_are_blanks ? " " : escape_of(added.front());
                append(escape, escape.size());
            }
            added.remove_prefix(size);
        }
        return added.empty();
    }

    std::string text;
    std::size_t columns;

private:
    static std::string escape_of(char c)
    {
        const unsigned byte = static_cast<unsigned char>(c);
        constexpr const char *digits = "0123456789abcdef";
        return byte < 0x80 ? escaped({&c, 1}) : std::string{'\\', 'x', digits[byte / 16], digits[byte % 16]};
    }

    void append(std::string_view added, std::size_t width)
    {
        text += added;
        columns += width;
    }
};

} // namespace

Excerpt excerpt(std::string_view line, std::size_t column)
{
    if (!line.empty() && line.back() == '\r') {
        line.remove_suffix(1); // of a CR LF line end
    }
    const std::size_t place = std::min(column - 1, line.size());
    std::size_t start = line.size() > widest && place > widest / 2 ? place - widest / 2 : 0;
    while (start > 0 && start < place && is_continuation(line, start)) {
        ++start;
    }
    Shown result(start > 0 ? cut_mark : "");
    result.add(line.substr(start, place - start), std::string_view::npos, true);
    const std::size_t caret = result.columns;
    if (!result.add(line.substr(place), std::max(widest, caret + widest / 4), true)) {
        result.text += cut_mark;
    }
    return {std::move(result.text), caret};
}

std::string shown(std::string_view text)
{
    Shown result("");
    const bool is_whole = result.add(text, longest_word, false);
    return std::move(result.text) + (is_whole ? "" : cut_mark);
}

} // namespace dalvo::tools
