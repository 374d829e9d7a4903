#pragma once

#include <memory>
#include <vector>

#include "bench/harness.h"
#include "bench/inputs.h"

namespace dalvo::bench {

/// Everyone who reads `input` (shared with them) from memory into a table of sections, the floors among them: "dalvo",
/// "inih", "SimpleIni", "GKeyFile", "Boost.PropertyTree" (unless a section names an option twice, which it refuses),
/// "CLI11", "by hand", "scan and copy", "getline alone".
std::vector<Contender> loaders(const std::shared_ptr<const InputText> &input);

bool names_an_option_twice(const InputText &input);

} // namespace dalvo::bench
