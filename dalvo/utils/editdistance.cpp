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
    // row[j]: distance of the first i bytes of b to the first j of a; cells outside the band stay above the limit.
    const std::size_t above = limit + 1;
    std::vector<std::size_t> row(a.size() + 1, above);
    for (std::size_t j = 0; j <= std::min(limit, a.size()); ++j) {
        row[j] = j;
    }
    for (std::size_t i = 1; i <= b.size(); ++i) {
        const std::size_t first = i > limit ? i - limit : 0;
        const std::size_t last = std::min(a.size(), i + limit);
        std::size_t diagonal = first > 0 ? row[first - 1] : above;
        std::size_t left = above;
        for (std::size_t j = first; j <= last; ++j) {
            const std::size_t up = row[j];
            const std::size_t replaced = j > 0 ? diagonal + (a[j - 1] == b[i - 1] ? 0 : 1) : above;
            left = std::min({up + 1, left + 1, replaced, above});
            row[j] = left;
            diagonal = up;
        }
    }
    return row[a.size()];
}

} // namespace dalvo::str
