// Every int option beside what the table of applications says of it.

#include <algorithm>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "dalvo/configuration/configurationsetter.h"
#include "tests/support/applied_rows.h"
#include "tests/support/records.h"
#include "tests/support/settings.h"

namespace {

using dalvo::Configuration;
using dalvo::OptionParser;
using dalvo::testing::applied_rows;
using dalvo::testing::AppliedRow;
using dalvo::testing::Bounds;
using dalvo::testing::bounds_of;
using dalvo::testing::differing_fields;
using dalvo::testing::filled;
using dalvo::testing::FullSetter;
using dalvo::testing::given_int;
using dalvo::testing::GivenValues;
using dalvo::testing::sentinel_record;
using dalvo::testing::value_named;

constexpr std::int64_t least = std::numeric_limits<std::int32_t>::min();
constexpr std::int64_t most = std::numeric_limits<std::int32_t>::max();

const std::vector<AppliedRow> &int_rows()
{
    static const std::vector<AppliedRow> rows = [] {
        std::vector<AppliedRow> found;
        for (const AppliedRow &row : applied_rows()) {
            if (row.type == dalvo::OPT_INT) {
                found.push_back(row);
            }
        }
        return found;
    }();
    return rows;
}

/// The values at which something may change: the ends of the type, powers of two, the row's bounds, and what is beside.
std::vector<std::int64_t> interesting_values(const Bounds &bounds)
{
    std::vector<std::int64_t> middles = {least, most, 0};
    for (int bit = 0; bit < 31; ++bit) {
        middles.push_back(std::int64_t{1} << bit);
        middles.push_back(-(std::int64_t{1} << bit));
    }
    for (const auto &bound : {bounds.lowest, bounds.highest, bounds.hole}) {
        if (bound) {
            middles.push_back(*bound);
        }
    }
    std::vector<std::int64_t> values;
    for (const std::int64_t middle : middles) {
        for (const std::int64_t value : {middle - 1, middle, middle + 1}) {
            if (value >= least && value <= most) {
                values.push_back(value);
            }
        }
    }
    std::sort(values.begin(), values.end());
    values.erase(std::unique(values.begin(), values.end()), values.end());
    return values;
}

/// What is wrong with the filling of a record by the one option `row`, given `value`; empty when nothing is.
std::string fault(FullSetter &setter, const AppliedRow &row, std::int64_t value)
{
    const Configuration before = sentinel_record(0);
    Configuration record = before;
    const std::string text = std::to_string(value);
    setter.set_option(row.name, text, 0);
    std::string message;
    try {
        setter.update_config(&record);
    } catch (const OptionParser::error &e) {
        message = e.what();
    }
    Configuration expected = before;
    if (bounds_of(row.accepted).accepts(value)) {
        expected = filled(before, applied_rows(), GivenValues{{row.name, given_int(value)}}, applied_rows().size());
    } else if (row.name == "unsat_core_generation") { // stored before it is tested
        expected.unsat_core_generation = static_cast<std::int32_t>(value);
    }
    const std::string rejection = "invalid value for option " + row.name + ": " + row.name + ", value: " + text;
    const std::string expected_message = bounds_of(row.accepted).accepts(value) ? "" : rejection;
    if (message != expected_message) {
        return row.name + " = " + text + " ends with \"" + message + "\"";
    }
    const std::vector<std::string> differing = differing_fields(record, expected);
    return differing.empty() ? "" : row.name + " = " + text + " leaves another " + differing.front();
}

TEST(int_options, accept_what_their_row_says_at_every_interesting_value)
{
    int tried = 0;
    for (const AppliedRow &row : int_rows()) {
        FullSetter setter;
        const Bounds bounds = bounds_of(row.accepted);
        for (const std::int64_t value : interesting_values(bounds)) {
            const Configuration before;
            Configuration record;
            setter.set_option(row.name, std::to_string(value), 0);
            bool thrown = false;
            try {
                setter.update_config(&record);
            } catch (const OptionParser::error &) {
                thrown = true;
            }
            EXPECT_EQ(thrown, !bounds.accepts(value)) << row.name << " = " << value;
            const bool stored = !thrown || row.name == "unsat_core_generation";
            EXPECT_EQ(value_named(record, row.field),
                      stored ? dalvo::testing::FieldValue(static_cast<std::int32_t>(value))
                             : value_named(before, row.field))
                << row.name << " = " << value;
            ++tried;
        }
    }
    EXPECT_GT(tried, 52 * 150);
}

RC_GTEST_PROP(int_options, store_any_value_that_their_row_accepts_and_nothing_else, ())
{
    const AppliedRow row = *rc::gen::elementOf(int_rows());
    const auto value = *rc::gen::oneOf(rc::gen::elementOf(interesting_values(bounds_of(row.accepted))),
                                       rc::gen::inRange<std::int64_t>(least, most + 1));
    FullSetter setter;
    const std::string wrong = fault(setter, row, value);
    RC_LOG() << wrong;
    RC_ASSERT(wrong.empty());
}

} // namespace
