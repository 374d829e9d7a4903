#pragma once

#include <iosfwd>
#include <vector>

#include "dalvo/inspect/runs/resolution.h"

namespace dalvo::tools {

/// How an option gets its setting.
struct Explanation {
    const inspect::Resolution &resolution;
    const inspect::Setting &setting;
    std::vector<inspect::Assigned> assignments; ///< all to the option, as the resolution lists them

    /// Whether an assignment to the option is rejected, so that there is no setting.
    bool has_rejected() const;

    /// Those of the assignments that apply.
    std::vector<inspect::Assigned> applying() const;
};

/// For people, wrapped to the terminal.
void write_explanation(std::ostream &out, const Explanation &explanation);

/// docs/json.md describes it.
void write_explanation_json(std::ostream &out, const Explanation &explanation);

/// The level that the library keeps with an assignment of this kind: 3 for the built-in text, 2 for texts, 1 for the
/// command line.
int level_of(inspect::Assigned::Kind kind);

} // namespace dalvo::tools
