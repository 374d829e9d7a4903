#pragma once

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <string>
#include <vector>

namespace dalvo::tools {

/// Where an assignment was written.
struct Place {
    std::string source;     ///< for people: a path, "standard input", "preset NAME", "built-in default", "command line"
    std::uint64_t line = 0; ///< from 1; 0 on the command line, which has none

    /// "source:line", or "source" where there are no lines, with control bytes escaped.
    std::string text() const;
};

/// One assignment, as written, and where.
struct Assignment {
    std::string name;
    std::string value;
    std::int32_t level;
    Place place;
    std::string section; ///< empty for the unnamed one and for the command line
};

/// A section of a text and its assignments, in their order.
struct Section {
    std::string name;
    std::vector<Assignment> assignments;
};

/// A text that has been read.
struct Source {
    std::string name;
    std::vector<Section> sections; ///< in the order of their first appearance; the unnamed one first, even when empty
};

/// The texts that a command works on have these levels in the library, by where they come from.
constexpr std::int32_t default_level = 3;
constexpr std::int32_t file_level = 2;
constexpr std::int32_t override_level = 1;

/// Reads a text through the library's reader. Throws Failure at the first malformed line, with "name:line" as its
/// place, and when the stream fails.
Source read_source(std::istream &in, const std::string &name, std::int32_t level);

/// Reads the file `path`; "-" is standard input, then named so. Throws Failure, with the status of wrong usage when the
/// file cannot be read.
Source read_file(const std::string &path);

/// The built-in default text.
Source read_default();

/// The contents of the file `path`; "-" is standard input. Throws Failure, with the status of wrong usage, when it
/// cannot be read.
std::string file_contents(const std::string &path);

/// What people call the file `path`: itself, or "standard input", or "''" for an empty one.
std::string file_name(const std::string &path);

} // namespace dalvo::tools
