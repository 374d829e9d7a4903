#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>

#include "dalvo/export.h"

/// Trimming, splitting and joining of byte strings.
///
/// Example:
///
///     const std::string line = "name = a = b";
///     const auto tokens = str::get_tokenizer(line, "=", 1);
///     for (auto at = tokens->begin(); at != tokens->end(); ++at)
///         use(str::strip(*at, isspace));                          // "name", then "a = b"
namespace dalvo::str {

/// `s` (any bytes, may be empty) without the characters at its end, then at its start, for which `predicate` is not 0.
/// Each byte reaches the predicate as a signed 8-bit value widened to int: 0x80 to 0xFF arrive as -128 to -1. Throws
/// what the predicate throws.
DALVO_API std::string strip(const std::string &s, int (*predicate)(int));

/// The same part of `s` as a view of it, as long as what it views, by a predicate `holds` that takes a char and returns
/// bool. What the predicate throws passes through.
template <class Predicate> std::string_view stripped(std::string_view s, Predicate holds)
{
    while (!s.empty() && holds(s.back())) {
        s.remove_suffix(1);
    }
    while (!s.empty() && holds(s.front())) {
        s.remove_prefix(1);
    }
    return s;
}

/// The `parts` (any bytes, may be empty) in one string.
DALVO_API std::string joined(std::initializer_list<std::string_view> parts);

/// Whether `a` and `b` (any bytes, may be empty) are the same but for the case of ASCII letters, whatever the locale.
DALVO_API bool equal_but_for_case(std::string_view a, std::string_view b) noexcept;

/// `text` (any bytes, may be empty) with its ASCII letters in lower case, whatever the locale.
DALVO_API std::string folded(std::string_view text);

/// Whether `c` (any byte) is white space of configuration texts: what isspace accepts in the "C" locale, whatever
/// locale the host has set.
constexpr bool is_space(char c) noexcept
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

class TokenizerBase;

/// Where a tokenizer stands: the tokenizer and the byte offset of a token in its text; the offset npos is the end.
/// Borrows the tokenizer. `++` moves the tokenizer itself, so all positions of one tokenizer share its current token.
struct DALVO_API TokenPosition {
    static constexpr std::uint64_t npos = ~std::uint64_t{0};
    ///< the offset of the end

    TokenizerBase *tokenizer; ///< borrowed, not null
    std::uint64_t offset;     ///< of the token, in bytes from the start of the text

    /// The current token of the tokenizer; good until the next `++`.
    const std::string &operator*() const;

    /// Produces the next token; at the last one becomes equal to `end()`.
    TokenPosition &operator++();

    /// Whether `a` and `b` are one place of one tokenizer.
    friend bool operator==(const TokenPosition &a, const TokenPosition &b)
    {
        return a.tokenizer == b.tokenizer && a.offset == b.offset;
    }

    /// Whether `a` and `b` are different places, or of different tokenizers.
    friend bool operator!=(const TokenPosition &a, const TokenPosition &b) { return !(a == b); }
};

/// Yields the tokens of a text one after the other: `begin()` once, then `next_pos()` until it returns npos.
class DALVO_API TokenizerBase {
public:
    virtual ~TokenizerBase();

    /// Produces the first token of a fresh tokenizer (the next one of a used one) and returns (this, 0).
    virtual TokenPosition begin() = 0;

    /// Returns (this, npos).
    virtual TokenPosition end() = 0;

    /// Produces the next token and returns the byte offset at which it starts; npos, and the current token stays, when
    /// none is left.
    virtual std::uint64_t next_pos() = 0;

    /// The token produced last; empty before `begin()`. Owned by the tokenizer, good until its next step.
    virtual const std::string &cur_token() = 0;

protected:
    /// A tokenizer without a token.
    TokenizerBase() = default;

    /// A tokenizer that stands where the other stands.
    TokenizerBase(const TokenizerBase &) = default;

    /// Stands where the other stands from now on.
    TokenizerBase &operator=(const TokenizerBase &) = default;
};

/// The tokenizers themselves, by their kind of delimiter; instantiated for IsDelim alone.
struct DALVO_API Tokenizer {
    /// Holds for each character that occurs in `delims`.
    struct DALVO_API IsDelim {
        std::string delims; ///< the characters that cut; may be empty

        /// Whether `c` is one of them.
        bool operator()(char c) const { return delims.find(c) != std::string::npos; }
    };

    /// Cuts `s` at each character for which `predicate` holds, at most `limit` times when that is not 0; what follows
    /// the last cut is one token, delimiters included.
    ///
    /// Consecutive delimiters have an empty token between them, a trailing one has an empty token after it, and the
    /// empty text is one empty token. `s` is borrowed: it outlives the tokenizer and does not change meanwhile.
    template <class Predicate> class DALVO_API TokenizerImpl : public TokenizerBase {
    public:
        /// A tokenizer at the start of `s`, by `predicate` and `limit`.
        TokenizerImpl(const std::string &s, Predicate predicate, std::uint64_t limit);

        TokenPosition begin() override;
        TokenPosition end() override;
        std::uint64_t next_pos() override;
        const std::string &cur_token() override;

    private:
        /// Offset of the first delimiter at or after `from`; npos when there is none or the splits are used up.
        std::uint64_t next_delim(std::uint64_t from) const;

        const std::string *text;
        Predicate is_delim;
        std::uint64_t max_splits;
        std::uint64_t splits = 0;
        std::string token;
        std::uint64_t pos = 0;
    };
};

extern template class DALVO_API Tokenizer::TokenizerImpl<Tokenizer::IsDelim>;

/// A tokenizer over `s` (any bytes; borrowed, see TokenizerImpl) that splits at the characters of `delims` (copied;
/// ends at its NUL, may be empty: then nothing splits), at most `max_splits` times; 0 means no limit. The caller owns
/// it.
DALVO_API std::unique_ptr<TokenizerBase> get_tokenizer(const std::string &s, const char *delims,
                                                       std::uint64_t max_splits);

} // namespace dalvo::str
