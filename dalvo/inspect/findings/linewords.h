#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "dalvo/inspect/knowledge/optioninfo.h"

// What people write into lines from habit.

namespace dalvo::inspect {

/// The offset of the first "#" of `value` that looks as if it were to start a comment: at its start, or after white
/// space; npos where there is none.
std::size_t comment_start(std::string_view value) noexcept;

/// "#", ";" or "//": what `comment` starts with.
std::string comment_mark(std::string_view comment);

/// Whether `value` stands in quotes.
bool is_quoted(std::string_view value) noexcept;

/// A value that its option cannot read, taken apart. All are views of it.
struct ValueParts {
    std::string_view core;    ///< without quotes and comment
    std::string_view quotes;  ///< `core` in its quotes; empty where there are none
    std::string_view comment; ///< from its mark on; empty where there is none
    bool is_readable;         ///< whether `core` is of the option's type
};

/// Takes `value` (not empty) apart.
ValueParts parts_of(std::string_view value, const OptionInfo &option);

/// The words "true" and "false", as far as somebody who wrote `value` may mean them.
std::vector<std::string> bool_words_near(std::string_view value);

/// "too large" or "too small" for a number that the 32 bits of `type` have no room for; "" for anything else.
std::string size_problem(std::string_view value, OptionType type);

/// "a bool", "a 32-bit int", ...
std::string kind_of(const OptionInfo &option);

} // namespace dalvo::inspect
