#include "tools/commands/commands.h"

namespace dalvo::tools {

std::vector<Command> add_commands(CLI::App &tool)
{
    return {
        add_show(tool),     add_check(tool),   add_options(tool),    add_explain(tool), add_diff(tool),
        add_sections(tool), add_presets(tool), add_completion(tool), add_help(tool),    add_man(tool),
    };
}

} // namespace dalvo::tools
