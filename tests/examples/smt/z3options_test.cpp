#include <cstdint>
#include <limits>
#include <locale>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <z3++.h>

#include "dalvo/configuration/configurationsetter.h"
#include "examples/smt/z3options.h"
#include "tests/examples/settings.h"

namespace {

using dalvo::Configuration;
using examples::Z3Group;
using examples::Z3Row;
using examples::Z3Target;
using examples::testing::settings_of;

std::vector<std::string> option_names()
{
    dalvo::ConfigurationSetter setter;
    setter.initialize_options();
    std::vector<std::string> names;
    for (const dalvo::OptionParser::Option &option : setter.options().options()) {
        names.push_back(option.name);
    }
    return names;
}

std::string parameter(const char *name)
{
    Z3_string value = nullptr;
    return Z3_global_param_get(name, &value) ? value : "unknown to Z3";
}

/// The value that `name` gets under the settings of `text`; "own" where Z3's own stays.
std::string given(const std::string &text, const std::string &name)
{
    const Configuration settings = settings_of(text);
    for (const Z3Row &row : examples::z3_rows()) {
        for (const Z3Target &target : row.targets) {
            if (target.name != nullptr && target.name == name) {
                return target.value(settings).value_or("own");
            }
        }
    }
    return "in no row";
}

/// Z3 writes numbers as the global locale has them. While this lives that is the classic one, as in the program.
class ProgramLocale {
public:
    ProgramLocale() : before(std::locale::global(std::locale::classic())) {}
    ~ProgramLocale() { std::locale::global(before); }

