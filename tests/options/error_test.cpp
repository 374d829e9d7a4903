#include "dalvo/options/optionparser.h"

#include <exception>
#include <ios>
#include <memory>
#include <string>
#include <type_traits>

#include <gtest/gtest.h>

namespace {

using dalvo::Exception;
using error = dalvo::OptionParser::error;

static_assert(std::is_base_of_v<std::exception, Exception>);
static_assert(std::is_base_of_v<Exception, error>);
static_assert(std::is_polymorphic_v<error> && std::has_virtual_destructor_v<error>);
static_assert(std::is_copy_constructible_v<error> && std::is_copy_assignable_v<error>);
static_assert(!std::is_default_constructible_v<error>);
static_assert(noexcept(std::declval<const error &>().what()));

template <class Caught> std::string text_when_caught_as(const error &thrown)
{
    try {
        throw error(thrown);
    } catch (const Caught &e) {
        return e.what();
    }
}

TEST(option_error, composes_its_message_and_keeps_its_fields)
{
    const struct {
        const char *msg, *option, *value, *command_line, *expected, *why;
    } rows[] = {
        {"m", "o", "", "", "m: o, value: ", "the label of the value stands before an empty one too"},
        {"m", "o", "v", "", "m: o, value: v", "no command line, no label of it"},
        {"m", "o", "v", "c", "m: o, value: v, command-line: c", "all four"},
        {"m", "o", "", "c", "m: o, value: , command-line: c", "an empty value before a command line"},
        {"m", "", "", "", "m: , value: ", "an empty option"},
        {"m", "", "v", "", "m: , value: v", "an empty option with a value"},
        {"m", "", "", "c", "m: , value: , command-line: c", "a command line alone"},
        {"", "", "", "", ": , value: ", "an empty message"},
        {"", "o", "v", "c", ": o, value: v, command-line: c", "an empty message before all the rest"},
        {"m", "o", " ", " ", "m: o, value:  , command-line:  ", "a blank is not empty"},
        {"m:", "o, value: x", "v\n", "c: ", "m:: o, value: x, value: v\n, command-line: c: ", "nothing is escaped"},
        {"invalid value for option verbosity", "verbosity", "7", "",
         "invalid value for option verbosity: verbosity, value: 7", "the name stands twice"},
        {"bad format of configuration file", "[fast", "", "",
         "bad format of configuration file: [fast, value: ", "the piece of text at fault"},
        {"m", "\x80\xff", "\xc3\xa9", "\xfe", "m: \x80\xff, value: \xc3\xa9, command-line: \xfe", "bytes above 0x7F"},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.why);
        const error e(row.msg, row.option, row.value, row.command_line);
        EXPECT_STREQ(e.what(), row.expected);
        EXPECT_EQ(e.option, row.option);
        EXPECT_EQ(e.value, row.value);
        EXPECT_EQ(e.command_line, row.command_line);
    }
}

TEST(option_error, reads_the_same_at_each_call_of_what)
{
    const error e("m", "o", "v", "c");
    const std::string first = e.what();
    EXPECT_EQ(first, "m: o, value: v, command-line: c");
    EXPECT_EQ(e.what(), first);
    EXPECT_EQ(e.what(), first);
}

TEST(option_error, reads_the_same_whatever_it_is_caught_as)
{
    const error rows[] = {error("m", "o", "v", "c"), error("m", "", "", ""), error("", "o", "\xff", "")};
    for (const error &e : rows) {
        const std::string text = e.what();
        EXPECT_EQ(text_when_caught_as<error>(e), text);
        EXPECT_EQ(text_when_caught_as<Exception>(e), text);
        EXPECT_EQ(text_when_caught_as<std::exception>(e), text);
    }
}

TEST(option_error, shows_text_streamed_in_later)
{
    error e("m", "o", "v", "");
    EXPECT_STREQ(e.what(), "m: o, value: v");
    e.message_stream << ", in file " << 7;
    EXPECT_STREQ(e.what(), "m: o, value: v, in file 7");
    EXPECT_EQ(e.option, "o");
    EXPECT_EQ(e.value, "v");
}

TEST(option_error, leaves_a_stream_that_throws_nothing_by_itself)
{
    error thrown("m", "o", "v", "");
    EXPECT_EQ(thrown.message_stream.exceptions(), std::ios_base::goodbit);
    thrown.message_stream.setstate(std::ios_base::badbit);
    EXPECT_STREQ(thrown.what(), "m: o, value: v");
}

