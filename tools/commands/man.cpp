#include <iostream>

#include "tools/commands/commands.h"
#include "tools/output/diagnostics.h"
#include "tools/output/manpage.h"

namespace dalvo::tools {

Command add_man(CLI::App &tool)
{
    CLI::App *const app = tool.add_subcommand("man", "Write the manual page");
    app->group(""); // for those who install the tool, not in the list of commands
    app->footer("Example:\n"
                "  dalvo-config man > dalvo-config.1\n"
                "\n"
                "Exit status: 0 when the page is written; 2 for wrong usage.");
    return {app, [&tool] {
                std::cout << manual_page(tool);
                return status_fine;
            }};
}

} // namespace dalvo::tools
