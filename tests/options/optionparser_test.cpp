#include "dalvo/options/optionparser.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iterator>
#include <limits>
#include <new>
#include <optional>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "dalvo/options/valuetext.h"

namespace {

/// The allocation that fails counting from 0 at the next one; none while negative.
std::ptrdiff_t failing_allocation = -1;
bool allocation_failed = false;
std::size_t allocations = 0;

/// Null where memory is short.
void *allocate(std::size_t size) noexcept
{
    ++allocations;
    if (failing_allocation >= 0 && failing_allocation-- == 0) {
        allocation_failed = true;
        return nullptr;
    }
    return std::malloc(size != 0 ? size : 1);
}

} // namespace

// Not inlined, so that the compiler sees them as the pair that they are. Valgrind puts its own in their place unless it
// is run with --soname-synonyms=somalloc=nouserintercepts.

[[gnu::noinline]] void *operator new(std::size_t size)
{
    void *const block = allocate(size);
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    return block;
}

[[gnu::noinline]] void *operator new(std::size_t size, const std::nothrow_t &) noexcept
{
    return allocate(size);
}

[[gnu::noinline]] void operator delete(void *block) noexcept
{
    std::free(block);
}

[[gnu::noinline]] void operator delete(void *block, std::size_t) noexcept
{
    std::free(block);
}

[[gnu::noinline]] void operator delete(void *block, const std::nothrow_t &) noexcept
{
    std::free(block);
}

namespace {

using dalvo::BOOL_STYLE_BARE;
using dalvo::BOOL_STYLE_PLAIN;
using dalvo::BOOL_STYLE_WORDS;
using dalvo::Exception;
using dalvo::OPT_BOOL;
using dalvo::OPT_FLOAT;
using dalvo::OPT_INT;
using dalvo::OPT_STR;
using dalvo::OptionBoolStyle;
using dalvo::OptionParser;
using dalvo::OptionType;
using error = OptionParser::error;

static_assert(OPT_BOOL == 0 && OPT_INT == 1 && OPT_FLOAT == 3 && OPT_STR == 4);
static_assert(BOOL_STYLE_BARE == 0 && BOOL_STYLE_PLAIN == 1 && BOOL_STYLE_WORDS == 2);
static_assert(std::is_enum_v<OptionType> && std::is_convertible_v<OptionType, int>, "unscoped");
static_assert(std::is_enum_v<OptionBoolStyle> && std::is_convertible_v<OptionBoolStyle, int>, "unscoped");
static_assert(!std::is_copy_constructible_v<OptionParser> && !std::is_copy_assignable_v<OptionParser>);
static_assert(!std::is_move_constructible_v<OptionParser> && !std::is_move_assignable_v<OptionParser>);
static_assert(!std::is_default_constructible_v<OptionParser>);
static_assert(std::is_same_v<decltype(std::declval<const OptionParser &>().find_option("")),
                             const OptionParser::Option *>);

constexpr std::int32_t least_int = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t most_int = std::numeric_limits<std::int32_t>::max();

/// The error that `action` throws.
template <class Action> error error_of(Action action)
{
    try {
        action();
    } catch (const error &e) {
        return e;
    }
    throw std::logic_error("no error of an option was thrown");
}

void expect_error(const error &e, const std::string &message, const std::string &option, const std::string &value)
{
    EXPECT_EQ(e.message_stream.str(), message + ": " + option + ", value: " + value);
    EXPECT_STREQ(e.what(), e.message_stream.str().c_str());
    EXPECT_EQ(e.option, option);
    EXPECT_EQ(e.value, value);
    EXPECT_EQ(e.command_line, "");
}

/// A store with an option of each type, named after it.
class option_parser : public ::testing::Test {
protected:
    option_parser()
    {
        options.set_cur_help_group("Group:");
        options.add_option("bool", OPT_BOOL, "A boolean.");
        options.add_option("int", OPT_INT, "An integer.");
        options.add_option("float", OPT_FLOAT, "A float.");
        options.add_option("str", OPT_STR, "A string.");
    }

    void give_all_a_value()
    {
        options.parse_option("bool", "yes", 1);
        options.parse_option("int", "-12", 2);
        options.parse_option("float", "2.5", 3);
        options.parse_option("str", "text", 4);
    }

