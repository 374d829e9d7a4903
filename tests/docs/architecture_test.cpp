// Holds the table of the three orders in docs/architecture.md to the golden files of the sequences.

#include <cstddef>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/docs/tables.h"
#include "tests/support/golden.h"

namespace {

using dalvo::testing::golden_rows;
using dalvo::testing::GoldenRow;
using dalvo::testing::table_rows;
using dalvo::testing::TableRow;

/// The group of an option by its name: "general", "debug", "la".
std::string group_of(const std::string &option)
{
    const std::size_t point = option.find('.');
    if (point == std::string::npos) {
        return "general";
    }
    const std::string first = option.substr(0, point);
    const std::size_t second_point = option.find('.', point + 1);
    return first == "theory" && second_point != std::string::npos
               ? option.substr(point + 1, second_point - point - 1)
               : first;
}

/// The runs of groups in the cells `column` of `rows`, as the document writes them.
std::string groups_of(const std::vector<GoldenRow> &rows, std::size_t column)
{
    std::string groups;
    std::string last;
    for (const GoldenRow &row : rows) {
        const std::string group = group_of(row.at(column));
        if (group != last) {
            groups += (groups.empty() ? "" : ", ") + group;
        }
        last = group;
    }
    return groups;
}

TEST(architecture_document, shows_the_three_orders_as_they_are)
{
    const std::vector<GoldenRow> registered = golden_rows("catalogue.tsv", 4);
    const std::vector<GoldenRow> applied = golden_rows("application.tsv", 4);
    const std::vector<GoldenRow> dumped = golden_rows("dump.tsv", 3);
    std::vector<TableRow> shown;
    for (const TableRow &row :
         table_rows("docs/architecture.md", "| sequence | groups in their order | who sees the order |")) {
        shown.push_back({row.at(0), row.at(1)});
    }
    std::string applied_groups = groups_of(applied, 0);
    const std::size_t early = applied_groups.find("general");
    ASSERT_NE(early, std::string::npos);
    applied_groups.insert(early, "early_"); // the first of the two runs of general options
    const std::vector<TableRow> expected = {
        {"registration", groups_of(registered, 1)},
        {"application", applied_groups},
        {"dump", groups_of(dumped, 0)},
    };
    EXPECT_EQ(shown, expected);
}

} // namespace
