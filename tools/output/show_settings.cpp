#include "tools/output/show_settings.h"

#include <ostream>

#include "dalvo/utils/textwrap.h"
#include "tools/output/diagnostics.h"
#include "tools/output/diff_value.h"
#include "tools/inspection/forcing.h"
#include "tools/commands/inputs.h"
#include "tools/inspection/optioninfo.h"

namespace dalvo::tools {

namespace {

/// The built-in text is no file of the user's: its lines say nothing to him.
std::string place_text(const Assignment &assignment)
{
    return assignment.level == default_level ? assignment.place.source : assignment.place.text();
}

Origin origin_of(const Forcing &forcing, const std::string &name)
{
    Origin origin;
    if (forcing.is_forced(name)) {
        for (const Assignment *const forcer : forcing.forcing(name)) {
            origin.forcers.push_back(*forcer);
        }
    }
    const Assignment *const own = forcing.winner(name);
    if (origin.forcers.empty() && own != nullptr) {
        origin.assignment = *own;
    }
    return origin;
}

/// `text` in comment lines that fit a terminal of 80 columns.
void write_comment(std::ostream &out, const std::string &text)
{
    for (const std::string &line : str::wrap(text, 78)) {
        out << "# " << line << '\n';
    }
}

} // namespace

std::string Origin::text() const
{
    if (forcers.empty()) {
        return assignment ? place_text(*assignment) : "initial value";
    }
    std::string shown;
    for (const Assignment &forcer : forcers) {
        shown += (shown.empty() ? "forced by " : ", ") + escaped(forcer.name) + " = " + escaped(forcer.value) + " (" +
                 place_text(forcer) + ")";
    }
    return shown;
}

bool ShownSetting::changed() const
{
    return !same_value(setting, default_setting);
}

std::vector<ShownSetting> shown_settings(const std::vector<Assignment> &assignments, bool with_origins)
{
    const std::vector<Setting> settings = settings_of(record_of(assignments));
    const std::vector<Setting> defaults = settings_of(record_of(applying_assignments({})));
    std::vector<ShownSetting> shown;
    for (std::size_t i = 0; i < settings.size(); ++i) {
        shown.push_back({settings[i], defaults[i], {}});
    }
    if (with_origins) {
        const Forcing forcing(assignments);
        for (ShownSetting &setting : shown) {
            setting.origin = origin_of(forcing, setting.setting.name);
        }
    }
    return shown;
}

void write_settings_text(std::ostream &out, const std::vector<ShownSetting> &settings, const Notes &notes)
{
    bool first = true;
    for (const ShownSetting &shown : settings) {
        const OptionInfo *const option = notes.comments ? find_option(shown.setting.name) : nullptr;
        if (option != nullptr) {
            out << (first ? "" : "\n");
            write_comment(out, option->help);
            write_comment(out, "Accepted: " + option->accepted());
        }
        if (notes.origin) {
            out << "# " << shown.origin.text() << '\n';
        }
        out << shown.setting.name << " = " << shown.setting.text() << '\n';
        first = false;
    }
}

} // namespace dalvo::tools
