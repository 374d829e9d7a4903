#pragma once

#include <string>
#include <variant>
#include <vector>

#include "dalvo/configuration/condition.h"
#include "dalvo/configuration/configuration.h"
#include "dalvo/configuration/ranges.h"
#include "dalvo/export.h"
#include "dalvo/options/optionparser.h"

namespace dalvo {

/// What a value of one option does to another option: where it meets `when`, the other option's field gets `value`.
struct Force {
    Condition when;           ///< on the value of the option that forces
    std::string option;       ///< the option that is forced, a boolean
    bool value;               ///< what it is forced to
    bool own_assignment_wins; ///< the forced option is read later: an assignment of its own replaces the force
};

/// One read of `ConfigurationSetter::update_config`.
struct DALVO_API AppliedOption {
    /// The values accepted; std::monostate: all of the type.
    using Range = std::variant<std::monostate, IntRange, FloatRange>;

    std::string name;          ///< of the option that is read
    OptionType type;           ///< the type that an option of this name must have to be read
    Range range;               ///< the values accepted
    std::vector<Force> forces; ///< what the read does to the fields of other options

    /// Whether a value of the type is stored; false for a value of another type, and for none.
    bool accepts(const OptionParser::Value &value) const noexcept;

    /// The values accepted, for people: "any", "at most 3", "0 to 2", ...
    std::string accepted() const;
};

/// The reads of `ConfigurationSetter::update_config` in their order, made from the very rows that it runs. Some names
/// are not of the catalogue, and two stand twice. A row's place counts: a later row writes over what an earlier one has
/// forced.
DALVO_API std::vector<AppliedOption> applied_options(); // in applier.cpp, where the rows stand

/// What each of these reads would have to read for `record` to be filled as it is, in the same order. Log sections are
/// joined by commas; none are "ALL".
DALVO_API std::vector<OptionParser::Value> applied_values(Configuration record);

} // namespace dalvo
