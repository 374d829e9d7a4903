#pragma once

#include <cstddef>
#include <iosfwd>
#include <string>
#include <vector>

#include "tools/inspection/findings.h"

namespace dalvo::tools {

std::size_t count(const std::vector<Finding> &findings, Severity severity);

/// Writes each as "file:line:column: error: text" or "file:line:column: warning: text [name]", then its line, then a
/// caret below the place.
void write_text(std::ostream &out, const std::vector<Finding> &findings, bool with_colour);

/// Writes them as JSON; docs/check.md describes it.
void write_json(std::ostream &out, const std::vector<Finding> &findings);

/// "2 errors, 1 warning"; what there is none of is left out.
std::string counts(const std::vector<Finding> &findings);

} // namespace dalvo::tools
