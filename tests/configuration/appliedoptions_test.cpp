#include "dalvo/configuration/appliedoptions.h"

#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/applied_rows.h"
#include "tests/support/golden.h"
#include "tests/support/records.h"
#include "tests/support/settings.h"

namespace {

using dalvo::AppliedOption;
using dalvo::Configuration;
using dalvo::Force;
using dalvo::OptionParser;
using namespace dalvo::testing;
using Names = std::vector<std::string>;

TEST(forces, are_those_of_the_golden_file)
{
    std::vector<GoldenRow> listed;
    for (const AppliedOption &option : dalvo::applied_options()) {
        for (const Force &force : option.forces) {
            listed.push_back({option.name, force.when.text(), force.option, force.value ? "true" : "false",
                              force.own_assignment_wins ? "unless assigned" : "always"});
        }
    }
    EXPECT_EQ(listed, golden_rows("forces.tsv", 5));
}

double number_of(const OptionParser::Value &value)
{
    if (const bool *const flag = std::get_if<bool>(&value)) {
        return *flag ? 1.0 : 0.0;
    }
    const auto *const integer = std::get_if<std::int32_t>(&value);
    return integer != nullptr ? *integer : 0.0;
}

/// Option name to the field that it fills.
std::map<std::string, std::string> fields_by_option()
{
    std::map<std::string, std::string> fields;
    for (const AppliedRow &row : applied_rows()) {
        fields[row.name] = row.field;
    }
    return fields;
}

/// The record that the listed forces make of `before` where `option` alone has a value.
Configuration forced_by_the_list(Configuration before, const AppliedOption &option, const OptionParser::Value &value)
{
    static const std::map<std::string, std::string> fields = fields_by_option();
    for (const Force &force : option.forces) {
        if (force.when.holds(number_of(value))) {
            set_field(before, fields.at(force.option), force.value);
        }
    }
    return before;
}

// The data is complete: what each value of each option does to a record, beside its own field, is what is listed.
TEST(forces, are_all_that_an_option_does_to_other_fields)
{
    const std::map<std::string, std::string> fields = fields_by_option();
    const std::vector<AppliedOption> options = dalvo::applied_options();
    const std::vector<AppliedRow> rows = applied_rows();
    int written = 0;
    for (std::size_t i = 0; i < options.size(); ++i) {
        for (const GivenValue &given : values_accepted(rows[i])) {
            for (int variant = 0; variant < 2; ++variant) { // the Booleans of one are not those of the other
                FullSetter setter;
                setter.set_option(rows[i].name, given.text, 0);
                const Configuration before = sentinel_record(variant);
                Configuration filled = before;
                setter.update_config(&filled);
                Configuration listed =
                    forced_by_the_list(before, options[i], setter.options().find_option(rows[i].name)->value);
                const std::string own = fields.at(rows[i].name);
                set_field(listed, own, value_named(filled, own));
                EXPECT_EQ(differing_fields(filled, listed), Names()) << rows[i].name << " = " << given.text;
                written += differing_fields(filled, before).size() > 1 ? 1 : 0;
            }
        }
    }
    EXPECT_GT(written, 4) << "values that force";
}

TEST(applied_values, are_what_the_options_would_need_to_fill_the_record)
{
    for (int variant = 0; variant < 2; ++variant) {
        const Configuration record = sentinel_record(variant);
        const std::vector<OptionParser::Value> values = dalvo::applied_values(record);
        const std::vector<AppliedOption> options = dalvo::applied_options();
        const std::map<std::string, std::string> fields = fields_by_option();
        ASSERT_EQ(values.size(), options.size());
        for (std::size_t i = 0; i < values.size(); ++i) {
            const FieldValue field = value_named(record, fields.at(options[i].name));
            SCOPED_TRACE(options[i].name);
            switch (options[i].type) {
            case dalvo::OPT_BOOL: EXPECT_EQ(std::get<bool>(values[i]), std::get<bool>(field)); break;
            case dalvo::OPT_INT: EXPECT_EQ(std::get<std::int32_t>(values[i]), std::get<std::int32_t>(field)); break;
            case dalvo::OPT_FLOAT:
                EXPECT_EQ(std::get<float>(values[i]), static_cast<float>(std::get<double>(field)));
                break;
            case dalvo::OPT_STR:
                if (const auto *const text = std::get_if<std::string>(&field)) {
                    EXPECT_EQ(std::get<std::string>(values[i]), *text);
                }
            }
        }
    }
}

TEST(applied_values, join_log_sections_as_their_option_splits_them)
{
    const std::vector<AppliedOption> options = dalvo::applied_options();
    const auto at = static_cast<std::size_t>(
        std::find_if(options.begin(), options.end(), [](const auto &o) { return o.name == "debug.log_sections"; }) -
        options.begin());
    for (const Names &sections : {Names{}, Names{"sat"}, Names{"sat", "ALL"}, Names{"", "a", ""}}) {
        Configuration record;
        record.debug_log_sections = sections;
        const auto text = std::get<std::string>(dalvo::applied_values(record)[at]);
        FullSetter setter;
        setter.set_option("debug.log_sections", text, 0);
        Configuration again;
        setter.update_config(&again);
        EXPECT_EQ(again.debug_log_sections, sections) << text;
    }
}

} // namespace
