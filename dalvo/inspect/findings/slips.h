#pragma once

#include <cstddef>
#include <limits>
#include <string_view>
#include <vector>

namespace dalvo::inspect {

/// Whether one of two names looks like a slip for the other: whatever the case of letters, they are the same, or differ
/// in two letters side by side that are swapped, or in one letter that is missing or doubled; but they are not the same
/// name. Both have four bytes or more. Two names of logics are no slips.
bool is_slip(std::string_view name, std::string_view other);

/// A name that others may be slips for.
struct SlipName {
    std::string_view name; ///< any bytes
    bool is_meant;         ///< whether it is hardly a slip itself: of two that are meant, none is one
};

/// What `find_slips` has for a name that is none.
constexpr std::size_t no_slip = std::numeric_limits<std::size_t>::max();

/// For each of `names`, all different, the position of one before it of which it is a slip, or which is a slip for it;
/// `no_slip` where there is none. The time is in the order of the names' bytes, as hash tables go; so among many names
/// that are the same but for case, some pairs are not looked at.
std::vector<std::size_t> find_slips(const std::vector<SlipName> &names);

} // namespace dalvo::inspect
