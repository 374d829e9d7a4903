#include <algorithm>
#include <cstddef>
#include <fstream>
#include <functional>
#include <ios>
#include <istream>
#include <locale>
#include <new>
#include <sstream>
#include <stdexcept>
#include <streambuf>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "dalvo/configuration/configurationsetter.h"
#include "tests/configuration/caught.h"
#include "tests/support/odd_buffers.h"
#include "tests/support/sections.h"

namespace {

using dalvo::ConfigurationSetter;
using dalvo::testing::Caught;
using dalvo::testing::caught_from;
using dalvo::testing::PiecewiseBuffer;
using dalvo::testing::Sections;
using dalvo::testing::sections_of;
using dalvo::testing::state_of;

TEST(load_stream, reads_to_the_end_under_every_exception_mask_and_restores_it)
{
    for (int mask = 0; mask < 8; ++mask) {
        SCOPED_TRACE(mask);
        std::istringstream in("a = 1\n[s]\nb = 2");
        in.exceptions(state_of(mask));
        ConfigurationSetter setter;
        EXPECT_NO_THROW(setter.load(in, 0));
        EXPECT_EQ(sections_of(setter), (Sections{{"", {{"a", "1"}}}, {"s", {{"b", "2"}}}}));
        EXPECT_EQ(in.exceptions(), state_of(mask));
        EXPECT_EQ(in.rdstate(), std::ios_base::eofbit | std::ios_base::failbit);
    }
}

TEST(load_stream, takes_a_stream_that_has_failed_for_an_empty_text)
{
    for (int state = 1; state < 8; ++state) {
        for (int mask = 0; mask < 8; ++mask) {
            SCOPED_TRACE(::testing::Message() << "state " << state << ", mask " << mask);
            std::istringstream in("a = 1\n[");
            in.setstate(state_of(state));
            try {
                in.exceptions(state_of(mask));
            } catch (const std::ios_base::failure &) { // the mask is set nevertheless
                EXPECT_EQ(in.exceptions(), state_of(mask));
            }
            ConfigurationSetter setter;
            EXPECT_NO_THROW(setter.load(in, 0));
            EXPECT_EQ(sections_of(setter), (Sections{{"", {}}}));
            EXPECT_EQ(in.exceptions(), state_of(mask));
            EXPECT_EQ(in.rdstate(), state_of(state) | std::ios_base::failbit);
        }
    }
}

TEST(load_stream, takes_a_stream_without_a_buffer_for_an_empty_text)
{
    std::istream in(nullptr);
    ConfigurationSetter setter;
    EXPECT_NO_THROW(setter.load(in, 0));
    EXPECT_EQ(sections_of(setter), (Sections{{"", {}}}));
    EXPECT_EQ(in.exceptions(), std::ios_base::goodbit);
}

TEST(load_stream, reads_on_from_where_the_stream_stands)
{
    std::istringstream in("[s]\na = 1\nb = 2");
    in.seekg(4);
    ConfigurationSetter setter;
    setter.load(in, 0);
    EXPECT_EQ(sections_of(setter), (Sections{{"", {{"a", "1"}, {"b", "2"}}}}));
}

TEST(load_stream, joins_lines_that_come_in_pieces)
{
    for (const std::size_t size : {1U, 2U, 3U, 7U, 100U}) {
        PiecewiseBuffer buffer("first = 1\r\n[ s1 , s2 ]\r\nsecond = 2 = 3\n\nthird", size, [] {});
        std::istream in(&buffer);
        ConfigurationSetter setter;
        setter.load(in, 0);
        const std::vector<dalvo::testing::Filed> both = {{"second", "2 = 3"}, {"third", ""}};
        EXPECT_EQ(sections_of(setter), (Sections{{"", {{"first", "1"}}}, {"s1", both}, {"s2", both}})) << size;
    }
}

TEST(load_stream, ends_the_text_without_error_where_the_buffer_throws)
{
    struct Odd {};
    const struct {
        std::function<void()> failure;
        const char *why;
    } failures[] = {
        {[] { throw std::runtime_error("device gone"); }, "a runtime_error"},
        {[] { throw std::ios_base::failure("device gone"); }, "a failure of the stream library"},
        {[] { throw 7; }, "an int"},
        {[] { throw Odd(); }, "a type of the host"},
    };
    const struct {
        const char *text;
        Sections expected;
        const char *why;
    } texts[] = {
        {"", {{"", {}}}, "at the start"},
        {"a = 1\n[s]\nb = 2\n", {{"", {{"a", "1"}}}, {"s", {{"b", "2"}}}}, "between two lines"},
        {"a = 1\n[s]\nb = 2\nc = 3", {{"", {{"a", "1"}}}, {"s", {{"b", "2"}}}}, "inside an assignment, not filed"},
        {"a = 1\n[s", {{"", {{"a", "1"}}}}, "inside a header, not an error"},
    };
    for (const auto &failure : failures) {
        for (const auto &text : texts) {
            for (int mask = 0; mask < 8; ++mask) {
                SCOPED_TRACE(::testing::Message() << failure.why << " " << text.why << ", mask " << mask);
                PiecewiseBuffer buffer(text.text, 4, failure.failure);
                std::istream in(&buffer);
                in.exceptions(state_of(mask));
                ConfigurationSetter setter;
                EXPECT_NO_THROW(setter.load(in, 0));
                EXPECT_EQ(sections_of(setter), text.expected);
                EXPECT_EQ(in.exceptions(), state_of(mask));
                EXPECT_TRUE(in.bad());
            }
        }
    }
}

TEST(load_stream, ends_the_text_where_the_stream_is_put_into_a_failed_state_half_way)
{
    const Sections whole_lines = {{"", {{"a", "1"}}}, {"s", {{"b", "2"}}}};
    const Sections last_line_too = {{"", {{"a", "1"}}}, {"s", {{"b", "2"}, {"c", "3"}}}};
    for (int state = 1; state < 8; ++state) {
        for (int mask = 0; mask < 8; ++mask) {
            SCOPED_TRACE(::testing::Message() << "state " << state << ", mask " << mask);
            std::istream *stream = nullptr;
            PiecewiseBuffer buffer("a = 1\n[s]\nb = 2\nc = 3", 4, [&] { stream->setstate(state_of(state)); });
            std::istream in(&buffer);
            stream = &in;
            in.exceptions(state_of(mask));
            ConfigurationSetter setter;
            EXPECT_NO_THROW(setter.load(in, 0));
            const bool is_plain_end = state_of(state) == std::ios_base::eofbit;
            EXPECT_EQ(sections_of(setter), is_plain_end ? last_line_too : whole_lines);
            EXPECT_EQ(in.exceptions(), state_of(mask));
        }
    }
}

TEST(load_stream, takes_files_that_cannot_be_read_for_empty_texts)
{
    for (const char *path : {"", "/no/such/file", "/"}) {
        for (int mask = 0; mask < 8; ++mask) {
            SCOPED_TRACE(::testing::Message() << "'" << path << "', mask " << mask);
            std::ifstream in(path);
            try {
                in.exceptions(state_of(mask));
            } catch (const std::ios_base::failure &) { // the mask is set nevertheless
                EXPECT_TRUE(in.fail());
            }
            ConfigurationSetter setter;
            EXPECT_NO_THROW(setter.load(in, 0));
            EXPECT_EQ(sections_of(setter), (Sections{{"", {}}}));
            EXPECT_EQ(in.exceptions(), state_of(mask));
            EXPECT_TRUE(in.fail());
        }
    }
}

TEST(load_stream, passes_on_that_memory_ran_out_in_the_buffer)
{
    for (int mask = 0; mask < 8; ++mask) {
        SCOPED_TRACE(mask);
        PiecewiseBuffer buffer("a = 1\n[s]\nb = 2\nc = 3", 4, [] { throw std::bad_alloc(); });
        std::istream in(&buffer);
        in.exceptions(state_of(mask));
        ConfigurationSetter setter;
        EXPECT_THROW(setter.load(in, 0), std::bad_alloc);
        EXPECT_EQ(sections_of(setter), (Sections{{"", {{"a", "1"}}}, {"s", {{"b", "2"}}}}));
        EXPECT_EQ(in.exceptions(), state_of(mask));
        EXPECT_TRUE(in.bad());
    }
    PiecewiseBuffer buffer("a = 1\n", 4, [] { throw std::bad_array_new_length(); });
    std::istream in(&buffer);
    ConfigurationSetter setter;
    EXPECT_THROW(setter.load(in, 0), std::bad_array_new_length) << "a kind of bad_alloc";
    EXPECT_EQ(sections_of(setter), (Sections{{"", {{"a", "1"}}}}));
}

TEST(load_stream, restores_the_mask_after_a_malformed_line)
{
    for (int mask = 0; mask < 8; ++mask) {
        for (const char *text : {"a = 1\n[s\n", "a = 1\n[s"}) {
            SCOPED_TRACE(::testing::Message() << text << ", mask " << mask);
            std::istringstream in(text);
            in.exceptions(state_of(mask));
            ConfigurationSetter setter;
            const Caught expected = {"bad format of configuration file: [s, value: ", "[s", "", ""};
            EXPECT_EQ(caught_from([&] { setter.load(in, 0); }), expected) << "not a failure of the stream";
            EXPECT_EQ(sections_of(setter), (Sections{{"", {{"a", "1"}}}}));
            EXPECT_EQ(in.exceptions(), state_of(mask));
        }
    }
}

TEST(load_stream, ends_lines_at_the_newline_of_the_streams_locale)
{
    struct SemicolonNewline : std::ctype<char> {
        char do_widen(char c) const override { return c == '\n' ? ';' : c; }
        const char *do_widen(const char *from, const char *to, char *out) const override
        {
            std::transform(from, to, out, [this](char c) { return do_widen(c); });
            return to;
        }
    };
    std::istringstream in("a = 1;[s];b = 2\nc = 3; d = 4");
    in.imbue(std::locale(in.getloc(), new SemicolonNewline));
    ConfigurationSetter setter;
    setter.load(in, 0);
    EXPECT_EQ(sections_of(setter), (Sections{{"", {{"a", "1"}}}, {"s", {{"b", "2\nc = 3"}, {"d", "4"}}}}));
}

TEST(load_stream, strips_the_same_characters_whatever_the_streams_flags)
{
    std::istringstream in("  \n  a = 1\n");
    in.unsetf(std::ios_base::skipws);
    in.width(2);
    ConfigurationSetter setter;
    setter.load(in, 0);
    EXPECT_EQ(sections_of(setter), (Sections{{"", {{"a", "1"}}}}));
}

} // namespace
