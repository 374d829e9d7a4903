#include <algorithm>
#include <iostream>
#include <iterator>
#include <memory>

#include "tools/commands/commands.h"
#include "tools/output/diagnostics.h"
#include "tools/commands/inputs.h"
#include "tools/output/jsontext.h"
#include "tools/commands/presettexts.h"

namespace dalvo::tools {

namespace {

struct PresetsArguments {
    std::vector<std::string> names;
    std::string format = "text";
};

/// All of them for no names. Throws Failure for a name that is none.
std::vector<Preset> chosen_presets(const std::vector<std::string> &names)
{
    if (names.empty()) {
        return presets();
    }
    std::vector<Preset> chosen;
    std::transform(names.begin(), names.end(), std::back_inserter(chosen),
                   [](const std::string &name) { return preset_named(name, "presets"); });
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
    add_format(*app, arguments->format, {"text", "json"});
    app->footer("Example:\n"
                "  dalvo-config presets QF_BV models\n"
                "\n"
                "Exit status: 0 when they are written; 2 for wrong usage, as for a name that is no preset, "
                "with nothing written.");
    return {app, [arguments] { return run_presets(*arguments); }};
}

} // namespace dalvo::tools
