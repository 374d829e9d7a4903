#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "dalvo/configuration/appliedoptions.h"
#include "dalvo/configuration/configurationsetter.h"
#include "tests/support/applied_rows.h"
#include "tests/support/global_locale.h"
#include "tests/support/records.h"
#include "tests/support/settings.h"

namespace {

using dalvo::AppliedOption;
using dalvo::Configuration;
using dalvo::ConfigurationSetter;
using dalvo::OptionParser;
using dalvo::OptionType;
using dalvo::testing::applied_rows;
using dalvo::testing::AppliedRow;
using dalvo::testing::CatalogueSetter;
using dalvo::testing::CommaLocale;
using dalvo::testing::differing_fields;
using dalvo::testing::filled;
using dalvo::testing::FullSetter;
using dalvo::testing::given_bool;
using dalvo::testing::given_int;
using dalvo::testing::GivenValue;
using dalvo::testing::GivenValues;
using dalvo::testing::RejectedValue;
using dalvo::testing::same_value;
using dalvo::testing::sentinel_record;
using dalvo::testing::set_field;
using dalvo::testing::type_name;
using dalvo::testing::unlisted_options;
using dalvo::testing::value_named;
using dalvo::testing::values_accepted;
using dalvo::testing::values_rejected;
using dalvo::testing::values_unlike;

using Names = std::vector<std::string>;

const std::vector<AppliedRow> rows = applied_rows();

/// An error's fields and text.
struct Thrown {
    std::string what;
    std::string option;
    std::string value;
    std::string command_line;

