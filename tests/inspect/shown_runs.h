#pragma once

#include <optional>
#include <string>
#include <vector>

#include "dalvo/inspect/runs/resolution.h"
#include "dalvo/inspect/words/words.h"

/// What runs come to as text: rows can hold it, and a test compares all of it at once.
namespace dalvo::testing {

/// "source:line:column-end", all of it.
inline std::string shown(const inspect::Place &place)
{
    return place.source + ":" + std::to_string(place.line) + ":" + std::to_string(place.column) + "-" +
           std::to_string(place.end_column);
}

inline std::string shown(inspect::Fate fate)
{
    switch (fate) {
    case inspect::Fate::wins: return "wins";
    case inspect::Fate::replaced: return "replaced";
    case inspect::Fate::never_applied: return "never applied";
    case inspect::Fate::rejected: break;
    }
    return "rejected";
}

inline std::string shown(inspect::Assigned::Kind kind)
{
    switch (kind) {
    case inspect::Assigned::Kind::built_in: return "built-in";
    case inspect::Assigned::Kind::file: return "file";
    case inspect::Assigned::Kind::command_line: break;
    }
    return "command line";
}

/// "solver.cfg:2:13-14 '3' [fast] file 1: rejected, not accepted".
inline std::string shown(const inspect::Assigned &assigned)
{
    return shown(assigned.place) + " '" + assigned.value + "'" +
           (assigned.section.empty() ? "" : " [" + assigned.section + "]") + " " + shown(assigned.kind) + " " +
           std::to_string(assigned.text) + ": " + shown(assigned.fate) +
           (assigned.is_readable ? "" : ", not readable") + (assigned.is_accepted ? "" : ", not accepted");
}

inline std::string shown(const std::optional<inspect::Assigned> &assigned)
{
    return assigned ? shown(*assigned) : "nothing";
}

/// "interpolation by solver.cfg:1:17-21 'true' file 1: wins".
inline std::string shown(const inspect::Forcing &forcing)
{
    return forcing.option->name + " by " + shown(forcing.assigned);
}

/// "theory.bv.enabled is false, not: is true; by solver.cfg:1:21-26 'false' file 1: wins".
inline std::string shown(const inspect::Unmet &unmet)
{
    return unmet.decider->name + " is " + inspect::value_text(unmet.value) + ", not: " + unmet.condition.text() +
           "; by " + shown(unmet.assigned);
}

/// "unsat_core_generation is 2 needs dpll.store_tlemmas is true: met".
inline std::string shown(const inspect::NeedInForce &need)
{
    return need.option->name + " " + need.need->when.text() + " needs " + need.need->option + " " +
           need.need->condition.text() + (need.is_met ? ": met" : ": not met");
}

template <class T> std::vector<std::string> each_shown(const std::vector<T> &list)
{
    std::vector<std::string> texts;
    for (const T &element : list) {
        texts.push_back(shown(element));
    }
    return texts;
}

/// All that is known of a setting, a fact a line.
inline std::string shown(const inspect::Setting &setting)
{
    std::string text = setting.option->name + " = " + inspect::value_words(setting.value) + ", asked " +
                       inspect::value_words(setting.asked) + ", by " + shown(setting.origin) + "\n";
    for (const std::string &fact : each_shown(setting.forced_by)) {
        text += "  forced: " + fact + "\n";
    }
    for (const std::string &fact : each_shown(setting.unmet)) {
        text += "  unmet: " + fact + "\n";
    }
    for (const std::string &fact : each_shown(setting.needs)) {
        text += "  need: " + fact + "\n";
    }
    return text;
}

/// All that is known of a run's settings.
inline std::string shown(const inspect::Resolution &resolution)
{
    std::string text = resolution.applies() ? "applies\n" : "does not apply\n";
    for (const inspect::Setting &setting : resolution.settings()) {
        text += shown(setting);
    }
    return text;
}

} // namespace dalvo::testing
