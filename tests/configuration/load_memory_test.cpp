// Texts that are read when the heap refuses.

#include <algorithm>
#include <cstdint>
#include <ios>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "dalvo/configuration/configurationsetter.h"
#include "tests/support/golden.h"
#include "tests/support/heap_watch.h"
#include "tests/support/records.h"
#include "tests/support/refusals.h"
#include "tests/support/sections.h"
#include "tests/support/settings.h"

namespace {

using dalvo::Configuration;
using dalvo::ConfigurationSetter;
using dalvo::OptionParser;
using dalvo::support::HeapWatch;
using dalvo::testing::CatalogueSetter;
using dalvo::testing::differing_fields;
using dalvo::testing::Filed;
using dalvo::testing::golden_rows;
using dalvo::testing::load_text;
using dalvo::testing::refuse_each;
using dalvo::testing::report_refused;
using dalvo::testing::Sections;
using dalvo::testing::sections_of;
using dalvo::testing::sentinel_record;

using Names = std::vector<std::string>;

/// Too long for a string to hold without the heap.
std::string long_name(int i)
{
    return "section." + std::to_string(i) + ".with.a.name.that.needs.memory";
}

/// What a setter that knows the catalogue makes of what it has filed, `section` being the active one.
Configuration settings_of(ConfigurationSetter &setter, const std::string &section)
{
    setter.set_active_config(section);
    Configuration record = sentinel_record(0);
    setter.update_config(&record);
    return record;
}

/// Whether each section of `part` is a beginning of the section of the same name in `whole`.
bool is_beginning(const Sections &part, const Sections &whole)
{
    return std::all_of(part.begin(), part.end(), [&](const auto &section) {
        const auto found = whole.find(section.first);
        const std::vector<Filed> &entries = section.second;
        return found != whole.end() && entries.size() <= found->second.size() &&
               std::equal(entries.begin(), entries.end(), found->second.begin());
    });
}

Sections appended(Sections sections, const Sections &more)
{
    for (const auto &[name, entries] : more) {
        std::vector<Filed> &own = sections[name];
        own.insert(own.end(), entries.begin(), entries.end());
    }
    return sections;
}

/// A text of more sections than a table starts with buckets for and a chunk has nodes for, and what becomes of it.
struct Text {
    Text()
    {
        text = "# the first setting of the unnamed section\nverbosity = 1\n"
               "printer.defines_prefix = a prefix that needs memory of its own\n";
        for (int i = 0; i < 24; ++i) {
            text += "[" + long_name(i) + "]\nverbosity = 2\nrandom_seed = " + std::to_string(i + 1) + "\n";
        }
        text += "[" + section + ", " + other_section + "]\n" +
                "printer.defines_prefix = another prefix that needs memory of its own\nverbosity = 0\n";
        CatalogueSetter setter;
        load_text(setter, text, level);
        sections = sections_of(setter);
        record = settings_of(setter, section);
    }

    static constexpr std::int32_t level = 4;
    const std::string section = "a section that needs memory of its own";
    const std::string other_section = "another section that needs memory of its own";
    std::string text;
    Sections sections;
    Configuration record;
};

struct Loading {
    explicit Loading(const Text &t) : expected(t), in(t.text)
    {
        in.exceptions(std::ios_base::failbit | std::ios_base::badbit);
    }

    void act() { setter.load(in, Text::level); }

    void refused()
    {
        EXPECT_EQ(in.exceptions(), std::ios_base::failbit | std::ios_base::badbit);
        filed_before = sections_of(setter);
        EXPECT_TRUE(is_beginning(filed_before, expected.sections));
        load_text(setter, expected.text, Text::level);
    }

    void done()
    {
        EXPECT_EQ(sections_of(setter), appended(filed_before, expected.sections));
        EXPECT_EQ(differing_fields(settings_of(setter, expected.section), expected.record), Names());
    }

