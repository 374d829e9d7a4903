#include "dalvo/options/valuetext.h"

#include <array>
#include <clocale>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <locale>
#include <optional>
#include <random>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/classic_locale.h"

namespace {

using dalvo::BOOL_STYLE_BARE;
using dalvo::BOOL_STYLE_PLAIN;
using dalvo::BOOL_STYLE_WORDS;
using dalvo::OptionBoolStyle;
using dalvo::parse_bool;
using dalvo::parse_float;
using dalvo::parse_int;
using dalvo::testing::ClassicCLocale;

constexpr OptionBoolStyle all_styles[] = {BOOL_STYLE_BARE, BOOL_STYLE_PLAIN, BOOL_STYLE_WORDS};

/// All texts that read `word` but for the case of its letters.
std::vector<std::string> in_every_case(const std::string &word)
{
    std::vector<std::string> texts = {""};
    for (const char c : word) {
        std::vector<std::string> longer;
        for (const std::string &text : texts) {
            longer.push_back(text + c);
            if (c >= 'a' && c <= 'z') {
                longer.push_back(text + static_cast<char>(c - 'a' + 'A'));
            }
        }
        texts = longer;
    }
    return texts;
}

std::uint32_t bits_of(float value)
{
    std::uint32_t bits = 0;
    static_assert(sizeof bits == sizeof value);
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

float float_of(std::uint32_t bits)
{
    float value = 0.0F;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

/// Whether `text` is read as `expected`, or as no float; equal means bit by bit.
::testing::AssertionResult reads_as(std::string_view text, std::optional<float> expected)
{
    const std::optional<float> read = parse_float(text);
    if (read.has_value() == expected.has_value() && (!read || bits_of(*read) == bits_of(*expected))) {
        return ::testing::AssertionSuccess();
    }
    const auto show = [](std::optional<float> value) {
        std::array<char, 64> shown{};
        std::snprintf(shown.data(), shown.size(), "%a", static_cast<double>(value.value_or(0.0F)));
        return value ? std::string(shown.data()) : std::string("none");
    };
    return ::testing::AssertionFailure() << "'" << std::string(text.substr(0, 400)) << "' is read as " << show(read)
                                         << " and not as " << show(expected);
}

std::string zeros(std::size_t count)
{
    return std::string(count, '0');
}

// Booleans.

TEST(parse_bool, reads_the_words_of_its_style_in_any_case)
{
    const struct {
        const char *word;
        bool value;
        bool plain; ///< a word of the plain style too
    } rows[] = {
        {"true", true, true},    {"yes", true, false}, {"on", true, false},   {"1", true, false},
        {"false", false, true},  {"no", false, false}, {"off", false, false}, {"0", false, false},
    };
    for (const auto &row : rows) {
        for (const std::string &text : in_every_case(row.word)) {
            SCOPED_TRACE(text);
            EXPECT_EQ(parse_bool(text, BOOL_STYLE_BARE), std::optional<bool>(row.value));
            EXPECT_EQ(parse_bool(text, BOOL_STYLE_WORDS), std::optional<bool>(row.value));
            EXPECT_EQ(parse_bool(text, BOOL_STYLE_PLAIN),
                      row.plain ? std::optional<bool>(row.value) : std::optional<bool>());
        }
    }
}

TEST(parse_bool, takes_the_empty_text_for_true_in_the_bare_style_alone)
{
    EXPECT_EQ(parse_bool("", BOOL_STYLE_BARE), std::optional<bool>(true));
    EXPECT_EQ(parse_bool(std::string_view(), BOOL_STYLE_BARE), std::optional<bool>(true));
    EXPECT_EQ(parse_bool("", BOOL_STYLE_PLAIN), std::nullopt);
    EXPECT_EQ(parse_bool("", BOOL_STYLE_WORDS), std::nullopt);
    EXPECT_EQ(parse_bool(std::string_view(), BOOL_STYLE_WORDS), std::nullopt);
}

TEST(parse_bool, rejects_near_misses_in_every_style)
{
    const struct {
        std::string_view text;
        const char *why;
    } rows[] = {
        {"tru", "a letter short"},
        {"truee", "a letter more"},
        {"t", "no abbreviations"},
        {"y", "no abbreviations"},
        {"n", "no abbreviations"},
        {"f", "no abbreviations"},
        {"o", "the start of two words"},
        {"of", "a letter short"},
        {"offf", "a letter more"},
        {"onn", "a letter more"},
        {"ye", "a letter short"},
        {"yess", "a letter more"},
        {"fals", "a letter short"},
        {"noo", "a letter more"},
        {"true ", "a blank behind"},
        {" true", "a blank before"},
        {"\ttrue", "a tab before"},
        {"true\n", "a line end behind"},
        {"true\r", "a carriage return behind"},
        {" ", "a blank alone"},
        {"\n", "a line end alone"},
        {"2", "another number"},
        {"-1", "a number with a sign"},
        {"+1", "a number with a sign"},
        {"-0", "a number with a sign"},
        {"00", "a number of two digits"},
        {"01", "a number of two digits"},
        {"10", "a number of two digits"},
        {"1.0", "a float"},
        {"truefalse", "two words"},
        {"yes no", "two words"},
        {"\"true\"", "quotes"},
        {"enable", "another word"},
        {"enabled", "another word"},
        {std::string_view("\0", 1), "NUL alone"},
        {std::string_view("true\0", 5), "NUL behind"},
        {std::string_view("\0true", 5), "NUL before"},
        {std::string_view("on\0", 3), "NUL behind"},
        {std::string_view("1\0", 2), "NUL behind"},
        {"\xf4rue", "a letter with its top bit set"},
        {"tru\xe5", "a letter with its top bit set"},
        {"\xb1", "a digit with its top bit set"},
        {"\x11", "a digit but for the bit that tells cases apart"},
        {"\x10", "a digit but for the bit that tells cases apart"},
        {"\xef\xbc\x91", "the full-width digit one"},
        {"\xd0\xbe\x6e", "a Cyrillic o"},
    };
    for (const auto &row : rows) {
        for (const OptionBoolStyle style : all_styles) {
            EXPECT_EQ(parse_bool(row.text, style), std::nullopt) << row.why << ", style " << style;
        }
    }
}

TEST(parse_bool, knows_no_other_texts_of_one_or_two_bytes)
{
    int found = 0;
    for (int first = 0; first < 256; ++first) {
        const char one[] = {static_cast<char>(first)};
        found += parse_bool({one, 1}, BOOL_STYLE_WORDS).has_value() ? 1 : 0;
        EXPECT_EQ(parse_bool({one, 1}, BOOL_STYLE_PLAIN), std::nullopt) << first;
        for (int second = 0; second < 256; ++second) {
            const char two[] = {static_cast<char>(first), static_cast<char>(second)};
            found += parse_bool({two, 2}, BOOL_STYLE_WORDS).has_value() ? 1 : 0;
        }
    }
    EXPECT_EQ(found, 2 + 4 + 4); // 1 and 0; "on" and "no" in four cases each
}

TEST(parse_bool, rejects_a_text_of_a_megabyte)
{
    EXPECT_EQ(parse_bool("true" + std::string(1U << 20U, 'e'), BOOL_STYLE_WORDS), std::nullopt);
    EXPECT_EQ(parse_bool(zeros(1U << 20U), BOOL_STYLE_BARE), std::nullopt);
}

// Integers.

TEST(parse_int, reads_decimals_within_32_bits)
{
    constexpr std::int32_t least = std::numeric_limits<std::int32_t>::min();
    constexpr std::int32_t most = std::numeric_limits<std::int32_t>::max();
    const struct {
        std::string text;
        std::int32_t expected;
        const char *why;
    } rows[] = {
        {"0", 0, "one digit"},
        {"9", 9, "one digit"},
        {"1234567890", 1234567890, "every digit"},
        {"+5", 5, "plus"},
        {"-5", -5, "minus"},
        {"+0", 0, "zero with plus"},
        {"-0", 0, "zero with minus"},
        {"007", 7, "leading zeros"},
        {"-007", -7, "leading zeros behind minus"},
        {"+007", 7, "leading zeros behind plus"},
        {"010", 10, "leading zeros do not mean octal"},
        {"2147483647", most, "the largest"},
        {"+2147483647", most, "the largest with plus"},
        {"2147483646", most - 1, "one below the largest"},
        {"-2147483648", least, "the least"},
        {"-2147483647", least + 1, "one above the least"},
        {zeros(1000) + "2147483647", most, "the largest behind a thousand zeros"},
        {"-" + zeros(1000) + "2147483648", least, "the least behind a thousand zeros"},
        {zeros(1U << 20U), 0, "a megabyte of zeros"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(parse_int(row.text), std::optional<std::int32_t>(row.expected)) << row.why;
    }
}

TEST(parse_int, rejects_all_else)
{
    using namespace std::string_literals;
    const struct {
        std::string text;
        const char *why;
    } rows[] = {
        {"2147483648", "one above the largest"},
        {"+2147483648", "one above the largest, with plus"},
        {"-2147483649", "one below the least"},
        {zeros(20) + "2147483648", "one above the largest, behind zeros"},
        {"4294967295", "within 32 bits unsigned alone"},
        {"4294967296", "zero in 32 bits"},
        {"4294967301", "five in 32 bits"},
        {"-4294967301", "minus five in 32 bits"},
        {"9223372036854775807", "within 64 bits"},
        {"18446744073709551616", "zero in 64 bits"},
        {"18446744073709551621", "five in 64 bits"},
        {std::string(1000, '9'), "a thousand digits"},
        {"-" + std::string(1U << 20U, '1'), "a megabyte of digits"},
        {"", "nothing"},
        {"+", "a sign alone"},
        {"-", "a sign alone"},
        {"+-5", "two signs"},
        {"-+5", "two signs"},
        {"++5", "two signs"},
        {"--5", "two signs"},
        {"+-", "two signs alone"},
        {" 5", "a blank before"},
        {"5 ", "a blank behind"},
        {"+ 5", "a blank behind the sign"},
        {"- 5", "a blank behind the sign"},
        {"5 5", "a blank between"},
        {" ", "a blank alone"},
        {"\t5", "a tab before"},
        {"5\n", "a line end behind"},
        {"5\r", "a carriage return behind"},
        {"0x10", "hexadecimal"},
        {"0X10", "hexadecimal"},
        {"1f", "hexadecimal digits"},
        {"ff", "hexadecimal digits"},
        {"0b1", "binary"},
        {"5.0", "a point"},
        {"5.", "a point"},
        {".5", "a point"},
        {"5e0", "an exponent"},
        {"1,000", "grouped by commas"},
        {"1'000", "grouped by quotes"},
        {"1_000", "grouped by underscores"},
        {"5-", "a sign behind"},
        {"5u", "a suffix"},
        {"5L", "a suffix"},
        {"true", "a word"},
        {"inf", "a word"},
        {"\0"s, "NUL alone"},
        {"5\0"s, "NUL behind"},
        {"\0005"s, "NUL before"},
        {"5\0006"s, "NUL between"},
        {"-\0005"s, "NUL behind the sign"},
        {"\xef\xbc\x95", "the full-width digit five"},
        {"1\xef\xbc\x95", "a digit and the full-width digit five"},
        {"\xef\xbc\x8b" "5", "the full-width plus"},
        {"\xe2\x88\x92" "5", "the mathematical minus"},
        {"\xd9\xa5", "the Arabic digit five"},
        {"\xb5", "a digit with its top bit set"},
        {"\xff", "a byte above 0x7F"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(parse_int(row.text), std::nullopt) << row.why;
    }
    EXPECT_EQ(parse_int(std::string_view()), std::nullopt);
}

TEST(parse_int, knows_no_other_texts_of_one_or_two_bytes)
{
    const auto is_digit = [](int c) { return c >= '0' && c <= '9'; };
    for (int first = 0; first < 256; ++first) {
        const char one[] = {static_cast<char>(first)};
        EXPECT_EQ(parse_int({one, 1}).has_value(), is_digit(first)) << first;
        for (int second = 0; second < 256; ++second) {
            const char two[] = {static_cast<char>(first), static_cast<char>(second)};
            const bool expected = is_digit(second) && (is_digit(first) || first == '+' || first == '-');
            EXPECT_EQ(parse_int({two, 2}).has_value(), expected) << first << ' ' << second;
        }
    }
}

TEST(parse_int, reads_back_what_is_printed)
{
    std::mt19937 random(20240611);
    for (int round = 0; round < 20000; ++round) {
        const auto value = static_cast<std::int32_t>(random() >> (random() % 32));
        const std::int32_t either = round % 2 == 0 ? value : -1 - value;
        EXPECT_EQ(parse_int(std::to_string(either)), std::optional<std::int32_t>(either));
    }
}

TEST(parse_int, takes_a_text_that_no_nul_ends)
{
    const std::string_view digits = "123456789";
    EXPECT_EQ(parse_int(digits.substr(0, 3)), std::optional<std::int32_t>(123));
    EXPECT_EQ(parse_int(digits.substr(8, 1)), std::optional<std::int32_t>(9));
    EXPECT_EQ(parse_int(digits.substr(4, 0)), std::nullopt);
}

// Floats.

TEST(parse_float, reads_decimals_in_all_forms)
{
    const struct {
        const char *text;
        float expected;
        const char *why;
    } rows[] = {
        {"0", 0.0F, "zero"},
        {"1", 1.0F, "no point"},
        {"1.5", 1.5F, "a point"},
        {".5", 0.5F, "nothing before the point"},
        {"5.", 5.0F, "nothing behind the point"},
        {"+1.5", 1.5F, "plus"},
        {"-1.5", -1.5F, "minus"},
        {"+.5", 0.5F, "plus before a point"},
        {"-.5", -0.5F, "minus before a point"},
        {"-5.", -5.0F, "minus, nothing behind the point"},
        {"1e5", 1e5F, "an exponent"},
        {"1E5", 1e5F, "a capital exponent"},
        {"1e+5", 1e5F, "an exponent with plus"},
        {"1e-5", 1e-5F, "an exponent with minus"},
        {"-1.25e-2", -0.0125F, "all together"},
        {"5.e1", 50.0F, "an exponent behind a point"},
        {".5e1", 5.0F, "an exponent, nothing before the point"},
        {"1e0", 1.0F, "the exponent zero"},
        {"1e-0", 1.0F, "the exponent minus zero"},
        {"1e+0", 1.0F, "the exponent plus zero"},
        {"1e0005", 1e5F, "an exponent with leading zeros"},
        {"1e-0005", 1e-5F, "a negative exponent with leading zeros"},
        {"0001.5", 1.5F, "leading zeros"},
        {"1.5000", 1.5F, "trailing zeros"},
        {"010", 10.0F, "leading zeros do not mean octal"},
        {"0.1", 0x1.99999ap-4F, "no exact float"},
        {"-0", -0.0F, "zero keeps its sign"},
        {"+0", 0.0F, "zero keeps its sign"},
        {"-0.0", -0.0F, "zero keeps its sign"},
        {"-.0", -0.0F, "zero keeps its sign"},
        {"-0.", -0.0F, "zero keeps its sign"},
        {"-0e5", -0.0F, "zero keeps its sign"},
        {"-0e-99999999999999999999", -0.0F, "zero keeps its sign"},
        {"-1e-999", -0.0F, "what becomes zero keeps its sign"},
        {"123456789", 123456792.0F, "more digits than a float holds"},
    };
    for (const auto &row : rows) {
        EXPECT_TRUE(reads_as(row.text, row.expected)) << row.why;
    }
}

TEST(parse_float, reads_the_special_words_in_any_case_and_with_signs)
{
    constexpr float infinity = std::numeric_limits<float>::infinity();
    for (const char *const word : {"inf", "infinity"}) {
        for (const std::string &text : in_every_case(word)) {
            EXPECT_TRUE(reads_as(text, infinity));
            EXPECT_TRUE(reads_as("+" + text, infinity));
            EXPECT_TRUE(reads_as("-" + text, -infinity));
        }
    }
    for (const std::string &word : in_every_case("nan")) {
        for (const std::string &text : {word, "+" + word, "-" + word}) {
            const std::optional<float> read = parse_float(text);
            EXPECT_TRUE(read && std::isnan(*read)) << text;
        }
    }
}

TEST(parse_float, rejects_all_else)
{
    using namespace std::string_literals;
    const struct {
        std::string text;
        const char *why;
    } rows[] = {
        {"", "nothing"},
        {"+", "a sign alone"},
        {"-", "a sign alone"},
        {".", "a point alone"},
        {"+.", "a sign and a point"},
        {"-.", "a sign and a point"},
        {"..", "two points"},
        {"..5", "two points"},
        {"1..5", "two points"},
        {"1.2.3", "two points"},
        {"5..", "two points"},
        {"e", "an exponent's letter alone"},
        {"e5", "an exponent alone"},
        {".e5", "a point and an exponent"},
        {"-e5", "a sign and an exponent"},
        {"1e", "an exponent without digits"},
        {"1.e", "an exponent without digits"},
        {"1.5e", "an exponent without digits"},
        {"1e+", "an exponent without digits"},
        {"1e-", "an exponent without digits"},
        {"1e++5", "an exponent with two signs"},
        {"1e+-5", "an exponent with two signs"},
        {"1e-+5", "an exponent with two signs"},
        {"1e5x", "a letter behind"},
        {"1e5.0", "a point in the exponent"},
        {"1e.5", "a point in the exponent"},
        {"1e5e5", "two exponents"},
        {"1e 5", "a blank in the exponent"},
        {"1x", "a letter behind"},
        {"1f", "a suffix"},
        {"1.5F", "a suffix"},
        {"1d5", "another letter of the exponent"},
        {"1p5", "a binary exponent"},
        {"++1", "two signs"},
        {"--1", "two signs"},
        {"+-1", "two signs"},
        {"-+1", "two signs"},
        {"1-", "a sign behind"},
        {" 1", "a blank before"},
        {"1 ", "a blank behind"},
        {"- 1", "a blank behind the sign"},
        {"\t1", "a tab before"},
        {"1\n", "a line end behind"},
        {"1 .5", "a blank before the point"},
        {" ", "a blank alone"},
        {"1,5", "a comma"},
        {",5", "a comma"},
        {"1,000.5", "grouped by commas"},
        {"1'000.5", "grouped by quotes"},
        {"infi", "more than inf, less than infinity"},
        {"infinit", "more than inf, less than infinity"},
        {"infinityy", "a letter more"},
        {"in", "a letter short"},
        {"i", "two letters short"},
        {"inf ", "a blank behind"},
        {" inf", "a blank before"},
        {"+-inf", "two signs"},
        {"--inf", "two signs"},
        {"- inf", "a blank behind the sign"},
        {"inf1", "a digit behind"},
        {"1inf", "a digit before"},
        {"infe5", "an exponent"},
        {"na", "a letter short"},
        {"nann", "a letter more"},
        {"--nan", "two signs"},
        {"nan()", "brackets"},
        {"nan(1)", "brackets"},
        {"nan(ind)", "brackets"},
        {"-nan(snan)", "brackets"},
        {"NAN(0x1)", "brackets"},
        {"nan1", "a digit behind"},
        {"nanf", "a suffix"},
        {"0." + std::string(60, '0') + "1e", "below every float, and an exponent without digits"},
        {"0." + std::string(60, '0') + "1e-", "below every float, and an exponent without digits"},
        {"0." + std::string(60, '0') + "1x5", "below every float, and a letter that begins no exponent"},
        {"0." + std::string(60, '0') + "1 ", "below every float, and a blank behind"},
        {std::string(60, '9') + "e", "above every float, and an exponent without digits"},
        {"0x1", "hexadecimal"},
        {"0x1p3", "hexadecimal"},
        {"0X1P3", "hexadecimal"},
        {"-0x1.8p1", "hexadecimal"},
        {"0x", "hexadecimal"},
        {"1.8p1", "hexadecimal"},
        {"a", "a hexadecimal digit"},
        {"1a", "a hexadecimal digit"},
        {"true", "a word"},
        {"\0"s, "NUL alone"},
        {"1\0"s, "NUL behind"},
        {"1.5\0"s, "NUL behind"},
        {"1e5\0"s, "NUL behind"},
        {"\0001"s, "NUL before"},
        {"-\0001"s, "NUL behind the sign"},
        {"1\0005"s, "NUL between"},
        {"inf\0"s, "NUL behind a word"},
        {"nan\0"s, "NUL behind a word"},
        {"\xef\xbc\x95", "the full-width digit five"},
        {"1.\xef\xbc\x95", "the full-width digit five behind a point"},
        {"1\xef\xbc\x8e" "5", "the full-width point"},
        {"\xe2\x88\x9e", "the sign of infinity"},
        {"\xe9nf", "a letter with its top bit set"},
        {"1\xae" "5", "a point with its top bit set"},
        {"\xff", "a byte above 0x7F"},
    };
    for (const auto &row : rows) {
        EXPECT_TRUE(reads_as(row.text, std::nullopt)) << row.why;
    }
    EXPECT_TRUE(reads_as(std::string_view(), std::nullopt));
}

TEST(parse_float, reads_no_further_than_its_text)
{
    const std::string zeros = "0." + std::string(60, '0');
    const struct {
        std::string text;
        std::string behind;
        float expected;
    } rows[] = {
        {"1", "5", 1.0F},      {"1.5", "5", 1.5F},          {"1e1", "0", 10.0F}, {"-", "1", 0.0F},
        {"1e-1", "0", 0.1F},   {zeros + "1e5", "00", 0.0F}, {"1.", "5", 1.0F},   {"in", "f", 0.0F},
        {"1e-60", "0", 0.0F},
    };
    for (const auto &row : rows) {
        const std::string buffer = row.text + row.behind;
        const std::optional<float> value = parse_float(std::string_view(buffer).substr(0, row.text.size()));
        EXPECT_EQ(value.has_value(), row.text != "-" && row.text != "in") << row.text;
        EXPECT_EQ(value.value_or(0.0F), row.expected) << row.text;
    }
}

TEST(parse_float, knows_no_other_texts_of_one_to_three_bytes)
{
    // Every text of up to three of these bytes against the grammar, spelt out anew for such short texts.
    const std::string bytes("019.+-eExX,aAnNiIfFpP ()\t\n\0\x80\xb1\xff", 30);
    const auto digit = [](char c) { return c >= '0' && c <= '9'; };
    const auto sign = [](char c) { return c == '+' || c == '-'; };
    const auto two = [&](char a, char b) { return (digit(a) && (digit(b) || b == '.')) || (a == '.' && digit(b)); };
    const auto letter = [](char c, char lower) { return c == lower || c == lower - 'a' + 'A'; };
    for (const char a : bytes) {
        EXPECT_EQ(parse_float(std::string{a}).has_value(), digit(a)) << a;
        for (const char b : bytes) {
            EXPECT_EQ(parse_float(std::string{a, b}).has_value(), two(a, b) || (sign(a) && digit(b))) << a << b;
            for (const char c : bytes) {
                const bool plain = (digit(a) && two(b, c)) || (two(a, b) && digit(c));
                const bool scientific = digit(a) && letter(b, 'e') && digit(c);
                const bool word = (letter(a, 'i') && letter(b, 'n') && letter(c, 'f')) ||
                                  (letter(a, 'n') && letter(b, 'a') && letter(c, 'n'));
                EXPECT_EQ(parse_float(std::string{a, b, c}).has_value(),
                          plain || (sign(a) && two(b, c)) || scientific || word)
                    << a << b << c;
            }
        }
    }
}

TEST(parse_float, takes_a_text_that_no_nul_ends)
{
    const std::string_view digits = "1.5e3e7inf";
    EXPECT_TRUE(reads_as(digits.substr(0, 1), 1.0F));
    EXPECT_TRUE(reads_as(digits.substr(0, 3), 1.5F));
    EXPECT_TRUE(reads_as(digits.substr(0, 4), std::nullopt));
    EXPECT_TRUE(reads_as(digits.substr(0, 5), 1500.0F));
    EXPECT_TRUE(reads_as(digits.substr(7), std::numeric_limits<float>::infinity()));
    EXPECT_TRUE(reads_as(digits.substr(7, 2), std::nullopt));
}

TEST(parse_float, stops_at_the_largest_float)
{
    constexpr float most = std::numeric_limits<float>::max();
    const struct {
        const char *text;
        std::optional<float> expected;
        const char *why;
    } rows[] = {
        {"340282346638528859811704183484516925440", most, "the largest itself"},
        {"-340282346638528859811704183484516925440", -most, "the largest, negative"},
        {"3.4028232e38", 0x1.fffffcp127F, "the one before it"},
        {"3.4028235e38", most, "its usual print, above it"},
        {"340282356779733661637539395458142568447", most, "one below the tie with what would be next"},
        {"340282356779733661637539395458142568447.99999999999999999999", most, "a hair below the tie"},
        {"-340282356779733661637539395458142568447.99999999999999999999", -most, "a hair below the tie, negative"},
        {"340282356779733661637539395458142568448", std::nullopt, "the tie rounds to infinity"},
        {"-340282356779733661637539395458142568448", std::nullopt, "the tie, negative"},
        {"3.40282356779733661637539395458142568448e38", std::nullopt, "the tie with an exponent"},
        {"340282356779733661637539395458142568448.00000000000000000001", std::nullopt, "a hair above the tie"},
        {"3.4028236e38", std::nullopt, "above the tie"},
        {"1e39", std::nullopt, "a power of ten above"},
        {"-1e39", std::nullopt, "a power of ten above, negative"},
        {"1e38", 1e38F, "a power of ten below"},
        {"1e308", std::nullopt, "within a double's range"},
        {"1e309", std::nullopt, "out of a double's range"},
        {"1e5000", std::nullopt, "out of any range"},
        {"1e99999999999999999999", std::nullopt, "an exponent of more than 64 bits"},
        {"+1e+99999999999999999999", std::nullopt, "an exponent of more than 64 bits, with signs"},
        {"-0.001e99999999999999999999", std::nullopt, "the same, negative and with zeros"},
        {"1e9223372036854775807", std::nullopt, "the largest exponent in 64 bits"},
        {"1e9223372036854775808", std::nullopt, "one above it"},
        {"1e18446744073709551616", std::nullopt, "an exponent that is zero in 64 bits"},
        {"1e4294967296", std::nullopt, "an exponent that is zero in 32 bits"},
        {"0.1e2147483648", std::nullopt, "an exponent that is negative in 32 bits"},
    };
    for (const auto &row : rows) {
        EXPECT_TRUE(reads_as(row.text, row.expected)) << row.why;
    }
}

TEST(parse_float, rounds_what_is_too_small_to_the_nearest)
{
    constexpr float least = std::numeric_limits<float>::denorm_min();
    constexpr float least_normal = std::numeric_limits<float>::min();
    const std::string half = // 2^-150, in units of 1e-46
        "7.00649232162408535461864791644958065640130970938257885878534141944895541342930300743319094181060791015625";
    const std::string half_less_1 = half.substr(0, half.size() - 1) + "4";
    const struct {
        std::string text;
        float expected;
        const char *why;
    } rows[] = {
        {"1.40129846432481707e-45", least, "the least denormal"},
        {"1e-45", least, "its usual print"},
        {"-1e-45", -least, "the same, negative"},
        {half + "e-46", 0.0F, "half of it: ties to even"},
        {"-" + half + "e-46", -0.0F, "half of it, negative"},
        {half + zeros(1000) + "e-46", 0.0F, "half of it with trailing zeros"},
        {half + "1e-46", least, "just above half of it"},
        {"-" + half + "1e-46", -least, "just above half of it, negative"},
        {half + zeros(1000) + "1e-46", least, "above half of it by far less"},
        {half_less_1 + "e-46", 0.0F, "just below half of it"},
        {half_less_1 + std::string(1000, '9') + "e-46", 0.0F, "below half of it by far less"},
        {"0." + zeros(45) + "700649232162408535461864791644958065640130970938257885878534141944895541342930300743319094"
                            "181060791015625",
         0.0F, "half of it without an exponent"},
        {"0." + zeros(45) + "700649232162408535461864791644958065640130970938257885878534141944895541342930300743319094"
                            "1810607910156250001",
         least, "just above half of it without an exponent"},
        {"2.101947696487225606385594374934874196920392912814773657635602425834686624028790902229957282543182373046875"
         "e-45",
         2 * least, "one and a half: ties to even"},
        {"2.1019476964872256063855943749348741969203929128147736576356024258346866240287909022299572825431823730468749"
         "e-45",
         least, "just below one and a half"},
        {"1.1754942106924411e-38", 0x1.fffffcp-127F, "the largest denormal"},
        {"1.1754942807573642917278829910357665133228589927589904276829631184250030649651730385585324256680905818939208"
         "984375e-38",
         least_normal, "half-way to the least normal float: ties to even"},
        {"1.1754942807573642917278829910357665133228589927589904276829631184250030649651730385585324256680905818939208"
         "984374e-38",
         0x1.fffffcp-127F, "just below half-way"},
        {"1.17549435e-38", least_normal, "the least normal float"},
        {"1e-46", 0.0F, "a power of ten below"},
        {"1e-323", 0.0F, "a double's denormal"},
        {"1e-400", 0.0F, "out of a double's range"},
        {"-1e-400", -0.0F, "out of a double's range, negative"},
        {"1e-99999999999999999999", 0.0F, "an exponent of more than 64 bits"},
        {"-123.456e-99999999999999999999", -0.0F, "the same, negative and with digits"},
        {"1e-9223372036854775807", 0.0F, "the largest exponent in 63 bits"},
        {"1e-9223372036854775808", 0.0F, "one beyond it"},
        {"1e-18446744073709551616", 0.0F, "an exponent that is zero in 64 bits"},
        {"1e-4294967296", 0.0F, "an exponent that is zero in 32 bits"},
        {"10e-2147483649", 0.0F, "an exponent that is positive in 32 bits"},
    };
    for (const auto &row : rows) {
        EXPECT_TRUE(reads_as(row.text, row.expected)) << row.why;
    }
}

TEST(parse_float, rounds_once_and_ties_to_even)
{
    const struct {
        const char *text;
        float expected;
        const char *why;
    } rows[] = {
        {"16777215", 16777215.0F, "the last odd float"},
        {"16777216", 16777216.0F, "two to the twenty-fourth"},
        {"16777217", 16777216.0F, "a tie goes down to the even one"},
        {"16777217.0000000000000000000000001", 16777218.0F, "just above that tie"},
        {"16777218", 16777218.0F, "exact"},
        {"16777219", 16777220.0F, "a tie goes up to the even one"},
        {"16777218.9999999999999999999999999", 16777218.0F, "just below that tie"},
        {"-16777217", -16777216.0F, "a negative tie goes to the even one"},
        {"-16777219", -16777220.0F, "a negative tie goes to the even one"},
        {"1.000000059604644775390625", 1.0F, "a tie above 1"},
        {"1.00000005960464477539062500000000000001", 0x1.000002p0F, "just above it: a double holds the tie"},
        {"1.000000178813934326171875", 0x1.000004p0F, "the next tie"},
        {"1.00000017881393432617187499999999999999", 0x1.000002p0F, "just below it: a double holds the tie"},
        {"-1.00000005960464477539062500000000000001", -0x1.000002p0F, "double rounding, negative"},
        {"9007199791611905", 9007200328482816.0F, "a tie plus one, which a double drops: double rounding"},
    };
    for (const auto &row : rows) {
        EXPECT_TRUE(reads_as(row.text, row.expected)) << row.why;
    }
    // That the last row and the hairs above test what they say:
    EXPECT_EQ(bits_of(static_cast<float>(1.00000005960464477539062500000000000001)), bits_of(1.0F));
    EXPECT_EQ(bits_of(static_cast<float>(9007199791611905.0)), bits_of(9007199254740992.0F));
}

TEST(parse_float, rejects_what_is_no_decimal_even_where_its_start_is_out_of_range)
{
    const struct {
        std::string text;
        const char *why;
    } rows[] = {
        {"1e-999x", "a letter behind too small a decimal"},
        {"1e-999:", "the character behind the digits"},
        {"1e-999/", "the character before them"},
        {"1e-999 ", "a blank"},
        {"1e-999.5", "an exponent is whole"},
        {"1e-999e5", "two exponents"},
        {"0." + zeros(100) + "1e", "an exponent without digits"},
        {"0." + zeros(100) + "1e-", "an exponent of a sign alone"},
        {"0." + zeros(100) + "1.", "two points"},
        {"+-1e-999", "two signs"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(parse_float(row.text), std::nullopt) << row.why;
    }
}

TEST(parse_float, weighs_zeros_against_the_exponent)
{
    const struct {
        std::string text;
        std::optional<float> expected;
        const char *why;
    } rows[] = {
        {"0." + zeros(100) + "1e101", 1.0F, "a hundred zeros behind the point"},
        {"." + zeros(100) + "1e101", 1.0F, "the same without a digit before it"},
        {"1" + zeros(100) + "e-100", 1.0F, "a hundred zeros before the point"},
        {"1" + zeros(100) + ".e-100", 1.0F, "the same with a point"},
        {"1" + zeros(100) + "." + zeros(100) + "e-100", 1.0F, "zeros on both sides"},
        {zeros(100) + "1" + zeros(100) + "e-100", 1.0F, "leading zeros too"},
        {zeros(100) + "." + zeros(100) + "1e+101", 1.0F, "zeros around the point"},
        {"0." + zeros(100000) + "1e100001", 1.0F, "a hundred thousand zeros"},
        {"1" + zeros(100000) + "e-100000", 1.0F, "a hundred thousand zeros the other way"},
        {zeros(100) + "1e-100", 0.0F, "leading zeros that make up for no exponent"},
        {zeros(100) + "1e38", 1e38F, "leading zeros that count for no digits"},
        {zeros(100) + "1e39", std::nullopt, "the same, out of range"},
        {"0." + zeros(100) + "1", 0.0F, "too small for want of an exponent"},
        {"1" + zeros(100), std::nullopt, "too large for want of an exponent"},
        {"0." + zeros(100) + "1e139", 1e38F, "the last power of ten in range"},
        {"0." + zeros(100) + "1e140", std::nullopt, "the first out of range"},
        {"1" + zeros(100) + "e-62", 1e38F, "the last power of ten in range, from above"},
        {"1" + zeros(100) + "e-61", std::nullopt, "the first out of range, from above"},
        {"0." + zeros(100) + "1e56", 1e-45F, "the least power of ten in range"},
        {"0." + zeros(100) + "1e55", 0.0F, "the first too small"},
        {"1" + zeros(100) + "e-145", 1e-45F, "the least power of ten in range, from above"},
        {"1" + zeros(100) + "e-146", 0.0F, "the first too small, from above"},
        {"1" + zeros(100) + "e-400", 0.0F, "more exponent than digits"},
        {"0." + zeros(100) + "1e400", std::nullopt, "more exponent than zeros"},
        {"1" + zeros(100) + "e99999999999999999999", std::nullopt, "both large"},
        {"0." + zeros(100) + "1e-99999999999999999999", 0.0F, "both small"},
        {"1" + zeros(100) + "e-99999999999999999999", 0.0F, "an exponent that no digits make up for"},
        {"0." + zeros(100) + "1e99999999999999999999", std::nullopt, "an exponent that no zeros make up for"},
        {"0e99999999999999999999", 0.0F, "zero with an exponent of more than 64 bits"},
        {"0.000e99999999999999999999", 0.0F, "the same with a point"},
        {"0e-99999999999999999999", 0.0F, "the same with minus"},
        {"-0.e99999999999999999999", -0.0F, "the same, negative"},
        {"0e" + std::string(1000, '9'), 0.0F, "zero with an exponent of a thousand digits"},
        {"1e" + std::string(1000, '9'), std::nullopt, "one with an exponent of a thousand digits"},
        {"1e-" + std::string(1000, '9'), 0.0F, "the same with minus"},
        {"1e" + zeros(1000) + "5", 1e5F, "an exponent of a thousand zeros and a digit"},
        {"1e-" + zeros(1000) + "5", 1e-5F, "the same with minus"},
        {zeros(1000), 0.0F, "a thousand zeros"},
        {zeros(1000) + "." + zeros(1000), 0.0F, "a thousand zeros on both sides"},
        {zeros(1U << 20U) + "1", 1.0F, "a megabyte of zeros before a digit"},
        {"1." + zeros(1U << 20U), 1.0F, "a megabyte of zeros behind the point"},
        {std::string(1U << 20U, '9'), std::nullopt, "a megabyte of nines"},
        {"0." + std::string(1U << 20U, '9'), 1.0F, "a megabyte of nines behind the point"},
        {"0." + std::string(1U << 20U, '3'), 0x1.555556p-2F, "a megabyte of threes behind the point"},
        {std::string(1U << 20U, '3') + "e-1048576", 0x1.555556p-2F, "the same moved by the exponent"},
    };
    for (const auto &row : rows) {
        EXPECT_TRUE(reads_as(row.text, row.expected)) << row.why;
    }
}

// Floats against strtof, which rounds once and to even too.

std::optional<float> strtof_of(const std::string &text)
{
    const ClassicCLocale classic;
    char *end = nullptr;
    const float value = std::strtof(text.c_str(), &end);
    EXPECT_EQ(*end, '\0') << text;
    return std::isinf(value) ? std::nullopt : std::optional<float>(value); // asked for finite texts alone
}

std::string scientific(double value, int digits)
{
    const ClassicCLocale classic;
    std::array<char, 512> text{};
    const int length = std::snprintf(text.data(), text.size(), "%.*e", digits, value);
    EXPECT_TRUE(length > 0 && static_cast<std::size_t>(length) < text.size());
    return text.data();
}

/// The least step down in the digits of a text in scientific form.
std::string stepped_down(std::string text)
{
    for (std::size_t i = text.find('e'); i-- > 0;) {
        if (text[i] >= '1' && text[i] <= '9') {
            --text[i];
            return text;
        }
        if (text[i] == '0') {
            text[i] = '9';
        }
    }
    return text;
}

/// The least step up in the last digit of a text in scientific form, which is no 9.
std::string stepped_up(std::string text)
{
    const std::size_t last = text.find('e') - 1;
    EXPECT_NE(text[last], '9');
    ++text[last];
    return text;
}

class parse_float_as_strtof : public ::testing::Test {
protected:
    void compare(const std::string &text)
    {
        ++compared;
        EXPECT_TRUE(reads_as(text, strtof_of(text)));
        EXPECT_TRUE(reads_as("-" + text, strtof_of("-" + text)));
    }

    std::uint32_t random() { return static_cast<std::uint32_t>(generator()); }

    int compared = 0;

private:
    std::mt19937 generator{20240611};
};

TEST_F(parse_float_as_strtof, rounds_at_and_beside_the_ties_of_every_exponent)
{
    constexpr int exact = 160; // digits behind the point that a float and its ties never need all of
    for (std::uint32_t exponent = 0; exponent < 255; ++exponent) {
        std::vector<std::uint32_t> mantissas = {0, 1, 2, 0x3fffff, 0x400000, 0x7ffffe, 0x7fffff};
        for (int i = 0; i < 8; ++i) {
            mantissas.push_back(random() & 0x7fffffU);
        }
        for (const std::uint32_t mantissa : mantissas) {
            const auto low = static_cast<double>(float_of(exponent << 23U | mantissa));
            const std::uint32_t next = (exponent << 23U | mantissa) + 1;
            const double high = next < 0x7f800000U ? static_cast<double>(float_of(next)) : 0x1p128;
            const std::string tie = scientific(low + (high - low) / 2, exact); // a double holds it
            compare(scientific(low, exact));
            compare(scientific(low, 8));
            compare(tie);
            compare(stepped_up(tie));
            compare(stepped_down(tie));
        }
    }
    EXPECT_EQ(compared, 255 * 15 * 5);
}

TEST_F(parse_float_as_strtof, prints_of_random_floats_come_back)
{
    for (int round = 0; round < 20000; ++round) {
        const float value = float_of(random() & 0x7fffffffU);
        if (std::isfinite(value)) {
            const std::string text = scientific(static_cast<double>(value), 8);
            compare(text);
            EXPECT_TRUE(reads_as(text, value));
        }
    }
    EXPECT_GT(compared, 19000);
}

TEST_F(parse_float_as_strtof, reads_random_digits_around_a_point_with_every_exponent)
{
    const auto digits = [this](std::size_t count) {
        std::string text;
        while (text.size() < count) {
            text += static_cast<char>('0' + random() % 10);
        }
        return text;
    };
    for (int exponent = -70; exponent <= 60; ++exponent) {
        for (int round = 0; round < 100; ++round) {
            std::string text = digits(random() % (round % 10 == 0 ? 200 : 25));
            text += random() % 4 == 0 ? "" : "." + digits(random() % 25);
            if (text.empty() || text == ".") {
                text = "7";
            }
            compare(text);
            compare(text + (round % 2 == 0 ? "e" : "E") + (round % 3 == 0 && exponent >= 0 ? "+" : "") +
                    std::to_string(exponent));
        }
    }
    EXPECT_EQ(compared, 131 * 100 * 2);
}

TEST_F(parse_float_as_strtof, reads_the_doubles_that_a_second_rounding_would_spoil)
{
    for (int round = 0; round < 5000; ++round) {
        const std::uint32_t bits = random() % 0x7f7fffffU;
        const auto low = static_cast<double>(float_of(bits));
        const auto high = static_cast<double>(float_of(bits + 1));
        const double tie = low + (high - low) / 2;
        // Seventeen digits of a tie lie beside it and are read by a double as the tie itself.
        compare(scientific(tie, 16));
        compare(scientific(tie, 17));
        compare(scientific(std::nextafter(tie, high), 40));
        compare(scientific(std::nextafter(tie, low), 40));
    }
    EXPECT_EQ(compared, 5000 * 4);
}

// Floats under other locales.

class comma_for_point : public std::numpunct<char> {
protected:
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

void expect_points_and_no_commas()
{
    EXPECT_TRUE(reads_as("1.5", 1.5F));
    EXPECT_TRUE(reads_as("-1234.5e-1", -123.45F));
    EXPECT_TRUE(reads_as("1.500", 1.5F));
    EXPECT_TRUE(reads_as("1e39", std::nullopt));
    EXPECT_TRUE(reads_as("1,5", std::nullopt));
    EXPECT_TRUE(reads_as("1.000,5", std::nullopt));
    EXPECT_EQ(parse_int("1234567"), std::optional<std::int32_t>(1234567));
    EXPECT_EQ(parse_int("1.234.567"), std::nullopt);
    EXPECT_EQ(parse_bool("TRUE", BOOL_STYLE_WORDS), std::optional<bool>(true));
}

TEST(value_texts, keep_their_point_under_a_global_cpp_locale_with_a_comma)
{
    const std::locale before = std::locale::global(std::locale(std::locale::classic(), new comma_for_point));
    std::ostringstream shown;
    shown << 1234.5;
    EXPECT_EQ(shown.str(), "1.234,5"); // the locale is at work
    expect_points_and_no_commas();
    std::locale::global(before);
}

TEST(value_texts, keep_their_point_and_letters_under_every_installed_c_locale)
{
    const std::string before = std::setlocale(LC_ALL, nullptr);
    int tried = 0;
    for (const char *const name : {"C", "POSIX", "de_DE.UTF-8", "de_DE.utf8", "de_DE", "fr_FR.UTF-8", "fr_FR.utf8",
                                   "tr_TR.UTF-8", "tr_TR.utf8", "tr_TR", "ru_RU.UTF-8", "pt_BR.UTF-8"}) {
        if (std::setlocale(LC_ALL, name) != nullptr) {
            SCOPED_TRACE(name);
            ++tried;
            expect_points_and_no_commas();
            EXPECT_TRUE(reads_as("INFINITY", std::numeric_limits<float>::infinity()));
            EXPECT_EQ(parse_bool("\xdd", BOOL_STYLE_WORDS), std::nullopt);
        }
    }
    std::setlocale(LC_ALL, before.c_str());
    EXPECT_GE(tried, 1);
}

} // namespace
