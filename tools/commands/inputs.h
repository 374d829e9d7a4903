#pragma once

#include <string>
#include <utility>
#include <vector>

#include <CLI/CLI.hpp>

#include "tools/inspection/sources.h"

namespace dalvo::tools {

/// What a user gives to a command that works on settings.
struct Inputs {
    std::vector<std::string> presets;                           ///< names
    std::vector<std::string> files;                             ///< paths; "-" is standard input
    std::string section;                                        ///< the active section; empty for none
    std::vector<std::pair<std::string, std::string>> overrides; ///< name and value, in their order
    bool with_defaults = true;                                  ///< whether the built-in text comes first
};

/// The texts that `inputs` name: the built-in one, the presets, the files. Throws Failure.
std::vector<Source> read_sources(const Inputs &inputs);

/// The assignment that -o NAME=VALUE makes.
Assignment override_of(const std::string &name, const std::string &value);

/// The assignments that apply, in the order in which they apply: the unnamed section's of each text, then the active
/// section's of each text, then the overrides. Warns when no text has the section.
std::vector<Assignment> applying_assignments(const std::vector<Source> &sources, const Inputs &inputs);

/// The same, of the texts that `inputs` name. Throws Failure for one that cannot be read or has a malformed line.
std::vector<Assignment> applying_assignments(const Inputs &inputs);

// Options of the command line. CLI11 takes "[a,b]" for a list of two, "--name=" for a name whose value follows, and "++"
// for the end of a command; what these add takes each as it stands, since main guards the arguments.

/// `argument` so that CLI11 leaves it alone; `plain` undoes it.
std::string guarded(std::string argument);
std::string plain(const std::string &guarded_argument);

/// FILE..., --preset
void add_texts(CLI::App &command, Inputs &inputs);
/// --preset
void add_presets_option(CLI::App &command, std::vector<std::string> &names);
/// --section, -o, --no-defaults
void add_choices(CLI::App &command, Inputs &inputs);
/// One text option or positional.
CLI::Option *add_text(CLI::App &command, const std::string &name, std::string &target, const std::string &description);
/// Positionals, any number.
CLI::Option *add_text_list(CLI::App &command, const std::string &name, std::vector<std::string> &target,
                           const std::string &description);

} // namespace dalvo::tools
