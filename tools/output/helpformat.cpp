#include "tools/output/helpformat.h"

#include <sstream>

#include "dalvo/utils/textwrap.h"

namespace dalvo::tools {

namespace {

constexpr std::size_t line_width = 80;
constexpr std::size_t name_width = 28; // of the names and what they take; longer ones have a line of their own

/// `name`, and `description` in lines beside it.
std::string row(const std::string &name, const std::string &description)
{
    std::string text = "  " + name;
    bool is_first = true;
    for (const std::string &line : str::wrap(description, line_width - name_width)) {
        if (is_first && text.size() + 2 <= name_width) {
            text.resize(name_width, ' ');
        } else {
            text += "\n" + std::string(name_width, ' ');
        }
        text += line;
        is_first = false;
    }
    return text + "\n";
}

std::string paragraphs(const std::string &text)
{
    std::string wrapped;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        if (line.empty() || line.front() == ' ') {
            wrapped += line + "\n";
            continue;
        }
        for (const std::string &part : str::wrap(line, line_width)) {
            wrapped += part + "\n";
        }
    }
    return wrapped;
}

} // namespace

HelpFormatter::HelpFormatter()
{
    column_width(name_width);
}

std::string HelpFormatter::make_option(const CLI::Option *option, bool is_positional) const
{
    return row(make_option_name(option, is_positional) + make_option_opts(option), make_option_desc(option));
}

std::string HelpFormatter::make_subcommand(const CLI::App *sub) const
{
    return row(sub->get_display_name(true), sub->get_description());
}

std::string HelpFormatter::make_description(const CLI::App *app) const
{
    return paragraphs(CLI::Formatter::make_description(app));
}

std::string HelpFormatter::make_footer(const CLI::App *app) const
{
    return paragraphs(CLI::Formatter::make_footer(app));
}

} // namespace dalvo::tools