    bool operator==(const Thrown &other) const
    {
        return what == other.what && option == other.option && value == other.value &&
               command_line == other.command_line;
    }
};

std::ostream &operator<<(std::ostream &out, const Thrown &e)
{
    return out << e.what << " [" << e.option << "] [" << e.value << "] [" << e.command_line << "]";
}

/// The error of a value out of its option's range.
Thrown out_of_range(const std::string &name, const std::string &value)
{
    return {"invalid value for option " + name + ": " + name + ", value: " + value, name, value, ""};
}

/// Fills `record` and tells the error; none when nothing is thrown.
std::optional<Thrown> update(ConfigurationSetter &setter, Configuration &record)
{
    try {
        setter.update_config(&record);
        return std::nullopt;
    } catch (const OptionParser::error &e) {
        return Thrown{e.what(), e.option, e.value, e.command_line};
    }
}

void give(ConfigurationSetter &setter, const GivenValues &values)
{
    for (const auto &[name, given] : values) {
        setter.set_option(name, given.text, 0);
    }
}

using Assignments = std::vector<std::pair<std::string, std::string>>;

/// What a setter that was given `assignments` makes of `record`. Nothing may be thrown.
Configuration updated(Configuration record, const Assignments &assignments)
{
    FullSetter setter;
    for (const auto &[name, value] : assignments) {
        setter.set_option(name, value, 0);
    }
    EXPECT_EQ(update(setter, record), std::nullopt);
    return record;
}

void load(ConfigurationSetter &setter, const std::string &text, std::int32_t level = 2)
{
    std::istringstream in(text);
    setter.load(in, level);
}

// ---- The sequence ---------------------------------------------------------------------------------------------------

TEST(applied_options, are_the_rows_in_their_order_with_their_ranges)
{
    const std::vector<AppliedOption> applied = dalvo::applied_options();
    EXPECT_EQ(applied.size(), rows.size());
    for (std::size_t i = 0; i < std::min(applied.size(), rows.size()); ++i) {
        EXPECT_EQ(applied[i].name, rows[i].name) << "row " << i + 1;
        EXPECT_EQ(applied[i].type, rows[i].type) << "row " << i + 1 << ", " << rows[i].name;
        EXPECT_EQ(applied[i].accepted(), rows[i].accepted) << "row " << i + 1 << ", " << rows[i].name;
    }
}

TEST(applied_options, hold_the_two_acknowledgement_limits_twice_and_others_once)
{
    std::map<std::string, int> counts;
    for (const AppliedOption &option : dalvo::applied_options()) {
        ++counts[option.name];
    }
    EXPECT_EQ(counts.size(), 134U);
    for (const auto &[name, count] : counts) {
        const bool is_twice = name == "theory.euf.dyn_ack_threshold" || name == "theory.euf.dyn_ack_limit";
        EXPECT_EQ(count, is_twice ? 2 : 1) << name;
    }
}

// ---- Values that are there, and values that are not -----------------------------------------------------------------

TEST(update_config, leaves_the_record_alone_when_no_option_has_a_value)
{
    for (int variant = 0; variant < 2; ++variant) {
        const Configuration sentinel = sentinel_record(variant);
        const std::pair<const char *, std::unique_ptr<ConfigurationSetter>> setters[] = {
            {"no option registered", std::make_unique<ConfigurationSetter>()},
            {"the catalogue registered", std::make_unique<CatalogueSetter>()},
            {"every name registered", std::make_unique<FullSetter>()},
        };
        for (const auto &[why, setter] : setters) {
            Configuration record = sentinel;
            EXPECT_EQ(update(*setter, record), std::nullopt) << why;
            EXPECT_EQ(differing_fields(record, sentinel), Names()) << why;
        }
    }
}

TEST(update_config, stores_each_row_into_its_field_and_nothing_else)
{
    for (const AppliedRow &row : rows) {
        for (const GivenValue &given : values_accepted(row)) {
            for (int variant = 0; variant < 2; ++variant) {
                const GivenValues values = {{row.name, given}};
                FullSetter setter;
                give(setter, values);
                Configuration record = sentinel_record(variant);
                const Configuration expected = filled(record, rows, values, rows.size());
                EXPECT_EQ(update(setter, record), std::nullopt) << row.name << " = " << given.text;
                EXPECT_EQ(differing_fields(record, expected), Names())
                    << row.name << " = " << given.text;
            }
        }
    }
}

TEST(update_config, leaves_the_field_of_the_one_option_without_a_value)
{
    for (int variant = 0; variant < 2; ++variant) {
        const Configuration sentinel = sentinel_record(variant);
        GivenValues all = values_unlike(sentinel);
        for (const char *forcing : {"interpolation", "theory.arr.enable_nonlinear_strat"}) {
            all[forcing] = given_bool(false);
        }
        all["unsat_core_generation"] = given_int(0);
        for (const AppliedRow &row : rows) {
            GivenValues values = all;
            values.erase(row.name);
            FullSetter setter;
            give(setter, values);
            Configuration record = sentinel;
            EXPECT_EQ(update(setter, record), std::nullopt) << row.name;
            EXPECT_TRUE(same_value(value_named(record, row.field), value_named(sentinel, row.field))) << row.name;
            EXPECT_EQ(differing_fields(record, filled(sentinel, rows, values, rows.size())), Names()) << row.name;
        }
    }
}

TEST(update_config, keeps_the_thirteen_other_fields_of_the_inner_engines)
{
    const Names others = {"store_tlemmas",
                          "minimize_model",
                          "allsat_minimize_model",
                          "pop_btpoint_reset_var_order",
                          "interpolation_mode",
                          "proof_simplification",
                          "preprocessor_mode",
                          "preprocessor_clause_size_limit",
                          "preprocessor_subsumption_size_limit",
                          "preprocessor_elimination_grow_limit",
                          "preprocessor_elimination_phase",
                          "preprocessor_elimination_recent_vars_only",
                          "preprocessor_try_reelimination"};
    std::set<std::string> kept;
    for (const std::string &name : others) {
        kept.insert("theory_bv_lazydpll." + name);
        kept.insert("theory_fp_dpll." + name);
    }
    ASSERT_EQ(kept.size(), 26U);
    for (int variant = 0; variant < 2; ++variant) {
        const Configuration sentinel = sentinel_record(variant);
        FullSetter setter;
        give(setter, values_unlike(sentinel));
        for (const std::int32_t core : {0, 1, 2, -1}) {
            setter.set_option("unsat_core_generation", std::to_string(core), 0);
            Configuration record = sentinel;
            EXPECT_EQ(update(setter, record), std::nullopt);
            for (const std::string &name : kept) {
                EXPECT_TRUE(same_value(value_named(record, name), value_named(sentinel, name))) << name;
            }
            if (core == 0) { // every other field is written
                std::size_t differing = differing_fields(record, sentinel).size();
                EXPECT_GE(differing, 160U - 26U - 3U) << "Booleans forced back to what they were";
            }
        }
    }
}

TEST(update_config, rejects_the_first_value_out_of_each_range)
{
    std::size_t rejecting_rows = 0;
    for (const AppliedRow &row : rows) {
        const std::vector<RejectedValue> rejected = values_rejected(row);
        rejecting_rows += rejected.empty() ? 0 : 1;
        for (const RejectedValue &bad : rejected) {
            FullSetter setter;
            setter.set_option(row.name, bad.text, 0);
            Configuration record = sentinel_record(0);
            EXPECT_EQ(update(setter, record), out_of_range(row.name, bad.shown)) << row.name << " = " << bad.text;
            Configuration expected = sentinel_record(0);
            if (row.name == "unsat_core_generation") {
                expected.unsat_core_generation = std::stoi(bad.text);
            }
            EXPECT_EQ(differing_fields(record, expected), Names()) << row.name << " = " << bad.text;
        }
    }
    EXPECT_EQ(rejecting_rows, 36U);
}

TEST(update_config, writes_the_rows_before_a_rejected_value_and_none_after_it)
{
    for (int variant = 0; variant < 2; ++variant) {
        const Configuration sentinel = sentinel_record(variant);
        for (const std::int32_t core : {0, 1, 2, -1}) {
            GivenValues values = values_unlike(sentinel);
            values["unsat_core_generation"] = given_int(core);
            FullSetter setter;
            give(setter, values);
            for (std::size_t i = 0; i < rows.size(); ++i) {
                for (const RejectedValue &bad : values_rejected(rows[i])) {
                    setter.set_option(rows[i].name, bad.text, 0);
                    Configuration record = sentinel;
                    EXPECT_EQ(update(setter, record), out_of_range(rows[i].name, bad.shown));
                    Configuration expected = filled(sentinel, rows, values, i);
                    if (rows[i].name == "unsat_core_generation") {
                        expected.unsat_core_generation = std::stoi(bad.text);
                    }
                    EXPECT_EQ(differing_fields(record, expected), Names()) << rows[i].name << " = " << bad.text;
                }
                setter.set_option(rows[i].name, values.at(rows[i].name).text, 0);
            }
        }
    }
}

TEST(update_config, stops_at_the_first_of_several_rejected_values)
{
    FullSetter setter;
    setter.set_option("theory.fp.minmax_zero_mode", "5", 0);
    setter.set_option("random_seed", "0", 0);
    setter.set_option("verbosity", "3", 0);
    Configuration record = sentinel_record(0);
    EXPECT_EQ(update(setter, record), out_of_range("verbosity", "3"));
    setter.set_option("verbosity", "2", 0);
    EXPECT_EQ(update(setter, record), out_of_range("random_seed", "0"));
    setter.set_option("random_seed", "-1", 0);
    EXPECT_EQ(update(setter, record), out_of_range("theory.fp.minmax_zero_mode", "5"));
    setter.set_option("theory.fp.minmax_zero_mode", "4", 0);
    EXPECT_EQ(update(setter, record), std::nullopt);
    EXPECT_EQ(differing_fields(record, sentinel_record(0)),
              (Names{"verbosity", "random_seed", "theory_fp_minmax_zero_mode"}));
}

// ---- Ranges ---------------------------------------------------------------------------------------------------------

TEST(update_config, bounds_integers_on_one_side_only)
{
    constexpr std::int32_t lowest = std::numeric_limits<std::int32_t>::min();
    constexpr std::int32_t highest = std::numeric_limits<std::int32_t>::max();
    const struct {
        std::string name;
        std::int32_t value;
        bool accepted;
        const char *why;
    } cases[] = {
        {"verbosity", 3, false, "beyond the upper bound"},
        {"verbosity", 2, true, "the upper bound"},
        {"verbosity", -1, true, "compared signed"},
        {"verbosity", lowest, true, "compared signed"},
        {"verbosity", highest, false, "compared signed"},
        {"dpll.preprocessor.mode", -1, false, "compared unsigned"},
        {"dpll.preprocessor.mode", lowest, false, "compared unsigned"},
        {"dpll.preprocessor.mode", highest, false, "compared unsigned"},
        {"dpll.preprocessor.mode", 0, true, "the lower end"},
        {"dpll.preprocessor.mode", 1, true, "between"},
        {"dpll.preprocessor.mode", 2, true, "the upper end"},
        {"dpll.preprocessor.mode", 3, false, "beyond the upper end"},
        {"dpll.restart_strategy", -1, true, "compared signed"},
        {"dpll.restart_strategy", 3, true, "the upper bound"},
        {"dpll.restart_strategy", 4, false, "beyond the upper bound"},
        {"dpll.restart_strategy", 7, false, "beyond the upper bound"},
        {"random_seed", 0, false, "the hole"},
        {"random_seed", 1, true, "beside the hole"},
        {"random_seed", -1, true, "beside the hole"},
        {"random_seed", lowest, true, "the lowest integer"},
        {"random_seed", highest, true, "the highest integer"},
        {"dpll.preprocessor.elimination_phase", 0, false, "below the lower bound"},
        {"dpll.preprocessor.elimination_phase", 1, true, "the lower bound"},
        {"dpll.preprocessor.elimination_phase", -1, false, "below the lower bound"},
        {"dpll.preprocessor.elimination_phase", lowest, false, "below the lower bound"},
        {"dpll.preprocessor.elimination_phase", highest, true, "no upper bound"},
        {"preprocessor.ite_minimization_call_limit", 0, true, "the lower bound"},
        {"preprocessor.ite_minimization_call_limit", -1, false, "below the lower bound"},
        {"preprocessor.ite_minimization_call_limit", lowest, false, "below the lower bound"},
        {"preprocessor.ite_minimization_call_limit", highest, true, "no upper bound"},
        {"preprocessor.simplification", 15, true, "all bits of the set"},
        {"preprocessor.simplification", 16, false, "a bit too many"},
        {"preprocessor.simplification", -1, true, "compared signed"},
        {"preprocessor.toplevel_propagation_limit", lowest, true, "no bound"},
        {"preprocessor.toplevel_propagation_limit", highest, true, "no bound"},
        {"theory.fp.acdcl_single_propagation_limit", -1, true, "no bound"},
    };
    for (const auto &c : cases) {
        FullSetter setter;
        setter.set_option(c.name, std::to_string(c.value), 0);
        Configuration record = sentinel_record(1);
        const std::string text = std::to_string(c.value);
        EXPECT_EQ(update(setter, record), c.accepted ? std::nullopt : std::optional(out_of_range(c.name, text)))
            << c.name << " = " << c.value << ": " << c.why;
        const GivenValues values = {{c.name, given_int(c.value)}};
        const std::size_t end = c.accepted ? rows.size() : 0;
        EXPECT_EQ(differing_fields(record, filled(sentinel_record(1), rows, values, end)), Names())
            << c.name << " = " << c.value << ": " << c.why;
    }
}

TEST(update_config, tries_each_ranged_integer_at_the_ends_and_around_its_bounds)
{
    for (const AppliedRow &row : rows) {
        const dalvo::testing::Bounds bounds = dalvo::testing::bounds_of(row.accepted);
        if (row.type != dalvo::OPT_INT || row.accepted == "any" || row.name == "unsat_core_generation") {
            continue;
        }
        for (const std::int64_t value : {std::int64_t{std::numeric_limits<std::int32_t>::min()}, std::int64_t{-1000000},
                                         std::int64_t{-2}, std::int64_t{-1}, std::int64_t{0}, std::int64_t{1},
                                         bounds.highest.value_or(0) - 1, bounds.highest.value_or(0),
                                         bounds.highest.value_or(0) + 1, std::int64_t{1000000},
                                         std::int64_t{std::numeric_limits<std::int32_t>::max()}}) {
            const std::string text = std::to_string(value);
            FullSetter setter;
            setter.set_option(row.name, text, 0);
            Configuration record = sentinel_record(0);
            const bool accepted = bounds.accepts(value);
            EXPECT_EQ(update(setter, record), accepted ? std::nullopt : std::optional(out_of_range(row.name, text)));
            EXPECT_EQ(differing_fields(record, sentinel_record(0)), accepted ? Names{row.field} : Names())
                << row.name << " = " << value;
        }
    }
}

TEST(update_config, rejects_only_floats_that_compare_greater)
{
    constexpr double inf = std::numeric_limits<double>::infinity();
    const struct {
        const char *text;
        double stored; // where accepted
        const char *shown;
        const char *why;
    } cases[] = {
        {"1.0", 1.0, nullptr, "the bound itself"},
        {"1", 1.0, nullptr, "the bound itself"},
        {"1.00000001", 1.0, nullptr, "the nearest float is the bound"},
        {"-0.5", -0.5, nullptr, "negative values pass"},
        {"-1e30", static_cast<double>(-1e30F), nullptr, "negative values pass"},
        {"-inf", -inf, nullptr, "negative values pass"},
        {"nan", std::nan(""), nullptr, "NaN does not compare greater"},
        {"-nan", std::nan(""), nullptr, "NaN does not compare greater"},
        {"0.1", static_cast<double>(0.1F), nullptr, "read as a float, widened to double"},
        {"1e-45", static_cast<double>(std::numeric_limits<float>::denorm_min()), nullptr, "the smallest float"},
        {"1.0000001", 0, "1", "the next float; six digits show it as the bound"},
        {"1.0001", 0, "1.0001", "beyond"},
        {"1.5", 0, "1.5", "beyond"},
        {"1.50", 0, "1.5", "the number is shown, not the text"},
        {"2", 0, "2", "beyond"},
        {"1.23456789", 0, "1.23457", "six digits"},
        {"1234.5", 0, "1234.5", "no grouping"},
        {"123456", 0, "123456", "six digits"},
        {"1000000", 0, "1e+06", "scientific where shorter"},
        {"1234567", 0, "1.23457e+06", "scientific where shorter"},
        {"1e10", 0, "1e+10", "scientific where shorter"},
        {"3.4028235e38", 0, "3.40282e+38", "the largest float"},
        {"inf", 0, "inf", "infinity"},
    };
    const std::pair<const char *, const char *> options[] = {
        {"dpll.branching_random_frequency", "dpll.branching_random_frequency"},
        {"theory.bv.lazydpll.branching_random_frequency", "theory_bv_lazydpll.branching_random_frequency"},
        {"theory.fp.dpll.branching_random_frequency", "theory_fp_dpll.branching_random_frequency"},
    };
    for (const auto &[name, field] : options) {
        for (const auto &c : cases) {
            FullSetter setter;
            setter.set_option(name, c.text, 0);
            Configuration expected = sentinel_record(0);
            if (c.shown == nullptr) {
                set_field(expected, field, c.stored);
            }
            const auto error = c.shown == nullptr ? std::nullopt : std::optional(out_of_range(name, c.shown));
            Configuration record = sentinel_record(0);
            EXPECT_EQ(update(setter, record), error) << name << " = " << c.text << ": " << c.why;
            EXPECT_EQ(differing_fields(record, expected), Names()) << name << " = " << c.text << ": " << c.why;

            const CommaLocale comma;
            Configuration record_in_locale = sentinel_record(0);
            EXPECT_EQ(update(setter, record_in_locale), error) << name << " = " << c.text << " in a comma locale";
            EXPECT_EQ(differing_fields(record_in_locale, expected), Names()) << name << " = " << c.text;
        }
    }
}

TEST(update_config, accepts_any_growth_factor)
{
    constexpr double inf = std::numeric_limits<double>::infinity();
    const std::pair<const char *, double> cases[] = {
        {"1.5", 1.5},   {"0", 0.0},    {"-0", -0.0},          {"-3", -3.0},
        {"1e30", static_cast<double>(1e30F)}, {"0.1", static_cast<double>(0.1F)}, {"inf", inf},
        {"-inf", -inf}, {"nan", std::nan("")},
    };
    for (const char *prefix : {"dpll.", "theory.bv.lazydpll.", "theory.fp.dpll."}) {
        const std::string name = std::string(prefix) + "restart_geometric_factor";
        for (const auto &[text, stored] : cases) {
            const Configuration record = updated(sentinel_record(0), {{name, text}});
            const GivenValues values = {{name, {text, stored}}};
            EXPECT_EQ(differing_fields(record, filled(sentinel_record(0), rows, values, rows.size())), Names())
                << name << " = " << text;
        }
    }
}

TEST(update_config, shows_integers_without_grouping_in_any_locale)
{
    FullSetter setter;
    setter.set_option("verbosity", "1234567", 0);
    Configuration record;
    const CommaLocale comma;
    EXPECT_EQ(update(setter, record), out_of_range("verbosity", "1234567"));
    setter.set_option("verbosity", "2", 0);
    setter.set_option("dpll.preprocessor.mode", "-2147483648", 0);
    EXPECT_EQ(update(setter, record), out_of_range("dpll.preprocessor.mode", "-2147483648"));
}

TEST(update_config, shows_the_number_read_not_the_text_given)
{
    FullSetter setter;
    Configuration record;
    setter.set_option("verbosity", "+0003", 0);
    EXPECT_EQ(update(setter, record), out_of_range("verbosity", "3"));
    setter.set_option("verbosity", "-00", 0);
    setter.set_option("random_seed", "-0", 0);
    EXPECT_EQ(update(setter, record), out_of_range("random_seed", "0"));
}

// ---- Rows with effects of their own ---------------------------------------------------------------------------------

using Flag = std::optional<bool>;

std::string show(const Flag &flag)
{
    return flag ? (*flag ? "true" : "false") : "unset";
}

void assign(Assignments &assignments, const std::string &name, const Flag &flag)
{
    if (flag) {
        assignments.emplace_back(name, *flag ? "true" : "false");
    }
}

const Flag flags[] = {std::nullopt, false, true};

TEST(interpolation, forces_proofs_on_and_toplevel_propagation_off)
{
    for (int variant = 0; variant < 2; ++variant) {
        const Configuration sentinel = sentinel_record(variant);
        for (const Flag &interpolation : flags) {
            for (const Flag &proofs : flags) {
                for (const Flag &propagation : flags) {
                    Assignments given;
                    assign(given, "interpolation", interpolation);
                    assign(given, "proof_generation", proofs);
                    assign(given, "preprocessor.toplevel_propagation", propagation);
                    Configuration expected = sentinel;
                    expected.interpolation = interpolation.value_or(sentinel.interpolation);
                    expected.proof_generation = interpolation == true || proofs.value_or(sentinel.proof_generation);
                    expected.preprocessor_toplevel_propagation =
                        interpolation != true && propagation.value_or(sentinel.preprocessor_toplevel_propagation);
                    EXPECT_EQ(differing_fields(updated(sentinel, given), expected), Names())
                        << show(interpolation) << ", " << show(proofs) << ", " << show(propagation);
                }
            }
        }
    }
}

TEST(interpolation, overrides_an_explicit_toplevel_propagation)
{
    Configuration off;
    off.proof_generation = false;
    off.preprocessor_toplevel_propagation = true;
    for (const Assignments &given :
         {Assignments{{"interpolation", "true"}, {"preprocessor.toplevel_propagation", "true"}},
          Assignments{{"preprocessor.toplevel_propagation", "true"}, {"interpolation", "true"}},
          Assignments{{"proof_generation", "false"}, {"interpolation", "true"}}}) {
        const Configuration record = updated(off, given);
        EXPECT_TRUE(record.interpolation);
        EXPECT_TRUE(record.proof_generation);
        EXPECT_FALSE(record.preprocessor_toplevel_propagation);
    }
}

TEST(unsat_core_generation, forces_what_each_kind_of_core_needs)
{
    const struct {
        std::optional<std::int32_t> mode;
        bool forces_propagation_off;
        bool forces_proofs;
        bool forces_tlemmas;
    } modes[] = {
        {std::nullopt, false, false, false},
        {0, false, false, false},
        {1, true, true, false},
        {2, true, false, true},
        {-1, true, false, true},
        {std::numeric_limits<std::int32_t>::min(), true, false, true},
    };
    for (int variant = 0; variant < 2; ++variant) {
        const Configuration sentinel = sentinel_record(variant);
        for (const auto &m : modes) {
            for (const Flag &tlemmas : flags) {
                for (const Flag &proofs : flags) {
                    for (const Flag &propagation : flags) {
                        Assignments given;
                        if (m.mode) {
                            given.emplace_back("unsat_core_generation", std::to_string(*m.mode));
                        }
                        assign(given, "dpll.store_tlemmas", tlemmas);
                        assign(given, "proof_generation", proofs);
                        assign(given, "preprocessor.toplevel_propagation", propagation);
                        Configuration expected = sentinel;
                        expected.unsat_core_generation = m.mode.value_or(sentinel.unsat_core_generation);
                        expected.dpll.store_tlemmas = tlemmas.value_or(m.forces_tlemmas || sentinel.dpll.store_tlemmas);
                        expected.proof_generation = m.forces_proofs || proofs.value_or(sentinel.proof_generation);
                        expected.preprocessor_toplevel_propagation =
                            !m.forces_propagation_off &&
                            propagation.value_or(sentinel.preprocessor_toplevel_propagation);
                        EXPECT_EQ(differing_fields(updated(sentinel, given), expected), Names())
                            << m.mode.value_or(-99) << ", " << show(tlemmas) << ", " << show(proofs) << ", "
                            << show(propagation);
                    }
                }
            }
        }
    }
}

TEST(unsat_core_generation, yields_to_an_explicit_store_of_lemmas)
{
    Configuration record;
    record.dpll.store_tlemmas = false;
    EXPECT_TRUE(updated(record, {{"unsat_core_generation", "2"}}).dpll.store_tlemmas);
    EXPECT_FALSE(updated(record, {{"unsat_core_generation", "2"}, {"dpll.store_tlemmas", "false"}}).dpll.store_tlemmas);
    EXPECT_FALSE(updated(record, {{"dpll.store_tlemmas", "false"}, {"unsat_core_generation", "2"}}).dpll.store_tlemmas)
        << "the order of the rows counts, not that of the assignments";
}

TEST(unsat_core_generation, is_stored_before_it_is_rejected_without_its_effects)
{
    for (int variant = 0; variant < 2; ++variant) {
        for (const char *bad : {"3", "4", "2147483647"}) {
            for (const char *tlemmas : {"unset", "true", "false"}) {
                FullSetter setter;
                setter.set_option("unsat_core_generation", bad, 0);
                if (tlemmas != std::string("unset")) {
                    setter.set_option("dpll.store_tlemmas", tlemmas, 0);
                }
                Configuration record = sentinel_record(variant);
                EXPECT_EQ(update(setter, record), out_of_range("unsat_core_generation", bad));
                EXPECT_EQ(record.unsat_core_generation, std::stoi(bad));
                EXPECT_EQ(differing_fields(record, sentinel_record(variant)), Names{"unsat_core_generation"});
            }
        }
    }
}

TEST(nonlinear_strat, turns_the_nonlinear_set_on_and_never_off)
{
    for (int variant = 0; variant < 2; ++variant) {
        const Configuration sentinel = sentinel_record(variant);
        for (const Flag &strat : flags) {
            for (const Flag &nonlinear : flags) {
                Assignments given;
                assign(given, "theory.arr.enable_nonlinear_strat", strat);
                assign(given, "theory.arr.enable_nonlinear", nonlinear);
                Configuration expected = sentinel;
                expected.theory_arr_enable_nonlinear_strat =
                    strat.value_or(sentinel.theory_arr_enable_nonlinear_strat);
                expected.theory_arr_enable_nonlinear =
                    strat == true || nonlinear.value_or(sentinel.theory_arr_enable_nonlinear);
                EXPECT_EQ(differing_fields(updated(sentinel, given), expected), Names())
                    << show(strat) << ", " << show(nonlinear);
            }
        }
    }
}

std::string all_bytes_but(char left_out)
{
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte) {
        bytes += static_cast<char>(byte);
    }
    bytes.erase(bytes.find(left_out), 1);
    return bytes;
}

