#include <iostream>
#include <memory>

#include "dalvo/inspect/runs/settingstext.h"
#include "tools/commands/commands.h"
#include "tools/commands/inputs.h"
#include "tools/output/diagnostics.h"
#include "tools/output/findings.h"
#include "tools/output/settings.h"

namespace dalvo::tools {

namespace {

struct Request {
    Inputs inputs;
    inspect::SettingsStyle style;
    std::string format = "text";
    ColourChoice colour;
};

int show(const Request &request)
{
    const inspect::Run run = run_of(request.inputs);
    const inspect::Resolution resolution(run);
    if (!resolution.applies()) {
        return report_errors(run, request.colour);
    }
    const std::vector<const inspect::Setting *> settings = chosen_settings(resolution, request.style);
    if (request.format == "json") {
        write_settings_json(std::cout, settings, request.style);
        return status_fine;
    }
    const std::string reason = why_not_written(settings);
    if (!reason.empty()) {
        throw Failure("show", reason + "; --format json can");
    }
    write_settings(std::cout, settings, request.style);
    return status_fine;
}

} // namespace

Command add_show(CLI::App &tool)
{
    const auto request = std::make_shared<Request>();
    CLI::App *const app = tool.add_subcommand("show", "Write the settings in force as a configuration text");
    add_texts(*app, request->inputs);
    add_choices(*app, request->inputs);
    app->add_flag("--changed", request->style.only_changed,
                  "Only the settings that differ from the defaults: a text to be read after these")
        ->disable_flag_override();
    app->add_flag("--comments", request->style.has_help, "Above each setting its help and accepted values")
        ->disable_flag_override();
    app->add_flag("--origin", request->style.has_origin, "Above each setting where it comes from, or what forces it")
        ->disable_flag_override();
    add_format(*app, request->format, {"text", "json"});
    add_colour(*app, request->colour);
    app->footer("Example:\n"
                "  dalvo-config show solver.cfg --section fast -o random_seed=7 --origin\n"
                "\n"
                "Exit status: 0 when the settings are written; 1 for a bad line, option or value, or a value that no "
                "text can say, with nothing written; 2 for wrong usage, a section that no text has, or a file that "
                "cannot be read.");
    return {app, [request] { return show(*request); }};
}

} // namespace dalvo::tools
