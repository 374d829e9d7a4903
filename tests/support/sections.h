#pragma once

#include <cstdint>
#include <map>
#include <ostream>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "dalvo/configuration/configurationsetter.h"

namespace dalvo::testing {

/// An assignment as a setter has filed it.
struct Filed {
    std::string name;
    std::string value;
    std::int32_t level = 0;

    friend bool operator==(const Filed &a, const Filed &b)
    {
        return a.name == b.name && a.value == b.value && a.level == b.level;
    }

    friend std::ostream &operator<<(std::ostream &out, const Filed &f)
    {
        return out << ::testing::PrintToString(f.name) << " = " << ::testing::PrintToString(f.value) << " @" << f.level;
    }
};

/// Section name to the section's assignments, in their order; a section without any has an empty list.
using Sections = std::map<std::string, std::vector<Filed>>;

/// What `setter` has filed so far.
inline Sections sections_of(const ConfigurationSetter &setter)
{
    Sections sections;
    for (const auto &[name, entries] : setter.sections()) {
        std::vector<Filed> &filed = sections[name];
        for (const ConfigurationSetter::OptEntry &entry : entries) {
            filed.push_back({entry.name, entry.value, entry.level});
        }
    }
    EXPECT_EQ(sections.size(), setter.sections().size()) << "a section stands in the table twice";
    return sections;
}

/// Has `setter` read `text`.
inline void load_text(ConfigurationSetter &setter, const std::string &text, std::int32_t level = 0)
{
    std::istringstream in(text);
    setter.load(in, level);
}

/// What a fresh setter files of `text`.
inline Sections sections_from(const std::string &text, std::int32_t level = 0)
{
    ConfigurationSetter setter;
    load_text(setter, text, level);
    return sections_of(setter);
}

} // namespace dalvo::testing
