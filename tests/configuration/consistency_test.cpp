// What the catalogue, the application, the dump, the default text and the record say of one another. An option that is
// forgotten in one of these places fails here, and the message names the place. No golden file is read.

#include <algorithm>
#include <cstddef>
#include <map>
#include <ostream>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "dalvo/configuration/appliedoptions.h"
#include "dalvo/configuration/configurationsetter.h"
#include "tests/support/classic_locale.h"
#include "tests/support/golden.h"
#include "tests/support/records.h"
#include "tests/support/settings.h"

namespace {

using dalvo::AppliedOption;
using dalvo::Configuration;
using dalvo::OptionParser;
using dalvo::OptionType;
using dalvo::testing::CatalogueSetter;
using dalvo::testing::ClassicCLocale;
using dalvo::testing::differing_fields;
using dalvo::testing::DumpedEntry;
using dalvo::testing::Field;
using dalvo::testing::fields_of;
using dalvo::testing::FullSetter;
using dalvo::testing::RecordingPrinter;
using dalvo::testing::same_value;
using dalvo::testing::sentinel_record;
using dalvo::testing::source_lines;
using dalvo::testing::type_name;
using dalvo::testing::unlisted_options;
using dalvo::testing::value_named;

using Names = std::vector<std::string>;

// ---- The places -----------------------------------------------------------------------------------------------------

/// A file that is to name every option, and what it does with one.
struct Place {
    std::string file;
    std::string done;     // "is registered in catalogue.cpp"
    std::string not_done; // "catalogue.cpp does not register it"
    Names names;
};

Names catalogue_names()
{
    Names names;
    const CatalogueSetter setter;
    for (const OptionParser::Option &option : setter.options().options()) {
        names.push_back(option.name);
    }
    return names;
}

bool is_unlisted(const std::string &name)
{
    const auto &unlisted = unlisted_options();
    return std::any_of(unlisted.begin(), unlisted.end(), [&](const auto &entry) { return entry.first == name; });
}

/// The names that the application reads, but for those that are left to hosts.
Names applied_names()
{
    Names names;
    for (const AppliedOption &option : dalvo::applied_options()) {
        if (!is_unlisted(option.name)) {
            names.push_back(option.name);
        }
    }
    return names;
}

std::vector<DumpedEntry> dumped(const Configuration &record)
{
    const CatalogueSetter setter;
    const RecordingPrinter printer;
    std::ostream out(nullptr);
    setter.dump(&record, out, printer);
    return printer.entries;
}

Names dumped_names()
{
    Names names;
    for (const DumpedEntry &entry : dumped(Configuration())) {
        names.push_back(entry.name);
    }
    return names;
}

/// The assignments of default.cfg, read without the component's reader: what stands before the first "=" of a line,
/// and after it. A section header among them is kept as a name.
std::vector<std::pair<std::string, std::string>> default_assignments()
{
    const auto trimmed = [](const std::string &text) {
        const std::size_t first = text.find_first_not_of(' ');
        return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(' ') - first + 1);
    };
    std::vector<std::pair<std::string, std::string>> assignments;
    for (const std::string &line : source_lines("dalvo/configuration/default.cfg")) {
        const std::size_t equals = line.find('=');
        if (!line.empty() && line.front() != '#') {
            assignments.emplace_back(trimmed(line.substr(0, equals)),
                                     equals == std::string::npos ? "" : trimmed(line.substr(equals + 1)));
        }
    }
    return assignments;
}

Names default_names()
{
    Names names;
    for (const auto &assignment : default_assignments()) {
        names.push_back(assignment.first);
    }
    return names;
}

std::vector<Place> places()
{
    return {
        {"catalogue.cpp", "is registered in catalogue.cpp", "catalogue.cpp does not register it", catalogue_names()},
        {"applier.cpp", "is read by applier.cpp", "applier.cpp does not read it", applied_names()},
        {"dump.cpp", "is written by dump.cpp", "dump.cpp does not write it", dumped_names()},
        {"default.cfg", "is assigned in default.cfg", "default.cfg does not assign it", default_names()},
    };
}

