// What a line by itself has wrong or doubtful.

#include "dalvo/inspect/findings/check.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/inspect/findings/finding_lines.h"

namespace {

using namespace dalvo::inspect;
using namespace dalvo::testing;

/// A text, its findings with all that they carry, and what the row shows.
struct Row {
    std::string text;
    Lines findings;
    const char *why;
};

const std::string mark = "\xEF\xBB\xBF"; // a byte-order mark

const std::string no_equals = "no '=': the whole line is the name, and the value is empty";
const std::string colon = "an assignment is written with '=', not with ':'";
const std::string quotes = "the quotes are part of the value";
const std::string bools = "true, yes, on, 1, false, no, off or 0";

std::string no_comment(const std::string &start)
{
    return "'" + start + "' starts no comment here: it is part of the value";
}

void expect_findings(const std::vector<Row> &rows)
{
    for (const Row &row : rows) {
        SCOPED_TRACE(::testing::PrintToString(row.text) + ": " + row.why);
        EXPECT_EQ(shown_whole(check_text("t", row.text)), row.findings);
    }
}

// ---- Names ----------------------------------------------------------------------------------------------------------

TEST(a_line, is_told_which_options_its_unknown_name_may_mean)
{
    expect_findings({
        {"verbostiy = 1",
         {"1:1-10 unknown-option error: unknown option verbostiy (did you mean verbosity?)", "  suggests: verbosity",
          "  fix: write 'verbosity'"},
         "a slip"},
        {" \tVerbosity=1",
         {"1:3-12 unknown-option error: unknown option Verbosity (did you mean verbosity?)", "  suggests: verbosity",
          "  fix: write 'verbosity'"},
         "a letter of the other case, behind white space"},
        {"no_such_thing = 1", {"1:1-14 unknown-option error: unknown option no_such_thing"}, "nothing is near"},
        {"seed = 7",
         {"1:1-5 unknown-option error: unknown option seed (did you mean random_seed?)", "  suggests: random_seed",
          "  fix: write 'random_seed'"},
         "an everyday word"},
        {":produce-unsat-cores = 1",
         {"1:1-21 unknown-option error: unknown option :produce-unsat-cores (did you mean unsat_core_generation?)",
          "  suggests: unsat_core_generation", "  fix: write 'unsat_core_generation'"},
         "a word of another format, whose colon is no '='"},
        {"mode = 1",
         {"1:1-5 unknown-option error: unknown option mode (did you mean dpll.preprocessor.mode, theory.arr.mode or "
          "theory.fp.mode?)",
          "  suggests: dpll.preprocessor.mode", "  suggests: theory.arr.mode", "  suggests: theory.fp.mode",
          "  fix: write 'dpll.preprocessor.mode'", "  fix: write 'theory.arr.mode'", "  fix: write 'theory.fp.mode'"},
         "the ends of several names"},
        {"verbostiy",
         {"1:1-10 unknown-option error: unknown option verbostiy (did you mean verbosity?)", "  suggests: verbosity",
          "  note 1:1-10: " + no_equals, "  fix: write 'verbosity'"},
         "without '=', too"},
        {"debug.log_sections = ALL", {"1:1-19 unknown-option error: unknown option debug.log_sections"},
         "a name that the library leaves to hosts"},
        {"= 1", {"1:1-1 unknown-option error: no option name before '='"}, "an empty name"},
        {"  =\n", {"1:3-3 unknown-option error: no option name before '='"}, "nothing but '='"},
        {std::string("a\0\xff\x1b = 1", 8), {R"(1:1-5 unknown-option error: unknown option a\x00\xff\x1b)"},
         "NUL, a byte above 0x7F and a control byte"},
        {std::string(61, 'q') + " = 1",
         {"1:1-62 unknown-option error: unknown option " + std::string(60, 'q') + "..."},
         "a long name, which is cut"},
        {std::string(60, 'q') + " = 1", {"1:1-61 unknown-option error: unknown option " + std::string(60, 'q')},
         "a name that is just not cut"},
    });
}

TEST(a_line, is_told_that_a_colon_is_no_equals_sign)
{
    const std::string start = " unknown-option error: unknown option ";
    const Lines rest = {"  suggests: verbosity", "  note 1:10-11: " + colon, "  safe fix: write '=' for ':'"};
    const auto with = [](const std::string &first, Lines lines) {
        lines.insert(lines.begin(), first);
        return lines;
    };
    expect_findings({
        {"verbosity: 1", with("1:1-13" + start + "verbosity: 1 (did you mean verbosity = 1?)", rest),
         "a blank after it"},
        {"verbosity:1", with("1:1-12" + start + "verbosity:1 (did you mean verbosity = 1?)", rest), "no blank"},
        {"verbosity : 1",
         {"1:1-14" + start + "verbosity : 1 (did you mean verbosity = 1?)", "  suggests: verbosity",
          "  note 1:11-12: " + colon, "  safe fix: write '=' for ':'"},
         "blanks on both sides"},
        {"verbosity :1",
         {"1:1-13" + start + "verbosity :1 (did you mean verbosity = 1?)", "  suggests: verbosity",
          "  note 1:11-12: " + colon, "  safe fix: write '=' for ':'"},
         "a blank before it"},
        {"verbosity: 3",
         {"1:1-13" + start + "verbosity: 3 (did you mean verbosity = 3?)", "  suggests: verbosity",
          "  note 1:10-11: " + colon, "  fix: write '=' for ':'"},
         "a value that is not accepted: the fix is not all that there is to do"},
        {"verbosity:",
         {"1:1-11" + start + "verbosity: (did you mean verbosity = ?)", "  suggests: verbosity",
          "  note 1:10-11: " + colon, "  fix: write '=' for ':'"},
         "no value"},
        {"verbosity: 1 = 2",
         {"1:1-13" + start + "verbosity: 1 (did you mean verbosity = 1 = 2?)", "  suggests: verbosity",
          "  note 1:10-11: " + colon, "  fix: write '=' for ':'"},
         "a '=' further behind, which is of the value"},
        {"verbosity := 1",
         {"1:1-12" + start + "verbosity : (did you mean verbosity = 1?)", "  suggests: verbosity",
          "  note 1:11-12: " + colon, "  safe fix: take the ':' out"},
         "':='"},
        {"verbosity:= 3",
         {"1:1-11" + start + "verbosity: (did you mean verbosity = 3?)", "  suggests: verbosity",
          "  note 1:10-11: " + colon, "  fix: take the ':' out"},
         "':=' and a value that is not accepted"},
        {"vrebsotiy: 1", {"1:1-13" + start + "vrebsotiy: 1", "  note 1:1-13: " + no_equals},
         "no option stands before the colon"},
    });
}

TEST(a_line, that_starts_with_a_colon_may_mean_an_option_without_a_name)
{
    dalvo::inspect::Catalogue catalogue;
    catalogue.describe("", dalvo::OPT_INT, "Host options:", "");
    const std::string text = ": 7                                     \n"; // long enough to stand on the heap
    const std::vector<Finding> found = check_text("t", text, catalogue);
    ASSERT_EQ(shown(found), Lines{"1:1-4 unknown-option error: unknown option : 7 (did you mean  = 7?)"});
    ASSERT_EQ(found[0].fixes.size(), 1U);
    EXPECT_EQ(shown(check_text("t", fixed_text(text, found[0].fixes[0]), catalogue)), Lines{});
}

TEST(a_line, is_told_that_a_blank_is_no_equals_sign)
{
    const Lines rest = {"  suggests: verbosity", "  note 1:1-12: " + no_equals,
                        "  fix: write '=' between name and value"};
    expect_findings({
        {"verbosity 1",
         {"1:1-12 unknown-option error: unknown option verbosity 1 (did you mean verbosity = 1?)", rest[0], rest[1],
          rest[2]},
         "a blank"},
        {"verbosity\t1",
         {"1:1-12 unknown-option error: unknown option verbosity\\t1 (did you mean verbosity = 1?)", rest[0], rest[1],
          rest[2]},
         "a tab"},
        {"verbosity 1 = 2",
         {"1:1-12 unknown-option error: unknown option verbosity 1 (did you mean verbosity?)", "  suggests: verbosity"},
         "a '=' further behind: no blank for '='. To write the name alone would lose the 1"},
        {"verbostiy high",
         {"1:1-15 unknown-option error: unknown option verbostiy high (did you mean verbosity?)",
          "  suggests: verbosity", "  note 1:1-15: " + no_equals},
         "a slip before the blank"},
        {"vrebsotiyy 1", {"1:1-13 unknown-option error: unknown option vrebsotiyy 1", "  note 1:1-13: " + no_equals},
         "no option stands before the blank"},
        {"random seed",
         {"1:1-12 unknown-option error: unknown option random seed (did you mean random_seed?)",
          "  suggests: random_seed", "  note 1:1-12: " + no_equals},
         "the blank stands for '_'"},
        {"debug.apiX_call_trace\t1234567",
         {"1:1-30 unknown-option error: unknown option debug.apiX_call_trace\\t1234567 (did you mean "
          "debug.api_call_trace?)",
          "  suggests: debug.api_call_trace", "  note 1:1-30: " + no_equals},
         "the word ends at the blank alone"},
    });
}

TEST(a_line, is_told_which_comments_there_are)
{
    const std::string semicolon = "';' starts no comment: comments start with '#'";
    const std::string slashes = "'//' starts no comment: comments start with '#'";
    expect_findings({
        {"; note", {"1:1-7 unknown-option error: " + semicolon, "  safe fix: make it a comment"}, "a semicolon"},
        {";verbosity = 1", {"1:1-11 unknown-option error: " + semicolon, "  safe fix: make it a comment"},
         "a semicolon before an assignment"},
        {"  // note", {"1:3-10 unknown-option error: " + slashes, "  safe fix: make it a comment"}, "two slashes"},
        {"/ note", {"1:1-7 unknown-option error: unknown option / note", "  note 1:1-7: " + no_equals}, "one slash"},
        {"# note\n  #; note\n#// note\n", {}, "comments"},
    });
}

// ---- Values that are not of the type --------------------------------------------------------------------------------

TEST(a_value, that_is_empty_is_told_at_the_end_of_its_line)
{
    const std::string is_empty = " invalid-value error: the value is empty: ";
    expect_findings({
        {"verbosity =",
         {"1:12-12" + is_empty + "verbosity is a 32-bit int and accepts at most 2", "  accepts: at most 2"},
         "an int"},
        {"random_seed = \t\r\n",
         {"1:14-14" + is_empty + "random_seed is a 32-bit int and accepts any but 0", "  accepts: any but 0"},
         "white space behind '='"},
        {"dpll.restart_geometric_factor =",
         {"1:32-32" + is_empty + "dpll.restart_geometric_factor is a 32-bit float and accepts any number",
          "  accepts: any number"},
         "a float"},
        {"interpolation =",
         {"1:16-16" + is_empty + "interpolation is a bool and accepts " + bools, "  accepts: " + bools},
         "a bool: which of the two, nobody knows"},
        {"verbosity",
         {"1:10-10" + is_empty + "verbosity is a 32-bit int and accepts at most 2", "  accepts: at most 2",
          "  note 1:1-10: " + no_equals},
         "an int without '='"},
        {"printer.defines_prefix =", {}, "a string may be empty"},
    });
}

TEST(a_value, that_looks_like_one_behind_quotes_and_comments_is_told_so_once)
{
    const std::string invalid = " invalid-value error: invalid value ";
    const std::string is_int = ": verbosity is a 32-bit int and accepts at most 2";
    const std::string most = "  accepts: at most 2";
    const std::string own_line = "  safe fix: put the comment on a line of its own";
    const std::string off = "  safe fix: take the quotes off";
    expect_findings({
        {"verbosity = 1 # high",
         {"1:13-21" + invalid + "'1 # high'" + is_int, most, "  note 1:15-21: " + no_comment("#"), own_line},
         "a comment"},
        {"verbosity = 1#high",
         {"1:13-19" + invalid + "'1#high'" + is_int, most, "  note 1:14-19: " + no_comment("#"), own_line},
         "a comment without white space before it"},
        {"verbosity = 1 ; high",
         {"1:13-21" + invalid + "'1 ; high'" + is_int, most, "  note 1:15-21: " + no_comment(";"), own_line},
         "a comment of other formats"},
        {"verbosity = 1;",
         {"1:13-15" + invalid + "'1;'" + is_int, most, "  note 1:14-15: " + no_comment(";"), own_line},
         "a semicolon at the end"},
        {"verbosity = 1 // high",
         {"1:13-22" + invalid + "'1 // high'" + is_int, most, "  note 1:15-22: " + no_comment("//"), own_line},
         "a comment of other languages"},
        {"verbosity = \"1\"", {"1:13-16" + invalid + "'\"1\"'" + is_int, most, "  note 1:13-16: " + quotes, off},
         "double quotes"},
        {"verbosity = ' 1 '", {"1:13-18" + invalid + "'' 1 ''" + is_int, most, "  note 1:13-18: " + quotes, off},
         "single quotes, and white space in them"},
        {"verbosity = \"1\" # high",
         {"1:13-23" + invalid + "'\"1\" # high'" + is_int, most, "  note 1:13-16: " + quotes,
          "  note 1:17-23: " + no_comment("#"), own_line},
         "both"},
        {"verbosity = \"3\"", {"1:13-16" + invalid + "'\"3\"'" + is_int, most, "  note 1:13-16: " + quotes, off},
         "quotes around a number that is out of range"},
        {"verbosity = # high", {"1:13-19" + invalid + "'# high'" + is_int, most, "  note 1:13-19: " + no_comment("#")},
         "nothing but a comment"},
        {"verbosity = \"high\" # x",
         {"1:13-23" + invalid + "'\"high\" # x'" + is_int, most, "  note 1:13-19: " + quotes,
          "  note 1:20-23: " + no_comment("#")},
         "a word where a number is wanted: without them it is no better"},
        {"verbosity = \"1", {"1:13-15" + invalid + "'\"1'" + is_int, most}, "quotes that do not end"},
        {"verbosity = \"1'", {"1:13-16" + invalid + "'\"1''" + is_int, most}, "quotes that end as others"},
        {"verbosity = \"", {"1:13-14" + invalid + "'\"'" + is_int, most}, "one quote"},
    });
}

TEST(a_value, before_a_comment_is_found_by_the_first_mark_of_a_comment)
{
    expect_findings({
        {"verbosity = 1 ; see # 3",
         {"1:13-24 invalid-value error: invalid value '1 ; see # 3': verbosity is a 32-bit int and accepts at most 2",
          "  accepts: at most 2", "  note 1:15-24: " + no_comment(";"),
          "  safe fix: put the comment on a line of its own"},
         "a '#' in a comment that something else starts"},
    });
}

TEST(a_value, that_is_a_number_is_told_what_keeps_it_from_being_read)
{
    const std::string invalid = " invalid-value error: invalid value ";
    const std::string is_int = ": random_seed is a 32-bit int and accepts any but 0";
    const std::string is_float = ": dpll.restart_geometric_factor is a 32-bit float and accepts any number";
    const std::string any_but = "  accepts: any but 0";
    const std::string any = "  accepts: any number";
    const std::string factor = "dpll.restart_geometric_factor = ";
    expect_findings({
        {"random_seed = 2147483648",
         {"1:15-25 invalid-value error: value 2147483648 is too large for a 32-bit int", any_but}, "one too many"},
        {"random_seed = +2147483648",
         {"1:15-26 invalid-value error: value +2147483648 is too large for a 32-bit int", any_but}, "with a sign"},
        {"random_seed = 2147483647", {}, "the largest"},
        {"random_seed = -2147483649",
         {"1:15-26 invalid-value error: value -2147483649 is too small for a 32-bit int", any_but}, "one too few"},
        {"random_seed = -2147483648", {}, "the smallest"},
        {"random_seed = 2147483648 # x",
         {"1:15-29 invalid-value error: value 2147483648 # x is too large for a 32-bit int", any_but,
          "  note 1:26-29: " + no_comment("#")},
         "before a comment"},
        {"random_seed = 1.5", {"1:15-18" + invalid + "'1.5'" + is_int, any_but}, "a point"},
        {"random_seed = 0x10", {"1:15-19" + invalid + "'0x10'" + is_int, any_but}, "another base"},
        {"random_seed = +-1", {"1:15-18" + invalid + "'+-1'" + is_int, any_but}, "two signs"},
        {"random_seed = nan", {"1:15-18" + invalid + "'nan'" + is_int, any_but}, "no number, where an int is wanted"},
        {factor + "1e39", {"1:33-37 invalid-value error: value 1e39 is too large for a 32-bit float", any}, "a float"},
        {factor + "-.5e400", {"1:33-40 invalid-value error: value -.5e400 is too large for a 32-bit float", any},
         "a float below zero, by its size"},
        {factor + "5.E+400", {"1:33-40 invalid-value error: value 5.E+400 is too large for a 32-bit float", any},
         "a float without digits behind its point"},
        {factor + "1e400x", {"1:33-39" + invalid + "'1e400x'" + is_float, any}, "a letter behind it"},
        {factor + "1e", {"1:33-35" + invalid + "'1e'" + is_float, any}, "no exponent"},
        {factor + ".", {"1:33-34" + invalid + "'.'" + is_float, any}, "no digits"},
        {factor + "1,5", {"1:33-36" + invalid + "'1,5'" + is_float, any}, "a comma"},
    });
}

TEST(a_value, of_a_bool_is_told_which_word_it_may_mean)
{
    const struct {
        const char *value, *meant, *why;
    } rows[] = {
        {"treu", "true", "swapped"},      {"flase", "false", "swapped"},        {"TRU", "true", "a letter missing"},
        {"enabled", "true", "a word"},    {"disabled", "false", "a word"},      {"y", "true", "a letter"},
        {"N", "false", "a letter"},       {"t", "true", "a letter"},            {"f", "false", "a letter"},
        {"offf", "false", "one too many"}, {"yess", "true", "one too many"},
        {"\"on\"", nullptr, "its quotes alone are wrong"},
        {"2", nullptr, "a number"},       {"nope", nullptr, "too far away"},    {"x", nullptr, "another letter"},
        {"trx", nullptr, "two of three letters too far away"},
        {"trueish", nullptr, "three letters too many"},                         {"\xff", nullptr, "a byte above 0x7F"},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(std::string(row.value) + ": " + row.why);
        const std::vector<Finding> found = check_text("t", std::string("interpolation = ") + row.value);
        ASSERT_EQ(found.size(), 1U);
        EXPECT_EQ(found[0].rule, Rule::invalid_value);
        EXPECT_EQ(found[0].suggestions, row.meant != nullptr ? Lines{row.meant} : Lines{});
    }
    expect_findings({
        {"interpolation = treu",
         {"1:17-21 invalid-value error: invalid value 'treu': interpolation is a bool and accepts " + bools +
              " (did you mean true?)",
          "  accepts: " + bools, "  suggests: true", "  fix: write 'true'"},
         "the whole finding"},
        {"interpolation = treu # x",
         {"1:17-25 invalid-value error: invalid value 'treu # x': interpolation is a bool and accepts " + bools +
              " (did you mean true?)",
          "  accepts: " + bools, "  suggests: true", "  note 1:22-25: " + no_comment("#"), "  fix: write 'true'"},
         "with a comment"},
    });
}

// ---- Values that are accepted, and doubtful -------------------------------------------------------------------------

TEST(a_number, that_makes_no_sense_is_doubtful_though_it_is_accepted)
{
    const std::string frequency = "branching_random_frequency";
    const std::string starts = ", which start at 0";
    expect_findings({
        {"dpll.restart_strategy = -1",
         {"1:25-27 negative-code warning: -1 is none of the codes of dpll.restart_strategy" + starts}, "a code"},
        {"theory.fp.dpll.restart_strategy = -1",
         {"1:35-37 negative-code warning: -1 is none of the codes of theory.fp.dpll.restart_strategy" + starts},
         "a code of an inner engine"},
        {"theory.bv.lazydpll.restart_strategy = -007",
         {"1:39-43 negative-code warning: -007 is none of the codes of theory.bv.lazydpll.restart_strategy" + starts},
         "a code of the other one, as written"},
        {"dpll.restart_strategy = 0", {}, "the first code"},
        {"preprocessor.simplification = -1",
         {"1:31-33 negative-code warning: -1 is none of the codes of preprocessor.simplification" + starts}, "flags"},
        {"verbosity = -1",
         {"1:13-15 doubtful-value warning: -1 makes no sense for verbosity, which starts at 0"}, "what is no code"},
        {"verbosity = -0", {}, "no sign of a zero"},
        {"dpll." + frequency + " = nan",
         {"1:35-38 doubtful-value warning: nan makes no sense for dpll." + frequency + ", which starts at 0"},
         "no number"},
        {"theory.fp.dpll." + frequency + " = NaN",
         {"1:45-48 doubtful-value warning: NaN makes no sense for theory.fp.dpll." + frequency + ", which starts at 0"},
         "of an inner engine, as written"},
        {"dpll." + frequency + " = -inf",
         {"1:35-39 doubtful-value warning: -inf makes no sense for dpll." + frequency + ", which starts at 0"},
         "below everything"},
        {"dpll." + frequency + " = -0.5",
         {"1:35-39 doubtful-value warning: -0.5 makes no sense for dpll." + frequency + ", which starts at 0"},
         "below zero"},
        {"dpll." + frequency + " = -0", {}, "not below zero, whatever its sign"},
        {"dpll." + frequency + " = 0", {}, "zero"},
        {"dpll.restart_initial = -1", {}, "an option that is not known to start anywhere"},
    });
}

TEST(a_string, is_doubtful_with_quotes_with_a_comment_and_without_equals_sign)
{
    const std::string name = "printer.defines_prefix";
    const std::string own_line = "  fix: put the comment on a line of its own";
    const std::string off = "  fix: take the quotes off";
    expect_findings({
        {name, {"1:1-23 no-equals warning: " + no_equals}, "a bare name"},
        {name + " = x # note", {"1:28-34 comment-in-value warning: " + no_comment("#"), own_line}, "a comment"},
        {name + " = x\t#", {"1:28-29 comment-in-value warning: " + no_comment("#"), own_line}, "behind a tab"},
        {name + " = x#1 # note", {"1:30-36 comment-in-value warning: " + no_comment("#"), own_line},
         "the first '#' is of a word"},
        {name + " =#x", {"1:25-27 comment-in-value warning: " + no_comment("#"), own_line}, "nothing but a comment"},
        {name + " = x#1", {}, "a '#' in a word"},
        {name + " = x ; y // z", {}, "what starts comments elsewhere"},
        {name + " = \"x y\"", {"1:26-31 quoted-value warning: " + quotes, off}, "double quotes"},
        {name + " = 'x'", {"1:26-29 quoted-value warning: " + quotes, off}, "single quotes"},
        {name + " = \"\"", {"1:26-28 quoted-value warning: " + quotes, off}, "nothing in quotes"},
        {name + " = \"x", {}, "quotes that do not end"},
        {name + " = \"x'", {}, "quotes that end as others"},
        {name + " = \"", {}, "one quote"},
        {name + " = \"x\" # note",
         {"1:26-29 quoted-value warning: " + quotes, "1:30-36 comment-in-value warning: " + no_comment("#"), own_line},
         "quotes and a comment: the comment's fix comes first"},
    });
}

TEST(a_string, in_quotes_with_a_number_sign_between_them_is_quoted_and_holds_no_comment)
{
    expect_findings({
        {"printer.defines_prefix = \"a # b\"",
         {"1:26-33 quoted-value warning: " + quotes, "  fix: take the quotes off"},
         "the quotes are around the '#'"},
    });
}

// ---- One slip, one finding ------------------------------------------------------------------------------------------

TEST(a_slip, is_told_once)
{
    const std::string told = "1:1-4 byte-order-mark error: byte-order mark: it is part of the first line, and makes "
                             "that line wrong";
    const std::string off = "  safe fix: take the byte-order mark off";
    expect_findings({
        {mark + "# note\n", {told, off}, "a byte-order mark before a comment"},
        {mark + "[fast]\nverbosity = 1\n", {told, off}, "before a header"},
        {mark + "verbosity = 1\n", {told, off}, "before an assignment"},
        {mark + "\nverbosity = 1\n", {told, off}, "before an empty line"},
        {mark, {told, off}, "with nothing behind it"},
        {mark + "verbosity = 3\n",
         {told, off, "1:16-17 out-of-range error: value 3 is out of range: verbosity accepts at most 2",
          "  accepts: at most 2"},
         "two slips"},
        {"\n" + mark + "verbosity = 1\n",
         {"2:1-13 unknown-option error: unknown option \\xef\\xbb\\xbfverbosity (did you mean verbosity?)",
          "  suggests: verbosity", "  fix: write 'verbosity'"},
         "a mark that is not the first thing is of a name"},
        {"interpolation",
         {"1:14-14 invalid-value error: the value is empty: interpolation is a bool and accepts " + bools,
          "  accepts: " + bools, "  note 1:1-14: " + no_equals, "  fix: write 'interpolation = true'"},
         "a bare name"},
        {"dpll.restart_strategy = 1   # Luby",
         {"1:25-35 invalid-value error: invalid value '1   # Luby': dpll.restart_strategy is a 32-bit int and accepts "
          "at most 3",
          "  accepts: at most 3", "  note 1:29-35: " + no_comment("#"),
          "  safe fix: put the comment on a line of its own"},
         "a comment behind a value"},
        {"[a, b]\nverbostiy = 1\n",
         {"2:1-10 unknown-option error: unknown option verbostiy (did you mean verbosity?)", "  suggests: verbosity",
          "  fix: write 'verbosity'"},
         "in two sections"},
    });
}

// ---- Beside texts ---------------------------------------------------------------------------------------------------

TEST(an_assignment_of_a_command_line, is_judged_as_a_line_is_and_has_no_fixes)
{
    dalvo::inspect::Run run;
    run.add_default();
    run.assign("verbostiy", "1");
    run.assign("verbosity", "1 # x");
    run.assign("interpolation", "treu");
    run.assign("random_seed", "", "the page");
    run.assign("", "1", "the page");
    run.assign("printer.defines_prefix", "'x'", "the page");
    const Lines expected = {
        "command line:0:1-10 unknown-option error: unknown option verbostiy (did you mean verbosity?)",
        "  suggests: verbosity",
        "command line:0:11-16 invalid-value error: invalid value '1 # x': verbosity is a 32-bit int and accepts at "
        "most 2",
        "  accepts: at most 2",
        "  note command line:0:13-16: " + no_comment("#"),
        "command line:0:15-19 invalid-value error: invalid value 'treu': interpolation is a bool and accepts " + bools +
            " (did you mean true?)",
        "  accepts: " + bools,
        "  suggests: true",
        "the page:0:13-13 invalid-value error: the value is empty: random_seed is a 32-bit int and accepts any but 0",
        "  accepts: any but 0",
        "the page:0:1-1 unknown-option error: no option name before '='",
        "the page:0:24-27 quoted-value warning: " + quotes,
    };
    EXPECT_EQ(shown_whole(check(run)), expected);
}

TEST(a_finding, carries_the_name_as_written_where_it_is_about_an_assignment)
{
    const std::vector<Finding> found = check_text("t", "Verbosity = 1\nverbosity = 3\n[a, a]\n= 1\n");
    ASSERT_EQ(found.size(), 4U);
    EXPECT_EQ(found[0].option, "Verbosity");
    EXPECT_EQ(found[1].option, "verbosity");
    EXPECT_EQ(found[2].option, "") << "about a header";
    EXPECT_EQ(found[3].option, "") << "without a name";
}

} // namespace
