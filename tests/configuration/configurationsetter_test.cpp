#include "dalvo/configuration/configurationsetter.h"

#include <cstdint>
#include <iterator>
#include <limits>
#include <memory>
#include <string>
#include <type_traits>

#include <gtest/gtest.h>

#include "tests/configuration/caught.h"
#include "tests/support/records.h"
#include "tests/support/sections.h"

namespace {

using namespace std::string_literals;
using dalvo::Configuration;
using dalvo::ConfigurationSetter;
using dalvo::OptionParser;
using dalvo::testing::Caught;
using dalvo::testing::caught_from;
using dalvo::testing::differing_fields;
using dalvo::testing::load_text;
using dalvo::testing::Sections;
using dalvo::testing::sections_of;
using dalvo::testing::sentinel_record;

static_assert(std::has_virtual_destructor_v<ConfigurationSetter>);
static_assert(std::is_default_constructible_v<ConfigurationSetter>);
static_assert(!std::is_copy_constructible_v<ConfigurationSetter> && !std::is_copy_assignable_v<ConfigurationSetter>);
static_assert(!std::is_move_constructible_v<ConfigurationSetter> && !std::is_move_assignable_v<ConfigurationSetter>);
static_assert(std::is_same_v<decltype(ConfigurationSetter::OptEntry::level), std::int32_t>);

/// The value of integer option `name`; the smallest integer when it has none.
std::int32_t integer(const ConfigurationSetter &setter, const std::string &name)
{
    std::int32_t value = std::numeric_limits<std::int32_t>::min();
    setter.options().get_int_option(name, &value);
    return value;
}

/// The value of string option `name`; "no value" when it has none.
std::string text(const ConfigurationSetter &setter, const std::string &name)
{
    std::string value = "no value";
    setter.options().get_str_option(name, &value);
    return value;
}

bool has_value(const ConfigurationSetter &setter, const std::string &name)
{
    return setter.options().find_option(name)->has_value();
}

/// A setter with the catalogue.
class Setter : public ConfigurationSetter {
public:
    Setter() { initialize_options(); }
};

TEST(configurationsetter, starts_without_options_and_sections)
{
    const ConfigurationSetter setter;
    EXPECT_TRUE(setter.options().options().empty());
    EXPECT_EQ(setter.options().cur_help_group(), "");
    EXPECT_EQ(sections_of(setter), Sections());
    EXPECT_EQ(setter.sections().table().count(), 0U);
    EXPECT_EQ(setter.sections().table().buckets().size(), 31U);
}

TEST(configurationsetter, has_the_sections_that_headers_name)
{
    Setter setter;
    EXPECT_FALSE(setter.has_section("")) << "before the first load";
    load_text(setter, "[fast, \xFF]\nverbosity = 1\n[empty]\n");
    for (const char *const name : {"", "fast", "\xFF", "empty"}) {
        EXPECT_TRUE(setter.has_section(name)) << name;
    }
    setter.set_active_config("chosen");
    setter.parse_active_config();
    for (const std::string &name : {"chosen"s, "fas"s, "FAST"s, "fast\0"s, "default"s}) {
        EXPECT_FALSE(setter.has_section(name)) << name;
    }
}

TEST(configurationsetter, takes_booleans_as_words)
{
    Setter setter;
    bool value = false;
    for (const char *word : {"true", "Yes", "ON", "1"}) {
        setter.set_option("interpolation", word, 0);
        EXPECT_TRUE(setter.options().get_bool_option("interpolation", &value) && value) << word;
    }
    for (const char *word : {"false", "No", "OFF", "0"}) {
        setter.set_option("interpolation", word, 0);
        EXPECT_TRUE(setter.options().get_bool_option("interpolation", &value) && !value) << word;
    }
    EXPECT_THROW(setter.set_option("interpolation", "", 0), OptionParser::error);
}

TEST(configurationsetter, destroys_the_derived_object_through_a_pointer_to_the_base)
{
    struct Derived : ConfigurationSetter {
        explicit Derived(int &destroyed) : count(destroyed) {}
        ~Derived() override { ++count; }
        int &count;
    };
    int destroyed = 0;
    std::unique_ptr<ConfigurationSetter> setter = std::make_unique<Derived>(destroyed);
    setter->initialize_options();
    load_text(*setter, "[a, b]\nk = v\n");
    setter.reset();
    EXPECT_EQ(destroyed, 1);
}

TEST(configurationsetter, keeps_options_and_sections_of_two_setters_apart)
{
    Setter one;
    Setter two;
    one.set_option("verbosity", "1", 0);
    load_text(one, "[s]\nk = v\n");
    EXPECT_FALSE(has_value(two, "verbosity"));
    EXPECT_EQ(sections_of(two), Sections());
}

TEST(set_option, gives_the_option_its_value_and_level_at_once)
{
    Setter setter;
    for (const std::int32_t level : {0, 3, -1, std::numeric_limits<std::int32_t>::min(),
                                     std::numeric_limits<std::int32_t>::max()}) {
        setter.set_option("printer.defines_prefix", " p" + std::to_string(level) + "\0#=\xff "s, level);
        EXPECT_EQ(text(setter, "printer.defines_prefix"), " p" + std::to_string(level) + "\0#=\xff "s);
        EXPECT_EQ(setter.options().find_option("printer.defines_prefix")->level, level);
    }
    EXPECT_EQ(sections_of(setter), Sections()) << "nothing is filed";
}

TEST(set_option, passes_the_parsers_errors_on_unchanged)
{
    const struct {
        std::string name, value;
        Caught expected;
        const char *why;
    } rows[] = {
        {"verbosity", "x", {"invalid value for option verbosity: verbosity, value: x", "verbosity", "x", ""},
         "the text is no integer"},
        {"verbosity", " 1", {"invalid value for option verbosity: verbosity, value:  1", "verbosity", " 1", ""},
         "nothing is stripped here"},
        {"verbosit", "1",
         {"unknown option verbosit (did you mean verbosity?): verbosit, value: 1", "verbosit", "1", ""},
         "the parser's hint comes along"},
        {"qqqqqqqq", "1", {"unknown option qqqqqqqq: qqqqqqqq, value: 1", "qqqqqqqq", "1", ""}, "nothing is nearby"},
        {"", "1", {"unknown option : , value: 1", "", "1", ""}, "an empty name"},
        {"verbosity\0"s, "1\0"s, {"unknown option verbosity", "verbosity\0"s, "1\0"s, ""}, "NUL is part of a name"},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.why);
        Setter setter;
        setter.set_option("verbosity", "2", 5);
        const Caught caught = caught_from([&] { setter.set_option(row.name, row.value, 9); });
        EXPECT_EQ(caught, row.expected);
        EXPECT_EQ(caught, caught_from([&] { setter.options().parse_option(row.name, row.value, 9); }));
        EXPECT_EQ(integer(setter, "verbosity"), 2) << "the earlier value stands";
        EXPECT_EQ(setter.options().find_option("verbosity")->level, 5);
    }
}

