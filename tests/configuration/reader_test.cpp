#include "dalvo/configuration/reader.h"

#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

namespace {

using dalvo::TextAssignment;
using dalvo::TextLine;
using dalvo::TextPiece;

std::string shown(const TextPiece &piece)
{
    return "'" + std::string(piece.text) + "'@" + std::to_string(piece.column);
}

std::string shown(const std::vector<TextPiece> &names)
{
    std::string text;
    for (const TextPiece &name : names) {
        text += " " + shown(name);
    }
    return text;
}

/// Writes each event on a line of its own.
class Recorder : public dalvo::TextReceiver {
public:
    std::vector<std::string> events;

    void header(const TextLine &line, const std::vector<TextPiece> &names) override
    {
        add(line, "header" + shown(names));
    }

    void assignment(const TextLine &line, const TextAssignment &assignment) override
    {
        add(line, shown(assignment.name) + (assignment.has_equals ? " = " : " ") + shown(assignment.value));
    }

    void malformed(const TextLine &line, const TextPiece &stripped, const std::vector<TextPiece> &names) override
    {
        add(line, "malformed " + shown(stripped) + shown(names));
    }

private:
    void add(const TextLine &line, const std::string &event)
    {
        events.push_back(std::to_string(line.number) + ": " + event);
        lines.emplace_back(line.text);
    }

public:
    std::vector<std::string> lines;
};

/// What both ways to read the text find.
Recorder events_of(const std::string &text)
{
    std::istringstream in(text);
    Recorder recorder;
    dalvo::read_text(in, recorder);
    Recorder in_memory;
    dalvo::read_text(std::string_view(text), in_memory);
    EXPECT_EQ(in_memory.events, recorder.events);
    EXPECT_EQ(in_memory.lines, recorder.lines);
    return recorder;
}

TEST(reader, hands_over_each_line_with_its_places)
{
    const struct {
        std::string text;
        std::vector<std::string> events;
        const char *why;
    } rows[] = {
        {"", {}, "nothing"},
        {"\n \n# a = 1\n  # [b]\n", {}, "blank lines and comments"},
        {"a=1", {"1: 'a'@1 = '1'@3"}, "no final newline"},
        {"\n\na = 1\n", {"3: 'a'@1 = '1'@5"}, "lines are counted, blank ones too"},
        {"\t a \t=  b = c \r\n", {"1: 'a'@3 = 'b = c'@9"}, "white space inside a side stays"},
        {"a", {"1: 'a'@1 ''@2"}, "no equals sign"},
        {" a b ", {"1: 'a b'@2 ''@5"}, "no equals sign, between white space"},
        {"a =", {"1: 'a'@1 = ''@4"}, "an empty value stands behind the sign"},
        {"a =  ", {"1: 'a'@1 = ''@4"}, "white space alone is an empty value"},
        {" = v", {"1: ''@2 = 'v'@4"}, "an empty name stands where the sign does"},
        {"=", {"1: ''@1 = ''@2"}, "both empty"},
        {"a = 1 # b", {"1: 'a'@1 = '1 # b'@5"}, "no comments behind a value"},
        {"[s]", {"1: header 's'@2"}, "a header"},
        {"  [ s t ]  ", {"1: header 's t'@5"}, "white space around a name"},
        {"[a]]", {"1: header 'a]'@2"}, "all between the outer brackets"},
        {"[a, b ,c]", {"1: header 'a'@2 'b'@5 'c'@8"}, "several names"},
        {"[a,a]", {"1: header 'a'@2 'a'@4"}, "the same name twice"},
        {"[ default ]", {"1: header ''@3"}, "the unnamed section"},
        {"[default, x]", {"1: header 'default'@2 'x'@11"}, "an ordinary name among others"},
        {"[", {"1: malformed '['@1"}, "no end"},
        {" [a] x\na = 1", {"1: malformed '[a] x'@2", "2: 'a'@1 = '1'@5"}, "the reading goes on"},
        {"[]", {"1: malformed '[]'@1"}, "no name"},
        {"[  ]", {"1: malformed '[  ]'@1"}, "a blank name"},
        {"[a,,b]", {"1: malformed '[a,,b]'@1 'a'@2"}, "the names before the empty one"},
        {"[a, b,]", {"1: malformed '[a, b,]'@1 'a'@2 'b'@5"}, "the last name empty"},
        {"[,a]", {"1: malformed '[,a]'@1"}, "the first name empty"},
        {"\xEF\xBB\xBF[s]", {"1: '\xEF\xBB\xBF[s]'@1 ''@7"}, "a byte-order mark makes it no header"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(events_of(row.text).events, row.events) << row.why << ": " << row.text;
    }
}

TEST(reader, hands_over_the_line_as_it_stands)
{
    EXPECT_EQ(events_of("  a = 1 \r\n\t[s]\n [\n").lines, (std::vector<std::string>{"  a = 1 \r", "\t[s]", " ["}));
}

TEST(reader, keeps_nul_and_bytes_above_0x7f)
{
    EXPECT_EQ(events_of(std::string("\xff\0=\0\x80", 5)).events,
              std::vector<std::string>{std::string("1: '\xff\0'@1 = '\0\x80'@4", 18)});
}

TEST(reader, stops_behind_the_line_at_which_the_receiver_throws)
{
    struct Thrower : Recorder {
        void assignment(const TextLine &, const TextAssignment &) override { throw std::runtime_error("enough"); }
    } thrower;
    std::istringstream in("a = 1\n[s]\n");
    EXPECT_THROW(dalvo::read_text(in, thrower), std::runtime_error);
    EXPECT_TRUE(thrower.events.empty());
    std::string rest;
    std::getline(in, rest);
    EXPECT_EQ(rest, "[s]");
}

/// Keeps the views that it is given.
class Keeper : public dalvo::TextReceiver {
public:
    void header(const TextLine &, const std::vector<TextPiece> &names) override
    {
        for (const TextPiece &name : names) {
            pieces.push_back(name.text);
        }
    }
    void assignment(const TextLine &line, const TextAssignment &assignment) override
    {
        pieces.insert(pieces.end(), {line.text, assignment.name.text, assignment.value.text});
    }
    void malformed(const TextLine &, const TextPiece &stripped, const std::vector<TextPiece> &) override
    {
        pieces.push_back(stripped.text);
    }

    std::vector<std::string_view> pieces;
};

TEST(reader, gives_views_of_a_text_in_memory)
{
    const std::string text = " [ a ,b]\n x = y z \nname\n[]";
    Keeper keeper;
    dalvo::read_text(std::string_view(text), keeper);
    const std::vector<std::string_view> expected = {"a", "b", " x = y z ", "x", "y z", "name", "name", "", "[]"};
    EXPECT_EQ(keeper.pieces, expected);
    for (const std::string_view piece : keeper.pieces) {
        EXPECT_GE(piece.data(), text.data());
        EXPECT_LE(piece.data() + piece.size(), text.data() + text.size());
    }
}

TEST(reader, passes_on_what_a_receiver_throws_at_a_text_in_memory)
{
    class Throwing : public Recorder {
        void malformed(const TextLine &, const TextPiece &, const std::vector<TextPiece> &) override
        {
            throw std::runtime_error("enough");
        }
    };
    Throwing receiver;
    EXPECT_THROW(dalvo::read_text(std::string_view("a = 1\n[\nb = 2"), receiver), std::runtime_error);
    EXPECT_EQ(receiver.events, (std::vector<std::string>{"1: 'a'@1 = '1'@5"}));
}

} // namespace
