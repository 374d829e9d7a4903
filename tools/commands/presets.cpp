#include <algorithm>
#include <iostream>
#include <iterator>
#include <memory>

#include "tools/commands/commands.h"
#include "tools/output/diagnostics.h"
#include "tools/commands/inputs.h"
#include "tools/output/jsontext.h"
#include "tools/commands/presetnames.h"

namespace dalvo::tools {

namespace {

struct PresetsArguments {
    std::vector<std::string> names;
    std::string format = "text";
};

const Preset &chosen_preset(const std::string &name)
{
    for (const Preset &preset : presets()) {
        if (preset.name == name) {
            return preset;
        }
    }
    throw Failure("presets", unknown_preset(name), status_usage);
}

/// All of them for no names. Throws Failure for a name that is none.
std::vector<Preset> chosen_presets(const std::vector<std::string> &names)
{
    if (names.empty()) {
        return presets();
    }
    std::vector<Preset> chosen;
    std::transform(names.begin(), names.end(), std::back_inserter(chosen), chosen_preset);
    return chosen;
}

void write_listing(const std::vector<Preset> &chosen)
{
    std::size_t width = 0;
    for (const Preset &preset : chosen) {
        width = std::max(width, preset.name.size());
    }
    for (const Preset &preset : chosen) {
        std::cout << preset.name << std::string(width - preset.name.size() + 2, ' ') << summary_of(preset) << '\n';
    }
}

void write_json(const std::vector<Preset> &chosen)
{
    auto list = nlohmann::ordered_json::array();
    for (const Preset &preset : chosen) {
        list.push_back({{"name", preset.name}, {"summary", summary_of(preset)}, {"text", preset.text}});
    }
    std::cout << json_text(list);
}

int run_presets(const PresetsArguments &arguments)
{
    const std::vector<Preset> chosen = chosen_presets(arguments.names);
    if (arguments.format == "json") {
        write_json(chosen);
    } else if (arguments.names.empty()) {
        write_listing(chosen);
    } else {
        for (const Preset &preset : chosen) {
            std::cout << preset.text;
        }
    }
    return status_fine;
}

} // namespace

Command add_presets(CLI::App &tool)
{
    const auto arguments = std::make_shared<PresetsArguments>();
    CLI::App *const app = tool.add_subcommand("presets", "List the presets, or write those that are named");
    add_text_list(*app, "NAME", arguments->names, "Presets to write as they stand, in this order; none lists them all")
        ->type_name("");
    app->add_option("--format", arguments->format, "text, or json: an array of objects with name, summary and text")
        ->check(CLI::IsMember({"text", "json"}))
        ->type_name("FORMAT");
    app->footer("Example:\n"
                "  dalvo-config presets QF_BV models\n"
                "\n"
                "Exit status: 0 when they are written; 2 for wrong usage, as for a name that is no preset,\n"
                "with nothing written.");
    return {app, [arguments] { return run_presets(*arguments); }};
}

} // namespace dalvo::tools
