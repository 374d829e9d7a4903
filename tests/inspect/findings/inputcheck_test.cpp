// Headers, inputs that cannot be read, and the choice of a section.

#include "dalvo/inspect/findings/check.h"

#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/inspect/findings/text_rows.h"

namespace {

using namespace dalvo::testing;
using dalvo::inspect::check;
using dalvo::inspect::check_every_section;

const std::string no_end = " malformed-header error: malformed header: it does not end with ']'";
const std::string empty_name = " malformed-header error: malformed header: a section name is empty";
const std::string own_line = "  safe fix: put the comment on a line of its own";
const std::string out_of_range = " out-of-range error: value 3 is out of range: verbosity accepts at most 2";
const std::string most = "  accepts: at most 2";

// ---- Headers --------------------------------------------------------------------------------------------------------

TEST(a_header, that_does_not_end_is_told_at_what_is_wrong)
{
    expect_whole_findings({
        {"[", every_section, {"1:1-2" + no_end}, "nothing but the bracket"},
        {"[a", every_section, {"1:1-3" + no_end}, "the whole of it"},
        {" \t[a, b \r\n", every_section, {"1:3-8" + no_end}, "without the white space at its ends"},
        {"[a] x", every_section, {"1:5-6" + no_end}, "what stands behind it"},
        {"[a] = 1", every_section, {"1:5-8" + no_end}, "no assignment"},
        {"[a] # note", every_section, {"1:5-11" + no_end, own_line}, "a comment"},
        {"[a]# note", every_section, {"1:4-10" + no_end, own_line}, "a comment without a blank"},
        {"[a]\t; note", every_section, {"1:5-11" + no_end, own_line}, "a comment of other formats"},
        {"[a] // note\r\n", every_section, {"1:5-12" + no_end, own_line}, "a comment of other languages"},
        {"[a] / note", every_section, {"1:5-11" + no_end}, "no comment"},
        {"[a] # see [b]", every_section, {}, "a header of the odd section 'a] # see [b'"},
        {"# [a\n[]]\n", every_section, {}, "a comment, and a section ']'"},
        {"verbosity = 1\n[a\n[b] x\n", no_section, {"2:1-3" + no_end, "3:5-6" + no_end},
         "each, whichever section is chosen: they keep the text from being loaded"},
        {std::string("[\xff\0", 3), every_section, {"1:1-4" + no_end}, "a byte above 0x7F, and NUL"},
    });
}

TEST(a_header, with_an_empty_name_is_told_as_a_whole)
{
    expect_whole_findings({
        {"[]", every_section, {"1:1-3" + empty_name}, "no name"},
        {" [ \t]\r\n", every_section, {"1:2-6" + empty_name}, "white space"},
        {"[a,,b]", every_section, {"1:1-7" + empty_name}, "between two"},
        {"[a,]", every_section, {"1:1-5" + empty_name}, "behind one"},
        {"[,a]", no_section, {"1:1-5" + empty_name}, "before one"},
        {"[a,,b] # note", every_section, {"1:8-14" + no_end, own_line}, "the comment behind it comes first"},
    });
}

TEST(the_lines, below_a_malformed_header_are_judged_with_the_sections_that_it_names)
{
    expect_whole_findings({
        {"[a] # note\nverbosity = 3\n", "a", {"1:5-11" + no_end, own_line, "2:13-14" + out_of_range, most},
         "the section before a comment"},
        {"[default] # note\nverbosity = 3\n", no_section,
         {"1:11-17" + no_end, own_line, "2:13-14" + out_of_range, most},
         "the unnamed section before a comment"},
        {"[a, b] ; note\nverbosity = 3\n[b]\nverbosity = 1\n", "b",
         {"1:8-14" + no_end, own_line,
          "2:13-14 out-of-range-replaced warning: value 3 is out of range: verbosity accepts at most 2; replaced by "
          "line 4",
          most, "  told 4:1-10: this assignment replaces it"},
         "several"},
        {"[a,,b]\nverbosity = 3\n", "a", {"1:1-7" + empty_name, "2:13-14" + out_of_range, most},
         "those before the empty name"},
        {"[a] x\nverbosity = 3\n[a]\n", "a", {"1:5-6" + no_end}, "none, where anything else stands behind it"},
        {"[a] x\nverbosity = 3\n", every_section, {"1:5-6" + no_end, "2:13-14" + out_of_range, most},
         "then they are looked at as a section of their own"},
        {"[a] x\nverbosity = 3\n[b] x\nverbosity = 1\n", every_section,
         {"1:5-6" + no_end, "2:13-14" + out_of_range, most, "3:5-6" + no_end}, "each header has its own"},
    });
}

TEST(a_header, with_default_among_other_names_does_not_mean_the_unnamed_section)
{
    const std::string among =
        " default-among-names warning: 'default' among several names is an ordinary section, not the unnamed one";
    expect_whole_findings({
        {"[default, a]", every_section, {"1:2-9" + among}, "first"},
        {"[a,  default ]", no_section, {"1:6-13" + among}, "last, with no section chosen"},
        {"[default]\n[ default ]\n", every_section, {}, "alone"},
        {"[a, defaults]", every_section,
         {"1:5-13 similar-section warning: section 'defaults' looks like a slip for 'default'", "  suggests: default"},
         "another name"},
        {"[default, a]\nverbosity = 3\n", "default", {"1:2-9" + among, "2:13-14" + out_of_range, most},
         "it can be chosen"},
        {"[default, a]\nverbosity = 3\n[b]\n", "b", {"1:2-9" + among}, "its lines do not always apply"},
    });
}

TEST(a_header, that_names_a_section_twice_is_told_at_the_later_name)
{
    const std::string twice = " repeated-name warning: section 'a' is named twice in this header";
    const std::string out = "  safe fix: take the second one out";
    expect_whole_findings({
        {"[a, a]", every_section, {"1:5-6" + twice, out}, "side by side"},
        {"[a,b ,\ta ]", every_section, {"1:8-9" + twice, out}, "with another one between them"},
        {"[a, a, a]", every_section, {"1:5-6" + twice, out, "1:8-9" + twice, out}, "each after the first"},
        {"[a]\n[a]\n", every_section, {}, "in two headers"},
        {"[a, A]", every_section, {}, "in another case"},
        {"[a, a]", "a", {"1:5-6" + twice, out}, "the chosen section"},
        {"[a, a, b]", "b", {}, "one that is not chosen"},
        {"[a, a,,b]", every_section, {"1:1-10" + empty_name, "1:5-6" + twice, out}, "in a malformed header"},
        {"[\xff\x1b, \xff\x1b]", every_section,
         {"1:6-8 repeated-name warning: section '\\xff\\x1b' is named twice in this header", out}, "control bytes"},
    });
}

// ---- Inputs ---------------------------------------------------------------------------------------------------------

TEST(an_input, that_cannot_be_read_is_told_in_its_place_among_the_others)
{
    dalvo::inspect::Run run;
    run.add_contents("first.cfg", {"", "No such file or directory"});
    run.add_text("t", "verbosity = 3\n");
    run.add_contents("second.cfg", {"verbosity = 3\n", "is cut short"});
    run.add_contents("third.cfg", {"", "is a folder"});
    run.add_text("last.cfg", "[a\n");
    const Lines expected = {
        "first.cfg:0:0-0 unreadable-file error: No such file or directory",
        "1:13-14" + out_of_range,
        "second.cfg:0:0-0 unreadable-file error: is cut short",
        "third.cfg:0:0-0 unreadable-file error: is a folder",
        "last.cfg:1:1-3" + no_end,
    };
    EXPECT_EQ(shown(check(run)), expected);
    EXPECT_EQ(shown(check_every_section(run)), expected);
}

TEST(a_stream, that_fails_is_an_input_that_cannot_be_read)
{
    std::istringstream in("verbosity = 1\n");
    in.setstate(std::ios_base::badbit);
    dalvo::inspect::Run run;
    run.add_stream("standard input", in);
    EXPECT_EQ(shown(check(run)),
              Lines{"standard input:0:0-0 unreadable-file error: cannot be read to its end"});
}

// ---- The choice of a section ----------------------------------------------------------------------------------------

TEST(a_section, that_no_text_has_is_told_with_those_that_may_be_meant)
{
    const auto none = [](const std::string &name) { return "0:0-0 unknown-section error: no section '" + name + "'"; };
    expect_whole_findings({
        {"[fast]\n[slow]\n", "fats", {none("fats") + " (did you mean fast?)", "  suggests: fast"}, "a slip"},
        {"[fast]\n", "quick", {none("quick")}, "nothing is near"},
        {"[fast]\n", "fast", {}, "a section that there is"},
        {"", no_section, {}, "none"},
        {"[fast]\n", "Fast", {none("Fast") + " (did you mean fast?)", "  suggests: fast"}, "another case"},
        {"[run one]\n[run ones]\n[run on]\n[run onee]\n", "run onne",
         {"0:0-0 unknown-section error: no section 'run onne' (did you mean run one, run onee or run ones?)",
          "  suggests: run one", "  suggests: run onee", "  suggests: run ones"},
         "at most three"},
        {"[fsat]\n[fats]\n[faast]\n[fastt]\n", "fast",
         {none("fast") + " (did you mean fsat, fats or faast?)", "  suggests: fsat", "  suggests: fats",
          "  suggests: faast"},
         "at most three slips, in the order of their headers"},
        {"[fist]\n[fsat]\n", "fast", {none("fast") + " (did you mean fsat or fist?)", "  suggests: fsat",
          "  suggests: fist"},
         "slips before what is only near"},
        {"verbosity = 1\n", "default", {none("default") + "; what stands below [default] always applies"}, "default"},
        {"[default]\nverbosity = 1\n", "default", {none("default") + "; what stands below [default] always applies"},
         "a header [default] makes no section of that name"},
        {"[\n", "a", {none("a"), "1:1-2" + no_end}, "a malformed header makes none"},
        {"[b]\n", "a\x1b\xff", {"0:0-0 unknown-section error: no section 'a\\x1b\\xff'"},
         "control bytes"},
    });
}

TEST(a_section, that_no_text_has_is_told_of_the_users_text_where_there_is_one)
{
    const std::string none = ":0:0-0 unknown-section error: no section 'a'";
    dalvo::inspect::Run run;
    run.choose_section("a");
    EXPECT_EQ(shown(check(run)), Lines{none}) << "no text";
    run.add_default();
    EXPECT_EQ(shown(check(run)), Lines{none}) << "the built-in text alone";
    run.add_text("one.cfg", "verbosity = 1\n");
    EXPECT_EQ(shown(check(run)), Lines{"one.cfg" + none}) << "one text";
    EXPECT_EQ(shown(check_every_section(run)), Lines{}) << "which section is chosen does not matter";
    run.add_text("two.cfg", "[b]\n");
    EXPECT_EQ(shown(check(run)), Lines{none}) << "several texts";
    run.add_text("three.cfg", "[a]\n");
    EXPECT_EQ(shown(check(run)), Lines{}) << "one of several has it";
}

} // namespace
