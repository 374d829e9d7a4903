#include <exception>
#include <iostream>
#include <new>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "dalvo/version.h"
#include "tools/commands/commands.h"
#include "tools/output/diagnostics.h"
#include "tools/output/excerpt.h"
#include "tools/commands/inputs.h"

namespace {

using namespace dalvo::tools;

constexpr std::size_t longest_line = 500; // of a message that quotes the command line

/// The arguments as CLI11 wants them in a vector: the last one first.
std::vector<std::string> guarded_arguments(int argc, char **argv)
{
    std::vector<std::string> arguments;
    for (int i = argc - 1; i > 0; --i) {
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
            const int status = command.run();
            write_warnings();
            return status;
        }
    }
    throw CLI::RequiredError("A command");
}

int run(int argc, char **argv)
{
    CLI::App tool("Answers questions about the configuration of a solver.", "dalvo-config");
    tool.set_version_flag("--version", std::string("dalvo-config ") + DALVO_VERSION);
    tool.require_subcommand(0, 1); // none is refused later: CLI11 would not name a command that it does not know
    const std::vector<Command> commands = add_commands(tool);
    try {
        tool.parse(guarded_arguments(argc, argv));
        const int status = run_parsed(commands);
        check_output();
        return status;
    } catch (const CLI::ParseError &e) {
        if (e.get_exit_code() == 0) {
            tool.exit(e); // help or the version, on standard output
            check_output();
            return status_fine;
        }
        std::cerr << "dalvo-config: " << shown(e.what(), longest_line) << "\nRun with --help for more information.\n";
        return status_usage;
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
        std::cerr << "dalvo-config: " << shown(e.what(), longest_line) << '\n';
        return status_usage;
    }
}
