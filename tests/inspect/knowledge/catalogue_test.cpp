#include "dalvo/inspect/knowledge/catalogue.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <random>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "tests/configuration/caught.h"
#include "tests/support/applied_rows.h"
#include "tests/support/golden.h"
#include "tests/support/records.h"
#include "tests/support/sections.h"
#include "tests/support/settings.h"

namespace {

using namespace dalvo::inspect;
using dalvo::Configuration;
using dalvo::ConfigurationSetter;
using dalvo::OptionParser;
using namespace dalvo::testing;

using Names = std::vector<std::string>;

/// Option name to the field that it fills.
const std::map<std::string, std::string> &fields_by_option()
{
    static const std::map<std::string, std::string> fields = [] {
        std::map<std::string, std::string> read;
        for (const AppliedRow &row : applied_rows()) {
            read[row.name] = row.field;
        }
        return read;
    }();
    return fields;
}

/// What the field of option `name` holds in `record`, as the option's value would be.
Value value_in(const Configuration &record, const std::string &name)
{
    const FieldValue field = value_named(record, fields_by_option().at(name));
    if (const double *const number = std::get_if<double>(&field)) {
        return static_cast<float>(*number);
    }
    if (const bool *const flag = std::get_if<bool>(&field)) {
        return *flag;
    }
    if (const std::int32_t *const integer = std::get_if<std::int32_t>(&field)) {
        return *integer;
    }
    return std::get<std::string>(field);
}

// ---- The library's options ------------------------------------------------------------------------------------------

TEST(catalogue, lists_the_options_as_the_library_registers_them)
{
    const CatalogueSetter setter;
    const auto &registered = setter.options().options();
    const auto &listed = Catalogue::standard().options();
    ASSERT_EQ(listed.size(), registered.size());
    for (std::size_t i = 0; i < registered.size(); ++i) {
        EXPECT_EQ(listed[i].name, registered[i].name);
        EXPECT_EQ(listed[i].type, registered[i].type) << registered[i].name;
        EXPECT_EQ(listed[i].group, registered[i].group) << registered[i].name;
        EXPECT_EQ(listed[i].help, registered[i].help) << registered[i].name;
    }
}

TEST(catalogue, has_the_ranges_of_the_library)
{
    std::map<std::string, std::string> accepted;
    for (const AppliedRow &row : applied_rows()) {
        accepted[row.name] = row.accepted;
    }
    for (const OptionInfo &option : Catalogue::standard().options()) {
        EXPECT_EQ(option.AppliedOption::accepted(), accepted.at(option.name)) << option.name;
    }
}

TEST(catalogue, finds_each_option_by_its_name_and_no_other)
{
    const Catalogue &catalogue = Catalogue::standard();
    for (std::size_t i = 0; i < catalogue.options().size(); ++i) {
        const std::string name = catalogue.options()[i].name;
        EXPECT_EQ(catalogue.position(name), i) << name;
        EXPECT_EQ(catalogue.find(name), &catalogue.options()[i]) << name;
    }
    for (const std::string_view name : {std::string_view(""), std::string_view("verbosit"),
                                        std::string_view("verbosity "), std::string_view("Verbosity"),
                                        std::string_view("verbosity\0", 10), std::string_view("debug.log_sections"),
                                        std::string_view("\xff")}) {
        EXPECT_EQ(catalogue.position(name), Catalogue::npos) << name;
        EXPECT_EQ(catalogue.find(name), nullptr) << name;
    }
}

TEST(catalogue, orders_the_positions_as_dump_prints)
{
    const Catalogue &catalogue = Catalogue::standard();
    const CatalogueSetter setter;
    const Configuration record;
    std::ostringstream unused;
    const RecordingPrinter printer;
    setter.dump(&record, unused, printer);
    Names printed;
    for (const DumpedEntry &entry : printer.entries) {
        printed.push_back(entry.name);
    }
    Names ordered;
    for (const std::size_t position : catalogue.dump_order()) {
        ordered.push_back(catalogue.options().at(position).name);
    }
    EXPECT_EQ(ordered, printed);
}

TEST(catalogue, is_one_for_the_whole_process_where_a_host_describes_nothing)
{
    EXPECT_EQ(&Catalogue::standard(), &Catalogue::standard());
    for (std::size_t i = 0; i < Catalogue::standard().options().size(); ++i) {
        EXPECT_FALSE(Catalogue::standard().has_described_default(i)) << i;
    }
}

TEST(catalogue, registers_its_options_as_the_library_does)
{
    ConfigurationSetter setter;
    Catalogue::standard().register_options(setter);
    const CatalogueSetter library;
    ASSERT_EQ(setter.options().options().size(), library.options().options().size());
    for (std::size_t i = 0; i < library.options().options().size(); ++i) {
        EXPECT_EQ(setter.options().options()[i].name, library.options().options()[i].name);
        EXPECT_EQ(setter.options().options()[i].group, library.options().options()[i].group);
    }
    EXPECT_EQ(caught_from([&] { Catalogue::standard().register_options(setter); }).option, "verbosity")
        << "a setter that has options already";
}

// ---- Codes and the lowest number that makes sense -------------------------------------------------------------------

/// Option name to its codes, of those that have any.
const std::map<std::string, std::vector<int>> codes_by_option = {
    {"unsat_core_generation", {0, 1, 2}},
    {"debug.api_call_trace", {0, 1, 2, 3}},
    {"printer.bv_number_format", {0, 1, 2}},
    {"printer.fp_number_format", {0, 1, 2}},
    {"preprocessor.simplification", {0, 1, 2, 4, 8}},
    {"dpll.restart_strategy", {0, 1, 2, 3}},
    {"dpll.branching_initial_phase", {0, 1, 2}},
    {"dpll.branching_cache_phase", {0, 1, 2}},
    {"dpll.preprocessor.mode", {0, 1, 2}},
    {"dpll.interpolation_mode", {0, 1, 2}},
    {"theory.interface_eq_policy", {0, 1, 2, 3}},
    {"theory.la.laz_cuts_from_proofs_mode", {0, 1, 2, 3}},
    {"theory.la.interpolation_mode", {0, 1, 2}},
    {"theory.euf.dyn_ack", {0, 1, 2}},
    {"theory.arr.mode", {0, 1}},
    {"theory.bv.bit_blast_mode", {0, 1, 2}},
    {"theory.bv.interpolation_mode", {0, 1, 2, 3, 4}},
    {"theory.bv.lazydpll.restart_strategy", {0, 1, 2, 3}},
    {"theory.bv.lazydpll.branching_initial_phase", {0, 1, 2}},
    {"theory.bv.lazydpll.branching_cache_phase", {0, 1, 2}},
    {"theory.bv.div_by_zero_mode", {0, 1}},
    {"theory.fp.mode", {0, 1, 2}},
    {"theory.fp.bit_blast_mode", {0, 1, 2}},
    {"theory.fp.dpll.restart_strategy", {0, 1, 2, 3}},
    {"theory.fp.dpll.branching_initial_phase", {0, 1, 2}},
    {"theory.fp.dpll.branching_cache_phase", {0, 1, 2}},
    {"theory.fp.acdcl_conflict_generalization", {0, 1, 2, 3}},
    {"theory.fp.interpolation_mode", {0, 1, 2, 3, 4, 5}},
    {"theory.fp.minmax_zero_mode", {0, 1, 2, 3, 4}},
};

TEST(codes, are_those_of_the_help_texts_and_are_accepted)
{
    for (const OptionInfo &option : Catalogue::standard().options()) {
        std::vector<int> codes;
        for (const Code &code : option.codes) {
            codes.push_back(code.value);
            EXPECT_FALSE(code.meaning.empty()) << option.name << " " << code.value;
            EXPECT_TRUE(option.accepts(Value(code.value))) << option.name << " " << code.value;
        }
        const auto expected = codes_by_option.find(option.name);
        EXPECT_EQ(codes, expected != codes_by_option.end() ? expected->second : std::vector<int>()) << option.name;
    }
}

TEST(codes, have_the_words_of_the_help_texts)
{
    const std::vector<Code> &restarts = Catalogue::standard().find("dpll.restart_strategy")->codes;
    ASSERT_FALSE(restarts.empty());
    EXPECT_EQ(restarts.front().meaning, "geometric strategy");
}

TEST(codes, of_an_inner_engine_are_those_of_the_main_one)
{
    const Catalogue &catalogue = Catalogue::standard();
    int coded = 0;
    for (const std::string prefix : {"theory.bv.lazydpll.", "theory.fp.dpll."}) {
        for (const OptionInfo &option : catalogue.options()) {
            if (option.name.rfind(prefix, 0) != 0) {
                continue;
            }
            const std::vector<Code> &main = catalogue.find("dpll." + option.name.substr(prefix.size()))->codes;
            ASSERT_EQ(option.codes.size(), main.size()) << option.name;
            for (std::size_t i = 0; i < main.size(); ++i) {
                EXPECT_EQ(option.codes[i].value, main[i].value) << option.name;
                EXPECT_EQ(option.codes[i].meaning, main[i].meaning) << option.name;
                ++coded;
            }
        }
    }
    EXPECT_GT(coded, 0);
}

TEST(codes, add_up_where_they_are_flags)
{
    for (const OptionInfo &option : Catalogue::standard().options()) {
        EXPECT_EQ(option.codes_add_up, option.name == "preprocessor.simplification") << option.name;
    }
}

TEST(lowest_sensible, is_the_first_code_and_0_for_shares_and_for_what_dump_prints_unsigned)
{
    std::set<std::string> from_zero = {
        "verbosity", "theory.euf.dyn_ack_threshold", "theory.euf.dyn_ack_limit", "theory.la.lazy_expl_threshold",
        "dpll.branching_random_frequency", "theory.bv.lazydpll.branching_random_frequency",
        "theory.fp.dpll.branching_random_frequency",
    };
    for (const auto &[name, codes] : codes_by_option) {
        from_zero.insert(name); // each list of codes starts there
    }
    for (const OptionInfo &option : Catalogue::standard().options()) {
        const std::optional<double> expected =
            from_zero.count(option.name) != 0 ? std::optional<double>(0.0) : std::nullopt;
        EXPECT_EQ(option.lowest_sensible, expected) << option.name;
    }
}

// ---- Default values -------------------------------------------------------------------------------------------------

TEST(initial_value, is_what_a_fresh_record_holds_whatever_the_default_text_says)
{
    const Catalogue other("interpolation = true\nrandom_seed = 7\n");
    for (const Catalogue *const catalogue : {&Catalogue::standard(), &other}) {
        for (const OptionInfo &option : catalogue->options()) {
            EXPECT_TRUE(same_value(option.initial_value, value_in(Configuration(), option.name))) << option.name;
        }
    }
}

/// The record that a setter fills from its own default text.
Configuration default_record()
{
    CatalogueSetter setter;
    setter.load_default();
    Configuration record = sentinel_record(0);
    setter.update_config(&record);
    return record;
}

TEST(default_text, of_a_catalogue_is_the_built_in_one_unless_another_is_given)
{
    std::string built_in;
    for (const std::string &line : source_lines("dalvo/configuration/default.cfg")) {
        built_in += line + "\n";
    }
    EXPECT_EQ(Catalogue().default_text(), built_in);
    EXPECT_EQ(Catalogue::standard().default_text(), built_in);
    const std::string other("# any\0bytes \xff [", 15);
    EXPECT_EQ(Catalogue(other).default_text(), other);
    EXPECT_EQ(Catalogue("").default_text(), "");
}

TEST(default_value, is_what_the_built_in_text_makes)
{
    const Configuration record = default_record();
    const Catalogue catalogue;
    for (const OptionInfo &option : catalogue.options()) {
        EXPECT_TRUE(same_value(option.default_value, value_in(record, option.name)))
            << option.name << " = " << value_words(option.default_value);
    }
}

/// A text of accepted values, with sections, that has some options twice.
std::string random_text(std::mt19937 &random)
{
    static const std::vector<AppliedRow> rows = applied_rows();
    std::string text;
    for (int line = 0; line < 60; ++line) {
        const AppliedRow &row = rows[random() % rows.size()];
        if (Catalogue::standard().find(row.name) != nullptr) {
            const std::vector<GivenValue> values = values_accepted(row);
            text += row.name + " = " + values[random() % values.size()].text + "\n";
        }
        text += random() % 20 == 0 ? "[fast]\n" : random() % 20 == 0 ? "[default]\n" : "";
    }
    return text;
}

TEST(default_value, is_what_a_setter_makes_of_another_text)
{
    std::mt19937 random(20261121);
    for (int round = 0; round < 100; ++round) {
        const std::string text = random_text(random);
        CatalogueSetter setter;
        load_text(setter, text);
        Configuration record;
        setter.update_config(&record);
        const Catalogue catalogue(text);
        ASSERT_EQ(catalogue.default_text(), text);
        for (const OptionInfo &option : catalogue.options()) {
            ASSERT_TRUE(same_value(option.default_value, value_in(record, option.name)))
                << option.name << " = " << value_words(option.default_value) << " after\n" << text;
        }
    }
}

const struct {
    std::string_view text;
    const char *option;
    const char *expected;
    const char *why;
} default_texts[] = {
    {"", "random_seed", "1", "a text that says nothing"},
    {"random_seed = 7\n", "random_seed", "7", "a text that says one thing"},
    {"random_seed = 7\nrandom_seed = 8", "random_seed", "8", "the later line"},
    {"[default]\nrandom_seed = 7", "random_seed", "7", "a header that names no section"},
    {"[fast]\nrandom_seed = 7", "random_seed", "1", "a section that nobody chooses"},
    {"[default, fast]\nrandom_seed = 7", "random_seed", "1", "sections that nobody chooses"},
    {"interpolation = yes", "proof_generation", "true", "forced by another option"},
    {"interpolation = yes\npreprocessor.toplevel_propagation = true", "preprocessor.toplevel_propagation", "false",
     "forced by another option, whatever its own line says"},
    {"unsat_core_generation = 1", "proof_generation", "true", "forced by a code"},
    {"unsat_core_generation = 2", "dpll.store_tlemmas", "true", "forced by a code"},
    {"dpll.store_tlemmas = false\nunsat_core_generation = 2", "dpll.store_tlemmas", "false",
     "its own line wins over that force"},
    {"theory.arr.enable_nonlinear = 0\ntheory.arr.enable_nonlinear_strat = 1", "theory.arr.enable_nonlinear", "true",
     "forced by another option"},
    {"random_seed = 7\n[\n", "random_seed", "7", "a header that is malformed after the line"},
    {"[a,,b]\nrandom_seed = 7\n", "random_seed", "1", "the line is below a malformed header"},
    {"radnom_seed = 5\nrandom_seed = 7", "random_seed", "7", "a name that is none"},
    {"random_seed = 7\nrandom_seed = high", "random_seed", "7", "a value of another type, afterwards"},
    {"random_seed = 7\nrandom_seed", "random_seed", "7", "a line without a value, afterwards"},
    {"random_seed = 7\nrandom_seed = 0", "random_seed", "7", "a value out of range, afterwards"},
    {"random_seed = 0", "random_seed", "1", "nothing but a value out of range"},
    {"unsat_core_generation = 3", "unsat_core_generation", "0", "a value out of range of the option stored first"},
    {"dpll.branching_random_frequency = nan", "dpll.branching_random_frequency", "nan", "accepted as it is"},
    {"= 3\n= \n]\n\xef\xbb\xbfrandom_seed = 9\n", "random_seed", "1", "names that are none"},
    {{"\0\nrandom_seed = 7\nrandom_seed = 8\0\n", 35}, "random_seed", "7", "a NUL is a byte as any"},
    {"debug.log_sections = sat", "random_seed", "1", "a name that the library reads and does not register"},
};

TEST(default_value, is_made_of_what_can_be_applied)
{
    for (const auto &row : default_texts) {
        const Catalogue catalogue{std::string(row.text)};
        EXPECT_EQ(value_text(catalogue.find(row.option)->default_value), row.expected)
            << ::testing::PrintToString(row.text) << ": " << row.why;
        EXPECT_EQ(catalogue.options().size(), Catalogue::standard().options().size());
    }
}

TEST(default_value, of_a_string_has_all_its_bytes)
{
    const std::string bytes("\xff\0\x80 x", 5);
    const Catalogue catalogue("printer.defines_prefix =  " + bytes + "\t\r\n");
    EXPECT_EQ(value_text(catalogue.find("printer.defines_prefix")->default_value), bytes);
}

} // namespace