    /// That all four options have the values and levels of `give_all_a_value`.
    void expect_values_stand() const
    {
        bool b = false;
        std::int32_t i = 0;
        float f = 0;
        std::string s;
        EXPECT_TRUE(read.get_bool_option("bool", &b) && b);
        EXPECT_TRUE(read.get_int_option("int", &i) && i == -12);
        EXPECT_TRUE(read.get_float_option("float", &f) && std::fabs(f - 2.5F) <= 0);
        EXPECT_TRUE(read.get_str_option("str", &s) && s == "text");
        ASSERT_GE(read.options().size(), 4U);
        for (std::size_t at = 0; at < 4; ++at) {
            EXPECT_EQ(read.options()[at].level, static_cast<std::int32_t>(at) + 1);
        }
    }

    std::int32_t int_of(const std::string &name) const
    {
        std::int32_t value = 0;
        EXPECT_TRUE(read.get_int_option(name, &value)) << name;
        return value;
    }

    std::string str_of(const std::string &name) const
    {
        std::string value;
        EXPECT_TRUE(read.get_str_option(name, &value)) << name;
        return value;
    }

    OptionParser options{BOOL_STYLE_WORDS};
    const OptionParser &read = options;
};

// Registration.

TEST_F(option_parser, starts_empty)
{
    const OptionParser empty(BOOL_STYLE_WORDS);
    EXPECT_TRUE(empty.options().empty());
    EXPECT_EQ(empty.cur_help_group(), "");
    EXPECT_EQ(empty.find_option(""), nullptr);
    bool value = true;
    EXPECT_FALSE(empty.get_bool_option("", &value));
    EXPECT_TRUE(value);
}

TEST_F(option_parser, lists_what_is_registered_in_that_order)
{
    options.set_cur_help_group("");
    options.add_option("", OPT_STR, "");
    options.set_cur_help_group("Another:");
    options.add_option("a.first", OPT_INT, "Line one.\nLine two.");
    const struct {
        const char *name;
        OptionType type;
        const char *help, *group;
    } rows[] = {
        {"bool", OPT_BOOL, "A boolean.", "Group:"},  {"int", OPT_INT, "An integer.", "Group:"},
        {"float", OPT_FLOAT, "A float.", "Group:"},  {"str", OPT_STR, "A string.", "Group:"},
        {"", OPT_STR, "", ""},                       {"a.first", OPT_INT, "Line one.\nLine two.", "Another:"},
    };
    ASSERT_EQ(read.options().size(), std::size(rows));
    for (std::size_t at = 0; at < std::size(rows); ++at) {
        const OptionParser::Option &option = read.options()[at];
        SCOPED_TRACE(rows[at].name);
        EXPECT_EQ(option.name, rows[at].name);
        EXPECT_EQ(option.type, rows[at].type);
        EXPECT_EQ(option.help, rows[at].help);
        EXPECT_EQ(option.group, rows[at].group);
        EXPECT_FALSE(option.has_value());
        EXPECT_EQ(option.level, 0);
        EXPECT_EQ(read.find_option(rows[at].name), &option);
    }
}

TEST_F(option_parser, keeps_the_current_help_group_until_it_is_changed)
{
    EXPECT_EQ(read.cur_help_group(), "Group:");
    options.add_option("a", OPT_BOOL, "");
    options.set_cur_help_group("Second:");
    EXPECT_EQ(read.cur_help_group(), "Second:");
    options.add_option("b", OPT_BOOL, "");
    options.add_option("c", OPT_BOOL, "");
    options.set_cur_help_group("Group:");
    options.add_option("d", OPT_BOOL, "");
    options.set_cur_help_group(std::string("\xffg\0h", 4));
    options.add_option("e", OPT_BOOL, "");
    options.set_cur_help_group("Never used:");
    EXPECT_EQ(read.find_option("a")->group, "Group:");
    EXPECT_EQ(read.find_option("b")->group, "Second:");
    EXPECT_EQ(read.find_option("c")->group, "Second:");
    EXPECT_EQ(read.find_option("d")->group, "Group:");
    EXPECT_EQ(read.find_option("e")->group, std::string("\xffg\0h", 4));
    EXPECT_EQ(read.cur_help_group(), "Never used:");
}

TEST_F(option_parser, finds_options_by_their_exact_name)
{
    EXPECT_EQ(read.find_option("int"), &read.options()[1]);
    for (const std::string name : {"", "in", "ints", "Int", " int", "int "}) {
        EXPECT_EQ(read.find_option(name), nullptr) << name;
    }
    EXPECT_EQ(read.find_option(std::string("int\0", 4)), nullptr);
}

TEST_F(option_parser, keeps_the_addresses_of_options_while_more_are_registered)
{
    give_all_a_value();
    std::vector<std::pair<std::string, const OptionParser::Option *>> found;
    for (const OptionParser::Option &option : read.options()) {
        found.emplace_back(option.name, &option);
    }
    for (int i = 0; i < 2000; ++i) {
        const std::string name = "option." + std::to_string(i);
        options.add_option(name, OPT_INT, "");
        options.parse_option(name, std::to_string(i), i);
        found.emplace_back(name, read.find_option(name));
    }
    ASSERT_EQ(read.options().size(), found.size());
    for (std::size_t at = 0; at < found.size(); ++at) {
        ASSERT_EQ(found[at].second, &read.options()[at]) << at;
        ASSERT_EQ(found[at].second, read.find_option(found[at].first)) << at;
        ASSERT_EQ(found[at].second->name, found[at].first);
    }
    for (int i = 0; i < 2000; ++i) {
        ASSERT_EQ(int_of("option." + std::to_string(i)), i);
    }
    expect_values_stand();
}

TEST_F(option_parser, shows_later_values_through_an_earlier_pointer)
{
    const OptionParser::Option *const option = read.find_option("int");
    EXPECT_FALSE(option->has_value());
    options.parse_option("int", "5", 2);
    EXPECT_TRUE(option->has_value());
    EXPECT_EQ(option->level, 2);
    EXPECT_EQ(std::get<std::int32_t>(option->value), 5);
    options.parse_option("int", "6", 3);
    EXPECT_EQ(option->level, 3);
    EXPECT_EQ(std::get<std::int32_t>(option->value), 6);
}

TEST_F(option_parser, refuses_a_name_twice_and_the_first_stands)
{
    give_all_a_value();
    options.set_cur_help_group("Later:");
    for (const OptionType type : {OPT_INT, OPT_STR}) {
        expect_error(error_of([&] { options.add_option("int", type, "Another help."); }),
                     "option registered twice int", "int", "");
    }
    ASSERT_EQ(read.options().size(), 4U);
    const OptionParser::Option *const option = read.find_option("int");
    EXPECT_EQ(option, &read.options()[1]);
    EXPECT_EQ(option->type, OPT_INT);
    EXPECT_EQ(option->help, "An integer.");
    EXPECT_EQ(option->group, "Group:");
    EXPECT_EQ(read.cur_help_group(), "Later:");
    expect_values_stand();
    options.parse_option("int", "13", 0);
    EXPECT_EQ(int_of("int"), 13);
    options.add_option("after", OPT_INT, "");
    EXPECT_EQ(read.options().back().name, "after");
    EXPECT_EQ(read.options().back().group, "Later:");
}

TEST_F(option_parser, refuses_an_empty_name_twice)
{
    options.add_option("", OPT_INT, "first");
    expect_error(error_of([&] { options.add_option("", OPT_INT, "second"); }), "option registered twice ", "", "");
    EXPECT_EQ(read.find_option("")->help, "first");
    EXPECT_EQ(read.options().size(), 5U);
}

TEST_F(option_parser, refuses_an_unknown_type)
{
    const struct {
        int code;
        const char *shown;
    } rows[] = {{2, "2"}, {5, "5"}, {-1, "-1"}, {256, "256"}, {least_int, "-2147483648"}, {most_int, "2147483647"}};
    for (const auto &row : rows) {
        expect_error(error_of([&] { options.add_option("new", static_cast<OptionType>(row.code), "help"); }),
                     "unknown type of option new", "new", row.shown);
        EXPECT_EQ(read.options().size(), 4U);
        EXPECT_EQ(read.find_option("new"), nullptr);
    }
    options.add_option("new", OPT_STR, "help");
    EXPECT_EQ(read.find_option("new"), &read.options().back());
}

// Values.

TEST(option, is_of_level_0_without_a_value)
{
    const OptionParser::Option option{};
    EXPECT_EQ(option.level, 0);
    EXPECT_TRUE(std::holds_alternative<std::monostate>(option.value));
}

TEST_F(option_parser, has_no_value_before_one_is_given)
{
    bool b = true;
    std::int32_t i = 77;
    float f = 7.5F;
    std::string s = "untouched";
    EXPECT_FALSE(read.get_bool_option("bool", &b));
    EXPECT_FALSE(read.get_int_option("int", &i));
    EXPECT_FALSE(read.get_float_option("float", &f));
    EXPECT_FALSE(read.get_str_option("str", &s));
    EXPECT_TRUE(b);
    EXPECT_EQ(i, 77);
    EXPECT_EQ(f, 7.5F);
    EXPECT_EQ(s, "untouched");
}

TEST_F(option_parser, gives_back_values_of_all_types)
{
    give_all_a_value();
    expect_values_stand();
    for (const OptionParser::Option &option : read.options()) {
        EXPECT_TRUE(option.has_value()) << option.name;
    }
    EXPECT_TRUE(std::get<bool>(read.options()[0].value));
    EXPECT_EQ(std::get<std::int32_t>(read.options()[1].value), -12);
    EXPECT_EQ(std::get<float>(read.options()[2].value), 2.5F);
    EXPECT_EQ(std::get<std::string>(read.options()[3].value), "text");
}

TEST_F(option_parser, overwrites_the_destination_of_a_getter)
{
    options.parse_option("bool", "off", 0);
    options.parse_option("int", "0", 0);
    options.parse_option("float", "-0", 0);
    options.parse_option("str", "", 0);
    bool b = true;
    std::int32_t i = 77;
    float f = 7.5F;
    std::string s = "untouched";
    EXPECT_TRUE(read.get_bool_option("bool", &b));
    EXPECT_TRUE(read.get_int_option("int", &i));
    EXPECT_TRUE(read.get_float_option("float", &f));
    EXPECT_TRUE(read.get_str_option("str", &s));
    EXPECT_FALSE(b);
    EXPECT_EQ(i, 0);
    EXPECT_EQ(f, 0.0F);
    EXPECT_TRUE(std::signbit(f));
    EXPECT_EQ(s, "");
}

TEST_F(option_parser, answers_no_getter_of_another_type_or_name)
{
    options.parse_option("bool", "1", 0);
    options.parse_option("int", "1", 0);
    options.parse_option("float", "1", 0);
    options.parse_option("str", "1", 0);
    for (const char *const name : {"bool", "int", "float", "str", "unregistered", "", "in", "INT"}) {
        SCOPED_TRACE(name);
        const std::string own = name;
        bool b = false;
        std::int32_t i = 77;
        float f = 7.5F;
        std::string s = "untouched";
        EXPECT_EQ(read.get_bool_option(name, &b), own == "bool");
        EXPECT_EQ(read.get_int_option(name, &i), own == "int");
        EXPECT_EQ(read.get_float_option(name, &f), own == "float");
        EXPECT_EQ(read.get_str_option(name, &s), own == "str");
        EXPECT_EQ(b, own == "bool");
        EXPECT_EQ(i, own == "int" ? 1 : 77);
        EXPECT_EQ(f, own == "float" ? 1.0F : 7.5F);
        EXPECT_EQ(s, own == "str" ? "1" : "untouched");
    }
    EXPECT_EQ(read.options().size(), 4U); // asking registers nothing
}

TEST_F(option_parser, hands_its_bool_style_to_its_booleans)
{
    const struct {
        const char *text;
        bool bare, plain, words; ///< whether the style takes it
        bool value;
    } rows[] = {
        {"", true, false, false, true},      {"yEs", true, false, true, true},  {"On", true, false, true, true},
        {"1", true, false, true, true},      {"TRUE", true, true, true, true},  {"False", true, true, true, false},
        {"nO", true, false, true, false},    {"oFf", true, false, true, false}, {"0", true, false, true, false},
        {"true ", false, false, false, true}, {"2", false, false, false, true},
    };
    for (const auto &row : rows) {
        for (const OptionBoolStyle style : {BOOL_STYLE_BARE, BOOL_STYLE_PLAIN, BOOL_STYLE_WORDS}) {
            SCOPED_TRACE(std::string(row.text) + ", style " + std::to_string(style));
            OptionParser styled(style);
            styled.add_option("b", OPT_BOOL, "");
            bool value = !row.value;
            if (style == BOOL_STYLE_BARE ? row.bare : style == BOOL_STYLE_PLAIN ? row.plain : row.words) {
                styled.parse_option("b", row.text, 0);
                EXPECT_TRUE(styled.get_bool_option("b", &value));
                EXPECT_EQ(value, row.value);
            } else {
                expect_error(error_of([&] { styled.parse_option("b", row.text, 0); }), "invalid value for option b",
                             "b", row.text);
                EXPECT_FALSE(styled.get_bool_option("b", &value));
            }
        }
    }
}

TEST_F(option_parser, takes_the_empty_text_for_strings_alone)
{
    for (const OptionBoolStyle style : {BOOL_STYLE_BARE, BOOL_STYLE_PLAIN, BOOL_STYLE_WORDS}) {
        OptionParser styled(style);
        styled.add_option("i", OPT_INT, "");
        styled.add_option("f", OPT_FLOAT, "");
        styled.add_option("s", OPT_STR, "");
        EXPECT_THROW(styled.parse_option("i", "", 0), error);
        EXPECT_THROW(styled.parse_option("f", "", 0), error);
        styled.parse_option("s", "", 0);
        EXPECT_TRUE(styled.find_option("s")->has_value());
        EXPECT_FALSE(styled.find_option("i")->has_value());
        EXPECT_FALSE(styled.find_option("f")->has_value());
    }
}

TEST_F(option_parser, takes_any_text_for_a_string)
{
    std::string every_byte;
    for (int byte = 0; byte < 256; ++byte) {
        every_byte += static_cast<char>(byte);
    }
    const std::string texts[] = {
        "", " ", " x ", "\n", "true", "#", "=", "\"quoted\"", "\\", every_byte, std::string("\0", 1),
        std::string(1U << 20U, '\xfe'),
    };
    for (const std::string &text : texts) {
        options.parse_option("str", text, 0);
        EXPECT_EQ(str_of("str"), text);
    }
}

TEST_F(option_parser, the_later_call_wins_whatever_the_level)
{
    const std::int32_t levels[] = {0, 3, 1, 2, 2, -1, most_int, least_int, 0};
    std::int32_t value = 100;
    for (const std::int32_t level : levels) {
        ++value;
        options.parse_option("int", std::to_string(value), level);
        EXPECT_EQ(int_of("int"), value);
        EXPECT_EQ(read.find_option("int")->level, level);
    }
    EXPECT_FALSE(read.find_option("bool")->has_value());
    EXPECT_EQ(read.find_option("bool")->level, 0);
}

TEST_F(option_parser, replaces_the_value_of_one_option_and_no_other)
{
    give_all_a_value();
    options.parse_option("str", "another", 9);
    EXPECT_EQ(str_of("str"), "another");
    EXPECT_EQ(read.find_option("str")->level, 9);
    options.parse_option("str", "text", 4);
    expect_values_stand();
}

// Texts that are no values.

TEST_F(option_parser, reports_a_text_that_is_not_of_the_type_and_keeps_the_earlier_value)
{
    using namespace std::string_literals;
    const struct {
        const char *name;
        std::string text;
    } rows[] = {
        {"bool", "tru"},          {"bool", "true "},      {"bool", " true"},      {"bool", "2"},
        {"bool", ""},             {"bool", "on\0"s},      {"bool", "\xff"},       {"int", ""},
        {"int", "5.0"},           {"int", " 5"},          {"int", "0x10"},        {"int", "2147483648"},
        {"int", "-2147483649"},   {"int", "5\0"s},        {"int", "+-5"},         {"int", std::string(1U << 20U, '9')},
        {"float", ""},            {"float", "1,5"},       {"float", "1e"},        {"float", "1e39"},
        {"float", "0x1p3"},       {"float", "nan(1)"},    {"float", "1\0"s},      {"float", "\xef\xbc\x95"},
    };
    for (const bool with_value : {false, true}) {
        if (with_value) {
            give_all_a_value();
        }
        for (const auto &row : rows) {
            SCOPED_TRACE(row.name + (": '" + row.text.substr(0, 50) + "'"));
            expect_error(error_of([&] { options.parse_option(row.name, row.text, 9); }),
                         std::string("invalid value for option ") + row.name, row.name, row.text);
            EXPECT_EQ(read.find_option(row.name)->has_value(), with_value);
            if (!with_value) {
                EXPECT_EQ(read.find_option(row.name)->level, 0);
            }
        }
    }
    expect_values_stand();
}

TEST_F(option_parser, shows_the_rejected_text_as_it_was_given)
{
    const error e = error_of([&] { options.parse_option("float", "1,50 ", 0); });
    EXPECT_STREQ(e.what(), "invalid value for option float: float, value: 1,50 ");
}

// Unknown names.

TEST_F(option_parser, reports_an_unknown_name_with_the_nearest_one_as_a_hint)
{
    OptionParser store(BOOL_STYLE_WORDS);
    for (const char *const name : {"verbosity", "random_seed", "abd", "abe", "dpll.decay", "theory.la.enabled"}) {
        store.add_option(name, OPT_INT, "");
    }
    const struct {
        const char *name, *hint, *why;
    } rows[] = {
        {"verbosty", " (did you mean verbosity?)", "a letter left out"},
        {"Verbosity", " (did you mean verbosity?)", "another case"},
        {"verbosity ", " (did you mean verbosity?)", "a blank behind"},
        {"random-seed", " (did you mean random_seed?)", "a letter replaced"},
        {"theory.la.enable", " (did you mean theory.la.enabled?)", "a letter left out"},
        {"abc", " (did you mean abd?)", "the first of two that are equally near"},
        {"abdx", " (did you mean abd?)", "one edit at four bytes"},
        {"abcde", "", "two edits at five bytes"},
        {"ab", "", "one edit at two bytes"},
        {"verbos", "", "three edits at six bytes"},
        {"verbosiXYZ", " (did you mean verbosity?)", "three edits at ten bytes"},
        {"verboWXYZ", "", "four edits at nine bytes"},
        {"dpll.restart", "", "far from all"},
        {"", "", "an empty name"},
        {"\x80\xff\xfe", "", "bytes above 0x7F"},
        {"ab\xff", " (did you mean abd?)", "a slip above 0x7F"},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.why);
        expect_error(error_of([&] { store.parse_option(row.name, "3", 1); }),
                     std::string("unknown option ") + row.name + row.hint, row.name, "3");
    }
    EXPECT_EQ(store.options().size(), 6U);
    for (const OptionParser::Option &option : store.options()) {
        EXPECT_FALSE(option.has_value()) << option.name;
    }
}

