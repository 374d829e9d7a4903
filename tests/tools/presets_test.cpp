#include "tools/commands/presettexts.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <sstream>

#include <gtest/gtest.h>

#include "tests/tools/shell_session.h"
#include "dalvo/inspect/inspect.h"
#include "tools/output/diagnostics.h"

namespace {

using namespace dalvo::tools;
using dalvo::inspect::Value;

using dalvo::inspect::Resolution;
using dalvo::inspect::Run;
using dalvo::inspect::Setting;

Run run_after(const std::string &before, const std::string &preset)
{
    Run run;
    run.add_default();
    run.add_text("before", before);
    run.add_text(preset, preset_named(preset, "").text);
    return run;
}

/// The settings that differ from the built-in text's with `preset`, as "name=value ...", in the order of dump.
std::string changes(const std::string &preset)
{
    const Resolution resolution(run_after("", preset));
    std::string text;
    for (const Setting *const setting : chosen_settings(resolution, {true, false, false})) {
        text += (text.empty() ? "" : " ") + setting->option->name + "=" + dalvo::inspect::value_text(setting->value);
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
    std::string text_before;
    for (const auto &[name, theory] : switches) {
        text_before += name + " = " + before + "\n";
    }
    const Resolution resolution(run_after(text_before, preset));
    const auto is_on = [&](const std::string &name) { return resolution.find(name)->value == Value(true); };
    std::string text;
    for (const auto &[name, theory] : switches) {
        const bool counts = theory != "laz" || is_on("theory.la.enabled");
        text += counts && is_on(name) ? theory + " " : "";
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

TEST(presets, stand_before_any_header)
{
    for (const Preset &preset : presets()) {
        dalvo::inspect::Run run;
        run.add_text(preset.name, preset.text);
        ASSERT_EQ(run.sections().size(), 1U) << preset.name;
        EXPECT_GT(run.sections().front().assignments, 0U) << preset.name;
    }
}

TEST(presets, pass_check_without_a_warning_as_they_are_and_as_show_writes_them)
{
    for (const Preset &preset : presets()) {
        const std::string command = "dalvo-config check --werror - 2>&1; echo status $?";
        EXPECT_EQ(dalvo::tests::output_of(command, preset.text), "status 0\n") << preset.name;
        EXPECT_EQ(dalvo::tests::output_of("dalvo-config show --preset " + preset.name + " | " + command), "status 0\n")
            << "as show writes it: " << preset.name;
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

TEST(preset_named, tells_at_most_three_near_names_for_one_that_is_none)
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
        try {
            preset_named(row.name, "--preset");
            FAIL() << row.name;
        } catch (const Failure &e) {
            EXPECT_EQ(e.what(), std::string("--preset: ") + row.expected) << row.why;
            EXPECT_EQ(e.status, status_usage);
        }
    }
}

} // namespace
