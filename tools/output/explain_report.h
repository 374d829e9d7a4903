#pragma once

#include "tools/inspection/explain_steps.h"
#include "tools/inspection/forcing.h"

namespace dalvo::tools {

/// Write to standard output how an option gets its setting. `forcing` is made from all assignments that apply; null
/// when one of the option's own is rejected, so that there is no setting.
void write_explanation(const Trail &trail, const Forcing *forcing);
void write_json_explanation(const Trail &trail, const Forcing *forcing);

} // namespace dalvo::tools
