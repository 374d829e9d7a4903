#pragma once

#include <cstdint>

namespace dalvo::bench {

/// What the process asked of the heap while it was watched: every malloc, calloc, realloc and aligned request, from
/// whichever library it came, and so every `operator new`.
struct HeapUse {
    std::uint64_t allocations = 0;
    std::uint64_t bytes = 0; ///< as asked for
    std::uint64_t peak = 0;  ///< largest growth of what was held at one time, in bytes as the heap rounds them
};

/// Makes the heap keep what it has got from the system. Whether freed memory goes back at once, to be fetched again by
/// the next run, depends on what happens to lie behind it, and costs more than most of what is measured here.
void keep_freed_memory() noexcept;

/// Watches the heap from here to `stop_watching`. One thread, not nested.
void start_watching() noexcept;
HeapUse stop_watching() noexcept;

} // namespace dalvo::bench
