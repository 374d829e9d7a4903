#include <algorithm>
#include <iostream>
#include <memory>

#include "tools/commands/commands.h"
#include "tools/output/diagnostics.h"
#include "tools/output/table.h"
#include "tools/commands/inputs.h"
#include "tools/output/jsontext.h"
#include "tools/commands/presettexts.h"

namespace dalvo::tools {

namespace {

struct Arguments {
    std::vector<std::string> presets;
    std::vector<std::string> files;
    std::string format = "text";
};

/// Every text has the unnamed section, whether it says anything there or not.
bool is_listed(const Section &section)
{
    return !section.name.empty() || !section.assignments.empty();
}

void write_text(const std::vector<Source> &sources)
{
    std::size_t digits = 0; // of the largest number
    for (const Source &source : sources) {
        for (const Section &section : source.sections) {
            digits = std::max(digits, std::to_string(section.assignments.size()).size());
        }
    }
    for (const Source &source : sources) {
        if (sources.size() > 1) {
            std::cout << (&source == &sources.front() ? "" : "\n") << escaped(source.name) << ":\n";
        }
        std::vector<std::vector<std::string>> rows;
        for (const Section &section : source.sections) {
            if (is_listed(section)) {
                const std::string number = std::to_string(section.assignments.size());
                rows.push_back({std::string(digits - number.size(), ' ') + number,
                                section.name.empty() ? "(always applies)" : escaped(section.name)});
            }
        }
        write_table(std::cout, rows);
    }
}

void write_json(const std::vector<Source> &sources)
{
    nlohmann::ordered_json files = nlohmann::ordered_json::array();
    for (const Source &source : sources) {
        nlohmann::ordered_json sections = nlohmann::ordered_json::array();
        for (const Section &section : source.sections) {
            if (is_listed(section)) {
                nlohmann::ordered_json listed;
                listed["name"] = section.name.empty() ? nlohmann::ordered_json() : nlohmann::ordered_json(section.name);
                listed["assignments"] = section.assignments.size();
                sections.push_back(std::move(listed));
            }
        }
        nlohmann::ordered_json file;
        file["file"] = source.name;
        file["sections"] = std::move(sections);
        files.push_back(std::move(file));
    }
    std::cout << json_text(files);
}

int list_sections(const Arguments &arguments)
{
    std::vector<Source> sources;
    for (const std::string &name : arguments.presets) {
        sources.push_back(read_preset(name));
    }
    for (const std::string &path : arguments.files) {
        sources.push_back(read_file(path));
    }
    if (arguments.format == "json") {
        write_json(sources);
    } else {
        write_text(sources);
    }
    return status_fine;
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
    app->add_option("--format", arguments->format, "The form of the answer")
        ->type_name("FORMAT")
        ->check(CLI::IsMember({"text", "json"}));
    app->footer("The sections of each text in the order in which they appear, each behind the number of its "
                "assignments;\nfirst what is of no section, where there is anything.\n\n"
                "Example:\n"
                "  dalvo-config sections solver.cfg\n\n"
                "Exit status: 0 when the sections are listed; 1 for a malformed line, with nothing listed;\n"
                "2 for wrong usage or a file that cannot be read.");
    return {app, [arguments] { return list_sections(*arguments); }};
}

} // namespace dalvo::tools
