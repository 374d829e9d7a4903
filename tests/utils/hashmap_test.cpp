#include "dalvo/utils/hashmap.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <iterator>
#include <random>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/chain_model.h"

namespace {

using namespace std::string_literals;
using dalvo::hsh::GetKey_pair;
using dalvo::hsh::HashMap;
using dalvo::hsh::Hashtable;
using dalvo::testing::ChainModel;
using dalvo::testing::Chains;
using dalvo::testing::chains_of;

using Map = HashMap<std::string, std::vector<int>>;

std::string numbered(std::size_t i)
{
    return "section number " + std::to_string(i);
}

/// Inserts the keys numbered from the map's count up to `count`.
void fill(Map &map, std::size_t count)
{
    for (std::size_t i = map.table().count(); i < count; ++i) {
        map[numbered(i)].push_back(static_cast<int>(i));
    }
}

// ---- what the types promise ----

static_assert(!std::is_copy_constructible_v<Map> && !std::is_move_constructible_v<Map>);
static_assert(!std::is_copy_assignable_v<Map> && !std::is_move_assignable_v<Map>);
static_assert(!std::is_copy_constructible_v<Map::Table> && !std::is_move_constructible_v<Map::Table>);
static_assert(!std::is_copy_assignable_v<Map::Table> && !std::is_move_assignable_v<Map::Table>);

/// An element that could be overwritten through a node, were nodes assignable.
using PlainTable = dalvo::hsh::Hashtable<std::pair<std::uint64_t, int>, dalvo::hsh::GetKey_pair, std::uint64_t,
                                         std::hash<std::uint64_t>, std::equal_to<std::uint64_t>>;
static_assert(!std::is_copy_assignable_v<PlainTable::Bucket> && !std::is_copy_constructible_v<PlainTable::Bucket>);
static_assert(!std::is_default_constructible_v<PlainTable::Bucket>);
static_assert(std::is_same_v<decltype(std::declval<PlainTable::Bucket &>().next()), const PlainTable::Bucket *>);
static_assert(std::is_const_v<std::remove_reference_t<decltype(std::declval<PlainTable::Bucket &>().value())>>);
static_assert(std::is_default_constructible_v<Map> && std::is_nothrow_destructible_v<Map>);
static_assert(std::is_same_v<decltype(std::declval<Map &>()[""]), std::vector<int> &>);

// The chains can be walked from outside, and not changed.
using Node = std::remove_reference_t<decltype(*std::declval<const Map &>().table().buckets()[0])>;
static_assert(std::is_same_v<decltype(std::declval<const Map &>().table()), const Map::Table &>);
static_assert(std::is_same_v<decltype(std::declval<Node &>().next()), const Map::Table::Bucket *>);
static_assert(std::is_same_v<decltype(std::declval<Node &>().value()), const Map::Element &>);
static_assert(!std::is_constructible_v<Map::Table::Bucket>);

TEST(get_key_pair, is_the_first_itself)
{
    const std::pair<std::string, int> pair("a", 1);
    EXPECT_EQ(&GetKey_pair()(pair), &pair.first);
}

// ---- look-up and insertion ----

TEST(hash_map, starts_empty_with_31_buckets)
{
    const Map map;
    EXPECT_EQ(map.table().count(), 0U);
    EXPECT_EQ(chains_of(map), Chains(31));
}

TEST(hash_map, inserts_an_empty_value_for_a_new_key)
{
    Map map;
    EXPECT_TRUE(map["a"].empty());
    EXPECT_EQ(map.table().count(), 1U);
    EXPECT_TRUE(map["b"].empty());
    EXPECT_EQ(map.table().count(), 2U);
}

TEST(hash_map, gives_the_same_object_for_the_same_key)
{
    Map map;
    std::vector<int> &value = map["a"];
    value.push_back(7);
    EXPECT_EQ(&map[std::string("a")], &value);
    EXPECT_EQ(map.table().count(), 1U);
    EXPECT_EQ(map["a"], std::vector<int>({7}));
    EXPECT_NE(&map["A"], &value) << "keys are not folded in case";
}

TEST(hash_map, value_initialises_what_it_inserts)
{
    HashMap<std::string, std::array<int, 64>> map;
    for (std::size_t i = 0; i < 100; ++i) {
        EXPECT_EQ((map[numbered(i)]), (std::array<int, 64>{})) << i;
    }
}

TEST(hash_map, puts_a_key_into_the_bucket_of_its_hash)
{
    const struct {
        std::string key;
        std::size_t bucket;
        const char *why;
    } rows[] = {
        {"", 0, "the empty key"},
        {"a", 4, "97 % 31"},
        {"name", 19, "16821 % 31"},
        {"\xff", 15, "(2^64 - 1) % 31, unsigned"},
        {"\x80", 12, "(2^64 - 128) % 31, unsigned"},
        {"a\0b"s, 4, "as far as the NUL"},
        {"\0"s, 0, "nothing before the NUL"},
    };
    for (const auto &row : rows) {
        Map map;
        map[row.key];
        Chains expected(31);
        expected[row.bucket] = {row.key};
        EXPECT_EQ(chains_of(map), expected) << row.why;
    }
}

TEST(hash_map, keeps_keys_apart_that_hash_alike)
{
    Map map;
    map["a"].push_back(1);
    map["a\0b"s].push_back(2);
    map["a\0c"s].push_back(3);
    EXPECT_EQ(map.table().count(), 3U);
    EXPECT_EQ(map["a"], std::vector<int>({1}));
    EXPECT_EQ(map["a\0b"s], std::vector<int>({2}));
    EXPECT_EQ(map["a\0c"s], std::vector<int>({3}));
    EXPECT_EQ(chains_of(map)[4], std::vector<std::string>({"a\0c"s, "a\0b"s, "a"})) << "newer before older";
}

// ---- growth ----

TEST(hash_map, grows_on_the_first_call_that_finds_it_crowded)
{
    const struct {
        std::size_t before, stored;
        std::string key;
        std::size_t buckets, count;
        const char *why;
    } rows[] = {
        {31, 20, "new", 31, 21, "far from crowded"},
        {31, 21, numbered(3), 31, 21, "21/31 is not above 0.7: a present key"},
        {31, 21, "new", 31, 22, "21/31 is not above 0.7: a new key"},
        {31, 22, numbered(3), 73, 22, "22/31 is: a present key"},
        {31, 22, "new", 73, 23, "22/31 is: a new key"},
        {73, 51, numbered(3), 73, 51, "51/73 is not above 0.7: a present key"},
        {73, 51, "new", 73, 52, "51/73 is not above 0.7: a new key"},
        {73, 52, numbered(3), 151, 52, "52/73 is: a present key"},
        {73, 52, "new", 151, 53, "52/73 is: a new key"},
    };
    for (const auto &row : rows) {
        Map map;
        fill(map, row.stored);
        ASSERT_EQ(map.table().buckets().size(), row.before) << row.why;
        map[row.key];
        EXPECT_EQ(map.table().buckets().size(), row.buckets) << row.why;
        EXPECT_EQ(map.table().count(), row.count) << row.why;
    }
}

TEST(hash_map, grows_through_the_primes)
{
    const struct {
        std::size_t buckets, crowded; // the least count above 0.7 times the buckets
    } rows[] = {
        {31, 22},     {73, 52},     {151, 106},   {313, 220},    {643, 451},
        {1291, 904},  {2593, 1816}, {5233, 3664}, {10501, 7351}, {21013, 14710},
    };
    Map map;
    for (const auto &row : rows) {
        fill(map, row.crowded);
        map[numbered(0)];
        const std::size_t next = map.table().buckets().size();
        EXPECT_GT(next, row.buckets) << row.crowded << " elements";
        EXPECT_LT(next, 3 * row.buckets) << row.crowded << " elements";
        if (&row + 1 != std::end(rows)) {
            EXPECT_EQ(next, (&row + 1)->buckets);
            fill(map, (&row + 1)->crowded - 1);
            map[numbered(0)];
            EXPECT_EQ(map.table().buckets().size(), next) << "one element fewer does not crowd it";
        }
    }
}

TEST(hash_map, reaches_all_keys_at_their_old_addresses_after_growth)
{
    Map map;
    std::vector<const std::vector<int> *> values;
    for (std::size_t i = 0; i < 5000; ++i) {
        std::vector<int> &value = map[numbered(i)];
        value.push_back(static_cast<int>(i));
        values.push_back(&value);
    }
    EXPECT_EQ(map.table().buckets().size(), 10501U);
    for (std::size_t i = 0; i < values.size(); ++i) {
        ASSERT_EQ(&map[numbered(i)], values[i]) << i;
        ASSERT_EQ(*values[i], std::vector<int>({static_cast<int>(i)}));
    }
    EXPECT_EQ(map.table().count(), 5000U);
}

TEST(hash_map, finds_a_value_and_inserts_nothing)
{
    Map map;
    EXPECT_EQ(map.find("a"), nullptr);
    std::vector<int> &value = map["a"];
    const Map &to_be_read = map;
    EXPECT_EQ(to_be_read.find("a"), &value);
    EXPECT_EQ(to_be_read.find("A"), nullptr);
    EXPECT_EQ(to_be_read.find(std::string("a\0b", 3)), nullptr) << "of the same hash value";
    EXPECT_EQ(map.size(), 1U);
    for (int i = 1; i < 22; ++i) {
        map[std::to_string(i)];
    }
    EXPECT_EQ(to_be_read.find("a"), &value) << "in a map that the next insertion grows";
    EXPECT_EQ(to_be_read.find("b"), nullptr);
    EXPECT_EQ(map.table().buckets().size(), 31U);
    EXPECT_EQ(map.size(), 22U);
}

// ---- order of the elements ----

static_assert(std::is_same_v<decltype(*std::declval<const Map &>().begin()), const Map::Element &>);
static_assert(std::is_same_v<std::iterator_traits<Map::Table::Iterator>::iterator_category, std::forward_iterator_tag>);

TEST(hash_map, is_gone_over_chain_by_chain)
{
    Map map;
    EXPECT_EQ(map.begin(), map.end());
    for (int i = 0; i < 300; ++i) {
        map[std::to_string(i)].push_back(i);
        std::vector<std::string> expected;
        for (const std::vector<std::string> &chain : chains_of(map)) {
            expected.insert(expected.end(), chain.begin(), chain.end());
        }
        std::vector<std::string> keys;
        for (const auto &element : map) {
            keys.push_back(element.first);
        }
        ASSERT_EQ(keys, expected);
    }
    auto at = map.begin();
    EXPECT_EQ(&at->second, map.find(at->first)) << "the elements themselves";
    const auto first = at++;
    EXPECT_NE(first, at);
    EXPECT_EQ(first, map.begin());
    EXPECT_EQ(std::distance(map.begin(), map.end()), 300);
}


struct AlwaysSeven {
    std::uint64_t operator()(const std::string &) const noexcept { return 7; }
};

TEST(hash_map, has_newer_before_older_until_growth_turns_a_chain_over)
{
    HashMap<std::string, int, AlwaysSeven> map;
    const auto chain = [&] {
        std::string keys;
        for (const auto &element : map) {
            keys += element.first;
        }
        return keys;
    };
    for (char c = 'a'; c <= 'v'; ++c) {
        map[std::string(1, c)] = c;
    }
    EXPECT_EQ(chain(), "vutsrqponmlkjihgfedcba");
    map["c"];
    EXPECT_EQ(map.table().buckets().size(), 73U);
    EXPECT_EQ(chain(), "abcdefghijklmnopqrstuv");
    map["w"];
    EXPECT_EQ(chain(), "wabcdefghijklmnopqrstuv");
    EXPECT_EQ(map["k"], 'k');
}

TEST(hash_map, turns_a_long_chain_over_at_each_growth)
{
    HashMap<std::string, int, AlwaysSeven> map;
    std::vector<std::string> expected;
    for (int i = 0; i < 230; ++i) {
        if (i == 22 || i == 52 || i == 106 || i == 220) {
            std::reverse(expected.begin(), expected.end());
        }
        const std::string key = std::to_string(i);
        expected.insert(expected.begin(), key);
        map[key] = i;
        std::vector<std::string> chain;
        for (const auto &[name, value] : map) {
            chain.push_back(name);
            EXPECT_EQ(std::to_string(value), name);
        }
        ASSERT_EQ(chain, expected) << i;
    }
    EXPECT_EQ(map.table().buckets().size(), 643U);
}

TEST(hash_map, agrees_with_a_model_of_its_chains_on_random_calls)
{
    std::mt19937 random(31);
    for (int round = 0; round < 4; ++round) {
        Map map;
        ChainModel model;
        while (model.count < 600) {
            std::string key(random() % 4, ' ');
            for (char &c : key) {
                c = "abcdef\0\x80\xc3\xff"[random() % 10];
            }
            model.call(key);
            map[key];
            ASSERT_EQ(map.table().count(), model.count);
            if (model.count <= 60 || random() % 32 == 0) { // all chains, and not too often once there are many
                ASSERT_EQ(chains_of(map), model.chains) << testing::PrintToString(key) << ", " << model.count;
            }
        }
        ASSERT_EQ(chains_of(map), model.chains);
        EXPECT_EQ(map.table().buckets().size(), 1291U);
    }
}

// ---- other types ----

struct ByLength {
    std::uint64_t operator()(const std::string &key) const noexcept { return key.size(); }
};

struct SameLength {
    bool operator()(const std::string &a, const std::string &b) const noexcept { return a.size() == b.size(); }
};

TEST(hash_map, takes_its_hash_and_its_equality_from_its_parameters)
{
    HashMap<std::string, int, ByLength, SameLength> map;
    map["abc"] = 3;
    EXPECT_EQ(map["xyz"], 3);
    EXPECT_EQ(map["abcd"], 0);
    EXPECT_EQ(map.table().count(), 2U);
    ASSERT_NE(map.table().buckets()[3], nullptr);
    EXPECT_EQ(map.table().buckets()[3]->value().first, "abc") << "the key that came first stays";
}

struct Itself {
    const int &operator()(const int &element) const noexcept { return element; }
};

struct Number {
    std::uint64_t operator()(int key) const noexcept { return static_cast<std::uint64_t>(key); }
};

TEST(hash_table, inserts_a_copy_once_and_finds_it)
{
    Hashtable<int, Itself, int, Number, std::equal_to<int>> table(1, 2.0F, 8192);
    const int candidate = 5;
    int &stored = table.find_or_insert(candidate, candidate);
    EXPECT_NE(&stored, &candidate);
    EXPECT_EQ(stored, 5);
    EXPECT_EQ(&table.find_or_insert(5, 5), &stored);
    EXPECT_EQ(table.count(), 1U);
    table.find_or_insert(36, 36); // the same bucket
    const auto *const head = table.buckets()[5];
    ASSERT_NE(head, nullptr);
    EXPECT_EQ(head->value(), 36);
    ASSERT_NE(head->next(), nullptr);
    EXPECT_EQ(&head->next()->value(), &stored);
    EXPECT_EQ(head->next()->next(), nullptr);
}

TEST(hash_table, finds_an_element_by_a_reference_to_itself_while_it_grows)
{
    Hashtable<int, Itself, int, Number, std::equal_to<int>> table(16, 2.0F, 8192);
    const int *first = nullptr;
    for (int i = 0; i < 22; ++i) {
        const int &stored = table.find_or_insert(i, i);
        first = first == nullptr ? &stored : first;
    }
    EXPECT_EQ(&table.find_or_insert(*first, *first), first);
    EXPECT_EQ(table.buckets().size(), 73U);
}

} // namespace
