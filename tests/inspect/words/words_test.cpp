#include "dalvo/inspect/words/words.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "dalvo/configuration/reader.h"
#include "tests/support/classic_locale.h"

namespace {

using namespace dalvo::inspect;
using dalvo::OptionParser;
using dalvo::testing::ClassicCLocale;

using Float = std::numeric_limits<float>;
using Int = std::numeric_limits<std::int32_t>;
using Words = std::vector<std::string>;

constexpr float inf = Float::infinity();
constexpr float nan = Float::quiet_NaN();

std::uint32_t bits_of(float value)
{
    std::uint32_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

float float_of(std::uint32_t bits)
{
    float value = 0.0F;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

Value text(const std::string &bytes)
{
    return bytes;
}

const std::string odd_bytes("a\0b\n\t\x7f\x80\xff\xc3\xa9 ", 11);

TEST(type_name, is_the_word_that_texts_and_messages_use)
{
    EXPECT_EQ(type_name(dalvo::OPT_BOOL), "bool");
    EXPECT_EQ(type_name(dalvo::OPT_INT), "int");
    EXPECT_EQ(type_name(dalvo::OPT_FLOAT), "float");
    EXPECT_EQ(type_name(dalvo::OPT_STR), "string");
}

// ---- Values ---------------------------------------------------------------------------------------------------------

TEST(value_text, writes_each_value_as_a_configuration_text_does)
{
    const struct {
        Value value;
        std::string expected;
        const char *why;
    } rows[] = {
        {Value(), "", "no value"},
        {true, "true", "a bool"},
        {false, "false", "a bool"},
        {0, "0", "an int"},
        {-1, "-1", "a negative int"},
        {1234567, "1234567", "no grouping of digits"},
        {Int::max(), "2147483647", "the highest int"},
        {Int::min(), "-2147483648", "the lowest int"},
        {0.0F, "0", "no point where none is needed"},
        {-0.0F, "-0", "the zero with a sign"},
        {0.1F, "0.1", "not the digits of the double that is nearest to the float"},
        {-1.5F, "-1.5", "a negative float"},
        {100.0F, "100", "a whole number"},
        {1234.5F, "1234.5", "a point in every locale, and no grouping"},
        {1e10F, "1e+10", "an exponent where it is shorter"},
        {16777217.0F, "16777216", "where floats are two apart"},
        {Float::max(), "3.4028235e+38", "the highest float"},
        {Float::lowest(), "-3.4028235e+38", "the lowest float"},
        {Float::min(), "1.1754944e-38", "the smallest normal float"},
        {Float::denorm_min(), "1e-45", "the smallest float of all"},
        {-Float::denorm_min(), "-1e-45", "the same with a sign"},
        {inf, "inf", "infinite"},
        {-inf, "-inf", "infinite"},
        {nan, "nan", "no number"},
        {-nan, "nan", "a text says NaN without a sign"},
        {Float::signaling_NaN(), "nan", "the other kind of NaN"},
        {text(""), "", "an empty string"},
        {text("true"), "true", "a string that looks like a bool"},
        {text(" \"x\" "), " \"x\" ", "no quotes are put in or taken off"},
        {text(odd_bytes), odd_bytes, "any bytes"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(value_text(row.value), row.expected) << row.why;
    }
}

/// Whether printf writes `value` with `format` and some precision in fewer bytes than `bound`, so that strtof reads the
/// same float.
bool has_shorter_print(float value, const char *format, std::size_t bound)
{
    char print[64];
    for (int precision = 0;; ++precision) {
        const int size = std::snprintf(print, sizeof print, format, precision, static_cast<double>(value));
        if (static_cast<std::size_t>(size) >= bound) {
            return false;
        }
        if (bits_of(std::strtof(print, nullptr)) == bits_of(value)) {
            return true;
        }
    }
}

void expect_shortest_text_that_reads_back(float value)
{
    const std::string written = value_text(value);
    const Value read = OptionParser::parse_value(written, dalvo::OPT_FLOAT, dalvo::BOOL_STYLE_WORDS);
    ASSERT_TRUE(std::holds_alternative<float>(read)) << written << " for the bits " << bits_of(value);
    if (value != value) {
        EXPECT_TRUE(std::get<float>(read) != std::get<float>(read)) << written << " for the bits " << bits_of(value);
        return;
    }
    EXPECT_EQ(bits_of(std::get<float>(read)), bits_of(value)) << written;
    EXPECT_FALSE(has_shorter_print(value, "%.*e", written.size())) << written;
    EXPECT_FALSE(has_shorter_print(value, "%.*f", written.size())) << written;
}

TEST(value_text, of_a_float_reads_back_as_the_same_float_and_no_print_that_does_is_shorter)
{
    const ClassicCLocale classic; // for printf and strtof
    std::mt19937 random(20261121);
    for (std::uint32_t exponent = 0; exponent < 0x200; ++exponent) { // with the sign's bit
        for (const std::uint32_t fraction : {0x0U, 0x1U, 0x2U, 0x400000U, 0x7ffffeU, 0x7fffffU}) {
            expect_shortest_text_that_reads_back(float_of((exponent << 23U) | fraction));
        }
    }
    for (int round = 0; round < 20000; ++round) {
        expect_shortest_text_that_reads_back(float_of(static_cast<std::uint32_t>(random())));
    }
    for (int round = 0; round < 5000; ++round) { // those of few digits, as people write them
        const float whole = static_cast<float>(random() % 100000);
        expect_shortest_text_that_reads_back(whole / 1000.0F);
        expect_shortest_text_that_reads_back(whole * 1000.0F);
    }
}

TEST(value_words, put_strings_into_quotes_on_one_line_and_leave_other_values_as_texts_write_them)
{
    const struct {
        Value value;
        std::string expected;
        const char *why;
    } rows[] = {
        {Value(), "", "no value"},
        {true, "true", "a bool"},
        {-7, "-7", "an int"},
        {-0.0F, "-0", "a float"},
        {text(""), "\"\"", "an empty string can be seen"},
        {text(" a "), "\" a \"", "so can white space at the ends"},
        {text("say \"x\""), "\"say \"x\"\"", "quotes inside stay as they are"},
        {text(odd_bytes), "\"a\\x00b\\n\\t\\x7f\\x80\\xff\xc3\xa9 \"", "control bytes and those that are no UTF-8"},
        {text(std::string(200, 'x')), '"' + std::string(200, 'x') + '"', "nothing is cut off"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(value_words(row.value), row.expected) << row.why;
    }
}

TEST(same_value, tells_types_and_zeros_apart_and_takes_each_nan_for_the_same)
{
    const struct {
        Value a;
        Value b;
        bool expected;
        const char *why;
    } rows[] = {
        {Value(), Value(), true, "no value twice"},
        {Value(), false, false, "no value is not false"},
        {Value(), text(""), false, "no value is not the empty string"},
        {true, true, true, "bools"},
        {true, false, false, "bools"},
        {1, 1, true, "ints"},
        {1, -1, false, "ints"},
        {1, true, false, "an int and a bool"},
        {1, 1.0F, false, "an int and a float"},
        {0, 0.0F, false, "an int and a float"},
        {text("1"), 1, false, "a string and an int"},
        {1.5F, 1.5F, true, "floats"},
        {1.0F, float_of(bits_of(1.0F) + 1), false, "the next float"},
        {0.0F, 0.0F, true, "zeros of one sign"},
        {-0.0F, -0.0F, true, "zeros of one sign"},
        {0.0F, -0.0F, false, "zeros of two signs"},
        {inf, inf, true, "infinities of one sign"},
        {inf, -inf, false, "infinities of two signs"},
        {nan, nan, true, "NaN"},
        {nan, -nan, true, "NaN of two signs"},
        {nan, float_of(0x7fc12345U), true, "NaN with other bits"},
        {nan, inf, false, "NaN and infinity"},
        {nan, 0.0F, false, "NaN and a number"},
        {nan, Value(), false, "NaN and no value"},
        {text(odd_bytes), text(odd_bytes), true, "strings"},
        {text(std::string("a\0b", 3)), text(std::string("a\0c", 3)), false, "strings that differ after a NUL"},
        {text("a"), text("A"), false, "the case of letters"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(same_value(row.a, row.b), row.expected) << row.why;
        EXPECT_EQ(same_value(row.b, row.a), row.expected) << row.why << ", the other way round";
    }
}

TEST(number_of, is_0_or_1_for_a_bool_the_number_itself_for_numbers_and_0_for_the_rest)
{
    const struct {
        Value value;
        double expected;
    } rows[] = {
        {Value(), 0.0},
        {true, 1.0},
        {false, 0.0},
        {-7, -7.0},
        {Int::max(), 2147483647.0},
        {Int::min(), -2147483648.0},
        {0.1F, static_cast<double>(0.1F)},
        {-inf, -std::numeric_limits<double>::infinity()},
        {text("7"), 0.0},
        {text(""), 0.0},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(number_of(row.value), row.expected) << value_words(row.value);
    }
    EXPECT_TRUE(number_of(nan) != number_of(nan)) << "NaN meets what NaN meets";
}

// ---- What texts can say ---------------------------------------------------------------------------------------------

/// Keeps the assignments of a text, and says so where it has anything else.
class Assignments : public dalvo::TextReceiver {
public:
    void header(const dalvo::TextLine &, const std::vector<dalvo::TextPiece> &) override { has_more = true; }
    void assignment(const dalvo::TextLine &, const dalvo::TextAssignment &assignment) override
    {
        list.emplace_back(assignment.name.text, assignment.value.text);
    }
    void malformed(const dalvo::TextLine &, const dalvo::TextPiece &, const std::vector<dalvo::TextPiece> &) override
    {
        has_more = true;
    }

    bool has_more = false;
    std::vector<std::pair<std::string, std::string>> list;
};

/// Whether the reader takes "name = VALUE" for the assignment of just that value, however the text ends.
bool reads_back(const std::string &value)
{
    for (const char *const end : {"", "\n"}) {
        const std::string line = "name = " + value + end;
        Assignments read;
        dalvo::read_text(line, read);
        if (read.has_more || read.list != decltype(read.list){{"name", value}}) {
            return false;
        }
    }
    return true;
}

TEST(why_no_text_says, names_the_first_reason)
{
    const struct {
        std::string value;
        const char *expected;
    } rows[] = {
        {"", ""},
        {"a b", ""},
        {"a\rb", ""},
        {"# no comment", ""},
        {std::string("\0", 1), ""},
        {"\xa0", ""},
        {"a\nb", "it has a line break"},
        {"\n", "it has a line break"},
        {" \n ", "it has a line break"},
        {" a", "it starts with white space"},
        {" a ", "it starts with white space"},
        {" ", "it starts with white space"},
        {"a\t", "it ends with white space"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(why_no_text_says(row.value), row.expected) << ::testing::PrintToString(row.value);
    }
}

TEST(why_no_text_says, has_no_reason_for_just_the_values_that_the_reader_gives_back)
{
    const auto expect_as_the_reader = [](const std::string &value) {
        EXPECT_EQ(why_no_text_says(value).empty(), reads_back(value)) << ::testing::PrintToString(value);
        return reads_back(value) ? 1 : 0;
    };
    for (int code = 0; code < 256; ++code) {
        const std::string byte(1, static_cast<char>(code));
        for (const std::string &value : {byte, byte + "a", "a" + byte, "a" + byte + "a", byte + byte}) {
            expect_as_the_reader(value);
        }
    }
    const std::string bytes("\0 \t\n\v\f\r=#[],\\\"ab\x7f\x80\x85\xa0\xc2\xff", 23);
    std::mt19937 random(20261121);
    int readable = 0;
    for (int round = 0; round < 20000; ++round) {
        std::string value;
        for (auto size = random() % 8; size > 0; --size) {
            value += bytes[random() % bytes.size()];
        }
        readable += expect_as_the_reader(value);
    }
    EXPECT_GT(readable, 5000);
    EXPECT_LT(readable, 15000);
}

// ---- Lists ----------------------------------------------------------------------------------------------------------

TEST(either_of, joins_words_with_commas_and_an_or)
{
    EXPECT_EQ(either_of({}), "");
    EXPECT_EQ(either_of({"A"}), "A");
    EXPECT_EQ(either_of({"A", "B"}), "A or B");
    EXPECT_EQ(either_of({"A", "B", "C"}), "A, B or C");
    EXPECT_EQ(either_of({"A", "B", "C", "D"}), "A, B, C or D");
    EXPECT_EQ(either_of({"", "B"}), " or B") << "an empty word is a word";
}

TEST(did_you_mean, asks_for_the_names_or_says_nothing)
{
    EXPECT_EQ(did_you_mean({}), "");
    EXPECT_EQ(did_you_mean({"a"}), " (did you mean a?)");
    EXPECT_EQ(did_you_mean({"a", "b"}), " (did you mean a or b?)");
    EXPECT_EQ(did_you_mean({"a", "b", "c"}), " (did you mean a, b or c?)");
    EXPECT_EQ(did_you_mean({odd_bytes}), " (did you mean a\\x00b\\n\\t\\x7f\\x80\\xff\xc3\xa9 ?)");
    EXPECT_EQ(did_you_mean({std::string(1000, 'x')}), " (did you mean " + std::string(60, 'x') + "...?)")
        << "a host's name may be of any length";
}

} // namespace
