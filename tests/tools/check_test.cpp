#include "tools/inspection/check.h"

#include <algorithm>
#include <limits>
#include <map>
#include <functional>
#include <numeric>
#include <random>
#include <set>
#include <sstream>
#include <string>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

#include "dalvo/configuration/configurationsetter.h"
#include "dalvo/utils/editdistance.h"
#include "tests/support/classic_locale.h"
#include "tools/inspection/check_names.h"
#include "tools/output/excerpt.h"
#include "tools/inspection/optioninfo.h"
#include "tools/inspection/settings.h"
#include "tools/inspection/sources.h"

namespace {

using namespace dalvo;
using namespace dalvo::tools;
using dalvo::testing::ClassicStream;

// ---- Random texts ---------------------------------------------------------------------------------------------------

using Words = std::vector<std::string>;

const Words names = {
    "verbosity", "proof_generation", "interpolation", "model_generation", "unsat_core_generation", "random_seed",
    "preprocessor.toplevel_propagation", "preprocessor.ite_minimization_call_limit", "dpll.store_tlemmas",
    "dpll.preprocessor.mode", "dpll.preprocessor.elimination_phase", "dpll.branching_random_frequency",
    "dpll.restart_strategy", "theory.la.enabled", "theory.la.split_rat_eq", "theory.arr.enable_nonlinear",
    "theory.arr.enable_nonlinear_strat", "theory.bv.lazydpll.restart_strategy", "theory.euf.dyn_ack_threshold",
    "printer.defines_prefix",
};
const Words bad_names = {"verbostiy", "", "Verbosity", "debug.log_sections", "shallow_incrementality", "verbosity 1",
                         std::string("a\0b", 3), "\xEF\xBB\xBFverbosity", "]", "x[y]"};
const Words booleans = {"0", "1", "true", "false", "yes", "no"};
const Words numbers = {"1", "1", "+1", "01", "1", "0", "2"};
const Words odd_values = {"3", "-1", "16", "", "high", "1.5", "nan", "inf", "-inf", "1e50", "2147483648", "1 # one",
                          "\"1\"", "+1", "0.5", "=", std::string("1\0", 2), "\xFF", "ON", "99"};
const Words headers = {"[a]", "[b]", "[default]", "[a, b]", "[default, a]", "[a, a]", "[ c ]", "[a]]"};
const Words bad_headers = {"[", "[]", "[a", "[a] x", "[a,,b]", "[a,]", "[,a]", "[ ]"};
const Words others = {"", "# comment", "   ", "\t# [a", "\r"};

/// Texts in which about one line in `rarity` is wrong, so that there are many of either kind.
class Texts {
public:
    Texts(unsigned seed, unsigned slip_rarity) : random(seed), rarity(slip_rarity) {}

    std::string next()
    {
        std::string text;
        for (unsigned lines = 1 + below(14); lines > 0; --lines) {
            text += line() + (below(8) == 0 ? "\r\n" : "\n");
        }
        return below(4) == 0 ? text.substr(0, text.size() - 1) : text;
    }

private:
    unsigned below(unsigned bound) { return static_cast<unsigned>(random() % bound); }
    const std::string &one_of(const Words &words) { return words[below(static_cast<unsigned>(words.size()))]; }

    std::string line()
    {
        const bool slip = below(rarity) == 0;
        switch (below(10)) {
        case 0: return one_of(others);
        case 1:
        case 2: return one_of(slip ? bad_headers : headers);
        default: break;
        }
        const std::string name = slip && below(2) == 0 ? one_of(bad_names) : one_of(names);
        return name + (slip && below(6) == 0 ? "" : " = " + value_for(name, slip));
    }

    /// A value that the option is likely to accept, unless there is to be a slip.
    std::string value_for(const std::string &name, bool slip)
    {
        const OptionInfo *const option = find_option(name);
        if (slip || option == nullptr) {
            return one_of(odd_values);
        }
        return one_of(option->type == OPT_BOOL ? booleans : numbers);
    }

