#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace dalvo::testing {

/// The keys of each bucket, from head to tail.
using Chains = std::vector<std::vector<std::string>>;

/// Those of a map whose keys are texts.
template <class Map> Chains chains_of(const Map &map)
{
    Chains chains;
    for (const typename Map::Table::Bucket *node : map.table().buckets()) {
        chains.emplace_back();
        for (; node != nullptr; node = node->next()) {
            chains.back().push_back(node->value().first);
        }
    }
    return chains;
}

/// The chains of a hash map by another way: lists of keys, made anew from what growth is to do. Up to 3663 keys.
class ChainModel {
public:
    void call(const std::string &key)
    {
        if (count >= crowded_at[step]) {
            grow();
        }
        std::vector<std::string> &chain = chains[bucket_of(key)];
        for (const std::string &present : chain) {
            if (present == key) {
                return;
            }
        }
        chain.insert(chain.begin(), key);
        ++count;
    }

    std::size_t bucket_of(const std::string &key) const
    {
        std::uint64_t h = 0;
        for (std::size_t i = 0; i < key.size() && key[i] != '\0'; ++i) {
            const int c = static_cast<unsigned char>(key[i]);
            h = h * 4 + h + static_cast<std::uint64_t>(c < 128 ? c : c - 256);
        }
        return h % chains.size();
    }

    Chains chains = Chains(31);
    std::size_t count = 0;

private:
    void grow()
    {
        const Chains old = std::move(chains);
        chains = Chains(sizes[++step]);
        for (const std::vector<std::string> &chain : old) {
            for (const std::string &key : chain) {
                std::vector<std::string> &target = chains[bucket_of(key)];
                target.insert(target.begin(), key);
            }
        }
    }

    static constexpr std::size_t sizes[] = {31, 73, 151, 313, 643, 1291, 2593, 5233};
    static constexpr std::size_t crowded_at[] = {22, 52, 106, 220, 451, 904, 1816, 3664};
    std::size_t step = 0;
};

} // namespace dalvo::testing
