#pragma once

#include <cstdint>
#include <functional>
#include <utility>

#include "dalvo/export.h"
#include "dalvo/utils/hash.h"
#include "dalvo/utils/hashtable.h"

namespace dalvo::hsh {

/// The key of a pair: its `first`.
struct DALVO_API GetKey_pair {
    /// The first of `pair`, borrowed from it.
    template <class Pair> const typename Pair::first_type &operator()(const Pair &pair) const noexcept
    {
        return pair.first;
    }
};

/// A chained hash map whose values never move: a reference to one is good until the map ends.
///
/// `Key` and `Value` are copyable and aligned no more strictly than a pointer; `Value` can be value-initialised.
/// Neither copied nor moved itself.
///
/// Example:
///
///     hsh::HashMap<std::string, std::vector<int>> map;
///     std::vector<int> &row = map["a"];       // created empty
///     map["b"].push_back(1);                  // row is still good
///     map.find("c");                          // null
template <class Key, class Value, class Hash = hash<Key>, class Equal = std::equal_to<Key>> class DALVO_API HashMap {
public:
    /// A key with its value.
    using Element = std::pair<Key, Value>;

    /// The table that holds the elements.
    using Table = Hashtable<Element, GetKey_pair, Key, Hash, Equal>;

    /// An empty map of 31 buckets. Its nodes come in chunks: the first of `chunk_nodes` (at least 1), each further one
    /// `chunk_growth` (at least 1) times as large, up to `max_chunk_nodes`; 0 means no bound.
    explicit HashMap(std::uint64_t chunk_nodes = 16, float chunk_growth = 2.0F, std::uint64_t max_chunk_nodes = 8192)
        : table_(chunk_nodes, chunk_growth, max_chunk_nodes)
    {
    }

    HashMap(const HashMap &) = delete;
    HashMap &operator=(const HashMap &) = delete;

    /// The value stored under `key` (copied; any, equal keys are one), inserted value-initialised if there is none.
    /// Owned by the map and good until the map ends. What copying a key or a value throws passes through; the map then
    /// holds what it held.
    Value &operator[](const Key &key)
    {
        const Element candidate(key, Value());
        return table_.find_or_insert(key, candidate).second;
    }

    /// The value stored under `key` (any), owned by the map and good until the map ends; null when there is none.
    /// Inserts nothing.
    const Value *find(const Key &key) const noexcept
    {
        const Element *const found = table_.find(key);
        return found != nullptr ? &found->second : nullptr;
    }

    /// The elements, in an order that follows from the keys and the order of their insertion: `for (const auto &[key,
    /// value] : map)`. An insertion ends all iterators.
    typename Table::Iterator begin() const noexcept { return table_.begin(); }

    /// After the last element.
    typename Table::Iterator end() const noexcept { return table_.end(); }

    /// The number of elements.
    std::uint64_t size() const noexcept { return table_.count(); }

    /// The table underneath, owned by the map, to be read.
    const Table &table() const noexcept { return table_; }

private:
    Table table_;
};

} // namespace dalvo::hsh
