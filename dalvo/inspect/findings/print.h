#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "dalvo/export.h"
#include "dalvo/inspect/findings/finding.h"

namespace dalvo::inspect {

/// How findings are printed.
struct PrintStyle {
    bool has_colour = false; ///< with the escape sequences of terminals

    /// The columns that a code point beyond ASCII takes on the terminal, 0 to 2; less counts as 0. Null: one for each. A
    /// host that links a library that knows better passes it, so that carets stand right below wide and combining
    /// characters.
    int (*width)(char32_t) = nullptr;
};

/// Writes each of `findings` to `out`, in `style`:
///
///     solver.cfg:2:13: error: value 3 is out of range: verbosity accepts at most 2
///         verbosity = 3
///                     ^
///
/// with the rule's name in brackets after a warning, and its notes below it: one line each, without those whose place
/// the message names. Control bytes are escaped. Failures are left in the stream's state; throws std::bad_alloc when
/// memory runs out, and what a stream throws that its owner has asked to.
DALVO_API void print(std::ostream &out, const std::vector<Finding> &findings, const PrintStyle &style = {});

/// "2 errors, 1 warning"; "" for no findings. A count of zero is omitted.
DALVO_API std::string counts(const std::vector<Finding> &findings);

} // namespace dalvo::inspect
