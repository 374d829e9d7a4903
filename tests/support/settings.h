#pragma once

#include <ostream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "dalvo/configuration/configurationsetter.h"
#include "dalvo/options/optionparser.h"
#include "tests/support/classic_locale.h"

namespace dalvo::testing {

/// The names that `update_config` reads and the catalogue leaves to hosts, with the types that they are read as.
inline const std::vector<std::pair<std::string, OptionType>> &unlisted_options()
{
    static const std::vector<std::pair<std::string, OptionType>> unlisted = {
        {"debug.log_sections", OPT_STR},
        {"preprocessor.free_input_propagation", OPT_BOOL},
        {"shallow_incrementality", OPT_BOOL},
        {"allow_bool_function_args", OPT_BOOL},
        {"theory.arr.debug_data", OPT_BOOL},
        {"theory.arr.debug_lemmas", OPT_BOOL},
        {"theory.arr.debug_filename", OPT_STR},
    };
    return unlisted;
}

/// A setter that knows the catalogue.
struct CatalogueSetter : ConfigurationSetter {
    CatalogueSetter() { initialize_options(); }
};

/// A setter that knows every name that `update_config` reads.
struct FullSetter : CatalogueSetter {
    FullSetter()
    {
        for (const auto &[name, type] : unlisted_options()) {
            options().add_option(name, type, "");
        }
    }
};

inline const char *type_name(OptionType type)
{
    switch (type) {
    case OPT_BOOL: return "bool";
    case OPT_INT: return "int";
    case OPT_FLOAT: return "float";
    case OPT_STR: break;
    }
    return "string";
}

/// Throws std::out_of_range for a name that is none.
inline OptionType type_named(const std::string &name)
{
    for (const OptionType type : {OPT_BOOL, OPT_INT, OPT_FLOAT, OPT_STR}) {
        if (name == type_name(type)) {
            return type;
        }
    }
    throw std::out_of_range("no type " + name);
}

/// An entry that `dump` gave to its printer: the option, the printed type's name, the value as text.
struct DumpedEntry {
    std::string name;
    std::string type;
    std::string value;
};

/// Collects what `dump` gives it, and leaves the stream alone.
class RecordingPrinter : public ConfigurationSetter::ConfigEntryPrinter {
public:
    void operator()(std::ostream &, const std::string &name, bool value) const override
    {
        entries.push_back({name, "bool", value ? "true" : "false"});
    }
    void operator()(std::ostream &, const std::string &name, int value) const override
    {
        entries.push_back({name, "int", std::to_string(value)});
    }
    void operator()(std::ostream &, const std::string &name, unsigned int value) const override
    {
        entries.push_back({name, "unsigned", std::to_string(value)});
    }
    void operator()(std::ostream &, const std::string &name, double value) const override
    {
        const ClassicCLocale classic;
        entries.push_back({name, "double", std::to_string(value)});
    }
    void operator()(std::ostream &, const std::string &name, const std::string &value) const override
    {
        entries.push_back({name, "string", value});
    }

    mutable std::vector<DumpedEntry> entries;
};

} // namespace dalvo::testing
