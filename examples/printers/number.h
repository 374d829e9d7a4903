#pragma once

#include <charconv>
#include <cstddef>
#include <string>

namespace examples {

/// The shortest text that reads back as `value` (finite), in `format` and with "." whatever the locale. Options are
/// 32-bit floats: a value that is one exactly is written in the digits that tell it from other floats, as 0.1.
inline std::string shortest_text(double value, std::chars_format format)
{
    char text[400]; // the smallest doubles have the longest fixed texts: "-0.", 323 zeros and up to 17 digits
    const auto narrow = static_cast<float>(value);
    const bool is_float = !(static_cast<double>(narrow) < value) && !(static_cast<double>(narrow) > value);
    const auto written = is_float ? std::to_chars(text, text + sizeof text, narrow, format)
                                  : std::to_chars(text, text + sizeof text, value, format);
    return {text, static_cast<std::size_t>(written.ptr - text)};
}

} // namespace examples
