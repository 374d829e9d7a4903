// The program on problems with known answers, and on what is wrong.

#include <set>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "examples/solve/dimacs.h"
#include "tests/examples/program.h"

namespace {

using examples::testing::file_text;
using examples::testing::Outcome;
using examples::testing::TemporaryFile;

const std::string program = "'" DALVO_SOLVE "'";
const std::string problems = "examples/solve/problems/";

Outcome solve(const std::string &settings, const std::string &arguments)
{
    const TemporaryFile config(settings);
    return examples::testing::run(program + " --config '" + config.name + "' " + arguments);
}

examples::Formula formula_of(const std::string &problem)
{
    return examples::read_dimacs(problem, file_text(DALVO_SOURCE_DIR "/" + problem));
}

/// The literals of the "v" lines, which have to end with a 0.
std::vector<int> model_in(const std::string &out)
{
    std::vector<int> model;
    std::istringstream in(out);
    for (std::string line; std::getline(in, line);) {
        std::istringstream literals(line.rfind("v ", 0) == 0 ? line.substr(2) : "");
        for (int literal = 0; literals >> literal;) {
            model.push_back(literal);
        }
    }
    EXPECT_TRUE(!model.empty() && model.back() == 0) << out;
    model.pop_back();
    return model;
}

/// The figure `name` in CaDiCaL's own statistics.
long statistic(const std::string &out, const std::string &name)
{
    const std::string head = "\nc " + name + ":";
    const std::size_t at = out.find(head);
    EXPECT_NE(at, std::string::npos) << name << " is not in\n" << out;
    return at == std::string::npos ? -1 : std::stol(out.substr(at + head.size()));
}

long statistic(const std::string &settings, const std::string &problem, const std::string &name)
{
    return statistic(solve("verbosity = 1\n" + settings, problems + problem).out, name);
}

TEST(solve, finds_models_that_satisfy_the_formula)
{
    for (const std::string settings : {"", "dpll.restart_strategy = 3\n", "dpll.preprocessor.mode = 2\n",
                                       "dpll.branching_initial_phase = 1\ndpll.branching_cache_phase = 0\n",
                                       "dpll.glucose_learnt_minimization = true\nrandom_seed = 99\n"}) {
        const std::string problem = problems + "random-sat.cnf";
        const Outcome run = solve("model_generation = true\n" + settings, problem);
        EXPECT_EQ(run.status, 10) << settings;
        EXPECT_EQ(run.err, "") << settings;
        EXPECT_EQ(run.out.rfind("s SATISFIABLE\nv ", 0), 0U) << run.out;
        const std::vector<int> model = model_in(run.out);
        EXPECT_TRUE(examples::satisfies(model, formula_of(problem))) << settings;
        EXPECT_EQ(std::set<int>(model.begin(), model.end()).size(), 130U) << "each variable once";
    }
}

TEST(solve, prints_no_model_where_none_is_asked_for)
{
    const Outcome run = solve("model_generation = false", problems + "random-sat.cnf");
    EXPECT_EQ(run.status, 10);
    EXPECT_EQ(run.out, "s SATISFIABLE\n");
}

TEST(solve, finds_that_there_is_no_model)
{
    for (const std::string problem : {"pigeons.cnf", "random-unsat.cnf"}) {
        for (const std::string settings : {"", "dpll.restart_strategy = 3\n", "dpll.preprocessor.mode = 1\n"}) {
            const Outcome run = solve("model_generation = true\n" + settings, problems + problem);
            EXPECT_EQ(run.status, 20) << problem << settings;
            EXPECT_EQ(run.out, "s UNSATISFIABLE\n") << problem << settings;
        }
    }
}

TEST(solve, takes_the_smallest_and_the_strangest_formulas)
{
    const struct { const char *text; int status; const char *out; const char *why; } rows[] = {
        {"p cnf 0 0", 10, "s SATISFIABLE\nv 0\n", "no clauses"},
        {"p cnf 2147483647 0", 10, "s SATISFIABLE\nv 0\n", "no variable occurs"},
        {"p cnf 5 1 0", 20, "s UNSATISFIABLE\n", "the empty clause"},
        {"p cnf 2147483647 1 -2147483647 0", 10, "s SATISFIABLE\nv -2147483647 0\n", "a number too large for a table"},
        {"p cnf 9 3 9 0 -4 0 4 -9 7 0", 10, "s SATISFIABLE\nv -4 7 9 0\n", "numbers with gaps"},
        {"p cnf 1 2 1 0 -1 0", 20, "s UNSATISFIABLE\n", "a contradiction"},
        {"p cnf 2 2 1 -1 2 0 -2 -2 0", 10, nullptr, "a tautology, a literal twice"},
    };
    for (const auto &row : rows) {
        const TemporaryFile problem(row.text);
        const Outcome run = solve("model_generation = true", problem.name);
        EXPECT_EQ(run.status, row.status) << row.why;
        if (row.out != nullptr) {
            EXPECT_EQ(run.out, row.out) << row.why;
        }
    }
}

TEST(solve, searches_otherwise_under_other_settings)
{
    const struct { const char *settings; const char *others; const char *what; } rows[] = {
        {"dpll.branching_initial_phase = 0", "dpll.branching_initial_phase = 1",       "conflicts"},
        {"dpll.branching_cache_phase = 2",  "dpll.branching_cache_phase = 0",          "conflicts"},
        {"dpll.restart_strategy = 1",       "dpll.restart_strategy = 3",               "restarts"},
        {"dpll.restart_initial = 1000",     "dpll.restart_initial = 2",                "restarts"},
        {"",                                "dpll.glucose_learnt_minimization = true", "shrunken"},
        {"",                                "dpll.preprocessor.mode = 1",              "propagations"},
    };
    const std::string problem = "random-unsat.cnf";
    for (const auto &row : rows) {
        const long others = statistic(row.others, problem, row.what);
        EXPECT_NE(statistic(row.settings, problem, row.what), others) << row.others;
        EXPECT_EQ(statistic(row.others, problem, row.what), others) << "the same settings again";
    }
    EXPECT_NE(statistic("random_seed = 1", "random-hard.cnf", "conflicts"),
              statistic("random_seed = 2", "random-hard.cnf", "conflicts"));
    EXPECT_GT(statistic("dpll.restart_initial = 2", problem, "restarts"),
              statistic("dpll.restart_initial = 1000", problem, "restarts"));
    EXPECT_EQ(statistic("dpll.glucose_learnt_minimization = false", problem, "shrunken"), 0);
    EXPECT_GT(statistic("dpll.glucose_learnt_minimization = true", problem, "shrunken"), 0);
}

TEST(solve, eliminates_variables_only_where_the_settings_ask_for_it)
{
    const std::string problem = "random-unsat.cnf";
    const std::string never = solve("verbosity = 1\ndpll.preprocessor.mode = 0", problems + problem).out;
    EXPECT_EQ(never.find("\nc eliminated:"), std::string::npos) << never;
    EXPECT_GT(statistic("dpll.preprocessor.mode = 1", problem, "eliminated"), 0);
}

TEST(solve, takes_the_settings_of_the_section_and_shows_them)
{
    const Outcome run = solve("random_seed = 3\n[fast]\nrandom_seed = 4\n",
                              "--section fast --show-settings " + problems + "pigeons.cnf");
    EXPECT_EQ(run.status, 20);
    EXPECT_NE(run.out.find("c random_seed = 4 -> seed = 4\n"), std::string::npos) << run.out;
    EXPECT_EQ(run.out.rfind("c model_generation = false: kept here, it decides about the v lines\n", 0), 0U) << run.out;
    EXPECT_EQ(run.out.substr(run.out.size() - 16), "s UNSATISFIABLE\n");
}

TEST(solve, is_quiet_or_not_as_the_verbosity_says)
{
    EXPECT_EQ(solve("verbosity = 0", problems + "pigeons.cnf").out, "s UNSATISFIABLE\n");
    const std::string some = solve("verbosity = 1", problems + "pigeons.cnf").out;
    const std::string more = solve("verbosity = 2", problems + "pigeons.cnf").out;
    EXPECT_GT(some.size(), 100U);
    EXPECT_GT(more.size(), some.size() + 100);
}

TEST(solve, says_what_is_wrong_and_ends_with_status_2)
{
    const TemporaryFile good("p cnf 1 1 1 0");
    const TemporaryFile bad("p cnf 1 1 2 0");
    const TemporaryFile config("[a]\ndpll.restart_strategy = 4\n[b]\nfoo = 1\n[c]\nrandom_seed = x\n");
    const TemporaryFile malformed("[a\n");
    const std::string one_error = "solve: the settings have 1 error\n";
    const std::string with = " --config '" + config.name + "' '" + good.name + "' --section ";
    const struct { std::string arguments; std::string err; } rows[] = {
        {"nowhere.cnf", "solve: nowhere.cnf: No such file or directory\n"},
        {"examples", "solve: examples: is a folder\n"},
        {bad.name, "solve: " + bad.name + ":1:11: literal 2 is beyond the header's variables, 1\n"},
        {"--config nowhere.cfg " + good.name, "nowhere.cfg: error: No such file or directory\n" + one_error},
        {"--config '" + malformed.name + "' " + good.name,
         malformed.name + ":1:1: error: malformed header: it does not end with ']'\n    [a\n    ^\n" + one_error},
        {with + "d", config.name + ": error: no section 'd'\n" + one_error},
        {"--section d " + good.name, "error: no section 'd'\n" + one_error},
        {with + "a", config.name +
                         ":2:25: error: value 4 is out of range: dpll.restart_strategy accepts at most 3\n"
                         "    dpll.restart_strategy = 4\n                            ^\n" + one_error},
        {with + "b", config.name + ":4:1: error: unknown option foo\n    foo = 1\n    ^\n" + one_error},
        {with + "c", config.name +
                         ":6:15: error: invalid value 'x': random_seed is a 32-bit int and accepts any but 0\n"
                         "    random_seed = x\n                  ^\n" + one_error},
        {"", "problem is required\nRun with --help for more information.\n"},
        {"--nothing " + good.name, "The following argument was not expected: --nothing\n"
                                   "Run with --help for more information.\n"},
        {good.name + " >/dev/full", "solve: standard output: cannot be written\n"},
    };
    for (const auto &row : rows) {
        const Outcome run = examples::testing::run(program + " " + row.arguments);
        EXPECT_EQ(run.status, 2) << row.arguments;
        EXPECT_EQ(run.out, "") << row.arguments;
        EXPECT_EQ(run.err, row.err) << row.arguments;
    }
}

} // namespace
