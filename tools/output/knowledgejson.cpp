#include "tools/output/knowledgejson.h"

#include <charconv>
#include <cmath>
#include <string>

namespace dalvo::tools {

namespace {

using nlohmann::ordered_json;

/// The double that is written in as many digits as the float is.
ordered_json float_json(float value)
{
    const std::string text = inspect::value_text(inspect::Value(value));
    if (!std::isfinite(value)) {
        return text;
    }
    double shown = 0.0;
    std::from_chars(text.data(), text.data() + text.size(), shown);
    return shown;
}

struct ToJson {
    ordered_json operator()(std::monostate) const { return nullptr; }
    ordered_json operator()(float value) const { return float_json(value); }
    template <class T> ordered_json operator()(const T &value) const { return value; }
};

const char *test_name(Condition::Test test)
{
    switch (test) {
    case Condition::Test::equal:
    case Condition::Test::equal_bool: return "equal";
    case Condition::Test::not_equal: return "not equal";
    case Condition::Test::neither_equal: return "neither equal";
    case Condition::Test::at_most: return "at most";
    case Condition::Test::above: break;
    }
    return "above";
}

ordered_json json_condition(const Condition &condition)
{
    const auto bound = static_cast<std::int32_t>(condition.bound);
    ordered_json value = bound;
    if (condition.test == Condition::Test::equal_bool) {
        value = bound != 0;
    } else if (condition.test == Condition::Test::neither_equal) {
        value = {bound, static_cast<std::int32_t>(condition.other)};
    }
    return {{"text", condition.text()}, {"test", test_name(condition.test)}, {"value", value}};
}

} // namespace

ordered_json json_value(const inspect::Value &value)
{
    return std::visit(ToJson(), value);
}

ordered_json json_line(const inspect::Place &place)
{
    return place.line != 0 ? ordered_json(place.line) : ordered_json();
}

ordered_json json_codes(const inspect::OptionInfo &option)
{
    ordered_json list = ordered_json::array();
    for (const inspect::Code &code : option.codes) {
        list.push_back({{"value", code.value}, {"meaning", code.meaning}});
    }
    return list;
}

ordered_json json_relations(const inspect::OptionInfo &option)
{
    ordered_json matters = ordered_json::array();
    for (const inspect::Requirement &requirement : option.matters_when) {
        matters.push_back({{"option", requirement.option}, {"condition", json_condition(requirement.condition)}});
    }
    ordered_json forces = ordered_json::array();
    for (const Force &force : option.forces) {
        forces.push_back({{"when", json_condition(force.when)},
                          {"option", force.option},
                          {"value", force.value},
                          {"own_assignment_wins", force.own_assignment_wins}});
    }
    ordered_json needs = ordered_json::array();
    for (const inspect::Need &need : option.needs) {
        needs.push_back({{"when", json_condition(need.when)},
                         {"option", need.option},
                         {"condition", json_condition(need.condition)},
                         {"for_soundness", need.is_for_soundness},
                         {"reason", need.reason}});
    }
    return {{"matters_when", std::move(matters)}, {"forces", std::move(forces)}, {"needs", std::move(needs)}};
}

} // namespace dalvo::tools
