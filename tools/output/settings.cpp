#include "tools/output/settings.h"

#include <ostream>
#include <utility>

#include "dalvo/inspect/runs/explanation.h"
#include "tools/output/jsontext.h"
#include "tools/output/knowledgejson.h"

namespace dalvo::tools {

namespace {

using nlohmann::ordered_json;

ordered_json origin_json(const inspect::Setting &setting)
{
    ordered_json entry = {{"text", origin_text(setting)}, {"source", nullptr}, {"line", nullptr}};
    ordered_json &forced_by = entry["forced_by"] = ordered_json::array();
    if (!setting.is_forced()) {
        if (setting.origin) {
            entry["source"] = setting.origin->place.source;
            entry["line"] = json_line(setting.origin->place);
        }
        return entry;
    }
    for (const inspect::Forcing &forcing : setting.forced_by) {
        forced_by.push_back({{"name", forcing.option->name},
                             {"value", forcing.assigned.value},
                             {"source", forcing.assigned.place.source},
                             {"line", json_line(forcing.assigned.place)}});
    }
    return entry;
}

ordered_json setting_json(const inspect::Setting &setting, const inspect::SettingsStyle &style)
{
    const inspect::OptionInfo &option = *setting.option;
    ordered_json entry = {{"name", option.name},
                          {"type", inspect::type_name(option.type)},
                          {"value", json_value(setting.value)},
                          {"default", json_value(option.default_value)},
                          {"changed", setting.is_changed()},
                          {"origin", origin_json(setting)}};
    if (style.has_help) {
        entry["accepted"] = option.accepted();
        entry["help"] = option.help;
    }
    return entry;
}

} // namespace

void write_settings_json(std::ostream &out, const std::vector<const inspect::Setting *> &settings,
                         const inspect::SettingsStyle &style)
{
    ordered_json list = ordered_json::array();
    for (const inspect::Setting *const setting : settings) {
        list.push_back(setting_json(*setting, style));
    }
    out << json_text({{"settings", std::move(list)}});
}

} // namespace dalvo::tools
