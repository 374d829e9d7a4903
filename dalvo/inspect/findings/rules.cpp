#include "dalvo/inspect/findings/rules.h"

#include <algorithm>

namespace dalvo::inspect {

// The rows are aligned by hand.
// clang-format off

const std::vector<RuleInfo> &rules()
{
    static const std::vector<RuleInfo> all = {
        {Rule::unreadable_file,       "unreadable-file",       Severity::error,   "an input cannot be read to its end"},
        {Rule::unknown_section,       "unknown-section",       Severity::error,   "no text has the chosen section"},
        {Rule::byte_order_mark,       "byte-order-mark",       Severity::error,   "the text starts with a byte-order mark, which makes its first line wrong"},
        {Rule::malformed_header,      "malformed-header",      Severity::error,   "a line starts with '[' and is no section header"},
        {Rule::unknown_option,        "unknown-option",        Severity::error,   "no option has the name before '='"},
        {Rule::invalid_value,         "invalid-value",         Severity::error,   "the value is not of the option's type"},
        {Rule::out_of_range,          "out-of-range",          Severity::error,   "the option does not accept the value"},
        {Rule::out_of_range_replaced, "out-of-range-replaced", Severity::warning, "the option does not accept the value, and a later assignment replaces it"},
        {Rule::replaced,              "replaced",              Severity::warning, "a later line of the same section assigns to the same option"},
        {Rule::no_equals,             "no-equals",             Severity::warning, "a line has no '=', so that all of it is a name and the value is empty"},
        {Rule::comment_in_value,      "comment-in-value",      Severity::warning, "a '#' in a value looks like a comment and is part of the value"},
        {Rule::quoted_value,          "quoted-value",          Severity::warning, "the quotes around a value are part of it"},
        {Rule::negative_code,         "negative-code",         Severity::warning, "a value is accepted and is below all codes of its option"},
        {Rule::doubtful_value,        "doubtful-value",        Severity::warning, "a value is accepted and makes no sense"},
        {Rule::default_among_names,   "default-among-names",   Severity::warning, "'default' among several names of a header is an ordinary section"},
        {Rule::repeated_name,         "repeated-name",         Severity::warning, "a header names a section twice"},
        {Rule::similar_section,       "similar-section",       Severity::warning, "a section's name looks like a slip for another one"},
        {Rule::forced,                "forced",                Severity::warning, "another option forces the option to another value"},
        {Rule::no_effect,             "no-effect",             Severity::warning, "the option matters only when another one has another value"},
        {Rule::unmet_need,            "unmet-need",            Severity::warning, "a value needs another option, which is set otherwise"},
        {Rule::unsound,               "unsound",               Severity::warning, "a value needs another option for its answers to be right"},
    };
    return all;
}

// clang-format on

const RuleInfo &info_of(Rule rule)
{
    return *std::find_if(rules().begin(), rules().end(), [&](const RuleInfo &row) { return row.rule == rule; });
}

std::optional<Rule> rule_named(std::string_view name)
{
    for (const RuleInfo &row : rules()) {
        if (row.name == name) {
            return row.rule;
        }
    }
    return std::nullopt;
}

std::vector<std::string> warning_names()
{
    std::vector<std::string> names;
    for (const RuleInfo &row : rules()) {
        if (row.severity == Severity::warning) {
            names.emplace_back(row.name);
        }
    }
    return names;
}

} // namespace dalvo::inspect
