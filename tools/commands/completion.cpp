#include <iostream>
#include <memory>
#include <string>

#include "tools/commands/commands.h"
#include "tools/completion/model.h"
#include "tools/output/diagnostics.h"

namespace dalvo::tools {

namespace {

int write_completion(const CLI::App &tool, const std::string &shell)
{
    const CompletionModel model = completion_model(tool);
    std::cout << (shell == "bash"  ? bash_completion(model)
                  : shell == "zsh" ? zsh_completion(model)
                                   : fish_completion(model));
    return status_fine;
}

} // namespace

Command add_completion(CLI::App &tool)
{
    const auto shell = std::make_shared<std::string>();
    CLI::App *const app = tool.add_subcommand("completion", "Write a completion script for a shell");
    app->add_option("SHELL", *shell, "The shell")
        ->required()
        ->check(CLI::IsMember({"bash", "zsh", "fish"}))
        ->type_name("")
        ->option_text("bash, zsh or fish");
    app->footer("It completes commands, flags, options after -o and their documented values, presets and files.\n"
                "\n"
                "Example:\n"
                "  source <(dalvo-config completion bash)\n"
                "\n"
                "In zsh the same, after compinit; or the script goes to a file _dalvo-config in a folder of fpath.\n"
                "\n"
                "In fish:\n"
                "  dalvo-config completion fish | source\n"
                "\n"
                "Exit status: 0 when the script is written; 2 for wrong usage.");
    return {app, [&tool, shell] { return write_completion(tool, *shell); }};
}

} // namespace dalvo::tools
