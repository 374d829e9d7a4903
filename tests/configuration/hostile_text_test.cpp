// Texts that no person writes: what they say is stored byte for byte, and nothing of them is ever interpreted.

#include <algorithm>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "dalvo/configuration/configurationsetter.h"
#include "tests/support/golden.h"
#include "tests/support/sections.h"
#include "tests/support/settings.h"

namespace {

using namespace std::string_literals;
using dalvo::Configuration;
using dalvo::ConfigurationSetter;
using dalvo::OptionParser;
using dalvo::testing::CatalogueSetter;
using dalvo::testing::Filed;
using dalvo::testing::golden_rows;
using dalvo::testing::load_text;
using dalvo::testing::Sections;
using dalvo::testing::sections_from;
using dalvo::testing::sections_of;

/// `text` with `piece` for each '@' in it.
std::string filled(const std::string &text, const std::string &piece)
{
    std::string result;
    for (const char c : text) {
        result += c == '@' ? piece : std::string(1, c);
    }
    return result;
}

Sections filled(const Sections &sections, const std::string &piece)
{
    Sections result;
    for (const auto &[name, entries] : sections) {
        std::vector<Filed> &target = result[filled(name, piece)];
        for (const Filed &entry : entries) {
            target.push_back({filled(entry.name, piece), filled(entry.value, piece), entry.level});
        }
    }
    return result;
}

/// Every byte that has no meaning of its own, NUL first, and sequences that mean much to others.
const std::vector<std::string> &ordinary_pieces()
{
    static const std::vector<std::string> all = [] {
        const std::string meaningful = "\t\n\v\f\r =#[],";
        std::vector<std::string> pieces;
        for (int byte = 0; byte < 256; ++byte) {
            if (meaningful.find(static_cast<char>(byte)) == std::string::npos) {
                pieces.emplace_back(1, static_cast<char>(byte));
            }
        }
        for (const char *sequence : {"%s", "%n", "%d%x%1$n", "\x1B(0", "\x1B\x1B", "\x9B" "31m", "\xC2\x9B" "2J",
                                     "\\x00", "${HOME}", "$(ls)", "\xE2\x80\xAE", "\xEF\xBB\xBF", "\xC0\x80"}) {
            pieces.emplace_back(sequence);
        }
        pieces.push_back("\0%n\0\x1B\0"s);
        return pieces;
    }();
    return all;
}

TEST(hostile_text, is_filed_byte_for_byte_wherever_a_byte_without_meaning_stands)
{
    const struct {
        std::string text;
        Sections expected;
    } rows[] = {
        {"[@a]\nk = v", {{"", {}}, {"@a", {{"k", "v"}}}}},
        {"[a@b]\nk = v", {{"", {}}, {"a@b", {{"k", "v"}}}}},
        {"[a@]\nk = v", {{"", {}}, {"a@", {{"k", "v"}}}}},
        {"[@]\nk = v", {{"", {}}, {"@", {{"k", "v"}}}}},
        {"[ @ ]\nk = v", {{"", {}}, {"@", {{"k", "v"}}}}},
        {"[@,b]\nk = v", {{"", {}}, {"@", {{"k", "v"}}}, {"b", {{"k", "v"}}}}},
        {"[a,@]\nk = v", {{"", {}}, {"a", {{"k", "v"}}}, {"@", {{"k", "v"}}}}},
        {"[a@, @b]\nk = v", {{"", {}}, {"a@", {{"k", "v"}}}, {"@b", {{"k", "v"}}}}},
        {"[@default]\nk = v", {{"", {}}, {"@default", {{"k", "v"}}}}},
        {"[default@]\nk = v", {{"", {}}, {"default@", {{"k", "v"}}}}},
        {"@[a]\nk = v", {{"", {{"@[a]", ""}, {"k", "v"}}}}},
        {"@", {{"", {{"@", ""}}}}},
        {"@ = v", {{"", {{"@", "v"}}}}},
        {"@a = v", {{"", {{"@a", "v"}}}}},
        {"a@b = v", {{"", {{"a@b", "v"}}}}},
        {"a@ = v", {{"", {{"a@", "v"}}}}},
        {"a @ b = v", {{"", {{"a @ b", "v"}}}}},
        {"a =@", {{"", {{"a", "@"}}}}},
        {"a = @v", {{"", {{"a", "@v"}}}}},
        {"a = v@w", {{"", {{"a", "v@w"}}}}},
        {"a = v @ w", {{"", {{"a", "v @ w"}}}}},
        {"a = v@\nb = w", {{"", {{"a", "v@"}, {"b", "w"}}}}},
        {"a = @=@", {{"", {{"a", "@=@"}}}}},
        {"#@\nk = v", {{"", {{"k", "v"}}}}},
        {" # a @ b\nk = v", {{"", {{"k", "v"}}}}},
        {"# a@\nk = v", {{"", {{"k", "v"}}}}},
        {"@# a\nk = v", {{"", {{"@# a", ""}, {"k", "v"}}}}},
        {"k = v\n@", {{"", {{"k", "v"}, {"@", ""}}}}},
    };
    for (const std::string &piece : ordinary_pieces()) {
        for (const auto &row : rows) {
            EXPECT_EQ(sections_from(filled(row.text, piece)), filled(row.expected, piece))
                << ::testing::PrintToString(filled(row.text, piece));
        }
    }
}

/// The error of loading `text`, whole, as its stream holds it: what() ends at the first NUL.
template <class Action> std::pair<std::string, std::string> message_and_option(Action action)
{
    try {
        action();
    } catch (const OptionParser::error &e) {
        return {e.message_stream.str(), e.option};
    }
    ADD_FAILURE() << "no error was thrown";
    return {};
}

TEST(hostile_text, stands_in_errors_byte_for_byte)
{
    for (const std::string &piece : ordinary_pieces()) {
        SCOPED_TRACE(::testing::PrintToString(piece));
        for (const std::string &line : {"[a]@"s, "[@"s, "[a@"s, "[@,]"s, "[]@"s}) {
            ConfigurationSetter setter;
            const std::string stripped = filled(line, piece);
            const std::pair expected("bad format of configuration file: " + stripped + ", value: ", stripped);
            EXPECT_EQ(message_and_option([&] { load_text(setter, "k = v\n" + stripped + "\nlost"); }), expected);
            EXPECT_EQ(sections_of(setter).at(""), (std::vector<Filed>{{"k", "v"}}));
        }
        CatalogueSetter setter;
        Configuration record;
        const std::string name = filled("@no-such-option@", piece);
        load_text(setter, name + " = " + piece);
        EXPECT_EQ(message_and_option([&] { setter.update_config(&record); }),
                  std::pair("unknown option " + name + ": " + name + ", value: " + piece, name));
    }
}

TEST(hostile_text, passes_through_replay_and_record_and_dump_unchanged)
{
    for (const std::string &piece : ordinary_pieces()) {
        const std::string value = filled("@a @ b@", piece);
        CatalogueSetter setter;
        load_text(setter, "[@]\nprinter.defines_prefix = "s.replace(1, 1, piece) + value);
        setter.set_active_config(piece);
        Configuration record;
        setter.update_config(&record);
        EXPECT_EQ(record.printer_defines_prefix, value);
        std::ostringstream out;
        setter.dump(&record, out, piece);
        ConfigurationSetter again;
        load_text(again, out.str());
        const std::vector<Filed> entries = sections_of(again).at(piece);
        EXPECT_EQ(entries.size(), golden_rows("dump.tsv", 3).size());
        EXPECT_NE(std::find(entries.begin(), entries.end(), Filed{"printer.defines_prefix", value, 0}), entries.end())
            << ::testing::PrintToString(value);
    }
}

TEST(hostile_text, of_one_long_line_is_filed_whole)
{
    const std::string longest(1U << 20U, 'x');
    const struct {
        std::string text;
        Sections expected;
    } rows[] = {
        {"a = " + longest, {{"", {{"a", longest}}}}},
        {longest, {{"", {{longest, ""}}}}},
        {longest + " = 1", {{"", {{longest, "1"}}}}},
        {"[" + longest + "]", {{"", {}}, {longest, {}}}},
        {"#" + longest, {{"", {}}}},
        {std::string(longest.size(), ' '), {{"", {}}}},
        {std::string(longest.size(), '\0'), {{"", {{std::string(longest.size(), '\0'), ""}}}}},
    };
    for (const auto &row : rows) {
        EXPECT_TRUE(sections_from(row.text) == row.expected) << row.text.substr(0, 10);
        EXPECT_TRUE(sections_from(row.text + "\n") == row.expected) << row.text.substr(0, 10) << " and a newline";
    }
}

TEST(hostile_text, files_an_assignment_below_many_names_into_each_of_them)
{
    constexpr std::size_t count = 10000;
    std::string text = "[0";
    for (std::size_t i = 1; i < count; ++i) {
        text += "," + std::to_string(i);
    }
    const Sections sections = sections_from(text + "]\nk = v");
    ASSERT_EQ(sections.size(), count + 1);
    for (std::size_t i = 0; i < count; ++i) {
        EXPECT_EQ(sections.at(std::to_string(i)), (std::vector<Filed>{{"k", "v"}}));
    }
}

TEST(hostile_text, keeps_sections_of_one_hash_value_apart)
{
    std::string text;
    const std::size_t count = 1U << 10U;
    std::vector<std::string> names;
    for (std::size_t n = 0; n < count; ++n) {
        std::string name;
        for (unsigned place = 0; place < 10; ++place) {
            name += (n >> place & 1U) != 0 ? "af" : "ba"; // alike to the hash
        }
        names.push_back(name);
        names.push_back("\0"s + std::to_string(n)); // the hash ends at the NUL
    }
    const dalvo::hsh::hash<std::string> hash;
    for (std::size_t n = 0; n < names.size(); ++n) {
        ASSERT_EQ(hash(names[n]), n % 2 == 0 ? hash(names[0]) : 0);
        text += "[" + names[n] + "]\nn = " + std::to_string(n) + "\n";
    }
    const Sections sections = sections_from(text);
    ASSERT_EQ(sections.size(), names.size() + 1);
    for (std::size_t n = 0; n < names.size(); ++n) {
        EXPECT_EQ(sections.at(names[n]), (std::vector<Filed>{{"n", std::to_string(n)}}));
    }
}

} // namespace
