#include "dalvo/inspect/words/printable.h"

#include <cstddef>
#include <random>
#include <string>
#include <string_view>
#include <utility>

#include <gtest/gtest.h>

namespace {

using namespace dalvo::inspect;

/// The UTF-8 of `code` (at most 0x1FFFFF; surrogates, too), in `size` bytes.
std::string encoded(std::size_t code, std::size_t size)
{
    constexpr unsigned char starts[] = {0, 0, 0xc0, 0xe0, 0xf0};
    std::string bytes;
    for (std::size_t i = 1; i < size; ++i) {
        bytes.insert(bytes.begin(), static_cast<char>(0x80 | (code & 0x3f)));
        code >>= 6U;
    }
    bytes.insert(bytes.begin(), static_cast<char>(starts[size] | code));
    return bytes;
}

/// The same in as few bytes as can be.
std::string encoded(std::size_t code)
{
    return encoded(code, code < 0x80 ? 1 : code < 0x800 ? 2 : code < 0x10000 ? 3 : 4);
}

bool is_surrogate(std::size_t code)
{
    return code >= 0xd800 && code <= 0xdfff;
}

std::size_t byte_at(std::string_view text, std::size_t at)
{
    return static_cast<unsigned char>(text[at]);
}

/// A second, plain decoder: tries each size, and takes the one whose code point is written with these very bytes.
CodePoint second_code_point(std::string_view text)
{
    for (std::size_t size = 1; size <= 4 && size <= text.size(); ++size) {
        std::size_t code = size == 1 ? byte_at(text, 0) : byte_at(text, 0) & (0x7fU >> size);
        for (std::size_t i = 1; i < size; ++i) {
            code = code * 64 + byte_at(text, i) % 64;
        }
        if (code <= 0x10ffff && !is_surrogate(code) && encoded(code) == text.substr(0, size)) {
            return {code, size};
        }
    }
    return {0, 0};
}

/// Bytes of which many make up code points.
std::string random_bytes(std::mt19937 &random, std::size_t most)
{
    constexpr std::string_view likely = "a\\'\"\n\r\t\x1b\x7f\x80\x81\x8b\x90\x9f\xa0\xbf"
                                        "\xc0\xc2\xc3\xe0\xe2\xed\xef\xf0\xf4\xf5";
    std::string bytes;
    for (auto size = random() % (most + 1); size > 0; --size) {
        bytes += random() % 4 == 0 ? static_cast<char>(random()) : likely[random() % likely.size()];
    }
    return bytes;
}

// ---- Code points ----------------------------------------------------------------------------------------------------

TEST(first_code_point, is_each_one_that_utf8_can_write_and_nothing_where_it_is_cut_off)
{
    for (std::size_t code = 0; code <= 0x10ffff; code = code == 0xd7ff ? 0xe000 : code + 1) {
        const std::string bytes = encoded(code);
        for (const char *const rest : {"", "a", "\x80"}) {
            const CodePoint first = first_code_point(bytes + rest);
            ASSERT_EQ(first.code, code);
            ASSERT_EQ(first.size, bytes.size()) << code;
        }
        for (std::size_t size = 1; size < bytes.size(); ++size) {
            const std::string_view cut = std::string_view(bytes).substr(0, size); // the rest stands right behind it
            ASSERT_EQ(first_code_point(cut).size, 0U) << code << " cut to " << size;
            ASSERT_EQ(first_code_point(bytes.substr(0, size) + "a").size, 0U) << code << " broken off after " << size;
        }
    }
}

const struct {
    std::string_view bytes;
    const char *why;
} not_utf8[] = {
    {"\x80", "no start"},
    {"\xbf\xbf", "no start"},
    {"\xc0\x80", "NUL in two bytes"},
    {"\xc0\xaf", "a slash in two bytes"},
    {"\xc1\xbf", "the last that one byte can write, in two"},
    {"\xe0\x80\x80", "NUL in three bytes"},
    {"\xe0\x9f\xbf", "the last that two bytes can write, in three"},
    {"\xf0\x80\x80\x80", "NUL in four bytes"},
    {"\xf0\x8f\xbf\xbf", "the last that three bytes can write, in four"},
    {"\xed\xa0\x80", "the first surrogate"},
    {"\xed\xbf\xbf", "the last surrogate"},
    {"\xed\xa0\xbd\xed\xb8\x80", "a pair of surrogates"},
    {"\xf4\x90\x80\x80", "the first beyond the last code point"},
    {"\xf4\xbf\xbf\xbf", "beyond the last code point"},
    {"\xf5\x80\x80\x80", "beyond the last code point"},
    {"\xf8\x88\x80\x80\x80", "a start of five bytes"},
    {"\xfe\x80", "a start of none"},
    {"\xff", "a start of none"},
    {"\xc3", "cut off"},
    {"\xe2\x82", "cut off"},
    {"\xf0\x9f\x98", "cut off"},
    {"\xc3\xc3\xa9", "a start where a continuation should be"},
    {"\xe2\x28\xa1", "an ASCII byte in the middle"},
    {"\xe2\x82\x28", "an ASCII byte at the end"},
    {"\xf0\x9f\x98\x28", "an ASCII byte at the end"},
};

TEST(first_code_point, is_0_in_0_bytes_where_the_bytes_are_no_utf8)
{
    for (const auto &row : not_utf8) {
        const CodePoint first = first_code_point(row.bytes);
        EXPECT_EQ(first.code, 0U) << escaped(row.bytes) << ": " << row.why;
        EXPECT_EQ(first.size, 0U) << escaped(row.bytes) << ": " << row.why;
    }
}

TEST(first_code_point, of_nul_takes_a_byte)
{
    const CodePoint first = first_code_point(std::string_view("\0", 1));
    EXPECT_EQ(first.code, 0U);
    EXPECT_EQ(first.size, 1U);
}

TEST(printable_size, is_0_where_the_bytes_are_no_utf8)
{
    for (const auto &row : not_utf8) {
        EXPECT_EQ(printable_size(row.bytes), 0U) << escaped(row.bytes) << ": " << row.why;
    }
}

TEST(printable_size, is_that_of_a_code_point_that_is_printable)
{
    EXPECT_EQ(printable_size("a"), 1U);
    EXPECT_EQ(printable_size("ab"), 1U);
    EXPECT_EQ(printable_size("\xc3\xa9x"), 2U);
    EXPECT_EQ(printable_size("\xe2\x82\xac"), 3U);
    EXPECT_EQ(printable_size("\xf0\x9f\x98\x80"), 4U);
    EXPECT_EQ(printable_size("\n"), 0U);
    EXPECT_EQ(printable_size("\xc2\x85"), 0U) << "a control byte in two";
    EXPECT_EQ(printable_size("\xe2\x80\xae"), 0U) << "turns the text round";
}

// ---- Which are printable --------------------------------------------------------------------------------------------

TEST(printable, are_all_but_control_bytes_surrogates_and_what_is_no_code_point)
{
    const struct {
        std::size_t first;
        std::size_t last;
        bool expected;
        const char *why;
    } rows[] = {
        {0x00, 0x1f, false, "control bytes"},
        {0x20, 0x7e, true, "ASCII"},
        {0x7f, 0x9f, false, "delete, and the control bytes above"},
        {0xa0, 0xac, true, "Latin"},
        {0x20ac, 0x20ac, true, "the euro"},
        {0xd7ff, 0xd7ff, true, "the last one before the surrogates"},
        {0xd800, 0xdfff, false, "surrogates"},
        {0xe000, 0xe000, true, "the first one after the surrogates"},
        {0x1f600, 0x1f600, true, "a face"},
        {0x10ffff, 0x10ffff, true, "the last one"},
        {0x110000, 0x110000, false, "beyond the last one"},
        {static_cast<std::size_t>(-1), static_cast<std::size_t>(-1), false, "far beyond"},
    };
    for (const auto &row : rows) {
        for (std::size_t code = row.first;; ++code) {
            EXPECT_EQ(is_printable(code), row.expected) << std::hex << code << ": " << row.why;
            if (code == row.last) {
                break;
            }
        }
    }
}

TEST(printable, is_nothing_that_changes_the_direction_of_text)
{
    for (const std::size_t code : {0x61cU, 0x200eU, 0x200fU, 0x202aU, 0x202bU, 0x202cU, 0x202dU, 0x202eU, 0x2066U,
                                   0x2067U, 0x2068U, 0x2069U}) {
        EXPECT_FALSE(is_printable(code)) << std::hex << code;
        EXPECT_EQ(escaped("a" + encoded(code)).substr(0, 3), "a\\x") << std::hex << code;
    }
}

TEST(printable, is_nothing_that_takes_no_column)
{
    const struct {
        std::size_t code;
        const char *why;
    } rows[] = {
        {0x180e, "the Mongolian vowel separator"},
        {0x200b, "the space of no width"},
        {0x200c, "the non-joiner"},
        {0x200d, "the joiner"},
        {0x2060, "the word joiner"},
        {0x2061, "the first of the unseen operators"},
        {0x2064, "the last of the unseen operators"},
        {0x206a, "the first of the old controls of shapes and digits"},
        {0x206f, "the last of the old controls of shapes and digits"},
        {0xfeff, "the byte-order mark"},
        {0xfff9, "the anchor of an annotation"},
        {0xfffb, "the end of an annotation"},
    };
    for (const auto &row : rows) {
        EXPECT_FALSE(is_printable(row.code)) << std::hex << row.code << ": " << row.why;
    }
}

TEST(printable, is_nothing_that_ends_a_line_elsewhere)
{
    EXPECT_FALSE(is_printable(0x85)) << "next line";
    EXPECT_FALSE(is_printable(0x2028)) << "line separator";
    EXPECT_FALSE(is_printable(0x2029)) << "paragraph separator";
}

TEST(printable, are_the_neighbours_of_what_is_not)
{
    for (const std::size_t code : {0x61bU, 0x61dU, 0x200aU, 0x2010U, 0x2027U, 0x202fU, 0x205fU, 0x2070U, 0xfefeU,
                                   0xff00U}) {
        EXPECT_TRUE(is_printable(code)) << std::hex << code;
    }
}

// ---- Escapes --------------------------------------------------------------------------------------------------------

TEST(escape_of, has_a_letter_for_three_bytes_and_two_digits_for_the_others)
{
    constexpr std::string_view digits = "0123456789abcdef";
    for (unsigned byte = 0; byte < 256; ++byte) {
        const std::string expected = byte == '\n'   ? "\\n"
                                     : byte == '\r' ? "\\r"
                                     : byte == '\t' ? "\\t"
                                                    : std::string("\\x") + digits[byte / 16] + digits[byte % 16];
        EXPECT_EQ(escape_of(static_cast<char>(byte)), expected);
    }
}

TEST(escaped, is_one_line_whatever_the_text_holds)
{
    const struct {
        std::string_view text;
        const char *expected;
        const char *why;
    } rows[] = {
        {"", "", "nothing"},
        {"a b = \"c\"", "a b = \"c\"", "nothing to escape"},
        {"C:\\n", "C:\\n", "a backslash stays as it is"},
        {"a\nb\r\tc", "a\\nb\\r\\tc", "three have letters"},
        {{"\0\x1b[31m\x7f", 7}, "\\x00\\x1b[31m\\x7f", "control bytes"},
        {"gr\xc3\xbc\xc3\x9f", "gr\xc3\xbc\xc3\x9f", "UTF-8 stays"},
        {"gr\xfc\xdf", "gr\\xfc\\xdf", "Latin-1 does not"},
        {"\xc2\x9b[31m", "\\xc2\\x9b[31m", "a control byte above 0x7F, as UTF-8"},
        {"\x9b[31m", "\\x9b[31m", "and by itself"},
        {"\xef\xbb\xbf# a", "\\xef\\xbb\\xbf# a", "a byte-order mark"},
        {"a\xe2\x80\xae" "b", "a\\xe2\\x80\\xae" "b", "what turns text round"},
        {"\xed\xa0\x80", "\\xed\\xa0\\x80", "a surrogate, byte by byte"},
        {"\xe2\x82", "\\xe2\\x82", "cut off"},
        {"\xe2\x82\xe2\x82\xac", "\\xe2\\x82\xe2\x82\xac", "one that is whole after one that is not"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(escaped(row.text), row.expected) << row.why;
    }
}

TEST(escaped, keeps_each_printable_code_point_of_random_bytes_and_escapes_each_other_byte)
{
    std::mt19937 random(20261121);
    for (int round = 0; round < 20000; ++round) {
        const std::string bytes = random_bytes(random, 12);
        std::string expected;
        for (std::string_view rest = bytes; !rest.empty();) {
            const CodePoint first = second_code_point(rest);
            const bool is_kept = first.size != 0 && is_printable(first.code);
            expected += is_kept ? std::string(rest.substr(0, first.size)) : escape_of(rest.front());
            rest.remove_prefix(is_kept ? first.size : 1);
        }
        ASSERT_EQ(escaped(bytes), expected) << ::testing::PrintToString(bytes);
    }
}

// ---- Cutting --------------------------------------------------------------------------------------------------------

std::string times(std::size_t count, const std::string &piece)
{
    std::string text;
    for (; count > 0; --count) {
        text += piece;
    }
    return text;
}

TEST(shown, is_cut_after_so_many_code_points)
{
    const struct {
        std::string text;
        std::size_t most;
        std::string expected;
        const char *why;
    } rows[] = {
        {"", 0, "", "there is nothing to cut"},
        {"a", 0, "...", "all is cut"},
        {"abc", 3, "abc", "just fits"},
        {"abcd", 3, "abc...", "one too many"},
        {times(4, "\xe2\x82\xac"), 4, times(4, "\xe2\x82\xac"), "code points count, not bytes"},
        {times(5, "\xe2\x82\xac"), 4, times(4, "\xe2\x82\xac") + "...", "one too many"},
        {"ab\n", 4, "ab\\n", "an escape counts as what is shown"},
        {"ab\nc", 4, "ab\\n...", "an escape counts as what is shown"},
        {{"abc\0", 4}, 4, "abc\\x00", "an escape is shown whole or not at all"},
        {{"abc\0d", 5}, 4, "abc\\x00...", "an escape is shown whole or not at all"},
        {"abcd\n", 4, "abcd...", "an escape is shown whole or not at all"},
        {"abc\xe2\x82\xac" "d", 4, "abc\xe2\x82\xac...", "no code point is cut"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(shown(row.text, row.most), row.expected) << row.why;
    }
}

TEST(shown, has_room_for_sixty_unless_told_otherwise)
{
    EXPECT_EQ(shown(times(60, "x")), times(60, "x"));
    EXPECT_EQ(shown(times(61, "x")), times(60, "x") + "...");
    EXPECT_EQ(shown(times(1000000, "\xc3\xa9")), times(60, "\xc3\xa9") + "...");
}

TEST(quoted, is_what_is_shown_in_single_quotes)
{
    EXPECT_EQ(quoted(""), "''");
    EXPECT_EQ(quoted("a b"), "'a b'");
    EXPECT_EQ(quoted("it's\n"), "'it's\\n'");
    EXPECT_EQ(dalvo::inspect::quoted(times(60, "x")), "'" + times(60, "x") + "'");
    EXPECT_EQ(dalvo::inspect::quoted(times(61, "x")), "'" + times(60, "x") + "...'");
}

} // namespace
