#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "tools/output/excerpt.h"

namespace dalvo::tools {

/// What can be wrong with a text. The errors come first.
enum class Problem {
    malformed_header,
    unknown_option,
    invalid_value,
    out_of_range,
    replaced,
    no_equals,
    empty_value,
    comment_in_value,
    quoted_value,
    byte_order_mark,
    negative_code,
    default_among_names,
    repeated_name,
    similar_section,
    forced,
    disabled_theory,
};

/// Its name for people and programs: "unknown-option", "replaced", ...
std::string_view name_of(Problem problem);

/// Whether texts with it are accepted all the same.
bool is_warning(Problem problem);

/// The names of the problems that are warnings, in their order.
std::vector<std::string> warning_names();

enum class Severity { error, warning };

/// One problem of a text, and where.
struct Finding {
    std::string file;
    std::uint64_t line = 0; ///< from 1
    std::size_t column = 0; ///< in bytes, from 1
    Problem problem{};
    Severity severity = Severity::error;
    std::string text;                          ///< for people; one line
    std::string option = {};                   ///< the option's name as written; empty where the problem is no option's
    std::string accepted = {};                 ///< of a value that is not accepted: what is
    std::vector<std::string> suggestions = {}; ///< of an unknown option: what may be meant
    std::uint64_t related_line = 0;            ///< the other line that the text names; 0 when there is none
    Excerpt excerpt = {};
};

} // namespace dalvo::tools
