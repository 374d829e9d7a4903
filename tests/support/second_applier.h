#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <variant>
#include <vector>

#include "dalvo/configuration/configuration.h" // the record: data, and no code
#include "tests/support/golden.h"
#include "tests/support/records.h"
#include "tests/support/second_values.h"

/// A second store of options and a second filling of records, plain and slow, and without a line of the component's.
/// What can be assigned, in which order it is applied and which values are accepted stands in the golden file.
namespace dalvo::testing {

/// What an error has to carry.
struct SecondError {
    std::string head; ///< the message up to the name; behind it may stand a hint, where the option is unknown
    std::string option;
    std::string value;
};

/// A value that an option has.
using SecondValue = std::variant<bool, std::int32_t, float, std::string>;

/// A row of the golden application file.
struct SecondRow {
    std::string name;
    std::string type; ///< "bool", "int", "float" or "string"
    std::optional<std::int64_t> lowest;
    std::optional<std::int64_t> highest;
    std::optional<std::int64_t> hole; ///< the one value that is not accepted
    std::size_t field;                ///< its place among those of `fields_of`
};

inline SecondRow second_row(const GoldenRow &cells, const std::map<std::string, std::size_t> &places)
{
    SecondRow row{cells[0], cells[1], {}, {}, {}, places.at(cells[3])};
    const std::string &accepted = cells[2];
    if (accepted.rfind("at most ", 0) == 0) {
        row.highest = std::stoll(accepted.substr(8));
    } else if (accepted.rfind("at least ", 0) == 0) {
        row.lowest = std::stoll(accepted.substr(9));
    } else if (accepted.rfind("any but ", 0) == 0) {
        row.hole = std::stoll(accepted.substr(8));
    } else if (accepted == "0 to 2") {
        row.lowest = 0;
        row.highest = 2;
    } else if (accepted != "any") {
        throw std::invalid_argument("not a range: " + accepted);
    }
    return row;
}

inline const std::vector<SecondRow> &second_rows()
{
    static const std::vector<SecondRow> rows = [] {
        std::map<std::string, std::size_t> places;
        Configuration record;
        for (const Field &field : fields_of(record)) {
            places.emplace(field.name, places.size());
        }
        std::vector<SecondRow> read;
        for (const GoldenRow &cells : golden_rows("application.tsv", 4)) {
            read.push_back(second_row(cells, places));
        }
        return read;
    }();
    return rows;
}

/// Option name to its type, of every option that is applied.
inline const std::map<std::string, std::string> &second_types()
{
    static const std::map<std::string, std::string> types = [] {
        std::map<std::string, std::string> read;
        for (const SecondRow &row : second_rows()) {
            read[row.name] = row.type;
        }
        return read;
    }();
    return types;
}

/// Holds the values of all options that are applied, those too that the catalogue leaves to hosts.
class SecondApplier {
public:
    /// The error that the assignment has to end in, if it has to; the option's former value then stands.
    std::optional<SecondError> assign(const std::string &name, const std::string &text)
    {
        const auto type = second_types().find(name);
        if (type == second_types().end()) {
            return SecondError{"unknown option " + name, name, text};
        }
        const std::optional<SecondValue> value = parsed(text, type->second);
        if (!value) {
            return SecondError{"invalid value for option " + name, name, text};
        }
        values[name] = *value;
        return std::nullopt;
    }

    /// Fills `record` row by row, up to the error that the filling has to end in, if it has to.
    std::optional<SecondError> fill(Configuration &record) const { return fill(record, fields_of(record)); }

    /// The same, for a caller who fills a record often: `fields` are those of `record`.
    std::optional<SecondError> fill(Configuration &record, const std::vector<Field> &fields) const
    {
        for (const SecondRow &row : second_rows()) {
            const auto value = values.find(row.name);
            if (value == values.end()) {
                continue;
            }
            const bool accepted = accepts(row, value->second);
            if (accepted || row.name == "unsat_core_generation") { // the one that is stored before it is tested
                put(fields[row.field], value->second);
            }
            if (!accepted) {
                return SecondError{"invalid value for option " + row.name, row.name, shown(value->second)};
            }
            force(record, row, value->second);
        }
        return std::nullopt;
    }

private:
    static std::optional<SecondValue> parsed(const std::string &text, const std::string &type)
    {
        const auto value_of_any = [](const auto &value) {
            return value ? std::optional<SecondValue>(*value) : std::nullopt;
        };
        return type == "bool"    ? value_of_any(second_bool(text))
               : type == "int"   ? value_of_any(second_int(text))
               : type == "float" ? value_of_any(second_float(text))
                                 : std::optional<SecondValue>(text);
    }

    static bool accepts(const SecondRow &row, const SecondValue &value)
    {
        if (const float *const number = std::get_if<float>(&value)) {
            return !(row.highest && *number > static_cast<float>(*row.highest));
        }
        if (const std::int32_t *const number = std::get_if<std::int32_t>(&value)) {
            return !(row.lowest && *number < *row.lowest) && !(row.highest && *number > *row.highest) &&
                   !(row.hole && *number == *row.hole);
        }
        return true;
    }

    static void put(const Field &field, const SecondValue &value)
    {
        if (const float *const number = std::get_if<float>(&value)) {
            store(field, static_cast<double>(*number));
        } else if (const bool *const flag = std::get_if<bool>(&value)) {
            store(field, *flag);
        } else if (const std::int32_t *const integer = std::get_if<std::int32_t>(&value)) {
            store(field, *integer);
        } else if (field.name == "debug_log_sections") {
            store(field, log_sections(std::get<std::string>(value)));
        } else {
            store(field, std::get<std::string>(value));
        }
    }

    /// The parts between commas; none for "ALL" alone.
    static std::vector<std::string> log_sections(const std::string &text)
    {
        if (text == "ALL") {
            return {};
        }
        std::vector<std::string> names(1);
        for (const char c : text) {
            if (c == ',') {
                names.emplace_back();
            } else {
                names.back() += c;
            }
        }
        return names;
    }

    /// What three rows write beside their own fields.
    static void force(Configuration &record, const SecondRow &row, const SecondValue &value)
    {
        if (row.name == "interpolation" && std::get<bool>(value)) {
            record.proof_generation = true;
            record.preprocessor_toplevel_propagation = false;
        }
        if (row.name == "unsat_core_generation" && std::get<std::int32_t>(value) != 0) {
            record.preprocessor_toplevel_propagation = false;
            (std::get<std::int32_t>(value) == 1 ? record.proof_generation : record.dpll.store_tlemmas) = true;
        }
        if (row.name == "theory.arr.enable_nonlinear_strat" && std::get<bool>(value)) {
            record.theory_arr_enable_nonlinear = true;
        }
    }

    static std::string shown(const SecondValue &value)
    {
        if (const std::int32_t *const number = std::get_if<std::int32_t>(&value)) {
            return std::to_string(*number);
        }
        char text[32];
        std::snprintf(text, sizeof text, "%g", static_cast<double>(std::get<float>(value)));
        return text;
    }

    std::map<std::string, SecondValue> values;
};

} // namespace dalvo::testing
