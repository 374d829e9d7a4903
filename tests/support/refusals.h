#pragma once

#include <cstddef>
#include <iostream>
#include <new>

#include <gtest/gtest.h>

#include "tests/support/heap_watch.h"

namespace dalvo::testing {

/// Runs `Scenario` once with the n-th allocation of its `act` refused, and with `and_later` all that follow it; whether
/// there was one to refuse.
template <class Scenario, class... Args> bool refuse_one(std::size_t n, bool and_later, const Args &...args)
{
    using support::HeapWatch;
    const HeapWatch watch;
    {
        Scenario scenario(args...);
        HeapWatch::fail_allocation(n, and_later);
        bool thrown = false;
        try {
            scenario.act();
        } catch (const std::bad_alloc &) {
            thrown = true;
        }
        HeapWatch::fail_allocation(0);
        if (thrown) {
            EXPECT_GT(HeapWatch::failures(), 0U) << "memory did not run out";
            scenario.refused();
        }
        scenario.done();
    }
    EXPECT_EQ(HeapWatch::outstanding_new(), 0U);
    EXPECT_EQ(HeapWatch::outstanding_malloc(), 0U);
    EXPECT_TRUE(HeapWatch::has_noted_all());
    return HeapWatch::failures() != 0;
}

/// Runs `Scenario` once for each allocation that its `act` makes, with that one refused, until it gets through; then
/// again with each one and all that follow it refused. Either std::bad_alloc leaves `act`, or what it does is whole:
/// a refusal that nobody notices would leave a part. What the scenario took is given back at its end. Returns the
/// number of allocations that were refused one by one.
///
///     struct Scenario {
///         Scenario(const Args &...);   // what precedes; nothing is refused here, nor in `refused` and `done`
///         void act();                  // the operation at hand
///         void refused();              // looks at what std::bad_alloc left, then does what is missing
///         void done();                 // looks at the whole
///     };
template <class Scenario, class... Args> std::size_t refuse_each(const Args &...args)
{
    { // What the standard library takes at the first use, and keeps, is taken here.
        Scenario scenario(args...);
        scenario.act();
        scenario.done();
    }
    std::size_t refused = 0;
    for (const bool and_later : {false, true}) {
        for (std::size_t n = 1;; ++n) {
            SCOPED_TRACE(::testing::Message() << "allocation " << n << (and_later ? " and all that follow" : ""));
            if (!refuse_one<Scenario>(n, and_later, args...)) {
                refused = and_later ? refused : n - 1;
                break;
            }
        }
    }
    return refused;
}

/// Prints how many allocations the running test refused, and passes the number on.
inline std::size_t report_refused(std::size_t count)
{
    const ::testing::TestInfo &test = *::testing::UnitTest::GetInstance()->current_test_info();
    std::cout << test.test_suite_name() << "." << test.name() << ": refused each of " << count << " allocations\n";
    return count;
}

} // namespace dalvo::testing
