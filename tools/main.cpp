#include <algorithm>
#include <exception>
#include <iostream>
#include <memory>
#include <new>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "dalvo/inspect/words/printable.h"
#include "dalvo/version.h"
#include "tools/commands/commands.h"
#include "tools/commands/inputs.h"
#include "tools/commands/usage.h"
#include "tools/output/diagnostics.h"
#include "tools/output/helpformat.h"

namespace {

using namespace dalvo::tools;
namespace inspect = dalvo::inspect;

constexpr std::size_t longest_line = 500; // of a message that quotes the command line

std::vector<std::string> guarded_arguments(int argc, char **argv)
{
    std::vector<std::string> arguments;
    for (int i = 1; i < argc; ++i) {
        arguments.push_back(guarded(argv[i]));
    }
    return arguments;
}

void check_output()
{
    if (!std::cout.flush()) {
        throw Failure("standard output", "cannot be written");
    }
}

int run_parsed(const std::vector<Command> &commands)
{
    for (const Command &command : commands) {
        if (command.app->parsed()) {
            return command.run();
        }
    }
    throw CLI::RequiredError("A command");
}

int usage_error(const std::string &problem)
{
    std::cerr << "dalvo-config: " << problem << "\nRun with --help for more information.\n";
    return status_usage;
}

int run(int argc, char **argv)
{
    CLI::App tool("Answers questions about the configuration of a solver.", "dalvo-config");
    tool.formatter(std::make_shared<HelpFormatter>());
    tool.set_help_flag("-h,--help", "Tell how to use this, and do nothing else");
    tool.set_version_flag("-V,--version", std::string("dalvo-config ") + DALVO_VERSION, "Tell the version");
    tool.require_subcommand(0, 1); // none is refused later: CLI11 would not name a command that it does not know
    const std::vector<Command> commands = add_commands(tool);
    try {
        std::vector<std::string> arguments = guarded_arguments(argc, argv);
        const std::string problem = usage_problem(tool, arguments);
        if (!problem.empty()) {
            return usage_error(problem);
        }
        std::reverse(arguments.begin(), arguments.end()); // as CLI11 wants them in a vector
        tool.parse(arguments);
        const int status = run_parsed(commands);
        check_output();
        return status;
    } catch (const CLI::ParseError &e) {
        if (e.get_exit_code() == 0) {
            tool.exit(e); // help or the version, on standard output
            check_output();
            return status_fine;
        }
        return usage_error(inspect::shown(e.what(), longest_line));
    }
}

} // namespace

int main(int argc, char **argv)
{
    try {
        return run(argc, argv);
    } catch (const Failure &e) {
        std::cerr << "dalvo-config: " << e.what() << '\n';
        return e.status;
    } catch (const std::bad_alloc &) {
        std::cerr << "dalvo-config: out of memory\n";
        return status_usage;
    } catch (const std::exception &e) {
        std::cerr << "dalvo-config: " << inspect::shown(e.what(), longest_line) << '\n';
        return status_usage;
    }
}
