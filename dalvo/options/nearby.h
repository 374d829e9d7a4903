#pragma once

#include <cstddef>
#include <deque>
#include <string>
#include <vector>

#include "dalvo/options/optionparser.h"

namespace dalvo {

/// The names among `options` that `name` (any bytes) is likely a slip for, nearest first, at most `most` of them;
/// equally near ones in their order. A likely slip is the name in letters of the other case, or without what stands
/// before one of its points; otherwise it is at most three edits away, and at most one for each three bytes.
/// Throws std::bad_alloc when memory runs out.
std::vector<std::string> nearby_options(const std::deque<OptionParser::Option> &options, const std::string &name,
                                        std::size_t most);

} // namespace dalvo
