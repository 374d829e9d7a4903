#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "dalvo/inspect/findings/finding.h"
#include "dalvo/inspect/runs/run.h"

namespace dalvo::tools {

/// What --color says: "auto", "always" or "never".
struct ColourChoice {
    std::string when = "auto";
};

/// --color
void add_colour(CLI::App &command, ColourChoice &choice);

/// Writes findings to standard error, and their counts below them where there are any and `with_counts`.
void report(const std::vector<inspect::Finding> &findings, const ColourChoice &choice, bool with_counts);

/// Writes the errors of `run` to standard error, as `check` does. The exit status that they come to: that of wrong usage
/// where an input or a section is not there.
int report_errors(const inspect::Run &run, const ColourChoice &choice);

/// The exit status that findings come to.
int status_of(const std::vector<inspect::Finding> &findings);

/// Writes them as JSON; docs/check.md describes it.
void write_findings_json(std::ostream &out, const std::vector<inspect::Finding> &findings);

} // namespace dalvo::tools
