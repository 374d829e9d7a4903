// What lines come to beside the other lines that apply: replaced, out of range, forced, without effect, in need.

#include "dalvo/inspect/findings/check.h"

#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "tests/inspect/findings/text_rows.h"

namespace {

using namespace dalvo::testing;
using dalvo::inspect::Catalogue;
using dalvo::inspect::check;
using dalvo::inspect::check_every_section;

/// `text` on top of another one, called "other.cfg".
dalvo::inspect::Run run_over(const std::string &other, const std::string &text)
{
    dalvo::inspect::Run run;
    run.add_default();
    run.add_text("other.cfg", other);
    run.add_text("t", text);
    return run;
}

/// `text` below assignments of a command line.
dalvo::inspect::Run run_below(const std::vector<std::pair<std::string, std::string>> &direct, const std::string &text)
{
    dalvo::inspect::Run run = run_with(text);
    for (const auto &[name, value] : direct) {
        run.assign(name, value);
    }
    return run;
}

// ---- Replaced -------------------------------------------------------------------------------------------------------

TEST(a_line, is_replaced_by_a_later_one_of_its_section)
{
    expect_findings({
        {"verbosity = 1\nverbosity = 2\n", every_section,
         {"1:1-10 replaced warning: verbosity (line 1) is replaced by line 2"}, "the unnamed section"},
        {"verbosity = 1\nverbosity = 1\n", no_section,
         {"1:1-10 replaced warning: verbosity (line 1) is replaced by line 2"}, "by the same value"},
        {"verbosity = 1\n[default]\nverbosity = 2\n", every_section,
         {"1:1-10 replaced warning: verbosity (line 1) is replaced by line 3"}, "opened again"},
        {"[a]\nverbosity = 1\n[b]\n[a]\n  verbosity = 2\n", every_section,
         {"2:1-10 replaced warning: verbosity (line 2) is replaced by line 5 in section 'a'"}, "a section"},
        {"verbosity = 0\nverbosity = 1\nverbosity = 2\n", every_section,
         {"1:1-10 replaced warning: verbosity (line 1) is replaced by line 2",
          "2:1-10 replaced warning: verbosity (line 2) is replaced by line 3"},
         "each by the next one"},
        {"verbosity = 1\nverbosity = high\nverbosity = 2\n", every_section,
         {"1:1-10 replaced warning: verbosity (line 1) is replaced by line 3",
          "2:13-17 invalid-value error: invalid value 'high': verbosity is a 32-bit int and accepts at most 2"},
         "what cannot be read replaces nothing"},
        {"verbosity = 1\nverbosity = 3\n", every_section,
         {"1:1-10 replaced warning: verbosity (line 1) is replaced by line 2",
          "2:13-14 out-of-range error: value 3 is out of range: verbosity accepts at most 2"},
         "what is out of range does"},
        {"verbosity = 1\n[a]\nverbosity = 2\n", every_section, {},
         "a section's value over the unnamed one's is no slip"},
        {"[a]\nverbosity = 1\n[b]\nverbosity = 2\n", every_section, {}, "two sections"},
        {"[a]\nverbosity = 1\nverbosity = 2\n", "a",
         {"2:1-10 replaced warning: verbosity (line 2) is replaced by line 3 in section 'a'"}, "the chosen section"},
        {"[a]\nverbosity = 1\nverbosity = 2\n[b]\n", "b", {}, "a section that is not chosen"},
        {"[\nverbosity = 1\nverbosity = 2\n", every_section,
         {"1:1-2 malformed-header error: malformed header: it does not end with ']'",
          "2:1-10 replaced warning: verbosity (line 2) is replaced by line 3"},
         "below a header that names no section"},
    });
    EXPECT_EQ(shown(check_every_section(run_over("verbosity = 1\n", "verbosity = 2\n"))), Lines{}) << "between texts";
    EXPECT_EQ(shown(check_every_section(run_below({{"verbosity", "1"}, {"verbosity", "2"}}, "verbosity = 0"))), Lines{})
        << "command lines";
}

TEST(a_line, below_a_header_that_names_no_section_is_not_judged_with_a_section_chosen)
{
    const Lines malformed = {"1:1-2 malformed-header error: malformed header: it does not end with ']'"};
    expect_findings({
        {"[\nverbosity = 3\nverbostiy = 1\n", no_section, malformed, "by itself"},
        {"[\nverbosity = 1\nverbosity = 2\n", no_section, malformed, "replaced"},
    });
}

TEST(a_line, of_several_sections_is_replaced_where_it_holds_in_none)
{
    const std::string both = "[a, b]\nrandom_seed = 2\n[a]\nrandom_seed = 3\n[b]\nrandom_seed = 4\n";
    const std::string in_a = "this assignment replaces it in section 'a'";
    const std::string in_b = "this assignment replaces it in section 'b'";
    expect_whole_findings({
        {"[a, b]\nrandom_seed = 2\n[a]\nrandom_seed = 3\n", every_section, {}, "it holds in b"},
        {"[a, b]\nrandom_seed = 2\n[a]\nrandom_seed = 3\n", "a", {}, "it holds in b, which is not chosen"},
        {both, every_section,
         {"2:1-12 replaced warning: random_seed (line 2) is replaced by line 4 in section 'a'",
          "  told 4:1-12: " + in_a,
          "  note 6:1-12: " + in_b},
         "both sections are named"},
        {both, "b",
         {"2:1-12 replaced warning: random_seed (line 2) is replaced by line 6 in section 'b'",
          "  note 4:1-12: " + in_a,
          "  told 6:1-12: " + in_b},
         "the chosen one's line is in the message"},
        {both, no_section, {}, "neither is chosen"},
        {"[a, b]\nrandom_seed = 2\nrandom_seed = 3\n", every_section,
         {"2:1-12 replaced warning: random_seed (line 2) is replaced by line 3 in section 'a'",
          "  told 3:1-12: " + in_a,
          "  told 3:1-12: " + in_b},
         "by one line in both"},
        {"[a, default]\nrandom_seed = 2\n[default]\nrandom_seed = 3\n[a]\nrandom_seed = 4\n", every_section,
         {"1:5-12 default-among-names warning: 'default' among several names is an ordinary section, not the unnamed "
          "one"},
         "it holds in the section called default, which is not the unnamed one"},
    });
}

// ---- Out of range ---------------------------------------------------------------------------------------------------

TEST(a_value, out_of_range_is_an_error)
{
    const auto error = [](const std::string &place, const std::string &value, const std::string &rest) {
        return Lines{place + " out-of-range error: value " + value + " is out of range: " + rest};
    };
    expect_findings({
        {"verbosity = 3", every_section, error("1:13-14", "3", "verbosity accepts at most 2"), "above the highest"},
        {"verbosity = 2", every_section, {}, "the highest"},
        {"random_seed = 00", every_section, error("1:15-17", "00", "random_seed accepts any but 0"), "as written"},
        {"random_seed = -1", every_section, {}, "below the one that is not accepted"},
        {"dpll.preprocessor.mode = 3", every_section, error("1:26-27", "3", "dpll.preprocessor.mode accepts 0 to 2"),
         "above two ends"},
        {"dpll.preprocessor.mode = -1", every_section, error("1:26-28", "-1", "dpll.preprocessor.mode accepts 0 to 2"),
         "below two ends"},
        {"preprocessor.ite_minimization_call_limit = -1", every_section,
         error("1:44-46", "-1", "preprocessor.ite_minimization_call_limit accepts at least 0"), "below the lowest"},
        {"dpll.branching_random_frequency = inf", every_section,
         error("1:35-38", "inf", "dpll.branching_random_frequency accepts at most 1"), "a float"},
        {"dpll.branching_random_frequency = 1.0", every_section, {}, "the highest float"},
    });
}

TEST(a_value, out_of_range_is_replaced_by_a_later_one)
{
    const std::string replaced = " out-of-range-replaced warning: value 3 is out of range: verbosity accepts at most "
                                 "2; replaced by ";
    const std::string error = " out-of-range error: value 3 is out of range: verbosity accepts at most 2";
    const std::string of_both = "[a, b]\nverbosity = 3\n[a]\nverbosity = 1\n";
    expect_findings({
        {"verbosity = 3\nverbosity = 1\n", every_section, {"1:13-14" + replaced + "line 2"}, "of its section"},
        {"verbosity = 1\nverbosity = 3\n", no_section,
         {"1:1-10 replaced warning: verbosity (line 1) is replaced by line 2", "2:13-14" + error},
          "not by an earlier one"},
        {"verbosity = 3\n[a]\nverbosity = 1\n", "a", {"1:13-14" + replaced + "line 3"}, "of the chosen section"},
        {"verbosity = 3\n[a]\nverbosity = 1\n", no_section, {"1:13-14" + error}, "not with no section chosen"},
        {"verbosity = 3\n[a]\nverbosity = 1\n", every_section, {"1:13-14" + error}, "nor with each in turn"},
        {"[a]\nverbosity = 1\n[default]\nverbosity = 3\n", "a", {"4:13-14" + replaced + "line 2"},
         "the chosen section comes later, wherever it stands"},
        {"verbosity = 1\n[a]\nverbosity = 3\n", "a", {"3:13-14" + error}, "an error of the chosen section"},
        {"verbosity = 1\n[a]\nverbosity = 3\n[b]\n", "b", {}, "of one that is not chosen"},
        {of_both, every_section, {"2:13-14" + error}, "a line of two sections that is the last one in b"},
        {of_both, "a", {"2:13-14" + replaced + "line 4"}, "the same in a"},
        {of_both, "b", {"2:13-14" + error}, "the same in b"},
        {of_both + "[b]\nverbosity = 2\n", every_section, {"2:13-14" + replaced + "line 6"},
         "a line of two sections that is replaced in both: told once"},
        {"verbosity = 3\nverbosity = 4\nverbosity = 1\n", every_section,
         {"1:13-14" + replaced + "line 3",
          "2:13-14 out-of-range-replaced warning: value 4 is out of range: verbosity accepts at most 2; replaced by "
          "line 3"},
         "both by the last one"},
    });
    EXPECT_EQ(shown_whole(check(run_below({{"verbosity", "1"}}, "verbosity = 3\n"))),
              (Lines{"1:13-14" + replaced + "command line", "  accepts: at most 2",
                     "  told command line:0:1-10: this assignment replaces it"}))
        << "of a command line";
    EXPECT_EQ(shown(check_every_section(run_over("verbosity = 3\n", "\nverbosity = 1\n"))),
              Lines{"other.cfg:1:13-14" + replaced + "t:2"})
        << "of a later text";
    EXPECT_EQ(shown(check(run_below({{"verbosity", "1"}, {"verbosity", "3"}}, "verbosity = 4\n"))),
              (Lines{"1:13-14 out-of-range-replaced warning: value 4 is out of range: verbosity accepts at most 2; "
                     "replaced by command line",
                     "command line:0:11-12" + error}))
        << "the last one of a command line decides";
}

// ---- Forced ---------------------------------------------------------------------------------------------------------

TEST(a_line, is_forced_where_another_option_has_its_way)
{
    const std::string propagation = "preprocessor.toplevel_propagation";
    const std::string forced = " forced warning: " + propagation + " has no effect: ";
    const std::string both = "[a, b]\n" + propagation + " = true\n[b]\ninterpolation = true\n";
    expect_findings({
        {"interpolation = true\n" + propagation + " = true\n", every_section,
         {"2:1-34" + forced + "interpolation (line 1) forces it to false"}, "by an earlier line"},
        {"proof_generation = off\ninterpolation = 1\n", every_section,
         {"1:1-17 forced warning: proof_generation has no effect: interpolation (line 2) forces it to true"},
         "by a later line"},
        {"interpolation = true\n" + propagation + " = false\nproof_generation = yes\n", every_section, {},
         "to what they say anyway"},
        {"interpolation = false\n" + propagation + " = true\n", every_section, {}, "by a value that forces nothing"},
        {"unsat_core_generation = 1\n" + propagation + " = true\nproof_generation = false\n", every_section,
         {"2:1-34" + forced + "unsat_core_generation (line 1) forces it to false",
          "3:1-17 forced warning: proof_generation has no effect: unsat_core_generation (line 1) forces it to true"},
         "by an int"},
        {"theory.arr.enable_nonlinear = 0\ntheory.arr.enable_nonlinear_strat = 1\n", every_section,
         {"1:1-28 forced warning: theory.arr.enable_nonlinear has no effect: theory.arr.enable_nonlinear_strat (line "
          "2) forces it to true"},
         "of a theory"},
        {propagation + " = true\n[a]\ninterpolation = true\n", "a",
         {"1:1-34" + forced + "interpolation (line 3) forces it to false"}, "by a line of the chosen section"},
        {propagation + " = true\n[a]\ninterpolation = true\n", every_section, {},
         "not where every section is looked at: a line of no section has its effect where none is chosen"},
        {"interpolation = true\n[a]\n" + propagation + " = true\n", every_section,
         {"3:1-34" + forced + "interpolation (line 1) forces it to false"}, "by a line of no section"},
        {"interpolation = true\n[a]\n" + propagation + " = true\n[b]\n", "b", {},
         "not of a section that is not chosen"},
        {"[a]\ninterpolation = true\n[b]\n" + propagation + " = true\n", every_section, {}, "not by another section"},
        {both, every_section, {"2:1-34" + forced + "interpolation (line 4) forces it to false"},
         "in one of its sections"},
        {both, "a", {}, "not in this one"},
        {"interpolation = true\n[a, b]\n" + propagation + " = true\n", every_section,
         {"3:1-34" + forced + "interpolation (line 1) forces it to false"}, "in both: told once"},
        {"interpolation = true\n" + propagation + " = false\n" + propagation + " = true\n", every_section,
         {"2:1-34 replaced warning: " + propagation + " (line 2) is replaced by line 3",
          "3:1-34" + forced + "interpolation (line 1) forces it to false"},
         "the line that wins alone"},
        {"interpolation = true\n" + propagation + " = true\n[a]\n" + propagation + " = false\n", "a", {},
         "the one of no section does not win here"},
    });
}

TEST(a_forced_line, has_a_note_for_each_option_that_forces_it)
{
    const std::string text =
        "preprocessor.toplevel_propagation = true\nunsat_core_generation = 1\ninterpolation = true\n";
    expect_whole_findings({
        {text, every_section,
         {"1:1-34 forced warning: preprocessor.toplevel_propagation has no effect: interpolation (line 3) forces it to "
          "false",
          "  told 3:1-14: this assignment forces it", "  note 2:1-22: this assignment forces it"},
         "two force it: the first one that is applied is in the message"},
    });
}

TEST(a_forced_line, names_the_place_of_what_forces_it)
{
    const std::string line = "preprocessor.toplevel_propagation = true\n";
    const std::string forced = "1:1-34 forced warning: preprocessor.toplevel_propagation has no effect: interpolation "
                               "(";
    const Catalogue proving("\ninterpolation = true\n");
    EXPECT_EQ(shown(check_every_section(run_with(line, proving))),
              Lines{forced + "built-in default) forces it to false"});
    EXPECT_EQ(shown(check_every_section(run_over("\n\ninterpolation = true\n", line))),
              Lines{forced + "other.cfg:3) forces it to false"});
    EXPECT_EQ(shown(check(run_below({{"interpolation", "true"}}, line))),
              Lines{forced + "command line) forces it to false"});
    EXPECT_EQ(shown(check(run_below({{"interpolation", "on"}, {"preprocessor.toplevel_propagation", "on"}}, line))),
              Lines{"command line:0:1-34 forced warning: preprocessor.toplevel_propagation has no effect: "
                    "interpolation (command line) forces it to false"})
        << "a line of a command line is forced, too";
}

// ---- Without effect -------------------------------------------------------------------------------------------------

TEST(a_line, has_no_effect_where_another_option_makes_its_own_not_matter)
{
    const std::string factor = "dpll.restart_geometric_factor";
    const std::string none = " no-effect warning: " + factor + " has no effect: ";
    const std::string in_both = "[a, b]\n" + factor + " = 2\n[b]\ndpll.restart_strategy = 0\n";
    expect_findings({
        {factor + " = 2\n", every_section, {"1:1-30" + none + "dpll.restart_strategy (built-in default) is 1"},
         "what decides stands in the built-in text"},
        {factor + " = 1.50\n", every_section, {}, "it says the default: nobody expects an effect"},
        {factor + " = nan\n", every_section, {"1:1-30" + none + "dpll.restart_strategy (built-in default) is 1"},
         "a value that is equal to none, and is not the default"},
        {factor + " = 2\ndpll.restart_strategy = 0\n", every_section, {}, "it matters"},
        {factor + " = 2\ndpll.restart_strategy = 02\n", every_section,
         {"1:1-30" + none + "dpll.restart_strategy (line 2) is 2"},
         "what decides stands in the same text"},
        {factor + " = 2\n[a]\ndpll.restart_strategy = 0\n", "a", {}, "it matters with the section chosen"},
        {factor + " = 2\n[a]\ndpll.restart_strategy = 0\n", no_section,
         {"1:1-30" + none + "dpll.restart_strategy (built-in default) is 1"}, "not with no section"},
        {factor + " = 2\n[a]\ndpll.restart_strategy = 0\n", every_section, {}, "one section is enough"},
        {factor + " = 2\n[a]\ndpll.restart_strategy = 2\n[b]\nverbosity = 1\n", every_section,
         {"1:1-30" + none + "dpll.restart_strategy (built-in default) is 1"}, "it matters in no section"},
        {factor + " = 2\n[a]\ndpll.restart_strategy = 0\n" + factor + " = 3\n", every_section,
         {"1:1-30" + none + "dpll.restart_strategy (built-in default) is 1"},
         "where it would matter, the section has a line of its own"},
        {"preprocessor.toplevel_propagation_limit = 5\ninterpolation = true\n[a]\ninterpolation = false\n",
         every_section, {}, "the section lifts a force"},
        {"theory.arr.max_wr_lemmas = 5\ntheory.arr.enabled = false\ntheory.arr.enable_wr_lemmas = false\n"
         "[a]\ntheory.arr.enabled = true\n[b]\ntheory.arr.enable_wr_lemmas = true\n", every_section,
         {"1:1-25 no-effect warning: theory.arr.max_wr_lemmas has no effect: theory.arr.enabled (line 2) is false, and "
          "theory.arr.enable_wr_lemmas (line 3) is false"}, "no section meets both conditions"},
        {"dpll.restart_strategy = 0\n[a]\n" + factor + " = 2\ndpll.restart_strategy = 3\n", every_section,
         {"3:1-30" + none + "dpll.restart_strategy (line 4) is 3"}, "of a section"},
        {in_both, every_section, {}, "a line of two sections that has its effect in b"},
        {in_both, "a", {"2:1-30" + none + "dpll.restart_strategy (built-in default) is 1"}, "the same with a chosen"},
        {in_both, "b", {}, "and with b"},
        {"[a, b]\n" + factor + " = 2\n", every_section,
         {"2:1-30" + none + "dpll.restart_strategy (built-in default) is 1"}, "in neither: told once"},
        {factor + " = 3\n" + factor + " = 2\ndpll.restart_strategy = 0\n", every_section,
         {"1:1-30 replaced warning: " + factor + " (line 1) is replaced by line 2"}, "a line that does not win"},
        {"debug.api_call_trace_filename = x\n", every_section,
         {"1:1-30 no-effect warning: debug.api_call_trace_filename has no effect: debug.api_call_trace (built-in "
          "default) is 0"},
         "a string"},
        {"debug.api_call_trace_filename =\n", every_section, {}, "a string that says the default"},
        {"preprocessor.toplevel_propagation_limit = 5\ninterpolation = true\n", every_section,
         {"1:1-40 no-effect warning: preprocessor.toplevel_propagation_limit has no effect: "
          "preprocessor.toplevel_propagation is false (forced by interpolation, line 2)"},
         "what decides is forced by a third"},
        {"theory.fp.acdcl_generalization_fair = 1\ntheory.fp.enabled = 0\n", every_section,
         {"1:1-36 no-effect warning: theory.fp.acdcl_generalization_fair has no effect: theory.fp.enabled (line 2) is "
          "false, and theory.fp.mode (built-in default) is 0"},
         "two decide, each by its own row"},
        {"theory.euf.dyn_ack_limit = 5\ntheory.euf.dyn_ack = 1\ntheory.euf.enabled = no\n", every_section,
         {"1:1-25 no-effect warning: theory.euf.dyn_ack_limit has no effect: theory.euf.enabled (line 3) is false",
          "2:1-19 no-effect warning: theory.euf.dyn_ack has no effect: theory.euf.enabled (line 3) is false"},
         "what decides has no effect either"},
    });
}

TEST(a_line_without_effect, names_the_place_of_what_decides_and_has_a_note_on_what_it_should_be)
{
    const std::string line = "dpll.restart_geometric_factor = 2\n";
    const std::string none =
        "1:1-30 no-effect warning: dpll.restart_geometric_factor has no effect: dpll.restart_strategy (";
    const std::string note = ": it matters only when dpll.restart_strategy is 0";
    EXPECT_EQ(shown_whole(check_every_section(run_with("\n\ndpll.restart_strategy = 3\n" + line))),
              (Lines{"4" + none.substr(1) + "line 3) is 3", "  told 3:1-22" + note}));
    EXPECT_EQ(shown_whole(check_every_section(run_over("dpll.restart_strategy = 3\n", line))),
              (Lines{none + "other.cfg:1) is 3", "  told other.cfg:1:1-22" + note}));
    EXPECT_EQ(shown_whole(check(run_below({{"dpll.restart_strategy", "3"}}, line))),
              (Lines{none + "command line) is 3", "  told command line:0:1-22" + note}));
    EXPECT_EQ(shown(check(run_below({{"dpll.restart_geometric_factor", "2"}}, ""))),
              Lines{"command line:0:1-30" + none.substr(6) + "built-in default) is 1"})
        << "a line of a command line has none, too";
}

TEST(a_line_without_effect, may_be_decided_by_a_chain_of_options_and_by_initial_values)
{
    Catalogue catalogue;
    using dalvo::is;
    catalogue.describe("a.on", dalvo::OPT_BOOL, "A:", "", {"false", {}, {}});
    catalogue.describe("b.on", dalvo::OPT_BOOL, "B:", "", {"true", {}, {}, false, {{"a.on", is(true)}}});
    catalogue.describe("c.size", dalvo::OPT_INT, "C:", "", {"1", {}, {}, false, {{"b.on", is(true)}}});
    const std::string none = "1:1-7 no-effect warning: c.size has no effect: ";
    const std::string note_on_a = ": it matters only when a.on is true";
    const struct {
        std::string text;
        Lines findings;
        const char *why;
    } rows[] = {
        {"c.size = 2\n", {none + "a.on (initial value) is false", "  told :0:0-0" + note_on_a},
         "what the decider needs counts; nothing assigns to it"},
        {"c.size = 2\na.on = true\n", {}, "both decide for it"},
        {"c.size = 2\na.on = true\nb.on = false\n",
         {none + "b.on (line 3) is false", "  told 3:1-5: it matters only when b.on is true"}, "the near one alone"},
        {"c.size = 2\nb.on = false\na.on = false\n",
         {none + "b.on (line 2) is false, and a.on (line 3) is false",
          "  told 2:1-5: it matters only when b.on is true",
          "  told 3:1-5" + note_on_a,
          "2:1-5 no-effect warning: b.on has no effect: a.on (line 3) is false", "  told 3:1-5" + note_on_a},
         "both, the near one first"},
        {"c.size = 1\n", {}, "the default that the host has described"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(shown_whole(dalvo::inspect::check_text("t", row.text, catalogue)), row.findings) << row.why;
    }
}

TEST(a_line, that_says_the_default_is_no_slip_though_the_default_is_no_number)
{
    const Catalogue odd("dpll.restart_geometric_factor = nan");
    EXPECT_EQ(shown(check_every_section(run_with("dpll.restart_geometric_factor = NaN\n", odd))), Lines{});
}

TEST(a_line_without_effect, has_words_for_an_option_that_has_no_value)
{
    Catalogue catalogue;
    catalogue.describe("a.on", dalvo::OPT_BOOL, "A:", "");
    catalogue.describe("b.size", dalvo::OPT_INT, "B:", "", {"1", {}, {}, false, {{"a.on", dalvo::is(true)}}});
    const Lines found = shown(dalvo::inspect::check_text("t", "b.size = 2\n", catalogue));
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].rfind("1:1-7 no-effect warning: b.size has no effect: a.on ", 0), 0U) << found[0];
    EXPECT_NE(found[0].back(), ' ') << found[0];
}

