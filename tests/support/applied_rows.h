#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "dalvo/configuration/configuration.h"
#include "tests/support/golden.h"
#include "tests/support/records.h"
#include "tests/support/settings.h"

namespace dalvo::testing {

/// A row of the golden application file.
struct AppliedRow {
    std::string name;
    OptionType type;
    std::string accepted;
    std::string field;
};

inline std::vector<AppliedRow> applied_rows()
{
    std::vector<AppliedRow> rows;
    for (const GoldenRow &row : golden_rows("application.tsv", 4)) {
        rows.push_back({row[0], type_named(row[1]), row[2], row[3]});
    }
    return rows;
}

/// What a row accepts, read from the golden file's words.
struct Bounds {
    std::optional<std::int64_t> lowest;
    std::optional<std::int64_t> highest;
    std::optional<std::int64_t> hole;

    bool accepts(std::int64_t value) const
    {
        return !(lowest && value < *lowest) && !(highest && value > *highest) && !(hole && value == *hole);
    }
};

/// Throws std::invalid_argument for words that the golden file does not use.
inline Bounds bounds_of(const std::string &words)
{
    const auto number_after = [&](const std::string &start) -> std::optional<std::int64_t> {
        return words.compare(0, start.size(), start) == 0 ? std::optional(std::stoll(words.substr(start.size())))
                                                          : std::nullopt;
    };
    if (const auto highest = number_after("at most ")) {
        return {std::nullopt, highest, std::nullopt};
    }
    if (const auto lowest = number_after("at least ")) {
        return {lowest, std::nullopt, std::nullopt};
    }
    if (const auto hole = number_after("any but ")) {
        return {std::nullopt, std::nullopt, hole};
    }
    if (words == "0 to 2") {
        return {0, 2, std::nullopt};
    }
    if (words == "any") {
        return {};
    }
    throw std::invalid_argument("not a range: " + words);
}

/// A value for an option: the text that says it and what its field holds then.
struct GivenValue {
    std::string text;
    FieldValue stored;
};

/// Values for options, by name.
using GivenValues = std::map<std::string, GivenValue>;

inline GivenValue given_bool(bool value)
{
    return {value ? "true" : "false", value};
}

inline GivenValue given_int(std::int64_t value)
{
    return {std::to_string(value), static_cast<std::int32_t>(value)};
}

inline GivenValue given_float(const std::string &text, float value)
{
    return {text, static_cast<double>(value)};
}

/// The record that filling `record` with `values` is to give, rows up to `end` (not included) alone: each value in its
/// row's field, and what three rows write besides.
inline Configuration filled(Configuration record, const std::vector<AppliedRow> &rows, const GivenValues &values,
                            std::size_t end)
{
    std::map<std::string, Field> fields;
    for (const Field &field : fields_of(record)) {
        fields.emplace(field.name, field);
    }
    for (std::size_t i = 0; i < end; ++i) {
        const AppliedRow &row = rows[i];
        const auto given = values.find(row.name);
        if (given == values.end()) {
            continue;
        }
        const FieldValue &value = given->second.stored;
        store(fields.at(row.field), value);
        if (row.name == "interpolation" && std::get<bool>(value)) {
            record.proof_generation = true;
            record.preprocessor_toplevel_propagation = false;
        } else if (row.name == "unsat_core_generation" && std::get<std::int32_t>(value) != 0) {
            record.preprocessor_toplevel_propagation = false;
            (std::get<std::int32_t>(value) == 1 ? record.proof_generation : record.dpll.store_tlemmas) = true;
        } else if (row.name == "theory.arr.enable_nonlinear_strat" && std::get<bool>(value)) {
            record.theory_arr_enable_nonlinear = true;
        }
    }
    return record;
}

/// An accepted value for each name, no two numbers or strings alike, and each Boolean other than in `record`.
inline GivenValues values_unlike(const Configuration &record)
{
    GivenValues values;
    std::int32_t place = 0;
    for (const AppliedRow &row : applied_rows()) {
        ++place;
        const Bounds bounds = bounds_of(row.accepted);
        if (row.type == OPT_BOOL) {
            values[row.name] = given_bool(!std::get<bool>(value_named(record, row.field)));
        } else if (row.type == OPT_FLOAT) {
            values[row.name] = {"-" + std::to_string(place) + ".25", -(place + 0.25)};
        } else if (row.name == "debug.log_sections") {
            values[row.name] = {"sat,theory", std::vector<std::string>{"sat", "theory"}};
        } else if (row.type == OPT_STR) {
            values[row.name] = {"text of " + row.name, "text of " + row.name};
        } else if (bounds.lowest && bounds.highest) {
            values[row.name] = given_int(*bounds.highest);
        } else {
            values[row.name] = given_int(bounds.lowest ? 1000 + place : -1000 - place);
        }
    }
    return values;
}

/// Values that `row` accepts: the last one on each side that it bounds, the type's ends, and some between.
inline std::vector<GivenValue> values_accepted(const AppliedRow &row)
{
    constexpr float inf = std::numeric_limits<float>::infinity();
    const Bounds bounds = bounds_of(row.accepted);
    std::vector<GivenValue> values;
    if (row.type == OPT_BOOL) {
        return {given_bool(true), given_bool(false)};
    }
    if (row.name == "debug.log_sections") {
        return {{"ALL", std::vector<std::string>()}, {"a,b", std::vector<std::string>{"a", "b"}}};
    }
    if (row.type == OPT_STR) {
        const std::string bytes("\0 \x80\xff=#", 6);
        const std::string long_text(1000, 'x');
        return {{"", ""}, {"ALL", "ALL"}, {" a,b ", " a,b "}, {bytes, bytes}, {long_text, long_text}};
    }
    if (row.type == OPT_FLOAT) {
        values = {given_float("1.0", 1.0F),   given_float("0.99999994", std::nextafter(1.0F, 0.0F)),
                  given_float("0.1", 0.1F),   given_float("0", 0.0F),
                  given_float("-0.0", -0.0F), given_float("-0.5", -0.5F),
                  given_float("1e-45", std::numeric_limits<float>::denorm_min()),
                  given_float("-3.4028235e38", std::numeric_limits<float>::lowest()),
                  given_float("-inf", -inf),  given_float("nan", std::numeric_limits<float>::quiet_NaN())};
        if (!bounds.highest) {
            values.push_back(given_float("1.0000001", std::nextafter(1.0F, 2.0F)));
            values.push_back(given_float("3.4028235e38", std::numeric_limits<float>::max()));
            values.push_back(given_float("+inf", inf));
        }
        return values;
    }
    constexpr std::int64_t lowest = std::numeric_limits<std::int32_t>::min();
    constexpr std::int64_t highest = std::numeric_limits<std::int32_t>::max();
    std::vector<std::int64_t> numbers = {lowest, -2, -1, 0, 1, 2, highest};
    for (const auto &bound : {bounds.lowest, bounds.highest, bounds.hole}) {
        if (bound) {
            numbers.insert(numbers.end(), {*bound - 1, *bound, *bound + 1});
        }
    }
    for (const std::int64_t number : numbers) {
        if (bounds.accepts(number)) {
            values.push_back(given_int(number));
        }
    }
    return values;
}

/// A value text that a row rejects, and the value as the error is to show it.
struct RejectedValue {
    std::string text;
    std::string shown;
};

/// Values that `row` rejects: the first one on each side that it bounds, and others beyond.
inline std::vector<RejectedValue> values_rejected(const AppliedRow &row)
{
    const Bounds bounds = bounds_of(row.accepted);
    if (row.type == OPT_FLOAT && bounds.highest == 1) {
        return {{"1.0000001", "1"}, {"1.5", "1.5"}, {"inf", "inf"}};
    }
    std::vector<std::int64_t> numbers;
    if (bounds.highest) {
        numbers.insert(numbers.end(), {*bounds.highest + 1, *bounds.highest + 1000, 2147483647});
    }
    if (bounds.lowest) {
        numbers.insert(numbers.end(), {*bounds.lowest - 1, *bounds.lowest - 1000, -2147483647 - 1LL});
    }
    if (bounds.hole) {
        numbers.push_back(*bounds.hole);
    }
    std::vector<RejectedValue> values;
    for (const std::int64_t number : numbers) {
        values.push_back({std::to_string(number), std::to_string(number)});
    }
    return values;
}

} // namespace dalvo::testing
