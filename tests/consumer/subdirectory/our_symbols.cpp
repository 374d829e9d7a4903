#include "dalvo/configuration/configurationsetter.h"

int main()
{
    dalvo::ConfigurationSetter setter;
    setter.initialize_options();
    setter.load_default();
    dalvo::Configuration settings;
    settings.theory_bv_enabled = false;
    setter.update_config(&settings);
    return settings.theory_bv_enabled ? 0 : 1;
}
