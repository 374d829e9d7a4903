#include <algorithm>
#include <iostream>
#include <memory>

#include "dalvo/inspect/findings/check.h"
#include "dalvo/inspect/words/printable.h"
#include "tools/commands/commands.h"
#include "tools/commands/inputs.h"
#include "tools/commands/presettexts.h"
#include "tools/output/diagnostics.h"
#include "tools/output/findings.h"
#include "tools/output/jsontext.h"
#include "tools/output/table.h"

namespace dalvo::tools {

namespace {

struct Arguments {
    std::vector<std::string> presets;
    std::vector<std::string> files;
    std::string format = "text";
    ColourChoice colour;
};

/// A text and the sections to be listed of it.
struct Source {
    std::string name;
    std::vector<inspect::Run::Section> sections;
};

/// What keeps the text of `run` from being loaded is added to `findings`.
Source source_of(const std::string &name, const inspect::Run &run, std::vector<inspect::Finding> &findings)
{
    for (inspect::Finding &finding : check_every_section(run)) {
        if (finding.rule == inspect::Rule::unreadable_file || finding.rule == inspect::Rule::malformed_header ||
            finding.rule == inspect::Rule::byte_order_mark) {
            findings.push_back(std::move(finding));
        }
    }
    Source source{name, run.sections()};
    if (source.sections.front().assignments == 0) { // every text has it, whether it says anything there or not
        source.sections.erase(source.sections.begin());
    }
    return source;
}

void write_text(const std::vector<Source> &sources)
{
    std::size_t digits = 0; // of the largest number
    for (const Source &source : sources) {
        for (const inspect::Run::Section &section : source.sections) {
            digits = std::max(digits, std::to_string(section.assignments).size());
        }
    }
    for (const Source &source : sources) {
        if (sources.size() > 1) {
            std::cout << (&source == &sources.front() ? "" : "\n") << inspect::escaped(source.name) << ":\n";
        }
        std::vector<std::vector<std::string>> rows;
        for (const inspect::Run::Section &section : source.sections) {
            const std::string number = std::to_string(section.assignments);
            rows.push_back({std::string(digits - number.size(), ' ') + number,
                            section.name.empty() ? "(always applies)" : inspect::escaped(section.name)});
        }
        write_table(std::cout, rows);
    }
}

void write_json(const std::vector<Source> &sources)
{
    using Json = nlohmann::ordered_json;
    Json files = Json::array();
    for (const Source &source : sources) {
        Json sections = Json::array();
        for (const inspect::Run::Section &section : source.sections) {
            Json listed;
            listed["name"] = section.name.empty() ? Json() : Json(section.name);
            listed["assignments"] = section.assignments;
            sections.push_back(std::move(listed));
        }
        files.push_back({{"file", source.name}, {"sections", std::move(sections)}});
    }
    std::cout << json_text(files);
}

int list_sections(const Arguments &arguments)
{
    require_one_standard_input(arguments.files);
    std::vector<Source> sources;
    std::vector<inspect::Finding> findings;
    for (const std::string &name : arguments.presets) {
        inspect::Run run;
        run.add_text("preset " + name, preset_named(name, "--preset").text);
        sources.push_back(source_of("preset " + name, run, findings));
    }
    for (const std::string &path : arguments.files) {
        inspect::Run run;
        add_input(run, path);
        sources.push_back(source_of(file_name(path), run, findings));
    }
    if (!findings.empty()) {
        report(findings, arguments.colour, false);
    } else if (arguments.format == "json") {
        write_json(sources);
    } else {
        write_text(sources);
    }
    return status_of(findings);
}

} // namespace

Command add_sections(CLI::App &tool)
{
    const auto arguments = std::make_shared<Arguments>();
    CLI::App *const app = tool.add_subcommand("sections", "List the sections of configuration texts");
    add_text_list(*app, "FILE", arguments->files, "Configuration texts; - is standard input")
        ->type_name("")
        ->required();
    add_presets_option(*app, arguments->presets);
    add_format(*app, arguments->format, {"text", "json"});
    add_colour(*app, arguments->colour);
    app->footer("The sections of each text in the order in which they appear, each behind the number of its "
                "assignments; first what is of no section, where there is anything.\n\n"
                "Example:\n"
                "  dalvo-config sections solver.cfg\n\n"
                "Exit status: 0 when the sections are listed; 1 for a malformed line, with nothing listed; 2 for "
                "wrong usage or a file that cannot be read.");
    return {app, [arguments] { return list_sections(*arguments); }};
}

} // namespace dalvo::tools
