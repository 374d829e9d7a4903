// What the nodes of a hash map cost on the heap, and what is left of the map when the heap refuses them.

#include "dalvo/utils/hashmap.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <new>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/chain_model.h"
#include "tests/support/heap_watch.h"
#include "tests/support/long_names.h"

namespace {

using dalvo::hsh::HashMap;
using dalvo::support::HeapWatch;
using dalvo::testing::Chains;
using dalvo::testing::chains_of;
using dalvo::testing::fill;
using dalvo::testing::numbered;

using Map = dalvo::testing::LongNamesMap;
using Sizes = std::vector<std::size_t>;

static_assert(sizeof(Map::Table::Bucket) == sizeof(void *) + sizeof(Map::Element), "a node is a link and an element");

/// The bytes of a chunk of `nodes` nodes.
std::size_t chunk(std::size_t nodes)
{
    return nodes * sizeof(Map::Table::Bucket) + sizeof(void *);
}

Sizes chunks(const Sizes &nodes)
{
    Sizes sizes;
    for (const std::size_t n : nodes) {
        sizes.push_back(chunk(n));
    }
    return sizes;
}

TEST(node_memory, is_taken_in_chunks_of_16_doubling_up_to_8192)
{
    const struct {
        std::size_t elements;
        Sizes nodes;
        const char *why;
    } rows[] = {
        {0, {}, "an empty map has no chunk"},
        {1, {16}, "the first insertion"},
        {16, {16}, "the first chunk is full"},
        {17, {16, 32}, "the 17th insertion takes the second"},
        {48, {16, 32}, "nothing more up to the 48th"},
        {49, {16, 32, 64}, "the 49th takes the third"},
        {112, {16, 32, 64}, "the third is full"},
        {113, {16, 32, 64, 128}, "the fourth"},
        {8176, {16, 32, 64, 128, 256, 512, 1024, 2048, 4096}, "nine chunks are full"},
        {8177, {16, 32, 64, 128, 256, 512, 1024, 2048, 4096, 8192}, "the tenth has 8192 nodes"},
        {16368, {16, 32, 64, 128, 256, 512, 1024, 2048, 4096, 8192}, "the tenth is full"},
        {16369, {16, 32, 64, 128, 256, 512, 1024, 2048, 4096, 8192, 8192}, "8192 from then on"},
        {24561, {16, 32, 64, 128, 256, 512, 1024, 2048, 4096, 8192, 8192, 8192}, "8192 from then on"},
    };
    HeapWatch watch;
    Map map;
    for (const auto &row : rows) {
        fill(map, row.elements);
        EXPECT_EQ(watch.malloc_sizes(), chunks(row.nodes)) << row.why;
    }
}

TEST(node_memory, has_no_bound_when_it_is_0)
{
    HeapWatch watch;
    Map map(4096, 2.0F, 0);
    fill(map, 4096 + 8192 + 1);
    EXPECT_EQ(watch.malloc_sizes(), chunks({4096, 8192, 16384}));
}

TEST(node_memory, is_not_taken_to_find_a_key)
{
    HeapWatch watch;
    Map map;
    fill(map, 16);
    for (int round = 0; round < 10; ++round) {
        map[numbered(3)];
    }
    EXPECT_EQ(watch.malloc_sizes(), chunks({16}));
}

TEST(node_memory, goes_back_by_chunks_and_only_with_the_map)
{
    HeapWatch watch;
    auto map = std::make_unique<Map>();
    fill(*map, 100);
    EXPECT_EQ(watch.malloc_sizes(), chunks({16, 32, 64}));
    EXPECT_EQ(watch.freed(), Sizes());
    map.reset();
    EXPECT_EQ(watch.freed(), Sizes({2, 1, 0})) << "each once, the last one first";
    EXPECT_EQ(watch.malloc_sizes().size(), 3U);
    EXPECT_EQ(watch.outstanding_new(), 0U) << "the keys, the values and the buckets too";
}

struct ThrowsOnceInANode {
    ThrowsOnceInANode() = default;
    ThrowsOnceInANode(ThrowsOnceInANode &&) = default; // into the candidate
    ThrowsOnceInANode(const ThrowsOnceInANode &) { throw std::bad_alloc(); } // into the node
    ThrowsOnceInANode &operator=(const ThrowsOnceInANode &) = delete;
};

TEST(node_memory, is_kept_for_the_next_element_when_one_could_not_be_made)
{
    HeapWatch watch;
    {
        HashMap<std::string, ThrowsOnceInANode> map;
        for (int round = 0; round < 100; ++round) {
            EXPECT_THROW(map[numbered(1)], std::bad_alloc);
            EXPECT_EQ(map.table().count(), 0U);
        }
        EXPECT_EQ(watch.malloc_sizes().size(), 1U) << "a hundred failures, one chunk";
    }
    EXPECT_EQ(watch.freed(), Sizes({0}));
    EXPECT_EQ(watch.outstanding_new(), 0U);
}

TEST(node_memory, refused_leaves_the_map_as_it_was)
{
    const struct {
        std::size_t stored;
        Sizes nodes; // asked for in all, the refused ones twice
        const char *why;
    } rows[] = {
        {0, {16, 16}, "the first chunk"},
        {16, {16, 32, 32}, "the second chunk"},
        {48, {16, 32, 64, 64}, "the third chunk"},
    };
    for (const auto &row : rows) {
        HeapWatch watch;
        {
            Map map;
            fill(map, row.stored);
            const Chains before = chains_of(map);
            watch.fail_next_malloc();
            EXPECT_THROW(map["new"], std::bad_alloc) << row.why;
            EXPECT_EQ(map.table().count(), row.stored) << row.why;
            EXPECT_EQ(chains_of(map), before) << row.why;
            EXPECT_TRUE(map["new"].empty()) << row.why;
            EXPECT_EQ(map.table().count(), row.stored + 1) << row.why;
            EXPECT_EQ(watch.malloc_sizes(), chunks(row.nodes)) << row.why << ": a refused chunk is asked for again";
        }
        EXPECT_EQ(watch.freed().size(), row.nodes.size() - 1) << row.why;
        EXPECT_EQ(watch.outstanding_new(), 0U) << row.why;
    }
}

TEST(node_memory, of_more_bytes_than_can_be_counted_is_not_asked_for)
{
    constexpr std::size_t most =
        (std::numeric_limits<std::size_t>::max() - sizeof(void *)) / sizeof(Map::Table::Bucket);
    HeapWatch watch;
    Map fits(most, 2.0F, 0);
    watch.fail_next_malloc();
    EXPECT_THROW(fits["a"], std::bad_alloc);
    EXPECT_EQ(watch.malloc_sizes(), chunks({most})) << "the most that can be asked for";
    Map exceeds(most + 1, 2.0F, 0);
    EXPECT_THROW(exceeds["a"], std::bad_alloc);
    EXPECT_EQ(exceeds.table().count(), 0U);
    EXPECT_EQ(watch.malloc_sizes().size(), 1U) << "one node more is not asked for";
}

} // namespace
