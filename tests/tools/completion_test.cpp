// Drives the completion function in a real bash, with the variables that bash sets for it.

#include "tools/completion/model.h"

#include <algorithm>
#include <sstream>

#include <gtest/gtest.h>

#include "tests/tools/shell_session.h"
#include "tools/commands/commands.h"
#include "dalvo/inspect/knowledge/catalogue.h"

namespace {

using namespace dalvo::tests;
using namespace dalvo::tools;

/// Assignments of COMP_WORDS and the rest for a line in which "|" marks where bash cuts words besides at blanks, and
/// "^" the cursor, which else is at the end.
std::string variables(const std::string &marked_line)
{
    std::string line;
    std::vector<std::string> words{""};
    std::size_t point = std::string::npos;
    std::size_t word_at_point = 0;
    for (const char c : marked_line) {
        if (c == '^') {
            point = line.size();
            word_at_point = words.size() - 1;
        } else if (c == ' ' || c == '|') {
            line += c == ' ' ? " " : "";
            words.emplace_back();
        } else {
            line += c;
            words.back() += c;
        }
    }
    std::string text = "COMP_LINE=" + shell_quoted(line) +
                       " COMP_POINT=" + std::to_string(std::min(point, line.size())) + " COMP_CWORD=" +
                       std::to_string(point == std::string::npos ? words.size() - 1 : word_at_point) + " COMP_WORDS=(";
    for (const std::string &word : words) {
        text += shell_quoted(word) + " ";
    }
    return text + ")";
}

/// What the function offers for each line, its words parted by blanks. `setup` is bash, run first.
std::vector<std::string> completed(const std::vector<std::string> &lines, const std::string &setup = "")
{
    std::string script = "source <(dalvo-config completion bash)\n" + setup + "\n";
    for (const std::string &line : lines) {
        script += variables("dalvo-config " + line) +
                  "\n_dalvo_config dalvo-config 2>&1\n(IFS=' '; printf '%s\\n' \"${COMPREPLY[*]}\")\n";
    }
    std::istringstream output(output_of("bash --norc --noprofile -s", script));
    std::vector<std::string> replies;
    for (std::string reply; std::getline(output, reply);) {
        replies.push_back(reply);
    }
    return replies;
}

struct Row {
    const char *line;
    const char *expected;
    const char *why;
};

void expect_completed(const std::vector<Row> &rows, const std::string &setup = "")
{
    std::vector<std::string> lines;
    for (const Row &row : rows) {
        lines.emplace_back(row.line);
    }
    const std::vector<std::string> replies = completed(lines, setup);
    ASSERT_EQ(replies.size(), rows.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        EXPECT_EQ(replies[i], rows[i].expected) << "'" << rows[i].line << "': " << rows[i].why;
    }
}

std::string joined(const std::vector<std::string> &words)
{
    std::string text;
    for (const std::string &word : words) {
        text += (text.empty() ? "" : " ") + word;
    }
    return text;
}

TEST(bash_completion, offers_what_a_place_takes)
{
    expect_completed({
        {"", "show check options explain diff sections presets completion help", "all commands but the hidden one"},
        {"sho", "show", "a command's beginning"},
        {"show^ x", "show", "the cursor is before the line's end"},
        {"se^xyz", "sections", "the cursor is within a word"},
        {"--v", "--version", "a flag before any command"},
        {"--version s", "show sections", "a command after a flag"},
        {"nothing ", "", "no command of ours"},
        {"man ", "", "it takes nothing"},
        {"show --sec", "--section", "a flag of the command"},
        {"show --section ", "", "no list of these"},
        {"show --preset QF_ABVFP", "QF_ABVFP QF_ABVFPLRA", "presets after the flag"},
        {"show --preset|=|QF_ABVFP", "QF_ABVFP QF_ABVFPLRA", "in the same argument: bash keeps what is before ="},
        {"presets QF_ABVFP", "QF_ABVFP QF_ABVFPLRA", "presets as arguments"},
        {"presets models QF_ABVFP", "QF_ABVFP QF_ABVFPLRA", "any number of them"},
        {"presets --format ", "text json", "the formats of the command"},
        {"presets --format|=|j", "json", "in the same argument"},
        {"presets --format json QF_ABVFP", "QF_ABVFP QF_ABVFPLRA", "the format was no argument"},
        {"check --no-warn rep", "replaced repeated-name", "the names of warnings"},
        {"check --no-warn replaced pl", "plain.cfg", "the flag has its name"},
        {"completion ", "bash zsh fish", "the shells"},
        {"completion z", "zsh", "a shell's beginning"},
        {"completion bash ", "", "one shell only"},
        {"options theory.la.en", "theory.la.enabled", "names of options as patterns"},
        {"options theory.la.enabled theory.la.de", "theory.la.delay_alien theory.la.detect_euf_fragment "
                                                   "theory.la.deduction_enabled", "any number of them"},
        {"explain theory.la.en", "theory.la.enabled", "the name of an option first"},
        {"explain theory.la.enabled pl", "plain.cfg", "and files after it"},
        {"explain - pl", "plain.cfg", "a dash alone is no flag"},
        {"explain -o x|=|1 theory.la.en", "theory.la.enabled", "an assignment is no argument"},
    });
}

TEST(bash_completion, offers_files_elsewhere)
{
    expect_completed({
        {"show pl", "plain.cfg", "a file"},
        {"show two", "two words.cfg", "with a blank"},
        {"show - pl", "plain.cfg", "standard input is a file like any other"},
        {"show --no-defaults pl", "plain.cfg", "the flag takes nothing"},
        {"show --preset models pl", "plain.cfg", "the flag has what it takes"},
        {"show --preset|=|models pl", "plain.cfg", "in the same argument"},
        {"show -o verbosity|=|1 pl", "plain.cfg", "a value with an ="},
        {"show -o verbosity|= pl", "plain.cfg", "a blank ends the assignment"},
        {"show -- pl", "plain.cfg", "after the end of the flags"},
        {"show -- --sec", "", "no flags after their end"},
        {"check pl", "plain.cfg", "of check"},
        {"diff pl", "plain.cfg", "of diff"},
        {"diff x pl", "plain.cfg", "the second of diff"},
        {"sections pl", "plain.cfg", "of sections"},
    });
}

TEST(bash_completion, offers_options_and_their_values_in_assignments)
{
    expect_completed({
        {"show -o theory.la.en", "theory.la.enabled=", "a name, with its ="},
        {"show --option theory.la.en", "theory.la.enabled=", "the long name of the flag"},
        {"show --option|=|theory.la.en", "theory.la.enabled=", "in the same argument"},
        {"show -otheory.la.en", "-otheory.la.enabled=", "in the same argument, of the short name"},
        {"show -o verbosity|=|1 -o theory.la.en", "theory.la.enabled=", "the second one"},
        {"show -o theory.la.enabled|=", "true false", "the values of a bool"},
        {"show -o theory.la.enabled|=|t", "true", "their beginning"},
        {"show -o theory.la.enabled|=|x", "", "no value begins so"},
        {"show --option|=|theory.la.enabled|=|f", "false", "in the same argument"},
        {"show -otheory.la.enabled|=|f", "false", "in the same argument, of the short name"},
        {"show -o dpll.restart_strategy|=", "0 1 2 3", "the documented codes of an int"},
        {"show -o random_seed|=", "", "an int without codes"},
        {"show -o debug.api_call_trace_filename|=", "", "a string"},
        {"show -o nothing|=", "", "no option of ours"},
    });
}

TEST(bash_completion, gives_whole_words_where_an_equals_sign_does_not_break_them)
{
    expect_completed(
        {
            {"show -o theory.la.en", "theory.la.enabled=", "a name"},
            {"show -o theory.la.enabled=t", "theory.la.enabled=true", "a value"},
            {"show --option=theory.la.en", "--option=theory.la.enabled=", "in the same argument"},
            {"show --option=theory.la.enabled=f", "--option=theory.la.enabled=false", "a value in the same argument"},
            {"show -otheory.la.enabled=f", "-otheory.la.enabled=false", "of the short name"},
            {"presets --format=j", "--format=json", "a flag's value"},
            {"show -o verbosity=1 pl", "plain.cfg", "an assignment before"},
        },
        "COMP_WORDBREAKS=${COMP_WORDBREAKS//=}");
}

TEST(bash_completion, offers_the_flags_that_each_command_has)
{
    CLI::App tool("", "dalvo-config");
    tool.set_version_flag("--version", "");
    add_commands(tool);
    std::vector<std::string> lines = {"-"};
    std::vector<std::string> expected = {"-h --help -V --version"};
    for (const CLI::App *app : tool.get_subcommands({})) {
        std::string flags;
        for (const CLI::Option *option : app->get_options({})) {
            if (option->nonpositional()) {
                std::string names = option->get_name(false, true); // "-h,--help"
                std::replace(names.begin(), names.end(), ',', ' ');
                flags += (flags.empty() ? "" : " ") + names;
            }
        }
        lines.push_back(app->get_name() + " -");
        expected.push_back(app->get_group().empty() ? "" : flags);
    }
    EXPECT_EQ(completed(lines), expected);
}

TEST(bash_completion, offers_every_option_with_the_values_that_its_help_lists)
{
    std::vector<std::string> lines = {"show -o "};
    std::vector<std::string> names;
    std::vector<std::string> expected;
    for (const dalvo::inspect::OptionInfo &option : dalvo::inspect::Catalogue::standard().options()) {
        std::vector<std::string> values;
        if (option.type == dalvo::OPT_BOOL) {
            values = {"true", "false"};
        }
        for (const dalvo::inspect::Code &code : option.codes) {
            values.push_back(std::to_string(code.value));
        }
        names.push_back(option.name + "=");
        lines.push_back("show -o " + option.name + "|=");
        expected.push_back(joined(values));
    }
    expected.insert(expected.begin(), joined(names));
    EXPECT_EQ(completed(lines), expected);
}

TEST(members_of, reads_them_off_the_check_or_the_type)
{
    CLI::App app;
    std::string target;
    const CLI::Option *const checked =
        app.add_option("--a", target)->check(CLI::IsMember({"x-1", "y"}))->type_name("KIND");
    const CLI::Option *const single = app.add_option("--b", target)->check(CLI::IsMember({"x"}));
    const CLI::Option *const typed = app.add_option("--d", target)->type_name("x|y");
    const CLI::Option *const unchecked = app.add_option("--c", target)->type_name("NAME=VALUE");
    EXPECT_EQ(members_of(*checked), (std::vector<std::string>{"x-1", "y"}));
    EXPECT_EQ(members_of(*single), (std::vector<std::string>{"x"}));
    EXPECT_EQ(members_of(*typed), (std::vector<std::string>{"x", "y"}));
    EXPECT_EQ(members_of(*unchecked), std::vector<std::string>{});
    EXPECT_EQ(value_name_of(*checked), "KIND");
    EXPECT_EQ(value_name_of(*unchecked), "NAME=VALUE");
}

TEST(shell_quoted, is_read_back_by_the_shell)
{
    for (const std::string &text : {std::string(), std::string("a b"), std::string("it's"), std::string("''"),
                                    std::string("$x `y` \\ \"z\" \t !")}) {
        EXPECT_EQ(output_of("printf %s " + shell_quoted(text)), text);
    }
}

} // namespace
