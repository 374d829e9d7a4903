#include <cstddef>
#include <locale>
#include <map>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>

#include "dalvo/configuration/appliedoptions.h"
#include "dalvo/configuration/configurationsetter.h"
#include "dalvo/configuration/effect.h"
#include "dalvo/configuration/ranges.h"
#include "dalvo/options/optionname.h"
#include "dalvo/utils/str.h"

// The application of options: reads in a fixed order, later ones over earlier ones. One sequence of rows serves the
// filling of a record and the listing of what options accept; a row's further effects stand right at it.
//
// debug.log_sections, preprocessor.free_input_propagation, shallow_incrementality, allow_bool_function_args and the
// three theory.arr.debug_ options are not of the catalogue: they have values only where a host registers them.

namespace dalvo {

namespace {

/// The log sections that `text` names: none, which stands for all, when it is "ALL" alone.
std::vector<std::string> log_sections(const std::string &text)
{
    std::vector<std::string> names;
    const auto pieces = str::get_tokenizer(text, ",", 0);
    for (const std::string &name : *pieces) {
        names.push_back(name);
    }
    if (names.size() == 1 && names.front() == "ALL") {
        names.clear();
    }
    return names;
}

// The rows are aligned by hand.
// clang-format off

/// The options that an inner DPLL engine shares with the main one.
template <class Visitor> void inner_dpll(Visitor &v, std::string_view prefix, DpllSettings &d)
{
    v.integer({prefix, "restart_strategy"},                        d.restart_strategy, at_most(3));
    v.real(   {prefix, "restart_geometric_factor"},                d.restart_geometric_factor);
    v.integer({prefix, "restart_initial"},                         d.restart_initial);
    v.real(   {prefix, "branching_random_frequency"},              d.branching_random_frequency, at_most(1.0F));
    v.integer({prefix, "branching_initial_phase"},                 d.branching_initial_phase, at_most(2));
    v.integer({prefix, "branching_cache_phase"},                   d.branching_cache_phase, at_most(2));
    v.boolean({prefix, "branching_random_invalidate_phase_cache"}, d.branching_random_invalidate_phase_cache);
    v.boolean({prefix, "branching_random_ignore_polarity"},        d.branching_random_ignore_polarity);
    v.boolean({prefix, "ghost_filtering"},                         d.ghost_filtering);
    v.boolean({prefix, "glucose_var_activity"},                    d.glucose_var_activity);
    v.boolean({prefix, "glucose_learnt_minimization"},             d.glucose_learnt_minimization);
}

template <class Visitor> void debug(Visitor &v, Configuration &c)
{
    v.integer("debug.api_call_trace",             c.debug_api_call_trace, at_most(3));
    v.text(   "debug.api_call_trace_filename",    c.debug_api_call_trace_filename);
    v.boolean("debug.api_call_trace_dump_config", c.debug_api_call_trace_dump_config);
    v.boolean("debug.dump_theory_lemmas",         c.debug_dump_theory_lemmas);
    v.list(   "debug.log_sections",               c.debug_log_sections, log_sections);
    v.boolean("debug.solver_enabled",             c.debug_solver_enabled);
}

template <class Visitor> void printer(Visitor &v, Configuration &c)
{
    v.integer("printer.bv_number_format", c.printer_bv_number_format, at_most(2));
    v.integer("printer.fp_number_format", c.printer_fp_number_format, at_most(2));
    v.text(   "printer.defines_prefix",   c.printer_defines_prefix);
}

/// Ahead of `general`, whose rows force proof_generation and preprocessor_toplevel_propagation and so win over theirs.
template <class Visitor> void early_general(Visitor &v, Configuration &c)
{
    v.integer("verbosity",        c.verbosity, at_most(2));
    v.boolean("proof_generation", c.proof_generation);
}

template <class Visitor> void preprocessor(Visitor &v, Configuration &c)
{
    v.boolean("preprocessor.toplevel_propagation",          c.preprocessor_toplevel_propagation);
    v.integer("preprocessor.toplevel_propagation_limit",    c.preprocessor_toplevel_propagation_limit);
    v.integer("preprocessor.simplification",                c.preprocessor_simplification, at_most(15));
    v.boolean("preprocessor.ite_minimization",              c.preprocessor_ite_minimization);
    v.integer("preprocessor.ite_minimization_call_limit",   c.preprocessor_ite_minimization_call_limit, at_least(0));
    v.boolean("preprocessor.interpolation_ite_elimination", c.preprocessor_interpolation_ite_elimination);
    v.boolean("preprocessor.free_input_propagation",        c.preprocessor_free_input_propagation);
    v.boolean("preprocessor.partial_nnf_conversion",        c.preprocessor_partial_nnf_conversion);
}

template <class Visitor> void general(Visitor &v, Configuration &c)
{
    v.boolean("interpolation",            c.interpolation,
              when(is(true)).forces(c.proof_generation, true).forces(c.preprocessor_toplevel_propagation, false));
    v.boolean("model_generation",         c.model_generation);
    v.boolean("bool_model_generation",    c.bool_model_generation);
    v.integer_stored_first("unsat_core_generation", c.unsat_core_generation, at_most(2),
              when(is_not(0)).forces(c.preprocessor_toplevel_propagation, false),
              when(is(1)).forces(c.proof_generation, true),
              when(is_neither(0, 1)).forces(c.dpll.store_tlemmas, true));
    v.boolean("shallow_incrementality",   c.shallow_incrementality);
    v.integer("random_seed",              c.random_seed, any_but(0));
    v.boolean("allow_bool_function_args", c.allow_bool_function_args);
}

template <class Visitor> void dpll(Visitor &v, Configuration &c)
{
    v.integer("dpll.restart_strategy",                          c.dpll.restart_strategy, at_most(3));
    v.real(   "dpll.restart_geometric_factor",                  c.dpll.restart_geometric_factor);
    v.integer("dpll.restart_initial",                           c.dpll.restart_initial);
    v.boolean("dpll.store_tlemmas",                             c.dpll.store_tlemmas);
    v.real(   "dpll.branching_random_frequency",                c.dpll.branching_random_frequency, at_most(1.0F));
    v.integer("dpll.branching_initial_phase",                   c.dpll.branching_initial_phase, at_most(2));
    v.integer("dpll.branching_cache_phase",                     c.dpll.branching_cache_phase, at_most(2));
    v.boolean("dpll.branching_random_invalidate_phase_cache",   c.dpll.branching_random_invalidate_phase_cache);
    v.boolean("dpll.branching_random_ignore_polarity",          c.dpll.branching_random_ignore_polarity);
    v.boolean("dpll.ghost_filtering",                           c.dpll.ghost_filtering);
    v.boolean("dpll.minimize_model",                            c.dpll.minimize_model);
    v.boolean("dpll.allsat_minimize_model",                     c.dpll.allsat_minimize_model);
    v.boolean("dpll.pop_btpoint_reset_var_order",               c.dpll.pop_btpoint_reset_var_order);
    v.boolean("dpll.glucose_var_activity",                      c.dpll.glucose_var_activity);
    v.boolean("dpll.glucose_learnt_minimization",               c.dpll.glucose_learnt_minimization);
    v.integer("dpll.preprocessor.mode",                         c.dpll.preprocessor_mode, between(0, 2));
    v.integer("dpll.preprocessor.clause_size_limit",            c.dpll.preprocessor_clause_size_limit);
    v.integer("dpll.preprocessor.elimination_grow_limit",       c.dpll.preprocessor_elimination_grow_limit);
    v.integer("dpll.preprocessor.subsumption_size_limit",       c.dpll.preprocessor_subsumption_size_limit);
    v.integer("dpll.preprocessor.elimination_phase",            c.dpll.preprocessor_elimination_phase, at_least(1));
    v.boolean("dpll.preprocessor.elimination_recent_vars_only", c.dpll.preprocessor_elimination_recent_vars_only);
    v.boolean("dpll.preprocessor.try_reelimination",            c.dpll.preprocessor_try_reelimination);
    v.integer("dpll.interpolation_mode",                        c.dpll.interpolation_mode, at_most(2));
    v.boolean("dpll.proof_simplification",                      c.dpll.proof_simplification);
}

template <class Visitor> void theory(Visitor &v, Configuration &c)
{
    v.boolean("theory.eq_propagation",         c.theory_eq_propagation);
    v.integer("theory.interface_eq_policy",    c.theory_interface_eq_policy, at_most(3));
    v.boolean("theory.pairwise_interface_eq",  c.theory_pairwise_interface_eq);
    v.boolean("theory.pure_literal_filtering", c.theory_pure_literal_filtering);
}

template <class Visitor> void la(Visitor &v, Configuration &c)
{
    v.boolean("theory.la.enabled",                             c.theory_la_enabled);
    v.boolean("theory.la.split_rat_eq",                        c.theory_la_split_rat_eq);
    v.boolean("theory.la.delay_alien",                         c.theory_la_delay_alien);
    v.integer("theory.la.pivoting_greedy_threshold",           c.theory_la_pivoting_greedy_threshold);
    v.integer("theory.la.lazy_expl_threshold",                 c.theory_la_lazy_expl_threshold);
    v.boolean("theory.la.interpolation_laz_use_floor",         c.theory_la_interpolation_laz_use_floor);
    v.boolean("theory.la.pure_equality_filtering",             c.theory_la_pure_equality_filtering);
    v.boolean("theory.la.detect_euf_fragment",                 c.theory_la_detect_euf_fragment);
    v.boolean("theory.la.deduction_enabled",                   c.theory_la_deduction_enabled);
    v.boolean("theory.la.laz_equality_elimination",            c.theory_la_laz_equality_elimination);
    v.boolean("theory.la.laz_internal_branch_and_bound",       c.theory_la_laz_internal_branch_and_bound);
    v.integer("theory.la.laz_internal_branch_and_bound_limit", c.theory_la_laz_internal_branch_and_bound_limit);
    v.integer("theory.la.laz_cuts_from_proofs_mode",           c.theory_la_laz_cuts_from_proofs_mode, at_most(3));
    v.boolean("theory.la.laz_enabled",                         c.theory_la_laz_enabled);
    v.boolean("theory.la.laz_unit_cube_test",                  c.theory_la_laz_unit_cube_test);
    v.integer("theory.la.interpolation_mode",                  c.theory_la_interpolation_mode, at_most(2));
}

template <class Visitor> void euf(Visitor &v, Configuration &c)
{
    v.boolean("theory.euf.enabled",           c.theory_euf_enabled);
    v.integer("theory.euf.dyn_ack",           c.theory_euf_dyn_ack, at_most(2));
    v.integer("theory.euf.dyn_ack_threshold", c.theory_euf_dyn_ack_threshold);
    v.integer("theory.euf.dyn_ack_limit",     c.theory_euf_dyn_ack_limit);
    // Read a second time, as ever: harmless, and part of the fixed sequence.
    v.integer("theory.euf.dyn_ack_threshold", c.theory_euf_dyn_ack_threshold);
    v.integer("theory.euf.dyn_ack_limit",     c.theory_euf_dyn_ack_limit);
}

template <class Visitor> void arr(Visitor &v, Configuration &c)
{
    v.boolean("theory.arr.enabled",                c.theory_arr_enabled);
    v.boolean("theory.arr.lazy_lemmas",            c.theory_arr_lazy_lemmas);
    v.boolean("theory.arr.check_on_approx",        c.theory_arr_check_on_approx);
    v.boolean("theory.arr.auto_wr_lemma",          c.theory_arr_auto_wr_lemma);
    v.boolean("theory.arr.enable_wr_lemmas",       c.theory_arr_enable_wr_lemmas);
    v.boolean("theory.arr.enable_row_lemmas",      c.theory_arr_enable_row_lemmas);
    v.boolean("theory.arr.enable_ext_lemmas",      c.theory_arr_enable_ext_lemmas);
    v.integer("theory.arr.max_wr_lemmas",          c.theory_arr_max_wr_lemmas);
    v.integer("theory.arr.max_row_lemmas",         c.theory_arr_max_row_lemmas);
    v.integer("theory.arr.max_ext_lemmas",         c.theory_arr_max_ext_lemmas);
    v.boolean("theory.arr.enable_ext_polarity",    c.theory_arr_enable_ext_polarity);
    v.boolean("theory.arr.enable_witness",         c.theory_arr_enable_witness);
    v.boolean("theory.arr.enable_nonlinear",       c.theory_arr_enable_nonlinear);
    v.boolean("theory.arr.enable_nonlinear_strat", c.theory_arr_enable_nonlinear_strat,
              when(is(true)).forces(c.theory_arr_enable_nonlinear, true));
    v.boolean("theory.arr.enable_foreign",         c.theory_arr_enable_foreign);
    v.boolean("theory.arr.permanent_lemma_inst",   c.theory_arr_permanent_lemma_inst);
    v.boolean("theory.arr.enable_ext_arg",         c.theory_arr_enable_ext_arg);
    v.integer("theory.arr.mode",                   c.theory_arr_mode, at_most(1));
    v.boolean("theory.arr.debug_data",             c.theory_arr_debug_data);
    v.boolean("theory.arr.debug_lemmas",           c.theory_arr_debug_lemmas);
    v.text(   "theory.arr.debug_filename",         c.theory_arr_debug_filename);
}

template <class Visitor> void bv(Visitor &v, Configuration &c)
{
    v.boolean("theory.bv.enabled",              c.theory_bv_enabled);
    v.boolean("theory.bv.delay_propagated_eqs", c.theory_bv_delay_propagated_eqs);
    v.boolean("theory.bv.eager",                c.theory_bv_eager);
    v.integer("theory.bv.bit_blast_mode",       c.theory_bv_bit_blast_mode, at_most(2));
    v.integer("theory.bv.interpolation_mode",   c.theory_bv_interpolation_mode, at_most(4));
    v.boolean("theory.bv.proof_simplification", c.theory_bv_proof_simplification);
    inner_dpll(v, "theory.bv.lazydpll.", c.theory_bv_lazydpll);
    v.integer("theory.bv.div_by_zero_mode",     c.theory_bv_div_by_zero_mode, at_most(1));
}

template <class Visitor> void fp(Visitor &v, Configuration &c)
{
    v.boolean("theory.fp.enabled",                           c.theory_fp_enabled);
    v.integer("theory.fp.mode",                              c.theory_fp_mode, at_most(2));
    v.boolean("theory.fp.bv_combination_enabled",            c.theory_fp_bv_combination_enabled);
    v.integer("theory.fp.bit_blast_mode",                    c.theory_fp_bit_blast_mode, at_most(2));
    inner_dpll(v, "theory.fp.dpll.", c.theory_fp_dpll);
    v.integer("theory.fp.acdcl_conflict_generalization",     c.theory_fp_acdcl_conflict_generalization, at_most(3));
    v.integer("theory.fp.interpolation_mode",                c.theory_fp_interpolation_mode, at_most(5));
    v.integer("theory.fp.acdcl_single_propagation_limit",    c.theory_fp_acdcl_single_propagation_limit);
    v.integer("theory.fp.acdcl_single_generalization_limit", c.theory_fp_acdcl_single_generalization_limit);
    v.boolean("theory.fp.acdcl_generalization_fair",         c.theory_fp_acdcl_generalization_fair);
    v.integer("theory.fp.minmax_zero_mode",                  c.theory_fp_minmax_zero_mode, at_most(4));
}

// clang-format on

/// The whole sequence.
template <class Visitor> void visit_options(Visitor &v, Configuration &c)
{
    debug(v, c);
    printer(v, c);
    early_general(v, c);
    preprocessor(v, c);
    general(v, c);
    dpll(v, c);
    theory(v, c);
    la(v, c);
    euf(v, c);
    arr(v, c);
    bv(v, c);
    fp(v, c);
}

template <class T> [[noreturn]] void raise_invalid_value(const std::string &name, T value)
{
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text << value;
    throw OptionParser::error("invalid value for option " + name, name, text.str(), "");
}

/// Reads each option from a parser, tests its value and stores it; leaves alone what has no value.
class Filling {
public:
    explicit Filling(const OptionParser &parser) : options(parser) {}

