#pragma once

#include <optional>
#include <string>
#include <vector>

#include "dalvo/configuration/configuration.h"

namespace examples {

/// What a parameter of Z3 is to be; none: its own value stays.
using Z3Value = std::optional<std::string>;

/// A parameter of Z3 and what the settings make it.
struct Z3Target {
    const char *name = nullptr;
    Z3Value (*value)(const dalvo::Configuration &settings) = nullptr;
};

/// What becomes of one of our options that Z3 has parameters for. Two options may share a parameter, whose value they
/// then make together.
struct Z3Row {
    const char *option;
    Z3Target targets[2];
    const char *why_not; ///< why there may be no value; null where there always is one
};

/// Why Z3 has no parameters for the options whose names begin with `prefix`, but for those with a row and those with a
/// longer prefix.
struct Z3Group {
    const char *prefix;
    const char *why_not;
};

const std::vector<Z3Row> &z3_rows();
const std::vector<Z3Group> &z3_groups();

/// The group that answers for option `name`; null where a row does, or where none does.
const Z3Group *z3_group_of(const std::string &name);

/// Makes the parameters of this process what `settings` say, for the contexts that are made from now on. What they do
/// not say keeps the value that it has. Z3 follows the global locale in what it reads and writes: it has to be one with
/// decimal points.
void pass_on(const dalvo::Configuration &settings);

/// What has been passed on, as Z3 tells it, and what has not, and why: comment lines of SMT-LIB.
std::string shown_settings(const dalvo::Configuration &settings);

} // namespace examples
