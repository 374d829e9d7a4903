// Errors when the heap refuses: made, copied, assigned and read.

#include "dalvo/options/optionparser.h"

#include <cstddef>
#include <cstring>
#include <new>
#include <optional>
#include <string>

#include <gtest/gtest.h>

#include "tests/support/heap_watch.h"
#include "tests/support/refusals.h"

namespace {

using dalvo::Exception;
using dalvo::support::HeapWatch;
using dalvo::testing::refuse_each;
using dalvo::testing::report_refused;
using error = dalvo::OptionParser::error;

/// The parts of an error, each too long for a string to hold without the heap.
struct Parts {
    std::string msg = "a message that is too long for a string to hold without the heap";
    std::string option = "an.option.whose.name.is.too.long.for.a.string.to.hold.without.the.heap";
    std::string value = "a value that is too long for a string to hold without the heap";
    std::string command = "a command line that is too long for a string to hold without the heap";

    error made() const { return error(msg, option, value, command); }
    std::string text() const { return msg + ": " + option + ", value: " + value + ", command-line: " + command; }
};

void expect_whole(const error &e, const Parts &parts)
{
    EXPECT_EQ(e.what(), parts.text());
    EXPECT_EQ(e.option, parts.option);
    EXPECT_EQ(e.value, parts.value);
    EXPECT_EQ(e.command_line, parts.command);
}

struct Making {
    explicit Making(const Parts &p) : parts(p) {}

    void act() { made.emplace(parts.msg, parts.option, parts.value, parts.command); }
    void refused()
    {
        EXPECT_FALSE(made.has_value());
        act();
    }
    void done() { expect_whole(*made, parts); }

    const Parts &parts;
    std::optional<error> made;
};

TEST(option_error_memory, refused_to_a_constructor_makes_no_error)
{
    EXPECT_GE(report_refused(refuse_each<Making>(Parts())), 4U);
}

struct Copying {
    explicit Copying(const Parts &p) : parts(p), original(p.made()) {}

    void act() { copy.emplace(original); }
    void refused()
    {
        EXPECT_FALSE(copy.has_value());
        act();
    }
    void done()
    {
        expect_whole(original, parts);
        expect_whole(*copy, parts);
        copy->message_stream << ", more";
        EXPECT_EQ(copy->what(), parts.text() + ", more");
    }

    const Parts &parts;
    error original;
    std::optional<error> copy;
};

TEST(option_error_memory, refused_to_a_copy_leaves_the_original)
{
    EXPECT_GE(report_refused(refuse_each<Copying>(Parts())), 4U);
}

struct Throwing {
    explicit Throwing(const Parts &p) : parts(p), original(p.made()) {}

    void act()
    {
        caught.clear();
        try {
            throw error(original);
        } catch (const Exception &e) {
            caught = e.message_stream.str();
        }
    }
    void refused()
    {
        EXPECT_EQ(caught, "");
        act();
    }
    void done() { EXPECT_EQ(caught, parts.text()); }

    const Parts &parts;
    error original;
    std::string caught;
};

TEST(option_error_memory, refused_to_a_copy_that_is_thrown_throws_that_memory_ran_out)
{
    EXPECT_GE(report_refused(refuse_each<Throwing>(Parts())), 4U);
}

struct Assigning {
    explicit Assigning(const Parts &p) : parts(p), original(p.made()) {}

    void act() { other = original; }
    void refused()
    {
        expect_whole(original, parts);
        act();
    }
    void done()
    {
        expect_whole(original, parts);
        expect_whole(other, parts);
    }

    const Parts &parts;
    error original;
    error other = error("m", "o", "v", "c");
};

TEST(option_error_memory, refused_to_an_assignment_leaves_an_error_that_can_be_assigned_again)
{
    EXPECT_GE(report_refused(refuse_each<Assigning>(Parts())), 4U);
}

TEST(option_error_memory, refused_to_what_gives_an_empty_text)
{
    const Parts parts;
    const error e = parts.made();
    std::size_t refused = 0;
    for (const bool and_later : {false, true}) {
        for (std::size_t n = 1;; ++n) {
            const HeapWatch watch;
            HeapWatch::fail_allocation(n, and_later);
            const char *const text = e.what();
            const bool is_empty = std::strlen(text) == 0;
            HeapWatch::fail_allocation(0);
            EXPECT_EQ(is_empty, HeapWatch::failures() != 0) << "allocation " << n;
            if (!is_empty) {
                break;
            }
            ++refused;
            expect_whole(e, parts); // nothing is lost for the next call
        }
    }
    EXPECT_GE(report_refused(refused / 2), 1U);
}

} // namespace