    template <class... Effects> void boolean(const OptionName &row, bool &field, const Effects &...effects)
    {
        const std::string &name = spell(row);
        bool value = false;
        if (options.get_bool_option(name, &value)) {
            field = value;
            (effects.apply(value ? 1.0 : 0.0), ...);
        }
    }

    void integer(const OptionName &row, std::int32_t &field, IntRange range = {})
    {
        const std::string &name = spell(row);
        std::int32_t value = 0;
        if (options.get_int_option(name, &value)) {
            check(name, value, range);
            field = value;
        }
    }

    /// Stores before it tests: a value out of range is left in the field.
    template <class... Effects>
    void integer_stored_first(const OptionName &row, std::int32_t &field, IntRange range, const Effects &...effects)
    {
        const std::string &name = spell(row);
        std::int32_t value = 0;
        if (options.get_int_option(name, &value)) {
            field = value;
            check(name, value, range);
            (effects.apply(value), ...);
        }
    }

    void real(const OptionName &row, double &field, FloatRange range = {})
    {
        const std::string &name = spell(row);
        float value = 0.0F;
        if (options.get_float_option(name, &value)) {
            check(name, value, range);
            field = value;
        }
    }

    void text(const OptionName &row, std::string &field)
    {
        const std::string &name = spell(row);
        std::string value;
        if (options.get_str_option(name, &value)) {
            field = value;
        }
    }

