#include <cmath>
#include <iomanip>
#include <limits>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "examples/printers/jsonprinter.h"
#include "tests/configuration/dumped_text.h"
#include "tests/support/global_locale.h"
#include "tests/support/records.h"

namespace {

using namespace std::string_literals;
using dalvo::Configuration;
using dalvo::testing::CommaLocale;
using dalvo::testing::dump_rows;
using dalvo::testing::DumpRow;
using dalvo::testing::sentinel_record;
using dalvo::testing::value_named;
using nlohmann::ordered_json;

std::string json_of(const Configuration &settings)
{
    std::ostringstream out;
    examples::write_json(out, settings);
    return out.str();
}

ordered_json written(const std::string &name, double value)
{
    Configuration settings;
    dalvo::testing::set_field(settings, name, value);
    return ordered_json::parse(json_of(settings)).at(name);
}

ordered_json written_string(const std::string &value)
{
    Configuration settings;
    settings.printer_defines_prefix = value;
    return ordered_json::parse(json_of(settings)).at("printer.defines_prefix");
}

void expect_value(const ordered_json &member, const DumpRow &row, const Configuration &settings)
{
    const dalvo::testing::FieldValue value = value_named(settings, row.field);
    if (row.type == "bool") {
        EXPECT_TRUE(member.is_boolean() && member.get<bool>() == std::get<bool>(value)) << row.name << ": " << member;
    } else if (row.type == "int") {
        EXPECT_TRUE(member.is_number_integer() && member.get<long>() == std::get<std::int32_t>(value)) << row.name;
    } else if (row.type == "unsigned") {
        EXPECT_TRUE(member.is_number_unsigned()) << row.name << ": " << member;
        EXPECT_EQ(member.get<std::uint32_t>(), static_cast<std::uint32_t>(std::get<std::int32_t>(value))) << row.name;
    } else if (row.type == "double") {
        EXPECT_TRUE(member.is_number()) << row.name << ": " << member;
        EXPECT_DOUBLE_EQ(member.get<double>(), std::get<double>(value)) << row.name;
    } else {
        EXPECT_EQ(member.get<std::string>(), std::get<std::string>(value)) << row.name;
    }
}

TEST(json_printer, writes_each_setting_as_a_member_of_its_type_in_the_order_of_the_dump)
{
    for (const int variant : {1, 2}) {
        const Configuration settings = sentinel_record(variant);
        const ordered_json read = ordered_json::parse(json_of(settings));
        ASSERT_EQ(read.size(), dump_rows().size());
        auto member = read.begin();
        for (const DumpRow &row : dump_rows()) {
            EXPECT_EQ(member.key(), row.name);
            expect_value(member.value(), row, settings);
            ++member;
        }
    }
}

TEST(json_printer, starts_each_object_afresh)
{
    const Configuration settings;
    std::ostringstream out;
    examples::write_json(out, settings);
    examples::write_json(out, settings);
    EXPECT_EQ(out.str(), json_of(settings) + json_of(settings));
}

TEST(json_printer, writes_numbers_in_the_digits_that_tell_them_apart)
{
    const struct { double value; const char *text; const char *why; } rows[] = {
        {0.0, "0", "zero"},
        {-0.0, "-0", "its sign is kept"},
        {static_cast<double>(0.1F), "0.1", "a float, as options are: not 0.10000000149011612"},
        {0.1, "0.1", "a double of its own, whose shortest text is the same"},
        {1.0 / 3.0, "0.3333333333333333", "a double that is no float"},
        {1e-7, "1e-07", "an exponent"},
        {std::numeric_limits<double>::max(), "1.7976931348623157e+308", "the largest"},
        {std::numeric_limits<double>::denorm_min(), "5e-324", "the smallest"},
    };
    for (const auto &row : rows) {
        std::ostringstream out;
        examples::JsonMemberPrinter()(out, "x", row.value);
        EXPECT_EQ(out.str(), "\n  \"x\": "s + row.text) << row.why;
        EXPECT_TRUE(ordered_json::accept("{" + out.str() + "}")) << row.why;
    }
}

TEST(json_printer, writes_floats_that_are_no_numbers_as_strings)
{
    const double infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(written("dpll.restart_geometric_factor", infinity), "inf");
    EXPECT_EQ(written("dpll.restart_geometric_factor", -infinity), "-inf");
    EXPECT_EQ(written("dpll.branching_random_frequency", std::numeric_limits<double>::quiet_NaN()), "nan");
}

TEST(json_printer, writes_strings_so_that_they_read_back)
{
    const struct { std::string value; const char *why; } rows[] = {
        {"", "empty"},
        {"plain", "plain"},
        {"\"", "a quote"},
        {"\\", "a backslash"},
        {"\\u0041\\\"", "what looks like an escape"},
        {"a\nb\r\tc", "line ends and a tab"},
        {"a\0b"s, "NUL"},
        {"\x01\x1F\x7F", "control bytes"},
        {"</script>", "no other escapes"},
        {"\xC3\xA9 \xE2\x82\xAC \xF0\x9F\x98\x80", "two, three and four bytes"},
        {"\xEF\xBF\xBD", "U+FFFD itself"},
        {"\xC2\x80 \xE0\xA0\x80 \xED\x9F\xBF \xEE\x80\x80 \xF0\x90\x80\x80 \xF4\x8F\xBF\xBF", "the ends of each form"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(written_string(row.value).get<std::string>(), row.value) << row.why;
    }
}

TEST(json_printer, replaces_bytes_that_are_no_utf8)
{
    const std::string r = "\xEF\xBF\xBD";
    const struct { std::string value; std::string expected; const char *why; } rows[] = {
        {"a\x80z", "a" + r + "z", "a byte that continues nothing"},
        {"\xFF\xFE", r + r, "bytes of no form"},
        {"\xC3", r, "cut short at the end"},
        {"\xE2\x82", r + r, "cut short, two bytes"},
        {"\xC3\"", r + "\"", "cut short by a quote, which is escaped all the same"},
        {"\xC0\x80", r + r, "NUL in two bytes"},
        {"\xE0\x9F\xBF", r + r + r, "overlong in three"},
        {"\xF0\x8F\xBF\xBF", r + r + r + r, "overlong in four"},
        {"\xED\xA0\x80", r + r + r, "a surrogate"},
        {"\xF4\x90\x80\x80", r + r + r + r, "beyond U+10FFFF"},
        {"\xF0\x9F\x98z", r + r + r + "z", "the last byte is another"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(written_string(row.value).get<std::string>(), row.expected) << row.why;
    }
}

TEST(json_printer, writes_any_two_bytes_so_that_a_strict_reader_takes_them)
{
    const examples::JsonMemberPrinter printer;
    std::ostringstream out;
    for (int first = 0; first < 256; ++first) {
        for (int second = 0; second < 256; ++second) {
            printer(out, std::to_string(first * 256 + second),
                    std::string{static_cast<char>(first), static_cast<char>(second)});
        }
    }
    const auto read = nlohmann::json::parse("{" + out.str() + "}");
    EXPECT_EQ(read.size(), 65536U);
    EXPECT_EQ(read.at(std::to_string('a' * 256 + '"')), "a\"");
}

TEST(json_printer, does_not_follow_the_locale_or_the_state_of_the_stream)
{
    const Configuration settings = sentinel_record(1);
    const std::string expected = json_of(settings);
    const CommaLocale comma;
    std::ostringstream out;
    out << std::hex << std::showpos << std::setfill('*') << std::setw(40) << std::setprecision(2);
    examples::write_json(out, settings);
    EXPECT_EQ(out.str(), expected);
}

} // namespace
