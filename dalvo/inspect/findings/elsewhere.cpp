#include "dalvo/inspect/findings/elsewhere.h"

#include <algorithm>

namespace dalvo::inspect {

namespace {

bool has_effect(const Scenario &scenario, std::size_t option)
{
    std::vector<const Links::Decider *> unmet;
    scenario.find_unmet(option, unmet);
    return unmet.empty();
}

/// Appends `option` unless it is among `options`.
void add_once(std::vector<std::size_t> &options, std::size_t option)
{
    if (std::find(options.begin(), options.end(), option) == options.end()) {
        options.push_back(option);
    }
}

} // namespace

/// Enters `option` at all that decide whether it matters: its deciders and theirs, and what forces these.
void Elsewhere::watch(const Scenario &scenario, std::uint32_t option)
{
    if (has_effect(scenario, option)) {
        return;
    }
    const auto &links = scenario.links().options;
    std::vector<std::size_t> deciding{option};
    for (std::size_t i = 0; i < deciding.size(); ++i) {
        for (const Links::Decider &decider : links[deciding[i]].deciders) {
            add_once(deciding, decider.option);
        }
        if (i == 0) {
            continue; // what forces the option itself does not make it matter
        }
        decided[deciding[i]].push_back(option);
        for (const Links::Forcer &forcer : links[deciding[i]].forced_by) {
            add_once(deciding, forcer.option);
        }
    }
}

void Elsewhere::look(const Scenario &scenario)
{
    for (const std::uint32_t changed : scenario.chosen_layer().options()) {
        for (const std::uint32_t option : decided[changed]) {
            if (!matters_in_one[option] && scenario.chosen_layer().accepted(option) == nullptr) {
                matters_in_one[option] = has_effect(scenario, option);
            }
        }
    }
}

} // namespace dalvo::inspect
