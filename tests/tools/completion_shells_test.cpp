// Types into real shells, at terminals, and sees which arguments the tool would have got. Where a shell is not
// installed, its test says so and is left out.

#include <sstream>

#include <gtest/gtest.h>

#include "tests/tools/shell_session.h"

namespace {

using namespace dalvo::tests;

struct Row {
    std::string typed;
    std::string arguments; // each in "<>"
    const char *why;
};

/// `setup` loads the completion; then a function of the tool's name shows the arguments that it gets.
void expect_arguments(ShellSession &shell, const std::string &setup, const std::vector<Row> &rows)
{
    shell.type(setup + "; dalvo-config() { printf 'got'; printf '<%s>' \"$@\"; echo; }; echo loa''ded\n");
    ASSERT_TRUE(shell.wait_for("loaded"));
    for (const Row &row : rows) {
        shell.type("dalvo-config " + row.typed + "\n");
        std::string arguments;
        ASSERT_TRUE(shell.wait_for("got<", &arguments)) << row.typed << ": " << row.why << "\n" << arguments;
        ASSERT_TRUE(shell.wait_for("\r\n", &arguments)) << row.typed << ": " << row.why << "\n" << arguments;
        EXPECT_EQ("<" + arguments, row.arguments) << row.typed << ": " << row.why;
    }
}

TEST(completion_at_a_terminal, works_in_bash)
{
    ShellSession bash({"bash", "--norc", "--noprofile", "-i"});
    expect_arguments(bash, "source <(dalvo-config completion bash)",
                     {
                         {"sh\t", "<show>", "a command"},
                         {"show --sec\tx", "<show><--section><x>", "a flag, and a blank after it"},
                         {"show -o theory.la.en\tf\t", "<show><-o><theory.la.enabled=false>",
                          "no blank after the =, and the name is kept"},
                         {"show --option=theory.la.en\tf\t", "<show><--option=theory.la.enabled=false>",
                          "two = in one argument"},
                         {"show -otheory.la.en\tf\t", "<show><-otheory.la.enabled=false>", "the short flag"},
                         {"show --preset QF_BVFPL\t", "<show><--preset><QF_BVFPLRA>", "a preset"},
                         {"show --preset=QF_BVFPL\t", "<show><--preset=QF_BVFPLRA>", "in the same argument"},
                         {"presets --format=j\t", "<presets><--format=json>", "a format"},
                         {"show pl\t", "<show><plain.cfg>", "a file"},
                         {"show tw\t", "<show><two words.cfg>", "a file whose name has to be quoted"},
                         {"show 'tw\t", "<show><two words.cfg>", "and is"},
                         {"show ~/pl\t", "<show><" + folder_with_files() + "/plain.cfg>", "a file below ~"},
                     });
}

#ifdef DALVO_TEST_ZSH

TEST(completion_at_a_terminal, works_in_zsh)
{
    ShellSession zsh({"zsh", "-f", "-i"});
    expect_arguments(zsh, "autoload -Uz compinit; compinit -u -D; source <(dalvo-config completion zsh)",
                     {
                         {"sh\t", "<show>", "a command"},
                         {"show --sec\tx", "<show><--section=x>", "a flag, with the = that zsh puts"},
                         {"show -o theory.la.en\tf\t", "<show><-o><theory.la.enabled=false>", "a name and a value"},
                         {"show --option=theory.la.en\tf\t", "<show><--option=theory.la.enabled=false>",
                          "two = in one argument"},
                         {"show -otheory.la.en\tf\t", "<show><-otheory.la.enabled=false>", "the short flag"},
                         {"show -o verbosity=1 -o theory.la.en\t", "<show><-o><verbosity=1><-o><theory.la.enabled=>",
                          "a flag that may be repeated"},
                         {"show --preset QF_BVFPL\t", "<show><--preset><QF_BVFPLRA>", "a preset"},
                         {"presets models QF_BVFPL\t", "<presets><models><QF_BVFPLRA>", "presets as arguments"},
                         {"presets --format=j\t", "<presets><--format=json>", "a format"},
                         {"completion z\t", "<completion><zsh>", "a shell"},
                         {"explain theory.la.en\tpl\t", "<explain><theory.la.enabled><plain.cfg>",
                          "an option, then files"},
                         {"show tw\t", "<show><two words.cfg>", "a file whose name has to be quoted"},
                     });
}

TEST(completion_at_a_terminal, works_in_zsh_from_a_folder_of_fpath)
{
    ShellSession zsh({"zsh", "-f", "-i"});
    expect_arguments(zsh,
                     "mkdir -p functions; dalvo-config completion zsh >functions/_dalvo-config; "
                     "fpath=($PWD/functions $fpath); autoload -Uz compinit; compinit -u -D",
                     {
                         {"show -o theory.la.en\tf\t", "<show><-o><theory.la.enabled=false>", "at its first use"},
                         {"sh\t", "<show>", "and later"},
                     });
}

TEST(completion_at_a_terminal, offers_the_meanings_of_values_in_zsh)
{
    ShellSession zsh({"zsh", "-f", "-i"});
    zsh.type("autoload -Uz compinit; compinit -u -D; source <(dalvo-config completion zsh); echo loa''ded\n");
    ASSERT_TRUE(zsh.wait_for("loaded"));
    zsh.type("dalvo-config show -o unsat_core_generation=\t\t");
    std::string before;
    EXPECT_TRUE(zsh.wait_for("use lemma-lifting algorithm", &before)) << before;
}

#endif

#ifdef DALVO_TEST_FISH

TEST(completion_in_fish, offers_what_a_place_takes)
{
    const std::vector<Row> rows = {
        {"sho", "show", "a command"},
        {"show --sec", "--section", "a flag"},
        {"show sho", "", "one command only"},
        {"nothing ", "", "no command of ours"},
        {"show -o theory.la.en", "theory.la.enabled=", "a name"},
        {"show -o theory.la.enabled=f", "theory.la.enabled=false", "a value"},
        {"show -o unsat_core_generation=", "unsat_core_generation=0 unsat_core_generation=1 unsat_core_generation=2",
         "the documented codes"},
        {"show -o random_seed=", "", "an int without codes"},
        {"show --option=theory.la.enabled=f", "--option=theory.la.enabled=false", "two = in one argument"},
        {"show -otheory.la.en", "-otheory.la.enabled=", "the short flag"},
        {"show -otheory.la.enabled=f", "-otheory.la.enabled=false", "and a value"},
        {"show -o verbosity=1 --option theory.la.en", "theory.la.enabled=", "the second one"},
        {"show --preset QF_ABVFP", "QF_ABVFP QF_ABVFPLRA", "presets"},
        {"presets models QF_ABVFP", "QF_ABVFP QF_ABVFPLRA", "presets as arguments"},
        {"presets --format ", "json text", "the formats of the command"},
        {"presets --format=j", "--format=json", "in the same argument"},
        {"completion ", "bash fish zsh", "the shells"},
        {"completion bash ", "", "one shell only"},
        {"explain theory.la.en", "theory.la.enabled", "the name of an option first"},
        {"explain -o verbosity=1 theory.la.en", "theory.la.enabled", "an assignment is no argument"},
        {"explain theory.la.enabled pl", "plain.cfg", "and files after it"},
        {"show pl", "plain.cfg", "a file"},
        {"diff x pl", "plain.cfg", "the second of diff"},
    };
    std::string lines;
    for (const Row &row : rows) {
        lines += "dalvo-config " + row.typed + "\n";
    }
    const std::string script = "dalvo-config completion fish | source\n"
                               "while read -l line; echo (complete -C $line | string replace -r \"\\t.*\" \"\"); end";
    std::istringstream output(output_of("HOME=$PWD fish -c '" + script + "'", lines));
    for (const Row &row : rows) {
        std::string offered;
        std::getline(output, offered);
        EXPECT_EQ(offered, row.arguments) << "'" << row.typed << "': " << row.why;
    }
}

TEST(completion_in_fish, offers_the_meanings_of_values)
{
    EXPECT_EQ(output_of("HOME=$PWD fish -c 'dalvo-config completion fish | source\n"
                        "complete -C \"dalvo-config show -o unsat_core_generation=2\"'"),
              "unsat_core_generation=2\tuse lemma-lifting algorithm.\n");
}

#endif

} // namespace