TEST(log_sections, are_split_at_commas_and_all_alone_stands_for_none)
{
    const struct {
        std::string text;
        Names expected;
        const char *why;
    } cases[] = {
        {"ALL", {}, "all sections"},
        {"ALL,sat", {"ALL", "sat"}, "one name among others"},
        {"sat,ALL", {"sat", "ALL"}, "one name among others"},
        {"ALL,ALL", {"ALL", "ALL"}, "two names"},
        {"ALL,", {"ALL", ""}, "two names"},
        {",ALL", {"", "ALL"}, "two names"},
        {"", {""}, "one empty name"},
        {",", {"", ""}, "two empty names"},
        {"sat", {"sat"}, "one name"},
        {"a,,b", {"a", "", "b"}, "an empty name stays"},
        {",a,,b,", {"", "a", "", "b", ""}, "empty names at the ends stay"},
        {" ALL", {" ALL"}, "no name is stripped"},
        {"ALL ", {"ALL "}, "no name is stripped"},
        {" a , b ", {" a ", " b "}, "no name is stripped"},
        {"all", {"all"}, "letters count in their case"},
        {"ALLs", {"ALLs"}, "the whole name counts"},
        {std::string("ALL\0", 4), {std::string("ALL\0", 4)}, "NUL is a byte as any"},
        {std::string("a\0b,\x80\xff", 6), {std::string("a\0b", 3), "\x80\xff"}, "any bytes"},
        {all_bytes_but(','), {all_bytes_but(',')}, "only commas split"},
        {"c,a,b,a", {"c", "a", "b", "a"}, "the order stays, repeated names too"},
    };
    for (const auto &c : cases) {
        FullSetter setter;
        setter.set_option("debug.log_sections", c.text, 0);
        Configuration record = sentinel_record(0);
        EXPECT_EQ(update(setter, record), std::nullopt);
        EXPECT_EQ(record.debug_log_sections, c.expected) << c.text << ": " << c.why;
        record.debug_log_sections = sentinel_record(0).debug_log_sections;
        EXPECT_EQ(differing_fields(record, sentinel_record(0)), Names()) << c.text;
    }
}

