#pragma once

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/inspect/findings/finding_lines.h"

namespace dalvo::testing {

/// A text, the section that is chosen, the findings, and what the row shows.
struct TextRow {
    std::string text;
    Chosen section;
    Lines findings;
    const char *why;
};

inline void expect_findings(const std::vector<TextRow> &rows)
{
    for (const TextRow &row : rows) {
        SCOPED_TRACE(::testing::PrintToString(row.text) + ": " + row.why);
        EXPECT_EQ(shown(findings_of(run_with(row.text), row.section)), row.findings);
    }
}

/// The same for the findings with all that they carry.
inline void expect_whole_findings(const std::vector<TextRow> &rows)
{
    for (const TextRow &row : rows) {
        SCOPED_TRACE(::testing::PrintToString(row.text) + ": " + row.why);
        EXPECT_EQ(shown_whole(findings_of(run_with(row.text), row.section)), row.findings);
    }
}

} // namespace dalvo::testing
