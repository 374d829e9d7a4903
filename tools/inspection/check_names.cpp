#include "tools/inspection/check_names.h"

#include <algorithm>
#include <cstdint>
#include <unordered_map>

#include "dalvo/utils/editdistance.h"
#include "tools/inspection/check_text.h"

namespace dalvo::tools {

namespace {

constexpr std::size_t longest = 64;

bool is_digit(char c)
{
    return c >= '0' && c <= '9';
}

/// A hash of byte strings that is made from those of their parts.
struct PartHash {
    std::uint64_t value = 0;
    std::uint64_t power = 1; // of the base, to the number of bytes

    static PartHash of(char c) { return {static_cast<unsigned char>(c) + std::uint64_t{1}, 0x9E3779B97F4A7C15U}; }

    PartHash then(const PartHash &next) const { return {value * next.power + next.value, power * next.power}; }
};

/// The names seen so far. Two names are one edit apart when both leave the same without their bytes at one place, or
/// when one without a byte is the other; so each name is kept under what it leaves, and it is enough to keep the first.
class Slips {
public:
    explicit Slips(const std::vector<std::string_view> &all) : names(all) {}

    /// The first name seen that the one at `position` may be a slip for; then counts that one as seen.
    std::size_t find_and_add(std::size_t position)
    {
        const std::string_view name = names[position];
        if (name.size() > longest) {
            return none;
        }
        hash_parts(name);
        std::size_t found = first(none, shortened, whole, position);
        for (std::size_t at = 0; at < name.size(); ++at) {
            const bool digit = is_digit(name[at]);
            const std::uint64_t rest = without(at);
            if (!digit) {
                found = first(found, wholes, rest, position);
                found = first(found, replaced[1], key(rest, at), position);
            }
            found = first(found, replaced[0], key(rest, at), position);
        }
        add(name, position);
        return found;
    }

private:
    using Seen = std::unordered_map<std::uint64_t, std::size_t>;

    void hash_parts(std::string_view name)
    {
        heads.assign(1, {});
        for (const char c : name) {
            heads.push_back(heads.back().then(PartHash::of(c)));
        }
        whole = heads.back().value;
        tails.assign(name.size() + 1, {});
        for (std::size_t at = name.size(); at > 0; --at) {
            tails[at - 1] = PartHash::of(name[at - 1]).then(tails[at]);
        }
    }

    std::uint64_t without(std::size_t at) const { return heads[at].then(tails[at + 1]).value; }

    static std::uint64_t key(std::uint64_t rest, std::size_t at) { return rest ^ ((at + 1) * 0xD6E8FEB86659FD93U); }

    /// The lower of `best` and what is seen under `hash`, if that is indeed one edit away.
    std::size_t first(std::size_t best, const Seen &seen, std::uint64_t hash, std::size_t position) const
    {
        const auto found = seen.find(hash);
        return found != seen.end() && found->second < best && is_one_edit(names[found->second], names[position])
                   ? found->second
                   : best;
    }

    /// Two bytes changed at once: that is one edit, but none that is looked for here.
    static bool is_swap(std::string_view a, std::string_view b)
    {
        return a.size() == b.size() && !std::equal(std::mismatch(a.begin(), a.end(), b.begin()).first + 1, a.end(),
                                                   std::mismatch(a.begin(), a.end(), b.begin()).second + 1);
    }

    static bool is_one_edit(std::string_view a, std::string_view b)
    {
        return std::max(a.size(), b.size()) > 1 && str::edit_distance(a, b, 1) == 1 && !is_swap(a, b);
    }

    void add(std::string_view name, std::size_t position)
    {
        wholes.emplace(whole, position);
        for (std::size_t at = 0; at < name.size(); ++at) {
            const std::uint64_t rest = without(at);
            if (!is_digit(name[at])) {
                shortened.emplace(rest, position);
            }
            replaced[is_digit(name[at]) ? 1 : 0].emplace(key(rest, at), position);
        }
    }

    const std::vector<std::string_view> &names;
    Seen wholes;
    Seen shortened;   // without one byte that is no digit
    Seen replaced[2]; // without one byte, by its place; the second: where it is a digit
    std::uint64_t whole = 0;
    std::vector<PartHash> heads; // of the name at hand: what is before each place
    std::vector<PartHash> tails; // and what begins there
};

} // namespace

std::vector<std::size_t> slips(const std::vector<std::string_view> &names)
{
    Slips seen(names);
    std::vector<std::size_t> found;
    for (std::size_t position = 0; position < names.size(); ++position) {
        found.push_back(seen.find_and_add(position));
    }
    return found;
}

void check_section_names(CheckedText &text)
{
    std::vector<std::string_view> names{"default"};
    std::vector<std::size_t> sections{none};
    for (std::size_t section = 1; section < text.sections.size(); ++section) {
        const std::string_view name = text.sections[section].name;
        if (!name.empty() && name != names.front()) {
            names.push_back(name);
            sections.push_back(section);
        }
    }
    const std::vector<std::size_t> found = slips(names);
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (found[i] != none) {
            const CheckedSection &section = text.sections[sections[i]];
            text.marks.push_back(
                {section.line, section.column, Problem::similar_section, sections[i], sections[found[i]]});
        }
    }
}

} // namespace dalvo::tools
