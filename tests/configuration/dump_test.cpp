#include <cstddef>
#include <cstdint>
#include <ios>
#include <limits>
#include <locale>
#include <ostream>
#include <sstream>
#include <stdexcept>
#include <streambuf>
#include <string>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

#include <gtest/gtest.h>

#include "dalvo/configuration/configurationsetter.h"
#include "tests/configuration/dumped_text.h"
#include "tests/support/classic_locale.h"
#include "tests/support/records.h"
#include "tests/support/sections.h"

namespace {

using namespace std::string_literals;
using dalvo::Configuration;
using dalvo::ConfigurationSetter;
using dalvo::testing::ClassicStream;
using dalvo::testing::differing_fields;
using dalvo::testing::dump_rows;
using dalvo::testing::dumped;
using dalvo::testing::DumpRow;
using dalvo::testing::expected_lines;
using dalvo::testing::Field;
using dalvo::testing::fields_of;
using dalvo::testing::FieldValue;
using dalvo::testing::load_text;
using dalvo::testing::sections_of;
using dalvo::testing::sentinel_record;
using dalvo::testing::set_field;
using dalvo::testing::value_named;
using Printer = ConfigurationSetter::ConfigEntryPrinter;

static_assert(std::is_abstract_v<Printer> && std::has_virtual_destructor_v<Printer>);
static_assert(sizeof(Printer) == sizeof(void *), "a printer holds no data");

struct Call {
    std::string name;
    std::variant<bool, int, unsigned int, double, std::string> value;

    friend bool operator==(const Call &a, const Call &b) { return a.name == b.name && a.value == b.value; }

    friend std::ostream &operator<<(std::ostream &out, const Call &call)
    {
        std::visit([&](const auto &held) { out << call.name << " = " << held; }, call.value);
        return out << " (alternative " << call.value.index() << ")";
    }
};

/// Notes its calls, and throws at the one after `room` of them.
class RecordingPrinter : public Printer {
public:
    explicit RecordingPrinter(std::size_t room_for_calls = 1000) : room(room_for_calls) {}

    void operator()(std::ostream &out, const std::string &name, bool value) const override { note(out, name, value); }
    void operator()(std::ostream &out, const std::string &name, int value) const override { note(out, name, value); }
    void operator()(std::ostream &out, const std::string &name, unsigned int value) const override
    {
        note(out, name, value);
    }
    void operator()(std::ostream &out, const std::string &name, double value) const override { note(out, name, value); }
    void operator()(std::ostream &out, const std::string &name, const std::string &value) const override
    {
        note(out, name, value);
    }

    mutable std::vector<Call> calls;
    mutable std::vector<std::ostream *> streams;

private:
    template <class T> void note(std::ostream &out, const std::string &name, const T &value) const
    {
        if (calls.size() == room) {
            throw std::range_error("no room for " + name);
        }
        calls.push_back({name, value});
        streams.push_back(&out);
    }

