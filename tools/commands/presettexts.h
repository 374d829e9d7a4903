#pragma once

#include <string>
#include <vector>

#include "tools/inspection/sources.h"

namespace dalvo::tools {

/// A configuration text that comes with the tool.
struct Preset {
    std::string name;
    std::string text; ///< the file presets/NAME.cfg, as it stands
};

/// The presets, in the order in which the build lists them.
const std::vector<Preset> &presets();

/// Throws Failure, with the status of wrong usage, for a name that is none.
const Preset &preset_named(const std::string &name);

/// Reads the preset `name`. Throws as `preset_named` does.
Source read_preset(const std::string &name);

} // namespace dalvo::tools
