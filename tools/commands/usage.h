#pragma once

#include <string>
#include <vector>

#include <CLI/CLI.hpp>

namespace dalvo::tools {

/// What is wrong with the words of a command line of `tool`, in their order and without the program's name: a command
/// or a flag that there is not, with those that may be meant. "" where the words may be parsed.
std::string usage_problem(const CLI::App &tool, const std::vector<std::string> &words);

} // namespace dalvo::tools
