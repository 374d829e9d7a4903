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

    /// Makes the n-th allocation from now on (at least 1) fail, `malloc` and `operator new` counted together, and with
    /// `and_later` all that follow it, too. Stays until then, or until 0.
    static void fail_allocation(std::size_t n, bool and_later = false) noexcept;

    /// How many allocations `fail_allocation` has made fail so far.
    static std::size_t failures() noexcept;

    /// The bytes that were asked of `operator new` so far, all calls together, failed ones excepted.
    static std::size_t bytes_of_new() noexcept;

    /// The sizes asked of `malloc` so far, in order, failed calls included.
    static std::vector<std::size_t> malloc_sizes();

    /// Which of these blocks (by their index) were given to `free` so far, in order.
    static std::vector<std::size_t> freed();

    /// How many blocks of `operator new` made under this watch are not deleted yet.
    static std::size_t outstanding_new() noexcept;

    /// How many blocks of `malloc` made under this watch are not freed yet.
    static std::size_t outstanding_malloc() noexcept;

    /// Whether there was room to note each block so far: 64 of `malloc`, some thousands of `operator new` at once. The
    /// counts of outstanding blocks leave out those that are not noted.
    static bool has_noted_all() noexcept;
};

} // namespace dalvo::support