TEST_F(option_parser, shows_the_whole_text_of_an_unknown_name)
{
    OptionParser store(BOOL_STYLE_WORDS);
    EXPECT_STREQ(error_of([&] { store.parse_option("verbosty", "3", 0); }).what(),
                 "unknown option verbosty: verbosty, value: 3");
    EXPECT_STREQ(error_of([&] { store.parse_option("", "", 0); }).what(), "unknown option : , value: ");
    store.add_option("verbosity", OPT_INT, "");
    EXPECT_STREQ(error_of([&] { store.parse_option("verbosty", "3", 0); }).what(),
                 "unknown option verbosty (did you mean verbosity?): verbosty, value: 3");
}

TEST_F(option_parser, hints_at_the_nearest_name_and_not_at_the_first_near_one)
{
    OptionParser store(BOOL_STYLE_WORDS);
    store.add_option("search.restartXY", OPT_INT, "");
    store.add_option("search.restartX", OPT_INT, "");
    store.add_option("search.restartY", OPT_INT, "");
    expect_error(error_of([&] { store.parse_option("search.restart", "3", 0); }),
                 "unknown option search.restart (did you mean search.restartX?)", "search.restart", "3");
}

TEST_F(option_parser, rejects_unknown_names_and_keeps_all_values)
{
    give_all_a_value();
    for (const char *const name : {"in", "ints", "Int", "int ", "", "strings", "Bool"}) {
        const error e = error_of([&] { options.parse_option(name, "1", 9); });
        EXPECT_EQ(e.option, name);
        EXPECT_EQ(e.value, "1");
        EXPECT_EQ(e.command_line, "");
    }
    EXPECT_EQ(read.options().size(), 4U);
    expect_values_stand();
}

