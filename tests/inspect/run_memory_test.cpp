// Runs, what they come to, what is found in them, and options that hosts describe, when the heap refuses.

#include <cstddef>
#include <functional>
#include <memory>
#include <new>
#include <optional>
#include <ostream>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "dalvo/inspect/inspect.h"
#include "dalvo/inspect/knowledge/links.h"
#include "dalvo/inspect/runs/text.h"
#include "tests/inspect/shown_runs.h"
#include "tests/inspect/temporary_folder.h"
#include "tests/support/classic_locale.h"
#include "tests/support/fixed_buffer.h"
#include "tests/support/heap_watch.h"
#include "tests/support/records.h"
#include "tests/support/refusals.h"

namespace {

namespace inspect = dalvo::inspect;

using dalvo::Configuration;
using dalvo::inspect::Catalogue;
using dalvo::inspect::Finding;
using dalvo::inspect::OptionExtras;
using dalvo::inspect::OptionInfo;
using dalvo::inspect::Resolution;
using dalvo::support::HeapWatch;
using dalvo::testing::differing_fields;
using dalvo::testing::each_shown;
using dalvo::testing::FixedBuffer;
using dalvo::testing::refuse_each;
using dalvo::testing::report_refused;
using dalvo::testing::shown;
using dalvo::testing::TemporaryFolder;

using Names = std::vector<std::string>;

const std::string section = "a section that needs memory of its own";
const std::string source = "a source whose name needs memory of its own";
const std::string text = "verbosity = 1\nprinter.defines_prefix = short\n[" + section +
                         ", another section that needs memory]\ninterpolation = true\nrandom_seed = 7\n[" + section +
                         "]\ntheory.la.enabled = false\n";
const std::string long_value = "a value that needs memory of its own";

// ---- Changing a run -------------------------------------------------------------------------------------------------

/// All that a run has.
Names state_of(const inspect::Run &run)
{
    Names state = {run.section()};
    for (const auto &part : run.texts()) {
        state.push_back(part->source + (part->kind == inspect::Text::Kind::built_in ? ", built in" : "") + "\n" +
                        part->contents);
        state.push_back(std::to_string(part->assignments.size()) + " in " + std::to_string(part->sections.size()));
    }
    for (const inspect::Run::Unreadable &input : run.unreadable()) {
        state.push_back(input.source + " after " + std::to_string(input.text) + ": " + input.error);
    }
    for (const auto &part : run.direct_texts()) {
        state.push_back(part->source + "\n" + part->contents);
    }
    return state;
}

/// A run with something of each kind; its lists have no room left for one more.
inspect::Run usual_run()
{
    inspect::Run run;
    run.add_text(source, text);
    run.add_contents("an input that needs memory of its own", {"", "an error that needs memory of its own"});
    run.choose_section(section);
    run.assign("printer.defines_prefix", "shorter");
    return run;
}

using Operation = std::function<void(inspect::Run &)>;

/// An operation on the usual run: it is done whole or not at all.
struct Changing {
    explicit Changing(const Operation &operation_at_hand)
        : operation(operation_at_hand), run(usual_run()), before(state_of(run))
    {
        inspect::Run other = usual_run();
        operation(other);
        after = state_of(other);
    }

    void act() { operation(run); }

    void refused()
    {
        EXPECT_EQ(state_of(run), before);
        act();
    }

    void done() const { EXPECT_EQ(state_of(run), after); }

