#pragma once

#include <iosfwd>

#include "tools/assignments.h"

namespace dalvo::tools {

/// Writes the settings that `inputs` make as a configuration text without a header.
/// Throws Failure, with nothing written, for a bad file, option or value.
void show(const Inputs &inputs, std::ostream &out);

} // namespace dalvo::tools
