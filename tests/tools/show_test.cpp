#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <set>
#include <sstream>
#include <string>
#include <variant>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/classic_locale.h"
#include "tools/output/diagnostics.h"
#include "tools/inspection/forcing.h"
#include "tools/commands/inputs.h"
#include "tools/inspection/optioninfo.h"
#include "tools/output/show_settings.h"

namespace {

using namespace dalvo;
using namespace dalvo::tools;
using dalvo::testing::ClassicStream;

using Assignments = std::vector<Assignment>;

Assignment assigned(const std::string &name, const std::string &value, const Place &place = {"command line", 0},
                    std::int32_t level = override_level)
{
    return {name, value, level, place, ""};
}

/// What the assignments of a text make of a fresh record.
Assignments assignments_in(const std::string &text)
{
    std::istringstream in(text);
    const Source source = read_source(in, "text", file_level);
    EXPECT_EQ(source.sections.size(), 1U);
    return source.sections.front().assignments;
}

std::string texts_of(const std::vector<Setting> &settings)
{
    std::string text;
    for (const Setting &setting : settings) {
        text += setting.name + " = " + setting.text() + "\n";
    }
    return text;
}

std::string shown(const Assignments &assignments, const Notes &notes)
{
    std::ostringstream out;
    write_settings_text(out, shown_settings(assignments, notes.origin), notes);
    return out.str();
}

/// Whether the text can say what the assignment makes: not where a negative number is written unsigned.
bool can_be_said(const Assignment &assignment)
{
    try {
        const std::vector<Setting> settings = settings_of(record_of({assignment}));
        const auto *const number = std::get_if<unsigned int>(&setting_named(settings, assignment.name).value);
        return number == nullptr || *number <= 0x7FFFFFFFU;
    } catch (const Failure &) {
        return false; // out of the option's range
    }
}

/// Accepted assignments to options and in an order of their own, some of one option twice.
Assignments random_assignments(std::mt19937 &random)
{
    const auto any_of = [&](const std::vector<std::string> &texts) { return texts[random() % texts.size()]; };
    Assignments assignments;
    const std::size_t count = random() % 80;
    while (assignments.size() < count) {
        const OptionInfo &option = all_options()[random() % all_options().size()];
        const std::string value =
            option.type == OPT_BOOL    ? any_of({"true", "false", "on", "0"})
            : option.type == OPT_INT   ? any_of({"-2", "-1", "0", "1", "2", "3", "7", "2147483647", "-2147483648"})
            : option.type == OPT_FLOAT ? any_of({"0.1", "1.5000001", "nan", "-inf", "1e-45", "-0", "0.333333333"})
                                       : any_of({"", "x = y", "# no comment", "[a]", "\xff", "\"quoted\""});
        const Place place = any_of({"a", "b"}) == "a" ? Place{"a\n\r\x01 = b\n", random() % 9 + 1} : Place{"b.cfg", 7};
        const Assignment assignment = assigned(option.name, value, place, file_level);
        if (can_be_said(assignment)) {
            assignments.push_back(assignment);
        }
    }
    return assignments;
}

TEST(show, writes_what_the_library_dumps)
{
    std::mt19937 random(1);
    for (int round = 0; round < 20; ++round) {
        const Assignments assignments = random_assignments(random);
        const Configuration record = record_of(assignments);
        ClassicStream dumped;
        ConfigurationSetter().dump(&record, dumped, "");
        EXPECT_EQ(shown(assignments, {}), dumped.str());
    }
}

TEST(show, writes_a_text_that_loads_to_the_same_settings_whatever_its_comments)
{
    std::mt19937 random(2);
    for (int round = 0; round < 10; ++round) {
        const Assignments assignments = random_assignments(random);
        const std::string expected = texts_of(settings_of(record_of(assignments)));
        for (const Notes &notes : {Notes{false, false}, Notes{true, false}, Notes{false, true}, Notes{true, true}}) {
            const std::string text = shown(assignments, notes);
            const Assignments read = assignments_in(text);
            EXPECT_EQ(read.size(), 127U);
            EXPECT_EQ(texts_of(settings_of(record_of(read))), expected) << text;
            EXPECT_EQ(shown(read, {true, false}), shown(assignments, {true, false}));
        }
    }
}

TEST(show, writes_changes_that_make_the_same_settings_out_of_the_defaults)
{
    std::mt19937 random(3);
    const Assignments defaults = applying_assignments({});
    for (int round = 0; round < 10; ++round) {
        Assignments assignments = defaults;
        const Assignments further = random_assignments(random);
        assignments.insert(assignments.end(), further.begin(), further.end());
        std::vector<ShownSetting> settings = shown_settings(assignments, true);
        settings.erase(std::remove_if(settings.begin(), settings.end(),
                                      [](const ShownSetting &setting) { return !setting.changed(); }),
                       settings.end());
        std::ostringstream out;
        write_settings_text(out, settings, {true, true});
        Assignments again = defaults;
        const Assignments read = assignments_in(out.str());
        EXPECT_EQ(read.size(), settings.size());
        again.insert(again.end(), read.begin(), read.end());
        EXPECT_EQ(texts_of(settings_of(record_of(again))), texts_of(settings_of(record_of(assignments))));
    }
}

TEST(show, finds_no_change_in_the_defaults_with_or_without_their_text)
{
    for (const Assignments &assignments : {applying_assignments({}), Assignments{}}) {
        for (const ShownSetting &setting : shown_settings(assignments, false)) {
            EXPECT_FALSE(setting.changed()) << setting.setting.name;
        }
    }
}

TEST(shown_setting, is_changed_by_another_value_or_another_text)
{
    struct Row {
        std::variant<bool, int, unsigned int, double, std::string> value;
        std::variant<bool, int, unsigned int, double, std::string> default_value;
        bool expected;
        const char *why;
    };
    const double nan = std::nan("");
    const Row rows[] = {
        {true, true, false, "the same"},
        {true, false, true, "another"},
        {-1, 0, true, "another"},
        {1.5, 1.5, false, "the same"},
        {std::nextafter(1.5, 2.0), 1.5, true, "another, though six digits do not tell"},
        {-0.0, 0.0, true, "equal, and written otherwise"},
        {nan, 0.0, true, "no number"},
        {nan, nan, false, "the same, though not equal"},
        {std::string(), std::string(), false, "the same"},
        {std::string("\0", 1), std::string(), true, "a byte more"},
    };
    for (const Row &row : rows) {
        const ShownSetting setting{{"a", row.value}, {"a", row.default_value}, {}};
        EXPECT_EQ(setting.changed(), row.expected) << row.why;
    }
}

TEST(origin, is_one_line_in_words)
{
    struct Row {
        Origin origin;
        std::string expected;
    };
    const Row rows[] = {
        {{}, "initial value"},
        {{{}, assigned("a", "1", {"built-in default", 12}, default_level)}, "built-in default"},
        {{{}, assigned("a", "1", {"built-in default", 12}, file_level)}, "built-in default:12"},
        {{{}, assigned("a", "1", {"dir/x.cfg", 3}, file_level)}, "dir/x.cfg:3"},
        {{{}, assigned("a", "1", {"preset QF_BV", 2}, file_level)}, "preset QF_BV:2"},
        {{{}, assigned("a", "1")}, "command line"},
        {{{}, assigned("a", "1", {"x\ny\r\x7f", 3}, file_level)}, "x\\ny\\r\\x7f:3"},
        {{{assigned("b", "yes", {"x\ny", 1}, file_level)}, {}}, "forced by b = yes (x\\ny:1)"},
        {{{assigned("b", "1\n2"), assigned("c", "", {"built-in default", 1}, default_level)}, {}},
         "forced by b = 1\\n2 (command line), c =  (built-in default)"},
        {{{assigned("b", "1")}, assigned("a", "1", {"x", 3}, file_level)}, "forced by b = 1 (command line)"},
    };
    for (const Row &row : rows) {
        EXPECT_EQ(row.origin.text(), row.expected);
    }
}

TEST(origin, is_found_only_when_asked_for)
{
    for (const bool asked : {true, false}) {
        for (const ShownSetting &setting : shown_settings({assigned("interpolation", "true")}, asked)) {
            const bool forced = setting.setting.name == "proof_generation" ||
                                setting.setting.name == "preprocessor.toplevel_propagation";
            EXPECT_EQ(setting.origin.forcers.size(), forced && asked ? 1U : 0U) << setting.setting.name;
            EXPECT_EQ(setting.origin.assignment.has_value(), asked && setting.setting.name == "interpolation");
        }
    }
}

/// The names of the options that `assignments` are to.
std::set<std::string> names_of(const std::vector<const Assignment *> &assignments)
{
    std::set<std::string> names;
    for (const Assignment *const assignment : assignments) {
        names.insert(assignment->name);
    }
    return names;
}

TEST(forcing, names_forced_options_and_all_that_force_them)
{
    struct Row {
        Assignments assignments;
        std::string name;
        std::set<std::string> forcers;
        const char *why;
    };
    const Assignment interpolation = assigned("interpolation", "true");
    const Assignment cores = assigned("unsat_core_generation", "1");
    const Assignment lemmas = assigned("unsat_core_generation", "2");
    const Assignment strat = assigned("theory.arr.enable_nonlinear_strat", "true");
    const Assignment off = assigned("proof_generation", "false");
    const Row rows[] = {
        {{}, "proof_generation", {}, "nothing is assigned"},
        {{interpolation}, "proof_generation", {"interpolation"}, "not assigned itself"},
        {{interpolation, off}, "proof_generation", {"interpolation"}, "whatever its own says"},
        {{off, interpolation}, "proof_generation", {"interpolation"}, "in either order"},
        {{interpolation, cores, off}, "proof_generation", {"interpolation", "unsat_core_generation"}, "two force it"},
        {{interpolation, lemmas, off}, "proof_generation", {"interpolation"}, "one of two"},
        {{interpolation, assigned("proof_generation", "true")}, "proof_generation", {}, "its own says the same"},
        {{interpolation, assigned("interpolation", "false")}, "proof_generation", {}, "replaced before it applies"},
        {{lemmas}, "dpll.store_tlemmas", {"unsat_core_generation"}, "not assigned itself"},
        {{lemmas, assigned("dpll.store_tlemmas", "false")}, "dpll.store_tlemmas", {}, "its own applies later"},
        {{strat}, "theory.arr.enable_nonlinear", {}, "true without it"},
        {{assigned("theory.arr.enable_nonlinear", "false"), strat}, "theory.arr.enable_nonlinear",
         {"theory.arr.enable_nonlinear_strat"}, "false without it"},
    };
    for (const Row &row : rows) {
        const Forcing forcing(row.assignments);
        EXPECT_EQ(forcing.is_forced(row.name), !row.forcers.empty()) << row.why;
        EXPECT_EQ(names_of(forcing.forcing(row.name)), row.forcers) << row.why;
        for (const std::string &forcer : row.forcers) {
            const std::vector<std::string> forced = forcing.forced_by(forcer);
            EXPECT_EQ(std::count(forced.begin(), forced.end(), row.name), 1) << row.why;
        }
    }
}

TEST(forcing, agrees_with_records_filled_for_each_question)
{
    std::mt19937 random(4);
    for (int round = 0; round < 2; ++round) {
        const Assignments assignments = random_assignments(random);
        const Forcing forcing(assignments);
        EXPECT_EQ(texts_of(forcing.settings()), texts_of(settings_of(record_of(assignments))));
        for (const Setting &setting : forcing.settings()) {
            const Assignment *last = nullptr;
            for (const Assignment &assignment : assignments) {
                last = assignment.name == setting.name ? &assignment : last;
            }
            ASSERT_EQ(forcing.winner(setting.name) != nullptr, last != nullptr) << setting.name;
            Assignments own;
            if (last != nullptr) {
                EXPECT_EQ(forcing.winner(setting.name)->value, last->value) << setting.name;
                own.push_back(*last);
            }
            const std::string alone = setting_named(settings_of(record_of(own)), setting.name).text();
            EXPECT_EQ(forcing.is_forced(setting.name), setting.text() != alone) << setting.name;
            EXPECT_EQ(forcing.is_forced(setting.name), !forcing.forcing(setting.name).empty()) << setting.name;
        }
    }
}

TEST(forcing, knows_no_option_that_the_catalogue_has_not)
{
    const Forcing forcing({assigned("interpolation", "true")});
    EXPECT_EQ(forcing.winner("no_such"), nullptr);
    EXPECT_TRUE(forcing.forced_by("no_such").empty());
    EXPECT_THROW(forcing.is_forced("no_such"), std::out_of_range);
}

} // namespace
