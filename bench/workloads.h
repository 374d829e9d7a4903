#pragma once

#include <functional>
#include <vector>

#include "bench/harness.h"

namespace dalvo::bench {

/// Which sizes to measure.
enum class Scale {
    smoke, ///< the smallest alone
    quick, ///< all but those that take long
    full,
};

/// Cases to be made when their turn comes: each is made and measured in a process of its own, so that the holes that
/// one leaves in the heap slow no other.
using CaseMakers = std::vector<std::function<Case()>>;

// Each returns its workload's cases.
CaseMakers load_cases(Scale scale);
CaseMakers start_cases(Scale scale);
CaseMakers update_cases(Scale scale);
CaseMakers dump_cases(Scale scale);
CaseMakers map_cases(Scale scale);
CaseMakers section_cases(Scale scale);
CaseMakers check_cases(Scale scale);
CaseMakers resolve_cases(Scale scale);

/// All of them, in the order of the table.
CaseMakers all_cases(Scale scale);

} // namespace dalvo::bench
