// How HashMap makes, copies and ends its elements, and what is left when one of these steps throws.

#include "dalvo/utils/hashmap.h"

#include <cstddef>
#include <cstdint>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/counted.h"

namespace {

using dalvo::hsh::HashMap;
using dalvo::support::Blown;
using dalvo::support::Fuse;

using Key = dalvo::support::Counted<struct KeyTag>;
using Value = dalvo::support::Counted<struct ValueTag>;

struct KeyNumber {
    std::uint64_t operator()(const Key &key) const noexcept { return static_cast<std::uint64_t>(key.number); }
};

using Map = HashMap<Key, Value, KeyNumber>;
using Chains = std::vector<std::vector<int>>; // the keys' numbers in each bucket, from head to tail

Chains chains_of(const Map &map)
{
    Chains chains;
    for (const Map::Table::Bucket *node : map.table().buckets()) {
        chains.emplace_back();
        for (; node != nullptr; node = node->next()) {
            chains.back().push_back(node->value().first.number);
        }
    }
    return chains;
}

/// Every third element falls into the same three buckets.
int key_number(int i)
{
    return i % 3 == 0 ? 31 * i : i;
}

void fill(Map &map, int count)
{
    for (int i = 0; i < count; ++i) {
        map[Key(key_number(i))].number = i;
    }
}

class hash_map_lifetime : public testing::Test {
protected:
    void SetUp() override
    {
        Key::copies = 0;
        Value::copies = 0;
        ASSERT_EQ(Key::alive, 0);
        ASSERT_EQ(Value::alive, 0);
    }

