// Sections whose names look like slips for one another.

#include "dalvo/inspect/findings/slips.h"

#include <algorithm>
#include <random>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "dalvo/inspect/findings/check.h"
#include "dalvo/inspect/knowledge/catalogue.h"
#include "dalvo/utils/str.h"
#include "tests/inspect/findings/text_rows.h"

namespace {

using namespace dalvo::testing;
using dalvo::inspect::find_slips;
using dalvo::inspect::is_slip;
using dalvo::inspect::no_slip;
using dalvo::inspect::SlipName;

// ---- Two names ------------------------------------------------------------------------------------------------------

TEST(is_slip, holds_for_names_that_one_slip_of_a_finger_turns_into_each_other)
{
    const struct {
        std::string name, other;
        bool is_slip;
        const char *why;
    } rows[] = {
        {"fast", "FAST", true, "case"},
        {"fast", "fasT", true, "the case of one letter"},
        {"fast", "fsat", true, "two letters swapped"},
        {"fast", "afst", true, "at the start"},
        {"fast", "fats", true, "at the end"},
        {"fast", "FSAT", true, "swapped, in another case"},
        {"faster", "faste", true, "a letter missing at the end"},
        {"faster", "aster", true, "at the start"},
        {"fast", "faast", true, "a letter doubled"},
        {"fast", "fasst", true, "another one"},
        {"fast", "fastt", true, "the last one"},
        {"fast", "fairst", false, "two letters missing"},
        {"fast", "fst", false, "a letter missing, and only three bytes left"},
        {"fast", "tsaf", false, "swapped, but not neighbours"},
        {"fast", "afts", false, "swapped twice"},
        {"fast", "fist", false, "another letter"},
        {"fast", "slow", false, "another word"},
        {"fast", "fast", false, "the same"},
        {"abcd", "abdc", true, "four bytes"},
        {"abc", "acb", false, "three bytes"},
        {"abc", "ABC", false, "three bytes, in another case"},
        {"abc", "abcd", false, "three bytes on one side"},
        {"run-a", "run-b", false, "a series"},
        {"run1", "run2", false, "a series of numbers"},
        {"run1", "run12", false, "a digit is no letter"},
        {"run12", "run21", false, "nor are two"},
        {"run-1", "run1", false, "a hyphen is no letter"},
        {"run_a", "run_aa", true, "a letter at the end of a series"},
        {"fast ", "fast", false, "a blank is no letter"},
        {"QF_LIA", "QF_LRA", false, "another letter, and two logics"},
        {"QF_LIA", "QF_LIRA", false, "a letter missing, but two logics"},
        {"QF_UFLIA", "QF_LIA", false, "two letters missing"},
        {"QF_BV", "QF_BVV", true, "one is no logic"},
        {"QF_LIA", "QF_ILA", true, "swapped, and one is no logic"},
        {"QF_LIA", "qf_lia", true, "case: logics are written in capitals"},
        {"", "", false, "empty"},
        {"", "fast", false, "empty on one side"},
        {"f\xC3\xA4st", "F\xC3\xA4ST", true, "bytes above 0x7F, as they are"},
        {"f\xC3\xA4st", "f\xA4\xC3st", false, "such bytes are no letters"},
        {"f\xC3\xA4st", "f\xC3st", false, "nor is one of them that is missing"},
        {{"fa\0st", 5}, {"fa\0ts", 5}, true, "NUL is a byte as any"},
        {{"fas\0t", 5}, {"fas\0x", 5}, false, "what stands behind a NUL counts"},
        {{"fast\0", 5}, "fast", false, "NUL is no letter"},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(::testing::PrintToString(row.name) + " " + ::testing::PrintToString(row.other) + ": " + row.why);
        EXPECT_EQ(is_slip(row.name, row.other), row.is_slip);
        EXPECT_EQ(is_slip(row.other, row.name), row.is_slip) << "the other way round";
    }
}

TEST(is_slip, looks_at_the_whole_of_long_names)
{
    const std::string name(1000, 'a');
    const auto with = [&](std::size_t at, const std::string &letters) {
        std::string changed = name;
        return changed.replace(at, letters.size(), letters);
    };
    EXPECT_TRUE(is_slip(with(998, "bc"), with(998, "cb")));
    EXPECT_TRUE(is_slip(name, name + "a"));
    EXPECT_TRUE(is_slip(with(999, "b"), with(999, "b") + "c"));
    EXPECT_FALSE(is_slip(with(999, "b"), with(999, "c")));
    EXPECT_FALSE(is_slip(with(0, "bc"), with(0, "cb") + "a"));
}

// ---- Many names -----------------------------------------------------------------------------------------------------

/// Whether two of the names are a slip that is to be found.
bool is_found(const SlipName &name, const SlipName &other)
{
    return !(name.is_meant && other.is_meant) && is_slip(name.name, other.name);
}

/// Random names, all different, of which many are slips for others. Of those that are the same but for case there are
/// at most four: among more of them not every pair has to be looked at.
class SlippingNames {
public:
    explicit SlippingNames(unsigned seed) : random(seed) {}

