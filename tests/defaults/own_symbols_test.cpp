// A host that defines both symbols itself and does not link dalvo::defaults.

#include "dalvo/configuration/configurationsetter.h"
#include "dalvo/configuration/default_config.h"

#include <exception>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/sections.h"

namespace {

std::vector<std::string> dumped_messages;

} // namespace

const char *dalvo_default_config[8] = {nullptr};

void dalvo::Exception::dump_msg_and_raise_assertion()
{
    dumped_messages.push_back(message_stream.str());
}

namespace {

using dalvo::ConfigurationSetter;
using dalvo::Exception;
using dalvo::OptionParser;

/// Puts `pieces` in place of the built-in text.
void set_default_text(const std::vector<const char *> &pieces)
{
    ASSERT_LT(pieces.size(), std::size(dalvo_default_config));
    std::size_t at = 0;
    for (const char *piece : pieces) {
        dalvo_default_config[at++] = piece;
    }
    dalvo_default_config[at] = nullptr;
}

TEST(own_symbols, the_exception_is_dumped_once_with_its_message_and_before_the_derived_part)
{
    dumped_messages.clear();
    const OptionParser::error e("m", "o", "v", "c");
    EXPECT_EQ(dumped_messages, std::vector<std::string>{"m"});
    EXPECT_STREQ(e.what(), "m: o, value: v, command-line: c");
}

TEST(own_symbols, a_copy_is_not_dumped_again)
{
    dumped_messages.clear();
    const Exception e("m");
    const Exception copy(e);
    Exception assigned("n");
    assigned = e;
    EXPECT_EQ(dumped_messages, (std::vector<std::string>{"m", "n"}));
    EXPECT_STREQ(copy.what(), "m");
    EXPECT_STREQ(assigned.what(), "m");
}

TEST(own_symbols, each_throw_of_the_component_is_dumped)
{
    dumped_messages.clear();
    ConfigurationSetter setter;
    EXPECT_THROW(setter.set_option("x", "1", 0), OptionParser::error);
    EXPECT_EQ(dumped_messages, std::vector<std::string>{"unknown option x"});
}

TEST(own_symbols, an_empty_default_text_files_nothing)
{
    set_default_text({});
    ConfigurationSetter setter;
    setter.load_default();
    EXPECT_EQ(dalvo::testing::sections_of(setter), (dalvo::testing::Sections{{"", {}}}));
}

TEST(own_symbols, the_pieces_of_the_default_text_are_joined_with_nothing_between_them)
{
    set_default_text({"a", " = ", "1\n[s", "]\nb = 2"});
    ConfigurationSetter setter;
    setter.load_default();
    EXPECT_EQ(dalvo::testing::sections_of(setter),
              (dalvo::testing::Sections{{"", {{"a", "1", 3}}}, {"s", {{"b", "2", 3}}}}));
}

TEST(own_symbols, what_a_bad_default_text_throws_passes_through)
{
    set_default_text({"a = 1\n", "[\n", "b = 2\n"});
    ConfigurationSetter setter;
    try {
        setter.load_default();
        FAIL() << "nothing thrown";
    } catch (const OptionParser::error &e) {
        EXPECT_STREQ(e.what(), "bad format of configuration file: [, value: ");
        EXPECT_EQ(e.option, "[");
    }
    EXPECT_EQ(dalvo::testing::sections_of(setter), (dalvo::testing::Sections{{"", {{"a", "1", 3}}}}));
}

} // namespace
