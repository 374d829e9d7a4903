#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "dalvo/options/optionparser.h"

namespace dalvo::tools {

/// A line as it is shown to people: on one line of a terminal, without control bytes, and cut where it is long.
struct Excerpt {
    std::string text;
    std::size_t caret = 0; ///< the columns of a terminal before the place that is meant
};

/// Shows `line` around the byte at `column`, counted from 1; it may stand one behind the last byte. A tab becomes a
/// blank, a carriage return at the end is left out. The time does not grow with the line.
Excerpt excerpt(std::string_view line, std::size_t column);

/// `text` with control bytes, and bytes that are no UTF-8, escaped, and cut behind about `most` columns.
std::string shown(std::string_view text, std::size_t most = 60);

/// The message of `e`, which the library threw, with each piece of text in it as `shown` makes it.
std::string shown_message(const OptionParser::error &e);

} // namespace dalvo::tools
