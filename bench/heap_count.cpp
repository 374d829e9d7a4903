#include "bench/heap_count.h"

#include <malloc.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <limits>

// The program's own malloc stands before the C library's for all shared libraries of the process, too. The real one is
// reached by the names under which glibc exports it. While nothing is watched, a call costs one more test of a flag.

extern "C" {
void *__libc_malloc(std::size_t size);
void *__libc_calloc(std::size_t count, std::size_t size);
void *__libc_realloc(void *block, std::size_t size);
void *__libc_memalign(std::size_t alignment, std::size_t size);
void __libc_free(void *block);
}

namespace dalvo::bench {

namespace {

bool watching = false;
HeapUse use;
std::int64_t held = 0; // against the start of the watch; blocks from before may be freed meanwhile

void note_taken(void *block, std::size_t size) noexcept
{
    if (block == nullptr) {
        return;
    }
    ++use.allocations;
    use.bytes += size;
    held += static_cast<std::int64_t>(malloc_usable_size(block));
    use.peak = std::max(use.peak, static_cast<std::uint64_t>(std::max<std::int64_t>(held, 0)));
}

void note_given_back(void *block) noexcept
{
    held -= static_cast<std::int64_t>(malloc_usable_size(block));
}

void *noted(void *block, std::size_t size) noexcept
{
    if (__builtin_expect(watching, 0)) {
        note_taken(block, size);
    }
    return block;
}

} // namespace

void keep_freed_memory() noexcept
{
    mallopt(M_TRIM_THRESHOLD, std::numeric_limits<int>::max());
    mallopt(M_MMAP_MAX, 0);
}

void start_watching() noexcept
{
    use = HeapUse();
    held = 0;
    watching = true;
}

HeapUse stop_watching() noexcept
{
    watching = false;
    return use;
}

} // namespace dalvo::bench

extern "C" {

void *malloc(std::size_t size) noexcept
{
    return dalvo::bench::noted(__libc_malloc(size), size);
}

void *calloc(std::size_t count, std::size_t size) noexcept
{
    return dalvo::bench::noted(__libc_calloc(count, size), count * size);
}

void *realloc(void *block, std::size_t size) noexcept
{
    if (dalvo::bench::watching && block != nullptr) {
        dalvo::bench::note_given_back(block);
    }
    return dalvo::bench::noted(__libc_realloc(block, size), size);
}

void *memalign(std::size_t alignment, std::size_t size) noexcept
{
    return dalvo::bench::noted(__libc_memalign(alignment, size), size);
}

void *aligned_alloc(std::size_t alignment, std::size_t size) noexcept
{
    return memalign(alignment, size);
}

int posix_memalign(void **block, std::size_t alignment, std::size_t size) noexcept
{
    *block = memalign(alignment, size);
    return *block != nullptr ? 0 : ENOMEM;
}

void free(void *block) noexcept
{
    if (dalvo::bench::watching && block != nullptr) {
        dalvo::bench::note_given_back(block);
    }
    __libc_free(block);
}

} // extern "C"
