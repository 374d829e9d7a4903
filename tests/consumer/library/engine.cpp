#include "engine.h"

#include "dalvo/configuration/default_config.h"

const char *dalvo_default_config[] = {"random_seed = 5\n", nullptr};

int Engine::throws = 0;

void dalvo::Exception::dump_msg_and_raise_assertion()
{
    ++Engine::throws;
}

Engine::Engine()
{
    setter.initialize_options();
    setter.load_default();
    setter.update_config(&settings);
}

void Engine::set(const std::string &name, const std::string &value)
{
    setter.set_option(name, value, 0);
}
