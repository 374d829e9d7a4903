#include "dalvo/options/nearby.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Names = std::vector<std::string>;

Names nearby(const Names &candidates, const std::string &name, std::size_t most = 100)
{
    dalvo::NearbyNames names(name);
    for (const std::string &candidate : candidates) {
        names.offer(candidate);
    }
    return names.nearest(most);
}

TEST(nearby_names, allows_one_edit_for_each_three_bytes_of_the_name_and_at_most_three)
{
    const struct {
        const char *name, *registered;
        bool is_near;
        const char *why;
    } rows[] = {
        {"a", "a", true, "the name itself"},
        {"a", "b", false, "no edit at one byte"},
        {"ab", "ac", false, "no edit at two bytes"},
        {"ab", "abc", false, "the name's own length counts, not the registered one's"},
        {"abc", "abd", true, "one edit at three bytes: replaced"},
        {"abc", "ab", true, "one edit at three bytes: left out"},
        {"abc", "abcd", true, "one edit at three bytes: put in"},
        {"abc", "axd", false, "two edits at three bytes"},
        {"abc", "acb", true, "two neighbours swapped are one edit"},
        {"abc", "cba", false, "others swapped are two"},
        {"abcde", "abcdX", true, "one edit at five bytes"},
        {"abcde", "abcXX", false, "two edits at five bytes"},
        {"abcde", "abcdefg", false, "two edits at five bytes, though the registered name has seven"},
        {"abcdef", "abcdXX", true, "two edits at six bytes"},
        {"abcdef", "badcef", true, "two swaps at six bytes"},
        {"abcdef", "abcQQQ", false, "three edits at six bytes"},
        {"abcdefgh", "abcdefXX", true, "two edits at eight bytes"},
        {"abcdefgh", "abcdeQQQ", false, "three edits at eight bytes"},
        {"abcdefgh", "abcdefghijk", false, "three edits at eight bytes, though the registered name has eleven"},
        {"abcdefghi", "abcdefQQQ", true, "three edits at nine bytes"},
        {"abcdefghi", "abcdef", true, "three left out at nine bytes"},
        {"abcdefghi", "XabcdXefghXi", true, "three put in at nine bytes"},
        {"abcdefghi", "abcdeQQQX", false, "four edits at nine bytes"},
        {"abcdefghi", "abcde", false, "four left out at nine bytes"},
        {"abcdefghijkl", "abcdefghiQQQ", true, "three edits at twelve bytes"},
        {"abcdefghijkl", "abcdefghQQQX", false, "four edits at twelve bytes: three are the most"},
        {"abcdefghijklmnopqrstuvwxyz", "abcdefghijklmnopqrstuvQQQX", false, "four edits at twenty-six bytes"},
        {"VERBOSITY", "verbosity", true, "letters of the other case"},
        {"Verbosity", "verbosity", true, "a letter of the other case"},
        {"VERBOSITYY", "verbosity", true, "letters of the other case are no edits beside one that is"},
        {"VERBOSITYYYY", "verbosity", true, "three edits"},
        {"ABC", "abd", true, "one edit at three bytes"},
        {"ABC", "xbd", false, "two edits at three bytes"},
        {"mode", "dpll.preprocessor.mode", true, "behind the last point"},
        {"Preprocessor.Mode", "dpll.preprocessor.mode", true, "behind a point, in letters of the other case"},
        {"ode", "dpll.preprocessor.mode", false, "not behind a point"},
        {"moda", "dpll.preprocessor.mode", false, "a slip behind a point"},
        {"dpll", "dpll.preprocessor.mode", false, "before a point"},
        {".mode", "dpll.preprocessor.mode", false, "with the point"},
        {"e", "a.e", true, "one byte behind a point"},
        {"", "a.", false, "nothing behind a point"},
        {"", "a", false, "an empty name is a slip for nothing"},
        {"a", "", false, "nor is a byte a slip for an empty name"},
        {"abc", "", false, "three bytes away"},
        {"", "", true, "an empty name that is registered"},
        {"ab\x80", "ab\xff", true, "bytes above 0x7F"},
        {"ab\x80", "a\xfe\xff", false, "two bytes above 0x7F"},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.why);
        EXPECT_EQ(nearby({row.registered}, row.name), row.is_near ? Names{row.registered} : Names{});
    }
}

TEST(nearby_names, that_the_name_is_the_end_of_come_before_slips)
{
    const Names registered = {"nodes", "dpll.mode", "mose", "x.y.MODE"};
    EXPECT_EQ(nearby(registered, "mode"), (Names{"dpll.mode", "x.y.MODE", "mose"}));
}

TEST(nearby_names, come_nearest_first_and_equally_near_ones_in_their_order)
{
    const Names registered = {"abcdefQQQ", "abcdefghX", "far away", "abcdefghi", "abcdefgXX", "Xbcdefghi", "abcdefgYY"};
    EXPECT_EQ(nearby(registered, "abcdefghi"),
              (Names{"abcdefghi", "abcdefghX", "Xbcdefghi", "abcdefgXX", "abcdefgYY", "abcdefQQQ"}));
    EXPECT_EQ(nearby({"abd", "abe", "abf"}, "abc"), (Names{"abd", "abe", "abf"}));
    EXPECT_EQ(nearby({"abf", "abe", "abd"}, "abc"), (Names{"abf", "abe", "abd"}));
}

TEST(nearby_names, keep_their_order_among_many_equally_near_ones)
{
    Names registered;
    for (char c = 'z'; c >= 'a'; --c) {
        registered.push_back(std::string("verbosit") + c);
    }
    const Names found = nearby(registered, "verbosit_");
    EXPECT_EQ(found, registered);
}

TEST(nearby_names, are_cut_to_the_nearest_when_there_are_more_than_wanted)
{
    const Names registered = {"abcdXX", "abcdeX", "abcdef", "abcdeY"};
    const Names all = {"abcdef", "abcdeX", "abcdeY", "abcdXX"};
    for (std::size_t most = 0; most <= all.size(); ++most) {
        EXPECT_EQ(nearby(registered, "abcdef", most),
                  Names(all.begin(), all.begin() + static_cast<std::ptrdiff_t>(most)));
    }
    EXPECT_EQ(nearby(registered, "abcdef", all.size() + 1), all);
    EXPECT_EQ(nearby(registered, "abcdef", static_cast<std::size_t>(-1)), all);
}

TEST(nearby_names, are_none_where_nothing_is_registered_or_near)
{
    EXPECT_EQ(nearby({}, "verbosity"), Names{});
    EXPECT_EQ(nearby({}, ""), Names{});
    EXPECT_EQ(nearby({"random_seed", "proof"}, "verbosity"), Names{});
}

TEST(nearby_names, go_on_behind_a_nul)
{
    const std::string name("ab\0cd\0", 6);
    const std::string near_one("ab\0cd\0e", 7);
    const std::string far_one("ab\0xyz", 6);
    EXPECT_EQ(nearby({far_one, near_one}, name), Names{near_one});
}

TEST(nearby_names, of_a_megabyte_are_found_by_their_slips_alone)
{
    const std::string name(1U << 20U, 'x');
    const std::string near_one = "y" + name.substr(2) + "z"; // replaced at both ends
    const std::string far_one(1U << 20U, 'y');
    EXPECT_EQ(nearby({far_one, near_one, name + "abc", name + "abcd"}, name), (Names{near_one, name + "abc"}));
}

} // namespace
