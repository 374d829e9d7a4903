#pragma once

#include <sstream>
#include <string>

#include "dalvo/configuration/configurationsetter.h"

namespace examples::testing {

/// What a host fills from the built-in text and `text` behind it.
inline dalvo::Configuration settings_of(const std::string &text)
{
    dalvo::Configuration settings;
    dalvo::ConfigurationSetter setter;
    setter.initialize_options();
    setter.load_default();
    std::istringstream in(text);
    setter.load(in, 2);
    setter.update_config(&settings);
    return settings;
}

} // namespace examples::testing
