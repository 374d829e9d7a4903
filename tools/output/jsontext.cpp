#include "tools/output/jsontext.h"

#include <string_view>

#include "tools/inspection/printable.h"

namespace dalvo::tools {

namespace {

/// All that are not printable take four digits.
std::string json_escape_of(std::size_t code)
{
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
        const CodePoint first = first_code_point(rest);
        const bool is_layout = first.code == '\n'; // in a string it is escaped
        text += is_layout || is_printable(first.code) ? rest.substr(0, first.size) : json_escape_of(first.code);
        rest.remove_prefix(first.size);
    }
    return text;
}

} // namespace dalvo::tools
