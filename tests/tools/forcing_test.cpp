#include "tools/inspection/forcing.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace dalvo::tools {

namespace {

using Names = std::vector<std::string>;

/// Assignments as the command line makes them: "name" and "value", the line counting them from 1.
std::vector<Assignment> assigned(const std::vector<std::pair<std::string, std::string>> &pairs)
{
    std::vector<Assignment> assignments;
    for (const auto &[name, value] : pairs) {
        assignments.push_back({name, value, file_level, {"test.cfg", assignments.size() + 1}, ""});
    }
    return assignments;
}

Names sorted(Names names)
{
    std::sort(names.begin(), names.end());
    return names;
}

/// "name:line" of what forces `name`.
Names forcers(const Forcing &forcing, const std::string &name)
{
    Names found;
    for (const Assignment *const forcer : forcing.forcing(name)) {
        found.push_back(forcer->name + ":" + std::to_string(forcer->place.line));
    }
    return sorted(found);
}

std::string setting(const Forcing &forcing, const std::string &name)
{
    return setting_named(forcing.settings(), name).text();
}

struct Row {
    std::vector<std::pair<std::string, std::string>> assignments;
    std::string option;
    Names forcing;       // "name:line", sorted
    std::string setting; // in force
    std::string why;
};

constexpr const char *propagation = "preprocessor.toplevel_propagation";
constexpr const char *strat = "theory.arr.enable_nonlinear_strat";

TEST(forcing, names_every_assignment_that_keeps_an_option_from_having_its_way)
{
    const std::vector<Row> rows = {
        {{{"interpolation", "true"}}, "proof_generation", {"interpolation:1"}, "true", "unassigned, and forced"},
        {{{"interpolation", "true"}}, propagation, {"interpolation:1"}, "false", "unassigned, and forced"},
        {{{"interpolation", "1"}, {"proof_generation", "no"}}, "proof_generation", {"interpolation:1"}, "true",
         "the assignment has no effect"},
        {{{"proof_generation", "no"}, {"interpolation", "1"}}, "proof_generation", {"interpolation:2"}, "true",
         "whatever the order of the lines"},
        {{{"interpolation", "0"}}, "proof_generation", {}, "false", "off forces nothing"},
        {{{"unsat_core_generation", "1"}}, "proof_generation", {"unsat_core_generation:1"}, "true", "cores by proofs"},
        {{{"unsat_core_generation", "1"}}, propagation, {"unsat_core_generation:1"}, "false", "cores by proofs"},
        {{{"unsat_core_generation", "1"}}, "dpll.store_tlemmas", {}, "false", "proofs need no lemmas"},
        {{{"unsat_core_generation", "2"}}, "proof_generation", {}, "false", "lemmas need no proofs"},
        {{{"unsat_core_generation", "2"}}, propagation, {"unsat_core_generation:1"}, "false", "cores by lemmas"},
        {{{"unsat_core_generation", "2"}}, "dpll.store_tlemmas", {"unsat_core_generation:1"}, "true",
         "unassigned, and forced"},
        {{{"unsat_core_generation", "2"}, {"dpll.store_tlemmas", "false"}}, "dpll.store_tlemmas", {}, "false",
         "a later row of the application wins over the forcing one"},
        {{{"unsat_core_generation", "-1"}}, propagation, {"unsat_core_generation:1"}, "false", "negative is not off"},
        {{{"unsat_core_generation", "-1"}}, "proof_generation", {}, "false", "negative is not 1"},
        {{{"unsat_core_generation", "-1"}}, "dpll.store_tlemmas", {"unsat_core_generation:1"}, "true",
         "negative does as 2"},
        {{{"unsat_core_generation", "-1"}, {"dpll.store_tlemmas", "0"}}, "dpll.store_tlemmas", {}, "false",
         "a later row wins"},
        {{{"unsat_core_generation", "0"}}, propagation, {}, "true", "off forces nothing"},
        {{{strat, "true"}}, "theory.arr.enable_nonlinear", {}, "true", "the initial value agrees"},
        {{{strat, "true"}, {"theory.arr.enable_nonlinear", "false"}}, "theory.arr.enable_nonlinear",
         {std::string(strat) + ":1"}, "true", "the assignment has no effect"},
        {{{strat, "false"}, {"theory.arr.enable_nonlinear", "false"}}, "theory.arr.enable_nonlinear", {}, "false",
         "off forces nothing"},
        {{{"interpolation", "1"}, {"verbosity", "1"}, {"unsat_core_generation", "1"}}, propagation,
         {"interpolation:1", "unsat_core_generation:3"}, "false", "both force it"},
        {{{"interpolation", "1"}, {"unsat_core_generation", "1"}, {"proof_generation", "0"}}, "proof_generation",
         {"interpolation:1", "unsat_core_generation:2"}, "true", "both force it"},
        {{{"interpolation", "1"}, {"unsat_core_generation", "2"}, {"proof_generation", "0"}}, "proof_generation",
         {"interpolation:1"}, "true", "one of them forces it"},
        {{{"interpolation", "1"}, {propagation, "off"}}, propagation, {}, "false", "the values agree"},
        {{{"interpolation", "1"}, {"proof_generation", "on"}}, "proof_generation", {}, "true", "the values agree"},
        {{{"interpolation", "1"}, {"interpolation", "0"}}, "proof_generation", {}, "false", "replaced by the last one"},
        {{{"interpolation", "0"}, {"interpolation", "1"}}, "proof_generation", {"interpolation:2"}, "true",
         "the last one forces"},
        {{{"interpolation", "1"}}, "interpolation", {}, "true", "nothing forces itself"},
        {{{"interpolation", "1"}}, "verbosity", {}, "0", "no business of it"},
        {{}, "verbosity", {}, "0", "nothing is assigned"},
    };
    for (const Row &row : rows) {
        const Forcing forcing(assigned(row.assignments));
        SCOPED_TRACE(row.option + ": " + row.why);
        EXPECT_EQ(forcers(forcing, row.option), row.forcing);
        EXPECT_EQ(forcing.is_forced(row.option), !row.forcing.empty());
        EXPECT_EQ(setting(forcing, row.option), row.setting);
    }
}

TEST(forcing, names_what_an_option_forces)
{
    struct {
        std::vector<std::pair<std::string, std::string>> assignments;
        std::string option;
        Names forced; // sorted
        std::string why;
    } const rows[] = {
        {{{"interpolation", "1"}}, "interpolation", {propagation, "proof_generation"}, "both of its effects"},
        {{{"interpolation", "0"}}, "interpolation", {}, "off"},
        {{{"verbosity", "1"}}, "interpolation", {}, "not assigned"},
        {{{"verbosity", "1"}}, "verbosity", {}, "has no effect but its own"},
        {{{"interpolation", "1"}, {"proof_generation", "1"}}, "interpolation", {propagation}, "one value agrees"},
        {{{"interpolation", "1"}, {"proof_generation", "1"}, {propagation, "0"}}, "interpolation", {}, "both agree"},
        {{{"interpolation", "1"}, {"interpolation", "0"}}, "interpolation", {}, "the last one is off"},
        {{{"unsat_core_generation", "1"}}, "unsat_core_generation", {propagation, "proof_generation"}, "by proofs"},
        {{{"unsat_core_generation", "2"}}, "unsat_core_generation", {"dpll.store_tlemmas", propagation}, "by lemmas"},
        {{{"unsat_core_generation", "2"}, {"dpll.store_tlemmas", "0"}}, "unsat_core_generation", {propagation},
         "a later row wins"},
        {{{"unsat_core_generation", "-1"}}, "unsat_core_generation", {"dpll.store_tlemmas", propagation}, "as 2"},
        {{{"interpolation", "1"}, {"unsat_core_generation", "1"}}, "unsat_core_generation",
         {propagation, "proof_generation"}, "that another forces them too does not matter"},
        {{{strat, "1"}, {"theory.arr.enable_nonlinear", "0"}}, strat, {"theory.arr.enable_nonlinear"}, "implied"},
        {{{strat, "1"}}, strat, {}, "the initial value agrees"},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.option + ": " + row.why);
        EXPECT_EQ(sorted(Forcing(assigned(row.assignments)).forced_by(row.option)), row.forced);
    }
}