    const Operation &operation;
    inspect::Run run;
    Names before;
    Names after;
};

std::size_t refusals_of(const Operation &operation)
{
    return report_refused(refuse_each<Changing>(operation));
}

TEST(run_memory, refused_to_a_text_adds_nothing)
{
    EXPECT_GE(refusals_of([](inspect::Run &run) { run.add_text(source, text); }), 15U);
    EXPECT_GE(refusals_of([](inspect::Run &run) { run.add_default(); }), 10U);
}

TEST(run_memory, refused_to_a_file_adds_neither_a_part_of_it_nor_an_error)
{
    const TemporaryFolder folder;
    const std::string path = folder.write("a file", text + std::string(50000, '#'));
    EXPECT_GE(refusals_of([&](inspect::Run &run) { run.add_file(path); }), 15U);
    const std::string gone = folder.path("a file that is not there");
    EXPECT_GE(refusals_of([&](inspect::Run &run) { run.add_file(gone); }), 3U);
}

TEST(run_memory, refused_to_a_stream_adds_neither_a_part_of_it_nor_an_error)
{
    std::istringstream in(text);
    EXPECT_GE(refusals_of([&](inspect::Run &run) {
        in.clear();
        in.seekg(0);
        run.add_stream(source, in);
    }), 15U);
}

TEST(run_memory, refused_to_a_choice_or_an_assignment_leaves_the_run_as_it_was)
{
    EXPECT_GE(refusals_of([](inspect::Run &run) { run.choose_section(section + ", another one"); }), 1U);
    EXPECT_GE(refusals_of([](inspect::Run &run) { run.assign(section, text); }), 3U);
    EXPECT_GE(refusals_of([](inspect::Run &run) { run.assign(section, text, source); }), 4U) << "of a new source";
}

// ---- What a run comes to --------------------------------------------------------------------------------------------

/// A run and what it comes to.
struct Resolved {
    explicit Resolved(const inspect::Run &resolved = usual_run()) : run(resolved), resolution(run)
    {
        all = shown(resolution);
        for (const OptionInfo &option : run.catalogue().options()) {
            assignments.push_back(each_shown(resolution.assignments(option.name)));
        }
    }

    inspect::Run run;
    Resolution resolution;
    std::string all;
    std::vector<Names> assignments;
};

struct Resolving {
    explicit Resolving(const Resolved &e) : expected(e) {}

    void act() { resolution.emplace(expected.run); }
    void refused() { act(); }
    void done() const
    {
        EXPECT_EQ(shown(*resolution), expected.all);
        EXPECT_EQ(differing_fields(resolution->record(), expected.resolution.record()), Names());
    }

    const Resolved &expected;
    std::optional<Resolution> resolution;
};

TEST(run_memory, refused_to_a_resolution_makes_no_part_of_one)
{
    EXPECT_GE(report_refused(refuse_each<Resolving>(Resolved())), 300U);
}

struct Filling {
    explicit Filling(const Resolved &e) : expected(e)
    {
        readable.add_text(source, text);
        readable.choose_section(section);
    }

    void act() { is_filled = inspect::fill_record(readable, &record); }
    void refused() { act(); }
    void done() const
    {
        EXPECT_TRUE(is_filled);
        EXPECT_EQ(differing_fields(record, Resolution(readable).record()), Names());
    }

    const Resolved &expected;
    inspect::Run readable;
    Configuration record = dalvo::testing::sentinel_record(0);
    bool is_filled = false;
};

TEST(run_memory, refused_to_a_filling_never_takes_a_part_of_the_run_for_the_whole)
{
    EXPECT_GE(report_refused(refuse_each<Filling>(Resolved())), 300U);
}

/// The operations of a resolution, one after the other.
struct Asking {
    explicit Asking(const Resolved &e) : expected(e) {}

    void act()
    {
        copy.emplace(expected.resolution);
        assignments = copy->assignments("printer.defines_prefix");
        forced = copy->forced_by("interpolation");
    }
    void refused() { act(); }
    void done() const
    {
        EXPECT_EQ(shown(*copy), expected.all);
        EXPECT_EQ(each_shown(assignments),
                  expected.assignments[expected.run.catalogue().position("printer.defines_prefix")]);
        EXPECT_EQ(forced.size(), 2U);
    }

