#pragma once

#include <string>

#include "dalvo/configuration/configurationsetter.h"

class __attribute__((visibility("default"))) Engine {
public:
    Engine();
    void set(const std::string &name, const std::string &value);

    static int throws; ///< how often Exception's constructor called the engine's function
    dalvo::Configuration settings;

private:
    dalvo::ConfigurationSetter setter;
};
