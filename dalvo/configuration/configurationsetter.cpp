#include "dalvo/configuration/configurationsetter.h"

#include <cstring>
#include <sstream>

#include "dalvo/configuration/default_config.h"

namespace dalvo {

ConfigurationSetter::ConfigurationSetter() : parser(BOOL_STYLE_WORDS), configs(16, 2.0F, 8192) {}

ConfigurationSetter::~ConfigurationSetter() = default;

void ConfigurationSetter::set_option(const std::string &name, const std::string &value, std::int32_t level)
{
    parser.parse_option(name, value, level);
}

void ConfigurationSetter::set_active_config(const std::string &name)
{
    active_config = name;
}

void ConfigurationSetter::load_default()
{
    constexpr std::int32_t default_level = 3;
    std::stringstream text;
    text.exceptions(std::ios_base::badbit); // a text cut short by bad_alloc must not pass for whole
    for (const char *const *piece = dalvo_default_config; *piece != nullptr; ++piece) {
        text << *piece;
    }
    text.seekg(0);
    load(text, default_level);
}

void ConfigurationSetter::parse_active_config()
{
    replay(configs[""]);
    const SectionTable::Table &table = configs.table();
    if (active_config.empty() || table.count() == 0) {
        return;
    }
    // Looked up here, since the map's own look-up would create the section.
    const std::uint64_t bucket = hsh::hash<std::string>()(active_config) % table.buckets().size();
    for (const auto *node = table.buckets()[bucket]; node != nullptr; node = node->next()) {
        const auto &[name, entries] = node->value();
        if (name.size() == active_config.size() && std::memcmp(name.data(), active_config.data(), name.size()) == 0) {
            replay(entries);
            return;
        }
    }
}

void ConfigurationSetter::replay(const std::vector<OptEntry> &entries)
{
    for (const OptEntry &entry : entries) {
        set_option(entry.name, entry.value, entry.level);
    }
}

} // namespace dalvo
