#pragma once

#include <string>

namespace dalvo::hsh {

/// Starts to fetch the memory at `address` (any; null, too) into the caches, where the compiler can ask for it.
inline void prefetch(const void *address) noexcept
{
#ifdef __GNUC__
    __builtin_prefetch(address);
#else
    static_cast<void>(address);
#endif
}

/// Starts to fetch what a key refers to beyond itself: nothing, where no overload says more.
template <class Key> void prefetch_key(const Key &) noexcept {}

/// Starts to fetch the characters of `key` (any).
inline void prefetch_key(const std::string &key) noexcept
{
    prefetch(key.data());
}

} // namespace dalvo::hsh
