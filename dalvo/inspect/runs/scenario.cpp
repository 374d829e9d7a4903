#include "dalvo/inspect/runs/scenario.h"

#include <algorithm>
#include <unordered_map>

namespace dalvo::inspect {

namespace {

void add_section(Layer &layer, const Text &text, std::size_t section)
{
    for (const std::uint32_t *at = text.begin(section); at != text.end(section); ++at) {
        layer.add(text.assignments[*at]);
    }
}

} // namespace

RunSections::RunSections(const Run &run)
{
    const auto has_names = [](const auto &text) { return text->sections.size() > 1; };
    const bool is_one_text = std::count_if(run.texts().begin(), run.texts().end(), has_names) <= 1;
    std::unordered_map<std::string_view, std::uint32_t> by_name;
    std::vector<std::uint32_t> groups; // of each part, in the order of the texts
    std::vector<SectionPart> all;
    std::uint32_t count = 0;
    for (const auto &text : run.texts()) {
        for (std::size_t section = 1; section < text->sections.size(); ++section) {
            const bool is_new = is_one_text || text->sections[section].is_nameless;
            const auto group = is_new ? count : by_name.emplace(text->sections[section].name, count).first->second;
            count = std::max(count, group + 1);
            groups.push_back(group);
            all.push_back({text.get(), section});
        }
    }
    starts.assign(count + std::size_t{1}, 0);
    for (const std::uint32_t group : groups) {
        ++starts[group + 1];
    }
    for (std::size_t group = 0; group < count; ++group) {
        starts[group + 1] += starts[group];
    }
    std::vector<std::uint32_t> next(starts.begin(), starts.end() - 1);
    parts.resize(all.size());
    for (std::size_t i = 0; i < all.size(); ++i) {
        parts[next[groups[i]]++] = all[i];
    }
}

Scenario::Scenario(const Run &run, const std::vector<std::shared_ptr<const Text>> &direct_texts)
    : relations(&run.catalogue().links()), unnamed(relations->options.size()), chosen(relations->options.size()),
      direct(relations->options.size())
{
    for (const auto &text : run.texts()) {
        add_section(unnamed, *text, 0);
    }
    for (const auto &text : direct_texts) {
        add_section(direct, *text, 0);
    }
}

void Scenario::choose(const SectionPart *begin, const SectionPart *end)
{
    chosen.clear();
    for (const SectionPart *part = begin; part != end; ++part) {
        add_section(chosen, *part->text, part->section);
    }
}

const Filed *Scenario::winner(std::size_t option) const
{
    const Filed *const by_hand = direct.accepted(option);
    const Filed *const of_section = chosen.accepted(option);
    return by_hand != nullptr ? by_hand : of_section != nullptr ? of_section : unnamed.accepted(option);
}

bool Scenario::is_last(const Filed &assignment) const
{
    const std::size_t option = assignment.option;
    const Filed *const by_hand = direct.last(option);
    const Filed *const of_section = chosen.last(option);
    return &assignment == (by_hand != nullptr ? by_hand : of_section != nullptr ? of_section : unnamed.last(option));
}

bool Scenario::forces(const Links::Forcer &forcer, std::size_t option) const
{
    const Filed *const forcing = winner(forcer.option);
    return forcing != nullptr && forcer.when.holds(forcing->number) &&
           !(forcer.own_assignment_wins && winner(option) != nullptr);
}

const Links::Forcer *Scenario::forcer_of(std::size_t option) const
{
    for (const Links::Forcer &forcer : relations->options[option].forced_by) {
        if (forces(forcer, option)) {
            return &forcer;
        }
    }
    return nullptr;
}

double Scenario::asked(std::size_t option) const
{
    const Filed *const own = winner(option);
    return own != nullptr ? own->number : relations->options[option].initial;
}

double Scenario::in_force(std::size_t option) const
{
    double value = asked(option);
    for (const Links::Forcer &forcer : relations->options[option].forced_by) { // the last one writes last
        if (forces(forcer, option)) {
            value = forcer.value ? 1.0 : 0.0;
        }
    }
    return value;
}

void Scenario::find_unmet(std::size_t option, std::vector<const Links::Decider *> &unmet) const
{
    const auto &options = relations->options;
    if (options[option].deciders.empty()) {
        return;
    }
    std::vector<std::size_t> seen{option};
    for (std::size_t i = 0; i < seen.size(); ++i) {
        for (const Links::Decider &decider : options[seen[i]].deciders) {
            const auto is_same = [&](const Links::Decider *found) { return found->option == decider.option; };
            const bool holds = decider.condition.holds(in_force(decider.option));
            if (!holds && std::none_of(unmet.begin(), unmet.end(), is_same)) {
                unmet.push_back(&decider);
            }
            if (std::find(seen.begin(), seen.end(), decider.option) == seen.end()) {
                seen.push_back(decider.option);
            }
        }
    }
}

} // namespace dalvo::inspect
