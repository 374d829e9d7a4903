#pragma once

#include <string>
#include <variant>
#include <vector>

#include "dalvo/configuration/ranges.h"
#include "dalvo/options/optionparser.h"

namespace dalvo {

/// One read of `ConfigurationSetter::update_config`.
struct AppliedOption {
    std::string name;
    OptionType type; ///< the type that an option of this name must have to be read
    std::variant<std::monostate, IntRange, FloatRange> range; ///< the values accepted; std::monostate: all of the type

    /// Whether a value of the type is stored; false for a value of another type, and for none.
    bool accepts(const OptionParser::Value &value) const noexcept;

    /// The values accepted, for people: "any", "at most 3", "0 to 2", ... Throws std::bad_alloc when memory runs out.
    std::string accepted() const;
};

/// The 136 reads of `ConfigurationSetter::update_config` in their order, made from the very rows that it runs. Some
/// names are not of the catalogue, and two stand twice. Throws std::bad_alloc when memory runs out.
std::vector<AppliedOption> applied_options(); // in applier.cpp, where the rows stand

} // namespace dalvo
