#include <cstddef>
#include <cstdint>
#include <fstream>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "dalvo/configuration/configurationsetter.h"
#include "dalvo/configuration/default_config.h"
#include "tests/configuration/dumped_text.h"
#include "tests/support/golden.h"
#include "tests/support/records.h"
#include "tests/support/sections.h"

namespace {

using dalvo::Configuration;
using dalvo::ConfigurationSetter;
using dalvo::OptionParser;
using dalvo::testing::differing_fields;
using dalvo::testing::dump_rows;
using dalvo::testing::DumpRow;
using dalvo::testing::Filed;
using dalvo::testing::load_text;
using dalvo::testing::Sections;
using dalvo::testing::sections_from;
using dalvo::testing::sections_of;
using dalvo::testing::sentinel_record;
using dalvo::testing::set_field;
using dalvo::testing::value_named;

/// The text of the array that the program is linked with.
std::string linked_text()
{
    std::string text;
    for (const char *const *piece = dalvo_default_config; *piece != nullptr; ++piece) {
        text += *piece;
    }
    return text;
}

TEST(default_text, is_the_file_that_people_read)
{
    std::ifstream in(dalvo::testing::source_path("dalvo/configuration/default.cfg"), std::ios_base::binary);
    ASSERT_TRUE(in);
    std::ostringstream file;
    file << in.rdbuf();
    EXPECT_FALSE(file.str().empty());
    EXPECT_EQ(linked_text(), file.str());
}

TEST(default_text, names_each_option_once)
{
    const Sections sections = sections_from(linked_text());
    ASSERT_EQ(sections.size(), 1U) << "no section but the unnamed one";
    std::multiset<std::string> named;
    for (const Filed &entry : sections.at("")) {
        named.insert(entry.name);
    }
    std::multiset<std::string> options;
    for (const auto &row : dalvo::testing::golden_rows("catalogue.tsv", 4)) {
        options.insert(row[1]);
    }
    EXPECT_EQ(named, options);
}

TEST(load_default, files_what_load_files_of_the_text_with_level_3)
{
    ConfigurationSetter setter;
    setter.load_default();
    EXPECT_EQ(sections_of(setter), sections_from(linked_text(), 3));
}

TEST(load_default, needs_no_catalogue_and_registers_nothing)
{
    ConfigurationSetter setter;
    setter.load_default();
    EXPECT_TRUE(setter.options().options().empty());
    Configuration record;
    EXPECT_THROW(setter.update_config(&record), OptionParser::error) << "the replay finds no option";
}

TEST(load_default, gives_every_option_a_value_of_level_3_at_the_next_filling)
{
    ConfigurationSetter setter;
    setter.initialize_options();
    setter.load_default();
    for (const OptionParser::Option &option : setter.options().options()) {
        EXPECT_FALSE(option.has_value()) << option.name;
    }
    Configuration record;
    setter.update_config(&record);
    for (const OptionParser::Option &option : setter.options().options()) {
        EXPECT_TRUE(option.has_value()) << option.name;
        EXPECT_EQ(option.level, 3) << option.name;
    }
}

TEST(load_default, leaves_a_fresh_record_as_it_is)
{
    ConfigurationSetter setter;
    setter.initialize_options();
    setter.load_default();
    Configuration record;
    setter.update_config(&record);
    EXPECT_EQ(differing_fields(record, Configuration()), std::vector<std::string>());
}

TEST(load_default, makes_the_dumped_fields_of_any_record_those_of_a_fresh_one)
{
    ConfigurationSetter setter;
    setter.initialize_options();
    setter.load_default();
    for (int variant = 0; variant < 2; ++variant) {
        Configuration record = sentinel_record(variant);
        Configuration expected = record;
        for (const DumpRow &row : dump_rows()) {
            set_field(expected, row.field, value_named(Configuration(), row.field));
        }
        setter.update_config(&record);
        EXPECT_EQ(differing_fields(record, expected), std::vector<std::string>());
    }
}

TEST(load_default, appends_its_entries_twice_when_called_twice)
{
    ConfigurationSetter setter;
    setter.initialize_options();
    setter.load_default();
    load_text(setter, "verbosity = 2\nrandom_seed = 9\n", 1);
    Configuration record;
    setter.update_config(&record);
    EXPECT_EQ(record.verbosity, 2);
    EXPECT_EQ(setter.options().find_option("verbosity")->level, 1);

    setter.load_default();
    std::vector<Filed> expected = sections_from(linked_text(), 3).at("");
    const std::vector<Filed> once = expected;
    expected.push_back({"verbosity", "2", 1});
    expected.push_back({"random_seed", "9", 1});
    expected.insert(expected.end(), once.begin(), once.end());
    EXPECT_EQ(sections_of(setter), (Sections{{"", expected}}));
    setter.update_config(&record);
    EXPECT_EQ(differing_fields(record, Configuration()), std::vector<std::string>()) << "the second copy is the later";
    EXPECT_EQ(setter.options().find_option("verbosity")->level, 3);
}

TEST(load_default, begins_in_the_unnamed_section_whatever_was_read_before)
{
    ConfigurationSetter setter;
    load_text(setter, "[s, t]\nk = v\n");
    setter.load_default();
    Sections expected = sections_from(linked_text(), 3);
    expected["s"] = {{"k", "v"}};
    expected["t"] = {{"k", "v"}};
    EXPECT_EQ(sections_of(setter), expected);
}

TEST(load_default, gives_way_to_a_section_but_not_to_set_option)
{
    ConfigurationSetter setter;
    setter.initialize_options();
    setter.set_option("verbosity", "2", 1);
    setter.set_option("random_seed", "9", 1);
    load_text(setter, "[s]\nrandom_seed = 7\n", 2);
    setter.load_default();
    setter.set_active_config("s");
    Configuration record;
    setter.update_config(&record);
    Configuration expected;
    expected.random_seed = 7;
    EXPECT_EQ(differing_fields(record, expected), std::vector<std::string>());
}

} // namespace
