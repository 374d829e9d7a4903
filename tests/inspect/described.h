#pragma once

#include <optional>
#include <string>

#include "dalvo/inspect/knowledge/catalogue.h"
#include "dalvo/inspect/runs/resolution.h"
#include "dalvo/inspect/runs/run.h"

// What tests of described options have in common.

namespace dalvo::testing {

/// What a host says of an option: a default, if it has one, and a range.
inline inspect::OptionExtras extras_of(const std::optional<std::string> &default_text,
                                       const AppliedOption::Range &range = {})
{
    inspect::OptionExtras extras;
    extras.default_text = default_text;
    extras.range = range;
    return extras;
}

inline inspect::OptionExtras mattering_when(const std::string &option, const Condition &condition)
{
    inspect::OptionExtras extras;
    extras.matters_when = {{option, condition}};
    return extras;
}

inline inspect::OptionExtras needing(const Condition &when, const std::string &option, const Condition &condition)
{
    inspect::OptionExtras extras;
    extras.needs = {{when, option, condition, true, "it is stored there"}};
    return extras;
}

/// What `text` alone comes to, where the options are those of `catalogue` (borrowed for as long as the resolution).
inline inspect::Resolution resolved(const inspect::Catalogue &catalogue, const std::string &text)
{
    inspect::Run run(catalogue);
    run.add_text("text", text);
    return inspect::Resolution(run);
}

} // namespace dalvo::testing
