// Options that hosts describe.

#include <cstddef>
#include <limits>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "dalvo/inspect/knowledge/catalogue.h"
#include "tests/configuration/caught.h"
#include "tests/inspect/described.h"
#include "tests/support/applied_rows.h"
#include "tests/support/records.h"
#include "tests/support/settings.h"

namespace {

using namespace dalvo::inspect;
using dalvo::at_least;
using dalvo::at_most;
using dalvo::Configuration;
using dalvo::ConfigurationSetter;
using dalvo::OptionParser;
using dalvo::OptionType;
using namespace dalvo::testing;
using dalvo::OPT_BOOL;
using dalvo::OPT_FLOAT;
using dalvo::OPT_INT;
using dalvo::OPT_STR;

const std::string group = "Cache options:";

// ---- What is added --------------------------------------------------------------------------------------------------

const struct {
    std::string name;
    OptionType type;
    OptionExtras extras;
    Value initial;
    std::string accepted;
    const char *why;
} described[] = {
    {"cache", OPT_BOOL, {}, Value(), "true or false", "a bool without a default"},
    {"cache.on", OPT_BOOL, extras_of("Yes"), true, "true or false", "a bool with one, in any of its words"},
    {"cache.entries", OPT_INT, {}, Value(), "any integer", "an int without a default"},
    {"cache.ways", OPT_INT, extras_of("8"), 8, "any integer", "an int with one"},
    {"cache.size", OPT_INT, extras_of("1", at_least(1)), 1, "at least 1", "the lowest of a range"},
    {"cache.age", OPT_INT, extras_of(std::nullopt, at_most(3)), Value(), "at most 3", "a range without a default"},
    {"cache.share", OPT_FLOAT, {}, Value(), "any number", "a float without a default"},
    {"cache.load", OPT_FLOAT, extras_of("0.1"), 0.1F, "any number", "a float with one"},
    {"cache.decay", OPT_FLOAT, extras_of("1", at_most(1.0F)), 1.0F, "at most 1", "the highest of a range"},
    {"cache.bias", OPT_FLOAT, extras_of("-nan", at_most(1.0F)), std::numeric_limits<float>::quiet_NaN(), "at most 1",
     "NaN is within a range"},
    {"cache.file", OPT_STR, {}, Value(), "any text", "a string without a default"},
    {"cache.tag", OPT_STR, extras_of(""), std::string(), "any text", "a string that is empty by default"},
    {"cache.mark", OPT_STR, extras_of(std::string(" a\n\0\xff ", 6)), std::string(" a\n\0\xff ", 6), "any text",
     "a default that no text could say"},
    {"", OPT_INT, extras_of("3"), 3, "any integer", "an empty name"},
    {std::string("a\0b\xff = c", 8), OPT_INT, {}, Value(), "any integer", "a name of any bytes"},
};

TEST(describe, adds_an_option_of_each_type_after_those_that_there_are)
{
    Catalogue catalogue;
    std::size_t position = catalogue.options().size();
    for (const auto &row : described) {
        SCOPED_TRACE(row.why);
        const OptionInfo &option = catalogue.describe(row.name, row.type, group, "What it is.", row.extras);
        EXPECT_EQ(option.name, row.name);
        EXPECT_EQ(option.type, row.type);
        EXPECT_EQ(option.group, group);
        EXPECT_EQ(option.help, "What it is.");
        EXPECT_EQ(option.accepted(), row.accepted);
        EXPECT_TRUE(same_value(option.initial_value, row.initial)) << value_words(option.initial_value);
        EXPECT_TRUE(same_value(option.default_value, row.initial)) << value_words(option.default_value);
        EXPECT_TRUE(option.codes.empty());
        EXPECT_FALSE(option.codes_add_up);
        EXPECT_EQ(option.lowest_sensible, std::nullopt);
        EXPECT_TRUE(option.matters_when.empty());
        EXPECT_TRUE(option.needs.empty());
        EXPECT_TRUE(option.forces.empty());
        EXPECT_EQ(catalogue.position(row.name), position);
        EXPECT_EQ(catalogue.has_described_default(position), row.extras.default_text.has_value());
        EXPECT_EQ(catalogue.dump_order().back(), position);
        ++position;
        EXPECT_EQ(catalogue.options().size(), position);
        EXPECT_EQ(catalogue.dump_order().size(), position);
    }
}

TEST(describe, gives_references_that_stay_good)
{
    Catalogue catalogue;
    std::vector<const OptionInfo *> options;
    for (int i = 0; i < 50; ++i) {
        options.push_back(&catalogue.describe("cache." + std::to_string(i), OPT_INT, group, ""));
    }
    for (std::size_t i = 0; i < options.size(); ++i) {
        EXPECT_EQ(catalogue.find("cache." + std::to_string(i)), options[i]);
        EXPECT_EQ(options[i]->name, "cache." + std::to_string(i));
    }
}

TEST(describe, leaves_the_other_options_and_other_catalogues_as_they_are)
{
    Catalogue catalogue;
    const Catalogue &standard = Catalogue::standard();
    for (const auto &row : described) {
        catalogue.describe(row.name, row.type, group, "", row.extras);
    }
    EXPECT_EQ(standard.find("cache.entries"), nullptr);
    for (std::size_t i = 0; i < standard.options().size(); ++i) {
        const OptionInfo &option = catalogue.options()[i];
        EXPECT_EQ(option.name, standard.options()[i].name);
        EXPECT_TRUE(same_value(option.default_value, standard.options()[i].default_value)) << option.name;
        EXPECT_TRUE(same_value(option.initial_value, standard.options()[i].initial_value)) << option.name;
        EXPECT_EQ(option.matters_when.size(), standard.options()[i].matters_when.size()) << option.name;
        EXPECT_EQ(catalogue.dump_order()[i], standard.dump_order()[i]);
        EXPECT_FALSE(catalogue.has_described_default(i));
    }
}

TEST(describe, has_the_options_registered_with_their_groups)
{
    Catalogue catalogue;
    catalogue.describe("cache.entries", OPT_INT, group, "Entries of the cache.", extras_of("1000"));
    catalogue.describe("queue", OPT_STR, "Queue options:", "Name of the queue.");
    ConfigurationSetter setter;
    catalogue.register_options(setter);
    const auto &registered = setter.options().options();
    ASSERT_EQ(registered.size(), catalogue.options().size());
    for (std::size_t i = 0; i < registered.size(); ++i) {
        EXPECT_EQ(registered[i].name, catalogue.options()[i].name);
        EXPECT_EQ(registered[i].type, catalogue.options()[i].type) << registered[i].name;
        EXPECT_EQ(registered[i].group, catalogue.options()[i].group) << registered[i].name;
        EXPECT_EQ(registered[i].help, catalogue.options()[i].help) << registered[i].name;
        EXPECT_FALSE(registered[i].has_value()) << registered[i].name;
    }
}

// ---- Codes ----------------------------------------------------------------------------------------------------------

const std::string coded_help = "One of:\n- 2 : two\n- 1 : one";

TEST(described_codes, are_those_of_the_help_unless_others_are_given)
{
    Catalogue catalogue;
    const OptionInfo &from_help = catalogue.describe("cache.mode", OPT_INT, group, coded_help);
    ASSERT_EQ(from_help.codes.size(), 2U);
    EXPECT_EQ(from_help.codes[0].value, 2);
    EXPECT_EQ(from_help.codes[0].meaning, "two");
    EXPECT_EQ(from_help.lowest_sensible, 1.0) << "the lowest, not the first";

    OptionExtras extras;
    extras.codes = {{8, "eight"}, {-4, ""}};
    extras.codes_add_up = true;
    const OptionInfo &given = catalogue.describe("cache.flags", OPT_INT, group, coded_help, extras);
    ASSERT_EQ(given.codes.size(), 2U);
    EXPECT_EQ(given.codes[1].value, -4);
    EXPECT_EQ(given.lowest_sensible, -4.0);
    EXPECT_TRUE(given.codes_add_up);
    EXPECT_FALSE(from_help.codes_add_up);
}

TEST(described_codes, are_for_integers_alone)
{
    Catalogue catalogue;
    for (const OptionType type : {OPT_BOOL, OPT_FLOAT, OPT_STR}) {
        const OptionInfo &option = catalogue.describe(dalvo::testing::type_name(type), type, group, coded_help);
        EXPECT_TRUE(option.codes.empty()) << option.name;
        EXPECT_EQ(option.lowest_sensible, std::nullopt) << option.name;
    }
}

// ---- Values ---------------------------------------------------------------------------------------------------------

TEST(described_default, is_in_force_until_a_text_says_otherwise)
{
    Catalogue catalogue;
    for (const auto &row : described) {
        catalogue.describe(row.name, row.type, group, "", row.extras);
    }
    const Resolution nothing_said = resolved(catalogue, "");
    for (const auto &row : described) {
        EXPECT_TRUE(same_value(nothing_said.find(row.name)->value, row.initial)) << row.why;
    }
    const Resolution said = resolved(catalogue, "cache.ways = 16\ncache.tag = x\ncache.file = y\n");
    EXPECT_TRUE(said.applies());
    EXPECT_EQ(said.find("cache.ways")->value, Value(16));
    EXPECT_EQ(said.find("cache.tag")->value, Value(std::string("x")));
    EXPECT_EQ(said.find("cache.file")->value, Value(std::string("y")));
    EXPECT_EQ(said.find("cache.size")->value, Value(1));
}

TEST(described_default, gives_way_to_the_default_text_where_that_can_be_applied)
{
    Catalogue catalogue("cache.entries = 5\ncache.entries = many\ncache.size = 0\n[fast]\ncache.ways = 2\n");
    EXPECT_EQ(catalogue.describe("cache.entries", OPT_INT, group, "", extras_of("1000")).default_value, Value(5));
    EXPECT_EQ(catalogue.find("cache.entries")->initial_value, Value(1000));
    EXPECT_EQ(catalogue.describe("cache.size", OPT_INT, group, "", extras_of("1", at_least(1))).default_value,
              Value(1)) << "the text's value is out of range";
    EXPECT_EQ(catalogue.describe("cache.ways", OPT_INT, group, "", extras_of("8")).default_value, Value(8))
        << "the text's value is in a section";
}

TEST(described_range, bounds_what_texts_may_assign)
{
    Catalogue catalogue;
    catalogue.describe("cache.size", OPT_INT, group, "", extras_of("4", at_least(1)));
    EXPECT_TRUE(resolved(catalogue, "cache.size = 1").applies());
    EXPECT_FALSE(resolved(catalogue, "cache.size = 0").applies());
    EXPECT_EQ(resolved(catalogue, "cache.size = 0").find("cache.size")->value, Value(4));
}

// ---- Names that the library reads and does not register -------------------------------------------------------------

/// A default for one of these names, another one than a record holds, and what its field holds then.
GivenValue default_unlike(const std::string &name, OptionType type)
{
    return type == OPT_BOOL ? given_bool(true)
           : name == "debug.log_sections"
               ? GivenValue{"sat,theory", std::vector<std::string>{"sat", "theory"}}
               : GivenValue{"trace.txt", std::string("trace.txt")};
}

std::map<std::string, std::string> fields_by_option()
{
    std::map<std::string, std::string> fields;
    for (const AppliedRow &row : applied_rows()) {
        fields[row.name] = row.field;
    }
    return fields;
}

TEST(unregistered_name, is_described_and_its_default_fills_the_record)
{
    const std::map<std::string, std::string> fields = fields_by_option();
    for (const auto &[name, type] : unlisted_options()) {
        SCOPED_TRACE(name);
        const GivenValue given = default_unlike(name, type);
        Catalogue catalogue;
        const OptionInfo &option = catalogue.describe(name, type, group, "", extras_of(given.text));
        EXPECT_EQ(value_text(option.initial_value), given.text);
        EXPECT_EQ(value_text(option.default_value), given.text);
        const Resolution resolution = resolved(catalogue, "random_seed = 7\n");
        EXPECT_TRUE(resolution.applies());
        EXPECT_EQ(value_text(resolution.find(name)->value), given.text);
        Configuration expected;
        expected.random_seed = 7;
        EXPECT_EQ(differing_fields(resolution.record(), expected), std::vector<std::string>{fields.at(name)});
        EXPECT_TRUE(dalvo::testing::same_value(value_named(resolution.record(), fields.at(name)), given.stored));
    }
}

TEST(unregistered_name, is_described_without_a_default_as_what_a_record_holds)
{
    Catalogue catalogue;
    for (const auto &[name, type] : unlisted_options()) {
        SCOPED_TRACE(name);
        const OptionInfo &option = catalogue.describe(name, type, group, "");
        const Value held = type == OPT_BOOL                 ? Value(false)
                           : name == "debug.log_sections" ? Value(std::string("ALL"))
                                                          : Value(std::string());
        EXPECT_EQ(option.initial_value, held);
        EXPECT_EQ(option.default_value, held);
        EXPECT_FALSE(catalogue.has_described_default(catalogue.position(name)));
    }
    const Resolution resolution = resolved(catalogue, "");
    EXPECT_EQ(differing_fields(resolution.record(), Configuration()), std::vector<std::string>());
}

TEST(unregistered_name, takes_what_a_text_says_once_it_is_described)
{
    const std::map<std::string, std::string> fields = fields_by_option();
    for (const auto &[name, type] : unlisted_options()) {
        SCOPED_TRACE(name);
        const GivenValue given = default_unlike(name, type);
        const std::string text = name + " = " + given.text;
        Catalogue catalogue;
        EXPECT_FALSE(resolved(catalogue, text).applies());
        catalogue.describe(name, type, group, "", extras_of(type == OPT_BOOL ? "false" : "other"));
        const Resolution resolution = resolved(catalogue, text);
        EXPECT_TRUE(resolution.applies());
        EXPECT_TRUE(dalvo::testing::same_value(value_named(resolution.record(), fields.at(name)), given.stored));
    }
}

// ---- Errors ---------------------------------------------------------------------------------------------------------

const OptionExtras coded = [] {
    OptionExtras extras;
    extras.codes = {{1, "one"}};
    return extras;
}();

const struct {
    std::string name;
    OptionType type;
    OptionExtras extras;
    Caught expected;
    const char *why;
} refused[] = {
    {"verbosity", OPT_INT, {}, {"option registered twice verbosity: verbosity, value: ", "verbosity", "", ""},
     "an option of the library"},
    {"queue.size", OPT_INT, {}, {"option registered twice queue.size: queue.size, value: ", "queue.size", "", ""},
     "an option of the host"},
    {"cache", static_cast<OptionType>(2), {}, {"unknown type of option cache: cache, value: 2", "cache", "2", ""},
     "a code between those of types"},
    {"cache", static_cast<OptionType>(-1), {}, {"unknown type of option cache: cache, value: -1", "cache", "-1", ""},
     "a code below those of types"},
    {"debug.log_sections", OPT_BOOL, {},
     {"option of another type debug.log_sections: debug.log_sections, value: string", "debug.log_sections", "string",
      ""}, "the library reads a string"},
    {"shallow_incrementality", OPT_INT, {},
     {"option of another type shallow_incrementality: shallow_incrementality, value: bool", "shallow_incrementality",
      "bool", ""}, "the library reads a bool"},
    {"cache", OPT_BOOL, extras_of(std::nullopt, at_most(1)),
     {"range of another type for option cache: cache, value: ", "cache", "", ""}, "integers for a bool"},
    {"cache", OPT_FLOAT, extras_of(std::nullopt, at_most(1)),
     {"range of another type for option cache: cache, value: ", "cache", "", ""}, "integers for a float"},
    {"cache", OPT_STR, extras_of(std::nullopt, at_most(1)),
     {"range of another type for option cache: cache, value: ", "cache", "", ""}, "integers for a string"},
    {"cache", OPT_INT, extras_of(std::nullopt, at_most(1.0F)),
     {"range of another type for option cache: cache, value: ", "cache", "", ""}, "floats for an int"},
    {"cache", OPT_STR, extras_of(std::nullopt, at_most(1.0F)),
     {"range of another type for option cache: cache, value: ", "cache", "", ""}, "floats for a string"},
    {"shallow_incrementality", OPT_BOOL, extras_of(std::nullopt, at_most(1.0F)),
     {"range of another type for option shallow_incrementality: shallow_incrementality, value: ",
      "shallow_incrementality", "", ""}, "floats for a bool that the library reads"},
    {"cache", OPT_FLOAT, coded, {"codes of another type for option cache: cache, value: ", "cache", "", ""},
     "codes of a float"},
    {"cache", OPT_BOOL, extras_of(""), {"invalid value for option cache: cache, value: ", "cache", "", ""},
     "an empty default is one of a string alone"},
    {"cache", OPT_INT, extras_of("1.5"), {"invalid value for option cache: cache, value: 1.5", "cache", "1.5", ""},
     "a default of another type"},
    {"cache", OPT_INT, extras_of(" 1"), {"invalid value for option cache: cache, value:  1", "cache", " 1", ""},
     "nothing is stripped"},
    {"cache", OPT_INT, extras_of("0", at_least(1)),
     {"invalid value for option cache: cache, value: 0", "cache", "0", ""}, "a default below the range"},
    {"cache", OPT_FLOAT, extras_of("1.0000001", at_most(1.0F)),
     {"invalid value for option cache: cache, value: 1.0000001", "cache", "1.0000001", ""},
     "a default above the range"},
    {"theory.arr.debug_data", OPT_BOOL, extras_of("2"),
     {"invalid value for option theory.arr.debug_data: theory.arr.debug_data, value: 2", "theory.arr.debug_data", "2",
      ""}, "a default for a name that the library reads"},
    {"cache", OPT_INT, mattering_when("xyzzy", dalvo::is(true)),
     {"unknown option xyzzy: xyzzy, value: ", "xyzzy", "", ""}, "a decider that is like no option"},
    {"cache", OPT_INT, mattering_when("cache", dalvo::is(1)), {"unknown option cache: cache, value: ", "cache", "", ""},
     "itself is not known yet"},
    {"cache", OPT_INT, mattering_when("debug.log_sections", dalvo::is(1)),
     {"unknown option debug.log_sections: debug.log_sections, value: ", "debug.log_sections", "", ""},
     "a name that the library reads and nobody has described"},
    {"cache", OPT_INT, mattering_when("theory.la.enable", dalvo::is(true)),
     {"unknown option theory.la.enable (did you mean theory.la.enabled?): theory.la.enable, value: ",
      "theory.la.enable", "", ""}, "a slip for an option of the library"},
    {"cache", OPT_INT, needing(dalvo::is(1), "queue.sise", dalvo::is(1)),
     {"unknown option queue.sise (did you mean queue.size?): queue.sise, value: ", "queue.sise", "", ""},
     "a slip for an option of the host"},
    {"cache", OPT_INT, needing(dalvo::is(1), "xyzzy", dalvo::is(1)),
     {"unknown option xyzzy: xyzzy, value: ", "xyzzy", "", ""}, "a needed option that is like none"},
};

TEST(describe, refuses_what_cannot_be_and_adds_nothing)
{
    for (const auto &row : refused) {
        SCOPED_TRACE(row.why);
        Catalogue catalogue;
        catalogue.describe("queue.size", OPT_INT, group, "", extras_of("5"));
        const std::size_t size = catalogue.options().size();
        const std::size_t position = catalogue.position(row.name);
        const OptionInfo *const found = catalogue.find(row.name);
        const std::vector<std::size_t> order = catalogue.dump_order();
        EXPECT_EQ(caught_from([&] { catalogue.describe(row.name, row.type, "Other options:", "", row.extras); }),
                  row.expected);
        EXPECT_EQ(catalogue.options().size(), size);
        EXPECT_EQ(catalogue.position(row.name), position);
        EXPECT_EQ(catalogue.find(row.name), found);
        EXPECT_EQ(catalogue.dump_order(), order);
        EXPECT_EQ(catalogue.options().back().group, group);
        EXPECT_EQ(resolved(catalogue, "").settings().size(), size);
    }
}

/// The type that the option may be described with; any other name than the library's is an int here.
OptionType type_to_have(const std::string &name)
{
    for (const auto &[read, type] : unlisted_options()) {
        if (read == name) {
            return type;
        }
    }
    return OPT_INT;
}

TEST(describe, takes_a_name_that_it_refused_before)
{
    for (const auto &row : refused) {
        SCOPED_TRACE(row.why);
        Catalogue catalogue;
        catalogue.describe("queue.size", OPT_INT, group, "", extras_of("5"));
        if (catalogue.find(row.name) != nullptr) {
            continue; // it is taken for good
        }
        const std::size_t size = catalogue.options().size();
        EXPECT_THROW(catalogue.describe(row.name, row.type, group, "", row.extras), OptionParser::error);
        const OptionType type = type_to_have(row.name);
        const std::string text = type == OPT_BOOL ? "true" : "7";
        const OptionInfo &option = catalogue.describe(row.name, type, group, "", extras_of(text));
        EXPECT_EQ(catalogue.position(row.name), size);
        EXPECT_EQ(catalogue.find(row.name), &option);
        EXPECT_EQ(catalogue.dump_order().back(), size);
        EXPECT_TRUE(catalogue.has_described_default(size));
        EXPECT_EQ(value_text(resolved(catalogue, "").find(row.name)->value), text);
        EXPECT_EQ(resolved(catalogue, "").find("queue.size")->value, Value(5));
    }
}

} // namespace
