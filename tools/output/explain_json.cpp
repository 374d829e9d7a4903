#include <iostream>

#include "tools/output/diff_value.h"
#include "tools/output/explain_report.h"
#include "tools/output/jsontext.h"

namespace dalvo::tools {

namespace {

using Json = nlohmann::ordered_json;

Json json_assignment(const Assignment &assignment)
{
    Json json;
    json["value"] = assignment.value;
    json["source"] = assignment.place.source;
    json["line"] = assignment.place.line != 0 ? Json(assignment.place.line) : Json();
    json["section"] = !assignment.section.empty() ? Json(assignment.section) : Json();
    json["level"] = assignment.level;
    return json;
}

Json json_codes(const OptionInfo &option)
{
    Json codes = Json::array();
    for (const Code &code : option.codes) {
        Json json;
        json["value"] = code.value;
        json["meaning"] = code.meaning;
        codes.push_back(std::move(json));
    }
    return codes;
}

std::string verdict_name(Verdict verdict)
{
    switch (verdict) {
    case Verdict::accepted: return "accepted";
    case Verdict::out_of_range: return "out of range";
    case Verdict::unreadable: break;
    }
    return "unreadable";
}

Json json_steps(const Trail &trail, bool has_winner)
{
    Json steps = Json::array();
    for (std::size_t i = 0; i < trail.verdicts.size(); ++i) {
        const bool applies = i < trail.steps.size();
        const Step &step = applies ? trail.steps[i] : trail.others[i - trail.steps.size()];
        Json json = json_assignment(step.assignment);
        json["applies"] = applies;
        json["wins"] = has_winner && i + 1 == trail.steps.size();
        json["verdict"] = verdict_name(trail.verdicts[i]);
        json["rejected"] = applies && trail.is_rejected(i);
        steps.push_back(std::move(json));
    }
    return steps;
}

Json json_forcers(const std::string &name, const Forcing &forcing)
{
    Json forcers = Json::array();
    for (const Assignment *const forcer : forcing.forcing(name)) {
        Json json;
        json["name"] = forcer->name;
        json.update(json_assignment(*forcer));
        forcers.push_back(std::move(json));
    }
    return forcers;
}

Json json_forced(const std::string &name, const Forcing &forcing)
{
    Json forced = Json::array();
    for (const std::string &other : forcing.forced_by(name)) {
        Json json;
        json["name"] = other;
        json["setting"] = json_value(setting_named(forcing.settings(), other));
        forced.push_back(std::move(json));
    }
    return forced;
}

} // namespace

void write_json_explanation(const Trail &trail, const Forcing *forcing)
{
    const OptionInfo &option = *trail.option;
    const bool has_winner = forcing != nullptr && !trail.steps.empty();
    Json json;
    json["name"] = option.name;
    json["group"] = option.group.substr(0, option.group.find_last_not_of(':') + 1);
    json["type"] = option.type_name();
    json["default"] = json_value(setting_named(settings_of(Configuration()), option.name));
    json["accepted"] = option.accepted();
    json["codes"] = json_codes(option);
    json["help"] = option.help;
    json["assignments"] = json_steps(trail, has_winner);
    json["reason"] = has_winner ? Json(trail.reason()) : Json();
    json["setting"] = forcing != nullptr ? json_value(setting_named(forcing->settings(), option.name)) : Json();
    json["forced"] = forcing != nullptr && forcing->is_forced(option.name);
    json["forced_by"] = forcing != nullptr ? json_forcers(option.name, *forcing) : Json::array();
    json["forces"] = forcing != nullptr ? json_forced(option.name, *forcing) : Json::array();
    std::cout << json_text(json);
}

} // namespace dalvo::tools
