#include <cstddef>
#include <new>
#include <optional>
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

// What a setter asks of the heap.

namespace {

using dalvo::Configuration;
using dalvo::ConfigurationSetter;
using dalvo::support::HeapWatch;
using dalvo::testing::golden_rows;
using dalvo::testing::load_text;
using dalvo::testing::refuse_each;
using dalvo::testing::report_refused;
using dalvo::testing::Sections;
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
    const std::size_t options = golden_rows("catalogue.tsv", 4).size();
    EXPECT_FALSE(fails_at(4 * options, [&] { setter.initialize_options(); }));
    std::ostringstream text;
    const Configuration record = sentinel_record(0);
    setter.dump(&record, text, "");
    EXPECT_FALSE(fails_at(options + 20, [&] { load_text(setter, text.str()); })) << "the names";
}

TEST(configurationsetter_memory, is_asked_for_at_most_three_times_a_line_however_long_the_names_are)
{
    for (const std::size_t length : {1U, 15U, 16U, 1000U, 100000U}) {
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

TEST(configurationsetter_memory, of_sections_comes_in_chunks_of_16_doubling_up_to_8192)
{
    constexpr std::size_t sections = 16368 + 1; // those of the ten chunks up to the first of 8192, and one more
    std::string text;
    for (std::size_t i = 1; i < sections; ++i) {
        text += "[" + std::to_string(i) + "]\n";
    }
    std::istringstream in(text);
    using Section = std::vector<ConfigurationSetter::OptEntry>;
    constexpr std::size_t node = sizeof(void *) + sizeof(std::string) + sizeof(Section);
    std::vector<std::size_t> expected;
    for (const std::size_t nodes : {16U, 32U, 64U, 128U, 256U, 512U, 1024U, 2048U, 4096U, 8192U, 8192U}) {
        expected.push_back(sizeof(void *) + nodes * node);
    }
    const HeapWatch watch;
    ConfigurationSetter setter;
    setter.load(in, 0);
    EXPECT_EQ(setter.sections().table().count(), sections) << "with the unnamed one";
    EXPECT_EQ(HeapWatch::malloc_sizes(), expected);
}

struct Making {
    void act() { setter.emplace(); }
    void refused()
    {
        EXPECT_FALSE(setter.has_value());
        act();
    }
    void done()
    {
        EXPECT_EQ(sections_of(*setter), Sections());
        EXPECT_TRUE(setter->options().options().empty());
    }

    std::optional<ConfigurationSetter> setter;
};

TEST(configurationsetter_memory, refused_to_a_constructor_makes_no_setter)
{
    EXPECT_GE(report_refused(refuse_each<Making>()), 2U);
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

} // namespace