TEST(log_sections, replace_the_former_list_at_every_update)
{
    FullSetter setter;
    Configuration record;
    record.debug_log_sections = {"old", "older", "oldest"};
    setter.set_option("debug.log_sections", "a,b", 0);
    setter.update_config(&record);
    setter.update_config(&record);
    EXPECT_EQ(record.debug_log_sections, (Names{"a", "b"}));
    setter.set_option("debug.log_sections", "ALL", 0);
    setter.update_config(&record);
    EXPECT_EQ(record.debug_log_sections, Names());
}

// ---- Names that the catalogue leaves to hosts -----------------------------------------------------------------------

TEST(unlisted_options, have_no_value_until_they_are_registered_and_set)
{
    for (int variant = 0; variant < 2; ++variant) {
        const Configuration sentinel = sentinel_record(variant);
        const GivenValues values = values_unlike(sentinel);
        for (const auto &[name, type] : unlisted_options()) {
            CatalogueSetter setter;
            Configuration record = sentinel;
            EXPECT_THROW(setter.set_option(name, values.at(name).text, 0), OptionParser::error) << name;
            EXPECT_EQ(update(setter, record), std::nullopt) << name;
            EXPECT_EQ(differing_fields(record, sentinel), Names()) << name << ", not registered";
            setter.options().add_option(name, type, "a host's help text");
            EXPECT_EQ(update(setter, record), std::nullopt) << name;
            EXPECT_EQ(differing_fields(record, sentinel), Names()) << name << ", registered";
            setter.set_option(name, values.at(name).text, 0);
            EXPECT_EQ(update(setter, record), std::nullopt) << name;
            const GivenValues given = {{name, values.at(name)}};
            EXPECT_EQ(differing_fields(record, filled(sentinel, rows, given, rows.size())), Names()) << name;
            EXPECT_EQ(differing_fields(record, sentinel).size(), 1U) << name << ", set";
        }
    }
}

