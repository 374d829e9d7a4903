#pragma once

#include <cstddef>
#include <cstdint>
#include <istream>
#include <random>
#include <streambuf>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "dalvo/configuration/configuration.h"
#include "dalvo/options/optionparser.h"
#include "tests/support/record_fields.h"

/// What the contenders work on. All of it comes from fixed seeds.
namespace dalvo::bench {

using Assignment = std::pair<std::string, std::string>;

/// The catalogue's 127 options, as `ConfigurationSetter::options` lists them.
const std::vector<OptionParser::Option> &catalogue();

/// A value that the option `name` accepts and that forces no other option.
std::string acceptable_value(const OptionParser::Option &option, std::mt19937_64 &random);

/// One assignment for each option of the catalogue, in an order of its own.
const std::vector<Assignment> &all_options_assigned();

/// The same as a text, one line each, without a section.
const std::string &all_options_text();

/// The field of `record` that each option of the catalogue fills, in the catalogue's order.
std::vector<testing::FieldPointer> fields_by_option(Configuration &record);

/// Throws std::runtime_error unless the record holds what `all_options_assigned` says.
void require_assigned(Configuration &record);

struct InputSection {
    std::string name;
    std::vector<Assignment> assignments;
};

/// A configuration text, and what it says.
struct InputText {
    std::vector<InputSection> sections;
    std::string text;
    std::size_t lines = 0; ///< headers included
    std::size_t assignments = 0;
};

/// `lines` lines of options of the catalogue, headers included, below `section_names`, as evenly as can be. No section
/// names an option twice before it has named all. Each name is followed by `padding` underscores.
InputText make_text(std::size_t lines, const std::vector<std::string> &section_names, std::size_t padding = 0);

/// The same, each option with its default, in the catalogue's order: a text in which nothing is to be found but lines
/// that are repeated, which a section of more lines than there are options must have.
InputText make_plain_text(std::size_t lines, const std::vector<std::string> &section_names);

enum class Names {
    spread,   ///< a prefix and hexadecimal digits drawn at random
    numbered, ///< a prefix and a number: fast_000017
    hostile,  ///< all of one hash value
};

/// `count` distinct names. Spread and numbered ones begin with `prefix`; the hostile ones go up to 2^17.
std::vector<std::string> make_names(Names kind, std::size_t count, const std::string &prefix, int digits);

/// Reads bytes that stay where they are.
class MemoryStream : private std::streambuf, public std::istream {
public:
    explicit MemoryStream(std::string_view bytes) : std::istream(this)
    {
        char *const begin = const_cast<char *>(bytes.data());
        setg(begin, begin, begin + bytes.size());
    }
};

} // namespace dalvo::bench
