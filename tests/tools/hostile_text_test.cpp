// What dalvo-config writes about texts that are made to harm the terminal of whoever reads it.

#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "tests/tools/shell_session.h"
#include "tools/output/diagnostics.h"
#include "tools/output/table.h"
#include "tools/output/jsontext.h"

namespace {

using namespace std::string_literals;
using dalvo::tests::output_of;
using namespace dalvo::tools;
namespace fs = std::filesystem;

std::string bytes_from_to(int first, int last, const std::string &before)
{
    std::string bytes;
    for (int byte = first; byte <= last; ++byte) {
        bytes += before + static_cast<char>(byte);
    }
    return bytes;
}

/// Formats and the start of colours first, since long pieces are cut; then all that terminals may obey, newlines apart.
const std::string harm =
    "%s%n%d\x1B[31m\x1B]0;t\x07\r\b\x7F\x9B" "2J\xC2\x9B" "2J\xE2\x80\xAE\xFF"s + '\0' +
    bytes_from_to(0x01, 0x09, "") + bytes_from_to(0x0B, 0x1F, "") + bytes_from_to(0x80, 0x9F, "") +
    bytes_from_to(0x80, 0x9F, "\xC2") + "end";

std::string harm_as_argument()
{
    std::string text = harm;
    text.erase(text.find('\0'), 1); // which no argument can hold
    return text;
}

/// A folder for one test, there until it ends.
class hostile_text : public ::testing::Test {
protected:
    const fs::path folder = fs::path(::testing::TempDir()) / ("dalvo_hostile_" + std::to_string(getpid()));

    void SetUp() override { fs::create_directories(folder); }
    void TearDown() override { fs::remove_all(folder); }

