#include "tools/output/manpage.h"

#include <gtest/gtest.h>

#include "tests/tools/shell_session.h"
#include "tools/commands/commands.h"

namespace {

using namespace dalvo::tests;
using namespace dalvo::tools;

std::string shown(const CLI::App &tool)
{
    return output_of("groff -man -ww -Tascii -P-cbou -rLL=78n 2>&1", manual_page(tool));
}

TEST(roff_text, escapes_what_roff_would_take_for_its_own)
{
    const struct {
        const char *text;
        const char *expected;
        const char *why;
    } rows[] = {
        {"", "", "nothing"},
        {"plain words", "plain words", "nothing to escape"},
        {"--flag", "\\-\\-flag", "dashes that can be copied"},
        {"a\\b", "a\\(rsb", "the escape character"},
        {".x", "\\&.x", "a request"},
        {"'x", "\\&\\(aqx", "the other kind of request"},
        {"a.\n.b\n'c", "a.\n\\&.b\n\\&\\(aqc", "a request on a further line"},
        {"a .b it's", "a .b it\\(aqs", "no request within a line"},
        {"`a` ^ ~", "\\(gaa\\(ga \\(ha \\(ti", "characters that are typeset otherwise"},
        {"\xC3\xA9", "\xC3\xA9", "bytes above 0x7F"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(roff_text(row.text), row.expected) << row.why;
    }
}

#ifdef DALVO_TEST_MAN

TEST(manual_page, shows_texts_as_they_stand_in_the_help)
{
    CLI::App tool("Does nothing.", "tool");
    tool.set_version_flag("--version", std::string("tool 1.2"));
    CLI::App *const command = tool.add_subcommand("go", ".start of \\e it's `so`");
    std::string target;
    std::vector<std::string> targets;
    command->add_option("-x,--extra", target, "'quoted")->type_name("NAME");
    command->add_option("--form", target, "forms")->check(CLI::IsMember({"a", "b"}))->type_name("FORM");
    command->add_option("FILE", targets, "files")->required();
    command->footer("Example:\n  tool go -x 'a\\n'   .b\n  .c\n\nOne\nparagraph.");
    const std::string page = shown(tool);
    EXPECT_NE(page.find("tool 1.2"), std::string::npos) << page;
    EXPECT_NE(page.find("\nNAME\n       tool - does nothing\n"), std::string::npos) << page;
    const std::string expected = "   go\n"
                                 "       tool go [--extra NAME] [--form a|b] FILE...\n"
                                 "\n"
                                 "       .start of \\e it's `so`.\n"
                                 "\n"
                                 "       FILE...\n"
                                 "              files\n"
                                 "\n"
                                 "       -x, --extra NAME\n"
                                 "              'quoted\n"
                                 "\n"
                                 "       --form a|b\n"
                                 "              forms\n"
                                 "\n"
                                 "       Example:\n"
                                 "           tool go -x 'a\\n'   .b\n"
                                 "           .c\n"
                                 "\n"
                                 "       One paragraph.\n";
    EXPECT_NE(page.find(expected), std::string::npos) << page;
}

#endif

TEST(manual_page, leaves_out_what_the_help_leaves_out)
{
    CLI::App tool("Does nothing.", "tool");
    tool.set_version_flag("--version", std::string("tool 1.2"));
    tool.add_subcommand("hidden", "secret")->group("");
    std::string target;
    tool.add_subcommand("go", "open")->add_option("--inner", target, "secret")->group("");
    const std::string page = manual_page(tool);
    EXPECT_EQ(page.find("hidden"), std::string::npos);
    EXPECT_EQ(page.find("secret"), std::string::npos);
    EXPECT_NE(page.find(".SS go\n"), std::string::npos);
}

TEST(manual_page, has_each_command_with_each_of_its_options)
{
    CLI::App tool("", "dalvo-config");
    add_commands(tool);
    const std::string page = output_of("dalvo-config man");
    for (const CLI::App *app : tool.get_subcommands([](const CLI::App *each) { return !each->get_group().empty(); })) {
        const std::size_t start = page.find("\n.SS " + app->get_name() + "\n");
        ASSERT_NE(start, std::string::npos) << app->get_name();
        const std::string part = page.substr(start, page.find("\n.S", start + 1) - start);
        EXPECT_NE(part.find(roff_text(app->get_description())), std::string::npos) << app->get_name();
        for (const CLI::Option *option : app->get_options({})) {
            if (option != app->get_help_ptr()) {
                const std::string name = option->get_name(option->get_positional());
                EXPECT_NE(part.find(roff_text(name)), std::string::npos) << app->get_name() << " " << name;
                EXPECT_NE(part.find(roff_text(option->get_description())), std::string::npos) << name;
            }
        }
    }
}

#ifdef DALVO_TEST_MAN

TEST(manual_page, renders_without_a_warning)
{
    const std::string errors =
        output_of("dalvo-config man >dalvo-config.1 && groff -man -ww -Tutf8 -z dalvo-config.1 2>&1; "
                  "LC_ALL=C.UTF-8 MANWIDTH=80 man --warnings -l dalvo-config.1 2>&1 >page; echo status $?");
    EXPECT_EQ(errors, "status 0\n");
    const std::string page = output_of("cat page; rm page dalvo-config.1");
    EXPECT_NE(page.find("DALVO-CONFIG(1)"), std::string::npos) << page;
    EXPECT_NE(page.find("\nENVIRONMENT\n"), std::string::npos) << page;
}

#endif

TEST(manual_page, is_written_by_the_build)
{
    EXPECT_EQ(output_of("cat '" DALVO_CONFIG_DIR "/dalvo-config.1'"), output_of("dalvo-config man"));
}

} // namespace