TEST(set_option, accepts_what_only_a_filling_rejects)
{
    Setter setter;
    setter.set_option("verbosity", "3", 0);
    EXPECT_EQ(integer(setter, "verbosity"), 3);
}

TEST(parse_active_config, creates_the_unnamed_section_and_applies_nothing)
{
    Setter setter;
    setter.parse_active_config();
    EXPECT_EQ(sections_of(setter), (Sections{{"", {}}}));
    for (const OptionParser::Option &option : setter.options().options()) {
        EXPECT_FALSE(option.has_value()) << option.name;
    }
}

TEST(parse_active_config, works_without_a_catalogue_while_nothing_is_filed)
{
    ConfigurationSetter setter;
    setter.set_active_config("s");
    setter.parse_active_config();
    EXPECT_EQ(sections_of(setter), (Sections{{"", {}}}));
}

TEST(parse_active_config, applies_the_unnamed_section_alone_when_the_active_one_is_missing)
{
    Setter setter;
    load_text(setter, "verbosity = 1\n[s]\nverbosity = 2\n");
    const Sections filed = sections_of(setter);
    for (const std::string &name : {"nosuch"s, "S"s, "s "s, "default"s, "s\0"s, ""s}) {
        SCOPED_TRACE(::testing::PrintToString(name));
        setter.set_active_config(name);
        EXPECT_NO_THROW(setter.parse_active_config());
        EXPECT_EQ(integer(setter, "verbosity"), 1);
        EXPECT_EQ(sections_of(setter), filed) << "looking for a section creates none";
    }
}

TEST(parse_active_config, finds_a_section_that_is_filed_after_it_was_chosen)
{
    Setter setter;
    setter.set_active_config("s");
    setter.parse_active_config();
    load_text(setter, "[s]\nverbosity = 2\n");
    setter.parse_active_config();
    EXPECT_EQ(integer(setter, "verbosity"), 2);
}

