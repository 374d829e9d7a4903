#pragma once

#include <cstdint>
#include <string>

namespace dalvo::hsh {

/// The hash functor of HashMap; defined for the key types below.
template <class Key> struct hash;

/// The polynomial h = 5 h + c over the bytes before the first NUL, each taken as a signed 8-bit value, modulo 2^64; the
/// empty key hashes to 0. A fixed function: equal on every run and machine, and known to whoever chooses the keys.
template <> struct hash<std::string> {
    std::uint64_t operator()(const std::string &key) const noexcept
    {
        std::uint64_t h = 0;
        for (const char *at = key.c_str(); *at != '\0'; ++at) {
            h = 5 * h + static_cast<std::uint64_t>(std::int64_t{static_cast<signed char>(*at)});
        }
        return h;
    }
};

} // namespace dalvo::hsh