    std::vector<std::string> next(std::size_t count)
    {
        std::vector<std::string> names;
        std::multiset<std::string> folded;
        for (std::size_t tries = 0; names.size() < count && tries < 20 * count; ++tries) {
            std::string name = names.empty() || below(3) == 0 ? word() : changed(names[below(names.size())]);
            const std::string lower = dalvo::str::folded(name);
            if (std::find(names.begin(), names.end(), name) == names.end() && folded.count(lower) < 4) {
                folded.insert(lower);
                names.push_back(std::move(name));
            }
        }
        return names;
    }

    std::size_t below(std::size_t bound) { return random() % bound; }

private:
    char letter()
    {
        static const std::string letters("abAB1-\0\xC3\xA4", 9);
        return letters[below(letters.size())];
    }

    std::string word()
    {
        static const std::vector<std::string> logics = {"QF_LIA", "QF_LIRA", "QF_UFLIA", "UFLIA", "QF_AX", "QF_AUFLIA"};
        if (below(8) == 0) {
            return logics[below(logics.size())];
        }
        std::string name;
        for (std::size_t size = below(8); size > 0; --size) {
            name += letter();
        }
        return name;
    }

    std::string changed(std::string name)
    {
        const std::size_t at = below(name.size() + 1);
        switch (below(4)) {
        case 0: return name.insert(at, 1, at < name.size() && below(2) == 0 ? name[at] : letter());
        case 1: return at < name.size() ? name.erase(at, 1) : name;
        case 2:
            if (at + 1 < name.size()) {
                std::swap(name[at], name[at + 1]);
            }
            return name;
        default:
            if (at < name.size()) {
                name[at] = static_cast<char>(name[at] ^ (below(2) == 0 ? 0x20 : 0x01));
            }
            return name;
        }
    }

