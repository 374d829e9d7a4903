#pragma once

#include <string>

#include <nlohmann/json.hpp>

#include "tools/inspection/settings.h"

namespace dalvo::tools {

/// Whether two settings of one option hold the same: numbers bit for bit, so that 0 is not -0, and NaN is NaN.
bool same_value(const Setting &a, const Setting &b);

/// The value for people, on one line: a text in quotes with its control bytes escaped, a float in the fewest digits
/// that tell it from every other.
std::string shown_value(const Setting &setting);

/// The value for programs: floats in the same digits, "inf", "-inf" and "nan" as texts.
nlohmann::ordered_json json_value(const Setting &setting);

} // namespace dalvo::tools
