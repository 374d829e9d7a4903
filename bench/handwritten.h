#pragma once

#include <charconv>
#include <string>
#include <string_view>
#include <unordered_map>

#include "bench/harness.h"
#include "bench/inputs.h"

namespace dalvo::bench {

/// What someone would write by hand who needs no more than options bound to fields: a hash table. `Text` is how it
/// keeps names and help: std::string for its own copies, std::string_view for texts that outlive it.
template <class Text> class HandWritten {
public:
    explicit HandWritten(std::size_t count) { options.reserve(count); }

    void add(const Text &name, const Text &help, const testing::FieldPointer &field)
    {
        options.emplace(name, Option{help, field});
    }

    void set(const Text &name, const std::string_view value)
    {
        const auto found = options.find(name);
        require(found != options.end(), "unknown option");
        require(std::visit([&](auto *field) { return store(*field, value); }, found->second.field), "invalid value");
    }

private:
    struct Option {
        Text help;
        testing::FieldPointer field;
    };

    static bool store(bool &field, std::string_view value)
    {
        field = value == "true";
        return field || value == "false";
    }
    template <class Number> static bool store(Number &field, std::string_view value)
    {
        const auto [end, failure] = std::from_chars(value.data(), value.data() + value.size(), field);
        return failure == std::errc() && end == value.data() + value.size();
    }
    static bool store(std::string &field, std::string_view value)
    {
        field = value;
        return true;
    }
    static bool store(std::vector<std::string> &, std::string_view) { return false; }

    std::unordered_map<Text, Option> options;
};

} // namespace dalvo::bench