    /// What dalvo-config, run in the folder with the text in "t.cfg", nothing in "empty.cfg" and the harm in $A,
    /// writes.
    std::string written(const std::string &text, const std::string &arguments, const std::string &redirection = "2>&1")
    {
        std::ofstream(folder / "t.cfg", std::ios_base::binary) << text;
        std::ofstream(folder / "empty.cfg", std::ios_base::binary) << "";
        std::ofstream(folder / "argument", std::ios_base::binary) << harm_as_argument();
        return output_of("cd '" + folder.string() + "' && A=\"$(cat argument)\" && export COLUMNS=80 && dalvo-config " +
                         arguments + " " + redirection);
    }
};

/// The bytes of `text` that are neither printable ASCII nor a newline, as PrintToString shows them.
std::string raw_bytes_in(const std::string &text)
{
    std::string raw;
    std::copy_if(text.begin(), text.end(), std::back_inserter(raw),
                 [](char c) { return c != '\n' && (c < ' ' || c > '~'); });
    return raw;
}

TEST_F(hostile_text, never_reaches_the_terminal_raw)
{
    const struct {
        std::string text;
        std::string arguments;
        const char *why;
    } rows[] = {
        {harm + "x = 1", "check t.cfg", "the name of an unknown option"},
        {harm + "x = 1", "show t.cfg", "the name of an unknown option"},
        {harm + "x = 1", "diff t.cfg empty.cfg", "the name of an unknown option"},
        {"verbosity = " + harm, "check t.cfg", "a value that is no int"},
        {"verbosity = " + harm, "show t.cfg", "a value that is no int"},
        {"verbosity = " + harm, "explain verbosity t.cfg", "a value that is no int"},
        {"verbosity = " + harm, "diff empty.cfg t.cfg", "a value that is no int"},
        {"[" + harm, "check t.cfg", "a malformed header"},
        {"[" + harm, "show t.cfg", "a malformed header"},
        {"[" + harm, "explain verbosity t.cfg", "a malformed header"},
        {"[" + harm, "diff t.cfg empty.cfg", "a malformed header"},
        {"[" + harm, "sections t.cfg", "a malformed header"},
        {"[" + harm + "]\nverbosity = 1", "sections t.cfg", "a section"},
        {"[" + harm + "]\nverbosity = 1", "explain verbosity t.cfg", "a section that is not chosen"},
        {"[%s%n%d\x1B[31mab]\nx\n[%s%n%d\x1B[31mba]\nx", "check t.cfg", "sections with similar names"},
        {"[" + harm + "," + harm + "]\nx", "check t.cfg", "a section named twice"},
        {"printer.defines_prefix = " + harm, "explain printer.defines_prefix t.cfg", "a text value"},
        {"printer.defines_prefix = " + harm, "diff t.cfg empty.cfg", "a text value"},
        {"printer.defines_prefix = a # " + harm, "check t.cfg", "a comment in a value"},
        {"printer.defines_prefix = " + harm + "\nprinter.defines_prefix = b", "check t.cfg", "a value replaced"},
        {"# " + harm + "\nverbosity = 3", "check t.cfg", "a comment above"},
    };
    for (const auto &row : rows) {
        const std::string shown_text = written(row.text, row.arguments);
        EXPECT_EQ(raw_bytes_in(shown_text), "") << row.arguments << ": " << row.why;
        const bool is_shown = row.text.front() != '#';
        EXPECT_EQ(shown_text.find("%s%n%d\\x1b[31m") != std::string::npos, is_shown) << row.why << ":\n" << shown_text;
    }
}

TEST_F(hostile_text, of_the_command_line_never_reaches_the_terminal_raw)
{
    for (const char *arguments : {
             "check \"$A\"", "check --no-warn \"$A\" t.cfg", "check --format \"$A\" t.cfg", "show \"$A\"",
             "show --section \"$A\"", "show -o \"$A\"", "show -o \"$A=1\"", "show -o \"verbosity=$A\"",
             "show --preset \"$A\"", "show --format \"$A\"", "show \"--$A\"", "explain \"$A\"",
             "explain verbosity -o \"verbosity=$A\"", "diff t.cfg \"$A\"", "diff t.cfg t.cfg --section-a \"$A\"",
             "sections \"$A\"", "options \"$A\"", "presets \"$A\"", "completion \"$A\"", "\"$A\"",
         }) {
        const std::string shown_text = written("verbosity = 1", arguments);
        EXPECT_EQ(raw_bytes_in(shown_text), "") << arguments;
        EXPECT_NE(shown_text.find("%s%n%d\\x1b[31m"), std::string::npos) << arguments << ":\n" << shown_text;
    }
}

TEST_F(hostile_text, in_json_never_reaches_the_terminal_raw)
{
    const std::string text = "[" + harm + "]\nprinter.defines_prefix = " + harm + "\n" + harm + " = 1\n";
    for (const char *arguments : {
             "check t.cfg --format json",
             "sections t.cfg --format json",
             "explain printer.defines_prefix t.cfg --format json",
         }) {
        const std::string shown_text = written(text, arguments, "2>/dev/null");
        const std::string raw = raw_bytes_in(shown_text);
        EXPECT_EQ(raw.find_first_of("\x7F\xC2\xE2"), std::string::npos) << arguments << ":\n" << shown_text;
    }
    const std::string setting = "printer.defines_prefix = " + harm + "\n";
    for (const char *arguments : {"show --changed t.cfg --format json", "diff t.cfg empty.cfg --format json"}) {
        const std::string shown_text = written(setting, arguments, "2>/dev/null");
        EXPECT_NE(shown_text.find("\\u007f"), std::string::npos) << arguments << ":\n" << shown_text;
        EXPECT_EQ(raw_bytes_in(shown_text).find_first_of("\x7F\xC2\xE2"), std::string::npos) << arguments;
    }
}

TEST(json_text, escapes_what_is_not_printable_and_loses_nothing_else)
{
    const struct {
        std::string value;
        std::string expected;
        const char *why;
    } rows[] = {
        {"~\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80", "\"~\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80\"\n", "1 to 4 bytes"},
        {"\x7F", "\"\\u007f\"\n", "delete"},
        {"\x1B\n", "\"\\u001b\\n\"\n", "control bytes"},
        {"\xC2\x80\xC2\x9F", "\"\\u0080\\u009f\"\n", "the other control characters"},
        {"\xE2\x80\xAE\xEF\xBB\xBF", "\"\\u202e\\ufeff\"\n", "what turns or hides text"},
        {"\x9B\xFF", "\"\xEF\xBF\xBD\xEF\xBF\xBD\"\n", "no UTF-8"},
        {"\xED\xA0\x80", "\"\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD\"\n", "a surrogate"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(json_text(row.value), row.expected) << row.why;
    }
    const std::string value = "\x7F\xC2\x80\xE2\x80\xAE\\\"";
    EXPECT_EQ(nlohmann::ordered_json::parse(json_text(value)).get<std::string>(), value);
}

TEST_F(hostile_text, stands_in_a_shown_configuration_as_it_is)
{
    const std::string line = "printer.defines_prefix = " + harm + "\n";
    const std::string shown_text = written(line, "show --changed t.cfg");
    EXPECT_EQ(shown_text, line) << "what is shown is a text to be read again, so nothing in it may change";
    EXPECT_EQ(written(shown_text, "show --changed t.cfg"), line);
}

TEST_F(hostile_text, of_long_lines_is_cut_in_diagnostics)
{
    const std::string longest(1U << 20U, 'x');
    const struct {
        std::string text;
        std::string arguments;
    } rows[] = {
        {longest + " = 1", "check t.cfg"},
        {longest + " = 1", "show t.cfg"},
        {"verbosity = " + longest, "check t.cfg"},
        {"verbosity = " + longest, "show t.cfg"},
        {"[" + longest, "check t.cfg"},
        {"[" + longest, "show t.cfg"},
        {"[" + longest, "sections t.cfg"},
        {"[" + longest, "diff t.cfg empty.cfg"},
        {"[" + longest, "explain verbosity t.cfg"},
        {"[" + longest + "," + longest + "]\nx", "check t.cfg"},
    };
    for (const auto &row : rows) {
        const std::string shown_text = written(row.text, row.arguments);
        std::istringstream lines(shown_text);
        for (std::string line; std::getline(lines, line);) {
            EXPECT_LE(line.size(), 300U) << row.arguments << ": " << row.text.substr(0, 20);
        }
        EXPECT_NE(shown_text.find("xxx..."), std::string::npos) << row.arguments << ": " << row.text.substr(0, 20);
    }
}

TEST_F(hostile_text, of_one_long_value_does_not_fill_every_row_of_a_table_with_blanks)
{
    std::string text;
    for (int i = 0; i < 200; ++i) {
        text += "printer.defines_prefix = a\n";
    }
    text += "printer.defines_prefix = " + std::string(100000, 'x') + "\n";
    const std::string explained = written(text, "explain printer.defines_prefix t.cfg");
    EXPECT_GT(explained.size(), 200000U) << "the row and the setting in force are whole";
    EXPECT_LT(explained.size(), 250000U);
}

TEST(table, aligns_cells_but_those_beyond_100_columns)
{
    const std::string widest(100, 'w');
    const std::string beyond(101, 'b');
    std::ostringstream fits;
    write_table(fits, {{"a", "1"}, {widest, "2"}});
    EXPECT_EQ(fits.str(), "  a" + std::string(101, ' ') + "1\n  " + widest + "  2\n");
    std::ostringstream moved;
    write_table(moved, {{"a", "1"}, {beyond, "2"}, {"abc", "3"}});
    EXPECT_EQ(moved.str(), "  a    1\n  " + beyond + "  2\n  abc  3\n");
}

TEST(failure, is_one_line_whatever_the_texts_hold)
{
    EXPECT_EQ(Failure("a\n\x1B", "\xC2\x9B\xFF").what(), std::string("a\\n\\x1b: \\xc2\\x9b\\xff"));
    EXPECT_EQ(Failure("a", "b").status, status_problem);
}

} // namespace
