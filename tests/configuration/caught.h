#pragma once

#include <ostream>
#include <string>

#include <gtest/gtest.h>

#include "dalvo/options/optionparser.h"

namespace dalvo::testing {

/// What an OptionParser::error carried.
struct Caught {
    std::string what;
    std::string option;
    std::string value;
    std::string command_line;

    friend bool operator==(const Caught &a, const Caught &b)
    {
        return a.what == b.what && a.option == b.option && a.value == b.value && a.command_line == b.command_line;
    }

    friend std::ostream &operator<<(std::ostream &out, const Caught &c)
    {
        return out << "what: " << ::testing::PrintToString(c.what) << ", option: "
                   << ::testing::PrintToString(c.option) << ", value: " << ::testing::PrintToString(c.value)
                   << ", command line: " << ::testing::PrintToString(c.command_line);
    }
};

/// The error that `action` throws; a failure of the test when it throws none.
template <class Action> Caught caught_from(Action action)
{
    try {
        action();
    } catch (const OptionParser::error &e) {
        return {e.what(), e.option, e.value, e.command_line};
    }
    ADD_FAILURE() << "no error was thrown";
    return {};
}

} // namespace dalvo::testing
