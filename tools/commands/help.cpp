#include <iostream>
#include <memory>

#include "dalvo/inspect/words/printable.h"
#include "tools/commands/commands.h"
#include "tools/commands/inputs.h"
#include "tools/commands/usage.h"
#include "tools/output/diagnostics.h"

namespace dalvo::tools {

namespace {

int write_help(const CLI::App &tool, const std::string &name)
{
    const std::string problem = name.empty() ? "" : usage_problem(tool, {name});
    if (!problem.empty()) {
        throw Failure("help", problem, status_usage);
    }
    // App::help writes the help of the command that was given, which is this one.
    const CLI::App &of = name.empty() ? tool : *tool.get_subcommand(name);
    const std::string full_name = (name.empty() ? "" : tool.get_name() + " ") + of.get_name();
    std::cout << of.get_formatter()->make_help(&of, full_name, CLI::AppFormatMode::Normal);
    return status_fine;
}

} // namespace

Command add_help(CLI::App &tool)
{
    const auto name = std::make_shared<std::string>();
    CLI::App *const app = tool.add_subcommand("help", "Tell how to use the tool, or a command");
    add_text(*app, "COMMAND", *name, "The command; none for the tool itself")->type_name("");
    app->footer("Example:\n"
                "  dalvo-config help check\n"
                "\n"
                "Exit status: 0 when the help is written; 2 for a command that there is not.");
    return {app, [&tool, name] { return write_help(tool, *name); }};
}

} // namespace dalvo::tools
