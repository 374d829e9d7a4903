#include "bench/straight_dump.h"

#include <cstdint>
#include <ostream>
#include <string_view>

namespace dalvo::bench {

namespace {

/// The options that an inner engine shares with the main one.
void inner_dpll(std::ostream &out, std::string_view prefix, const DpllSettings &d)
{
    out << prefix << "restart_strategy = " << d.restart_strategy << '\n';
    out << prefix << "restart_initial = " << d.restart_initial << '\n';
    out << prefix << "restart_geometric_factor = " << d.restart_geometric_factor << '\n';
    out << prefix << "branching_random_frequency = " << d.branching_random_frequency << '\n';
    out << prefix << "branching_initial_phase = " << d.branching_initial_phase << '\n';
    out << prefix << "branching_cache_phase = " << d.branching_cache_phase << '\n';
    out << prefix << "branching_random_invalidate_phase_cache = " << d.branching_random_invalidate_phase_cache << '\n';
    out << prefix << "branching_random_ignore_polarity = " << d.branching_random_ignore_polarity << '\n';
    out << prefix << "ghost_filtering = " << d.ghost_filtering << '\n';
    out << prefix << "glucose_var_activity = " << d.glucose_var_activity << '\n';
    out << prefix << "glucose_learnt_minimization = " << d.glucose_learnt_minimization << '\n';
}

} // namespace

void dump_by_stream(const Configuration &c, std::ostream &out)
{
    out.setf(std::ios_base::boolalpha);
    out << "verbosity = " << static_cast<std::uint32_t>(c.verbosity) << '\n';
    out << "proof_generation = " << c.proof_generation << '\n';
    out << "interpolation = " << c.interpolation << '\n';
    out << "model_generation = " << c.model_generation << '\n';
    out << "bool_model_generation = " << c.bool_model_generation << '\n';
    out << "unsat_core_generation = " << c.unsat_core_generation << '\n';
    out << "random_seed = " << c.random_seed << '\n';
    out << "debug.api_call_trace = " << c.debug_api_call_trace << '\n';
    out << "debug.api_call_trace_filename = " << c.debug_api_call_trace_filename << '\n';
    out << "debug.api_call_trace_dump_config = " << c.debug_api_call_trace_dump_config << '\n';
    out << "debug.dump_theory_lemmas = " << c.debug_dump_theory_lemmas << '\n';
    out << "debug.solver_enabled = " << c.debug_solver_enabled << '\n';
    out << "printer.bv_number_format = " << c.printer_bv_number_format << '\n';
    out << "printer.fp_number_format = " << c.printer_fp_number_format << '\n';
    out << "printer.defines_prefix = " << c.printer_defines_prefix << '\n';
    out << "preprocessor.toplevel_propagation = " << c.preprocessor_toplevel_propagation << '\n';
    out << "preprocessor.toplevel_propagation_limit = " << c.preprocessor_toplevel_propagation_limit << '\n';
    out << "preprocessor.simplification = " << c.preprocessor_simplification << '\n';
    out << "preprocessor.ite_minimization = " << c.preprocessor_ite_minimization << '\n';
    out << "preprocessor.ite_minimization_call_limit = " << c.preprocessor_ite_minimization_call_limit << '\n';
    out << "preprocessor.interpolation_ite_elimination = " << c.preprocessor_interpolation_ite_elimination << '\n';
    out << "preprocessor.partial_nnf_conversion = " << c.preprocessor_partial_nnf_conversion << '\n';
    out << "dpll.restart_strategy = " << c.dpll.restart_strategy << '\n';
    out << "dpll.restart_initial = " << c.dpll.restart_initial << '\n';
    out << "dpll.restart_geometric_factor = " << c.dpll.restart_geometric_factor << '\n';
    out << "dpll.store_tlemmas = " << c.dpll.store_tlemmas << '\n';
    out << "dpll.branching_random_frequency = " << c.dpll.branching_random_frequency << '\n';
    out << "dpll.branching_initial_phase = " << c.dpll.branching_initial_phase << '\n';
    out << "dpll.branching_cache_phase = " << c.dpll.branching_cache_phase << '\n';
    out << "dpll.branching_random_invalidate_phase_cache = " << c.dpll.branching_random_invalidate_phase_cache << '\n';
    out << "dpll.branching_random_ignore_polarity = " << c.dpll.branching_random_ignore_polarity << '\n';
    out << "dpll.ghost_filtering = " << c.dpll.ghost_filtering << '\n';
    out << "dpll.minimize_model = " << c.dpll.minimize_model << '\n';
    out << "dpll.allsat_minimize_model = " << c.dpll.allsat_minimize_model << '\n';
    out << "dpll.pop_btpoint_reset_var_order = " << c.dpll.pop_btpoint_reset_var_order << '\n';
    out << "dpll.glucose_var_activity = " << c.dpll.glucose_var_activity << '\n';
    out << "dpll.glucose_learnt_minimization = " << c.dpll.glucose_learnt_minimization << '\n';
    out << "dpll.interpolation_mode = " << c.dpll.interpolation_mode << '\n';
    out << "dpll.proof_simplification = " << c.dpll.proof_simplification << '\n';
    out << "dpll.preprocessor.mode = " << c.dpll.preprocessor_mode << '\n';
    out << "dpll.preprocessor.clause_size_limit = " << c.dpll.preprocessor_clause_size_limit << '\n';
    out << "dpll.preprocessor.subsumption_size_limit = " << c.dpll.preprocessor_subsumption_size_limit << '\n';
    out << "dpll.preprocessor.elimination_grow_limit = " << c.dpll.preprocessor_elimination_grow_limit << '\n';
    out << "dpll.preprocessor.elimination_phase = " << c.dpll.preprocessor_elimination_phase << '\n';
    out << "dpll.preprocessor.elimination_recent_vars_only = " << c.dpll.preprocessor_elimination_recent_vars_only
        << '\n';
    out << "dpll.preprocessor.try_reelimination = " << c.dpll.preprocessor_try_reelimination << '\n';
    out << "theory.eq_propagation = " << c.theory_eq_propagation << '\n';
    out << "theory.interface_eq_policy = " << c.theory_interface_eq_policy << '\n';
    out << "theory.pairwise_interface_eq = " << c.theory_pairwise_interface_eq << '\n';
    out << "theory.pure_literal_filtering = " << c.theory_pure_literal_filtering << '\n';
    out << "theory.euf.enabled = " << c.theory_euf_enabled << '\n';
    out << "theory.euf.dyn_ack = " << c.theory_euf_dyn_ack << '\n';
    out << "theory.euf.dyn_ack_threshold = " << static_cast<std::uint32_t>(c.theory_euf_dyn_ack_threshold) << '\n';
    out << "theory.euf.dyn_ack_limit = " << static_cast<std::uint32_t>(c.theory_euf_dyn_ack_limit) << '\n';
    out << "theory.la.enabled = " << c.theory_la_enabled << '\n';
    out << "theory.la.split_rat_eq = " << c.theory_la_split_rat_eq << '\n';
    out << "theory.la.delay_alien = " << c.theory_la_delay_alien << '\n';
    out << "theory.la.pivoting_greedy_threshold = " << c.theory_la_pivoting_greedy_threshold << '\n';
    out << "theory.la.lazy_expl_threshold = " << static_cast<std::uint32_t>(c.theory_la_lazy_expl_threshold) << '\n';
    out << "theory.la.interpolation_laz_use_floor = " << c.theory_la_interpolation_laz_use_floor << '\n';
    out << "theory.la.pure_equality_filtering = " << c.theory_la_pure_equality_filtering << '\n';
    out << "theory.la.detect_euf_fragment = " << c.theory_la_detect_euf_fragment << '\n';
    out << "theory.la.deduction_enabled = " << c.theory_la_deduction_enabled << '\n';
    out << "theory.la.laz_equality_elimination = " << c.theory_la_laz_equality_elimination << '\n';
    out << "theory.la.laz_internal_branch_and_bound = " << c.theory_la_laz_internal_branch_and_bound << '\n';
    out << "theory.la.laz_internal_branch_and_bound_limit = " << c.theory_la_laz_internal_branch_and_bound_limit
        << '\n';
    out << "theory.la.laz_cuts_from_proofs_mode = " << c.theory_la_laz_cuts_from_proofs_mode << '\n';
    out << "theory.la.laz_enabled = " << c.theory_la_laz_enabled << '\n';
    out << "theory.la.laz_unit_cube_test = " << c.theory_la_laz_unit_cube_test << '\n';
    out << "theory.la.interpolation_mode = " << c.theory_la_interpolation_mode << '\n';
    out << "theory.bv.enabled = " << c.theory_bv_enabled << '\n';
    out << "theory.bv.div_by_zero_mode = " << c.theory_bv_div_by_zero_mode << '\n';
    out << "theory.bv.delay_propagated_eqs = " << c.theory_bv_delay_propagated_eqs << '\n';
    out << "theory.bv.eager = " << c.theory_bv_eager << '\n';
    out << "theory.bv.bit_blast_mode = " << c.theory_bv_bit_blast_mode << '\n';
    out << "theory.bv.interpolation_mode = " << c.theory_bv_interpolation_mode << '\n';
    out << "theory.bv.proof_simplification = " << c.theory_bv_proof_simplification << '\n';
    inner_dpll(out, "theory.bv.lazydpll.", c.theory_bv_lazydpll);
    out << "theory.arr.enabled = " << c.theory_arr_enabled << '\n';
    out << "theory.arr.mode = " << c.theory_arr_mode << '\n';
    out << "theory.arr.lazy_lemmas = " << c.theory_arr_lazy_lemmas << '\n';
    out << "theory.arr.check_on_approx = " << c.theory_arr_check_on_approx << '\n';
    out << "theory.arr.auto_wr_lemma = " << c.theory_arr_auto_wr_lemma << '\n';
    out << "theory.arr.enable_wr_lemmas = " << c.theory_arr_enable_wr_lemmas << '\n';
    out << "theory.arr.enable_row_lemmas = " << c.theory_arr_enable_row_lemmas << '\n';
    out << "theory.arr.enable_ext_lemmas = " << c.theory_arr_enable_ext_lemmas << '\n';
    out << "theory.arr.max_wr_lemmas = " << c.theory_arr_max_wr_lemmas << '\n';
    out << "theory.arr.max_row_lemmas = " << c.theory_arr_max_row_lemmas << '\n';
    out << "theory.arr.max_ext_lemmas = " << c.theory_arr_max_ext_lemmas << '\n';
    out << "theory.arr.enable_ext_polarity = " << c.theory_arr_enable_ext_polarity << '\n';
    out << "theory.arr.enable_ext_arg = " << c.theory_arr_enable_ext_arg << '\n';
    out << "theory.arr.enable_witness = " << c.theory_arr_enable_witness << '\n';
    out << "theory.arr.enable_nonlinear = " << c.theory_arr_enable_nonlinear << '\n';
    out << "theory.arr.enable_nonlinear_strat = " << c.theory_arr_enable_nonlinear_strat << '\n';
    out << "theory.arr.enable_foreign = " << c.theory_arr_enable_foreign << '\n';
    out << "theory.arr.permanent_lemma_inst = " << c.theory_arr_permanent_lemma_inst << '\n';
    out << "theory.fp.enabled = " << c.theory_fp_enabled << '\n';
    out << "theory.fp.minmax_zero_mode = " << c.theory_fp_minmax_zero_mode << '\n';
    out << "theory.fp.mode = " << c.theory_fp_mode << '\n';
    out << "theory.fp.bv_combination_enabled = " << c.theory_fp_bv_combination_enabled << '\n';
    out << "theory.fp.bit_blast_mode = " << c.theory_fp_bit_blast_mode << '\n';
    inner_dpll(out, "theory.fp.dpll.", c.theory_fp_dpll);
    out << "theory.fp.acdcl_conflict_generalization = " << c.theory_fp_acdcl_conflict_generalization << '\n';
    out << "theory.fp.interpolation_mode = " << c.theory_fp_interpolation_mode << '\n';
    out << "theory.fp.acdcl_single_propagation_limit = " << c.theory_fp_acdcl_single_propagation_limit << '\n';
    out << "theory.fp.acdcl_single_generalization_limit = " << c.theory_fp_acdcl_single_generalization_limit << '\n';
    out << "theory.fp.acdcl_generalization_fair = " << c.theory_fp_acdcl_generalization_fair << '\n';
    out.flush();
}

} // namespace dalvo::bench
