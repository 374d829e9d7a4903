#include <algorithm>
#include <string>

#include "dalvo/inspect/findings/checkers.h"
#include "dalvo/inspect/words/printable.h"
#include "dalvo/utils/str.h"

namespace dalvo::inspect {

namespace {

std::string bool_word(double value)
{
    return value != 0.0 ? "true" : "false";
}

bool same_number(double a, double b)
{
    return a == b || (a != a && b != b); // NOLINT(misc-redundant-expression): NaN is NaN
}

/// Whether `assignment` asks for what its option has by default anyway.
bool is_default(const Filed &assignment, const OptionInfo &option)
{
    if (option.type != OPT_STR) {
        return !std::holds_alternative<std::monostate>(option.default_value) &&
               same_number(assignment.number, number_of(option.default_value));
    }
    const auto *const text = std::get_if<std::string>(&option.default_value);
    return text != nullptr && assignment.value == *text;
}

} // namespace

SectionChecker::SectionChecker(Collector &target, Scope judged_scope)
    : collector(target), scope(judged_scope), scenario(target.run(), target.direct_texts()),
      elsewhere(target.catalogue().options().size())
{
    if (scope != Scope::every) {
        return;
    }
    for (const Layer *const layer : {&scenario.unnamed_layer(), &scenario.direct_layer()}) {
        for (const std::uint32_t option : layer->options()) {
            const Filed *const assignment = layer->accepted(option);
            if (assignment != nullptr && assignment == scenario.winner(option) &&
                !is_default(*assignment, collector.option_of(*assignment))) {
                elsewhere.watch(scenario, option);
            }
        }
    }
}

void SectionChecker::check_unnamed()
{
    if (scope == Scope::every) {
        scenario.choose(nullptr, nullptr);
    }
    judged = &scenario.unnamed_layer();
    const auto check_ranges = [&](const Text &text) {
        for (const Filed &assignment : text.assignments) {
            check_range(assignment);
        }
    };
    for (const auto &text : collector.run().texts()) {
        for (const std::uint32_t *at = text->begin(0); at != text->end(0); ++at) {
            check_range(text->assignments[*at]);
        }
    }
    for (const auto &text : collector.direct_texts()) {
        check_ranges(*text);
    }
    check_effects(scenario.unnamed_layer());
    check_effects(scenario.direct_layer());
}

void SectionChecker::check_section(const SectionPart *begin, const SectionPart *end)
{
    scenario.choose(begin, end);
    judged = &scenario.chosen_layer();
    for (const SectionPart *part = begin; part != end; ++part) {
        for (const std::uint32_t *at = part->text->begin(part->section); at != part->text->end(part->section); ++at) {
            check_range(part->text->assignments[*at]);
        }
    }
    if (scope == Scope::every) {
        elsewhere.look(scenario);
    } else {
        check_unnamed();
    }
    check_effects(scenario.chosen_layer());
}

void SectionChecker::check_range(const Filed &assignment)
{
    if (assignment.verdict != Verdict::out_of_range) {
        return;
    }
    const OptionInfo &option = collector.option_of(assignment);
    const std::string message =
        "value " + shown(assignment.value) + " is out of range: " + option.name + " accepts " + option.accepted();
    if (scenario.is_last(assignment)) {
        if (is_first(assignment, Rule::out_of_range)) {
            collector.add(Rule::out_of_range, assignment, assignment.value, message).accepted = option.accepted();
        }
    } else if (is_in_all(assignment, Rule::out_of_range_replaced)) {
        const Filed *by = scenario.direct_layer().last(assignment.option);
        by = by != nullptr ? by : scenario.chosen_layer().last(assignment.option);
        by = by != nullptr ? by : scenario.unnamed_layer().last(assignment.option);
        Finding &finding = collector.add(Rule::out_of_range_replaced, assignment, assignment.value,
                                         message + "; replaced by " + collector.where(*by, assignment));
        finding.accepted = option.accepted();
        collector.note(finding, *by, "this assignment replaces it");
    }
}

void SectionChecker::check_effects(const Layer &layer)
{
    for (const std::uint32_t option : layer.options()) {
        const Filed *const assignment = layer.accepted(option);
        if (assignment != nullptr && scenario.winner(option) == assignment) {
            check_effect(*assignment);
        }
    }
}

void SectionChecker::check_effect(const Filed &assignment)
{
    if (!tell_forced(assignment) && !tell_no_effect(assignment)) {
        tell_needs(assignment);
    }
}

bool SectionChecker::tell_forced(const Filed &assignment)
{
    const Links::Forcer *const forcer = scenario.forcer_of(assignment.option);
    const double value = scenario.in_force(assignment.option);
    if (forcer == nullptr || value == assignment.number) {
        return false;
    }
    if (is_first(assignment, Rule::forced)) {
        const Filed &forcing = *scenario.winner(forcer->option);
        Finding &finding = collector.add(
            Rule::forced, assignment, assignment.name,
            str::joined({collector.option_of(assignment).name, " has no effect: ", collector.option_of(forcing).name,
                         " (", collector.where(forcing, assignment), ") forces it to ", bool_word(value)}));
        for (const Links::Forcer &each : scenario.links().options[assignment.option].forced_by) {
            if (scenario.forces(each, assignment.option)) {
                collector.note(finding, *scenario.winner(each.option), "this assignment forces it");
                finding.notes.back().is_in_message = each.option == forcer->option;
            }
        }
    }
    return true;
}

bool SectionChecker::tell_no_effect(const Filed &assignment)
{
    const OptionInfo &option = collector.option_of(assignment);
    if (is_default(assignment, option)) {
        return false;
    }
    std::vector<const Links::Decider *> unmet;
    scenario.find_unmet(assignment.option, unmet);
    if (unmet.empty()) {
        return false;
    }
    const bool is_unnamed = judged == &scenario.unnamed_layer();
    if (is_unnamed && scope == Scope::every ? elsewhere.matters(assignment.option)
                                            : !is_in_all(assignment, Rule::no_effect)) {
        return true;
    }
    std::string message = option.name + " has no effect: ";
    for (const Links::Decider *const decider : unmet) {
        message += (decider == unmet.front() ? "" : ", and ") + value_and_place(decider->option, assignment);
    }
    Finding &finding = collector.add(Rule::no_effect, assignment, assignment.name, std::move(message));
    for (const Links::Decider *const decider : unmet) {
        const std::string &name = collector.catalogue().options()[decider->option].name;
        const std::string note = "it matters only when " + name + " " + decider->condition.text();
        if (const Filed *const deciding = decides(decider->option)) {
            collector.note(finding, *deciding, note);
        } else {
            finding.notes.push_back({note, {}, true});
        }
    }
    return true;
}

void SectionChecker::tell_needs(const Filed &assignment)
{
    const Links::Option &links = scenario.links().options[assignment.option];
    for (const Links::Needed &needed : links.needs) {
        tell_need(assignment, assignment.option, needed, needed.option);
    }
    for (const Links::Needed &needing : links.needed_by) {
        if (!is_judged(scenario.winner(needing.option))) { // else it is told there
            tell_need(assignment, needing.option, needing, assignment.option);
        }
    }
}

void SectionChecker::tell_need(const Filed &at, std::size_t needing, const Links::Needed &needed, std::size_t other)
{
    const Need &need = *needed.need;
    if (!need.when.holds(scenario.in_force(needing)) || need.condition.holds(scenario.in_force(other)) ||
        !has_effect(needing)) {
        return;
    }
    const Rule rule = need.is_for_soundness ? Rule::unsound : Rule::unmet_need;
    if (!is_first(at, rule, &need)) {
        return;
    }
    const OptionInfo &option = collector.catalogue().options()[needing];
    const Filed *const asking = scenario.winner(needing);
    const Value value = asking != nullptr ? option.parse(asking->value) : copy_of(option.initial_value);
    Finding &finding =
        collector.add(rule, at, at.name,
                      str::joined({option.name, " = ", value_text(value), " needs that ", need.option, " ",
                                   need.condition.text(), ", but ", value_and_place(other, at), ": ", need.reason}));
    const bool is_needed_one = other == at.option;
    const Filed *const decisive = decides(is_needed_one ? needing : other);
    if (decisive != nullptr) {
        collector.note(finding, *decisive, is_needed_one ? "this assignment needs it" : "this one decides");
        finding.notes.back().is_in_message = !is_needed_one;
    }
}

bool SectionChecker::has_effect(std::size_t option) const
{
    std::vector<const Links::Decider *> unmet;
    scenario.find_unmet(option, unmet);
    return unmet.empty();
}

/// Whether a finding at the assignment would be told.
bool SectionChecker::is_judged(const Filed *assignment) const
{
    if (assignment == nullptr || collector.text_of(*assignment).kind == Text::Kind::built_in) {
        return false;
    }
    const bool is_by_hand =
        judged == &scenario.unnamed_layer() && scenario.direct_layer().accepted(assignment->option) == assignment;
    return scope == Scope::chosen || is_by_hand || judged->accepted(assignment->option) == assignment;
}

/// The assignment that decides what is in force for `option`, of this option or of one that forces it.
const Filed *SectionChecker::decides(std::size_t option) const
{
    const Links::Forcer *const forcer = scenario.forcer_of(option);
    return scenario.winner(forcer != nullptr ? forcer->option : option);
}

/// "OPTION (PLACE) is VALUE", or "OPTION is VALUE (forced by OTHER, PLACE)".
std::string SectionChecker::value_and_place(std::size_t option, const Filed &at) const
{
    const auto &options = collector.catalogue().options();
    const Filed *const decisive = decides(option);
    const std::string place = decisive != nullptr ? collector.where(*decisive, at) : "initial value";
    if (decisive != nullptr && scenario.forcer_of(option) != nullptr) {
        return str::joined({options[option].name, " is ", bool_word(scenario.in_force(option)), " (forced by ",
                            collector.option_of(*decisive).name, ", ", place, ")"});
    }
    const Value value =
        decisive != nullptr ? options[option].parse(decisive->value) : copy_of(options[option].initial_value);
    if (std::holds_alternative<std::monostate>(value)) {
        return options[option].name + " has no value";
    }
    return str::joined({options[option].name, " (", place, ") is ", value_text(value)});
}

bool SectionChecker::is_first(const Filed &assignment, Rule rule, const void *about)
{
    if (assignment.sections <= 1) {
        return true;
    }
    std::vector<Tally> &counts = tallies[&assignment];
    const bool is_new = std::none_of(counts.begin(), counts.end(),
                                     [&](const Tally &tally) { return tally.rule == rule && tally.about == about; });
    if (is_new) {
        counts.push_back({rule, about, 1});
    }
    return is_new;
}

bool SectionChecker::is_in_all(const Filed &assignment, Rule rule)
{
    if (assignment.sections <= 1 || scope == Scope::chosen) {
        return true;
    }
    std::vector<Tally> &counts = tallies[&assignment];
    auto found = std::find_if(counts.begin(), counts.end(), [&](const Tally &tally) { return tally.rule == rule; });
    if (found == counts.end()) {
        counts.push_back({rule, nullptr, 0});
        found = counts.end() - 1;
    }
    return ++found->count == assignment.sections;
}

} // namespace dalvo::inspect
