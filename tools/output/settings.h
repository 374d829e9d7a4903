#pragma once

#include <iosfwd>
#include <vector>

#include "dalvo/inspect/runs/settingstext.h"

namespace dalvo::tools {

/// Writes the settings as JSON; docs/json.md describes it. The origin is always in it.
void write_settings_json(std::ostream &out, const std::vector<const inspect::Setting *> &settings,
                         const inspect::SettingsStyle &style);

} // namespace dalvo::tools
