#include <clocale>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <locale>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "dalvo/configuration/configurationsetter.h"
#include "tests/configuration/caught.h"
#include "tests/support/sections.h"

namespace {

using namespace std::string_literals;
using dalvo::ConfigurationSetter;
using dalvo::testing::Caught;
using dalvo::testing::caught_from;
using dalvo::testing::load_text;
using dalvo::testing::Sections;
using dalvo::testing::sections_from;
using dalvo::testing::sections_of;

Caught bad_format(const std::string &line)
{
    // The text of what() ends at a NUL.
    const std::string what = "bad format of configuration file: " + line + ", value: ";
    return {what.c_str(), line, "", ""};
}

struct AcceptedRow {
    std::string text;
    Sections expected;
    const char *why;
};

void expect_accepted(const std::vector<AcceptedRow> &rows)
{
    for (const AcceptedRow &row : rows) {
        EXPECT_EQ(sections_from(row.text), row.expected) << row.why << ": " << ::testing::PrintToString(row.text);
    }
}

TEST(load, accepts_texts_without_assignments)
{
    expect_accepted({
        {"", {{"", {}}}, "the empty text creates the unnamed section"},
        {"\n", {{"", {}}}, "an empty line"},
        {"\n\r\n \t\v\f\r\n", {{"", {}}}, "lines of white space"},
        {"   ", {{"", {}}}, "white space without a final newline"},
        {"#", {{"", {}}}, "a bare comment sign"},
        {"# a = 1\n#[s]\n#\n", {{"", {}}}, "comments"},
        {"  # x = 1", {{"", {}}}, "white space before a comment"},
        {"\t\v# x = 1\r\n", {{"", {}}}, "other white space before a comment"},
        {"[s]", {{"", {}}, {"s", {}}}, "a header alone creates its section, and the unnamed one"},
        {"[b]\n[a, c]\n", {{"", {}}, {"a", {}}, {"b", {}}, {"c", {}}}, "headers alone"},
    });
}

TEST(load, accepts_assignments)
{
    expect_accepted({
        {"a = 1\n", {{"", {{"a", "1"}}}}, "the usual form"},
        {"a = 1", {{"", {{"a", "1"}}}}, "no final newline"},
        {"a=1\nb=2", {{"", {{"a", "1"}, {"b", "2"}}}}, "no blanks, and the last line counts"},
        {"\t a \v\f=\r  1 \t\n", {{"", {{"a", "1"}}}}, "white space around name and value"},
        {"a.b c  d = x  y\tz", {{"", {{"a.b c  d", "x  y\tz"}}}}, "white space inside is kept"},
        {"k", {{"", {{"k", ""}}}}, "no sign at all"},
        {"k more", {{"", {{"k more", ""}}}}, "no sign: the whole line is the name"},
        {"k =", {{"", {{"k", ""}}}}, "nothing behind the sign"},
        {"k =  \t", {{"", {{"k", ""}}}}, "white space behind the sign"},
        {"= v", {{"", {{"", "v"}}}}, "nothing before the sign"},
        {"=", {{"", {{"", ""}}}}, "the sign alone"},
        {"===", {{"", {{"", "=="}}}}, "three signs"},
        {"= =", {{"", {{"", "="}}}}, "a sign as value"},
        {"k = a = b", {{"", {{"k", "a = b"}}}}, "the first sign splits, the others do not"},
        {"x = a=b=", {{"", {{"x", "a=b="}}}}, "a sign at the value's end"},
        {"x = 1 # note", {{"", {{"x", "1 # note"}}}}, "no comment behind a value"},
        {"a#b = #", {{"", {{"a#b", "#"}}}}, "no comment inside a line"},
        {"; a = 1\n// b", {{"", {{"; a", "1"}, {"// b", ""}}}}, "no other comment signs"},
        {"a = \"x\"\nb = 'y '\nc = \" ", {{"", {{"a", "\"x\""}, {"b", "'y '"}, {"c", "\""}}}}, "quotes stay"},
        {"a = x\\\nb = \\n\\\\", {{"", {{"a", "x\\"}, {"b", "\\n\\\\"}}}}, "no escapes, no joined lines"},
        {"a = [s]\nb[ = ]\n] = [", {{"", {{"a", "[s]"}, {"b[", "]"}, {"]", "["}}}}, "brackets that open no line"},
        {"]", {{"", {{"]", ""}}}}, "a closing bracket alone"},
        {"a, b = 1, 2", {{"", {{"a, b", "1, 2"}}}}, "commas mean nothing"},
        {"a = 1\na = 2\na = 1", {{"", {{"a", "1"}, {"a", "2"}, {"a", "1"}}}}, "nothing is merged or sorted"},
        {"A = TRUE\na = true", {{"", {{"A", "TRUE"}, {"a", "true"}}}}, "case is kept"},
        {"nosuch = ?\nverbosity = x", {{"", {{"nosuch", "?"}, {"verbosity", "x"}}}}, "nothing is looked up or tested"},
        {"# c\na = 1\n\n  #\nb = 2\n", {{"", {{"a", "1"}, {"b", "2"}}}}, "comments and blank lines between"},
    });
}

TEST(load, accepts_line_ends_of_every_kind)
{
    expect_accepted({
        {"a = 1\r\n[s]\r\nb =\r\nc\r\n\r\n# d\r\n", {{"", {{"a", "1"}}}, {"s", {{"b", ""}, {"c", ""}}}}, "CR LF"},
        {"a = 1\r\nb = 2\r", {{"", {{"a", "1"}, {"b", "2"}}}}, "the last line ends in CR"},
        {"a = 1\r\r\n", {{"", {{"a", "1"}}}}, "CR CR LF"},
        {"a = 1\rb = 2\r", {{"", {{"a", "1\rb = 2"}}}}, "a lone CR ends no line"},
        {"# a\rb = 2\n", {{"", {}}}, "nor a comment"},
        {"[a\rb]\r\n", {{"", {}}, {"a\rb", {}}}, "nor a header"},
        {"a = 1\n\rb = 2", {{"", {{"a", "1"}, {"b", "2"}}}}, "LF CR"},
        {"a = 1\fb\vc", {{"", {{"a", "1\fb\vc"}}}}, "form feed and vertical tab end no line"},
    });
}

TEST(load, accepts_headers_of_one_section)
{
    expect_accepted({
        {"[s]\nk = v", {{"", {}}, {"s", {{"k", "v"}}}}, "the usual form"},
        {" \t[ s ]\v\r\nk = v", {{"", {}}, {"s", {{"k", "v"}}}}, "white space around and inside the brackets"},
        {"[a b]\nk = v", {{"", {}}, {"a b", {{"k", "v"}}}}, "white space inside a name"},
        {"[default]\na = 1", {{"", {{"a", "1"}}}}, "the unnamed section by its other name"},
        {"[s]\na = 1\n[\tdefault\f]\nb = 2", {{"", {{"b", "2"}}}, {"s", {{"a", "1"}}}},
         "stripped before it is looked at"},
        {"[DEFAULT]\na = 1\n[Default]\nb = 2", {{"", {}}, {"DEFAULT", {{"a", "1"}}}, {"Default", {{"b", "2"}}}},
         "in lower case only"},
        {"[defaults]\n[ default x]\n['default']", {{"", {}}, {"defaults", {}}, {"default x", {}}, {"'default'", {}}},
         "as the whole name only"},
        {"[s]\n[S]\nk = v", {{"", {}}, {"s", {}}, {"S", {{"k", "v"}}}}, "case tells names apart"},
        {"[a]]\nk = v", {{"", {}}, {"a]", {{"k", "v"}}}}, "the last bracket closes"},
        {"[[a]", {{"", {}}, {"[a", {}}}, "the first bracket opens"},
        {"[[a]]", {{"", {}}, {"[a]", {}}}, "brackets as part of the name"},
        {"[]]\n[[]", {{"", {}}, {"]", {}}, {"[", {}}}, "a bracket as the name"},
        {"[a] [b]", {{"", {}}, {"a] [b", {}}}, "two headers on a line are one name"},
        {"[a = b]\n[#]\n[=]", {{"", {}}, {"a = b", {}}, {"#", {}}, {"=", {}}}, "signs as part of the name"},
        {"[a] # note ]", {{"", {}}, {"a] # note", {}}}, "no comment behind a header"},
        {"[s]\na = 1\n[t]\nb = 2\n[s]\nc = 3", {{"", {}}, {"s", {{"a", "1"}, {"c", "3"}}}, {"t", {{"b", "2"}}}},
         "a section opened again goes on"},
    });
}

TEST(load, accepts_headers_of_several_sections)
{
    expect_accepted({
        {"[ s1 , s2 ]\nk = v\n[s3]\nl = w",
         {{"", {}}, {"s1", {{"k", "v"}}}, {"s2", {{"k", "v"}}}, {"s3", {{"l", "w"}}}}, "until the next header"},
        {"[a,b,c]\nk = 1\nl = 2\n[default]\nm = 3",
         {{"", {{"m", "3"}}}, {"a", {{"k", "1"}, {"l", "2"}}}, {"b", {{"k", "1"}, {"l", "2"}}},
          {"c", {{"k", "1"}, {"l", "2"}}}},
         "each assignment goes into each"},
        {"[a, b]\nk = 1\n[b, c]\nk = 2",
         {{"", {}}, {"a", {{"k", "1"}}}, {"b", {{"k", "1"}, {"k", "2"}}}, {"c", {{"k", "2"}}}},
         "the next header of several clears the former"},
        {"[a,\t\vb \f,c\r]\nk = v", {{"", {}}, {"a", {{"k", "v"}}}, {"b", {{"k", "v"}}}, {"c", {{"k", "v"}}}},
         "white space around each name"},
        {"[a, a]\nk = v", {{"", {}}, {"a", {{"k", "v"}, {"k", "v"}}}}, "a name twice takes each assignment twice"},
        {"[a, b, a]\nk = 1\nl = 2",
         {{"", {}}, {"a", {{"k", "1"}, {"k", "1"}, {"l", "2"}, {"l", "2"}}}, {"b", {{"k", "1"}, {"l", "2"}}}},
         "twice with another between"},
        {"[default, x]\nk = v", {{"", {}}, {"default", {{"k", "v"}}}, {"x", {{"k", "v"}}}},
         "default among several is a section of that name"},
        {"[x, default ]\nk = v", {{"", {}}, {"default", {{"k", "v"}}}, {"x", {{"k", "v"}}}}, "at the end too"},
        {"[default,default]\nk = v", {{"", {}}, {"default", {{"k", "v"}, {"k", "v"}}}}, "and twice"},
        {"[a]],[b]\nk = v", {{"", {}}, {"a]]", {{"k", "v"}}}, {"[b", {{"k", "v"}}}}, "brackets inside the names"},
    });
}

TEST(load, accepts_any_byte)
{
    expect_accepted({
        {"a\0b = c\0d"s, {{"", {{"a\0b"s, "c\0d"s}}}}, "NUL in name and value"},
        {"\0 = \0"s, {{"", {{"\0"s, "\0"s}}}}, "NUL is no white space"},
        {"\0"s, {{"", {{"\0"s, ""}}}}, "NUL alone is a line"},
        {"\0# a"s, {{"", {{"\0# a"s, ""}}}}, "NUL before a comment sign"},
        {"[a\0b]\nk = v\n[a]\n[\0]"s, {{"", {}}, {"a\0b"s, {{"k", "v"}}}, {"a", {}}, {"\0"s, {}}}, "NUL in a header"},
        {"[a\0, \0b]\nk = v"s, {{"", {}}, {"a\0"s, {{"k", "v"}}}, {"\0b"s, {{"k", "v"}}}}, "NUL in a header of two"},
        {"[default\0]"s, {{"", {}}, {"default\0"s, {}}}, "NUL behind default"},
        {"\xc3\xa9 = \xff\x80", {{"", {{"\xc3\xa9", "\xff\x80"}}}}, "bytes above 0x7F"},
        {"[\xa0]\n[ \x85, \xff ]\nk = v",
         {{"", {}}, {"\xa0", {}}, {"\x85", {{"k", "v"}}}, {"\xff", {{"k", "v"}}}}, "bytes above 0x7F in headers"},
        {"\xef\xbb\xbf# c\nb = 1", {{"", {{"\xef\xbb\xbf# c", ""}, {"b", "1"}}}}, "a byte-order mark hides a comment"},
        {"\xef\xbb\xbf[s]\nb = 1", {{"", {{"\xef\xbb\xbf[s]", ""}, {"b", "1"}}}}, "and a header"},
        {"\xef\xbb\xbf" "a = 1", {{"", {{"\xef\xbb\xbf" "a", "1"}}}}, "and is part of a name"},
        {"\xef\xbb\xbf", {{"", {{"\xef\xbb\xbf", ""}}}}, "alone it is a name"},
    });
}

TEST(load, rejects_malformed_headers_and_keeps_what_came_before)
{
    const struct {
        std::string text, line;
        Sections after;
        const char *why;
    } rows[] = {
        {"[]", "[]", {{"", {}}}, "no name"},
        {"[  ]", "[  ]", {{"", {}}}, "white space for a name"},
        {"[\t\v\f\r ]\n", "[\t\v\f\r ]", {{"", {}}}, "all of it"},
        {"[", "[", {{"", {}}}, "a bracket alone"},
        {" [ \n", "[", {{"", {}}}, "the line is stripped"},
        {"[a", "[a", {{"", {}}}, "not closed"},
        {"\t[ a  b \r\n]", "[ a  b", {{"", {}}}, "closed on the next line"},
        {"[a] b", "[a] b", {{"", {}}}, "text behind the header"},
        {"[a] # note", "[a] # note", {{"", {}}}, "a comment behind the header"},
        {"[a] = 1", "[a] = 1", {{"", {}}}, "no assignment begins with a bracket"},
        {"[a]\xa0", "[a]\xa0", {{"", {}}}, "0xA0 is no white space"},
        {"[a]\0"s, "[a]\0"s, {{"", {}}}, "nor is NUL"},
        {"[a,,b]", "[a,,b]", {{"", {}}, {"a", {}}}, "the name before the empty one exists, the one behind not"},
        {"[a, b, \t, c]", "[a, b, \t, c]", {{"", {}}, {"a", {}}, {"b", {}}}, "white space for a name among several"},
        {"[a,]", "[a,]", {{"", {}}, {"a", {}}}, "an empty last name"},
        {"[a, ]", "[a, ]", {{"", {}}, {"a", {}}}, "white space as the last name"},
        {"[,a]", "[,a]", {{"", {}}}, "an empty first name"},
        {"[,]", "[,]", {{"", {}}}, "two empty names"},
        {"[ , ]", "[ , ]", {{"", {}}}, "white space twice"},
        {"[default,]", "[default,]", {{"", {}}, {"default", {}}}, "default is a name here"},
        {"a = 1\n[s]\nb = 2\n[t\nc = 3\n[u]\n", "[t", {{"", {{"a", "1"}}}, {"s", {{"b", "2"}}}},
         "lines before it are filed, lines behind it are not"},
        {"[s, t]\nb = 2\n[s, u, , v]\nb = 3", "[s, u, , v]",
         {{"", {}}, {"s", {{"b", "2"}}}, {"t", {{"b", "2"}}}, {"u", {}}},
         "nothing is taken back"},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(::testing::Message() << row.why << ": " << ::testing::PrintToString(row.text));
        ConfigurationSetter setter;
        EXPECT_EQ(caught_from([&] { load_text(setter, row.text); }), bad_format(row.line));
        EXPECT_EQ(sections_of(setter), row.after);

        Sections next = row.after;
        next[""].push_back({"next", "1", 5});
        load_text(setter, "next = 1", 5);
        EXPECT_EQ(sections_of(setter), next) << "a later text begins in the unnamed section";
    }
}

TEST(load, leaves_the_text_behind_a_malformed_line_in_the_stream)
{
    ConfigurationSetter setter;
    std::istringstream in("a = 1\n[\nb = 2\n");
    EXPECT_EQ(caught_from([&] { setter.load(in, 0); }), bad_format("["));
    EXPECT_TRUE(in.good());
    setter.load(in, 1);
    EXPECT_EQ(sections_of(setter), (Sections{{"", {{"a", "1", 0}, {"b", "2", 1}}}}));
}

TEST(load, begins_each_text_in_the_unnamed_section_and_appends)
{
    ConfigurationSetter setter;
    load_text(setter, "[s, t]\na = 1\n");
    load_text(setter, "b = 2\n[s]\nc = 3\n");
    load_text(setter, "d = 4");
    EXPECT_EQ(sections_of(setter), (Sections{{"", {{"b", "2"}, {"d", "4"}}},
                                             {"s", {{"a", "1"}, {"c", "3"}}},
                                             {"t", {{"a", "1"}}}}));
}

TEST(load, keeps_the_texts_level_with_each_entry)
{
    ConfigurationSetter setter;
    Sections expected;
    for (const std::int32_t level : {0, 3, -1, std::numeric_limits<std::int32_t>::min(),
                                     std::numeric_limits<std::int32_t>::max()}) {
        load_text(setter, "a = 1\n[s, t]\nb = 2\n", level);
        expected[""].push_back({"a", "1", level});
        expected["s"].push_back({"b", "2", level});
        expected["t"].push_back({"b", "2", level});
    }
    EXPECT_EQ(sections_of(setter), expected);
}

/// Files a line per byte and expects that six of them are stripped and all others kept.
void expect_six_white_space_characters()
{
    for (int code = 0; code < 256; ++code) {
        const std::string c(1, static_cast<char>(code));
        if (c == "\n") {
            continue;
        }
        SCOPED_TRACE(code);
        const bool white = " \t\v\f\r"s.find(c) != std::string::npos;
        const std::string edge = white ? "" : c;

        const std::string inner_name = c == "=" ? "nm" : "n" + c + "m";
        EXPECT_EQ(sections_from(inner_name + " = v" + c + "w"), (Sections{{"", {{inner_name, "v" + c + "w"}}}}));
        EXPECT_EQ(sections_from("x = " + c + "v" + c), (Sections{{"", {{"x", edge + "v" + edge}}}}));
        if (c != "=") {
            EXPECT_EQ(sections_from("n" + c + " = v"), (Sections{{"", {{"n" + edge, "v"}}}}));
        }
        if (c == ",") {
            continue;
        }
        const Sections inner_section{{"", {}}, {"s" + c + "t", {{"k", "v"}}}};
        EXPECT_EQ(sections_from("[s" + c + "t]\nk = v"), inner_section);
        const Sections edge_section{{"", {}}, {edge + "s" + edge, {{"k", "v"}}}};
        EXPECT_EQ(sections_from("[" + c + "s" + c + "]\nk = v"), edge_section);
        const Sections two{{"", {}}, {"s" + edge, {{"k", "v"}}}, {edge + "t" + edge, {{"k", "v"}}}};
        EXPECT_EQ(sections_from("[s" + c + "," + c + "t" + c + "]\nk = v"), two);
    }
}

TEST(load, strips_the_six_white_space_characters_and_no_other)
{
    expect_six_white_space_characters();
}

/// The classic classification with blank as a letter, and 'v', 0x85 and 0xA0 as white space.
class OddCtype : public std::ctype<char> {
public:
    OddCtype() : std::ctype<char>(table()) {}

private:
    static const mask *table()
    {
        static std::vector<mask> masks(classic_table(), classic_table() + table_size);
        masks[' '] = alpha;
        for (const std::size_t c : {0x76U, 0x85U, 0xa0U}) {
            masks[c] = space;
        }
        return masks.data();
    }
};

TEST(load, strips_the_same_characters_whatever_the_global_locales)
{
    const std::string c_locale = std::setlocale(LC_ALL, nullptr);
    const std::locale cpp_locale = std::locale::global(std::locale(std::locale::classic(), new OddCtype));
    EXPECT_FALSE(std::isspace(' ', std::locale()));
    for (const char *name : {"C.utf8", "C.UTF-8", "en_US.ISO-8859-1", "de_DE.ISO-8859-1", "C"}) {
        SCOPED_TRACE(name);
        std::setlocale(LC_ALL, name); // one that the machine lacks changes nothing
        expect_six_white_space_characters();
    }
    std::setlocale(LC_ALL, c_locale.c_str());
    std::locale::global(cpp_locale);
}

TEST(load, takes_lines_of_ten_megabytes)
{
    const std::string big(10'000'000, 'x');
    EXPECT_TRUE((sections_from(big + " = 1\n") == Sections{{"", {{big, "1"}}}})) << "a name";
    EXPECT_TRUE((sections_from("a = " + big) == Sections{{"", {{"a", big}}}})) << "a value";
    EXPECT_TRUE((sections_from(big) == Sections{{"", {{big, ""}}}})) << "no sign";
    EXPECT_TRUE((sections_from("[" + big + "]\na = 1") == Sections{{"", {}}, {big, {{"a", "1"}}}})) << "a header";
    EXPECT_TRUE((sections_from("[a, " + big + "]") == Sections{{"", {}}, {"a", {}}, {big, {}}})) << "one of two names";
    EXPECT_TRUE((sections_from("#" + big + "\na = 1") == Sections{{"", {{"a", "1"}}}})) << "a comment";
    const std::string blanks(10'000'000, ' ');
    EXPECT_TRUE((sections_from(blanks + "a" + blanks + "\n" + blanks) == Sections{{"", {{"a", ""}}}})) << "blanks";
    EXPECT_TRUE((sections_from("a = " + std::string(10'000'000, '=')) ==
                 Sections{{"", {{"a", std::string(10'000'000, '=')}}}})) << "signs";

    ConfigurationSetter setter;
    const Caught caught = caught_from([&] { load_text(setter, "[" + big + "\n"); });
    EXPECT_TRUE(caught == bad_format("[" + big)) << "a header that is not closed";
}

TEST(load, files_into_thousands_of_sections_while_their_table_grows)
{
    constexpr int count = 20'000;
    std::string one_by_one = "first = 0\n";
    std::string at_once = "[";
    Sections expected{{"", {{"first", "0"}, {"last", "9"}}}};
    for (int i = 0; i < count; ++i) {
        const std::string name = "section " + std::to_string(i);
        one_by_one += "[" + name + "]\nk = " + std::to_string(i) + "\n";
        at_once += (i == 0 ? "" : ", ") + name;
        expected[name] = {{"k", std::to_string(i)}, {"all", "1"}, {"both", "2"}};
    }
    at_once += "]\nall = 1\nboth = 2\n";
    ConfigurationSetter setter;
    load_text(setter, one_by_one);
    load_text(setter, at_once);
    load_text(setter, "last = 9");
    EXPECT_GT(setter.sections().table().buckets().size(), static_cast<std::size_t>(count));
    EXPECT_TRUE(sections_of(setter) == expected);

    for (auto &[name, entries] : expected) {
        if (!name.empty()) {
            entries.erase(entries.begin());
        } else {
            entries.clear();
        }
    }
    EXPECT_TRUE(sections_from(at_once) == expected) << "the header itself makes the table grow";
}

} // namespace
