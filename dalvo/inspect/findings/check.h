#pragma once

#include <string>
#include <vector>

#include "dalvo/export.h"
#include "dalvo/inspect/findings/finding.h"
#include "dalvo/inspect/runs/run.h"

namespace dalvo::inspect {

// What is wrong with a run, by text in their order, then by line and column. The
// time grows with the length of the texts, not with lines, sections or names times each
// other, but for lines that a header with several names files several times. Of the built-in text errors are told alone.

/// The findings of the run with its section chosen. Assignments of other sections are not judged; headers are: a malformed
/// one keeps the whole text from being loaded. There is an error among them exactly when `Resolution::applies` is false.
DALVO_API std::vector<Finding> check(const Run &run);

/// The findings of the run whichever section is chosen, and with none: there is an error among them exactly when one of
/// these is an error. Which section is chosen in the run does not matter.
DALVO_API std::vector<Finding> check_every_section(const Run &run);

/// The findings of the text `contents` by itself, put on top of the default text, with every section of it. `source` is
/// what people know it as; `catalogue` has the options and the default text.
DALVO_API std::vector<Finding> check_text(const std::string &source, const std::string &contents,
                                          const Catalogue &catalogue = Catalogue::standard());

/// Fills `*record` (not null) from `run`, and tells what is wrong with the run. Where there is an error among the
/// findings the record is left alone.
///
/// Example:
///
///     const std::vector<Finding> findings = fill(run, &settings);
///     print(std::cerr, findings);
///     if (has_errors(findings)) { ... }
DALVO_API std::vector<Finding> fill(const Run &run, Configuration *record);

} // namespace dalvo::inspect
