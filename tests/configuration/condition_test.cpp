#include "dalvo/configuration/condition.h"

#include <limits>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using namespace dalvo;

TEST(condition, holds_of_the_values_that_its_words_say)
{
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    const struct {
        Condition condition;
        std::string words;
        std::vector<double> meet, miss;
    } rows[] = {
        {is(true), "is true", {1}, {0, nan}},
        {is(false), "is false", {0, -0.0}, {1, nan}},
        {is(0), "is 0", {0, -0.0}, {1, -1, nan}},
        {is(-3), "is -3", {-3}, {3, 0, nan}},
        {is_not(0), "is not 0", {1, -1, 2147483647.0, nan}, {0, -0.0}},
        {is_neither(0, 1), "is neither 0 nor 1", {-1, 2, nan}, {0, 1}},
        {is_at_most(2), "is at most 2", {2, 0, -2147483648.0}, {3, 2147483647.0, nan}},
        {is_above(0), "is above 0", {1e-45, 1}, {0, -0.0, -1e-45, nan}},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(row.condition.text(), row.words);
        for (const double value : row.meet) {
            EXPECT_TRUE(row.condition.holds(value)) << row.words << ": " << value;
        }
        for (const double value : row.miss) {
            EXPECT_FALSE(row.condition.holds(value)) << row.words << ": " << value;
        }
    }
}

} // namespace
