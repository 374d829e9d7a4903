#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "dalvo/inspect/knowledge/catalogue.h"
#include "dalvo/inspect/runs/place.h"

// Texts of a run, read and filed by section. Inside of the library: runs, resolutions and findings stand on it.

namespace dalvo::inspect {

/// What an assignment is worth by itself.
enum class Verdict : std::uint8_t {
    unknown,      ///< there is no such option
    unreadable,   ///< the value is not of the option's type
    out_of_range, ///< the value is of the type, and the option does not accept it
    accepted,
};

/// An assignment as it is filed. Its texts are views into the contents.
struct Filed {
    std::string_view name;
    std::string_view value;
    const char *line_start; ///< in the contents
    std::uint64_t line;     ///< from 1; 0 on a command line
    double number;          ///< the value of a bool, an int or a float; 0 of others
    std::uint32_t text;     ///< position of the text among those of the run
    std::uint32_t option;   ///< position in the catalogue; `no_option` where there is none
    std::uint32_t sections; ///< the number of sections that it is filed in
    Verdict verdict;
    bool has_equals;

    static constexpr std::uint32_t no_option = static_cast<std::uint32_t>(-1);

    /// Whether it reaches its option, so that an assignment before it is replaced.
    bool is_readable() const noexcept { return verdict >= Verdict::out_of_range; }
};

/// A section of a text; one of its own, without a name, for each malformed header that names none.
struct FiledSection {
    std::string_view name;   ///< empty for the unnamed section
    std::uint64_t line;      ///< of the first header that names it; 0 of the unnamed section
    const char *line_start;  ///< in the contents
    std::uint64_t last_line; ///< of the last header that names it
    bool is_nameless;        ///< of a malformed header: it can never be chosen
    std::size_t filings = 0; ///< how often the library files an assignment in it: twice below [a, a]
};

/// Something wrong with, or doubtful about, a header.
struct HeaderProblem {
    enum class Kind {
        no_end,        ///< it does not end with "]"
        empty_name,    ///< one of its names is empty
        repeated_name, ///< it names a section twice
        default_among_names
    };

    Kind kind;
    std::uint64_t line;
    const char *line_start;
    std::string_view piece; ///< of the line, the part at fault
    std::size_t section;    ///< position of the section at fault; 0 where there is none
};

/// A text of a run. It may not be moved: what is filed are views into it.
class Text {
public:
    enum class Kind {
        built_in,     ///< the default text
        file,         ///< a file, a preset, standard input: a text of the user's
        command_line, ///< assignments that win over every section
    };

    /// Reads and files `contents`, a text that is called `source` and is not of a command line. `position` is the
    /// text's among those of the run.
    Text(const Catalogue &catalogue, Kind kind, std::string source, std::string contents, std::uint32_t position);

    /// Files `pairs`, names and values of a command line that is called `source`.
    Text(const Catalogue &catalogue, std::string source, const std::vector<std::pair<std::string, std::string>> &pairs,
         std::uint32_t position);

    Text(const Text &) = delete;
    Text &operator=(const Text &) = delete;

    /// The assignments of section `section`, by their positions, in their order.
    const std::uint32_t *begin(std::size_t section) const { return filed.data() + starts[section]; }
    const std::uint32_t *end(std::size_t section) const { return filed.data() + starts[section + 1]; }
    std::size_t size(std::size_t section) const { return starts[section + 1] - starts[section]; }

    /// The place of a piece of the contents in the line that starts at `line_start`.
    Place place(std::uint64_t line, const char *line_start, std::string_view piece) const;
    Place place_of_name(const Filed &assignment) const;
    Place place_of_value(const Filed &assignment) const;

    /// Whether the text can be loaded.
    bool has_malformed_header() const;

    const Kind kind;
    const std::uint32_t position; ///< among the texts of the run
    const std::string source;
    const std::string contents;
    bool has_byte_order_mark = false;
    std::vector<Filed> assignments;
    std::vector<FiledSection> sections; ///< the unnamed one first, then in the order of their first headers
    std::vector<HeaderProblem> header_problems;

private:
    friend class TextFiler;

    std::vector<std::uint32_t> starts; // of each section's positions in `filed`, and behind the last
    std::vector<std::uint32_t> filed;
};

} // namespace dalvo::inspect
