#pragma once

#include <string>

#include <nlohmann/json.hpp>

namespace dalvo::tools {

/// As every command writes it: indented by two, a final newline, U+FFFD for bytes that are no UTF-8, and "\uXXXX" for
/// what is not printable, so that no terminal obeys a text that is shown to it.
std::string json_text(const nlohmann::ordered_json &json);

} // namespace dalvo::tools
