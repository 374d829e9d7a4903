// dalvo::defaults as it is built with DALVO_ABORT_ON_EXCEPTION.

#include "dalvo/configuration/default_config.h"
#include "dalvo/options/optionparser.h"

#include <csignal>

#include <gtest/gtest.h>

const char *dalvo_default_config[] = {nullptr};

#ifdef DALVO_COVERAGE
extern "C" void __gcov_dump(); // of libgcov: writes down which lines ran
#endif

namespace {

/// What runs in a child that is about to abort. A handler that returns does not stop the abort.
template <class Throwing> void abort_noting_coverage(Throwing throwing)
{
#ifdef DALVO_COVERAGE
    std::signal(SIGABRT, [](int) { __gcov_dump(); });
#endif
    throwing();
}

TEST(abort_on_exception_DeathTest, the_message_is_written_and_the_process_aborts_at_the_throw)
{
    EXPECT_EXIT(abort_noting_coverage([] { throw dalvo::Exception("gone wrong"); }),
                ::testing::KilledBySignal(SIGABRT), "^gone wrong\n$");
}

TEST(abort_on_exception_DeathTest, an_option_error_shows_the_message_it_has_by_then)
{
    EXPECT_EXIT(abort_noting_coverage([] { throw dalvo::OptionParser::error("m", "o", "v", ""); }),
                ::testing::KilledBySignal(SIGABRT), "^m\n$");
}

} // namespace
