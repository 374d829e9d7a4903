// A host that brings both symbols itself.
#include "dalvo/configuration/configurationsetter.h"
#include "dalvo/configuration/default_config.h"

#include <string>

namespace {

int dumps = 0;

} // namespace

const char *dalvo_default_config[] = {"random_", "seed = 42\n", "verbosity", " = 1", nullptr};

void dalvo::Exception::dump_msg_and_raise_assertion()
{
    ++dumps;
}

int main()
{
    dalvo::ConfigurationSetter setter;
    setter.initialize_options();
    setter.load_default();
    dalvo::Configuration settings;
    setter.update_config(&settings);
    try {
        setter.set_option("verbosity", "much", 0);
    } catch (const dalvo::Exception &) {
    }
    return settings.random_seed == 42 && settings.verbosity == 1 && dumps == 1 ? 0 : 1;
}
