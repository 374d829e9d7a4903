#pragma once

#include <vector>

#include <cadical.hpp>

#include "examples/solve/dimacs.h"

namespace examples {

/// What came out, in the numbers of the competition, which are exit statuses too.
enum class Status {
    unknown = 0,
    satisfiable = 10,
    unsatisfiable = 20,
};

struct Answer {
    Status status;
    std::vector<int> model; ///< if satisfiable: a literal for each variable of the formula's clauses, in their order
};

/// Has `solver`, which has its options and no clauses, solve `formula`.
Answer solve(CaDiCaL::Solver &solver, const Formula &formula);

} // namespace examples
