#include "dalvo/options/optionname.h"

#include <string>
#include <string_view>

#include <gtest/gtest.h>

namespace {

using namespace std::string_literals;
using dalvo::NameSpeller;
using dalvo::OptionName;

TEST(option_name, is_spelt_whole_or_from_two_parts)
{
    const struct {
        OptionName name;
        std::string expected;
    } rows[] = {
        {"verbosity", "verbosity"},
        {{"theory.fp.dpll.", "restart_initial"}, "theory.fp.dpll.restart_initial"},
        {{"", "verbosity"}, "verbosity"},
        {{"theory.", ""}, "theory."},
        {{"", ""}, ""},
        {"", ""},
        {{std::string_view("a\0b", 3), std::string_view("\0\xff", 2)}, "a\0b\0\xff"s},
        {{std::string_view("0123456789012345678901234567890123456789012345678901234567890123456789"), "x"},
         "0123456789012345678901234567890123456789012345678901234567890123456789x"},
    };
    NameSpeller used;
    for (const auto &row : rows) {
        EXPECT_EQ(used(row.name), row.expected);
        EXPECT_EQ(NameSpeller()(row.name), row.expected);
    }
}

} // namespace
