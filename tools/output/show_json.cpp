#include <ostream>
#include <utility>

#include "tools/output/diff_value.h"
#include "tools/output/jsontext.h"
#include "tools/inspection/optioninfo.h"
#include "tools/output/show_settings.h"

namespace dalvo::tools {

namespace {

using nlohmann::ordered_json;

/// null on the command line, which has no lines.
ordered_json line_json(const Place &place)
{
    return place.line != 0 ? ordered_json(place.line) : ordered_json();
}

ordered_json origin_json(const Origin &origin)
{
    ordered_json entry = {{"text", origin.text()}, {"source", nullptr}, {"line", nullptr}};
    if (origin.assignment) {
        entry["source"] = origin.assignment->place.source;
        entry["line"] = line_json(origin.assignment->place);
    }
    ordered_json &forced_by = entry["forced_by"] = ordered_json::array();
    for (const Assignment &forcer : origin.forcers) {
        forced_by.push_back({{"name", forcer.name},
                             {"value", forcer.value},
                             {"source", forcer.place.source},
                             {"line", line_json(forcer.place)}});
    }
    return entry;
}

ordered_json setting_json(const ShownSetting &shown, const Notes &notes)
{
    ordered_json entry = {{"name", shown.setting.name}};
    const OptionInfo *const option = find_option(shown.setting.name);
    entry["type"] = option != nullptr ? ordered_json(option->type_name()) : ordered_json();
    entry["value"] = json_value(shown.setting);
    entry["default"] = json_value(shown.default_setting);
    entry["changed"] = shown.changed();
    entry["origin"] = origin_json(shown.origin);
    if (notes.comments && option != nullptr) {
        entry["accepted"] = option->accepted();
        entry["help"] = option->help;
    }
    return entry;
}

} // namespace

void write_settings_json(std::ostream &out, const std::vector<ShownSetting> &settings, const Notes &notes)
{
    ordered_json list = ordered_json::array();
    for (const ShownSetting &shown : settings) {
        list.push_back(setting_json(shown, notes));
    }
    out << json_text({{"settings", std::move(list)}});
}

} // namespace dalvo::tools
