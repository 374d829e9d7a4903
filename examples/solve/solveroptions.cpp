#include "examples/solve/solveroptions.h"

#include <algorithm>
#include <cstdint>
#include <iterator>

#include "examples/host/settings.h"

// From our options to those of CaDiCaL 1.5.3, a row an option, in the order of the catalogue.

namespace examples {

namespace {

using dalvo::Configuration;

constexpr std::uint32_t seeds = 2000000001; // CaDiCaL's are 0 to 2e9

SolverValue seed(const Configuration &c)
{
    return static_cast<int>(static_cast<std::uint32_t>(c.random_seed) % seeds);
}

SolverValue quiet(const Configuration &c)
{
    return c.verbosity <= 0;
}

SolverValue verbose(const Configuration &c)
{
    return c.verbosity >= 2;
}

// CaDiCaL has no agility, by which strategy 2 adjusts the unit.
bool is_luby(const Configuration &c)
{
    return c.dpll.restart_strategy == 1 || c.dpll.restart_strategy == 2;
}

// What goes beyond the minimization that both do anyway: from 0, nothing, to 3.
SolverValue shrinking(const Configuration &c)
{
    return c.dpll.glucose_learnt_minimization ? 3 : 0;
}

// CaDiCaL restarts in two modes: by the Luby sequence in its stable mode, dynamically in the other. Of its own it
// switches between them.
SolverValue luby(const Configuration &c)
{
    return is_luby(c) ? SolverValue(1) : c.dpll.restart_strategy == 3 ? SolverValue(0) : std::nullopt;
}

SolverValue luby_unit(const Configuration &c)
{
    constexpr std::int32_t least = 1; // 0 would turn the sequence off
    return is_luby(c) ? SolverValue(std::max(c.dpll.restart_initial, least)) : std::nullopt;
}

SolverValue initial_phase(const Configuration &c)
{
    const std::int32_t phase = c.dpll.branching_initial_phase;
    return phase == 0 || phase == 1 ? SolverValue(phase) : std::nullopt;
}

SolverValue same_phase(const Configuration &c)
{
    const std::int32_t cache = c.dpll.branching_cache_phase;
    return cache == 0 ? SolverValue(1) : cache == 2 ? SolverValue(0) : std::nullopt;
}

SolverValue during(const Configuration &c)
{
    return c.dpll.preprocessor_mode == 2;
}

SolverValue before(const Configuration &c)
{
    return c.dpll.preprocessor_mode == 1 ? 3 : 0;
}

// clang-format off
SolverValue clause_size(const Configuration &c)      { return c.dpll.preprocessor_clause_size_limit; }
SolverValue subsumption_size(const Configuration &c) { return c.dpll.preprocessor_subsumption_size_limit; }
SolverValue growth(const Configuration &c)           { return c.dpll.preprocessor_elimination_grow_limit; }

constexpr const char *all_levels   = "phases are saved on all levels or on none";
constexpr const char *full_model   = "models assign every variable";
constexpr const char *luby_alone   = "only the Luby sequence has a unit of ours";
constexpr const char *no_atoms     = "the variables of a DIMACS text stand for no atoms";
constexpr const char *no_geometric = "there is no geometric strategy";
constexpr const char *no_proofs    = "there are no interpolants, and DRAT proofs are not simplified";
constexpr const char *no_random    = "there are no random decisions";
constexpr const char *no_theories  = "there are no theories";
constexpr const char *one_check    = "there is one check, and nothing is pushed or popped";
constexpr const char *one_model    = "one model is looked for, not all";
constexpr const char *own_scores   = "scores follow rules of their own";

constexpr SolverRow rows[] = {
    {"verbosity",                                       {{"quiet", quiet}, {"verbose", verbose}},       nullptr},
    {"random_seed",                                     {{"seed", seed}},                               nullptr},
    {"dpll.restart_strategy",                           {{"stabilize", luby}, {"stabilizeonly", luby}}, no_geometric},
    {"dpll.restart_initial",                            {{"reluctant", luby_unit}},                     luby_alone},
    {"dpll.restart_geometric_factor",                   {},                                             no_geometric},
    {"dpll.store_tlemmas",                              {},                                             no_theories},
    {"dpll.branching_random_frequency",                 {},                                             no_random},
    {"dpll.branching_initial_phase",                    {{"phase", initial_phase}},                     no_atoms},
    {"dpll.branching_cache_phase",                      {{"forcephase", same_phase}},                   all_levels},
    {"dpll.branching_random_invalidate_phase_cache",    {},                                             no_random},
    {"dpll.branching_random_ignore_polarity",           {},                                             no_random},
    {"dpll.ghost_filtering",                            {},                                             no_atoms},
    {"dpll.minimize_model",                             {},                                             full_model},
    {"dpll.allsat_minimize_model",                      {},                                             one_model},
    {"dpll.pop_btpoint_reset_var_order",                {},                                             one_check},
    {"dpll.glucose_var_activity",                       {},                                             own_scores},
    {"dpll.glucose_learnt_minimization",                {{"shrink", shrinking}},                        nullptr},
    {"dpll.preprocessor.mode",                          {{"inprocessing", during}, {"preprocessing", before}}, nullptr},
    {"dpll.preprocessor.clause_size_limit",             {{"elimclslim", clause_size}},                  nullptr},
    {"dpll.preprocessor.subsumption_size_limit",        {{"subsumeclslim", subsumption_size}},          nullptr},
    {"dpll.preprocessor.elimination_grow_limit",        {{"elimboundmin", growth}, {"elimboundmax", growth}}, nullptr},
    {"dpll.preprocessor.elimination_phase",             {},                                             one_check},
    {"dpll.preprocessor.elimination_recent_vars_only",  {},                                             one_check},
    {"dpll.preprocessor.try_reelimination",             {},                                             one_check},
    {"dpll.interpolation_mode",                         {},                                             no_proofs},
    {"dpll.proof_simplification",                       {},                                             no_proofs},
};
// clang-format on

} // namespace

const std::vector<SolverRow> &solver_rows()
{
    static const std::vector<SolverRow> all(std::begin(rows), std::end(rows));
    return all;
}

std::vector<PassedOn> pass_on(CaDiCaL::Solver &solver, const Configuration &settings)
{
    std::vector<PassedOn> passed;
    for (const SolverRow &row : solver_rows()) {
        for (const SolverTarget &target : row.targets) {
            if (const SolverValue value = target.name != nullptr ? target.value(settings) : std::nullopt) {
                const bool is_option = CaDiCaL::Solver::is_valid_option(target.name);
                if (is_option ? !solver.set(target.name, *value) : !solver.limit(target.name, *value)) {
                    throw Failure(std::string("CaDiCaL has no option ") + target.name);
                }
                passed.push_back({&row, &target, *value, is_option ? solver.get(target.name) : *value});
            }
        }
    }
    return passed;
}

std::string shown_settings(const Configuration &settings, const std::vector<PassedOn> &passed)
{
    const auto texts = setting_texts(settings);
    std::string text;
    for (const SolverRow &row : solver_rows()) {
        std::string became;
        for (const PassedOn &given : passed) {
            if (given.row == &row) {
                became += (became.empty() ? "" : ", ") + std::string(given.target->name) + " = " +
                          std::to_string(given.holds) +
                          (given.holds != given.asked ? " (asked for " + std::to_string(given.asked) + ")" : "");
            }
        }
        text += "c " + std::string(row.option) + " = " + texts.at(row.option) +
                (became.empty() ? std::string(": not passed on, ") + row.why_not : " -> " + became) + "\n";
    }
    return text;
}

} // namespace examples
