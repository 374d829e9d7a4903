#include <ostream>
#include <string>

#include "dalvo/inspect/runs/explanation.h"
#include "tools/output/explanation.h"
#include "tools/output/jsontext.h"
#include "tools/output/knowledgejson.h"
#include "tools/output/listing.h"

namespace dalvo::tools {

namespace {

using inspect::Assigned;
using inspect::Fate;
using Json = nlohmann::ordered_json;

Json json_assigned(const Assigned &assigned)
{
    return {{"value", assigned.value},
            {"source", assigned.place.source},
            {"line", json_line(assigned.place)},
            {"section", assigned.section.empty() ? Json() : Json(assigned.section)},
            {"level", level_of(assigned.kind)}};
}

Json json_assignments(const Explanation &explanation)
{
    Json list = Json::array();
    for (const Assigned &assigned : explanation.assignments) {
        Json json = json_assigned(assigned);
        json["applies"] = assigned.fate != Fate::never_applied;
        json["wins"] = assigned.fate == Fate::wins && !explanation.has_rejected();
        json["verdict"] = assigned.is_accepted ? "accepted" : assigned.is_readable ? "out of range" : "unreadable";
        json["rejected"] = assigned.fate == Fate::rejected;
        list.push_back(std::move(json));
    }
    return list;
}

Json json_named(const std::string &name, const Assigned &assigned)
{
    Json json = {{"name", name}};
    json.update(json_assigned(assigned));
    return json;
}

Json json_forced_by(const inspect::Setting &setting)
{
    Json list = Json::array();
    for (const inspect::Forcing &forcing : setting.forced_by) {
        list.push_back(json_named(forcing.option->name, forcing.assigned));
    }
    return list;
}

Json json_forces(const Explanation &explanation)
{
    Json list = Json::array();
    for (const std::size_t position : explanation.resolution.forced_by(explanation.setting.option->name)) {
        const inspect::Setting &other = explanation.resolution.settings()[position];
        list.push_back({{"name", other.option->name}, {"setting", json_value(other.value)}});
    }
    return list;
}

/// What keeps the option from having an effect.
Json json_unmet(const inspect::Setting &setting)
{
    Json list = Json::array();
    for (const inspect::Unmet &unmet : setting.unmet) {
        list.push_back({{"name", unmet.decider->name},
                        {"setting", json_value(unmet.value)},
                        {"needed", unmet.condition.text()},
                        {"source", unmet.assigned ? Json(unmet.assigned->place.source) : Json()},
                        {"line", unmet.assigned ? json_line(unmet.assigned->place) : Json()}});
    }
    return list;
}

} // namespace

void write_explanation_json(std::ostream &out, const Explanation &explanation)
{
    const inspect::Setting &setting = explanation.setting;
    const inspect::OptionInfo &option = *setting.option;
    const bool is_in_force = !explanation.has_rejected();
    const bool has_winner = is_in_force && !explanation.applying().empty();
    Json json;
    json["name"] = option.name;
    json["group"] = group_title(option.group);
    json["type"] = inspect::type_name(option.type);
    json["default"] = json_value(option.default_value);
    json["accepted"] = option.accepted();
    json["codes"] = json_codes(option);
    json["help"] = option.help;
    json["relations"] = json_relations(option);
    json["assignments"] = json_assignments(explanation);
    json["reason"] = has_winner ? Json(why_it_wins(explanation.applying())) : Json();
    json["setting"] = is_in_force ? json_value(setting.value) : Json();
    json["asked"] = has_winner ? json_value(setting.asked) : Json();
    json["forced"] = is_in_force && setting.is_forced();
    json["forced_by"] = is_in_force ? json_forced_by(setting) : Json::array();
    json["forces"] = is_in_force ? json_forces(explanation) : Json::array();
    json["has_effect"] = is_in_force ? Json(setting.has_effect()) : Json();
    json["unmet"] = is_in_force ? json_unmet(setting) : Json::array();
    json["unmet_needs"] = is_in_force ? Json(unmet_needs(setting)) : Json::array();
    out << json_text(json);
}

} // namespace dalvo::tools
