#pragma once

#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "tools/inspection/settings.h"
#include "tools/inspection/sources.h"

namespace dalvo::tools {

/// Where a setting comes from.
struct Origin {
    std::vector<Assignment> forcers;      ///< assignments of other options that force it, whatever its own says
    std::optional<Assignment> assignment; ///< its own that wins, where none forces it; none: it is as a record starts

    /// "built-in default", "FILE:LINE", "preset NAME:LINE", "command line", "initial value", or
    /// "forced by NAME = VALUE (PLACE), ...": one line, with control bytes escaped.
    std::string text() const;
};

/// A setting with what is told about it.
struct ShownSetting {
    Setting setting;
    Setting default_setting; ///< what the built-in text makes it
    Origin origin;           ///< empty unless asked for

    /// Whether it differs from the default, if only as 0 does from -0, or behind the digits that a text has.
    bool changed() const;
};

/// The settings that `assignments` make, in the order of `dump`; with origins where `with_origins`, which takes a good
/// hundred fillings of a record. Throws as `record_of` does.
std::vector<ShownSetting> shown_settings(const std::vector<Assignment> &assignments, bool with_origins);

/// What goes with each setting.
struct Notes {
    bool comments = false; ///< its help and accepted values
    bool origin = false;
};

/// A configuration text that loads to these settings, the notes in comment lines.
void write_settings_text(std::ostream &out, const std::vector<ShownSetting> &settings, const Notes &notes);

/// docs/json.md describes it. The origin is always in it.
void write_settings_json(std::ostream &out, const std::vector<ShownSetting> &settings, const Notes &notes);

} // namespace dalvo::tools
