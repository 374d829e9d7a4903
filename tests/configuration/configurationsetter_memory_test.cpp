#include <algorithm>
#include <cstddef>
#include <ios>
#include <new>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "dalvo/configuration/configurationsetter.h"
#include "tests/support/heap_watch.h"
#include "tests/support/records.h"
#include "tests/support/sections.h"

// Memory that runs out at each allocation of an operation in turn.

namespace {

using dalvo::Configuration;
using dalvo::ConfigurationSetter;
using dalvo::support::HeapWatch;
using dalvo::testing::differing_fields;
using dalvo::testing::load_text;
using dalvo::testing::Sections;
using dalvo::testing::sections_from;
using dalvo::testing::sections_of;
using dalvo::testing::sentinel_record;

/// Runs `action` with the n-th allocation failing; whether it threw std::bad_alloc.
template <class Action> bool fails_at(std::size_t n, Action action)
{
    const HeapWatch watch;
    HeapWatch::fail_new(n);
    try {
        action();
    } catch (const std::bad_alloc &) {
        return true;
    }
    return false;
}

/// What a longer text files; its names and values are too long for a string without memory of its own.
const char *const long_text = "# the first setting of the unnamed section\n"
                              "a.name.that.needs.memory.of.its.own = a value that needs memory of its own\n"
                              "[a section that needs memory of its own, another section that needs memory of its own]\n"
                              "another.name.that.needs.memory.of.its.own = another value that needs memory\n"
                              "a.third.name.that.needs.memory.of.its.own\n";

TEST(configurationsetter_memory, is_asked_for_in_proportion_to_the_options)
{
    ConfigurationSetter setter;
    EXPECT_FALSE(fails_at(4 * 127, [&] { setter.initialize_options(); }));
    std::ostringstream text;
    const Configuration record = sentinel_record(0);
    setter.dump(&record, text, "");
    EXPECT_FALSE(fails_at(127 + 20, [&] { load_text(setter, text.str()); })) << "the names";
}

TEST(configurationsetter_memory, is_asked_for_at_most_three_times_a_line_however_long_the_names_are)
{
    for (const std::size_t length : {1, 15, 16, 1000, 100000}) {
        std::string text;
        constexpr std::size_t lines = 1000;
        for (std::size_t i = 0; i < lines; ++i) {
            const std::string number = std::to_string(i);
            text += i % 10 == 0 ? "[" + std::string(length, 's') + number + "]\n"
                                : std::string(length, 'n') + number + " = " + std::string(length, 'v') + "\n";
        }
        std::istringstream in(text);
        ConfigurationSetter setter;
        EXPECT_FALSE(fails_at(3 * lines, [&] { setter.load(in, 0); })) << length;
        EXPECT_EQ(setter.sections().table().count(), 101U) << length;
    }
}

TEST(configurationsetter_memory, destroys_what_a_constructor_had_built_when_it_fails)
{
    std::size_t failures = 0;
    for (bool failed = true; failed; failures += failed ? 1 : 0) {
        const HeapWatch watch;
        HeapWatch::fail_new(failures + 1);
        try {
            const ConfigurationSetter setter;
            failed = false;
        } catch (const std::bad_alloc &) {
        }
        EXPECT_EQ(HeapWatch::outstanding_new(), 0U) << "at allocation " << failures + 1;
    }
    EXPECT_GT(failures, 0U);
}

TEST(configurationsetter_memory, frees_all_that_it_filed)
{
    std::istringstream in(long_text); // its own memory is not counted
    const std::string active = "s";
    const HeapWatch watch;
    {
        ConfigurationSetter setter;
        setter.load(in, 0);
        setter.set_active_config(active);
        EXPECT_GT(HeapWatch::outstanding_new(), 0U);
        EXPECT_EQ(HeapWatch::malloc_sizes().size(), 1U) << "a chunk of nodes";
        EXPECT_EQ(HeapWatch::freed().size(), 0U);
    }
    EXPECT_EQ(HeapWatch::outstanding_new(), 0U);
    EXPECT_EQ(HeapWatch::freed().size(), 1U);
}

TEST(configurationsetter_memory, passes_on_that_memory_ran_out_while_a_text_is_read)
{
    const Sections whole = sections_from(long_text, 4);
    std::size_t failures = 0;
    for (bool failed = true; failed; failures += failed ? 1 : 0) {
        SCOPED_TRACE(failures + 1);
        ConfigurationSetter setter;
        std::istringstream in(long_text);
        in.exceptions(std::ios_base::failbit | std::ios_base::badbit);
        failed = fails_at(failures + 1, [&] { setter.load(in, 4); });
        EXPECT_EQ(in.exceptions(), std::ios_base::failbit | std::ios_base::badbit);
        // What is filed is a beginning of each section.
        for (const auto &[name, entries] : sections_of(setter)) {
            ASSERT_EQ(whole.count(name), 1U);
            Sections beginning = whole;
            beginning[name].resize(std::min(entries.size(), beginning[name].size()));
            EXPECT_EQ(entries, beginning[name]) << name;
        }
        if (!failed) {
            EXPECT_EQ(sections_of(setter), whole);
        }
    }
    EXPECT_GT(failures, 20U);
}

TEST(configurationsetter_memory, passes_on_that_no_chunk_of_nodes_is_left)
{
    ConfigurationSetter setter;
    const HeapWatch watch;
    HeapWatch::fail_next_malloc();
    EXPECT_THROW(load_text(setter, long_text), std::bad_alloc);
    EXPECT_EQ(sections_of(setter), Sections());
    load_text(setter, long_text);
    EXPECT_EQ(sections_of(setter), sections_from(long_text));
}

TEST(configurationsetter_memory, never_takes_a_part_of_the_default_text_for_the_whole)
{
    ConfigurationSetter reference;
    reference.load_default();
    const Sections whole = sections_of(reference);
    std::size_t failures = 0;
    for (bool failed = true; failed; failures += failed ? 1 : 0) {
        ConfigurationSetter setter;
        failed = fails_at(failures + 1, [&] { setter.load_default(); });
        if (!failed) {
            EXPECT_EQ(sections_of(setter), whole) << "no failure at allocation " << failures + 1;
        }
    }
    EXPECT_GT(failures, 127U);
}

TEST(configurationsetter_memory, passes_on_that_memory_ran_out_while_a_section_is_chosen_and_replayed)
{
    const std::string section = "a section that needs memory of its own";
    const std::string prefix = "a prefix that needs memory of its own";
    std::size_t failures = 0;
    for (bool failed = true; failed; failures += failed ? 1 : 0) {
        SCOPED_TRACE(failures + 1);
        ConfigurationSetter setter;
        setter.initialize_options();
        load_text(setter, "verbosity = 1\n[" + section + "]\nprinter.defines_prefix = " + prefix + "\n");
        Configuration record;
        failed = fails_at(failures + 1, [&] {
            setter.set_active_config(section);
            setter.update_config(&record);
        });
        Configuration expected;
        expected.printer_defines_prefix = failed ? record.printer_defines_prefix : prefix;
        expected.verbosity = failed ? record.verbosity : 1;
        EXPECT_EQ(differing_fields(record, expected), std::vector<std::string>());

        setter.set_active_config(section);
        setter.update_config(&record);
        EXPECT_EQ(record.printer_defines_prefix, prefix) << "the setter goes on to work";
        EXPECT_EQ(record.verbosity, 1);
    }
    EXPECT_GT(failures, 3U);
}

} // namespace
