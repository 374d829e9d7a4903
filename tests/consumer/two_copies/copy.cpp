#include <string>

#include "dalvo/configuration/configurationsetter.h"
#include "dalvo/configuration/default_config.h"

#define JOINED(a, b) a##b
#define NAMED(name, copy) JOINED(name, copy)
#define TEXT_OF(x) #x
#define TEXT(x) TEXT_OF(x)

static int throws = 0;

#if COPY != 3
const char *dalvo_default_config[] = {"random_seed = 10" TEXT(COPY) "\n", nullptr};

void dalvo::Exception::dump_msg_and_raise_assertion()
{
    ++throws;
}
#endif

/// The seed that this copy's default text sets.
extern "C" int NAMED(seed_, COPY)()
{
    dalvo::ConfigurationSetter setter;
    setter.initialize_options();
    setter.load_default();
    dalvo::Configuration settings;
    setter.update_config(&settings);
    return settings.random_seed;
}

/// How often this copy's function was called by the one error that is thrown and caught here; -1 if it is not caught.
extern "C" int NAMED(throws_, COPY)()
{
    throws = 0;
    dalvo::ConfigurationSetter setter;
    setter.initialize_options();
    try {
        setter.set_option("verbosity", "much", 0);
    } catch (const dalvo::OptionParser::error &e) {
        return e.option == "verbosity" ? throws : -1;
    }
    return -1;
}
