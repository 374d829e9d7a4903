#include "dalvo/options/optionparser.h"

#include <algorithm>
#include <ostream>
#include <string>
#include <vector>

#include "dalvo/utils/textwrap.h"

namespace dalvo {

namespace {

constexpr std::size_t line_width = 80;
constexpr const char *name_indent = "  ";
constexpr const char *help_indent = "      ";
constexpr std::size_t help_width = line_width - 6;

const char *type_name(OptionType type)
{
    switch (type) {
    case OPT_BOOL: return "bool";
    case OPT_INT: return "int";
    case OPT_FLOAT: return "float";
    case OPT_STR: break;
    }
    return "string";
}

std::vector<std::string> groups_of(const std::deque<OptionParser::Option> &options)
{
    std::vector<std::string> groups;
    for (const OptionParser::Option &option : options) {
        if (std::find(groups.begin(), groups.end(), option.group) == groups.end()) {
            groups.push_back(option.group);
        }
    }
    return groups;
}

void print_option(std::ostream &out, const OptionParser::Option &option)
{
    out << name_indent << option.name << " (" << type_name(option.type) << ")\n";
    for (const std::string &line : str::wrap(option.help, help_width)) {
        out << (line.empty() ? "" : help_indent) << line << '\n';
    }
}

} // namespace

void OptionParser::print_help(std::ostream &out) const
{
    out.width(0);
    for (const std::string &group : groups_of(registered)) {
        out << (group == registered.front().group ? "" : "\n") << group << '\n';
        for (const Option &option : registered) {
            if (option.group == group) {
                print_option(out, option);
            }
        }
    }
}

} // namespace dalvo
