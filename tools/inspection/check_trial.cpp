#include "tools/inspection/check_trial.h"

#include <cmath>
#include <ostream>
#include <unordered_map>

#include "tools/inspection/optioninfo.h"

namespace dalvo::tools {

namespace {

/// Puts what `dump` hands to it into settings that are there already, without their names.
class Overwriter : public ConfigurationSetter::ConfigEntryPrinter {
public:
    explicit Overwriter(std::vector<Setting> &target) : settings(target) {}

    void operator()(std::ostream &, const std::string &, bool value) const override { put(value); }
    void operator()(std::ostream &, const std::string &, int value) const override { put(value); }
    void operator()(std::ostream &, const std::string &, unsigned int value) const override { put(value); }
    void operator()(std::ostream &, const std::string &, double value) const override { put(value); }
    void operator()(std::ostream &, const std::string &, const std::string &value) const override { put(value); }

private:
    template <class T> void put(const T &value) const { settings[next++].value = value; }

    std::vector<Setting> &settings;
    mutable std::size_t next = 0;
};

/// Whether a record's setting is what an option's value makes of it.
struct SameValue {
    const OptionParser::Value &own;

    template <class T> bool is(const T &value) const
    {
        const T *const held = std::get_if<T>(&own);
        return held != nullptr && *held == value;
    }

    bool operator()(bool value) const { return is(value); }
    bool operator()(int value) const { return is(value); }
    bool operator()(unsigned int value) const { return is(static_cast<int>(value)); }
    bool operator()(const std::string &value) const { return is(value); }
    bool operator()(double value) const
    {
        const float *const held = std::get_if<float>(&own);
        return held != nullptr && (double{*held} == value || (std::isnan(*held) && std::isnan(value)));
    }
};

bool is_same(const OptionParser::Value &own, const Setting &setting)
{
    return std::visit(SameValue{own}, setting.value);
}

} // namespace

Trial::Trial() : settings(settings_of(Configuration()))
{
    std::unordered_map<std::string_view, std::size_t> by_name;
    for (std::size_t position = 0; position < settings.size(); ++position) {
        by_name.emplace(settings[position].name, position);
    }
    setter.initialize_options();
    for (const OptionParser::Option &option : setter.options().options()) {
        positions.push_back(by_name.at(option.name));
        parsed.push_back(&option);
    }
    for (std::size_t option = 0; option < parsed.size(); ++option) {
        texts.push_back(all_options()[option].default_value);
        setter.set_option(parsed[option]->name, texts[option], 0);
    }
}

void Trial::assign(std::size_t option, std::string_view text)
{
    if (texts[option] != text) {
        texts[option] = text;
        setter.set_option(parsed[option]->name, texts[option], 0);
    }
}

void Trial::withdraw(std::size_t option)
{
    assign(option, all_options()[option].default_value);
}

void Trial::run()
{
    Configuration record;
    setter.update_config(&record);
    std::ostream unused(nullptr);
    setter.dump(&record, unused, Overwriter(settings));
}

bool Trial::is_forced(std::size_t option) const
{
    return !is_same(parsed[option]->value, setting(option));
}

bool PairTrials::is_forced(std::size_t option, std::string_view text, std::size_t other, std::string_view other_text)
{
    const auto [found, is_new] = known.try_emplace({option, std::string(text), other, std::string(other_text)}, false);
    if (is_new) {
        ConfigurationSetter setter;
        for (const std::size_t each : {option, other}) {
            setter.options().add_option(all_options()[each].name, all_options()[each].type, "");
        }
        const std::string &name = all_options()[option].name;
        setter.set_option(name, std::string(text), 0);
        setter.set_option(all_options()[other].name, std::string(other_text), 0);
        Configuration record;
        setter.update_config(&record);
        found->second = !is_same(setter.options().find_option(name)->value, setting_named(settings_of(record), name));
    }
    return found->second;
}

} // namespace dalvo::tools
