#include "dalvo/utils/editdistance.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using namespace std::string_literals;
using dalvo::str::edit_distance;

constexpr std::size_t largest = std::numeric_limits<std::size_t>::max();

TEST(edit_distance, of_known_pairs)
{
    const struct {
        std::string a, b;
        std::size_t expected;
        const char *why;
    } rows[] = {
        {"", "", 0, "nothing to do"},
        {"a", "a", 0, "equal"},
        {"", "abc", 3, "insert all"},
        {"abc", "", 3, "delete all"},
        {"a", "b", 1, "one replaced"},
        {"abc", "abcd", 1, "one at the end"},
        {"bcd", "abcd", 1, "one at the start"},
        {"abd", "abcd", 1, "one in the middle"},
        {"ab", "ba", 1, "two neighbours swapped"},
        {"abcd", "badc", 2, "twice two neighbours swapped"},
        {"abc", "cab", 2, "no neighbours"},
        {"ca", "abc", 3, "what is swapped stays as it is"},
        {"kitten", "sitting", 3, "two replaced, one inserted"},
        {"flaw", "lawn", 2, "one deleted, one inserted"},
        {"abc", "xyz", 3, "nothing in common"},
        {"a", "A", 1, "case counts"},
        {"\0a"s, "a", 1, "NUL is a byte"},
        {"a\0b"s, "a\0c"s, 1, "and does not end a text"},
        {"\xc3\xa9", "e", 2, "bytes, not characters"},
        {"\xff", "\x7f", 1, "bytes above 0x7f"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(edit_distance(row.a, row.b, 10), row.expected) << row.why;
        EXPECT_EQ(edit_distance(row.b, row.a, 10), row.expected) << row.why << ", the other way round";
        EXPECT_EQ(edit_distance(row.a, row.b, row.expected), row.expected) << row.why << ", at the limit";
        if (row.expected > 0) {
            EXPECT_GT(edit_distance(row.a, row.b, row.expected - 1), row.expected - 1) << row.why << ", above it";
        }
    }
}

TEST(edit_distance, of_different_texts_is_above_a_limit_of_0)
{
    EXPECT_GT(edit_distance("a", "b", 0), 0U);
    EXPECT_GT(edit_distance("a", "ab", 0), 0U);
    EXPECT_GT(edit_distance("ab", "ba", 0), 0U);
    EXPECT_EQ(edit_distance("ab", "ab", 0), 0U);
}

/// By the whole matrix.
std::size_t full_matrix(const std::string &a, const std::string &b)
{
    std::vector<std::vector<std::size_t>> d(a.size() + 1, std::vector<std::size_t>(b.size() + 1));
    for (std::size_t i = 0; i <= a.size(); ++i) {
        for (std::size_t j = 0; j <= b.size(); ++j) {
            if (i == 0 || j == 0) {
                d[i][j] = i + j;
            } else {
                const std::size_t replaced = d[i - 1][j - 1] + (a[i - 1] == b[j - 1] ? 0U : 1U);
                d[i][j] = std::min({d[i - 1][j] + 1, d[i][j - 1] + 1, replaced});
                if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1]) {
                    d[i][j] = std::min(d[i][j], d[i - 2][j - 2] + 1);
                }
            }
        }
    }
    return d[a.size()][b.size()];
}

/// A random text of up to 12 bytes out of `alphabet`.
std::string random_text(std::mt19937 &random, const std::string &alphabet)
{
    std::string text(random() % 13, ' ');
    for (char &c : text) {
        c = alphabet[random() % alphabet.size()];
    }
    return text;
}

TEST(edit_distance, agrees_with_the_full_matrix_on_random_texts_and_all_limits)
{
    std::mt19937 random(1965);
    for (const std::string &alphabet : {"ab"s, "abcd"s, "a\0\x80\xff"s, "a"s}) {
        for (int round = 0; round < 1500; ++round) {
            const std::string a = random_text(random, alphabet);
            const std::string b = random_text(random, alphabet);
            const std::size_t expected = full_matrix(a, b);
            for (std::size_t limit = 0; limit <= 14; ++limit) {
                const std::size_t distance = edit_distance(a, b, limit);
                const bool is_right = expected <= limit ? distance == expected : distance > limit;
                ASSERT_TRUE(is_right) << testing::PrintToString(a) << ", " << testing::PrintToString(b) << ", limit "
                                      << limit << ": " << distance << ", by the matrix " << expected;
            }
        }
    }
}

TEST(edit_distance, is_exact_up_to_the_largest_limits)
{
    std::mt19937 random(1966);
    for (int round = 0; round < 200; ++round) {
        const std::string a = random_text(random, "abc");
        const std::string b = random_text(random, "abc");
        for (const std::size_t limit : {largest / 2, largest - 13, largest - 2, largest - 1, largest}) {
            ASSERT_EQ(edit_distance(a, b, limit), full_matrix(a, b)) << a << ", " << b << ", limit " << limit;
        }
    }
}

} // namespace
