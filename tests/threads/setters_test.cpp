#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <ostream>
#include <set>
#include <sstream>
#include <string>
#include <thread>
#include <utility>
#include <variant>
#include <vector>

#include <gtest/gtest.h>

#include "dalvo/configuration/appliedoptions.h"
#include "dalvo/configuration/configurationsetter.h"
#include "tests/support/applied_rows.h"
#include "tests/support/classic_locale.h"
#include "tests/support/records.h"
#include "tests/support/sections.h"
#include "tests/support/settings.h"

// Distinct setters share nothing: what a thread gets from its own does not depend on what other threads do meanwhile.
// The thread sanitizer sees the races that do not show in a result.

namespace {

using dalvo::Configuration;
using dalvo::ConfigurationSetter;
using dalvo::OptionParser;
using dalvo::testing::CatalogueSetter;
using dalvo::testing::ClassicStream;
using dalvo::testing::FullSetter;
using dalvo::testing::GivenValues;
using dalvo::testing::load_text;
using dalvo::testing::Sections;
using dalvo::testing::sections_of;

constexpr std::size_t job_count = 8; // and as many threads
constexpr std::size_t round_count = 12;

/// Texts by what they tell of: "dump", "errors" and so on.
using Outcome = std::vector<std::pair<std::string, std::string>>;

using Job = std::function<Outcome(std::size_t number)>;

/// Runs `work`, given its number, in `job_count` threads that begin together, and waits for all.
void run_at_once(const std::function<void(std::size_t number)> &work)
{
    std::atomic<std::size_t> waiting{0};
    std::vector<std::thread> threads;
    for (std::size_t number = 0; number < job_count; ++number) {
        threads.emplace_back([&waiting, &work, number] {
            ++waiting;
            while (waiting < job_count) {
                std::this_thread::yield();
            }
            work(number);
        });
    }
    for (std::thread &thread : threads) {
        thread.join();
    }
}

/// What differs, a line each; none when the outcomes are equal.
void note_differences(const Outcome &alone, const Outcome &together, const std::string &where,
                      std::vector<std::string> &notes)
{
    if (alone.size() != together.size()) {
        notes.push_back(where + ": not as many texts");
        return;
    }
    for (std::size_t i = 0; i < alone.size(); ++i) {
        if (together[i] != alone[i]) {
            notes.push_back(where + ": " + alone[i].first + "\n  alone:    " + alone[i].second +
                            "\n  together: " + together[i].second);
        }
    }
}

/// Holds `job` to its outcome alone. In each round the threads take the jobs in turn, and in every other round all of
/// them the same one.
void expect_same_at_once(const Job &job)
{
    std::vector<Outcome> alone;
    for (std::size_t number = 0; number < job_count; ++number) {
        alone.push_back(job(number));
    }
    EXPECT_EQ(std::set<Outcome>(alone.begin(), alone.end()).size(), job_count)
        << "two jobs give the same, so that one could pass for the other";
    std::vector<std::vector<std::string>> notes(job_count); // by thread
    run_at_once([&](std::size_t thread) {
        for (std::size_t round = 0; round < round_count; ++round) {
            const std::size_t number = (round % 2 == 0 ? thread + round : round) % job_count;
            const std::string where = "thread " + std::to_string(thread) + ", job " + std::to_string(number);
            note_differences(alone[number], job(number), where, notes[thread]);
        }
    });
    for (const std::vector<std::string> &of_thread : notes) {
        EXPECT_EQ(of_thread, std::vector<std::string>());
    }
}

std::string text_of(const Sections &sections)
{
    ClassicStream text;
    for (const auto &[name, entries] : sections) {
        text << '[' << name << "]\n";
        for (const auto &entry : entries) {
            text << entry << '\n';
        }
    }
    return text.str();
}

std::string text_of(const OptionParser &options)
{
    ClassicStream text;
    options.print_help(text);
    for (const OptionParser::Option &option : options.options()) {
        text << option.name << ' ' << option.level << ' ' << option.value.index() << '\n';
    }
    return text.str();
}

/// The fields of a record that no dump shows, and those that it shows rounded.
std::string other_fields_of(const Configuration &record)
{
    const std::vector<std::string> changed = dalvo::testing::differing_fields(record, Configuration());
    std::string text = testing::PrintToString(changed) + testing::PrintToString(record.debug_log_sections);
    for (const dalvo::testing::Field &field : dalvo::testing::fields_of_const(record)) {
        if (const double *const *real = std::get_if<double *>(&field.at)) {
            text += ' ' + std::to_string(**real);
        }
    }
    return text;
}

/// What `action` throws, as text; empty when nothing.
template <class Action> std::string error_from(Action action)
{
    try {
        action();
    } catch (OptionParser::error &error) {
        error.message_stream << ", noted";
        return std::string(error.what()) + '|' + error.option + '|' + error.value + '|' + error.command_line;
    }
    return "";
}

/// A text with a section for each value, more than a table has buckets at first. Section "mine" holds most of the
/// values: which ones, the job's number decides.
std::string configuration_text(const GivenValues &values, std::size_t number)
{
    ClassicStream text;
    text << "# job " << number << "\nverbosity = " << number % 3 << '\n';
    std::size_t place = 0;
    for (const auto &[name, given] : values) {
        text << "[of " << name << (++place % job_count != number ? ", mine]\n" : "]\n");
        text << name << " = " << given.text << '\n';
    }
    text << "[mine]\nrandom_seed = " << 100 + number << '\n';
    return text.str();
}

/// The whole way: construction, registration, assignments, texts, replay, the record, both kinds of dump, and back.
Outcome configured(const GivenValues &values, std::size_t number)
{
    FullSetter setter;
    const auto level = static_cast<std::int32_t>(number);
    setter.load_default();
    setter.set_option("printer.defines_prefix", "p" + std::to_string(number), level);
    load_text(setter, configuration_text(values, number), level);
    setter.set_active_config("mine");
    Configuration record;
    setter.update_config(&record);

    ClassicStream dump;
    setter.dump(&record, dump, "again");
    const dalvo::testing::RecordingPrinter printer;
    setter.dump(&record, dump, printer);
    std::string entries;
    for (const dalvo::testing::DumpedEntry &entry : printer.entries) {
        entries += entry.name + ' ' + entry.type + ' ' + entry.value + '\n';
    }

    CatalogueSetter back;
    load_text(back, dump.str());
    back.set_active_config("again");
    Configuration read_back;
    back.update_config(&read_back);
    return {{"sections", text_of(sections_of(setter))},   {"options", text_of(setter.options())},
            {"dump", dump.str()},                         {"entries", entries},
            {"other fields", other_fields_of(record)},    {"sections read back", text_of(sections_of(back))},
            {"fields read back", other_fields_of(read_back)}};
}

/// Errors of every kind, each of which leaves its setter of use.
Outcome refused(std::size_t number)
{
    CatalogueSetter setter;
    const std::string own = std::to_string(number);
    Outcome errors;
    const auto note = [&](const std::string &what, const auto &action) {
        errors.emplace_back(what, error_from(action));
        EXPECT_NE(errors.back().second, "") << what;
    };
    note("unknown option", [&] { setter.set_option("verbosit" + own, "1", 0); });
    note("invalid value", [&] { setter.set_option("random_seed", "x" + own, 0); });
    note("registered twice", [&] { setter.options().add_option("verbosity", dalvo::OPT_INT, own); });
    note("malformed header", [&] { load_text(setter, "[a" + own + ",,b]\n"); });
    load_text(setter, "[a" + own + "]\ntheory.arr.mode = 1000" + own + "\n");
    setter.set_active_config("a" + own);
    Configuration record;
    note("out of range", [&] { setter.update_config(&record); });
    errors.emplace_back("sections", text_of(sections_of(setter)));
    errors.emplace_back("fields", other_fields_of(record));
    return errors;
}

Outcome listed(std::size_t number)
{
    Outcome rows = {{"number", std::to_string(number)}};
    for (const dalvo::AppliedOption &row : dalvo::applied_options()) {
        rows.emplace_back(row.name, row.accepted());
    }
    return rows;
}

} // namespace

TEST(setters, used_by_many_threads_at_once_give_what_each_gives_alone)
{
    GivenValues values = dalvo::testing::values_unlike(Configuration());
    for (const char *name : {"verbosity", "theory.euf.dyn_ack_threshold", "theory.euf.dyn_ack_limit",
                             "theory.la.lazy_expl_threshold"}) {
        values.erase(name); // negative ones are dumped as what no int32 can be
    }
    expect_same_at_once([&](std::size_t number) { return configured(values, number); });
}

TEST(setters, that_throw_in_many_threads_at_once_throw_what_each_throws_alone)
{
    expect_same_at_once(refused);
}

TEST(applied_options, listed_by_many_threads_at_once_are_the_same)
{
    expect_same_at_once(listed);
}
