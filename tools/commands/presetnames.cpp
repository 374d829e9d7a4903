#include "tools/commands/presetnames.h"

#include <algorithm>
#include <cctype>
#include <utility>
#include <vector>

#include "dalvo/utils/editdistance.h"
#include "tools/output/excerpt.h"

namespace dalvo::tools {

namespace {

std::string lower(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

/// The nearest first, at most three.
std::vector<std::string> near_presets(const std::string &name)
{
    const std::size_t limit = std::min<std::size_t>(3, name.size() / 3);
    std::vector<std::pair<std::size_t, std::string>> found;
    for (const Preset &preset : presets()) {
        const std::size_t distance = str::edit_distance(lower(name), lower(preset.name), limit);
        if (distance <= limit) {
            found.emplace_back(distance, preset.name);
        }
    }
    std::stable_sort(found.begin(), found.end(), [](const auto &a, const auto &b) { return a.first < b.first; });
    std::vector<std::string> names;
    for (std::size_t i = 0; i < found.size() && i < 3; ++i) {
        names.push_back(found[i].second);
    }
    return names;
}

} // namespace

std::string summary_of(const Preset &preset)
{
    const std::string first = preset.text.substr(0, preset.text.find('\n'));
    const std::size_t start = first.find_first_not_of("# ");
    const std::size_t end = first.find_last_not_of(". ");
    return start == std::string::npos ? "" : first.substr(start, end + 1 - start);
}

std::string unknown_preset(const std::string &name)
{
    std::string text = "no preset '" + shown(name) + "'";
    const std::vector<std::string> near = near_presets(name);
    for (std::size_t i = 0; i < near.size(); ++i) {
        text += (i == 0 ? " (did you mean " : i + 1 == near.size() ? " or " : ", ") + near[i];
    }
    return near.empty() ? text : text + "?)";
}

} // namespace dalvo::tools
