#include "dalvo/inspect/findings/print.h"

#include <ios>
#include <sstream>
#include <streambuf>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "dalvo/inspect/findings/check.h"

namespace {

using dalvo::inspect::check;
using dalvo::inspect::check_text;
using dalvo::inspect::Excerpt;
using dalvo::inspect::Finding;
using dalvo::inspect::print;
using dalvo::inspect::PrintStyle;
using dalvo::inspect::Rule;
using dalvo::inspect::Severity;

std::string printed(const std::vector<Finding> &findings, const PrintStyle &style = {})
{
    std::ostringstream out;
    print(out, findings, style);
    return out.str();
}

std::string printed(const std::string &text, const PrintStyle &style = {})
{
    return printed(check_text("solver.cfg", text), style);
}

/// The lines that show where an error is, without its first line.
std::string printed_excerpt(Excerpt excerpt, const PrintStyle &style = {})
{
    Finding finding;
    finding.rule = Rule::out_of_range;
    finding.severity = Severity::error;
    finding.place = {"t", 1, 1, 1};
    finding.excerpt = std::move(excerpt);
    const std::string text = printed(std::vector<Finding>{finding}, style);
    return text.substr(text.find('\n') + 1);
}

std::string blanks(std::size_t count)
{
    return std::string(count, ' ');
}

// ---- A finding ------------------------------------------------------------------------------------------------------

TEST(print, writes_an_error_with_its_line_and_a_caret_below_its_place)
{
    EXPECT_EQ(printed("random_seed = 2\n  verbosity = 3\n"),
              "solver.cfg:2:15: error: value 3 is out of range: verbosity accepts at most 2\n"
              "      verbosity = 3\n"
              "                  ^\n");
}

TEST(print, writes_the_rule_behind_a_warning)
{
    EXPECT_EQ(printed("verbosity = 1\nverbosity = 2\n"),
              "solver.cfg:1:1: warning: verbosity (line 1) is replaced by line 2 [replaced]\n"
              "    verbosity = 1\n"
              "    ^\n")
        << "and no note, since the message names its place";
}

TEST(print, writes_a_note_whose_place_the_message_does_not_name)
{
    EXPECT_EQ(printed("verbosity = 1 # high"),
              "solver.cfg:1:13: error: invalid value '1 # high': verbosity is a 32-bit int and accepts at most 2\n"
              "    verbosity = 1 # high\n"
              "                ^\n"
              "solver.cfg:1:15: note: '#' starts no comment here: it is part of the value\n");
    Finding finding = check_text("solver.cfg", "verbosity = 3").front();
    finding.notes = {{"told", {"a.cfg", 1, 2, 3}, true},
                     {"of no place", {}, false},
                     {"of a text", {"b.cfg", 0, 0, 0}}};
    EXPECT_EQ(printed({finding}),
              "solver.cfg:1:13: error: value 3 is out of range: verbosity accepts at most 2\n"
              "    verbosity = 3\n"
              "                ^\n"
              "note: of no place\n"
              "b.cfg: note: of a text\n");
}

TEST(print, writes_no_line_where_there_is_none)
{
    dalvo::inspect::Run run;
    run.choose_section("fast");
    EXPECT_EQ(printed(check(run)), "error: no section 'fast'\n") << "without a source, too";
    run.add_contents("solver.cfg", {"", "No such file or directory"});
    EXPECT_EQ(printed(check(run)), "solver.cfg: error: No such file or directory\n") << "the section may stand there";
}

TEST(print, writes_an_assignment_of_a_command_line_without_a_line_number)
{
    dalvo::inspect::Run run;
    run.assign("verbosity", "3");
    run.assign("printer.defines_prefix", "a\nb # c\r");
    EXPECT_EQ(printed(check(run)), "command line: error: value 3 is out of range: verbosity accepts at most 2\n"
                                   "    verbosity=3\n"
                                   "              ^\n"
                                   "command line: warning: '#' starts no comment here: it is part of the value "
                                   "[comment-in-value]\n"
                                   "    printer.defines_prefix=a\\nb # c\\r\n"
                                   "                                ^\n");
}

TEST(print, writes_findings_one_below_the_other)
{
    EXPECT_EQ(printed("verbosity = 3\n[a\n"),
              "solver.cfg:1:13: error: value 3 is out of range: verbosity accepts at most 2\n"
              "    verbosity = 3\n"
              "                ^\n"
              "solver.cfg:2:1: error: malformed header: it does not end with ']'\n"
              "    [a\n"
              "    ^\n");
    EXPECT_EQ(printed(std::vector<Finding>{}), "") << "none";
    EXPECT_EQ(printed(std::string(1233, '\n') + "[a").substr(0, 18), "solver.cfg:1234:1:") << "whatever the locale";
}

TEST(print, colours_the_place_the_severity_the_notes_and_the_caret)
{
    PrintStyle style;
    style.has_colour = true;
    EXPECT_EQ(printed("verbosity = 1 #", style),
              "\033[1msolver.cfg:1:13:\033[0m \033[1;31merror:\033[0m invalid value '1 #': verbosity is a 32-bit int "
              "and accepts at most 2\n"
              "    verbosity = 1 #\n"
              "                \033[1;32m^\033[0m\n"
              "\033[1msolver.cfg:1:15:\033[0m \033[1;36mnote:\033[0m '#' starts no comment here: it is part of the "
              "value\n");
    EXPECT_EQ(printed("verbosity = -1", style),
              "\033[1msolver.cfg:1:13:\033[0m \033[1;35mwarning:\033[0m -1 makes no sense for verbosity, which starts "
              "at 0 [doubtful-value]\n"
              "    verbosity = -1\n"
              "                \033[1;32m^\033[0m\n");
}

// ---- Bytes ----------------------------------------------------------------------------------------------------------

TEST(print, escapes_what_a_terminal_cannot_show_and_counts_its_columns)
{
    const struct {
        std::string bytes;
        std::size_t place;
        std::string expected;
        const char *why;
    } rows[] = {
        {"a\tb", 2, "    a b\n      ^\n", "a tab is a blank"},
        {"a\x1b[1mb", 5, "    a\\x1b[1mb\n" + blanks(12) + "^\n", "an escape sequence"},
        {std::string("a\0b", 3), 2, "    a\\x00b\n" + blanks(9) + "^\n", "NUL"},
        {"a\rb\x7f", 2, "    a\\rb\\x7f\n" + blanks(7) + "^\n", "a carriage return, and DEL"},
        {"a\nb", 2, "    a\\nb\n" + blanks(7) + "^\n", "a newline"},
        {"a\xff\xc3z", 3, "    a\\xff\\xc3z\n" + blanks(13) + "^\n", "bytes that are no UTF-8"},
        {"a\xc2\x9b" "1m", 3, "    a\\xc2\\x9b1m\n" + blanks(13) + "^\n", "a control byte of UTF-8"},
        {"\xEF\xBB\xBF" "a", 3, "    \\xef\\xbb\\xbfa\n" + blanks(16) + "^\n", "a byte-order mark"},
        {"\xE2\x80\xAE" "a", 0, "    \\xe2\\x80\\xaea\n    ^\n", "what turns the direction of text around"},
        {"\xC3\xA4z", 2, "    \xC3\xA4z\n     ^\n", "a letter of two bytes stays, in one column"},
        {"abc", 3, "    abc\n       ^\n", "a place at the end"},
        {"", 0, "    \n    ^\n", "nothing"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(printed_excerpt({row.bytes, row.place, false, false}), row.expected) << row.why;
    }
}

TEST(print, escapes_names_of_texts_too)
{
    EXPECT_EQ(printed(check_text("a\x1b\n\xff.cfg", "[a")),
              "a\\x1b\\n\\xff.cfg:1:1: error: malformed header: it does not end with ']'\n    [a\n    ^\n");
}

TEST(print, shows_a_line_without_its_end)
{
    EXPECT_EQ(printed("[a\r\n"), printed("[a\n"));
    EXPECT_EQ(printed("[a"), printed("[a\n"));
    EXPECT_EQ(printed("[a\r\r\n"),
              "solver.cfg:1:1: error: malformed header: it does not end with ']'\n    [a\\r\n    ^\n")
        << "one carriage return is of the line's end";
}

TEST(print, counts_columns_by_the_width_function_of_its_style)
{
    PrintStyle style;
    style.width = [](char32_t code) {
        return code == U'\u4e2d' ? 2 : code == U'\u0301' ? 0 : code == U'\u00e4' ? -1 : 1;
    };
    const struct {
        std::string before;
        std::size_t columns;
        const char *why;
    } rows[] = {
        {"\xE4\xB8\xAD", 2, "a wide one"},
        {"e\xCC\x81", 1, "a combining one"},
        {"\xC3\xB6", 1, "another one"},
        {"\xC3\xA4", 0, "one that the function does not know"},
        {"ab", 2, "ASCII"},
        {"\x1b\xff", 8, "escapes"},
    };
    for (const auto &row : rows) {
        const std::string lines = printed_excerpt({row.before + "z", row.before.size(), false, false}, style);
        EXPECT_EQ(lines.substr(lines.find('\n') + 1), blanks(4 + row.columns) + "^\n") << row.why;
    }
    EXPECT_EQ(printed_excerpt({"\xE4\xB8\xAD", 3, false, false}), "    \xE4\xB8\xAD\n     ^\n")
        << "without it, one each";
}

// ---- Long lines -----------------------------------------------------------------------------------------------------

/// `size` bytes in which each place is told from those around it.
std::string ruler(std::size_t size)
{
    std::string bytes;
    for (std::size_t i = 0; i < size; ++i) {
        bytes += static_cast<char>('a' + i % 26);
    }
    return bytes;
}

TEST(print, cuts_long_lines_around_the_place)
{
    const std::string line = ruler(300);
    const auto with_caret = [](const std::string &text, std::size_t column) {
        return "    " + text + "\n" + blanks(4 + column) + "^\n";
    };
    const struct {
        Excerpt excerpt;
        std::string expected;
        const char *why;
    } rows[] = {
        {{ruler(100), 60, false, false}, with_caret(ruler(100), 60), "a hundred columns fit"},
        {{ruler(101), 60, false, false}, with_caret("..." + ruler(101).substr(10), 53), "one more does not: before"},
        {{ruler(101), 50, false, false}, with_caret(ruler(100) + "...", 50), "one more does not: after"},
        {{ruler(100), 100, false, false}, with_caret(ruler(100), 100), "a place at the end of what fits"},
        {{ruler(101), 101, false, false}, with_caret("..." + ruler(101).substr(51), 53),
         "one at the end of what does not"},
        {{line, 0, false, false}, with_caret(line.substr(0, 100) + "...", 0), "after the start"},
        {{line, 10, false, false}, with_caret(line.substr(0, 100) + "...", 10), "near the start"},
        {{line, 200, false, false}, with_caret("..." + line.substr(150, 97) + "...", 53), "on both sides"},
        {{line, 300, false, false}, with_caret("..." + line.substr(250), 53), "before the end"},
        {{"abc", 1, true, false}, with_caret("...abc", 4), "what was cut before already"},
        {{"abc", 1, false, true}, with_caret("abc...", 1), "what was cut after already"},
        {{line, 200, true, true}, with_caret("..." + line.substr(150, 97) + "...", 53), "both"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(printed_excerpt(row.excerpt), row.expected) << row.why;
    }
}

TEST(print, cuts_long_lines_between_code_points_and_escapes)
{
    std::string letters;
    for (int i = 0; i < 200; ++i) {
        letters += "\xC3\xA4";
    }
    const std::string fifty = letters.substr(0, 100);
    EXPECT_EQ(printed_excerpt({letters, 200, false, false}),
              "    ..." + fifty + letters.substr(0, 94) + "...\n" + blanks(57) + "^\n")
        << "a letter of two bytes is one column";
    EXPECT_EQ(printed_excerpt({std::string(200, '\x1b'), 0, false, false}).substr(0, 108),
              "    " + printed_excerpt({std::string(25, '\x1b'), 0, false, false}).substr(4, 100) + "...\n")
        << "an escape is four";
}

// ---- Excerpts of findings -------------------------------------------------------------------------------------------

/// The excerpt of the one finding of `text`.
Excerpt excerpt_of(const std::string &text)
{
    const std::vector<Finding> findings = check_text("t", text);
    EXPECT_EQ(findings.size(), 1U);
    return findings.empty() ? Excerpt() : findings.front().excerpt;
}

/// The excerpt is the part of `line` (with the place at offset `place`) that it says it is.
void expect_part_of(const Excerpt &excerpt, const std::string &line, std::size_t place)
{
    ASSERT_LE(excerpt.place, place);
    const std::size_t begin = place - excerpt.place;
    EXPECT_EQ(excerpt.bytes, line.substr(begin, excerpt.bytes.size()));
    EXPECT_EQ(excerpt.is_cut_before, begin > 0);
    EXPECT_EQ(excerpt.is_cut_after, begin + excerpt.bytes.size() < line.size());
}

TEST(an_excerpt, is_cut_only_where_it_says_so_and_has_no_end_of_a_line)
{
    for (std::size_t size = 1; size <= 1000; ++size) {
        const std::string behind = "[" + ruler(size - 1);
        for (const std::string end : {"", "\n", "\r\n", "\nverbosity = 1\n"}) {
            SCOPED_TRACE(std::to_string(size) + " bytes, " + ::testing::PrintToString(end));
            expect_part_of(excerpt_of(behind + end), behind, 0);
        }
    }
    for (std::size_t size = 1; size <= 1000; ++size) {
        SCOPED_TRACE(std::to_string(size) + " bytes before the place");
        const std::string line = "printer.defines_prefix = " + ruler(size) + " # x";
        expect_part_of(excerpt_of(line), line, line.size() - 3);
    }
}

TEST(an_excerpt, of_a_long_line_has_what_a_terminal_shows_and_no_more_than_some_hundred_bytes)
{
    const std::string ahead = "printer.defines_prefix = " + ruler(5000) + " ";
    const Excerpt excerpt = excerpt_of(ahead + "# " + ruler(5000) + "\n");
    EXPECT_GE(excerpt.place, 100U);
    EXPECT_GE(excerpt.bytes.size() - excerpt.place, 100U);
    EXPECT_LE(excerpt.bytes.size(), 1000U);
    EXPECT_TRUE(excerpt.is_cut_before && excerpt.is_cut_after);
}

TEST(an_excerpt, does_not_start_within_a_letter)
{
    for (std::size_t size = 380; size <= 420; ++size) {
        const Excerpt excerpt = excerpt_of("printer.defines_prefix = x\xF0\x9F\x98\x80" + ruler(size) + " # x");
        const bool starts_within = (static_cast<unsigned char>(excerpt.bytes.front()) & 0xC0U) == 0x80;
        EXPECT_FALSE(starts_within) << size << " bytes behind the letter";
    }
}

TEST(an_excerpt, shows_a_quarter_of_a_line_after_its_place_whatever_stands_there)
{
    const std::string xs(90, 'x');
    const std::string shown = printed_excerpt({xs + std::string(10, '\xFF'), xs.size(), false, false});
    EXPECT_EQ(shown.substr(0, shown.find('\n')), "    " + xs + "\\xff\\xff\\xff\\xff\\xff\\xff\\xff...");
}

// ---- Streams and counts ---------------------------------------------------------------------------------------------

/// Takes no byte.
class FailingBuffer : public std::streambuf {};

TEST(print, leaves_failures_in_the_state_of_the_stream_or_throws_what_its_owner_has_asked_for)
{
    const std::vector<Finding> findings = check_text("t", "[a");
    std::ostringstream failed;
    failed.setstate(std::ios_base::failbit);
    print(failed, findings);
    EXPECT_EQ(failed.str(), "");
    EXPECT_EQ(failed.rdstate(), std::ios_base::failbit);
    FailingBuffer buffer;
    std::ostream asked(&buffer);
    asked.exceptions(std::ios_base::badbit);
    EXPECT_THROW(print(asked, findings), std::ios_base::failure);
}

TEST(counts, says_how_many_errors_and_warnings_there_are)
{
    const struct {
        std::size_t errors, warnings;
        const char *expected;
    } rows[] = {
        {0, 0, ""},          {1, 0, "1 error"},            {2, 0, "2 errors"},           {0, 1, "1 warning"},
        {0, 2, "2 warnings"}, {1, 1, "1 error, 1 warning"}, {11, 1, "11 errors, 1 warning"},
        {1, 1234, "1 error, 1234 warnings"},
    };
    for (const auto &row : rows) {
        std::vector<Finding> findings(row.errors + row.warnings);
        for (std::size_t i = 0; i < findings.size(); ++i) {
            findings[i].severity = i < row.errors ? Severity::error : Severity::warning;
        }
        EXPECT_EQ(counts(findings), row.expected);
        EXPECT_EQ(count(findings, Severity::error), row.errors);
        EXPECT_EQ(count(findings, Severity::warning), row.warnings);
        EXPECT_EQ(has_errors(findings), row.errors != 0);
    }
}

} // namespace
