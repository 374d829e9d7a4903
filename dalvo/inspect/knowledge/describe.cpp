#include <map>
#include <utility>

#include "dalvo/inspect/knowledge/catalogue.h"
#include "dalvo/inspect/knowledge/defaults.h"
#include "dalvo/inspect/knowledge/relations.h"

// Options that hosts describe.

namespace dalvo::inspect {

namespace {

/// What the library knows of an option that it does not register; nothing where it does not read one of that name.
OptionInfo known_of(const std::string &name, OptionType type)
{
    OptionInfo option;
    static_cast<AppliedOption &>(option) = {name, type, {}, {}};
    for (AppliedOption &read : applied_options()) {
        if (read.name == name) {
            static_cast<AppliedOption &>(option) = std::move(read);
            option.matters_when = requirements_of(name);
            option.initial_value = values_by_option(Configuration()).at(name);
        }
    }
    return option;
}

[[noreturn]] void refuse(const std::string &message, const std::string &option, const std::string &value = "")
{
    throw OptionParser::error(message, option, value, "");
}

void check_range(const AppliedOption &option)
{
    const bool fits = std::holds_alternative<std::monostate>(option.range) ||
                      (option.type == OPT_INT && std::holds_alternative<IntRange>(option.range)) ||
                      (option.type == OPT_FLOAT && std::holds_alternative<FloatRange>(option.range));
    if (!fits) {
        refuse("range of another type for option " + option.name, option.name);
    }
}

void check_relations(const Catalogue &catalogue, const OptionExtras &extras)
{
    const auto check = [&](const std::string &name) {
        if (catalogue.find(name) == nullptr) {
            refuse("unknown option " + name + did_you_mean(catalogue.suggestions(name, 1)), name);
        }
    };
    for (const Requirement &requirement : extras.matters_when) {
        check(requirement.option);
    }
    for (const Need &need : extras.needs) {
        check(need.option);
    }
}

/// Those that are described, else those that the help lists.
std::vector<Code> codes_in(const OptionInfo &option, const OptionExtras &extras)
{
    if (option.type != OPT_INT && !extras.codes.empty()) {
        refuse("codes of another type for option " + option.name, option.name);
    }
    return option.type != OPT_INT ? std::vector<Code>() : extras.codes.empty() ? codes_of(option.help) : extras.codes;
}

/// The value of the described default.
Value default_value(const OptionInfo &option, const std::string &text)
{
    Value value = option.parse(text);
    if (!option.accepts(value)) {
        refuse("invalid value for option " + option.name, option.name, text);
    }
    return value;
}

} // namespace

const OptionInfo &Catalogue::describe(const std::string &name, OptionType type, const std::string &group,
                                      const std::string &help, const OptionExtras &extras)
{
    ConfigurationSetter setter;
    register_options(setter);
    setter.options().add_option(name, type, help); // throws for a name that is taken, and for a type that is none
    OptionInfo option = known_of(name, type);
    if (option.type != type) {
        refuse("option of another type " + name, name, type_name(option.type));
    }
    if (!std::holds_alternative<std::monostate>(extras.range)) {
        option.range = extras.range;
    }
    check_range(option);
    check_relations(*this, extras);
    option.group = group;
    option.help = help;
    if (extras.default_text) {
        option.initial_value = default_value(option, *extras.default_text);
    }
    option.codes = codes_in(option, extras);
    option.codes_add_up = extras.codes_add_up;
    option.lowest_sensible = lowest_sensible(option);
    option.matters_when.insert(option.matters_when.end(), extras.matters_when.begin(), extras.matters_when.end());
    option.needs = extras.needs;
    add_described(std::move(option), extras.default_text.has_value());
    return list.back();
}

} // namespace dalvo::inspect
