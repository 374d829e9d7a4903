#pragma once

#include <cstddef>
#include <limits>
#include <string_view>
#include <vector>

namespace dalvo::tools {

/// For each of `names` (any bytes, all different), the position of one before it that it may be a slip for; the
/// largest size_t where there is none. A slip is one byte inserted, deleted or replaced.
///
/// No slips are: names that differ in digits only, which are a series; names of one byte; names of more than 64.
/// The time is in the order of the names' bytes (as hash tables go), whatever they have in common.
std::vector<std::size_t> slips(const std::vector<std::string_view> &names);

} // namespace dalvo::tools
