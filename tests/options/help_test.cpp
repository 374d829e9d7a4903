#include "dalvo/options/optionparser.h"

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using dalvo::BOOL_STYLE_WORDS;
using dalvo::OPT_BOOL;
using dalvo::OPT_FLOAT;
using dalvo::OPT_INT;
using dalvo::OPT_STR;
using dalvo::OptionParser;

std::string help_of(const OptionParser &options)
{
    std::ostringstream out;
    options.print_help(out);
    return out.str();
}

/// The help printed for one option "o" of the group "G" with this help text, without the two lines above it.
std::string printed(const std::string &help)
{
    OptionParser options(BOOL_STYLE_WORDS);
    options.set_cur_help_group("G");
    options.add_option("o", OPT_INT, help);
    const std::string text = help_of(options);
    const std::string head = "G\n  o (int)\n";
    EXPECT_EQ(text.substr(0, head.size()), head);
    return text.substr(std::min(head.size(), text.size()));
}

std::size_t widest_line(const std::string &text)
{
    std::istringstream lines(text);
    std::size_t widest = 0;
    for (std::string line; std::getline(lines, line);) {
        widest = std::max(widest, line.size());
    }
    return widest;
}

TEST(print_help, lists_the_options_by_group)
{
    OptionParser options(BOOL_STYLE_WORDS);
    options.set_cur_help_group("General options:");
    options.add_option("verbosity", OPT_INT, "How much is told while solving: 0 nothing, 1 the result.");
    options.add_option("proof", OPT_BOOL,
                       "Record a proof while solving. The proof can be asked for as soon as a call has found the "
                       "assertions to be unsatisfiable, and is good until the next call.");
    options.set_cur_help_group("An empty group, not listed:");
    options.set_cur_help_group("Search options:");
    options.add_option("search.restarts", OPT_INT,
                       "When to restart.\n"
                       "- 0 never\n"
                       "- 1 after a number of conflicts that grows by the same factor each time, starting at one\n"
                       "Restarts keep what has been learnt.");
    options.add_option("search.decay", OPT_FLOAT, "Factor by which activities fade.");
    options.set_cur_help_group("General options:");
    options.add_option("log_file", OPT_STR, "Where to write the log.");
    EXPECT_EQ(help_of(options),
              "General options:\n"
              "  verbosity (int)\n"
              "      How much is told while solving: 0 nothing, 1 the result.\n"
              "  proof (bool)\n"
              "      Record a proof while solving. The proof can be asked for as soon as a call\n"
              "      has found the assertions to be unsatisfiable, and is good until the next\n"
              "      call.\n"
              "  log_file (string)\n"
              "      Where to write the log.\n"
              "\n"
              "Search options:\n"
              "  search.restarts (int)\n"
              "      When to restart.\n"
              "      - 0 never\n"
              "      - 1 after a number of conflicts that grows by the same factor each time,\n"
              "        starting at one\n"
              "      Restarts keep what has been learnt.\n"
              "  search.decay (float)\n"
              "      Factor by which activities fade.\n");
}

TEST(print_help, pads_nothing)
{
    OptionParser options(BOOL_STYLE_WORDS);
    options.set_cur_help_group("G");
    options.add_option("o", OPT_INT, "h");
    std::ostringstream out;
    out.width(60);
    options.print_help(out);
    EXPECT_EQ(out.str(), help_of(options));
}

TEST(print_help, writes_nothing_for_a_store_without_options)
{
    OptionParser options(BOOL_STYLE_WORDS);
    EXPECT_EQ(help_of(options), "");
    options.set_cur_help_group("A group without options:");
    EXPECT_EQ(help_of(options), "");
}

TEST(print_help, heads_the_options_of_the_group_without_a_name_with_an_empty_line)
{
    OptionParser options(BOOL_STYLE_WORDS);
    options.add_option("a", OPT_BOOL, "A.");
    options.set_cur_help_group("G");
    options.add_option("b", OPT_BOOL, "B.");
    options.set_cur_help_group("");
    options.add_option("c", OPT_BOOL, "C.");
    EXPECT_EQ(help_of(options),
              "\n"
              "  a (bool)\n"
              "      A.\n"
              "  c (bool)\n"
              "      C.\n"
              "\n"
              "G\n"
              "  b (bool)\n"
              "      B.\n");
}

TEST(print_help, keeps_the_order_of_registration_and_not_that_of_names)
{
    OptionParser options(BOOL_STYLE_WORDS);
    options.set_cur_help_group("Z");
    options.add_option("z", OPT_BOOL, "1");
    options.add_option("a", OPT_BOOL, "2");
    options.set_cur_help_group("A");
    options.add_option("m", OPT_BOOL, "3");
    EXPECT_EQ(help_of(options), "Z\n  z (bool)\n      1\n  a (bool)\n      2\n\nA\n  m (bool)\n      3\n");
}