/// A message for each name that a place leaves out and another one has; it names the first that has it.
Names forgotten(const std::vector<Place> &all)
{
    std::vector<std::pair<std::string, const Place *>> first_place; // of each name
    std::set<std::string> seen;
    for (const Place &place : all) {
        for (const std::string &name : place.names) {
            if (seen.insert(name).second) {
                first_place.emplace_back(name, &place);
            }
        }
    }
    Names messages;
    for (const auto &[name, has_it] : first_place) {
        for (const Place &place : all) {
            if (std::find(place.names.begin(), place.names.end(), name) == place.names.end()) {
                messages.push_back(name + " " + has_it->done + " but " + place.not_done);
            }
        }
    }
    return messages;
}

/// A message for each name that stands more than once in one place.
Names repeated(const std::vector<Place> &all)
{
    Names messages;
    for (const Place &place : all) {
        std::set<std::string> seen;
        for (const std::string &name : place.names) {
            if (!seen.insert(name).second) {
                messages.push_back(name + " stands twice in " + place.file);
            }
        }
    }
    return messages;
}

/// The field that belongs to an option.
std::string field_of(const std::string &option)
{
    const std::pair<std::string, std::string> engines[] = {
        {"dpll.", "dpll."}, {"theory.bv.lazydpll.", "theory_bv_lazydpll."}, {"theory.fp.dpll.", "theory_fp_dpll."}};
    std::string prefix;
    std::string rest = option;
    for (const auto &[option_prefix, field_prefix] : engines) {
        if (option.compare(0, option_prefix.size(), option_prefix) == 0) {
            prefix = field_prefix;
            rest = option.substr(option_prefix.size());
        }
    }
    std::replace(rest.begin(), rest.end(), '.', '_');
    return prefix + rest;
}

/// The type of a field, as the type of the option that fills it; null when there is no such field.
const char *option_type_of_field(const std::string &name)
{
    static const char *const types[] = {"bool", "int", "float", "string", "string"};
    Configuration record;
    for (const Field &field : fields_of(record)) {
        if (field.name == name) {
            return types[field.at.index()];
        }
    }
    return nullptr;
}

/// Every option that the application reads, with its type, each once.
std::map<std::string, OptionType> applied_types()
{
    std::map<std::string, OptionType> types;
    for (const AppliedOption &option : dalvo::applied_options()) {
        types.emplace(option.name, option.type);
    }
    return types;
}

/// A text that options of the type accept and that `record` does not hold in the field.
std::string text_unlike(const Configuration &record, const std::string &field, OptionType type)
{
    switch (type) {
    case dalvo::OPT_BOOL: return std::get<bool>(value_named(record, field)) ? "false" : "true";
    case dalvo::OPT_INT: return "1";
    case dalvo::OPT_FLOAT: return "0.5";
    case dalvo::OPT_STR: break;
    }
    return "a text";
}

// ---- That none forgets an option ------------------------------------------------------------------------------------

TEST(consistency, holds_between_the_places_that_name_every_option)
{
    EXPECT_EQ(forgotten(places()), Names());
}

TEST(consistency, has_no_option_twice_in_a_place)
{
    Names expected; // the reads that are repeated on purpose
    for (const char *name : {"theory.euf.dyn_ack_threshold", "theory.euf.dyn_ack_limit"}) {
        expected.push_back(std::string(name) + " stands twice in applier.cpp");
    }
    EXPECT_EQ(repeated(places()), expected);
}

TEST(consistency, leaves_to_hosts_only_names_that_the_applier_reads)
{
    const std::map<std::string, OptionType> types = applied_types();
    for (const auto &[name, type] : unlisted_options()) {
        const auto applied = types.find(name);
        ASSERT_NE(applied, types.end()) << name << " is left to hosts but applier.cpp does not read it";
        EXPECT_EQ(applied->second, type) << name;
        for (const Place &place : places()) {
            EXPECT_EQ(std::count(place.names.begin(), place.names.end(), name), 0)
                << name << " is left to hosts but stands in " << place.file;
        }
    }
}

