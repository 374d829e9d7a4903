#include "examples/host/settings.h"

#include <iostream>
#include <locale>
#include <sstream>
#include <utility>
#include <vector>

#include "dalvo/inspect/inspect.h"

namespace examples {

namespace {

/// Keeps each setting, as a dump writes its value.
class Keeper : public dalvo::ConfigurationSetter::ConfigEntryPrinter {
public:
    explicit Keeper(std::map<std::string, std::string> &kept) : texts(kept) {}

    void operator()(std::ostream &, const std::string &name, bool value) const override { keep(name, value); }
    void operator()(std::ostream &, const std::string &name, int value) const override { keep(name, value); }
    void operator()(std::ostream &, const std::string &name, unsigned int value) const override { keep(name, value); }
    void operator()(std::ostream &, const std::string &name, double value) const override { keep(name, value); }
    void operator()(std::ostream &, const std::string &name, const std::string &value) const override
    {
        keep(name, value);
    }

private:
    template <class T> void keep(const std::string &name, const T &value) const
    {
        std::ostringstream text;
        text.imbue(std::locale::classic());
        text << std::boolalpha << value;
        texts[name] = text.str();
    }

    std::map<std::string, std::string> &texts;
};

} // namespace

std::string read_file(const std::string &file)
{
    dalvo::inspect::Contents contents = dalvo::inspect::read_file(file);
    if (!contents.error.empty()) {
        throw Failure(file + ": " + contents.error);
    }
    return std::move(contents.bytes);
}

dalvo::Configuration read_settings(const std::string &file, const std::string &section)
{
    dalvo::inspect::Run run;
    run.add_default();
    if (!file.empty()) {
        run.add_file(file);
    }
    run.choose_section(section);
    dalvo::Configuration settings;
    const std::vector<dalvo::inspect::Finding> findings = fill(run, &settings);
    print(std::cerr, findings);
    if (has_errors(findings)) {
        throw Failure("the settings have " + counts(findings));
    }
    return settings;
}

std::map<std::string, std::string> setting_texts(const dalvo::Configuration &settings)
{
    std::map<std::string, std::string> texts;
    std::ostringstream unused;
    dalvo::ConfigurationSetter().dump(&settings, unused, Keeper(texts));
    return texts;
}

} // namespace examples
