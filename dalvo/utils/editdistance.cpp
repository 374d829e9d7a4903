#include "dalvo/utils/editdistance.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace dalvo::str {

std::size_t edit_distance(std::string_view a, std::string_view b, std::size_t limit)
{
    if (a.size() > b.size()) {
        std::swap(a, b);
    }
    if (b.size() - a.size() > limit) {
        return limit + 1;
    }
    limit = std::min(limit, b.size()); // no distance is larger, and the sums below stay small
    // rows of i, i - 1 and i - 2: at j, the distance of the first i bytes of b to the first j of a; cells outside the band
    // are above the limit.
    const std::size_t above = limit + 1;
    std::vector<std::size_t> row(a.size() + 1, above);
    std::vector<std::size_t> before(row);
    std::vector<std::size_t> before_that(row);
    for (std::size_t j = 0; j <= std::min(limit, a.size()); ++j) {
        row[j] = j;
    }
    for (std::size_t i = 1; i <= b.size(); ++i) {
        before_that.swap(before);
        before.swap(row);
        const std::size_t first = i > limit ? i - limit : 0;
        const std::size_t last = std::min(a.size(), i + limit);
        std::size_t left = above;
        for (std::size_t j = first; j <= last; ++j) {
            const bool is_same = j > 0 && a[j - 1] == b[i - 1];
            const bool is_swap = j > 1 && i > 1 && a[j - 1] == b[i - 2] && a[j - 2] == b[i - 1];
            const std::size_t replaced = j > 0 ? before[j - 1] + (is_same ? 0 : 1) : above;
            const std::size_t swapped = is_swap ? before_that[j - 2] + 1 : above;
            left = std::min({before[j] + 1, left + 1, replaced, swapped, above});
            row[j] = left;
        }
        if (first > 0) {
            row[first - 1] = above;
        }
        if (last < a.size()) {
            row[last + 1] = above;
        }
    }
    return row[a.size()];
}

} // namespace dalvo::str