TEST(option_error, keeps_text_that_a_handler_of_the_base_adds)
{
    try {
        try {
            throw error("m", "o", "v", "");
        } catch (Exception &e) {
            e.message_stream << ", in file x";
            throw;
        }
    } catch (const error &e) {
        EXPECT_STREQ(e.what(), "m: o, value: v, in file x");
        EXPECT_EQ(e.option, "o");
        return;
    }
    FAIL() << "not caught as an option's error";
}

TEST(option_error, copies_its_arguments)
{
    std::string msg = "message";
    std::string option = "option";
    std::string value = "value";
    std::string command_line = "command";
    const error e(msg, option, value, command_line);
    for (std::string *argument : {&msg, &option, &value, &command_line}) {
        argument->assign(argument->size(), '#');
    }
    EXPECT_STREQ(e.what(), "message: option, value: value, command-line: command");
    EXPECT_EQ(e.option, "option");
    EXPECT_EQ(e.value, "value");
    EXPECT_EQ(e.command_line, "command");
}

TEST(option_error, copy_keeps_text_and_fields_and_outlives_the_original)
{
    auto original = std::make_unique<error>("m", "a name too long for a small string", "v", "c");
    original->message_stream << "!";
    error copy(*original);
    original.reset();
    EXPECT_STREQ(copy.what(), "m: a name too long for a small string, value: v, command-line: c!");
    EXPECT_EQ(copy.option, "a name too long for a small string");
    EXPECT_EQ(copy.value, "v");
    EXPECT_EQ(copy.command_line, "c");
}

TEST(option_error, text_streamed_into_a_copy_is_appended_and_leaves_the_original)
{
    const error original("m", "o", "v", "c");
    error copy(original);
    copy.message_stream << ", more";
    EXPECT_STREQ(copy.what(), "m: o, value: v, command-line: c, more");
    EXPECT_STREQ(original.what(), "m: o, value: v, command-line: c");
}

TEST(option_error, assigned_takes_text_and_fields)
{
    const error original("m", "o", "v", "c");
    error other("another message", "p", "w", "");
    EXPECT_STREQ(other.what(), "another message: p, value: w");
    other = original;
    EXPECT_STREQ(other.what(), "m: o, value: v, command-line: c");
    EXPECT_EQ(other.option, "o");
    EXPECT_EQ(other.value, "v");
    EXPECT_EQ(other.command_line, "c");
    other.message_stream << "+";
    EXPECT_STREQ(other.what(), "m: o, value: v, command-line: c+");
    EXPECT_STREQ(original.what(), "m: o, value: v, command-line: c");
}

TEST(option_error, can_be_held_in_an_exception_pointer)
{
    const std::exception_ptr held = std::make_exception_ptr(error("m", "o", "v", "c"));
    for (int round = 0; round < 2; ++round) {
        try {
            std::rethrow_exception(held);
        } catch (const error &e) {
            EXPECT_STREQ(e.what(), "m: o, value: v, command-line: c");
            EXPECT_EQ(e.option, "o");
            EXPECT_EQ(e.value, "v");
            EXPECT_EQ(e.command_line, "c");
            continue;
        }
        FAIL() << "not caught as an option's error";
    }
}

TEST(option_error, keeps_nul_in_fields_and_stream_where_what_ends)
{
    const std::string option("o\0p", 3);
    const std::string value("\0v", 2);
    const std::string command_line("\0", 1);
    const error e("m", option, value, command_line);
    EXPECT_EQ(e.option, option);
    EXPECT_EQ(e.value, value);
    EXPECT_EQ(e.command_line, command_line);
    const std::string whole = "m: " + option + ", value: " + value + ", command-line: " + command_line;
    EXPECT_EQ(e.message_stream.str(), whole);
    EXPECT_STREQ(e.what(), "m: o");
}

TEST(option_error, takes_texts_of_a_megabyte)
{
    const std::string option(1U << 20U, 'o');
    const std::string value(1U << 20U, 'v');
    const error e("m", option, value, "");
    EXPECT_EQ(e.option, option);
    EXPECT_EQ(e.value, value);
    EXPECT_EQ(e.what(), "m: " + option + ", value: " + value);
}

} // namespace
