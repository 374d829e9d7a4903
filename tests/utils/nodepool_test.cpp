#include "dalvo/utils/nodepool.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <new>
#include <set>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

namespace {

using dalvo::hsh::NodePool;

struct Node {
    Node *next_;
    std::uint64_t payload[2];
};

using Pool = NodePool<Node>;

static_assert(!std::is_copy_constructible_v<Pool> && !std::is_move_constructible_v<Pool>);
static_assert(!std::is_copy_assignable_v<Pool> && !std::is_move_assignable_v<Pool>);

/// The sizes of the chunks that the first `count` nodes of a pool come from, the last one as far as taken: nodes of one
/// chunk are neighbours, and a link stands between the nodes of two.
std::vector<std::size_t> chunk_sizes(Pool &pool, std::size_t count)
{
    std::vector<std::size_t> sizes;
    const Node *last = nullptr;
    for (std::size_t i = 0; i < count; ++i) {
        const Node *const node = pool.take();
        if (last == nullptr || node != last + 1) {
            sizes.push_back(0);
        }
        ++sizes.back();
        last = node;
    }
    return sizes;
}

TEST(node_pool, takes_chunks_that_grow_up_to_the_bound)
{
    const struct {
        std::uint64_t first;
        float growth;
        std::uint64_t bound;
        std::vector<std::size_t> expected;
        const char *why;
    } rows[] = {
        {16, 2.0F, 8192, {16, 32, 64, 128, 256, 512, 1024, 2048, 4096, 8192, 8192, 8192}, "those of a hash map"},
        {16, 2.0F, 0, {16, 32, 64, 128, 256, 512, 1024, 2048, 4096, 8192, 16384}, "0 is no bound"},
        {16, 2.0F, 100, {16, 32, 64, 100, 100}, "cut down to a bound between two sizes"},
        {16, 2.0F, 32, {16, 32, 32, 32}, "a bound that is met exactly"},
        {16, 2.0F, 8, {16, 8, 8}, "the bound does not hold for the first"},
        {16, 2.0F, 1, {16, 1, 1, 1}, "the least bound"},
        {16, 1.5F, 0, {16, 24, 36, 54, 81, 121, 181}, "a size and a half is truncated"},
        {3, 1.0F, 8192, {3, 3, 3}, "no growth"},
        {1, 1.5F, 8192, {1, 1, 1}, "growth that truncation undoes"},
        {1, 2.0F, 8192, {1, 2, 4, 8}, "the least first chunk"},
    };
    for (const auto &row : rows) {
        std::size_t count = 0;
        for (const std::size_t size : row.expected) {
            count += size;
        }
        Pool pool(row.first, row.growth, row.bound);
        EXPECT_EQ(chunk_sizes(pool, count), row.expected) << row.why;
    }
}

TEST(node_pool, hands_out_each_node_once)
{
    Pool pool(16, 2.0F, 64);
    std::vector<Node *> nodes;
    for (std::uint64_t i = 0; i < 300; ++i) {
        Node *const node = pool.take();
        EXPECT_EQ(node->next_, nullptr);
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(node) % alignof(Node), 0U);
        node->payload[0] = i;
        node->payload[1] = ~i;
        nodes.push_back(node);
    }
    EXPECT_EQ(std::set<Node *>(nodes.begin(), nodes.end()).size(), nodes.size());
    for (std::uint64_t i = 0; i < nodes.size(); ++i) {
        EXPECT_EQ(nodes[i]->payload[0], i) << "no other node was written over it";
        EXPECT_EQ(nodes[i]->payload[1], ~i);
    }
}

TEST(node_pool, hands_out_first_what_it_got_back_last)
{
    Pool pool(4, 2.0F, 8192);
    Node *const first = pool.take();
    Node *const second = pool.take();
    pool.give_back(first);
    pool.give_back(second);
    EXPECT_EQ(pool.take(), second);
    EXPECT_EQ(second->next_, nullptr) << "the link of the free list is gone";
    EXPECT_EQ(pool.take(), first);
    EXPECT_EQ(pool.take(), second + 1) << "then those that were idle before";
}

TEST(node_pool, takes_no_chunk_while_a_node_is_idle)
{
    Pool pool(2, 2.0F, 8192);
    Node *const first = pool.take();
    Node *const second = pool.take();
    for (int round = 0; round < 100; ++round) {
        pool.give_back(second);
        EXPECT_EQ(pool.take(), second);
    }
    EXPECT_EQ(second, first + 1);
}

TEST(node_pool, throws_when_a_chunk_would_not_fit_in_memory)
{
    constexpr std::uint64_t largest = std::numeric_limits<std::uint64_t>::max();
    const std::uint64_t least = (largest - sizeof(void *)) / sizeof(Node) + 1;
    for (const std::uint64_t first : {least, least + 1, largest}) {
        Pool pool(first, 2.0F, 0);
        EXPECT_THROW(pool.take(), std::bad_alloc) << first;
        EXPECT_THROW(pool.take(), std::bad_alloc) << first << ", again";
    }
}

TEST(node_pool, stays_usable_after_a_chunk_that_would_not_fit_in_memory)
{
    Pool pool(2, 1e30F, 0); // the second chunk's size is cut down to 64 bits
    Node *const first = pool.take();
    Node *const second = pool.take();
    EXPECT_THROW(pool.take(), std::bad_alloc);
    pool.give_back(first);
    EXPECT_EQ(pool.take(), first);
    EXPECT_EQ(second, first + 1);
    EXPECT_THROW(pool.take(), std::bad_alloc);
}

TEST(node_pool, bounds_a_growth_beyond_64_bits)
{
    Pool pool(2, 1e30F, 5);
    EXPECT_EQ(chunk_sizes(pool, 12), std::vector<std::size_t>({2, 5, 5}));
}

TEST(node_pool, bounds_a_growth_to_the_least_size_beyond_64_bits)
{
    Pool pool(2, 9223372036854775808.0F, 5); // 2 * 2^63
    EXPECT_EQ(chunk_sizes(pool, 12), std::vector<std::size_t>({2, 5, 5}));
}

} // namespace
