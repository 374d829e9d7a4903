#include "dalvo/utils/str.h"

#include <cctype>
#include <cstdint>
#include <limits>
#include <memory>
#include <random>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace {

using namespace std::string_literals;
using dalvo::str::equal_but_for_case;
using dalvo::str::get_tokenizer;
using dalvo::str::joined;
using dalvo::str::strip;
using dalvo::str::Tokenizer;
using dalvo::str::TokenizerBase;
using dalvo::str::TokenPosition;

constexpr std::uint64_t npos = std::numeric_limits<std::uint64_t>::max();

// ---- strip ----

TEST(strip, cuts_white_space_from_both_ends)
{
    const struct {
        std::string text, expected;
        const char *why;
    } rows[] = {
        {"  ab c \t", "ab c", "both ends, not the middle"},
        {"", "", "nothing to cut"},
        {"   ", "", "nothing left"},
        {" ", "", "one blank"},
        {"x", "x", "one character that stays"},
        {"ab", "ab", "nothing at either end"},
        {" x", "x", "start only"},
        {"x ", "x", "end only"},
        {" \t\n\v\f\ra\r\f\v\n\t ", "a", "all six kinds"},
        {"a \t\n b", "a \t\n b", "inner white space stays"},
        {" \0 "s, "\0"s, "NUL is no white space"},
        {"\0 a \0"s, "\0 a \0"s, "white space behind a NUL is not at an end"},
        {" a\0b "s, "a\0b"s, "the text goes on behind a NUL"},
        {" \xc3\xa9 ", "\xc3\xa9", "bytes above 0x7f stay"},
        {"\xa0x\x85", "\xa0x\x85", "no-break space and next line are no white space here"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(strip(row.text, isspace), row.expected) << row.why;
    }
}

TEST(strip, leaves_its_argument_alone)
{
    const std::string text = " a ";
    EXPECT_EQ(strip(text, isspace), "a");
    EXPECT_EQ(text, " a ");
}

int is_negative(int c)
{
    return c < 0 ? 1 : 0;
}

int is_nul(int c)
{
    return c == 0 ? -1 : 0;
}

int always(int)
{
    return 2;
}

int never(int)
{
    return 0;
}

TEST(strip, cuts_what_its_predicate_holds_for)
{
    const struct {
        std::string text;
        int (*predicate)(int);
        std::string expected;
        const char *why;
    } rows[] = {
        {"\x80\xff"s + "a\x80z\x7f\xff", is_negative, "a\x80z\x7f", "0x80 to 0xff arrive as negative numbers"},
        {"\x7f\x80", is_negative, "\x7f", "0x7f arrives as a positive number"},
        {"\0a\0b\0\0"s, is_nul, "a\0b"s, "a negative result holds, NUL is a character like others"},
        {" ab ", always, "", "any result but 0 holds"},
        {" ab ", never, " ab ", "0 does not"},
        {"", always, "", "an empty text"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(strip(row.text, row.predicate), row.expected) << row.why;
    }
}

std::vector<int> seen; // by the predicates below

int note(int c)
{
    seen.push_back(c);
    return 0;
}

int note_and_hold_for_space(int c)
{
    seen.push_back(c);
    return c == ' ' ? 1 : 0;
}

TEST(strip, passes_each_byte_as_a_signed_8_bit_value)
{
    for (int byte = 0; byte <= 0xff; ++byte) {
        seen.clear();
        strip(std::string(1, static_cast<char>(byte)), note);
        const int expected = byte < 0x80 ? byte : byte - 0x100;
        EXPECT_EQ(seen, std::vector<int>({expected, expected})) << "once from the end, once from the start";
    }
}

TEST(strip, looks_at_the_end_first_and_no_further_than_it_must)
{
    seen.clear();
    EXPECT_EQ(strip(" \tab  ", note_and_hold_for_space), "\tab");
    EXPECT_EQ(seen, std::vector<int>({' ', ' ', 'b', ' ', '\t'}));
    seen.clear();
    EXPECT_EQ(strip("   ", note_and_hold_for_space), "");
    EXPECT_EQ(seen, std::vector<int>({' ', ' ', ' '})) << "what the end has lost is not looked at from the start";
}

TEST(equal_but_for_case, folds_ascii_letters_and_nothing_else)
{
    for (int a = 0; a < 256; ++a) {
        for (int b = 0; b < 256; ++b) {
            const bool is_letter = (a >= 'a' && a <= 'z') || (a >= 'A' && a <= 'Z');
            const bool is_same = a == b || (is_letter && (a ^ b) == 0x20);
            const std::string left = "x" + std::string(1, static_cast<char>(a));
            const std::string right = "X" + std::string(1, static_cast<char>(b));
            EXPECT_EQ(equal_but_for_case(left, right), is_same) << a << ", " << b;
        }
    }
    EXPECT_TRUE(equal_but_for_case("", ""));
    EXPECT_FALSE(equal_but_for_case("a", "ab"));
    EXPECT_FALSE(equal_but_for_case("ab", "a"));
    EXPECT_FALSE(equal_but_for_case("a", ""));
}

TEST(folded, puts_ascii_letters_in_lower_case_and_nothing_else)
{
    std::string bytes;
    std::string expected;
    for (int byte = 0; byte < 256; ++byte) {
        bytes += static_cast<char>(byte);
        expected += static_cast<char>(byte >= 'A' && byte <= 'Z' ? byte + 0x20 : byte);
    }
    EXPECT_EQ(dalvo::str::folded(bytes), expected);
    EXPECT_EQ(dalvo::str::folded(""), "");
}

TEST(joined, has_the_parts_in_their_order)
{
    EXPECT_EQ(joined({}), "");
    EXPECT_EQ(joined({""}), "");
    EXPECT_EQ(joined({"a"}), "a");
    EXPECT_EQ(joined({"a", "", "bc", "a"}), "abca");
    EXPECT_EQ(joined({std::string_view("\0\xff", 2), std::string_view("\0", 1)}), "\0\xff\0"s);
}

TEST(joined, takes_no_more_memory_than_it_needs)
{
    const std::string part(100, 'x');
    EXPECT_EQ(joined({part, part, part}).capacity(), 300U);
}

// ---- tokenizer ----

using Tokens = std::vector<std::pair<std::uint64_t, std::string>>; // offset and text of each

/// All tokens of a fresh tokenizer, taken step by step.
Tokens read(TokenizerBase &tokenizer)
{
    Tokens tokens;
    const TokenPosition first = tokenizer.begin();
    EXPECT_EQ(first.tokenizer, &tokenizer);
    tokens.emplace_back(first.offset, tokenizer.cur_token());
    for (std::uint64_t offset = tokenizer.next_pos(); offset != npos; offset = tokenizer.next_pos()) {
        tokens.emplace_back(offset, tokenizer.cur_token());
    }
    return tokens;
}

Tokens tokens_of(const std::string &text, const char *delims, std::uint64_t max_splits)
{
    return read(*get_tokenizer(text, delims, max_splits));
}

TEST(tokenizer, splits_at_delimiters)
{
    constexpr std::uint64_t largest = std::numeric_limits<std::uint64_t>::max();
    const struct {
        std::string text;
        const char *delims;
        std::uint64_t max_splits;
        Tokens expected;
        const char *why;
    } rows[] = {
        {",a,,b,", ",", 0, {{0, ""}, {1, "a"}, {3, ""}, {4, "b"}, {6, ""}}, "none is skipped or merged"},
        {"x", ",", 0, {{0, "x"}}, "no delimiter"},
        {"ab,cd", ",", 0, {{0, "ab"}, {3, "cd"}}, "offsets are where tokens start"},
        {"", ",", 0, {{0, ""}}, "an empty text is one empty token"},
        {"", ",", 1, {{0, ""}}, "with a limit, too"},
        {",", ",", 0, {{0, ""}, {1, ""}}, "nothing but a delimiter"},
        {"a,", ",", 0, {{0, "a"}, {2, ""}}, "an empty token behind the last delimiter"},
        {"a=b=c", "=", 1, {{0, "a"}, {2, "b=c"}}, "the rest comes back whole"},
        {"k = v = w", "=", 1, {{0, "k "}, {3, " v = w"}}, "white space is kept"},
        {"a=", "=", 1, {{0, "a"}, {2, ""}}, "nothing behind the last split"},
        {"=a", "=", 1, {{0, ""}, {1, "a"}}, "nothing before the first split"},
        {"==", "=", 1, {{0, ""}, {1, "="}}, "the rest is a delimiter"},
        {"a=b=c", "=", 2, {{0, "a"}, {2, "b"}, {4, "c"}}, "as many splits as delimiters"},
        {"a=b=c", "=", 3, {{0, "a"}, {2, "b"}, {4, "c"}}, "more splits than delimiters"},
        {"a=b=c=d", "=", 2, {{0, "a"}, {2, "b"}, {4, "c=d"}}, "fewer splits than delimiters"},
        {"a=b=c", "=", largest, {{0, "a"}, {2, "b"}, {4, "c"}}, "the largest limit"},
        {"a b\tc", "\t ", 0, {{0, "a"}, {2, "b"}, {4, "c"}}, "any of several delimiters"},
        {"a;,b", ",;", 1, {{0, "a"}, {2, ",b"}}, "the limit counts all of them"},
        {"a,b", "", 0, {{0, "a,b"}}, "no delimiters, no splits"},
        {"a\0b"s, "", 0, {{0, "a\0b"s}}, "the NUL behind the delimiters is none of them"},
        {"\0a,\0,"s, ",", 0, {{0, "\0a"s}, {3, "\0"s}, {5, ""}}, "NUL in the text is a character like others"},
        {"a\xff"s + "b\x80"s + "c\x7f", "\x80\xff", 0, {{0, "a"}, {2, "b"}, {4, "c\x7f"}}, "delimiters above 0x7f"},
        {"\xc3\xa9,\xc3", ",", 0, {{0, "\xc3\xa9"}, {3, "\xc3"}}, "text above 0x7f"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(tokens_of(row.text, row.delims, row.max_splits), row.expected) << row.why;
    }
}

/// The tokens by another way: the text is dealt out character by character.
Tokens dealt_out(const std::string &text, const std::string &delims, std::uint64_t max_splits)
{
    Tokens tokens = {{0, ""}};
    for (std::uint64_t at = 0; at < text.size(); ++at) {
        const bool may_split = max_splits == 0 || tokens.size() - 1 < max_splits;
        if (may_split && delims.find(text[at]) != std::string::npos) {
            tokens.emplace_back(at + 1, "");
        } else {
            tokens.back().second += text[at];
        }
    }
    return tokens;
}

TEST(tokenizer, agrees_with_dealing_out_characters_on_random_texts)
{
    std::mt19937 random(20110707);
    const std::string alphabet = "ab,;\0\xff"s;
    for (int round = 0; round < 500; ++round) {
        std::string text(random() % 12, ' ');
        for (char &c : text) {
            c = alphabet[random() % alphabet.size()];
        }
        for (const char *delims : {"", ",", ",;", "\xff,"}) {
            for (std::uint64_t max_splits = 0; max_splits <= 13; ++max_splits) {
                ASSERT_EQ(tokens_of(text, delims, max_splits), dealt_out(text, delims, max_splits))
                    << testing::PrintToString(text) << " at " << testing::PrintToString(delims) << ", " << max_splits;
            }
        }
    }
}

TEST(tokenizer, gives_a_text_without_delimiters_and_then_npos)
{
    const std::string text = "x";
    const auto tokenizer = get_tokenizer(text, ",", 0);
    EXPECT_EQ(tokenizer->begin(), (TokenPosition{tokenizer.get(), 0}));
    EXPECT_EQ(tokenizer->cur_token(), "x");
    EXPECT_EQ(tokenizer->next_pos(), npos);
}

TEST(tokenizer, keeps_its_last_token_when_exhausted)
{
    const std::string text = "ab,cd";
    const auto tokenizer = get_tokenizer(text, ",", 0);
    tokenizer->begin();
    EXPECT_EQ(tokenizer->next_pos(), 3U);
    EXPECT_EQ(tokenizer->next_pos(), npos);
    EXPECT_EQ(tokenizer->cur_token(), "cd");
    EXPECT_EQ(tokenizer->next_pos(), npos) << "a second time";
    EXPECT_EQ(tokenizer->cur_token(), "cd");
    tokenizer->begin();
    EXPECT_EQ(tokenizer->cur_token(), "cd") << "begin() does not start over";
}

TEST(tokenizer, has_an_empty_token_before_the_first_step)
{
    const std::string text = "ab";
    EXPECT_EQ(get_tokenizer(text, ",", 0)->cur_token(), "");
}

TEST(tokenizer, shows_each_token_in_the_same_string)
{
    const std::string text = "ab,cd";
    const auto tokenizer = get_tokenizer(text, ",", 0);
    const std::string &token = tokenizer->cur_token();
    tokenizer->begin();
    EXPECT_EQ(token, "ab");
    tokenizer->next_pos();
    EXPECT_EQ(token, "cd");
}

TEST(tokenizer, begins_with_the_next_token_when_used_before)
{
    const std::string text = "a,b,c";
    const auto tokenizer = get_tokenizer(text, ",", 1);
    tokenizer->begin();
    EXPECT_EQ(tokenizer->begin(), (TokenPosition{tokenizer.get(), 0})) << "the offset is 0 nevertheless";
    EXPECT_EQ(tokenizer->cur_token(), "b,c") << "splits are not counted anew either";
    EXPECT_EQ(tokenizer->next_pos(), npos);
}

TEST(tokenizer, ends_at_npos_wherever_it_stands)
{
    const std::string text = "a,b";
    const auto tokenizer = get_tokenizer(text, ",", 0);
    const TokenPosition end = tokenizer->end();
    EXPECT_EQ(end.tokenizer, tokenizer.get());
    EXPECT_EQ(end.offset, npos);
    EXPECT_EQ(tokenizer->cur_token(), "") << "end() makes no step";
    tokenizer->begin();
    EXPECT_EQ(tokenizer->end(), end);
    EXPECT_EQ(tokenizer->cur_token(), "a");
}

TEST(tokenizer, copies_its_delimiters)
{
    const std::string text = "a,b;c";
    char delims[] = ",";
    const auto tokenizer = get_tokenizer(text, delims, 0);
    delims[0] = ';';
    EXPECT_EQ(read(*tokenizer), (Tokens{{0, "a"}, {2, "b;c"}}));
}

TEST(tokenizer, splits_at_nul_when_built_with_it)
{
    const std::string text = "a\0b,c"s;
    Tokenizer::TokenizerImpl<Tokenizer::IsDelim> tokenizer(text, Tokenizer::IsDelim{"\0,"s}, 0);
    EXPECT_EQ(read(tokenizer), (Tokens{{0, "a"}, {2, "b"}, {4, "c"}}));
}

TEST(tokenizer, is_delim_holds_for_the_characters_of_its_set)
{
    const Tokenizer::IsDelim is_delim{"a\0\xff"s};
    for (int byte = 0; byte <= 0xff; ++byte) {
        EXPECT_EQ(is_delim(static_cast<char>(byte)), byte == 'a' || byte == 0 || byte == 0xff) << byte;
    }
    EXPECT_FALSE(Tokenizer::IsDelim{""}('\0'));
}

// ---- positions ----

TEST(token_position, walks_a_range)
{
    const std::string text = "ab,,cd";
    const auto tokenizer = get_tokenizer(text, ",", 0);
    std::vector<std::string> tokens;
    for (const std::string &token : *tokenizer) {
        tokens.push_back(token);
    }
    EXPECT_EQ(tokens, std::vector<std::string>({"ab", "", "cd"}));
}

TEST(token_position, advances_through_the_offsets_up_to_the_end)
{
    const std::string text = "ab,cd";
    const auto tokenizer = get_tokenizer(text, ",", 0);
    TokenPosition at = tokenizer->begin();
    EXPECT_EQ(at.offset, 0U);
    EXPECT_EQ(*at, "ab");
    EXPECT_EQ(&++at, &at);
    EXPECT_EQ(at.offset, 3U);
    EXPECT_EQ(*at, "cd");
    EXPECT_NE(at, tokenizer->end());
    ++at;
    EXPECT_EQ(at, tokenizer->end());
    EXPECT_EQ(*at, "cd") << "the last token stays";
    EXPECT_EQ(++at, tokenizer->end()) << "the end stays the end";
}

TEST(token_position, shares_the_token_with_all_positions_of_its_tokenizer)
{
    const std::string text = "a,b";
    const auto tokenizer = get_tokenizer(text, ",", 0);
    const TokenPosition first = tokenizer->begin();
    TokenPosition second = first;
    ++second;
    EXPECT_EQ(*first, "b");
    EXPECT_EQ(&*first, &tokenizer->cur_token());
    EXPECT_NE(first, second);
}

TEST(token_position, differs_by_tokenizer_and_by_offset)
{
    const std::string text = "a";
    const auto one = get_tokenizer(text, ",", 0);
    const auto other = get_tokenizer(text, ",", 0);
    EXPECT_TRUE(one->end() == one->end());
    EXPECT_FALSE(one->end() != one->end());
    EXPECT_FALSE(one->end() == other->end());
    EXPECT_TRUE(one->end() != other->end());
    EXPECT_TRUE((TokenPosition{one.get(), 0} != TokenPosition{one.get(), 1}));
    EXPECT_FALSE((TokenPosition{one.get(), 0} == TokenPosition{one.get(), 1}));
}

static_assert(TokenPosition::npos == npos, "all bits set");

// ---- ownership ----

static_assert(std::is_abstract_v<TokenizerBase>);
static_assert(std::has_virtual_destructor_v<TokenizerBase>);
static_assert(std::is_base_of_v<TokenizerBase, Tokenizer::TokenizerImpl<Tokenizer::IsDelim>>);

class NotesItsEnd : public TokenizerBase {
public:
    explicit NotesItsEnd(bool &ended_flag) : ended(ended_flag) {}
    ~NotesItsEnd() override { ended = true; }

    TokenPosition begin() override { return {this, 0}; }
    TokenPosition end() override { return {this, npos}; }
    std::uint64_t next_pos() override { return npos; }
    const std::string &cur_token() override { return token; }

private:
    bool &ended;
    std::string token;
};

TEST(tokenizer_base, ends_the_whole_tokenizer_when_owned_by_its_base)
{
    bool ended = false;
    std::unique_ptr<TokenizerBase> tokenizer = std::make_unique<NotesItsEnd>(ended);
    EXPECT_EQ(tokenizer->next_pos(), npos);
    EXPECT_FALSE(ended);
    tokenizer.reset();
    EXPECT_TRUE(ended);
}

TEST(tokenizer_base, is_an_impl_over_is_delim)
{
    const std::string text = "a";
    const std::unique_ptr<TokenizerBase> tokenizer = get_tokenizer(text, ",", 0);
    EXPECT_NE(dynamic_cast<Tokenizer::TokenizerImpl<Tokenizer::IsDelim> *>(tokenizer.get()), nullptr);
}

} // namespace