    void TearDown() override
    {
        Fuse::put_out();
        EXPECT_EQ(Key::alive, 0) << "every key that began has ended";
        EXPECT_EQ(Value::alive, 0) << "every value that began has ended";
        EXPECT_EQ(Key::displaced, 0) << "none moved or ended twice";
        EXPECT_EQ(Value::displaced, 0) << "none moved or ended twice";
    }
};

TEST_F(hash_map_lifetime, copies_a_key_twice_to_insert_it_and_once_to_find_it)
{
    Map map;
    const Key key(5);
    map[key];
    EXPECT_EQ(Key::copies, 2);
    map[key];
    EXPECT_EQ(Key::copies, 3);
    EXPECT_EQ(Key::alive, 2) << "the argument and the stored one";
    EXPECT_EQ(Value::alive, 1);
}

TEST_F(hash_map_lifetime, copies_no_element_to_grow)
{
    Map map;
    fill(map, 22);
    Key::copies = 0;
    Value::copies = 0;
    map[Key(0)];
    EXPECT_EQ(map.table().buckets().size(), 73U);
    EXPECT_EQ(Key::copies, 1) << "the candidate's";
    EXPECT_EQ(Value::copies, 1) << "the candidate's";
    EXPECT_EQ(Key::alive, 22);
    EXPECT_EQ(Value::alive, 22);
}

TEST_F(hash_map_lifetime, ends_all_elements_with_the_map)
{
    {
        Map map;
        fill(map, 1000);
        EXPECT_EQ(Key::alive, 1000);
        EXPECT_EQ(Value::alive, 1000);
    }
    EXPECT_EQ(Key::alive, 0);
    EXPECT_EQ(Value::alive, 0);
}

TEST_F(hash_map_lifetime, is_what_it_was_when_any_step_of_an_insertion_throws)
{
    const struct {
        int stored;
        const char *why;
    } rows[] = {
        {0, "the first element"},
        {5, "others present"},
        {16, "a fresh chunk"},
        {21, "just not crowded"},
        {22, "crowded"},
        {48, "a fresh chunk, later"},
    };
    for (const auto &row : rows) {
        unsigned throws = 0;
        for (unsigned n = 1;; ++n) {
            Map map;
            fill(map, row.stored);
            const Chains before = chains_of(map);
            Map same;
            fill(same, row.stored);
            if (row.stored == 22) {
                same[Key(0)]; // grows, and changes nothing else
            }
            const Chains grown = chains_of(same);
            const int alive = 2 * row.stored; // in both maps
            try {
                const Key key(10000);
                Fuse::set(n);
                map[key];
                Fuse::put_out();
                break;
            } catch (const Blown &) {
                ++throws;
            }
            EXPECT_EQ(Key::alive, alive) << row.why << ", step " << n;
            EXPECT_EQ(Value::alive, alive) << row.why << ", step " << n;
            EXPECT_EQ(map.table().count(), static_cast<std::uint64_t>(row.stored)) << row.why << ", step " << n;
            EXPECT_EQ(chains_of(map), throws <= 3 ? before : grown) << row.why << ", step " << n;
            map[Key(10000)].number = 1;
            EXPECT_EQ(map.table().count(), static_cast<std::uint64_t>(row.stored) + 1) << "the next call works";
            for (int i = 0; i < row.stored; ++i) {
                EXPECT_EQ(map[Key(key_number(i))].number, i) << row.why << ", step " << n;
            }
        }
        EXPECT_EQ(throws, 5U) << row.why << ": the value and the copies of the candidate, then those in the node";
    }
}

TEST_F(hash_map_lifetime, is_what_it_was_when_any_step_of_a_look_up_throws)
{
    Map map;
    fill(map, 10);
    const Chains before = chains_of(map);
    const Value *const stored = &map[Key(key_number(4))];
    const Key key(key_number(4));
    unsigned throws = 0;
    for (unsigned n = 1;; ++n) {
        Fuse::set(n);
        try {
            EXPECT_EQ(&map[key], stored);
            Fuse::put_out();
            break;
        } catch (const Blown &) {
            ++throws;
        }
        EXPECT_EQ(Key::alive, 11);
        EXPECT_EQ(Value::alive, 10);
        EXPECT_EQ(chains_of(map), before);
        EXPECT_EQ(map.table().count(), 10U);
    }
    EXPECT_EQ(throws, 3U) << "the candidate's value, its key and its value once more";
    EXPECT_EQ(stored->number, 4);
}

TEST_F(hash_map_lifetime, uses_a_node_again_whose_element_could_not_be_made)
{
    Map map(2, 2.0F, 8192);
    fill(map, 1);
    const char *const filled = reinterpret_cast<const char *>(map.table().buckets()[0]);
    for (int round = 0; round < 100; ++round) {
        const Key key(7);
        Fuse::set(4); // the copy of the key into the node
        EXPECT_THROW(map[key], Blown);
        Fuse::put_out();
    }
    map[Key(7)];
    const char *const node = reinterpret_cast<const char *>(map.table().buckets()[7]);
    EXPECT_EQ(node - filled, static_cast<std::ptrdiff_t>(sizeof(Map::Table::Bucket)))
        << "the second node of the first chunk, after a hundred failures";
}

// ---- order of the ends ----

/// Writes its number down when it ends, where it is told to.
struct Mourned {
    int number = 0;
    std::vector<int> *ended = nullptr;

    Mourned() = default;
    Mourned(const Mourned &) = default;
    Mourned &operator=(const Mourned &) = delete;
    ~Mourned()
    {
        if (ended != nullptr) {
            ended->push_back(number);
        }
    }
};

struct IntHash {
    std::uint64_t operator()(int key) const noexcept { return static_cast<std::uint64_t>(key); }
};

TEST(hash_map_destructor, ends_elements_bucket_by_bucket_from_head_to_tail)
{
    std::vector<int> ended;
    {
        HashMap<int, Mourned, IntHash> map;
        for (const int key : {62, 30, 5, 0, 36, 31, 2, 67}) {
            Mourned &value = map[key];
            value.number = key;
            value.ended = &ended;
        }
        EXPECT_TRUE(ended.empty());
    }
    EXPECT_EQ(ended, std::vector<int>({31, 0, 62, 2, 67, 36, 5, 30}));
}

TEST(hash_map_destructor, ends_many_elements_in_the_order_in_which_the_chains_show_them)
{
    std::vector<int> ended;
    std::vector<int> shown;
    {
        HashMap<int, Mourned, IntHash> map;
        for (int i = 0; i < 300; ++i) {
            const int key = i % 3 == 0 ? 643 * i : i; // every third in one long chain
            Mourned &value = map[key];
            value.number = key;
            value.ended = &ended;
        }
        for (const auto &element : map) {
            shown.push_back(element.first);
        }
    }
    EXPECT_EQ(shown.size(), 300U);
    EXPECT_EQ(ended, shown);
}

} // namespace