TEST(forcing, takes_the_last_assignment_for_the_winner)
{
    const Forcing forcing(assigned({{"verbosity", "1"}, {"random_seed", "5"}, {"verbosity", "2"}}));
    ASSERT_NE(forcing.winner("verbosity"), nullptr);
    EXPECT_EQ(forcing.winner("verbosity")->value, "2");
    EXPECT_EQ(forcing.winner("verbosity")->place.line, 3U);
    ASSERT_NE(forcing.winner("random_seed"), nullptr);
    EXPECT_EQ(forcing.winner("random_seed")->place.text(), "test.cfg:2");
    EXPECT_EQ(setting(forcing, "verbosity"), "2");
    EXPECT_EQ(setting(forcing, "random_seed"), "5");
}

TEST(forcing, has_no_winner_for_what_nothing_assigns)
{
    const Forcing forcing(assigned({{"interpolation", "1"}}));
    EXPECT_EQ(forcing.winner("proof_generation"), nullptr) << "forced, but not assigned";
    EXPECT_EQ(forcing.winner("verbosity"), nullptr);
    EXPECT_EQ(forcing.winner("no_such_option"), nullptr);
    EXPECT_EQ(Forcing({}).winner("verbosity"), nullptr);
    EXPECT_TRUE(Forcing({}).forced_by("interpolation").empty());
}

TEST(forcing, agrees_with_itself_in_both_directions)
{
    const Forcing forcing(assigned({{"proof_generation", "0"},
                                    {"interpolation", "1"},
                                    {"unsat_core_generation", "2"},
                                    {strat, "1"},
                                    {"theory.arr.enable_nonlinear", "0"}}));
    std::size_t pairs = 0;
    for (const Setting &forced : forcing.settings()) {
        for (const Assignment *const forcer : forcing.forcing(forced.name)) {
            const Names all = forcing.forced_by(forcer->name);
            EXPECT_EQ(std::count(all.begin(), all.end(), forced.name), 1) << forcer->name << ", " << forced.name;
            ++pairs;
        }
    }
    EXPECT_EQ(pairs, 5U);
}

TEST(forcing, makes_the_settings_that_all_assignments_make)
{
    const std::vector<Assignment> all = read_default().sections.front().assignments;
    const std::vector<Setting> expected = settings_of(record_of(all));
    const Forcing forcing(all);
    ASSERT_EQ(forcing.settings().size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        EXPECT_EQ(forcing.settings()[i].name, expected[i].name);
        EXPECT_EQ(forcing.settings()[i].value, expected[i].value);
        EXPECT_FALSE(forcing.is_forced(expected[i].name)) << expected[i].name << ": the built-in text forces nothing";
    }
}

} // namespace

} // namespace dalvo::tools