TEST_F(option_parser, throws_errors_that_handlers_of_the_bases_read_alike)
{
    const std::string expected = "invalid value for option int: int, value: x";
    EXPECT_EQ(error_of([&] { options.parse_option("int", "x", 0); }).what(), expected);
    try {
        options.parse_option("int", "x", 0);
        ADD_FAILURE() << "nothing was thrown";
    } catch (const Exception &e) {
        EXPECT_EQ(e.what(), expected);
    }
    try {
        options.parse_option("int", "x", 0);
        ADD_FAILURE() << "nothing was thrown";
    } catch (const std::exception &e) {
        EXPECT_EQ(e.what(), expected);
    }
}

// Any bytes, any length.

TEST_F(option_parser, tells_names_apart_behind_a_nul_and_above_0x7f)
{
    using namespace std::string_literals;
    const std::string names[] = {"a"s, "a\0"s, "a\0b"s, "a\0c"s, "\0"s, "\0\0"s, "\x80"s, "\xff"s, "\xc3\xa9"s};
    for (std::size_t at = 0; at < std::size(names); ++at) {
        options.add_option(names[at], OPT_INT, "");
        options.parse_option(names[at], std::to_string(at), 0);
    }
    EXPECT_EQ(read.options().size(), 4 + std::size(names));
    for (std::size_t at = 0; at < std::size(names); ++at) {
        EXPECT_EQ(int_of(names[at]), static_cast<std::int32_t>(at));
        EXPECT_EQ(read.find_option(names[at])->name, names[at]);
    }
    expect_error(error_of([&] { options.parse_option("a\0b"s, "\0x"s, 0); }), "invalid value for option a\0b"s,
                 "a\0b"s, "\0x"s);
    expect_error(error_of([&] { options.parse_option("a\0d"s, "1"s, 0); }),
                 "unknown option a\0d (did you mean a\0?)"s, "a\0d"s, "1");
    expect_error(error_of([&] { options.add_option("a\0b"s, OPT_STR, ""); }), "option registered twice a\0b"s,
                 "a\0b"s, "");
    EXPECT_EQ(int_of("a\0b"s), 2);
}

