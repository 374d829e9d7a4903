#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace dalvo::tools {

/// A code point and the bytes that it takes as UTF-8.
struct CodePoint {
    std::size_t code;
    std::size_t size;
};

/// The one at the start of `text` (not empty); of size 0 where the bytes are no UTF-8.
CodePoint first_code_point(std::string_view text);

/// Whether terminals show it in a column of its own and without side effects.
bool is_printable(std::size_t code);

/// The bytes at the start of `text` (not empty) that are one printable code point of UTF-8; 0 where there is none, and
/// the first byte has to be escaped.
std::size_t printable_size(std::string_view text);

/// "\n", "\r", "\t", or "\xHH" for any other byte.
std::string escape_of(char c);

} // namespace dalvo::tools
