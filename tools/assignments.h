#pragma once

#include <string>
#include <utility>
#include <vector>

#include "dalvo/configuration/configurationsetter.h"

namespace dalvo::tools {

/// What a user gives to a command that works on settings.
struct Inputs {
    std::vector<std::string> files;                              ///< paths; "-" is standard input
    std::string section;                                         ///< the active section; empty for none
    std::vector<std::pair<std::string, std::string>> overrides;  ///< name and value, in their order
    bool with_defaults = true;                                   ///< whether the built-in text comes first
};

/// One assignment and where it was written.
struct Assignment {
    ConfigurationSetter::OptEntry entry;
    std::string origin; ///< for people: a path, "standard input", "built-in default text" or "command line"
};

/// The assignments that apply, in the order in which they apply: the unnamed section's of each text, then the active
/// section's of each text, then the overrides. The built-in text has level 3, files have 2, overrides 1.
/// Throws Failure for a file that cannot be read or has a malformed line. Writes a warning to standard error when no
/// text has the section asked for.
std::vector<Assignment> applying_assignments(const Inputs &inputs);

/// The record that the assignments make, out of a fresh one.
/// Throws Failure, naming the origin, for an option or a value that does not exist.
Configuration settings_of(const std::vector<Assignment> &assignments);

} // namespace dalvo::tools
