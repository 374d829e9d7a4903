#pragma once

#include <string>
#include <vector>

#include "dalvo/inspect/knowledge/optioninfo.h"

namespace dalvo::inspect {

// What the rows of relations.cpp say about the option `name`; none for one that they do not name.

std::vector<Requirement> requirements_of(const std::string &name);
std::vector<Need> needs_of(const std::string &name);

/// The lowest number that makes sense, where a row says one.
std::optional<double> lowest_sensible_of(const std::string &name);

/// The option of the main engine that `name`, one of an inner engine, stands for there; `name` for any other.
std::string main_engine_name(const std::string &name);

} // namespace dalvo::inspect
