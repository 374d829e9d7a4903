#include "examples/printers/smtlibprinter.h"

#include <charconv>
#include <cmath>
#include <cstddef>
#include <ostream>
#include <stdexcept>

#include "examples/printers/number.h"

namespace examples {

namespace {

// clang-format off
constexpr const char *standard_names[][2] = {
    {"model_generation",      "produce-models"},
    {"proof_generation",      "produce-proofs"},
    {"random_seed",           "random-seed"},
    {"unsat_core_generation", "produce-unsat-cores"},
};
// clang-format on

std::string standard_name(const std::string &name)
{
    for (const auto &[own, standard] : standard_names) {
        if (name == own) {
            return standard;
        }
    }
    return name;
}

bool is_keyword(const std::string &name)
{
    constexpr const char *bytes = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789~!@$%^&*_-+=<>.?/";
    return !name.empty() && name.find_first_not_of(bytes) == std::string::npos;
}

const char *bool_text(bool value)
{
    return value ? "true" : "false";
}

/// SMT-LIB has no exponents, and its decimals have a point.
std::string decimal(double value)
{
    if (std::isnan(value)) {
        return "nan";
    }
    if (std::isinf(value)) {
        return value < 0 ? "-inf" : "inf";
    }
    std::string text = shortest_text(value, std::chars_format::fixed);
    if (text.find('.') == std::string::npos) {
        text += ".0";
    }
    return text;
}

bool is_control(char c)
{
    const auto byte = static_cast<unsigned char>(c);
    return (byte < 0x20 && c != '\t' && c != '\n' && c != '\r') || byte == 0x7F;
}

std::string escape_of(char c)
{
    char digits[2];
    const auto written = std::to_chars(digits, digits + sizeof digits, static_cast<unsigned char>(c), 16);
    return "\\u{" + std::string(digits, written.ptr) + "}";
}

std::string literal(const std::string &value)
{
    std::string text = "\"";
    for (std::size_t i = 0; i < value.size(); ++i) {
        const char c = value[i];
        if (c == '"') {
            text += "\"\"";
        } else if (is_control(c) || value.compare(i, 2, "\\u") == 0) {
            text += escape_of(c);
        } else {
            text += c;
        }
    }
    return text + '"';
}

} // namespace

void SmtlibPrinter::operator()(std::ostream &out, const std::string &name, bool value) const
{
    write(out, name, bool_text(value));
}

void SmtlibPrinter::operator()(std::ostream &out, const std::string &name, int value) const
{
    if (names == Names::standard && name == "unsat_core_generation") {
        write(out, name, bool_text(value != 0));
    } else if (names == Names::standard && name == "random_seed") {
        write(out, name, std::to_string(static_cast<unsigned int>(value))); // a numeral, which has no sign
    } else {
        write(out, name, std::to_string(value));
    }
}

void SmtlibPrinter::operator()(std::ostream &out, const std::string &name, unsigned int value) const
{
    write(out, name, std::to_string(value));
}

void SmtlibPrinter::operator()(std::ostream &out, const std::string &name, double value) const
{
    write(out, name, decimal(value));
}

void SmtlibPrinter::operator()(std::ostream &out, const std::string &name, const std::string &value) const
{
    write(out, name, literal(value));
}

void SmtlibPrinter::write(std::ostream &out, const std::string &name, const std::string &value) const
{
    const std::string keyword = names == Names::standard ? standard_name(name) : name;
    if (!is_keyword(keyword)) {
        throw std::invalid_argument("no SMT-LIB keyword: " + name);
    }
    const std::string line = "(set-option :" + keyword + " " + value + ")\n";
    out.write(line.data(), static_cast<std::streamsize>(line.size())); // not <<, which obeys the stream's width
}

} // namespace examples
