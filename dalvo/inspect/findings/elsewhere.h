#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "dalvo/inspect/runs/scenario.h"

namespace dalvo::inspect {

/// Lines outside of sections that do not matter where no section is chosen: which of them matter in a section.
class Elsewhere {
public:
    explicit Elsewhere(std::size_t options) : decided(options), matters_in_one(options) {}

    /// Watches the line that wins for `option` in `scenario`, in which no section is chosen.
    void watch(const Scenario &scenario, std::uint32_t option);

    /// Looks at the section that `scenario` has chosen.
    void look(const Scenario &scenario);

    /// Whether the line for `option` matters in a section that was looked at.
    bool matters(std::size_t option) const { return matters_in_one[option]; }

private:
    std::vector<std::vector<std::uint32_t>> decided; // of each option: those watched that it may make matter
    std::vector<bool> matters_in_one;
};

} // namespace dalvo::inspect
