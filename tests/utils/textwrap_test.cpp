#include "dalvo/utils/textwrap.h"

#include <cstddef>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using dalvo::str::wrap;
using Lines = std::vector<std::string>;

struct Row {
    const char *text;
    std::size_t width;
    Lines expected;
    const char *why;
};

void expect_lines(const std::vector<Row> &rows)
{
    for (const Row &row : rows) {
        EXPECT_EQ(wrap(row.text, row.width), row.expected) << row.why;
    }
}

TEST(wrap, breaks_at_blanks)
{
    expect_lines({
        {"", 1, {""}, "an empty text is an empty line"},
        {"ab cd", 5, {"ab cd"}, "fits exactly"},
        {"ab cd", 6, {"ab cd"}, "room is left"},
        {"ab cd", 4, {"ab", "cd"}, "one column short"},
        {"ab cd ef", 5, {"ab cd", "ef"}, "as many words as fit"},
        {"ab cd ef", 7, {"ab cd", "ef"}, "one column short of three"},
        {"a b c", 1, {"a", "b", "c"}, "one column"},
        {"a", 1, {"a"}, "one column, one word"},
        {"a b", 10000, {"a b"}, "a very long line"},
    });
}

TEST(wrap, keeps_line_breaks)
{
    expect_lines({
        {"a\nb", 10, {"a", "b"}, "not joined, though they would fit"},
        {"a\n\nb", 10, {"a", "", "b"}, "an empty line"},
        {"a\n", 10, {"a", ""}, "the empty line behind a line break at the end"},
        {"\na", 10, {"", "a"}, "and before one at the start"},
        {"\n", 10, {"", ""}, "nothing but a line break"},
        {"ab cd\nef gh", 4, {"ab", "cd", "ef", "gh"}, "each line is broken for itself"},
        {"ab cd ef\ng", 5, {"ab cd", "ef", "g"}, "what was broken off is not joined with the next"},
    });
}

TEST(wrap, does_not_cut_long_words)
{
    expect_lines({
        {"abcdef", 3, {"abcdef"}, "alone"},
        {"a bcdef g", 3, {"a", "bcdef", "g"}, "a line of its own"},
        {"abcdef g h", 3, {"abcdef", "g h"}, "at the start"},
        {"ab", 1, {"ab"}, "one column"},
        {"ab c de", 1, {"ab", "c", "de"}, "one column, some words fit"},
    });
}

TEST(wrap, indents_what_is_broken_off_a_list_item)
{
    expect_lines({
        {"- ab cd", 7, {"- ab cd"}, "fits exactly"},
        {"- ab cd", 6, {"- ab", "  cd"}, "one column short"},
        {"- ab cd ef gh", 7, {"- ab cd", "  ef gh"}, "the indent counts as columns"},
        {"- ab cd ef gh", 6, {"- ab", "  cd", "  ef", "  gh"}, "on each line"},
        {"- ab cd\nef gh", 6, {"- ab", "  cd", "ef gh"}, "up to the end of the item's line"},
        {"- ab cd\n- ef gh", 6, {"- ab", "  cd", "- ef", "  gh"}, "item by item"},
        {"-ab cd", 4, {"-ab", "cd"}, "a dash without a blank is no list mark"},
        {"-", 1, {"-"}, "neither is a dash alone"},
        {"a - b", 3, {"a -", "b"}, "nor a dash within a line"},
        {"ab - cd", 4, {"ab -", "cd"}, "nor one before a break"},
        {" - ab cd", 6, {" - ab", "cd"}, "nor one behind a blank"},
        {"ab - cd e", 4, {"ab -", "cd e"}, "a dash stays with the words"},
    });
}

TEST(wrap, drops_blanks_at_a_break_and_keeps_the_others)
{
    expect_lines({
        {"ab   cd", 7, {"ab   cd"}, "kept within a line"},
        {"ab   cd", 6, {"ab", "cd"}, "dropped at a break"},
        {"ab  cd  ef", 6, {"ab  cd", "ef"}, "some kept, some dropped"},
        {"  ab cd", 7, {"  ab cd"}, "kept at the start"},
        {"  ab cd", 4, {"  ab", "cd"}, "kept at the start, where they count as columns"},
        {"ab  ", 4, {"ab  "}, "kept at the end"},
        {"  ", 2, {"  "}, "nothing but blanks"},
        {"ab  \ncd", 4, {"ab  ", "cd"}, "kept before a kept line break"},
        {"-  ab   cd", 6, {"-  ab", "  cd"}, "dropped behind the indent"},
        {"a\tb c", 3, {"a\tb", "c"}, "a tab is no blank"},
    });
}

TEST(wrap, makes_no_line_of_blanks_at_the_end_that_do_not_fit)
{
    expect_lines({
        {"ab  ", 3, {"ab"}, "one column short"},
        {"ab cd ", 5, {"ab cd"}, "behind a full line"},
        {"ab \ncd", 2, {"ab", "cd"}, "before a kept line break"},
        {"- ab ", 4, {"- ab"}, "behind a list item"},
    });
}

TEST(wrap, counts_code_points_as_columns)
{
    expect_lines({
        {"\xc3\xa9\xc3\xa8 ab", 5, {"\xc3\xa9\xc3\xa8 ab"}, "two bytes each"},
        {"\xc3\xa9\xc3\xa8 ab", 4, {"\xc3\xa9\xc3\xa8", "ab"}, "one column short"},
        {"ab \xe2\x89\xa4\xe2\x89\xa4", 5, {"ab \xe2\x89\xa4\xe2\x89\xa4"}, "three bytes each"},
        {"ab \xe2\x89\xa4\xe2\x89\xa4", 4, {"ab", "\xe2\x89\xa4\xe2\x89\xa4"}, "one column short"},
        {"a \xf0\x9d\x94\xb8", 3, {"a \xf0\x9d\x94\xb8"}, "four bytes"},
        {"a \xf0\x9d\x94\xb8", 2, {"a", "\xf0\x9d\x94\xb8"}, "one column short"},
        {"a\xc2\xa0" "b c", 3, {"a\xc2\xa0" "b", "c"}, "a no-break space is no blank"},
    });
}

TEST(wrap, fills_each_line_and_loses_nothing_on_random_texts)
{
    std::mt19937 random(72);
    for (int round = 0; round < 2000; ++round) {
        std::string text;
        for (std::size_t words = 1 + random() % 12; words > 0; --words) {
            text += (text.empty() ? "" : " ") + std::string(1 + random() % 9, static_cast<char>('a' + random() % 26));
        }
        const std::size_t width = 1 + random() % 20;
        const Lines lines = wrap(text, width);
        std::string joined = lines[0];
        for (std::size_t i = 1; i < lines.size(); ++i) {
            const std::string first_word = lines[i].substr(0, lines[i].find(' '));
            EXPECT_GT(lines[i - 1].size() + 1 + first_word.size(), width) << "needless: " << text;
            joined += " " + lines[i];
        }
        EXPECT_EQ(joined, text);
        for (const std::string &line : lines) {
            const bool is_one_word = line.find(' ') == std::string::npos;
            EXPECT_TRUE(line.size() <= width || is_one_word) << line << " in " << width << " columns";
        }
    }
}

} // namespace
