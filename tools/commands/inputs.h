#pragma once

#include <string>
#include <utility>
#include <vector>

#include <CLI/CLI.hpp>

#include "dalvo/inspect/runs/run.h"

namespace dalvo::tools {

/// What a user gives to a command that works on settings.
struct Inputs {
    std::vector<std::string> presets;                           ///< names
    std::vector<std::string> files;                             ///< paths; "-" is standard input
    std::string section;                                        ///< the chosen section; empty for none
    std::vector<std::pair<std::string, std::string>> overrides; ///< name and value, in their order
    bool with_defaults = true;                                  ///< whether the built-in text comes first
};

/// The run that `inputs` name. Throws Failure for a preset that there is not, CLI::ValidationError for standard input
/// named twice. A file that cannot be read is part of the run, as an error.
inspect::Run run_of(const Inputs &inputs);

/// Adds the file `path` to `run`; "-" is standard input.
void add_input(inspect::Run &run, const std::string &path);

/// Throws CLI::ValidationError where standard input is named more than once.
void require_one_standard_input(const std::vector<std::string> &paths);

/// What people call the file `path`: itself, or "standard input", or "''" for an empty one.
std::string file_name(const std::string &path);

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
/// --no-defaults
void add_no_defaults(CLI::App &command, bool &with_defaults);
/// --format, one of `formats`, of which the first is the default
void add_format(CLI::App &command, std::string &format, const std::vector<std::string> &formats);
/// One text option or positional.
CLI::Option *add_text(CLI::App &command, const std::string &name, std::string &target, const std::string &description);
/// Positionals, any number.
CLI::Option *add_text_list(CLI::App &command, const std::string &name, std::vector<std::string> &target,
                           const std::string &description);

} // namespace dalvo::tools
