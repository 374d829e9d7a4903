#pragma once

#include <functional>
#include <vector>

#include <CLI/CLI.hpp>

namespace dalvo::tools {

/// A command as it stands on the command line, and what runs it: writes data to standard output, diagnostics to
/// standard error, returns the exit status, and throws Failure.
struct Command {
    CLI::App *app;
    std::function<int()> run;
};

// Each adds one command, in a source of its name.
Command add_check(CLI::App &tool);
Command add_completion(CLI::App &tool);
Command add_diff(CLI::App &tool);
Command add_explain(CLI::App &tool);
Command add_help(CLI::App &tool);
Command add_man(CLI::App &tool);
Command add_options(CLI::App &tool);
Command add_presets(CLI::App &tool);
Command add_sections(CLI::App &tool);
Command add_show(CLI::App &tool);

/// All of them, in the order in which --help lists them.
std::vector<Command> add_commands(CLI::App &tool);

} // namespace dalvo::tools