TEST_F(option_parser, takes_names_and_values_of_a_megabyte)
{
    const std::string name(1U << 20U, 'n');
    const std::string value(1U << 20U, '\x80');
    options.set_cur_help_group(name);
    options.add_option(name, OPT_STR, value);
    options.parse_option(name, value, 0);
    EXPECT_EQ(str_of(name), value);
    EXPECT_EQ(read.find_option(name)->help, value);
    EXPECT_EQ(read.find_option(name)->group, name);
    expect_error(error_of([&] { options.parse_option(name.substr(1), value, 0); }),
                 "unknown option " + name.substr(1) + " (did you mean " + name + "?)", name.substr(1), value);
}

// When memory runs out. Each action is repeated while its first, second, ... allocation fails, until none is left.

/// Whether `action` throws std::bad_alloc when its allocation number `failing` fails. `allocation_failed` tells whether
/// it came to that.
template <class Action> bool runs_out_of_memory(std::ptrdiff_t failing, Action action)
{
    allocation_failed = false;
    failing_allocation = failing;
    bool threw = false;
    try {
        action();
    } catch (const std::bad_alloc &) {
        threw = true;
    } catch (...) {
        failing_allocation = -1;
        throw;
    }
    failing_allocation = -1;
    return threw;
}

constexpr const char *long_text = "a text that is too long to be kept within a string object itself";

