#include "examples/smt/z3options.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <iterator>

#include <z3++.h>

#include "examples/host/settings.h"
#include "examples/printers/number.h"

// From our options to the parameters of Z3 4.8.12, a row an option, in the order of the catalogue. Z3 has two engines:
// problems that come down to propositions go to the one of "sat.", all others to the one of "smt."; dpll goes to each
// that has such a switch.

namespace examples {

namespace {

using dalvo::Configuration;

// Without this, Z3 looks at the problem and puts settings of its own in the place of ours.
constexpr const char *own_settings = "smt.auto_config";

Z3Value boolean(bool value)
{
    return value ? "true" : "false";
}

Z3Value unsigned_number(std::int32_t value)
{
    return std::to_string(static_cast<std::uint32_t>(value));
}

// clang-format off
Z3Value verbosity(const Configuration &c)      { return std::to_string(std::max(c.verbosity, 0)); }
Z3Value proof(const Configuration &c)          { return boolean(c.proof_generation); }
Z3Value model(const Configuration &c)          { return boolean(c.model_generation); }
Z3Value unsat_core(const Configuration &c)     { return boolean(c.unsat_core_generation != 0); }
Z3Value seed(const Configuration &c)           { return unsigned_number(c.random_seed); }
Z3Value minimize(const Configuration &c)       { return boolean(c.dpll.glucose_learnt_minimization); }
Z3Value preprocess(const Configuration &c)     { return boolean(c.dpll.preprocessor_mode != 0); }
Z3Value equalities(const Configuration &c)     { return boolean(c.theory_eq_propagation); }
Z3Value la_solver(const Configuration &c)      { return c.theory_la_enabled ? "6" : "0"; }
Z3Value inequalities(const Configuration &c)   { return boolean(c.theory_la_split_rat_eq); }
Z3Value deduction(const Configuration &c)      { return c.theory_la_deduction_enabled ? "1" : "0"; }
Z3Value cuts(const Configuration &c)           { return boolean(c.theory_la_laz_cuts_from_proofs_mode != 0); }
Z3Value threshold(const Configuration &c)      { return unsigned_number(c.theory_euf_dyn_ack_threshold); }
Z3Value extensional(const Configuration &c)    { return boolean(c.theory_arr_enable_ext_lemmas); }
// clang-format on

/// `values[code]`; none where it is empty, or where there is no such code.
template <std::size_t size> Z3Value coded(std::int32_t code, const char *const (&values)[size])
{
    const bool known = code >= 0 && static_cast<std::size_t>(code) < size && *values[code] != '\0';
    return known ? Z3Value(values[code]) : std::nullopt;
}

// clang-format off
Z3Value bv_literals(const Configuration &c)    { return coded(c.printer_bv_number_format, {"false", "", "true"}); }
Z3Value fp_reals(const Configuration &c)       { return coded(c.printer_fp_number_format, {"", "false", "true"}); }
Z3Value ackermann(const Configuration &c)      { return coded(c.theory_euf_dyn_ack, {"0", "1", "2"}); }
Z3Value div_by_zero(const Configuration &c)    { return coded(c.theory_bv_div_by_zero_mode, {"true", "false"}); }
// clang-format on

Z3Value smt_restart(const Configuration &c)
{
    return coded(c.dpll.restart_strategy, {"0", "2", "2", ""}); // no dynamic one
}

Z3Value sat_restart(const Configuration &c)
{
    return coded(c.dpll.restart_strategy, {"geometric", "luby", "luby", "ema"});
}

/// The rounds of Z3's propagation of values.
Z3Value rounds(const Configuration &c)
{
    const std::int32_t limit = c.preprocessor_toplevel_propagation_limit;
    return !c.preprocessor_toplevel_propagation ? "0" : limit <= 0 ? unsigned_number(-1) : unsigned_number(limit);
}

Z3Value restart_initial(const Configuration &c)
{
    return std::to_string(std::max<std::int32_t>(c.dpll.restart_initial, 1));
}

/// Without an exponent, as the decimals of SMT-LIB.
std::string decimal(double value)
{
    return shortest_text(value, std::chars_format::fixed);
}

Z3Value growth(const Configuration &c)
{
    const double factor = c.dpll.restart_geometric_factor;
    return factor >= 1 && std::isfinite(factor) ? Z3Value(decimal(factor)) : std::nullopt;
}

Z3Value random_frequency(const Configuration &c)
{
    const double share = c.dpll.branching_random_frequency;
    return share >= 0 ? Z3Value(decimal(std::abs(share))) : std::nullopt;
}

Z3Value smt_phase(const Configuration &c)
{
    const std::int32_t initial = c.dpll.branching_initial_phase;
    return c.dpll.branching_cache_phase == 2   ? "2"
           : c.dpll.branching_cache_phase == 0 ? coded(initial, {"0", "1"})
                                               : std::nullopt;
}

Z3Value sat_phase(const Configuration &c)
{
    const std::int32_t initial = c.dpll.branching_initial_phase;
    return c.dpll.branching_cache_phase == 2   ? "caching"
           : c.dpll.branching_cache_phase == 0 ? coded(initial, {"always_false", "always_true"})
                                               : std::nullopt;
}

// clang-format off
constexpr const char *no_code      = "the code has no meaning";
constexpr const char *no_growth    = "a factor below 1 lets nothing grow";
constexpr const char *no_share     = "it is no share";
constexpr const char *own_phases   = "Z3 caches phases always or never, and without a cache takes one phase for all";
constexpr const char *own_formats  = "Z3 has no such format";
constexpr const char *one_engine   = "one propositional engine serves all theories";

constexpr Z3Row rows[] = {
    {"verbosity",                                 {{"verbose", verbosity}},                               nullptr},
    {"proof_generation",                          {{"proof", proof}},                                     nullptr},
    {"model_generation",                          {{"model", model}},                                     nullptr},
    {"unsat_core_generation",                     {{"unsat_core", unsat_core}},                           nullptr},
    {"random_seed",                               {{"smt.random_seed", seed}, {"sat.random_seed", seed}}, nullptr},
    {"printer.bv_number_format",                  {{"pp.bv_literals", bv_literals}},                      own_formats},
    {"printer.fp_number_format",                  {{"pp.fp_real_literals", fp_reals}},                    own_formats},
    {"preprocessor.toplevel_propagation",         {{"tactic.propagate_values.max_rounds", rounds}},       nullptr},
    {"preprocessor.toplevel_propagation_limit",   {{"tactic.propagate_values.max_rounds", rounds}},       nullptr},
    {"dpll.restart_strategy", {{"smt.restart_strategy", smt_restart}, {"sat.restart", sat_restart}}, no_code},
    {"dpll.restart_initial",                      {{"sat.restart.initial", restart_initial}},             nullptr},
    {"dpll.restart_geometric_factor", {{"smt.restart_factor", growth}, {"sat.restart.factor", growth}}, no_growth},
    {"dpll.branching_random_frequency",           {{"sat.random_freq", random_frequency}},                no_share},
    {"dpll.branching_initial_phase", {{"smt.phase_selection", smt_phase}, {"sat.phase", sat_phase}}, own_phases},
    {"dpll.branching_cache_phase", {{"smt.phase_selection", smt_phase}, {"sat.phase", sat_phase}}, own_phases},
    {"dpll.glucose_learnt_minimization",          {{"sat.dyn_sub_res", minimize}},                        nullptr},
    {"dpll.preprocessor.mode", {{"sat.elim_vars", preprocess}, {"sat.subsumption", preprocess}}, nullptr},
    {"theory.eq_propagation",                     {{"smt.arith.propagate_eqs", equalities}},            nullptr},
    {"theory.la.enabled",                         {{"smt.arith.solver", la_solver}},                      nullptr},
    {"theory.la.split_rat_eq",                    {{"rewriter.eq2ineq", inequalities}},                   nullptr},
    {"theory.la.deduction_enabled",               {{"smt.arith.propagation_mode", deduction}},            nullptr},
    {"theory.la.laz_cuts_from_proofs_mode",       {{"smt.arith.enable_hnf", cuts}},                       nullptr},
    {"theory.euf.dyn_ack",                        {{"smt.dack", ackermann}},                              no_code},
    {"theory.euf.dyn_ack_threshold",              {{"smt.dack.threshold", threshold}},                    nullptr},
    {"theory.arr.enable_ext_lemmas",              {{"smt.array.extensional", extensional}},               nullptr},
    {"theory.bv.div_by_zero_mode",                {{"rewriter.hi_div0", div_by_zero}},                    no_code},
};

constexpr Z3Group groups[] = {
    {"interpolation",         "Z3 makes no interpolants"},
    {"bool_model_generation", "Z3's models are whole"},
    {"debug.",                "Z3 logs the calls of its own interface, not of ours"},
    {"printer.",              "Z3 names bindings in a way of its own"},
    {"preprocessor.",         "Z3's simplifier has rules of its own"},
    {"dpll.",                 "Z3's search has no such switch"},
    {"theory.",               "Z3 combines theories in a way of its own"},
    {"theory.la.",            "Z3's arithmetic has no such switch"},
    {"theory.euf.",           "Z3's equalities have no such switch"},
    {"theory.arr.",           "Z3's arrays have no such switch"},
    {"theory.bv.",            "Z3 blasts bits in a way of its own"},
    {"theory.bv.lazydpll.",   one_engine},
    {"theory.fp.",            "Z3 turns floating point into bit vectors"},
    {"theory.fp.dpll.",       one_engine},
};
// clang-format on

std::string parameter(const char *name)
{
    Z3_string value = nullptr;
    if (!Z3_global_param_get(name, &value)) {
        throw Failure(std::string("Z3 has no parameter ") + name);
    }
    return value;
}

std::string shown_row(const Z3Row &row, const Configuration &settings, const std::string &text)
{
    std::string became;
    for (const Z3Target &target : row.targets) {
        if (target.name != nullptr && target.value(settings)) {
            became += (became.empty() ? "" : ", ") + std::string(target.name) + " = " + parameter(target.name);
        }
    }
    return "; " + std::string(row.option) + " = " + text +
           (became.empty() ? std::string(": not passed on, ") + row.why_not : " -> " + became) + "\n";
}

bool has_row(const std::string &option)
{
    return std::any_of(std::begin(rows), std::end(rows), [&](const Z3Row &row) { return option == row.option; });
}

} // namespace

const std::vector<Z3Row> &z3_rows()
{
    static const std::vector<Z3Row> all(std::begin(rows), std::end(rows));
    return all;
}

const std::vector<Z3Group> &z3_groups()
{
    static const std::vector<Z3Group> all(std::begin(groups), std::end(groups));
    return all;
}

const Z3Group *z3_group_of(const std::string &name)
{
    const Z3Group *found = nullptr;
    for (const Z3Group &group : z3_groups()) { // a longer prefix stands behind the shorter one
        if (!has_row(name) && name.rfind(group.prefix, 0) == 0) {
            found = &group;
        }
    }
    return found;
}

void pass_on(const Configuration &settings)
{
    z3::set_param(own_settings, false);
    for (const Z3Row &row : rows) {
        for (const Z3Target &target : row.targets) {
            if (const Z3Value value = target.name != nullptr ? target.value(settings) : std::nullopt) {
                z3::set_param(target.name, value->c_str());
            }
        }
    }
}

std::string shown_settings(const Configuration &settings)
{
    const auto texts = setting_texts(settings);
    std::string text = "; Z3 keeps to these: " + std::string(own_settings) + " = " + parameter(own_settings) + "\n";
    for (const Z3Row &row : rows) {
        text += shown_row(row, settings, texts.at(row.option));
    }
    for (const Z3Group &group : z3_groups()) {
        const auto count = std::count_if(texts.begin(), texts.end(),
                                         [&](const auto &entry) { return z3_group_of(entry.first) == &group; });
        text += "; " + std::string(group.prefix) + (std::string(group.prefix).back() == '.' ? "*" : "") +
                ": not passed on (" + std::to_string(count) + "), " + group.why_not + "\n";
    }
    return text;
}

} // namespace examples
