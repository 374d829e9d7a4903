#pragma once

#include <optional>
#include <sstream>
#include <string>

#include "dalvo/configuration/configurationsetter.h"
#include "tests/inspect/random_runs.h"

/// What a setter makes of a run: nothing of the inspection is in it.
namespace dalvo::testing {

/// Has `setter` read the texts. Throws OptionParser::error for a malformed header.
inline void load_texts(ConfigurationSetter &setter, const RunPlan &plan)
{
    if (plan.has_default_text) {
        setter.load_default();
    }
    for (const std::string &text : plan.texts) {
        std::istringstream in(text);
        setter.load(in, 0);
    }
}

/// Assigns what section `name` of `read` holds to the options of `setter`; false where there is no such section.
inline bool assign_section(ConfigurationSetter &setter, const ConfigurationSetter &read, const std::string &name)
{
    const auto *const entries = read.sections().find(name);
    if (entries == nullptr) {
        return false;
    }
    for (const ConfigurationSetter::OptEntry &entry : *entries) {
        setter.set_option(entry.name, entry.value, entry.level);
    }
    return true;
}

/// The record that a setter with the library's options fills; none where it throws, or where no text has the section.
inline std::optional<Configuration> filled_by_setter(const RunPlan &plan)
{
    try {
        ConfigurationSetter read;
        load_texts(read, plan);
        ConfigurationSetter setter; // has no texts of its own, so that what is assigned by hand wins
        setter.initialize_options();
        assign_section(setter, read, "");
        if (!plan.section.empty() && !assign_section(setter, read, plan.section)) {
            return std::nullopt;
        }
        for (const auto &[name, value] : plan.direct) {
            setter.set_option(name, value, 0);
        }
        Configuration record;
        setter.update_config(&record);
        return record;
    } catch (const OptionParser::error &) {
        return std::nullopt;
    }
}

} // namespace dalvo::testing
