#pragma once

#include <cstddef>
#include <string_view>

#include "dalvo/export.h"

namespace dalvo::str {

/// The least number of edits that turns `a` into `b` (any bytes), when that is at most `limit`; otherwise some number
/// above `limit`. An edit inserts, deletes or replaces a byte, or swaps two neighbours; none touches what another has
/// swapped. Time in the order of the shorter length times `limit`.
///
/// The distance of optimal string alignment, computed in the diagonal band that a result within the limit can lie in
/// (E. Ukkonen, Algorithms for approximate string matching, 1985).
DALVO_API std::size_t edit_distance(std::string_view a, std::string_view b, std::size_t limit);

} // namespace dalvo::str
