#include "tools/inspection/explain_steps.h"

#include "dalvo/configuration/configurationsetter.h"

namespace dalvo::tools {

namespace {

/// Appends the assignments of the sections for which `is_wanted` holds, text by text.
template <class Predicate>
void append(std::vector<Step> &steps, const std::vector<Source> &sources, Stage stage, Predicate is_wanted)
{
    for (std::size_t text = 0; text < sources.size(); ++text) {
        for (const Section &section : sources[text].sections) {
            if (is_wanted(section.name)) {
                for (const Assignment &assignment : section.assignments) {
                    steps.push_back({assignment, stage, text});
                }
            }
        }
    }
}

/// Asks the library what it makes of values.
class Judge {
public:
    explicit Judge(const OptionInfo &judged) : option(judged) { setter.initialize_options(); }

    Verdict operator()(const Assignment &assignment)
    {
        try {
            setter.set_option(option.name, assignment.value, assignment.level);
        } catch (const OptionParser::error &) {
            return Verdict::unreadable;
        }
        return option.applied.accepts(setter.options().find_option(option.name)->value) ? Verdict::accepted
                                                                                        : Verdict::out_of_range;
    }

private:
    const OptionInfo &option;
    ConfigurationSetter setter;
};

} // namespace

std::vector<Step> steps_of(const std::vector<Source> &sources, const Inputs &inputs)
{
    std::vector<Step> steps;
    const auto is_chosen = [&](const std::string &name) { return !name.empty() && name == inputs.section; };
    append(steps, sources, Stage::always, [](const std::string &name) { return name.empty(); });
    append(steps, sources, Stage::section, is_chosen);
    for (const auto &[name, value] : inputs.overrides) {
        steps.push_back({override_of(name, value), Stage::command_line, sources.size()});
    }
    append(steps, sources, Stage::never, [&](const std::string &name) { return !name.empty() && !is_chosen(name); });
    return steps;
}

Trail trail_of(const OptionInfo &option, const std::vector<Step> &steps)
{
    Trail trail{&option, {}, {}, {}};
    Judge judge(option);
    for (const Step &step : steps) { // those that never apply come last
        if (step.assignment.name == option.name) {
            (step.stage == Stage::never ? trail.others : trail.steps).push_back(step);
            trail.verdicts.push_back(judge(step.assignment));
        }
    }
    return trail;
}

std::vector<Assignment> Trail::applying() const
{
    std::vector<Assignment> assignments;
    for (const Step &step : steps) {
        assignments.push_back(step.assignment);
    }
    return assignments;
}

bool Trail::is_rejected(std::size_t i) const
{
    return verdicts[i] == Verdict::unreadable || (verdicts[i] == Verdict::out_of_range && i + 1 == steps.size());
}

std::string Trail::reason() const
{
    const Step &winner = steps.back();
    if (steps.size() == 1) {
        return "it is the only one that applies";
    }
    std::string words;
    if (steps.front().stage != winner.stage) {
        words = winner.stage == Stage::command_line ? "the command line applies last"
                                                    : "the chosen section applies after what always applies";
    }
    const Step &before = steps[steps.size() - 2];
    if (before.stage == winner.stage) {
        words += words.empty() ? "" : ", and in it ";
        words += winner.stage == Stage::command_line ? "a later -o applies after an earlier one"
                 : before.text != winner.text        ? "a later text applies after an earlier one"
                                                     : "a later line applies after an earlier one";
    }
    return words;
}

} // namespace dalvo::tools
