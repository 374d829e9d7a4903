// What holds of the findings of any run, tried on random ones in which much is wrong.

#include "dalvo/inspect/findings/check.h"

#include <algorithm>
#include <cstddef>
#include <set>
#include <sstream>
#include <string>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

#include "dalvo/configuration/reader.h"
#include "dalvo/inspect/runs/resolution.h"
#include "tests/inspect/findings/filled_by_setter.h"
#include "tests/inspect/findings/finding_lines.h"
#include "tests/inspect/findings/slipping_texts.h"
#include "tests/support/records.h"

namespace {

using namespace dalvo::testing;
using dalvo::Configuration;
using dalvo::inspect::Catalogue;
using dalvo::inspect::check;
using dalvo::inspect::check_every_section;
using dalvo::inspect::check_text;
using dalvo::inspect::Excerpt;
using dalvo::inspect::Finding;
using dalvo::inspect::has_errors;
using dalvo::inspect::Place;
using dalvo::inspect::Resolution;
using dalvo::inspect::Rule;

using Names = std::vector<std::string>;

dalvo::inspect::Run run_of(const RunPlan &plan)
{
    return dalvo::testing::run_of(plan, Catalogue::standard());
}

std::string printed(const RunPlan &plan)
{
    std::ostringstream out;
    out << plan;
    return out.str();
}

/// Calls `look` with many random runs, of which some have many slips and some few.
template <class Look> void for_each_run(unsigned seed, std::size_t count, Look look)
{
    for (const std::size_t rarity : {std::size_t{2}, std::size_t{8}, std::size_t{60}}) {
        SlippingTexts texts(seed + static_cast<unsigned>(rarity), rarity);
        for (std::size_t i = 0; i < count; ++i) {
            const RunPlan plan = texts.run();
            SCOPED_TRACE(printed(plan));
            look(plan);
            if (::testing::Test::HasFailure()) {
                return;
            }
        }
    }
}

/// The sections that are named in the texts, and "" for none.
Names choices(const RunPlan &plan)
{
    Names names = {""};
    for (const auto &section : run_of(plan).sections()) {
        if (!section.name.empty()) {
            names.push_back(section.name);
        }
    }
    return names;
}

// ---- Errors ---------------------------------------------------------------------------------------------------------

TEST(check, tells_an_error_exactly_where_a_setter_does_not_load_and_apply_the_run)
{
    std::size_t accepted = 0;
    std::size_t rejected = 0;
    for_each_run(1, 500, [&](const RunPlan &plan) {
        const dalvo::inspect::Run run = run_of(plan);
        const bool is_wrong = has_errors(check(run));
        EXPECT_EQ(is_wrong, !filled_by_setter(plan).has_value()) << ::testing::PrintToString(shown(check(run)));
        EXPECT_EQ(is_wrong, !Resolution(run).applies()) << ::testing::PrintToString(shown(check(run)));
        ++(is_wrong ? rejected : accepted);
    });
    EXPECT_GT(accepted, 150U);
    EXPECT_GT(rejected, 150U);
}

TEST(check_every_section, tells_an_error_exactly_where_check_does_for_a_section_or_for_none)
{
    std::size_t accepted = 0;
    std::size_t rejected = 0;
    for_each_run(2, 250, [&](const RunPlan &plan) {
        const std::vector<Finding> every = check_every_section(run_of(plan));
        RunPlan chosen = plan;
        bool is_wrong = false;
        for (const std::string &section : choices(plan)) {
            chosen.section = section;
            is_wrong = is_wrong || has_errors(check(run_of(chosen)));
        }
        EXPECT_EQ(has_errors(every), is_wrong) << ::testing::PrintToString(shown(every));
        chosen.section = "a section that no text has";
        EXPECT_EQ(shown_whole(check_every_section(run_of(chosen))), shown_whole(every))
            << "whichever section is chosen";
        ++(is_wrong ? rejected : accepted);
    });
    EXPECT_GT(accepted, 100U);
    EXPECT_GT(rejected, 100U);
}

TEST(check_text, tells_an_error_exactly_where_a_setter_throws_for_a_section_or_for_none)
{
    std::size_t accepted = 0;
    std::size_t rejected = 0;
    for_each_run(3, 250, [&](const RunPlan &random) {
        RunPlan plan;
        plan.has_default_text = true;
        plan.texts = {random.texts.empty() ? "" : random.texts.front()};
        bool is_wrong = false;
        for (const std::string &section : choices(plan)) {
            plan.section = section;
            is_wrong = is_wrong || !filled_by_setter(plan).has_value();
        }
        const std::vector<Finding> found = check_text("t", plan.texts.front());
        EXPECT_EQ(has_errors(found), is_wrong) << ::testing::PrintToString(shown(found));
        ++(is_wrong ? rejected : accepted);
    });
    EXPECT_GT(accepted, 100U);
    EXPECT_GT(rejected, 100U);
}

TEST(fill, fills_a_record_as_a_setter_does_and_leaves_it_alone_where_there_is_an_error)
{
    const Configuration before = sentinel_record(1);
    for_each_run(4, 200, [&](const RunPlan &plan) {
        Configuration record = before;
        const std::vector<Finding> found = dalvo::inspect::fill(run_of(plan), &record);
        EXPECT_EQ(shown_whole(found), shown_whole(check(run_of(plan))));
        EXPECT_EQ(differing_fields(record, filled_by_setter(plan).value_or(before)), Names{});
    });
}

// ---- Places ---------------------------------------------------------------------------------------------------------

/// The lines of a text, without their newlines.
Names lines_of(const std::string &text)
{
    Names lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) {
        lines.push_back(line);
    }
    return lines;
}

