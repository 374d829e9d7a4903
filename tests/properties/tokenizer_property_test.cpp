// What holds of the pieces of any text.

#include <cstddef>
#include <cstdint>
#include <string>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "dalvo/utils/str.h"

namespace {

using namespace std::string_literals;
using dalvo::str::get_tokenizer;
using dalvo::str::TokenPosition;

/// Bytes of few kinds, so that delimiters are frequent and stand side by side.
rc::Gen<std::string> texts()
{
    return rc::gen::container<std::string>(rc::gen::elementOf(",;= ab\n\xff"s + '\0'));
}

rc::Gen<std::string> delimiters()
{
    return rc::gen::container<std::string>(rc::gen::elementOf(",;= a\xff"s));
}

bool is_one_of(char c, const std::string &characters)
{
    return characters.find(c) != std::string::npos;
}

void expect_text_back(const std::string &text, const std::string &delims, std::uint64_t max_splits)
{
    const auto tokens = get_tokenizer(text, delims.c_str(), max_splits);
    std::string joined;
    std::uint64_t splits = 0;
    std::string last;
    for (auto at = tokens->begin(); at != tokens->end(); ++at) {
        if (at.offset != 0) {
            const char delimiter = text[at.offset - 1];
            RC_ASSERT(is_one_of(delimiter, delims));
            RC_ASSERT(last.find_first_of(delims) == std::string::npos); // cut at the first one
            joined += delimiter;
            ++splits;
        }
        RC_ASSERT(joined.size() == at.offset);
        last = *at;
        joined += last;
    }
    RC_ASSERT(joined == text);
    RC_ASSERT(max_splits == 0 || splits <= max_splits);
    if (max_splits == 0 || splits < max_splits) {
        RC_ASSERT(last.find_first_of(delims) == std::string::npos); // cut at each one
    }
    RC_ASSERT(tokens->next_pos() == TokenPosition::npos);
    RC_ASSERT(tokens->cur_token() == last);
}

RC_GTEST_PROP(tokens, joined_by_the_delimiters_between_them_give_the_text_back, ())
{
    const std::string text = *texts();
    const std::string delims = *delimiters();
    for (std::uint64_t max_splits = 0; max_splits <= text.size() + 1; ++max_splits) {
        expect_text_back(text, delims, max_splits);
    }
}

RC_GTEST_PROP(stripping, takes_a_run_off_each_end_and_nothing_else, ())
{
    const std::string text = *texts();
    const auto is_dropped = [](int c) -> int { return c == ' ' || c == -1 || c == '\n' || c == 0; };
    const std::string kept = dalvo::str::strip(text, is_dropped);
    const std::size_t start = text.find_first_not_of(" \xff\n\0"s);
    if (start == std::string::npos) {
        RC_ASSERT(kept.empty());
    } else {
        RC_ASSERT(kept == text.substr(start, text.find_last_not_of(" \xff\n\0"s) - start + 1));
    }
}

} // namespace
