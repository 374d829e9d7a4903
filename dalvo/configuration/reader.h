#pragma once

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <string_view>
#include <vector>

namespace dalvo {

/// A piece of a line, stripped of white space. Any bytes; may be empty where that is said.
struct TextPiece {
    std::string_view text;
    std::size_t column; ///< of its first byte, counted in bytes from 1; where it is empty, where it would begin
};

/// A line of a configuration text.
struct TextLine {
    std::uint64_t number;  ///< counted from 1
    std::string_view text; ///< as it stands, without its newline
};

/// An assignment line: a name, "=", a value.
struct TextAssignment {
    TextPiece name;  ///< may be empty
    TextPiece value; ///< may be empty
    bool has_equals; ///< false for a line that is a name and nothing else
};

/// Takes what `read_text` finds. All that an operation is given is borrowed: it is good until the operation returns.
class TextReceiver {
public:
    virtual ~TextReceiver();

    /// A section header with its names, in their order; at least one. The names are not empty, but for the header
    /// "[default]", which has one empty name, the unnamed section's, at the place of the word.
    virtual void header(const TextLine &line, const std::vector<TextPiece> &names) = 0;

    virtual void assignment(const TextLine &line, const TextAssignment &assignment) = 0;

    /// A malformed header: the stripped line, and the names that stand before the empty one, if that is what is wrong.
    virtual void malformed(const TextLine &line, const TextPiece &stripped, const std::vector<TextPiece> &names) = 0;

protected:
    TextReceiver() = default;
    TextReceiver(const TextReceiver &) = default;
    TextReceiver &operator=(const TextReceiver &) = default;
};

/// Reads a configuration text to the stream's end and hands each line that is not blank and no comment to `receiver`,
/// in their order. docs/format.md describes the text. Files nothing and judges no name and no value.
/// A stream that fails ends the text, even where its own exception mask would have it throw. What the receiver throws
/// passes through and ends the reading behind the line; std::bad_alloc is thrown when memory runs out.
void read_text(std::istream &in, TextReceiver &receiver);

} // namespace dalvo