TEST(unlisted_options, registered_as_another_type_have_no_value)
{
    const std::map<OptionType, std::string> texts = {
        {dalvo::OPT_BOOL, "true"}, {dalvo::OPT_INT, "1"}, {dalvo::OPT_FLOAT, "1"}, {dalvo::OPT_STR, "true"}};
    for (const auto &[name, type] : unlisted_options()) {
        for (const auto &[other_type, text] : texts) {
            if (other_type == type) {
                continue;
            }
            CatalogueSetter setter;
            setter.options().add_option(name, other_type, "");
            setter.set_option(name, text, 0);
            for (int variant = 0; variant < 2; ++variant) {
                Configuration record = sentinel_record(variant);
                EXPECT_EQ(update(setter, record), std::nullopt) << name << " as " << type_name(other_type);
                EXPECT_EQ(differing_fields(record, sentinel_record(variant)), Names())
                    << name << " as " << type_name(other_type);
            }
        }
    }
}

TEST(update_config, reads_each_option_as_its_type_alone)
{
    const std::map<OptionType, GivenValue> given = {{dalvo::OPT_BOOL, {"true", true}},
                                                    {dalvo::OPT_INT, {"1", 1}},
                                                    {dalvo::OPT_FLOAT, {"0.5", 0.5}},
                                                    {dalvo::OPT_STR, {"x", std::string("x")}}};
    for (const auto &[type, value] : given) {
        ConfigurationSetter setter; // every name registered, all as this one type
        GivenValues values;
        for (const AppliedRow &row : rows) {
            if (setter.options().find_option(row.name) == nullptr) {
                setter.options().add_option(row.name, type, "");
                setter.set_option(row.name, value.text, 0);
            }
            if (row.type == type) {
                values[row.name] = row.name == "debug.log_sections" ? GivenValue{"x", Names{"x"}} : value;
            }
        }
        Configuration record = sentinel_record(0);
        EXPECT_EQ(update(setter, record), std::nullopt) << type_name(type);
        EXPECT_EQ(differing_fields(record, filled(sentinel_record(0), rows, values, rows.size())), Names())
            << type_name(type);
    }
}

