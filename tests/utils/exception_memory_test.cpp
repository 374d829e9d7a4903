// Exception when the heap refuses.

#include "dalvo/utils/exception.h"

#include <cstddef>
#include <cstring>
#include <new>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "tests/support/heap_watch.h"

namespace {

using dalvo::Exception;
using dalvo::support::HeapWatch;

const std::string text = "a message that is too long for a string to hold without the heap";

/// Runs `work` with each of its allocations refused in turn, `after_throw` after each std::bad_alloc; returns how many
/// there were.
template <class Work, class AfterThrow> std::size_t refuse_each(Work work, AfterThrow after_throw)
{
    for (std::size_t n = 1;; ++n) {
        HeapWatch watch;
        try {
            watch.fail_new(n);
            work();
            watch.fail_new(0);
            return n - 1;
        } catch (const std::bad_alloc &) {
            watch.fail_new(0);
        }
        EXPECT_EQ(watch.outstanding_new(), 0U) << "allocation " << n;
        after_throw();
    }
}

TEST(exception_memory, refused_to_what_gives_an_empty_text)
{
    const Exception e(text);
    std::size_t refused = 0;
    for (std::size_t n = 1;; ++n) {
        HeapWatch watch;
        watch.fail_new(n);
        const bool is_empty = std::strlen(e.what()) == 0;
        watch.fail_new(0);
        if (!is_empty) {
            break;
        }
        ++refused;
    }
    EXPECT_GE(refused, 1U);
    EXPECT_EQ(e.what(), text) << "nothing is lost for the next call";
}

TEST(exception_memory, refused_to_a_constructor_makes_no_exception)
{
    EXPECT_GE(refuse_each([] { const Exception e(text); }, [] {}), 1U);
}

TEST(exception_memory, refused_to_a_copy_leaves_the_original)
{
    const Exception e(text);
    EXPECT_GE(refuse_each([&] { const Exception copy(e); }, [&] { EXPECT_EQ(e.what(), text); }), 1U);
}

TEST(exception_memory, refused_to_an_assignment_leaves_both)
{
    const Exception e(text);
    Exception other("another message, again one that is too long for a string without the heap");
    const std::string before = other.what();
    const auto both_are_as_before = [&] {
        EXPECT_EQ(other.what(), before);
        EXPECT_EQ(e.what(), text);
    };
    EXPECT_GE(refuse_each([&] { other = e; }, both_are_as_before), 1U);
    EXPECT_EQ(other.what(), text);
}

} // namespace
