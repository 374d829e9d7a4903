#include "tools/commands/presettexts.h"

#include "dalvo/inspect/words/printable.h"
#include "dalvo/inspect/words/words.h"
#include "dalvo/options/nearby.h"
#include "tools/output/diagnostics.h"

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

const Preset &preset_named(const std::string &name, const std::string &argument)
{
    NearbyNames nearby(name);
    for (const Preset &preset : presets()) {
        if (preset.name == name) {
            return preset;
        }
        nearby.offer(preset.name);
    }
    throw Failure(argument, "no preset " + inspect::quoted(name) + inspect::did_you_mean(nearby.nearest(3)),
                  status_usage);
}

std::string summary_of(const Preset &preset)
{
    const std::string first = preset.text.substr(0, preset.text.find('\n'));
    const std::size_t start = first.find_first_not_of("# ");
    const std::size_t end = first.find_last_not_of(". ");
    return start == std::string::npos ? "" : first.substr(start, end + 1 - start);
}

} // namespace dalvo::tools
