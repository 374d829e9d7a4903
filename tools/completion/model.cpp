#include "tools/completion/model.h"

#include <algorithm>
#include <iterator>
#include <sstream>
#include <utility>

#include "dalvo/inspect/findings/rules.h"
#include "dalvo/inspect/knowledge/catalogue.h"
#include "tools/commands/presettexts.h"

namespace dalvo::tools {

namespace {

using Kind = CompletionValue::Kind;

/// What the command line itself does not say: which kind of name is meant.
struct NameKind {
    const char *command; // null for each that has the option
    const char *option;
    Kind kind;
};

// clang-format off
constexpr NameKind name_kinds[] = {
    {nullptr,   "--preset",  Kind::presets},
    {nullptr,   "--option",  Kind::assignments},
    {"explain", "NAME",      Kind::options},
    {"options", "PATTERN",   Kind::options},
    {"presets", "NAME",      Kind::presets},
};
// clang-format on

CompletionValue words_of(const std::vector<std::string> &texts)
{
    CompletionValue value{Kind::words, {}};
    std::transform(texts.begin(), texts.end(), std::back_inserter(value.words), [](const std::string &text) {
        return CompletionWord{text, ""};
    });
    return value;
}

CompletionValue value_of(const CLI::App &command, const CLI::Option &option)
{
    const std::string name = option.get_name(option.get_positional());
    if (command.get_name() == "check" && name == "--no-warn") {
        return words_of(inspect::warning_names());
    }
    const std::vector<std::string> members = members_of(option);
    if (!members.empty()) {
        return words_of(members);
    }
    for (const NameKind &row : name_kinds) {
        if ((row.command == nullptr || command.get_name() == row.command) && name == row.option) {
            return {row.kind, {}};
        }
    }
    const bool is_file = option.get_positional() || value_name_of(option) == "FILE";
    return {is_file ? Kind::files : Kind::unknown, {}};
}

bool repeats(const CLI::Option &option)
{
    return option.get_items_expected_max() > 1;
}

CompletionFlag flag_of(const CLI::App &command, const CLI::Option &option)
{
    CompletionFlag flag;
    for (const std::string &name : option.get_snames()) {
        flag.names.push_back("-" + name);
    }
    for (const std::string &name : option.get_lnames()) {
        flag.names.push_back("--" + name);
    }
    flag.description = option.get_description();
    flag.repeats = repeats(option);
    flag.takes_value = option.get_items_expected_max() > 0;
    if (flag.takes_value) {
        flag.value_name = value_name_of(option);
        flag.value = value_of(command, option);
    }
    return flag;
}

CompletionCommand command_of(const CLI::App &app)
{
    CompletionCommand command{app.get_name(), app.get_description(), {}, {}};
    for (const CLI::Option *option : app.get_options({})) {
        if (option->get_group().empty()) {
            continue;
        }
        if (option->get_positional()) {
            command.positionals.push_back({option->get_name(true), repeats(*option), value_of(app, *option)});
        } else {
            command.flags.push_back(flag_of(app, *option));
        }
    }
    return command;
}

} // namespace

CompletionModel completion_model(const CLI::App &tool)
{
    CompletionModel model{command_of(tool), {}};
    model.tool.name.clear();
    for (const CLI::App *app : tool.get_subcommands({})) {
        if (!app->get_group().empty()) {
            model.commands.push_back(command_of(*app));
        }
    }
    return model;
}

std::vector<std::string> members_of(const CLI::Option &option)
{
    std::string type = option.get_type_name(); // "FORMAT:{text,json}" or "text|json"
    char separator = '|';
    const std::size_t open = type.find('{');
    if (open != std::string::npos && type.back() == '}') {
        type = type.substr(open + 1, type.size() - open - 2);
        separator = ',';
    } else if (type.find(separator) == std::string::npos) {
        return {};
    }
    std::vector<std::string> members;
    std::istringstream list(type);
    for (std::string member; std::getline(list, member, separator);) {
        members.push_back(member);
    }
    return members;
}

std::string value_name_of(const CLI::Option &option)
{
    const std::string type = option.get_type_name();
    return type.substr(0, type.find(':'));
}

std::vector<CompletionWord> preset_words()
{
    std::vector<CompletionWord> words;
    for (const Preset &preset : presets()) {
        words.push_back({preset.name, summary_of(preset)});
    }
    return words;
}

std::vector<CompletionWord> option_words()
{
    std::vector<CompletionWord> words;
    for (const inspect::OptionInfo &option : inspect::Catalogue::standard().options()) {
        words.push_back({option.name, option.help.substr(0, option.help.find('\n'))});
    }
    return words;
}

std::vector<ListedValues> listed_values()
{
    std::vector<ListedValues> list;
    for (const inspect::OptionInfo &option : inspect::Catalogue::standard().options()) {
        ListedValues listed{option.name, {}};
        if (option.type == OPT_BOOL) {
            listed.values = {{"true", ""}, {"false", ""}};
        }
        for (const inspect::Code &code : option.codes) {
            listed.values.push_back({std::to_string(code.value), code.meaning});
        }
        if (!listed.values.empty()) {
            list.push_back(std::move(listed));
        }
    }
    return list;
}

std::string shell_quoted(const std::string &text)
{
    std::string quoted = "'";
    for (const char c : text) {
        quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    }
    return quoted + "'";
}

std::string texts_of(const std::vector<CompletionWord> &words)
{
    std::string texts;
    for (const CompletionWord &word : words) {
        texts += (texts.empty() ? "" : " ") + word.text;
    }
    return texts;
}

} // namespace dalvo::tools
