#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "dalvo/export.h"
#include "dalvo/inspect/findings/rules.h"
#include "dalvo/inspect/runs/place.h"

namespace dalvo::inspect {

/// The part of a line around a place, as it stands.
struct Excerpt {
    std::string bytes;          ///< without the line's end; cut where the line is long
    std::size_t place = 0;      ///< the offset of the place in it
    bool is_cut_before = false; ///< whether the line has more before it
    bool is_cut_after = false;  ///< whether the line has more after it
};

/// A further explanation of a finding.
struct Note {
    std::string message;        ///< for people; one line, with control bytes escaped
    Place place;                ///< where it belongs; of no source where that is nowhere
    bool is_in_message = false; ///< whether the finding's own message names the place: a text need not repeat it
};

/// A replacement of bytes of a text.
struct Edit {
    std::size_t begin; ///< the offset of the first byte that is replaced
    std::size_t end;   ///< the offset after the last one; `begin` where text is put in
    std::string text;  ///< what stands there afterwards
};

/// A way to mend a finding in its text.
struct Fix {
    std::string title; ///< for people: "write 'verbosity'"
    /// Whether it is surely what was meant: each comment, and what looks like one, stays a comment, and all other lines
    /// mean the same. The mended line may still have another problem.
    bool is_safe;
    std::vector<Edit> edits; ///< by offset; they do not overlap
};

/// One problem of a run, and where.
struct Finding {
    Rule rule{};                               ///< the kind of problem
    Severity severity{};                       ///< the rule's
    Place place;                               ///< of no line on a command line, and for a text as a whole
    std::string message;                       ///< for people; one line, with control bytes escaped
    std::string option = {};                   ///< the option's name as written; "" where the problem is no option's
    std::string accepted = {};                 ///< of a value that is not accepted: what is
    std::vector<std::string> suggestions = {}; ///< of an unknown name: what may be meant, the likeliest first
    std::vector<Note> notes = {};              ///< further explanations
    std::vector<Fix> fixes = {};               ///< ways to mend it, each by itself; often empty
    Excerpt excerpt = {};                      ///< empty where there is no line
};

/// Whether there is an error among `findings`.
DALVO_API bool has_errors(const std::vector<Finding> &findings) noexcept;

/// The number of `findings` of `severity`.
DALVO_API std::size_t count(const std::vector<Finding> &findings, Severity severity) noexcept;

/// `text` with the edits of `fix` made, which is one for this text.
DALVO_API std::string fixed_text(const std::string &text, const Fix &fix);

} // namespace dalvo::inspect
