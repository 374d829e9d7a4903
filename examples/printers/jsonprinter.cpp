#include "examples/printers/jsonprinter.h"

#include <charconv>
#include <cmath>
#include <cstddef>
#include <ostream>
#include <string_view>

#include "examples/printers/number.h"

namespace examples {

namespace {

bool in_range(char c, int lowest, int highest)
{
    const auto byte = static_cast<unsigned char>(c);
    return lowest <= byte && byte <= highest;
}

/// The bytes at the start of `text` (not empty) that are a character of UTF-8; 0 where there is none. Overlong forms,
/// surrogates and what lies beyond U+10FFFF are none: they show in the second byte.
std::size_t character_size(std::string_view text)
{
    struct Form {
        int first_low, first_high, second_low, second_high;
        std::size_t size;
    };
    // clang-format off
    static constexpr Form forms[] = {
        {0xC2, 0xDF, 0x80, 0xBF, 2},
        {0xE0, 0xE0, 0xA0, 0xBF, 3},
        {0xE1, 0xEC, 0x80, 0xBF, 3},
        {0xED, 0xED, 0x80, 0x9F, 3},
        {0xEE, 0xEF, 0x80, 0xBF, 3},
        {0xF0, 0xF0, 0x90, 0xBF, 4},
        {0xF1, 0xF3, 0x80, 0xBF, 4},
        {0xF4, 0xF4, 0x80, 0x8F, 4},
    };
    // clang-format on
    if (in_range(text[0], 0x00, 0x7F)) {
        return 1;
    }
    for (const Form &form : forms) {
        if (in_range(text[0], form.first_low, form.first_high) && text.size() >= form.size) {
            bool good = in_range(text[1], form.second_low, form.second_high);
            for (std::size_t i = 2; i < form.size; ++i) {
                good = good && in_range(text[i], 0x80, 0xBF);
            }
            return good ? form.size : 0;
        }
    }
    return 0;
}

std::string escape_of(char c)
{
    constexpr const char *digits = "0123456789abcdef";
    const auto byte = static_cast<unsigned char>(c);
    return std::string("\\u00") + digits[byte / 16] + digits[byte % 16];
}

std::string quoted(std::string_view value)
{
    std::string text = "\"";
    while (!value.empty()) {
        const std::size_t size = character_size(value);
        if (size == 0) {
            text += "\xEF\xBF\xBD"; // U+FFFD
        } else if (value[0] == '"' || value[0] == '\\') {
            text += {'\\', value[0]};
        } else if (value[0] == '\n') {
            text += "\\n";
        } else if (in_range(value[0], 0x00, 0x1F)) {
            text += escape_of(value[0]);
        } else {
            text += value.substr(0, size);
        }
        value.remove_prefix(size == 0 ? 1 : size);
    }
    return text + '"';
}

} // namespace

void JsonMemberPrinter::operator()(std::ostream &out, const std::string &name, bool value) const
{
    write(out, name, value ? "true" : "false");
}

void JsonMemberPrinter::operator()(std::ostream &out, const std::string &name, int value) const
{
    write(out, name, std::to_string(value));
}

void JsonMemberPrinter::operator()(std::ostream &out, const std::string &name, unsigned int value) const
{
    write(out, name, std::to_string(value));
}

void JsonMemberPrinter::operator()(std::ostream &out, const std::string &name, double value) const
{
    if (std::isnan(value)) {
        write(out, name, "\"nan\"");
    } else if (std::isinf(value)) {
        write(out, name, value < 0 ? "\"-inf\"" : "\"inf\"");
    } else {
        write(out, name, shortest_text(value, std::chars_format::general));
    }
}

void JsonMemberPrinter::operator()(std::ostream &out, const std::string &name, const std::string &value) const
{
    write(out, name, quoted(value));
}

void JsonMemberPrinter::write(std::ostream &out, const std::string &name, const std::string &value) const
{
    const std::string member = (first ? "\n  " : ",\n  ") + quoted(name) + ": " + value;
    first = false;
    out.write(member.data(), static_cast<std::streamsize>(member.size())); // not <<, which obeys the stream's width
}

void write_json(std::ostream &out, const dalvo::Configuration &settings)
{
    out.put('{');
    dalvo::ConfigurationSetter().dump(&settings, out, JsonMemberPrinter());
    out.write("\n}\n", 3);
}

} // namespace examples
