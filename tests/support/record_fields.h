#pragma once

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

#include "dalvo/configuration/configuration.h"

namespace dalvo::testing {

using FieldPointer = std::variant<bool *, std::int32_t *, double *, std::string *, std::vector<std::string> *>;

/// A field of a record, by its name within it ("dpll.restart_strategy" for one of a sub-record).
struct Field {
    std::string name;
    FieldPointer at;
};

/// Every field of `c`, in the record's order, those of the three sub-records too.
inline std::vector<Field> fields_of(Configuration &c)
{
    std::vector<Field> fields;
    const auto add = [&](const std::string &name, FieldPointer at) { fields.push_back({name, at}); };
    const auto add_dpll = [&](const std::string &prefix, DpllSettings &d) {
        add(prefix + "branching_random_frequency", &d.branching_random_frequency);
        add(prefix + "restart_strategy", &d.restart_strategy);
        add(prefix + "restart_initial", &d.restart_initial);
        add(prefix + "restart_geometric_factor", &d.restart_geometric_factor);
        add(prefix + "store_tlemmas", &d.store_tlemmas);
        add(prefix + "branching_initial_phase", &d.branching_initial_phase);
        add(prefix + "branching_cache_phase", &d.branching_cache_phase);
        add(prefix + "branching_random_invalidate_phase_cache", &d.branching_random_invalidate_phase_cache);
        add(prefix + "branching_random_ignore_polarity", &d.branching_random_ignore_polarity);
        add(prefix + "ghost_filtering", &d.ghost_filtering);
        add(prefix + "minimize_model", &d.minimize_model);
        add(prefix + "allsat_minimize_model", &d.allsat_minimize_model);
        add(prefix + "pop_btpoint_reset_var_order", &d.pop_btpoint_reset_var_order);
        add(prefix + "glucose_var_activity", &d.glucose_var_activity);
        add(prefix + "glucose_learnt_minimization", &d.glucose_learnt_minimization);
        add(prefix + "interpolation_mode", &d.interpolation_mode);
        add(prefix + "proof_simplification", &d.proof_simplification);
        add(prefix + "preprocessor_mode", &d.preprocessor_mode);
        add(prefix + "preprocessor_clause_size_limit", &d.preprocessor_clause_size_limit);
        add(prefix + "preprocessor_subsumption_size_limit", &d.preprocessor_subsumption_size_limit);
        add(prefix + "preprocessor_elimination_grow_limit", &d.preprocessor_elimination_grow_limit);
        add(prefix + "preprocessor_elimination_phase", &d.preprocessor_elimination_phase);
        add(prefix + "preprocessor_elimination_recent_vars_only", &d.preprocessor_elimination_recent_vars_only);
        add(prefix + "preprocessor_try_reelimination", &d.preprocessor_try_reelimination);
    };
    add("verbosity", &c.verbosity);
    add("proof_generation", &c.proof_generation);
    add("interpolation", &c.interpolation);
    add("model_generation", &c.model_generation);
    add("bool_model_generation", &c.bool_model_generation);
    add("allow_bool_function_args", &c.allow_bool_function_args);
    add("unsat_core_generation", &c.unsat_core_generation);
    add("shallow_incrementality", &c.shallow_incrementality);
    add("random_seed", &c.random_seed);
    add("debug_api_call_trace", &c.debug_api_call_trace);
    add("debug_api_call_trace_filename", &c.debug_api_call_trace_filename);
    add("debug_api_call_trace_dump_config", &c.debug_api_call_trace_dump_config);
    add("debug_dump_theory_lemmas", &c.debug_dump_theory_lemmas);
    add("debug_log_sections", &c.debug_log_sections);
    add("debug_solver_enabled", &c.debug_solver_enabled);
    add("preprocessor_toplevel_propagation", &c.preprocessor_toplevel_propagation);
    add("preprocessor_toplevel_propagation_limit", &c.preprocessor_toplevel_propagation_limit);
    add("preprocessor_simplification", &c.preprocessor_simplification);
    add("preprocessor_free_input_propagation", &c.preprocessor_free_input_propagation);
    add("preprocessor_ite_minimization", &c.preprocessor_ite_minimization);
    add("preprocessor_ite_minimization_call_limit", &c.preprocessor_ite_minimization_call_limit);
    add("preprocessor_interpolation_ite_elimination", &c.preprocessor_interpolation_ite_elimination);
    add("preprocessor_partial_nnf_conversion", &c.preprocessor_partial_nnf_conversion);
    add_dpll("dpll.", c.dpll);
    add("theory_interface_eq_policy", &c.theory_interface_eq_policy);
    add("theory_pairwise_interface_eq", &c.theory_pairwise_interface_eq);
    add("theory_eq_propagation", &c.theory_eq_propagation);
    add("theory_pure_literal_filtering", &c.theory_pure_literal_filtering);
    add("theory_euf_enabled", &c.theory_euf_enabled);
    add("theory_euf_dyn_ack", &c.theory_euf_dyn_ack);
    add("theory_euf_dyn_ack_threshold", &c.theory_euf_dyn_ack_threshold);
    add("theory_euf_dyn_ack_limit", &c.theory_euf_dyn_ack_limit);
    add("theory_la_enabled", &c.theory_la_enabled);
    add("theory_la_lazy_expl_threshold", &c.theory_la_lazy_expl_threshold);
    add("theory_la_split_rat_eq", &c.theory_la_split_rat_eq);
    add("theory_la_delay_alien", &c.theory_la_delay_alien);
    add("theory_la_pivoting_greedy_threshold", &c.theory_la_pivoting_greedy_threshold);
    add("theory_la_interpolation_mode", &c.theory_la_interpolation_mode);
    add("theory_la_interpolation_laz_use_floor", &c.theory_la_interpolation_laz_use_floor);
    add("theory_la_pure_equality_filtering", &c.theory_la_pure_equality_filtering);
    add("theory_la_detect_euf_fragment", &c.theory_la_detect_euf_fragment);
    add("theory_la_deduction_enabled", &c.theory_la_deduction_enabled);
    add("theory_la_laz_equality_elimination", &c.theory_la_laz_equality_elimination);
    add("theory_la_laz_internal_branch_and_bound", &c.theory_la_laz_internal_branch_and_bound);
    add("theory_la_laz_internal_branch_and_bound_limit", &c.theory_la_laz_internal_branch_and_bound_limit);
    add("theory_la_laz_cuts_from_proofs_mode", &c.theory_la_laz_cuts_from_proofs_mode);
    add("theory_la_laz_enabled", &c.theory_la_laz_enabled);
    add("theory_la_laz_unit_cube_test", &c.theory_la_laz_unit_cube_test);
    add("theory_arr_enabled", &c.theory_arr_enabled);
    add("theory_arr_mode", &c.theory_arr_mode);
    add("theory_arr_lazy_lemmas", &c.theory_arr_lazy_lemmas);
    add("theory_arr_check_on_approx", &c.theory_arr_check_on_approx);
    add("theory_arr_auto_wr_lemma", &c.theory_arr_auto_wr_lemma);
    add("theory_arr_enable_wr_lemmas", &c.theory_arr_enable_wr_lemmas);
    add("theory_arr_enable_row_lemmas", &c.theory_arr_enable_row_lemmas);
    add("theory_arr_enable_ext_lemmas", &c.theory_arr_enable_ext_lemmas);
    add("theory_arr_max_wr_lemmas", &c.theory_arr_max_wr_lemmas);
    add("theory_arr_max_row_lemmas", &c.theory_arr_max_row_lemmas);
    add("theory_arr_max_ext_lemmas", &c.theory_arr_max_ext_lemmas);
    add("theory_arr_enable_ext_polarity", &c.theory_arr_enable_ext_polarity);
    add("theory_arr_enable_ext_arg", &c.theory_arr_enable_ext_arg);
    add("theory_arr_enable_witness", &c.theory_arr_enable_witness);
    add("theory_arr_enable_nonlinear", &c.theory_arr_enable_nonlinear);
    add("theory_arr_enable_nonlinear_strat", &c.theory_arr_enable_nonlinear_strat);
    add("theory_arr_enable_foreign", &c.theory_arr_enable_foreign);
    add("theory_arr_permanent_lemma_inst", &c.theory_arr_permanent_lemma_inst);
    add("theory_arr_debug_filename", &c.theory_arr_debug_filename);
    add("theory_arr_debug_data", &c.theory_arr_debug_data);
    add("theory_arr_debug_lemmas", &c.theory_arr_debug_lemmas);
    add("theory_bv_enabled", &c.theory_bv_enabled);
    add("theory_bv_delay_propagated_eqs", &c.theory_bv_delay_propagated_eqs);
    add("theory_bv_eager", &c.theory_bv_eager);
    add("theory_bv_bit_blast_mode", &c.theory_bv_bit_blast_mode);
    add("theory_bv_interpolation_mode", &c.theory_bv_interpolation_mode);
    add("theory_bv_div_by_zero_mode", &c.theory_bv_div_by_zero_mode);
    add("theory_bv_proof_simplification", &c.theory_bv_proof_simplification);
    add_dpll("theory_bv_lazydpll.", c.theory_bv_lazydpll);
    add("theory_fp_enabled", &c.theory_fp_enabled);
    add("theory_fp_mode", &c.theory_fp_mode);
    add("theory_fp_bv_combination_enabled", &c.theory_fp_bv_combination_enabled);
    add("theory_fp_acdcl_conflict_generalization", &c.theory_fp_acdcl_conflict_generalization);
    add("theory_fp_interpolation_mode", &c.theory_fp_interpolation_mode);
    add("theory_fp_acdcl_single_propagation_limit", &c.theory_fp_acdcl_single_propagation_limit);
    add("theory_fp_acdcl_single_generalization_limit", &c.theory_fp_acdcl_single_generalization_limit);
    add("theory_fp_acdcl_generalization_fair", &c.theory_fp_acdcl_generalization_fair);
    add("theory_fp_minmax_zero_mode", &c.theory_fp_minmax_zero_mode);
    add("theory_fp_bit_blast_mode", &c.theory_fp_bit_blast_mode);
    add_dpll("theory_fp_dpll.", c.theory_fp_dpll);
    add("printer_bv_number_format", &c.printer_bv_number_format);
    add("printer_fp_number_format", &c.printer_fp_number_format);
    add("printer_defines_prefix", &c.printer_defines_prefix);
    return fields;
}

} // namespace dalvo::testing
