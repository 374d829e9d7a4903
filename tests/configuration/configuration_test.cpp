#include "dalvo/configuration/configuration.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <set>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/golden.h"
#include "tests/support/record_fields.h"
#include "tests/support/records.h"

namespace {

using dalvo::Configuration;
using dalvo::DpllSettings;
using dalvo::testing::differing_fields;
using dalvo::testing::Field;
using dalvo::testing::fields_of;
using dalvo::testing::FieldValue;
using dalvo::testing::golden_rows;
using dalvo::testing::sentinel_record;
using dalvo::testing::set_field;
using dalvo::testing::value_named;
using dalvo::testing::value_of;

using Names = std::vector<std::string>;

/// Stands for a member of any type where only the number of members counts.
struct AnyMember {
    template <class T> operator T() const;
};

template <class T, std::size_t... I>
constexpr auto takes(std::index_sequence<I...>, int) -> decltype(T{(static_cast<void>(I), AnyMember{})...}, bool{})
{
    return true;
}

template <class T, std::size_t... I> constexpr bool takes(std::index_sequence<I...>, long)
{
    return false;
}

/// The number of members of the aggregate T.
template <class T, std::size_t N = 200> constexpr std::size_t member_count()
{
    if constexpr (N == 0 || takes<T>(std::make_index_sequence<N>(), 0)) {
        return N;
    } else {
        return member_count<T, N - 1>();
    }
}

/// Where a field lies and how much room it takes.
struct Extent {
    const unsigned char *begin;
    std::size_t size;
    std::size_t alignment;
};

Extent extent_of(const Field &field)
{
    return std::visit(
        [](auto *at) {
            using Type = std::remove_pointer_t<decltype(at)>;
            return Extent{reinterpret_cast<const unsigned char *>(at), sizeof(Type), alignof(Type)};
        },
        field.at);
}

std::string type_of(const Field &field)
{
    const Names types = {"bool", "int", "double", "string", "list"};
    return types[field.at.index()];
}

/// The member of the record that a field is or lies in.
std::string member_of(const Field &field)
{
    return field.name.substr(0, field.name.find('.'));
}

TEST(configuration, has_no_member_that_the_tests_do_not_know)
{
    Configuration record;
    std::set<std::string> names;
    std::set<std::string> members;
    for (const Field &field : fields_of(record)) {
        names.insert(field.name);
        members.insert(member_of(field));
    }
    EXPECT_EQ(members.size(), member_count<Configuration>());
    EXPECT_EQ(names.size(), members.size() - 3 + 3 * member_count<DpllSettings>()) << "three of them are engines";
}

TEST(configuration, holds_its_fields_in_their_order)
{
    Configuration record;
    const std::vector<Field> fields = fields_of(record);
    const auto *const begin = reinterpret_cast<const unsigned char *>(&record);
    EXPECT_EQ(extent_of(fields.front()).begin, begin);
    for (std::size_t i = 1; i < fields.size(); ++i) {
        const Extent before = extent_of(fields[i - 1]);
        const Extent extent = extent_of(fields[i]);
        EXPECT_TRUE(std::less<>()(before.begin, extent.begin)) << fields[i].name << " after " << fields[i - 1].name;
        // Alignment alone may come between: of the field, or of a sub-record at whose border it stands.
        const auto gap = static_cast<std::size_t>(extent.begin - (before.begin + before.size));
        const bool is_border = member_of(fields[i - 1]) != member_of(fields[i]) &&
                               (fields[i - 1].name + fields[i].name).find('.') != std::string::npos;
        EXPECT_LT(gap, is_border ? alignof(DpllSettings) : extent.alignment)
            << "a member stands between " << fields[i - 1].name << " and " << fields[i].name;
    }
    const Extent last = extent_of(fields.back());
    EXPECT_LT(static_cast<std::size_t>(begin + sizeof record - (last.begin + last.size)), alignof(Configuration));
}

TEST(configuration, holds_three_engines_of_one_layout_in_their_places)
{
    static_assert(std::is_same_v<decltype(Configuration::dpll), DpllSettings>);
    static_assert(std::is_same_v<decltype(Configuration::theory_bv_lazydpll), DpllSettings>);
    static_assert(std::is_same_v<decltype(Configuration::theory_fp_dpll), DpllSettings>);
    Configuration record;
    Names members; // each but once, a sub-record at its first field
    for (const Field &field : fields_of(record)) {
        if (members.empty() || members.back() != member_of(field)) {
            members.push_back(member_of(field));
        }
    }
    const auto before = [&](const std::string &member) {
        const auto found = std::find(members.begin(), members.end(), member);
        return found != members.begin() && found != members.end() ? *std::prev(found) : "nothing";
    };
    EXPECT_EQ(before("dpll"), "preprocessor_partial_nnf_conversion");
    EXPECT_EQ(before("theory_bv_lazydpll"), "theory_bv_proof_simplification");
    EXPECT_EQ(before("theory_fp_dpll"), "theory_fp_bit_blast_mode");
    EXPECT_EQ(members.front(), "verbosity");
    EXPECT_EQ(members.back(), "printer_defines_prefix");
}

TEST(configuration, types_each_field_as_its_option)
{
    Configuration record;
    const std::vector<Field> fields = fields_of(record);
    std::set<std::string> with_option;
    for (const auto &row : golden_rows("application.tsv", 4)) {
        const std::string type = row[0] == "debug.log_sections" ? "list" : row[1] == "float" ? "double" : row[1];
        EXPECT_EQ(type_of(dalvo::testing::field_named(record, row[3])), type) << row[3];
        with_option.insert(row[3]);
    }
    // The fields of the inner engines that have no option are of the type of the main engine's.
    for (const Field &field : fields) {
        const std::string name = field.name.substr(field.name.find('.') + 1);
        if (with_option.count(field.name) == 0) {
            EXPECT_EQ(type_of(field), type_of(dalvo::testing::field_named(record, "dpll." + name))) << field.name;
        }
    }
    std::size_t counts[5] = {};
    for (const Field &field : fields) {
        ++counts[field.at.index()];
    }
    EXPECT_EQ(counts[0], 88U) << "Booleans";
    EXPECT_EQ(counts[1], 62U) << "integers";
    EXPECT_EQ(counts[2], 6U) << "doubles";
    EXPECT_EQ(counts[3], 3U) << "strings";
    EXPECT_EQ(counts[4], 1U) << "lists";
}

TEST(configuration, is_of_plain_types)
{
    static_assert(sizeof(bool) == 1);
    static_assert(std::numeric_limits<double>::is_iec559 && std::numeric_limits<double>::digits == 53);
    static_assert(std::is_same_v<decltype(Configuration::verbosity), std::int32_t>);
    static_assert(std::is_same_v<decltype(Configuration::proof_generation), bool>);
    static_assert(std::is_same_v<decltype(Configuration::debug_api_call_trace_filename), std::string>);
    static_assert(std::is_same_v<decltype(Configuration::debug_log_sections), std::vector<std::string>>);
    static_assert(std::is_same_v<decltype(DpllSettings::restart_geometric_factor), double>);
    static_assert(std::is_aggregate_v<Configuration> && std::is_aggregate_v<DpllSettings>);
    static_assert(!std::is_polymorphic_v<Configuration> && std::is_standard_layout_v<Configuration>);
    static_assert(std::is_nothrow_move_constructible_v<Configuration>);
    EXPECT_EQ(DpllSettings{}.restart_initial, Configuration().dpll.restart_initial) << "an engine's own initial values";
}

TEST(configuration, names_each_field_after_its_option)
{
    const std::pair<std::string, std::string> engines[] = {
        {"dpll.", "dpll."}, {"theory.bv.lazydpll.", "theory_bv_lazydpll."}, {"theory.fp.dpll.", "theory_fp_dpll."}};
    for (const auto &row : golden_rows("application.tsv", 4)) {
        std::string prefix;
        std::string rest = row[0];
        for (const auto &[option_prefix, field_prefix] : engines) {
            if (row[0].compare(0, option_prefix.size(), option_prefix) == 0) {
                prefix = field_prefix;
                rest = row[0].substr(option_prefix.size());
            }
        }
        for (char &c : rest) {
            c = c == '.' ? '_' : c;
        }
        EXPECT_EQ(row[3], prefix + rest);
    }
}

TEST(configuration, starts_with_values_that_a_solver_could_start_with)
{
    const Configuration record;
    const std::pair<std::string, FieldValue> rows[] = {
        {"theory_la_enabled", true},         {"theory_euf_enabled", true},       {"theory_arr_enabled", true},
        {"theory_bv_enabled", true},         {"theory_fp_enabled", true},        {"debug_solver_enabled", true},
        {"proof_generation", false},         {"interpolation", false},           {"unsat_core_generation", 0},
        {"model_generation", false},         {"bool_model_generation", false},   {"debug_api_call_trace", 0},
        {"debug_dump_theory_lemmas", false}, {"theory_arr_debug_data", false},   {"theory_arr_debug_lemmas", false},
        {"verbosity", 0},                    {"debug_log_sections", Names()},    {"theory_arr_debug_filename", ""},
        {"printer_defines_prefix", ""},      {"shallow_incrementality", false},  {"allow_bool_function_args", false},
        {"preprocessor_free_input_propagation", false},
    };
    for (const auto &[name, expected] : rows) {
        EXPECT_TRUE(value_named(record, name) == expected) << name;
    }
    EXPECT_NE(record.random_seed, 0);
    for (const DpllSettings *engine : {&record.dpll, &record.theory_bv_lazydpll, &record.theory_fp_dpll}) {
        EXPECT_GE(engine->preprocessor_elimination_phase, 1);
    }
    EXPECT_EQ(differing_fields(record, Configuration()), Names()) << "two fresh records";
}

TEST(configuration, copies_every_field_and_shares_none)
{
    const Configuration original = sentinel_record(1);
    Configuration copy(original);
    EXPECT_EQ(differing_fields(copy, original), Names());
    Configuration assigned;
    assigned = original;
    EXPECT_EQ(differing_fields(assigned, original), Names());
    const Configuration other = sentinel_record(0);
    for (const Field &field : fields_of(copy)) {
        set_field(copy, field.name, value_named(other, field.name));
    }
    EXPECT_EQ(differing_fields(copy, other), Names());
    EXPECT_EQ(differing_fields(original, sentinel_record(1)), Names()) << "the original of a changed copy";
    EXPECT_EQ(differing_fields(assigned, original), Names()) << "the other copy";
    const Configuration moved(std::move(assigned));
    EXPECT_EQ(differing_fields(moved, original), Names());
}

TEST(record_comparison, names_each_field_that_differs)
{
    const Configuration before = sentinel_record(0);
    const Configuration other = sentinel_record(1);
    Configuration changed = before;
    Names all;
    for (const Field &field : fields_of(changed)) {
        all.push_back(field.name);
        const FieldValue kept = value_of(field);
        set_field(changed, field.name, value_named(other, field.name));
        EXPECT_EQ(differing_fields(before, changed), Names{field.name});
        EXPECT_EQ(differing_fields(changed, before), Names{field.name});
        set_field(changed, field.name, kept);
        EXPECT_EQ(differing_fields(before, changed), Names());
    }
    EXPECT_EQ(differing_fields(before, other), all);
}

TEST(record_comparison, takes_nan_for_equal_and_tells_zeros_apart)
{
    Configuration a;
    Configuration b;
    a.dpll.restart_geometric_factor = std::numeric_limits<double>::quiet_NaN();
    b.dpll.restart_geometric_factor = -std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(differing_fields(a, b), Names());
    b.dpll.restart_geometric_factor = 1.0;
    EXPECT_EQ(differing_fields(a, b), Names{"dpll.restart_geometric_factor"});
    a.dpll.restart_geometric_factor = 0.0;
    b.dpll.restart_geometric_factor = -0.0;
    EXPECT_EQ(differing_fields(a, b), Names{"dpll.restart_geometric_factor"});
}

TEST(sentinel_record, holds_a_value_of_its_own_in_each_field)
{
    const Configuration fresh;
    for (int variant = 0; variant < 4; ++variant) {
        Configuration record = sentinel_record(variant);
        std::vector<FieldValue> seen;
        for (const Field &field : fields_of(record)) {
            const FieldValue value = value_of(field);
            if (std::holds_alternative<bool>(value)) {
                continue;
            }
            EXPECT_FALSE(dalvo::testing::same_value(value, value_named(fresh, field.name))) << field.name;
            for (const FieldValue &other : seen) {
                EXPECT_FALSE(dalvo::testing::same_value(value, other)) << field.name;
            }
            seen.push_back(value);
        }
    }
    EXPECT_EQ(differing_fields(sentinel_record(2), sentinel_record(3)).size(), 160U);
    EXPECT_EQ(differing_fields(sentinel_record(1), sentinel_record(3)).size(), 160U - 88U) << "all but the Booleans";
}

} // namespace
