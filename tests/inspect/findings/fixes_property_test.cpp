// What holds of every fix, tried on random texts with many slips.

#include "dalvo/inspect/findings/check.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "dalvo/configuration/reader.h"
#include "tests/inspect/findings/finding_lines.h"
#include "tests/inspect/findings/slipping_texts.h"

namespace {

using namespace dalvo::testing;
using dalvo::inspect::check_text;
using dalvo::inspect::Finding;
using dalvo::inspect::Fix;
using dalvo::inspect::fixed_text;
using dalvo::inspect::Rule;

const std::string mark = "\xEF\xBB\xBF"; // a byte-order mark

/// The lines of a text, without the white space at their ends.
Lines lines_of(const std::string &text)
{
    Lines lines(1);
    for (const char c : text) {
        if (c == '\n') {
            lines.emplace_back();
        } else {
            lines.back() += c;
        }
    }
    for (std::string &line : lines) {
        const std::size_t begin = std::min(line.find_first_not_of(" \t\v\f\r"), line.size());
        line = line.substr(begin, line.find_last_not_of(" \t\v\f\r") + 1 - begin);
    }
    return lines;
}

/// A fix of a text, and what the text comes to with it.
struct Mending {
    std::string text;
    std::vector<Finding> findings;
    Finding finding;
    Fix fix;
    std::string mended;
    std::vector<Finding> left;

    Lines lines() const { return lines_of(text); }
    Lines mended_lines() const { return lines_of(mended); }