/// The text of the plan that `source` names, from 0; what is assigned by hand comes last.
std::size_t position_of(const RunPlan &plan, const std::string &source)
{
    const std::size_t first = plan.has_default_text ? 1 : 0;
    return source.rfind("text ", 0) == 0 ? std::stoul(source.substr(5)) : first + plan.texts.size();
}

/// The excerpt is of `line`, shows what the place points at, and stands where it says.
void expect_excerpt(const Excerpt &excerpt, const std::string &line, const Place &place)
{
    ASSERT_GE(place.column, 1U);
    ASSERT_LE(place.column, place.end_column);
    ASSERT_LE(place.end_column, line.size() + 1);
    ASSERT_LE(excerpt.place, place.column - 1);
    const std::size_t begin = place.column - 1 - excerpt.place;
    EXPECT_EQ(excerpt.bytes, line.substr(begin, excerpt.bytes.size()));
    EXPECT_EQ(begin > 0, excerpt.is_cut_before);
    EXPECT_TRUE(excerpt.is_cut_after || excerpt.place + place.end_column - place.column <= excerpt.bytes.size());
}

/// The place lies within its text, and the excerpt is of it.
void expect_place(const RunPlan &plan, const Finding &finding)
{
    const std::size_t first = plan.has_default_text ? 1 : 0;
    const std::size_t position = position_of(plan, finding.place.source);
    ASSERT_GE(position, first) << "nothing is wrong with the built-in text";
    if (position < first + plan.texts.size() && finding.place.line != 0) {
        const Names lines = lines_of(plan.texts[position - first]);
        ASSERT_LE(finding.place.line, lines.size());
        expect_excerpt(finding.excerpt, lines[finding.place.line - 1], finding.place);
    } else if (finding.place.column != 0) {
        const auto is_shown = [&](const auto &pair) { return finding.excerpt.bytes == pair.first + "=" + pair.second; };
        EXPECT_EQ(finding.place.line, 0U);
        EXPECT_TRUE(std::any_of(plan.direct.begin(), plan.direct.end(), is_shown)) << finding.excerpt.bytes;
        expect_excerpt(finding.excerpt, finding.excerpt.bytes, finding.place);
    } else {
        EXPECT_EQ(finding.excerpt.bytes, "");
    }
}

TEST(each_finding, has_a_place_within_its_line_and_an_excerpt_of_it)
{
    for_each_run(5, 300, [&](const RunPlan &plan) {
        for (const auto &findings : {check(run_of(plan)), check_every_section(run_of(plan))}) {
            for (const Finding &finding : findings) {
                SCOPED_TRACE(shown_finding(finding));
                if (finding.rule != Rule::unknown_section) { // about no text
                    expect_place(plan, finding);
                }
            }
        }
    });
}

