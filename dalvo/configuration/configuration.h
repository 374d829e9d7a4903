#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "dalvo/export.h"

namespace dalvo {

// Comments that are too long for their line stand above it, and the columns of the others are kept.
// clang-format off

/// The settings of one DPLL engine. The record holds three; the two inner ones have options for eleven of the fields
/// only, and keep what they hold in the others.
struct DALVO_API DpllSettings {
    double branching_random_frequency = 0.0; ///< share of random decisions, 0 to 1
    /// 0 geometric; 1 Luby; 2 Luby, unit adjusted by agility; 3 dynamic as in Glucose
    std::int32_t restart_strategy = 1;
    std::int32_t restart_initial = 100;      ///< conflicts before the first restart; for Luby the unit
    double restart_geometric_factor = 1.5;   ///< growth of the geometric strategy's intervals

    bool store_tlemmas = false; ///< keep all theory lemmas for retrieval

    std::int32_t branching_initial_phase = 0;             ///< 0 false; 1 true; 2 by the polarity of the atom
    /// 0 no phase saving; 1 all but the last decision level; 2 always
    std::int32_t branching_cache_phase = 2;
    bool branching_random_invalidate_phase_cache = false; ///< a random decision forgets the saved phase
    bool branching_random_ignore_polarity = false;        ///< a random decision takes a random phase
    bool ghost_filtering = false;                         ///< filter ghost literals

    bool minimize_model = false;              ///< minimize propositional models
    bool allsat_minimize_model = false;       ///< minimize models before the All-SAT callback
    bool pop_btpoint_reset_var_order = false; ///< reset the variable order when a backtracking point is popped
    bool glucose_var_activity = false;        ///< update variable activities as Glucose does
    bool glucose_learnt_minimization = false; ///< minimize learnt clauses as Glucose does

    std::int32_t interpolation_mode = 0; ///< 0 McMillan; 1 symmetric; 2 inverse McMillan
    bool proof_simplification = false;   ///< simplify proofs before interpolation

    std::int32_t preprocessor_mode = 0;                      ///< 0 off; 1 preprocessing; 2 inprocessing
    std::int32_t preprocessor_clause_size_limit = 20;        ///< literals of a clause that simplification makes
    std::int32_t preprocessor_subsumption_size_limit = 1000; ///< literals of a clause that subsumption looks at
    std::int32_t preprocessor_elimination_grow_limit = 0;    ///< clauses that eliminating a variable may add
    /// 1 eliminate at every check, 2 at every other, and so on
    std::int32_t preprocessor_elimination_phase = 1;
    bool preprocessor_elimination_recent_vars_only = false;  ///< eliminate only variables pushed last
    bool preprocessor_try_reelimination = true;              ///< eliminate a pushed variable again
};

/// The settings that the solver reads, one field for each option. A field's name is the option's, with "_" for ".";
/// the three engines are records of their own, so `theory.bv.lazydpll.restart_initial` fills
/// `theory_bv_lazydpll.restart_initial`.
///
/// A plain record that its host owns, copies and may change at will. A field whose option has no value keeps what it
/// held. Its initial values are those of the built-in default text. The ranges that options accept are one-sided, so a
/// coded field can hold a negative number that its comment does not name.
struct DALVO_API Configuration {
    std::int32_t verbosity = 0;             ///< 0 to 2: how much the solver reports while it runs
    bool proof_generation = false;          ///< produce proofs
    bool interpolation = false;             ///< produce interpolants
    bool model_generation = false;          ///< produce models
    bool bool_model_generation = false;     ///< produce models of the atoms seen by the DPLL engine only
    bool allow_bool_function_args = false;  ///< accept Boolean arguments of uninterpreted functions
    std::int32_t unsat_core_generation = 0; ///< 0 off; 1 proof-based; 2 lemma lifting
    bool shallow_incrementality = false;    ///< keep little state between incremental checks
    std::int32_t random_seed = 1;           ///< seed of the pseudo-random number generators, never 0

    /// 0 off; 1 SMT-LIB v2, global declarations; 2 C; 3 SMT-LIB v2, scoped declarations
    std::int32_t debug_api_call_trace = 0;
    std::string debug_api_call_trace_filename;    ///< file of the trace; empty: standard output
    bool debug_api_call_trace_dump_config = true; ///< write the settings into the trace
    bool debug_dump_theory_lemmas = false;        ///< write each theory lemma to a file tlemma_XXX.smt2
    std::vector<std::string> debug_log_sections;  ///< log sections to enable; empty: all of them
    bool debug_solver_enabled = true;             ///< false: trace queries without solving them

