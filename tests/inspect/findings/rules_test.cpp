#include "dalvo/inspect/findings/rules.h"

#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using namespace dalvo::inspect;

/// Lower-case words with one "-" between two of them.
bool is_kebab_case(std::string_view name)
{
    char before = '-';
    for (const char c : name) {
        if (!((c >= 'a' && c <= 'z') || (c == '-' && before != '-'))) {
            return false;
        }
        before = c;
    }
    return before != '-';
}

TEST(rules, are_a_row_for_each_of_the_enumeration_in_its_order)
{
    const auto last = static_cast<std::size_t>(Rule::unsound);
    ASSERT_EQ(rules().size(), last + 1);
    for (std::size_t i = 0; i < rules().size(); ++i) {
        EXPECT_EQ(static_cast<std::size_t>(rules()[i].rule), i) << rules()[i].name;
    }
}

TEST(rules, have_names_of_their_own_in_lower_case_words_joined_by_hyphens)
{
    std::set<std::string_view> names;
    for (const RuleInfo &row : rules()) {
        EXPECT_TRUE(is_kebab_case(row.name)) << row.name;
        EXPECT_TRUE(names.insert(row.name).second) << row.name << " is the name of two rules";
    }
}

TEST(rules, are_found_by_their_names_and_have_the_information_of_their_rows)
{
    for (const RuleInfo &row : rules()) {
        EXPECT_EQ(&info_of(row.rule), &row) << row.name;
        EXPECT_EQ(rule_named(row.name), row.rule) << row.name;
    }
}

TEST(rules, are_not_found_by_a_name_that_is_none)
{
    const struct {
        std::string_view name;
        const char *why;
    } rows[] = {
        {"", "empty"},
        {"unknown_option", "as in the enumeration"},
        {"Unknown-option", "in another case"},
        {"unknown-optio", "without its last letter"},
        {"unknown-options", "with a letter behind it"},
        {{"forced\0", 7}, "with a NUL behind it"},
        {"forced\xff", "with a byte above 0x7F behind it"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(rule_named(row.name), std::nullopt) << row.why;
    }
}

TEST(rules, have_summaries_of_one_sentence_without_a_capital_and_a_full_stop)
{
    for (const RuleInfo &row : rules()) {
        ASSERT_FALSE(row.summary.empty()) << row.name;
        EXPECT_FALSE(row.summary.front() >= 'A' && row.summary.front() <= 'Z') << row.summary;
        EXPECT_EQ(row.summary.find_first_of(".\n"), std::string_view::npos) << row.summary;
    }
}

TEST(rules, are_errors_for_what_keeps_a_run_from_applying_and_warnings_else)
{
    const std::set<std::string_view> errors = {"unreadable-file", "unknown-section", "byte-order-mark",
                                               "malformed-header", "unknown-option", "invalid-value", "out-of-range"};
    for (const RuleInfo &row : rules()) {
        EXPECT_EQ(row.severity == Severity::error, errors.count(row.name) == 1) << row.name;
    }
}

} // namespace
