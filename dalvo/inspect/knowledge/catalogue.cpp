#include "dalvo/inspect/knowledge/catalogue.h"

#include <algorithm>
#include <map>
#include <ostream>
#include <set>

#include "dalvo/configuration/default_config.h"
#include "dalvo/inspect/knowledge/defaults.h"
#include "dalvo/inspect/knowledge/links.h"
#include "dalvo/inspect/knowledge/relations.h"
#include "dalvo/inspect/knowledge/suggestions.h"
#include "dalvo/options/nearby.h"

namespace dalvo::inspect {

namespace {

std::string built_in_text()
{
    std::string text;
    for (const char *const *piece = dalvo_default_config; *piece != nullptr; ++piece) {
        text += *piece;
    }
    return text;
}

/// Notes the order of `dump`, and what it prints unsigned.
class DumpedNames : public ConfigurationSetter::ConfigEntryPrinter {
public:
    void operator()(std::ostream &, const std::string &name, bool) const override { names.push_back(name); }
    void operator()(std::ostream &, const std::string &name, int) const override { names.push_back(name); }
    void operator()(std::ostream &, const std::string &name, double) const override { names.push_back(name); }
    void operator()(std::ostream &, const std::string &name, const std::string &) const override
    {
        names.push_back(name);
    }
    void operator()(std::ostream &, const std::string &name, unsigned int) const override
    {
        names.push_back(name);
        naturals.insert(name);
    }

    mutable std::vector<std::string> names;
    mutable std::set<std::string> naturals;
};

DumpedNames dumped_names(const ConfigurationSetter &setter)
{
    const Configuration record;
    std::ostream nowhere(nullptr);
    DumpedNames names;
    setter.dump(&record, nowhere, names);
    return names;
}

} // namespace

Catalogue::Catalogue() : Catalogue(built_in_text()) {}

Catalogue::Catalogue(std::string default_text) : text(std::move(default_text))
{
    ConfigurationSetter setter;
    setter.initialize_options();
    const DumpedNames dumped = dumped_names(setter);
    const std::map<std::string, Value> initial = values_by_option(Configuration());
    std::map<std::string, AppliedOption> reads;
    for (AppliedOption &read : applied_options()) {
        reads.insert_or_assign(read.name, std::move(read));
    }
    for (const OptionParser::Option &registered : setter.options().options()) {
        OptionInfo option;
        static_cast<AppliedOption &>(option) = reads.at(registered.name);
        option.group = registered.group;
        option.help = registered.help;
        option.initial_value = initial.at(registered.name);
        option.codes = codes_of(setter.options().find_option(main_engine_name(registered.name))->help);
        option.codes_add_up = registered.help.find("bitwise-or") != std::string::npos;
        option.lowest_sensible = lowest_sensible(option);
        if (dumped.naturals.count(registered.name) != 0) {
            option.lowest_sensible = 0.0;
        }
        option.matters_when = requirements_of(registered.name);
        option.needs = needs_of(registered.name);
        add(std::move(option));
    }
    own_count = list.size(); // NOLINT(cppcoreguidelines-prefer-member-initializer): known only after the loop
    for (const std::string &name : dumped.names) {
        order.push_back(position(name));
    }
    relations = std::make_unique<const Links>(links_of(*this));
    update_defaults(*this, list);
}

Catalogue::~Catalogue() = default;

const Catalogue &Catalogue::standard()
{
    static const Catalogue catalogue;
    return catalogue;
}

const OptionInfo *Catalogue::find(std::string_view name) const noexcept
{
    const std::size_t at = position(name);
    return at != npos ? &list[at] : nullptr;
}

std::size_t Catalogue::position(std::string_view name) const noexcept
{
    const auto found = positions.find(name);
    return found != positions.end() ? found->second : npos;
}

std::vector<std::string> Catalogue::suggestions(const std::string &name, std::size_t most) const
{
    std::vector<std::string> found = options_called(name);
    NearbyNames nearby(name);
    for (const OptionInfo &option : list) {
        nearby.offer(option.name);
    }
    for (const std::string &near : nearby.nearest(most)) {
        if (std::find(found.begin(), found.end(), near) == found.end()) {
            found.push_back(near);
        }
    }
    found.resize(std::min(found.size(), most));
    return found;
}

void Catalogue::register_options(ConfigurationSetter &setter) const
{
    setter.initialize_options();
    for (std::size_t i = own_count; i < list.size(); ++i) {
        setter.options().set_cur_help_group(list[i].group);
        setter.options().add_option(list[i].name, list[i].type, list[i].help);
    }
}

void Catalogue::add(OptionInfo option)
{
    list.push_back(std::move(option));
    try {
        positions.emplace(list.back().name, list.size() - 1);
    } catch (...) {
        list.pop_back();
        throw;
    }
}

void Catalogue::add_described(OptionInfo option, bool has_default)
{
    described_defaults.push_back(has_default);
    try {
        add(std::move(option));
    } catch (...) {
        described_defaults.pop_back();
        throw;
    }
    try {
        order.push_back(list.size() - 1);
        auto updated = std::make_unique<const Links>(links_of(*this));
        update_defaults(*this, list);
        relations = std::move(updated);
    } catch (...) {
        order.resize(list.size() - 1);
        positions.erase(list.back().name);
        list.pop_back();
        described_defaults.pop_back();
        throw;
    }
}

} // namespace dalvo::inspect
