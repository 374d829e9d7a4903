#include "tools/completion/model.h"

namespace dalvo::tools {

namespace {

using Kind = CompletionValue::Kind;

constexpr const char *functions = R"zsh(
_dalvo-config-assignments()
{
    local -a values
    if [[ $PREFIX != *=* ]]; then
        _describe -t solver-options option _dalvo_config_options -S =
        return
    fi
    case ${PREFIX%%=*} in
@values@    esac
    compset -P 1 '*='
    (( $#values )) && _describe -t values value values
}

_dalvo-config()
{
    local curcontext=$curcontext context state state_descr line ret=1
    typeset -A opt_args
    _arguments -C -S \
@tool@        ':command:->command' \
        '*::argument:->argument' && ret=0
    case $state in
        command) _describe -t commands command _dalvo_config_commands && ret=0 ;;
        argument)
            curcontext=${curcontext%:*:*}:dalvo-config-$words[1]:
            case $words[1] in
@commands@            esac
            ;;
    esac
    return ret
}

if [[ $funcstack[1] == _dalvo-config ]]; then
    _dalvo-config "$@" # a file of fpath, at its first use
else
    compdef _dalvo-config dalvo-config
fi
)zsh";

/// `text` with a backslash before each character of `special`, and each backslash.
std::string marked(const std::string &text, const std::string &special)
{
    std::string result;
    for (const char c : text) {
        if (c == '\\' || special.find(c) != std::string::npos) {
            result += '\\';
        }
        result += c;
    }
    return result;
}

/// "text:meaning", as _describe takes it.
std::string described(const CompletionWord &word)
{
    return shell_quoted(marked(word.text, ":") + (word.meaning.empty() ? "" : ":" + marked(word.meaning, "")));
}

std::string array(const std::string &name, const std::vector<CompletionWord> &words)
{
    std::string text = "\ntypeset -ga " + name + "\n" + name + "=(\n";
    for (const CompletionWord &word : words) {
        text += "    " + described(word) + "\n";
    }
    return text + ")\n";
}

/// What stands behind "MESSAGE:" in an argument of _arguments.
std::string action(const CompletionValue &value)
{
    switch (value.kind) {
    case Kind::unknown: break;
    case Kind::words: return "(" + texts_of(value.words) + ")";
    case Kind::files: return "_files";
    case Kind::presets: return "{_describe -t presets preset _dalvo_config_presets}";
    case Kind::options: return "{_describe -t solver-options option _dalvo_config_options}";
    case Kind::assignments: return "_dalvo-config-assignments";
    }
    return " ";
}

std::string flag_lines(const CompletionFlag &flag, const std::string &indent)
{
    std::string others;
    for (const std::string &name : flag.names) {
        others += (others.empty() ? "" : " ") + name;
    }
    std::string text;
    for (const std::string &name : flag.names) {
        std::string entry = flag.repeats ? "*" : "(" + others + ")";
        entry += name;
        if (flag.takes_value) {
            entry += name.size() > 2 ? "=" : "+"; // in the same argument or the next
        }
        entry += "[" + marked(flag.description, "[]") + "]";
        if (flag.takes_value) {
            entry += ":" + marked(flag.value_name, ":") + ":" + action(flag.value);
        }
        text += indent + shell_quoted(entry) + " \\\n";
    }
    return text;
}

std::string command_lines(const CompletionCommand &command)
{
    const std::string indent(20, ' ');
    std::string text = "                " + command.name + ")\n" + indent + "_arguments -S \\\n";
    for (const CompletionFlag &flag : command.flags) {
        text += flag_lines(flag, indent + "    ");
    }
    for (const CompletionPositional &positional : command.positionals) {
        text += indent + "    " +
                shell_quoted((positional.repeats ? "*:" : ":") + marked(positional.name, ":") + ":" +
                             action(positional.value)) +
                " \\\n";
    }
    return text + indent + "    && ret=0\n" + indent + ";;\n";
}

std::string values_lines()
{
    std::string text;
    for (const ListedValues &option : listed_values()) {
        text += "        " + option.option + ") values=(";
        for (const CompletionWord &value : option.values) {
            text += (text.back() == '(' ? "" : " ") + described(value);
        }
        text += ") ;;\n";
    }
    return text;
}

void replace(std::string &text, const std::string &mark, const std::string &with)
{
    text.replace(text.find(mark), mark.size(), with);
}

} // namespace

std::string zsh_completion(const CompletionModel &model)
{
    std::vector<CompletionWord> names;
    std::string commands;
    for (const CompletionCommand &command : model.commands) {
        names.push_back({command.name, command.description});
        commands += command_lines(command);
    }
    std::string tool;
    for (const CompletionFlag &flag : model.tool.flags) {
        tool += flag_lines(flag, "        ");
    }
    std::string text = functions;
    replace(text, "@values@", values_lines());
    replace(text, "@tool@", tool);
    replace(text, "@commands@", commands);
    return "#compdef dalvo-config\n# Completion of dalvo-config in zsh: source <(dalvo-config completion zsh)\n" +
           array("_dalvo_config_commands", names) + array("_dalvo_config_presets", preset_words()) +
           array("_dalvo_config_options", option_words()) + text;
}

} // namespace dalvo::tools
