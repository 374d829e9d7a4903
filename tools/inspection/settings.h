#pragma once

#include <string>
#include <variant>
#include <vector>

#include "dalvo/configuration/configurationsetter.h"
#include "tools/inspection/sources.h"

namespace dalvo::tools {

/// One setting of a record, by its option, in the type in which `dump` prints it.
struct Setting {
    std::string name;
    std::variant<bool, int, unsigned int, double, std::string> value;

    /// As a configuration text writes it.
    std::string text() const;
};

/// The 127 settings of a record, in the order of `dump`.
std::vector<Setting> settings_of(const Configuration &record);

/// The setting of option `name`. Throws std::out_of_range when there is none.
const Setting &setting_named(const std::vector<Setting> &settings, const std::string &name);

/// The record that the assignments make, out of a fresh one.
/// Throws Failure, naming the place of the assignment, for an option or a value that is not accepted.
Configuration record_of(const std::vector<Assignment> &assignments);

} // namespace dalvo::tools
