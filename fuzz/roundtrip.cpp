// Any text, the whole way: loaded, replayed and applied, it gives the second applier's record or error; and what is
// dumped loads back to a record that is dumped in the same text.

#include <algorithm>
#include <cstdint>
#include <iomanip>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "dalvo/configuration/configurationsetter.h"
#include "dalvo/configuration/default_config.h"
#include "fuzz/filed.h"
#include "fuzz/target.h"
#include "tests/support/golden.h"
#include "tests/support/records.h"
#include "tests/support/second_applier.h"
#include "tests/support/second_reader.h"
#include "tests/support/settings.h"

namespace {

using dalvo::Configuration;
using dalvo::fuzz::require;
using dalvo::fuzz::require_error;
using dalvo::fuzz::require_same;
using dalvo::fuzz::Thrown;
using dalvo::testing::CatalogueSetter;
using dalvo::testing::FullSetter;
using dalvo::testing::SecondApplier;
using dalvo::testing::SecondEntry;
using dalvo::testing::SecondError;
using dalvo::testing::SecondSections;

/// The error is `expected`; an unknown option may come with the hint of one that there is.
void require_expected(const Thrown &thrown, const SecondError &expected)
{
    const std::string hint_start = expected.head + " (did you mean ";
    const std::string hint_end = "?): " + expected.option + ", value: " + expected.value;
    if (expected.head.rfind("unknown option ", 0) != 0 || thrown.message.rfind(hint_start, 0) != 0) {
        require_error(thrown, expected.head, expected.option, expected.value);
        return;
    }
    require(thrown.message.size() > hint_start.size() + hint_end.size(), "a hint is whole", thrown.message);
    const std::string near =
        thrown.message.substr(hint_start.size(), thrown.message.size() - hint_start.size() - hint_end.size());
    require(dalvo::testing::second_types().count(near) == 1, "a hint is an option that there is", near);
    require_error(thrown, hint_start + near + "?)", expected.option, expected.value);
}

/// A record and its fields, listed once: to list them takes longer than to fill them.
struct ListedRecord {
    ListedRecord() : fields(dalvo::testing::fields_of(record)) {}
    ListedRecord(const ListedRecord &) = delete;
    ListedRecord &operator=(const ListedRecord &) = delete;

    Configuration record;
    const std::vector<dalvo::testing::Field> fields;
};

void require_same_fields(const ListedRecord &is, const ListedRecord &expected)
{
    for (std::size_t i = 0; i < is.fields.size(); ++i) {
        require(dalvo::testing::same_value(value_of(is.fields[i]), value_of(expected.fields[i])),
                "a record is filled as the second applier fills it", is.fields[i].name);
    }
}

/// The error that replaying and filling ends in; `target` holds what it has stored.
std::optional<SecondError> filled_beside(SecondApplier &applier, const std::vector<SecondEntry> &replayed,
                                         ListedRecord &target)
{
    for (const SecondEntry &entry : replayed) {
        if (const auto error = applier.assign(entry.name, entry.value)) {
            return error;
        }
    }
    return applier.fill(target.record, target.fields);
}

std::string dumped(const Configuration &record, const std::string &section, int precision)
{
    static const dalvo::ConfigurationSetter setter; // a dump reads nothing of it
    std::ostringstream out;
    out << std::setprecision(precision);
    setter.dump(&record, out, section);
    return out.str();
}

/// These are written unsigned, and what is negative comes out too large to be read.
bool is_readable(const Configuration &record)
{
    return record.verbosity >= 0 && record.theory_euf_dyn_ack_threshold >= 0 && record.theory_euf_dyn_ack_limit >= 0 &&
           record.theory_la_lazy_expl_threshold >= 0;
}

/// Whether `field` is one that a dump writes.
bool is_dumped(const std::string &field)
{
    static const std::vector<dalvo::testing::GoldenRow> rows = dalvo::testing::golden_rows("dump.tsv", 3);
    return std::any_of(rows.begin(), rows.end(), [&](const auto &row) { return row[2] == field; });
}

void require_round_trip(const Configuration &record, const std::string &active, int precision)
{
    const std::string section = active == "default" ? "" : active; // as a header alone it is the unnamed one's
    const std::string text = dumped(record, section, precision);
    CatalogueSetter setter;
    std::istringstream in(text);
    setter.load(in, 0);
    setter.set_active_config(section);
    Configuration again;
    const auto thrown = dalvo::fuzz::thrown_from([&] { setter.update_config(&again); });
    require(thrown.has_value() != is_readable(record), "a dump can be read but for negative numbers written unsigned",
            text);
    if (!thrown) {
        require_same(dumped(again, section, precision), text, "dump, load, dump gives the same text");
    }
    if (!thrown && precision >= 9) { // enough digits for every float
        for (const std::string &field : dalvo::testing::differing_fields(record, again)) {
            require(!is_dumped(field), "what is dumped and read back is the same", field);
        }
    }
}

std::string built_in_text()
{
    std::string text;
    for (const char *const *piece = dalvo_default_config; *piece != nullptr; ++piece) {
        text += *piece;
    }
    return text;
}

/// Fills a record with `active` chosen, in both ways. What has been filled; null where that ended in an error.
const Configuration *fill(FullSetter &setter, SecondApplier &applier, const SecondSections &sections,
                          const std::string &active)
{
    static ListedRecord is;
    static ListedRecord expected;
    is.record = Configuration();
    expected.record = Configuration();
    setter.set_active_config(active);
    const auto thrown = dalvo::fuzz::thrown_from([&] { setter.update_config(&is.record); });
    const auto error = filled_beside(applier, dalvo::testing::replayed_second(sections, active), expected);
    require(thrown.has_value() == error.has_value(), "a filling throws where the second applier does",
            thrown  ? thrown->message
            : error ? error->head
                    : "");
    if (error) {
        require_expected(*thrown, *error);
    }
    require_same_fields(is, expected);
    return error ? nullptr : &is.record;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const std::string text = dalvo::fuzz::bytes_of(data, size);
    FullSetter setter;
    SecondApplier applier;
    SecondSections sections;
    if (size % 8 == 0) { // some inputs come behind the built-in text
        static const std::string built_in = built_in_text();
        setter.load_default();
        dalvo::testing::file_second(sections, built_in, 3);
    }
    dalvo::fuzz::load_beside(setter, sections, text, 2);
    std::size_t chosen = 0;
    for (const auto &[name, entries] : sections) { // the setter goes on from what the section before left
        const Configuration *const record = fill(setter, applier, sections, name);
        const bool is_last = ++chosen == std::min(sections.size(), std::size_t{3});
        if (is_last && record != nullptr) {
            require_round_trip(*record, name, size % 2 == 0 ? 6 : 9);
        }
        if (is_last) {
            break;
        }
    }
    return 0;
}