// ---- Replay, repetition, levels -------------------------------------------------------------------------------------

TEST(update_config, leaves_the_record_alone_when_the_replay_fails)
{
    const struct {
        const char *text;
        const char *section;
        Thrown thrown;
        const char *why;
    } cases[] = {
        {"verbosity = 2\nutter_nonsense = 1\n", "",
         {"unknown option utter_nonsense: utter_nonsense, value: 1", "utter_nonsense", "1", ""}, "an unknown name"},
        {"verbosity = 2\nverbosity = loud\n", "",
         {"invalid value for option verbosity: verbosity, value: loud", "verbosity", "loud", ""}, "no integer"},
        {"verbosity = 2\n[fast]\nproof_generation = 2\n", "fast",
         {"invalid value for option proof_generation: proof_generation, value: 2", "proof_generation", "2", ""},
         "no Boolean, in the active section"},
        {"verbosity = 2\ndpll.branching_random_frequency = 1,5\n", "",
         {"invalid value for option dpll.branching_random_frequency: dpll.branching_random_frequency, value: 1,5",
          "dpll.branching_random_frequency", "1,5", ""}, "no float"},
    };
    for (const auto &c : cases) {
        FullSetter setter;
        setter.set_option("debug.api_call_trace", "1", 0); // the first row of all
        load(setter, c.text);
        setter.set_active_config(c.section);
        Configuration record = sentinel_record(0);
        EXPECT_EQ(update(setter, record), c.thrown) << c.why;
        EXPECT_EQ(differing_fields(record, sentinel_record(0)), Names()) << c.why;
        std::int32_t verbosity = 0;
        EXPECT_TRUE(setter.options().get_int_option("verbosity", &verbosity)) << c.why;
        EXPECT_EQ(verbosity, 2) << "the entry before stays applied: " << c.why;
    }
}

