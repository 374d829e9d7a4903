#pragma once

#include <cstddef>
#include <string_view>

namespace dalvo::str {

/// The least number of bytes to insert, delete or replace that turns `a` into `b` (any bytes), when that is at most
/// `limit`; otherwise some number above `limit`. Time in the order of the shorter length times `limit`.
/// Throws std::bad_alloc when memory runs out.
///
/// Levenshtein's distance, computed in the diagonal band that a result within the limit can lie in (E. Ukkonen,
/// Algorithms for approximate string matching, 1985).
std::size_t edit_distance(std::string_view a, std::string_view b, std::size_t limit);

} // namespace dalvo::str
