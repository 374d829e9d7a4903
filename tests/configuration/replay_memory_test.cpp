// Values that are set and replayed when the heap refuses.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "dalvo/configuration/configurationsetter.h"
#include "tests/support/records.h"
#include "tests/support/refusals.h"
#include "tests/support/sections.h"
#include "tests/support/settings.h"

namespace {

using dalvo::Configuration;
using dalvo::ConfigurationSetter;
using dalvo::OptionParser;
using dalvo::testing::CatalogueSetter;
using dalvo::testing::differing_fields;
using dalvo::testing::load_text;
using dalvo::testing::refuse_each;
using dalvo::testing::report_refused;
using dalvo::testing::Sections;
using dalvo::testing::sections_of;
using dalvo::testing::sentinel_record;

using Names = std::vector<std::string>;
using Values = std::vector<std::pair<OptionParser::Value, std::int32_t>>;

const std::string section = "a section that needs memory of its own";
const std::string prefix = "a prefix that needs memory of its own";
const std::string other_prefix = "another prefix, which needs memory of its own";

/// The value and the level of each option.
Values values_of(const ConfigurationSetter &setter)
{
    Values values;
    for (const OptionParser::Option &option : setter.options().options()) {
        values.emplace_back(option.value, option.level);
    }
    return values;
}

/// A setter whose options have values, and a text.
struct Replayed : CatalogueSetter {
    explicit Replayed(const std::string &text)
    {
        set_option("verbosity", "2", 9);
        set_option("printer.defines_prefix", "set directly, and not kept without the heap", 9);
        load_text(*this, text, 1);
        set_active_config(section);
    }
};

/// A text and the values that its replay passes through: after none of its assignments, after the first, ...
struct Text {
    explicit Text(std::vector<std::pair<std::string, std::string>> assignments, std::size_t in_no_section)
    {
        for (std::size_t i = 0; i < assignments.size(); ++i) {
            text += (i == in_no_section ? "[" + section + "]\n" : "") + assignments[i].first + " = " +
                    assignments[i].second + "\n";
        }
        Replayed setter("");
        stages.push_back(values_of(setter));
        for (const auto &[name, value] : assignments) {
            setter.set_option(name, value, 1);
            stages.push_back(values_of(setter));
        }
    }

    std::string text;
    std::vector<Values> stages;
};

struct Replaying {
    explicit Replaying(const Text &t) : expected(t), setter(t.text), sections(sections_of(setter)) {}

    void act() { setter.parse_active_config(); }
    void refused()
    {
        const std::vector<Values> &stages = expected.stages;
        EXPECT_NE(std::find(stages.begin(), stages.end(), values_of(setter)), stages.end()) << "between two entries";
        act();
    }
    void done()
    {
        EXPECT_TRUE(values_of(setter) == expected.stages.back());
        EXPECT_EQ(sections_of(setter), sections);
    }

    const Text &expected;
    Replayed setter;
    Sections sections;
};

TEST(replay_memory, refused_applies_the_entries_before_and_none_after)
{
    const Text text({{"verbosity", "1"},
                     {"printer.defines_prefix", prefix},
                     {"debug.api_call_trace_filename", "a file whose name needs memory of its own"},
                     {"random_seed", "12"},
                     {"printer.defines_prefix", other_prefix},
                     {"verbosity", "0"},
                     {"debug.api_call_trace_filename", "a file whose name needs even more memory of its own"}},
                    4);
    EXPECT_GE(report_refused(refuse_each<Replaying>(text)), 4U) << "the strings";
}

/// The first replay of a setter that has read nothing makes the unnamed section.
struct ReplayingNothing {
    void act() { setter.parse_active_config(); }
    void refused()
    {
        EXPECT_EQ(sections_of(setter), Sections());
        act();
    }
    void done() { EXPECT_EQ(sections_of(setter), (Sections{{"", {}}})); }

    ConfigurationSetter setter;
};

TEST(replay_memory, refused_to_the_first_section_makes_none)
{
    EXPECT_GE(report_refused(refuse_each<ReplayingNothing>()), 1U) << "the chunk of nodes";
}

struct Setting {
    Setting() { setter.set_option("printer.defines_prefix", prefix, 3); }

    void act() { setter.set_option("printer.defines_prefix", other_prefix, 4); }
    void refused()
    {
        Configuration record;
        setter.update_config(&record);
        EXPECT_EQ(record.printer_defines_prefix, prefix);
        EXPECT_EQ(setter.options().find_option("printer.defines_prefix")->level, 3);
        act();
    }
    void done()
    {
        Configuration record;
        setter.update_config(&record);
        EXPECT_EQ(record.printer_defines_prefix, other_prefix);
        EXPECT_EQ(setter.options().find_option("printer.defines_prefix")->level, 4);
    }

    CatalogueSetter setter;
};

TEST(set_option_memory, refused_leaves_the_earlier_value_and_its_level)
{
    EXPECT_GE(report_refused(refuse_each<Setting>()), 1U);
}

struct Choosing {
    Choosing()
    {
        load_text(setter, "[a]\nverbosity = 1\n[" + section + "]\nverbosity = 2\n");
        setter.set_active_config("a");
    }

    std::int32_t verbosity()
    {
        Configuration record;
        setter.update_config(&record);
        return record.verbosity;
    }

    void act() { setter.set_active_config(section); }
    void refused()
    {
        EXPECT_EQ(verbosity(), 1);
        act();
    }
    void done() { EXPECT_EQ(verbosity(), 2); }

    CatalogueSetter setter;
};

TEST(set_active_config_memory, refused_leaves_the_earlier_section_active)
{
    EXPECT_GE(report_refused(refuse_each<Choosing>()), 1U);
}

/// From a text to the record in one go.
struct Filling {
    Filling() : in("verbosity = 1\n[" + section + "]\nprinter.defines_prefix = " + prefix + "\n") {}

    void act()
    {
        in.clear();
        in.seekg(0);
        setter.load(in, 0);
        setter.set_active_config(section);
        setter.update_config(&record);
    }
    void refused() { act(); }
    void done()
    {
        Configuration expected = sentinel_record(0);
        expected.verbosity = 1;
        expected.printer_defines_prefix = prefix;
        EXPECT_EQ(differing_fields(record, expected), Names());
    }

    std::istringstream in;
    CatalogueSetter setter;
    Configuration record = sentinel_record(0);
};

TEST(configurationsetter_memory, refused_anywhere_on_the_way_to_a_record_leaves_a_setter_that_goes_it_again)
{
    EXPECT_GE(report_refused(refuse_each<Filling>()), 8U);
}

} // namespace