TEST(update_config, replays_the_unnamed_section_and_then_the_active_one_over_direct_values)
{
    FullSetter setter;
    load(setter, "random_seed = 20\ndpll.restart_initial = 21\n"
                 "[fast]\nrandom_seed = 30\n[slow]\nrandom_seed = 40\nverbosity = 1\n");
    setter.set_option("random_seed", "10", 0);
    setter.set_option("dpll.restart_initial", "11", 0);
    setter.set_option("theory.arr.max_wr_lemmas", "12", 0);
    const auto filled_with = [&](std::int32_t seed) {
        Configuration expected = sentinel_record(0);
        expected.random_seed = seed;
        expected.dpll.restart_initial = 21;
        expected.theory_arr_max_wr_lemmas = 12;
        return expected;
    };
    for (const auto &[section, seed] : {std::pair("", 20), std::pair("nowhere", 20), std::pair("Fast", 20),
                                        std::pair("fast", 30), std::pair("", 20)}) {
        setter.set_active_config(section);
        Configuration record = sentinel_record(0);
        EXPECT_EQ(update(setter, record), std::nullopt) << section;
        EXPECT_EQ(differing_fields(record, filled_with(seed)), Names()) << "section '" << section << "'";
    }
    setter.set_option("random_seed", "99", 0);
    Configuration record = sentinel_record(0);
    setter.update_config(&record);
    EXPECT_EQ(differing_fields(record, filled_with(20)), Names()) << "a section wins over a later direct value, too";
}

