#include "dalvo/inspect/knowledge/relations.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "dalvo/inspect/knowledge/catalogue.h"
#include "dalvo/inspect/knowledge/links.h"
#include "tests/inspect/described.h"
#include "tests/support/golden.h"
#include "tests/support/settings.h"

namespace {

using namespace dalvo::inspect;
using dalvo::Condition;
using dalvo::testing::golden_rows;
using dalvo::testing::GoldenRow;
using dalvo::testing::mattering_when;
using dalvo::testing::needing;
using dalvo::testing::resolved;
using dalvo::testing::source_lines;
using dalvo::testing::split_row;

/// The rows of the golden file: first those of what matters when, {option, decider, condition}, in the order of the
/// catalogue, the deciders of an option by their names; then those of the needs, {option, when it does, needed option,
/// condition, "unsound" where answers may be wrong without it}.
std::vector<GoldenRow> golden_relations()
{
    std::vector<GoldenRow> rows;
    for (const std::string &line : source_lines("tests/golden/relations.tsv")) {
        rows.push_back(split_row(line));
    }
    return rows;
}

std::vector<GoldenRow> requirement_rows(const OptionInfo &option)
{
    std::vector<GoldenRow> rows;
    for (const Requirement &requirement : option.matters_when) {
        rows.push_back({option.name, requirement.option, requirement.condition.text()});
    }
    std::sort(rows.begin(), rows.end());
    return rows;
}

TEST(relations, are_those_of_the_golden_file)
{
    std::vector<GoldenRow> listed;
    std::vector<GoldenRow> needs;
    for (const OptionInfo &option : Catalogue::standard().options()) {
        const std::vector<GoldenRow> rows = requirement_rows(option);
        listed.insert(listed.end(), rows.begin(), rows.end());
        for (const Need &need : option.needs) {
            needs.push_back({option.name, need.when.text(), need.option, need.condition.text(),
                             need.is_for_soundness ? "unsound" : ""});
        }
    }
    listed.insert(listed.end(), needs.begin(), needs.end());
    const std::vector<GoldenRow> golden = golden_relations();
    for (std::size_t i = 0; i < std::min(listed.size(), golden.size()); ++i) {
        ASSERT_EQ(listed[i], golden[i]) << "line " << i + 1;
    }
    EXPECT_EQ(listed.size(), golden.size());
}

/// The options that decide whether `option` matters, and those that decide whether they do, and so on.
void collect_deciders(const OptionInfo &option, std::vector<std::string> &deciders)
{
    for (const Requirement &requirement : option.matters_when) {
        const OptionInfo *const decider = Catalogue::standard().find(requirement.option);
        ASSERT_NE(decider, nullptr) << requirement.option << " for " << option.name;
        if (std::find(deciders.begin(), deciders.end(), decider->name) == deciders.end()) {
            deciders.push_back(decider->name);
            collect_deciders(*decider, deciders);
        }
    }
}

TEST(relations, have_options_at_both_ends_and_lead_no_option_back_to_itself)
{
    for (const OptionInfo &option : Catalogue::standard().options()) {
        std::vector<std::string> deciders;
        collect_deciders(option, deciders);
        EXPECT_EQ(std::count(deciders.begin(), deciders.end(), option.name), 0) << option.name;
        for (const Need &need : option.needs) {
            EXPECT_NE(Catalogue::standard().find(need.option), nullptr) << need.option << " for " << option.name;
            EXPECT_NE(need.option, option.name);
        }
    }
}

/// Values of each type, some of which any condition here holds for, and some not.
std::vector<Value> sample_values()
{
    std::vector<Value> values = {false, true, std::string("x")};
    for (std::int32_t number = -2; number <= 20; ++number) {
        values.emplace_back(number);
        values.emplace_back(static_cast<float>(number) / 4.0F);
    }
    return values;
}

/// Whether `condition` holds for a value that the option `name` accepts; and whether it fails for one.
void expect_to_decide(const std::string &name, const Condition &condition)
{
    const OptionInfo *const option = Catalogue::standard().find(name);
    ASSERT_NE(option, nullptr) << name;
    bool holds = false;
    bool fails = false;
    for (const Value &value : sample_values()) {
        if (option->accepts(value)) {
            (condition.holds(number_of(value)) ? holds : fails) = true;
        }
    }
    EXPECT_TRUE(holds) << name << " never " << condition.text();
    EXPECT_TRUE(fails) << name << " always " << condition.text();
    const bool is_bool = condition.test == Condition::Test::equal_bool;
    EXPECT_EQ(is_bool, option->type == dalvo::OPT_BOOL) << name << " " << condition.text() << ": words for a number";
}

TEST(relations, have_conditions_that_accepted_values_meet_and_others_that_do_not)
{
    for (const OptionInfo &option : Catalogue::standard().options()) {
        for (const Requirement &requirement : option.matters_when) {
            expect_to_decide(requirement.option, requirement.condition);
        }
        for (const Need &need : option.needs) {
            expect_to_decide(option.name, need.when);
            expect_to_decide(need.option, need.condition);
        }
    }
}

TEST(needs, give_a_reason_that_can_stand_in_a_sentence)
{
    for (const OptionInfo &option : Catalogue::standard().options()) {
        for (const Need &need : option.needs) {
            ASSERT_FALSE(need.reason.empty()) << option.name;
            EXPECT_TRUE(std::islower(static_cast<unsigned char>(need.reason.front()))) << need.reason;
            EXPECT_NE(need.reason.back(), '.') << need.reason;
        }
    }
}

TEST(relations, are_none_for_names_that_are_nearly_those_of_rows)
{
    for (const char *const name : {"", "interpolation", "theory", "theory.la", "theory.xy.enabled", "dpll.preprocessor",
                                   "restart_initial", "P.restart_initial", "dpll.restart_initial2",
                                   "Dpll.restart_initial"}) {
        EXPECT_TRUE(requirements_of(name).empty()) << name;
        EXPECT_TRUE(needs_of(name).empty()) << name;
        EXPECT_EQ(lowest_sensible_of(name), std::nullopt) << name;
    }
}

TEST(relations, of_names_that_the_library_reads_and_does_not_register_are_those_of_their_theory)
{
    for (const auto &[name, type] : dalvo::testing::unlisted_options()) {
        const std::vector<Requirement> found = requirements_of(name);
        const bool is_of_arrays = name.rfind("theory.arr.", 0) == 0;
        ASSERT_EQ(found.size(), is_of_arrays ? 1U : 0U) << name;
        if (is_of_arrays) {
            EXPECT_EQ(found[0].option, "theory.arr.enabled") << name;
            EXPECT_EQ(found[0].condition.text(), "is true") << name;
        }
    }
}

// ---- By positions ---------------------------------------------------------------------------------------------------

TEST(links, have_the_forces_of_the_golden_file_at_the_options_that_are_forced)
{
    const Catalogue &catalogue = Catalogue::standard();
    std::size_t forces = 0;
    for (std::size_t i = 0; i < catalogue.options().size(); ++i) {
        const std::string &forced = catalogue.options()[i].name;
        std::vector<GoldenRow> expected;
        for (const GoldenRow &row : golden_rows("forces.tsv", 5)) {
            if (row[2] == forced) {
                expected.push_back(row);
            }
        }
        std::vector<GoldenRow> linked;
        for (const Links::Forcer &forcer : catalogue.links().options.at(i).forced_by) {
            linked.push_back({catalogue.options().at(forcer.option).name, forcer.when.text(), forced,
                              forcer.value ? "true" : "false",
                              forcer.own_assignment_wins ? "unless assigned" : "always"});
        }
        EXPECT_EQ(linked, expected);
        forces += linked.size();
    }
    EXPECT_EQ(forces, golden_rows("forces.tsv", 5).size());
}

TEST(links, have_the_deciders_and_needs_of_each_option)
{
    const Catalogue &catalogue = Catalogue::standard();
    std::size_t needs = 0;
    std::size_t needed = 0;
    for (std::size_t i = 0; i < catalogue.options().size(); ++i) {
        const OptionInfo &option = catalogue.options()[i];
        const Links::Option &links = catalogue.links().options.at(i);
        EXPECT_EQ(links.initial, number_of(option.initial_value)) << option.name;
        ASSERT_EQ(links.deciders.size(), option.matters_when.size()) << option.name;
        for (std::size_t j = 0; j < links.deciders.size(); ++j) {
            EXPECT_EQ(links.deciders[j].option, catalogue.position(option.matters_when[j].option)) << option.name;
            EXPECT_EQ(links.deciders[j].condition.text(), option.matters_when[j].condition.text()) << option.name;
        }
        ASSERT_EQ(links.needs.size(), option.needs.size()) << option.name;
        needs += links.needs.size();
        for (std::size_t j = 0; j < links.needs.size(); ++j) {
            EXPECT_EQ(links.needs[j].option, catalogue.position(option.needs[j].option)) << option.name;
            EXPECT_EQ(links.needs[j].need, &option.needs[j]) << option.name;
        }
        for (const Links::Needed &by : links.needed_by) {
            EXPECT_EQ(by.need->option, option.name);
            EXPECT_EQ(by.need, &catalogue.options().at(by.option).needs.at(0));
            ++needed;
        }
    }
    EXPECT_EQ(needed, needs) << "each need stands at both of its ends";
}

TEST(main_engine_name, is_that_of_the_same_option_of_the_main_engine)
{
    const struct {
        const char *name;
        const char *expected;
    } rows[] = {
        {"theory.bv.lazydpll.restart_strategy", "dpll.restart_strategy"},
        {"theory.fp.dpll.ghost_filtering", "dpll.ghost_filtering"},
        {"dpll.restart_strategy", "dpll.restart_strategy"},
        {"theory.fp.mode", "theory.fp.mode"},
        {"theory.fp.dpll", "theory.fp.dpll"},
        {"verbosity", "verbosity"},
        {"", ""},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(main_engine_name(row.name), row.expected);
    }
}

// ---- Those of hosts -------------------------------------------------------------------------------------------------

const std::string group = "Cache options:";

TEST(described_relation, tells_when_an_option_matters)
{
    Catalogue catalogue;
    catalogue.describe("cache.on", dalvo::OPT_BOOL, group, "",
                       mattering_when("dpll.restart_strategy", dalvo::is_at_most(1)));
    catalogue.describe("cache.size", dalvo::OPT_INT, group, "", mattering_when("cache.on", dalvo::is(true)));
    const Resolution both = resolved(catalogue, "dpll.restart_strategy = 1\ncache.on = true");
    EXPECT_TRUE(both.find("cache.on")->has_effect());
    EXPECT_TRUE(both.find("cache.size")->has_effect());
    const Resolution first = resolved(catalogue, "dpll.restart_strategy = 2\ncache.on = true");
    ASSERT_EQ(first.find("cache.on")->unmet.size(), 1U);
    EXPECT_EQ(first.find("cache.on")->unmet[0].decider->name, "dpll.restart_strategy");
    EXPECT_EQ(first.find("cache.on")->unmet[0].condition.text(), "is at most 1");
    EXPECT_FALSE(first.find("cache.size")->has_effect()) << "its decider has no effect";
    const Resolution second = resolved(catalogue, "dpll.restart_strategy = 1");
    EXPECT_TRUE(second.find("cache.on")->has_effect());
    EXPECT_FALSE(second.find("cache.size")->has_effect());
}

TEST(described_relation, tells_what_a_value_needs)
{
    Catalogue catalogue;
    catalogue.describe("cache.file", dalvo::OPT_STR, group, "");
    catalogue.describe("cache.size", dalvo::OPT_INT, group, "",
                       needing(dalvo::is_above(9), "dpll.store_tlemmas", dalvo::is(true)));
    catalogue.describe("later", dalvo::OPT_INT, group, "");
    const Resolution unmet = resolved(catalogue, "cache.size = 10");
    for (const char *const name : {"cache.size", "dpll.store_tlemmas"}) {
        const std::vector<NeedInForce> &needs = unmet.find(name)->needs;
        ASSERT_EQ(needs.size(), 1U) << name;
        EXPECT_EQ(needs[0].option, catalogue.find("cache.size"));
        EXPECT_EQ(needs[0].need, &catalogue.find("cache.size")->needs.at(0));
        EXPECT_EQ(needs[0].need->reason, "it is stored there");
        EXPECT_TRUE(needs[0].need->is_for_soundness);
        EXPECT_FALSE(needs[0].is_met);
    }
    EXPECT_TRUE(resolved(catalogue, "cache.size = 9").find("cache.size")->needs.empty());
    const Resolution met = resolved(catalogue, "cache.size = 10\ndpll.store_tlemmas = true");
    EXPECT_TRUE(met.find("cache.size")->needs.at(0).is_met);
}

TEST(described_relation, of_a_name_that_the_library_reads_stands_beside_what_is_known_of_it)
{
    Catalogue catalogue;
    const OptionInfo &option = catalogue.describe("theory.arr.debug_data", dalvo::OPT_BOOL, group, "",
                                                  mattering_when("debug.solver_enabled", dalvo::is(true)));
    std::vector<std::string> deciders;
    for (const Requirement &requirement : option.matters_when) {
        deciders.push_back(requirement.option + " " + requirement.condition.text());
    }
    std::sort(deciders.begin(), deciders.end());
    EXPECT_EQ(deciders, (std::vector<std::string>{"debug.solver_enabled is true", "theory.arr.enabled is true"}));
}

TEST(described_relation, is_the_only_one_of_an_option_that_the_library_does_not_read)
{
    Catalogue catalogue;
    for (const char *const name : {"theory.la.window", "dpll.preprocessor.window", "theory.fp.acdcl_window"}) {
        EXPECT_TRUE(catalogue.describe(name, dalvo::OPT_INT, group, "").matters_when.empty()) << name;
    }
}

} // namespace
