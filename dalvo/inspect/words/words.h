#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "dalvo/export.h"
#include "dalvo/options/optionparser.h"

/// How values, types and lists are put into words.
namespace dalvo::inspect {

/// An option's value; std::monostate for none.
using Value = OptionParser::Value;

/// A copy of `value`. Made so that std::bad_alloc passes through: copying the variant itself may end the process then, in
/// some standard libraries.
DALVO_API Value copy_of(const Value &value);

/// `type` as "bool", "int", "float" or "string".
DALVO_API std::string type_name(OptionType type);

/// `value` as a configuration text writes it: "true", "-1", a float in the shortest form that reads back as the same
/// float, a string as it is; "" for none.
DALVO_API std::string value_text(const Value &value);

/// `value` for people, on one line: a string in double quotes with its control bytes escaped, else as `value_text`.
DALVO_API std::string value_words(const Value &value);

/// Whether `a` and `b` are the same value: 0 is not -0, and NaN is NaN.
DALVO_API bool same_value(const Value &a, const Value &b);

/// The value as a number, for conditions: a bool is 0 or 1; a string, and none, is 0.
DALVO_API double number_of(const Value &value);

/// Why no configuration text can say `value` (any bytes), since a line holds it without quotes: "it has a line break",
/// "it starts with white space" or "it ends with white space"; "" where one can.
DALVO_API std::string why_no_text_says(std::string_view value);

/// `words` as "A", "A or B", "A, B or C"; "" for none.
DALVO_API std::string either_of(const std::vector<std::string> &words);

/// " (did you mean A, B or C?)" for `names`, or "" for none. Each is shown without control bytes, cut where it is long.
DALVO_API std::string did_you_mean(const std::vector<std::string> &names);

} // namespace dalvo::inspect
