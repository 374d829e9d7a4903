// The registration of the catalogue when the heap refuses.

#include <cstddef>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "dalvo/configuration/configurationsetter.h"
#include "tests/support/golden.h"
#include "tests/support/refusals.h"
#include "tests/support/settings.h"

namespace {

using dalvo::Configuration;
using dalvo::ConfigurationSetter;
using dalvo::OptionParser;
using dalvo::testing::golden_rows;
using dalvo::testing::GoldenRow;
using dalvo::testing::refuse_each;
using dalvo::testing::report_refused;
using dalvo::testing::type_name;
using dalvo::testing::type_named;

std::vector<GoldenRow> rows_of(const OptionParser &options)
{
    std::vector<GoldenRow> rows;
    for (const OptionParser::Option &option : options.options()) {
        EXPECT_EQ(options.find_option(option.name), &option);
        rows.push_back({option.group, option.name, type_name(option.type), option.help});
    }
    return rows;
}

/// The built-in settings, filled into a record and dumped.
std::string built_in_settings(ConfigurationSetter &setter)
{
    setter.load_default();
    Configuration record;
    setter.update_config(&record);
    std::ostringstream out;
    setter.dump(&record, out, "");
    return out.str();
}

/// A setter that knows a beginning of the catalogue takes the rest row by row.
struct Registering {
    Registering(const std::vector<GoldenRow> &catalogue, const std::string &built_in)
        : whole(catalogue), settings(built_in)
    {
    }

    void act() { setter.initialize_options(); }

    void refused()
    {
        std::vector<GoldenRow> rows = rows_of(setter.options());
        ASSERT_LT(rows.size(), whole.size());
        const auto known = static_cast<std::ptrdiff_t>(rows.size());
        EXPECT_EQ(rows, std::vector<GoldenRow>(whole.begin(), whole.begin() + known));
        for (std::size_t i = rows.size(); i < whole.size(); ++i) {
            EXPECT_EQ(setter.options().find_option(whole[i][1]), nullptr);
            setter.options().set_cur_help_group(whole[i][0]);
            setter.options().add_option(whole[i][1], type_named(whole[i][2]), whole[i][3]);
        }
    }

    void done()
    {
        EXPECT_EQ(rows_of(setter.options()), whole);
        EXPECT_EQ(built_in_settings(setter), settings);
    }

    const std::vector<GoldenRow> &whole;
    const std::string &settings;
    ConfigurationSetter setter;
};

TEST(catalogue_memory, refused_leaves_a_beginning_of_the_catalogue_that_can_be_completed)
{
    dalvo::testing::CatalogueSetter fresh;
    const std::string settings = built_in_settings(fresh);
    const auto rows = golden_rows("catalogue.tsv", 4);
    EXPECT_GE(report_refused(refuse_each<Registering>(rows, settings)), 2U * rows.size());
}

} // namespace