    std::mt19937 random;
    unsigned rarity;
};

/// Whether the library takes the text whichever of its sections is active.
bool is_accepted(const std::string &text)
{
    std::set<std::string> sections;
    try {
        ConfigurationSetter setter;
        std::istringstream in(text);
        setter.load(in, 2);
        for (const auto *node : setter.sections().table().buckets()) {
            for (; node != nullptr; node = node->next()) {
                sections.insert(node->value().first);
            }
        }
        for (const std::string &section : sections) {
            ConfigurationSetter fresh;
            fresh.initialize_options();
            std::istringstream again(text);
            fresh.load(again, 2);
            fresh.set_active_config(section);
            Configuration record;
            fresh.update_config(&record);
        }
    } catch (const OptionParser::error &) {
        return false;
    }
    return true;
}

bool has_error(const std::vector<Finding> &findings)
{
    return std::any_of(findings.begin(), findings.end(),
                       [](const Finding &finding) { return finding.severity == Severity::error; });
}

std::set<std::uint64_t> lines_with(const std::vector<Finding> &findings, Problem problem)
{
    std::set<std::uint64_t> lines;
    for (const Finding &finding : findings) {
        if (finding.problem == problem) {
            lines.insert(finding.line);
        }
    }
    return lines;
}

// ---- What must hold for all texts -----------------------------------------------------------------------------------

TEST(check_text, reports_an_error_exactly_when_some_active_section_makes_the_library_throw)
{
    unsigned accepted = 0;
    unsigned rejected = 0;
    for (const unsigned rarity : {3U, 12U, 40U}) {
        Texts texts(rarity, rarity);
        for (int i = 0; i < 1500; ++i) {
            const std::string text = texts.next();
            const bool expected = is_accepted(text);
            ASSERT_EQ(!has_error(check_text("f", text)), expected) << text;
            ++(expected ? accepted : rejected);
        }
    }
    EXPECT_GT(accepted, 1000U);
    EXPECT_GT(rejected, 1000U);
}

/// The records that an accepted text makes, one for each section that is active in turn.
std::vector<Configuration> records_of(const std::string &text)
{
    ConfigurationSetter sections;
    std::istringstream in(text);
    sections.load(in, 2);
    std::vector<Configuration> records;
    for (const auto *node : sections.sections().table().buckets()) {
        for (; node != nullptr; node = node->next()) {
            ConfigurationSetter setter;
            setter.initialize_options();
            std::istringstream again(text);
            setter.load(again, 2);
            setter.set_active_config(node->value().first);
            setter.update_config(&records.emplace_back());
        }
    }
    return records;
}

std::string shown_text(const Configuration &record)
{
    ClassicStream out;
    ConfigurationSetter().dump(&record, out, "");
    return out.str();
}

/// Whether the record holds a negative value of an option that is written unsigned, which no text can say.
bool is_beyond_text(const Configuration &record)
{
    return record.verbosity < 0 || record.theory_euf_dyn_ack_threshold < 0;
}

TEST(check_text, takes_what_is_shown_of_an_accepted_text_which_then_shows_the_same)
{
    Texts texts(17, 12);
    int shown_same = 0;
    int beyond = 0;
    for (int i = 0; i < 1500; ++i) {
        const std::string text = (i % 10 == 0 ? "verbosity = -1\n" : "") + texts.next();
        if (!is_accepted(text)) {
            continue;
        }
        for (const Configuration &record : records_of(text)) {
            const std::string shown = shown_text(record);
            const bool is_sayable = !is_beyond_text(record);
            EXPECT_EQ(has_error(check_text("shown", shown)), !is_sayable) << text;
            if (is_sayable) {
                EXPECT_EQ(shown_text(records_of(shown).front()), shown) << text;
            }
            ++(is_sayable ? shown_same : beyond);
        }
    }
    EXPECT_GT(shown_same, 500);
    EXPECT_GT(beyond, 10);
}

TEST(check_text, gives_findings_by_line_and_column_each_once)
{
    Texts texts(1, 4);
    for (int i = 0; i < 1000; ++i) {
        const std::string text = texts.next();
        const std::vector<Finding> findings = check_text("f", text);
        for (std::size_t at = 1; at < findings.size(); ++at) {
            const auto key = [&](const Finding &f) {
                return std::make_tuple(f.line, f.column, f.problem, f.text);
            };
            ASSERT_LT(key(findings[at - 1]), key(findings[at])) << text;
        }
    }
}

using Last = std::map<std::string, Assignment>;

Last last_of(const Section &section)
{
    Last last;
    for (const Assignment &assignment : section.assignments) {
        last[assignment.name] = assignment;
    }
    return last;
}

/// The lines whose assignments are the last ones of their section and do not come out as they would alone.
std::set<std::uint64_t> forced_lines(const std::string &text)
{
    std::istringstream in(text);
    const Source source = read_source(in, "f", 2);
    std::set<std::uint64_t> lines;
    for (const Section &section : source.sections) {
        const Last own = last_of(section);
        Last effective = own;
        const Last unnamed = last_of(source.sections.front());
        effective.insert(unnamed.begin(), unnamed.end());
        std::vector<Assignment> all;
        for (const auto &[name, assignment] : effective) {
            all.push_back(assignment);
        }
        const std::vector<Setting> settings = settings_of(record_of(all));
        for (const auto &[name, assignment] : own) {
            const std::vector<Setting> alone = settings_of(record_of({assignment}));
            if (setting_named(settings, name).text() != setting_named(alone, name).text()) {
                lines.insert(assignment.place.line);
            }
        }
    }
    return lines;
}

TEST(check_text, finds_forced_assignments_as_whole_records_show_them)
{
    Texts texts(2, 200);
    std::size_t forced = 0;
    for (int i = 0; i < 1500; ++i) {
        const std::string text = texts.next();
        const std::vector<Finding> findings = check_text("f", text);
        if (!has_error(findings)) {
            const std::set<std::uint64_t> expected = forced_lines(text);
            ASSERT_EQ(lines_with(findings, Problem::forced), expected) << text;
            forced += expected.size();
        }
    }
    EXPECT_GT(forced, 100U);
}

TEST(check_text, places_findings_within_their_lines)
{
    Texts texts(3, 3);
    for (int i = 0; i < 1000; ++i) {
        const std::string text = texts.next();
        std::vector<std::string> lines;
        std::istringstream in(text);
        for (std::string line; std::getline(in, line);) {
            lines.push_back(line);
        }
        for (const Finding &finding : check_text("a file", text)) {
            ASSERT_EQ(finding.file, "a file");
            ASSERT_GE(finding.line, 1U);
            ASSERT_LE(finding.line, lines.size()) << text;
            ASSERT_GE(finding.column, 1U);
            ASSERT_LE(finding.column, lines[finding.line - 1].size() + 1) << text;
            ASSERT_LE(finding.excerpt.caret, finding.excerpt.text.size()) << text;
        }
    }
}

TEST(check_text, says_nothing_about_an_empty_text)
{
    EXPECT_TRUE(check_text("f", "").empty());
    EXPECT_TRUE(check_text("f", "\n").empty());
}

// ---- What findings carry for programs -------------------------------------------------------------------------------

TEST(check_text, gives_suggestions_at_most_three_and_accepted_values)
{
    const std::vector<Finding> findings = check_text("f", "theory.xx.enabled = 1\nverbosity = 3\nrandom_seed = a\n");
    ASSERT_EQ(findings.size(), 3U);
    EXPECT_EQ(findings[0].option, "theory.xx.enabled");
    EXPECT_EQ(findings[0].suggestions.size(), 3U);
    EXPECT_EQ(findings[1].problem, Problem::out_of_range);
    EXPECT_EQ(findings[1].accepted, "at most 2");
    EXPECT_EQ(findings[2].problem, Problem::invalid_value);
    EXPECT_EQ(findings[2].accepted, "any but 0");
}

TEST(check_text, names_the_other_line)
{
    struct Row {
        const char *text;
        Problem problem;
        std::uint64_t line;
        std::uint64_t related;
    };
    const Row rows[] = {
        {"verbosity = 1\n\nverbosity = 1\n", Problem::replaced, 1, 3},
        {"[fast]\n[fasts]\n[fast]\n", Problem::similar_section, 2, 1},
        {"[fast]\n[fast]\n[fasts]\n[fasts]\n", Problem::similar_section, 3, 1},
        {"[defaults]\n", Problem::similar_section, 1, 0},
        {"[x]\ninterpolation = 1\nproof_generation = 0\n", Problem::forced, 3, 2},
        {"unsat_core_generation = 1\n[x]\nproof_generation = 0\n", Problem::forced, 3, 1},
        {"theory.fp.enabled = 0\n[x]\ntheory.fp.dpll.restart_initial = 5\n", Problem::disabled_theory, 3, 1},
    };
    for (const Row &row : rows) {
        const std::vector<Finding> findings = check_text("f", row.text);
        ASSERT_EQ(findings.size(), 1U) << row.text;
        EXPECT_EQ(findings[0].problem, row.problem) << row.text;
        EXPECT_EQ(findings[0].line, row.line) << row.text;
        EXPECT_EQ(findings[0].related_line, row.related) << row.text;
    }
}

TEST(check_text, forgets_a_sections_values_before_the_next_one)
{
    EXPECT_TRUE(check_text("f", "[x]\ninterpolation = 1\n[empty]\n[y]\nproof_generation = 0\n").empty());
    EXPECT_TRUE(check_text("f", "[x]\ntheory.la.enabled = 0\n[y]\ntheory.la.split_rat_eq = 1\n").empty());
    EXPECT_TRUE(check_text("f", "verbosity = 1\n[x]\nverbosity = 2\n[y]\nrandom_seed = 2\n").empty());
}

TEST(check_text, takes_values_for_unforced_that_a_record_holds_in_another_type)
{
    EXPECT_TRUE(check_text("f", "dpll.branching_random_frequency = nan\nrandom_seed = 2\n").empty());
    EXPECT_TRUE(check_text("f", "dpll.branching_random_frequency = 0.1\nrandom_seed = 2\n").empty());
    EXPECT_TRUE(check_text("f", "verbosity = -1\nrandom_seed = 2\n").empty());
}

// ---- Names of sections ----------------------------------------------------------------------------------------------

constexpr std::size_t nothing = std::numeric_limits<std::size_t>::max();

std::string without_digits(std::string name)
{
    name.erase(std::remove_if(name.begin(), name.end(), [](char c) { return c >= '0' && c <= '9'; }), name.end());
    return name;
}

TEST(slips, finds_what_comparing_all_pairs_finds)
{
    std::mt19937 random(5);
    const std::string letters = "ab1\xFF" "2c";
    for (int round = 0; round < 400; ++round) {
        std::set<std::string> chosen;
        for (int i = 0; i < 25; ++i) {
            std::string name;
            for (std::size_t size = 1 + random() % 6; size > 0; --size) {
                name += letters[random() % (2 + static_cast<std::size_t>(round) % 5)];
            }
            chosen.insert(name);
        }
        std::vector<std::string> all(chosen.begin(), chosen.end());
        std::shuffle(all.begin(), all.end(), random);
        const std::vector<std::size_t> found = slips({all.begin(), all.end()});
        ASSERT_EQ(found.size(), all.size());
        for (std::size_t i = 0; i < all.size(); ++i) {
            std::size_t expected = nothing;
            for (std::size_t j = 0; j < i && expected == nothing; ++j) {
                const bool is_swap = all[i].size() == all[j].size() &&
                                     std::inner_product(all[i].begin(), all[i].end(), all[j].begin(), 0, std::plus<>(),
                                                        std::not_equal_to<>()) > 1;
                const bool is_slip = str::edit_distance(all[i], all[j], 1) == 1 && !is_swap &&
                                     without_digits(all[i]) != without_digits(all[j]) &&
                                     std::max(all[i].size(), all[j].size()) > 1;
                expected = is_slip ? j : nothing;
            }
            ASSERT_EQ(found[i], expected) << all[i];
        }
    }
}

TEST(slips, looks_at_names_of_up_to_64_bytes)
{
    const std::string name(63, 'x');
    EXPECT_EQ(slips({name, name + "y"}), (std::vector<std::size_t>{nothing, 0}));
    EXPECT_EQ(slips({name + "y", name + "yz"}), (std::vector<std::size_t>{nothing, nothing}));
    EXPECT_TRUE(slips({}).empty());
}

// ---- Lines as they are shown ----------------------------------------------------------------------------------------

TEST(excerpt, keeps_the_caret_below_its_place)
{
    const std::string x50(50, 'x');
    struct Row {
        std::string line;
        std::size_t column;
        std::string text;
        std::size_t caret;
    };
    const Row rows[] = {
        {"", 1, "", 0},
        {"ab", 1, "ab", 0},
        {"ab", 3, "ab", 2},
        {"ab\r", 3, "ab", 2},
        {"ab\r", 4, "ab", 2},
        {"a\rb", 3, "a\\rb", 3},
        {"\t\ta", 3, "  a", 2},
        {std::string("\0a", 2), 2, "\\x00a", 4},
        {"\x1B[1m\x7F.", 6, "\\x1b[1m\\x7f.", 11},
        {"\xC3\xA4\xE2\x82\xAC.", 6, "\xC3\xA4\xE2\x82\xAC.", 2},
        {"\xC3.", 2, "\\xc3.", 4},
        {"\xC0\xAF.", 3, "\\xc0\\xaf.", 8},                         // overlong
        {"\xED\xA0\x80.", 4, "\\xed\\xa0\\x80.", 12},               // half of a pair
        {"\xF4\x90\x80\x80.", 5, "\\xf4\\x90\\x80\\x80.", 16},      // too large
        {"\xC2\x9B.", 3, "\\xc2\\x9b.", 8},                         // a control code
        {"\xC2\xA0.", 3, "\xC2\xA0.", 1},                           // no control code
        {"\xE2\x80\xAE.", 4, "\\xe2\\x80\\xae.", 12},               // turns the direction round
        {x50 + x50, 100, x50 + x50, 99},                            // not cut
        {x50 + x50 + "y", 1, x50 + x50 + "...", 0},                 // cut behind
        {x50 + "a" + x50, 51, x50 + "a" + std::string(49, 'x') + "...", 50},
        {"b" + x50 + "a" + x50, 52, "..." + x50 + "a" + std::string(46, 'x') + "...", 53},
        {"b" + x50 + x50 + "a", 102, "..." + x50 + "a", 53},        // cut in front
        {"b" + x50 + x50 + "a", 103, "..." + std::string(49, 'x') + "a", 53},
        {"bb\xC3\xA4" + x50.substr(1) + x50, 54, "..." + x50.substr(1) + std::string(48, 'x') + "...", 52},
    };
    for (const Row &row : rows) {
        const Excerpt shown_line = excerpt(row.line, row.column);
        EXPECT_EQ(shown_line.text, row.text) << row.line;
        EXPECT_EQ(shown_line.caret, row.caret) << row.line;
    }
}

TEST(shown, escapes_and_cuts)
{
    const std::string x60(60, 'x');
    EXPECT_EQ(shown(""), "");
    EXPECT_EQ(shown("a\tb\n\xFF\xC3\xA4"), "a\\tb\\n\\xff\xC3\xA4");
    EXPECT_EQ(shown(x60), x60);
    EXPECT_EQ(shown(x60 + "y"), x60 + "...");
}

} // namespace
