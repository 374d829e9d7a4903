#pragma once

#include <string>
#include <vector>

namespace dalvo::inspect {

/// The library's options for which others know the name `name`: everyday words and the names of SMT-LIB, in any case,
/// with or without a colon in front.
std::vector<std::string> options_called(const std::string &name);

} // namespace dalvo::inspect