    std::size_t room;
};

/// The calls that a dump of `record` is expected to make.
std::vector<Call> expected_calls(const Configuration &record)
{
    std::vector<Call> calls;
    for (const DumpRow &row : dump_rows()) {
        const FieldValue value = value_named(record, row.field);
        if (row.type == "bool") {
            calls.push_back({row.name, std::get<bool>(value)});
        } else if (row.type == "int") {
            calls.push_back({row.name, std::get<std::int32_t>(value)});
        } else if (row.type == "unsigned") {
            calls.push_back({row.name, static_cast<unsigned int>(std::get<std::int32_t>(value))});
        } else if (row.type == "double") {
            calls.push_back({row.name, std::get<double>(value)});
        } else {
            calls.push_back({row.name, std::get<std::string>(value)});
        }
    }
    return calls;
}

std::vector<Call> calls_for(const Configuration &record)
{
    const ConfigurationSetter setter;
    std::ostringstream out;
    const RecordingPrinter printer;
    setter.dump(&record, out, printer);
    EXPECT_EQ(out.str(), "") << "the setter writes nothing itself";
    return printer.calls;
}

/// Another value of the same type.
FieldValue changed(const FieldValue &value)
{
    if (const bool *flag = std::get_if<bool>(&value)) {
        return !*flag;
    }
    if (const std::int32_t *number = std::get_if<std::int32_t>(&value)) {
        return *number + 1;
    }
    if (const double *number = std::get_if<double>(&value)) {
        return *number + 0.25;
    }
    if (const std::string *text = std::get_if<std::string>(&value)) {
        return *text + "\0 changed\n"s;
    }
    return std::vector<std::string>{"changed"};
}

TEST(dump, hands_each_setting_to_the_printer_in_their_order_and_types)
{
    for (int variant = 0; variant < 2; ++variant) {
        const Configuration record = sentinel_record(variant);
        const std::vector<Call> calls = calls_for(record);
        const std::vector<Call> expected = expected_calls(record);
        ASSERT_EQ(calls.size(), expected.size());
        for (std::size_t i = 0; i < calls.size(); ++i) {
            EXPECT_EQ(calls[i], expected[i]) << "call " << i + 1;
        }
    }
    EXPECT_EQ(calls_for(Configuration()), expected_calls(Configuration()));
}

TEST(dump, prints_each_field_once_and_no_others)
{
    const Configuration record = sentinel_record(0);
    const std::vector<Call> before = calls_for(record);
    std::size_t printed_fields = 0;
    Configuration names;
    for (const Field &field : fields_of(names)) {
        SCOPED_TRACE(field.name);
        Configuration other = record;
        set_field(other, field.name, changed(value_named(record, field.name)));
        ASSERT_EQ(differing_fields(record, other), std::vector<std::string>{field.name});
        const std::vector<Call> after = calls_for(other);
        ASSERT_EQ(after.size(), before.size());
        std::vector<std::string> changed_rows;
        std::vector<std::string> expected;
        for (std::size_t i = 0; i < before.size(); ++i) {
            if (!(after[i] == before[i])) {
                changed_rows.push_back(after[i].name);
            }
            if (dump_rows()[i].field == field.name) {
                expected.push_back(dump_rows()[i].name);
            }
        }
        EXPECT_EQ(changed_rows, expected);
        printed_fields += changed_rows.size();
    }
    EXPECT_EQ(printed_fields, dump_rows().size());
}

TEST(dump, hands_its_own_stream_to_the_printer)
{
    const ConfigurationSetter setter;
    const Configuration record;
    std::ostringstream out;
    const RecordingPrinter printer;
    setter.dump(&record, out, printer);
    EXPECT_EQ(printer.streams, std::vector<std::ostream *>(dump_rows().size(), &out));
    EXPECT_FALSE((out.flags() & std::ios_base::boolalpha) != 0) << "the flag is the other form's business";
}

TEST(dump, takes_records_that_may_be_changed_and_leaves_them_as_they_are)
{
    ConfigurationSetter setter;
    Configuration record = sentinel_record(1);
    const Configuration &read_only = record;
    std::ostringstream one;
    std::ostringstream two;
    setter.dump(&record, one, "s");
    setter.dump(&read_only, two, "s");
    EXPECT_EQ(one.str(), two.str());
    const RecordingPrinter printer_one;
    const RecordingPrinter printer_two;
    setter.dump(&record, one, printer_one);
    setter.dump(&read_only, two, printer_two);
    EXPECT_EQ(printer_one.calls, printer_two.calls);
    EXPECT_EQ(differing_fields(record, sentinel_record(1)), std::vector<std::string>());
}

TEST(dump, looks_at_the_record_alone)
{
    ConfigurationSetter setter;
    setter.initialize_options();
    setter.set_option("verbosity", "2", 0);
    load_text(setter, "random_seed = 99\n[s]\nnosuchoption = 1\n");
    setter.set_active_config("s");
    const auto filed = sections_of(setter);
    const Configuration record;
    ClassicStream out;
    setter.dump(&record, out, "s");
    EXPECT_EQ(out.str(), dumped(record, "s")) << "a bare setter writes the same";
    EXPECT_EQ(sections_of(setter), filed);
    EXPECT_EQ(setter.options().find_option("random_seed")->has_value(), false) << "nothing is replayed";
}

TEST(dump, writes_the_text_of_a_fresh_record)
{
    const Configuration fresh;
    EXPECT_EQ(dumped(fresh, ""), expected_lines(fresh));
    EXPECT_EQ(dumped(fresh, "s1"), "[s1]\n" + expected_lines(fresh));
}

TEST(dump, writes_127_lines_without_a_section_and_its_header_with_one)
{
    const auto lines = [](const std::string &text) {
        std::vector<std::string> found;
        std::istringstream in(text);
        for (std::string line; std::getline(in, line);) {
            found.push_back(line);
        }
        return found;
    };
    const std::string bare = dumped(Configuration(), "");
    ASSERT_EQ(lines(bare).size(), dump_rows().size());
    EXPECT_EQ(lines(bare).front().rfind("verbosity = ", 0), 0U);
    EXPECT_EQ(lines(bare).back().rfind("theory.fp.acdcl_generalization_fair = ", 0), 0U);
    EXPECT_EQ(bare.back(), '\n');

    for (const std::string &section : {"s1"s, "default"s, "a]b,c"s, "]"s, ","s, " "s, " s "s, "#"s, "a\nb"s, "a\0b"s,
                                       "\xc3\xa9\xff"s, std::string(1000, 'x')}) {
        EXPECT_EQ(dumped(Configuration(), section), "[" + section + "]\n" + bare) << section;
    }
}

TEST(dump, writes_strings_as_they_are)
{
    Configuration record;
    for (const std::string &value :
         {""s, " x "s, "\tx\n"s, "a = b # c"s, "\"quoted\""s, "[s]"s, "a\0b"s, "\xff\x80"s}) {
        record.debug_api_call_trace_filename = value;
        record.printer_defines_prefix = value + "!";
        const std::string text = dumped(record, "");
        EXPECT_EQ(text, expected_lines(record));
        EXPECT_NE(text.find("debug.api_call_trace_filename = " + value + "\n"), std::string::npos);
    }
    record.printer_defines_prefix = "";
    EXPECT_NE(dumped(record, "").find("\nprinter.defines_prefix = \npreprocessor."), std::string::npos)
        << "an empty value leaves the blank behind the sign";
}

TEST(dump, writes_four_options_unsigned)
{
    constexpr std::int32_t most = std::numeric_limits<std::int32_t>::max();
    constexpr std::int32_t least = std::numeric_limits<std::int32_t>::min();
    const struct {
        std::int32_t value;
        const char *natural, *integer;
    } rows[] = {
        {-1, "4294967295", "-1"},
        {least, "2147483648", "-2147483648"},
        {0, "0", "0"},
        {most, "2147483647", "2147483647"},
    };
    std::vector<std::string> natural_options;
    for (const auto &row : rows) {
        Configuration record;
        std::string expected;
        natural_options.clear();
        for (const DumpRow &option : dump_rows()) {
            if (option.type == "int" || option.type == "unsigned") {
                set_field(record, option.field, row.value);
                const bool natural = option.type == "unsigned";
                expected = option.name + " = " + (natural ? row.natural : row.integer) + "\n";
                EXPECT_NE(("\n" + dumped(record, "")).find("\n" + expected), std::string::npos) << expected;
                if (natural) {
                    natural_options.push_back(option.name);
                }
            }
        }
    }
    EXPECT_EQ(natural_options, (std::vector<std::string>{"verbosity", "theory.euf.dyn_ack_threshold",
                                                         "theory.euf.dyn_ack_limit", "theory.la.lazy_expl_threshold"}));
}

/// The lines that a dump of a record full of `value` writes for its floating-point options, onto `out`.
std::string text_with(double value, std::ostringstream &out, const char *double_format)
{
    Configuration record;
    for (const DumpRow &row : dump_rows()) {
        if (row.type == "double") {
            set_field(record, row.field, value);
        }
    }
    const ConfigurationSetter setter;
    setter.dump(&record, out, "");
    EXPECT_EQ(out.str(), expected_lines(record, double_format));
    const std::string name = "dpll.restart_geometric_factor = ";
    const std::size_t start = out.str().find("\n" + name) + 1 + name.size();
    return out.str().substr(start, out.str().find('\n', start) - start);
}

TEST(dump, writes_doubles_in_the_streams_format)
{
    const double infinity = std::numeric_limits<double>::infinity();
    const struct {
        double value;
        std::ios_base::fmtflags flags;
        std::streamsize precision;
        const char *printf_format, *expected;
    } rows[] = {
        {0.1, {}, 6, "%g", "0.1"},
        {0.9, {}, 6, "%g", "0.9"},
        {1e-07, {}, 6, "%g", "1e-07"},
        {1e-05, {}, 6, "%g", "1e-05"},
        {1e300, {}, 6, "%g", "1e+300"},
        {123456789.0, {}, 6, "%g", "1.23457e+08"},
        {-2.0, {}, 6, "%g", "-2"},
        {-0.0, {}, 6, "%g", "-0"},
        {infinity, {}, 6, "%g", "inf"},
        {-infinity, {}, 6, "%g", "-inf"},
        {0.1, {}, 17, "%.17g", "0.10000000000000001"},
        {1.0 / 3, {}, 9, "%.9g", "0.333333333"},
        {0.1, std::ios_base::fixed, 6, "%f", "0.100000"},
        {1e-07, std::ios_base::fixed, 6, "%f", "0.000000"},
        {12.5, std::ios_base::scientific, 2, "%.2e", "1.25e+01"},
        {2.0, std::ios_base::showpoint, 6, "%#g", "2.00000"},
    };
    for (const auto &row : rows) {
        ClassicStream out;
        out.setf(row.flags);
        out.precision(row.precision);
        EXPECT_EQ(text_with(row.value, out, row.printf_format), row.expected);
        EXPECT_EQ(out.precision(), row.precision);
        EXPECT_EQ(out.flags(), row.flags | std::ios_base::boolalpha | std::ostringstream().flags());
    }
}

TEST(dump, writes_integers_in_the_streams_base)
{
    Configuration record;
    record.verbosity = 255;
    record.random_seed = 255;
    ClassicStream out;
    out << std::hex << std::showbase;
    const ConfigurationSetter setter;
    setter.dump(&record, out, "");
    EXPECT_EQ(out.str().rfind("verbosity = 0xff\n", 0), 0U);
    EXPECT_NE(out.str().find("\nrandom_seed = 0xff\n"), std::string::npos);
}

TEST(dump, leaves_boolalpha_set_behind_a_section)
{
    const ConfigurationSetter setter;
    const Configuration record;
    for (const char *section : {"", "s1"}) {
        for (const bool set_before : {false, true}) {
            std::ostringstream out;
            out.setf(set_before ? std::ios_base::boolalpha : std::ios_base::fmtflags(), std::ios_base::boolalpha);
            const std::ios_base::fmtflags others = out.flags() & ~std::ios_base::boolalpha;
            setter.dump(&record, out, std::string(section));
            EXPECT_EQ(out.flags(), others | std::ios_base::boolalpha) << section;
        }
    }
    std::ostream broken(nullptr);
    setter.dump(&record, broken, "s1");
    EXPECT_NE(broken.flags() & std::ios_base::boolalpha, 0) << "on a stream that has failed, too";
}

/// Keeps what is written, and clears boolalpha in its stream at every write.
class FlagClearingBuffer : public std::stringbuf {
public:
    std::ostream *stream = nullptr;

protected:
    std::streamsize xsputn(const char *text, std::streamsize size) override
    {
        stream->unsetf(std::ios_base::boolalpha);
        return std::stringbuf::xsputn(text, size);
    }
};

TEST(dump, writes_booleans_as_words_whatever_the_streams_flags)
{
    FlagClearingBuffer buffer;
    std::ostream out(&buffer);
    out.imbue(std::locale::classic());
    buffer.stream = &out;
    const ConfigurationSetter setter;
    Configuration record;
    record.proof_generation = true;
    setter.dump(&record, out, "");
    EXPECT_EQ(out.flags() & std::ios_base::boolalpha, 0) << "the buffer has cleared it";
    EXPECT_EQ(buffer.str(), expected_lines(record));
}

class OddNumerals : public std::numpunct<char> {
    char do_thousands_sep() const override { return '\''; }
    char do_decimal_point() const override { return ','; }
    std::string do_grouping() const override { return "\3"; }
    std::string do_truename() const override { return "yea"; }
    std::string do_falsename() const override { return "nay"; }
};

TEST(dump, writes_numbers_but_not_words_as_the_streams_locale_has_them)
{
    Configuration record;
    record.verbosity = 1234567;
    record.random_seed = -1234567;
    record.dpll.restart_geometric_factor = 1234.5;
    record.proof_generation = true;
    record.printer_defines_prefix = "1234567.5";
    std::ostringstream out;
    out.imbue(std::locale(std::locale::classic(), new OddNumerals));
    const ConfigurationSetter setter;
    setter.dump(&record, out, "s1000");
    for (const char *line : {"[s1000]", "verbosity = 1'234'567", "random_seed = -1'234'567",
                             "dpll.restart_geometric_factor = 1'234,5", "proof_generation = true",
                             "interpolation = false", "printer.defines_prefix = 1234567.5"}) {
        EXPECT_NE(("\n" + out.str()).find("\n"s + line + "\n"), std::string::npos) << line;
    }
    EXPECT_EQ(out.str().find("nay"), std::string::npos);
}

TEST(dump, pads_nothing)
{
    const ConfigurationSetter setter;
    const Configuration record = sentinel_record(0);
    for (const char *section : {"", "s1"}) {
        for (const auto adjustment : {std::ios_base::left, std::ios_base::right, std::ios_base::internal}) {
            ClassicStream out;
            out.fill('*');
            out.width(60);
            out.setf(adjustment, std::ios_base::adjustfield);
            setter.dump(&record, out, std::string(section));
            EXPECT_EQ(out.str(), dumped(record, section));
            EXPECT_EQ(out.width(), 0);
            EXPECT_EQ(out.fill(), '*');
        }
    }
}

TEST(dump, writes_behind_what_the_stream_holds)
{
    ClassicStream out;
    out << "# settings\n";
    const ConfigurationSetter setter;
    const Configuration record;
    setter.dump(&record, out, "a");
    setter.dump(&record, out, "");
    EXPECT_EQ(out.str(), "# settings\n[a]\n" + expected_lines(record) + expected_lines(record));
}

/// Counts its flushes, and notes how much had been written at the last one.
class FlushCountingBuffer : public std::stringbuf {
public:
    int flushes = 0;
    std::size_t size_at_flush = 0;

protected:
    int sync() override
    {
        ++flushes;
        size_at_flush = str().size();
        return 0;
    }
};

TEST(dump, flushes_the_stream_once_at_the_end)
{
    const ConfigurationSetter setter;
    const Configuration record;
    FlushCountingBuffer buffer;
    std::ostream out(&buffer);
    out.imbue(std::locale::classic());
    setter.dump(&record, out, "s1");
    EXPECT_EQ(buffer.flushes, 1);
    EXPECT_EQ(buffer.size_at_flush, dumped(record, "s1").size());

    setter.dump(&record, out, RecordingPrinter());
    EXPECT_EQ(buffer.flushes, 2);
}

TEST(dump, passes_on_what_a_printer_throws)
{
    const ConfigurationSetter setter;
    const Configuration record = sentinel_record(0);
    const std::vector<Call> all = expected_calls(record);
    for (std::size_t room = 0; room < all.size(); ++room) {
        FlushCountingBuffer buffer;
        std::ostream out(&buffer);
        const RecordingPrinter printer(room);
        try {
            setter.dump(&record, out, printer);
            ADD_FAILURE() << "nothing was thrown at call " << room + 1;
        } catch (const std::range_error &e) {
            EXPECT_EQ(e.what(), "no room for " + all[room].name);
        }
        EXPECT_EQ(printer.calls, std::vector<Call>(all.begin(), all.begin() + static_cast<std::ptrdiff_t>(room)));
        EXPECT_EQ(buffer.flushes, 0);
        EXPECT_TRUE(out.good());
    }
}

/// Takes `room` characters; then fails, by a throw when it is told so.
class FullBuffer : public std::streambuf {
public:
    FullBuffer(std::size_t room_for_characters, bool throwing) : room(room_for_characters), throws(throwing) {}