    const Resolved &expected;
    std::optional<Resolution> copy;
    std::vector<inspect::Assigned> assignments;
    std::vector<std::size_t> forced;
};

TEST(run_memory, refused_to_a_question_leaves_the_answer_whole_the_next_time)
{
    EXPECT_GE(report_refused(refuse_each<Asking>(Resolved())), 10U);
}

// ---- What is found in a run -----------------------------------------------------------------------------------------

std::string printed(const std::vector<Finding> &findings)
{
    std::ostringstream out;
    inspect::print(out, findings);
    return out.str();
}

/// A run with a problem of about every kind.
struct Faulty {
    Faulty()
    {
        run.add_default();
        run.add_contents("an input that needs memory of its own", {"", "an error that needs memory of its own"});
        run.add_text("a source whose name needs memory of its own",
                     "\xEF\xBB\xBFverbosity = 9\nverbosity = high and far too long for a number\n"
                     "radnom_seed = 7\nseed = 8\nprinter.defines_prefix = \"quoted\" # and a note behind it\n"
                     "interpolation\npreprocessor.toplevel_propagation = true\ninterpolation = true\n"
                     "unsat_core_generation = 2\n[fast, fast]\nverbosity = 1\nverbosity = 2\n[default, x]\n"
                     "theory.la.enabled = false\ntheory.la.delay_alien = true\n[fats]\ndpll.restart_strategy = -1\n"
                     "[a section of a long name that does not end\nrandom_seed = 0\n[a,,b]\n[noted] # with a note\n"
                     "theory.la.detect_euf_fragment = true\ntheory.euf.enabled = false\nrandom_seed = 0\n");
        run.choose_section("fat");
        run.assign("verbosity", long_value);
        every_section = printed(inspect::check_every_section(run));
        chosen = printed(inspect::check(run));
    }

    inspect::Run run;
    std::string every_section;
    std::string chosen;
};

struct CheckingEverySection {
    explicit CheckingEverySection(const Faulty &e) : expected(e) {}

    void act() { findings = inspect::check_every_section(expected.run); }
    void refused() { act(); }
    void done() const { EXPECT_EQ(printed(findings), expected.every_section); }

    const Faulty &expected;
    std::vector<Finding> findings;
};

struct Checking : CheckingEverySection {
    using CheckingEverySection::CheckingEverySection;

    void act() { findings = inspect::check(expected.run); }
    void refused() { act(); }
    void done() const { EXPECT_EQ(printed(findings), expected.chosen); }
};

TEST(run_memory, refused_to_a_check_never_takes_a_part_of_the_findings_for_all)
{
    const Faulty faulty;
    EXPECT_GE(report_refused(refuse_each<CheckingEverySection>(faulty)), 300U);
    EXPECT_GE(report_refused(refuse_each<Checking>(faulty)), 100U);
}

/// The findings are printed into a stream that takes no memory.
struct Printing {
    explicit Printing(const Faulty &faulty)
        : expected(faulty.every_section), findings(inspect::check_every_section(faulty.run)), out(&buffer)
    {
    }

    void act() { inspect::print(out, findings); }

    void refused()
    {
        EXPECT_TRUE(out.good()) << "memory that runs out is no failure of the stream";
        EXPECT_EQ(buffer.text(), expected.substr(0, buffer.text().size())) << "a beginning";
        buffer.clear();
        act();
    }

    void done() const { EXPECT_EQ(buffer.text(), expected); }

