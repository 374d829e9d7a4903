#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "dalvo/configuration/appliedoptions.h"
#include "dalvo/options/optionparser.h"

namespace dalvo::tools {

/// A value with a meaning of its own, as an option's help lists it.
struct Code {
    std::int32_t value;
    std::string meaning;
};

/// All that is known of an option of the catalogue.
struct OptionInfo {
    std::string name;
    OptionType type;
    std::string group;         ///< as registered, with its colon
    std::string help;          ///< as registered
    std::string default_value; ///< what a fresh record holds, as a configuration text writes it
    AppliedOption applied;     ///< what `update_config` makes of it
    std::vector<Code> codes;   ///< from the lines "- N : meaning" of the help; empty where there are none

    /// "bool", "int", "float" or "string".
    std::string type_name() const;

    /// The values accepted, in a few words: "true or false", "at most 3", "any integer", "any text", ...
    std::string accepted() const;
};

/// The options of the catalogue, in the order of registration.
const std::vector<OptionInfo> &all_options();

/// Null for a name that is not of the catalogue.
const OptionInfo *find_option(const std::string &name);

/// The names that `name` is likely a slip for, the nearest first, at most `most`.
std::vector<std::string> suggestions(const std::string &name, std::size_t most);

/// "unknown option NAME", with " (did you mean A, B or C?)" where there are suggestions.
std::string unknown_option(const std::string &name);

} // namespace dalvo::tools
