#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "dalvo/configuration/configurationsetter.h"
#include "tools/inspection/settings.h"

namespace dalvo::tools {

/// Fills records and looks at what becomes of assignments. Options are named by their positions in all_options().
class Trial {
public:
    Trial();

    Trial(const Trial &) = delete;
    Trial &operator=(const Trial &) = delete;

    /// Gives an option the value that `text` says, which it accepts.
    void assign(std::size_t option, std::string_view text);

    /// Gives an option its default value.
    void withdraw(std::size_t option);

    /// Fills a fresh record.
    void run();

    /// Whether the record's setting is another than the option's value.
    bool is_forced(std::size_t option) const;

    /// The record's setting.
    const Setting &setting(std::size_t option) const { return settings[positions[option]]; }

private:
    ConfigurationSetter setter;
    std::vector<const OptionParser::Option *> parsed;
    std::vector<Setting> settings;      // in the order of `dump`
    std::vector<std::size_t> positions; // of the options' settings
    std::vector<std::string> texts;     // of the options' values
};

/// Finds out by experiment whether an assignment forces another one's option; remembers what it found.
class PairTrials {
public:
    /// Whether `option`, given the value `text` and nothing else, has another setting once `other` is given
    /// `other_text`. Each accepts its value.
    bool is_forced(std::size_t option, std::string_view text, std::size_t other, std::string_view other_text);

private:
    std::map<std::tuple<std::size_t, std::string, std::size_t, std::string>, bool> known;
};

} // namespace dalvo::tools
