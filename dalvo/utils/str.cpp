#include "dalvo/utils/str.h"

#include <algorithm>
#include <utility>

namespace dalvo::str {

namespace {

char lower(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

} // namespace

std::string strip(const std::string &s, int (*predicate)(int))
{
    return std::string(stripped(s, [&](char c) { return predicate(static_cast<signed char>(c)) != 0; }));
}

std::string joined(std::initializer_list<std::string_view> parts)
{
    std::size_t size = 0;
    for (const std::string_view part : parts) {
        size += part.size();
    }
    std::string whole;
    whole.reserve(size);
    for (const std::string_view part : parts) {
        whole += part;
    }
    return whole;
}

bool equal_but_for_case(std::string_view a, std::string_view b) noexcept
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char c, char d) { return lower(c) == lower(d); });
}

std::string folded(std::string_view text)
{
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(), lower);
    return result;
}

const std::string &TokenPosition::operator*() const
{
    return tokenizer->cur_token();
}

TokenPosition &TokenPosition::operator++()
{
    offset = tokenizer->next_pos();
    return *this;
}

TokenizerBase::~TokenizerBase() = default;

template <class Predicate>
Tokenizer::TokenizerImpl<Predicate>::TokenizerImpl(const std::string &s, Predicate predicate, std::uint64_t limit)
    : text(&s), is_delim(std::move(predicate)), max_splits(limit)
{
}

template <class Predicate> TokenPosition Tokenizer::TokenizerImpl<Predicate>::begin()
{
    next_pos();
    return {this, 0};
}

template <class Predicate> TokenPosition Tokenizer::TokenizerImpl<Predicate>::end()
{
    return {this, TokenPosition::npos};
}

template <class Predicate> std::uint64_t Tokenizer::TokenizerImpl<Predicate>::next_pos()
{
    const std::uint64_t start = pos;
    if (start == TokenPosition::npos) {
        return TokenPosition::npos;
    }
    const std::uint64_t delim = next_delim(start);
    if (delim == TokenPosition::npos) {
        token.assign(*text, start, std::string::npos);
        pos = TokenPosition::npos;
    } else {
        token.assign(*text, start, delim - start);
        pos = delim + 1;
        ++splits;
    }
    return start;
}

template <class Predicate> const std::string &Tokenizer::TokenizerImpl<Predicate>::cur_token()
{
    return token;
}

template <class Predicate> std::uint64_t Tokenizer::TokenizerImpl<Predicate>::next_delim(std::uint64_t from) const
{
    if (max_splits != 0 && splits == max_splits) {
        return TokenPosition::npos;
    }
    for (std::uint64_t at = from; at < text->size(); ++at) {
        if (is_delim((*text)[at])) {
            return at;
        }
    }
    return TokenPosition::npos;
}

template class Tokenizer::TokenizerImpl<Tokenizer::IsDelim>;

std::unique_ptr<TokenizerBase> get_tokenizer(const std::string &s, const char *delims, std::uint64_t max_splits)
{
    return std::make_unique<Tokenizer::TokenizerImpl<Tokenizer::IsDelim>>(s, Tokenizer::IsDelim{delims}, max_splits);
}

} // namespace dalvo::str
