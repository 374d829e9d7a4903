#include "tools/inspection/settings.h"

#include <locale>
#include <sstream>
#include <stdexcept>

#include "tools/output/diagnostics.h"
#include "tools/output/excerpt.h"

namespace dalvo::tools {

namespace {

/// Keeps what `dump` hands to it.
class Collector : public ConfigurationSetter::ConfigEntryPrinter {
public:
    explicit Collector(std::vector<Setting> &target) : settings(target) {}

    void operator()(std::ostream &, const std::string &name, bool value) const override { add(name, value); }
    void operator()(std::ostream &, const std::string &name, int value) const override { add(name, value); }
    void operator()(std::ostream &, const std::string &name, unsigned int value) const override { add(name, value); }
    void operator()(std::ostream &, const std::string &name, double value) const override { add(name, value); }
    void operator()(std::ostream &, const std::string &name, const std::string &value) const override
    {
        add(name, value);
    }

private:
    template <class T> void add(const std::string &name, const T &value) const { settings.push_back({name, value}); }

    std::vector<Setting> &settings;
};

/// Where the value of option `name` was last assigned.
std::string last_place(const std::vector<Assignment> &assignments, const std::string &name)
{
    for (auto at = assignments.rbegin(); at != assignments.rend(); ++at) {
        if (at->name == name) {
            return at->place.text();
        }
    }
    return name;
}

} // namespace

std::string Setting::text() const
{
    std::ostringstream out;
    out.imbue(std::locale::classic());
    out << std::boolalpha;
    std::visit([&](const auto &held) { out << held; }, value);
    return out.str();
}

std::vector<Setting> settings_of(const Configuration &record)
{
    std::vector<Setting> settings;
    std::ostringstream unused;
    ConfigurationSetter().dump(&record, unused, Collector(settings));
    return settings;
}

const Setting &setting_named(const std::vector<Setting> &settings, const std::string &name)
{
    for (const Setting &setting : settings) {
        if (setting.name == name) {
            return setting;
        }
    }
    throw std::out_of_range("no setting " + name);
}

Configuration record_of(const std::vector<Assignment> &assignments)
{
    ConfigurationSetter setter;
    setter.initialize_options();
    for (const Assignment &assignment : assignments) {
        try {
            setter.set_option(assignment.name, assignment.value, assignment.level);
        } catch (const OptionParser::error &e) {
            throw Failure(assignment.place.text(), shown_message(e));
        }
    }
    Configuration record;
    try {
        setter.update_config(&record);
    } catch (const OptionParser::error &e) {
        throw Failure(last_place(assignments, e.option), shown_message(e));
    }
    return record;
}

} // namespace dalvo::tools
