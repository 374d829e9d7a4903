#pragma once

#include "tools/explain_steps.h"
#include "tools/forcing.h"

namespace dalvo::tools {

/// Write to standard output how an option gets its setting. `forcing` is made from all assignments that apply; null
/// when one of the option's own is rejected, so that there is no setting.
void write_explanation(const Trail &trail, const Forcing *forcing);
void write_json_explanation(const Trail &trail, const Forcing *forcing);

} // namespace dalvo::tools
