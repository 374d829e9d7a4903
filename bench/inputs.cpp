#include "bench/inputs.h"

#include <algorithm>
#include <iomanip>
#include <sstream>
#include <stdexcept>
#include <unordered_set>

#include "bench/harness.h"
#include "dalvo/configuration/appliedoptions.h"
#include "dalvo/configuration/configurationsetter.h"
#include "dalvo/inspect/inspect.h"

namespace dalvo::bench {

namespace {

constexpr std::uint64_t fixed_seed = 20240229;

/// These write more than their own field, unless they are off.
bool forces_others(const std::string &name)
{
    return name == "interpolation" || name == "unsat_core_generation" || name == "theory.arr.enable_nonlinear_strat";
}

bool is_accepted(const std::string &name, const OptionParser::Value &value)
{
    static const std::vector<AppliedOption> rows = applied_options();
    return std::all_of(rows.begin(), rows.end(),
                       [&](const AppliedOption &row) { return row.name != name || row.accepts(value); });
}

std::string with_underscores(std::string name)
{
    std::replace(name.begin(), name.end(), '.', '_');
    return name;
}

/// `count` different numbers of so many hexadecimal digits.
std::vector<std::uint64_t> distinct_numbers(std::size_t count, int digits)
{
    std::mt19937_64 random(fixed_seed + count);
    std::unordered_set<std::uint64_t> seen;
    std::vector<std::uint64_t> numbers;
    while (numbers.size() < count) {
        const std::uint64_t number = random() >> (64 - 4 * digits);
        if (seen.insert(number).second) {
            numbers.push_back(number);
        }
    }
    return numbers;
}

std::string spread_name(const std::string &prefix, int digits, std::uint64_t number)
{
    std::ostringstream name;
    name << prefix << std::hex << std::setfill('0') << std::setw(digits) << number;
    return name.str();
}

std::string numbered_name(const std::string &prefix, int digits, std::size_t number)
{
    std::ostringstream name;
    name << prefix << std::setfill('0') << std::setw(digits) << number;
    return name.str();
}

/// Two letters for each bit; "af" and "ba" add the same to the hash, since 5 * 'a' + 'f' is 5 * 'b' + 'a'.
std::string hostile_name(std::size_t number)
{
    std::string name;
    for (int bit = 0; bit < 17; ++bit) {
        name += (number >> bit) % 2 != 0 ? "af" : "ba";
    }
    return name;
}

std::string text_of(const testing::FieldPointer &field)
{
    std::ostringstream text;
    text << std::boolalpha;
    std::visit(
        [&](const auto *at) {
            if constexpr (!std::is_same_v<decltype(at), const std::vector<std::string> *>) {
                text << *at;
            }
        },
        field);
    return text.str();
}

/// `assignment(i)` makes the i-th one.
template <class MakeAssignment>
InputText text_of_sections(std::size_t lines, const std::vector<std::string> &section_names, MakeAssignment assignment)
{
    InputText made;
    made.lines = lines;
    made.assignments = lines - section_names.size();
    for (std::size_t s = 0; s < section_names.size(); ++s) {
        InputSection section{section_names[s], {}};
        made.text += "[" + section.name + "]\n";
        const std::size_t end = made.assignments * (s + 1) / section_names.size();
        for (std::size_t i = made.assignments * s / section_names.size(); i < end; ++i) {
            section.assignments.push_back(assignment(i));
            made.text += section.assignments.back().first + " = " + section.assignments.back().second + "\n";
        }
        made.sections.push_back(std::move(section));
    }
    return made;
}

} // namespace

const std::vector<OptionParser::Option> &catalogue()
{
    static const std::vector<OptionParser::Option> options = [] {
        ConfigurationSetter setter;
        setter.initialize_options();
        const auto &registered = setter.options().options();
        return std::vector<OptionParser::Option>(registered.begin(), registered.end());
    }();
    return options;
}

std::string acceptable_value(const OptionParser::Option &option, std::mt19937_64 &random)
{
    const std::uint64_t drawn = random();
    switch (option.type) {
    case OPT_BOOL: return drawn % 2 != 0 && !forces_others(option.name) ? "true" : "false";
    case OPT_INT: {
        const auto number = static_cast<std::int32_t>(drawn % 4);
        if (forces_others(option.name)) {
            return "0";
        }
        return is_accepted(option.name, number) ? std::to_string(number) : "1";
    }
    case OPT_FLOAT: {
        static const char *const floats[] = {"0.25", "0.5", "0.75", "0.125"};
        return floats[drawn % 4];
    }
    case OPT_STR: break;
    }
    return "trace_" + std::to_string(drawn % 100);
}

const std::vector<Assignment> &all_options_assigned()
{
    static const std::vector<Assignment> assignments = [] {
        std::mt19937_64 random(fixed_seed);
        std::vector<Assignment> made;
        for (const OptionParser::Option &option : catalogue()) {
            made.emplace_back(option.name, acceptable_value(option, random));
        }
        std::shuffle(made.begin(), made.end(), random);
        return made;
    }();
    return assignments;
}

const std::string &all_options_text()
{
    static const std::string text = [] {
        std::string made;
        for (const auto &[name, value] : all_options_assigned()) {
            made += name + " = " + value + "\n";
        }
        return made;
    }();
    return text;
}

std::vector<testing::FieldPointer> fields_by_option(Configuration &record)
{
    const std::vector<testing::Field> fields = testing::fields_of(record);
    std::vector<testing::FieldPointer> ordered;
    for (const OptionParser::Option &option : catalogue()) {
        const auto found = std::find_if(fields.begin(), fields.end(), [&](const testing::Field &field) {
            return with_underscores(field.name) == with_underscores(option.name);
        });
        require(found != fields.end(), "no field for option " + option.name);
        ordered.push_back(found->at);
    }
    return ordered;
}

void require_assigned(Configuration &record)
{
    const std::vector<testing::FieldPointer> fields = fields_by_option(record);
    for (const auto &[name, value] : all_options_assigned()) {
        for (std::size_t i = 0; i < fields.size(); ++i) {
            if (catalogue()[i].name == name) {
                require(text_of(fields[i]) == value, name + " holds " + text_of(fields[i]) + ", not " + value);
            }
        }
    }
}

InputText make_text(std::size_t lines, const std::vector<std::string> &section_names, std::size_t padding)
{
    std::mt19937_64 random(fixed_seed + lines);
    std::vector<OptionParser::Option> options = catalogue();
    std::shuffle(options.begin(), options.end(), random);
    const std::string underscores(padding, '_');
    return text_of_sections(lines, section_names, [&](std::size_t i) {
        const OptionParser::Option &option = options[i % options.size()];
        return Assignment(option.name + underscores, acceptable_value(option, random));
    });
}

InputText make_plain_text(std::size_t lines, const std::vector<std::string> &section_names)
{
    const auto &options = inspect::Catalogue::standard().options();
    return text_of_sections(lines, section_names, [&](std::size_t i) {
        const inspect::OptionInfo &option = options[i % catalogue().size()];
        return Assignment(option.name, inspect::value_text(option.default_value));
    });
}

std::vector<std::string> make_names(Names kind, std::size_t count, const std::string &prefix, int digits)
{
    const std::vector<std::uint64_t> drawn = distinct_numbers(count, digits);
    std::vector<std::string> names;
    names.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        switch (kind) {
        case Names::spread: names.push_back(spread_name(prefix, digits, drawn[i])); break;
        case Names::numbered: names.push_back(numbered_name(prefix, digits, i)); break;
        case Names::hostile: names.push_back(hostile_name(i)); break;
        }
    }
    return names;
}

} // namespace dalvo::bench
