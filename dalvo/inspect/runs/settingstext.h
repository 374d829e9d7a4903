#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "dalvo/export.h"
#include "dalvo/inspect/runs/resolution.h"

// The settings of a resolution as a configuration text.

namespace dalvo::inspect {

/// Which settings are written, and what above each, in comment lines.
struct SettingsStyle {
    bool only_changed = false; ///< only those that differ from the defaults
    bool has_help = false;     ///< with the help and the accepted values
    bool has_origin = false;   ///< with where it comes from
};

/// The settings that `style` wants written, in the order of `ConfigurationSetter::dump`. They point into `resolution`.
DALVO_API std::vector<const Setting *> chosen_settings(const Resolution &resolution, const SettingsStyle &style);

/// Why one of these settings cannot be written, since no text can say its value: "OPTION: no text can say its value: it
/// has a line break"; "" where all can.
DALVO_API std::string why_not_written(const std::vector<const Setting *> &settings);

/// Writes `settings` to `out`, a line each, with what `style` wants above it. Loaded after the default text, they give the same record again, to the
/// last digit, where `why_not_written` has nothing to say. Failures are left in the stream's state.
DALVO_API void write_settings(std::ostream &out, const std::vector<const Setting *> &settings,
                              const SettingsStyle &style);

} // namespace dalvo::inspect
