#pragma once

#include <iosfwd>
#include <map>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <utility>

#include "bench/harness.h"

namespace dalvo::bench {

/// Instructions of one run, by the case's title and the contender.
using Instructions = std::map<std::pair<std::string, std::string>, double>;

/// Reads lines "title TAB contender TAB instructions". Throws std::runtime_error when the file cannot be read.
Instructions read_instructions(const std::string &file);

/// Writes the table of a case: a row for each contender and phase, each bound marked met or missed.
void print_table(std::ostream &out, const CaseResult &result, const Instructions &instructions);

/// All figures of a case: what the table says, and the times of every round.
nlohmann::json as_json(const CaseResult &result, const Instructions &instructions);

} // namespace dalvo::bench
