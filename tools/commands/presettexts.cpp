#include "tools/commands/presettexts.h"

#include <sstream>

#include "tools/output/diagnostics.h"
#include "tools/commands/presetnames.h"

// Made by the build from the files in presets/.
extern const char *const dalvo_preset_names[];
extern const char *const dalvo_preset_texts[];

namespace dalvo::tools {

const std::vector<Preset> &presets()
{
    static const std::vector<Preset> all = [] {
        std::vector<Preset> list;
        for (std::size_t i = 0; dalvo_preset_names[i] != nullptr; ++i) {
            list.push_back({dalvo_preset_names[i], dalvo_preset_texts[i]});
        }
        return list;
    }();
    return all;
}

const Preset &preset_named(const std::string &name)
{
    for (const Preset &preset : presets()) {
        if (preset.name == name) {
            return preset;
        }
    }
    throw Failure("--preset", unknown_preset(name), status_usage);
}

Source read_preset(const std::string &name)
{
    std::istringstream in(preset_named(name).text);
    return read_source(in, "preset " + name, file_level);
}

} // namespace dalvo::tools
