#include "examples/solve/solve.h"

#include <algorithm>
#include <cstdlib>

namespace examples {

namespace {

/// The variables of the clauses. The solver knows them by their places here, from 1: it takes memory for each number up
/// to the largest, and a short text may hold a large one.
std::vector<int> variables_of(const Formula &formula)
{
    std::vector<int> variables;
    for (const std::vector<int> &clause : formula.clauses) {
        for (const int literal : clause) {
            variables.push_back(std::abs(literal));
        }
    }
    std::sort(variables.begin(), variables.end());
    variables.erase(std::unique(variables.begin(), variables.end()), variables.end());
    return variables;
}

int place_of(const std::vector<int> &variables, int literal)
{
    const auto at = std::lower_bound(variables.begin(), variables.end(), std::abs(literal));
    const int place = static_cast<int>(at - variables.begin()) + 1;
    return literal < 0 ? -place : place;
}

} // namespace

Answer solve(CaDiCaL::Solver &solver, const Formula &formula)
{
    const std::vector<int> variables = variables_of(formula);
    for (const std::vector<int> &clause : formula.clauses) {
        for (const int literal : clause) {
            solver.add(place_of(variables, literal));
        }
        solver.add(0);
    }
    Answer answer{static_cast<Status>(solver.solve()), {}};
    if (answer.status == Status::satisfiable) {
        for (const int variable : variables) {
            answer.model.push_back(solver.val(place_of(variables, variable)) > 0 ? variable : -variable);
        }
    }
    return answer;
}

} // namespace examples
