#include "engine.h"

int main()
{
    Engine engine;
    if (engine.settings.random_seed != 5) {
        return 1;
    }
    try {
        engine.set("verbosity", "much");
    } catch (const dalvo::OptionParser::error &e) {
        return e.option == "verbosity" && Engine::throws == 1 ? 0 : 2;
    }
    return 3;
}