    const std::string &expected;
    std::vector<Finding> findings;
    FixedBuffer buffer;
    std::ostream out;
};

TEST(run_memory, refused_while_findings_are_printed_leaves_a_beginning_of_them)
{
    EXPECT_GE(report_refused(refuse_each<Printing>(Faulty())), 100U);
}

// ---- Options that a host describes ----------------------------------------------------------------------------------

const std::string described = "host.an.option.whose.name.needs.memory";

/// Describes the option, with relations of every kind.
void describe_one(Catalogue &catalogue, const std::string &name = described)
{
    OptionExtras extras;
    extras.default_text = "1000";
    extras.range = dalvo::at_least(1);
    extras.matters_when = {{"theory.la.enabled", dalvo::is(true)}};
    extras.needs = {{dalvo::is_not(0), "model_generation", dalvo::is(true), false, "a reason that needs memory"}};
    catalogue.describe(name, dalvo::OPT_INT, "Options of a host, with memory:", "Help.\n- 1000 : a code\n", extras);
}

/// A catalogue with some options of a host, so that its lists have grown before.
std::unique_ptr<Catalogue> hosts_catalogue()
{
    auto catalogue = std::make_unique<Catalogue>("verbosity = 1\n" + described + " = 2000\n");
    describe_one(*catalogue, "host.first");
    describe_one(*catalogue, "host.second");
    return catalogue;
}

/// Whether the catalogue has the options that `hosts_catalogue` gives it, and no others.
void expect_nothing_added(const Catalogue &catalogue)
{
    const std::size_t options = Catalogue::standard().options().size() + 2;
    ASSERT_EQ(catalogue.options().size(), options);
    ASSERT_EQ(catalogue.links().options.size(), options) << "relations of an option that is not there";
    EXPECT_EQ(catalogue.find(described), nullptr);
    EXPECT_EQ(catalogue.dump_order().size(), options);
}

/// What a run comes to that follows all relations of the catalogue.
std::string resolved_with(const Catalogue &catalogue)
{
    inspect::Run run(catalogue);
    run.add_text("t.cfg", "host.first = 5\ntheory.la.enabled = false\n");
    return shown(Resolution(run));
}

/// Describes the option in `catalogue` with the n-th allocation refused, and with `and_later` all that follow it;
/// whether it was.
bool describe_with_refusal(Catalogue &catalogue, std::size_t n, bool and_later)
{
    HeapWatch::fail_allocation(n, and_later);
    bool thrown = false;
    try {
        describe_one(catalogue);
    } catch (const std::bad_alloc &) {
        thrown = true;
    }
    HeapWatch::fail_allocation(0);
    EXPECT_EQ(thrown, HeapWatch::failures() != 0);
    return thrown;
}

/// How many allocations there are to refuse.
std::size_t allocations_of_describe()
{
    std::size_t fits = 1;
    for (std::size_t step = 1U << 14U; step > 0; step /= 2) { // the largest number that is still refused, by halves
        const std::unique_ptr<Catalogue> catalogue = hosts_catalogue();
        const HeapWatch watch;
        fits += describe_with_refusal(*catalogue, fits + step, true) ? step : 0;
    }
    return fits;
}

/// Refuses each of the allocations to one and the same catalogue.
void refuse_each_to(bool and_later, std::size_t allocations)
{
    const std::unique_ptr<Catalogue> catalogue = hosts_catalogue();
    const std::string all = resolved_with(*catalogue);
    for (std::size_t n = 0; n <= allocations; ++n) {
        SCOPED_TRACE(::testing::Message() << "allocation " << n << (and_later ? " and all that follow" : ""));
        {
            const HeapWatch watch;
            // The last one goes first: the room by which lists have grown then stays, and is not lost.
            ASSERT_TRUE(describe_with_refusal(*catalogue, n == 0 ? allocations : n, and_later));
            EXPECT_TRUE(n == 0 || HeapWatch::outstanding_new() == 0) << HeapWatch::outstanding_new() << " are lost";
            EXPECT_EQ(HeapWatch::outstanding_malloc(), 0U);
            EXPECT_TRUE(HeapWatch::has_noted_all());
        }
        expect_nothing_added(*catalogue);
        if (::testing::Test::HasFailure()) {
            return; // a resolution would follow relations to nowhere
        }
        if (n % 64 == 0 || n == allocations) { // it takes longer than all the rest
            ASSERT_EQ(resolved_with(*catalogue), all);
        }
    }
    catalogue->describe("host.third", dalvo::OPT_BOOL, "", "");
    EXPECT_FALSE(catalogue->has_described_default(catalogue->position("host.third")));
    describe_one(*catalogue);
    ASSERT_NE(catalogue->find(described), nullptr);
    EXPECT_EQ(inspect::value_text(catalogue->find(described)->default_value), "2000") << "what the default text says";
    EXPECT_EQ(catalogue->links().options.size(), catalogue->options().size());
}

TEST(run_memory, refused_to_a_description_adds_no_option)
{
    const std::size_t allocations = report_refused(allocations_of_describe());
    EXPECT_GE(allocations, 1000U);
    for (const bool and_later : {false, true}) {
        refuse_each_to(and_later, allocations);
    }
}

// ---- Long values of string options ----------------------------------------------------------------------------------

/// A run with string options whose values need memory of their own.
inspect::Run long_run()
{
    inspect::Run run = usual_run();
    run.add_text("long.cfg", "debug.api_call_trace_filename = " + long_value + "\n");
    run.assign("printer.defines_prefix", long_value);
    return run;
}

TEST(run_memory, refused_to_a_resolution_with_a_long_value_makes_no_part_of_one)
{
    EXPECT_GE(report_refused(refuse_each<Resolving>(Resolved(long_run()))), 300U);
}

TEST(run_memory, refused_to_a_copy_with_a_long_value_makes_no_part_of_one)
{
    EXPECT_GE(report_refused(refuse_each<Asking>(Resolved(long_run()))), 20U);
}

} // namespace
