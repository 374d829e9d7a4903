#pragma once

#include <string>
#include <vector>

namespace examples {

/// A formula in conjunctive normal form. A literal is a variable's number, from 1, or its negation.
struct Formula {
    std::vector<std::vector<int>> clauses;
};

/// Reads the DIMACS text `text` of `file`, a name for messages. Throws Failure "FILE:LINE:COLUMN: what is wrong" at the
/// first byte that is: the header has to come first and to be right about variables and clauses.
Formula read_dimacs(const std::string &file, const std::string &text);

/// Whether each clause of `formula` has a literal of `model`.
bool satisfies(const std::vector<int> &model, const Formula &formula);

} // namespace examples