// ---- Needs ----------------------------------------------------------------------------------------------------------

const std::string lemmas = "dpll.store_tlemmas";
const std::string unmet = " unmet-need warning: unsat_core_generation = 2 needs that dpll.store_tlemmas is true, but "
                          "dpll.store_tlemmas ";
const std::string unmet_end = " is false: the lemmas that are stored are what it lifts";
const std::string unsound = " unsound warning: theory.la.detect_euf_fragment = true needs that theory.euf.enabled is "
                            "true, but theory.euf.enabled ";
const std::string unsound_end = " is false: answers may be wrong without it";

TEST(a_need, that_is_not_met_is_told_where_it_arises)
{
    const std::string cores = "unsat_core_generation = 2\n";
    expect_findings({
        {cores, every_section, {"1:1-22" + unmet + "(built-in default)" + unmet_end}, "by the built-in text's value"},
        {cores + lemmas + " = true\n", every_section, {}, "it is met"},
        {"unsat_core_generation = 1\n" + lemmas + " = false\n", every_section, {}, "another value needs nothing"},
        {cores + lemmas + " = false\n", every_section, {"1:1-22" + unmet + "(line 2)" + unmet_end},
         "at the line that needs it, not at the other one"},
        {lemmas + " = false\n" + cores, no_section, {"2:1-22" + unmet + "(line 1)" + unmet_end},
         "whichever comes first"},
        {lemmas + " = true\n[a]\n" + cores, every_section, {}, "it is met by a line of no section"},
        {lemmas + " = false\n[a]\n" + cores, "a", {"3:1-22" + unmet + "(line 1)" + unmet_end},
         "at the line of the chosen section that needs it alone"},
        {"[a]\n" + cores + lemmas + " = off\n", every_section, {"2:1-22" + unmet + "(line 3)" + unmet_end},
         "in a section"},
        {"[a]\n" + cores + lemmas + " = off\n[b]\n", "b", {}, "not of a section that is not chosen"},
        {cores + lemmas + " = true\n[a]\n" + lemmas + " = false\n", every_section,
         {"4:1-19" + unmet + "(line 4)" + unmet_end}, "at the line of a section that takes away what is needed"},
        {cores + lemmas + " = true\n[a]\n" + lemmas + " = false\n", "a", {"1:1-22" + unmet + "(line 4)" + unmet_end},
         "at the line that needs it, where the section is chosen"},
        {cores + lemmas + " = true\n[a]\n" + lemmas + " = false\n", no_section, {}, "it is met with no section chosen"},
        {"[a, b]\n" + cores, every_section, {"2:1-22" + unmet + "(built-in default)" + unmet_end},
         "in two sections: once"},
        {"[a, b]\n" + cores + "[b]\n" + lemmas + " = true\n", every_section,
         {"2:1-22" + unmet + "(built-in default)" + unmet_end}, "in one of two sections"},
        {"theory.la.detect_euf_fragment = true\ntheory.euf.enabled = false\n", every_section,
         {"1:1-30" + unsound + "(line 2)" + unsound_end}, "for soundness"},
        {"theory.la.detect_euf_fragment = true\n", every_section, {}, "met by the built-in text"},
        {"theory.euf.enabled = false\n", every_section, {}, "nothing needs it"},
        {"theory.la.detect_euf_fragment = 1\ntheory.euf.enabled = 0\ntheory.la.enabled = 0\n", every_section,
         {"1:1-30 no-effect warning: theory.la.detect_euf_fragment has no effect: theory.la.enabled (line 3) is false"},
         "not where the needing option has no effect"},
        {"theory.la.detect_euf_fragment = 1\n[a]\ntheory.la.enabled = 0\ntheory.euf.enabled = 0\n", every_section, {},
         "nor at the line that takes it away, there"},
    });
    expect_whole_findings({
        {cores + lemmas + " = 0\n", every_section,
         {"1:1-22" + unmet + "(line 2)" + unmet_end, "  told 2:1-19: this one decides"}, "with a note"},
    });
}

