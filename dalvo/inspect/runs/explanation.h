#pragma once

#include <string>
#include <vector>

#include "dalvo/export.h"
#include "dalvo/inspect/runs/resolution.h"

// What a resolution says, in words.

namespace dalvo::inspect {

/// Where the value in force of `setting` comes from, on one line: "built-in default", "FILE:LINE", "command line", "initial value",
/// or "forced by OPTION = VALUE (PLACE), ...". Users cannot open the built-in text, so its line numbers are left out.
DALVO_API std::string origin_text(const Setting &setting);

/// Why the assignment that wins does so, without a capital or a full stop: "it is the only one that applies", "a later
/// line applies after an earlier one", ... `applying` are all assignments to an option that apply, in their order (not
/// empty).
DALVO_API std::string why_it_wins(const std::vector<Assigned> &applying);

/// Why nothing reads the value of `setting` now, without a capital or a full stop: "theory.la.enabled is false (solver.cfg:3), and it
/// matters only when that is true"; "" where something does.
DALVO_API std::string why_no_effect(const Setting &setting);

/// The needs that are not met, of the option of `setting` and of those that need it: "unsat_core_generation = 2 needs
/// that dpll.store_tlemmas is true: ..."; empty where there are none.
DALVO_API std::vector<std::string> unmet_needs(const Setting &setting);

/// What `option` has to do with others, a sentence each: "It matters only when dpll.restart_strategy is 0.", "When it
/// is true, it forces proof_generation to true.", ...
DALVO_API std::vector<std::string> relation_sentences(const OptionInfo &option);

} // namespace dalvo::inspect
