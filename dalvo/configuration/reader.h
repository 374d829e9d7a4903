#pragma once

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <string_view>
#include <vector>

#include "dalvo/export.h"

/// The reader of configuration texts by itself: for `load`, and for hosts that look at a text before they load it.
namespace dalvo {

/// A piece of a line, stripped of white space. Any bytes; may be empty where that is said.
struct TextPiece {
    std::string_view text; ///< borrowed from the line
    std::size_t column;    ///< of its first byte, counted in bytes from 1; where it is empty, where it would begin
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

/// Takes what `read_text` finds. All that an operation is given is borrowed: it is good until the operation returns,
/// but for texts in memory.
class DALVO_API TextReceiver {
public:
    virtual ~TextReceiver();

    /// A section header, `line`, with its `names`, in their order; at least one. The names are not empty, but for the
    /// header "[default]", which has one empty name, the unnamed section's, at the place of the word.
    virtual void header(const TextLine &line, const std::vector<TextPiece> &names) = 0;

    /// A line that is no header, `line`, as an `assignment`.
    virtual void assignment(const TextLine &line, const TextAssignment &assignment) = 0;

    /// A malformed header, `line`: all of it as `stripped`, and the `names` that stand before the empty one, if that is
    /// what is wrong.
    virtual void malformed(const TextLine &line, const TextPiece &stripped, const std::vector<TextPiece> &names) = 0;

protected:
    /// A receiver that was told nothing.
    TextReceiver() = default;

    /// Copies nothing: there is nothing in the base.
    TextReceiver(const TextReceiver &) = default;

    /// Changes nothing.
    TextReceiver &operator=(const TextReceiver &) = default;
};

/// Reads the configuration text `in` (any bytes) to the stream's end and hands each line that is not blank and no
/// comment to `receiver`, in their order. docs/format.md describes the text. Files nothing and judges no name and no
/// value. A stream that fails ends the text, even where its own exception mask would have it throw. What the receiver
/// throws passes through and ends the reading after the line.
DALVO_API void read_text(std::istream &in, TextReceiver &receiver);

/// Reads a configuration text that is in memory (any bytes), in the same way. What the receiver is given are views of
/// `text`: good for as long as the bytes stay where they are.
DALVO_API void read_text(std::string_view text, TextReceiver &receiver);

} // namespace dalvo