TEST(parse_active_config, takes_a_name_set_before_the_catalogue_or_any_text)
{
    ConfigurationSetter setter;
    setter.set_active_config("other");
    setter.set_active_config("s");
    setter.initialize_options();
    load_text(setter, "[s]\nverbosity = 2\n[other]\nverbosity = 1\n");
    setter.parse_active_config();
    EXPECT_EQ(integer(setter, "verbosity"), 2) << "the name set last counts";
}

TEST(parse_active_config, leaves_a_value_of_a_section_that_is_active_no_more)
{
    Setter setter;
    load_text(setter, "verbosity = 1\n[s]\nverbosity = 2\nrandom_seed = 7\n");
    setter.set_active_config("s");
    setter.parse_active_config();
    setter.set_active_config("");
    setter.parse_active_config();
    EXPECT_EQ(integer(setter, "verbosity"), 1);
    EXPECT_EQ(integer(setter, "random_seed"), 7) << "no assignment takes it back";
}

TEST(parse_active_config, applies_the_unnamed_section_when_the_active_name_is_empty)
{
    Setter setter;
    load_text(setter, "verbosity = 1\nverbosity = 2\n", 6);
    setter.set_active_config("s");
    setter.set_active_config("");
    setter.parse_active_config();
    EXPECT_EQ(integer(setter, "verbosity"), 2);
    EXPECT_EQ(setter.options().find_option("verbosity")->level, 6);
    EXPECT_EQ(sections_of(setter), (Sections{{"", {{"verbosity", "1", 6}, {"verbosity", "2", 6}}}}));
}

TEST(parse_active_config, lets_the_active_section_win_over_the_unnamed_one_and_both_over_set_option)
{
    for (int places = 0; places < 8; ++places) {
        const bool direct = (places & 1) != 0;
        const bool unnamed = (places & 2) != 0;
        const bool active = (places & 4) != 0;
        SCOPED_TRACE(::testing::Message() << "direct " << direct << ", unnamed " << unnamed << ", active " << active);
        Setter setter;
        // The levels run against the precedence: they decide nothing.
        load_text(setter, active ? "[s]\nrandom_seed = 30\n" : "[s]\n", -30);
        load_text(setter, unnamed ? "random_seed = 20\n" : "", 20);
        load_text(setter, "[other]\nrandom_seed = 40\n", 40);
        setter.set_active_config("s");
        if (direct) {
            setter.set_option("random_seed", "10", 10);
        }
        Configuration record = sentinel_record(0);
        Configuration expected = record;
        setter.update_config(&record);

        const std::int32_t winner = active ? 30 : unnamed ? 20 : direct ? 10 : 0;
        EXPECT_EQ(has_value(setter, "random_seed"), winner != 0);
        EXPECT_EQ(setter.options().find_option("random_seed")->level, active ? -30 : winner);
        if (winner != 0) {
            expected.random_seed = winner;
        }
        EXPECT_EQ(differing_fields(record, expected), std::vector<std::string>());
    }
}

TEST(parse_active_config, gives_an_option_assigned_twice_in_a_section_the_later_value)
{
    for (const char *header : {"", "[s]\n"}) {
        Setter setter;
        load_text(setter, header + "verbosity = 2\nverbosity = 0\n"s, 1);
        load_text(setter, header + "verbosity = 1\n"s, 0);
        setter.set_active_config("s");
        setter.parse_active_config();
        EXPECT_EQ(integer(setter, "verbosity"), 1) << header;
        EXPECT_EQ(setter.options().find_option("verbosity")->level, 0) << header;
    }
}

TEST(parse_active_config, runs_anew_at_every_filling)
{
    Setter setter;
    load_text(setter, "verbosity = 1\n[s]\nrandom_seed = 7\n");
    setter.set_active_config("s");
    Configuration record;
    for (int round = 0; round < 3; ++round) {
        setter.set_option("verbosity", "2", 0);
        setter.set_option("random_seed", "8", 0);
        EXPECT_EQ(integer(setter, "verbosity"), 2);
        setter.update_config(&record);
        EXPECT_EQ(record.verbosity, 1);
        EXPECT_EQ(record.random_seed, 7);
    }
    EXPECT_EQ(sections_of(setter), (Sections{{"", {{"verbosity", "1"}}}, {"s", {{"random_seed", "7"}}}}));
}

