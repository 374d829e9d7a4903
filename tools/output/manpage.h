#pragma once

#include <string>

#include <CLI/CLI.hpp>

namespace dalvo::tools {

/// The manual page of `tool` in the roff of man(7): its options and its commands with theirs, all but what is hidden
/// from the help, out of their own descriptions and footers.
std::string manual_page(const CLI::App &tool);

/// `text`, which may have several lines, as roff that shows it as it stands: nothing in it is taken for a request or an
/// escape.
std::string roff_text(const std::string &text);

} // namespace dalvo::tools
