#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include <cadical.hpp>
#include <gtest/gtest.h>

#include "dalvo/configuration/configurationsetter.h"
#include "examples/solve/solveroptions.h"
#include "tests/examples/settings.h"

namespace {

using dalvo::Configuration;
using examples::PassedOn;
using examples::SolverRow;
using examples::SolverTarget;
using examples::testing::settings_of;

/// What CaDiCaL holds for `option` under `text`.
int held(const std::string &text, const char *option)
{
    CaDiCaL::Solver solver;
    examples::pass_on(solver, settings_of(text));
    return solver.get(option);
}

TEST(solver_options, have_a_row_for_each_registered_option_of_dpll_in_the_order_of_the_catalogue)
{
    dalvo::ConfigurationSetter setter;
    setter.initialize_options();
    std::vector<std::string> names = {"verbosity", "random_seed"};
    for (const dalvo::OptionParser::Option &option : setter.options().options()) {
        if (option.name.rfind("dpll.", 0) == 0) {
            names.push_back(option.name);
        }
    }
    std::vector<std::string> rows;
    for (const SolverRow &row : examples::solver_rows()) {
        rows.emplace_back(row.option);
    }
    EXPECT_EQ(rows, names);
    EXPECT_EQ(rows.size(), 26U);
}

TEST(solver_options, name_options_that_cadical_has_or_say_why_there_is_none)
{
    for (const SolverRow &row : examples::solver_rows()) {
        for (const SolverTarget &target : row.targets) {
            if (target.name != nullptr) {
                const bool is_limit = target.name == std::string("preprocessing");
                EXPECT_TRUE(is_limit || CaDiCaL::Solver::is_valid_option(target.name)) << target.name;
            }
        }
        EXPECT_TRUE(row.targets[0].name != nullptr || row.why_not != nullptr) << row.option;
    }
}

TEST(solver_options, reach_cadical)
{
    const struct { const char *text; const char *option; int held; const char *why; } rows[] = {
        {"random_seed = 7",                                "seed",          7,          ""},
        {"random_seed = 2147483647",                       "seed",          147483646,  "beyond CaDiCaL's seeds"},
        {"random_seed = -1",                               "seed",          294967293,  "as an unsigned number"},
        {"verbosity = 0",                                  "quiet",         1,          ""},
        {"verbosity = -2147483648",                        "quiet",         1,          "as 0"},
        {"verbosity = 1",                                  "quiet",         0,          ""},
        {"verbosity = 1",                                  "verbose",       0,          ""},
        {"verbosity = 2",                                  "verbose",       1,          ""},
        {"dpll.restart_strategy = 0",                      "stabilize",     1,          "none is geometric: CaDiCaL's"},
        {"dpll.restart_strategy = 0",                      "stabilizeonly", 0,          "none is geometric: CaDiCaL's"},
        {"dpll.restart_strategy = 1",                      "stabilizeonly", 1,          "the Luby sequence alone"},
        {"dpll.restart_strategy = 2",                      "stabilizeonly", 1,          "the Luby sequence alone"},
        {"dpll.restart_strategy = 3",                      "stabilize",     0,          "dynamically alone"},
        {"dpll.restart_strategy = 3",                      "stabilizeonly", 0,          "dynamically alone"},
        {"dpll.restart_strategy = -1",                     "stabilize",     1,          "no strategy: CaDiCaL's own"},
        {"dpll.restart_initial = 50",                      "reluctant",     50,         ""},
        {"dpll.restart_initial = 0",                       "reluctant",     1,          "0 would turn it off"},
        {"dpll.restart_initial = -5",                      "reluctant",     1,          "the least"},
        {"dpll.restart_initial = 50\ndpll.restart_strategy = 3", "reluctant", 1024,     "CaDiCaL's own: no unit there"},
        {"dpll.branching_initial_phase = 0",               "phase",         0,          ""},
        {"dpll.branching_initial_phase = 1",               "phase",         1,          ""},
        {"dpll.branching_initial_phase = 2",               "phase",         1,          "CaDiCaL's own: no atoms"},
        {"dpll.branching_cache_phase = 0",                 "forcephase",    1,          ""},
        {"dpll.branching_cache_phase = 1",                 "forcephase",    0,          "CaDiCaL's own"},
        {"dpll.branching_cache_phase = 2",                 "forcephase",    0,          ""},
        {"dpll.glucose_learnt_minimization = true",        "shrink",        3,          ""},
        {"dpll.glucose_learnt_minimization = false",       "shrink",        0,          ""},
        {"dpll.preprocessor.mode = 0",                     "inprocessing",  0,          ""},
        {"dpll.preprocessor.mode = 1",                     "inprocessing",  0,          ""},
        {"dpll.preprocessor.mode = 2",                     "inprocessing",  1,          ""},
        {"dpll.preprocessor.clause_size_limit = 30",       "elimclslim",    30,         ""},
        {"dpll.preprocessor.clause_size_limit = -1",       "elimclslim",    2,          "CaDiCaL's least"},
        {"dpll.preprocessor.subsumption_size_limit = 40",  "subsumeclslim", 40,         ""},
        {"dpll.preprocessor.subsumption_size_limit = 2147483647", "subsumeclslim", 2000000000, "CaDiCaL's most"},
        {"dpll.preprocessor.elimination_grow_limit = 8",   "elimboundmin",  8,          ""},
        {"dpll.preprocessor.elimination_grow_limit = 8",   "elimboundmax",  8,          ""},
        {"dpll.preprocessor.elimination_grow_limit = -9",  "elimboundmax",  -1,         "CaDiCaL's least"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(held(row.text, row.option), row.held) << row.text << ": " << row.option << " " << row.why;
    }
}

TEST(solver_options, pass_on_nothing_for_the_rows_without_counterpart)
{
    CaDiCaL::Solver solver;
    for (const PassedOn &given : examples::pass_on(solver, Configuration())) {
        EXPECT_NE(given.target->name, nullptr) << given.row->option;
        EXPECT_EQ(given.asked, given.holds) << given.target->name;
    }
}

TEST(solver_options, are_shown_as_cadical_holds_them)
{
    const Configuration settings = settings_of("dpll.preprocessor.clause_size_limit = -5\n"
                                               "dpll.preprocessor.mode = 1\n"
                                               "dpll.restart_strategy = 0\n"
                                               "dpll.branching_random_frequency = 0.5");
    CaDiCaL::Solver solver;
    const std::string shown = examples::shown_settings(settings, examples::pass_on(solver, settings));
    for (const char *const line : {
             "c random_seed = 1 -> seed = 1\n",
             "c dpll.restart_strategy = 0: not passed on, there is no geometric strategy\n",
             "c dpll.branching_random_frequency = 0.5: not passed on, there are no random decisions\n",
             "c dpll.preprocessor.mode = 1 -> inprocessing = 0, preprocessing = 3\n",
             "c dpll.preprocessor.clause_size_limit = -5 -> elimclslim = 2 (asked for -5)\n",
         }) {
        EXPECT_NE(shown.find(line), std::string::npos) << line << "is not in\n" << shown;
    }
}

} // namespace