    template <class Split> void list(const OptionName &row, std::vector<std::string> &field, Split split)
    {
        const std::string &name = spell(row);
        std::string value;
        if (options.get_str_option(name, &value)) {
            field = split(value);
        }
    }

private:
    template <class T, class Range> static void check(const std::string &name, T value, Range range)
    {
        if (!range.accepts(value)) {
            raise_invalid_value(name, value);
        }
    }

    const OptionParser &options;
    NameSpeller spell;
};

/// Lists the rows; reads and stores nothing. What rows force is listed by the names of the fields' own options.
class Listing {
public:
    template <class... Effects> void boolean(const OptionName &row, bool &field, const Effects &...effects)
    {
        add(row, OPT_BOOL, {}, effects...);
        rows_of_fields[&field] = rows.size() - 1;
    }

    void integer(const OptionName &row, std::int32_t &, IntRange range = {}) { add(row, OPT_INT, range); }

    template <class... Effects>
    void integer_stored_first(const OptionName &row, std::int32_t &, IntRange range, const Effects &...effects)
    {
        add(row, OPT_INT, range, effects...);
    }

    void real(const OptionName &row, double &, FloatRange range = {}) { add(row, OPT_FLOAT, range); }
    void text(const OptionName &row, std::string &) { add(row, OPT_STR, {}); }