TEST(option_parser_short_of_memory, registers_the_whole_option_or_nothing)
{
    const std::string name = long_text;
    int thrown = 0;
    for (std::ptrdiff_t failing = 0;; ++failing) {
        OptionParser options(BOOL_STYLE_WORDS);
        options.set_cur_help_group("the help group of an option whose registration fails or not");
        for (int i = 0; i < 12; ++i) { // so that tables have to grow
            options.add_option(std::to_string(i), OPT_INT, "");
        }
        const bool threw = runs_out_of_memory(failing, [&] { options.add_option(name, OPT_STR, name); });
        ASSERT_EQ(options.options().size(), threw ? 12U : 13U);
        ASSERT_EQ(options.find_option(name) != nullptr, !threw);
        ASSERT_EQ(options.find_option("11"), &options.options()[11]);
        thrown += threw ? 1 : 0;
        if (threw) {
            options.add_option(name, OPT_STR, name); // can be made good
        }
        ASSERT_EQ(options.find_option(name), &options.options().back());
        if (!allocation_failed) {
            break;
        }
    }
    EXPECT_GE(thrown, 4); // name, help, group and the entry of the index at least
}

TEST(option_parser_short_of_memory, keeps_the_earlier_value_and_level)
{
    OptionParser options(BOOL_STYLE_WORDS);
    options.add_option("str", OPT_STR, "");
    const std::string earlier = std::string("earlier: ") + long_text;
    const std::string later = std::string("later: ") + long_text;
    std::string value;
    int thrown = 0;
    for (std::ptrdiff_t failing = 0;; ++failing) {
        options.parse_option("str", earlier, 1);
        const std::string name = "str";
        const bool threw = runs_out_of_memory(failing, [&] { options.parse_option(name, later, 2); });
        ASSERT_TRUE(options.get_str_option("str", &value));
        ASSERT_EQ(value, threw ? earlier : later);
        ASSERT_EQ(options.find_option("str")->level, threw ? 1 : 2);
        thrown += threw ? 1 : 0;
        if (!allocation_failed) {
            break;
        }
    }
    EXPECT_GE(thrown, 1);
}

