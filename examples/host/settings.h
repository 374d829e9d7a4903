#pragma once

#include <map>
#include <stdexcept>
#include <string>

#include "dalvo/configuration/configurationsetter.h"

namespace examples {

/// What keeps a program from its work. The message is for people and begins with the file that it is about.
class Failure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The bytes of `file`. Throws Failure when it cannot be read.
std::string read_file(const std::string &file);

/// The settings of the built-in text, then of the configuration text in `file` and of its section `section`. An empty
/// name stands for neither. Writes what is wrong with the text, and what looks like a mistake, to standard error, as
/// `dalvo-config check` does; throws Failure where it is an error.
dalvo::Configuration read_settings(const std::string &file, const std::string &section);

/// The settings as texts, by the names of their options.
std::map<std::string, std::string> setting_texts(const dalvo::Configuration &settings);

} // namespace examples
