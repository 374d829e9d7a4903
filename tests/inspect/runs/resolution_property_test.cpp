// What random runs come to, beside a setter that loads the same texts, and beside a second model.

#include <cstddef>
#include <iostream>
#include <map>
#include <optional>
#include <ostream>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "dalvo/configuration/appliedoptions.h"
#include "dalvo/configuration/configurationsetter.h"
#include "dalvo/inspect/runs/resolution.h"
#include "tests/inspect/random_runs.h"
#include "tests/inspect/shown_runs.h"
#include "tests/support/classic_locale.h"
#include "tests/support/records.h"
#include "tests/support/second_applier.h"
#include "tests/support/second_reader.h"
#include "tests/support/sections.h"
#include "tests/support/settings.h"

namespace {

namespace inspect = dalvo::inspect;

using dalvo::Configuration;
using dalvo::ConfigurationSetter;
using dalvo::OptionParser;
using dalvo::inspect::Catalogue;
using dalvo::inspect::fill_record;
using dalvo::inspect::OptionExtras;
using dalvo::inspect::Resolution;
using dalvo::inspect::Setting;
using dalvo::testing::ClassicCLocale;
using dalvo::testing::differing_fields;
using dalvo::testing::RandomRuns;
using dalvo::testing::RunPlan;
using dalvo::testing::SecondApplier;
using dalvo::testing::SecondEntry;
using dalvo::testing::SecondLine;
using dalvo::testing::SecondSections;
using dalvo::testing::Sections;
using dalvo::testing::sentinel_record;
using dalvo::testing::shown;

using Names = std::vector<std::string>;

/// An option of a host: without a range, of which a setter knows nothing.
struct HostOption {
    const char *name;
    dalvo::OptionType type;
    std::optional<std::string> default_text;
};

const std::vector<HostOption> &host_options()
{
    static const std::vector<HostOption> options = {
        {"shallow_incrementality", dalvo::OPT_BOOL, "true"}, {"debug.log_sections", dalvo::OPT_STR, "sat,theory"},
        {"theory.arr.debug_data", dalvo::OPT_BOOL, {}},      {"theory.arr.debug_filename", dalvo::OPT_STR, {}},
        {"host.number", dalvo::OPT_INT, "5"},                {"host.ratio", dalvo::OPT_FLOAT, {}},
        {"host.text", dalvo::OPT_STR, " \n"},
    };
    return options;
}

struct HostCatalogue : Catalogue {
    HostCatalogue() : Catalogue("verbosity = 1\ndpll.store_tlemmas = true\n[a]\nrandom_seed = 3\nhost.number = 6\n")
    {
        for (const HostOption &option : host_options()) {
            OptionExtras extras;
            extras.default_text = option.default_text;
            describe(option.name, option.type, "Host options:", "", extras);
        }
    }
};

/// A setter with the options of a catalogue, and their described defaults.
struct KnowingSetter : dalvo::testing::CatalogueSetter {
    explicit KnowingSetter(bool has_host_options)
    {
        for (const HostOption &option : host_options()) {
            if (has_host_options) {
                options().add_option(option.name, option.type, "");
                if (option.default_text) {
                    set_option(option.name, *option.default_text, 0);
                }
            }
        }
    }
};

/// What a setter says of a run.
struct Outcome {
    bool applies = false;
    Configuration record;                             ///< where it applies
    std::map<std::string, OptionParser::Value> values; ///< of the options that fill no field, the same
};

/// The sections of all texts of the plan; nothing where one is malformed.
std::optional<Sections> loaded(const RunPlan &plan, const Catalogue &catalogue)
{
    ConfigurationSetter loader;
    try {
        if (plan.has_default_text) {
            dalvo::testing::load_text(loader, catalogue.default_text());
        }
        for (const std::string &text : plan.texts) {
            dalvo::testing::load_text(loader, text);
        }
    } catch (const OptionParser::error &) {
        return std::nullopt;
    }
    return dalvo::testing::sections_of(loader);
}

Outcome outcome_of(const RunPlan &plan, const Catalogue &catalogue, bool has_host_options)
{
    Outcome outcome;
    const std::optional<Sections> sections = loaded(plan, catalogue);
    if (!sections || (!plan.section.empty() && sections->count(plan.section) == 0)) {
        return outcome;
    }
    KnowingSetter setter(has_host_options);
    try {
        for (const std::string &name : {std::string(), plan.section}) {
            const auto section = sections->find(name);
            for (std::size_t i = 0; section != sections->end() && i < section->second.size(); ++i) {
                setter.set_option(section->second[i].name, section->second[i].value, 0);
            }
        }
        for (const auto &[name, value] : plan.direct) {
            setter.set_option(name, value, 0);
        }
        setter.update_config(&outcome.record);
    } catch (const OptionParser::error &) {
        return outcome;
    }
    outcome.applies = true;
    for (const HostOption &option : host_options()) {
        if (has_host_options) {
            outcome.values[option.name] = setter.options().find_option(option.name)->value;
        }
    }
    return outcome;
}

/// The value in force of each option that fills a field, as a record has it.
std::map<std::string, OptionParser::Value> values_in(const Configuration &record)
{
    static const std::vector<dalvo::AppliedOption> rows = dalvo::applied_options();
    const std::vector<OptionParser::Value> values = dalvo::applied_values(record);
    std::map<std::string, OptionParser::Value> by_option;
    for (std::size_t row = 0; row < rows.size(); ++row) {
        by_option[rows[row].name] = values[row];
    }
    return by_option;
}

/// How often things happened: a property that holds of nothing proves nothing.
struct Counts {
    std::size_t applying = 0;
    std::size_t failing = 0;
    std::size_t forced = 0;         // to another value
    std::size_t forced_alike = 0;   // to the same value
    std::size_t own_wins = 0;       // dpll.store_tlemmas over unsat_core_generation
    std::size_t replaced_wrong = 0; // values out of range that a later line replaces, in runs that apply
    std::size_t of_section = 0;     // values from a chosen section
    std::size_t by_hand = 0;

