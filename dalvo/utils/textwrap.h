#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "dalvo/export.h"

namespace dalvo::str {

/// `text` (UTF-8 or ASCII, may be empty) as lines of at most `width` columns (at least 1), without line ends. Its own
/// line breaks are kept, further ones are set at blanks; a word longer than a line has a line of its own, uncut. Where
/// a line starts with a list mark ("- "), what is broken off it is indented by the mark's width. Blanks at a break are
/// dropped, all others stay. A column is a code point.
DALVO_API std::vector<std::string> wrap(std::string_view text, std::size_t width);

} // namespace dalvo::str
