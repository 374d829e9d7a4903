#pragma once

#include <string>
#include <vector>

namespace dalvo::tools {

/// A configuration text that comes with the tool.
struct Preset {
    std::string name;
    std::string text; ///< the file presets/NAME.cfg, as it stands
};

/// The presets, in the order in which the build lists them.
const std::vector<Preset> &presets();

/// The preset `name`, for the argument called `argument`. Throws Failure, with the status of wrong usage and with names
/// that may be meant, for a name that is none.
const Preset &preset_named(const std::string &name, const std::string &argument);

/// What the preset is for, in a few words: its first line, which is a comment, without the "# " and the full stop.
std::string summary_of(const Preset &preset);

} // namespace dalvo::tools
