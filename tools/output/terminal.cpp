#include "tools/output/terminal.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <charconv>
#include <cstdlib>
#include <cstring>

namespace dalvo::tools {

bool has_colour(int descriptor)
{
    const char *const terminal = std::getenv("TERM");
    const bool is_dumb = terminal != nullptr && std::strcmp(terminal, "dumb") == 0;
    return std::getenv("NO_COLOR") == nullptr && !is_dumb && isatty(descriptor) == 1;
}

std::size_t terminal_width()
{
    constexpr std::size_t least = 20;
    std::size_t width = 0;
    if (const char *const columns = std::getenv("COLUMNS")) {
        std::from_chars(columns, columns + std::strlen(columns), width);
    }
    winsize size{};
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-vararg): no other function tells
    if (width == 0 && ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0) {
        width = size.ws_col;
    }
    if (width == 0) {
        return 80;
    }
    return width < least ? least : width;
}

} // namespace dalvo::tools
