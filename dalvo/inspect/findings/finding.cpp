#include "dalvo/inspect/findings/finding.h"

#include <algorithm>

namespace dalvo::inspect {

bool has_errors(const std::vector<Finding> &findings) noexcept
{
    return count(findings, Severity::error) != 0;
}

std::size_t count(const std::vector<Finding> &findings, Severity severity) noexcept
{
    return static_cast<std::size_t>(std::count_if(
        findings.begin(), findings.end(), [&](const Finding &finding) { return finding.severity == severity; }));
}

std::string fixed_text(const std::string &text, const Fix &fix)
{
    std::string mended;
    std::size_t done = 0;
    for (const Edit &edit : fix.edits) {
        mended.append(text, done, edit.begin - done);
        mended += edit.text;
        done = edit.end;
    }
    return mended.append(text, done, std::string::npos);
}

} // namespace dalvo::inspect
