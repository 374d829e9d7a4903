#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "tools/output/listing.h"

namespace {

using namespace dalvo;
using namespace dalvo::tools;
using dalvo::inspect::Catalogue;
using dalvo::inspect::OptionInfo;

std::string file_text(const std::string &path)
{
    std::ifstream in(path, std::ios_base::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

/// What `arguments` make the built tool write to standard output.
std::string printed(const std::string &arguments)
{
    std::string text;
    std::FILE *const pipe = popen(("'" DALVO_CONFIG_DIR "/dalvo-config' " + arguments).c_str(), "r");
    if (pipe == nullptr) {
        return "cannot be run";
    }
    for (int c = std::fgetc(pipe); c != EOF; c = std::fgetc(pipe)) {
        text += static_cast<char>(c);
    }
    return pclose(pipe) == 0 ? text : text + "failed";
}

std::vector<std::string> names_of(const OptionList &options)
{
    std::vector<std::string> names;
    std::transform(options.begin(), options.end(), std::back_inserter(names),
                   [](const OptionInfo *option) { return option->name; });
    return names;
}

std::vector<std::string> lines_of(const std::string &text)
{
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) {
        lines.push_back(line);
    }
    return lines;
}

std::vector<std::string> words_of(const std::string &text)
{
    std::istringstream in(text);
    return {std::istream_iterator<std::string>(in), std::istream_iterator<std::string>()};
}

OptionInfo option_with(const std::string &name, const std::string &group, const std::string &help)
{
    OptionInfo option;
    static_cast<AppliedOption &>(option) = {name, OPT_INT, at_most(2), {}};
    option.group = group;
    option.help = help;
    option.default_value = 0;
    return option;
}

std::string listing_text(const OptionList &options, std::size_t width)
{
    std::ostringstream out;
    write_listing_text(out, options, width);
    return out.str();
}

TEST(pattern, is_a_part_of_a_name_or_a_glob_for_whole_names)
{
    struct Row {
        std::string pattern;
        std::string name;
        bool expected;
        const char *why;
    };
    const Row rows[] = {
        {"", "verbosity", true, "the empty text is a part of every name"},
        {"verbosity", "verbosity", true, "the whole name"},
        {"bos", "verbosity", true, "from the middle"},
        {"Bos", "verbosity", false, "case counts"},
        {"theory.la", "theory.la.enabled", true, "a point is a character"},
        {"theory.la", "theory_la_enabled", false, "and no other one"},
        {"verbosity2", "verbosity", false, "more than the name"},
        {"*", "theory.la.enabled", true, "* spans points"},
        {"*", "", true, "* may be empty"},
        {"la.*", "theory.la.enabled", false, "a glob is for the whole name: its start"},
        {"*.la", "theory.la.enabled", false, "its end"},
        {"theory.??.enabled", "theory.la.enabled", true, "? is one character"},
        {"theory.??.enabled", "theory.euf.enabled", false, "and not two"},
        {"theory.[bf]*.enabled", "theory.bv.enabled", true, "one of a list"},
        {"theory.[bf]*.enabled", "theory.la.enabled", false, "none of a list"},
        {"theory.[a-b]*.enabled", "theory.bv.enabled", true, "one of a range"},
        {"theory.[!a-b]*.enabled", "theory.bv.enabled", false, "none but those of a range"},
        {"verbosit[", "verbosity", false, "a bracket that stays open is a character"},
        {"verbosit[", "verbosit[", true, "which is matched"},
        {"verbosit\\y*", "verbosity", false, "a backslash is a character, and hides nothing"},
        {"\xff", "a\xff", true, "any byte"},
    };
    for (const Row &row : rows) {
        EXPECT_EQ(option_matches(row.pattern, row.name), row.expected)
            << row.pattern << ' ' << row.name << ": " << row.why;
    }
}

TEST(selection, has_each_chosen_option_once_and_the_patterns_that_match_nothing)
{
    const Selection selection = select_options(Catalogue::standard(), {"proof*", "none", "verbosity", "proof_generation", "x*", "none"});
    EXPECT_EQ(names_of(selection.options), (std::vector<std::string>{"verbosity", "proof_generation"}));
    EXPECT_EQ(selection.unmatched, (std::vector<std::string>{"none", "x*", "none"}));
}

TEST(selection, is_the_whole_catalogue_without_a_pattern)
{
    const Selection selection = select_options(Catalogue::standard(), {});
    EXPECT_EQ(selection.options.size(), Catalogue::standard().options().size());
    EXPECT_TRUE(selection.unmatched.empty());
}

TEST(groups, are_in_the_order_of_their_first_option_even_when_they_are_mixed)
{
    const OptionInfo a = option_with("a", "G:", "");
    const OptionInfo b = option_with("b", "H:", "");
    const OptionInfo c = option_with("c", "G:", "");
    EXPECT_TRUE(by_group({}).empty());
    EXPECT_EQ(by_group({&a, &b, &c}), (std::vector<OptionList>{{&a, &c}, {&b}}));
}

TEST(listing, keeps_to_the_width_and_to_the_words)
{
    const OptionList all = select_options(Catalogue::standard(), {}).options;
    const std::vector<std::string> words = words_of(listing_text(all, 100000));
    for (const std::size_t width : {20U, 21U, 40U, 79U, 80U, 81U, 200U}) {
        const std::string text = listing_text(all, width);
        EXPECT_EQ(words_of(text), words) << width;
        for (const std::string &line : lines_of(text)) {
            const bool is_help = line.rfind("      ", 0) == 0; // groups and names are not cut
            EXPECT_TRUE(!is_help || line.size() <= width || words_of(line).size() == 1) << width << ": " << line;
        }
    }
}

TEST(listing, shows_the_help_of_every_option_below_its_name)
{
    for (const OptionInfo &option : Catalogue::standard().options()) {
        const std::string text = listing_text({&option}, 100000);
        const std::string value = dalvo::inspect::value_text(option.default_value);
        std::string expected = option.group + "\n  " + option.name + " (" + dalvo::inspect::type_name(option.type) +
                               ")\n      Default: " + (value.empty() ? "empty" : value) +
                               ". Accepted: " + option.accepted() + ".\n";
        for (const std::string &line : lines_of(option.help)) {
            expected += "      " + line + "\n";
        }
        EXPECT_EQ(text, expected);
    }
}

TEST(listing, bears_a_width_smaller_than_its_indent)
{
    const OptionInfo option = option_with("a", "G:", "to be\n\nor");
    EXPECT_EQ(listing_text({&option}, 1),
              "G:\n  a (int)\n      Default:\n      0.\n      Accepted:\n      at\n      most\n      2.\n"
              "      to\n      be\n\n      or\n");
}

TEST(markdown, escapes_what_would_mark_up)
{
    struct Row {
        std::string text;
        std::string expected;
        const char *why;
    };
    const Row rows[] = {
        {"", "", "nothing"},
        {"plain text, (0: none) - \"x\".", "plain text, (0: none) - \"x\".", "no mark-up"},
        {"a < b > c | d & e", "a \\< b \\> c \\| d \\& e", "tags, tables, entities"},
        {"*bold* `code` [link] ~gone~ $x$", "\\*bold\\* \\`code\\` \\[link\\] \\~gone\\~ \\$x\\$", "spans"},
        {"back\\slash", "back\\\\slash", "the escape itself"},
        {"_emphasis_ a_ _", "\\_emphasis\\_ a\\_ \\_", "underscores at the ends of words"},
        {"tlemma_XXX.smt2 ext_arg a_1", "tlemma_XXX.smt2 ext_arg a_1", "underscores inside words mark nothing"},
        {"# a", "\\# a", "a heading"},
        {"a # b", "a # b", "and none"},
        {"- a", "\\- a", "a list"},
        {"+ a", "\\+ a", "a list"},
        {"1 + a - b", "1 + a - b", "and none"},
        {"=== ", "\\=== ", "an underline"},
        {"12. a", "12\\. a", "a numbered list"},
        {"3) a", "3\\) a", "a numbered list"},
        {"1.5 is", "1\\.5 is", "escaped without need, and no harm"},
        {"12", "12", "a number"},
        {" \t    code", "code", "an indent makes code"},
        {"\xc3\xa9\xff", "\xc3\xa9\xff", "bytes above 0x7F"},
    };
    for (const Row &row : rows) {
        EXPECT_EQ(markdown_line(row.text), row.expected) << row.why;
    }
}

TEST(markdown, keeps_the_lines_and_lists_of_a_help)
{
    struct Row {
        std::string help;
        std::string expected;
        const char *why;
    };
    const Row rows[] = {
        {"", "\n", "no help"},
        {"One.", "One.\n", "a line"},
        {"One.\nTwo.", "One.\\\nTwo.\n", "a line break"},
        {"One:\n- 0 : a\n- 1: b", "One:\n\n- 0 : a\n- 1: b\n", "a list below a line"},
        {"- a\n- b\nEnd.", "- a\n- b\n\nEnd.\n", "a line below a list"},
        {"- - a\n-b", "- \\- a\n\n\\-b\n", "a mark inside an item; a mark needs its blank"},
        {"\nOne.\n\n\nTwo.\n", "One.\n\nTwo.\n", "empty lines part paragraphs"},
        {"- a\n\n- b", "- a\n\n- b\n", "and lists"},
        {"- 1. a\n- # b", "- 1\\. a\n- \\# b\n", "an item's text is a line's"},
    };
    for (const Row &row : rows) {
        EXPECT_EQ(markdown_help(row.help), row.expected) << row.why;
    }
}

TEST(markdown, has_a_heading_for_each_group_and_an_entry_for_each_option)
{
    const OptionInfo a = option_with("a", "G_:", "Help *a*.");
    const OptionInfo b = option_with("b`", "H", "Help b:\n- 0 : <x>");
    std::ostringstream out;
    write_listing_markdown(out, {&a, &b});
    const std::string text = out.str();
    EXPECT_EQ(text.substr(text.find("\n## ")),
              "\n## G\\_\n\n### `a`\n\n- Type: int\n- Default: `0`\n- Accepted: at most 2\n\nHelp \\*a\\*.\n"
              "\n## H\n\n### b\\`\n\n- Type: int\n- Default: `0`\n- Accepted: at most 2\n\nHelp b:\n\n- 0 : \\<x\\>\n");
}

TEST(options_document, is_what_the_built_command_writes)
{
    const std::string text = printed("options --format markdown");
    EXPECT_EQ(file_text(DALVO_SOURCE_DIR "/docs/options.md"), text)
        << "out of date: dalvo-config options --format markdown > docs/options.md";
}

TEST(options_json, tells_what_the_catalogue_knows)
{
    const auto list = nlohmann::json::parse(printed("options --format json")).at("options");
    ASSERT_EQ(list.size(), Catalogue::standard().options().size());
    for (std::size_t i = 0; i < list.size(); ++i) {
        const OptionInfo &option = Catalogue::standard().options()[i];
        EXPECT_EQ(list[i].at("name"), option.name);
        EXPECT_EQ(list[i].at("type"), dalvo::inspect::type_name(option.type));
        EXPECT_EQ(std::string(list[i].at("group")) + ":", option.group);
        EXPECT_EQ(list[i].at("accepted"), option.accepted());
        EXPECT_EQ(list[i].at("help"), option.help);
        const auto &given = list[i].at("default");
        EXPECT_TRUE(option.type == OPT_BOOL  ? given.is_boolean()
                    : option.type == OPT_INT ? given.is_number_integer()
                    : option.type == OPT_STR ? given.is_string()
                                             : given.is_number_float())
            << option.name;
        const std::string value = dalvo::inspect::value_text(option.default_value);
        EXPECT_EQ(given, option.type == OPT_STR ? nlohmann::json(value) : nlohmann::json::parse(value)) << option.name;
        ASSERT_EQ(list[i].at("codes").size(), option.codes.size()) << option.name;
        for (std::size_t k = 0; k < option.codes.size(); ++k) {
            EXPECT_EQ(list[i]["codes"][k].at("value"), option.codes[k].value);
            EXPECT_EQ(list[i]["codes"][k].at("meaning"), option.codes[k].meaning);
        }
    }
}

TEST(options_json, gives_the_range_that_the_application_keeps)
{
    const auto list = nlohmann::json::parse(printed("options --format json")).at("options");
    std::set<std::string> seen;
    for (const auto &entry : list) {
        const OptionInfo *const option = Catalogue::standard().find(std::string(entry.at("name")));
        ASSERT_NE(option, nullptr);
        const auto &range = entry.at("range");
        if (option->type == OPT_BOOL || option->type == OPT_STR) {
            EXPECT_TRUE(range.is_null()) << option->name;
            continue;
        }
        for (std::int32_t value = -200; value <= 200; ++value) {
            const bool inside = (range.at("lowest").is_null() || value >= range["lowest"]) &&
                                (range.at("highest").is_null() || value <= range["highest"]) &&
                                (range.at("except").is_null() || value != range["except"]);
            const bool accepted = option->type == OPT_INT ? option->accepts(value)
                                                          : option->accepts(static_cast<float>(value));
            EXPECT_EQ(inside, accepted) << option->name << ' ' << value;
        }
        for (const char *const bound : {"lowest", "highest", "except"}) {
            if (!range[bound].is_null()) {
                seen.insert(bound);
            }
        }
    }
    EXPECT_EQ(seen.size(), 3U) << "each bound occurs";
}

} // namespace
