#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <variant>
#include <vector>

#include "dalvo/configuration/configurationsetter.h"
#include "tests/support/classic_locale.h"
#include "tests/support/golden.h"
#include "tests/support/records.h"

namespace dalvo::testing {

/// One of the dumped settings.
struct DumpRow {
    std::string name;  ///< the option's
    std::string type;  ///< as which it is printed: "bool", "int", "unsigned", "double" or "string"
    std::string field; ///< the record's
};

/// The dumped settings in their order.
inline const std::vector<DumpRow> &dump_rows()
{
    static const std::vector<DumpRow> rows = [] {
        std::vector<DumpRow> read;
        for (const GoldenRow &cells : golden_rows("dump.tsv", 3)) {
            read.push_back({cells[0], cells[1], cells[2]});
        }
        return read;
    }();
    return rows;
}

/// `number` as printf writes it in the "C" locale, in "%g" or the like.
inline std::string formatted(const char *format, double number)
{
    const ClassicCLocale classic;
    std::vector<char> text(400); // room for any double in "%f" with few decimals
    const int size = std::snprintf(text.data(), text.size(), format, number);
    return std::string(text.data(), static_cast<std::size_t>(size));
}

/// The value that `record` holds for `row`, as text.
inline std::string printed_value(const DumpRow &row, const Configuration &record, const char *double_format = "%g")
{
    const FieldValue value = value_named(record, row.field);
    if (row.type == "bool") {
        return std::get<bool>(value) ? "true" : "false";
    }
    if (row.type == "int") {
        return std::to_string(std::get<std::int32_t>(value));
    }
    if (row.type == "unsigned") {
        return std::to_string(static_cast<std::uint32_t>(std::get<std::int32_t>(value)));
    }
    if (row.type == "double") {
        return formatted(double_format, std::get<double>(value));
    }
    return std::get<std::string>(value);
}

/// The text that a dump of `record` is expected to be, without a header.
inline std::string expected_lines(const Configuration &record, const char *double_format = "%g")
{
    std::string text;
    for (const DumpRow &row : dump_rows()) {
        text += row.name + " = " + printed_value(row, record, double_format) + "\n";
    }
    return text;
}

/// The text that a setter dumps, onto an untouched stream of the classic locale.
inline std::string dumped(const Configuration &record, const std::string &section)
{
    const ConfigurationSetter setter;
    ClassicStream out;
    setter.dump(&record, out, section);
    return out.str();
}

} // namespace dalvo::testing