TEST(a_need, that_is_told_at_the_other_line_has_a_note_on_the_one_that_needs_it)
{
    expect_whole_findings({
        {"unsat_core_generation = 2\n" + lemmas + " = true\n[a]\n" + lemmas + " = false\n", every_section,
         {"4:1-19" + unmet + "(line 4)" + unmet_end, "  note 1:1-22: this assignment needs it"},
         "a note whose place the message does not name"},
    });
}

TEST(a_need, of_the_built_in_text_is_told_at_the_line_that_takes_away_what_is_needed)
{
    const Catalogue lifting("unsat_core_generation = 2\ndpll.store_tlemmas = true\n");
    const Lines told = {"1:1-19" + unmet + "(line 1)" + unmet_end};
    EXPECT_EQ(shown(check(run_with("dpll.store_tlemmas = false\n", lifting))), told);
    EXPECT_EQ(shown(check_every_section(run_with("dpll.store_tlemmas = false\n", lifting))), told);
}

TEST(a_need, of_an_assignment_of_a_command_line_is_told_once)
{
    const dalvo::inspect::Run run = run_below({{"unsat_core_generation", "2"}, {"dpll.store_tlemmas", "false"}}, "");
    const Lines told = {"command line:0:1-22" + unmet + "(command line)" + unmet_end};
    EXPECT_EQ(shown(check(run)), told);
    EXPECT_EQ(shown(check_every_section(run)), told);
    const dalvo::inspect::Run beside = run_below({{"unsat_core_generation", "2"}}, "dpll.store_tlemmas = false\n");
    const Lines told_beside = {"command line:0:1-22" + unmet + "(t:1)" + unmet_end};
    EXPECT_EQ(shown(check(beside)), told_beside);
    EXPECT_EQ(shown(check_every_section(beside)), told_beside);
}