TEST(update_config, rejects_a_value_of_a_section_as_one_given_directly)
{
    FullSetter setter;
    load(setter, "[fast]\ndpll.restart_strategy = 7\ndpll.restart_initial = 5\nverbosity = 1\n");
    setter.set_active_config("fast");
    Configuration record = sentinel_record(0);
    EXPECT_EQ(update(setter, record), out_of_range("dpll.restart_strategy", "7"));
    EXPECT_EQ(differing_fields(record, sentinel_record(0)), Names{"verbosity"});
    EXPECT_EQ(record.verbosity, 1);
}

TEST(update_config, fills_one_record_after_the_other)
{
    FullSetter setter;
    const GivenValues values = values_unlike(sentinel_record(0));
    give(setter, values);
    for (int variant = 0; variant < 4; ++variant) {
        Configuration record = sentinel_record(variant);
        const Configuration expected = filled(record, rows, values, rows.size());
        for (int i = 0; i < 3; ++i) {
            EXPECT_EQ(update(setter, record), std::nullopt);
            EXPECT_EQ(differing_fields(record, expected), Names()) << "record " << variant << ", time " << i + 1;
        }
    }
}

TEST(update_config, starts_from_the_current_values_each_time)
{
    FullSetter setter;
    Configuration record = sentinel_record(0);
    setter.set_option("verbosity", "1", 0);
    setter.update_config(&record);
    EXPECT_EQ(record.verbosity, 1);
    record.verbosity = 77;
    record.random_seed = 78;
    setter.update_config(&record);
    EXPECT_EQ(record.verbosity, 1) << "a value overwrites what the host stored";
    EXPECT_EQ(record.random_seed, 78) << "no value leaves what the host stored";
    setter.set_option("verbosity", "2", 0);
    EXPECT_EQ(record.verbosity, 1) << "an assignment alone stores nothing";
    setter.update_config(&record);
    EXPECT_EQ(record.verbosity, 2);
    Configuration untouched = sentinel_record(1);
    Configuration other = sentinel_record(1);
    setter.update_config(&other);
    EXPECT_EQ(differing_fields(other, untouched), Names{"verbosity"}) << "nothing of one record reaches another";
}

TEST(update_config, can_be_called_again_after_a_rejected_value)
{
    FullSetter setter;
    const GivenValues values = values_unlike(sentinel_record(0));
    give(setter, values);
    setter.set_option("dpll.interpolation_mode", "3", 0);
    Configuration record = sentinel_record(0);
    EXPECT_EQ(update(setter, record), out_of_range("dpll.interpolation_mode", "3"));
    EXPECT_EQ(update(setter, record), out_of_range("dpll.interpolation_mode", "3"));
    setter.set_option("dpll.interpolation_mode", values.at("dpll.interpolation_mode").text, 0);
    EXPECT_EQ(update(setter, record), std::nullopt);
    EXPECT_EQ(differing_fields(record, filled(sentinel_record(0), rows, values, rows.size())), Names());
}

TEST(update_config, lets_no_level_decide)
{
    constexpr std::int32_t levels[] = {std::numeric_limits<std::int32_t>::min(), -1, 0, 1, 2, 3,
                                       std::numeric_limits<std::int32_t>::max()};
    for (const std::int32_t first : levels) {
        for (const std::int32_t second : levels) {
            FullSetter setter;
            setter.set_option("random_seed", "5", first);
            setter.set_option("random_seed", "6", second);
            load(setter, "verbosity = 1\n", first);
            load(setter, "verbosity = 2\n", second);
            Configuration record = sentinel_record(0);
            EXPECT_EQ(update(setter, record), std::nullopt);
            EXPECT_EQ(record.random_seed, 6) << first << ", then " << second;
            EXPECT_EQ(record.verbosity, 2) << first << ", then " << second;
            EXPECT_EQ(differing_fields(record, sentinel_record(0)), (Names{"verbosity", "random_seed"}));
        }
    }
}

TEST(applied_option, accepts_the_values_of_its_type_within_its_range)
{
    using dalvo::AppliedOption;
    const AppliedOption boolean{"b", dalvo::OPT_BOOL, {}, {}};
    const AppliedOption integer{"i", dalvo::OPT_INT, dalvo::at_most(3), {}};
    const AppliedOption any_integer{"j", dalvo::OPT_INT, {}, {}};
    const AppliedOption real{"r", dalvo::OPT_FLOAT, dalvo::at_most(1.0F), {}};
    const AppliedOption text{"t", dalvo::OPT_STR, {}, {}};
    const struct {
        const AppliedOption &option;
        dalvo::OptionParser::Value value;
        bool accepted;
    } cases[] = {
        {boolean, true, true},
        {boolean, 1, false},
        {boolean, {}, false},
        {integer, 3, true},
        {integer, 4, false},
        {integer, -1, true},
        {integer, 3.0F, false},
        {integer, {}, false},
        {any_integer, 4, true},
        {any_integer, true, false},
        {real, 1.0F, true},
        {real, 1.5F, false},
        {real, 1, false},
        {text, std::string(), true},
        {text, false, false},
        {text, {}, false},
    };
    for (const auto &c : cases) {
        EXPECT_EQ(c.option.accepts(c.value), c.accepted) << c.option.name << ", kind of value " << c.value.index();
    }
    EXPECT_EQ(boolean.accepted(), "any");
    EXPECT_EQ(integer.accepted(), "at most 3");
    EXPECT_EQ(real.accepted(), "at most 1");
}

} // namespace
