#include <algorithm>
#include <iostream>
#include <iterator>
#include <memory>

#include "dalvo/inspect/findings/check.h"
#include "dalvo/inspect/findings/print.h"
#include "dalvo/inspect/words/printable.h"
#include "dalvo/inspect/words/words.h"
#include "tools/commands/commands.h"
#include "tools/commands/inputs.h"
#include "tools/output/diagnostics.h"
#include "tools/output/findings.h"

namespace dalvo::tools {

namespace {

using inspect::Finding;
using inspect::Severity;

struct CheckArguments {
    Inputs inputs;
    bool together = false;
    std::vector<std::string> unwanted; // names of warnings
    std::string format = "text";
    ColourChoice colour;
    bool warnings_are_errors = false;

    /// Whether the inputs are one run, and not each by itself.
    bool is_one_run() const
    {
        return together || !inputs.presets.empty() || !inputs.section.empty() || !inputs.overrides.empty();
    }
};

/// "A, B, C"
std::string listed(const std::vector<std::string> &names)
{
    std::string text;
    for (const std::string &name : names) {
        text += (text.empty() ? "" : ", ") + name;
    }
    return text;
}

bool contains(const std::vector<std::string> &words, std::string_view word)
{
    return std::find(words.begin(), words.end(), word) != words.end();
}

/// Throws Failure for a name that is no warning's.
void require_warnings(const std::vector<std::string> &names)
{
    const std::vector<std::string> known = inspect::warning_names();
    for (const std::string &name : names) {
        if (!contains(known, name)) {
            throw Failure("--no-warn", "no warning " + inspect::quoted(name) + "; the warnings are " + listed(known),
                          status_usage);
        }
    }
}

/// Each text by itself.
std::vector<Finding> findings_one_by_one(const Inputs &inputs)
{
    require_one_standard_input(inputs.files);
    std::vector<Finding> all;
    for (const std::string &path : inputs.files) {
        Inputs alone;
        alone.files = {path};
        alone.with_defaults = inputs.with_defaults;
        std::vector<Finding> findings = check_every_section(run_of(alone));
        std::move(findings.begin(), findings.end(), std::back_inserter(all));
    }
    return all;
}

/// The findings that the user wants to hear of.
std::vector<Finding> wanted_findings(const CheckArguments &arguments)
{
    std::vector<Finding> findings = !arguments.is_one_run()            ? findings_one_by_one(arguments.inputs)
                                    : arguments.inputs.section.empty() ? check_every_section(run_of(arguments.inputs))
                                                                       : inspect::check(run_of(arguments.inputs));
    const auto is_unwanted = [&](const Finding &finding) {
        return contains(arguments.unwanted, info_of(finding.rule).name); // never an error: see require_warnings
    };
    findings.erase(std::remove_if(findings.begin(), findings.end(), is_unwanted), findings.end());
    if (arguments.warnings_are_errors) {
        for (Finding &finding : findings) {
            finding.severity = Severity::error;
        }
    }
    return findings;
}

int run_check(const CheckArguments &arguments)
{
    require_warnings(arguments.unwanted);
    if (arguments.inputs.files.empty() && !arguments.is_one_run()) {
        throw CLI::RequiredError("FILE");
    }
    const std::vector<Finding> findings = wanted_findings(arguments);
    if (arguments.format == "json") {
        write_findings_json(std::cout, findings);
        if (!findings.empty()) {
            std::cerr << inspect::counts(findings) << '\n';
        }
    } else {
        report(findings, arguments.colour, true);
    }
    return status_of(findings);
}

} // namespace

Command add_check(CLI::App &tool)
{
    const auto arguments = std::make_shared<CheckArguments>();
    CLI::App *const app = tool.add_subcommand("check", "Report every problem of configuration texts");
    add_texts(*app, arguments->inputs);
    add_choices(*app, arguments->inputs);
    app->add_flag("--together", arguments->together, "Take all texts as one run, as `show` does, not each by itself")
        ->disable_flag_override();
    CLI::Option *const unwanted =
        add_text_list(*app, "--no-warn", arguments->unwanted, "A warning not to be given; may be repeated");
    unwanted->type_name("NAME")->allow_extra_args(false);
    app->add_flag("--werror", arguments->warnings_are_errors, "Take warnings for errors")->disable_flag_override();
    add_format(*app, arguments->format, {"text", "json"});
    add_colour(*app, arguments->colour);
    app->footer("Each FILE is checked by itself, with every section of it. With --preset, --section, -o or --together "
                "all of them are checked as one run, in their order; with --section only what applies then.\n"
                "\n"
                "Findings go to standard error; with --format json, to standard output.\n"
                "\n"
                "Warnings, each with the name that --no-warn takes:\n" +
                listed(inspect::warning_names()) +
                "\n\n"
                "Example:\n"
                "  dalvo-config check --werror --no-warn replaced solver.cfg\n"
                "\n"
                "Exit status: 0 when there is no error; 1 when there is one, or a warning with --werror; 2 for wrong "
                "usage, a section that no text has, or a file that cannot be read: the others are checked all the "
                "same.");
    return {app, [arguments] { return run_check(*arguments); }};
}

} // namespace dalvo::tools
