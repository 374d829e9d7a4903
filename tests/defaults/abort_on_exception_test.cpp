// dalvo::defaults as it is built with DALVO_ABORT_ON_EXCEPTION.

#include "dalvo/configuration/default_config.h"
#include "dalvo/options/optionparser.h"

#include <csignal>

#include <gtest/gtest.h>

const char *dalvo_default_config[] = {nullptr};

namespace {

TEST(abort_on_exception_DeathTest, the_message_is_written_and_the_process_aborts_at_the_throw)
{
    EXPECT_EXIT(throw dalvo::Exception("gone wrong"), ::testing::KilledBySignal(SIGABRT), "^gone wrong\n$");
}

TEST(abort_on_exception_DeathTest, an_option_error_shows_the_message_it_has_by_then)
{
    EXPECT_EXIT(throw dalvo::OptionParser::error("m", "o", "v", ""), ::testing::KilledBySignal(SIGABRT), "^m\n$");
}

} // namespace
