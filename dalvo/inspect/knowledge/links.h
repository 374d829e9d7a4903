#pragma once

#include <cstddef>
#include <vector>

#include "dalvo/inspect/knowledge/catalogue.h"

namespace dalvo::inspect {

/// The relations of a catalogue's options, by their positions, for those who judge many assignments.
struct Links {
    /// An option that forces this one where its own assignment meets a condition.
    struct Forcer {
        std::size_t option;
        Condition when;
        bool value;
        bool own_assignment_wins; ///< an assignment of this option replaces the force
    };

    /// An option that decides whether this one matters.
    struct Decider {
        std::size_t option;
        Condition condition;
    };

    /// An option that a value of this one needs.
    struct Needed {
        std::size_t option;
        const Need *need; ///< owned by the catalogue
    };

    struct Option {
        double initial;                ///< the initial value, as a number
        std::vector<Forcer> forced_by; ///< in the order in which they are applied
        std::vector<Decider> deciders; ///< of its own rows; those of the deciders count, too
        std::vector<Needed> needs;     ///< what values of this one need
        std::vector<Needed> needed_by; ///< by which options this one is needed
    };

    std::vector<Option> options; ///< in the order of the catalogue
};

/// Those of `catalogue`.
Links links_of(const Catalogue &catalogue);

} // namespace dalvo::inspect