    bool preprocessor_toplevel_propagation = true;             ///< propagate top-level facts
    std::int32_t preprocessor_toplevel_propagation_limit = 0;  ///< iterations; 0 means unlimited
    /// bit set: 1 term-ITE; 2 bit-vectors; 4 arrays; 8 global; 0 none
    std::int32_t preprocessor_simplification = 7;
    bool preprocessor_free_input_propagation = false;          ///< propagate inputs that occur nowhere else
    bool preprocessor_ite_minimization = false;                ///< minimize term-ITEs aggressively
    std::int32_t preprocessor_ite_minimization_call_limit = 0; ///< calls; 0 means unlimited
    bool preprocessor_interpolation_ite_elimination = false;   ///< keep term-ITEs out of interpolants
    /// convert to (partial) NNF before top-level propagation
    bool preprocessor_partial_nnf_conversion = false;

    DpllSettings dpll; ///< the main propositional engine, options dpll.*

    std::int32_t theory_interface_eq_policy = 0; ///< interface equalities: 0 lazy; 1 eager; 2 heuristic; 3 none
    /// only between variables at the same argument position of one function
    bool theory_pairwise_interface_eq = true;
    bool theory_eq_propagation = true;           ///< propagate equalities inside a theory
    bool theory_pure_literal_filtering = true;   ///< filter pure literals

    bool theory_euf_enabled = true;                 ///< use the EUF solver
    /// dynamic Ackermann expansion: 0 off; 1 top-level congruences; 2 all congruences
    std::int32_t theory_euf_dyn_ack = 0;
    std::int32_t theory_euf_dyn_ack_threshold = 10; ///< uses of a congruence in conflicts before its lemma is made
    std::int32_t theory_euf_dyn_ack_limit = 10000;  ///< Ackermann lemmas active at a time

    bool theory_la_enabled = true;                       ///< use the LA solver
    /// threshold of lazy explanations of LA implications
    std::int32_t theory_la_lazy_expl_threshold = 10;
    bool theory_la_split_rat_eq = false;                 ///< split rational equalities into inequalities
    bool theory_la_delay_alien = false;                  ///< delay alien terms
    /// pivots before Bland's rule; 0 means proportional to the number of variables
    std::int32_t theory_la_pivoting_greedy_threshold = 0;
    /// 0 single summaries from A; 1 multiple from A; 2 single negated from B
    std::int32_t theory_la_interpolation_mode = 0;
    bool theory_la_interpolation_laz_use_floor = false;  ///< allow floor functions in LA(Z) interpolants
    /// filter negated equalities that occur purely positively
    bool theory_la_pure_equality_filtering = true;
    /// skip LA where EUF suffices; needs theory_euf_enabled
    bool theory_la_detect_euf_fragment = false;
    bool theory_la_deduction_enabled = true;             ///< use LA theory deduction
    bool theory_la_laz_equality_elimination = true;      ///< eliminate equalities in LA(Z)
    bool theory_la_laz_internal_branch_and_bound = true; ///< branch and bound inside the LA(Z) solver
    /// case splits; 0 means unlimited, 1 proportional to the number of variables
    std::int32_t theory_la_laz_internal_branch_and_bound_limit = 1;
    /// 0 off; 1 always; 2 external branch and bound only; 3 external, over defining constraints
    std::int32_t theory_la_laz_cuts_from_proofs_mode = 2;
    bool theory_la_laz_enabled = true;                   ///< use the LA(Z) solver
    bool theory_la_laz_unit_cube_test = true;            ///< use the unit cube test for integer solutions

