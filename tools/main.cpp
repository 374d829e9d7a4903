#include <algorithm>
#include <exception>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "tools/diagnostics.h"
#include "tools/show.h"

namespace {

constexpr int fine = 0;
constexpr int problem = 1;
constexpr int wrong_usage = 2;

using dalvo::tools::Inputs;
using Texts = std::vector<std::string>;

/// CLI11 takes "[a,b]" for a list of two. A NUL, which no argument of a process can hold, keeps such a text in one
/// piece until `plain` takes it off again.
std::string guarded(std::string text)
{
    if (!text.empty() && text.front() == '[' && text.back() == ']') {
        text += '\0';
    }
    return text;
}

std::string plain(const std::string &text)
{
    return text.substr(0, text.find('\0'));
}

/// The arguments as CLI11 wants them in a vector: the last one first.
Texts guarded_arguments(int argc, char **argv)
{
    Texts arguments;
    for (int i = argc - 1; i > 0; --i) {
        arguments.push_back(guarded(argv[i]));
    }
    return arguments;
}

/// Throws CLI::ValidationError for a text that is not NAME=VALUE.
void add_override(Inputs &inputs, const std::string &text)
{
    const std::size_t equals = text.find('=');
    if (equals == std::string::npos) {
        throw CLI::ValidationError("-o", "'" + dalvo::tools::escaped(text) + "' is not of the form NAME=VALUE");
    }
    inputs.overrides.emplace_back(text.substr(0, equals), text.substr(equals + 1));
}

void add_inputs(CLI::App &command, Inputs &inputs)
{
    command
        .add_option_function<Texts>(
            "FILE",
            [&inputs](const Texts &paths) {
                std::transform(paths.begin(), paths.end(), std::back_inserter(inputs.files), plain);
            },
            "Configuration texts, read in this order; - is standard input")
        ->type_name("");
    command
        .add_option_function<std::string>(
            "--section", [&inputs](const std::string &name) { inputs.section = plain(name); }, "The section to choose")
        ->type_name("NAME");
    command
        .add_option_function<Texts>(
            "-o,--option",
            [&inputs](const Texts &texts) {
                for (const std::string &text : texts) {
                    add_override(inputs, plain(text));
                }
            },
            "An assignment that wins over every file; may be repeated, the last one wins")
        ->type_name("NAME=VALUE")
        ->allow_extra_args(false);
    command.add_flag_callback(
        "--no-defaults", [&inputs] { inputs.with_defaults = false; }, "Start without the built-in default text");
}

int run(int argc, char **argv)
{
    CLI::App app("Answers questions about the configuration of a solver.", "dalvo-config");
    app.set_version_flag("--version", std::string("dalvo-config ") + DALVO_VERSION);
    app.require_subcommand(0, 1); // none is refused below: CLI11 would not name a command that it does not know

    Inputs inputs;
    CLI::App *const show = app.add_subcommand("show", "Write the settings in force as a configuration text");
    add_inputs(*show, inputs);
    show->footer("Example:\n"
                 "  dalvo-config show solver.cfg --section fast -o random_seed=7\n\n"
                 "Exit status: 0 when the settings are written; 1 for a bad file, option or value, with nothing "
                 "written;\n2 for wrong usage.");

    try {
        app.parse(guarded_arguments(argc, argv));
        if (app.get_subcommands().empty()) {
            throw CLI::RequiredError("A command");
        }
    } catch (const CLI::ParseError &e) {
        if (e.get_exit_code() == fine) {
            return app.exit(e); // help or the version, on standard output
        }
        std::cerr << "dalvo-config: " << e.what() << "\nRun with --help for more information.\n";
        return wrong_usage;
    }
    dalvo::tools::show(inputs, std::cout);
    if (!std::cout.flush()) {
        throw dalvo::tools::Failure("standard output", "cannot be written");
    }
    return fine;
}

} // namespace

int main(int argc, char **argv)
{
    try {
        return run(argc, argv);
    } catch (const std::exception &e) {
        std::cerr << "dalvo-config: " << e.what() << '\n';
        return problem;
    }
}
