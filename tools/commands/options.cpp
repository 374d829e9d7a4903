#include <iostream>
#include <memory>

#include "tools/commands/commands.h"
#include "tools/commands/inputs.h"
#include "tools/output/diagnostics.h"
#include "tools/output/listing.h"
#include "tools/output/terminal.h"

namespace dalvo::tools {

namespace {

struct Request {
    std::vector<std::string> patterns;
    std::string format = "text";
};

int list_options(const Request &request)
{
    const inspect::Catalogue &catalogue = inspect::Catalogue::standard();
    const Selection selection = select_options(catalogue, request.patterns);
    if (request.format == "json") {
        write_listing_json(std::cout, selection.options);
    } else if (request.format == "markdown") {
        write_listing_markdown(std::cout, selection.options);
    } else {
        write_listing_text(std::cout, selection.options, terminal_width());
    }
    for (const std::string &pattern : selection.unmatched) {
        std::cerr << "dalvo-config: " << unmatched_pattern(catalogue, pattern) << '\n';
    }
    return selection.unmatched.empty() ? status_fine : status_problem;
}

} // namespace

Command add_options(CLI::App &tool)
{
    const auto request = std::make_shared<Request>();
    CLI::App *const app = tool.add_subcommand("options", "List the options: types, defaults, accepted values, help");
    add_text_list(*app, "PATTERN", request->patterns,
                  "A part of a name, or a glob (* ? [...]) for whole names; without one, all options")
        ->type_name("");
    add_format(*app, request->format, {"text", "json", "markdown"});
    app->footer("Example:\n"
                "  dalvo-config options interpolation 'theory.la.*_mode'\n"
                "\n"
                "Exit status: 0 when every pattern matches an option; 1 when one matches none, with the others "
                "listed; 2 for wrong usage.");
    return {app, [request] { return list_options(*request); }};
}

} // namespace dalvo::tools