    bool theory_arr_enabled = true;               ///< use the array solver
    std::int32_t theory_arr_mode = 0;             ///< 0 lazy axiom instantiation; 1 lemmas on demand
    bool theory_arr_lazy_lemmas = true;           ///< instantiate lemmas lazily
    bool theory_arr_check_on_approx = false;      ///< instantiate lemmas on incomplete calls too
    bool theory_arr_auto_wr_lemma = true;         ///< array writes generate internal reads
    bool theory_arr_enable_wr_lemmas = true;      ///< generate write lemmas
    bool theory_arr_enable_row_lemmas = true;     ///< generate read-over-write lemmas
    bool theory_arr_enable_ext_lemmas = true;     ///< generate extensionality lemmas
    std::int32_t theory_arr_max_wr_lemmas = 0;    ///< write lemmas a check; 0 means unlimited
    std::int32_t theory_arr_max_row_lemmas = 0;   ///< read-over-write lemmas a check; 0 means unlimited
    std::int32_t theory_arr_max_ext_lemmas = 0;   ///< extensionality lemmas a check; 0 means unlimited
    bool theory_arr_enable_ext_polarity = true;   ///< use pure literals for extensionality lemmas
    bool theory_arr_enable_ext_arg = true;        ///< use the ext_arg condition for extensionality lemmas
    bool theory_arr_enable_witness = true;        ///< use the witness set for extensionality lemmas
    bool theory_arr_enable_nonlinear = true;      ///< use the nonlinear set for read-over-write lemmas
    /// use the stratified nonlinear set; implies theory_arr_enable_nonlinear
    bool theory_arr_enable_nonlinear_strat = false;
    bool theory_arr_enable_foreign = true;        ///< use the foreign set for extensionality lemmas
    bool theory_arr_permanent_lemma_inst = false; ///< lemmas survive backtracking
    std::string theory_arr_debug_filename;        ///< file of the array solver's debug output
    bool theory_arr_debug_data = false;           ///< write the array solver's data structures
    bool theory_arr_debug_lemmas = false;         ///< write the array solver's lemmas

    bool theory_bv_enabled = true;               ///< use the BV solver
    bool theory_bv_delay_propagated_eqs = true;  ///< give equalities from EUF a lower priority
    bool theory_bv_eager = false;                ///< bit-blast BV atoms into the main DPLL engine
    /// 0 directly to CNF; 1 AIG with Tseitin conversion; 2 AIG with logic synthesis
    std::int32_t theory_bv_bit_blast_mode = 1;
    /// of (e)quality substitution, (l)A(Z) encoding, (b)it-level: 0 elb; 1 lb; 2 b; 3 leb; 4 eb
    std::int32_t theory_bv_interpolation_mode = 0;
    std::int32_t theory_bv_div_by_zero_mode = 0; ///< 0 hardware semantics; 1 unspecified, by an uninterpreted function
    bool theory_bv_proof_simplification = false; ///< simplify proofs before interpolation
    DpllSettings theory_bv_lazydpll;             ///< the inner engine of the BV solver, options theory.bv.lazydpll.*

    bool theory_fp_enabled = true;                                ///< use the FP solver
    /// 0 BV encoding, lazy bit-blasting; 1 BV encoding, eager; 2 ACDCL with interval domain
    std::int32_t theory_fp_mode = 0;
    bool theory_fp_bv_combination_enabled = true;                 ///< combine FP with BV
    /// 0 none; 1 learning and backjumping only; 2 cheap; 3 aggressive
    std::int32_t theory_fp_acdcl_conflict_generalization = 2;
    /// 0, 1 McMillan; 2, 3 symmetric; 4, 5 inverse McMillan; the even ones inline equalities
    std::int32_t theory_fp_interpolation_mode = 0;
    /// propagations in a row on a variable; 0 means unlimited
    std::int32_t theory_fp_acdcl_single_propagation_limit = 0;
    std::int32_t theory_fp_acdcl_single_generalization_limit = 0; ///< generalizations on a variable; 0 means unlimited
    bool theory_fp_acdcl_generalization_fair = false;             ///< generalize conflicts fairly
    /// of +0 and -0: 0 min -0, max +0; 1 +0; 2 first; 3 second argument; 4 unspecified
    std::int32_t theory_fp_minmax_zero_mode = 4;
    /// 0 directly to CNF; 1 AIG with Tseitin conversion; 2 AIG with logic synthesis
    std::int32_t theory_fp_bit_blast_mode = 1;
    /// the inner engine of the FP solver, options theory.fp.dpll.*
    DpllSettings theory_fp_dpll;

    /// 0 decimal; 1 binary; 2 hexadecimal (binary when the width is no multiple of 4)
    std::int32_t printer_bv_number_format = 0;
    /// 0 decimal of the BV encoding; 1 binary of the BV encoding; 2 decimal floating point
    std::int32_t printer_fp_number_format = 0;
    std::string printer_defines_prefix; ///< prefix of the names of defines and let bindings
};

// clang-format on

} // namespace dalvo
