#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <new>
#include <vector>

#include "dalvo/export.h"
#include "dalvo/utils/nodepool.h"
#include "dalvo/utils/prefetch.h"
#include "dalvo/utils/primes.h"

namespace dalvo::hsh {

/// Elements with a key inside them, in separate chains; the ground that HashMap stands on.
///
/// `GetKey` returns an element's key, `Hash` a key's 64-bit value, `Equal` whether two keys are one; all stateless, and
/// none of them throws.
///
/// Invariants, which hold before and after each operation, a throwing one included:
///  1. an element lies in the chain of bucket `hash(key) % buckets().size()`, and no chain holds a key twice;
///  2. `count()` is the number of elements in all chains;
///  3. in a chain, an element inserted later stands before an earlier one, until the table grows: growth reads the
///     chains from head to tail and pushes each node onto the head of its new chain;
///  4. an element never moves: its address is good until the table ends.
///
/// The elements can be looked at in their order, which is that of the buckets and, within one, of the chain:
///
///     for (const Element &element : table) use(element);
template <class Element, class GetKey, class Key, class Hash, class Equal> class DALVO_API Hashtable {
public:
    /// A node: one element of a chain.
    class Bucket {
    public:
        Bucket(const Bucket &) = delete;
        Bucket &operator=(const Bucket &) = delete;

        /// The next node of the same chain; null at its end.
        const Bucket *next() const noexcept { return next_; }

        /// The element, owned by the table; never moves.
        const Element &value() const noexcept { return value_; }

    private:
        friend class Hashtable;
        friend class NodePool<Bucket>;

        Bucket() noexcept {} // NOLINT(modernize-use-equals-default): would be deleted, as the union has no default
        ~Bucket() {}         // NOLINT(modernize-use-equals-default): the same

        Bucket *next_ = nullptr;
        union {
            Element value_; // lives while the node is in a chain
        };
    };

    /// Goes over the elements. The next insertion ends all iterators.
    class Iterator {
    public:
        using iterator_category = std::forward_iterator_tag; ///< one way only
        using value_type = Element;                          ///< the key is inside it
        using difference_type = std::ptrdiff_t;              ///< of what std::distance gives
        using pointer = const Element *;                     ///< elements are looked at, not changed
        using reference = const Element &;                   ///< the same

        /// Equal to others that were made so, and to nothing else.
        Iterator() = default;

        /// The element, owned by the table. The iterator is not at the end.
        reference operator*() const noexcept { return node->value_; }

        /// The same, by its address.
        pointer operator->() const noexcept { return &node->value_; }

        /// Goes on to the next element, and is then at it or at the end.
        Iterator &operator++() noexcept
        {
            node = node->next_;
            skip_empty();
            return *this;
        }

        /// The same; returns where it stood.
        Iterator operator++(int) noexcept // NOLINT(cert-dcl21-cpp): a constant result is no iterator
        {
            const Iterator before = *this;
            ++*this;
            return before;
        }

        friend bool operator==(const Iterator &a, const Iterator &b) noexcept { return a.node == b.node; }
        friend bool operator!=(const Iterator &a, const Iterator &b) noexcept { return a.node != b.node; }

    private:
        friend class Hashtable;

        Iterator(Bucket *const *first, Bucket *const *last) noexcept : next_head(first), end_of_heads(last)
        {
            skip_empty();
        }

        void skip_empty() noexcept
        {
            while (node == nullptr && next_head != end_of_heads) {
                node = *next_head++;
            }
        }

        const Bucket *node = nullptr; // null at the end
        Bucket *const *next_head = nullptr;
        Bucket *const *end_of_heads = nullptr;
    };

    /// An empty table of 31 buckets. Its nodes come in chunks: the first of `chunk_nodes` (at least 1), each further
    /// one `chunk_growth` (at least 1) times as large, up to `max_chunk_nodes`; 0 means no bound.
    Hashtable(std::uint64_t chunk_nodes, float chunk_growth, std::uint64_t max_chunk_nodes)
        : pool(chunk_nodes, chunk_growth, max_chunk_nodes), buckets_(primes[0], nullptr)
    {
    }

    Hashtable(const Hashtable &) = delete;
    Hashtable &operator=(const Hashtable &) = delete;

    ~Hashtable()
    {
        for_each_batch(buckets_, [&](const Batch &batch) {
            for (Bucket *node : batch) {
                node->value_.~Element();
                pool.give_back(node);
            }
        });
    }

    /// The element with key `key`; a copy of `candidate`, whose key is equal, is inserted when there is none. Prefer
    /// the caller's key to the candidate's: the bytes of a fresh copy are slow to read. Every call first grows the
    /// table when it is more than 0.7 full. What the copy constructor of Element throws passes through; `count()` and
    /// what the chains hold is then what it was.
    Element &find_or_insert(const Key &key, const Element &candidate)
    {
        if (crowded) {
            grow();
        }
        Bucket *&head = buckets_[bucket_of(key)];
        if (Bucket *const node = find_in(head, key)) {
            return node->value_;
        }
        Bucket *const node = new_node(candidate);
        node->next_ = head;
        head = node;
        ++count_;
        crowded = is_crowded();
        return node->value_;
    }

    /// The element with key `key`, owned by the table; null when there is none. Changes nothing, unlike
    /// `find_or_insert`, which may grow the table.
    const Element *find(const Key &key) const noexcept
    {
        const Bucket *const node = find_in(buckets_[bucket_of(key)], key);
        return node != nullptr ? &node->value_ : nullptr;
    }

    /// The first element in the order of the buckets.
    Iterator begin() const noexcept { return {buckets_.data(), buckets_.data() + buckets_.size()}; }

    /// After the last element.
    Iterator end() const noexcept { return {}; }

    /// The heads of the chains, null where a chain is empty; owned by the table. The next `find_or_insert` may
    /// replace them.
    const std::vector<Bucket *> &buckets() const noexcept { return buckets_; }

    /// The number of elements.
    std::uint64_t count() const noexcept { return count_; }

private:
    bool is_crowded() const noexcept
    {
        const float load = static_cast<float>(count_) / static_cast<float>(buckets_.size());
        return static_cast<double>(load) > 0.7;
    }

    /// The node with the key, in the chain that starts with `node`; null when there is none.
    Bucket *find_in(Bucket *node, const Key &key) const
    {
        while (node != nullptr && !equal(get_key(node->value_), key)) {
            node = node->next_;
        }
        return node;
    }

    std::uint64_t bucket_of(const Key &key) const { return hash(key) % buckets_.size(); }

    // Out of line: a look-up that is short lets the next one begin while the processor waits for memory.
    [[gnu::noinline]] void grow()
    {
        std::vector<Bucket *> old(next_bucket_count(buckets_.size()), nullptr);
        old.swap(buckets_);
        for_each_batch(old, [&](const Batch &batch) {
            Bucket **heads[Batch::capacity];
            Bucket ***head = heads;
            for (const Bucket *node : batch) {
                *head = &buckets_[bucket_of(get_key(node->value_))];
                prefetch(*head++);
            }
            head = heads;
            for (Bucket *node : batch) {
                node->next_ = **head; // NOLINT(clang-analyzer-core.NullDereference): filled above, for as many nodes
                **head++ = node;
            }
        });
        crowded = is_crowded();
    }

    /// Some nodes, in the order of buckets and chains, their keys on the way into the caches.
    class Batch {
    public:
        static constexpr std::size_t capacity = 32;

        bool is_full() const noexcept { return size == capacity; }
        void push_back(Bucket *node) noexcept { nodes[size++] = node; }
        void clear() noexcept { size = 0; }
        Bucket *const *begin() const noexcept { return nodes; }
        Bucket *const *end() const noexcept { return nodes + size; }

    private:
        Bucket *nodes[capacity];
        std::size_t size = 0;
    };

    /// Hands all nodes to `use`, in the order of buckets and chains, batch by batch: in a large table nothing that a
    /// node needs is in the caches, and fetching it for many nodes at once takes little longer than for one. `use` may
    /// end the elements and link the nodes anew.
    template <class Use> static void for_each_batch(const std::vector<Bucket *> &heads, Use use)
    {
        Batch batch;
        const auto use_up = [&] {
            for (const Bucket *node : batch) {
                prefetch_key(GetKey()(node->value_));
            }
            use(batch);
            batch.clear();
        };
        for (std::size_t i = 0; i < heads.size(); ++i) {
            prefetch(heads[std::min(i + Batch::capacity, heads.size() - 1)]);
            for (Bucket *node = heads[i]; node != nullptr;) {
                Bucket *const next = node->next_;
                batch.push_back(node);
                if (batch.is_full()) {
                    use_up();
                }
                node = next;
            }
        }
        use_up();
    }

    Bucket *new_node(const Element &candidate)
    {
        Bucket *const node = pool.take();
        try {
            ::new (static_cast<void *>(&node->value_)) Element(candidate);
        } catch (...) {
            pool.give_back(node);
            throw;
        }
        return node;
    }

    NodePool<Bucket> pool; // ends last: the nodes of all chains lie in it
    GetKey get_key;
    Hash hash;
    Equal equal;
    std::vector<Bucket *> buckets_;
    std::uint64_t count_ = 0;
    bool crowded = false; // is_crowded(), computed where it changes
};

} // namespace dalvo::hsh
