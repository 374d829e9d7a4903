#pragma once

#include <algorithm>
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <new>

#include "dalvo/export.h"

namespace dalvo::hsh {

/// Raw storage for the nodes of a table, taken from few large chunks.
///
/// Layout of a chunk, one `malloc` block: a link to the chunk allocated before it, then its nodes. Idle nodes hang in a
/// free list through their own `next_`. Nodes never move, and go back to the heap only with the pool.
///
/// Invariants:
///  1. every node of every chunk is either handed out or in the free list, once;
///  2. `chunk_nodes` is the size of the next chunk, never above `max_chunk_nodes` unless that is 0 (no bound), but for
///     a first chunk that was asked for larger.
///
/// `Node` has a default constructor that makes a node without an element, and a member `next_`, a pointer to Node.
template <class Node> class DALVO_API NodePool {
    static_assert(alignof(Node) <= alignof(void *), "nodes lie right behind the chunk's link");

public:
    /// The first chunk holds `first` nodes (at least 1), each further one `growth` (at least 1) times as many, up to
    /// `bound`; 0 means no bound. Allocates nothing.
    NodePool(std::uint64_t first, float growth, std::uint64_t bound) noexcept
        : chunk_nodes(first), chunk_growth(growth), max_chunk_nodes(bound)
    {
        assert(first >= 1 && growth >= 1.0F);
    }

    NodePool(const NodePool &) = delete;
    NodePool &operator=(const NodePool &) = delete;

    /// Frees the chunks; no element may live in a node any more.
    ~NodePool()
    {
        while (chunks != nullptr) {
            Chunk *const chunk = chunks;
            chunks = chunk->link;
            std::free(chunk); // NOLINT(cppcoreguidelines-no-malloc): see the layout of a chunk
        }
    }

    /// A node without an element, its `next_` null; owned by the pool, lent until `give_back`.
    Node *take()
    {
        if (free_nodes == nullptr) {
            add_chunk();
        }
        Node *const node = free_nodes;
        assert(node != nullptr); // no chunk is without a node
        free_nodes = node->next_;
        node->next_ = nullptr;
        return node;
    }

    /// Takes back `node` (not null, from this pool), in which no element lives any more.
    void give_back(Node *node) noexcept
    {
        node->next_ = free_nodes;
        free_nodes = node;
    }

private:
    struct Chunk {
        Chunk *link;

        // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): see the layout of a chunk
        Node *nodes() { return reinterpret_cast<Node *>(this + 1); }
    };

    void add_chunk()
    {
        if (chunk_nodes > (std::numeric_limits<std::size_t>::max() - sizeof(Chunk)) / sizeof(Node)) {
            throw std::bad_alloc();
        }
        // NOLINTNEXTLINE(cppcoreguidelines-no-malloc): see the layout of a chunk
        void *const block = std::malloc(chunk_nodes * sizeof(Node) + sizeof(Chunk));
        if (block == nullptr) {
            throw std::bad_alloc();
        }
        chunks = ::new (block) Chunk{chunks};
        for (Node *node = chunks->nodes() + chunk_nodes; node != chunks->nodes();) {
            --node;
            give_back(::new (static_cast<void *>(node)) Node);
        }
        grow_chunk_nodes();
    }

    void grow_chunk_nodes() noexcept
    {
        const float grown = static_cast<float>(chunk_nodes) * chunk_growth;
        constexpr float too_large = 18446744073709551616.0F; // 2^64
        chunk_nodes = grown < too_large ? static_cast<std::uint64_t>(grown) : std::numeric_limits<std::uint64_t>::max();
        if (max_chunk_nodes != 0) {
            chunk_nodes = std::min(chunk_nodes, max_chunk_nodes);
        }
    }

    std::uint64_t chunk_nodes;
    float chunk_growth;
    std::uint64_t max_chunk_nodes;
    Chunk *chunks = nullptr;
    Node *free_nodes = nullptr;
};

} // namespace dalvo::hsh