TEST(print_help, breaks_help_at_eighty_columns_with_its_indent_of_six)
{
    const std::string most(74, 'x');
    const struct {
        std::string help, expected;
        const char *why;
    } rows[] = {
        {most, "      " + most + "\n", "a word that just fits"},
        {most.substr(2) + " y", "      " + most.substr(2) + " y\n", "two words that just fit"},
        {most.substr(1) + " y", "      " + most.substr(1) + "\n      y\n", "two words one column too wide"},
        {most.substr(4) + " y z", "      " + most.substr(4) + " y z\n", "three words that just fit"},
        {most.substr(3) + " y z", "      " + most.substr(3) + " y\n      z\n", "the last word breaks off alone"},
        {most + " " + most, "      " + most + "\n      " + most + "\n", "two full lines"},
        {"- " + most.substr(2) + " y", "      - " + most.substr(2) + "\n        y\n", "behind a list mark"},
        {"- a " + most.substr(2) + " y", "      - a\n        " + most.substr(2) + "\n        y\n",
         "each line broken off a list entry is indented"},
        {"- a " + most.substr(2) + "\ny", "      - a\n        " + most.substr(2) + "\n      y\n",
         "the next line of its own is not"},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.why);
        const std::string text = printed(row.help);
        EXPECT_EQ(text, row.expected);
        EXPECT_LE(widest_line(text), 80U);
    }
}

TEST(print_help, keeps_the_line_breaks_and_blanks_of_help)
{
    const struct {
        const char *help, *expected, *why;
    } rows[] = {
        {"a", "      a\n", "one line"},
        {"a\nb", "      a\n      b\n", "two short lines are not joined"},
        {"- a\n- b\n  c", "      - a\n      - b\n        c\n", "a list with an indented line"},
        {"a  b", "      a  b\n", "two blanks between words"},
        {"-a\n-- b", "      -a\n      -- b\n", "no list marks"},
        {"\xc3\xa9\x80\xff", "      \xc3\xa9\x80\xff\n", "bytes above 0x7F"},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.why);
        EXPECT_EQ(printed(row.help), row.expected);
    }
}

TEST(print_help, lists_an_option_with_empty_help_by_name_and_type)
{
    OptionParser options(BOOL_STYLE_WORDS);
    options.set_cur_help_group("G");
    options.add_option("silent", OPT_BOOL, "");
    options.add_option("next", OPT_STR, "N.");
    std::istringstream lines(help_of(options));
    std::vector<std::string> found;
    for (std::string line; std::getline(lines, line);) {
        if (line.find_first_not_of(' ') != std::string::npos) {
            found.push_back(line);
        }
    }
    EXPECT_EQ(found, (std::vector<std::string>{"G", "  silent (bool)", "  next (string)", "      N."}));
}

TEST(print_help, shows_neither_values_nor_levels_and_changes_nothing)
{
    OptionParser options(BOOL_STYLE_WORDS);
    options.set_cur_help_group("G");
    options.add_option("o", OPT_INT, "H.");
    const std::string before = help_of(options);
    options.parse_option("o", "42", 3);
    EXPECT_EQ(help_of(options), before);
    EXPECT_EQ(before, "G\n  o (int)\n      H.\n");
    EXPECT_EQ(options.options().front().level, 3);
    EXPECT_EQ(options.cur_help_group(), "G");
}

TEST(print_help, stays_within_eighty_columns_for_any_help_of_words)
{
    OptionParser options(BOOL_STYLE_WORDS);
    std::size_t word_count = 0;
    for (std::size_t i = 0; i < 300; ++i) {
        std::string help = i % 3 == 0 ? "-" : "";
        for (std::size_t word = 0; word < 40; ++word) {
            help += help.empty() ? "" : word % 11 == 10 ? "\n" : " ";
            help.append(1 + (i * 7 + word * word * 5) % 30, static_cast<char>('a' + word % 26));
            ++word_count;
        }
        options.set_cur_help_group("group " + std::to_string(i % 5));
        options.add_option("option." + std::to_string(i), OPT_STR, help);
    }
    const std::string text = help_of(options);
    EXPECT_LE(widest_line(text), 80U);
    EXPECT_GT(widest_line(text), 70U);
    std::istringstream printed_words(text);
    std::size_t count = 0;
    for (std::string word; printed_words >> word;) {
        ++count;
    }
    // Each word of help, a mark on every third option, name and type of each option, group and number five times.
    EXPECT_EQ(count, word_count + 100 + 2 * 300 + 2 * 5);
}

} // namespace
