#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "dalvo/export.h"

namespace dalvo {

/// Finds the names that a name is likely a slip for. A likely slip is the name in letters of the other case, or without
/// what stands before one of its points; otherwise it is at most three edits away, and at most one for each three
/// bytes, letters counting in any case; two neighbours swapped are one edit.
///
/// Example:
///
///     NearbyNames nearby("restrat");
///     nearby.offer("restart");
///     nearby.nearest(3)           // {"restart"}
///
/// Names are any bytes.
class DALVO_API NearbyNames {
public:
    explicit NearbyNames(const std::string &name);

    /// Keeps `candidate` if the name is likely a slip for it.
    void offer(const std::string &candidate);

    /// The candidates kept, the nearest first, at most `most` of them; equally near ones in their order.
    std::vector<std::string> nearest(std::size_t most) const;

private:
    std::string folded;
    std::size_t limit; // of edits
    std::vector<std::pair<std::size_t, std::string>> found;
};

} // namespace dalvo
