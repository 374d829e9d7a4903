#include <algorithm>
#include <iostream>
#include <memory>

#include "tools/commands/commands.h"
#include "tools/output/diagnostics.h"
#include "tools/commands/inputs.h"
#include "tools/output/show_settings.h"

namespace dalvo::tools {

namespace {

struct Request {
    Inputs inputs;
    bool only_changed = false;
    Notes notes;
    std::string format = "text";
};

int show(const Request &request)
{
    const bool as_json = request.format == "json";
    std::vector<ShownSetting> settings =
        shown_settings(applying_assignments(request.inputs), request.notes.origin || as_json);
    if (request.only_changed) {
        const auto is_default = [](const ShownSetting &shown) { return !shown.changed(); };
        settings.erase(std::remove_if(settings.begin(), settings.end(), is_default), settings.end());
    }
    if (as_json) {
        write_settings_json(std::cout, settings, request.notes);
    } else {
        write_settings_text(std::cout, settings, request.notes);
    }
    return status_fine;
}

} // namespace

Command add_show(CLI::App &tool)
{
    const auto request = std::make_shared<Request>();
    CLI::App *const app = tool.add_subcommand("show", "Write the settings in force as a configuration text");
    add_texts(*app, request->inputs);
    add_choices(*app, request->inputs);
    app->add_flag("--changed", request->only_changed,
                  "Only the settings that differ from the defaults: a text to be read after these")
        ->disable_flag_override();
    app->add_flag("--comments", request->notes.comments, "Above each setting its help and accepted values")
        ->disable_flag_override();
    app->add_flag("--origin", request->notes.origin, "Above each setting where it comes from, or what forces it")
        ->disable_flag_override();
    app->add_option("--format", request->format, "What to write: text or json")
        ->transform(plain)
        ->check(CLI::IsMember({"text", "json"}))
        ->type_name("FORMAT");
    app->footer("Example:\n"
                "  dalvo-config show solver.cfg --section fast -o random_seed=7 --changed --origin\n"
                "\n"
                "Exit status: 0 when the settings are written; 1 for a bad line, option or value, with nothing\n"
                "written; 2 for wrong usage or a file that cannot be read.");
    return {app, [request] { return show(*request); }};
}

} // namespace dalvo::tools
