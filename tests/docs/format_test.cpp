// Holds the tables of docs/format.md to the library.

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "dalvo/configuration/configurationsetter.h"
#include "tests/configuration/caught.h"
#include "tests/docs/tables.h"
#include "tests/support/sections.h"

namespace {

using dalvo::ConfigurationSetter;
using dalvo::OptionParser;
using dalvo::testing::caught_from;
using dalvo::testing::code_span;
using dalvo::testing::code_spans;
using dalvo::testing::Filed;
using dalvo::testing::load_text;
using dalvo::testing::Sections;
using dalvo::testing::sections_from;
using dalvo::testing::sections_of;
using dalvo::testing::table_rows;
using dalvo::testing::TableRow;

std::vector<TableRow> format_rows(const std::string &heading)
{
    const std::vector<TableRow> rows = table_rows("docs/format.md", heading);
    EXPECT_FALSE(rows.empty()) << "docs/format.md has no table " << heading;
    return rows;
}

TEST(format_document, says_what_each_line_files)
{
    for (const TableRow &row : format_rows("| line | name | value |")) {
        const Sections expected = {{"", {Filed{code_span(row.at(1)), code_span(row.at(2))}}}};
        EXPECT_EQ(sections_from(code_span(row.at(0))), expected) << row.at(0);
    }
}

TEST(format_document, says_to_which_sections_each_header_belongs)
{
    for (const TableRow &row : format_rows("| header | sections | |")) {
        Sections expected = {{"", {}}};
        for (const std::string &name : code_spans(row.at(1))) {
            expected[name].push_back({"a", "1"});
        }
        if (code_spans(row.at(1)).empty()) {
            expected[""].push_back({"a", "1"});
        }
        EXPECT_EQ(sections_from("[other]\n" + code_span(row.at(0)) + "\na = 1").at("other"), std::vector<Filed>());
        EXPECT_EQ(sections_from(code_span(row.at(0)) + "\na = 1"), expected) << row.at(0);
    }
}

TEST(format_document, says_which_headers_are_malformed_and_what_they_leave)
{
    for (const TableRow &row : format_rows("| malformed | sections | |")) {
        const std::string line = code_span(row.at(0));
        ConfigurationSetter setter;
        EXPECT_EQ(caught_from([&] { load_text(setter, line); }).what,
                  "bad format of configuration file: " + line + ", value: ");
        Sections expected = {{"", {}}};
        for (const std::string &name : code_spans(row.at(1))) {
            expected[name] = {};
        }
        EXPECT_EQ(sections_of(setter), expected) << line;
    }
}

TEST(format_document, says_which_values_each_type_accepts)
{
    ConfigurationSetter setter;
    setter.options().add_option("bool", dalvo::OPT_BOOL, "");
    setter.options().add_option("int", dalvo::OPT_INT, "");
    setter.options().add_option("float", dalvo::OPT_FLOAT, "");
    setter.options().add_option("string", dalvo::OPT_STR, "");
    for (const TableRow &row : format_rows("| type | accepted | refused |")) {
        for (const std::string &text : code_spans(row.at(1))) {
            EXPECT_NO_THROW(setter.set_option(row.at(0), text, 0)) << row.at(0) << ": " << text;
        }
        std::vector<std::string> refused = code_spans(row.at(2));
        if (row.at(0) != "string") {
            refused.emplace_back(); // the empty value, which the document speaks of below the table
        }
        for (const std::string &text : refused) {
            EXPECT_THROW(setter.set_option(row.at(0), text, 0), OptionParser::error) << row.at(0) << ": " << text;
        }
    }
    EXPECT_NO_THROW(setter.set_option("string", "", 0));
}

} // namespace