    void add(const Resolution &resolution)
    {
        ++(resolution.applies() ? applying : failing);
        for (const Setting &setting : resolution.settings()) {
            forced += setting.is_forced() ? 1 : 0;
            forced_alike += !setting.is_forced() && !setting.forced_by.empty() ? 1 : 0;
            of_section += setting.origin && !setting.origin->section.empty() ? 1 : 0;
            by_hand += setting.origin && setting.origin->kind == inspect::Assigned::Kind::command_line ? 1 : 0;
        }
        const Setting &lemmas = *resolution.find("dpll.store_tlemmas");
        own_wins += lemmas.origin && resolution.record().unsat_core_generation == 2 ? 1 : 0;
        for (const char *name : {"verbosity", "random_seed", "dpll.branching_random_frequency"}) {
            for (const inspect::Assigned &assigned : resolution.assignments(name)) {
                const bool is_replaced = assigned.fate == inspect::Fate::replaced;
                replaced_wrong += resolution.applies() && is_replaced && !assigned.is_accepted ? 1 : 0;
            }
        }
    }
};

std::ostream &operator<<(std::ostream &out, const Counts &counts)
{
    return out << counts.applying << " runs apply, " << counts.failing << " do not; forced " << counts.forced
               << " times, to the same value " << counts.forced_alike << " times; " << counts.own_wins
               << " times an own assignment won over a force; out of range and replaced " << counts.replaced_wrong
               << " times; from sections " << counts.of_section << ", by hand " << counts.by_hand;
}

/// Whether the run comes to what a setter makes of it.
void compare_with_setter(const inspect::Run &run, const Resolution &resolution, const Outcome &expected)
{
    ASSERT_EQ(resolution.applies(), expected.applies);
    Configuration filled = sentinel_record(0);
    ASSERT_EQ(fill_record(run, &filled), expected.applies);
    if (!expected.applies) {
        ASSERT_EQ(differing_fields(filled, sentinel_record(0)), Names()) << "the record is left alone";
        return;
    }
    ASSERT_EQ(differing_fields(resolution.record(), expected.record), Names());
    ASSERT_EQ(differing_fields(filled, expected.record), Names());
    std::map<std::string, OptionParser::Value> values = values_in(expected.record);
    for (const Setting &setting : resolution.settings()) {
        const auto own = values.find(setting.option->name);
        const auto host = expected.values.find(setting.option->name);
        const OptionParser::Value &value = own != values.end() ? own->second : host->second;
        ASSERT_TRUE(inspect::same_value(setting.value, value))
            << setting.option->name << " is " << inspect::value_words(setting.value) << ", not "
            << inspect::value_words(value);
    }
}

TEST(resolution, comes_to_what_a_setter_makes_of_the_texts)
{
    const HostCatalogue host_catalogue;
    for (const bool has_host_options : {false, true}) {
        const Catalogue &catalogue = has_host_options ? host_catalogue : Catalogue::standard();
        RandomRuns runs(catalogue, 20261122);
        Counts counts;
        for (int i = 0; i < 1000; ++i) {
            const RunPlan plan = runs.next();
            SCOPED_TRACE(::testing::Message() << "run " << i << "\n" << plan);
            const inspect::Run run = run_of(plan, catalogue);
            const Resolution resolution(run);
            compare_with_setter(run, resolution, outcome_of(plan, catalogue, has_host_options));
            if (HasFatalFailure()) {
                return;
            }
            counts.add(resolution);
        }
        std::cout << counts << "\n";
        EXPECT_GT(counts.applying, 300U);
        EXPECT_GT(counts.failing, 300U);
        EXPECT_GT(counts.forced, 400U);
        EXPECT_GT(counts.forced_alike, 100U);
        EXPECT_GT(counts.own_wins, 30U);
        EXPECT_GT(counts.replaced_wrong, 10U);
        EXPECT_GT(counts.of_section, 400U);
        EXPECT_GT(counts.by_hand, 400U);
    }
}

TEST(resolution, leaves_nothing_behind_for_the_next_one)
{
    RandomRuns runs(Catalogue::standard(), 20261125);
    std::set<std::string> seen;
    for (int i = 0; i < 150; ++i) {
        RunPlan plan = runs.next();
        inspect::Run run = run_of(plan, Catalogue::standard());
        for (int change = 0; change < 3; ++change) {
            plan.section = runs.section();
            run.choose_section(plan.section);
            const inspect::Run fresh = run_of(plan, Catalogue::standard());
            const std::string all = shown(Resolution(run));
            ASSERT_EQ(all, shown(Resolution(fresh))) << plan;
            ASSERT_EQ(differing_fields(Resolution(run).record(), Resolution(fresh).record()), Names()) << plan;
            seen.insert(all);
        }
    }
    EXPECT_GT(seen.size(), 200U) << "what the runs come to differs";
}

/// The assignments that apply, with malformed headers and byte-order marks left out of account; nothing where there are
/// any.
std::optional<std::vector<SecondEntry>> applying_entries(const RunPlan &plan, const Catalogue &catalogue)
{
    std::vector<std::string> texts = plan.texts;
    if (plan.has_default_text) {
        texts.insert(texts.begin(), catalogue.default_text());
    }
    SecondSections sections;
    for (const std::string &text : texts) {
        if (text.substr(0, 3) == "\xEF\xBB\xBF" || dalvo::testing::file_second(sections, text, 0)) {
            return std::nullopt;
        }
    }
    std::vector<SecondEntry> entries = dalvo::testing::replayed_second(sections, plan.section);
    for (const auto &[name, value] : plan.direct) {
        entries.push_back({name, value, 0});
    }
    return entries;
}

/// Whether the entry, alone, is taken and can be filled in.
bool is_right(const SecondEntry &entry)
{
    static std::map<std::pair<std::string, std::string>, bool> known;
    const auto [found, is_new] = known.emplace(std::pair(entry.name, entry.value), false);
    if (is_new) {
        SecondApplier alone;
        Configuration record;
        found->second = Catalogue::standard().find(entry.name) != nullptr && !alone.assign(entry.name, entry.value) &&
                        !alone.fill(record);
    }
    return found->second;
}

TEST(resolution, comes_without_its_wrong_lines_to_what_a_second_model_says)
{
    const ClassicCLocale classic; // of the second model, which leaves floats to strtof
    RandomRuns runs(Catalogue::standard(), 20261126);
    std::size_t failing = 0;
    std::size_t left_out = 0;
    for (int i = 0; i < 1000; ++i) {
        const RunPlan plan = runs.next();
        const std::optional<std::vector<SecondEntry>> entries = applying_entries(plan, Catalogue::standard());
        if (!entries) {
            continue;
        }
        SecondApplier applier;
        for (const SecondEntry &entry : *entries) {
            if (is_right(entry)) {
                ASSERT_FALSE(applier.assign(entry.name, entry.value));
            } else {
                ++left_out;
            }
        }
        Configuration expected;
        ASSERT_FALSE(applier.fill(expected));
        const Resolution resolution(run_of(plan, Catalogue::standard()));
        ASSERT_EQ(differing_fields(resolution.record(), expected), Names()) << plan;
        const std::map<std::string, OptionParser::Value> values = values_in(expected);
        for (const Setting &setting : resolution.settings()) {
            ASSERT_TRUE(inspect::same_value(setting.value, values.at(setting.option->name)))
                << setting.option->name << "\n" << plan;
        }
        failing += resolution.applies() ? 0 : 1;
    }
    EXPECT_GT(failing, 200U);
    EXPECT_GT(left_out, 300U);
}

} // namespace
