#include <unistd.h>

#include <algorithm>
#include <iostream>
#include <memory>
#include <sstream>

#include "dalvo/utils/textwrap.h"
#include "tools/inspection/check.h"
#include "tools/commands/commands.h"
#include "tools/output/diagnostics.h"
#include "tools/output/excerpt.h"
#include "tools/commands/inputs.h"
#include "tools/commands/presettexts.h"
#include "tools/output/report.h"
#include "tools/inspection/sources.h"
#include "tools/output/terminal.h"

namespace dalvo::tools {

namespace {

struct CheckInputs {
    std::vector<std::string> presets;
    std::vector<std::string> files;
    std::vector<std::string> unwanted; // names of warnings
    std::string format = "text";
    bool warnings_are_errors = false;
};

std::string join(const std::vector<std::string> &words, const std::string &separator)
{
    std::string joined;
    for (const std::string &word : words) {
        joined += (joined.empty() ? "" : separator) + word;
    }
    return joined;
}

bool contains(const std::vector<std::string> &words, std::string_view word)
{
    return std::find(words.begin(), words.end(), word) != words.end();
}

/// Throws Failure for a name that is no warning's.
void require_warnings(const std::vector<std::string> &names)
{
    const std::vector<std::string> known = warning_names();
    for (const std::string &name : names) {
        if (!contains(known, name)) {
            throw Failure("--no-warn", "no warning '" + shown(name) + "'; the warnings are " + join(known, ", "),
                          status_usage);
        }
    }
}

/// The findings of one text that the user wants to hear of.
std::vector<Finding> findings_in(const std::string &name, const std::string &contents, const CheckInputs &inputs)
{
    std::vector<Finding> findings = check_text(name, contents);
    const auto is_unwanted = [&](const Finding &finding) {
        return contains(inputs.unwanted, name_of(finding.problem)); // never an error: see require_warnings
    };
    findings.erase(std::remove_if(findings.begin(), findings.end(), is_unwanted), findings.end());
    if (inputs.warnings_are_errors) {
        for (Finding &finding : findings) {
            finding.severity = Severity::error;
        }
    }
    return findings;
}

/// All findings, text by text. What keeps a file from being read is added to `failures`.
std::vector<Finding> all_findings(const CheckInputs &inputs, std::vector<Failure> &failures)
{
    std::vector<Finding> all;
    const auto add = [&](const std::string &name, const std::string &contents) {
        std::vector<Finding> findings = findings_in(name, contents, inputs);
        std::move(findings.begin(), findings.end(), std::back_inserter(all));
    };
    for (const std::string &name : inputs.presets) {
        add("preset " + name, preset_named(name).text);
    }
    for (const std::string &path : inputs.files) {
        try {
            add(file_name(path), file_contents(path));
        } catch (const Failure &e) {
            failures.push_back(e);
        }
    }
    return all;
}

int check(const CheckInputs &inputs)
{
    require_warnings(inputs.unwanted);
    std::vector<Failure> failures;
    const std::vector<Finding> findings = all_findings(inputs, failures);
    if (inputs.format == "json") {
        write_json(std::cout, findings);
    } else {
        std::ostringstream report;
        write_text(report, findings, has_colour(STDERR_FILENO));
        std::cerr << report.str();
    }
    if (!findings.empty()) {
        std::cerr << counts(findings) << '\n';
    }
    int status = count(findings, Severity::error) != 0 ? status_problem : status_fine;
    for (const Failure &failure : failures) {
        std::cerr << "dalvo-config: " << failure.what() << '\n';
        status = std::max(status, failure.status);
    }
    return status;
}

std::string footer()
{
    constexpr std::size_t width = 78;
    return "Warnings, each with the name that --no-warn takes:\n  " +
           join(str::wrap(join(warning_names(), ", "), width), "\n  ") +
           "\n\n"
           "Example:\n"
           "  dalvo-config check --werror --no-warn replaced solver.cfg\n"
           "\n"
           "Exit status: 0 when there is no error; 1 when there is one, or a warning with --werror;\n"
           "2 for wrong usage or a file that cannot be read: the others are checked all the same.";
}

} // namespace

Command add_check(CLI::App &tool)
{
    const auto inputs = std::make_shared<CheckInputs>();
    CLI::App *const app = tool.add_subcommand("check", "Report every problem of configuration texts");
    add_text_list(*app, "FILE", inputs->files, "Configuration texts, each checked by itself; - is standard input")
        ->type_name("")
        ->required();
    add_presets_option(*app, inputs->presets);
    add_text_list(*app, "--no-warn", inputs->unwanted, "A warning not to be given; may be repeated")
        ->type_name("NAME")
        ->allow_extra_args(false);
    app->add_flag("--werror", inputs->warnings_are_errors, "Take warnings for errors");
    add_text(*app, "--format", inputs->format, "text, on standard error, or json, on standard output")
        ->type_name("text|json")
        ->check([](const std::string &format) {
            return format == "text" || format == "json" ? "" : "'" + shown(plain(format)) + "' is no format";
        });
    app->footer(footer());
    return {app, [inputs] { return check(*inputs); }};
}

} // namespace dalvo::tools
