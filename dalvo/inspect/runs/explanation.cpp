#include "dalvo/inspect/runs/explanation.h"

#include "dalvo/inspect/words/printable.h"
#include "dalvo/utils/str.h"

namespace dalvo::inspect {

namespace {

std::string place_text(const Assigned &assigned)
{
    return assigned.kind == Assigned::Kind::built_in ? escaped(assigned.place.source) : assigned.place.text();
}

/// When an assignment applies: the stages follow each other in this order.
int stage_of(const Assigned &assigned)
{
    return assigned.kind == Assigned::Kind::command_line ? 2 : assigned.section.empty() ? 0 : 1;
}

} // namespace

std::string origin_text(const Setting &setting)
{
    if (!setting.is_forced()) {
        return setting.origin ? place_text(*setting.origin) : "initial value";
    }
    std::string text;
    for (const Forcing &forcing : setting.forced_by) {
        text += str::joined({text.empty() ? "forced by " : ", ", escaped(forcing.option->name), " = ",
                             escaped(forcing.assigned.value), " (", place_text(forcing.assigned), ")"});
    }
    return text;
}

std::string why_it_wins(const std::vector<Assigned> &applying)
{
    if (applying.size() == 1) {
        return "it is the only one that applies";
    }
    const Assigned &winner = applying.back();
    const Assigned &before = applying[applying.size() - 2];
    const bool is_by_hand = winner.kind == Assigned::Kind::command_line;
    std::string words;
    if (stage_of(applying.front()) != stage_of(winner)) {
        words = is_by_hand ? "the command line applies last" : "the chosen section applies after what always applies";
    }
    if (stage_of(before) == stage_of(winner)) {
        words += words.empty() ? "" : ", and in it ";
        words += is_by_hand                   ? "a later -o applies after an earlier one"
                 : before.text != winner.text ? "a later text applies after an earlier one"
                                              : "a later line applies after an earlier one";
    }
    return words;
}

std::string why_no_effect(const Setting &setting)
{
    std::string text;
    for (const Unmet &unmet : setting.unmet) {
        const std::string place = unmet.assigned ? place_text(*unmet.assigned) : "initial value";
        text += str::joined({text.empty() ? "" : "; ", unmet.decider->name, " is ", value_text(unmet.value), " (",
                             place, "), and it matters only when that ", unmet.condition.text()});
    }
    return text;
}

std::vector<std::string> unmet_needs(const Setting &setting)
{
    std::vector<std::string> sentences;
    for (const NeedInForce &need : setting.needs) {
        if (!need.is_met) {
            sentences.push_back(
                str::joined({need.option->name, " = ", value_text(need.value), " needs that ", need.need->option, " ",
                             need.need->condition.text(), ": ", need.need->reason}));
        }
    }
    return sentences;
}

std::vector<std::string> relation_sentences(const OptionInfo &option)
{
    std::vector<std::string> sentences;
    for (const Requirement &requirement : option.matters_when) {
        sentences.push_back(
            str::joined({"It matters only when ", requirement.option, " ", requirement.condition.text(), "."}));
    }
    for (const Force &force : option.forces) {
        sentences.push_back(str::joined({"When it ", force.when.text(), ", it forces ", force.option, " to ",
                                         force.value ? "true" : "false",
                                         force.own_assignment_wins ? ", unless any text assigns that option." : "."}));
    }
    for (const Need &need : option.needs) {
        sentences.push_back(str::joined({"When it ", need.when.text(), ", it needs that ", need.option, " ",
                                         need.condition.text(), ": ", need.reason, "."}));
    }
    return sentences;
}

} // namespace dalvo::inspect
