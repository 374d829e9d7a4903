#pragma once

#include <iosfwd>
#include <string>

#include "dalvo/configuration/configuration.h"

/// The text of `ConfigurationSetter::dump`, written as straight as can be: the floors of the workload dump.
namespace dalvo::bench {

void dump_by_stream(const Configuration &c, std::ostream &out);

/// Numbers by std::to_chars, appended to a string.
std::string dump_by_to_chars(const Configuration &c);

} // namespace dalvo::bench
