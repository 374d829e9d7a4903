#pragma once

#include <string>
#include <string_view>

#include "dalvo/inspect/findings/collector.h"

// Ways to mend findings in their texts. Assignments of a command line get none: there is no text to mend.

namespace dalvo::inspect {

/// Replaces `piece` of the assignment's line by `text`.
void fix_piece(Finding &finding, const Text &text, const Filed &assignment, std::string_view piece,
               const std::string &replacement, bool is_safe, const std::string &title);

/// Makes the value `value`, and what stands after it from `comment` on, which is of the same line, a comment line of
/// its own; `comment` is empty where there is none.
void fix_value(Finding &finding, const Text &text, const Filed &assignment, const std::string &value,
               std::string_view comment, bool is_safe, const std::string &title);

/// Gives what stands after a header, where it is a comment, a line of its own.
void fix_header_comment(Finding &finding, const Text &text, const HeaderProblem &problem);

/// Takes the second one of a name that a header has twice out of it.
void fix_repeated_name(Finding &finding, const Text &text, const HeaderProblem &problem);

} // namespace dalvo::inspect
