#include "tests/support/heap_watch.h"

#include <algorithm>
#include <cstdint>
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

/// Addresses, each at the first free slot from its own on, and near it, so that no search is long.
class BlockSet {
public:
    /// False where there is no room left.
    bool insert(void *block) noexcept
    {
        void **const slot = find([](const void *held) { return held == nullptr || held == gone(); }, block);
        if (slot == nullptr) {
            return false;
        }
        *slot = block;
        ++count;
        return true;
    }

    /// A block that was never inserted is none of the set's business.
    void erase(const void *block) noexcept
    {
        void **const slot = find([&](const void *held) { return held == nullptr || held == block; }, block);
        if (slot != nullptr && *slot == block) {
            *slot = gone();
            --count;
        }
    }

    std::size_t size() const noexcept { return count; }

private:
    static void *gone() noexcept
    {
        static char mark;
        return &mark;
    }

    /// The first slot from that of `block` on whose content `fits`; null when none near does.
    template <class Fits> void **find(Fits fits, const void *block) noexcept
    {
        const std::size_t home = reinterpret_cast<std::uintptr_t>(block) / 16 % std::size(slots);
        for (std::size_t i = 0; i < reach; ++i) {
            void **const slot = &slots[(home + i) % std::size(slots)];
            if (fits(*slot)) {
                return slot;
            }
        }
        return nullptr;
    }

    static constexpr std::size_t reach = 256;

    void *slots[8192] = {};
    std::size_t count = 0;
};

/// All that is noted, in fixed arrays: nothing here may allocate. What does not fit is not noted.
struct Notes {
    bool watching = false;
    bool malloc_fails = false;
    std::size_t new_until_failure = 0; // 0: none fails
    std::size_t until_failure = 0;     // of either kind; 0: none fails
    bool failure_stays = false;
    std::size_t failures = 0;
    bool complete = true;
    Malloc mallocs[64] = {};
    std::size_t malloc_count = 0;
    std::size_t frees[64] = {};
    std::size_t free_count = 0;
    BlockSet news;
    std::size_t bytes_of_new = 0;

    /// Counts an allocation of either kind; whether it is to fail.
    bool refuses() noexcept
    {
        if (until_failure == 0) {
            return false;
        }
        if (until_failure > 1) {
            --until_failure;
            return false;
        }
        until_failure = failure_stays ? 1 : 0;
        ++failures;
        return true;
    }
};

Notes notes;

void *noted_malloc(std::size_t size)
{
    if (!notes.watching) {
        return __real_malloc(size);
    }
    const bool fails = notes.refuses() || notes.malloc_fails;
    void *const block = fails ? nullptr : __real_malloc(size);
    notes.malloc_fails = false;
    if (notes.malloc_count < std::size(notes.mallocs)) {
        notes.mallocs[notes.malloc_count++] = {size, block};
    } else {
        notes.complete = false;
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
    if (notes.refuses() || (notes.new_until_failure != 0 && --notes.new_until_failure == 0)) {
        throw std::bad_alloc();
    }
    void *const block = __real_malloc(size != 0 ? size : 1);
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    if (notes.watching && !notes.news.insert(block)) {
        notes.complete = false;
    }
    notes.bytes_of_new += notes.watching ? size : 0;
    return block;
}

void noted_delete(void *block) noexcept
{
    if (notes.watching && block != nullptr) {
        notes.news.erase(block);
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

void HeapWatch::fail_allocation(std::size_t n, bool and_later) noexcept
{
    notes.until_failure = n;
    notes.failure_stays = and_later;
}

std::size_t HeapWatch::failures() noexcept
{
    return notes.failures;
}

std::size_t HeapWatch::bytes_of_new() noexcept
{
    return notes.bytes_of_new;
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
    return notes.news.size();
}

std::size_t HeapWatch::outstanding_malloc() noexcept
{
    const auto is_held = [](const Malloc &m) { return m.block != nullptr; };
    return static_cast<std::size_t>(std::count_if(notes.mallocs, notes.mallocs + notes.malloc_count, is_held));
}

bool HeapWatch::has_noted_all() noexcept
{
    return notes.complete;
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

void *operator new(std::size_t size, const std::nothrow_t &) noexcept
{
    try {
        return operator new(size);
    } catch (const std::bad_alloc &) {
        return nullptr;
    }
}

void operator delete(void *block) noexcept
{
    dalvo::support::noted_delete(block);
}

void operator delete(void *block, std::size_t) noexcept
{
    dalvo::support::noted_delete(block);
}
