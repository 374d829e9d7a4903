#pragma once

#include <string>

#include "tools/commands/presettexts.h"

namespace dalvo::tools {

/// What the preset is for, in a few words: its first line, which is a comment, without the "# " and the full stop.
std::string summary_of(const Preset &preset);

/// "no preset 'NAME'", with " (did you mean A, B or C?)" where `name` is likely a slip for some, whatever the case of
/// its letters.
std::string unknown_preset(const std::string &name);

} // namespace dalvo::tools
