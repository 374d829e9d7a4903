#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "bench/hostile/generated.h"

namespace dalvo::hostile {

/// What a text must come to, so that no figure stands for something else.
struct Outcome {
    std::uint64_t sections = 1; ///< the unnamed one included
    std::uint64_t entries = 0;  ///< of all sections together
    std::string error = {};     ///< how the text of the error begins; empty for none
    bool is_applied = false;    ///< whether a record is filled once the text is loaded
};

/// A text made to cost as much as it can.
struct Case {
    std::string name; ///< without blanks: it is an argument
    GeneratedText text;
    Outcome outcome;
};

/// All cases, their sizes divided by `shrink` (at least 1).
std::vector<Case> cases(std::uint64_t shrink);

} // namespace dalvo::hostile
