// What options accept, put into words when the heap refuses.

#include <cstddef>
#include <limits>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "dalvo/configuration/appliedoptions.h"
#include "dalvo/configuration/ranges.h"
#include "tests/support/golden.h"
#include "tests/support/refusals.h"

namespace {

using dalvo::testing::refuse_each;
using dalvo::testing::report_refused;

/// A range, and its text as memory that never runs out has it.
template <class Range> struct Worded {
    Range range;
    std::string text;
};

template <class Range> struct Wording {
    explicit Wording(const Worded<Range> &w) : expected(w) {}

    void act() { text = expected.range.text(); }
    void refused()
    {
        EXPECT_EQ(text, "");
        act();
    }
    void done() { EXPECT_EQ(text, expected.text); }

    const Worded<Range> &expected;
    std::string text;
};

TEST(ranges_memory, refused_to_the_text_of_a_range_gives_no_part_of_it)
{
    const Worded<dalvo::IntRange> integers = {dalvo::between(-2147483647, 2147483646), "-2147483647 to 2147483646"};
    EXPECT_GE(report_refused(refuse_each<Wording<dalvo::IntRange>>(integers)), 1U);
    const Worded<dalvo::FloatRange> floats = {dalvo::at_most(std::numeric_limits<float>::max()), "at most 3.40282e+38"};
    EXPECT_GE(report_refused(refuse_each<Wording<dalvo::FloatRange>>(floats)), 1U);
}

struct Listing {
    void act() { options = dalvo::applied_options(); }
    void refused()
    {
        EXPECT_TRUE(options.empty());
        act();
    }
    void done() { EXPECT_EQ(options.size(), dalvo::testing::golden_rows("application.tsv", 4).size()); }

    std::vector<dalvo::AppliedOption> options;
};

TEST(applied_options_memory, refused_gives_no_part_of_the_list)
{
    EXPECT_GE(report_refused(refuse_each<Listing>()), 100U) << "names";
}

} // namespace