TEST(parse_active_config, hands_each_entrys_own_level_to_the_parser)
{
    Setter setter;
    load_text(setter, "verbosity = 1\n", -7);
    load_text(setter, "[s]\nrandom_seed = 7\n", std::numeric_limits<std::int32_t>::min());
    load_text(setter, "[s]\nproof_generation = true\n", std::numeric_limits<std::int32_t>::max());
    setter.set_active_config("s");
    setter.parse_active_config();
    EXPECT_EQ(setter.options().find_option("verbosity")->level, -7);
    EXPECT_EQ(setter.options().find_option("random_seed")->level, std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(setter.options().find_option("proof_generation")->level, std::numeric_limits<std::int32_t>::max());
}

TEST(parse_active_config, tells_sections_apart_whose_names_have_one_hash_or_one_bucket)
{
    const std::string names[] = {"a"s, "a\0b"s, "a\0c"s, "a\0"s,    // one hash: it ends at the NUL
                                 "aF"s, "bA"s,                      // one hash: 5 * 97 + 70 = 5 * 98 + 65
                                 "\0"s, "\0x"s, "\0\0"s,            // the hash of the unnamed section
                                 "al"s, "\xe9"s, "\xff\x80"s,       // "al" begins with "a" and shares its bucket
                                 "default"s, "a section of a longer name, which wraps around"s.replace(26, 1, ";")};
    Setter setter;
    std::string all = "printer.defines_prefix = unnamed\n";
    for (const std::string &name : names) {
        all += (name == "default" ? "[default, x]" : "[" + name + "]") + "\nprinter.defines_prefix = <" + name + ">\n";
    }
    load_text(setter, all);
    ASSERT_EQ(sections_of(setter).size(), std::size(names) + 2) << "the unnamed section and x";
    const auto expect_each_found = [&] {
        for (const std::string &name : names) {
            setter.set_active_config(name);
            setter.parse_active_config();
            EXPECT_EQ(text(setter, "printer.defines_prefix"), "<" + name + ">");
        }
    };
    expect_each_found();

    std::string many;
    for (int i = 0; i < 5000; ++i) {
        many += "[many " + std::to_string(i) + "]\n";
    }
    load_text(setter, many);
    ASSERT_GT(setter.sections().table().buckets().size(), 5000U);
    expect_each_found();
    setter.set_active_config("many 4999");
    setter.parse_active_config();
    EXPECT_EQ(text(setter, "printer.defines_prefix"), "unnamed") << "an empty section changes nothing";
}

TEST(parse_active_config, stops_at_the_first_entry_that_fails)
{
    const struct {
        std::string unnamed, active;
        Caught expected;
        std::int32_t verbosity, random_seed;
        const char *why;
    } rows[] = {
        {"verbosity = 1\nnosuchoption = 2\nrandom_seed = 5\n", "verbosity = 2\n",
         {"unknown option nosuchoption: nosuchoption, value: 2", "nosuchoption", "2", ""}, 1, 9,
         "an unknown name in the unnamed section"},
        {"verbosity = 1\nrandom_seed =\n", "verbosity = 2\n",
         {"invalid value for option random_seed: random_seed, value: ", "random_seed", "", ""}, 1, 9,
         "an empty value in the unnamed section"},
        {"verbosity = 1\n", "verbosity = 2\n= 3\nrandom_seed = 5\n", {"unknown option : , value: 3", "", "3", ""}, 2,
         9, "an empty name in the active section"},
        {"verbosity = 1\nrandom_seed = 5\n", "random_seed = 6\nverbosity = two # or so\nrandom_seed = 7\n",
         {"invalid value for option verbosity: verbosity, value: two # or so", "verbosity", "two # or so", ""}, 1, 6,
         "a bad value in the active section"},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.why);
        Setter setter;
        setter.set_option("verbosity", "0", 0);
        setter.set_option("random_seed", "9", 0);
        load_text(setter, row.unnamed + "[s]\n" + row.active + "[unused]\nnosuchoption = 1\n");
        setter.set_active_config("s");
        const Sections filed = sections_of(setter);
        EXPECT_EQ(caught_from([&] { setter.parse_active_config(); }), row.expected);
        EXPECT_EQ(integer(setter, "verbosity"), row.verbosity);
        EXPECT_EQ(integer(setter, "random_seed"), row.random_seed);
        EXPECT_EQ(sections_of(setter), filed);

        Configuration record = sentinel_record(1);
        EXPECT_EQ(caught_from([&] { setter.update_config(&record); }), row.expected);
        EXPECT_EQ(differing_fields(record, sentinel_record(1)), std::vector<std::string>());
    }
}

TEST(parse_active_config, does_not_look_at_sections_that_are_not_active)
{
    Setter setter;
    load_text(setter, "[bad]\nnosuchoption = 1\nverbosity = x\n[s]\nverbosity = 2\n");
    setter.set_active_config("s");
    EXPECT_NO_THROW(setter.parse_active_config());
    EXPECT_EQ(integer(setter, "verbosity"), 2);
}

} // namespace