TEST(consistency_messages, name_the_place_that_forgot_an_option)
{
    std::vector<Place> all = places();
    for (Place &place : all) {
        place.names = {"a", "b"};
    }
    EXPECT_EQ(forgotten(all), Names());
    all[1].names = {"b"};
    EXPECT_EQ(forgotten(all), Names{"a is registered in catalogue.cpp but applier.cpp does not read it"});
    all[1].names = {"a", "b"};
    all[2].names = {"a"};
    EXPECT_EQ(forgotten(all), Names{"b is registered in catalogue.cpp but dump.cpp does not write it"});
    all[2].names = {"a", "b"};
    all[3].names = {"b"};
    EXPECT_EQ(forgotten(all), Names{"a is registered in catalogue.cpp but default.cfg does not assign it"});
    all[3].names = {"a", "b"};
    all[0].names = {"a"};
    EXPECT_EQ(forgotten(all), Names{"b is read by applier.cpp but catalogue.cpp does not register it"});
    all[0].names = {"a", "b", "c"};
    EXPECT_EQ(forgotten(all), (Names{"c is registered in catalogue.cpp but applier.cpp does not read it",
                                     "c is registered in catalogue.cpp but dump.cpp does not write it",
                                     "c is registered in catalogue.cpp but default.cfg does not assign it"}));
}

TEST(consistency_messages, name_the_place_that_repeats_an_option)
{
    std::vector<Place> all = places();
    for (Place &place : all) {
        place.names = {"a", "b"};
    }
    EXPECT_EQ(repeated(all), Names());
    all[3].names = {"a", "b", "a"};
    EXPECT_EQ(repeated(all), Names{"a stands twice in default.cfg"});
}

// ---- That all mean the same by it -----------------------------------------------------------------------------------

TEST(consistency, gives_each_option_one_type_everywhere)
{
    const std::map<std::string, OptionType> applied = applied_types();
    const CatalogueSetter setter;
    std::map<std::string, std::string> printed;
    for (const DumpedEntry &entry : dumped(Configuration())) {
        printed[entry.name] = entry.type == "unsigned" ? "int" : entry.type == "double" ? "float" : entry.type;
    }
    for (const OptionParser::Option &option : setter.options().options()) {
        const std::string registered = type_name(option.type);
        const auto read = applied.find(option.name);
        if (read != applied.end()) {
            EXPECT_EQ(registered, type_name(read->second)) << option.name << ": catalogue.cpp and applier.cpp differ";
        }
        const auto written = printed.find(option.name);
        if (written != printed.end()) {
            EXPECT_EQ(registered, written->second) << option.name << ": catalogue.cpp and dump.cpp differ";
        }
    }
    for (const auto &[name, type] : applied) {
        const char *const field_type = option_type_of_field(field_of(name));
        ASSERT_NE(field_type, nullptr) << name << " is read by applier.cpp but configuration.h has no "
                                       << field_of(name) << ", or tests/support/record_fields.h does not list it";
        EXPECT_STREQ(field_type, type_name(type)) << name << ": configuration.h and applier.cpp differ";
    }
}

TEST(consistency, has_each_field_written_by_a_row)
{
    std::set<std::string> written;
    const Configuration sentinel = sentinel_record(0);
    for (const auto &[name, type] : applied_types()) {
        FullSetter setter;
        ASSERT_NE(setter.options().find_option(name), nullptr) << name << " is registered nowhere";
        setter.set_option(name, text_unlike(sentinel, field_of(name), type), 0);
        Configuration record = sentinel;
        setter.update_config(&record);
        const Names changed = differing_fields(record, sentinel);
        EXPECT_EQ(std::count(changed.begin(), changed.end(), field_of(name)), 1)
            << "the row of " << name << " in applier.cpp does not write " << field_of(name);
        written.insert(field_of(name));
    }
    std::size_t unwritten = 0;
    Configuration record;
    for (const Field &field : fields_of(record)) {
        const bool is_inner = field.name.find("theory_bv_lazydpll.") == 0 || field.name.find("theory_fp_dpll.") == 0;
        const bool is_written = written.count(field.name) == 1;
        EXPECT_TRUE(is_written || is_inner) << "no row of applier.cpp writes " << field.name << " of configuration.h";
        unwritten += is_written ? 0 : 1;
    }
    EXPECT_EQ(unwritten, 2U * 13U) << "fields of the inner engines without an option";
}