TEST(option_parser_short_of_memory, leaves_the_destination_of_a_getter)
{
    OptionParser options(BOOL_STYLE_WORDS);
    options.add_option("str", OPT_STR, "");
    options.parse_option("str", long_text, 1);
    const std::string name = "str";
    std::string value = "untouched";
    EXPECT_TRUE(runs_out_of_memory(0, [&] { options.get_str_option(name, &value); }));
    EXPECT_EQ(value, "untouched");
    EXPECT_TRUE(options.get_str_option(name, &value));
    EXPECT_EQ(value, long_text);
}

TEST(option_parser_short_of_memory, reports_wrong_texts_and_names_whole_or_not_at_all)
{
    OptionParser options(BOOL_STYLE_WORDS);
    const std::string registered = std::string("x") + long_text;
    options.add_option(registered, OPT_INT, "");
    options.parse_option(registered, "5", 1);
    const struct {
        std::string name, value, message;
    } rows[] = {
        {registered, long_text, "invalid value for option " + registered},
        {long_text, "1", std::string("unknown option ") + long_text + " (did you mean " + registered + "?)"},
    };
    for (const auto &row : rows) {
        int thrown = 0;
        for (std::ptrdiff_t failing = 0;; ++failing) {
            bool threw = false;
            try {
                threw = runs_out_of_memory(failing, [&] { options.parse_option(row.name, row.value, 2); });
                ASSERT_TRUE(threw) << "neither error was thrown";
            } catch (const error &e) {
                expect_error(e, row.message, row.name, row.value);
                if (!allocation_failed) {
                    break;
                }
            }
            thrown += threw ? 1 : 0;
            std::int32_t value = 0;
            ASSERT_TRUE(options.get_int_option(registered, &value));
            ASSERT_EQ(value, 5);
            ASSERT_EQ(options.find_option(registered)->level, 1);
        }
        EXPECT_GE(thrown, 5); // the message, its stream and the three fields at least
    }
}

