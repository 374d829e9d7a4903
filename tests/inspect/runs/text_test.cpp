#include "dalvo/inspect/runs/text.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "dalvo/configuration/configurationsetter.h"
#include "tests/inspect/random_texts.h"
#include "tests/inspect/shown_runs.h"
#include "tests/support/second_reader.h"
#include "tests/support/sections.h"
#include "tests/support/settings.h"

namespace {

using dalvo::Configuration;
using dalvo::ConfigurationSetter;
using dalvo::OptionParser;
using dalvo::inspect::Catalogue;
using dalvo::inspect::Filed;
using dalvo::inspect::FiledSection;
using dalvo::inspect::HeaderProblem;
using dalvo::inspect::number_of;
using dalvo::inspect::OptionInfo;
using dalvo::inspect::Text;
using dalvo::inspect::Verdict;
using dalvo::testing::CatalogueSetter;
using dalvo::testing::RandomTexts;
using dalvo::testing::read_second;
using dalvo::testing::SecondLine;
using dalvo::testing::shown;

using Names = std::vector<std::string>;

/// A text, read and filed.
struct FiledText : Text {
    explicit FiledText(const std::string &bytes)
        : Text(Catalogue::standard(), Kind::file, "t.cfg", bytes, 0)
    {
    }
};

// ---- Filing by section ----------------------------------------------------------------------------------------------

using Pairs = std::vector<std::pair<std::string, std::string>>;

/// Section name to its assignments, in their order.
using Filing = std::map<std::string, Pairs>;

Filing filing_of(const Text &text)
{
    Filing filing;
    for (std::size_t section = 0; section < text.sections.size(); ++section) {
        if (!text.sections[section].is_nameless) {
            const auto [at, is_new] = filing.emplace(text.sections[section].name, Pairs());
            EXPECT_TRUE(is_new) << "section '" << at->first << "' is there twice";
            for (const std::uint32_t *position = text.begin(section); position != text.end(section); ++position) {
                const Filed &assignment = text.assignments[*position];
                at->second.emplace_back(assignment.name, assignment.value);
            }
            EXPECT_EQ(text.size(section), at->second.size());
        }
    }
    return filing;
}

/// What a setter files, until the malformed line, if there is one; `is_whole` says that there is none.
Filing filing_of_setter(const std::string &contents, bool &is_whole)
{
    ConfigurationSetter setter;
    is_whole = true;
    try {
        dalvo::testing::load_text(setter, contents);
    } catch (const OptionParser::error &) {
        is_whole = false;
    }
    Filing filing;
    for (const auto &[name, entries] : dalvo::testing::sections_of(setter)) {
        Pairs &pairs = filing[name];
        for (const dalvo::testing::Filed &entry : entries) {
            pairs.emplace_back(entry.name, entry.value);
        }
    }
    return filing;
}

TEST(text, files_what_a_setter_files)
{
    RandomTexts texts(20261122);
    std::size_t shared = 0; // lines that stand in several sections
    std::size_t reopened = 0;
    for (int i = 0; i < 4000; ++i) {
        const std::string contents = texts.next();
        bool is_whole = false;
        const Filing expected = filing_of_setter(contents, is_whole);
        ASSERT_TRUE(is_whole) << contents;
        const FiledText text(contents);
        ASSERT_EQ(filing_of(text), expected) << contents;
        EXPECT_FALSE(text.has_malformed_header()) << contents;
        for (const Filed &assignment : text.assignments) {
            shared += assignment.sections > 1 ? 1 : 0;
        }
        for (const FiledSection &section : text.sections) {
            EXPECT_EQ(section.filings, expected.at(std::string(section.name)).size()) << contents;
            reopened += section.line != 0 && section.last_line != section.line ? 1 : 0;
        }
    }
    EXPECT_GT(shared, 1000U);
    EXPECT_GT(reopened, 500U);
}

TEST(text, files_as_far_as_a_malformed_header_what_a_setter_files)
{
    RandomTexts texts(20261123);
    std::size_t named = 0; // headers with names before the empty one
    for (int i = 0; i < 2000; ++i) {
        const std::string before = texts.next();
        const std::string contents =
            before + (before.empty() || before.back() == '\n' ? "" : "\n") + texts.malformed_line();
        bool is_whole = true;
        const Filing expected = filing_of_setter(contents, is_whole);
        ASSERT_FALSE(is_whole) << contents;
        const FiledText text(contents);
        ASSERT_EQ(filing_of(text), expected) << contents;
        EXPECT_TRUE(text.has_malformed_header()) << contents;
        named += expected.count("new");
    }
    EXPECT_GT(named, 100U);
}

TEST(text, keeps_a_line_once_and_counts_it_twice_below_a_header_that_names_its_section_twice)
{
    const struct {
        const char *contents;
        const char *without; // the repetition
        const char *why;
    } rows[] = {
        {"[a, a]\nk = 1\nl = 2\n", "[a]\nk = 1\nl = 2\n", "alone"},
        {"[a]\nk = 0\n[b,a,b]\nk = 1\n[a,a,a]\nl", "[a]\nk = 0\n[b,a]\nk = 1\n[a]\nl", "three times, and once"},
        {"[a, a]\n[b]\nk = 1\n[default]\nk = 2\n", "[a]\n[b]\nk = 1\n[default]\nk = 2\n", "until the next header"},
    };
    for (const auto &row : rows) {
        bool is_whole = false;
        const FiledText text(row.contents);
        EXPECT_EQ(filing_of(text), filing_of_setter(row.without, is_whole)) << row.why;
        Filing expected = filing_of_setter(row.contents, is_whole);
        EXPECT_TRUE(is_whole) << row.why;
        for (const FiledSection &section : text.sections) {
            EXPECT_EQ(section.filings, expected[std::string(section.name)].size()) << row.why;
        }
    }
}

/// Each section with its first line and its assignments: "[] a=1 | [fast]@2 b=2 | malformed@4 c=3".
std::string shown_filing(const Text &text)
{
    std::string shown;
    for (std::size_t section = 0; section < text.sections.size(); ++section) {
        const FiledSection &filed = text.sections[section];
        shown += (section == 0 ? "" : " | ") +
                 (filed.is_nameless ? std::string("nameless") : "[" + std::string(filed.name) + "]") +
                 (filed.line != 0 ? "@" + std::to_string(filed.line) : "");
        for (const std::uint32_t *at = text.begin(section); at != text.end(section); ++at) {
            shown += " " + std::string(text.assignments[*at].name) + "=" + std::string(text.assignments[*at].value);
        }
    }
    return shown;
}

TEST(text, files_the_lines_below_a_malformed_header_where_they_are_meant_to_go)
{
    const struct {
        std::string contents;
        const char *filing;
        const char *why;
    } rows[] = {
        {"[fast] # note\nk = 1\n", "[] | [fast]@1 k=1", "a comment behind a header is likely meant as one"},
        {"[fast] ; note\nk = 1\n", "[] | [fast]@1 k=1", "the same in another language"},
        {"[fast] // note\nk = 1\n", "[] | [fast]@1 k=1", "the same in a third"},
        {"[fast]# x]y\nk = 1\n", "[] | [fast]@1 k=1", "the comment may hold a bracket"},
        {"[a, b] # note\nk = 1\n", "[] | [a]@1 k=1 | [b]@1 k=1", "several names"},
        {"[default] # note\nk = 1\n", "[] k=1", "the unnamed section"},
        {"[ a , b,,c] # note\nk = 1\n", "[] | [a]@1 k=1 | [b]@1 k=1", "up to an empty name"},
        {"[default,] # note\nk = 1\n", "[] | [default]@1 k=1", "an ordinary name among several"},
        {"[] # note\nk = 1\n", "[] | nameless@1 k=1", "no name"},
        {"[fast] / note\nk = 1\n", "[] | nameless@1 k=1", "one slash opens no comment anywhere"},
        {"[a\nk = 1\n", "[] | nameless@1 k=1", "nobody knows what the name is to be"},
        {"[a] x\nk = 1\n", "[] | nameless@1 k=1", "nor here"},
        {"[a] = 1\nk = 1\n", "[] | nameless@1 k=1", "nor here"},
        {"[\nk = 1\n", "[] | nameless@1 k=1", "nothing but a bracket"},
        {"[]\nk = 1\n", "[] | nameless@1 k=1", "no name"},
        {"[,a]\nk = 1\n", "[] | nameless@1 k=1", "no name before the empty one"},
        {"[a,,b]\nk = 1\n", "[] | [a]@1 k=1", "the names before the empty one"},
        {"[a,]\nk = 1\n[a]\nl = 2\n", "[] | [a]@1 k=1 l=2", "the section is that of a header that is right"},
        {"[a]\nk = 1\n[b\nk = 2\n[c\nk = 3\n[a]\nl = 4\nm", "[] | [a]@1 k=1 l=4 m= | nameless@3 k=2 | nameless@5 k=3",
         "each malformed header has a section of its own, and the next header ends it"},
        {"z = 0\n[a\n[default]\nk = 1\n", "[] z=0 k=1 | nameless@2", "a section of its own without a line"},
    };
    for (const auto &row : rows) {
        const FiledText text(row.contents);
        EXPECT_EQ(shown_filing(text), row.filing) << row.contents << row.why;
        EXPECT_TRUE(text.has_malformed_header()) << row.contents << row.why;
    }
}

TEST(text, keeps_the_sections_in_the_order_of_their_first_headers)
{
    const struct {
        std::string contents;
        const char *filing;
        const char *why;
    } rows[] = {
        {"", "[]", "the unnamed section is there whatever the text"},
        {"[z]\n[b, a]\n[z]\n", "[] | [z]@1 | [b]@2 | [a]@2", "sections without a line, too"},
        {"[b]\nk = 1\n[default]\nl = 2\n[b]\nm = 3\n", "[] l=2 | [b]@1 k=1 m=3", "the unnamed one stays first"},
        {"[default, x]\nk = 1\n", "[] | [default]@1 k=1 | [x]@1 k=1", "'default' among several names is a name"},
        {"[DEFAULT]\nk = 1\n", "[] | [DEFAULT]@1 k=1", "and in capitals"},
    };
    for (const auto &row : rows) {
        const FiledText text(row.contents);
        EXPECT_EQ(shown_filing(text), row.filing) << row.why;
        EXPECT_FALSE(text.has_malformed_header()) << row.why;
    }
}

// ---- Problems of headers --------------------------------------------------------------------------------------------

const char *shown(HeaderProblem::Kind kind)
{
    switch (kind) {
    case HeaderProblem::Kind::no_end: return "no end";
    case HeaderProblem::Kind::empty_name: return "empty name";
    case HeaderProblem::Kind::repeated_name: return "repeated name";
    case HeaderProblem::Kind::default_among_names: break;
    }
    return "default among names";
}

/// "no end t.cfg:1:8-14", and the section at fault, if one is.
Names shown_problems(const Text &text)
{
    Names problems;
    for (const HeaderProblem &problem : text.header_problems) {
        problems.push_back(std::string(shown(problem.kind)) + " " +
                           shown(text.place(problem.line, problem.line_start, problem.piece)) +
                           (problem.section != 0 ? " of section " + std::to_string(problem.section) : ""));
    }
    return problems;
}

TEST(text, notes_what_is_wrong_with_a_header_and_where)
{
    const struct {
        std::string contents;
        Names problems;
        bool is_malformed;
        const char *why;
    } rows[] = {
        {"[a]\n[a, b]\n[default]\n", {}, false, "nothing"},
        {"k\n  [a  \n", {"no end t.cfg:2:3-5"}, true, "without a bracket all of it is at fault"},
        {"[a]  # note \n", {"no end t.cfg:1:6-12"}, true, "what stands behind the bracket, without white space"},
        {"[a] x] y\n", {"no end t.cfg:1:8-9"}, true, "what stands behind the last bracket"},
        {" [a, , b]\n", {"empty name t.cfg:1:2-10"}, true, "the whole header"},
        {"[]\n", {"empty name t.cfg:1:1-3"}, true, "no name is an empty one"},
        {"[b]\n[a, b, a,b]\n", {"repeated name t.cfg:2:8-9 of section 2", "repeated name t.cfg:2:10-11 of section 1"},
         false, "each name that stands there already"},
        {"[a, a] # x\n", {"no end t.cfg:1:8-11", "repeated name t.cfg:1:5-6 of section 1"}, true, "two at once"},
        {"[default, x]\n", {"default among names t.cfg:1:2-9"}, false, "the word alone is the unnamed section"},
        {"[x,default]\n", {"default among names t.cfg:1:4-11"}, false, "at any place"},
        {"[Default, x]\n", {}, false, "in small letters alone"},
    };
    for (const auto &row : rows) {
        const FiledText text(row.contents);
        EXPECT_EQ(shown_problems(text), row.problems) << row.why;
        EXPECT_EQ(text.has_malformed_header(), row.is_malformed) << row.why;
    }
}

// ---- Places ---------------------------------------------------------------------------------------------------------

/// "t.cfg:2:3-4 a, t.cfg:2:7-8 1".
std::string shown_places(const Text &text, const Filed &assignment)
{
    return shown(text.place_of_name(assignment)) + " " + std::string(assignment.name) + ", " +
           shown(text.place_of_value(assignment)) + " " + std::string(assignment.value);
}

Names shown_places(const Text &text)
{
    Names places;
    for (const Filed &assignment : text.assignments) {
        places.push_back(shown_places(text, assignment));
    }
    return places;
}

/// The same as a second reader of `contents` has it, `shift` being added to the columns of the first line.
Names second_places(const std::string &contents, std::size_t shift)
{
    Names places;
    for (const SecondLine &line : read_second(contents)) {
        if (line.kind != SecondLine::Kind::assignment) {
            continue;
        }
        std::string both;
        for (const auto &piece : line.pieces) {
            const std::size_t column = piece.column + (line.number == 1 ? shift : 0);
            both += (both.empty() ? "t.cfg:" : ", t.cfg:") + std::to_string(line.number) + ":" +
                    std::to_string(column) + "-" + std::to_string(column + piece.text.size()) + " " + piece.text;
        }
        places.push_back(both);
    }
    return places;
}

TEST(text, has_names_and_values_at_their_lines_and_columns)
{
    RandomTexts texts(20261124);
    std::size_t assignments = 0;
    for (int i = 0; i < 1500; ++i) {
        std::string contents = texts.next();
        if (texts.below(2) == 0) {
            contents += "\n" + texts.malformed_line() + "\n" + texts.next();
        }
        ASSERT_EQ(shown_places(FiledText(contents)), second_places(contents, 0)) << contents;
        const FiledText marked("\xEF\xBB\xBF" + contents);
        ASSERT_EQ(shown_places(marked), second_places(contents, 3)) << "behind a byte-order mark: " << contents;
        ASSERT_EQ(shown_filing(marked), shown_filing(FiledText(contents))) << contents;
        assignments += marked.assignments.size();
    }
    EXPECT_GT(assignments, 10000U);
}

TEST(text, flags_a_byte_order_mark_at_its_start_alone)
{
    const struct {
        std::string contents;
        bool is_flagged;
        Names places;
        const char *why;
    } rows[] = {
        {"\xEF\xBB\xBF", true, {}, "alone"},
        {"\xEF\xBB\xBF" "a = 1\nb = 2", true, {"t.cfg:1:4-5 a, t.cfg:1:8-9 1", "t.cfg:2:1-2 b, t.cfg:2:5-6 2"},
         "columns count it, in its own line"},
        {"\xEF\xBB\xBF # c\na", true, {"t.cfg:2:1-2 a, t.cfg:2:2-2 "}, "a comment stays one"},
        {"\xEF\xBB\xBF\xEF\xBB\xBF" "a", true, {"t.cfg:1:4-8 \xEF\xBB\xBF" "a, t.cfg:1:8-8 "}, "the first one alone"},
        {"\xEF\xBB", false, {"t.cfg:1:1-3 \xEF\xBB, t.cfg:1:3-3 "}, "a part of one is none"},
        {" \xEF\xBB\xBF" "a", false, {"t.cfg:1:2-6 \xEF\xBB\xBF" "a, t.cfg:1:6-6 "}, "not at the start"},
        {"a = 1\n\xEF\xBB\xBF" "b", false,
         {"t.cfg:1:1-2 a, t.cfg:1:5-6 1", "t.cfg:2:1-5 \xEF\xBB\xBF" "b, t.cfg:2:5-5 "}, "not in the first line"},
        {"\xFE\xFF", false, {"t.cfg:1:1-3 \xFE\xFF, t.cfg:1:3-3 "}, "that of another encoding"},
    };
    for (const auto &row : rows) {
        const FiledText text(row.contents);
        EXPECT_EQ(text.has_byte_order_mark, row.is_flagged) << row.why;
        EXPECT_EQ(shown_places(text), row.places) << row.why;
    }
    const FiledText header("\xEF\xBB\xBF[a] x\nk = 1\n");
    EXPECT_EQ(shown_problems(header), Names({"no end t.cfg:1:8-9"})) << "those of a header count it, too";
}

TEST(text, has_the_pieces_of_a_command_line_in_no_line)
{
    const Pairs pairs = {{"verbosity", "1"}, {"", ""}, {"a = b", "c\n= d"}, {std::string("\0", 1), "\xFF"}};
    const Text text(Catalogue::standard(), "command line", pairs, 3);
    EXPECT_EQ(text.kind, Text::Kind::command_line);
    EXPECT_EQ(shown_places(text), Names({"command line:0:1-10 verbosity, command line:0:11-12 1",
                                         "command line:0:1-1 , command line:0:2-2 ",
                                         "command line:0:1-6 a = b, command line:0:7-12 c\n= d",
                                         "command line:0:1-2 " + std::string(1, '\0') + ", command line:0:3-4 \xFF"}));
    ASSERT_EQ(text.sections.size(), 1U);
    EXPECT_EQ(text.size(0), pairs.size());
    EXPECT_EQ(filing_of(text), (Filing{{"", pairs}})) << "nothing is stripped or split";
    for (const Filed &assignment : text.assignments) {
        EXPECT_EQ(assignment.text, 3U);
    }
    EXPECT_EQ(text.assignments[0].verdict, Verdict::accepted);
    EXPECT_FALSE(text.has_malformed_header());
}

TEST(place, is_shown_as_a_source_and_a_line)
{
    const struct {
        dalvo::inspect::Place place;
        const char *text;
        const char *why;
    } rows[] = {
        {{"solver.cfg", 12, 3, 4}, "solver.cfg:12", "without its columns"},
        {{"command line", 0, 3, 4}, "command line", "no lines there"},
        {{"a\nb\x1B\x7F\xFF\xC3\xA4", 1, 0, 0}, "a\\nb\\x1b\\x7f\\xff\xC3\xA4:1", "fit for a terminal"},
        {{std::string("a\0b", 3), 1, 0, 0}, "a\\x00b:1", "NUL is a byte as any"},
        {{"", 18446744073709551615U, 0, 0}, ":18446744073709551615", "no source; the largest line"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(row.place.text(), row.text) << row.why;
    }
}

// ---- Verdicts -------------------------------------------------------------------------------------------------------

/// What a setter that knows the catalogue says of the assignment, and nothing else.
Verdict verdict_of_setter(const std::string &name, const std::string &value)
{
    CatalogueSetter setter;
    if (setter.options().find_option(name) == nullptr) {
        return Verdict::unknown;
    }
    try {
        setter.set_option(name, value, 0);
    } catch (const OptionParser::error &) {
        return Verdict::unreadable;
    }
    Configuration record;
    try {
        setter.update_config(&record);
    } catch (const OptionParser::error &) {
        return Verdict::out_of_range;
    }
    return Verdict::accepted;
}

double number_of_setter(const std::string &name, const std::string &value)
{
    CatalogueSetter setter;
    setter.set_option(name, value, 0);
    return number_of(setter.options().find_option(name)->value);
}

bool same_number(double a, double b)
{
    return a == b || (a != a && b != b);
}

TEST(text, judges_each_value_as_a_setter_does)
{
    const Names values = {
        "true", "FALSE", "yes", "Off", "1", "0", "2", "3", "4", "5", "6", "15", "16", "-1", "+1", "01", "1.0", "1.5",
        "-0.5", "1.0000001", "0.99999994", "nan", "-NaN", "inf", "-inf", "1e999", "1e-999", "2147483647", "2147483648",
        "-2147483648", "-2147483649", "", "x", "1 # note", "\"1\"", "0x1", "1,5", std::string("1\0", 2), "\xFF",
    };
    std::map<Verdict, std::size_t> seen;
    for (const OptionInfo &option : Catalogue::standard().options()) {
        std::string contents;
        for (const std::string &value : values) {
            contents += option.name + " = " + value + "\n";
        }
        const FiledText text(contents);
        ASSERT_EQ(text.assignments.size(), values.size());
        for (std::size_t i = 0; i < values.size(); ++i) {
            const Filed &filed = text.assignments[i];
            const Verdict expected = verdict_of_setter(option.name, values[i]);
            EXPECT_EQ(filed.verdict, expected) << option.name << " = " << values[i];
            EXPECT_EQ(filed.is_readable(), expected == Verdict::accepted || expected == Verdict::out_of_range);
            EXPECT_EQ(&Catalogue::standard().options()[filed.option], &option);
            if (filed.is_readable()) {
                EXPECT_TRUE(same_number(filed.number, number_of_setter(option.name, values[i])))
                    << option.name << " = " << values[i] << " as " << filed.number;
            }
            ++seen[filed.verdict];
        }
    }
    EXPECT_GT(seen[Verdict::accepted], 500U);
    EXPECT_GT(seen[Verdict::out_of_range], 100U);
    EXPECT_GT(seen[Verdict::unreadable], 500U);
}

TEST(text, judges_a_name_that_no_option_has)
{
    const struct {
        std::string name;
        const char *why;
    } rows[] = {
        {"no.such.option", "unknown"},
        {"Verbosity", "names are compared byte for byte"},
        {"verbosity 1", "a blank in the name"},
        {"", "empty"},
        {std::string("verbosity\0", 10), "NUL behind it"},
        {"\xEF\xBB\xBFverbosity", "a byte-order mark before it"},
        {"debug.log_sections", "the library reads it, and leaves it to hosts"},
    };
    for (const auto &row : rows) {
        const FiledText text("verbosity = 1\n" + row.name + " = 1\n");
        EXPECT_EQ(text.assignments[1].verdict, Verdict::unknown) << row.why;
        EXPECT_EQ(text.assignments[1].option, +Filed::no_option) << row.why;
        EXPECT_FALSE(text.assignments[1].is_readable()) << row.why;
        EXPECT_EQ(verdict_of_setter(row.name, "1"), Verdict::unknown) << row.why;
    }
}

TEST(text, notes_whether_a_line_has_an_equals_sign_and_in_how_many_sections_it_stands)
{
    const FiledText text("a\na =\n[s]\n= v\n[s, t, u]\nb = c = d\n[x\ne\n");
    const struct {
        bool has_equals;
        std::uint32_t sections;
        const char *why;
    } rows[] = {
        {false, 1, "a name alone; in the unnamed section"},
        {true, 1, "an empty value"},
        {true, 1, "an empty name"},
        {true, 3, "of a header with three names"},
        {false, 1, "below a malformed header"},
    };
    ASSERT_EQ(text.assignments.size(), std::size(rows));
    for (std::size_t i = 0; i < std::size(rows); ++i) {
        EXPECT_EQ(text.assignments[i].has_equals, rows[i].has_equals) << rows[i].why;
        EXPECT_EQ(text.assignments[i].sections, rows[i].sections) << rows[i].why;
    }
}

} // namespace
