#include "tools/inspection/optioninfo.h"

#include <charconv>
#include <sstream>
#include <stdexcept>
#include <string_view>
#include <unordered_map>

#include "dalvo/configuration/configurationsetter.h"
#include "dalvo/options/nearby.h"
#include "tools/output/excerpt.h"
#include "tools/inspection/settings.h"

namespace dalvo::tools {

namespace {

const OptionParser &catalogue()
{
    static ConfigurationSetter setter;
    static const bool registered = (setter.initialize_options(), true);
    static_cast<void>(registered);
    return setter.options();
}

/// Reads "- N : meaning"; false for a line of another form.
bool read_code(std::string_view line, std::vector<Code> &codes)
{
    if (line.substr(0, 2) != "- ") {
        return false;
    }
    Code code{};
    const auto [end, failure] = std::from_chars(line.data() + 2, line.data() + line.size(), code.value);
    const std::size_t colon = line.find(':');
    if (failure != std::errc() || colon == std::string_view::npos) {
        return false;
    }
    const std::size_t meaning = line.find_first_not_of(' ', colon + 1);
    if (meaning != std::string_view::npos) {
        code.meaning = line.substr(meaning);
    }
    codes.push_back(code);
    return true;
}

std::vector<Code> codes_of(const std::string &help)
{
    std::vector<Code> codes;
    std::istringstream lines(help);
    for (std::string line; std::getline(lines, line);) {
        read_code(line, codes);
    }
    return codes;
}

AppliedOption applied_named(const std::vector<AppliedOption> &applied, const std::string &name)
{
    for (const AppliedOption &option : applied) {
        if (option.name == name) {
            return option;
        }
    }
    throw std::logic_error("option " + name + " is registered and never applied");
}

} // namespace

std::string OptionInfo::type_name() const
{
    switch (type) {
    case OPT_BOOL: return "bool";
    case OPT_INT: return "int";
    case OPT_FLOAT: return "float";
    case OPT_STR: break;
    }
    return "string";
}

std::string OptionInfo::accepted() const
{
    if (type == OPT_BOOL) {
        return "true or false";
    }
    std::string range = applied.accepted();
    if (range != "any") {
        return range;
    }
    return type == OPT_INT ? "any integer" : type == OPT_FLOAT ? "any number" : "any text";
}

const std::vector<OptionInfo> &all_options()
{
    static const std::vector<OptionInfo> all = [] {
        const std::vector<Setting> defaults = settings_of(Configuration());
        const std::vector<AppliedOption> applied = applied_options();
        std::vector<OptionInfo> list;
        for (const OptionParser::Option &option : catalogue().options()) {
            list.push_back({option.name, option.type, option.group, option.help,
                            setting_named(defaults, option.name).text(), applied_named(applied, option.name),
                            codes_of(option.help)});
        }
        return list;
    }();
    return all;
}

const OptionInfo *find_option(const std::string &name)
{
    static const std::unordered_map<std::string_view, const OptionInfo *> by_name = [] {
        std::unordered_map<std::string_view, const OptionInfo *> map;
        for (const OptionInfo &option : all_options()) {
            map.emplace(option.name, &option);
        }
        return map;
    }();
    const auto found = by_name.find(name);
    return found != by_name.end() ? found->second : nullptr;
}

std::vector<std::string> suggestions(const std::string &name, std::size_t most)
{
    NearbyNames nearby(name);
    for (const OptionParser::Option &option : catalogue().options()) {
        nearby.offer(option.name);
    }
    return nearby.nearest(most);
}

std::string unknown_option(const std::string &name)
{
    std::string text = "unknown option " + shown(name);
    const std::vector<std::string> near = suggestions(name, 3);
    for (std::size_t i = 0; i < near.size(); ++i) {
        text += (i == 0 ? " (did you mean " : i + 1 == near.size() ? " or " : ", ") + near[i];
    }
    return near.empty() ? text : text + "?)";
}

} // namespace dalvo::tools
