#include "tools/output/jsontext.h"

#include <string_view>

#include "dalvo/inspect/words/printable.h"

namespace dalvo::tools {

namespace {

/// "\uXXXX", of a pair of them for a code point beyond 16 bits.
std::string json_escape_of(std::size_t code)
{
    if (code > 0xFFFF) {
        const std::size_t rest = code - 0x10000;
        return json_escape_of(0xD800 + (rest >> 10U)) + json_escape_of(0xDC00 + (rest & 0x3FFU));
    }
    constexpr const char *digits = "0123456789abcdef";
    std::string escape = "\\u";
    for (unsigned shift = 16; shift != 0; shift -= 4) {
        escape += digits[(code >> (shift - 4)) & 0xFU];
    }
    return escape;
}

} // namespace

std::string json_text(const nlohmann::ordered_json &json)
{
    const std::string raw = json.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + '\n';
    std::string text;
    for (std::string_view rest = raw; !rest.empty();) {
        const inspect::CodePoint first = inspect::first_code_point(rest);
        const bool is_layout = first.code == '\n'; // in a string it is escaped
        text +=
            is_layout || inspect::is_printable(first.code) ? rest.substr(0, first.size) : json_escape_of(first.code);
        rest.remove_prefix(first.size);
    }
    return text;
}

} // namespace dalvo::tools
