#include "dalvo/inspect/runs/settingstext.h"

#include <algorithm>
#include <random>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "dalvo/inspect/runs/explanation.h"
#include "tests/support/records.h"

namespace {

using namespace dalvo;
using namespace dalvo::inspect;
using dalvo::testing::differing_fields;
using Names = std::vector<std::string>;

/// Assignments to options and in an order of their own, each of a value that the option accepts and a text can say.
std::vector<std::pair<std::string, std::string>> random_assignments(std::mt19937 &random)
{
    const auto any_of = [&](const Names &texts) { return texts[random() % texts.size()]; };
    std::vector<std::pair<std::string, std::string>> assignments;
    for (std::size_t count = random() % 80; assignments.size() < count;) {
        const auto &options = Catalogue::standard().options();
        const OptionInfo &option = options[random() % options.size()];
        const std::string value =
            option.type == OPT_BOOL    ? any_of({"true", "false", "on", "0"})
            : option.type == OPT_INT   ? any_of({"-2", "-1", "0", "1", "2", "3", "7", "2147483647", "-2147483648"})
            : option.type == OPT_FLOAT ? any_of({"0.1", "1.2345678", "nan", "-inf", "1e-45", "-0", "0.333333333"})
                                       : any_of({"", "x = y", "# no comment", "[a]", "\xff", "\"quoted\""});
        if (option.accepts(option.parse(value))) {
            assignments.emplace_back(option.name, value);
        }
    }
    return assignments;
}

Run run_with(const std::vector<std::pair<std::string, std::string>> &assignments)
{
    dalvo::inspect::Run run;
    run.add_default();
    for (const auto &[name, value] : assignments) {
        run.assign(name, value, "a\n\r\x01 = b\n"); // comments have to stay on their lines
    }
    return run;
}

std::string written(const Resolution &resolution, const SettingsStyle &style)
{
    std::ostringstream out;
    write_settings(out, chosen_settings(resolution, style), style);
    return out.str();
}

/// The record that a text makes, behind the default text where `with_default`.
Configuration read_back(const std::string &text, bool with_default)
{
    dalvo::inspect::Run run;
    if (with_default) {
        run.add_default();
    }
    run.add_text("saved", text);
    Configuration record;
    EXPECT_TRUE(fill_record(run, &record)) << text;
    return record;
}

TEST(written_settings, read_back_to_the_same_record_to_the_last_digit)
{
    std::mt19937 random(1);
    for (int round = 0; round < 60; ++round) {
        const Resolution resolution(run_with(random_assignments(random)));
        ASSERT_TRUE(resolution.applies());
        const bool has_help = random() % 2 == 0;
        const bool has_origin = random() % 2 == 0;
        const std::string all = written(resolution, {false, has_help, has_origin});
        EXPECT_EQ(differing_fields(read_back(all, false), resolution.record()), Names()) << all;
        const std::string changed = written(resolution, {true, has_help, has_origin});
        EXPECT_EQ(differing_fields(read_back(changed, true), resolution.record()), Names()) << changed;
    }
}

TEST(written_settings, are_all_in_the_order_of_a_dump)
{
    dalvo::inspect::Run run;
    run.add_default();
    std::istringstream lines(written(Resolution(run), {}));
    std::ostringstream dumped;
    const Configuration record;
    ConfigurationSetter().dump(&record, dumped, "");
    std::istringstream expected(dumped.str());
    std::string name;
    for (std::string line, other; std::getline(expected, other);) {
        ASSERT_TRUE(std::getline(lines, line)) << other;
        EXPECT_EQ(line.substr(0, line.find(' ')), other.substr(0, other.find(' ')));
    }
    EXPECT_FALSE(std::getline(lines, name));
}

TEST(written_settings, have_their_notes_in_comment_lines_above_them)
{
    dalvo::inspect::Run run;
    run.add_default();
    run.add_text("solver.cfg", "[fast]\nverbosity = 2\n");
    run.choose_section("fast");
    run.assign("interpolation", "yes");
    const Resolution resolution(run);
    EXPECT_EQ(written(resolution, {true, true, true}),
              "# Set the vebosity level, between 0 and 2.\n# Accepted: at most 2\n# solver.cfg:2\nverbosity = 2\n"
              "\n# Enable proof generation.\n# Accepted: true or false\n"
              "# forced by interpolation = yes (command line)\nproof_generation = true\n"
              "\n# Enable interpolation.\n# Accepted: true or false\n# command line\ninterpolation = true\n"
              "\n# Enable propagation of toplevel facts.\n# Accepted: true or false\n"
              "# forced by interpolation = yes (command line)\npreprocessor.toplevel_propagation = false\n");
    EXPECT_EQ(origin_text(*resolution.find("random_seed")), "built-in default");
    EXPECT_EQ(origin_text(*Resolution(dalvo::inspect::Run()).find("random_seed")), "initial value");
}

TEST(written_settings, of_a_host_come_after_the_librarys)
{
    Catalogue catalogue;
    catalogue.describe("cache.entries", OPT_INT, "Cache:", "Entries.", {"7", {}, {}});
    catalogue.describe("cache.name", OPT_STR, "Cache:", "Name.");
    dalvo::inspect::Run run(catalogue);
    run.add_default();
    const std::string text = written(Resolution(run), {});
    EXPECT_EQ(text.substr(text.rfind("theory.")), "theory.fp.acdcl_generalization_fair = false\ncache.entries = 7\n")
        << "an option without a value is left out";
    run.assign("cache.name", "x");
    run.assign("cache.entries", "8");
    EXPECT_EQ(written(Resolution(run), {true, false, false}), "cache.entries = 8\ncache.name = x\n");
}

TEST(why_not_written, names_a_setting_whose_value_no_text_can_say)
{
    const struct {
        std::string value;
        std::string expected;
    } rows[] = {
        {"x", ""},
        {"x y", ""},
        {"a\nb", "printer.defines_prefix: no text can say its value: it has a line break"},
        {" x", "printer.defines_prefix: no text can say its value: it starts with white space"},
        {"x\r", "printer.defines_prefix: no text can say its value: it ends with white space"},
    };
    for (const auto &row : rows) {
        const Resolution resolution(run_with({{"printer.defines_prefix", row.value}}));
        EXPECT_EQ(why_not_written(chosen_settings(resolution, {})), row.expected) << row.value;
    }
}

} // namespace
