// What texts look like after their fixes, byte for byte.

#include "dalvo/inspect/findings/check.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "dalvo/inspect/findings/finding.h"

namespace {

using dalvo::inspect::check_text;
using dalvo::inspect::Edit;
using dalvo::inspect::Finding;
using dalvo::inspect::Fix;
using dalvo::inspect::fixed_text;

/// A text, the title of its first fix that is tried, the text after it, and what the row shows.
struct Row {
    std::string text;
    const char *title;
    std::string fixed;
    const char *why;
};

/// The fix of that title; one of no edits where there is none.
Fix fix_titled(const std::string &text, const std::string &title)
{
    for (const Finding &finding : check_text("t", text)) {
        for (const Fix &fix : finding.fixes) {
            if (fix.title == title) {
                return fix;
            }
        }
    }
    ADD_FAILURE() << "no fix of the title: " << title;
    return {};
}

void expect_fixed(const std::vector<Row> &rows)
{
    for (const Row &row : rows) {
        SCOPED_TRACE(::testing::PrintToString(row.text) + ": " + row.why);
        EXPECT_EQ(fixed_text(row.text, fix_titled(row.text, row.title)), row.fixed);
    }
}

const std::string mark = "\xEF\xBB\xBF"; // a byte-order mark

constexpr const char *own_line = "put the comment on a line of its own";
constexpr const char *quotes_off = "take the quotes off";
constexpr const char *for_colon = "write '=' for ':'";
constexpr const char *colon_out = "take the ':' out";
constexpr const char *blank = "write '=' between name and value";
constexpr const char *comment = "make it a comment";
constexpr const char *mark_off = "take the byte-order mark off";
constexpr const char *second_out = "take the second one out";

TEST(a_name, is_written_as_it_is_meant)
{
    expect_fixed({
        {"verbostiy = 1\n", "write 'verbosity'", "verbosity = 1\n", "a slip"},
        {"[a]\r\n\t verbostiy  =1\r\n# x\r\n", "write 'verbosity'", "[a]\r\n\t verbosity  =1\r\n# x\r\n",
         "the rest of the text stays"},
        {"verbostiy", "write 'verbosity'", "verbosity", "without '=', without newline"},
        {"mode = 1", "write 'theory.arr.mode'", "theory.arr.mode = 1", "the second one of three"},
        {mark + "verbostiy = 1", "write 'verbosity'", mark + "verbosity = 1", "behind a byte-order mark"},
    });
}

TEST(an_equals_sign, is_put_where_it_is_missing)
{
    expect_fixed({
        {"verbosity: 1", for_colon, "verbosity = 1", "a blank after the colon"},
        {"verbosity:1\n", for_colon, "verbosity = 1\n", "none"},
        {"verbosity :1", for_colon, "verbosity = 1", "one before it"},
        {"verbosity : 1\r\n", for_colon, "verbosity = 1\r\n", "both, with a carriage return"},
        {"verbosity\t:\t1", for_colon, "verbosity\t=\t1", "tabs stay"},
        {"verbosity:", for_colon, "verbosity =", "no value"},
        {"verbosity: 1 = 2", for_colon, "verbosity = 1 = 2", "a '=' of the value stays"},
        {"verbosity := 1", colon_out, "verbosity = 1", "':='"},
        {"verbosity:=1", colon_out, "verbosity=1", "':=' without blanks"},
        {"verbosity : = 1", colon_out, "verbosity  = 1", "a blank between the two"},
        {"verbosity 1", blank, "verbosity = 1", "a blank"},
        {"  verbosity \t\v 1  \r\n", blank, "  verbosity = 1  \r\n", "white space of several kinds"},
        {"interpolation", "write 'interpolation = true'", "interpolation = true", "a bare name"},
        {" interpolation \r\n", "write 'interpolation = true'", " interpolation = true \r\n",
         "a bare name with white space at its ends"},
        {mark + "interpolation\n", "write 'interpolation = true'", mark + "interpolation = true\n",
         "a bare name behind a byte-order mark"},
    });
}

TEST(a_comment, of_another_format_becomes_one)
{
    expect_fixed({
        {"; note\n", comment, "# note\n", "a semicolon"},
        {" ;note = 1\r\n", comment, " #note = 1\r\n", "a semicolon before an assignment"},
        {"// note", comment, "# note", "two slashes"},
        {"///", comment, "#/", "three"},
        {";;", comment, "#;", "two semicolons"},
        {mark + ";", comment, mark + "#", "behind a byte-order mark"},
    });
}

TEST(a_comment, behind_a_value_gets_a_line_of_its_own_above_it)
{
    const std::string name = "printer.defines_prefix = ";
    expect_fixed({
        {"verbosity = 1 # high\n", own_line, "# high\nverbosity = 1\n", "a number"},
        {"random_seed = 2\n\t verbosity = 1\t# high\n[a]\n", own_line,
         "random_seed = 2\n\t # high\n\t verbosity = 1\n[a]\n", "it is indented as the line"},
        {"verbosity = 1 # high\r\n", own_line, "# high\r\nverbosity = 1\r\n", "and ended as the line"},
        {"verbosity = 1 # high", own_line, "# high\nverbosity = 1", "a last line without newline"},
        {"random_seed = 2\r\nverbosity = 1 # high", own_line, "random_seed = 2\r\n# high\nverbosity = 1",
         "the same in a text of carriage returns"},
        {"verbosity = 1 # high\r", own_line, "# high\nverbosity = 1\r", "a carriage return without newline"},
        {"verbosity = 1 # high  \n", own_line, "# high\nverbosity = 1  \n", "white space behind it stays"},
        {mark + "  verbosity = 1 # high\n", own_line, mark + "  # high\n  verbosity = 1\n",
         "a byte-order mark stays first"},
        {"verbosity = 1 ; high\n", own_line, "# high\nverbosity = 1\n", "a comment of other formats becomes one"},
        {"verbosity = 1//high\n", own_line, "#high\nverbosity = 1\n", "one of other languages, too"},
        {"verbosity = 1;\n", own_line, "#\nverbosity = 1\n", "an empty one"},
        {"verbosity = \"1\" # high\n", own_line, "# high\nverbosity = 1\n", "quotes go, too"},
        {name + "x # note\n", own_line, "# note\n" + name + "x\n", "a string"},
        {name + "# note\n", own_line, "# note\n" + name + "\n", "nothing but a comment"},
        {name + "\"x\" # note\n", own_line, "# note\n" + name + "\"x\"\n", "quotes of a string stay"},
        {"interpolation = treu # x\n", "write 'true'", "# x\ninterpolation = true\n", "with a word that is meant"},
        {std::string("verbosity = 1 # \0\xff\x1b\n", 20), own_line, std::string("# \0\xff\x1b\nverbosity = 1\n", 20),
         "NUL, a byte above 0x7F and a control byte"},
    });
}

TEST(a_comment, behind_a_header_gets_a_line_of_its_own_above_it)
{
    expect_fixed({
        {"[a] # note\nverbosity = 1\n", own_line, "# note\n[a]\nverbosity = 1\n", "a blank between them goes"},
        {"  [a, b]# note", own_line, "  # note\n  [a, b]", "a last line without newline, indented"},
        {"[a]\t ; note \r\n", own_line, "# note\r\n[a] \r\n", "a carriage return"},
        {"[a] //note\n", own_line, "#note\n[a]\n", "of other languages"},
        {mark + "[a] # note\n", own_line, mark + "# note\n[a]\n", "a byte-order mark stays first"},
        {"[a,,b] # note\n", own_line, "# note\n[a,,b]\n", "the header stays malformed"},
        {"[a]] # note\n", own_line, "# note\n[a]]\n", "a bracket in the name"},
        {"[default] # note\n", own_line, "# note\n[default]\n", "of the unnamed section"},
    });
}

TEST(quotes, are_taken_off)
{
    const std::string name = "printer.defines_prefix = ";
    expect_fixed({
        {"verbosity = \"1\"\n", quotes_off, "verbosity = 1\n", "of a number"},
        {"verbosity =' 1\t'\r\n", quotes_off, "verbosity =1\r\n", "with the white space in them"},
        {name + "\"x y\"", quotes_off, name + "x y", "of a string"},
        {name + "''\n", quotes_off, name + "\n", "with nothing in them"},
        {name + "\"\"x\"\"\n", quotes_off, name + "\"x\"\n", "one pair at a time"},
    });
}

TEST(a_word, is_written_as_it_is_meant)
{
    expect_fixed({
        {"interpolation = treu\n", "write 'true'", "interpolation = true\n", "true"},
        {"interpolation =FLASE \r\n", "write 'false'", "interpolation =false \r\n", "false"},
        {"interpolation = \"enabled\"", "write 'true'", "interpolation = true", "in quotes, which go, too"},
    });
}

TEST(a_byte_order_mark, is_taken_off)
{
    expect_fixed({
        {mark + "verbosity = 1\n", mark_off, "verbosity = 1\n", "before an assignment"},
        {mark, mark_off, "", "alone"},
        {mark + mark + "# x", mark_off, mark + "# x", "one at a time"},
        {mark + "\r\n", mark_off, "\r\n", "before an empty line"},
    });
}

TEST(a_repeated_name, is_taken_out_of_its_header)
{
    expect_fixed({
        {"[a, a]\n", second_out, "[a]\n", "side by side"},
        {" [a ,b,\ta ]\r\n", second_out, " [a ,b ]\r\n", "with another one between them"},
        {"[a, a, b]", second_out, "[a, b]", "before another one"},
        {"[a, a, a]", second_out, "[a, a]", "one at a time"},
        {mark + "[a,a]", second_out, mark + "[a]", "behind a byte-order mark"},
        {"[a, a,,b]", second_out, "[a,,b]", "in a malformed header"},
        {"[a, b c, b c]", second_out, "[a, b c]", "a name with a blank"},
    });
}

TEST(default_named_twice, has_no_safe_fix_that_makes_the_section_the_unnamed_one)
{
    const std::string text = "[default, default]\nverbosity = 1\n";
    for (const Finding &finding : check_text("t", text)) {
        for (const Fix &fix : finding.fixes) {
            const bool is_unnamed = fixed_text(text, fix) == "[default]\nverbosity = 1\n";
            EXPECT_FALSE(fix.is_safe && is_unnamed) << fix.title << ": its line always applies then";
        }
    }
}

TEST(fixed_text, makes_each_edit_in_the_bytes_as_they_were)
{
    const std::string text("a\0b\xff", 4);
    const struct {
        std::vector<Edit> edits;
        std::string fixed;
        const char *why;
    } rows[] = {
        {{}, text, "none"},
        {{{0, 0, "x"}}, "x" + text, "put in at the start"},
        {{{4, 4, "x"}}, text + "x", "put in at the end"},
        {{{1, 2, ""}}, "ab\xff", "taken out"},
        {{{0, 4, ""}}, "", "all of it"},
        {{{0, 1, "xyz"}, {1, 1, "-"}, {3, 4, "c"}}, std::string("xyz-\0bc", 7), "several, side by side"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(fixed_text(text, {"", false, row.edits}), row.fixed) << row.why;
    }
    EXPECT_EQ(fixed_text("", {"", false, {{0, 0, "x"}}}), "x") << "an empty text";
}

} // namespace
