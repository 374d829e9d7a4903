#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>
#include <vector>

/// A second parser of value texts, plain and slow, and without a line of the component's. Floats are left to strtof,
/// which reads them as a process does that has set no C locale; a program that sets one cannot use it.
namespace dalvo::testing {

/// `text` with the letters A to Z made small.
inline std::string in_small_letters(std::string text)
{
    const std::string large = "ABCDEFGHIJKLMNOPQRSTUVWXYZ";
    const std::string small = "abcdefghijklmnopqrstuvwxyz";
    for (char &c : text) {
        const std::size_t place = large.find(c);
        if (place != std::string::npos) {
            c = small[place];
        }
    }
    return text;
}

inline bool is_among(const std::string &text, const std::vector<std::string> &words)
{
    for (const std::string &word : words) {
        if (text == word) {
            return true;
        }
    }
    return false;
}

/// The words of the style that the setter chooses.
inline std::optional<bool> second_bool(const std::string &text)
{
    static const std::vector<std::string> yes = {"true", "yes", "on", "1"};
    static const std::vector<std::string> no = {"false", "no", "off", "0"};
    const std::string word = in_small_letters(text);
    return is_among(word, yes) ? std::optional(true) : is_among(word, no) ? std::optional(false) : std::nullopt;
}

inline bool is_second_digit(char c)
{
    return c >= '0' && c <= '9';
}

/// The offset behind the digits that start at `at`.
inline std::size_t behind_digits(const std::string &text, std::size_t at)
{
    while (at < text.size() && is_second_digit(text[at])) {
        ++at;
    }
    return at;
}

/// 1 when a sign stands at `at`, else 0.
inline std::size_t sign_length(const std::string &text, std::size_t at)
{
    return at < text.size() && (text[at] == '+' || text[at] == '-') ? 1 : 0;
}

inline std::optional<std::int32_t> second_int(const std::string &text)
{
    const std::size_t start = sign_length(text, 0);
    if (start == text.size() || behind_digits(text, start) != text.size()) {
        return std::nullopt;
    }
    constexpr std::int64_t beyond = 10000000000; // and no further, however many digits there are
    std::int64_t number = 0;
    for (std::size_t at = start; at < text.size(); ++at) {
        number = number >= beyond ? beyond : number * 10 + (text[at] - '0');
    }
    number = text[0] == '-' ? -number : number;
    if (number < -2147483648LL || number > 2147483647LL) {
        return std::nullopt;
    }
    return static_cast<std::int32_t>(number);
}

/// Whether the text from `at` on is digits with at most one point, and at most one exponent behind them.
inline bool is_second_decimal(const std::string &text, std::size_t at)
{
    const std::size_t point = behind_digits(text, at);
    std::size_t digits = point - at;
    std::size_t end = point;
    if (end < text.size() && text[end] == '.') {
        end = behind_digits(text, point + 1);
        digits += end - point - 1;
    }
    if (digits == 0) {
        return false;
    }
    if (end < text.size() && (text[end] == 'e' || text[end] == 'E')) {
        const std::size_t exponent = end + 1 + sign_length(text, end + 1);
        end = behind_digits(text, exponent);
        if (end == exponent) {
            return false;
        }
    }
    return end == text.size();
}

inline std::optional<float> second_float(const std::string &text)
{
    const std::size_t start = sign_length(text, 0);
    if (is_among(in_small_letters(text.substr(start)), {"inf", "infinity", "nan"})) {
        return std::strtof(text.c_str(), nullptr);
    }
    if (!is_second_decimal(text, start)) {
        return std::nullopt;
    }
    const float value = std::strtof(text.c_str(), nullptr);
    return std::isinf(value) ? std::nullopt : std::optional(value);
}

} // namespace dalvo::testing
