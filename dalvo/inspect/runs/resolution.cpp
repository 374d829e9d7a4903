#include "dalvo/inspect/runs/resolution.h"

#include <algorithm>

#include "dalvo/inspect/runs/scenario.h"

namespace dalvo::inspect {

namespace {

using Texts = std::vector<std::shared_ptr<const Text>>;

/// Calls `use` with the text, the section's name and the assignment, for each of a section of a text.
template <class Use> void for_each_of(const Text &text, std::size_t section, Use use)
{
    for (const std::uint32_t *at = text.begin(section); at != text.end(section); ++at) {
        use(text, text.sections[section].name, text.assignments[*at]);
    }
}

/// The named sections of the texts of `run`, those that are chosen or the others.
std::vector<SectionPart> named_parts(const Run &run, bool chosen)
{
    std::vector<SectionPart> parts;
    for (const auto &text : run.texts()) {
        for (std::size_t section = 1; section < text->sections.size(); ++section) {
            if ((!run.section().empty() && text->sections[section].name == run.section()) == chosen) {
                parts.push_back({text.get(), section});
            }
        }
    }
    return parts;
}

/// Calls `use` with the text, the section's name and the assignment for each that applies, in their order.
template <class Use> void for_each_applying(const Run &run, const Texts &direct, Use use)
{
    for (const auto &text : run.texts()) {
        for_each_of(*text, 0, use);
    }
    for (const SectionPart &part : named_parts(run, true)) {
        for_each_of(*part.text, part.section, use);
    }
    for (const auto &text : direct) {
        for_each_of(*text, 0, use);
    }
}

/// The run with its section chosen.
Scenario chosen_scenario(const Run &run, const Texts &direct)
{
    Scenario scenario(run, direct);
    const std::vector<SectionPart> parts = named_parts(run, true);
    scenario.choose(parts.data(), parts.data() + parts.size());
    return scenario;
}

bool has_error(const Run &run, const Texts &direct, const Scenario &scenario)
{
    bool found = !run.unreadable().empty() || !run.has_section(run.section());
    for (const auto &text : run.texts()) {
        found = found || text->has_byte_order_mark || text->has_malformed_header();
    }
    for_each_applying(run, direct, [&](const Text &, std::string_view, const Filed &assignment) {
        found = found || assignment.verdict < Verdict::out_of_range ||
                (assignment.verdict == Verdict::out_of_range && scenario.is_last(assignment));
    });
    return found;
}

/// The record that the winners make.
Configuration record_of(const Run &run, const Scenario &scenario)
{
    ConfigurationSetter setter;
    run.catalogue().register_options(setter);
    const auto &options = run.catalogue().options();
    for (std::size_t i = 0; i < options.size(); ++i) {
        const Filed *const winner = scenario.winner(i);
        if (winner != nullptr) {
            setter.set_option(options[i].name, std::string(winner->value), 0);
        } else if (run.catalogue().has_described_default(i)) {
            setter.set_option(options[i].name, value_text(options[i].initial_value), 0);
        }
    }
    Configuration record;
    setter.update_config(&record);
    return record;
}

Assigned::Kind kind_of(Text::Kind kind)
{
    return kind == Text::Kind::built_in ? Assigned::Kind::built_in
           : kind == Text::Kind::file   ? Assigned::Kind::file
                                        : Assigned::Kind::command_line;
}

Assigned assigned_as(const Text &text, std::string_view section, const Filed &assignment, Fate fate)
{
    return {text.place_of_value(assignment),
            std::string(assignment.value),
            std::string(section),
            kind_of(text.kind),
            assignment.text,
            fate,
            assignment.is_readable(),
            assignment.verdict == Verdict::accepted};
}

/// Puts what a scenario says of options into settings.
class SettingMaker {
public:
    SettingMaker(const Run &resolved, const Texts &direct_texts, const Scenario &resolved_scenario)
        : run(resolved), direct(direct_texts), scenario(resolved_scenario)
    {
    }

    Setting setting(std::size_t position) const
    {
        const OptionInfo &option = run.catalogue().options()[position];
        const Filed *const winner = scenario.winner(position);
        Setting made;
        made.option = &option;
        made.asked = winner != nullptr ? option.parse(winner->value) : copy_of(option.initial_value);
        made.value = value_in_force(position);
        made.origin = assigned(position);
        add_forcing(position, made);
        add_unmet(position, made);
        add_needs(position, made);
        return made;
    }

private:
    const Text &text_of(const Filed &assignment) const
    {
        return assignment.text < run.texts().size() ? *run.texts()[assignment.text]
                                                    : *direct[assignment.text - run.texts().size()];
    }

