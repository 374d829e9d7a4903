#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace dalvo::tools {

/// The bytes at the start of `text` (not empty) that are one code point of UTF-8 which terminals show in a column of
/// its own and without side effects; 0 where there is none, and the first byte has to be escaped.
std::size_t printable_size(std::string_view text);

/// "\n", "\r", "\t", or "\xHH" for any other byte.
std::string escape_of(char c);

} // namespace dalvo::tools
