#include "dalvo/inspect/runs/run.h"

#include <cstddef>
#include <sstream>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "dalvo/inspect/runs/resolution.h"
#include "dalvo/inspect/runs/text.h"
#include "tests/support/odd_buffers.h"
#include "tests/inspect/shown_runs.h"
#include "tests/inspect/temporary_folder.h"
#include "tests/support/classic_locale.h"

namespace {

namespace inspect = dalvo::inspect;

using dalvo::inspect::Catalogue;
using dalvo::inspect::Resolution;
using dalvo::inspect::value_text;
using dalvo::testing::each_shown;
using dalvo::testing::PiecewiseBuffer;
using dalvo::testing::TemporaryFolder;

using Names = std::vector<std::string>;

static_assert(std::is_nothrow_move_constructible_v<inspect::Run> && std::is_nothrow_move_assignable_v<inspect::Run>);

/// "solver.cfg file a = 1\n" for each text.
Names shown_texts(const inspect::Run &run)
{
    Names texts;
    for (const auto &text : run.texts()) {
        texts.push_back(text->source + (text->kind == inspect::Text::Kind::built_in ? " built-in " : " file ") +
                        text->contents);
    }
    return texts;
}

/// "solver.cfg after 1: is a folder" for each input that could not be read.
Names shown_unreadable(const inspect::Run &run)
{
    Names inputs;
    for (const inspect::Run::Unreadable &input : run.unreadable()) {
        inputs.push_back(input.source + " after " + std::to_string(input.text) + ": " + input.error);
    }
    return inputs;
}

/// "fast 2" for each section.
Names shown_sections(const inspect::Run &run)
{
    Names sections;
    for (const inspect::Run::Section &section : run.sections()) {
        sections.push_back(section.name + " " + std::to_string(section.assignments));
    }
    return sections;
}

/// The option's value in force, as a text.
std::string value_in(const inspect::Run &run, const std::string &option)
{
    return value_text(Resolution(run).find(option)->value);
}

TEST(run, has_nothing_at_first)
{
    const inspect::Run run;
    EXPECT_EQ(&run.catalogue(), &Catalogue::standard());
    EXPECT_EQ(shown_texts(run), Names());
    EXPECT_EQ(shown_unreadable(run), Names());
    EXPECT_EQ(run.section(), "");
    EXPECT_EQ(shown_sections(run), Names({" 0"}));
    EXPECT_EQ(run.direct_texts().size(), 0U);
}

TEST(run, keeps_texts_and_inputs_that_cannot_be_read_in_their_order)
{
    const dalvo::testing::ClassicCLocale classic; // the message of a file is the C library's
    const TemporaryFolder folder;
    const Catalogue catalogue("verbosity = 1\n");
    const std::string file = folder.write("solver.cfg", "random_seed = 2\r\n");
    std::istringstream in("\xFF");
    PiecewiseBuffer buffer("verbosity = 1\n", 4, [] { throw std::runtime_error("device gone"); });
    std::istream failing(&buffer);
    inspect::Run run(catalogue);
    run.add_file(folder.path("gone"));
    run.add_text("a\nsource", std::string("a\0b", 3));
    run.add_stream("standard input", in);
    run.add_default();
    run.add_stream("pipe", failing);
    run.add_contents("two", {"", ""});
    run.add_contents("three", {"verbosity = 1\n", "is cut short"});
    run.add_file(file);
    run.add_text("two", "");
    EXPECT_EQ(shown_texts(run), Names({"a\nsource file a" + std::string(1, '\0') + "b", "standard input file \xFF",
                                       "built-in default built-in verbosity = 1\n", "two file ",
                                       file + " file random_seed = 2\r\n", "two file "}))
        << "a name may come twice, and bytes stay as they are";
    EXPECT_EQ(shown_unreadable(run), Names({folder.path("gone") + " after 0: No such file or directory",
                                            "pipe after 3: cannot be read to its end", "three after 4: is cut short"}))
        << "what was read of them is no part of the run";
    for (std::size_t position = 0; position < run.texts().size(); ++position) {
        for (const inspect::Filed &assignment : run.texts()[position]->assignments) {
            EXPECT_EQ(assignment.text, position);
        }
    }
}

TEST(run, knows_the_sections_of_all_its_texts)
{
    inspect::Run run;
    run.add_text("one.cfg", "k = 0\n[fast]\nk = 1\nl = 2\n[empty]\n[default]\nk = 3\n");
    run.add_text("two.cfg", "k = 4\n[slow, fast]\nk = 5\n[default, \xFF]\nk = 6\n");
    EXPECT_EQ(shown_sections(run),
              Names({" 3", "fast 3", "empty 0", "slow 1", "default 1", "\xFF 1"}))
        << "a line in several sections counts in each";
    run.add_text("three.cfg", "[a\nk = 7\n[meant] # note\nk = 8\n[b,,c]\nk = 9\n");
    EXPECT_EQ(shown_sections(run),
              Names({" 3", "fast 3", "empty 0", "slow 1", "default 1", "\xFF 1", "meant 1", "b 1"}))
        << "a malformed header that names none has no section";
    const struct {
        std::string name;
        bool is_there;
        const char *why;
    } rows[] = {
        {"", true, "the unnamed one always is"},
        {"fast", true, "in two texts"},
        {"empty", true, "without a line"},
        {"default", true, "among other names it is one"},
        {"Fast", false, "names are compared byte for byte"},
        {"fast ", false, "with a blank"},
        {std::string("fast\0", 5), false, "with a NUL"},
        {"\xFF", true, "a byte above 0x7F"},
        {"a", false, "of a malformed header"},
        {"b", true, "of one whose next name is empty"},
        {"c", false, "behind that name"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(run.has_section(row.name), row.is_there) << row.why;
    }
    const inspect::Run none;
    EXPECT_TRUE(none.has_section(""));
    EXPECT_FALSE(none.has_section("default"));
}

TEST(run, counts_a_line_below_a_header_that_names_its_section_twice_as_a_setter_files_it)
{
    inspect::Run run;
    run.add_text("one.cfg", "[a, a]\nk = 1\n");
    EXPECT_EQ(shown_sections(run), Names({" 0", "a 2"}));
}

TEST(run, takes_a_section_that_no_text_has)
{
    inspect::Run run;
    run.add_text("one.cfg", "[fast]\nverbosity = 2\n");
    run.choose_section(std::string("no\0where", 8));
    EXPECT_EQ(run.section(), std::string("no\0where", 8));
    EXPECT_FALSE(Resolution(run).applies());
    run.choose_section("fast");
    EXPECT_EQ(run.section(), "fast") << "the later choice is the one";
    EXPECT_EQ(value_in(run, "verbosity"), "2");
    run.choose_section("");
    EXPECT_EQ(value_in(run, "verbosity"), "0");
}

/// The assignments to `verbosity`, in the order in which they apply.
Names assignments_in(const inspect::Run &run)
{
    return each_shown(Resolution(run).assignments("verbosity"));
}

TEST(run, assigns_after_all_texts_in_the_order_of_the_calls)
{
    inspect::Run run;
    run.assign("verbosity", "0");
    run.add_text("one.cfg", "verbosity = 1\n[fast]\nverbosity = 2\n");
    run.choose_section("fast");
    run.assign("verbosity", "1");
    run.assign("verbosity", "2", "SOLVER_OPTIONS");
    run.assign("verbosity", "0", "SOLVER_OPTIONS");
    run.assign("verbosity", "1");
    EXPECT_EQ(run.direct_texts().size(), 3U) << "one for each that come one after the other from one source";
    EXPECT_EQ(assignments_in(run), Names({"one.cfg:1:13-14 '1' file 0: replaced",
                                          "one.cfg:3:13-14 '2' [fast] file 0: replaced",
                                          "command line:0:11-12 '0' command line 1: replaced",
                                          "command line:0:11-12 '1' command line 1: replaced",
                                          "SOLVER_OPTIONS:0:11-12 '2' command line 2: replaced",
                                          "SOLVER_OPTIONS:0:11-12 '0' command line 2: replaced",
                                          "command line:0:11-12 '1' command line 3: wins"}));
}

TEST(run, assigns_names_and_values_as_they_are)
{
    const struct {
        std::string name;
        std::string value;
        const char *option; // that is looked at
        std::string expected;
        bool applies;
        const char *why;
    } rows[] = {
        {"printer.defines_prefix", " a = b\n[fast]\n", "printer.defines_prefix", " a = b\n[fast]\n", true,
         "nothing is stripped or split"},
        {"printer.defines_prefix", std::string("\0\xFF", 2), "printer.defines_prefix", std::string("\0\xFF", 2), true,
         "bytes as any"},
        {"printer.defines_prefix", "", "printer.defines_prefix", "", true, "an empty string"},
        {"verbosity = 1\nverbosity", "2", "verbosity", "0", false, "no name of an option"},
        {"", "1", "verbosity", "0", false, "nor this"},
        {"verbosity", " 1", "verbosity", "0", false, "a blank before a number"},
        {"random_seed", "0", "random_seed", "1", false, "out of the range"},
    };
    for (const auto &row : rows) {
        inspect::Run run;
        run.assign(row.name, row.value);
        EXPECT_EQ(Resolution(run).applies(), row.applies) << row.why;
        EXPECT_EQ(value_in(run, row.option), row.expected) << row.why;
    }
}

TEST(run, shares_its_texts_with_a_copy_and_differs_from_it_then)
{
    inspect::Run run;
    run.add_text("one.cfg", "verbosity = 1\n[fast]\nverbosity = 2\n");
    run.add_contents("two.cfg", {"", "is a folder"});
    run.assign("random_seed", "7");
    const inspect::Run copy = run;
    EXPECT_EQ(copy.texts(), run.texts()) << "the very same";
    run.add_text("three.cfg", "verbosity = 0\n");
    run.add_contents("four.cfg", {"", "is a folder"});
    run.choose_section("fast");
    run.assign("random_seed", "8");
    EXPECT_EQ(copy.texts().size(), 1U);
    EXPECT_EQ(copy.unreadable().size(), 1U);
    EXPECT_EQ(copy.section(), "");
    EXPECT_EQ(value_in(copy, "verbosity"), "1");
    EXPECT_EQ(value_in(copy, "random_seed"), "7");
    EXPECT_EQ(value_in(run, "verbosity"), "2");
    EXPECT_EQ(value_in(run, "random_seed"), "8");
    inspect::Run other;
    other.assign("verbosity", "2");
    other = copy;
    EXPECT_EQ(assignments_in(other), assignments_in(copy)) << "nothing of its own is left";
    const inspect::Run moved = std::move(other);
    EXPECT_EQ(assignments_in(moved), assignments_in(copy));
}

TEST(run, adds_the_default_text_of_its_own_catalogue)
{
    const Catalogue catalogue("verbosity = 1\n[fast]\nverbosity = 2\n");
    inspect::Run run(catalogue);
    EXPECT_EQ(&run.catalogue(), &catalogue);
    EXPECT_EQ(value_in(run, "verbosity"), "0") << "the text takes no part until it is added";
    run.add_default();
    EXPECT_EQ(assignments_in(run), Names({"built-in default:1:13-14 '1' built-in 0: wins",
                                          "built-in default:3:13-14 '2' [fast] built-in 0: never applied"}));
    run.choose_section("fast");
    EXPECT_EQ(value_in(run, "verbosity"), "2") << "it may have sections";
    const Catalogue wrong("verbosity = 3\n");
    inspect::Run failing(wrong);
    failing.add_default();
    EXPECT_FALSE(Resolution(failing).applies()) << "and errors";
}

} // namespace
