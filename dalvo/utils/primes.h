#pragma once

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <limits>

namespace dalvo::hsh {

// clang-format off
/// The bucket counts that a table grows through, each about twice the one before.
inline constexpr std::uint64_t primes[28] = {
    31,        73,        151,        313,        643,        1291,       2593,
    5233,      10501,     21013,      42073,      84181,      168451,     337219,
    674701,    1349473,   2699299,    5398891,    10798093,   21596719,   43193641,
    86387383,  172775299, 345550609,  691101253,  1382202559, 2764405229, 4294867387,
};
// clang-format on

/// The bucket count that follows `n` (any): the first of `primes` above it, else the last; `n` itself when nothing can
/// be above it.
inline std::uint64_t next_bucket_count(std::uint64_t n) noexcept
{
    if (n == std::numeric_limits<std::uint64_t>::max()) {
        return n;
    }
    const std::uint64_t *found = std::lower_bound(std::begin(primes), std::end(primes), n + 1);
    return found == std::end(primes) ? *std::prev(found) : *found;
}

} // namespace dalvo::hsh
