// The option parser when the heap refuses.

#include "dalvo/options/optionparser.h"

#include <cstddef>
#include <cstdint>
#include <ostream>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/fixed_buffer.h"
#include "tests/support/heap_watch.h"
#include "tests/support/refusals.h"

namespace {

using dalvo::OPT_BOOL;
using dalvo::OPT_FLOAT;
using dalvo::OPT_INT;
using dalvo::OPT_STR;
using dalvo::OptionParser;
using dalvo::support::HeapWatch;
using dalvo::testing::FixedBuffer;
using dalvo::testing::refuse_each;
using dalvo::testing::report_refused;

/// Too long for a string to hold without the heap.
const std::string name = "an.option.whose.name.needs.memory.of.its.own";
const std::string other_name = "another.option.whose.name.needs.memory.of.its.own";
const std::string help = "A help text that needs memory of its own.";
const std::string group = "A help group whose name needs memory of its own:";
const std::string value = "a value that needs memory of its own";
const std::string other_value = "another value, which needs memory of its own";

/// What a parser holds: each option, in its order, in words.
std::vector<std::string> content(const OptionParser &options)
{
    std::vector<std::string> rows;
    for (const OptionParser::Option &option : options.options()) {
        EXPECT_EQ(options.find_option(option.name), &option);
        std::string text;
        options.get_str_option(option.name, &text);
        rows.push_back(option.group + "|" + option.name + "|" + std::to_string(option.type) + "|" + option.help + "|" +
                       std::to_string(option.value.index()) + "|" + text + "|" + std::to_string(option.level));
    }
    return rows;
}

/// A parser on which an operation is tried.
struct WithOptions {
    WithOptions() : options(dalvo::BOOL_STYLE_WORDS)
    {
        options.set_cur_help_group("G");
        options.add_option(name, OPT_STR, "");
        options.parse_option(name, value, 7);
        before = content(options);
    }

    void expect_unchanged() { EXPECT_EQ(content(options), before); }

    OptionParser options;
    std::vector<std::string> before;
};

struct NamingAGroup : WithOptions {
    void act() { options.set_cur_help_group(group); }
    void refused()
    {
        EXPECT_EQ(options.cur_help_group(), "G");
        act();
    }
    void done()
    {
        EXPECT_EQ(options.cur_help_group(), group);
        expect_unchanged();
    }
};

TEST(option_parser_memory, refused_to_a_help_group_leaves_the_earlier_one)
{
    EXPECT_GE(report_refused(refuse_each<NamingAGroup>()), 1U);
}

/// Enough of them for the store and its index to grow.
constexpr std::size_t many = 100;

struct Registering : WithOptions {
    Registering() { options.set_cur_help_group(group); }

    static std::string numbered(std::size_t i) { return "option.number." + std::to_string(i) + ".with.a.long.name"; }
    static std::string row(std::size_t i)
    {
        return group + "|" + numbered(i) + "|" + std::to_string(OPT_INT) + "|" + help + "|0||0";
    }

    void act()
    {
        for (; added < many; ++added) {
            options.add_option(numbered(added), OPT_INT, help);
        }
    }
    void refused()
    {
        expect_added();
        EXPECT_EQ(options.find_option(numbered(added)), nullptr);
        act();
    }
    void done()
    {
        EXPECT_EQ(added, many);
        expect_added();
    }

    void expect_added()
    {
        std::vector<std::string> expected = before;
        for (std::size_t i = 0; i < added; ++i) {
            expected.push_back(row(i));
        }
        EXPECT_EQ(content(options), expected);
    }

