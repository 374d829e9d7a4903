#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "tools/inspection/findings.h"
#include "tools/inspection/optioninfo.h"

// The inside of `check_text`: a text on its way from lines to findings.

namespace dalvo::tools {

constexpr std::size_t none = std::numeric_limits<std::size_t>::max();

/// What an assignment is worth.
enum class Verdict {
    unknown,  ///< there is no such option
    invalid,  ///< the value is not of the option's type
    rejected, ///< the value is out of the option's range
    accepted,
};

/// An assignment line. Its texts are views into the contents.
struct CheckedAssignment {
    std::uint64_t line;
    std::string_view name;
    std::size_t name_column;
    std::string_view value;
    std::size_t value_column;
    bool has_equals;
    std::size_t option = none; ///< position in all_options()
    Verdict verdict = Verdict::unknown;
};

/// A section; one of its own for each malformed header that names none.
struct CheckedSection {
    std::string_view name;  ///< empty for the unnamed section and for those of malformed headers
    std::uint64_t line = 0; ///< of the first header that names it
    std::size_t column = 0;
    std::uint64_t last_line = 0;               ///< of the last header that names it
    std::vector<std::size_t> assignments = {}; ///< positions
};

/// A problem that has been found and not yet been put into words.
struct Mark {
    std::uint64_t line;
    std::size_t column;
    Problem problem;
    std::size_t subject = none; ///< the assignment or, where a header is at fault, the section
    std::size_t other = none;   ///< the other assignment or section that plays a part
    std::size_t detail = none;  ///< position in CheckedText::details
};

/// A text with all that has been found out about it.
struct CheckedText {
    explicit CheckedText(std::string_view text);

    /// The line `number`, from 1, as it stands.
    std::string_view line(std::uint64_t number) const;

    void mark_name(std::size_t assignment, Problem problem, std::size_t other = none);
    void mark_value(std::size_t assignment, Problem problem);
    /// Gives the last mark its detail.
    void add_detail(const std::string &detail);

    std::string_view contents;
    std::vector<std::size_t> line_starts;
    std::vector<CheckedAssignment> assignments;
    std::vector<CheckedSection> sections; ///< the unnamed one first, then in the order of their first headers
    std::vector<Mark> marks;
    std::vector<std::string> details; ///< what is wrong with headers, and what options are forced to
};

// The steps, in their order.

/// Files the lines, and marks headers.
void read_checked(CheckedText &text);
/// Marks lines that are wrong or doubtful by themselves, and gives the verdicts.
void check_lines(CheckedText &text);
/// Marks what the lines of a section make of each other.
void check_sections(CheckedText &text);
/// Marks sections whose names may be slips.
void check_section_names(CheckedText &text);
/// Puts the marks into words, by line and column, each once.
std::vector<Finding> findings_of(CheckedText &text, const std::string &file_name);

} // namespace dalvo::tools
