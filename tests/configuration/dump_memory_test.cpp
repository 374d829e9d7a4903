// The dump of a record when the heap refuses.

#include <cstddef>
#include <ios>
#include <new>
#include <ostream>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "dalvo/configuration/configurationsetter.h"
#include "tests/support/fixed_buffer.h"
#include "tests/support/golden.h"
#include "tests/support/heap_watch.h"
#include "tests/support/records.h"
#include "tests/support/refusals.h"
#include "tests/support/settings.h"

namespace {

using dalvo::Configuration;
using dalvo::ConfigurationSetter;
using dalvo::support::HeapWatch;
using dalvo::testing::DumpedEntry;
using dalvo::testing::FixedBuffer;
using dalvo::testing::golden_rows;
using dalvo::testing::RecordingPrinter;
using dalvo::testing::refuse_each;
using dalvo::testing::report_refused;
using dalvo::testing::sentinel_record;

const std::string section = "a section with a name that needs memory of its own";

/// A record, and its dump as memory that never runs out has it.
struct Dumped {
    Dumped()
    {
        const ConfigurationSetter setter;
        std::ostringstream out;
        setter.dump(&record, out, section);
        text = out.str();
        RecordingPrinter printer;
        setter.dump(&record, out, printer);
        entries = printer.entries;
    }

    Configuration record = sentinel_record(0);
    std::string text;
    std::vector<DumpedEntry> entries;
};

bool is_beginning(const std::string &part, const std::string &whole)
{
    return whole.compare(0, part.size(), part) == 0;
}

struct DumpingWithoutTheHeap {
    explicit DumpingWithoutTheHeap(const Dumped &d) : expected(d) {}

    void act() { setter.dump(&expected.record, out, section); }
    void refused()
    {
        EXPECT_TRUE(is_beginning(buffer.text(), expected.text)) << buffer.text();
        EXPECT_TRUE(out.good());
        buffer.clear();
        act();
    }
    void done() { EXPECT_EQ(buffer.text(), expected.text); }

    const Dumped &expected;
    ConfigurationSetter setter;
    FixedBuffer buffer;
    std::ostream out{&buffer};
};

TEST(dump_memory, refused_leaves_a_beginning_of_the_text_on_a_stream_that_needs_none)
{
    EXPECT_GE(report_refused(refuse_each<DumpingWithoutTheHeap>(Dumped())), 1U) << "the names";
}

struct DumpingToAPrinter {
    explicit DumpingToAPrinter(const Dumped &d) : expected(d) {}

    void act() { setter.dump(&expected.record, out, printer); }
    void refused()
    {
        EXPECT_LT(printer.entries.size(), expected.entries.size());
        expect_beginning();
        printer.entries.clear();
        act();
    }
    void done()
    {
        EXPECT_EQ(printer.entries.size(), expected.entries.size());
        expect_beginning();
    }

    void expect_beginning()
    {
        ASSERT_LE(printer.entries.size(), expected.entries.size());
        for (std::size_t i = 0; i < printer.entries.size(); ++i) {
            EXPECT_EQ(printer.entries[i].name, expected.entries[i].name);
            EXPECT_EQ(printer.entries[i].type, expected.entries[i].type);
            EXPECT_EQ(printer.entries[i].value, expected.entries[i].value);
        }
    }

    const Dumped &expected;
    ConfigurationSetter setter;
    FixedBuffer buffer;
    std::ostream out{&buffer};
    RecordingPrinter printer;
};

TEST(dump_memory, refused_to_a_printer_passes_through_behind_a_beginning_of_the_entries)
{
    EXPECT_GE(report_refused(refuse_each<DumpingToAPrinter>(Dumped())), golden_rows("dump.tsv", 3).size());
}

/// A stream that throws when it breaks.
struct DumpingToAString {
    explicit DumpingToAString(const Dumped &d) : expected(d) { out.exceptions(std::ios_base::badbit); }

    void act() { setter.dump(&expected.record, out, section); }
    void refused()
    {
        EXPECT_TRUE(is_beginning(out.str(), expected.text));
        out.str("");
        out.clear();
        act();
    }
    void done() { EXPECT_EQ(out.str(), expected.text); }

    const Dumped &expected;
    ConfigurationSetter setter;
    std::ostringstream out;
};

TEST(dump_memory, refused_to_a_stream_that_throws_leaves_a_beginning_of_the_text)
{
    EXPECT_GE(report_refused(refuse_each<DumpingToAString>(Dumped())), 4U) << "the names, and the stream as it grows";
}

TEST(dump_memory, refused_to_a_stream_that_does_not_throw_leaves_it_broken)
{
    const Dumped expected;
    const ConfigurationSetter setter;
    std::size_t broken = 0;
    for (const bool and_later : {false, true}) {
        for (std::size_t n = 1, failures = 1; failures != 0; ++n) {
            SCOPED_TRACE(n);
            std::ostringstream out;
            bool thrown = false;
            {
                const HeapWatch watch;
                HeapWatch::fail_allocation(n, and_later);
                try {
                    setter.dump(&expected.record, out, section);
                } catch (const std::bad_alloc &) {
                    thrown = true;
                }
                failures = HeapWatch::failures();
            }
            EXPECT_EQ(thrown || out.bad(), failures != 0) << "a part passes for the whole";
            if (failures == 0) {
                EXPECT_EQ(out.str(), expected.text);
            } else if (!and_later) {
                ++broken;
            }
        }
    }
    EXPECT_GE(report_refused(broken), 4U);
}

} // namespace