    /// The number of lines that the fix puts in above that of the finding.
    std::size_t added() const { return mended_lines().size() - lines().size(); }
};

/// Calls `look` with every fix of many random texts; the number of them.
template <class Look> std::size_t for_each_fix(unsigned seed, std::size_t texts, Look look)
{
    SlippingTexts random(seed, 2);
    std::size_t count = 0;
    for (std::size_t i = 0; i < texts; ++i) {
        const std::string text = random.text();
        const std::vector<Finding> findings = check_text("t", text);
        for (const Finding &finding : findings) {
            for (const Fix &fix : finding.fixes) {
                const std::string mended = fixed_text(text, fix);
                const Mending mending{text, findings, finding, fix, mended, check_text("t", mended)};
                SCOPED_TRACE(::testing::PrintToString(text) + "\nwith '" + fix.title + "' for " +
                             shown_finding(finding) + "\nbecomes " + ::testing::PrintToString(mended));
                look(mending);
                ++count;
            }
        }
        if (::testing::Test::HasFailure()) {
            break;
        }
    }
    return count;
}

/// The same for those that are safe.
template <class Look> std::size_t for_each_safe_fix(unsigned seed, std::size_t texts, Look look)
{
    std::size_t count = 0;
    for_each_fix(seed, texts, [&](const Mending &mending) {
        if (mending.fix.is_safe) {
            look(mending);
            ++count;
        }
    });
    return count;
}

/// How many findings of a rule a line of that content has.
using Counts = std::map<std::pair<Rule, std::string>, std::size_t>;

Counts counts_of(const std::string &text, const std::vector<Finding> &findings)
{
    const Lines lines = lines_of(text);
    Counts counts;
    for (const Finding &finding : findings) {
        ++counts[{finding.rule, lines[finding.place.line - 1]}];
    }
    return counts;
}

// ---- Every fix ------------------------------------------------------------------------------------------------------

TEST(each_fix, has_edits_within_the_text_in_their_order)
{
    const std::size_t count = for_each_fix(1, 1000, [](const Mending &mending) {
        std::size_t end = 0;
        for (const auto &edit : mending.fix.edits) {
            EXPECT_LE(end, edit.begin);
            EXPECT_LE(edit.begin, edit.end);
            end = edit.end;
        }
        EXPECT_LE(end, mending.text.size());
        EXPECT_FALSE(mending.fix.title.empty());
    });
    EXPECT_GT(count, 1500U);
}

TEST(each_fix, makes_a_text_without_its_finding)
{
    const std::size_t count = for_each_fix(2, 1000, [](const Mending &mending) {
        const std::string line = mending.lines()[mending.finding.place.line - 1];
        const std::pair<Rule, std::string> key = {mending.finding.rule, line};
        EXPECT_LT(counts_of(mending.mended, mending.left)[key], counts_of(mending.text, mending.findings)[key])
            << ::testing::PrintToString(shown(mending.left));
    });
    EXPECT_GT(count, 1500U);
}

TEST(each_fix, puts_in_no_line_but_a_comment)
{
    for_each_fix(3, 500, [](const Mending &mending) {
        const std::size_t line = mending.finding.place.line - 1;
        const Lines before = mending.lines();
        Lines after = mending.mended_lines();
        ASSERT_LE(mending.added(), 1U);
        if (mending.added() == 1) {
            const bool has_mark = line == 0 && after[line].rfind(mark, 0) == 0;
            const std::string added = after[line].substr(has_mark ? mark.size() : 0);
            EXPECT_EQ(lines_of(added)[0].substr(0, 1), "#");
            after.erase(after.begin() + static_cast<std::ptrdiff_t>(line));
        }
        for (std::size_t i = 0; i < before.size(); ++i) {
            EXPECT_TRUE(i == line || after[i] == before[i]) << "line " << i + 1;
        }
    });
}

// ---- Safe fixes: comments -------------------------------------------------------------------------------------------

/// What stands behind the first mark of a comment in `text`; without the mark, and without white space at its ends.
std::string behind_mark(const std::string &text, const Lines &marks)
{
    std::size_t first = std::string::npos;
    std::string behind;
    for (const std::string &each : marks) {
        const std::size_t at = text.find(each);
        if (at < first) {
            first = at;
            behind = text.substr(at + each.size());
        }
    }
    return lines_of(behind)[0];
}

/// What looks like a comment in the line of a finding; empty where nothing does. A '#' behind white space does, and one
/// that starts a value. Anything that starts comments anywhere does at the start of a line, behind a header and in a
/// value that cannot be read.
std::string comment_in(const Mending &mending)
{
    std::string line = mending.lines()[mending.finding.place.line - 1];
    if (mending.finding.rule == Rule::byte_order_mark) {
        return "";
    }
    line = lines_of(line.rfind(mark, 0) == 0 ? line.substr(mark.size()) : line)[0];
    if (line[0] == '[') {
        const std::size_t close = line.rfind(']');
        return close == std::string::npos ? "" : behind_mark(line.substr(close), {"#", ";", "//"});
    }
    const bool is_invalid = mending.finding.rule == Rule::invalid_value;
    const bool is_at_start = line[0] == ';' || line.rfind("//", 0) == 0;
    return behind_mark(line, is_invalid || is_at_start ? Lines{"#", ";", "//"}
                                                       : Lines{" #", "\t#", "\v#", "\f#", "\r#", "=#", ":#"});
}

/// The comment lines of a text, without their marks.
Lines comments_of(const std::string &text)
{
    Lines comments;
    for (const std::string &line : lines_of(text.rfind(mark, 0) == 0 ? text.substr(mark.size()) : text)) {
        if (line[0] == '#') {
            comments.push_back(lines_of(line.substr(1))[0]);
        }
    }
    return comments;
}

TEST(each_safe_fix, keeps_every_comment_as_a_comment)
{
    std::size_t made = 0;
    for_each_safe_fix(4, 1500, [&](const Mending &mending) {
        Lines expected = comments_of(mending.text);
        const std::string found = comment_in(mending);
        const bool is_new = mending.added() == 1 || mending.fix.title == "make it a comment" || !found.empty();
        if (is_new) {
            expected.push_back(found);
            ++made;
        }
        Lines is = comments_of(mending.mended);
        std::sort(expected.begin(), expected.end());
        std::sort(is.begin(), is.end());
        EXPECT_EQ(is, expected);
    });
    EXPECT_GT(made, 300U);
}

// ---- Safe fixes: other lines ----------------------------------------------------------------------------------------

/// What each line of a text means to the library: which sections it names, or what it assigns, and in which sections. A
/// line of a text that is malformed, or starts with a byte-order mark, says nothing of the lines below.
class Meanings : public dalvo::TextReceiver {
public:
    explicit Meanings(const std::string &text) : lines(lines_of(text).size()) { dalvo::read_text(text, *this); }