    ProgramLocale(const ProgramLocale &) = delete;
    ProgramLocale &operator=(const ProgramLocale &) = delete;

private:
    std::locale before;
};

/// Gives Z3 the settings and compares what it holds then, numbers as numbers.
void expect_held(const Configuration &settings)
{
    const ProgramLocale classic;
    examples::pass_on(settings);
    EXPECT_EQ(parameter("smt.auto_config"), "false");
    for (const Z3Row &row : examples::z3_rows()) {
        for (const Z3Target &target : row.targets) {
            const examples::Z3Value value = target.name != nullptr ? target.value(settings) : std::nullopt;
            if (value && value->find_first_not_of("0123456789.") == std::string::npos) {
                const double number = std::stod(*value);
                EXPECT_NEAR(std::stod(parameter(target.name)), number, number * 1e-5) << target.name; // six digits
            } else if (value) {
                EXPECT_EQ(parameter(target.name), *value) << target.name;
            }
        }
    }
}

TEST(z3_options, answer_for_each_registered_option_by_a_row_or_by_a_group)
{
    const std::vector<std::string> names = option_names();
    std::vector<std::string> with_row;
    std::vector<std::string> rows;
    for (const Z3Row &row : examples::z3_rows()) {
        rows.emplace_back(row.option);
        EXPECT_EQ(examples::z3_group_of(row.option), nullptr) << row.option;
    }
    for (const std::string &name : names) {
        if (examples::z3_group_of(name) == nullptr) {
            with_row.push_back(name);
        }
    }
    EXPECT_EQ(rows, with_row) << "in the order of the catalogue";
}

TEST(z3_options, have_no_group_without_options)
{
    for (const Z3Group &group : examples::z3_groups()) {
        bool used = false;
        for (const std::string &name : option_names()) {
            used = used || examples::z3_group_of(name) == &group;
        }
        EXPECT_TRUE(used) << group.prefix;
    }
    EXPECT_EQ(examples::z3_group_of("theory.bv.lazydpll.restart_initial")->prefix, std::string("theory.bv.lazydpll."));
    EXPECT_EQ(examples::z3_group_of("nothing"), nullptr);
}

TEST(z3_options, name_parameters_that_z3_has)
{
    for (const Z3Row &row : examples::z3_rows()) {
        EXPECT_NE(row.targets[0].name, nullptr) << row.option;
        for (const Z3Target &target : row.targets) {
            if (target.name != nullptr) {
                EXPECT_NE(parameter(target.name), "unknown to Z3") << target.name;
            }
        }
    }
}

TEST(z3_options, make_the_parameters_what_the_settings_say)
{
    const struct { const char *text; const char *parameter; const char *value; const char *why; } rows[] = {
        {"verbosity = 2",                          "verbose",              "2",          ""},
        {"verbosity = -2",                         "verbose",              "0",          "as 0"},
        {"proof_generation = true",                "proof",                "true",       ""},
        {"interpolation = true",                   "proof",                "true",       "which it forces"},
        {"model_generation = false",               "model",                "false",      "Z3 would make them"},
        {"model_generation = true",                "model",                "true",       ""},
        {"unsat_core_generation = 2",              "unsat_core",           "true",       ""},
        {"unsat_core_generation = 0",              "unsat_core",           "false",      ""},
        {"random_seed = 7",                        "smt.random_seed",      "7",          ""},
        {"random_seed = 7",                        "sat.random_seed",      "7",          ""},
        {"random_seed = -1",                       "sat.random_seed",      "4294967295", "without a sign"},
        {"printer.bv_number_format = 0",           "pp.bv_literals",       "false",      ""},
        {"printer.bv_number_format = 1",           "pp.bv_literals",       "own",       "Z3's own"},
        {"printer.bv_number_format = 2",           "pp.bv_literals",       "true",       ""},
        {"printer.fp_number_format = 2",           "pp.fp_real_literals",  "true",       ""},
        {"preprocessor.toplevel_propagation = off", "tactic.propagate_values.max_rounds", "0", ""},
        {"preprocessor.toplevel_propagation_limit = 9", "tactic.propagate_values.max_rounds", "9", ""},
        {"preprocessor.toplevel_propagation_limit = 0", "tactic.propagate_values.max_rounds", "4294967295", "no limit"},
        {"dpll.restart_strategy = 0",              "smt.restart_strategy", "0",          "geometric"},
        {"dpll.restart_strategy = 1",              "smt.restart_strategy", "2",          "Luby"},
        {"dpll.restart_strategy = 2",              "smt.restart_strategy", "2",          "Luby"},
        {"dpll.restart_strategy = 3",              "smt.restart_strategy", "own",          "none is dynamic"},
        {"dpll.restart_strategy = -3",             "smt.restart_strategy", "own",          "Z3's own: no code"},
        {"dpll.restart_strategy = 0",              "sat.restart",          "geometric",  ""},
        {"dpll.restart_strategy = 2",              "sat.restart",          "luby",       ""},
        {"dpll.restart_strategy = 3",              "sat.restart",          "ema",        "dynamic"},
        {"dpll.restart_initial = 50",              "sat.restart.initial",  "50",         ""},
        {"dpll.restart_initial = -50",             "sat.restart.initial",  "1",          "the least"},
        {"dpll.restart_geometric_factor = 1.25",   "smt.restart_factor",   "1.25",       ""},
        {"dpll.restart_geometric_factor = 1.3",    "sat.restart.factor",   "1.3",        "not 1.2999999523162842"},
        {"dpll.restart_geometric_factor = 0.5",    "sat.restart.factor",   "own",        "Z3's own: no growth"},
        {"dpll.restart_geometric_factor = nan",    "smt.restart_factor",   "own",        "Z3's own: no number"},
        {"dpll.restart_geometric_factor = inf",    "smt.restart_factor",   "own",        "Z3's own: no number"},
        {"dpll.branching_random_frequency = 0.25", "sat.random_freq",      "0.25",       ""},
        {"dpll.branching_random_frequency = 1e-7", "sat.random_freq",      "0.0000001",  "without exponent"},
        {"dpll.branching_random_frequency = -1",   "sat.random_freq",      "own",       "Z3's own: no share"},
        {"dpll.branching_random_frequency = nan",  "sat.random_freq",      "own",       "Z3's own: no share"},
        {"dpll.branching_initial_phase = 1",       "smt.phase_selection",  "2",          "cached phases"},
        {"dpll.branching_cache_phase = 0",         "smt.phase_selection",  "0",          "always false"},
        {"dpll.branching_cache_phase = 0",         "sat.phase",            "always_false", ""},
        {"dpll.branching_cache_phase = 0\ndpll.branching_initial_phase = 1", "smt.phase_selection", "1", ""},
        {"dpll.branching_cache_phase = 0\ndpll.branching_initial_phase = 1", "sat.phase", "always_true", ""},
        {"dpll.branching_cache_phase = 0\ndpll.branching_initial_phase = 2", "smt.phase_selection", "own", "Z3's own"},
        {"dpll.branching_cache_phase = 1",         "smt.phase_selection",  "own",          "Z3's own"},
        {"dpll.branching_cache_phase = 2",         "sat.phase",            "caching",    ""},
        {"dpll.glucose_learnt_minimization = no",  "sat.dyn_sub_res",      "false",      ""},
        {"dpll.glucose_learnt_minimization = yes", "sat.dyn_sub_res",      "true",       ""},
        {"dpll.preprocessor.mode = 0",             "sat.elim_vars",        "false",      ""},
        {"dpll.preprocessor.mode = 0",             "sat.subsumption",      "false",      ""},
        {"dpll.preprocessor.mode = 1",             "sat.elim_vars",        "true",       ""},
        {"dpll.preprocessor.mode = 2",             "sat.subsumption",      "true",       ""},
        {"theory.eq_propagation = false",          "smt.arith.propagate_eqs", "false",   ""},
        {"theory.la.enabled = false",              "smt.arith.solver",     "0",          ""},
        {"theory.la.enabled = true",               "smt.arith.solver",     "6",          ""},
        {"theory.la.split_rat_eq = true",          "rewriter.eq2ineq",     "true",       ""},
        {"theory.la.deduction_enabled = false",    "smt.arith.propagation_mode", "0",    ""},
        {"theory.la.laz_cuts_from_proofs_mode = 0", "smt.arith.enable_hnf", "false",     ""},
        {"theory.la.laz_cuts_from_proofs_mode = 1", "smt.arith.enable_hnf", "true",      ""},
        {"theory.euf.dyn_ack = 2",                 "smt.dack",             "2",          ""},
        {"theory.euf.dyn_ack = 0",                 "smt.dack",             "0",          ""},
        {"theory.euf.dyn_ack_threshold = 3",       "smt.dack.threshold",   "3",          ""},
        {"theory.arr.enable_ext_lemmas = false",   "smt.array.extensional", "false",     ""},
        {"theory.bv.div_by_zero_mode = 0",         "rewriter.hi_div0",     "true",       ""},
        {"theory.bv.div_by_zero_mode = 1",         "rewriter.hi_div0",     "false",      ""},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(given(row.text, row.parameter), row.value) << row.text << ": " << row.parameter << " " << row.why;
    }
}

TEST(z3_options, reach_z3)
{
    expect_held(settings_of(""));
    expect_held(settings_of("proof_generation = true\nmodel_generation = true\nunsat_core_generation = 2\n"
                            "random_seed = 7\nprinter.bv_number_format = 2\nprinter.fp_number_format = 2\n"
                            "preprocessor.toplevel_propagation_limit = 9\ndpll.restart_strategy = 3\n"
                            "dpll.restart_initial = 50\ndpll.restart_geometric_factor = 1.25\n"
                            "dpll.branching_random_frequency = 1e-7\ndpll.branching_cache_phase = 0\n"
                            "dpll.branching_initial_phase = 1\ndpll.glucose_learnt_minimization = true\n"
                            "dpll.preprocessor.mode = 2\ntheory.eq_propagation = false\n"));
    expect_held(settings_of("theory.la.enabled = false\ntheory.la.split_rat_eq = true\n"
                            "theory.la.deduction_enabled = false\ntheory.la.laz_cuts_from_proofs_mode = 0\n"
                            "theory.euf.dyn_ack = 2\ntheory.euf.dyn_ack_threshold = 3\n"
                            "theory.arr.enable_ext_lemmas = false\ntheory.bv.div_by_zero_mode = 1\n"
                            "dpll.restart_strategy = 0\n"));
}

// What Z3 cannot read it leaves as it was, and says so on standard error alone.
TEST(z3_options, are_values_that_z3_takes_whatever_the_settings)
{
    Configuration settings = settings_of("");
    settings.verbosity = std::numeric_limits<std::int32_t>::min();
    settings.random_seed = std::numeric_limits<std::int32_t>::min();
    settings.dpll.restart_initial = std::numeric_limits<std::int32_t>::min();
    settings.dpll.restart_strategy = std::numeric_limits<std::int32_t>::min();
    settings.dpll.restart_geometric_factor = static_cast<double>(std::numeric_limits<float>::max());
    settings.dpll.branching_random_frequency = -0.0;
    settings.theory_euf_dyn_ack_threshold = -1;
    settings.preprocessor_toplevel_propagation_limit = -1;
    expect_held(settings);
    settings.dpll.restart_geometric_factor = std::numeric_limits<double>::max();
    settings.dpll.branching_random_frequency = static_cast<double>(std::numeric_limits<float>::denorm_min());
    expect_held(settings);
}

TEST(z3_options, are_shown_as_z3_holds_them)
{
    const Configuration settings = settings_of("random_seed = 5\ndpll.branching_cache_phase = 1");
    examples::pass_on(settings);
    z3::set_param("sat.random_seed", 6); // by somebody else
    const std::string shown = examples::shown_settings(settings);
    for (const char *const line : {
             "; random_seed = 5 -> smt.random_seed = 5, sat.random_seed = 6\n",
             "; dpll.branching_cache_phase = 1: not passed on, Z3 caches phases always or never, ",
             "; theory.fp.dpll.*: not passed on (11), one propositional engine serves all theories\n",
         }) {
        EXPECT_NE(shown.find(line), std::string::npos) << line << "is not in\n" << shown;
    }
}

} // namespace
