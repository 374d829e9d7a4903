#include "dalvo/inspect/knowledge/links.h"

#include "dalvo/configuration/appliedoptions.h"

namespace dalvo::inspect {

namespace {

/// An option that is forced may be one that no host has described: then there is nothing to tell of it.
void add_forces(const Catalogue &catalogue, Links &links)
{
    for (const AppliedOption &row : applied_options()) {
        const std::size_t forcer = catalogue.position(row.name);
        for (const Force &force : row.forces) {
            const std::size_t forced = catalogue.position(force.option);
            if (forcer != Catalogue::npos && forced != Catalogue::npos) {
                links.options[forced].forced_by.push_back({forcer, force.when, force.value, force.own_assignment_wins});
            }
        }
    }
}

} // namespace

Links links_of(const Catalogue &catalogue)
{
    Links links;
    links.options.resize(catalogue.options().size());
    for (std::size_t i = 0; i < links.options.size(); ++i) {
        const OptionInfo &option = catalogue.options()[i];
        links.options[i].initial = number_of(option.initial_value);
        for (const Requirement &requirement : option.matters_when) {
            links.options[i].deciders.push_back({catalogue.position(requirement.option), requirement.condition});
        }
        for (const Need &need : option.needs) {
            const std::size_t needed = catalogue.position(need.option);
            links.options[i].needs.push_back({needed, &need});
            links.options[needed].needed_by.push_back({i, &need});
        }
    }
    add_forces(catalogue, links);
    return links;
}

} // namespace dalvo::inspect