    void header(const dalvo::TextLine &line, const std::vector<dalvo::TextPiece> &names) override
    {
        Lines sections;
        for (const dalvo::TextPiece &name : names) {
            sections.push_back("[" + std::string(name.text) + "]");
        }
        std::sort(sections.begin(), sections.end());
        sections.erase(std::unique(sections.begin(), sections.end()), sections.end()); // twice is no other section
        open.clear();
        for (const std::string &section : sections) {
            open += section;
        }
        lines[line.number - 1] = {open, open};
    }
    void assignment(const dalvo::TextLine &line, const dalvo::TextAssignment &assignment) override
    {
        const bool has_mark = line.number == 1 && line.text.substr(0, mark.size()) == mark;
        open = has_mark ? "?" : open;
        lines[line.number - 1] = {std::string(assignment.name.text) + (assignment.has_equals ? " = " : " ") +
                                      std::string(assignment.value.text),
                                  open};
    }
    void malformed(const dalvo::TextLine &line, const dalvo::TextPiece &stripped,
                   const std::vector<dalvo::TextPiece> &) override
    {
        open = "?";
        lines[line.number - 1] = {std::string(stripped.text), open};
    }

    /// What a line says, and its sections; "?" for those that nobody knows.
    std::vector<std::pair<std::string, std::string>> lines;

private:
    std::string open = "[]";
};

TEST(each_safe_fix, leaves_what_all_other_lines_mean)
{
    const std::size_t count = for_each_safe_fix(5, 1500, [](const Mending &mending) {
        const auto before = Meanings(mending.text).lines;
        const auto after = Meanings(mending.mended).lines;
        const std::size_t line = mending.finding.place.line - 1;
        for (std::size_t i = 0; i < before.size(); ++i) {
            const auto &[said, sections] = after[i + (i > line ? mending.added() : 0)];
            if (i != line) {
                EXPECT_EQ(said, before[i].first) << "line " << i + 1;
                EXPECT_TRUE(before[i].second == "?" || sections == before[i].second)
                    << "line " << i + 1 << " was in " << before[i].second << " and is in " << sections;
            }
        }
    });
    EXPECT_GT(count, 500U);
}

TEST(each_safe_fix, makes_no_error_on_other_lines)
{
    const std::size_t count = for_each_safe_fix(6, 1000, [](const Mending &mending) {
        std::map<std::string, int> errors; // by what they say, but for places, which move
        const auto count_errors = [&](const std::vector<Finding> &findings, std::size_t line, int step) {
            for (const Finding &finding : findings) {
                const bool is_error = finding.severity == dalvo::inspect::Severity::error;
                if (is_error && (finding.place.line != line || finding.rule == Rule::byte_order_mark)) {
                    errors[finding.message] += step;
                }
            }
        };
        count_errors(mending.findings, mending.finding.place.line, 1);
        count_errors(mending.left, mending.finding.place.line + mending.added(), -1);
        for (const auto &[message, left] : errors) {
            EXPECT_GE(left, 0) << message;
        }
    });
    EXPECT_GT(count, 400U);
}

// ---- Safe fixes: one after the other --------------------------------------------------------------------------------

/// The first safe fix there is; null where there is none.
const Fix *first_safe_fix(const std::vector<Finding> &findings)
{
    for (const Finding &finding : findings) {
        for (const Fix &fix : finding.fixes) {
            if (fix.is_safe) {
                return &fix;
            }
        }
    }
    return nullptr;
}

TEST(each_safe_fix, can_be_made_one_after_the_other_until_none_is_left)
{
    SlippingTexts random(7, 2);
    std::size_t mended = 0;
    for (int i = 0; i < 300; ++i) {
        const std::string original = random.text();
        std::string text = original;
        std::vector<Finding> findings = check_text("t", text);
        std::size_t left = 4 * lines_of(text).size();
        while (const Fix *const fix = first_safe_fix(findings)) {
            ASSERT_NE(left--, 0U) << "no end of fixes for " << ::testing::PrintToString(original);
            text = fixed_text(text, *fix);
            findings = check_text("t", text);
            ++mended;
        }
        for (const std::string &comment : comments_of(original)) {
            const Lines comments = comments_of(text);
            EXPECT_NE(std::find(comments.begin(), comments.end(), comment), comments.end())
                << ::testing::PrintToString(comment) << " of " << ::testing::PrintToString(original) << " is lost";
        }
    }
    EXPECT_GT(mended, 200U);
}

} // namespace
