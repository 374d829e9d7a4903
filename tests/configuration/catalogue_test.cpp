#include <algorithm>
#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "dalvo/configuration/configurationsetter.h"
#include "tests/support/golden.h"
#include "tests/support/records.h"
#include "tests/support/settings.h"

namespace {

using dalvo::Configuration;
using dalvo::ConfigurationSetter;
using dalvo::OptionParser;
using dalvo::OptionType;
using dalvo::testing::CatalogueSetter;
using dalvo::testing::differing_fields;
using dalvo::testing::golden_rows;
using dalvo::testing::GoldenRow;
using dalvo::testing::sentinel_record;
using dalvo::testing::type_name;
using dalvo::testing::type_named;
using dalvo::testing::unlisted_options;

using Names = std::vector<std::string>;

std::vector<GoldenRow> golden_catalogue()
{
    return golden_rows("catalogue.tsv", 4);
}

TEST(catalogue, registers_each_row_in_its_place_to_the_character)
{
    const CatalogueSetter setter;
    const auto &options = setter.options().options();
    const std::vector<GoldenRow> golden = golden_catalogue();
    EXPECT_EQ(options.size(), golden.size());
    for (std::size_t i = 0; i < std::min(options.size(), golden.size()); ++i) {
        const OptionParser::Option &option = options[i];
        const GoldenRow row = {option.group, option.name, type_name(option.type), option.help};
        EXPECT_EQ(row, golden[i]) << "row " << i + 1;
    }
}

TEST(catalogue, makes_each_name_known_with_its_type_and_group)
{
    const CatalogueSetter setter;
    std::set<std::string> names;
    for (const GoldenRow &row : golden_catalogue()) {
        EXPECT_TRUE(names.insert(row[1]).second) << row[1] << " stands twice";
        const OptionParser::Option *const option = setter.options().find_option(row[1]);
        ASSERT_NE(option, nullptr) << row[1];
        EXPECT_EQ(option->name, row[1]);
        EXPECT_EQ(option->type, type_named(row[2])) << row[1];
        EXPECT_EQ(option->group, row[0]) << row[1];
    }
}

TEST(catalogue, counts_its_options_by_type_and_by_group)
{
    const CatalogueSetter setter;
    std::map<OptionType, std::size_t> types;
    std::vector<std::pair<std::string, std::size_t>> groups; // in the order of their first option
    for (const OptionParser::Option &option : setter.options().options()) {
        ++types[option.type];
        if (groups.empty() || groups.back().first != option.group) {
            groups.emplace_back(option.group, 0);
        }
        ++groups.back().second;
    }
    const std::map<OptionType, std::size_t> expected_types = {
        {dalvo::OPT_BOOL, 69}, {dalvo::OPT_INT, 50}, {dalvo::OPT_FLOAT, 6}, {dalvo::OPT_STR, 2}};
    const std::vector<std::pair<std::string, std::size_t>> expected_groups = {
        {"General options:", 7},      {"Debug options:", 5}, {"Printer options:", 3},
        {"Preprocessor options:", 7}, {"DPLL options:", 24}, {"Theory options:", 81}};
    EXPECT_EQ(types, expected_types);
    EXPECT_EQ(groups, expected_groups);
}

TEST(catalogue, leaves_the_help_group_at_the_theory_options)
{
    const CatalogueSetter setter;
    EXPECT_EQ(setter.options().cur_help_group(), "Theory options:");
}

TEST(catalogue, registers_no_values)
{
    const CatalogueSetter setter;
    for (const OptionParser::Option &option : setter.options().options()) {
        EXPECT_FALSE(option.has_value()) << option.name;
        EXPECT_EQ(option.level, 0) << option.name;
    }
}

TEST(catalogue, is_registered_by_its_owner_not_by_the_constructor)
{
    ConfigurationSetter setter;
    EXPECT_TRUE(setter.options().options().empty());
    EXPECT_EQ(setter.options().cur_help_group(), "");
    setter.initialize_options();
    EXPECT_EQ(setter.options().options().size(), golden_catalogue().size());
}

TEST(catalogue, registered_a_second_time_is_rejected_and_stands)
{
    CatalogueSetter setter;
    try {
        setter.initialize_options();
        FAIL() << "registered twice";
    } catch (const OptionParser::error &e) {
        EXPECT_EQ(e.option, "verbosity");
    }
    EXPECT_EQ(setter.options().options().size(), golden_catalogue().size());
}

TEST(catalogue, takes_a_value_of_each_type_for_each_name)
{
    const std::map<OptionType, std::pair<std::string, std::string>> texts = {
        {dalvo::OPT_BOOL, {"on", "2"}},
        {dalvo::OPT_INT, {"-7", "1.5"}},
        {dalvo::OPT_FLOAT, {"1.5", "yes"}},
        {dalvo::OPT_STR, {"any text", ""}},
    };
    CatalogueSetter setter;
    for (const GoldenRow &row : golden_catalogue()) {
        const OptionType type = type_named(row[2]);
        const auto &[good, bad] = texts.at(type);
        ASSERT_NO_THROW(setter.set_option(row[1], good, 0)) << row[1];
        if (type != dalvo::OPT_STR) {
            EXPECT_THROW(setter.set_option(row[1], bad, 0), OptionParser::error) << row[1];
        }
        EXPECT_TRUE(setter.options().find_option(row[1])->has_value()) << row[1];
    }
}

TEST(catalogue, leaves_out_the_names_that_hosts_may_register)
{
    CatalogueSetter setter;
    EXPECT_EQ(unlisted_options().size(), 7U);
    for (const auto &[name, type] : unlisted_options()) {
        EXPECT_EQ(setter.options().find_option(name), nullptr) << name;
        try {
            setter.set_option(name, type == dalvo::OPT_BOOL ? "true" : "x", 0);
            ADD_FAILURE() << name << " took a value";
        } catch (const OptionParser::error &e) {
            EXPECT_EQ(e.option, name);
            EXPECT_EQ(std::string(e.what()).find("unknown option " + name), 0U) << e.what();
        }
    }
    Configuration record = sentinel_record(0);
    setter.update_config(&record);
    EXPECT_EQ(differing_fields(record, sentinel_record(0)), Names());
}

TEST(catalogue, knows_no_name_that_is_nearly_one_of_its_own)
{
    const CatalogueSetter setter;
    for (const char *name : {"", "Verbosity", "verbosity ", " verbosity", "verbosit", "dpll", "dpll.", "theory.fp.dpll",
                             "dpll_restart_strategy", "theory.bv.lazydpll.store_tlemmas",
                             "theory.fp.dpll.preprocessor.mode", "theory.bv.dpll.restart_strategy"}) {
        EXPECT_EQ(setter.options().find_option(name), nullptr) << name;
    }
    EXPECT_EQ(setter.options().find_option(std::string("verbosity\0", 10)), nullptr);
}

TEST(catalogue, repeats_eleven_options_of_the_main_engine_for_each_inner_one)
{
    const Names shared = {"restart_strategy",
                          "restart_initial",
                          "restart_geometric_factor",
                          "branching_random_frequency",
                          "branching_initial_phase",
                          "branching_cache_phase",
                          "branching_random_invalidate_phase_cache",
                          "branching_random_ignore_polarity",
                          "ghost_filtering",
                          "glucose_var_activity",
                          "glucose_learnt_minimization"};
    const struct {
        std::string prefix;
        std::size_t first_row;
        std::string engine;
    } families[] = {{"theory.bv.lazydpll.", 95, "BV in lazy mode"}, {"theory.fp.dpll.", 111, "FP"}};
    const CatalogueSetter setter;
    const auto &options = setter.options().options();
    ASSERT_EQ(options.size(), golden_catalogue().size());
    for (const auto &family : families) {
        for (std::size_t i = 0; i < shared.size(); ++i) {
            const OptionParser::Option &option = options[family.first_row - 1 + i];
            EXPECT_EQ(option.name, family.prefix + shared[i]);
            EXPECT_EQ(option.help, "\"dpll." + shared[i] + "\" option for the inner DPLL solver used by " +
                                       family.engine + ".");
            const OptionParser::Option *const main = setter.options().find_option("dpll." + shared[i]);
            ASSERT_NE(main, nullptr) << shared[i];
            EXPECT_EQ(option.type, main->type) << option.name;
        }
        const auto of_family = std::count_if(options.begin(), options.end(), [&](const OptionParser::Option &option) {
            return option.name.compare(0, family.prefix.size(), family.prefix) == 0;
        });
        EXPECT_EQ(of_family, 11) << family.prefix;
    }
}

TEST(catalogue, keeps_its_odd_help_texts)
{
    const CatalogueSetter setter;
    const auto help = [&](const std::string &name) {
        const OptionParser::Option *const option = setter.options().find_option(name);
        return option != nullptr ? option->help : "not registered: " + name;
    };
    const std::string of_bv_numbers = "Select the format for printing BV numbers.";
    EXPECT_EQ(help("printer.fp_number_format").find(of_bv_numbers), 0U);
    EXPECT_NE(help("printer.fp_number_format").find("BV encoding"), std::string::npos);
    EXPECT_EQ(help("dpll.proof_simplification"),
              "If true, perform proof simplification before computing interpolants.");
    EXPECT_EQ(help("theory.bv.proof_simplification"), help("dpll.proof_simplification"));
    EXPECT_EQ(help("verbosity"), "Set the vebosity level, between 0 and 2.");
}

} // namespace
