#include "dalvo/configuration/configurationsetter.h"

#include <ostream>
#include <string>
#include <string_view>

#include "dalvo/options/optionname.h"

// The settings of a record, written out: an entry for each option in a fixed order. Four fields are printed unsigned on purpose.

namespace dalvo {

namespace {

/// Hands entries to a printer. The deleted overloads keep a field from being printed as another type than its own.
class Entries {
public:
    Entries(std::ostream &stream, const ConfigurationSetter::ConfigEntryPrinter &entry_printer)
        : out(stream), printer(entry_printer)
    {
    }

    void boolean(const OptionName &row, bool value) { printer(out, spell(row), value); }
    void integer(const OptionName &row, std::int32_t value) { printer(out, spell(row), static_cast<int>(value)); }
    void natural(const OptionName &row, std::int32_t value)
    {
        printer(out, spell(row), static_cast<unsigned int>(value));
    }
    void real(const OptionName &row, double value) { printer(out, spell(row), value); }
    void text(const OptionName &row, const std::string &value) { printer(out, spell(row), value); }

    template <class T> void boolean(const OptionName &, T) = delete;
    template <class T> void integer(const OptionName &, T) = delete;
    template <class T> void natural(const OptionName &, T) = delete;
    template <class T> void real(const OptionName &, T) = delete;

private:
    std::ostream &out;
    const ConfigurationSetter::ConfigEntryPrinter &printer;
    NameSpeller spell;
};

// The rows are aligned by hand.
// clang-format off

/// The options that an inner DPLL engine shares with the main one.
void inner_dpll(Entries &put, std::string_view prefix, const DpllSettings &d)
{
    put.integer({prefix, "restart_strategy"},                        d.restart_strategy);
    put.integer({prefix, "restart_initial"},                         d.restart_initial);
    put.real(   {prefix, "restart_geometric_factor"},                d.restart_geometric_factor);
    put.real(   {prefix, "branching_random_frequency"},              d.branching_random_frequency);
    put.integer({prefix, "branching_initial_phase"},                 d.branching_initial_phase);
    put.integer({prefix, "branching_cache_phase"},                   d.branching_cache_phase);
    put.boolean({prefix, "branching_random_invalidate_phase_cache"}, d.branching_random_invalidate_phase_cache);
    put.boolean({prefix, "branching_random_ignore_polarity"},        d.branching_random_ignore_polarity);
    put.boolean({prefix, "ghost_filtering"},                         d.ghost_filtering);
    put.boolean({prefix, "glucose_var_activity"},                    d.glucose_var_activity);
    put.boolean({prefix, "glucose_learnt_minimization"},             d.glucose_learnt_minimization);
}

void general(Entries &put, const Configuration &c)
{
    put.natural("verbosity",             c.verbosity);
    put.boolean("proof_generation",      c.proof_generation);
    put.boolean("interpolation",         c.interpolation);
    put.boolean("model_generation",      c.model_generation);
    put.boolean("bool_model_generation", c.bool_model_generation);
    put.integer("unsat_core_generation", c.unsat_core_generation);
    put.integer("random_seed",           c.random_seed);
}

void debug(Entries &put, const Configuration &c)
{
    put.integer("debug.api_call_trace",             c.debug_api_call_trace);
    put.text(   "debug.api_call_trace_filename",    c.debug_api_call_trace_filename);
    put.boolean("debug.api_call_trace_dump_config", c.debug_api_call_trace_dump_config);
    put.boolean("debug.dump_theory_lemmas",         c.debug_dump_theory_lemmas);
    put.boolean("debug.solver_enabled",             c.debug_solver_enabled);
}

void printer(Entries &put, const Configuration &c)
{
    put.integer("printer.bv_number_format", c.printer_bv_number_format);
    put.integer("printer.fp_number_format", c.printer_fp_number_format);
    put.text(   "printer.defines_prefix",   c.printer_defines_prefix);
}

void preprocessor(Entries &put, const Configuration &c)
{
    put.boolean("preprocessor.toplevel_propagation",          c.preprocessor_toplevel_propagation);
    put.integer("preprocessor.toplevel_propagation_limit",    c.preprocessor_toplevel_propagation_limit);
    put.integer("preprocessor.simplification",                c.preprocessor_simplification);
    put.boolean("preprocessor.ite_minimization",              c.preprocessor_ite_minimization);
    put.integer("preprocessor.ite_minimization_call_limit",   c.preprocessor_ite_minimization_call_limit);
    put.boolean("preprocessor.interpolation_ite_elimination", c.preprocessor_interpolation_ite_elimination);
    put.boolean("preprocessor.partial_nnf_conversion",        c.preprocessor_partial_nnf_conversion);
}

void dpll(Entries &put, const Configuration &c)
{
    put.integer("dpll.restart_strategy",                          c.dpll.restart_strategy);
    put.integer("dpll.restart_initial",                           c.dpll.restart_initial);
    put.real(   "dpll.restart_geometric_factor",                  c.dpll.restart_geometric_factor);
    put.boolean("dpll.store_tlemmas",                             c.dpll.store_tlemmas);
    put.real(   "dpll.branching_random_frequency",                c.dpll.branching_random_frequency);
    put.integer("dpll.branching_initial_phase",                   c.dpll.branching_initial_phase);
    put.integer("dpll.branching_cache_phase",                     c.dpll.branching_cache_phase);
    put.boolean("dpll.branching_random_invalidate_phase_cache",   c.dpll.branching_random_invalidate_phase_cache);
    put.boolean("dpll.branching_random_ignore_polarity",          c.dpll.branching_random_ignore_polarity);
    put.boolean("dpll.ghost_filtering",                           c.dpll.ghost_filtering);
    put.boolean("dpll.minimize_model",                            c.dpll.minimize_model);
    put.boolean("dpll.allsat_minimize_model",                     c.dpll.allsat_minimize_model);
    put.boolean("dpll.pop_btpoint_reset_var_order",               c.dpll.pop_btpoint_reset_var_order);
    put.boolean("dpll.glucose_var_activity",                      c.dpll.glucose_var_activity);
    put.boolean("dpll.glucose_learnt_minimization",               c.dpll.glucose_learnt_minimization);
    put.integer("dpll.interpolation_mode",                        c.dpll.interpolation_mode);
    put.boolean("dpll.proof_simplification",                      c.dpll.proof_simplification);
    put.integer("dpll.preprocessor.mode",                         c.dpll.preprocessor_mode);
    put.integer("dpll.preprocessor.clause_size_limit",            c.dpll.preprocessor_clause_size_limit);
    put.integer("dpll.preprocessor.subsumption_size_limit",       c.dpll.preprocessor_subsumption_size_limit);
    put.integer("dpll.preprocessor.elimination_grow_limit",       c.dpll.preprocessor_elimination_grow_limit);
    put.integer("dpll.preprocessor.elimination_phase",            c.dpll.preprocessor_elimination_phase);
    put.boolean("dpll.preprocessor.elimination_recent_vars_only", c.dpll.preprocessor_elimination_recent_vars_only);
    put.boolean("dpll.preprocessor.try_reelimination",            c.dpll.preprocessor_try_reelimination);
}

void theory(Entries &put, const Configuration &c)
{
    put.boolean("theory.eq_propagation",         c.theory_eq_propagation);
    put.integer("theory.interface_eq_policy",    c.theory_interface_eq_policy);
    put.boolean("theory.pairwise_interface_eq",  c.theory_pairwise_interface_eq);
    put.boolean("theory.pure_literal_filtering", c.theory_pure_literal_filtering);
}

void euf(Entries &put, const Configuration &c)
{
    put.boolean("theory.euf.enabled",           c.theory_euf_enabled);
    put.integer("theory.euf.dyn_ack",           c.theory_euf_dyn_ack);
    put.natural("theory.euf.dyn_ack_threshold", c.theory_euf_dyn_ack_threshold);
    put.natural("theory.euf.dyn_ack_limit",     c.theory_euf_dyn_ack_limit);
}

void la(Entries &put, const Configuration &c)
{
    put.boolean("theory.la.enabled",                             c.theory_la_enabled);
    put.boolean("theory.la.split_rat_eq",                        c.theory_la_split_rat_eq);
    put.boolean("theory.la.delay_alien",                         c.theory_la_delay_alien);
    put.integer("theory.la.pivoting_greedy_threshold",           c.theory_la_pivoting_greedy_threshold);
    put.natural("theory.la.lazy_expl_threshold",                 c.theory_la_lazy_expl_threshold);
    put.boolean("theory.la.interpolation_laz_use_floor",         c.theory_la_interpolation_laz_use_floor);
    put.boolean("theory.la.pure_equality_filtering",             c.theory_la_pure_equality_filtering);
    put.boolean("theory.la.detect_euf_fragment",                 c.theory_la_detect_euf_fragment);
    put.boolean("theory.la.deduction_enabled",                   c.theory_la_deduction_enabled);
    put.boolean("theory.la.laz_equality_elimination",            c.theory_la_laz_equality_elimination);
    put.boolean("theory.la.laz_internal_branch_and_bound",       c.theory_la_laz_internal_branch_and_bound);
    put.integer("theory.la.laz_internal_branch_and_bound_limit", c.theory_la_laz_internal_branch_and_bound_limit);
    put.integer("theory.la.laz_cuts_from_proofs_mode",           c.theory_la_laz_cuts_from_proofs_mode);
    put.boolean("theory.la.laz_enabled",                         c.theory_la_laz_enabled);
    put.boolean("theory.la.laz_unit_cube_test",                  c.theory_la_laz_unit_cube_test);
    put.integer("theory.la.interpolation_mode",                  c.theory_la_interpolation_mode);
}

void bv(Entries &put, const Configuration &c)
{
    put.boolean("theory.bv.enabled",              c.theory_bv_enabled);
    put.integer("theory.bv.div_by_zero_mode",     c.theory_bv_div_by_zero_mode);
    put.boolean("theory.bv.delay_propagated_eqs", c.theory_bv_delay_propagated_eqs);
    put.boolean("theory.bv.eager",                c.theory_bv_eager);
    put.integer("theory.bv.bit_blast_mode",       c.theory_bv_bit_blast_mode);
    put.integer("theory.bv.interpolation_mode",   c.theory_bv_interpolation_mode);
    put.boolean("theory.bv.proof_simplification", c.theory_bv_proof_simplification);
    inner_dpll(put, "theory.bv.lazydpll.", c.theory_bv_lazydpll);
}

void arr(Entries &put, const Configuration &c)
{
    put.boolean("theory.arr.enabled",                c.theory_arr_enabled);
    put.integer("theory.arr.mode",                   c.theory_arr_mode);
    put.boolean("theory.arr.lazy_lemmas",            c.theory_arr_lazy_lemmas);
    put.boolean("theory.arr.check_on_approx",        c.theory_arr_check_on_approx);
    put.boolean("theory.arr.auto_wr_lemma",          c.theory_arr_auto_wr_lemma);
    put.boolean("theory.arr.enable_wr_lemmas",       c.theory_arr_enable_wr_lemmas);
    put.boolean("theory.arr.enable_row_lemmas",      c.theory_arr_enable_row_lemmas);
    put.boolean("theory.arr.enable_ext_lemmas",      c.theory_arr_enable_ext_lemmas);
    put.integer("theory.arr.max_wr_lemmas",          c.theory_arr_max_wr_lemmas);
    put.integer("theory.arr.max_row_lemmas",         c.theory_arr_max_row_lemmas);
    put.integer("theory.arr.max_ext_lemmas",         c.theory_arr_max_ext_lemmas);
    put.boolean("theory.arr.enable_ext_polarity",    c.theory_arr_enable_ext_polarity);
    put.boolean("theory.arr.enable_ext_arg",         c.theory_arr_enable_ext_arg);
    put.boolean("theory.arr.enable_witness",         c.theory_arr_enable_witness);
    put.boolean("theory.arr.enable_nonlinear",       c.theory_arr_enable_nonlinear);
    put.boolean("theory.arr.enable_nonlinear_strat", c.theory_arr_enable_nonlinear_strat);
    put.boolean("theory.arr.enable_foreign",         c.theory_arr_enable_foreign);
    put.boolean("theory.arr.permanent_lemma_inst",   c.theory_arr_permanent_lemma_inst);
}

void fp(Entries &put, const Configuration &c)
{
    put.boolean("theory.fp.enabled",                           c.theory_fp_enabled);
    put.integer("theory.fp.minmax_zero_mode",                  c.theory_fp_minmax_zero_mode);
    put.integer("theory.fp.mode",                              c.theory_fp_mode);
    put.boolean("theory.fp.bv_combination_enabled",            c.theory_fp_bv_combination_enabled);
    put.integer("theory.fp.bit_blast_mode",                    c.theory_fp_bit_blast_mode);
    inner_dpll(put, "theory.fp.dpll.", c.theory_fp_dpll);
    put.integer("theory.fp.acdcl_conflict_generalization",     c.theory_fp_acdcl_conflict_generalization);
    put.integer("theory.fp.interpolation_mode",                c.theory_fp_interpolation_mode);
    put.integer("theory.fp.acdcl_single_propagation_limit",    c.theory_fp_acdcl_single_propagation_limit);
    put.integer("theory.fp.acdcl_single_generalization_limit", c.theory_fp_acdcl_single_generalization_limit);
    put.boolean("theory.fp.acdcl_generalization_fair",         c.theory_fp_acdcl_generalization_fair);
}

// clang-format on

/// Writes the syntax that `load` reads. Numbers follow the stream, words do not.
class ConfigFileEntryPrinter : public ConfigurationSetter::ConfigEntryPrinter {
public:
    void operator()(std::ostream &out, const std::string &name, bool value) const override
    {
        out << name << (value ? " = true\n" : " = false\n"); // most options: an insertion costs as much as its text
    }
    void operator()(std::ostream &out, const std::string &name, int value) const override { put(out, name, value); }
    void operator()(std::ostream &out, const std::string &name, unsigned int value) const override
    {
        put(out, name, std::uint64_t{value});
    }
    void operator()(std::ostream &out, const std::string &name, double value) const override { put(out, name, value); }
    void operator()(std::ostream &out, const std::string &name, const std::string &value) const override
    {
        put(out, name, value);
    }

private:
    template <class T> static void put(std::ostream &out, const std::string &name, const T &value)
    {
        out << name << " = " << value << '\n';
    }
};

} // namespace

ConfigurationSetter::ConfigEntryPrinter::~ConfigEntryPrinter() = default;

// NOLINTNEXTLINE(readability-convert-member-functions-to-static): a setter dumps, whether it needs itself or not
void ConfigurationSetter::dump(const Configuration *cfg, std::ostream &out,
                               const ConfigEntryPrinter &entry_printer) const
{
    Entries put(out, entry_printer);
    general(put, *cfg);
    debug(put, *cfg);
    printer(put, *cfg);
    preprocessor(put, *cfg);
    dpll(put, *cfg);
    theory(put, *cfg);
    euf(put, *cfg);
    la(put, *cfg);
    bv(put, *cfg);
    arr(put, *cfg);
    fp(put, *cfg);
    out.flush();
}

void ConfigurationSetter::dump(const Configuration *cfg, std::ostream &out, const std::string &section) const
{
    out.width(0); // one left in the stream would pad what comes first
    if (!section.empty()) {
        out << "[" << section << "]\n";
    }
    out.setf(std::ios_base::boolalpha);
    dump(cfg, out, ConfigFileEntryPrinter());
}

} // namespace dalvo
