#include "dalvo/inspect/findings/slips.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>

#include "dalvo/inspect/knowledge/logic.h"
#include "dalvo/utils/str.h"

namespace dalvo::inspect {

namespace {

constexpr std::size_t shortest = 4;

bool is_letter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

char lower(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

/// Whether `longer` without one letter is `shorter`; both folded.
bool lacks_letter(std::string_view shorter, std::string_view longer)
{
    if (shorter.size() + 1 != longer.size()) {
        return false;
    }
    const auto at =
        static_cast<std::size_t>(std::mismatch(shorter.begin(), shorter.end(), longer.begin()).second - longer.begin());
    return is_letter(longer[at]) && shorter.substr(at) == longer.substr(at + 1);
}

/// Whether two neighbouring letters of one are swapped in the other; both folded.
bool is_swapped(std::string_view a, std::string_view b)
{
    if (a.size() != b.size()) {
        return false;
    }
    const auto at = static_cast<std::size_t>(std::mismatch(a.begin(), a.end(), b.begin()).first - a.begin());
    return at + 1 < a.size() && is_letter(a[at]) && is_letter(b[at]) && a[at] == b[at + 1] && b[at] == a[at + 1] &&
           a.substr(at + 2) == b.substr(at + 2);
}

std::uint64_t mixed(std::uint64_t value)
{
    value = (value ^ (value >> 32U)) * 0xD6E8FEB86659FD93U;
    return value ^ (value >> 29U);
}

/// A set that may say of something that it is there when it is not, but never the other way round.
class LikelySet {
public:
    explicit LikelySet(std::size_t count)
    {
        std::size_t bits = 64;
        while (bits < count * 16) {
            bits *= 2;
        }
        words.assign(bits / 64, 0);
    }

    /// Whether `value` was likely there already.
    bool add(std::uint64_t value)
    {
        const auto [first, second] = places(value);
        const bool was_there = is_set(first) && is_set(second);
        words[first / 64] |= std::uint64_t{1} << (first % 64);
        words[second / 64] |= std::uint64_t{1} << (second % 64);
        return was_there;
    }

    bool has(std::uint64_t value) const
    {
        const auto [first, second] = places(value);
        return is_set(first) && is_set(second);
    }

private:
    std::array<std::size_t, 2> places(std::uint64_t value) const
    {
        const std::uint64_t hash = mixed(value);
        const std::size_t mask = words.size() * 64 - 1;
        return {static_cast<std::size_t>(hash) & mask, static_cast<std::size_t>(hash >> 32U) & mask};
    }
    bool is_set(std::size_t place) const { return (words[place / 64] >> (place % 64) & 1U) != 0; }

    std::vector<std::uint64_t> words;
};

/// Finds names by their folded bytes' hash. Several may have one hash.
class HashedNames {
public:
    explicit HashedNames(const std::vector<std::uint64_t> &all) : hashes(all)
    {
        std::size_t size = 8;
        while (size < all.size() * 2) {
            size *= 2;
        }
        slots.assign(size, empty);
        for (std::size_t i = 0; i < all.size(); ++i) {
            std::size_t slot = first_slot(all[i]);
            while (slots[slot] != empty) {
                slot = (slot + 1) & (slots.size() - 1);
            }
            slots[slot] = static_cast<std::uint32_t>(i);
        }
    }

    /// Calls `use` with the positions of the first few names with `hash`, in their order.
    template <class Use> void find(std::uint64_t hash, Use use) const
    {
        std::size_t left = most;
        for (std::size_t slot = first_slot(hash); slots[slot] != empty && left > 0;
             slot = (slot + 1) & (slots.size() - 1)) {
            if (hashes[slots[slot]] == hash) {
                use(slots[slot]);
                --left;
            }
        }
    }

private:
    static constexpr std::uint32_t empty = static_cast<std::uint32_t>(-1);
    static constexpr std::size_t most = 4;

    std::size_t first_slot(std::uint64_t hash) const
    {
        return static_cast<std::size_t>(mixed(hash)) & (slots.size() - 1);
    }

    const std::vector<std::uint64_t> &hashes;
    std::vector<std::uint32_t> slots;
};

constexpr std::uint64_t base = 0x9E3779B97F4A7C15U; // of the hash of bytes in their order

constexpr std::uint64_t inverse_of(std::uint64_t odd)
{
    std::uint64_t result = odd; // of which the lowest three bits are right; each step doubles their number
    for (int i = 0; i < 5; ++i) {
        result *= 2 - odd * result;
    }
    return result;
}

constexpr std::uint64_t inverse = inverse_of(base);
static_assert(base * inverse == 1);

/// Slips for one another share most of their letters. So first, a name is looked at more closely only when its letters,
/// or all but one of them, are those of another name as well, whatever their order: a sum of hashes tells. Then the
/// names that a slip would have turned it into are looked up.
class SlipFinder {
public:
    explicit SlipFinder(const std::vector<SlipName> &all)
        : names(all), found(all.size(), no_slip), letters(all.size()), is_shared(all.size()), seen(all.size())
    {
    }

    std::vector<std::size_t> find()
    {
        for (std::size_t i = 0; i < names.size(); ++i) {
            letters[i] = letter_sum(names[i].name);
            is_shared[i] = seen.add(letters[i]);
        }
        std::vector<std::size_t> likely;
        for (std::size_t i = 0; i < names.size(); ++i) {
            if (is_shared[i] || has_likely_rest(i)) {
                likely.push_back(i);
            }
        }
        if (!likely.empty()) {
            std::vector<std::uint64_t> hashes(names.size());
            std::transform(names.begin(), names.end(), hashes.begin(),
                           [](const SlipName &name) { return hash_of(name.name); });
            const HashedNames hashed(hashes);
            for (const std::size_t i : likely) {
                look_up(i, hashed);
            }
        }
        return std::move(found);
    }

private:
    static std::uint64_t value_of(char c) { return static_cast<unsigned char>(lower(c)) + std::uint64_t{1}; }
    static std::uint64_t letter_hash(char c) { return mixed(value_of(c) * base); }

    static std::uint64_t letter_sum(std::string_view name)
    {
        std::uint64_t sum = 0;
        for (const char c : name) {
            sum += letter_hash(c);
        }
        return sum;
    }

    /// By the order of the bytes, too.
    static std::uint64_t hash_of(std::string_view name)
    {
        std::uint64_t hash = 0;
        for (const char c : name) {
            hash = hash * base + value_of(c);
        }
        return hash;
    }

    bool is_likely_rest(std::size_t i, char letter) const
    {
        return is_letter(letter) && seen.has(letters[i] - letter_hash(letter));
    }

    bool has_likely_rest(std::size_t i) const
    {
        const std::string_view name = names[i].name;
        return name.size() > shortest &&
               std::any_of(name.begin(), name.end(), [&](char letter) { return is_likely_rest(i, letter); });
    }

    void look_up(std::size_t i, const HashedNames &hashed)
    {
        const std::string_view name = names[i].name;
        const auto use = [&](std::size_t other) { note(i, other); };
        const std::uint64_t whole = hash_of(name);
        if (is_shared[i]) {
            hashed.find(whole, use);
        }
        std::uint64_t rest = 0;  // the hash of what stands behind the place
        std::uint64_t power = 1; // of the base, to the number of these bytes
        std::uint64_t power_before = 1;
        for (std::size_t at = name.size(); at-- > 0;) {
            if (is_shared[i] && at + 1 < name.size()) {
                const std::uint64_t step = value_of(name[at + 1]) - value_of(name[at]);
                hashed.find(whole + step * (power - power_before), use);
            }
            if (is_likely_rest(i, name[at])) {
                const std::uint64_t before = whole - rest - value_of(name[at]) * power;
                hashed.find(before * inverse + rest, use);
            }
            rest += value_of(name[at]) * power;
            power_before = power;
            power *= base;
        }
    }

    /// Of a pair, the later one has the slip.
    void note(std::size_t i, std::size_t other)
    {
        const std::size_t later = std::max(i, other);
        const std::size_t earlier = std::min(i, other);
        if (earlier < found[later] && !(names[i].is_meant && names[other].is_meant) &&
            is_slip(names[i].name, names[other].name)) {
            found[later] = earlier;
        }
    }

    const std::vector<SlipName> &names;
    std::vector<std::size_t> found;
    std::vector<std::uint64_t> letters; // of each name, without their order
    std::vector<bool> is_shared;        // whether a name before likely has the same letters
    LikelySet seen;
};

} // namespace

bool is_slip(std::string_view name, std::string_view other)
{
    if (name == other || std::min(name.size(), other.size()) < shortest ||
        (is_logic_name(name) && is_logic_name(other))) {
        return false;
    }
    const std::string a = str::folded(name);
    const std::string b = str::folded(other);
    return a == b || is_swapped(a, b) || lacks_letter(a, b) || lacks_letter(b, a);
}

std::vector<std::size_t> find_slips(const std::vector<SlipName> &names)
{
    return SlipFinder(names).find();
}

} // namespace dalvo::inspect