    std::size_t added = 0;
};

TEST(option_parser_memory, refused_to_a_registration_leaves_the_store_and_the_name_free)
{
    EXPECT_GE(report_refused(refuse_each<Registering>()), 3 * many);
}

/// An operation that ends in an error when memory does not run out.
template <class Operation> struct Failing : WithOptions {
    void act()
    {
        try {
            Operation()(options);
            ADD_FAILURE() << "no error was thrown";
        } catch (const OptionParser::error &e) {
            text = e.message_stream.str();
        }
    }
    void refused()
    {
        EXPECT_EQ(text, "");
        expect_unchanged();
        act();
    }
    void done()
    {
        EXPECT_EQ(text, Operation::expected());
        expect_unchanged();
    }

    std::string text;
};

struct RegisteringTwice {
    void operator()(OptionParser &options) const { options.add_option(name, OPT_INT, help); }
    static std::string expected() { return "option registered twice " + name + ": " + name + ", value: "; }
};

struct RegisteringAnUnknownType {
    void operator()(OptionParser &options) const
    {
        options.add_option(other_name, static_cast<dalvo::OptionType>(2), help);
    }
    static std::string expected() { return "unknown type of option " + other_name + ": " + other_name + ", value: 2"; }
};

struct SettingAnUnknownOption {
    void operator()(OptionParser &options) const { options.parse_option(name + "s", other_value, 1); }
    static std::string expected()
    {
        return "unknown option " + name + "s (did you mean " + name + "?): " + name + "s, value: " + other_value;
    }
};

TEST(option_parser_memory, refused_to_an_error_throws_no_other_error_and_leaves_the_store)
{
    EXPECT_GE(report_refused(refuse_each<Failing<RegisteringTwice>>()), 5U);
    EXPECT_GE(report_refused(refuse_each<Failing<RegisteringAnUnknownType>>()), 5U);
    EXPECT_GE(report_refused(refuse_each<Failing<SettingAnUnknownOption>>()), 5U);
}

struct SettingAString : WithOptions {
    void act() { options.parse_option(name, other_value, 8); }
    void refused()
    {
        expect_unchanged();
        act();
    }
    void done()
    {
        std::string text;
        EXPECT_TRUE(options.get_str_option(name, &text));
        EXPECT_EQ(text, other_value);
        EXPECT_EQ(options.options().front().level, 8);
    }
};

TEST(option_parser_memory, refused_to_a_value_leaves_the_earlier_value_and_level)
{
    EXPECT_GE(report_refused(refuse_each<SettingAString>()), 1U);
}

struct RejectingAValue : WithOptions {
    RejectingAValue()
    {
        options.add_option(other_name, OPT_FLOAT, "");
        options.parse_option(other_name, "0.5", 3);
        before = content(options);
    }

    void act()
    {
        try {
            options.parse_option(other_name, other_value, 8);
            ADD_FAILURE() << "no error was thrown";
        } catch (const OptionParser::error &e) {
            text = e.message_stream.str();
        }
    }
    void refused()
    {
        EXPECT_EQ(text, "");
        act();
    }
    void done()
    {
        EXPECT_EQ(text, "invalid value for option " + other_name + ": " + other_name + ", value: " + other_value);
        expect_unchanged();
        float number = 0.0F;
        EXPECT_TRUE(options.get_float_option(other_name, &number));
        EXPECT_EQ(number, 0.5F);
    }

    std::string text;
};

TEST(option_parser_memory, refused_to_an_invalid_value_leaves_the_earlier_value)
{
    EXPECT_GE(report_refused(refuse_each<RejectingAValue>()), 5U);
}

TEST(option_parser_memory, is_not_asked_for_by_values_that_are_no_strings)
{
    OptionParser options(dalvo::BOOL_STYLE_WORDS);
    options.add_option("flag", OPT_BOOL, "");
    options.add_option("number", OPT_INT, "");
    options.add_option("real", OPT_FLOAT, "");
    const std::string names[] = {"flag", "number", "real"};
    const std::string texts[] = {"true", "12", "0.5"};
    const HeapWatch watch;
    HeapWatch::fail_allocation(1);
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_NO_THROW(options.parse_option(names[i], texts[i], 1));
    }
    bool flag = false;
    std::int32_t number = 0;
    float real = 0.0F;
    EXPECT_TRUE(options.get_bool_option(names[0], &flag) && flag);
    EXPECT_TRUE(options.get_int_option(names[1], &number) && number == 12);
    EXPECT_TRUE(options.get_float_option(names[2], &real) && real == 0.5F);
}

struct ReadingAString : WithOptions {
    void act() { EXPECT_TRUE(options.get_str_option(name, &out)); }
    void refused()
    {
        EXPECT_EQ(out, "untouched");
        act();
    }
    void done()
    {
        EXPECT_EQ(out, value);
        expect_unchanged();
    }

    std::string out = "untouched";
};

TEST(option_parser_memory, refused_to_a_string_that_is_read_leaves_the_callers_string)
{
    EXPECT_GE(report_refused(refuse_each<ReadingAString>()), 1U);
}

struct PrintingHelp : WithOptions {
    PrintingHelp() { options.add_option(other_name, OPT_INT, help + " " + help + "\n- " + help + " " + help); }

    void act() { options.print_help(out); }
    void refused()
    {
        const std::string part = buffer.text();
        const std::size_t start = part.size();
        out.clear();
        act();
        const std::string both = buffer.text();
        EXPECT_EQ(both.substr(start).substr(0, part.size()), part) << "no beginning of the whole";
        whole = both.substr(start);
    }
    void done()
    {
        EXPECT_TRUE(out.good());
        whole = whole.empty() ? buffer.text() : whole;
        std::ostringstream expected;
        options.print_help(expected);
        EXPECT_EQ(whole, expected.str());
    }

    FixedBuffer buffer;
    std::ostream out{&buffer};
    std::string whole;
};

TEST(option_parser_memory, refused_to_the_help_writes_a_beginning_of_it)
{
    EXPECT_GE(report_refused(refuse_each<PrintingHelp>()), 1U);
}

} // namespace
