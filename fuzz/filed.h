#pragma once

#include <cstdint>
#include <sstream>
#include <string>

#include "dalvo/configuration/configurationsetter.h"
#include "fuzz/target.h"
#include "tests/support/second_reader.h"

namespace dalvo::fuzz {

/// What `setter` has filed so far.
inline testing::SecondSections filed_in(const ConfigurationSetter &setter)
{
    testing::SecondSections sections;
    for (const auto &[name, filed] : setter.sections()) {
        auto &entries = sections[name];
        for (const ConfigurationSetter::OptEntry &entry : filed) {
            entries.push_back({entry.name, entry.value, entry.level});
        }
    }
    require(sections.size() == setter.sections().size(), "no section is filed twice");
    return sections;
}

/// Has `setter` read `text` and holds the outcome against the second reader's, which files it in `sections`.
inline void load_beside(ConfigurationSetter &setter, testing::SecondSections &sections, const std::string &text,
                        std::int32_t level)
{
    std::istringstream in(text);
    const auto thrown = thrown_from([&] { setter.load(in, level); });
    const auto malformed = testing::file_second(sections, text, level);
    require(thrown.has_value() == malformed.has_value(), "load throws at a malformed line, and only there", text);
    if (malformed) {
        require_error(*thrown, "bad format of configuration file", *malformed, "");
    }
}

} // namespace dalvo::fuzz
