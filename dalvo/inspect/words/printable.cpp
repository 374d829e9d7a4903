#include "dalvo/inspect/words/printable.h"

#include <algorithm>
#include <iterator>

namespace dalvo::inspect {

namespace {

std::size_t byte_at(std::string_view text, std::size_t at)
{
    return static_cast<unsigned char>(text[at]);
}

bool is_continuation(std::string_view text, std::size_t at)
{
    return at < text.size() && (byte_at(text, at) & 0xC0U) == 0x80;
}

} // namespace

CodePoint first_code_point(std::string_view text) noexcept
{
    const std::size_t first = byte_at(text, 0);
    if (first < 0x80) {
        return {first, 1};
    }
    const std::size_t size = first < 0xC2 || first > 0xF4 ? 0 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
    std::size_t code = first & (0xFFU >> (size + 1));
    for (std::size_t i = 1; i < size; ++i) {
        if (!is_continuation(text, i)) {
            return {0, 0};
        }
        code = (code << 6U) | (byte_at(text, i) & 0x3FU);
    }
    constexpr std::size_t smallest[] = {0, 0, 0x80, 0x800, 0x10000};
    const bool is_surrogate = code >= 0xD800 && code <= 0xDFFF;
    const bool is_code_point = size != 0 && code >= smallest[size] && code <= 0x10FFFF && !is_surrogate;
    return is_code_point ? CodePoint{code, size} : CodePoint{0, 0};
}

/// From the first to the last, both included.
struct CodePoints {
    std::size_t first;
    std::size_t last;
};

bool is_printable(std::size_t code) noexcept
{
    constexpr CodePoints unseen[] = {
        {0x00, 0x1F},     {0x7F, 0x9F},     {0x061C, 0x061C}, {0x180E, 0x180E}, {0x200B, 0x200F},   {0x2028, 0x202E},
        {0x2060, 0x206F}, {0xD800, 0xDFFF}, {0xFEFF, 0xFEFF}, {0xFFF9, 0xFFFB}, {0xE0000, 0xE007F},
    };
    const bool is_unseen = std::any_of(std::begin(unseen), std::end(unseen), [&](const CodePoints &range) {
        return code >= range.first && code <= range.last;
    });
    return !is_unseen && code <= 0x10FFFF;
}

std::size_t printable_size(std::string_view text) noexcept
{
    const CodePoint first = first_code_point(text);
    return first.size != 0 && is_printable(first.code) ? first.size : 0;
}

std::string escape_of(char c)
{
    switch (c) {
    case '\n': return "\\n";
    case '\r': return "\\r";
    case '\t': return "\\t";
    default: break;
    }
    constexpr const char *digits = "0123456789abcdef";
    const unsigned byte = static_cast<unsigned char>(c);
    return {'\\', 'x', digits[byte / 16], digits[byte % 16]};
}

std::string escaped(std::string_view text)
{
    return shown(text, std::string_view::npos);
}

std::string shown(std::string_view text, std::size_t most)
{
    std::string result;
    for (std::size_t count = 0; !text.empty() && count < most;) {
        const std::size_t size = printable_size(text);
        if (size != 0) {
            result += text.substr(0, size);
            ++count;
        } else {
            const std::string escape = escape_of(text.front());
            result += escape;
            count += escape.size();
        }
        text.remove_prefix(std::max<std::size_t>(size, 1));
    }
    return text.empty() ? result : result + "...";
}

std::string quoted(std::string_view text)
{
    return "'" + shown(text) + "'";
}

} // namespace dalvo::inspect
