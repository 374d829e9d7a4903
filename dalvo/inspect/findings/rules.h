#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "dalvo/export.h"

namespace dalvo::inspect {

/// How bad a finding is.
enum class Severity {
    error,   ///< the run does not apply, or would not with some section chosen
    warning, ///< accepted, but probably a mistake
};

/// What can be wrong with a run or a text. `RuleInfo::summary` tells what each means, docs/check.md its cause and cure.
enum class Rule {
    unreadable_file,       ///< error
    unknown_section,       ///< error
    byte_order_mark,       ///< error
    malformed_header,      ///< error
    unknown_option,        ///< error
    invalid_value,         ///< error
    out_of_range,          ///< error
    out_of_range_replaced, ///< warning
    replaced,              ///< warning
    no_equals,             ///< warning
    comment_in_value,      ///< warning
    quoted_value,          ///< warning
    negative_code,         ///< warning
    doubtful_value,        ///< warning
    default_among_names,   ///< warning
    repeated_name,         ///< warning
    similar_section,       ///< warning
    forced,                ///< warning
    no_effect,             ///< warning
    unmet_need,            ///< warning
    unsound,               ///< warning
};

/// What is known about a rule.
struct RuleInfo {
    Rule rule;                ///< the rule
    std::string_view name;    ///< for programs, stable: "unknown-option"
    Severity severity;        ///< of its findings
    std::string_view summary; ///< for people: one sentence without a full stop
};

/// All rules, in the order of the enumeration.
DALVO_API const std::vector<RuleInfo> &rules();

/// The row of `rule` in it.
DALVO_API const RuleInfo &info_of(Rule rule);

/// The rule called `name` ("unknown-option"); none where there is no such rule.
DALVO_API std::optional<Rule> rule_named(std::string_view name);

/// The names of the rules whose findings are warnings, in the order of the enumeration.
DALVO_API std::vector<std::string> warning_names();

} // namespace dalvo::inspect