TEST(option_error_short_of_memory, is_constructed_and_copied_whole_or_not_at_all)
{
    const std::string text = long_text;
    const std::string expected = text + ": " + text + ", value: " + text + ", command-line: " + text;
    int thrown = 0;
    for (std::ptrdiff_t failing = 0;; ++failing) {
        std::optional<error> copy;
        const bool threw = runs_out_of_memory(failing, [&] {
            const error e(text, text, text, text);
            copy.emplace(e);
        });
        ASSERT_EQ(copy.has_value(), !threw);
        if (copy) {
            ASSERT_EQ(copy->what(), expected);
            ASSERT_EQ(copy->option + copy->value + copy->command_line, text + text + text);
        }
        thrown += threw ? 1 : 0;
        if (!allocation_failed) {
            break;
        }
    }
    EXPECT_GE(thrown, 8); // message and three fields, twice
}

TEST(option_error_short_of_memory, reads_empty_until_there_is_memory_again)
{
    const error e(long_text, "o", "v", "c");
    const char *text = nullptr;
    EXPECT_FALSE(runs_out_of_memory(0, [&] { text = e.what(); }));
    EXPECT_TRUE(allocation_failed);
    EXPECT_STREQ(text, "");
    EXPECT_EQ(e.what(), std::string(long_text) + ": o, value: v, command-line: c");
    EXPECT_EQ(e.option, "o");
}

TEST(value_texts, are_parsed_without_an_allocation)
{
    const std::string texts[] = {
        "true", "-2147483648", "infinity", "-nan", "340282356779733661637539395458142568447.9", "1e-400",
        std::string(100000, '9'), "0." + std::string(100000, '0') + "1e99999",
    };
    for (const std::string &text : texts) {
        const std::size_t before = allocations;
        dalvo::parse_bool(text, BOOL_STYLE_WORDS);
        dalvo::parse_int(text);
        dalvo::parse_float(text);
        EXPECT_EQ(allocations, before) << text.substr(0, 50);
    }
}

TEST(parse_value, gives_what_parse_option_keeps_and_nothing_where_that_throws)
{
    const OptionType types[] = {dalvo::OPT_BOOL, dalvo::OPT_INT, dalvo::OPT_FLOAT, dalvo::OPT_STR};
    const OptionBoolStyle styles[] = {dalvo::BOOL_STYLE_BARE, dalvo::BOOL_STYLE_PLAIN, dalvo::BOOL_STYLE_WORDS};
    for (const OptionType type : types) {
        for (const OptionBoolStyle style : styles) {
            OptionParser options(style);
            options.add_option("o", type, "");
            for (const std::string &text : {std::string(), std::string("1"), std::string("true"), std::string("-7"),
                                            std::string("0.5"), std::string("1\0", 2), std::string("\xFF"),
                                            std::string("2147483648"), std::string(" 1")}) {
                OptionParser::Value kept;
                try {
                    options.parse_option("o", text, 0);
                    kept = options.find_option("o")->value;
                } catch (const OptionParser::error &) {
                }
                EXPECT_EQ(OptionParser::parse_value(text, type, style), kept) << type << ", " << style << ": " << text;
            }
        }
    }
}

} // namespace
