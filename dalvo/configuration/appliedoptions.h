#pragma once

#include <string>
#include <vector>

#include "dalvo/options/optionparser.h"

namespace dalvo {

/// One read of `ConfigurationSetter::update_config`.
struct AppliedOption {
    std::string name;
    OptionType type;      ///< the type that an option of this name must have to be read
    std::string accepted; ///< the values accepted, for people: "any", "at most 3", "0 to 2", ...
};

/// The 136 reads of `ConfigurationSetter::update_config` in their order, made from the very rows that it runs. Some
/// names are not of the catalogue, and two stand twice. Throws std::bad_alloc when memory runs out.
std::vector<AppliedOption> applied_options();

} // namespace dalvo
