#include "examples/host/settings.h"

#include <fstream>
#include <sstream>

namespace examples {

namespace {

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

} // namespace examples
