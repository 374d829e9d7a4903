#include "dalvo/inspect/knowledge/suggestions.h"

#include <algorithm>
#include <string_view>

#include "dalvo/utils/str.h"

namespace dalvo::inspect {

namespace {

struct Row {
    std::string_view word;
    std::string_view options; // names, with a blank between them
};

// The rows are aligned by hand. A "-" of a word stands for "_" and ".", too.
// clang-format off

constexpr Row rows[] = {
    {"seed",                            "random_seed"},
    {"random-seed",                     "random_seed"},
    {"restart",                         "dpll.restart_strategy dpll.restart_initial"},
    {"restarts",                        "dpll.restart_strategy dpll.restart_initial"},
    {"luby",                            "dpll.restart_strategy dpll.restart_initial"},
    {"phase",                           "dpll.branching_initial_phase dpll.branching_cache_phase"},
    {"phase-saving",                    "dpll.branching_cache_phase"},
    {"model",                           "model_generation"},
    {"models",                          "model_generation"},
    {"produce-models",                  "model_generation"},
    {"produce-assignments",             "bool_model_generation"},
    {"proof",                           "proof_generation"},
    {"proofs",                          "proof_generation"},
    {"produce-proofs",                  "proof_generation"},
    {"core",                            "unsat_core_generation"},
    {"cores",                           "unsat_core_generation"},
    {"unsat-core",                      "unsat_core_generation"},
    {"unsat-cores",                     "unsat_core_generation"},
    {"produce-unsat-cores",             "unsat_core_generation"},
    {"interpolant",                     "interpolation"},
    {"interpolants",                    "interpolation"},
    {"produce-interpolants",            "interpolation"},
    {"trace",                           "debug.api_call_trace"},
    {"tracing",                         "debug.api_call_trace"},
    {"verbose",                         "verbosity"},
    {"verbosity",                       "verbosity"},
};

// clang-format on

/// Folded, without a colon in front, each "_" and "." as "-".
std::string plain(const std::string &name)
{
    std::string word = str::folded(name);
    std::replace_if(
        word.begin(), word.end(), [](char c) { return c == '_' || c == '.'; }, '-');
    return word.substr(!word.empty() && word.front() == ':' ? 1 : 0);
}

} // namespace

std::vector<std::string> options_called(const std::string &name)
{
    const std::string word = plain(name);
    std::vector<std::string> names;
    for (const Row &row : rows) {
        if (row.word == word) {
            const std::string options(row.options);
            const auto words = str::get_tokenizer(options, " ", 0);
            for (const std::string &option : *words) {
                names.push_back(option);
            }
        }
    }
    return names;
}

} // namespace dalvo::inspect
