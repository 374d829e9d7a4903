// A host that takes both symbols from dalvo::defaults: fills a record, writes it, and catches an error. Its argument is
// the seed that the built-in default text sets.
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <sstream>
#include <string>

#include "dalvo/configuration/configurationsetter.h"
#include "dalvo/version.h"

#ifdef FOUND_VERSION // by the build system, which was told by the installed package
static_assert(std::string_view(FOUND_VERSION) == DALVO_VERSION, "the package's version is the headers'");
#endif

namespace {

bool all_hold = true;

void expect(bool holds, const char *what)
{
    if (!holds) {
        std::cerr << "not so: " << what << '\n';
        all_hold = false;
    }
}

/// A printer of the host's own: its virtual table lies here, its base in the library.
struct CountingPrinter : dalvo::ConfigurationSetter::ConfigEntryPrinter {
    void operator()(std::ostream &out, const std::string &, bool) const override { out << 'b'; }
    void operator()(std::ostream &out, const std::string &, int) const override { out << 'i'; }
    void operator()(std::ostream &out, const std::string &, unsigned int) const override { out << 'u'; }
    void operator()(std::ostream &out, const std::string &, double) const override { out << 'd'; }
    void operator()(std::ostream &out, const std::string &, const std::string &) const override { out << 's'; }
};

template <class Caught> std::string error_of(dalvo::ConfigurationSetter &setter)
{
    try {
        setter.set_option("verbosity", "much", 0);
    } catch (const Caught &e) {
        return e.what();
    }
    return "nothing thrown";
}

} // namespace

int main(int argc, char **argv)
{
    dalvo::ConfigurationSetter setter;
    setter.initialize_options();
    setter.load_default();
    dalvo::Configuration settings;
    setter.update_config(&settings);
    expect(argc == 2 && settings.random_seed == std::atoi(argv[1]), "the built-in default text is the one expected");

    std::istringstream text("random_seed = 7\n[fast]\ndpll.restart_strategy = 3\n");
    setter.load(text, 2);
    setter.set_active_config("fast");
    setter.update_config(&settings);
    expect(settings.random_seed == 7 && settings.dpll.restart_strategy == 3, "a text's section is applied");

    std::ostringstream printed;
    setter.dump(&settings, printed, CountingPrinter());
    expect(printed.str().size() == setter.options().options().size(), "the host's printer receives each setting");

    const std::string expected = "invalid value for option verbosity: verbosity, value: much";
    expect(error_of<dalvo::OptionParser::error>(setter) == expected, "an error is caught by its own type");
    expect(error_of<dalvo::Exception>(setter) == expected, "an error is caught by its base");
    return all_hold ? 0 : 1;
}