TEST(each_finding, has_a_message_of_one_line_and_the_severity_of_its_rule)
{
    for_each_run(6, 300, [&](const RunPlan &plan) {
        for (const Finding &finding : check_every_section(run_of(plan))) {
            const auto is_control = [](char c) { return (c >= '\0' && c < ' ') || c == '\x7F'; };
            EXPECT_FALSE(finding.message.empty());
            EXPECT_TRUE(std::none_of(finding.message.begin(), finding.message.end(), is_control)) << finding.message;
            EXPECT_EQ(finding.severity, info_of(finding.rule).severity);
        }
    });
}

TEST(the_findings, come_by_text_line_column_and_rule)
{
    for_each_run(7, 300, [&](const RunPlan &plan) {
        for (const auto &findings : {check(run_of(plan)), check_every_section(run_of(plan))}) {
            std::vector<std::tuple<std::size_t, std::uint64_t, std::size_t, Rule>> keys;
            std::size_t last_position = 0;
            for (const Finding &finding : findings) {
                const std::size_t position = finding.place.source.empty() ? 0 : position_of(plan, finding.place.source);
                EXPECT_LE(last_position, position) << "what is assigned by hand comes behind the texts";
                last_position = position;
                if (finding.place.line != 0) {
                    keys.emplace_back(position, finding.place.line, finding.place.column, finding.rule);
                }
            }
            EXPECT_TRUE(std::is_sorted(keys.begin(), keys.end())) << ::testing::PrintToString(shown(findings));
        }
    });
}

TEST(each_finding, is_told_once)
{
    for_each_run(8, 300, [&](const RunPlan &plan) {
        for (const auto &findings : {check(run_of(plan)), check_every_section(run_of(plan))}) {
            std::set<std::string> seen;
            for (const Finding &finding : findings) {
                if (finding.place.line != 0) { // by hand, two assignments may be the same
                    EXPECT_TRUE(seen.insert(shown_finding(finding)).second) << shown_finding(finding);
                }
            }
        }
    });
}

// ---- What is judged -------------------------------------------------------------------------------------------------

/// Notes the lines that apply where a section is chosen, and those below a malformed header, which says too little.
class ApplyingLines : public dalvo::TextReceiver {
public:
    explicit ApplyingLines(const std::string &chosen) : section(chosen) {}

    void header(const dalvo::TextLine &line, const std::vector<dalvo::TextPiece> &names) override
    {
        headers.insert(line.number);
        const auto is_chosen = [&](const dalvo::TextPiece &name) { return name.text.empty() || name.text == section; };
        applies = std::any_of(names.begin(), names.end(), is_chosen);
    }
    void assignment(const dalvo::TextLine &line, const dalvo::TextAssignment &) override
    {
        if (applies) {
            lines.insert(line.number);
        }
    }
    /// Its lines may be meant for the sections that stand in it.
    void malformed(const dalvo::TextLine &line, const dalvo::TextPiece &stripped,
                   const std::vector<dalvo::TextPiece> &) override
    {
        headers.insert(line.number);
        applies = stripped.text.find("default") != std::string_view::npos ||
                  (!section.empty() && stripped.text.find(section) != std::string_view::npos);
    }

    std::set<std::uint64_t> lines;
    std::set<std::uint64_t> headers;

private:
    std::string section;
    bool applies = true;
};

TEST(check, judges_headers_and_the_lines_that_apply_and_no_others)
{
    std::size_t judged = 0;
    for_each_run(9, 500, [&](const RunPlan &plan) {
        const std::size_t first = plan.has_default_text ? 1 : 0;
        std::vector<ApplyingLines> texts(plan.texts.size(), ApplyingLines(plan.section));
        for (std::size_t i = 0; i < plan.texts.size(); ++i) {
            const bool has_mark = plan.texts[i].rfind("\xEF\xBB\xBF", 0) == 0;
            dalvo::read_text(std::string_view(plan.texts[i]).substr(has_mark ? 3 : 0), texts[i]);
            texts[i].headers.insert(has_mark ? 1 : 0); // where the mark is told
        }
        for (const Finding &finding : check(run_of(plan))) {
            if (finding.place.line != 0) {
                const ApplyingLines &text = texts[position_of(plan, finding.place.source) - first];
                EXPECT_GT(text.lines.count(finding.place.line) + text.headers.count(finding.place.line), 0U)
                    << shown_finding(finding);
                ++judged;
            }
        }
    });
    EXPECT_GT(judged, 1000U);
}

} // namespace
