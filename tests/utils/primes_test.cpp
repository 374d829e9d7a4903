#include "dalvo/utils/primes.h"

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <limits>
#include <vector>

#include <gtest/gtest.h>

namespace {

using dalvo::hsh::next_bucket_count;
using dalvo::hsh::primes;

constexpr std::uint64_t largest = std::numeric_limits<std::uint64_t>::max();

TEST(primes, are_these_28)
{
    const std::vector<std::uint64_t> expected = {
        31U,         73U,         151U,        313U,        643U,         1291U,       2593U,
        5233U,       10501U,      21013U,      42073U,      84181U,       168451U,     337219U,
        674701U,     1349473U,    2699299U,    5398891U,    10798093U,    21596719U,   43193641U,
        86387383U,   172775299U,  345550609U,  691101253U,  1382202559U,  2764405229U, 4294867387U,
    };
    EXPECT_EQ(expected.size(), 28U);
    EXPECT_EQ(std::vector<std::uint64_t>(std::begin(primes), std::end(primes)), expected);
}

TEST(primes, about_double_from_one_to_the_next)
{
    for (std::size_t i = 1; i < std::size(primes); ++i) {
        const double factor = static_cast<double>(primes[i]) / static_cast<double>(primes[i - 1]);
        EXPECT_GT(factor, 1.5) << primes[i];
        EXPECT_LT(factor, 2.4) << primes[i];
    }
}

TEST(primes, have_no_divisor)
{
    for (const std::uint64_t prime : primes) {
        bool divided = prime % 2 == 0;
        for (std::uint64_t divisor = 3; divisor * divisor <= prime; divisor += 2) {
            divided = divided || prime % divisor == 0;
        }
        EXPECT_FALSE(divided) << prime;
    }
}

TEST(next_bucket_count, is_the_first_prime_above)
{
    for (std::size_t i = 0; i + 1 < std::size(primes); ++i) {
        EXPECT_EQ(next_bucket_count(primes[i] - 1), primes[i]);
        EXPECT_EQ(next_bucket_count(primes[i]), primes[i + 1]);
        EXPECT_EQ(next_bucket_count(primes[i] + 1), primes[i + 1]);
    }
}

TEST(next_bucket_count, at_its_boundaries)
{
    const struct {
        std::uint64_t n, expected;
        const char *why;
    } rows[] = {
        {0, 31, "no buckets"},
        {30, 31, "just below the first"},
        {31, 73, "the first"},
        {72, 73, "just below the second"},
        {73, 151, "the second"},
        {4294867386U, 4294867387U, "just below the last"},
        {4294867387U, 4294867387U, "the last stays"},
        {4294867388U, 4294867387U, "beyond the last, back to it"},
        {4294967295U, 4294867387U, "the largest of 32 bits"},
        {4294967296U, 4294867387U, "more than 32 bits"},
        {largest - 1, 4294867387U, "the largest that has a successor"},
        {largest, largest, "nothing can be above it"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(next_bucket_count(row.n), row.expected) << row.why;
    }
}

} // namespace
