#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "dalvo/configuration/configuration.h"
#include "dalvo/export.h"
#include "dalvo/inspect/knowledge/catalogue.h"
#include "dalvo/inspect/runs/place.h"
#include "dalvo/inspect/runs/run.h"

namespace dalvo::inspect {

/// What becomes of an assignment.
enum class Fate {
    wins,          ///< it is the one that its option takes its value from
    replaced,      ///< a later one wins
    never_applied, ///< its section is not chosen
    rejected,      ///< its value makes the run fail
};

/// An assignment of a run to an option.
struct Assigned {
    /// From what kind of text it comes.
    enum class Kind { built_in, file, command_line };

    Place place;         ///< of the value
    std::string value;   ///< as written
    std::string section; ///< "" for the unnamed one and on a command line
    Kind kind;           ///< of its text
    std::size_t text;    ///< which of the run's texts, from 0; those of a command line come last
    Fate fate;           ///< what becomes of it
    bool is_readable;    ///< whether the value is of the option's type
    bool is_accepted;    ///< whether the option accepts the value
};

/// An assignment to one option that forces another.
struct Forcing {
    const OptionInfo *option; ///< the one that forces; owned by the catalogue
    Assigned assigned;        ///< its assignment that wins
};

/// Why an option has no effect: one that decides about it does not meet the condition. Each that decides is told once.
struct Unmet {
    const OptionInfo *decider;        ///< owned by the catalogue
    Condition condition;              ///< what it does not meet
    Value value;                      ///< what is in force for it
    std::optional<Assigned> assigned; ///< its assignment that wins, if there is one
};

/// A need that is not met, or that is.
struct NeedInForce {
    const OptionInfo *option; ///< the one that needs; owned by the catalogue
    Value value;              ///< what is in force for it
    const Need *need;         ///< owned by the catalogue
    bool is_met;              ///< whether the needed option meets the condition
};

/// An option and what is in force for it.
struct Setting {
    const OptionInfo *option; ///< owned by the catalogue
    Value value;              ///< in force
    Value asked;              ///< what its own assignment says, or the initial value; the same where none forces it
    std::optional<Assigned> origin; ///< the assignment that wins, if there is one
    std::vector<Forcing> forced_by; ///< what forces the option, whether to what it has anyway or not
    std::vector<Unmet> unmet;       ///< why it has no effect; empty where it has one
    std::vector<NeedInForce> needs; ///< where its value in force needs other options, and where others need it

    /// Whether another value is in force than the one that was asked for.
    bool is_forced() const { return !same_value(value, asked); }

    /// Whether anything reads the value.
    bool has_effect() const noexcept { return unmet.empty(); }

    /// Whether the value differs from what the default text makes it.
    bool is_changed() const noexcept { return !same_value(value, option->default_value); }
};

/// What a run comes to.
///
/// Where the run has an error (`applies` is false) a setter would throw. There are settings all the same: those that
/// the run would have without its wrong lines.
///
/// Example:
///
///     const Resolution resolution(run);
///     const Setting *seed = resolution.find("random_seed");
///     value_text(seed->value)        // "7"
///     seed->origin->place.text()     // "solver.cfg:2"
///     solve(resolution.record());    // a Configuration
///
/// Borrows the run's catalogue, and shares its texts. Copies are cheap: they share all.
class DALVO_API Resolution {
public:
    /// Resolves `resolved`, which may be changed afterwards.
    explicit Resolution(const Run &resolved);

    /// Whether the run has no error: every text can be read and loaded, the chosen section is there, and each value
    /// that applies is accepted.
    bool applies() const noexcept { return state->is_fine; }

    /// The options that there are.
    const Catalogue &catalogue() const noexcept { return state->run.catalogue(); }

    /// The record, filled anew.
    const Configuration &record() const noexcept { return state->record; }

    /// All options in the order of registration.
    const std::vector<Setting> &settings() const noexcept { return state->settings; }

    /// The setting of option `name`, good as long as the resolution; null where there is no such option.
    const Setting *find(std::string_view name) const noexcept;

    /// Every assignment to the option `name`: those that apply, in their order, then those of sections that are not
    /// chosen, text by text. A line below a header with several names is listed for each of its sections. None for a
    /// name that is none.
    std::vector<Assigned> assignments(std::string_view name) const;

    /// The settings that the assignment of option `name` forces, by their options' positions in `settings`.
    std::vector<std::size_t> forced_by(std::string_view name) const;

private:
    struct State {
        Run run;
        std::vector<std::shared_ptr<const Text>> direct; // what `Run::assign` assigns
        bool is_fine;
        Configuration record;
        std::vector<Setting> settings;
    };

    std::shared_ptr<const State> state; // never changed, and so shared by copies
};

/// Fills `*record` (not null, owned by the caller) from `run`, anew; returns whether the run has no error. Where it has
/// one, the record is left alone: `check` tells what is wrong. Throws std::bad_alloc when memory runs out, and then leaves
/// the record alone, too.
DALVO_API bool fill_record(const Run &run, Configuration *record);

} // namespace dalvo::inspect
