// Any text, delimiters and number of splits: the tokenizer's tokens are those of a plain splitter and joined they give
// the text back; strip drops what it says, and nothing else.
//
// An input is up to four delimiters, ended by a NUL, then the number of splits as one byte, then the text.

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "dalvo/utils/str.h"
#include "fuzz/target.h"

namespace {

using namespace dalvo;
using fuzz::require;
using fuzz::require_same;

struct Token {
    std::string text;
    std::uint64_t offset;
};

/// Cuts at each delimiter, `limit` times at most when that is not 0.
std::vector<Token> plainly_split(const std::string &text, const std::string &delims, std::size_t limit)
{
    std::vector<Token> tokens = {{"", 0}};
    for (std::size_t at = 0; at < text.size(); ++at) {
        const bool may_cut = limit == 0 || tokens.size() <= limit;
        if (may_cut && delims.find(text[at]) != std::string::npos) {
            tokens.push_back({"", at + 1});
        } else {
            tokens.back().text += text[at];
        }
    }
    return tokens;
}

void require_tokens(const std::string &text, const std::string &delims, std::uint64_t limit)
{
    const std::vector<Token> expected = plainly_split(text, delims, limit);
    const auto tokens = str::get_tokenizer(text, delims.c_str(), limit);
    std::string joined;
    std::size_t count = 0;
    for (auto at = tokens->begin(); at != tokens->end(); ++at) {
        require(count < expected.size(), "there are no more tokens than cuts and one", text);
        require(at.offset == expected[count].offset, "a position tells where its token starts", text);
        require_same(*at, expected[count].text, "a token is what stands between two cuts");
        require_same(tokens->cur_token(), *at, "a position shows the tokenizer's token");
        joined += *at;
        const std::size_t behind = joined.size();
        if (behind < text.size()) {
            joined += text[behind];
        }
        ++count;
    }
    require(count == expected.size(), "there are no fewer tokens than cuts and one", text);
    require_same(joined, text, "the tokens and what stands between them are the text");
    require(tokens->next_pos() == str::TokenPosition::npos, "no token comes behind the last one", text);
    require_same(tokens->cur_token(), expected.back().text, "the last token stays");
}

int is_odd_or_negative(int c)
{
    require(c >= -128 && c <= 127, "a predicate is asked of signed bytes");
    return c % 2 != 0 || c < 0 ? 17 : 0;
}

/// `s` without the bytes at its ends for which `predicate` holds, a byte at a time.
std::string plainly_stripped(std::string s, int (*predicate)(int))
{
    while (!s.empty() && predicate(static_cast<signed char>(s.back())) != 0) {
        s.pop_back();
    }
    while (!s.empty() && predicate(static_cast<signed char>(s.front())) != 0) {
        s.erase(0, 1);
    }
    return s;
}

int is_space_of_c(int c)
{
    return c >= 0 ? std::isspace(c) : 0;
}

void require_stripped(const std::string &text)
{
    require_same(str::strip(text, is_odd_or_negative), plainly_stripped(text, is_odd_or_negative),
                 "strip drops what the predicate holds for, at both ends");
    const std::string stripped = plainly_stripped(text, is_space_of_c);
    require_same(str::strip(text, is_space_of_c), stripped, "strip drops white space");
    require_same(std::string(str::stripped(text, str::is_space)), stripped, "white space is that of the C locale");
    const std::string_view half = std::string_view(text).substr(0, text.size() / 2);
    require_same(str::joined({half, std::string_view(text).substr(half.size())}), text, "two halves join to the text");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const std::string input = fuzz::bytes_of(data, size);
    const std::string delims = input.substr(0, std::min(input.find('\0'), std::size_t{4}));
    const std::size_t behind =
        delims.size() < input.size() && input[delims.size()] == '\0' ? delims.size() + 1 : delims.size();
    if (behind == input.size()) {
        return 0;
    }
    const std::uint64_t limit = static_cast<unsigned char>(input[behind]);
    const std::string text = input.substr(behind + 1);
    require_tokens(text, delims, limit);
    require_tokens(text, delims, 0);
    require_tokens(text, ",", 0);
    require_tokens(text, "=", 1);
    require_stripped(text);
    return 0;
}
