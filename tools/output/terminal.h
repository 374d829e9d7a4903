#pragma once

#include <cstddef>

namespace dalvo::tools {

/// Whether colours may be written to the file descriptor: it is a terminal other than a "dumb" one,
/// and NO_COLOR is not set.
bool has_colour(int descriptor);

/// The columns of the terminal behind standard output: what COLUMNS says, else what the terminal says, else 80.
std::size_t terminal_width();

} // namespace dalvo::tools
