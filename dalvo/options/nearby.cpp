#include "dalvo/options/nearby.h"

#include <algorithm>
#include <utility>

#include "dalvo/utils/editdistance.h"

namespace dalvo {

std::vector<std::string> nearby_options(const std::deque<OptionParser::Option> &options, const std::string &name,
                                        std::size_t most)
{
    const std::size_t limit = std::min<std::size_t>(3, name.size() / 3);
    std::vector<std::pair<std::size_t, const std::string *>> found;
    for (const OptionParser::Option &option : options) {
        const std::size_t distance = str::edit_distance(name, option.name, limit);
        if (distance <= limit) {
            found.emplace_back(distance, &option.name);
        }
    }
    std::stable_sort(found.begin(), found.end(), [](const auto &a, const auto &b) { return a.first < b.first; });
    std::vector<std::string> names;
    for (const auto &[distance, near] : found) {
        if (names.size() < most) {
            names.push_back(*near);
        }
    }
    return names;
}

} // namespace dalvo
