#include "examples/host/settings.h"

#include <fstream>
#include <locale>
#include <sstream>

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

bool has_section(const dalvo::ConfigurationSetter &setter, const std::string &section)
{
    for (const auto *head : setter.sections().table().buckets()) {
        for (const auto *node = head; node != nullptr; node = node->next()) {
            if (node->value().first == section) {
                return true;
            }
        }
    }
    return false;
}

} // namespace

std::string read_file(const std::string &file)
{
    std::ifstream in(file, std::ios_base::binary);
    std::ostringstream text;
    if (in.peek() != std::ifstream::traits_type::eof()) {
        text << in.rdbuf();
    } else {
        in.clear(in.rdstate() & ~(std::ios_base::eofbit | std::ios_base::failbit)); // an empty file
    }
    if (!in.is_open() || !in || !text) {
        throw Failure(file + ": cannot be read");
    }
    return text.str();
}

dalvo::Configuration read_settings(const std::string &file, const std::string &section)
{
    dalvo::Configuration settings;
    dalvo::ConfigurationSetter setter;
    setter.initialize_options();
    setter.load_default();
    try {
        if (!file.empty()) {
            std::istringstream text(read_file(file));
            setter.load(text, 2);
        }
        if (!section.empty() && !has_section(setter, section)) {
            throw Failure((file.empty() ? "the built-in text" : file) + ": no section '" + section + "'");
        }
        setter.set_active_config(section);
        setter.update_config(&settings);
    } catch (const dalvo::OptionParser::error &e) {
        throw Failure(file + ": " + e.what());
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
