#include "tools/commands/inputs.h"

#include <algorithm>
#include <cstdio>
#include <iostream>
#include <iterator>

#include "dalvo/inspect/runs/file.h"
#include "dalvo/inspect/words/printable.h"
#include "dalvo/inspect/words/words.h"
#include "tools/commands/presettexts.h"

namespace dalvo::tools {

namespace {

inspect::Contents standard_input()
{
    inspect::Contents contents = inspect::read_stream(std::cin);
    if (std::ferror(stdin) != 0) { // of std::cin's failures only stdin knows
        contents.error = "cannot be read";
    }
    return contents;
}

/// Throws CLI::ValidationError for a text that is not NAME=VALUE.
void add_override(Inputs &inputs, const std::string &text)
{
    const std::size_t equals = text.find('=');
    if (equals == std::string::npos) {
        throw CLI::ValidationError("-o", inspect::quoted(text) + " is not of the form NAME=VALUE");
    }
    inputs.overrides.emplace_back(text.substr(0, equals), text.substr(equals + 1));
}

} // namespace

inspect::Run run_of(const Inputs &inputs)
{
    require_one_standard_input(inputs.files);
    inspect::Run run;
    if (inputs.with_defaults) {
        run.add_default();
    }
    for (const std::string &name : inputs.presets) {
        run.add_text("preset " + name, preset_named(name, "--preset").text);
    }
    for (const std::string &path : inputs.files) {
        add_input(run, path);
    }
    run.choose_section(inputs.section);
    for (const auto &[name, value] : inputs.overrides) {
        run.assign(name, value);
    }
    return run;
}

void add_input(inspect::Run &run, const std::string &path)
{
    run.add_contents(file_name(path), path == "-" ? standard_input() : inspect::read_file(path));
}

void require_one_standard_input(const std::vector<std::string> &paths)
{
    if (std::count(paths.begin(), paths.end(), "-") > 1) {
        throw CLI::ValidationError("-", "standard input can be read once only");
    }
}

std::string file_name(const std::string &path)
{
    return path == "-" ? "standard input" : path.empty() ? "''" : path;
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
    add_no_defaults(command, inputs.with_defaults);
}

void add_no_defaults(CLI::App &command, bool &with_defaults)
{
    command
        .add_flag_callback(
            "--no-defaults", [&with_defaults] { with_defaults = false; }, "Start without the built-in default text")
        ->disable_flag_override();
}

void add_format(CLI::App &command, std::string &format, const std::vector<std::string> &formats)
{
    command.add_option("--format", format, "What to write: " + inspect::either_of(formats))
        ->transform(plain)
        ->check(CLI::IsMember(formats))
        ->type_name("FORMAT");
}

} // namespace dalvo::tools
