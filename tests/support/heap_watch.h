#pragma once

#include <cstddef>
#include <vector>

namespace dalvo::support {

/// While it lives, it notes each `malloc` that the objects of this program call, each `free` of such a block, and the
/// use of the global `operator new`; and it can make them fail. At most one lives at a time, in one thread.
///
/// A program that uses it links heap_watch.cpp with -Wl,--wrap=malloc,--wrap=free: calls that the program's own objects
/// (templates of the library included) make are seen, those inside of shared libraries are not. Nothing is replaced
/// for good, so that sanitizers and other allocators below work as ever. `operator new` is seen everywhere; valgrind
/// puts its own in its place unless it is run with --soname-synonyms=somalloc=nouserintercepts.
class HeapWatch {
public:
    HeapWatch() noexcept;
    ~HeapWatch();

    HeapWatch(const HeapWatch &) = delete;
    HeapWatch &operator=(const HeapWatch &) = delete;

    /// Makes the next `malloc` return null. Stays until then.
    static void fail_next_malloc() noexcept;

    /// Makes the n-th `operator new` from now on (at least 1) throw std::bad_alloc. Stays until then, or until 0.
    static void fail_new(std::size_t n) noexcept;

    /// The sizes asked of `malloc` so far, in order, failed calls included.
    static std::vector<std::size_t> malloc_sizes();

    /// Which of these blocks (by their index) were given to `free` so far, in order.
    static std::vector<std::size_t> freed();

    /// How many blocks of `operator new` made under this watch are not deleted yet.
    static std::size_t outstanding_new() noexcept;
};

} // namespace dalvo::support