    template <class Split> void list(const OptionName &row, std::vector<std::string> &, Split)
    {
        add(row, OPT_STR, {});
    }

    /// All rows. A field may be forced by a row before its own, so what is known of it is filled in last.
    std::vector<AppliedOption> take_rows()
    {
        auto field = forced.begin();
        for (std::size_t row = 0; row < rows.size(); ++row) {
            for (Force &force : rows[row].forces) {
                const std::size_t own_row = rows_of_fields.at(*field++);
                force.option = rows[own_row].name;
                force.own_assignment_wins = own_row > row;
            }
        }
        return std::move(rows);
    }

private:
    template <class... Effects>
    void add(const OptionName &row, OptionType type, const AppliedOption::Range &range, const Effects &...effects)
    {
        rows.push_back({spell(row), type, range, {}});
        (note(effects), ...);
    }

    void note(const Effect &effect)
    {
        for (const Effect::Write &write : effect) {
            rows.back().forces.push_back({effect.condition(), {}, write.value, false});
            forced.push_back(write.field);
        }
    }

    std::vector<AppliedOption> rows;
    std::vector<const bool *> forced;                   // the fields that rows force, in the order of the rows' forces
    std::map<const bool *, std::size_t> rows_of_fields; // the last row that fills each field
    NameSpeller spell;
};

/// Reads the fields of a record, row by row, as the values that the options would have.
class Reading {
public:
    std::vector<OptionParser::Value> values;

