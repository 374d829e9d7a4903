// What is dumped, loaded and dumped again.

#include <algorithm>
#include <cstdint>
#include <iomanip>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "dalvo/configuration/configurationsetter.h"
#include "dalvo/utils/str.h"
#include "tests/support/applied_rows.h"
#include "tests/support/classic_locale.h"
#include "tests/support/golden.h"
#include "tests/support/sections.h"
#include "tests/support/settings.h"

namespace {

using namespace std::string_literals;
using dalvo::Configuration;
using dalvo::ConfigurationSetter;
using dalvo::testing::applied_rows;
using dalvo::testing::AppliedRow;
using dalvo::testing::Bounds;
using dalvo::testing::bounds_of;
using dalvo::testing::CatalogueSetter;
using dalvo::testing::ClassicStream;
using dalvo::testing::golden_rows;
using dalvo::testing::GoldenRow;
using dalvo::testing::load_text;

/// The rows of the options that are dumped.
const std::vector<AppliedRow> &dumped_rows()
{
    static const std::vector<AppliedRow> rows = [] {
        const CatalogueSetter known;
        std::vector<AppliedRow> found;
        for (const AppliedRow &row : applied_rows()) {
            if (known.options().find_option(row.name) != nullptr) {
                found.push_back(row);
            }
        }
        return found;
    }();
    return rows;
}

/// Whether the text has no word for a negative number of the option.
bool is_unsigned(const std::string &name)
{
    static const std::vector<GoldenRow> rows = golden_rows("dump.tsv", 3);
    return std::any_of(rows.begin(), rows.end(),
                       [&](const GoldenRow &row) { return row[0] == name && row[1] == "unsigned"; });
}

/// Bytes that a line of a text can carry as they are, neither white space at the ends nor a line's end.
rc::Gen<std::string> carried_strings()
{
    const auto bytes = rc::gen::container<std::string>(
        rc::gen::oneOf(rc::gen::arbitrary<char>(), rc::gen::elementOf("=#[], \t\"'\\\r\f\v"s + '\0')));
    return rc::gen::map(bytes, [](std::string text) {
        for (char &c : text) {
            c = c == '\n' ? '.' : c;
        }
        return std::string(dalvo::str::stripped(text, dalvo::str::is_space));
    });
}

/// A text for each value that the option accepts.
rc::Gen<std::string> value_texts(const AppliedRow &row)
{
    const Bounds bounds = bounds_of(row.accepted);
    switch (row.type) {
    case dalvo::OPT_BOOL: return rc::gen::element<std::string>("true", "false");
    case dalvo::OPT_STR: return carried_strings();
    case dalvo::OPT_FLOAT:
        return rc::gen::map(rc::gen::pair(rc::gen::inRange(-99999999, 100000000), rc::gen::inRange(-50, 31)),
                            [highest = bounds.highest](const std::pair<int, int> &parts) {
                                // At most 1 where that is asked for: the digits then stand behind the point.
                                const int exponent = highest ? -8 - (parts.second + 50) : parts.second;
                                return std::to_string(parts.first) + "e" + std::to_string(exponent);
                            });
    case dalvo::OPT_INT: break;
    }
    const std::int64_t lowest =
        bounds.lowest.value_or(is_unsigned(row.name) ? 0 : std::numeric_limits<std::int32_t>::min());
    const std::int64_t highest = bounds.highest.value_or(std::numeric_limits<std::int32_t>::max());
    const auto numbers =
        rc::gen::oneOf(rc::gen::element(lowest, highest), rc::gen::inRange<std::int64_t>(lowest, highest + 1));
    return rc::gen::map(numbers, [hole = bounds.hole](std::int64_t number) {
        return std::to_string(number == hole ? number + 1 : number);
    });
}

std::string dumped(const ConfigurationSetter &setter, const Configuration &record, const std::string &section)
{
    ClassicStream out; // a stream's own locale decides how numbers are written
    out << std::setprecision(9);
    setter.dump(&record, out, section);
    RC_ASSERT(out.good());
    return out.str();
}

/// A section's name as a header alone in its line can carry it; or none.
rc::Gen<std::string> carried_sections()
{
    return rc::gen::map(carried_strings(), [](std::string name) {
        for (char &c : name) {
            c = c == ',' ? '.' : c;
        }
        return name == "default" ? "Default" : name;
    });
}

RC_GTEST_PROP(dump, loaded_and_dumped_again_is_the_same_text, ())
{
    const int percent = *rc::gen::inRange(0, 101); // of the options that differ from the built-in settings
    std::string settings;
    for (const AppliedRow &row : dumped_rows()) {
        if (*rc::gen::inRange(0, 100) < percent) {
            settings += row.name + " = " + *value_texts(row) + "\n";
        }
    }
    const std::string section = *carried_sections();

    CatalogueSetter writer;
    writer.load_default();
    load_text(writer, settings);
    Configuration record;
    writer.update_config(&record);
    const std::string text = dumped(writer, record, section);

    CatalogueSetter reader;
    load_text(reader, text);
    reader.set_active_config(section);
    Configuration again;
    reader.update_config(&again);
    RC_ASSERT(dumped(reader, again, section) == text);
}

} // namespace
