#include "tests/support/heap_watch.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <new>

extern "C" {
void *__real_malloc(std::size_t size);
void __real_free(void *block);
void *__wrap_malloc(std::size_t size);
void __wrap_free(void *block);
}

namespace dalvo::support {

namespace {

struct Malloc {
    std::size_t size;
    void *block; // null: failed or freed
};

/// All that is noted, in fixed arrays: nothing here may allocate. What does not fit is not noted.
struct Notes {
    bool watching = false;
    bool malloc_fails = false;
    std::size_t new_until_failure = 0; // 0: none fails
    Malloc mallocs[64] = {};
    std::size_t malloc_count = 0;
    std::size_t frees[64] = {};
    std::size_t free_count = 0;
    void *news[256] = {};
};

Notes notes;

void *noted_malloc(std::size_t size)
{
    if (!notes.watching) {
        return __real_malloc(size);
    }
    void *const block = notes.malloc_fails ? nullptr : __real_malloc(size);
    notes.malloc_fails = false;
    if (notes.malloc_count < std::size(notes.mallocs)) {
        notes.mallocs[notes.malloc_count++] = {size, block};
    }
    return block;
}

void noted_free(void *block)
{
    Malloc *const end = notes.mallocs + notes.malloc_count;
    Malloc *const found = std::find_if(notes.mallocs, end, [&](const Malloc &m) { return m.block == block; });
    if (notes.watching && block != nullptr && found != end) {
        found->block = nullptr;
        notes.frees[notes.free_count++] = static_cast<std::size_t>(found - notes.mallocs);
    }
    __real_free(block);
}

void *noted_new(std::size_t size)
{
    if (notes.new_until_failure != 0 && --notes.new_until_failure == 0) {
        throw std::bad_alloc();
    }
    void *const block = __real_malloc(size != 0 ? size : 1);
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    if (notes.watching) {
        void **const slot = std::find(std::begin(notes.news), std::end(notes.news), nullptr);
        if (slot != std::end(notes.news)) {
            *slot = block;
        }
    }
    return block;
}

void noted_delete(void *block) noexcept
{
    if (notes.watching && block != nullptr) {
        std::replace(std::begin(notes.news), std::end(notes.news), block, static_cast<void *>(nullptr));
    }
    __real_free(block);
}

} // namespace

HeapWatch::HeapWatch() noexcept
{
    notes = Notes();
    notes.watching = true;
}

HeapWatch::~HeapWatch()
{
    notes = Notes();
}

void HeapWatch::fail_next_malloc() noexcept
{
    notes.malloc_fails = true;
}

void HeapWatch::fail_new(std::size_t n) noexcept
{
    notes.new_until_failure = n;
}

std::vector<std::size_t> HeapWatch::malloc_sizes()
{
    std::vector<std::size_t> sizes;
    for (std::size_t i = 0; i < notes.malloc_count; ++i) {
        sizes.push_back(notes.mallocs[i].size);
    }
    return sizes;
}

std::vector<std::size_t> HeapWatch::freed()
{
    return std::vector<std::size_t>(notes.frees, notes.frees + notes.free_count);
}

std::size_t HeapWatch::outstanding_new() noexcept
{
    const auto idle = std::count(std::begin(notes.news), std::end(notes.news), nullptr);
    return std::size(notes.news) - static_cast<std::size_t>(idle);
}

} // namespace dalvo::support

void *__wrap_malloc(std::size_t size)
{
    return dalvo::support::noted_malloc(size);
}

void __wrap_free(void *block)
{
    dalvo::support::noted_free(block);
}

void *operator new(std::size_t size)
{
    return dalvo::support::noted_new(size);
}

void operator delete(void *block) noexcept
{
    dalvo::support::noted_delete(block);
}

void operator delete(void *block, std::size_t) noexcept
{
    dalvo::support::noted_delete(block);
}
