#include "dalvo/options/optionparser.h"

#include <optional>
#include <utility>
#include <vector>

#include "dalvo/options/nearby.h"
#include "dalvo/options/valuetext.h"

namespace dalvo {

namespace {

bool is_option_type(OptionType type)
{
    return type == OPT_BOOL || type == OPT_INT || type == OPT_FLOAT || type == OPT_STR;
}

template <class T> OptionParser::Value value_or_none(const std::optional<T> &parsed)
{
    return parsed ? OptionParser::Value(*parsed) : OptionParser::Value();
}

/// " (did you mean NAME?)", or nothing.
std::string hint(const std::deque<OptionParser::Option> &options, const std::string &name)
{
    NearbyNames nearby(name);
    for (const OptionParser::Option &option : options) {
        nearby.offer(option.name);
    }
    const std::vector<std::string> nearest = nearby.nearest(1);
    return nearest.empty() ? "" : " (did you mean " + nearest.front() + "?)";
}

template <class T> bool read_value(const OptionParser::Option *option, T *out)
{
    const T *const value = option != nullptr ? std::get_if<T>(&option->value) : nullptr;
    if (value == nullptr) {
        return false;
    }
    *out = *value;
    return true;
}

constexpr std::size_t some_hundreds = 256; // buckets for names: so that a catalogue does not grow the store by steps

} // namespace

OptionParser::error::error(const std::string &msg, const std::string &option_name, const std::string &value_text,
                           const std::string &command)
    : Exception(msg), option(option_name), value(value_text), command_line(command)
{
    message_stream.exceptions(std::ios_base::badbit); // a message cut short by bad_alloc must not pass for whole
    message_stream << ": " << option << ", value: " << value;
    if (!command_line.empty()) {
        message_stream << ", command-line: " << command_line;
    }
    message_stream.exceptions(std::ios_base::goodbit);
}

OptionParser::OptionParser(OptionBoolStyle bool_style) : style(bool_style), by_name(some_hundreds) {}

OptionParser::~OptionParser() = default;

void OptionParser::set_cur_help_group(const std::string &group)
{
    help_group = group;
}

void OptionParser::add_option(std::string name, OptionType type, std::string help)
{
    if (!is_option_type(type)) {
        throw error("unknown type of option " + name, name, std::to_string(static_cast<int>(type)), "");
    }
    registered.push_back({std::move(name), type, std::move(help), help_group, Value(), 0});
    Option &added = registered.back();
    bool is_new = false;
    try {
        is_new = by_name.emplace(added.name, &added).second;
    } catch (...) {
        registered.pop_back();
        throw;
    }
    if (!is_new) {
        const std::string taken = std::move(added.name);
        registered.pop_back();
        throw error("option registered twice " + taken, taken, "", "");
    }
}

void OptionParser::parse_option(const std::string &name, const std::string &value, std::int32_t level)
{
    const auto found = by_name.find(name);
    if (found == by_name.end()) {
        throw error("unknown option " + name + hint(registered, name), name, value, "");
    }
    Option &option = *found->second;
    Value parsed = parse_value(value, option.type, style);
    if (std::holds_alternative<std::monostate>(parsed)) {
        throw error("invalid value for option " + name, name, value, "");
    }
    option.value = std::move(parsed);
    option.level = level;
}

OptionParser::Value OptionParser::parse_value(std::string_view value, OptionType type, OptionBoolStyle bool_style)
{
    switch (type) {
    case OPT_BOOL: return value_or_none(parse_bool(value, bool_style));
    case OPT_INT: return value_or_none(parse_int(value));
    case OPT_FLOAT: return value_or_none(parse_float(value));
    case OPT_STR: break;
    }
    return std::string(value);
}

bool OptionParser::get_bool_option(const std::string &name, bool *out) const
{
    return read_value(find_option(name), out);
}

bool OptionParser::get_int_option(const std::string &name, std::int32_t *out) const
{
    return read_value(find_option(name), out);
}

bool OptionParser::get_float_option(const std::string &name, float *out) const
{
    return read_value(find_option(name), out);
}

bool OptionParser::get_str_option(const std::string &name, std::string *out) const
{
    return read_value(find_option(name), out);
}

const OptionParser::Option *OptionParser::find_option(const std::string &name) const
{
    const auto found = by_name.find(name);
    return found != by_name.end() ? found->second : nullptr;
}

} // namespace dalvo
