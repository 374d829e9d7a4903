#include "dalvo/inspect/knowledge/relations.h"

#include <string_view>

#include "dalvo/utils/str.h"

// What options have to do with each other, beyond what the application does (applier.cpp has that). It comes from their
// names and help texts. A row reads as a sentence: "OPTIONS matter only when DECIDER CONDITION".
//
// "x.*" are the options whose names start with "x.", but for the decider itself. "P." stands for each of the three
// engines, on both sides alike.

namespace dalvo::inspect {

namespace {

struct RequirementRow {
    std::string_view options;
    std::string_view decider;
    Condition condition;
};

/// "OPTION, when it CONDITION, needs that NEEDED MEETS": `reason` says what for.
struct NeedRow {
    std::string_view option;
    Condition when;
    std::string_view needed;
    Condition condition;
    bool is_for_soundness;
    std::string_view reason;
};

/// "OPTIONS make sense from LOWEST on", though they accept less. Codes need no row: they start at the first one.
struct SensibleRow {
    std::string_view options;
    double lowest;
};

constexpr std::string_view engines[] = {"dpll.", "theory.bv.lazydpll.", "theory.fp.dpll."};

// The rows are aligned by hand.
// clang-format off

constexpr RequirementRow requirement_rows[] = {
    {"debug.api_call_trace_filename",                   "debug.api_call_trace",                     is_not(0)},
    {"debug.api_call_trace_dump_config",                "debug.api_call_trace",                     is_not(0)},
    {"preprocessor.toplevel_propagation_limit",         "preprocessor.toplevel_propagation",        is(true)},
    {"preprocessor.partial_nnf_conversion",             "preprocessor.toplevel_propagation",        is(true)},
    {"preprocessor.ite_minimization_call_limit",        "preprocessor.ite_minimization",            is(true)},
    {"preprocessor.interpolation_ite_elimination",      "interpolation",                            is(true)},
    {"dpll.interpolation_mode",                         "interpolation",                            is(true)},
    {"dpll.proof_simplification",                       "interpolation",                            is(true)},
    {"P.restart_initial",                               "P.restart_strategy",                       is_at_most(2)},
    {"P.restart_geometric_factor",                      "P.restart_strategy",                       is(0)},
    {"P.branching_random_invalidate_phase_cache",       "P.branching_random_frequency",             is_above(0)},
    {"P.branching_random_ignore_polarity",              "P.branching_random_frequency",             is_above(0)},
    {"dpll.preprocessor.*",                             "dpll.preprocessor.mode",                   is_not(0)},
    {"theory.la.*",                                     "theory.la.enabled",                        is(true)},
    {"theory.la.interpolation_mode",                    "interpolation",                            is(true)},
    {"theory.la.interpolation_laz_use_floor",           "interpolation",                            is(true)},
    {"theory.la.interpolation_laz_use_floor",           "theory.la.laz_enabled",                    is(true)},
    {"theory.la.laz_*",                                 "theory.la.laz_enabled",                    is(true)},
    {"theory.la.laz_internal_branch_and_bound_limit",   "theory.la.laz_internal_branch_and_bound",  is(true)},
    {"theory.euf.*",                                    "theory.euf.enabled",                       is(true)},
    {"theory.euf.dyn_ack_threshold",                    "theory.euf.dyn_ack",                       is_not(0)},
    {"theory.euf.dyn_ack_limit",                        "theory.euf.dyn_ack",                       is_not(0)},
    {"theory.arr.*",                                    "theory.arr.enabled",                       is(true)},
    {"theory.arr.max_wr_lemmas",                        "theory.arr.enable_wr_lemmas",              is(true)},
    {"theory.arr.max_row_lemmas",                       "theory.arr.enable_row_lemmas",             is(true)},
    {"theory.arr.enable_nonlinear",                     "theory.arr.enable_row_lemmas",             is(true)},
    {"theory.arr.enable_nonlinear_strat",               "theory.arr.enable_row_lemmas",             is(true)},
    {"theory.arr.max_ext_lemmas",                       "theory.arr.enable_ext_lemmas",             is(true)},
    {"theory.arr.enable_ext_polarity",                  "theory.arr.enable_ext_lemmas",             is(true)},
    {"theory.arr.enable_ext_arg",                       "theory.arr.enable_ext_lemmas",             is(true)},
    {"theory.arr.enable_witness",                       "theory.arr.enable_ext_lemmas",             is(true)},
    {"theory.arr.enable_foreign",                       "theory.arr.enable_ext_lemmas",             is(true)},
    {"theory.bv.*",                                     "theory.bv.enabled",                        is(true)},
    {"theory.bv.interpolation_mode",                    "interpolation",                            is(true)},
    {"theory.bv.proof_simplification",                  "interpolation",                            is(true)},
    {"theory.bv.lazydpll.*",                            "theory.bv.eager",                          is(false)},
    {"theory.fp.*",                                     "theory.fp.enabled",                        is(true)},
    {"theory.fp.bv_combination_enabled",                "theory.bv.enabled",                        is(true)},
    {"theory.fp.bit_blast_mode",                        "theory.fp.mode",                           is_at_most(1)},
    {"theory.fp.acdcl_*",                               "theory.fp.mode",                           is(2)},
    {"theory.fp.interpolation_mode",                    "theory.fp.mode",                           is(2)},
    {"theory.fp.interpolation_mode",                    "interpolation",                            is(true)},
};

constexpr NeedRow need_rows[] = {
    {"theory.la.detect_euf_fragment",  is(true),  "theory.euf.enabled",  is(true),  true,  "answers may be wrong without it"},
    {"unsat_core_generation",          is(2),     "dpll.store_tlemmas",  is(true),  false, "the lemmas that are stored are what it lifts"},
};

constexpr SensibleRow sensible_rows[] = {
    {"P.branching_random_frequency", 0.0},
};

// clang-format on

bool starts_with(std::string_view text, std::string_view start)
{
    return text.substr(0, start.size()) == start;
}

/// The engine that `name` is an option of, with its dot; empty where it is none's.
std::string_view engine_of(std::string_view name)
{
    for (const std::string_view engine : engines) {
        if (starts_with(name, engine)) {
            return engine;
        }
    }
    return "";
}

/// `pattern`, with "P." as the engine.
std::string spelt(std::string_view pattern, std::string_view engine)
{
    return starts_with(pattern, "P.") ? str::joined({engine, pattern.substr(2)}) : std::string(pattern);
}

bool matches(const std::string &name, std::string_view pattern)
{
    if (starts_with(pattern, "P.") && engine_of(name).empty()) {
        return false;
    }
    const std::string whole = spelt(pattern, engine_of(name));
    return whole.back() == '*' ? starts_with(name, std::string_view(whole).substr(0, whole.size() - 1)) : name == whole;
}

} // namespace

std::vector<Requirement> requirements_of(const std::string &name)
{
    std::vector<Requirement> found;
    for (const RequirementRow &row : requirement_rows) {
        std::string decider = spelt(row.decider, engine_of(name));
        if (matches(name, row.options) && name != decider) {
            found.push_back({std::move(decider), row.condition});
        }
    }
    return found;
}

std::vector<Need> needs_of(const std::string &name)
{
    std::vector<Need> found;
    for (const NeedRow &row : need_rows) {
        if (name == row.option) {
            found.push_back(
                {row.when, std::string(row.needed), row.condition, row.is_for_soundness, std::string(row.reason)});
        }
    }
    return found;
}

std::optional<double> lowest_sensible_of(const std::string &name)
{
    for (const SensibleRow &row : sensible_rows) {
        if (matches(name, row.options)) {
            return row.lowest;
        }
    }
    return std::nullopt;
}

std::string main_engine_name(const std::string &name)
{
    const std::string_view engine = engine_of(name);
    return engine.empty() ? name : str::joined({engines[0], std::string_view(name).substr(engine.size())});
}

} // namespace dalvo::inspect
