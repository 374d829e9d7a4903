#include "tools/output/diagnostics.h"

#include <iostream>
#include <vector>

#include "tools/inspection/printable.h"

namespace dalvo::tools {

namespace {

std::vector<std::string> warnings; // NOLINT(cppcoreguidelines-avoid-non-const-global-variables): the process's

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
    std::string result;
    while (!text.empty()) {
        const std::size_t size = printable_size(text);
        if (size != 0) {
            result += text.substr(0, size);
        } else {
            result += escape_of(text.front());
        }
        text.remove_prefix(size != 0 ? size : 1);
    }
    return result;
}

} // namespace dalvo::tools
