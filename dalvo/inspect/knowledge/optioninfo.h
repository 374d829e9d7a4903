#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "dalvo/configuration/appliedoptions.h"
#include "dalvo/configuration/condition.h"
#include "dalvo/export.h"
#include "dalvo/inspect/words/words.h"

namespace dalvo::inspect {

/// A value of an integer option that has a meaning of its own.
struct Code {
    std::int32_t value;  ///< the code
    std::string meaning; ///< for people; may be empty
};

/// That an option matters only when another one meets a condition: otherwise nothing reads it.
struct Requirement {
    std::string option;  ///< the one that decides
    Condition condition; ///< on its value in force
};

/// That a value of an option needs another option to meet a condition.
struct Need {
    Condition when;        ///< on the value in force of the option that needs
    std::string option;    ///< the one that is needed
    Condition condition;   ///< on its value in force
    bool is_for_soundness; ///< whether answers may be wrong where the need is not met
    std::string reason;    ///< for people, without a capital or a full stop
};

/// What is known about an option.
///
/// `name`, `type`, `range` and `forces` are those of AppliedOption. A range accepts values; a value may be accepted and
/// make no sense, since ranges are one-sided on purpose: `lowest_sensible`.
struct DALVO_API OptionInfo : AppliedOption {
    std::string group;       ///< the help group, with its colon
    std::string help;        ///< for people; may have several lines
    Value initial_value;     ///< what a record holds before anything is assigned; none for an option without a default
    Value default_value;     ///< what the default text makes of it; as `initial_value` where that does not name it
    std::vector<Code> codes; ///< the values with meanings of their own; often empty
    bool codes_add_up = false;             ///< whether the codes are flags, to be added up
    std::optional<double> lowest_sensible; ///< a lower number, and NaN, makes no sense, accepted or not
    std::vector<Requirement> matters_when; ///< all have to be met; those of the deciding options count, too
    std::vector<Need> needs;               ///< what values of the option need of others

    /// The values accepted, for people: "true or false", "any integer", "at most 3", ...
    std::string accepted() const;

    /// The same with every word that a bool may be written in.
    std::string accepted_texts() const;

    /// The value that `text` (any bytes) says; none where it is not of the option's type.
    Value parse(std::string_view text) const;
};

/// The codes that lines such as "- 1 : meaning" of a help text list.
DALVO_API std::vector<Code> codes_of(const std::string &help);

} // namespace dalvo::inspect
