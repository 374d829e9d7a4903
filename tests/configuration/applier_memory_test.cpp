// The filling of a record when the heap refuses.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <new>
#include <string>
#include <variant>
#include <vector>

#include <gtest/gtest.h>

#include "dalvo/configuration/configurationsetter.h"
#include "tests/support/applied_rows.h"
#include "tests/support/heap_watch.h"
#include "tests/support/records.h"
#include "tests/support/refusals.h"
#include "tests/support/sections.h"
#include "tests/support/settings.h"

namespace {

using dalvo::Configuration;
using dalvo::OptionParser;
using dalvo::support::HeapWatch;
using dalvo::testing::applied_rows;
using dalvo::testing::AppliedRow;
using dalvo::testing::differing_fields;
using dalvo::testing::filled;
using dalvo::testing::FullSetter;
using dalvo::testing::GivenValues;
using dalvo::testing::load_text;
using dalvo::testing::refuse_each;
using dalvo::testing::report_refused;
using dalvo::testing::sentinel_record;
using dalvo::testing::values_unlike;

using Names = std::vector<std::string>;

/// A text that gives each option a value, and the records that its filling passes through.
struct Filled {
    Filled()
    {
        const std::vector<AppliedRow> rows = applied_rows();
        const std::string long_text(100, 'x'); // no string holds it without the heap
        GivenValues values = values_unlike(before);
        for (const char *name :
             {"debug.api_call_trace_filename", "printer.defines_prefix", "theory.arr.debug_filename"}) {
            values[name] = {long_text + name, long_text + name};
        }
        values["debug.log_sections"] = {long_text + "," + long_text, Names{long_text, long_text}};
        for (std::size_t end = 0; end <= rows.size(); ++end) {
            stages.push_back(filled(before, rows, values, end));
        }
        for (const auto &[name, given] : values) {
            text += name + " = " + given.text + "\n";
        }
    }

    Configuration before = sentinel_record(0);
    std::string text;
    std::vector<Configuration> stages; // the record after each number of rows
};

struct Filling {
    explicit Filling(const Filled &f) : expected(f), record(f.before) { load_text(setter, f.text); }

    void act() { setter.update_config(&record); }
    void refused()
    {
        const auto is_reached = [&](const Configuration &stage) { return differing_fields(record, stage).empty(); };
        EXPECT_TRUE(std::any_of(expected.stages.begin(), expected.stages.end(), is_reached)) << "between two rows";
        act();
    }
    void done() { EXPECT_EQ(differing_fields(record, expected.stages.back()), Names()); }

    const Filled &expected;
    FullSetter setter;
    Configuration record;
};

TEST(update_config_memory, refused_applies_the_rows_before_and_none_after)
{
    EXPECT_GE(report_refused(refuse_each<Filling>(Filled())), 15U) << "strings: in the replay, then twice";
}

/// A value out of its range. The error shows it whole, or memory has run out.
struct Rejecting {
    Rejecting() { setter.set_option("verbosity", "2147483647", 0); }

    void act()
    {
        error.clear();
        try {
            setter.update_config(&record);
            ADD_FAILURE() << "no error was thrown";
        } catch (const OptionParser::error &e) {
            error = e.message_stream.str();
        }
    }
    void refused()
    {
        EXPECT_EQ(error, "");
        EXPECT_EQ(differing_fields(record, sentinel_record(0)), Names());
        act();
    }
    void done()
    {
        EXPECT_EQ(error, "invalid value for option verbosity: verbosity, value: 2147483647");
        EXPECT_EQ(differing_fields(record, sentinel_record(0)), Names());
    }

    FullSetter setter;
    Configuration record = sentinel_record(0);
    std::string error;
};

TEST(update_config_memory, refused_to_the_error_for_a_value_out_of_range_throws_no_other_error)
{
    EXPECT_GE(report_refused(refuse_each<Rejecting>()), 5U);
}

TEST(update_config_memory, asks_the_heap_once_where_no_string_is_stored)
{
    FullSetter setter;
    for (const auto &[name, given] : values_unlike(sentinel_record(0))) {
        if (std::holds_alternative<bool>(given.stored) || std::holds_alternative<std::int32_t>(given.stored)) {
            setter.set_option(name, given.text, 0);
        }
    }
    Configuration record;
    setter.update_config(&record); // creates the unnamed section
    const HeapWatch watch;
    HeapWatch::fail_new(2);
    EXPECT_NO_THROW(setter.update_config(&record));
    HeapWatch::fail_new(1);
    EXPECT_THROW(setter.update_config(&record), std::bad_alloc);
}

} // namespace
