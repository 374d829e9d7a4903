#include "dalvo/options/nearby.h"

#include <algorithm>
#include <string_view>

#include "dalvo/utils/editdistance.h"
#include "dalvo/utils/str.h"

namespace dalvo {

namespace {

/// Whether `name` is `candidate`, or what stands behind one of its points; both folded.
bool is_end_of(std::string_view candidate, std::string_view name)
{
    if (name.empty() || name.size() > candidate.size()) {
        return false;
    }
    const std::size_t before = candidate.size() - name.size();
    return (before == 0 || candidate[before - 1] == '.') && candidate.substr(before) == name;
}

} // namespace

NearbyNames::NearbyNames(const std::string &name)
    : folded(str::folded(name)), limit(std::min<std::size_t>(3, name.size() / 3))
{
}

void NearbyNames::offer(const std::string &candidate)
{
    const std::string other = str::folded(candidate);
    const std::size_t distance = is_end_of(other, folded) ? 0 : str::edit_distance(folded, other, limit);
    if (distance <= limit) {
        found.emplace_back(distance, candidate);
    }
}

std::vector<std::string> NearbyNames::nearest(std::size_t most) const
{
    auto sorted = found;
    std::stable_sort(sorted.begin(), sorted.end(), [](const auto &a, const auto &b) { return a.first < b.first; });
    std::vector<std::string> names;
    for (const auto &[distance, name] : sorted) {
        if (names.size() < most) {
            names.push_back(name);
        }
    }
    return names;
}

} // namespace dalvo
