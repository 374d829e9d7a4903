#include "dalvo/inspect/runs/settingstext.h"

#include <ostream>

#include "dalvo/inspect/runs/explanation.h"
#include "dalvo/inspect/words/printable.h"
#include "dalvo/utils/textwrap.h"

namespace dalvo::inspect {

namespace {

/// `text` in comment lines that fit a terminal of 80 columns.
void write_comment(std::ostream &out, const std::string &text)
{
    for (const std::string &line : str::wrap(text, 78)) {
        out << "# " << line << '\n';
    }
}

} // namespace

std::vector<const Setting *> chosen_settings(const Resolution &resolution, const SettingsStyle &style)
{
    std::vector<const Setting *> chosen;
    for (const std::size_t position : resolution.catalogue().dump_order()) {
        const Setting &setting = resolution.settings()[position];
        const bool has_value = !std::holds_alternative<std::monostate>(setting.value);
        if (has_value && (!style.only_changed || setting.is_changed())) {
            chosen.push_back(&setting);
        }
    }
    return chosen;
}

std::string why_not_written(const std::vector<const Setting *> &settings)
{
    for (const Setting *const setting : settings) {
        const auto *const text = std::get_if<std::string>(&setting->value);
        const std::string reason = text != nullptr ? why_no_text_says(*text) : "";
        if (!reason.empty()) {
            return setting->option->name + ": no text can say its value: " + reason;
        }
    }
    return "";
}

void write_settings(std::ostream &out, const std::vector<const Setting *> &settings, const SettingsStyle &style)
{
    for (const Setting *const setting : settings) {
        if (style.has_help) {
            out << (setting == settings.front() ? "" : "\n");
            write_comment(out, setting->option->help);
            write_comment(out, "Accepted: " + setting->option->accepted());
        }
        if (style.has_origin) {
            out << "# " << origin_text(*setting) << '\n';
        }
        out << setting->option->name << " = " << value_text(setting->value) << '\n';
    }
}

} // namespace dalvo::inspect
