#include "tools/commands/inputs.h"

#include <algorithm>

#include "tools/output/diagnostics.h"
#include "tools/output/excerpt.h"
#include "tools/commands/presettexts.h"

namespace dalvo::tools {

namespace {

/// Appends the assignments of section `name`, text by text; false when no text has it.
bool append_section(const std::vector<Source> &sources, const std::string &name, std::vector<Assignment> &assignments)
{
    bool found = false;
    for (const Source &source : sources) {
        for (const Section &section : source.sections) {
            if (section.name == name) {
                found = true;
                assignments.insert(assignments.end(), section.assignments.begin(), section.assignments.end());
            }
        }
    }
    return found;
}

/// Throws CLI::ValidationError for a text that is not NAME=VALUE.
void add_override(Inputs &inputs, const std::string &text)
{
    const std::size_t equals = text.find('=');
    if (equals == std::string::npos) {
        throw CLI::ValidationError("-o", "'" + shown(text) + "' is not of the form NAME=VALUE");
    }
    inputs.overrides.emplace_back(text.substr(0, equals), text.substr(equals + 1));
}

} // namespace

std::vector<Source> read_sources(const Inputs &inputs)
{
    std::vector<Source> sources;
    if (inputs.with_defaults) {
        sources.push_back(read_default());
    }
    for (const std::string &name : inputs.presets) {
        sources.push_back(read_preset(name));
    }
    for (const std::string &path : inputs.files) {
        sources.push_back(read_file(path));
    }
    return sources;
}

Assignment override_of(const std::string &name, const std::string &value)
{
    return {name, value, override_level, {"command line", 0}, ""};
}

std::vector<Assignment> applying_assignments(const Inputs &inputs)
{
    return applying_assignments(read_sources(inputs), inputs);
}

std::vector<Assignment> applying_assignments(const std::vector<Source> &sources, const Inputs &inputs)
{
    std::vector<Assignment> assignments;
    append_section(sources, "", assignments);
    if (!inputs.section.empty() && !append_section(sources, inputs.section, assignments)) {
        const std::string file = inputs.files.size() == 1 ? " in " + file_name(inputs.files.front()) : "";
        warn_later("no section '" + shown(inputs.section) + "'" + file +
                   (inputs.section == "default" ? "; what stands below [default] always applies" : ""));
    }
    for (const auto &[name, value] : inputs.overrides) {
        assignments.push_back(override_of(name, value));
    }
    return assignments;
}

std::string guarded(std::string argument)
{
    const bool list = !argument.empty() && argument.front() == '[' && argument.back() == ']';
    const bool empty_value = argument.size() > 3 && argument.compare(0, 2, "--") == 0 && argument.back() == '=';
    if (list || empty_value || argument == "++") {
        argument += '\0'; // which no argument of a process can hold
    }
    return argument;
}

std::string plain(const std::string &guarded_argument)
{
    return guarded_argument.substr(0, guarded_argument.find('\0'));
}

CLI::Option *add_text(CLI::App &command, const std::string &name, std::string &target, const std::string &description)
{
    return command.add_option_function<std::string>(
        name, [&target](const std::string &text) { target = plain(text); }, description);
}

CLI::Option *add_text_list(CLI::App &command, const std::string &name, std::vector<std::string> &target,
                           const std::string &description)
{
    return command.add_option_function<std::vector<std::string>>(
        name,
        [&target](const std::vector<std::string> &texts) {
            std::transform(texts.begin(), texts.end(), std::back_inserter(target), plain);
        },
        description);
}

void add_texts(CLI::App &command, Inputs &inputs)
{
    add_text_list(command, "FILE", inputs.files, "Configuration texts, read in this order; - is standard input")
        ->type_name("");
    add_presets_option(command, inputs.presets);
}

void add_presets_option(CLI::App &command, std::vector<std::string> &names)
{
    add_text_list(command, "--preset", names,
                  "A preset, read before the files; may be repeated. `dalvo-config presets` lists them")
        ->type_name("NAME")
        ->allow_extra_args(false);
}

void add_choices(CLI::App &command, Inputs &inputs)
{
    add_text(command, "--section", inputs.section, "The section to choose")->type_name("NAME");
    command
        .add_option_function<std::vector<std::string>>(
            "-o,--option",
            [&inputs](const std::vector<std::string> &texts) {
                for (const std::string &text : texts) {
                    add_override(inputs, plain(text));
                }
            },
            "An assignment that wins over every file; may be repeated, the last one wins")
        ->type_name("NAME=VALUE")
        ->allow_extra_args(false);
    command
        .add_flag_callback(
            "--no-defaults", [&inputs] { inputs.with_defaults = false; }, "Start without the built-in default text")
        ->disable_flag_override();
}

} // namespace dalvo::tools
