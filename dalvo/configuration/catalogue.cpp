#include "dalvo/configuration/configurationsetter.h"

#include <string_view>

#include "dalvo/utils/str.h"

// The catalogue of options, in the order of registration. Names and help texts are the users' vocabulary: they stay as
// they are, to the character, odd ones included.
//
// To add an option: its field in configuration.h, its row here, its row in applier.cpp, its row in dump.cpp; then its
// line in default.cfg. The consistency tests name the place that was forgotten; the tests' own lists of rows and fields
// are tests/golden/*.tsv and tests/support/record_fields.h.

namespace dalvo {

namespace {

// The rows are aligned by hand.
// clang-format off

/// The options that an inner DPLL engine shares with the main one.
void inner_dpll(OptionParser &options, std::string_view prefix, std::string_view engine)
{
    const auto add = [&](std::string_view name, OptionType type) {
        options.add_option(
            str::joined({prefix, name}), type,
            str::joined({"\"dpll.", name, "\" option for the inner DPLL solver used by ", engine, "."}));
    };
    add("restart_strategy",                        OPT_INT);
    add("restart_initial",                         OPT_INT);
    add("restart_geometric_factor",                OPT_FLOAT);
    add("branching_random_frequency",              OPT_FLOAT);
    add("branching_initial_phase",                 OPT_INT);
    add("branching_cache_phase",                   OPT_INT);
    add("branching_random_invalidate_phase_cache", OPT_BOOL);
    add("branching_random_ignore_polarity",        OPT_BOOL);
    add("ghost_filtering",                         OPT_BOOL);
    add("glucose_var_activity",                    OPT_BOOL);
    add("glucose_learnt_minimization",             OPT_BOOL);
}

void general(OptionParser &options)
{
    options.set_cur_help_group("General options:");
    options.add_option("verbosity",             OPT_INT,   "Set the vebosity level, between 0 and 2.");
    options.add_option("proof_generation",      OPT_BOOL,  "Enable proof generation.");
    options.add_option("interpolation",         OPT_BOOL,  "Enable interpolation.");
    options.add_option("model_generation",      OPT_BOOL,  "Enable model generation.");
    options.add_option("bool_model_generation", OPT_BOOL,
        "Enable a restricted form of model generation, that only assigns values to the atoms seen by the DPLL "
        "engine.");
    options.add_option("unsat_core_generation", OPT_INT,
        "Enable unsat core generation. Possible values are:\n"
        "- 0 : turn off unsat core generation\n"
        "- 1 : use proof-based unsat core generation\n"
        "- 2 : use lemma-lifting algorithm.");
    options.add_option("random_seed",           OPT_INT,   "Set seed for pseudo-random number generators.");
}

void debug(OptionParser &options)
{
    options.set_cur_help_group("Debug options:");
    options.add_option("debug.api_call_trace",             OPT_INT,
        "Enable API call tracing facility. Possible values are:\n"
        "- 0 : turn off tracing\n"
        "- 1 : trace as an SMT-LIB v2 script (with global declarations)\n"
        "- 2 : trace as a C source file\n"
        "- 3 : trace as an SMT-LIB v2 script (with scoped declarations)");
    options.add_option("debug.api_call_trace_filename",    OPT_STR,
        "Name of the output file for API call tracing.If not given, stdout will be used.");
    options.add_option("debug.api_call_trace_dump_config", OPT_BOOL,
        "If true, include the current config settings in the trace of API calls.");
    options.add_option("debug.dump_theory_lemmas",         OPT_BOOL,
        "If true, dump all the theory lemmas (in SMT-LIB v2 format) to files called tlemma_XXX.smt2 in the current "
        "directory.");
    options.add_option("debug.solver_enabled",             OPT_BOOL,
        "If false, the solver will be disabled. This is useful e.g. in combination with debug.api_call_trace to "
        "generate traces of queries without actually solving them.");
}

void printer(OptionParser &options)
{
    options.set_cur_help_group("Printer options:");
    options.add_option("printer.bv_number_format", OPT_INT,
        "Select the format for printing BV numbers. Possible values are:\n"
        "- 0 : decimal format\n"
        "- 1 : binary format\n"
        "- 2 : hexadecimal format (binary will be used if the bit-width is not a multiple of 4).");
    options.add_option("printer.fp_number_format", OPT_INT,
        "Select the format for printing BV numbers. Possible values are:\n"
        "- 0 : decimal representation of the BV encoding\n"
        "- 1 : binary representation of the BV encoding\n"
        "- 2 : decimal floating-point format.");
    options.add_option("printer.defines_prefix",   OPT_STR,   "Custom prefix for defines/let bindings.");
}

void preprocessor(OptionParser &options)
{
    options.set_cur_help_group("Preprocessor options:");
    options.add_option("preprocessor.toplevel_propagation",          OPT_BOOL,
        "Enable propagation of toplevel facts.");
    options.add_option("preprocessor.toplevel_propagation_limit",    OPT_INT,
        "Limit on the number of iterations during toplevel propagation (0: unlimited).");
    options.add_option("preprocessor.simplification",                OPT_INT,
        "Controls the kind of formula simplifications performed during preprocessing. INT should be a bitwise-or "
        "of the following values:\n"
        "- 0 : no simplification\n"
        "- 1 : generic Term-ITE simplifications\n"
        "- 2 : bit-vector specific simplifications\n"
        "- 4 : array-specific simplifications\n"
        "- 8 : global simplifications.");
    options.add_option("preprocessor.ite_minimization",              OPT_BOOL,
        "Controls the use of agressive ite_minimization");
    options.add_option("preprocessor.ite_minimization_call_limit",   OPT_INT,
        "Controls the maximum nr of calls made in ite minimization (0: unlimited).");
    options.add_option("preprocessor.interpolation_ite_elimination", OPT_BOOL,
        "If true, ensure that interpolants do not contain term-ITEs.");
    options.add_option("preprocessor.partial_nnf_conversion",        OPT_BOOL,
        "If true, apply (partial) NNF conversion before toplevel propagation.");
}

void dpll(OptionParser &options)
{
    options.set_cur_help_group("DPLL options:");
    options.add_option("dpll.restart_strategy",                          OPT_INT,
        "Restart strategy. Possible values are:\n"
        "- 0 : geometric strategy\n"
        "- 1 : frequent restart strategy based on Luby sequence\n"
        "- 2 : like 1, but adjust dynamically the Luby unit according to agility\n"
        "- 3 : use the dynamic restart strategy of the Glucose SAT solver.");
    options.add_option("dpll.restart_initial",                           OPT_INT,
        "With the geometric strategy, perform first restart after INT conflict. For the Luby strategy, this is the "
        "Luby unit.");
    options.add_option("dpll.restart_geometric_factor",                  OPT_FLOAT,
        "Multiplicative factor to use for the geometric strategy.");
    options.add_option("dpll.store_tlemmas",                             OPT_BOOL,
        "Store all the T-lemmas generated during search, so that it is possible to retrieve them.");
    options.add_option("dpll.branching_random_frequency",                OPT_FLOAT, "Frequency of random case splits.");
    options.add_option("dpll.branching_initial_phase",                   OPT_INT,
        "Initial phase used when branching on a variable. Possible values are:\n"
        "- 0: false first\n"
        "- 1: true first\n"
        "- 2: according to polarity of the atom (true if variable occurs only negatively in the formula, false "
        "otherwise).");
    options.add_option("dpll.branching_cache_phase",                     OPT_INT,
        "Controls the kind of phase caching when branching on a variable. Possible values are:\n"
        "- 0: disable phase caching\n"
        "- 1: cache phase except for variables assigned at the last decision level\n"
        "- 2: always cache phase.");
    options.add_option("dpll.branching_random_invalidate_phase_cache",   OPT_BOOL,
        "If true, invalidate the phase cache of selected variables when performing random branching.");
    options.add_option("dpll.branching_random_ignore_polarity",          OPT_BOOL,
        "If true, use random polarity when performing random branching.");
    options.add_option("dpll.ghost_filtering",                           OPT_BOOL,
        "If true, enable ghost literal filtering.");
    options.add_option("dpll.minimize_model",                            OPT_BOOL,  "Minimize propositional models.");
    options.add_option("dpll.allsat_minimize_model",                     OPT_BOOL,
        "Minimize propositional models before calling the All-SAT callback.");
    options.add_option("dpll.pop_btpoint_reset_var_order",               OPT_BOOL,
        "If true, reset variable ordering when popping a backtracking point.");
    options.add_option("dpll.glucose_var_activity",                      OPT_BOOL,
        "Use the Glucose var activity update heuristic.");
    options.add_option("dpll.glucose_learnt_minimization",               OPT_BOOL,
        "Use the Glucose learnt clause minimization heuristic.");
    options.add_option("dpll.preprocessor.mode",                         OPT_INT,
        "Selects which SAT-level preprocessing mode to use. Possible values are:\n"
        "- 0 : off\n"
        "- 1 : preprocessing\n"
        "- 2 : inprocessing.");
    options.add_option("dpll.preprocessor.clause_size_limit",            OPT_INT,
        "The maximum size of created simplified clauses.");
    options.add_option("dpll.preprocessor.subsumption_size_limit",       OPT_INT,
        "The maximum size of clauses for which subsumption is echecked.");
    options.add_option("dpll.preprocessor.elimination_grow_limit",       OPT_INT,
        "The allowed increase in the number of clauses when eliminating a variable.");
    options.add_option("dpll.preprocessor.elimination_phase",            OPT_INT,
        "In an incremental setting, controls how often variable elimination is perfored (1 means every sat check, "
        "2 every other check, and so on).");
    options.add_option("dpll.preprocessor.elimination_recent_vars_only", OPT_BOOL,
        "In an incremental setting, if true elimination is tried only for newly-pushed variables.");
    options.add_option("dpll.preprocessor.try_reelimination",            OPT_BOOL,
        "In an incremental setting, controls the re-elimination of pushed eliminated variables.");
    options.add_option("dpll.interpolation_mode",                        OPT_INT,
        "Select the propositional interpolation algorithm to use. Possible values are:\n"
        "- 0 : McMillan's algorithm\n"
        "- 1 : symmetric algorithm\n"
        "- 2 : inverse McMillan.");
    options.add_option("dpll.proof_simplification",                      OPT_BOOL,
        "If true, perform proof simplification before computing interpolants.");
}

void theory(OptionParser &options)
{
    options.set_cur_help_group("Theory options:");
    options.add_option("theory.eq_propagation",         OPT_BOOL,  "Enable intra-theory equality propagation.");
    options.add_option("theory.interface_eq_policy",    OPT_INT,
        "Strategy for generating interface equalities for theory combinations. Possible values are:\n"
        "- 0 : lazy generation\n"
        "- 1 : eager generation\n"
        "- 2 : heuristic generation based on equalities considered \"interesting\" by the theory solvers\n"
        "- 3 : turn off generation of interface equalities completely.");
    options.add_option("theory.pairwise_interface_eq",  OPT_BOOL,
        "If true, filter-out interface equalities between variables that do not occur in the same position as "
        "arguments of the same uninterpreted function.");
    options.add_option("theory.pure_literal_filtering", OPT_BOOL,  "Enable pure literal filtering.");
}

void la(OptionParser &options)
{
    options.add_option("theory.la.enabled",                             OPT_BOOL,
        "if false, the LA solver will be disabled.");
    options.add_option("theory.la.split_rat_eq",                        OPT_BOOL,
        "Split rational equalities into inequalities instead of handling disequalities directly.");
    options.add_option("theory.la.delay_alien",                         OPT_BOOL,
        "Delay alien terms in the LA solver.");
    options.add_option("theory.la.pivoting_greedy_threshold",           OPT_INT,
        "Threshold for switching from a \"greedy\" pivoting strategy to the Bland's rule in the Simplex. A value "
        "of 0 means to use a value proportional to the number of problem variables.");
    options.add_option("theory.la.lazy_expl_threshold",                 OPT_INT,
        "Threshold for lazy explanation generation of LA implications.");
    options.add_option("theory.la.interpolation_laz_use_floor",         OPT_BOOL,
        "If true, allow floor functions in interpolants in LA(Z).");
    options.add_option("theory.la.pure_equality_filtering",             OPT_BOOL,
        "If true, filter negated equalities occurring purely positively in the input formula, regardless of the "
        "value of theory.pure_literal_filtering.");
    options.add_option("theory.la.detect_euf_fragment",                 OPT_BOOL,
        "If true, detect problems that can be solved by EUF only, and avoid calling the LA solver. Warning: "
        "theory.euf.enabled must be set to true, otherwise the solver is unsound.");
    options.add_option("theory.la.deduction_enabled",                   OPT_BOOL,
        "If false, disable LA theory deduction.");
    options.add_option("theory.la.laz_equality_elimination",            OPT_BOOL,
        "If true, enable the equality elimination step for LA(Z).");
    options.add_option("theory.la.laz_internal_branch_and_bound",       OPT_BOOL,
        "If true, enable the internal branch and bound for LA(Z).");
    options.add_option("theory.la.laz_internal_branch_and_bound_limit", OPT_INT,
        "Limit on internal branch and bound case splits. 0 means unlimited, and 1 means a value proportional to "
        "the number of variables in the problem.");
    options.add_option("theory.la.laz_cuts_from_proofs_mode",           OPT_INT,
        "Controls the use of the \"cuts from proofs\" algorithm for extended branch and bound lemmas. Possible "
        "values are:\n"
        "- 0 : off\n"
        "- 1 : always enabled\n"
        "- 2 : enabled only for external branch and bound\n"
        "- 3 : external with branching on equalities over defining constraints.");
    options.add_option("theory.la.laz_enabled",                         OPT_BOOL,
        "If false, the LA(Z) solver will be disabled.");
    options.add_option("theory.la.laz_unit_cube_test",                  OPT_BOOL,
        "If false, disable the unit cube test heuristic for finding integer solutions.");
    options.add_option("theory.la.interpolation_mode",                  OPT_INT,
        "Interpolation technique to use for LA. Possible values are:\n"
        "- 0 : single summaries from A\n"
        "- 1 : multiple summaries from A\n"
        "- 2 : single negated summaries from B.");
}

void euf(OptionParser &options)
{
    options.add_option("theory.euf.enabled",           OPT_BOOL,  "if false, the EUF solver will be disabled.");
    options.add_option("theory.euf.dyn_ack",           OPT_INT,
        "Dynamic Ackermann expansion. Possible values are:\n"
        "- 0 : off\n"
        "- 1 : use only toplevel congruences\n"
        "- 2 : use all congruences.");
    options.add_option("theory.euf.dyn_ack_threshold", OPT_INT,
        "Number of times a congruence rule should occur in a conflict before the corresponding dynamic Ackermann "
        "lemma is generated.");
    options.add_option("theory.euf.dyn_ack_limit",     OPT_INT,
        "Max number of dynamic Ackermann lemmas active at the same time.");
}

void arr(OptionParser &options)
{
    options.add_option("theory.arr.enabled",                OPT_BOOL,  "If false, the array solver will be disabled.");
    options.add_option("theory.arr.mode",                   OPT_INT,
        "Select the kind of array solver to use. Possible values are:\n"
        "- 0 : lazy axiom instantiation\n"
        "- 1 : Boolector-style lemmas-on-demand.");
    options.add_option("theory.arr.lazy_lemmas",            OPT_BOOL,
        "Lazy versus eager array lemma instantiation, when true, lemmas are instantiated in a lazy fashion.");
    options.add_option("theory.arr.check_on_approx",        OPT_BOOL,
        "Allow array lemma instantiation on non-complete calls.");
    options.add_option("theory.arr.auto_wr_lemma",          OPT_BOOL,
        "Allow array writes to automatically generate internal read in array solver.");
    options.add_option("theory.arr.enable_wr_lemmas",       OPT_BOOL,  "Enable generation of write lemmas.");
    options.add_option("theory.arr.enable_row_lemmas",      OPT_BOOL,  "Enable generation of read-over-write lemmas.");
    options.add_option("theory.arr.enable_ext_lemmas",      OPT_BOOL,  "Enable generation of extensionality lemmas.");
    options.add_option("theory.arr.max_wr_lemmas",          OPT_INT,
        "Restrict the number of write lemmas generated at each check (0 means unrestricted).");
    options.add_option("theory.arr.max_row_lemmas",         OPT_INT,
        "Restrict the number of read-over-write lemmas generated at each check (0 means unrestricted).");
    options.add_option("theory.arr.max_ext_lemmas",         OPT_INT,
        "Restrict the number of extensionality lemmas generated at each check (0 means unrestricted).");
    options.add_option("theory.arr.enable_ext_polarity",    OPT_BOOL,
        "Check for pure literals during Ext lemma generation.");
    options.add_option("theory.arr.enable_ext_arg",         OPT_BOOL,
        "Enable ext_arg condition for Ext lemma instantiation.");
    options.add_option("theory.arr.enable_witness",         OPT_BOOL,
        "Enable witness set for Ext lemma instantiation.");
    options.add_option("theory.arr.enable_nonlinear",       OPT_BOOL,
        "Enable nonlinear set for RoW lemma instantiation.");
    options.add_option("theory.arr.enable_nonlinear_strat", OPT_BOOL,
        "Enable nonlinear-stratification set for RoW lemma instantiation.");
    options.add_option("theory.arr.enable_foreign",         OPT_BOOL,
        "Enable foreign set for Ext lemma instantiation.");
    options.add_option("theory.arr.permanent_lemma_inst",   OPT_BOOL,
        "Set instantiated array lemmas as permanent, they cannot be backtracked.");
}

void bv(OptionParser &options)
{
    options.add_option("theory.bv.enabled",              OPT_BOOL,  "If false, the BV solver will be disabled.");
    options.add_option("theory.bv.delay_propagated_eqs", OPT_BOOL,
        "If true, equalities propagated by the EUF solver will be given lower priority than other literals when "
        "checking satisfiability.");
    options.add_option("theory.bv.eager",                OPT_BOOL,
        "If true, BV atoms will be bit-blasted into the main DPLL solver.");
    options.add_option("theory.bv.bit_blast_mode",       OPT_INT,
        "Controls the way in which BV constraints are bit-blasted. Possible values are:\n"
        "- 0 : bit blast directly in CNF\n"
        "- 1 : use intermediate AIG representation and Tseitin CNF conversion\n"
        "- 2 : use intermediate AIG representation and CNF conversion with logic syntesis.");
    options.add_option("theory.bv.interpolation_mode",   OPT_INT,
        "Interpolation technique to use for bit-vectors. Possible values are:\n"
        "- 0 : equality substitution + LA(Z) encoding  + bit-level interpolation\n"
        "- 1 : LA(Z) encoding + bit-level interpolation\n"
        "- 2 : bit-level interpolation only\n"
        "- 3 : LA(Z) encoding + equality substitution + bit-level interpolation\n"
        "- 4 : equality substitution + bit-level interpolation.");
    options.add_option("theory.bv.proof_simplification", OPT_BOOL,
        "If true, perform proof simplification before computing interpolants.");
    inner_dpll(options, "theory.bv.lazydpll.", "BV in lazy mode");
    options.add_option("theory.bv.div_by_zero_mode",     OPT_INT,
        "Select the semantics used for division (and remainder) by zero. Possible values are:\n"
        "- 0 : use the semantics commonly implemented by hardware dividers, i.e. (bvudiv a 0) returns INT_MAX and "
        "(bvurem a 0) returns a\n"
        "- 1 : use an uninterpreted function to leave the result unspecified (this is the semantics mandated by "
        "SMT-LIB).");
}

void fp(OptionParser &options)
{
    options.add_option("theory.fp.enabled",                           OPT_BOOL,
        "If false, the FP solver will be disabled.");
    options.add_option("theory.fp.mode",                              OPT_INT,
        "Select which FP solver to use. Possible values are:\n"
        "- 0 : BV encoding with lazy bit-blasting\n"
        "- 1 : BV encoding with eager bit-blasting\n"
        "- 2 : ACDCL with interval domain.");
    options.add_option("theory.fp.bv_combination_enabled",            OPT_BOOL,
        "If true, enable support for theory combination between FP and BV.");
    options.add_option("theory.fp.bit_blast_mode",                    OPT_INT,
        "Controls the way in which FP constraints are bit-blasted. Possible values are:\n"
        "- 0 : bit blast directly in CNF\n"
        "- 1 : use intermediate AIG representation and Tseitin CNF conversion\n"
        "- 2 : use intermediate AIG representation and CNF conversion with logic syntesis.");
    inner_dpll(options, "theory.fp.dpll.", "FP");
    options.add_option("theory.fp.acdcl_conflict_generalization",     OPT_INT,
        "Select the kind of conflict generalization to use in the ACDCL-based solver. Possible values are:\n"
        "- 0: no conflict analysis or generalization\n"
        "- 1: conflict-driven learning and backjumping, but no generalization\n"
        "- 2: 1 + cheap conflict generalization\n"
        "- 3: 1 + aggressive conflict generalization.");
    options.add_option("theory.fp.interpolation_mode",                OPT_INT,
        "Select the interpolation mode for the ACDCL-based FP solver. Possible values are:\n"
        "- 0: equality inlining + ACDCL-based interpolation with McMillan's algorithm\n"
        "- 1: ACDCL-based interpolation with McMillan's algorithm only\n"
        "- 2: equality inlining + ACDCL-based interpolation with symmetric algorithm\n"
        "- 3: ACDCL-based interpolation with symmetric algorithm only\n"
        "- 4: equality inlining + ACDCL-based interpolation with inverse McMillan algorithm\n"
        "- 5: ACDCL-based interpolation with inverse McMillan algorithm only.");
    options.add_option("theory.fp.acdcl_single_propagation_limit",    OPT_INT,
        "Limit on the number of subsequent propagations performed on the same variable in the ACDCL-based solver "
        "(0 means unlimited).");
    options.add_option("theory.fp.acdcl_single_generalization_limit", OPT_INT,
        "Limit on the number of generalization attempts performed on a single variable in the ACDCL-based solver "
        "(0 means unlimited).");
    options.add_option("theory.fp.acdcl_generalization_fair",         OPT_BOOL,
        "If true, use a fair strategy for conflict generalization in the ACDCL-based solver.");
    options.add_option("theory.fp.minmax_zero_mode",                  OPT_INT,
        "Select the semantics used for fp.min and fp.max when one argument is +0 and the other is -0. Possible "
        "values are:\n"
        "- 0 : fp.min returns -0, fp.max returns +0\n"
        "- 1 : always return +0\n"
        "- 2 : always return the first argument\n"
        "- 3 : always return the second argument\n"
        "- 4 : use an uninterpreted function to leave the result unspecified, i.e. either +0 or -0 (this is the "
        "semantics mandated by SMT-LIB).");
}

// clang-format on

} // namespace

void ConfigurationSetter::initialize_options()
{
    general(parser);
    debug(parser);
    printer(parser);
    preprocessor(parser);
    dpll(parser);
    theory(parser);
    la(parser);
    euf(parser);
    arr(parser);
    bv(parser);
    fp(parser);
}

} // namespace dalvo
