// Any value text: each type takes it for the value that the second parser takes it for, or rejects it as that does.

#include <cstdint>
#include <cstring>
#include <optional>
#include <string>
#include <type_traits>

#include "dalvo/options/optionparser.h"
#include "dalvo/options/valuetext.h"
#include "fuzz/target.h"
#include "tests/support/second_values.h"

namespace {

using namespace dalvo;
using fuzz::require;

std::uint32_t bits_of(float value)
{
    std::uint32_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

/// Bit by bit, so that zeros of both signs are told apart.
bool same(const std::optional<float> &a, const std::optional<float> &b)
{
    return a.has_value() == b.has_value() && (!a || bits_of(*a) == bits_of(*b));
}

void require_bool(const std::string &text)
{
    const std::optional<bool> words = testing::second_bool(text);
    const bool is_plain = testing::is_among(testing::in_small_letters(text), {"true", "false"});
    require(parse_bool(text, BOOL_STYLE_WORDS) == words, "a Boolean is a word", text);
    require(parse_bool(text, BOOL_STYLE_PLAIN) == (is_plain ? words : std::nullopt), "or true or false alone", text);
    require(parse_bool(text, BOOL_STYLE_BARE) == (text.empty() ? std::optional(true) : words), "or nothing", text);
}

/// A parser of one option of the type `type`, which holds the value of `held` already.
template <class T, class Get>
void require_option(OptionType type, const std::string &text, const char *held, const std::optional<T> &expected,
                    Get get)
{
    static const std::string name = "option";
    OptionParser options(BOOL_STYLE_WORDS);
    options.add_option(name, type, "");
    T value{};
    require(!(options.*get)(name, &value), "an option without a value says so");
    options.parse_option(name, held, 0);
    T former{};
    require((options.*get)(name, &former), "an option with a value says so", held);
    const auto thrown = fuzz::thrown_from([&] { options.parse_option(name, text, 0); });
    require(thrown.has_value() != expected.has_value(), "an option takes the texts of its type, and no others", text);
    if (thrown) {
        fuzz::require_error(*thrown, "invalid value for option option", name, text);
    }
    require((options.*get)(name, &value), "an option keeps a value", text);
    const T wanted = expected.value_or(former);
    if constexpr (std::is_same_v<T, float>) {
        require(same(value, wanted), "an option has the text's value, or the former one", text);
    } else {
        require(value == wanted, "an option has the text's value, or the former one", text);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const std::string text = fuzz::bytes_of(data, size);
    require_bool(text);
    require(parse_int(text) == testing::second_int(text), "an int is an optional sign and digits, in range", text);
    require(same(parse_float(text), testing::second_float(text)), "a float is what strtof says", text);
    require_option(OPT_BOOL, text, "yes", testing::second_bool(text), &OptionParser::get_bool_option);
    require_option(OPT_INT, text, "-17", testing::second_int(text), &OptionParser::get_int_option);
    require_option(OPT_FLOAT, text, "-0.25", testing::second_float(text), &OptionParser::get_float_option);
    require_option(OPT_STR, text, "x", std::optional(text), &OptionParser::get_str_option);
    return 0;
}
