#include "tools/diagnostics.h"

namespace dalvo::tools {

Failure::Failure(const std::string &where, const std::string &what)
    : std::runtime_error(escaped(where) + ": " + escaped(what))
{
}

std::string escaped(const std::string &text)
{
    constexpr const char *digits = "0123456789abcdef";
    std::string shown;
    for (const char c : text) {
        const unsigned byte = static_cast<unsigned char>(c);
        if (c == '\n') {
            shown += "\\n";
        } else if (c == '\r') {
            shown += "\\r";
        } else if (c == '\t') {
            shown += "\\t";
        } else if (byte < 0x20 || byte == 0x7F) {
            shown += {'\\', 'x', digits[byte / 16], digits[byte % 16]};
        } else {
            shown += c;
        }
    }
    return shown;
}

} // namespace dalvo::tools
