#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "tools/commands/inputs.h"
#include "tools/inspection/optioninfo.h"
#include "tools/inspection/sources.h"

namespace dalvo::tools {

/// When an assignment applies: the stages follow each other in this order.
enum class Stage {
    always,  ///< of no section
    section, ///< of the chosen section
    command_line,
    never, ///< of a section that is not chosen
};

/// How an option takes a value.
enum class Verdict {
    accepted,
    out_of_range, ///< rejected where no later assignment replaces it
    unreadable,   ///< not of the option's type: rejected even where a later assignment replaces it
};

/// An assignment and its part in what applies.
struct Step {
    Assignment assignment;
    Stage stage;
    std::size_t text; ///< of all texts, which one it stands in; their number on the command line
};

/// All assignments of the texts and the command line: those that apply in the order in which they do, then those of
/// the sections that are not chosen, text by text.
std::vector<Step> steps_of(const std::vector<Source> &sources, const Inputs &inputs);

/// One option's steps.
struct Trail {
    const OptionInfo *option;
    std::vector<Step> steps;       ///< that apply, in their order: the last one wins
    std::vector<Step> others;      ///< that do not
    std::vector<Verdict> verdicts; ///< of `steps`, then of `others`

    /// The assignments of `steps`.
    std::vector<Assignment> applying() const;

    /// Whether the library rejects `steps[i]`.
    bool is_rejected(std::size_t i) const;

    /// Why the last of `steps` wins over those before it, in words, without a capital or a full stop.
    std::string reason() const;
};

Trail trail_of(const OptionInfo &option, const std::vector<Step> &steps);

} // namespace dalvo::tools
