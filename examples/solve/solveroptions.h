#pragma once

#include <optional>
#include <string>
#include <vector>

#include <cadical.hpp>

#include "dalvo/configuration/configuration.h"

namespace examples {

/// What an option of CaDiCaL is to be; none: its own value stays.
using SolverValue = std::optional<int>;

/// An option of CaDiCaL, or a limit of its next `solve`, and what the settings make it.
struct SolverTarget {
    const char *name = nullptr;
    SolverValue (*value)(const dalvo::Configuration &settings) = nullptr;
};

/// What becomes of one of our options.
struct SolverRow {
    const char *option;
    SolverTarget targets[2]; ///< none of them named: CaDiCaL has no counterpart
    const char *why_not;     ///< why there is no target, or no value for it; null where there always is one
};

/// A row for each option that the program looks at: random_seed, verbosity and all of dpll.
const std::vector<SolverRow> &solver_rows();

/// A setting that CaDiCaL has been given.
struct PassedOn {
    const SolverRow *row;
    const SolverTarget *target;
    int asked;
    int holds; ///< as CaDiCaL tells afterwards: it moves what is out of its range to the range's end
};

/// Gives `solver` (fresh: without clauses) what `settings` say, in the order of the rows.
std::vector<PassedOn> pass_on(CaDiCaL::Solver &solver, const dalvo::Configuration &settings);

/// What has been passed on and what has not, and why: a comment line of the competition's format for each row.
std::string shown_settings(const dalvo::Configuration &settings, const std::vector<PassedOn> &passed);

} // namespace examples
