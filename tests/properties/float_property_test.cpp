// Float options beside strtof in the "C" locale, bit for bit.

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "dalvo/options/optionparser.h"
#include "tests/support/classic_locale.h"

namespace {

using dalvo::OptionParser;
using dalvo::testing::ClassicCLocale;

std::string printed(double number, int digits_behind_point)
{
    const ClassicCLocale classic;
    char text[400];
    const int size = std::snprintf(text, sizeof text, "%.*e", digits_behind_point, number);
    return std::string(text, static_cast<std::size_t>(size));
}

/// What an option is to hold after `text`, a decimal: the nearest float, and nothing when that is infinite.
std::optional<float> expected_of(const std::string &text)
{
    const ClassicCLocale classic;
    const float value = std::strtof(text.c_str(), nullptr);
    return std::isinf(value) ? std::nullopt : std::optional<float>(value);
}

struct FloatOption : OptionParser {
    FloatOption() : OptionParser(dalvo::BOOL_STYLE_WORDS) { add_option("f", dalvo::OPT_FLOAT, ""); }
};

std::optional<float> read_by_option(const std::string &text)
{
    static FloatOption options;
    try {
        options.parse_option("f", text, 0);
    } catch (const OptionParser::error &e) {
        RC_ASSERT(e.value == text);
        return std::nullopt;
    }
    float value = 0.0F;
    RC_ASSERT(options.get_float_option("f", &value));
    return value;
}

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

void expect_as_strtof(const std::string &text)
{
    const std::optional<float> expected = expected_of(text);
    const std::optional<float> read = read_by_option(text);
    if (expected.has_value() != read.has_value() || (expected && bits_of(*expected) != bits_of(*read))) {
        RC_LOG() << text << " reads as " << (read ? printed(static_cast<double>(*read), 8) : "nothing") << std::endl;
        RC_FAIL("another value than that of strtof");
    }
}

RC_GTEST_PROP(float_options, hold_what_strtof_reads_at_every_binary_exponent, ())
{
    const auto mantissa = *rc::gen::oneOf(rc::gen::inRange<std::uint32_t>(0, 0x800000),
                                          rc::gen::element<std::uint32_t>(0, 1, 2, 0x3fffff, 0x400000, 0x7fffff));
    const std::string sign = *rc::gen::element<std::string>("", "-", "+");
    const int digits = *rc::gen::inRange(0, 40);
    for (std::uint32_t exponent = 0; exponent < 255; ++exponent) {
        const std::uint32_t bits = exponent << 23U | mantissa;
        const auto low = static_cast<double>(float_of(bits));
        const double high = bits + 1 < 0x7f800000U ? static_cast<double>(float_of(bits + 1)) : 0x1p128;
        const double tie = low + (high - low) / 2;   // exact: a double has the room
        const double beside = std::nextafter(tie, *rc::gen::element(0.0, 1e300));
        expect_as_strtof(sign + printed(low, digits));
        expect_as_strtof(sign + printed(tie, 160)); // all digits that a tie has
        expect_as_strtof(sign + printed(beside, 160));
        const std::optional<float> back = read_by_option(sign + printed(low, 8)); // nine digits tell floats apart
        RC_ASSERT(back.has_value());
        RC_ASSERT(bits_of(*back) == (bits | (sign == "-" ? 0x80000000U : 0U)));
    }
}

RC_GTEST_PROP(float_options, hold_what_strtof_reads_at_every_decimal_exponent, ())
{
    const auto digit_texts = rc::gen::container<std::string>(rc::gen::inRange<char>('0', '9' + 1));
    const std::string sign = *rc::gen::element<std::string>("", "-", "+");
    const std::string whole = *digit_texts;
    const std::string fraction = *digit_texts;
    const std::string letter = *rc::gen::element<std::string>("e", "E");
    const std::string digits = whole.empty() && fraction.empty() ? "0" : whole;
    const std::string number = digits + (*rc::gen::arbitrary<bool>() || !fraction.empty() ? "." : "");
    for (int exponent = -180; exponent <= 150; ++exponent) { // of up to a hundred digits on each side
        expect_as_strtof(sign + number + fraction + letter + (exponent >= 0 && exponent % 2 == 0 ? "+" : "") +
                         std::to_string(exponent));
    }
    expect_as_strtof(sign + number + fraction);
}

RC_GTEST_PROP(float_options, reject_decimals_too_large_and_take_those_too_small_for_a_zero_of_their_sign, ())
{
    const std::string digits = std::to_string(*rc::gen::inRange(1, 1000000000));
    const int beyond = *rc::gen::inRange(0, 100000);
    const bool negative = *rc::gen::arbitrary<bool>();
    const std::string number = (negative ? "-" : "") + digits;
    RC_ASSERT(!read_by_option(number + "e" + std::to_string(39 + beyond)).has_value());
    const std::optional<float> small = read_by_option(number + "e-" + std::to_string(55 + beyond));
    RC_ASSERT(small.has_value());
    RC_ASSERT(bits_of(*small) == (negative ? 0x80000000U : 0U));
}

} // namespace
