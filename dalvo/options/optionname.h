#pragma once

#include <string>
#include <string_view>

namespace dalvo {

/// An option's name as a sequence of rows spells it: whole, or in two parts, of which the first is shared by many rows.
/// Borrows the characters; any bytes, both parts may be empty.
struct OptionName {
    // cppcheck-suppress noExplicitConstructor ; a row names its option by a literal
    OptionName(const char *whole) : rest(whole) {} // NOLINT(google-explicit-constructor): for the same reason
    OptionName(std::string_view shared, std::string_view own) : prefix(shared), rest(own) {}

    std::string_view prefix;
    std::string_view rest;
};

/// Spells names into one string, whose memory serves all of them.
class NameSpeller {
public:
    NameSpeller() { spelt.reserve(longest_usual); }

    /// The whole name; good until the next call.
    const std::string &operator()(const OptionName &name)
    {
        return name.prefix.empty() ? spelt.assign(name.rest) : spelt.assign(name.prefix).append(name.rest);
    }

private:
    static constexpr std::size_t longest_usual = 64;

    std::string spelt;
};

} // namespace dalvo