TEST(a_need, is_told_beside_others_of_the_same_line)
{
    Catalogue catalogue;
    using dalvo::is;
    catalogue.describe("a.on", dalvo::OPT_BOOL, "A:", "", {"false", {}, {}});
    catalogue.describe("b.on", dalvo::OPT_BOOL, "B:", "", {"false", {}, {}});
    catalogue.describe("both", dalvo::OPT_BOOL, "C:", "",
                       {"false", {}, {}, false, {},
                        {{is(true), "a.on", is(true), false, "it asks a"},
                         {is(true), "b.on", is(true), false, "it asks b"}}});
    const auto told = [](const std::string &place) {
        const std::string start = place + " unmet-need warning: both = true needs that ";
        return Lines{start + "a.on is true, but a.on (initial value) is false: it asks a",
                     start + "b.on is true, but b.on (initial value) is false: it asks b"};
    };
    EXPECT_EQ(shown(dalvo::inspect::check_text("t", "both = true\n", catalogue)), told("1:1-5"));
    EXPECT_EQ(shown(dalvo::inspect::check_text("t", "[a, b]\nboth = true\n", catalogue)), told("2:1-5"));
}

// ---- Texts by themselves --------------------------------------------------------------------------------------------

TEST(check_text, puts_the_text_on_top_of_the_default_text_of_its_catalogue)
{
    const std::string text = "dpll.restart_geometric_factor = 2\n";
    const std::string none = "1:1-30 no-effect warning: dpll.restart_geometric_factor has no effect: "
                             "dpll.restart_strategy (built-in default) is ";
    EXPECT_EQ(shown(dalvo::inspect::check_text("t", text)), Lines{none + "1"});
    EXPECT_EQ(shown(dalvo::inspect::check_text("t", text, Catalogue("dpll.restart_strategy = 3"))), Lines{none + "3"});
    EXPECT_EQ(shown(dalvo::inspect::check_text("t", text, Catalogue("dpll.restart_strategy = 0"))), Lines{});
}

