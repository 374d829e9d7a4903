#include "tools/diagnostics.h"

#include <iostream>
#include <vector>

namespace dalvo::tools {

namespace {

std::vector<std::string> warnings;

} // namespace

void warn_later(const std::string &text)
{
    warnings.push_back(escaped(text));
}

void write_warnings()
{
    for (const std::string &warning : warnings) {
        std::cerr << "dalvo-config: warning: " << warning << '\n';
    }
    warnings.clear();
}

Failure::Failure(const std::string &where, const std::string &what, int exit_status)
    : std::runtime_error(escaped(where) + ": " + escaped(what)), status(exit_status)
{
}

std::string escaped(std::string_view text)
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
