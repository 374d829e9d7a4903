#pragma once

#include <string_view>

#include "dalvo/export.h"

namespace dalvo::inspect {

/// Whether `name` is that of a logic as SMT-LIB makes them: "QF_" or nothing, then one after the other, each or not,
/// arrays (A, AX), uninterpreted functions (UF), bit-vectors (BV), floating-point numbers (FP), data types (DT),
/// strings (S) and one of the arithmetics (IDL, RDL, LIA, LRA, LIRA, NIA, NRA, NIRA, with a T for transcendental
/// functions at the end); or "ALL".
DALVO_API bool is_logic_name(std::string_view name) noexcept;

} // namespace dalvo::inspect
