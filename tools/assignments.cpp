#include "tools/assignments.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <iostream>
#include <memory>

#include "tools/diagnostics.h"

namespace dalvo::tools {

namespace {

constexpr std::int32_t file_level = 2;
constexpr std::int32_t override_level = 1;

/// A text that has been read, in a setter of its own, so that each of its assignments is known to be its.
struct Source {
    std::string origin;
    std::unique_ptr<ConfigurationSetter> text = std::make_unique<ConfigurationSetter>();
};

void load(ConfigurationSetter &text, std::istream &in, const std::string &origin)
{
    try {
        text.load(in, file_level);
    } catch (const OptionParser::error &e) {
        throw Failure(origin, e.message_stream.str());
    }
    if (in.bad()) {
        throw Failure(origin, "cannot be read");
    }
}

Source read_file(const std::string &path)
{
    if (path == "-") {
        Source source{"standard input"};
        load(*source.text, std::cin, source.origin);
        return source;
    }
    Source source{path};
    errno = 0;
    std::ifstream file(path, std::ios_base::binary);
    if (!file) {
        throw Failure(path, errno != 0 ? std::strerror(errno) : "cannot be opened");
    }
    load(*source.text, file, source.origin);
    return source;
}

std::vector<Source> read_sources(const Inputs &inputs)
{
    std::vector<Source> sources;
    if (inputs.with_defaults) {
        sources.push_back({"built-in default text"});
        sources.back().text->load_default();
    }
    for (const std::string &path : inputs.files) {
        sources.push_back(read_file(path));
    }
    return sources;
}

/// The section `name` of a text; null when it has none.
const std::vector<ConfigurationSetter::OptEntry> *find_section(const ConfigurationSetter &text, const std::string &name)
{
    for (const auto *node : text.sections().table().buckets()) {
        for (; node != nullptr; node = node->next()) {
            if (node->value().first == name) {
                return &node->value().second;
            }
        }
    }
    return nullptr;
}

/// Appends the assignments of section `name`, text by text; false when no text has it.
bool append_section(const std::vector<Source> &sources, const std::string &name, std::vector<Assignment> &assignments)
{
    bool found = false;
    for (const Source &source : sources) {
        if (const auto *entries = find_section(*source.text, name)) {
            found = true;
            for (const ConfigurationSetter::OptEntry &entry : *entries) {
                assignments.push_back({entry, source.origin});
            }
        }
    }
    return found;
}

/// Where the value of option `name` was last assigned.
std::string last_origin(const std::vector<Assignment> &assignments, const std::string &name)
{
    for (auto at = assignments.rbegin(); at != assignments.rend(); ++at) {
        if (at->entry.name == name) {
            return at->origin;
        }
    }
    return name;
}

} // namespace

std::vector<Assignment> applying_assignments(const Inputs &inputs)
{
    const std::vector<Source> sources = read_sources(inputs);
    std::vector<Assignment> assignments;
    append_section(sources, "", assignments);
    if (!inputs.section.empty() && !append_section(sources, inputs.section, assignments)) {
        std::cerr << "dalvo-config: warning: no section '" << escaped(inputs.section) << "'\n";
    }
    for (const auto &[name, value] : inputs.overrides) {
        assignments.push_back({{name, value, override_level}, "command line"});
    }
    return assignments;
}

Configuration settings_of(const std::vector<Assignment> &assignments)
{
    ConfigurationSetter setter;
    setter.initialize_options();
    for (const auto &[entry, origin] : assignments) {
        try {
            setter.set_option(entry.name, entry.value, entry.level);
        } catch (const OptionParser::error &e) {
            throw Failure(origin, e.message_stream.str());
        }
    }
    Configuration settings;
    try {
        setter.update_config(&settings);
    } catch (const OptionParser::error &e) {
        throw Failure(last_origin(assignments, e.option), e.message_stream.str());
    }
    return settings;
}

} // namespace dalvo::tools