// ---- The built-in text ----------------------------------------------------------------------------------------------

TEST(the_built_in_text, is_told_its_errors_alone)
{
    const Catalogue doubtful("verbosity = -1\nverbosity = -1\nprinter.defines_prefix = 'x' # y\n"
                             "unsat_core_generation = 2\npreprocessor.toplevel_propagation = true\n"
                             "dpll.store_tlemmas = false\n[a, a]\n[default, b]\n[fast]\n[fats]\nrandom_seed = 0\n"
                             "random_seed = 2\n");
    EXPECT_EQ(shown(check_every_section(run_with("", doubtful))), Lines{});
    const Catalogue wrong("verbosity = 3\nverbostiy = 1\n[a\n[b]\nverbosity = high\n");
    EXPECT_EQ(shown(check_every_section(run_with("", wrong))),
              (Lines{"built-in default:1:13-14 out-of-range error: value 3 is out of range: verbosity accepts at most "
                     "2",
                     "built-in default:2:1-10 unknown-option error: unknown option verbostiy (did you mean verbosity?)",
                     "built-in default:3:1-3 malformed-header error: malformed header: it does not end with ']'",
                     "built-in default:5:13-17 invalid-value error: invalid value 'high': verbosity is a 32-bit int "
                     "and accepts at most 2"}));
    EXPECT_EQ(shown(check_every_section(run_with("verbosity = 1\n", Catalogue("verbosity = 3\n")))), Lines{})
        << "out of range, and replaced";
}

} // namespace