    std::mt19937 random;
};

TEST(find_slips, finds_a_slip_exactly_where_a_look_at_all_pairs_finds_one)
{
    SlippingNames random(20261122);
    std::size_t found = 0;
    for (int i = 0; i < 3000; ++i) {
        const std::vector<std::string> words = random.next(1 + random.below(24));
        std::vector<SlipName> names;
        std::string shown;
        for (const std::string &word : words) {
            names.push_back({word, random.below(3) == 0});
            shown += ::testing::PrintToString(word) + (names.back().is_meant ? " (meant) " : " ");
        }
        const std::vector<std::size_t> slips = find_slips(names);
        ASSERT_EQ(slips.size(), names.size()) << shown;
        for (std::size_t at = 0; at < names.size(); ++at) {
            const auto here = names.begin() + static_cast<std::ptrdiff_t>(at);
            const bool is_there =
                std::any_of(names.begin(), here, [&](const SlipName &before) { return is_found(before, *here); });
            ASSERT_EQ(slips[at] != no_slip, is_there) << "at " << at << " of " << shown;
            ASSERT_TRUE(!is_there || (slips[at] < at && is_found(names[slips[at]], *here)))
                << "at " << at << " of " << shown;
            found += is_there ? 1 : 0;
        }
    }
    EXPECT_GT(found, 3000U) << "the names have too few slips to show anything";
}

TEST(find_slips, finds_slips_in_names_of_a_thousand_bytes)
{
    const std::string name(1000, 'x');
    const std::string start = "y" + name;
    const std::string end = name + "y";
    const std::string nul = name + std::string("\0z", 2);
    const std::string swapped = name + std::string("z\0", 2);
    const std::string capital = "X" + name.substr(1) + std::string("\0z", 2);
    const std::vector<SlipName> names = {{name, false}, {start, false}, {end, false},
                                         {nul, false},  {swapped, false}, {capital, false}};
    EXPECT_EQ(find_slips(names), (std::vector<std::size_t>{no_slip, 0, 0, no_slip, no_slip, 3}));
}

TEST(find_slips, has_nothing_to_say_about_no_names_and_one_name)
{
    EXPECT_EQ(find_slips({}), std::vector<std::size_t>{});
    EXPECT_EQ(find_slips({{"fast", false}}), std::vector<std::size_t>{no_slip});
    EXPECT_EQ(find_slips({{"", false}}), std::vector<std::size_t>{no_slip});
}

TEST(find_slips, names_none_that_is_no_slip_among_many_names_that_are_the_same_but_for_case)
{
    std::vector<std::string> words;
    for (unsigned bits = 0; bits < 64; ++bits) {
        std::string word = "abcdef";
        for (unsigned at = 0; at < word.size(); ++at) {
            word[at] = static_cast<char>(word[at] - ((bits >> at & 1U) != 0 ? 'a' - 'A' : 0));
        }
        words.push_back(word);
    }
    std::vector<SlipName> names;
    for (const std::string &word : words) {
        names.push_back({word, false});
    }
    const std::vector<std::size_t> slips = find_slips(names);
    EXPECT_EQ(slips[0], no_slip);
    for (std::size_t at = 1; at < names.size(); ++at) {
        ASSERT_LT(slips[at], at) << words[at] << " is a slip for every one before it";
    }
}

// ---- The sections of a run ------------------------------------------------------------------------------------------

const std::string similar = " similar-section warning: section ";
const std::string other = ": this is the other section";

TEST(a_section, whose_name_looks_like_a_slip_is_told_at_its_first_header)
{
    const Lines fats = {"2:2-6" + similar + "'fats' looks like a slip for 'fast' (line 1)", "  suggests: fast",
                        "  told 1:2-6" + other};
    expect_whole_findings({
        {"[fast]\n[fats]\n[fats]\n", every_section, fats, "a slip for an earlier one"},
        {"[fast]\n[fats]\n", "fast", fats, "the one that is meant is chosen"},
        {"[fast]\n[fats]\n", "fats", fats, "the slip is chosen"},
        {"[fast]\n[fats]\n[slow]\n", "slow", {}, "neither is chosen"},
        {"[fast]\n[fats]\n", no_section, {}, "none is chosen"},
        {"[slow, fast]\n[ fasst , quiet]\n", every_section,
         {"2:3-8" + similar + "'fasst' looks like a slip for 'fast' (line 1)", "  suggests: fast",
          "  told 1:8-12" + other},
         "among other names"},
        {"[fast]\n[fats]\n[faast]\n", every_section,
         {fats[0], fats[1], fats[2], "3:2-7" + similar + "'faast' looks like a slip for 'fast' (line 1)",
          "  suggests: fast", "  told 1:2-6" + other},
         "two of them"},
        {"[run1]\n[run2]\n[QF_LIA]\n[QF_LIRA]\n[ab]\n[ba]\n", every_section, {}, "names that are alike and no slips"},
        {"[f\x1b\xFFst]\n[F\x1b\xFFST]\n", every_section,
         {"2:2-7" + similar + "'F\\x1b\\xffST' looks like a slip for 'f\\x1b\\xffst' (line 1)",
          "  suggests: f\x1b\xFFst",
          "  told 1:2-7" + other},
         "control bytes"},
    });
}

TEST(a_section, is_no_slip_for_another_one_where_both_have_several_lines)
{
    const std::string two = "verbosity = 1\nrandom_seed = 2\n";
    const std::string told = "4:2-6" + similar + "'fats' looks like a slip for 'fast' (line 1)";
    const struct {
        std::string text;
        Lines findings;
        const char *why;
    } rows[] = {
        {"[fast]\n" + two + "[fats]\n" + two, {}, "two and two"},
        {"[fast]\n" + two + "[fats]\nverbosity = 1\n", {told}, "two and one"},
        {"[fast]\n" + two + "[fats]\n", {told}, "two and none"},
        {"[fast]\n\n\n[fats]\n" + two, {told}, "none and two"},
        {"[fast]\nverbosity = 1\n\n[fats]\nverbosity = 1\n", {told}, "one and one"},
        {"[fast]\n" + two + "[fats]\nverbosity = 1\n[fast]\n[fats]\nrandom_seed = 1\n", {}, "in two pieces"},
        {"[default]\n" + two + "[Default]\n" + two,
         {"4:2-9" + similar + "'Default' looks like a slip for 'default'"}, "default is none of these sections"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(shown(dalvo::inspect::check_text("t", row.text)), row.findings) << row.why;
    }
}

TEST(a_section, that_looks_like_a_slip_for_default_is_told_whichever_is_chosen)
{
    const auto told = [](const std::string &place, const std::string &name) {
        return Lines{place + similar + "'" + name + "' looks like a slip for 'default'", "  suggests: default"};
    };
    expect_whole_findings({
        {"[defualt]\n", every_section, told("1:2-9", "defualt"), "swapped"},
        {"[Default]\n", every_section, told("1:2-9", "Default"), "case"},
        {"[DEFAULT]\n", no_section, told("1:2-9", "DEFAULT"), "with no section chosen"},
        {"[fast]\n[defaul]\n", "fast", told("2:2-8", "defaul"), "with another one chosen"},
        {"[deffault]\n", "deffault", told("1:2-10", "deffault"), "with itself chosen"},
        {"[defaults of old]\n", every_section, {}, "no slip"},
        {"[default]\n", every_section, {}, "the word itself"},
        {"[default, a]\n", every_section,
         {"1:2-9 default-among-names warning: 'default' among several names is an ordinary section, not the unnamed "
          "one"},
         "the section of that name is told otherwise"},
    });
}

TEST(a_section, of_one_text_may_look_like_a_slip_for_one_of_another)
{
    dalvo::inspect::Run run;
    run.add_text("one.cfg", "[slow]\n[fast]\nverbosity = 1\n");
    run.add_text("two.cfg", "[fats]\nverbosity = 1\n");
    const Lines told = {"two.cfg:1:2-6" + similar + "'fats' looks like a slip for 'fast' (one.cfg:2)",
                        "  suggests: fast", "  told one.cfg:2:2-6" + other};
    EXPECT_EQ(shown_whole(dalvo::inspect::check_every_section(run)), told);
    run.add_text("three.cfg", "[fast]\nrandom_seed = 2\n");
    EXPECT_EQ(shown_whole(dalvo::inspect::check_every_section(run)), told) << "one of the two has several lines";
    run.add_text("four.cfg", "[fats]\nrandom_seed = 2\n");
    EXPECT_EQ(shown_whole(dalvo::inspect::check_every_section(run)), Lines{}) << "both have several lines";
}

} // namespace
