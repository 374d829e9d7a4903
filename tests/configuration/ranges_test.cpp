#include "dalvo/configuration/ranges.h"

#include <cmath>
#include <cstdint>
#include <limits>
#include <locale>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/global_locale.h"

namespace {

using dalvo::any_but;
using dalvo::at_least;
using dalvo::at_most;
using dalvo::between;
using dalvo::FloatRange;
using dalvo::IntRange;
using dalvo::testing::CommaLocale;

constexpr std::int32_t lowest = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t highest = std::numeric_limits<std::int32_t>::max();
constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr float nan = std::numeric_limits<float>::quiet_NaN();

TEST(int_range, accepts_the_integers_in_it_and_no_others)
{
    const struct {
        IntRange range;
        std::vector<std::int32_t> accepted;
        std::vector<std::int32_t> rejected;
        std::string why;
    } rows[] = {
        {{}, {lowest, -1, 0, 1, highest}, {}, "a range of no bounds"},
        {at_most(3), {lowest, -4, -1, 0, 1, 2, 3}, {4, 5, 1000, highest}, "negative values pass an upper bound"},
        {at_most(0), {lowest, -1, 0}, {1, highest}, "the bound itself passes"},
        {at_most(-2), {lowest, -3, -2}, {-1, 0, 1, highest}, "a negative bound is compared signed"},
        {at_most(highest), {lowest, 0, highest}, {}, "a bound that bounds nothing"},
        {at_most(lowest), {lowest}, {lowest + 1, -1, 0, highest}, "one integer left"},
        {at_least(0), {0, 1, highest}, {-1, lowest}, "the bound itself passes"},
        {at_least(1), {1, 2, highest}, {0, -1, lowest}, "0 is below 1"},
        {at_least(-5), {-5, 0, highest}, {-6, lowest}, "a negative bound"},
        {at_least(highest), {highest}, {highest - 1, 0, lowest}, "one integer left"},
        {at_least(lowest), {lowest, 0, highest}, {}, "a bound that bounds nothing"},
        {between(0, 2), {0, 1, 2}, {-1, 3, lowest, highest}, "both ends pass"},
        {between(7, 7), {7}, {6, 8, -7}, "one integer"},
        {between(2, 1), {}, {0, 1, 2, 3}, "no integer is both"},
        {any_but(0), {lowest, -1, 1, highest}, {0}, "only the hole is out"},
        {any_but(-1), {lowest, -2, 0, 1, highest}, {-1}, "only the hole is out"},
        {any_but(lowest), {lowest + 1, 0, highest}, {lowest}, "a hole at the end"},
        {any_but(highest), {lowest, 0, highest - 1}, {highest}, "a hole at the end"},
        {{1, 5, 3}, {1, 2, 4, 5}, {0, 3, 6}, "a hole between bounds"},
    };
    for (const auto &row : rows) {
        for (const std::int32_t value : row.accepted) {
            EXPECT_TRUE(row.range.accepts(value)) << row.range.text() << " of " << value << ": " << row.why;
        }
        for (const std::int32_t value : row.rejected) {
            EXPECT_FALSE(row.range.accepts(value)) << row.range.text() << " of " << value << ": " << row.why;
        }
    }
}

TEST(int_range, says_what_it_accepts)
{
    const struct {
        IntRange range;
        std::string expected;
    } rows[] = {
        {{}, "any"},
        {at_most(3), "at most 3"},
        {at_most(-2), "at most -2"},
        {at_most(highest), "any"},
        {at_most(1234567), "at most 1234567"},
        {at_least(0), "at least 0"},
        {at_least(-1), "at least -1"},
        {at_least(lowest), "any"},
        {between(0, 2), "0 to 2"},
        {between(-4, -1), "-4 to -1"},
        {between(lowest, 5), "at most 5"},
        {between(5, highest), "at least 5"},
        {any_but(0), "any but 0"},
        {any_but(-7), "any but -7"},
        {{1, 5, 3}, "1 to 5 but 3"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(row.range.text(), row.expected);
        const CommaLocale comma;
        EXPECT_EQ(row.range.text(), row.expected) << "in a locale that groups digits";
    }
}

TEST(int_range, is_made_at_compile_time)
{
    constexpr IntRange range = at_most(3);
    static_assert(range.lowest == lowest && range.highest == 3 && !range.hole.has_value());
    static_assert(at_least(1).lowest == 1 && at_least(1).highest == highest && !at_least(1).hole.has_value());
    static_assert(between(0, 2).lowest == 0 && between(0, 2).highest == 2 && !between(0, 2).hole.has_value());
    static_assert(any_but(0).lowest == lowest && any_but(0).highest == highest && any_but(0).hole == 0);
    static_assert(noexcept(range.accepts(0)));
    EXPECT_TRUE(range.accepts(3));
    EXPECT_FALSE(range.accepts(4));
}

TEST(float_range, rejects_only_what_compares_greater)
{
    const float above_one = std::nextafter(1.0F, 2.0F);
    const struct {
        FloatRange range;
        std::vector<float> accepted;
        std::vector<float> rejected;
        std::string why;
    } rows[] = {
        {{}, {-infinity, -1.0F, 0.0F, 1.0F, std::numeric_limits<float>::max(), infinity, nan, -nan}, {}, "no bound"},
        {at_most(1.0F), {-infinity, -0.5F, -0.0F, 0.0F, std::nextafter(1.0F, 0.0F), 1.0F, nan, -nan},
         {above_one, 1.5F, std::numeric_limits<float>::max(), infinity}, "NaN is not greater"},
        {at_most(0.0F), {-0.0F, 0.0F, -std::numeric_limits<float>::denorm_min()},
         {std::numeric_limits<float>::denorm_min(), 1.0F}, "the two zeros are equal"},
        {at_most(-1.5F), {-infinity, -1.5F}, {-1.0F, 0.0F, infinity}, "a negative bound"},
    };
    for (const auto &row : rows) {
        for (const float value : row.accepted) {
            EXPECT_TRUE(row.range.accepts(value)) << row.range.text() << " of " << value << ": " << row.why;
        }
        for (const float value : row.rejected) {
            EXPECT_FALSE(row.range.accepts(value)) << row.range.text() << " of " << value << ": " << row.why;
        }
    }
}

TEST(float_range, says_what_it_accepts)
{
    const struct {
        FloatRange range;
        std::string expected;
    } rows[] = {
        {{}, "any"},
        {at_most(infinity), "any"},
        {at_most(1.0F), "at most 1"},
        {at_most(1.5F), "at most 1.5"},
        {at_most(-0.25F), "at most -0.25"},
        {at_most(12345.0F), "at most 12345"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(row.range.text(), row.expected);
        const CommaLocale comma;
        EXPECT_EQ(row.range.text(), row.expected) << "in a locale of decimal commas that groups digits";
    }
}

} // namespace
