#include "dalvo/options/valuetext.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <system_error>

#include "dalvo/utils/str.h"

namespace dalvo {

namespace {

bool is_digit(char c) noexcept
{
    return c >= '0' && c <= '9';
}

template <std::size_t Count> bool is_one_of(std::string_view text, const std::string_view (&words)[Count]) noexcept
{
    return std::any_of(std::begin(words), std::end(words),
                       [&](std::string_view word) { return str::equal_but_for_case(text, word); });
}

constexpr std::string_view plain_true[] = {"true"};
constexpr std::string_view plain_false[] = {"false"};
constexpr std::string_view true_words[] = {"true", "yes", "on", "1"};
constexpr std::string_view false_words[] = {"false", "no", "off", "0"};

/// Takes a leading sign off `text`; true for "-".
bool take_sign(std::string_view &text) noexcept
{
    const bool negative = !text.empty() && text.front() == '-';
    if (negative || (!text.empty() && text.front() == '+')) {
        text.remove_prefix(1);
    }
    return negative;
}

/// Takes the digits at the start of `text` off it and returns them.
std::string_view take_digits(std::string_view &text) noexcept
{
    const auto end = std::find_if_not(text.begin(), text.end(), is_digit);
    const std::string_view digits = text.substr(0, static_cast<std::size_t>(end - text.begin()));
    text.remove_prefix(digits.size());
    return digits;
}

/// The parts of an unsigned decimal.
struct Decimal {
    std::string_view whole;
    std::string_view fraction;
    std::string_view exponent;
    bool negative_exponent = false;
};

std::optional<Decimal> split_decimal(std::string_view text) noexcept
{
    Decimal parts;
    parts.whole = take_digits(text);
    if (!text.empty() && text.front() == '.') {
        text.remove_prefix(1);
        parts.fraction = take_digits(text);
    }
    if (parts.whole.empty() && parts.fraction.empty()) {
        return std::nullopt;
    }
    if (!text.empty() && (text.front() == 'e' || text.front() == 'E')) {
        text.remove_prefix(1);
        parts.negative_exponent = take_sign(text);
        parts.exponent = take_digits(text);
        if (parts.exponent.empty()) {
            return std::nullopt;
        }
    }
    if (!text.empty()) {
        return std::nullopt;
    }
    return parts;
}

/// Whether a decimal out of a float's range is out of it at the small end: its first digit that is not 0 stands behind
/// the point once the exponent has moved it. There is such a digit: zero is in range.
bool is_below_one(const Decimal &parts) noexcept
{
    const std::size_t whole_zeros = parts.whole.find_first_not_of('0');
    const std::size_t fraction_zeros = parts.fraction.find_first_not_of('0');
    // Of the first digit that is not 0: 1 is the place before the point, 0 the one behind it.
    const std::int64_t place = whole_zeros != std::string_view::npos
                                   ? static_cast<std::int64_t>(parts.whole.size() - whole_zeros)
                                   : -static_cast<std::int64_t>(fraction_zeros);
    std::int64_t exponent = 0;
    const char *const end = parts.exponent.data() + parts.exponent.size();
    if (!parts.exponent.empty() && std::from_chars(parts.exponent.data(), end, exponent).ec != std::errc()) {
        return parts.negative_exponent; // beyond 64 bits: more than any text has digits
    }
    return (parts.negative_exponent ? place <= exponent : exponent <= -place);
}

std::optional<float> parse_magnitude(std::string_view text) noexcept
{
    if (str::equal_but_for_case(text, "inf") || str::equal_but_for_case(text, "infinity")) {
        return std::numeric_limits<float>::infinity();
    }
    if (str::equal_but_for_case(text, "nan")) {
        return std::numeric_limits<float>::quiet_NaN();
    }
    const std::optional<Decimal> parts = split_decimal(text);
    if (!parts) {
        return std::nullopt;
    }
    float value = 0.0F; // the text is a decimal from its start to its end: it can only be out of range
    if (std::from_chars(text.data(), text.data() + text.size(), value).ec == std::errc::result_out_of_range) {
        return is_below_one(*parts) ? std::optional<float>(0.0F) : std::nullopt;
    }
    return value;
}

} // namespace

std::optional<bool> parse_bool(std::string_view text, OptionBoolStyle style) noexcept
{
    if (style == BOOL_STYLE_BARE && text.empty()) {
        return true;
    }
    const bool plain = style == BOOL_STYLE_PLAIN;
    if (plain ? is_one_of(text, plain_true) : is_one_of(text, true_words)) {
        return true;
    }
    if (plain ? is_one_of(text, plain_false) : is_one_of(text, false_words)) {
        return false;
    }
    return std::nullopt;
}

std::optional<std::int32_t> parse_int(std::string_view text) noexcept
{
    if (!text.empty() && text.front() == '+') {
        text.remove_prefix(1);
        if (!text.empty() && text.front() == '-') {
            return std::nullopt;
        }
    }
    std::int32_t value = 0;
    const char *const text_end = text.data() + text.size();
    const auto [end, failure] = std::from_chars(text.data(), text_end, value);
    if (failure != std::errc() || end != text_end) {
        return std::nullopt;
    }
    return value;
}

std::optional<float> parse_float(std::string_view text) noexcept
{
    const bool negative = take_sign(text);
    const std::optional<float> magnitude = parse_magnitude(text);
    if (!magnitude) {
        return std::nullopt;
    }
    return negative ? -*magnitude : *magnitude;
}

} // namespace dalvo
