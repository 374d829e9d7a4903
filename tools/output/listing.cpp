#include "tools/output/listing.h"

#include <fnmatch.h>

#include <algorithm>
#include <ostream>

#include "dalvo/utils/textwrap.h"
#include "dalvo/inspect/runs/explanation.h"
#include "dalvo/inspect/words/printable.h"

namespace dalvo::tools {

namespace {

constexpr const char *help_indent = "      ";
constexpr std::size_t help_indent_width = 6;

void write_indented(std::ostream &out, const std::string &text, std::size_t width)
{
    const std::size_t room = width > help_indent_width ? width - help_indent_width : 1;
    for (const std::string &line : str::wrap(text, room)) {
        out << (line.empty() ? "" : help_indent) << line << '\n';
    }
}

void write_option(std::ostream &out, const inspect::OptionInfo &option, std::size_t width)
{
    const std::string default_text = inspect::value_text(option.default_value);
    out << "  " << option.name << " (" << inspect::type_name(option.type) << ")\n";
    write_indented(
        out, "Default: " + (default_text.empty() ? "empty" : default_text) + ". Accepted: " + option.accepted() + ".",
        width);
    write_indented(out, option.help, width);
}

} // namespace

bool option_matches(const std::string &pattern, const std::string &name)
{
    if (pattern.find_first_of("*?[") != std::string::npos) {
        return fnmatch(pattern.c_str(), name.c_str(), FNM_NOESCAPE) == 0;
    }
    return name.find(pattern) != std::string::npos;
}

Selection select_options(const inspect::Catalogue &catalogue, const std::vector<std::string> &patterns)
{
    Selection selection;
    std::vector<bool> matched(patterns.size());
    for (const inspect::OptionInfo &option : catalogue.options()) {
        bool chosen = patterns.empty();
        for (std::size_t i = 0; i < patterns.size(); ++i) {
            if (option_matches(patterns[i], option.name)) {
                chosen = true;
                matched[i] = true;
            }
        }
        if (chosen) {
            selection.options.push_back(&option);
        }
    }
    for (std::size_t i = 0; i < patterns.size(); ++i) {
        if (!matched[i]) {
            selection.unmatched.push_back(patterns[i]);
        }
    }
    return selection;
}

std::string unmatched_pattern(const inspect::Catalogue &catalogue, const std::string &pattern)
{
    return "no option matches " + inspect::quoted(pattern) + inspect::did_you_mean(catalogue.suggestions(pattern));
}

std::string group_title(const std::string &group)
{
    return group.substr(0, group.size() - (!group.empty() && group.back() == ':' ? 1 : 0));
}

std::vector<OptionList> by_group(const OptionList &options)
{
    std::vector<OptionList> groups;
    for (const inspect::OptionInfo *const option : options) {
        const auto same = std::find_if(groups.begin(), groups.end(),
                                       [&](const OptionList &group) { return group.front()->group == option->group; });
        if (same != groups.end()) {
            same->push_back(option);
        } else {
            groups.push_back({option});
        }
    }
    return groups;
}

void write_listing_text(std::ostream &out, const OptionList &options, std::size_t width)
{
    bool first = true;
    for (const OptionList &group : by_group(options)) {
        out << (first ? "" : "\n") << group.front()->group << '\n';
        first = false;
        for (const inspect::OptionInfo *const option : group) {
            write_option(out, *option, width);
        }
    }
}

} // namespace dalvo::tools
