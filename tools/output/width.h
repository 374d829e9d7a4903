#pragma once

#include <cstddef>
#include <string_view>

namespace dalvo::tools {

/// The columns that a code point takes on a terminal: 0, 1 or 2; -1 for one that takes none of its own.
int columns_of(char32_t code);

/// The columns that `text` takes, which is UTF-8 without control bytes.
std::size_t columns_of(std::string_view text);

} // namespace dalvo::tools
