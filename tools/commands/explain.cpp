#include <iostream>
#include <memory>

#include "dalvo/inspect/words/printable.h"
#include "tools/commands/commands.h"
#include "tools/commands/inputs.h"
#include "tools/output/diagnostics.h"
#include "tools/output/explanation.h"
#include "tools/output/findings.h"

namespace dalvo::tools {

namespace {

struct Arguments {
    std::string name;
    Inputs inputs;
    std::string format = "text";
    ColourChoice colour;
};

int explain(const Arguments &arguments)
{
    const inspect::Run run = run_of(arguments.inputs);
    const inspect::Catalogue &catalogue = run.catalogue();
    if (catalogue.find(arguments.name) == nullptr) {
        throw Failure("command line",
                      "unknown option " + inspect::shown(arguments.name) +
                          inspect::did_you_mean(catalogue.suggestions(arguments.name)),
                      status_usage);
    }
    const inspect::Resolution resolution(run);
    const Explanation explanation{resolution, *resolution.find(arguments.name), resolution.assignments(arguments.name)};
    // What is wrong with the option itself is part of the answer; with anything else there is no answer.
    if (resolution.applies() || explanation.has_rejected()) {
        if (arguments.format == "json") {
            write_explanation_json(std::cout, explanation);
        } else {
            write_explanation(std::cout, explanation);
        }
    }
    return resolution.applies() ? status_fine : report_errors(run, arguments.colour);
}

} // namespace

Command add_explain(CLI::App &tool)
{
    const auto arguments = std::make_shared<Arguments>();
    CLI::App *const app = tool.add_subcommand("explain", "Tell where the setting of an option comes from");
    add_text(*app, "NAME", arguments->name, "The option")->type_name("")->required();
    add_texts(*app, arguments->inputs);
    add_choices(*app, arguments->inputs);
    add_format(*app, arguments->format, {"text", "json"});
    add_colour(*app, arguments->colour);
    app->footer("Tells what the option means and accepts, what it has to do with others, every assignment to it, which "
                "one wins and why, the setting in force (a text in quotes), whether it has an effect, and which "
                "options force it or are forced by it.\n\n"
                "Example:\n"
                "  dalvo-config explain dpll.restart_strategy solver.cfg --section fast\n\n"
                "Exit status: 0 when the setting is explained; 1 for a bad file, option or value (when it is an "
                "assignment to the option itself, its trail is written all the same); 2 for wrong usage, an unknown "
                "NAME, a section that no text has, or a file that cannot be read.");
    return {app, [arguments] { return explain(*arguments); }};
}

} // namespace dalvo::tools
