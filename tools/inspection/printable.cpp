#include "tools/inspection/printable.h"

namespace dalvo::tools {

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

CodePoint first_code_point(std::string_view text)
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
    return {code, code >= smallest[size] ? size : 0};
}

bool is_printable(std::size_t code)
{
    const bool is_control = code < 0x20 || (code >= 0x7F && code < 0xA0) || (code >= 0xD800 && code <= 0xDFFF);
    const bool is_unseen = code == 0xFEFF || (code >= 0x200B && code <= 0x200F) || (code >= 0x2028 && code <= 0x202E) ||
                           (code >= 0x2060 && code <= 0x2069);
    return !is_control && !is_unseen && code <= 0x10FFFF;
}

std::size_t printable_size(std::string_view text)
{
    const CodePoint first = first_code_point(text);
    return is_printable(first.code) ? first.size : 0;
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

} // namespace dalvo::tools
