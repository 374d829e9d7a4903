#include <memory>

#include "tools/commands/commands.h"
#include "tools/output/diagnostics.h"
#include "tools/output/explain_report.h"
#include "tools/inspection/settings.h"

namespace dalvo::tools {

namespace {

struct Arguments {
    std::string name;
    Inputs inputs;
    std::string format = "text";
};

void write(const Arguments &arguments, const Trail &trail, const Forcing *forcing)
{
    if (arguments.format == "json") {
        write_json_explanation(trail, forcing);
    } else {
        write_explanation(trail, forcing);
    }
}

int explain(const Arguments &arguments)
{
    const OptionInfo *const option = find_option(arguments.name);
    if (option == nullptr) {
        throw Failure("command line", unknown_option(arguments.name), status_usage);
    }
    const Inputs &inputs = arguments.inputs;
    const std::vector<Source> sources = read_sources(inputs);
    const std::vector<Assignment> assignments = applying_assignments(sources, inputs);
    const Trail trail = trail_of(*option, steps_of(sources, inputs));
    try {
        record_of(trail.applying());
    } catch (const Failure &) { // what is wrong with the option itself is part of the answer
        write(arguments, trail, nullptr);
        throw;
    }
    record_of(assignments); // throws for what is wrong with another option, replaced or not
    const Forcing forcing(assignments);
    write(arguments, trail, &forcing);
    return status_fine;
}

} // namespace

Command add_explain(CLI::App &tool)
{
    const auto arguments = std::make_shared<Arguments>();
    CLI::App *const app = tool.add_subcommand("explain", "Tell where the setting of an option comes from");
    add_text(*app, "NAME", arguments->name, "The option")->type_name("")->required();
    add_texts(*app, arguments->inputs);
    add_choices(*app, arguments->inputs);
    app->add_option("--format", arguments->format, "The form of the answer")
        ->type_name("FORMAT")
        ->check(CLI::IsMember({"text", "json"}));
    app->footer("Tells what the option means and accepts, every assignment to it, which one wins and why, the setting "
                "in force\n(a text in quotes), and which options force it or are forced by it.\n\n"
                "Example:\n"
                "  dalvo-config explain dpll.restart_strategy solver.cfg --section fast\n\n"
                "Exit status: 0 when the setting is explained; 1 for a bad file, option or value (when it is an "
                "assignment to\nthe option itself, its trail is written all the same); 2 for wrong usage, an unknown "
                "NAME or a file that\ncannot be read.");
    return {app, [arguments] { return explain(*arguments); }};
}

} // namespace dalvo::tools
