// The program on problems with known answers, and on what is wrong.

#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <z3++.h>

#include "examples/smt/script.h"
#include "tests/examples/program.h"

namespace {

using namespace std::string_literals;
using examples::testing::file_text;
using examples::testing::Outcome;
using examples::testing::TemporaryFile;

const std::string program = "'" DALVO_SMT "'";
const std::string problems = "examples/smt/problems/";

Outcome smt(const std::string &settings, const std::string &arguments)
{
    const TemporaryFile config(settings);
    return examples::testing::run(program + " --config '" + config.name + "' " + arguments);
}

std::string printed(const std::string &settings, const std::string &problem)
{
    return smt(settings, problems + problem).out;
}

/// The lines of `problem` that begin with `head`.
std::string lines_with(const std::string &problem, const std::string &head)
{
    std::istringstream in(file_text(DALVO_SOURCE_DIR "/" + problems + problem));
    std::string lines;
    for (std::string line; std::getline(in, line);) {
        lines += line.rfind(head, 0) == 0 ? line + "\n" : "";
    }
    return lines;
}

std::string answer(const std::string &script)
{
    z3::context context;
    return Z3_eval_smtlib2_string(context, (script + "(check-sat)").c_str());
}

/// The figure `name` in Z3's own statistics.
long statistic(const std::string &settings, const std::string &problem, const std::string &name)
{
    const std::string out = printed("verbosity = 1\n" + settings, problem);
    const std::string head = ":" + name + " ";
    const std::size_t at = out.find(head);
    EXPECT_NE(at, std::string::npos) << name << " is not in\n" << out;
    return at == std::string::npos ? -1 : std::stol(out.substr(at + head.size()));
}

TEST(smt, finds_the_answers)
{
    const struct { const char *problem; const char *out; } rows[] = {
        {"arrays.smt2", "unsat\n"},     {"deadlines.smt2", "unsat\n"},  {"division.smt2", "unsat\n"},
        {"pigeons.smt2", "unsat\n"},    {"random-sat.smt2", "sat\n"},   {"random-unsat.smt2", "unsat\n"},
        {"shopping.smt2", "sat\n"},
    };
    for (const auto &row : rows) {
        const Outcome run = smt("", problems + row.problem);
        EXPECT_EQ(run.out, row.out) << row.problem;
        EXPECT_EQ(run.err, "") << row.problem;
        EXPECT_EQ(run.status, 0) << row.problem;
    }
}

TEST(smt, prints_models_that_satisfy_the_script)
{
    for (const std::string problem : {"shopping.smt2", "random-sat.smt2"}) {
        for (const std::string settings : {"", "random_seed = 9", "dpll.branching_cache_phase = 0"}) {
            const std::string out = printed("model_generation = true\n" + settings, problem);
            ASSERT_EQ(out.substr(0, 6), "sat\n(\n") << out;
            const std::string definitions = out.substr(6, out.rfind(')') - 6);
            EXPECT_NE(definitions.find("(define-fun "), std::string::npos) << out;
            EXPECT_EQ(answer(definitions + lines_with(problem, "(assert")), "sat\n") << problem << settings << out;
        }
    }
}

TEST(smt, prints_unsat_cores_that_are_unsatisfiable)
{
    const std::string out = printed("unsat_core_generation = 2", "deadlines.smt2");
    EXPECT_EQ(out, "unsat\n(start one-oven end)\n");
    std::istringstream asserts(lines_with("deadlines.smt2", "(assert"));
    std::string core;
    for (std::string line; std::getline(asserts, line);) {
        core += line.find("tea-time") == std::string::npos ? line : "";
    }
    EXPECT_EQ(answer(lines_with("deadlines.smt2", "(declare") + core), "unsat\n");
}

TEST(smt, prints_proofs_where_they_are_asked_for)
{
    const std::string out = printed("proof_generation = true", "deadlines.smt2");
    EXPECT_EQ(out.rfind("unsat\n((set-logic QF_LIA)\n(proof\n", 0), 0U) << out;
    EXPECT_NE(out.find("unit-resolution"), std::string::npos) << out;
    EXPECT_EQ(printed("proof_generation = false", "deadlines.smt2"), "unsat\n");
    const std::string both = printed("unsat_core_generation = 1", "deadlines.smt2");
    EXPECT_NE(both.find("(start one-oven end)\n"), std::string::npos) << both;
    EXPECT_NE(both.find("(proof\n"), std::string::npos) << "cores out of proofs ask for proofs: " << both;
}

TEST(smt, answers_otherwise_under_other_theories)
{
    const struct { const char *settings; const char *problem; const char *out; const char *why; } rows[] = {
        {"theory.bv.div_by_zero_mode = 1",       "division.smt2",     "sat\n",     "any result"},
        {"theory.bv.div_by_zero_mode = 0",       "division.smt2",     "unsat\n",   "the hardware's result"},
        {"theory.la.enabled = false",            "random-unsat.smt2", "unknown\n", "nobody adds up"},
        {"theory.arr.enable_ext_lemmas = false", "arrays.smt2",       "sat\n",     "arrays may differ in nothing"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(printed(row.settings, row.problem), row.out) << row.settings << ": " << row.why;
    }
}

TEST(smt, prints_bit_vectors_in_the_format_of_the_settings)
{
    const std::string settings = "model_generation = true\ntheory.bv.div_by_zero_mode = 1\nprinter.bv_number_format = ";
    EXPECT_NE(printed(settings + "0", "division.smt2").find("(_ bv10 10)"), std::string::npos);
    const std::string literals = printed(settings + "2", "division.smt2");
    EXPECT_NE(literals.find("#b0000001010"), std::string::npos) << "in binary, as 10 bits are no hexadecimal digits";
    EXPECT_NE(literals.find("#x00"), std::string::npos);
}

TEST(smt, searches_otherwise_under_other_settings)
{
    const std::string luby = "dpll.branching_cache_phase = 1\n"; // with other phases there are few restarts
    const std::string geometric = luby + "dpll.restart_strategy = 0\n";
    const std::string uncached = "dpll.branching_cache_phase = 0\n";
    const std::string ackermann = "theory.euf.dyn_ack = 2\n";
    const struct { std::string settings; std::string others; const char *problem; const char *what; } rows[] = {
        {"",        "random_seed = 5",                                    "random-unsat.smt2", "conflicts"},
        {luby,      geometric,                                            "random-unsat.smt2", "conflicts"},
        {geometric, geometric + "dpll.restart_geometric_factor = 3",      "random-unsat.smt2", "conflicts"},
        {"",        uncached,                                             "random-unsat.smt2", "conflicts"},
        {uncached,  uncached + "dpll.branching_initial_phase = 1",        "random-unsat.smt2", "conflicts"},
        {"",        "theory.eq_propagation = false",                      "random-unsat.smt2", "conflicts"},
        {"",        "theory.la.split_rat_eq = true",                      "random-unsat.smt2", "conflicts"},
        {"",        "theory.la.deduction_enabled = false",                "random-unsat.smt2", "conflicts"},
        {ackermann, ackermann + "theory.euf.dyn_ack_threshold = 1",       "random-unsat.smt2", "conflicts"},
        {"",        "random_seed = 5",                                    "pigeons.smt2",      "sat-conflicts"},
        {"",        "dpll.restart_strategy = 3",                          "pigeons.smt2",      "sat-restarts"},
        {"",        "dpll.restart_initial = 3",                           "pigeons.smt2",      "sat-restarts"},
        {"",        "dpll.branching_random_frequency = 0.5",              "pigeons.smt2",      "sat-conflicts"},
        {"",        uncached,                                             "pigeons.smt2",      "sat-conflicts"},
        {uncached,  uncached + "dpll.branching_initial_phase = 1",        "pigeons.smt2",      "sat-conflicts"},
        {"",        "dpll.glucose_learnt_minimization = true",            "pigeons.smt2",      "sat-conflicts"},
        {"",        "dpll.preprocessor.mode = 1",                         "pigeons.smt2",      "sat-conflicts"},
    };
    for (const auto &row : rows) {
        EXPECT_NE(statistic(row.settings, row.problem, row.what), statistic(row.others, row.problem, row.what))
            << row.problem << " under " << row.others;
    }
    EXPECT_EQ(statistic("", "random-unsat.smt2", "conflicts"), statistic("", "random-unsat.smt2", "conflicts"));
    EXPECT_GT(statistic("dpll.preprocessor.mode = 1", "pigeons.smt2", "sat-elim-bool-vars-res"), 0);
}

TEST(smt, takes_the_settings_of_the_section_and_shows_them)
{
    const Outcome run = smt("random_seed = 3\n[fast]\nrandom_seed = 4\n",
                            "--section fast --show-settings " + problems + "shopping.smt2");
    EXPECT_EQ(run.status, 0);
    EXPECT_NE(run.out.find("; random_seed = 4 -> smt.random_seed = 4, sat.random_seed = 4\n"), std::string::npos);
    EXPECT_EQ(run.out.substr(run.out.size() - 5), "\nsat\n");
}

TEST(smt, runs_each_command_of_a_script_and_stops_at_exit)
{
    const TemporaryFile script("(declare-const x Int) (assert (! (> x 3) :named large)) (push)\n"
                               "(assert (! (< x 2) :named small)) (check-sat) (pop) (assert (= x 5))\n"
                               "(check-sat) (echo \"over (check-sat)\") (check-sat-assuming (large)) (exit)\n"
                               "(echo \"never\")\n");
    const Outcome run = smt("model_generation = true\nunsat_core_generation = 2", script.name);
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out.rfind("unsat\n(large small)\nsat\n(\n", 0), 0U) << run.out;
    EXPECT_NE(run.out.find("over (check-sat)\nsat\n(\n"), std::string::npos) << run.out;
    EXPECT_EQ(run.out.find("never"), std::string::npos) << run.out;
}

TEST(smt, reports_what_z3_finds_wrong_in_a_script_and_where)
{
    const struct { std::string script; std::string error; } rows[] = {
        {"(check-sat)\n\n (check-sat)  (assert p)\n", "unknown constant p"},
        {"(check-sat)\n(echo \"open", "unexpected end of string"},
        {"(check-sat) (assert (and true", "unexpected input"},
        {")(check-sat)", "'(' expected"},
    };
    for (const auto &row : rows) {
        const TemporaryFile script(row.script);
        const Outcome run = smt("", script.name);
        z3::context whole;
        EXPECT_EQ(run.out, Z3_eval_smtlib2_string(whole, row.script.c_str())) << "as in one piece, places and all";
        EXPECT_NE(run.out.find(row.error), std::string::npos) << run.out;
        EXPECT_EQ(run.status, 1) << row.script;
    }
    for (const std::string text : {"", "; nothing", "(", "|", "\"", "((((", "(exit", "\xFF\x01", "(check-sat"}) {
        const TemporaryFile script(text);
        const Outcome run = smt("", script.name);
        EXPECT_LE(run.status, 1) << text << ": " << run.out << run.err;
    }
}

TEST(smt, says_what_is_wrong_and_ends_with_status_2)
{
    const TemporaryFile good("(check-sat)");
    const TemporaryFile with_nul("(check-sat)\n\0(check-sat)"s);
    const TemporaryFile config("[a]\ndpll.restart_strategy = 4\n");
    const std::string one_error = "smt: the settings have 1 error\n";
    const struct { std::string arguments; std::string err; } rows[] = {
        {"nowhere.smt2", "smt: nowhere.smt2: No such file or directory\n"},
        {"examples", "smt: examples: is a folder\n"},
        {with_nul.name, "smt: " + with_nul.name + ":2: a NUL byte\n"},
        {"--config nowhere.cfg " + good.name, "nowhere.cfg: error: No such file or directory\n" + one_error},
        {"--section x --config " + config.name + " " + good.name, config.name + ": error: no section 'x'\n" + one_error},
        {"--section a --config " + config.name + " " + good.name,
         config.name + ":2:25: error: value 4 is out of range: dpll.restart_strategy accepts at most 3\n"
                       "    dpll.restart_strategy = 4\n                            ^\n" + one_error},
        {"", "script is required\nRun with --help for more information.\n"},
        {good.name + " >/dev/full", "smt: standard output: cannot be written\n"},
    };
    for (const auto &row : rows) {
        const Outcome run = examples::testing::run(program + " " + row.arguments);
        EXPECT_EQ(run.status, 2) << row.arguments;
        EXPECT_EQ(run.out, "") << row.arguments;
        EXPECT_EQ(run.err, row.err) << row.arguments;
    }
}

TEST(smt, takes_nothing_but_an_answer_for_one)
{
    const TemporaryFile script("(declare-const p Bool)\n(assert p)\n(check-sat)\n(echo \"unsat\")\n(echo \"sat\")\n");
    const Outcome run = smt("unsat_core_generation = 1\nproof_generation = true\nmodel_generation = true\n", script.name);
    EXPECT_EQ(run.status, 0) << run.out;
    EXPECT_EQ(run.out, "sat\n(\n  (define-fun p () Bool\n    true)\n)\nunsat\nsat\n");
}

TEST(script_pieces, end_with_what_asks_for_an_answer)
{
    using Pieces = std::vector<std::string>;
    const struct { std::string script; Pieces pieces; const char *why; } rows[] = {
        {"", {""}, "nothing"},
        {"(a) (check-sat)", {"(a) (check-sat)", ""}, "a check at the end"},
        {"(a)(check-sat)\n(b) ( check-sat )(c)", {"(a)(check-sat)", "\n(b) ( check-sat )", "(c)"}, "two of them"},
        {"(check-sat-assuming (p (not q)))(a)", {"(check-sat-assuming (p (not q)))", "(a)"}, "under assumptions"},
        {"(check-sat-using smt)(a)", {"(check-sat-using smt)(a)"}, "another command"},
        {"(echo \"(check-sat)\")(a)", {"(echo \"(check-sat)\")(a)"}, "in a string"},
        {"(echo \"a\"\"(check-sat)\")", {"(echo \"a\"\"(check-sat)\")"}, "in a string with a quote"},
        {"(a |(check-sat)|)", {"(a |(check-sat)|)"}, "in a symbol"},
        {"; (check-sat)\n(a ; ) (check-sat)\n)", {"; (check-sat)\n(a ; ) (check-sat)\n)"}, "in comments"},
        {"(a (check-sat))", {"(a (check-sat))"}, "no command"},
        {"(a)(exit)(check-sat)", {"(a)(exit)"}, "behind the end"},
        {"(a \"open (check-sat)", {"(a \"open (check-sat)"}, "in an open string"},
        {"(a (check-sat)", {"(a (check-sat)"}, "in an open command"},
        {")(check-sat)", {")(check-sat)", ""}, "a parenthesis too many"},
        {"(check-sat", {"(check-sat", ""}, "an open check"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(examples::script_pieces(row.script), row.pieces) << row.why << ": " << row.script;
    }
}

} // namespace