    std::string written;

protected:
    int_type overflow(int_type c) override
    {
        if (written.size() < room) {
            written += traits_type::to_char_type(c);
            return c;
        }
        if (throws) {
            throw std::range_error("full");
        }
        return traits_type::eof();
    }

private:
    std::size_t room;
    bool throws;
};

TEST(dump, leaves_a_failure_in_the_streams_state)
{
    const ConfigurationSetter setter;
    const Configuration record;
    const std::string whole = dumped(record, "s1");
    for (const std::size_t room : {0U, 1U, 4U, 5U, 20U, 1000U}) {
        for (const bool throwing : {false, true}) {
            FullBuffer buffer(room, throwing);
            std::ostream out(&buffer);
            out.imbue(std::locale::classic());
            EXPECT_NO_THROW(setter.dump(&record, out, "s1"));
            EXPECT_TRUE(out.bad());
            EXPECT_EQ(buffer.written, whole.substr(0, room));
        }
    }
}

TEST(dump, lets_a_stream_throw_that_is_asked_to)
{
    const ConfigurationSetter setter;
    const Configuration record;
    for (const std::size_t room : {0U, 2U, 100U}) {
        FullBuffer buffer(room, false);
        std::ostream out(&buffer);
        out.exceptions(std::ios_base::badbit | std::ios_base::failbit);
        EXPECT_THROW(setter.dump(&record, out, "s1"), std::ios_base::failure);
        EXPECT_TRUE(out.bad());
        EXPECT_EQ(buffer.written.size(), room);

        FullBuffer throwing_buffer(room, true);
        std::ostream throwing(&throwing_buffer);
        throwing.exceptions(std::ios_base::badbit);
        EXPECT_THROW(setter.dump(&record, throwing, "s1"), std::range_error);
    }
}

TEST(dump, calls_the_printer_for_a_stream_that_has_failed)
{
    const ConfigurationSetter setter;
    const Configuration record;
    std::ostream out(nullptr);
    const RecordingPrinter printer;
    EXPECT_NO_THROW(setter.dump(&record, out, printer));
    EXPECT_EQ(printer.calls.size(), dump_rows().size());
    EXPECT_EQ(out.rdstate(), std::ios_base::badbit);
}

} // namespace
