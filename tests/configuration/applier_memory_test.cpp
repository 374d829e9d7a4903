// The filling of a record when the heap refuses.

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
#include "tests/support/settings.h"

namespace {

using dalvo::Configuration;
using dalvo::support::HeapWatch;
using dalvo::testing::applied_rows;
using dalvo::testing::AppliedRow;
using dalvo::testing::differing_fields;
using dalvo::testing::filled;
using dalvo::testing::FullSetter;
using dalvo::testing::GivenValues;
using dalvo::testing::sentinel_record;
using dalvo::testing::values_unlike;

using Names = std::vector<std::string>;

TEST(update_config_memory, refused_applies_the_rows_before_and_none_after)
{
    const std::vector<AppliedRow> rows = applied_rows();
    const Configuration before = sentinel_record(0);
    const std::string long_text(100, 'x'); // no string holds it without the heap
    GivenValues values = values_unlike(before);
    for (const char *name : {"debug.api_call_trace_filename", "printer.defines_prefix", "theory.arr.debug_filename"}) {
        values[name] = {long_text + name, long_text + name};
    }
    values["debug.log_sections"] = {long_text + "," + long_text, Names{long_text, long_text}};
    std::vector<Configuration> stages; // the record after each number of rows
    for (std::size_t end = 0; end <= rows.size(); ++end) {
        stages.push_back(filled(before, rows, values, end));
    }
    FullSetter setter;
    for (const auto &[name, given] : values) {
        setter.set_option(name, given.text, 0);
    }

    std::size_t stage = 0;
    std::size_t refused = 0;
    for (bool thrown = true; thrown;) {
        Configuration record = before;
        {
            const HeapWatch watch;
            HeapWatch::fail_new(++refused);
            try {
                setter.update_config(&record);
                thrown = false;
            } catch (const std::bad_alloc &) {
            }
            HeapWatch::fail_new(0);
        }
        while (stage < stages.size() && !differing_fields(record, stages[stage]).empty()) {
            ++stage;
        }
        ASSERT_LT(stage, stages.size()) << "allocation " << refused << " leaves the record between two rows";
    }
    EXPECT_GE(refused, 10U) << "each long string needs the heap twice";
    EXPECT_EQ(stage, rows.size());
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
