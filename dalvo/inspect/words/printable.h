#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// Bytes of strangers made fit for a terminal.
namespace dalvo::inspect {

/// A code point and the bytes that it takes as UTF-8.
struct CodePoint {
    std::size_t code; ///< 0 where the bytes are no UTF-8
    std::size_t size; ///< 0 where the bytes are no UTF-8
};

/// The one at the start of `text` (not empty).
CodePoint first_code_point(std::string_view text) noexcept;

/// Whether it is shown, by itself or on top of the character before it, and changes nothing else: no control character,
/// none that turns the direction of text, none that takes no place at all.
bool is_printable(std::size_t code) noexcept;

/// The bytes at the start of `text` (not empty) that are one printable code point of UTF-8; 0 where there is none, and
/// the first byte has to be escaped.
std::size_t printable_size(std::string_view text) noexcept;

/// "\n", "\r", "\t", or "\xHH" for any other byte.
std::string escape_of(char c);

/// `text` with an escape for each byte of what is not printable, and of what is no UTF-8: one line, whatever the text
/// holds. A backslash stays as it is.
std::string escaped(std::string_view text);

/// The same, cut after `most` code points or so, with "..." after the cut.
std::string shown(std::string_view text, std::size_t most = 60);

/// `shown`, in single quotes.
std::string quoted(std::string_view text);

} // namespace dalvo::inspect
