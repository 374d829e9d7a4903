#include "tools/output/manpage.h"

#include <algorithm>
#include <cctype>
#include <sstream>
#include <vector>

#include "tools/completion/model.h"

namespace dalvo::tools {

namespace {

constexpr const char *closing_sections = R"(.SH EXIT STATUS
.TP
.B 0
All is fine.
.TP
.B 1
What was asked for found problems, or differences.
.TP
.B 2
Wrong usage, or a file that cannot be read. For
.B diff
a file that is wrong in any way, since 1 means that the two differ.
.SH FILES
Only the files that are named on the command line are read;
.B \-
is standard input. The built\-in default text and the presets are part of the program.
.SH ENVIRONMENT
.TP
.B NO_COLOR
When it is set, nothing is coloured. Without it, colours are for terminals only.
.TP
.B COLUMNS
The width that text is wrapped to; without it, that of the terminal.
)";

std::string bold(const std::string &text)
{
    return "\\fB" + roff_text(text) + "\\fR";
}

std::string italic(const std::string &text)
{
    return "\\fI" + roff_text(text) + "\\fR";
}

bool repeats(const CLI::Option &option)
{
    return option.get_items_expected_max() > 1;
}

/// What an option takes: its members, or the name of its type; empty for a flag.
std::string value_text(const CLI::Option &option)
{
    if (option.get_items_expected_max() == 0) {
        return "";
    }
    std::string text;
    for (const std::string &member : members_of(option)) {
        text += (text.empty() ? "" : "|") + bold(member);
    }
    return text.empty() ? italic(value_name_of(option)) : text;
}

/// The names of an option, or of a positional, with what it takes.
std::string heading(const CLI::Option &option)
{
    if (option.get_positional()) {
        const std::string members = members_of(option).empty() ? "" : " (" + value_text(option) + ")";
        return italic(option.get_name(true)) + (repeats(option) ? "..." : "") + members;
    }
    std::string text;
    for (const std::string &name : option.get_snames()) {
        text += (text.empty() ? "" : ", ") + bold("-" + name);
    }
    for (const std::string &name : option.get_lnames()) {
        text += (text.empty() ? "" : ", ") + bold("--" + name);
    }
    const std::string value = value_text(option);
    return value.empty() ? text : text + " " + value;
}

/// An option as it stands in a synopsis, where no line ends within it and its dots end no sentence.
std::string usage(const CLI::Option &option)
{
    const std::string dots = repeats(option) ? "...\\&" : "";
    if (option.get_positional()) {
        const std::string name = italic(option.get_name(true)) + dots;
        return option.get_required() ? "\\%" + name : "\\%[" + name + "]";
    }
    const std::string value = value_text(option);
    const std::string text = bold(option.get_name()) + (value.empty() ? "" : "\\ " + value);
    return option.get_required() ? "\\%" + text : "\\%[" + text + "]" + dots;
}

/// The options of `app` that its help shows, the positionals first or last; of a command all but --help, which each
/// has.
std::vector<const CLI::Option *> shown_options(const CLI::App &app, bool positionals_first)
{
    const bool is_command = app.get_parent() != nullptr;
    std::vector<const CLI::Option *> options = app.get_options([&](const CLI::Option *option) {
        return !option->get_group().empty() && !(is_command && option == app.get_help_ptr());
    });
    std::stable_partition(options.begin(), options.end(),
                          [&](const CLI::Option *option) { return option->get_positional() == positionals_first; });
    return options;
}

std::string option_list(const CLI::App &app)
{
    std::string text;
    for (const CLI::Option *option : shown_options(app, true)) {
        text += ".TP\n" + heading(*option) + "\n" + roff_text(option->get_description()) + "\n";
    }
    return text;
}

/// Paragraphs, which empty lines part; lines that start with blanks are an example, shown as they stand.
std::string paragraphs(const std::string &text)
{
    std::string result;
    bool is_example = false;
    bool is_new = true;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        const bool is_indented = !line.empty() && line.front() == ' ';
        if (is_example && !is_indented) {
            result += ".EE\n.RE\n";
            is_new = true;
        } else if (!is_example && is_indented) {
            result += ".RS 4\n.EX\n";
        }
        is_example = is_indented;
        if (line.empty()) {
            is_new = true;
            continue;
        }
        result += is_new && !is_example ? ".PP\n" : "";
        is_new = false;
        result += roff_text(is_example ? line.substr(std::min<std::size_t>(2, line.find_first_not_of(' '))) : line);
        result += "\n";
    }
    return is_example ? result + ".EE\n.RE\n" : result;
}

std::string command_text(const std::string &tool, const CLI::App &app)
{
    std::string text = ".SS " + roff_text(app.get_name()) + "\n.na\n" + bold(tool + " " + app.get_name());
    for (const CLI::Option *option : shown_options(app, false)) {
        text += "\n" + usage(*option);
    }
    return text + "\n.br\n.ad\n" + paragraphs(app.get_description() + ".") + option_list(app) +
           paragraphs(app.get_footer());
}

/// "Answers it." as "answers it".
std::string summary(std::string description)
{
    description.erase(std::min(description.find('.'), description.size()));
    if (!description.empty()) {
        description[0] = static_cast<char>(std::tolower(static_cast<unsigned char>(description[0])));
    }
    return description;
}

std::string upper(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    return text;
}

} // namespace

std::string roff_text(const std::string &text)
{
    std::string result;
    bool starts_line = true;
    for (const char c : text) {
        if (starts_line && (c == '.' || c == '\'')) {
            result += "\\&";
        }
        starts_line = c == '\n';
        switch (c) {
        case '\\': result += "\\(rs"; break;
        case '-': result += "\\-"; break;
        case '\'': result += "\\(aq"; break;
        case '`': result += "\\(ga"; break;
        case '^': result += "\\(ha"; break;
        case '~': result += "\\(ti"; break;
        default: result += c;
        }
    }
    return result;
}

std::string manual_page(const CLI::App &tool)
{
    const std::string &name = tool.get_name();
    std::string text = ".\\\" Written by `" + name + " man` out of its own help.\n.TH " + roff_text(upper(name)) +
                       " 1 \"\" \"" + roff_text(tool.version()) + "\"\n.SH NAME\n" + roff_text(name) + " \\- " +
                       roff_text(summary(tool.get_description())) + "\n.SH SYNOPSIS\n" + bold(name) + "\n" +
                       italic("COMMAND") + "\n[" + italic("OPTION") + "]...\\&\n[" + italic("ARGUMENT") +
                       "]...\n.SH DESCRIPTION\n" + roff_text(tool.get_description()) +
                       "\nWhat is asked for goes to standard output, what is to be said about it to standard error.\n" +
                       paragraphs(tool.get_footer()) + ".SH OPTIONS\nEach command has " + bold("--help") + ", too.\n" +
                       option_list(tool) + ".SH COMMANDS\n";
    for (const CLI::App *app : tool.get_subcommands({})) {
        if (!app->get_group().empty()) {
            text += command_text(name, *app);
        }
    }
    return text + closing_sections;
}

} // namespace dalvo::tools
