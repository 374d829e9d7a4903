// What the printer writes is read by Z3, as the options of a script and, for values, as terms.

#include <charconv>
#include <iomanip>
#include <limits>
#include <ostream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <z3++.h>

#include "examples/printers/smtlibprinter.h"
#include "tests/configuration/dumped_text.h"
#include "tests/support/global_locale.h"
#include "tests/support/records.h"

namespace {

using namespace std::string_literals;
using dalvo::Configuration;
using dalvo::testing::CommaLocale;
using dalvo::testing::dump_rows;
using dalvo::testing::sentinel_record;
using examples::SmtlibPrinter;

std::string script_of(const Configuration &settings, const SmtlibPrinter &printer = SmtlibPrinter())
{
    std::ostringstream out;
    dalvo::ConfigurationSetter().dump(&settings, out, printer);
    return out.str();
}

template <class T> std::string line_of(const T &value, const std::string &name = "x")
{
    std::ostringstream out;
    SmtlibPrinter()(out, name, value);
    return out.str();
}

template <class T> std::string value_of(const T &value)
{
    const std::string line = line_of(value);
    const std::string head = "(set-option :x ";
    EXPECT_EQ(line.substr(0, head.size()), head);
    EXPECT_EQ(line.substr(line.size() - 2), ")\n");
    return line.substr(head.size(), line.size() - head.size() - 2);
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

/// What Z3 answers to a script; empty when it takes every command.
std::string answer(const std::string &script)
{
    z3::context z3;
    return Z3_eval_smtlib2_string(z3, script.c_str());
}

/// The string that the literal `text` stands for to Z3's theory of strings.
std::string string_read(const std::string &text)
{
    z3::context z3;
    const z3::expr_vector read = z3.parse_string(("(declare-const s String)(assert (= s " + text + "))").c_str());
    unsigned int size = 0;
    const char *const bytes = Z3_get_lstring(z3, read[0].arg(1), &size);
    return {bytes, size};
}

bool starts_with(const std::string &text, const std::string &head)
{
    return text.rfind(head, 0) == 0;
}

TEST(smtlib_printer, writes_a_line_a_setting_in_the_order_of_the_dump)
{
    const std::vector<std::string> lines = lines_of(script_of(Configuration()));
    ASSERT_EQ(lines.size(), dump_rows().size());
    for (std::size_t i = 0; i < lines.size(); ++i) {
        EXPECT_TRUE(starts_with(lines[i], "(set-option :" + dump_rows()[i].name + " ")) << lines[i];
        EXPECT_EQ(lines[i].back(), ')');
    }
}

// Z3 knows one name of ours, verbosity. It says of each other that it is unknown, and reads on. What it cannot read it
// answers otherwise: "invalid option value", "unexpected character", or nothing at all behind an open quote.
TEST(smtlib_printer, writes_lines_that_z3_reads_to_the_last)
{
    for (const int variant : {1, 2}) {
        Configuration settings = sentinel_record(variant);
        settings.debug_api_call_trace_filename = "a\"b\\u{41}|;(\n\0\x80\xFF"s;
        settings.dpll.branching_random_frequency = std::numeric_limits<double>::quiet_NaN();
        settings.dpll.restart_geometric_factor = 1e-30;
        settings.random_seed = -7;
        settings.theory_arr_max_ext_lemmas = std::numeric_limits<std::int32_t>::min();
        const std::vector<std::string> answers = lines_of(answer(script_of(settings) + "(echo \"the end\")"));
        std::size_t unknown = 0;
        for (const std::string &line : answers) {
            if (line.find("(error") != std::string::npos) {
                EXPECT_TRUE(line.find("unknown parameter") != std::string::npos ||
                            line.find("unknown module") != std::string::npos) << line;
                ++unknown;
            }
        }
        EXPECT_EQ(unknown, dump_rows().size() - 1);
        EXPECT_EQ(answers.back(), "the end");
    }
}

TEST(smtlib_printer, is_noticed_by_that_test_where_a_line_cannot_be_read)
{
    EXPECT_NE(answer("(set-option :dpll.x (- 1))").find("invalid option value"), std::string::npos);
    EXPECT_EQ(answer("(set-option :dpll.x \"open)\n(echo \"the end\")").find("the end\n"), std::string::npos);
}

TEST(smtlib_printer, gives_z3_the_values_of_the_names_that_it_knows)
{
    Configuration settings;
    settings.verbosity = 2;
    settings.random_seed = 77;
    settings.model_generation = false;
    settings.proof_generation = true;
    settings.unsat_core_generation = 2;
    z3::context z3;
    const std::string script = script_of(settings, SmtlibPrinter(SmtlibPrinter::Names::standard));
    const std::string errors = Z3_eval_smtlib2_string(z3, script.c_str());
    const struct { const char *name; const char *value; } rows[] = {
        {":verbosity", "2"},
        {":random-seed", "77"},
        {":produce-models", "false"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(errors.find("'"s + (row.name + 1) + "'"), std::string::npos) << row.name;
        const std::string question = "(get-option "s + row.name + ")";
        EXPECT_EQ(Z3_eval_smtlib2_string(z3, question.c_str()), row.value + "\n"s) << row.name;
    }
    // These two a context has to know when it is made: it takes name and value, and says that it is too late.
    for (const std::string name : {"produce-proofs", "produce-unsat-cores"}) {
        const std::string error = "error setting ':" + name + "', option value cannot be modified after initialization";
        EXPECT_NE(errors.find(error), std::string::npos) << errors;
    }
    Z3_eval_smtlib2_string(z3, "(set-option :verbosity 0)"); // of the process
}

TEST(smtlib_printer, writes_standard_options_in_the_standard_types)
{
    Configuration settings;
    settings.random_seed = -1;
    const std::string script = script_of(settings, SmtlibPrinter(SmtlibPrinter::Names::standard));
    EXPECT_NE(script.find("(set-option :random-seed 4294967295)\n"), std::string::npos) << "a numeral has no sign";
    EXPECT_NE(script.find("(set-option :produce-unsat-cores false)\n"), std::string::npos);
    EXPECT_EQ(lines_of(script).size(), dump_rows().size());
    EXPECT_EQ(script.find("random_seed"), std::string::npos);
}

TEST(smtlib_printer, writes_whole_numbers_in_decimal)
{
    EXPECT_EQ(value_of(true), "true");
    EXPECT_EQ(value_of(false), "false");
    EXPECT_EQ(value_of(0), "0");
    EXPECT_EQ(value_of(-1), "-1");
    EXPECT_EQ(value_of(std::numeric_limits<int>::min()), "-2147483648");
    EXPECT_EQ(value_of(std::numeric_limits<unsigned int>::max()), "4294967295");
}

TEST(smtlib_printer, writes_floats_as_decimals_without_exponents)
{
    const struct { double value; std::string text; const char *why; } rows[] = {
        {0.0, "0.0", "a decimal has a point"},
        {2.0, "2.0", "a decimal has a point"},
        {static_cast<double>(0.1F), "0.1", "a float, as options are: not 0.10000000149011612"},
        {1.0 / 3.0, "0.3333333333333333", "a double that is no float"},
        {-1.5, "-1.5", "negative: a symbol"},
        {-0.0, "-0.0", "its sign is kept"},
        {1e-7, "0.0000001", "small"},
        {1e22, "10000000000000000000000.0", "large"},
        {std::numeric_limits<double>::quiet_NaN(), "nan", "a symbol"},
        {std::numeric_limits<double>::infinity(), "inf", "a symbol"},
        {-std::numeric_limits<double>::infinity(), "-inf", "a symbol"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(value_of(row.value), row.text) << row.why;
    }
}

// As a term: to an option Z3 gives the numerator of a decimal alone.
TEST(smtlib_printer, writes_decimals_that_z3_reads_as_the_number)
{
    const struct { double value; const char *fraction; } rows[] = {
        {0.5, "1/2"},
        {1.5, "3/2"},
        {static_cast<double>(0.1F), "1/10"},
        {123456.789, "123456789/1000"},
        {0.0, "0"},
        {1e22, "10000000000000000000000"},
        {1e-12, "1/1000000000000"},
    };
    for (const auto &row : rows) {
        z3::context z3;
        const z3::expr_vector read =
            z3.parse_string(("(declare-const x Real)(assert (= x " + value_of(row.value) + "))").c_str());
        EXPECT_TRUE(z3::eq(read[0].arg(1), z3.real_val(row.fraction))) << read[0] << " is not " << row.fraction;
    }
}

TEST(smtlib_printer, writes_the_largest_and_the_smallest_floats_so_that_they_read_back)
{
    using limits = std::numeric_limits<double>;
    using narrow = std::numeric_limits<float>;
    for (const double value : {limits::max(), limits::min(), limits::denorm_min(), static_cast<double>(narrow::min()),
                               -2.2250738585072011e-308, limits::epsilon()}) {
        const std::string text = value_of(value);
        double read = 0.0;
        std::from_chars(text.data(), text.data() + text.size(), read);
        EXPECT_EQ(static_cast<float>(read), static_cast<float>(value)) << text;
        EXPECT_EQ(text.find_first_not_of("-.0123456789"), std::string::npos) << text;
    }
    EXPECT_EQ(value_of(limits::denorm_min()), "0." + std::string(323, '0') + "5");
}

TEST(smtlib_printer, writes_strings_that_reach_an_option_of_z3)
{
    const struct { std::string value; std::string arrives; const char *why; } rows[] = {
        {"", "", "empty"},
        {"calls.smt2", "calls.smt2", "plain"},
        {"a\"b\"\"", "a\"b\"\"", "quotes"},
        {"a\\b\\\\n", "a\\b\\\\n", "backslashes are plain"},
        {"a|b;c)(\t\r\nd", "a|b;c)(\t\r\nd", "what means something outside of strings"},
        {"\x80\xC3\xA9\xFF", "\x80\xC3\xA9\xFF", "bytes above ASCII"},
        {"a\0b\x01\x1F\x7F"s, "a\\u{0}b\\u{1}\\u{1f}\\u{7f}", "bytes that no string may hold"},
        {"\\u{0}\\", "\\u{5c}u{0}\\", "what looks like such a byte"},
    };
    for (const auto &row : rows) {
        z3::context z3;
        const std::string script = line_of(row.value, "trace_file_name"); // a file that is written in debug builds only
        EXPECT_EQ(std::string(Z3_eval_smtlib2_string(z3, script.c_str())), "") << row.why;
        Z3_string arrived = nullptr;
        ASSERT_TRUE(Z3_global_param_get("trace_file_name", &arrived));
        EXPECT_EQ(arrived, row.arrives) << row.why;
    }
}

TEST(smtlib_printer, writes_strings_that_the_theory_of_strings_reads_as_they_were)
{
    for (int byte = 0; byte < 0x80; ++byte) {
        const std::string text = "a"s + static_cast<char>(byte) + static_cast<char>(byte) + "u{41}";
        EXPECT_EQ(string_read(value_of(text)), text) << "byte " << byte;
    }
    const std::string text = "\\u0041\\u{42}\\\\u\\";
    EXPECT_EQ(string_read(value_of(text)), text);
}

TEST(smtlib_printer, refuses_names_that_are_no_keywords)
{
    for (const std::string &name : {""s, "a b"s, "a)"s, "a\""s, "a\nb"s, "a\0"s, "\xC3\xA9"s, "|a|"s, "a;"s, ":a"s}) {
        std::ostringstream out;
        EXPECT_THROW(SmtlibPrinter()(out, name, 1), std::invalid_argument) << name;
        EXPECT_EQ(out.str(), "") << name;
    }
    EXPECT_EQ(line_of(1, "aZ0~!@$%^&*_-+=<>.?/"), "(set-option :aZ0~!@$%^&*_-+=<>.?/ 1)\n");
}

TEST(smtlib_printer, does_not_follow_the_locale_or_the_state_of_the_stream)
{
    const Configuration settings = sentinel_record(1);
    const std::string expected = script_of(settings);
    const CommaLocale comma;
    std::ostringstream out;
    out << std::hex << std::showpos << std::setfill('*') << std::setw(40) << std::setprecision(2);
    dalvo::ConfigurationSetter().dump(&settings, out, SmtlibPrinter());
    EXPECT_EQ(out.str(), expected);
}

} // namespace