    const Text &expected;
    std::istringstream in;
    CatalogueSetter setter;
    Sections filed_before;
};

TEST(load_memory, refused_leaves_a_beginning_of_each_section_and_a_setter_that_reads_on)
{
    EXPECT_GE(report_refused(refuse_each<Loading>(Text())), 100U);
}

/// A text with a malformed line.
struct LoadingMalformed {
    LoadingMalformed()
    {
        line = "[" + long_name(1) + ", " + long_name(2) + ", ]";
        text = "verbosity = a value that needs memory of its own\n" + line + "\nrandom_seed = 1\n";
        expected[""] = {{"verbosity", "a value that needs memory of its own", 0}};
        expected[long_name(1)] = {};
        expected[long_name(2)] = {};
    }

    void act()
    {
        error.clear();
        try {
            load_text(setter, text);
            ADD_FAILURE() << "no error was thrown";
        } catch (const OptionParser::error &e) {
            error = e.message_stream.str();
        }
    }

    void refused()
    {
        EXPECT_EQ(error, "");
        filed_before = sections_of(setter);
        EXPECT_TRUE(is_beginning(filed_before, expected));
        act();
    }

    void done()
    {
        EXPECT_EQ(error, "bad format of configuration file: " + line + ", value: ");
        EXPECT_EQ(sections_of(setter), appended(filed_before, expected));
    }

    std::string line;
    std::string text;
    Sections expected;
    ConfigurationSetter setter;
    std::string error;
    Sections filed_before;
};

TEST(load_memory, refused_to_a_text_with_a_malformed_line_throws_no_other_error)
{
    EXPECT_GE(report_refused(refuse_each<LoadingMalformed>()), 15U);
}

/// The built-in text, and what becomes of it.
struct BuiltIn {
    BuiltIn()
    {
        CatalogueSetter setter;
        setter.load_default();
        sections = sections_of(setter);
        record = settings_of(setter, "");
    }

    Sections sections;
    Configuration record;
};

struct LoadingBuiltIn {
    explicit LoadingBuiltIn(const BuiltIn &b) : expected(b) {}

    void act() { setter.load_default(); }

    void refused()
    {
        filed_before = sections_of(setter);
        EXPECT_TRUE(is_beginning(filed_before, expected.sections));
        act();
    }

    void done()
    {
        EXPECT_EQ(sections_of(setter), appended(filed_before, expected.sections));
        EXPECT_EQ(differing_fields(settings_of(setter, ""), expected.record), Names());
    }

    const BuiltIn &expected;
    CatalogueSetter setter;
    Sections filed_before;
};

TEST(load_memory, refused_never_takes_a_part_of_the_default_text_for_the_whole)
{
    EXPECT_GE(report_refused(refuse_each<LoadingBuiltIn>(BuiltIn())), golden_rows("catalogue.tsv", 4).size());
}

TEST(load_memory, is_asked_for_in_proportion_to_a_long_line)
{
    constexpr std::size_t megabyte = 1U << 20U;
    const std::string filler(megabyte, 'x');
    const struct {
        std::string text;
        std::size_t most; // bytes asked for, to a byte of the text, the line itself among them
        const char *why;
    } rows[] = {
        {"name = " + filler + "\n", 2, "a value"},
        {filler + "\n", 2, "a name"},
        {"[" + filler + "]\n", 6, "a section's name, as it is looked up, inserted and kept"},
        {"[" + filler + "\n", 7, "a malformed line, in an error and its copies"},
        {"# " + filler + "\n", 1, "a comment"},
        {std::string(megabyte, ' ') + "\n", 1, "blanks"},
    };
    for (const auto &row : rows) {
        ConfigurationSetter setter;
        std::istringstream in(row.text);
        const HeapWatch watch;
        try {
            setter.load(in, 0);
        } catch (const OptionParser::error &) { // the malformed one
        }
        constexpr std::size_t rest = 4096;
        EXPECT_LE(HeapWatch::bytes_of_new(), row.most * megabyte + rest) << row.why;
        EXPECT_GE(HeapWatch::bytes_of_new(), megabyte) << row.why << ": all is seen";
    }
}

} // namespace
