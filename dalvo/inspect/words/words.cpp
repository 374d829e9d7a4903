#include "dalvo/inspect/words/words.h"

#include <charconv>
#include <cmath>
#include <cstring>
#include <iterator>
#include <utility>

#include "dalvo/inspect/words/printable.h"
#include "dalvo/utils/str.h"

namespace dalvo::inspect {

namespace {

std::string float_text(float value)
{
    if (std::isnan(value)) {
        return "nan";
    }
    char digits[32]; // of the longest float there are 15
    const auto [end, failure] = std::to_chars(std::begin(digits), std::end(digits), value);
    return {digits, failure == std::errc() ? end : digits};
}

struct TextOf {
    std::string operator()(std::monostate) const { return ""; }
    std::string operator()(bool value) const { return value ? "true" : "false"; }
    std::string operator()(std::int32_t value) const { return std::to_string(value); }
    std::string operator()(float value) const { return float_text(value); }
    std::string operator()(const std::string &value) const { return value; }
};

struct NumberOf {
    double operator()(std::monostate) const { return 0.0; }
    double operator()(bool value) const { return value ? 1.0 : 0.0; }
    double operator()(std::int32_t value) const { return value; }
    double operator()(float value) const { return value; }
    double operator()(const std::string &) const { return 0.0; }
};

} // namespace

Value copy_of(const Value &value)
{
    if (const auto *const text = std::get_if<std::string>(&value)) {
        std::string copy = *text;
        return {std::move(copy)};
    }
    return value;
}

std::string type_name(OptionType type)
{
    switch (type) {
    case OPT_BOOL: return "bool";
    case OPT_INT: return "int";
    case OPT_FLOAT: return "float";
    case OPT_STR: break;
    }
    return "string";
}

std::string value_text(const Value &value)
{
    return std::visit(TextOf(), value);
}

std::string value_words(const Value &value)
{
    const auto *const text = std::get_if<std::string>(&value);
    return text != nullptr ? '"' + escaped(*text) + '"' : value_text(value);
}

bool same_value(const Value &a, const Value &b)
{
    const float *const number = std::get_if<float>(&a);
    const float *const other = std::get_if<float>(&b);
    if (number == nullptr || other == nullptr) {
        return a == b;
    }
    // NOLINTNEXTLINE(bugprone-suspicious-memory-comparison): 0 and -0 differ
    return (std::isnan(*number) && std::isnan(*other)) || std::memcmp(number, other, sizeof *number) == 0;
}

double number_of(const Value &value)
{
    return std::visit(NumberOf(), value);
}

std::string why_no_text_says(std::string_view value)
{
    if (value.find('\n') != std::string_view::npos) {
        return "it has a line break";
    }
    if (!value.empty() && str::is_space(value.front())) {
        return "it starts with white space";
    }
    return !value.empty() && str::is_space(value.back()) ? "it ends with white space" : "";
}

std::string either_of(const std::vector<std::string> &words)
{
    std::string text;
    for (std::size_t i = 0; i < words.size(); ++i) {
        text += (i == 0 ? "" : i + 1 == words.size() ? " or " : ", ") + words[i];
    }
    return text;
}

std::string did_you_mean(const std::vector<std::string> &names)
{
    std::vector<std::string> fit;
    fit.reserve(names.size());
    for (const std::string &name : names) {
        fit.push_back(shown(name));
    }
    return fit.empty() ? "" : " (did you mean " + either_of(fit) + "?)";
}

} // namespace dalvo::inspect
