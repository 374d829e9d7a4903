#pragma once

#include <deque>
#include <map>
#include <string>

#include "dalvo/inspect/knowledge/catalogue.h"

// What options hold when nobody says anything.

namespace dalvo::inspect {

/// What a record holds, by option.
std::map<std::string, Value> values_by_option(const Configuration &record);

/// The lowest number that makes sense for `option`, by its codes and by the rows of the relations.
std::optional<double> lowest_sensible(const OptionInfo &option);

/// Gives each of `options`, which are those of `catalogue`, the default value that the default text makes, as far as
/// that can be applied: what is wrong with it is for those to tell who check it.
void update_defaults(const Catalogue &catalogue, std::deque<OptionInfo> &options);

} // namespace dalvo::inspect