    template <class... Effects> void boolean(const OptionName &, const bool &field, const Effects &...) { add(field); }
    void integer(const OptionName &, const std::int32_t &field, IntRange = {}) { add(field); }

    template <class... Effects>
    void integer_stored_first(const OptionName &, const std::int32_t &field, IntRange, const Effects &...)
    {
        add(field);
    }

    void real(const OptionName &, const double &field, FloatRange = {}) { add(static_cast<float>(field)); }
    void text(const OptionName &, const std::string &field) { add(field); }

    template <class Split> void list(const OptionName &, const std::vector<std::string> &field, Split)
    {
        std::string names = field.empty() ? "ALL" : "";
        for (const std::string &name : field) {
            names += (&name == &field.front() ? "" : ",") + name;
        }
        add(std::move(names));
    }

private:
    template <class T> void add(T value) { values.emplace_back(std::move(value)); }
};

} // namespace

void ConfigurationSetter::update_config(Configuration *cfg)
{
    parse_active_config();
    Filling filling(parser);
    visit_options(filling, *cfg);
}

std::vector<AppliedOption> applied_options()
{
    Configuration unused;
    Listing listing;
    visit_options(listing, unused);
    return listing.take_rows();
}

std::vector<OptionParser::Value> applied_values(Configuration record)
{
    Reading reading;
    visit_options(reading, record);
    return std::move(reading.values);
}

} // namespace dalvo
