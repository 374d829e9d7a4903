#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

#include "dalvo/export.h"

namespace dalvo::hsh {

/// The hash functor of HashMap; defined for the key types below.
template <class Key> struct DALVO_API hash;

/// The polynomial h = 5 h + c over the bytes before the first NUL, each taken as a signed 8-bit value, modulo 2^64; the
/// empty key hashes to 0. A fixed function: equal on every run and machine, and known to whoever chooses the keys.
///
/// Computed with 128 added to each character, so that none is negative, from -32 instead of 0: since 5 (h - 32) + (c +
/// 128) = (5 h + c) - 32, every step is 32 below the polynomial's.
template <> struct DALVO_API hash<std::string> {
    /// The polynomial of `key` (any bytes, may be empty, may hold NUL). Time in the order of the bytes before the NUL.
    std::uint64_t operator()(const std::string &key) const noexcept
    {
        const char *at = key.c_str();
        std::size_t left = std::strlen(at);
        std::uint64_t h = std::uint64_t{0} - 32;
        for (; left >= 8; left -= 8, at += 8) {
            h = 390625 * h + eight_characters(at); // 5^8
        }
        for (; left != 0; --left, ++at) {
            h = 5 * h + (byte(*at) ^ 0x80U);
        }
        return h + 32;
    }

private:
    static std::uint64_t byte(char c) noexcept { return static_cast<unsigned char>(c); }

    /// The polynomial of eight characters, 128 added to each; all within one word, neighbours joined at once. First to
    /// four pairs of 16 bits each; then the first and third, and the second and fourth pair, come to stand upon each
    /// other in the upper half of a product, each multiplied by its power of 25.
    static std::uint64_t eight_characters(const char *at) noexcept
    {
        std::uint64_t word = byte(at[0]) | byte(at[1]) << 8U | byte(at[2]) << 16U | byte(at[3]) << 24U |
                             byte(at[4]) << 32U | byte(at[5]) << 40U | byte(at[6]) << 48U | byte(at[7]) << 56U;
        word ^= 0x8080808080808080U;
        const std::uint64_t pairs = 5 * (word & 0x00FF00FF00FF00FFU) + (word >> 8U & 0x00FF00FF00FF00FFU);
        const std::uint64_t odd = pairs & 0x0000FFFF0000FFFFU;         // the first and the third
        const std::uint64_t even = pairs >> 16U & 0x0000FFFF0000FFFFU; // the second and the fourth
        constexpr std::uint64_t upper = std::uint64_t{1} << 32U;
        return (odd * (15625 * upper + 25) + even * (625 * upper + 1)) >> 32U;
    }
};

} // namespace dalvo::hsh
