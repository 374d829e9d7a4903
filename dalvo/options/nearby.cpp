#include "dalvo/options/nearby.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "dalvo/utils/editdistance.h"
#include "dalvo/utils/str.h"

namespace dalvo {

namespace {

/// Whether `name` is an option's name, or what stands behind one of its points, but for the case of letters.
bool is_end_of(const std::string &option, const std::string &name)
{
    if (name.empty() || name.size() > option.size()) {
        return false;
    }
    const std::size_t before = option.size() - name.size();
    return (before == 0 || option[before - 1] == '.') &&
           str::equal_but_for_case(std::string_view(option).substr(before), name);
}

} // namespace

std::vector<std::string> nearby_options(const std::deque<OptionParser::Option> &options, const std::string &name,
                                        std::size_t most)
{
    const std::size_t limit = std::min<std::size_t>(3, name.size() / 3);
    std::vector<std::pair<std::size_t, const std::string *>> found;
    for (const OptionParser::Option &option : options) {
        const std::size_t distance = is_end_of(option.name, name) ? 0 : str::edit_distance(name, option.name, limit);
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
