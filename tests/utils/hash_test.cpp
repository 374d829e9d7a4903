#include "dalvo/utils/hash.h"

#include <cstdint>
#include <random>
#include <string>
#include <type_traits>

#include <gtest/gtest.h>

namespace {

using namespace std::string_literals;

std::uint64_t hash_of(const std::string &key)
{
    return dalvo::hsh::hash<std::string>()(key);
}

/// The same polynomial by another way: the sum of each character times its power of 5, from the last one backwards.
std::uint64_t sum_of_powers(const std::string &key)
{
    const std::string head = key.substr(0, key.find('\0'));
    std::uint64_t sum = 0;
    std::uint64_t power = 1;
    for (auto at = head.rbegin(); at != head.rend(); ++at) {
        const std::uint64_t byte = static_cast<unsigned char>(*at);
        sum += power * byte;
        if (byte >= 0x80) {
            sum -= power * 0x100;
        }
        power *= 5;
    }
    return sum;
}

TEST(hash, of_known_keys)
{
    const struct {
        std::string key;
        std::uint64_t expected;
        const char *why;
    } rows[] = {
        {"", 0, "empty"},
        {"\x01", 1, "the least character"},
        {"a", 97, "one character is its own code"},
        {"ab", 583, "5 * 97 + 98"},
        {"ba", 587, "order counts"},
        {"name", 16821, "ASCII"},
        {"\x7f", 127, "the last positive character"},
        {"\x80", 18446744073709551488U, "2^64 - 128"},
        {"\xff", 18446744073709551615U, "2^64 - 1"},
        {"\xff\x01", 18446744073709551612U, "5 * -1 + 1"},
        {"\xc3\xa9", 18446744073709551224U, "a letter in UTF-8"},
        {"section.with.a.rather.long.name", 5823295711228536943U, "wraps around"},
        {std::string(40, 'z'), 14306142532128979952U, "wraps around"},
        {std::string(40, '\x80'), 10694756134574707712U, "wraps around below 0"},
        {"\0"s, 0, "NUL alone"},
        {"\0a"s, 0, "ends at a NUL at the start"},
        {"a\0b"s, 97, "ends at a NUL in the middle"},
        {"ab\0"s, 583, "ends at a NUL at the end"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(hash_of(row.key), row.expected) << row.why;
    }
}

TEST(hash, is_a_sum_of_powers_of_5_over_all_keys_of_up_to_two_bytes)
{
    for (int first = 0; first <= 0xff; ++first) {
        const std::string one(1, static_cast<char>(first));
        ASSERT_EQ(hash_of(one), sum_of_powers(one)) << first;
        for (int second = 0; second <= 0xff; ++second) {
            const std::string two = one + static_cast<char>(second);
            ASSERT_EQ(hash_of(two), sum_of_powers(two)) << first << ' ' << second;
        }
    }
}

TEST(hash, is_a_sum_of_powers_of_5_over_random_keys)
{
    std::mt19937 random(5);
    for (int round = 0; round < 2000; ++round) {
        std::string key(random() % 200, ' ');
        for (char &c : key) {
            c = static_cast<char>(random() & 0xffU);
        }
        ASSERT_EQ(hash_of(key), sum_of_powers(key)) << testing::PrintToString(key);
    }
}

TEST(hash, is_a_sum_of_powers_of_5_with_the_greatest_and_the_least_character_anywhere)
{
    for (std::size_t size = 1; size <= 25; ++size) {
        for (const char usual : {'\x01', '\x7f', '\x80', '\xff'}) {
            for (const char other : {'\x01', '\x7f', '\x80', '\xff', '\0'}) {
                for (std::size_t at = 0; at < size; ++at) {
                    std::string key(size, usual);
                    key[at] = other;
                    ASSERT_EQ(hash_of(key), sum_of_powers(key)) << testing::PrintToString(key);
                }
            }
        }
    }
}

TEST(hash, is_equal_for_keys_that_differ_behind_a_nul)
{
    EXPECT_EQ(hash_of("a"), hash_of("a\0b"s));
    EXPECT_EQ(hash_of("a\0b"s), hash_of("a\0c"s));
    EXPECT_NE("a"s, "a\0b"s);
}

static_assert(std::is_same_v<std::invoke_result_t<const dalvo::hsh::hash<std::string> &, const std::string &>,
                             std::uint64_t>,
              "64 bits, whatever the machine");
static_assert(std::is_empty_v<dalvo::hsh::hash<std::string>>, "stateless");

} // namespace
