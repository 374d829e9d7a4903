#include "dalvo/inspect/knowledge/optioninfo.h"

#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/global_locale.h"

namespace {

using namespace dalvo::inspect;
using dalvo::any_but;
using dalvo::AppliedOption;
using dalvo::at_least;
using dalvo::at_most;
using dalvo::between;
using dalvo::FloatRange;
using dalvo::IntRange;
using dalvo::OPT_BOOL;
using dalvo::OPT_FLOAT;
using dalvo::OPT_INT;
using dalvo::OPT_STR;
using dalvo::OptionType;

using Codes = std::vector<std::pair<std::int32_t, std::string>>;

Codes pairs_of(const std::vector<Code> &codes)
{
    Codes pairs;
    for (const Code &code : codes) {
        pairs.emplace_back(code.value, code.meaning);
    }
    return pairs;
}

OptionInfo option_of(OptionType type, const AppliedOption::Range &range = {})
{
    OptionInfo option;
    option.type = type;
    option.range = range;
    return option;
}

TEST(accepted, says_which_values_an_option_of_each_type_accepts)
{
    constexpr std::int32_t lowest = std::numeric_limits<std::int32_t>::min();
    const struct {
        OptionInfo option;
        std::string expected;
        const char *why;
    } rows[] = {
        {option_of(OPT_BOOL), "true or false", "two values"},
        {option_of(OPT_INT), "any integer", "no range"},
        {option_of(OPT_INT, IntRange{}), "any integer", "a range without ends"},
        {option_of(OPT_INT, at_least(lowest)), "any integer", "an end that is the type's"},
        {option_of(OPT_INT, at_most(3)), "at most 3", "a highest one"},
        {option_of(OPT_INT, at_least(-1)), "at least -1", "a lowest one"},
        {option_of(OPT_INT, between(0, 2)), "0 to 2", "both"},
        {option_of(OPT_INT, any_but(0)), "any but 0", "a hole"},
        {option_of(OPT_INT, at_most(1000000)), "at most 1000000", "no grouping of digits"},
        {option_of(OPT_FLOAT), "any number", "no range"},
        {option_of(OPT_FLOAT, FloatRange{}), "any number", "a range without an end"},
        {option_of(OPT_FLOAT, at_most(1.0F)), "at most 1", "a highest one"},
        {option_of(OPT_FLOAT, at_most(1234.5F)), "at most 1234.5", "a point in every locale"},
        {option_of(OPT_STR), "any text", "no range"},
    };
    const dalvo::testing::CommaLocale comma;
    for (const auto &row : rows) {
        EXPECT_EQ(row.option.accepted(), row.expected) << row.why;
        if (row.option.type != OPT_BOOL) {
            EXPECT_EQ(row.option.accepted_texts(), row.expected) << row.why;
        }
    }
}

TEST(accepted_texts, name_every_word_of_a_bool_and_no_other)
{
    const OptionInfo option = option_of(OPT_BOOL);
    EXPECT_EQ(option.accepted_texts(), "true, yes, on, 1, false, no, off or 0");
    for (const char *const word : {"true", "yes", "on", "1"}) {
        EXPECT_EQ(option.parse(word), Value(true)) << word;
    }
    for (const char *const word : {"false", "no", "off", "0"}) {
        EXPECT_EQ(option.parse(word), Value(false)) << word;
    }
}

TEST(parse, gives_the_value_that_a_text_says_and_none_where_it_is_not_of_the_type)
{
    using Text = std::string;
    const struct {
        OptionType type;
        std::string_view text;
        Value expected;
        const char *why;
    } rows[] = {
        {OPT_BOOL, "TRUE", true, "letters in any case"},
        {OPT_BOOL, "Off", false, "letters in any case"},
        {OPT_BOOL, "", Value(), "a line without a value"},
        {OPT_BOOL, "2", Value(), "no word for a bool"},
        {OPT_BOOL, {"1\0", 2}, Value(), "a NUL is a byte as any"},
        {OPT_INT, "-2147483648", std::numeric_limits<std::int32_t>::min(), "the lowest"},
        {OPT_INT, "-2147483649", Value(), "below the lowest"},
        {OPT_INT, "2147483647", std::numeric_limits<std::int32_t>::max(), "the highest"},
        {OPT_INT, "2147483648", Value(), "above the highest"},
        {OPT_INT, "1.0", Value(), "a float"},
        {OPT_INT, "\xc2\xb2", Value(), "a digit of others"},
        {OPT_FLOAT, "1e-3", 0.001F, "an exponent"},
        {OPT_FLOAT, "-inf", -std::numeric_limits<float>::infinity(), "a word"},
        {OPT_FLOAT, "1,5", Value(), "a comma is no point in any locale"},
        {OPT_FLOAT, "1e39", Value(), "more than a float holds"},
        {OPT_STR, "", Text(), "the empty text"},
        {OPT_STR, {" a\0\xff", 4}, Text(" a\0\xff", 4), "any bytes"},
    };
    for (const auto &row : rows) {
        EXPECT_TRUE(same_value(option_of(row.type).parse(row.text), row.expected)) << row.text << ": " << row.why;
    }
}

TEST(parse, leaves_ranges_to_others)
{
    EXPECT_EQ(option_of(OPT_INT, at_most(3)).parse("4"), Value(4));
}

TEST(codes_of, finds_the_lines_that_say_a_number_and_its_meaning)
{
    const struct {
        std::string help;
        Codes expected;
        const char *why;
    } rows[] = {
        {"", {}, "no help"},
        {"Set the level, between 0 and 2.", {}, "no list"},
        {"One of:\n- 0 : off\n- 1 : on.", {{0, "off"}, {1, "on."}}, "the usual form, to the character"},
        {"- 0: off\n- 1: on", {{0, "off"}, {1, "on"}}, "no blank before the colon"},
        {"- 7 : seven", {{7, "seven"}}, "the first line is a line as any"},
        {"- 7 : seven\n", {{7, "seven"}}, "a line break at the end"},
        {"- 0 : off\n\nmore words\n- 1 : on", {{0, "off"}, {1, "on"}}, "other lines between"},
        {"- 2 : b\n- 1 : a", {{2, "b"}, {1, "a"}}, "in the order of the help"},
        {"- -1 : automatic", {{-1, "automatic"}}, "a negative one"},
        {"- 2147483647 : last", {{2147483647, "last"}}, "the highest int"},
        {"- 2147483648 : beyond", {}, "beyond the highest int"},
        {"- 0 : if a: b", {{0, "if a: b"}}, "a colon in the meaning"},
        {"- 0 :off", {{0, "off"}}, "no blank after the colon"},
        {"- 0 :", {{0, ""}}, "no meaning"},
        {"- 0 :   ", {{0, ""}}, "no meaning"},
        {"- 0 off", {}, "no colon"},
        {"0 : off", {}, "no dash"},
        {"-1 : off", {}, "no blank after the dash"},
        {" - 0 : off", {}, "a blank before the dash"},
        {"--7 : seven", {}, "two dashes"},
        {"* 7 : seven", {}, "another mark"},
        {"- x : off", {}, "no number"},
        {"- : off", {}, "no number"},
        {"- 0 : \xc3\xa9\xff", {{0, "\xc3\xa9\xff"}}, "bytes above 0x7F"},
        {std::string("- 0 : a\0b", 9), {{0, std::string("a\0b", 3)}}, "a NUL"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(pairs_of(codes_of(row.help)), row.expected) << row.why << ": " << ::testing::PrintToString(row.help);
    }
}

TEST(codes_of, finds_none_where_more_than_the_number_stands_before_the_colon)
{
    for (const char *const help : {"- 1.5 : fast", "- 10 entries: a small cache", "- 0x10 : sixteen", "- 2 to 4: some",
                                   "- 3 of them, see: the manual"}) {
        EXPECT_EQ(pairs_of(codes_of(help)), Codes()) << help;
    }
}

} // namespace