TEST(consistency, dumps_for_each_option_what_its_row_stored)
{
    const std::map<std::string, OptionType> applied = applied_types();
    for (int variant = 0; variant < 2; ++variant) {
        const Configuration sentinel = sentinel_record(variant);
        const std::vector<DumpedEntry> before = dumped(sentinel);
        for (const std::string &name : dumped_names()) {
            const auto type = applied.find(name);
            ASSERT_NE(type, applied.end()) << name << " is written by dump.cpp but applier.cpp does not read it";
            const std::string text = text_unlike(sentinel, field_of(name), type->second);
            FullSetter setter;
            setter.set_option(name, text, 0);
            Configuration record = sentinel;
            setter.update_config(&record);
            const Names changed = differing_fields(record, sentinel);
            const std::vector<DumpedEntry> after = dumped(record);
            ASSERT_EQ(after.size(), before.size());
            for (std::size_t i = 0; i < after.size(); ++i) {
                const bool is_changed = std::count(changed.begin(), changed.end(), field_of(after[i].name)) != 0;
                EXPECT_EQ(after[i].value != before[i].value, is_changed)
                    << "dump.cpp does not write for " << after[i].name << " what applier.cpp stores; set: " << name;
                if (after[i].name == name) {
                    EXPECT_EQ(after[i].value, text + (type->second == dalvo::OPT_FLOAT ? "00000" : "")) << name;
                }
            }
        }
    }
}

// ---- Initial values and the default text ----------------------------------------------------------------------------

TEST(consistency, has_each_option_in_the_fuzzers_dictionary)
{
    const std::vector<std::string> words = source_lines("fuzz/dalvo.dict");
    const FullSetter setter;
    for (const OptionParser::Option &option : setter.options().options()) {
        EXPECT_EQ(std::count(words.begin(), words.end(), '"' + option.name + '"'), 1) << option.name;
    }
}

TEST(default_text, assigns_each_option_once_and_nothing_else)
{
    Names names = default_names();
    Names expected = catalogue_names();
    std::sort(names.begin(), names.end());
    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(names, expected);
}

TEST(default_text, leaves_a_fresh_record_as_it_is)
{
    CatalogueSetter setter;
    setter.load_default();
    Configuration record;
    ASSERT_NO_THROW(setter.update_config(&record));
    EXPECT_EQ(differing_fields(record, Configuration()), Names());
    for (const OptionParser::Option &option : setter.options().options()) {
        EXPECT_TRUE(option.has_value()) << option.name;
        EXPECT_EQ(option.level, 3) << option.name;
    }
}

TEST(default_text, makes_any_record_a_fresh_one_where_options_reach)
{
    for (int variant = 0; variant < 2; ++variant) {
        CatalogueSetter setter;
        setter.load_default();
        Configuration record = sentinel_record(variant);
        ASSERT_NO_THROW(setter.update_config(&record));
        const Names differing = differing_fields(record, Configuration());
        for (const auto &[name, type] : applied_types()) {
            const bool differs = std::count(differing.begin(), differing.end(), field_of(name)) != 0;
            EXPECT_TRUE(!differs || is_unlisted(name)) << name << " is not as in a fresh record";
        }
    }
}

TEST(initial_values, are_accepted_by_their_options)
{
    for (const DumpedEntry &entry : dumped(Configuration())) {
        CatalogueSetter setter;
        ASSERT_NO_THROW(setter.set_option(entry.name, entry.value, 0)) << entry.name << " = " << entry.value;
        Configuration record = sentinel_record(0);
        EXPECT_NO_THROW(setter.update_config(&record)) << entry.name << " = " << entry.value;
        EXPECT_TRUE(same_value(value_named(record, field_of(entry.name)),
                               value_named(Configuration(), field_of(entry.name))))
            << entry.name << " = " << entry.value;
    }
}

TEST(initial_values, are_those_of_the_default_text)
{
    const ClassicCLocale classic;
    std::map<std::string, std::string> initial;
    for (const DumpedEntry &entry : dumped(Configuration())) {
        initial[entry.name] = entry.value;
    }
    for (const auto &[name, value] : default_assignments()) {
        const bool is_float = option_type_of_field(field_of(name)) == std::string("float");
        EXPECT_EQ(initial[name], is_float ? std::to_string(std::stod(value)) : value) << name << " in default.cfg";
    }
}

} // namespace
