#include <charconv>
#include <cstdint>
#include <string_view>

#include "bench/straight_dump.h"

namespace dalvo::bench {

namespace {

template <class... Format> void append_number(std::string &out, Format... number_and_format)
{
    char digits[32];
    const auto end = std::to_chars(digits, digits + sizeof digits, number_and_format...).ptr;
    out.append(digits, static_cast<std::size_t>(end - digits));
}

void append(std::string &out, bool value)
{
    out += value ? "true" : "false";
}

void append(std::string &out, std::int32_t value)
{
    append_number(out, value);
}

void append(std::string &out, std::uint32_t value)
{
    append_number(out, value);
}

void append(std::string &out, double value)
{
    append_number(out, value, std::chars_format::general, 6); // as a stream does
}

void append(std::string &out, const std::string &value)
{
    out += value;
}

template <class T> void put(std::string &out, std::string_view prefix, std::string_view name, const T &value)
{
    out += prefix;
    out += name;
    append(out, value);
    out += '\n';
}

/// The options that an inner engine shares with the main one.
void inner_dpll(std::string &out, std::string_view prefix, const DpllSettings &d)
{
    put(out, prefix, "restart_strategy = ", d.restart_strategy);
    put(out, prefix, "restart_initial = ", d.restart_initial);
    put(out, prefix, "restart_geometric_factor = ", d.restart_geometric_factor);
    put(out, prefix, "branching_random_frequency = ", d.branching_random_frequency);
    put(out, prefix, "branching_initial_phase = ", d.branching_initial_phase);
    put(out, prefix, "branching_cache_phase = ", d.branching_cache_phase);
    put(out, prefix, "branching_random_invalidate_phase_cache = ", d.branching_random_invalidate_phase_cache);
    put(out, prefix, "branching_random_ignore_polarity = ", d.branching_random_ignore_polarity);
    put(out, prefix, "ghost_filtering = ", d.ghost_filtering);
    put(out, prefix, "glucose_var_activity = ", d.glucose_var_activity);
    put(out, prefix, "glucose_learnt_minimization = ", d.glucose_learnt_minimization);
}

} // namespace

std::string dump_by_to_chars(const Configuration &c)
{
    std::string out;
    put(out, "", "verbosity = ", static_cast<std::uint32_t>(c.verbosity));
    put(out, "", "proof_generation = ", c.proof_generation);
    put(out, "", "interpolation = ", c.interpolation);
    put(out, "", "model_generation = ", c.model_generation);
    put(out, "", "bool_model_generation = ", c.bool_model_generation);
    put(out, "", "unsat_core_generation = ", c.unsat_core_generation);
    put(out, "", "random_seed = ", c.random_seed);
    put(out, "", "debug.api_call_trace = ", c.debug_api_call_trace);
    put(out, "", "debug.api_call_trace_filename = ", c.debug_api_call_trace_filename);
    put(out, "", "debug.api_call_trace_dump_config = ", c.debug_api_call_trace_dump_config);
    put(out, "", "debug.dump_theory_lemmas = ", c.debug_dump_theory_lemmas);
    put(out, "", "debug.solver_enabled = ", c.debug_solver_enabled);
    put(out, "", "printer.bv_number_format = ", c.printer_bv_number_format);
    put(out, "", "printer.fp_number_format = ", c.printer_fp_number_format);
    put(out, "", "printer.defines_prefix = ", c.printer_defines_prefix);
    put(out, "", "preprocessor.toplevel_propagation = ", c.preprocessor_toplevel_propagation);
    put(out, "", "preprocessor.toplevel_propagation_limit = ", c.preprocessor_toplevel_propagation_limit);
    put(out, "", "preprocessor.simplification = ", c.preprocessor_simplification);
    put(out, "", "preprocessor.ite_minimization = ", c.preprocessor_ite_minimization);
    put(out, "", "preprocessor.ite_minimization_call_limit = ", c.preprocessor_ite_minimization_call_limit);
    put(out, "", "preprocessor.interpolation_ite_elimination = ", c.preprocessor_interpolation_ite_elimination);
    put(out, "", "preprocessor.partial_nnf_conversion = ", c.preprocessor_partial_nnf_conversion);
    put(out, "", "dpll.restart_strategy = ", c.dpll.restart_strategy);
    put(out, "", "dpll.restart_initial = ", c.dpll.restart_initial);
    put(out, "", "dpll.restart_geometric_factor = ", c.dpll.restart_geometric_factor);
    put(out, "", "dpll.store_tlemmas = ", c.dpll.store_tlemmas);
    put(out, "", "dpll.branching_random_frequency = ", c.dpll.branching_random_frequency);
    put(out, "", "dpll.branching_initial_phase = ", c.dpll.branching_initial_phase);
    put(out, "", "dpll.branching_cache_phase = ", c.dpll.branching_cache_phase);
    put(out, "", "dpll.branching_random_invalidate_phase_cache = ", c.dpll.branching_random_invalidate_phase_cache);
    put(out, "", "dpll.branching_random_ignore_polarity = ", c.dpll.branching_random_ignore_polarity);
    put(out, "", "dpll.ghost_filtering = ", c.dpll.ghost_filtering);
    put(out, "", "dpll.minimize_model = ", c.dpll.minimize_model);
    put(out, "", "dpll.allsat_minimize_model = ", c.dpll.allsat_minimize_model);
    put(out, "", "dpll.pop_btpoint_reset_var_order = ", c.dpll.pop_btpoint_reset_var_order);
    put(out, "", "dpll.glucose_var_activity = ", c.dpll.glucose_var_activity);
    put(out, "", "dpll.glucose_learnt_minimization = ", c.dpll.glucose_learnt_minimization);
    put(out, "", "dpll.interpolation_mode = ", c.dpll.interpolation_mode);
    put(out, "", "dpll.proof_simplification = ", c.dpll.proof_simplification);
    put(out, "", "dpll.preprocessor.mode = ", c.dpll.preprocessor_mode);
    put(out, "", "dpll.preprocessor.clause_size_limit = ", c.dpll.preprocessor_clause_size_limit);
    put(out, "", "dpll.preprocessor.subsumption_size_limit = ", c.dpll.preprocessor_subsumption_size_limit);
    put(out, "", "dpll.preprocessor.elimination_grow_limit = ", c.dpll.preprocessor_elimination_grow_limit);
    put(out, "", "dpll.preprocessor.elimination_phase = ", c.dpll.preprocessor_elimination_phase);
    put(out, "", "dpll.preprocessor.elimination_recent_vars_only = ", c.dpll.preprocessor_elimination_recent_vars_only);
    put(out, "", "dpll.preprocessor.try_reelimination = ", c.dpll.preprocessor_try_reelimination);
    put(out, "", "theory.eq_propagation = ", c.theory_eq_propagation);
    put(out, "", "theory.interface_eq_policy = ", c.theory_interface_eq_policy);
    put(out, "", "theory.pairwise_interface_eq = ", c.theory_pairwise_interface_eq);
    put(out, "", "theory.pure_literal_filtering = ", c.theory_pure_literal_filtering);
    put(out, "", "theory.euf.enabled = ", c.theory_euf_enabled);
    put(out, "", "theory.euf.dyn_ack = ", c.theory_euf_dyn_ack);
    put(out, "", "theory.euf.dyn_ack_threshold = ", static_cast<std::uint32_t>(c.theory_euf_dyn_ack_threshold));
    put(out, "", "theory.euf.dyn_ack_limit = ", static_cast<std::uint32_t>(c.theory_euf_dyn_ack_limit));
    put(out, "", "theory.la.enabled = ", c.theory_la_enabled);
    put(out, "", "theory.la.split_rat_eq = ", c.theory_la_split_rat_eq);
    put(out, "", "theory.la.delay_alien = ", c.theory_la_delay_alien);
    put(out, "", "theory.la.pivoting_greedy_threshold = ", c.theory_la_pivoting_greedy_threshold);
    put(out, "", "theory.la.lazy_expl_threshold = ", static_cast<std::uint32_t>(c.theory_la_lazy_expl_threshold));
    put(out, "", "theory.la.interpolation_laz_use_floor = ", c.theory_la_interpolation_laz_use_floor);
    put(out, "", "theory.la.pure_equality_filtering = ", c.theory_la_pure_equality_filtering);
    put(out, "", "theory.la.detect_euf_fragment = ", c.theory_la_detect_euf_fragment);
    put(out, "", "theory.la.deduction_enabled = ", c.theory_la_deduction_enabled);
    put(out, "", "theory.la.laz_equality_elimination = ", c.theory_la_laz_equality_elimination);
    put(out, "", "theory.la.laz_internal_branch_and_bound = ", c.theory_la_laz_internal_branch_and_bound);
    put(out, "", "theory.la.laz_internal_branch_and_bound_limit = ", c.theory_la_laz_internal_branch_and_bound_limit);
    put(out, "", "theory.la.laz_cuts_from_proofs_mode = ", c.theory_la_laz_cuts_from_proofs_mode);
    put(out, "", "theory.la.laz_enabled = ", c.theory_la_laz_enabled);
    put(out, "", "theory.la.laz_unit_cube_test = ", c.theory_la_laz_unit_cube_test);
    put(out, "", "theory.la.interpolation_mode = ", c.theory_la_interpolation_mode);
    put(out, "", "theory.bv.enabled = ", c.theory_bv_enabled);
    put(out, "", "theory.bv.div_by_zero_mode = ", c.theory_bv_div_by_zero_mode);
    put(out, "", "theory.bv.delay_propagated_eqs = ", c.theory_bv_delay_propagated_eqs);
    put(out, "", "theory.bv.eager = ", c.theory_bv_eager);
    put(out, "", "theory.bv.bit_blast_mode = ", c.theory_bv_bit_blast_mode);
    put(out, "", "theory.bv.interpolation_mode = ", c.theory_bv_interpolation_mode);
    put(out, "", "theory.bv.proof_simplification = ", c.theory_bv_proof_simplification);
    inner_dpll(out, "theory.bv.lazydpll.", c.theory_bv_lazydpll);
    put(out, "", "theory.arr.enabled = ", c.theory_arr_enabled);
    put(out, "", "theory.arr.mode = ", c.theory_arr_mode);
    put(out, "", "theory.arr.lazy_lemmas = ", c.theory_arr_lazy_lemmas);
    put(out, "", "theory.arr.check_on_approx = ", c.theory_arr_check_on_approx);
    put(out, "", "theory.arr.auto_wr_lemma = ", c.theory_arr_auto_wr_lemma);
    put(out, "", "theory.arr.enable_wr_lemmas = ", c.theory_arr_enable_wr_lemmas);
    put(out, "", "theory.arr.enable_row_lemmas = ", c.theory_arr_enable_row_lemmas);
    put(out, "", "theory.arr.enable_ext_lemmas = ", c.theory_arr_enable_ext_lemmas);
    put(out, "", "theory.arr.max_wr_lemmas = ", c.theory_arr_max_wr_lemmas);
    put(out, "", "theory.arr.max_row_lemmas = ", c.theory_arr_max_row_lemmas);
    put(out, "", "theory.arr.max_ext_lemmas = ", c.theory_arr_max_ext_lemmas);
    put(out, "", "theory.arr.enable_ext_polarity = ", c.theory_arr_enable_ext_polarity);
    put(out, "", "theory.arr.enable_ext_arg = ", c.theory_arr_enable_ext_arg);
    put(out, "", "theory.arr.enable_witness = ", c.theory_arr_enable_witness);
    put(out, "", "theory.arr.enable_nonlinear = ", c.theory_arr_enable_nonlinear);
    put(out, "", "theory.arr.enable_nonlinear_strat = ", c.theory_arr_enable_nonlinear_strat);
    put(out, "", "theory.arr.enable_foreign = ", c.theory_arr_enable_foreign);
    put(out, "", "theory.arr.permanent_lemma_inst = ", c.theory_arr_permanent_lemma_inst);
    put(out, "", "theory.fp.enabled = ", c.theory_fp_enabled);
    put(out, "", "theory.fp.minmax_zero_mode = ", c.theory_fp_minmax_zero_mode);
    put(out, "", "theory.fp.mode = ", c.theory_fp_mode);
    put(out, "", "theory.fp.bv_combination_enabled = ", c.theory_fp_bv_combination_enabled);
    put(out, "", "theory.fp.bit_blast_mode = ", c.theory_fp_bit_blast_mode);
    inner_dpll(out, "theory.fp.dpll.", c.theory_fp_dpll);
    put(out, "", "theory.fp.acdcl_conflict_generalization = ", c.theory_fp_acdcl_conflict_generalization);
    put(out, "", "theory.fp.interpolation_mode = ", c.theory_fp_interpolation_mode);
    put(out, "", "theory.fp.acdcl_single_propagation_limit = ", c.theory_fp_acdcl_single_propagation_limit);
    put(out, "", "theory.fp.acdcl_single_generalization_limit = ", c.theory_fp_acdcl_single_generalization_limit);
    put(out, "", "theory.fp.acdcl_generalization_fair = ", c.theory_fp_acdcl_generalization_fair);
    return out;
}

} // namespace dalvo::bench
