// Any sequence of calls: the map goes in lock step with a plain model of its chains, and no value ever moves.
//
// An input is a sequence of operations, by their first byte:
//   0x00 to 0x7F   call with a key of as many bytes as its lowest three bits say; they follow
//   0x80 to 0xBF   call with a key that is there; which one, the next byte says
//   0xC0 to 0xFF   as many calls with new keys as its lowest six bits say, and one; the keys hash alike when the next
//                  byte is odd

#include <algorithm>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "dalvo/utils/hashmap.h"
#include "fuzz/target.h"
#include "tests/support/chain_model.h"

namespace {

using dalvo::fuzz::require;
using dalvo::testing::ChainModel;

using Value = std::vector<std::size_t>;
using Map = dalvo::hsh::HashMap<std::string, Value>;

constexpr std::size_t most_keys = 300; // enough for four growths and five chunks of nodes

class LockStep {
public:
    void call(const std::string &key)
    {
        const std::size_t buckets = model.chains.size();
        model.call(key);
        Value &value = map[key];
        const auto [known, is_new] = addresses.emplace(key, &value);
        require(known->second == &value, "a value never moves", key);
        if (is_new) {
            require(value.empty(), "a new value is empty", key);
            value = {keys.size()};
            keys.push_back(key);
        } else {
            require(value.size() == 1 && keys[value[0]] == key, "a value stays what it was", key);
        }
        require(map.table().count() == model.count, "the map counts its keys", key);
        require(map.table().buckets().size() == model.chains.size(), "the map grows when it is crowded", key);
        if (buckets != model.chains.size()) {
            require_chains();
        } else {
            require_chain(model.bucket_of(key));
        }
    }

    void require_chains() const
    {
        for (std::size_t i = 0; i < model.chains.size(); ++i) {
            require_chain(i);
        }
    }

    std::vector<std::string> keys; // in the order in which they came

private:
    void require_chain(std::size_t bucket) const
    {
        const Map::Table::Bucket *node = map.table().buckets()[bucket];
        for (const std::string &key : model.chains[bucket]) {
            require(node != nullptr && node->value().first == key, "a chain holds the model's keys in their order");
            node = node->next();
        }
        require(node == nullptr, "a chain holds no other keys");
    }

    Map map;
    ChainModel model;
    std::unordered_map<std::string, const Value *> addresses;
};

/// An input, byte by byte; zeros behind its end.
class Bytes {
public:
    explicit Bytes(std::string input) : bytes(std::move(input)) {}

    bool at_end() const { return at >= bytes.size(); }
    unsigned take() { return at_end() ? 0 : static_cast<unsigned char>(bytes[at++]); }

    std::string take(std::size_t count)
    {
        const std::string taken = bytes.substr(std::min(at, bytes.size()), count);
        at += count;
        return taken;
    }

private:
    std::string bytes;
    std::size_t at = 0;
};

void add_keys(LockStep &both, unsigned count, bool alike)
{
    for (unsigned i = 0; i < count; ++i) {
        const std::string number = std::to_string(both.keys.size());
        both.call(alike ? std::string("x\0", 2) + number : "section " + number);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    Bytes input(dalvo::fuzz::bytes_of(data, size));
    LockStep both;
    while (!input.at_end() && both.keys.size() < most_keys) {
        const unsigned operation = input.take();
        if (operation < 0x80) {
            both.call(input.take(operation % 8));
        } else if (operation >= 0xC0) {
            add_keys(both, operation % 64 + 1, input.take() % 2 != 0);
        } else if (!both.keys.empty()) {
            both.call(std::string(both.keys[input.take() % both.keys.size()]));
        }
    }
    both.require_chains();
    return 0;
}
