#include "tools/output/diff_value.h"

#include <charconv>
#include <cmath>
#include <cstring>
#include <functional>

#include "tools/output/diagnostics.h"

namespace dalvo::tools {

namespace {

template <class T> std::string shortest(T value)
{
    char digits[64];
    const auto [end, failure] = std::to_chars(digits, digits + sizeof digits, value);
    return failure == std::errc() ? std::string(digits, end) : "";
}

/// Options are 32-bit floats; what a record holds beyond them needs the digits of a double.
std::string float_text(double value)
{
    if (std::isnan(value)) {
        return "nan";
    }
    const auto narrow = static_cast<float>(value);
    const bool is_float = std::equal_to<>()(static_cast<double>(narrow), value);
    return is_float ? shortest(narrow) : shortest(value);
}

} // namespace

bool same_value(const Setting &a, const Setting &b)
{
    const double *const number = std::get_if<double>(&a.value);
    const double *const other = std::get_if<double>(&b.value);
    if (number == nullptr || other == nullptr) {
        return a.value == b.value;
    }
    // NOLINTNEXTLINE(bugprone-suspicious-memory-comparison): 0 and -0 differ
    return (std::isnan(*number) && std::isnan(*other)) || std::memcmp(number, other, sizeof *number) == 0;
}

std::string shown_value(const Setting &setting)
{
    if (const double *const number = std::get_if<double>(&setting.value)) {
        return float_text(*number);
    }
    if (const std::string *const text = std::get_if<std::string>(&setting.value)) {
        return '"' + escaped(*text) + '"';
    }
    return setting.text();
}

nlohmann::ordered_json json_value(const Setting &setting)
{
    if (const double *const number = std::get_if<double>(&setting.value)) {
        const std::string text = float_text(*number);
        double shown = 0.0;
        std::from_chars(text.data(), text.data() + text.size(), shown);
        return std::isfinite(*number) ? nlohmann::ordered_json(shown) : nlohmann::ordered_json(text);
    }
    return std::visit([](const auto &value) { return nlohmann::ordered_json(value); }, setting.value);
}

} // namespace dalvo::tools
