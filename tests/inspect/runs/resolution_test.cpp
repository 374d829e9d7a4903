#include "dalvo/inspect/runs/resolution.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "tests/inspect/shown_runs.h"
#include "tests/support/records.h"

namespace {

namespace inspect = dalvo::inspect;

using dalvo::Configuration;
using dalvo::is;
using dalvo::is_at_most;
using dalvo::is_not;
using dalvo::inspect::Catalogue;
using dalvo::inspect::fill_record;
using dalvo::inspect::OptionExtras;
using dalvo::inspect::Resolution;
using dalvo::inspect::Setting;
using dalvo::inspect::value_text;
using dalvo::testing::differing_fields;
using dalvo::testing::each_shown;
using dalvo::testing::sentinel_record;
using dalvo::testing::shown;

using Names = std::vector<std::string>;

static_assert(std::is_nothrow_move_constructible_v<Resolution> && std::is_nothrow_move_assignable_v<Resolution>);

/// A run of the text `contents` with `section` chosen, without a default text.
inspect::Run run_of(const std::string &contents, const std::string &section = "",
                    const Catalogue &catalogue = Catalogue::standard())
{
    inspect::Run run(catalogue);
    run.add_text("t.cfg", contents);
    run.choose_section(section);
    return run;
}

const Setting &setting_of(const Resolution &resolution, const std::string &name)
{
    const Setting *const found = resolution.find(name);
    if (found == nullptr) {
        throw std::out_of_range("no option " + name);
    }
    return *found;
}

// ---- Where values come from -----------------------------------------------------------------------------------------

/// The runs at hand: a default text, two texts with sections, a command line.
inspect::Run layered_run(const Catalogue &catalogue, const std::string &section)
{
    inspect::Run run(catalogue);
    run.add_default();
    run.add_text("one.cfg", "verbosity = 1\n  random_seed  =  5  \n[fast, slow]\nrandom_seed = 6\n");
    run.add_text("two.cfg", "\r\n# note\r\nrandom_seed = 7\r\n[fast]\r\nverbosity = 2\r\nverbosity=0\r\n");
    run.choose_section(section);
    run.assign("random_seed", "9", "SOLVER_SEED");
    run.assign("model_generation", "true");
    run.assign("printer.defines_prefix", "\xC3\xA4 \xFF");
    return run;
}

TEST(resolution, tells_where_the_assignment_that_wins_stands)
{
    const Catalogue catalogue("# default\nverbosity = 0\nrandom_seed = 1\nproof_generation = false\n");
    const struct {
        const char *section;
        const char *option;
        const char *origin;
        const char *why;
    } rows[] = {
        {"", "proof_generation", "built-in default:4:20-25 'false' built-in 0: wins", "the default text is one, too"},
        {"", "verbosity", "one.cfg:1:13-14 '1' file 1: wins", "a text after it"},
        {"fast", "verbosity", "two.cfg:6:11-12 '0' [fast] file 2: wins", "the chosen section, its last line, CR LF"},
        {"slow", "verbosity", "one.cfg:1:13-14 '1' file 1: wins", "the section says nothing of it"},
        {"slow", "random_seed", "SOLVER_SEED:0:13-14 '9' command line 3: wins", "a direct assignment"},
        {"", "model_generation", "command line:0:18-22 'true' command line 4: wins", "another source, another text"},
        {"", "printer.defines_prefix", "command line:0:24-28 '\xC3\xA4 \xFF' command line 4: wins",
         "bytes are counted"},
        {"", "bool_model_generation", "nothing", "none assigns to it"},
    };
    for (const auto &row : rows) {
        const Resolution resolution(layered_run(catalogue, row.section));
        EXPECT_TRUE(resolution.applies());
        EXPECT_EQ(shown(setting_of(resolution, row.option).origin), row.origin) << row.why;
    }
}

TEST(resolution, lists_the_assignments_that_apply_in_their_order_and_then_the_others)
{
    const Catalogue catalogue("[slow]\nrandom_seed = 3\n[default]\nrandom_seed = 1\n");
    const Resolution resolution(layered_run(catalogue, "fast"));
    EXPECT_EQ(each_shown(resolution.assignments("random_seed")),
              Names({"built-in default:4:15-16 '1' built-in 0: replaced", "one.cfg:2:19-20 '5' file 1: replaced",
                     "two.cfg:3:15-16 '7' file 2: replaced", "one.cfg:4:15-16 '6' [fast] file 1: replaced",
                     "SOLVER_SEED:0:13-14 '9' command line 3: wins",
                     "built-in default:2:15-16 '3' [slow] built-in 0: never applied",
                     "one.cfg:4:15-16 '6' [slow] file 1: never applied"}))
        << "a line of two sections is listed for each";
    EXPECT_EQ(each_shown(resolution.assignments("bool_model_generation")), Names()) << "nothing assigns to it";
    EXPECT_EQ(each_shown(resolution.assignments("no.such.option")), Names());
    EXPECT_EQ(resolution.find("no.such.option"), nullptr);
    EXPECT_EQ(resolution.find(std::string("random_seed\0", 12)), nullptr);
}

TEST(resolution, lists_no_assignment_to_a_name_that_no_option_has)
{
    const Resolution resolution(run_of("debug.log_sections = a\nno.such.option = 1\n"));
    EXPECT_EQ(each_shown(resolution.assignments("debug.log_sections")), Names());
    EXPECT_EQ(each_shown(resolution.assignments("no.such.option")), Names());
    EXPECT_FALSE(resolution.applies());
}

// ---- What becomes of assignments ------------------------------------------------------------------------------------

/// The values assigned to `option` and what becomes of each: "1 replaced".
Names fates(const Resolution &resolution, const std::string &option)
{
    Names shown_fates;
    for (const inspect::Assigned &assigned : resolution.assignments(option)) {
        shown_fates.push_back(assigned.value + " " + shown(assigned.fate) +
                              (assigned.is_readable ? "" : ", not readable") +
                              (assigned.is_accepted ? "" : ", not accepted"));
    }
    return shown_fates;
}

TEST(resolution, tells_what_becomes_of_each_assignment)
{
    const struct {
        const char *contents;
        Names fates;
        const char *value;
        bool applies;
        const char *why;
    } rows[] = {
        {"verbosity = 2\n", {"2 wins"}, "2", true, "alone; the last in range"},
        {"verbosity = 3\n", {"3 rejected, not accepted"}, "0", false, "the first beyond; the initial value stays"},
        {"verbosity = x\n", {"x rejected, not readable, not accepted"}, "0", false, "not of the type"},
        {"verbosity = 1\nverbosity = 2\n", {"1 replaced", "2 wins"}, "2", true, "the later line wins"},
        {"verbosity = 3\nverbosity = 2\n", {"3 replaced, not accepted", "2 wins"}, "2", true,
         "out of range, and replaced"},
        {"verbosity = x\nverbosity = 2\n", {"x rejected, not readable, not accepted", "2 wins"}, "2", false,
         "an unreadable value is wrong even where a later line replaces it"},
        {"verbosity = 1\nverbosity = 3\n", {"1 wins", "3 rejected, not accepted"}, "1", false,
         "without the last line, which is wrong, the one before wins"},
        {"verbosity = 1\nverbosity = x\n", {"1 wins", "x rejected, not readable, not accepted"}, "1", false,
         "the same"},
        {"verbosity = 1\nverbosity = 3\nverbosity = x\n",
         {"1 wins", "3 rejected, not accepted", "x rejected, not readable, not accepted"}, "1", false,
         "an unreadable value replaces nothing"},
        {"verbosity = 3\nverbosity = 4\n", {"3 replaced, not accepted", "4 rejected, not accepted"}, "0", false,
         "the last one alone is tested"},
        {"verbosity = 1\n[s]\nverbosity = 3\n", {"1 wins", "3 rejected, not accepted"}, "1", false,
         "the chosen section comes last"},
        {"[s]\nverbosity = 1\n[default]\nverbosity = 3\n", {"3 replaced, not accepted", "1 wins"}, "1", true,
         "wherever it stands"},
        {"[other]\nverbosity = 3\nverbosity = x\n[s]\n",
         {"3 never applied, not accepted", "x never applied, not readable, not accepted"}, "0", true,
         "what is never applied harms nothing"},
        {"[s, other]\nverbosity = 1\n", {"1 wins", "1 never applied"}, "1", true, "one line, two sections"},
        {"verbosity = 1\n[s\nverbosity = 2\n[s]\n", {"1 wins", "2 never applied"}, "1", false,
         "below a malformed header, of which nobody knows the section"},
        {"[s] # note\nverbosity = 2\n", {"2 wins"}, "2", false, "below a malformed one that says which it means"},
    };
    for (const auto &row : rows) {
        const std::string contents = row.contents;
        const Resolution resolution(run_of(contents, contents.find("[s") != std::string::npos ? "s" : ""));
        EXPECT_EQ(fates(resolution, "verbosity"), row.fates) << row.why;
        EXPECT_EQ(value_text(setting_of(resolution, "verbosity").value), row.value) << row.why;
        EXPECT_EQ(std::to_string(resolution.record().verbosity), row.value) << row.why;
        EXPECT_EQ(resolution.applies(), row.applies) << row.why;
    }
}

TEST(resolution, tells_what_becomes_of_assignments_by_hand)
{
    const struct {
        Names values; // assigned after verbosity = 1 of the chosen section
        Names fates;
        bool applies;
        const char *why;
    } rows[] = {
        {{"2"}, {"1 replaced", "2 wins"}, true, "they win over the section"},
        {{"3"}, {"1 wins", "3 rejected, not accepted"}, false, "the one before wins, of whatever kind"},
        {{"3", "0"}, {"1 replaced", "3 replaced, not accepted", "0 wins"}, true, "out of range, and replaced"},
        {{"0", "3"}, {"1 replaced", "0 wins", "3 rejected, not accepted"}, false, "two by hand"},
        {{"x"}, {"1 wins", "x rejected, not readable, not accepted"}, false, "not of the type"},
    };
    for (const auto &row : rows) {
        inspect::Run run = run_of("[s]\nverbosity = 1\n", "s");
        for (const std::string &value : row.values) {
            run.assign("verbosity", value);
        }
        const Resolution resolution(run);
        EXPECT_EQ(fates(resolution, "verbosity"), row.fates) << row.why;
        EXPECT_EQ(resolution.applies(), row.applies) << row.why;
    }
}

// ---- Whether the run applies ----------------------------------------------------------------------------------------

TEST(resolution, applies_where_nothing_is_wrong)
{
    const struct {
        const char *contents;
        const char *section;
        bool applies;
        const char *why;
    } rows[] = {
        {"", "", true, "an empty text"},
        {"verbosity = 1\n[s]\n", "s", true, "an empty section"},
        {"verbosity = 1\n", "s", false, "the section is not there"},
        {"[default, s]\n", "default", true, "a section of that name"},
        {"[default]\n", "default", false, "the header alone makes none"},
        {"[a\n", "", false, "a malformed header"},
        {"[a,,b]\n[s]\n", "s", false, "one in a section that nobody chose keeps the text from being loaded"},
        {"[a] # note\n", "a", false, "one whose name is known"},
        {"[a, a]\nverbosity = 1\n", "a", true, "a section twice in a header"},
        {"\xEF\xBB\xBF", "", false, "a byte-order mark is a name of its own"},
        {"\xEF\xBB\xBF# note\n", "", false, "or a part of one"},
        {"no.such.option = 1\n", "", false, "an unknown name"},
        {"[s]\nno.such.option = 1\n", "", true, "in a section that is not chosen"},
        {"[s]\nno.such.option = 1\n", "s", false, "in the chosen one"},
        {"= 1\n", "", false, "an empty name"},
        {"interpolation\n", "", false, "a name alone has an empty value"},
        {"printer.defines_prefix\n", "", true, "which a string takes"},
        {"random_seed = 0\n", "", false, "a hole in the range"},
        {"dpll.branching_random_frequency = nan\n", "", true, "no range excludes it"},
    };
    for (const auto &row : rows) {
        const inspect::Run run = run_of(row.contents, row.section);
        EXPECT_EQ(Resolution(run).applies(), row.applies) << row.why;
        Configuration record = sentinel_record(1);
        EXPECT_EQ(fill_record(run, &record), row.applies) << row.why;
        const Configuration expected = row.applies ? Resolution(run).record() : sentinel_record(1);
        EXPECT_EQ(differing_fields(record, expected), Names()) << row.why;
    }
    inspect::Run run;
    run.add_contents("gone.cfg", {"", "No such file or directory"});
    EXPECT_FALSE(Resolution(run).applies()) << "an input that cannot be read";
}

// ---- What is forced -------------------------------------------------------------------------------------------------

/// "false, asked true; interpolation, unsat_core_generation": the value, what was asked for, and what forces it.
std::string shown_force(const Setting &setting)
{
    std::string text = value_text(setting.value) + ", asked " + value_text(setting.asked) + ";";
    for (const inspect::Forcing &forcing : setting.forced_by) {
        text += " " + forcing.option->name + " = " + forcing.assigned.value;
    }
    return text;
}

TEST(resolution, tells_what_is_forced_by_what)
{
    const struct {
        const char *contents;
        const char *option;
        const char *expected;
        const char *why;
    } rows[] = {
        {"", "proof_generation", "false, asked false;", "nothing is assigned"},
        {"interpolation = true\n", "proof_generation", "true, asked false; interpolation = true",
         "over the initial value"},
        {"interpolation = true\nproof_generation = false\n", "proof_generation",
         "true, asked false; interpolation = true", "over an assignment of its own"},
        {"interpolation = true\nproof_generation = true\n", "proof_generation",
         "true, asked true; interpolation = true", "to what it has anyway"},
        {"interpolation = off\nproof_generation = true\n", "proof_generation", "true, asked true;",
         "the condition is not met"},
        {"interpolation = true\ninterpolation = false\n", "proof_generation", "false, asked false;",
         "the assignment that wins counts"},
        {"interpolation = true\ninterpolation = x\n", "proof_generation", "true, asked false; interpolation = true",
         "that one wins without the wrong line"},
        {"unsat_core_generation = 1\n", "proof_generation", "true, asked false; unsat_core_generation = 1", "1 alone"},
        {"unsat_core_generation = 2\n", "proof_generation", "false, asked false;", "not 2"},
        {"unsat_core_generation = -1\n", "proof_generation", "false, asked false;", "nor a negative number"},
        {"unsat_core_generation = 1\ninterpolation = 1\n", "proof_generation",
         "true, asked false; interpolation = 1 unsat_core_generation = 1", "by two, in the order of application"},
        {"unsat_core_generation = 0\n", "preprocessor.toplevel_propagation", "true, asked true;", "0 forces nothing"},
        {"unsat_core_generation = -1\n", "preprocessor.toplevel_propagation",
         "false, asked true; unsat_core_generation = -1", "any other number does"},
        {"unsat_core_generation = 2\ninterpolation = yes\npreprocessor.toplevel_propagation = off\n",
         "preprocessor.toplevel_propagation", "false, asked false; interpolation = yes unsat_core_generation = 2",
         "by two, to what it has anyway"},
        {"unsat_core_generation = 3\n", "preprocessor.toplevel_propagation", "true, asked true;",
         "a value out of range forces nothing"},
        {"unsat_core_generation = 2\n", "dpll.store_tlemmas", "true, asked false; unsat_core_generation = 2", "forced"},
        {"unsat_core_generation = -1\n", "dpll.store_tlemmas", "true, asked false; unsat_core_generation = -1",
         "by what is neither 0 nor 1"},
        {"unsat_core_generation = 1\n", "dpll.store_tlemmas", "false, asked false;", "1 does not force it"},
        {"unsat_core_generation = 2\ndpll.store_tlemmas = false\n", "dpll.store_tlemmas", "false, asked false;",
         "it is applied later: an assignment of its own wins"},
        {"dpll.store_tlemmas = true\nunsat_core_generation = 2\n", "dpll.store_tlemmas", "true, asked true;",
         "whichever line is the later one"},
        {"unsat_core_generation = 2\ndpll.store_tlemmas = x\n", "dpll.store_tlemmas",
         "true, asked false; unsat_core_generation = 2", "a wrong assignment is none"},
        {"theory.arr.enable_nonlinear_strat = true\ntheory.arr.enable_nonlinear = false\n",
         "theory.arr.enable_nonlinear", "true, asked false; theory.arr.enable_nonlinear_strat = true", "over its own"},
        {"theory.arr.enable_nonlinear_strat = false\ntheory.arr.enable_nonlinear = false\n",
         "theory.arr.enable_nonlinear", "false, asked false;", "the condition is not met"},
        {"theory.arr.enable_nonlinear_strat = true\n", "theory.arr.enable_nonlinear",
         "true, asked true; theory.arr.enable_nonlinear_strat = true", "to its initial value"},
    };
    for (const auto &row : rows) {
        const Resolution resolution(run_of(row.contents));
        const Setting &setting = setting_of(resolution, row.option);
        EXPECT_EQ(shown_force(setting), row.expected) << row.contents << row.why;
        EXPECT_EQ(setting.is_forced(), value_text(setting.value) != value_text(setting.asked)) << row.contents;
    }
}

TEST(resolution, tells_which_assignment_forces)
{
    inspect::Run run = run_of("interpolation = true\n[s]\ninterpolation = on\n", "s");
    EXPECT_EQ(each_shown(setting_of(Resolution(run), "proof_generation").forced_by),
              Names({"interpolation by t.cfg:3:17-19 'on' [s] file 0: wins"}));
    EXPECT_EQ(shown(setting_of(Resolution(run), "proof_generation").origin), "nothing") << "it has none of its own";
    run.assign("unsat_core_generation", "1");
    EXPECT_EQ(each_shown(setting_of(Resolution(run), "proof_generation").forced_by),
              Names({"interpolation by t.cfg:3:17-19 'on' [s] file 0: wins",
                     "unsat_core_generation by command line:0:23-24 '1' command line 1: wins"}));
}

TEST(resolution, lists_what_an_option_forces)
{
    const struct {
        const char *contents;
        const char *option;
        Names forced;
        const char *why;
    } rows[] = {
        {"interpolation = true\n", "interpolation", {"proof_generation", "preprocessor.toplevel_propagation"},
         "in the order of registration"},
        {"interpolation = true\nproof_generation = true\n", "interpolation",
         {"proof_generation", "preprocessor.toplevel_propagation"}, "to what it has anyway, too"},
        {"interpolation = false\n", "interpolation", {}, "the condition is not met"},
        {"", "interpolation", {}, "nothing assigns"},
        {"unsat_core_generation = 1\n", "unsat_core_generation",
         {"proof_generation", "preprocessor.toplevel_propagation"}, "by proofs"},
        {"unsat_core_generation = 2\n", "unsat_core_generation",
         {"preprocessor.toplevel_propagation", "dpll.store_tlemmas"}, "by lemmas"},
        {"unsat_core_generation = 2\ndpll.store_tlemmas = true\n", "unsat_core_generation",
         {"preprocessor.toplevel_propagation"}, "not what has an assignment of its own that wins"},
        {"theory.arr.enable_nonlinear_strat = true\n", "theory.arr.enable_nonlinear_strat",
         {"theory.arr.enable_nonlinear"}, "one"},
        {"interpolation = true\n", "proof_generation", {}, "what is forced forces nothing"},
        {"interpolation = true\n", "no.such.option", {}, "no such option"},
    };
    for (const auto &row : rows) {
        const Resolution resolution(run_of(row.contents));
        Names forced;
        for (const std::size_t position : resolution.forced_by(row.option)) {
            forced.push_back(resolution.settings().at(position).option->name);
        }
        std::sort(forced.begin(), forced.end());
        Names expected = row.forced;
        std::sort(expected.begin(), expected.end());
        EXPECT_EQ(forced, expected) << row.contents << row.why;
        const std::vector<std::size_t> positions = resolution.forced_by(row.option);
        EXPECT_TRUE(std::is_sorted(positions.begin(), positions.end())) << row.why;
    }
}

// ---- What has an effect ---------------------------------------------------------------------------------------------

/// "theory.bv.enabled is false, not: is true" for each option that does not meet a condition.
Names unmet_of(const std::string &contents, const std::string &option)
{
    const Resolution resolution(run_of(contents));
    const Setting &setting = setting_of(resolution, option);
    EXPECT_EQ(setting.has_effect(), setting.unmet.empty());
    Names texts;
    for (const std::string &text : each_shown(setting.unmet)) {
        texts.push_back(text.substr(0, text.find(';')));
    }
    return texts;
}

TEST(resolution, tells_why_an_option_has_no_effect)
{
    const std::string bounds = "theory.la.laz_internal_branch_and_bound_limit";
    const std::string factor = "theory.bv.lazydpll.restart_geometric_factor";
    const std::string no_bv = "theory.bv.enabled is false, not: is true";
    const std::string eager = "theory.bv.eager is true, not: is false";
    const std::string strategy = "theory.bv.lazydpll.restart_strategy is 1, not: is 0";
    const std::string random = "dpll.branching_random_ignore_polarity";
    const struct {
        std::string contents;
        std::string option;
        Names unmet;
        const char *why;
    } rows[] = {
        {"", "theory.la.split_rat_eq", {}, "the theory is there"},
        {"theory.la.enabled = false\n", "theory.la.split_rat_eq", {"theory.la.enabled is false, not: is true"},
         "the theory is not"},
        {"theory.la.enabled = false\n", "theory.la.enabled", {}, "the switch itself has its effect"},
        {"theory.la.enabled = false\ntheory.la.laz_enabled = false\n", "theory.la.laz_unit_cube_test",
         {"theory.la.enabled is false, not: is true", "theory.la.laz_enabled is false, not: is true"},
         "a theory and a solver within it: both"},
        {"theory.la.laz_enabled = false\n", bounds, {"theory.la.laz_enabled is false, not: is true"},
         "the second of a chain of three"},
        {"theory.la.laz_internal_branch_and_bound = false\n", bounds,
         {"theory.la.laz_internal_branch_and_bound is false, not: is true"}, "the last of the chain"},
        {"theory.la.enabled = 0\ntheory.la.laz_enabled = 0\ntheory.la.laz_internal_branch_and_bound = 0\n", bounds,
         {"theory.la.enabled is false, not: is true", "theory.la.laz_enabled is false, not: is true",
          "theory.la.laz_internal_branch_and_bound is false, not: is true"}, "the whole chain, each once"},
        {"theory.bv.lazydpll.restart_strategy = 0\n", factor, {}, "an inner engine at work"},
        {"", factor, {strategy}, "another strategy"},
        {"theory.bv.enabled = 0\ntheory.bv.lazydpll.restart_strategy = 0\n", factor, {no_bv}, "a disabled theory"},
        {"theory.bv.eager = 1\ntheory.bv.lazydpll.restart_strategy = 0\n", factor, {eager}, "a disabled engine"},
        {"theory.bv.eager = 1\ntheory.bv.enabled = 0\n", factor, {strategy, no_bv, eager}, "all three"},
        {"theory.bv.lazydpll.restart_strategy = -1\n", "theory.bv.lazydpll.restart_initial", {},
         "a negative number is at most 2"},
        {"theory.bv.lazydpll.restart_strategy = 3\n", "theory.bv.lazydpll.restart_initial",
         {"theory.bv.lazydpll.restart_strategy is 3, not: is at most 2"}, "beyond the bound"},
        {"interpolation = true\n", "preprocessor.partial_nnf_conversion",
         {"preprocessor.toplevel_propagation is false, not: is true"}, "the value in force counts, which is forced"},
        {"interpolation = true\npreprocessor.toplevel_propagation = true\n", "preprocessor.partial_nnf_conversion",
         {"preprocessor.toplevel_propagation is false, not: is true"}, "whatever was asked for"},
        {"", random, {"dpll.branching_random_frequency is 0, not: is above 0"}, "the initial value counts"},
        {"dpll.branching_random_frequency = 1e-9\n", random, {}, "barely above"},
        {"dpll.branching_random_frequency = -0.5\n", random,
         {"dpll.branching_random_frequency is -0.5, not: is above 0"}, "below"},
        {"dpll.branching_random_frequency = nan\n", random,
         {"dpll.branching_random_frequency is nan, not: is above 0"}, "NaN is not above"},
        {"", "dpll.preprocessor.mode", {}, "what decides about others and is of the same prefix"},
        {"theory.fp.mode = 2\n", "theory.fp.bit_blast_mode", {"theory.fp.mode is 2, not: is at most 1"}, "a mode"},
        {"theory.fp.enabled = 0\n", "theory.fp.bv_combination_enabled",
         {"theory.fp.enabled is false, not: is true"}, "one of two theories"},
        {"theory.bv.enabled = 0\n", "theory.fp.bv_combination_enabled",
         {"theory.bv.enabled is false, not: is true"}, "the other"},
    };
    for (const auto &row : rows) {
        Names unmet = unmet_of(row.contents, row.option);
        Names expected = row.unmet;
        std::sort(unmet.begin(), unmet.end());
        std::sort(expected.begin(), expected.end());
        EXPECT_EQ(unmet, expected) << row.contents << row.option << ": " << row.why;
    }
}

TEST(resolution, tells_where_the_value_comes_from_that_keeps_an_option_from_its_effect)
{
    const Resolution resolution(
        run_of("theory.la.enabled = false\ninterpolation = 1\npreprocessor.toplevel_propagation = on\n"));
    EXPECT_EQ(each_shown(setting_of(resolution, "theory.la.delay_alien").unmet),
              Names({"theory.la.enabled is false, not: is true; by t.cfg:1:21-26 'false' file 0: wins"}));
    EXPECT_EQ(each_shown(setting_of(resolution, "preprocessor.toplevel_propagation_limit").unmet),
              Names({"preprocessor.toplevel_propagation is false, not: is true; by t.cfg:3:37-39 'on' file 0: wins"}))
        << "the assignment that wins, though it is forced";
    EXPECT_EQ(each_shown(setting_of(resolution, "dpll.preprocessor.clause_size_limit").unmet),
              Names({"dpll.preprocessor.mode is 0, not: is not 0; by nothing"}));
}

// ---- What needs what ------------------------------------------------------------------------------------------------

TEST(resolution, tells_what_is_needed_on_both_sides)
{
    const std::string core = "unsat_core_generation is 2 needs dpll.store_tlemmas is true";
    const std::string euf = "theory.la.detect_euf_fragment is true needs theory.euf.enabled is true";
    const struct {
        const char *contents;
        const char *needing;
        const char *needed;
        Names needs;
        const char *why;
    } rows[] = {
        {"unsat_core_generation = 2\ndpll.store_tlemmas = true\n", "unsat_core_generation", "dpll.store_tlemmas",
         {core + ": met"}, "met"},
        {"unsat_core_generation = 2\ndpll.store_tlemmas = false\n", "unsat_core_generation", "dpll.store_tlemmas",
         {core + ": not met"}, "not met"},
        {"unsat_core_generation = 2\n", "unsat_core_generation", "dpll.store_tlemmas", {core + ": met"},
         "met by force"},
        {"unsat_core_generation = 1\n", "unsat_core_generation", "dpll.store_tlemmas", {},
         "another value needs nothing"},
        {"", "unsat_core_generation", "dpll.store_tlemmas", {}, "nor does the initial one"},
        {"theory.la.detect_euf_fragment = true\n", "theory.la.detect_euf_fragment", "theory.euf.enabled",
         {euf + ": met"}, "met by the initial value"},
        {"theory.la.detect_euf_fragment = true\ntheory.euf.enabled = false\n", "theory.la.detect_euf_fragment",
         "theory.euf.enabled", {euf + ": not met"}, "not met"},
    };
    for (const auto &row : rows) {
        const Resolution resolution(run_of(row.contents));
        EXPECT_EQ(each_shown(setting_of(resolution, row.needing).needs), row.needs) << row.why;
        EXPECT_EQ(each_shown(setting_of(resolution, row.needed).needs), row.needs) << row.why;
        for (const inspect::NeedInForce &need : setting_of(resolution, row.needed).needs) {
            EXPECT_EQ(need.option->name, row.needing) << row.why;
            EXPECT_TRUE(inspect::same_value(need.value, setting_of(resolution, row.needing).value)) << row.why;
        }
    }
}

// ---- What has changed -----------------------------------------------------------------------------------------------

TEST(resolution, tells_what_differs_from_the_default_text)
{
    const Catalogue own("verbosity = 1\nverbosity = 9\ndpll.branching_random_frequency = -0.0\ninterpolation = true\n");
    const struct {
        const Catalogue &catalogue;
        const char *contents;
        const char *option;
        bool is_changed;
        const char *why;
    } rows[] = {
        {Catalogue::standard(), "", "verbosity", false, "the initial value is that of the built-in text"},
        {Catalogue::standard(), "verbosity = 0\n", "verbosity", false, "the same, assigned"},
        {Catalogue::standard(), "verbosity = 1\n", "verbosity", true, "another"},
        {Catalogue::standard(), "interpolation = true\n", "proof_generation", true, "another by force"},
        {own, "", "verbosity", true, "another default text, which is not added: without the wrong line it says 1"},
        {own, "verbosity = 1\n", "verbosity", false, "the same as it says"},
        {own, "dpll.branching_random_frequency = 0\n", "dpll.branching_random_frequency", true, "0 is not -0"},
        {own, "dpll.branching_random_frequency = -0\n", "dpll.branching_random_frequency", false, "-0 is"},
        {own, "", "proof_generation", true, "it forces"},
        {own, "proof_generation = true\n", "proof_generation", false, "to the same as is asked for"},
    };
    for (const auto &row : rows) {
        const Resolution resolution(run_of(row.contents, "", row.catalogue));
        EXPECT_EQ(setting_of(resolution, row.option).is_changed(), row.is_changed) << row.contents << row.why;
    }
    inspect::Run run;
    run.add_default();
    const Resolution built_in(run);
    for (const Setting &setting : built_in.settings()) {
        EXPECT_FALSE(setting.is_changed()) << setting.option->name;
    }
}

// ---- Options of hosts -----------------------------------------------------------------------------------------------

/// Options of a host with relations of every kind.
struct HostCatalogue : Catalogue {
    HostCatalogue()
    {
        OptionExtras size;
        size.default_text = "1000";
        size.range = dalvo::at_least(1);
        describe("cache.enabled", dalvo::OPT_BOOL, "Cache options:", "Whether there is one.", {});
        size.matters_when = {{"cache.enabled", is(true)}, {"theory.la.laz_enabled", is(true)}};
        size.needs = {{is_at_most(9), "model_generation", is(true), false, "small ones want models"}};
        describe("cache.entries", dalvo::OPT_INT, "Cache options:", "Entries of the cache.", size);
        OptionExtras ratio;
        ratio.default_text = "0.5";
        ratio.matters_when = {{"cache.entries", is_not(0)}};
        describe("cache.ratio", dalvo::OPT_FLOAT, "Cache options:", "", ratio);
        describe("cache.file", dalvo::OPT_STR, "Cache options:", "", {});
    }
};

TEST(resolution, resolves_the_options_of_a_host_as_any_other)
{
    const HostCatalogue catalogue;
    const struct {
        const char *contents;
        const char *option;
        const char *setting;
        bool applies;
        bool is_changed;
        const char *why;
    } rows[] = {
        {"", "cache.file", "cache.file = , asked , by nothing\n", true, false, "no default: no value"},
        {"cache.file =\n", "cache.file", "cache.file = \"\", asked \"\", by t.cfg:1:13-13 '' file 0: wins\n", true,
         true, "an empty text is a value"},
        {"cache.enabled = true\n", "cache.entries", "cache.entries = 1000, asked 1000, by nothing\n", true, false,
         "the described default"},
        {"cache.enabled = true\ncache.entries = 1\n", "cache.entries",
         "cache.entries = 1, asked 1, by t.cfg:2:17-18 '1' file 0: wins\n"
         "  need: cache.entries is at most 9 needs model_generation is true: not met\n",
         true, true, "the last in range; a need that is not met"},
        {"cache.entries = 9\nmodel_generation = 1\n", "model_generation",
         "model_generation = true, asked true, by t.cfg:2:20-21 '1' file 0: wins\n"
         "  need: cache.entries is at most 9 needs model_generation is true: met\n",
         true, true, "the need on the side of the library's option"},
        {"cache.enabled = true\ncache.entries = 0\n", "cache.entries", "cache.entries = 1000, asked 1000, by nothing\n",
         false, false, "out of the range: the default stands"},
        {"theory.la.enabled = false\n", "cache.ratio",
         "cache.ratio = 0.5, asked 0.5, by nothing\n"
         "  unmet: cache.enabled is , not: is true; by nothing\n"
         "  unmet: theory.la.enabled is false, not: is true; by t.cfg:1:21-26 'false' file 0: wins\n",
         true, false, "deciders of deciders; one without a value counts as 0"},
    };
    for (const auto &row : rows) {
        const Resolution resolution(run_of(row.contents, "", catalogue));
        const Setting &setting = setting_of(resolution, row.option);
        EXPECT_EQ(shown(setting), row.setting) << row.why;
        EXPECT_EQ(resolution.applies(), row.applies) << row.why;
        EXPECT_EQ(setting.is_changed(), row.is_changed) << row.why;
        EXPECT_EQ(setting.option, &catalogue.options()[catalogue.position(row.option)]) << "owned by the catalogue";
    }
}

TEST(resolution, fills_the_fields_whose_names_are_left_to_hosts)
{
    using Sections = std::vector<std::string>;
    Catalogue catalogue("shallow_incrementality = true\n");
    OptionExtras sections;
    sections.default_text = "sat,theory";
    catalogue.describe("debug.log_sections", dalvo::OPT_STR, "Debug options:", "", sections);
    catalogue.describe("shallow_incrementality", dalvo::OPT_BOOL, "General options:", "", {});
    const Resolution nothing(inspect::Run{catalogue});
    EXPECT_EQ(nothing.record().debug_log_sections, Sections({"sat", "theory"})) << "the described default";
    EXPECT_FALSE(nothing.record().shallow_incrementality) << "the default text takes no part until it is added";
    EXPECT_EQ(value_text(setting_of(nothing, "debug.log_sections").value), "sat,theory");
    EXPECT_FALSE(setting_of(nothing, "debug.log_sections").is_changed());
    EXPECT_TRUE(setting_of(nothing, "shallow_incrementality").is_changed());

    inspect::Run run = run_of("debug.log_sections = ALL\nshallow_incrementality = on\n", "", catalogue);
    EXPECT_EQ(Resolution(run).record().debug_log_sections, Sections());
    EXPECT_TRUE(Resolution(run).record().shallow_incrementality);
    EXPECT_TRUE(Resolution(run).applies());
    run.assign("theory.arr.debug_data", "true");
    EXPECT_FALSE(Resolution(run).applies()) << "a name that nobody has described";
    EXPECT_EQ(Resolution(run).find("theory.arr.debug_data"), nullptr);
}

// ---- Resolutions themselves -----------------------------------------------------------------------------------------

TEST(resolution, has_each_option_in_the_order_of_registration)
{
    const HostCatalogue catalogue;
    const Resolution resolution(run_of("verbosity = 1\n", "", catalogue));
    EXPECT_EQ(&resolution.catalogue(), &catalogue);
    ASSERT_EQ(resolution.settings().size(), catalogue.options().size());
    for (std::size_t i = 0; i < catalogue.options().size(); ++i) {
        EXPECT_EQ(resolution.settings()[i].option, &catalogue.options()[i]);
        EXPECT_EQ(resolution.find(catalogue.options()[i].name), &resolution.settings()[i]);
    }
}

TEST(resolution, outlives_its_run_and_is_copied_whole)
{
    auto run = std::make_unique<inspect::Run>(run_of("verbosity = 1\n[s]\ninterpolation = true\nverbosity = 2\n", "s"));
    run->assign("random_seed", "7");
    const Resolution resolution(*run);
    const std::string all = shown(resolution);
    run->choose_section("");
    run->assign("verbosity", "0");
    run.reset();
    const Resolution copy = resolution;
    const Resolution moved = Resolution(copy);
    for (const Resolution *const one : {&resolution, &copy, &moved}) {
        EXPECT_EQ(shown(*one), all);
        EXPECT_EQ(fates(*one, "verbosity"), Names({"1 replaced", "2 wins"}));
        EXPECT_EQ(fates(*one, "random_seed"), Names({"7 wins"}));
        EXPECT_EQ(one->record().verbosity, 2);
        EXPECT_EQ(one->forced_by("interpolation").size(), 2U);
    }
}

TEST(resolution, keeps_what_it_says_when_its_catalogue_grows)
{
    HostCatalogue catalogue;
    const Resolution resolution(run_of("cache.entries = 5\nlate.option = 1\n", "", catalogue));
    const std::string all = shown(resolution);
    OptionExtras extras;
    extras.needs = {{is_at_most(9), "cache.entries", is_not(5), false, "it wants more"}};
    catalogue.describe("late.option", dalvo::OPT_INT, "Late options:", "", extras);
    EXPECT_EQ(shown(resolution), all);
    EXPECT_EQ(resolution.find("late.option"), nullptr);
    EXPECT_EQ(fates(resolution, "cache.entries"), Names({"5 wins"}));
    EXPECT_EQ(fates(resolution, "late.option"), Names()) << "it was no option then";
}

} // namespace
