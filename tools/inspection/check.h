#pragma once

#include <string>
#include <vector>

#include "tools/inspection/findings.h"

namespace dalvo::tools {

/// Every problem of the configuration text `contents`, by line and column; `file_name` is what they call it.
///
/// There is no error among them exactly when `load` takes the text and `update_config` then succeeds, on a setter with
/// the catalogue and nothing else, whichever section is active, and when none is.
/// The time grows with the text's length, not with the lines, sections or names times each other, but for lines that
/// a header with several names files several times.
std::vector<Finding> check_text(const std::string &file_name, const std::string &contents);

} // namespace dalvo::tools
