#include "tools/commands/presettexts.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <sstream>

#include <gtest/gtest.h>

#include "tests/tools/shell_session.h"
#include "tools/inspection/forcing.h"
#include "tools/commands/inputs.h"
#include "tools/commands/presetnames.h"
#include "tools/inspection/settings.h"

namespace {

using namespace dalvo::tools;

std::vector<Assignment> own_assignments(const std::string &preset)
{
    return read_preset(preset).sections.front().assignments;
}

/// The settings that differ from the built-in text's with `preset`, as "name=value ...", in the order of dump.
std::string changes(const std::string &preset)
{
    Inputs inputs;
    const std::vector<Setting> before = settings_of(record_of(applying_assignments(inputs)));
    inputs.presets = {preset};
    const std::vector<Setting> after = settings_of(record_of(applying_assignments(inputs)));
    std::string text;
    for (std::size_t i = 0; i < before.size(); ++i) {
        if (before[i].value != after[i].value) {
            text += (text.empty() ? "" : " ") + after[i].name + "=" + after[i].text();
        }
    }
    return text;
}

bool is_logic(const Preset &preset)
{
    return preset.name.rfind("QF_", 0) == 0;
}

/// Whether the name of a logic, without the "QF_", has one of `parts` in it.
bool has_any(const std::string &logic, const std::vector<std::string> &parts)
{
    for (const std::string &part : parts) {
        if (logic.find(part) != std::string::npos) {
            return true;
        }
    }
    return false;
}

/// The solver switches of `logic`, as its name says: "la laz euf arr bv fp", those that are on.
std::string named_theories(const std::string &logic)
{
    const bool la = has_any(logic, {"LRA", "LIA", "LIRA", "IDL", "RDL"});
    const bool fp = has_any(logic, {"FP"});
    return std::string(la ? "la " : "") + (has_any(logic, {"LIA", "LIRA", "IDL"}) ? "laz " : "") + "euf " +
           (logic.front() == 'A' ? "arr " : "") + (fp || has_any(logic, {"BV"}) ? "bv " : "") + (fp ? "fp " : "");
}

/// Those that are on once `preset` is read after a text that sets each switch to `before`.
std::string enabled_theories(const std::string &preset, const std::string &before)
{
    const std::vector<std::pair<std::string, std::string>> switches = {
        {"theory.la.enabled", "la"},   {"theory.la.laz_enabled", "laz"}, {"theory.euf.enabled", "euf"},
        {"theory.arr.enabled", "arr"}, {"theory.bv.enabled", "bv"},      {"theory.fp.enabled", "fp"},
    };
    std::vector<Assignment> assignments;
    for (const auto &[name, theory] : switches) {
        assignments.push_back({name, before, file_level, {"before", 1}, ""});
    }
    for (const Assignment &assignment : own_assignments(preset)) {
        assignments.push_back(assignment);
    }
    const std::vector<Setting> settings = settings_of(record_of(assignments));
    std::string text;
    for (const auto &[name, theory] : switches) {
        const bool counts = theory != "laz" || setting_named(settings, "theory.la.enabled").text() == "true";
        text += counts && setting_named(settings, name).text() == "true" ? theory + " " : "";
    }
    return text;
}

TEST(presets, of_a_logic_switch_on_what_its_name_says_and_nothing_else)
{
    std::size_t logics = 0;
    for (const Preset &preset : presets()) {
        if (is_logic(preset)) {
            ++logics;
            const std::string expected = named_theories(preset.name.substr(3));
            EXPECT_EQ(enabled_theories(preset.name, "true"), expected) << preset.name << " after all are on";
            EXPECT_EQ(enabled_theories(preset.name, "false"), expected) << preset.name << " after all are off";
        }
    }
    EXPECT_EQ(logics, 25U);
}

TEST(presets, change_what_is_asked_of_the_solver_and_what_that_forces)
{
    const struct {
        const char *preset;
        const char *expected;
        const char *why;
    } rows[] = {
        {"proofs", "proof_generation=true", "nothing else is needed"},
        {"interpolation", "proof_generation=true interpolation=true preprocessor.toplevel_propagation=false", "forced"},
        {"unsat-cores-proofs",
         "proof_generation=true unsat_core_generation=1 preprocessor.toplevel_propagation=false", "forced"},
        {"unsat-cores-lemmas",
         "unsat_core_generation=2 preprocessor.toplevel_propagation=false dpll.store_tlemmas=true",
         "the built-in text's own line for the lemmas is overruled"},
        {"models", "model_generation=true", "the restricted form is something else"},
    };
    std::size_t others = 0;
    for (const Preset &preset : presets()) {
        others += is_logic(preset) ? 0 : 1;
    }
    EXPECT_EQ(others, std::size(rows));
    for (const auto &row : rows) {
        EXPECT_EQ(changes(row.preset), row.expected) << row.why;
    }
}

TEST(presets, stand_before_any_header_and_assign_nothing_that_is_forced)
{
    for (const Preset &preset : presets()) {
        const Source source = read_preset(preset.name);
        EXPECT_EQ(source.sections.size(), 1U) << preset.name;
        const std::vector<Assignment> &assignments = source.sections.front().assignments;
        ASSERT_FALSE(assignments.empty()) << preset.name;
        const Forcing forcing(assignments);
        for (const Assignment &assignment : assignments) {
            EXPECT_FALSE(forcing.is_forced(assignment.name)) << preset.name << ": " << assignment.name;
        }
    }
}

TEST(presets, pass_check_without_a_warning)
{
    for (const Preset &preset : presets()) {
        const std::string command = "dalvo-config check --werror - 2>&1; echo status $?";
        EXPECT_EQ(dalvo::tests::output_of(command, preset.text), "status 0\n") << preset.name;
    }
}

TEST(presets, assign_each_option_once_and_none_of_a_theory_that_they_switch_off)
{
    for (const Preset &preset : presets()) {
        const std::vector<Assignment> assignments = own_assignments(preset.name);
        for (const Assignment &assignment : assignments) {
            std::size_t times = 0;
            bool is_off = false;
            for (const Assignment &other : assignments) {
                times += other.name == assignment.name ? 1 : 0;
                const std::string theory = other.name.substr(0, other.name.rfind('.') + 1);
                is_off = is_off || (other.name == theory + "enabled" && other.value == "false" &&
                                    other.name != assignment.name && assignment.name.rfind(theory, 0) == 0);
            }
            EXPECT_EQ(times, 1U) << preset.name << ": " << assignment.name;
            EXPECT_FALSE(is_off) << preset.name << ": " << assignment.name;
        }
    }
}

TEST(presets, have_a_summary_of_their_own_that_fits_a_line)
{
    std::vector<std::string> summaries;
    for (const Preset &preset : presets()) {
        const std::string summary = summary_of(preset);
        EXPECT_FALSE(summary.empty()) << preset.name;
        EXPECT_LE(preset.name.size() + summary.size(), 75U) << preset.name;
        EXPECT_EQ(std::count(summaries.begin(), summaries.end(), summary), 0) << preset.name;
        summaries.push_back(summary);
    }
}

TEST(presets, are_listed_in_the_documentation)
{
    std::string table = "| preset | for |\n|---|---|\n";
    for (const Preset &preset : presets()) {
        table += "| `" + preset.name + "` | " + summary_of(preset) + " |\n";
    }
    std::ifstream in(DALVO_SOURCE_DIR "/docs/presets.md", std::ios_base::binary);
    const std::string document{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    EXPECT_NE(document.find("\n" + table + "\n"), std::string::npos) << "the table is now:\n" << table;
}

TEST(summary_of, gives_the_first_comment_line_without_its_mark_and_stop)
{
    const struct {
        const char *text;
        const char *expected;
        const char *why;
    } rows[] = {
        {"# For this.\na = 1\n", "For this", "mark and full stop dropped"},
        {"# One.\n# Two.\n", "One", "the first line only"},
        {"# No line end", "No line end", "the text may end there"},
        {"#\na = 1\n", "", "nothing said"},
        {"", "", "nothing there"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(summary_of({"p", row.text}), row.expected) << row.why;
    }
}

TEST(unknown_preset, names_at_most_three_near_ones)
{
    const struct {
        const char *name;
        const char *expected;
        const char *why;
    } rows[] = {
        {"proof", "no preset 'proof' (did you mean proofs?)", "one"},
        {"qf_bv", "no preset 'qf_bv' (did you mean QF_BV or QF_ABV?)", "whatever the case; the nearest first"},
        {"QF_LA", "no preset 'QF_LA' (did you mean QF_LIA or QF_LRA?)", "equally near ones in their order"},
        {"QF_AUFLRA", "no preset 'QF_AUFLRA' (did you mean QF_UFLRA, QF_AUFLIA or QF_UFLIA?)", "no more than three"},
        {"zzz", "no preset 'zzz'", "none is near"},
        {"", "no preset ''", "none is near"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(unknown_preset(row.name), row.expected) << row.why;
    }
}

} // namespace