    std::optional<Assigned> assigned(std::size_t option) const
    {
        const Filed *const winner = scenario.winner(option);
        if (winner == nullptr) {
            return std::nullopt;
        }
        const bool of_section = scenario.chosen_layer().accepted(option) == winner;
        return assigned_as(text_of(*winner), of_section ? std::string_view(run.section()) : "", *winner, Fate::wins);
    }

    const OptionInfo *info(std::size_t option) const { return &run.catalogue().options()[option]; }

    Value value_in_force(std::size_t option) const
    {
        const Filed *const winner = scenario.winner(option);
        return scenario.forcer_of(option) != nullptr ? Value(scenario.in_force(option) != 0.0)
               : winner != nullptr                   ? info(option)->parse(winner->value)
                                                     : copy_of(info(option)->initial_value);
    }

    void add_forcing(std::size_t position, Setting &made) const
    {
        for (const Links::Forcer &forcer : scenario.links().options[position].forced_by) {
            if (scenario.forces(forcer, position)) {
                made.forced_by.push_back({info(forcer.option), *assigned(forcer.option)});
            }
        }
    }

    void add_unmet(std::size_t position, Setting &made) const
    {
        std::vector<const Links::Decider *> unmet;
        scenario.find_unmet(position, unmet);
        for (const Links::Decider *const decider : unmet) {
            made.unmet.push_back({info(decider->option), decider->condition, value_in_force(decider->option),
                                  assigned(decider->option)});
        }
    }

    void add_needs(std::size_t position, Setting &made) const
    {
        const auto add = [&](std::size_t needing, const Links::Needed &needed, std::size_t other) {
            if (needed.need->when.holds(scenario.in_force(needing))) {
                const bool is_met = needed.need->condition.holds(scenario.in_force(other));
                made.needs.push_back({info(needing), value_in_force(needing), needed.need, is_met});
            }
        };
        for (const Links::Needed &needed : scenario.links().options[position].needs) {
            add(position, needed, needed.option);
        }
        for (const Links::Needed &needing : scenario.links().options[position].needed_by) {
            add(needing.option, needing, position);
        }
    }

    const Run &run;
    const Texts &direct;
    const Scenario &scenario;
};

} // namespace

Resolution::Resolution(const Run &resolved)
{
    const auto made = std::make_shared<State>(State{resolved, resolved.direct_texts(), false, {}, {}});
    const Scenario scenario = chosen_scenario(made->run, made->direct);
    made->is_fine = !has_error(made->run, made->direct, scenario);
    made->record = record_of(made->run, scenario);
    const SettingMaker maker(made->run, made->direct, scenario);
    for (std::size_t i = 0; i < made->run.catalogue().options().size(); ++i) {
        made->settings.push_back(maker.setting(i));
    }
    state = made;
}

const Setting *Resolution::find(std::string_view name) const noexcept
{
    const std::size_t position = catalogue().position(name);
    return position < state->settings.size() ? &state->settings[position] : nullptr;
}

std::vector<Assigned> Resolution::assignments(std::string_view name) const
{
    const Run &run = state->run;
    const Scenario scenario = chosen_scenario(run, state->direct);
    std::vector<Assigned> found;
    for_each_applying(run, state->direct, [&](const Text &text, std::string_view section, const Filed &assignment) {
        if (assignment.name == name && assignment.verdict != Verdict::unknown) {
            const bool is_last = assignment.is_readable() && scenario.is_last(assignment);
            const bool is_rejected = !assignment.is_readable() || (is_last && assignment.verdict != Verdict::accepted);
            const Fate fate = is_rejected                                         ? Fate::rejected
                              : scenario.winner(assignment.option) == &assignment ? Fate::wins
                                                                                  : Fate::replaced;
            found.push_back(assigned_as(text, section, assignment, fate));
        }
    });
    for (const SectionPart &part : named_parts(run, false)) {
        for_each_of(*part.text, part.section, [&](const Text &text, std::string_view section, const Filed &assignment) {
            if (assignment.name == name && assignment.verdict != Verdict::unknown) {
                found.push_back(assigned_as(text, section, assignment, Fate::never_applied));
            }
        });
    }
    return found;
}

std::vector<std::size_t> Resolution::forced_by(std::string_view name) const
{
    std::vector<std::size_t> found;
    for (std::size_t i = 0; i < settings().size(); ++i) {
        const std::vector<Forcing> &forcing = settings()[i].forced_by;
        if (std::any_of(forcing.begin(), forcing.end(), [&](const Forcing &by) { return by.option->name == name; })) {
            found.push_back(i);
        }
    }
    return found;
}

bool fill_record(const Run &run, Configuration *record)
{
    const Texts direct = run.direct_texts();
    const Scenario scenario = chosen_scenario(run, direct);
    if (has_error(run, direct, scenario)) {
        return false;
    }
    Configuration filled = record_of(run, scenario);
    *record = std::move(filled);
    return true;
}

} // namespace dalvo::inspect
