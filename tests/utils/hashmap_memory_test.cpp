// What is left of a hash map when the heap refuses.

#include "dalvo/utils/hashmap.h"

#include <cstddef>
#include <new>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/chain_model.h"
#include "tests/support/heap_watch.h"
#include "tests/support/long_names.h"
#include "tests/support/refusals.h"

namespace {

using dalvo::hsh::HashMap;
using dalvo::support::HeapWatch;
using dalvo::testing::Chains;
using dalvo::testing::chains_of;
using dalvo::testing::fill;
using dalvo::testing::numbered;
using dalvo::testing::refuse_each;
using dalvo::testing::report_refused;

using Map = dalvo::testing::LongNamesMap;

/// One access to a map of `stored` elements, and its chains as a map has them that memory never ran out on.
struct Access {
    Access(std::size_t elements, const std::string &accessed) : stored(elements), key(accessed)
    {
        Map map;
        fill(map, stored);
        before = chains_of(map);
        if (stored > 0) {
            map[numbered(0)]; // finds it, and makes the table grow where that is due
        }
        grown = chains_of(map);
        map[key];
        after = chains_of(map);
        count_after = map.table().count();
    }

    std::size_t stored;
    std::string key;
    Chains before, grown, after;
    std::size_t count_after = 0;
};

struct Accessing {
    explicit Accessing(const Access &a) : access(a) { fill(map, access.stored); }

    void act() { map[access.key]; }

    void refused()
    {
        EXPECT_EQ(map.table().count(), access.stored);
        const Chains chains = chains_of(map);
        EXPECT_TRUE(chains == access.before || chains == access.grown) << "neither as before nor merely grown";
        act();
    }

    void done()
    {
        EXPECT_EQ(map.table().count(), access.count_after);
        EXPECT_EQ(chains_of(map), access.after);
    }

    const Access &access;
    Map map;
};

TEST(hash_map_memory, refused_to_an_insertion_leaves_the_map_as_it_was_at_every_size)
{
    std::size_t all = 0;
    for (std::size_t stored = 0; stored <= 160; ++stored) {
        SCOPED_TRACE(stored);
        const Access access(stored, numbered(1000));
        EXPECT_EQ(access.count_after, stored + 1);
        const bool needs_chunk = stored == 0 || stored == 16 || stored == 48 || stored == 112;
        const bool needs_buckets = access.grown != access.before;
        EXPECT_EQ(needs_buckets, stored == 22 || stored == 52 || stored == 106);
        const std::size_t refused = refuse_each<Accessing>(access);
        EXPECT_EQ(refused, 2U + (needs_chunk ? 1 : 0) + (needs_buckets ? 1 : 0)) << "the candidate's key, the node's";
        all += refused;
    }
    report_refused(all);
}

TEST(hash_map_memory, refused_to_a_look_up_leaves_the_map_as_it_was)
{
    std::size_t all = 0;
    for (const std::size_t stored : {1U, 16U, 21U, 22U, 23U, 51U, 52U, 53U, 106U}) {
        SCOPED_TRACE(stored);
        const Access access(stored, numbered(stored / 2));
        EXPECT_EQ(access.count_after, stored);
        const bool needs_buckets = access.grown != access.before;
        const std::size_t refused = refuse_each<Accessing>(access);
        EXPECT_EQ(refused, 1U + (needs_buckets ? 1 : 0)) << "the candidate's key";
        all += refused;
    }
    report_refused(all);
}

TEST(hash_map_memory, refused_for_the_first_buckets_makes_no_map)
{
    HeapWatch watch;
    watch.fail_new(1);
    EXPECT_THROW(Map(), std::bad_alloc);
    EXPECT_EQ(watch.outstanding_new(), 0U);
    EXPECT_TRUE(watch.malloc_sizes().empty());
}

} // namespace
