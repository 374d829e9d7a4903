#include "dalvo/utils/exception.h"

#include <exception>
#include <sstream>
#include <string>
#include <type_traits>
#include <utility>

#include <gtest/gtest.h>

namespace {

using dalvo::Exception;

TEST(exception, reads_what_it_was_built_from)
{
    const Exception e("m");
    EXPECT_STREQ(e.what(), "m");
    EXPECT_STREQ(e.what(), "m");
}

TEST(exception, shows_text_streamed_in_later)
{
    Exception e("m");
    EXPECT_STREQ(e.what(), "m");
    e.message_stream << ": " << 7;
    EXPECT_STREQ(e.what(), "m: 7");
}

TEST(exception, copy_reads_the_same_and_is_appended_to)
{
    Exception e("m");
    e.message_stream << "1";
    Exception copy(e);
    EXPECT_STREQ(copy.what(), "m1");
    copy.message_stream << "2";
    EXPECT_STREQ(copy.what(), "m12");
    EXPECT_STREQ(e.what(), "m1");
}

TEST(exception, assigned_reads_the_same_and_is_appended_to)
{
    const Exception e("long enough to leave the small string behind");
    Exception other("other");
    other = e;
    EXPECT_STREQ(other.what(), e.what());
    other.message_stream << "!";
    EXPECT_EQ(other.what(), std::string(e.what()) + "!");
}

TEST(exception, assigned_to_itself_stays)
{
    Exception e("m");
    const Exception &same = e;
    e = same;
    EXPECT_STREQ(e.what(), "m");
}

TEST(exception, can_be_held_in_an_exception_pointer_and_caught_by_value)
{
    std::exception_ptr held;
    try {
        throw Exception("m");
    } catch (...) {
        held = std::current_exception();
    }
#pragma GCC diagnostic push
#ifndef __clang__
#pragma GCC diagnostic ignored "-Wcatch-value" // the copy is what is tested
#endif
    try {
        std::rethrow_exception(held);
    } catch (Exception e) {
        e.message_stream << "+";
        EXPECT_STREQ(e.what(), "m+");
    }
#pragma GCC diagnostic pop
    try {
        std::rethrow_exception(held);
    } catch (const std::exception &e) {
        EXPECT_STREQ(e.what(), "m");
    }
}

TEST(exception, what_ends_at_the_first_nul_and_the_stream_keeps_the_rest)
{
    const Exception e(std::string("a\0b", 3));
    EXPECT_STREQ(e.what(), "a");
    EXPECT_EQ(e.message_stream.str(), std::string("a\0b", 3));
}

TEST(exception, keeps_bytes_above_0x7f)
{
    EXPECT_STREQ(Exception("\x80\xff").what(), "\x80\xff");
}

static_assert(std::is_base_of_v<std::exception, Exception>);
static_assert(std::has_virtual_destructor_v<Exception>);
static_assert(noexcept(std::declval<const Exception &>().what()));
static_assert(std::is_same_v<decltype(Exception::message_stream), std::ostringstream>, "opened for output only");

TEST(exception, reads_empty_when_built_from_an_empty_text)
{
    EXPECT_STREQ(Exception("").what(), "");
}

class Derived : public Exception {
public:
    explicit Derived(const std::string &msg) : Exception(msg) { message_stream << " derived"; }
};

TEST(exception, shows_what_a_derived_constructor_wrote_whichever_class_it_is_caught_as)
{
    try {
        throw Derived("m");
    } catch (const Derived &e) {
        EXPECT_STREQ(e.what(), "m derived");
    }
    try {
        throw Derived("m");
    } catch (const Exception &e) {
        EXPECT_STREQ(e.what(), "m derived");
    }
}

} // namespace
