#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "dalvo/options/optionparser.h"

/// The text syntax of option values. The whole text must be the value: blanks around it are not skipped. No result
/// means that the text (any bytes) is not of the type. Nothing here depends on a locale, allocates or throws.
///
///     bool  = word of the style                           ; letters in any case
///     int   = [ "+" | "-" ] digit+                        ; within 32 bits, signed
///     float = [ "+" | "-" ] ( decimal | special )
///     decimal = ( digit+ [ "." digit* ] | "." digit+ ) [ ( "e" | "E" ) [ "+" | "-" ] digit+ ]
///     special = "inf" | "infinity" | "nan"                ; letters in any case
namespace dalvo {

std::optional<bool> parse_bool(std::string_view text, OptionBoolStyle style) noexcept;

std::optional<std::int32_t> parse_int(std::string_view text) noexcept;

/// The 32-bit float nearest to the decimal, ties to even; no result when that would be infinite. What is too small for
/// the smallest float becomes a zero of its sign.
std::optional<float> parse_float(std::string_view text) noexcept;

} // namespace dalvo
