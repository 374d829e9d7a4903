#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <limits>
#include <locale>
#include <map>
#include <random>
#include <sstream>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include <gtest/gtest.h>

#include "dalvo/configuration/configurationsetter.h"
#include "tests/configuration/caught.h"
#include "tests/configuration/dumped_text.h"
#include "tests/support/classic_locale.h"
#include "tests/support/golden.h"
#include "tests/support/records.h"
#include "tests/support/sections.h"

namespace {

using namespace std::string_literals;
using dalvo::Configuration;
using dalvo::ConfigurationSetter;
using dalvo::testing::Caught;
using dalvo::testing::caught_from;
using dalvo::testing::ClassicStream;
using dalvo::testing::differing_fields;
using dalvo::testing::dump_rows;
using dalvo::testing::dumped;
using dalvo::testing::DumpRow;
using dalvo::testing::Filed;
using dalvo::testing::load_text;
using dalvo::testing::Sections;
using dalvo::testing::sections_from;
using dalvo::testing::sections_of;
using dalvo::testing::set_field;
using dalvo::testing::value_named;

constexpr std::int32_t least = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t most = std::numeric_limits<std::int32_t>::max();

/// The integers that an option accepts.
struct Bounds {
    std::int32_t lowest = least;
    std::int32_t highest = most;
};

/// The accepted integers by option, from what the table of applications says of each; 0 is missing from one of them.
const std::map<std::string, Bounds> &accepted_integers()
{
    static const std::map<std::string, Bounds> all = [] {
        std::map<std::string, Bounds> bounds;
        for (const auto &row : dalvo::testing::golden_rows("application.tsv", 4)) {
            const std::string &accepted = row[2];
            Bounds &own = bounds[row[0]];
            if (accepted.rfind("at most ", 0) == 0) {
                own.highest = std::atoi(accepted.c_str() + std::strlen("at most "));
            } else if (accepted.rfind("at least ", 0) == 0) {
                own.lowest = std::atoi(accepted.c_str() + std::strlen("at least "));
            } else if (accepted == "0 to 2") {
                own = {0, 2};
            }
        }
        return bounds;
    }();
    return all;
}

using Random = std::mt19937;

std::int32_t below(Random &random, std::int32_t end)
{
    return static_cast<std::int32_t>(random() % static_cast<std::uint32_t>(end));
}

std::int32_t random_integer(const DumpRow &row, Random &random)
{
    Bounds bounds = accepted_integers().at(row.name);
    if (row.type == "unsigned") {
        bounds.lowest = 0; // the text cannot say a negative one
    }
    std::int32_t value = 0;
    switch (below(random, 4)) {
    case 0: value = bounds.lowest; break;
    case 1: value = bounds.highest; break;
    default: value = std::uniform_int_distribution<std::int32_t>(bounds.lowest, bounds.highest)(random);
    }
    return value == 0 && row.name == "random_seed" ? 1 : value;
}

/// A float of at most six digits, which is what a stream of the usual precision writes.
double random_float(bool frequency, Random &random)
{
    const std::int32_t digits = below(random, 1'000'000);
    const std::int32_t exponent = frequency ? -6 - below(random, 25) : below(random, 60) - 30;
    const std::string sign = below(random, 2) == 0 ? "-" : "";
    const std::string text = sign + std::to_string(digits) + "e" + std::to_string(exponent);
    return static_cast<double>(std::strtof(text.c_str(), nullptr));
}

/// Any bytes but line breaks, without white space at the ends.
std::string random_string(Random &random)
{
    std::string text;
    const std::string favourites = "=#[], \t\"'\\\r\f\v"s + '\0';
    for (std::int32_t left = below(random, 20); left > 0; --left) {
        const char any = static_cast<char>(below(random, 256));
        text += below(random, 2) == 0 ? any : favourites[random() % favourites.size()];
    }
    std::string kept;
    for (const char c : text) {
        if (c != '\n') {
            kept += c;
        }
    }
    const char *white = " \t\v\f\r";
    kept.erase(0, std::min(kept.find_first_not_of(white), kept.size()));
    return kept.substr(0, kept.find_last_not_of(white) + 1);
}

/// What a filling makes of options that force others.
void close_under_forcing(Configuration &c)
{
    if (c.interpolation || c.unsat_core_generation != 0) {
        c.preprocessor_toplevel_propagation = false;
    }
    if (c.interpolation || c.unsat_core_generation == 1) {
        c.proof_generation = true;
    }
    if (c.theory_arr_enable_nonlinear_strat) {
        c.theory_arr_enable_nonlinear = true;
    }
}

/// A record whose dumped values their options accept and a text can say; the other fields are those of a fresh one.
Configuration random_record(Random &random)
{
    Configuration record;
    for (const DumpRow &row : dump_rows()) {
        if (row.type == "bool") {
            set_field(record, row.field, below(random, 2) == 0);
        } else if (row.type == "double") {
            set_field(record, row.field, random_float(row.name.find("frequency") != std::string::npos, random));
        } else if (row.type == "string") {
            set_field(record, row.field, random_string(random));
        } else {
            set_field(record, row.field, random_integer(row, random));
        }
    }
    close_under_forcing(record);
    return record;
}

/// What a fresh record becomes when `text` is read and its section `active` applied.
Configuration read_back(const std::string &text, const std::string &active)
{
    ConfigurationSetter setter;
    setter.initialize_options();
    load_text(setter, text);
    setter.set_active_config(active);
    Configuration record;
    setter.update_config(&record);
    return record;
}

using Names = std::vector<std::string>;

TEST(roundtrip, gives_the_same_record_and_the_same_text)
{
    const struct {
        std::string header, active;
    } sections[] = {{"s1", "s1"}, {"", ""}, {"default", ""}, {"a b", "a b"}, {"a]b", "a]b"}, {"]", "]"}, {"[", "["},
                    {"#1", "#1"}, {"a = b", "a = b"}, {"a\0b"s, "a\0b"s}, {"\xc3\xa9\xff", "\xc3\xa9\xff"}};
    Random random(20240229);
    for (int round = 0; round < 300; ++round) {
        const auto &section = sections[static_cast<std::size_t>(round) % std::size(sections)];
        SCOPED_TRACE(::testing::Message() << "round " << round << ", section " << section.header);
        const Configuration record = random_record(random);
        const std::string text = dumped(record, section.header);
        const Configuration again = read_back(text, section.active);
        ASSERT_EQ(differing_fields(record, again), Names());
        ASSERT_EQ(dumped(again, section.header), text);
    }
}

TEST(roundtrip, wins_over_the_default_text)
{
    Random random(7);
    for (int round = 0; round < 20; ++round) {
        const Configuration record = random_record(random);
        ConfigurationSetter setter;
        setter.initialize_options();
        setter.load_default();
        load_text(setter, dumped(record, "s1"), 2);
        setter.set_active_config("s1");
        Configuration again;
        setter.update_config(&again);
        ASSERT_EQ(differing_fields(record, again), Names());

        setter.set_active_config("");
        Configuration defaults = record;
        setter.update_config(&defaults);
        ASSERT_EQ(differing_fields(defaults, Configuration()), Names());
    }
}

TEST(roundtrip, files_one_entry_a_setting_into_the_section_of_the_header)
{
    Random random(11);
    const Configuration record = random_record(random);
    std::vector<Filed> entries;
    for (const DumpRow &row : dump_rows()) {
        entries.push_back({row.name, dalvo::testing::printed_value(row, record)});
    }
    const struct {
        std::string header;
        Sections expected;
    } rows[] = {
        {"", {{"", entries}}},
        {"default", {{"", entries}}},
        {"s1", {{"", {}}, {"s1", entries}}},
        {"a]b,c", {{"", {}}, {"a]b", entries}, {"c", entries}}},
        {" s ", {{"", {}}, {"s", entries}}},
        {" default ", {{"", entries}}},
        {"default,s", {{"", {}}, {"default", entries}, {"s", entries}}},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(sections_from(dumped(record, row.header)), row.expected) << row.header;
    }
}

TEST(roundtrip, fails_for_section_names_that_make_no_header)
{
    const struct {
        const char *section, *line;
    } rows[] = {{" ", "[ ]"}, {",", "[,]"}, {"a,", "[a,]"}, {"a\nb", "[a"}};
    for (const auto &row : rows) {
        const Caught expected = {"bad format of configuration file: "s + row.line + ", value: ", row.line, "", ""};
        EXPECT_EQ(caught_from([&] { sections_from(dumped(Configuration(), row.section)); }), expected);
    }
}

TEST(roundtrip, keeps_numbers_without_digits)
{
    const double infinity = std::numeric_limits<double>::infinity();
    for (const double value : {infinity, -infinity, std::nan(""), -std::nan(""), -0.0, 0.0}) {
        Configuration record;
        record.dpll.restart_geometric_factor = value;
        record.dpll.branching_random_frequency = value > 1.0 ? -value : value;
        EXPECT_EQ(differing_fields(record, read_back(dumped(record, "s"), "s")), Names()) << value;
    }
}

TEST(roundtrip, loses_digits_of_floats_beyond_the_streams_precision)
{
    Configuration record;
    record.dpll.restart_geometric_factor = static_cast<double>(0.12345679F);
    const Configuration again = read_back(dumped(record, ""), "");
    EXPECT_EQ(differing_fields(record, again), Names{"dpll.restart_geometric_factor"});
    EXPECT_EQ(again.dpll.restart_geometric_factor, static_cast<double>(0.123457F));
}

TEST(roundtrip, rounds_doubles_to_floats)
{
    Configuration record;
    record.dpll.restart_geometric_factor = 0.1;
    const Configuration again = read_back(dumped(record, ""), "");
    EXPECT_EQ(differing_fields(record, again), Names{"dpll.restart_geometric_factor"});
    EXPECT_EQ(again.dpll.restart_geometric_factor, static_cast<double>(0.1F));
    EXPECT_EQ(dumped(again, ""), dumped(record, "")) << "the text is the same nevertheless";
}

TEST(roundtrip, keeps_every_float_at_precision_nine)
{
    const ConfigurationSetter setter;
    Random random(3);
    for (int round = 0; round < 300; ++round) {
        Configuration record;
        for (const DumpRow &row : dump_rows()) {
            if (row.type == "double") {
                float value = 2.0F;
                while (!std::isfinite(value) || value > 1.0F) {
                    const std::uint32_t bits = static_cast<std::uint32_t>(random());
                    std::memcpy(&value, &bits, sizeof value);
                }
                set_field(record, row.field, static_cast<double>(value));
            }
        }
        ClassicStream out;
        out.precision(9);
        setter.dump(&record, out, "s");
        ASSERT_EQ(differing_fields(record, read_back(out.str(), "s")), Names()) << out.str();
    }
}

TEST(roundtrip, keeps_signs_inside_strings)
{
    for (const std::string &value : {"a = b"s, "= b"s, "# no comment"s, "x # y"s, "[s]"s, "]"s, "\"quoted\""s, "' '"s,
                                     "a, b"s, "\\n"s, "a\rb"s, "a\0b"s, "\0"s, "\xa0x\x85"s, ""s}) {
        Configuration record;
        record.debug_api_call_trace_filename = value;
        record.printer_defines_prefix = value;
        EXPECT_EQ(differing_fields(record, read_back(dumped(record, "s"), "s")), Names()) << value;
    }
}

TEST(roundtrip, strips_strings)
{
    for (const char *value : {" x", "x ", "\tx y\t", "\r\v\f x y \r"}) {
        Configuration record;
        record.printer_defines_prefix = value;
        const Configuration again = read_back(dumped(record, "s"), "s");
        EXPECT_EQ(differing_fields(record, again), Names{"printer_defines_prefix"});
        EXPECT_EQ(again.printer_defines_prefix, std::string(value).find('y') == std::string::npos ? "x" : "x y");
    }
}

TEST(roundtrip, breaks_strings_at_line_breaks)
{
    Configuration record;
    record.random_seed = 5;
    record.debug_api_call_trace_filename = "a\nrandom_seed = 7";
    const Configuration again = read_back(dumped(record, ""), "");
    EXPECT_EQ(again.debug_api_call_trace_filename, "a");
    EXPECT_EQ(again.random_seed, 7) << "the rest of the string is an assignment of its own";

    record.debug_api_call_trace_filename = "a\nb";
    const Caught expected = {"unknown option b: b, value: ", "b", "", ""};
    EXPECT_EQ(caught_from([&] { read_back(dumped(record, ""), ""); }), expected);
}

TEST(roundtrip, rejects_negative_values_of_the_options_written_unsigned)
{
    int count = 0;
    for (const DumpRow &row : dump_rows()) {
        if (row.type != "unsigned") {
            continue;
        }
        ++count;
        SCOPED_TRACE(row.name);
        Configuration record;
        set_field(record, row.field, std::int32_t{-1});
        ConfigurationSetter setter;
        setter.initialize_options();
        EXPECT_NO_THROW(load_text(setter, dumped(record, "")));
        Configuration again = dalvo::testing::sentinel_record(0);
        const Caught expected = {"invalid value for option " + row.name + ": " + row.name + ", value: 4294967295",
                                 row.name, "4294967295", ""};
        EXPECT_EQ(caught_from([&] { setter.update_config(&again); }), expected);
        EXPECT_EQ(differing_fields(again, dalvo::testing::sentinel_record(0)), Names());
    }
    EXPECT_EQ(count, 4);
}

TEST(roundtrip, applies_the_forced_fields_to_a_record_that_lacks_them)
{
    Configuration record;
    record.interpolation = true;
    record.proof_generation = false;
    record.preprocessor_toplevel_propagation = true;
    record.theory_arr_enable_nonlinear = false;
    record.theory_arr_enable_nonlinear_strat = true;
    const Configuration again = read_back(dumped(record, "s"), "s");
    EXPECT_EQ(differing_fields(record, again), (Names{"proof_generation", "preprocessor_toplevel_propagation",
                                                      "theory_arr_enable_nonlinear"}));
    close_under_forcing(record);
    EXPECT_EQ(differing_fields(record, again), Names());
}

TEST(roundtrip, keeps_an_unforced_store_of_theory_lemmas)
{
    Configuration record;
    record.preprocessor_toplevel_propagation = false;
    record.unsat_core_generation = 2;
    for (const bool store : {false, true}) {
        record.dpll.store_tlemmas = store;
        EXPECT_EQ(differing_fields(record, read_back(dumped(record, "s"), "s")), Names()) << store;
    }
}

TEST(roundtrip, rejects_a_record_with_a_value_that_its_option_does_not_accept)
{
    Configuration record;
    record.random_seed = 0;
    const Caught expected = {"invalid value for option random_seed: random_seed, value: 0", "random_seed", "0", ""};
    EXPECT_EQ(caught_from([&] { read_back(dumped(record, "s"), "s"); }), expected);
    const Configuration untouched = read_back(dumped(record, "s"), "");
    EXPECT_EQ(differing_fields(untouched, Configuration()), Names()) << "the section is not active";
}

TEST(roundtrip, rejects_numbers_in_groups)
{
    struct Grouping : std::numpunct<char> {
        char do_thousands_sep() const override { return ','; }
        std::string do_grouping() const override { return "\3"; }
    };
    Configuration record;
    record.random_seed = 1000;
    std::ostringstream out;
    out.imbue(std::locale(std::locale::classic(), new Grouping));
    const ConfigurationSetter setter;
    setter.dump(&record, out, "");
    const Caught expected = {"invalid value for option random_seed: random_seed, value: 1,000", "random_seed", "1,000",
                             ""};
    EXPECT_EQ(caught_from([&] { read_back(out.str(), ""); }), expected);
}

} // namespace
