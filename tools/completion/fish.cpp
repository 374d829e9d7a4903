#include "tools/completion/model.h"

namespace dalvo::tools {

namespace {

using Kind = CompletionValue::Kind;

constexpr const char *functions = R"fish(
# The command of the line and the number of arguments behind it up to the cursor's word; nothing before a command.
function __dalvo_config_place
    set -l command
    set -l position 0
    set -l pending
    set -l no_flags
    set -l words (commandline -opc)
    for word in $words[2..-1]
        if set -q pending[1]
            set -e pending
        else if test -z "$no_flags"; and test "x$word" = x--
            set no_flags yes
        else if test -z "$no_flags"; and string match -qr -- '^-.' $word
            contains -- "$command $word" $__dalvo_config_takes_value; and set pending yes
        else if test -z "$command"
            set command $word
        else
            set position (math $position + 1)
        end
    end
    test -n "$command"; and printf '%s\n' $command $position
end

# Whether the word at the cursor is argument $argv[2], from 0, of the command $argv[1], or a later one with "+" as
# $argv[3]; with the command alone, whether that is the line's.
function __dalvo_config_at
    set -l place (__dalvo_config_place)
    test "$place[1]" = "$argv[1]"; or return 1
    set -q argv[2]; or return 0
    test $place[2] -eq $argv[2]; and return 0
    set -q argv[3]; and test $place[2] -gt $argv[2]
end

function __dalvo_config_assignments
    set -l word (commandline -ct | string replace -r -- '^(--option=|-o)' '')
    set -l name (string split -m 1 = -- $word)[1]
    if not string match -q -- '*=*' $word
        __dalvo_config_options | string replace -r '\t' '=\t'
    else
        __dalvo_config_values $name | string replace -r '^' "$name="
    end
end

complete -c dalvo-config -e
complete -c dalvo-config -f
)fish";

std::string fish_quoted(const std::string &text)
{
    std::string result = "'";
    for (const char c : text) {
        if (c == '\'' || c == '\\') {
            result += '\\';
        }
        result += c;
    }
    return result + "'";
}

/// A function that writes `words`, each with a tab and its meaning behind it.
std::string writing_function(const std::string &name, const std::vector<CompletionWord> &words)
{
    std::string text = "\nfunction " + name + "\n    printf '%s\\t%s\\n'";
    for (const CompletionWord &word : words) {
        text += " \\\n        " + fish_quoted(word.text) + " " + fish_quoted(word.meaning);
    }
    return text + "\nend\n";
}

std::string values_function()
{
    std::string text = "\n# The documented values of the option $argv[1].\nfunction __dalvo_config_values\n"
                       "    switch $argv[1]\n";
    for (const ListedValues &option : listed_values()) {
        text += "        case " + fish_quoted(option.option) + "\n            printf '%s\\t%s\\n'";
        for (const CompletionWord &value : option.values) {
            text += " " + fish_quoted(value.text) + " " + fish_quoted(value.meaning);
        }
        text += "\n";
    }
    return text + "    end\nend\n";
}

/// What `complete` is told of a value.
std::string value_arguments(const CompletionValue &value)
{
    switch (value.kind) {
    case Kind::unknown: break;
    case Kind::words: return " -a " + fish_quoted(texts_of(value.words));
    case Kind::files: return " -F";
    case Kind::presets: return " -a '(__dalvo_config_presets)'";
    case Kind::options: return " -a '(__dalvo_config_options)'";
    case Kind::assignments: return " -a '(__dalvo_config_assignments)'";
    }
    return "";
}

/// `condition` is what `complete` takes behind -n.
std::string flag_line(const CompletionFlag &flag, const std::string &condition)
{
    std::string text = "complete -c dalvo-config -n " + fish_quoted(condition);
    for (const std::string &name : flag.names) {
        text += name.size() > 2 ? " -l " + name.substr(2) : " -s " + name.substr(1);
    }
    if (flag.takes_value) {
        text += std::string(flag.value.kind == Kind::files ? " -r" : " -x") + value_arguments(flag.value);
    }
    return text + " -d " + fish_quoted(flag.description) + "\n";
}

std::string command_lines(const CompletionCommand &command)
{
    std::string text = "\ncomplete -c dalvo-config -n 'not __dalvo_config_place >/dev/null' -a " +
                       fish_quoted(command.name) + " -d " + fish_quoted(command.description) + "\n";
    for (const CompletionFlag &flag : command.flags) {
        text += flag_line(flag, "__dalvo_config_at " + command.name);
    }
    for (std::size_t i = 0; i < command.positionals.size(); ++i) {
        const CompletionPositional &positional = command.positionals[i];
        text += "complete -c dalvo-config -n " +
                fish_quoted("__dalvo_config_at " + command.name + " " + std::to_string(i) +
                            (positional.repeats ? " +" : "")) +
                value_arguments(positional.value) + "\n";
    }
    return text;
}

std::string takes_value(const CompletionModel &model)
{
    std::string text = "\n# Each command with each of its flags that take a value.\nset -g __dalvo_config_takes_value";
    for (const CompletionCommand &command : model.commands) {
        for (const CompletionFlag &flag : command.flags) {
            for (const std::string &name : flag.names) {
                text += flag.takes_value ? " \\\n    " + fish_quoted(command.name + " " + name) : "";
            }
        }
    }
    return text + "\n";
}

} // namespace

std::string fish_completion(const CompletionModel &model)
{
    std::string text = "# Completion of dalvo-config in fish: dalvo-config completion fish | source\n" +
                       takes_value(model) + writing_function("__dalvo_config_presets", preset_words()) +
                       writing_function("__dalvo_config_options", option_words()) + values_function() + functions;
    for (const CompletionFlag &flag : model.tool.flags) {
        text += flag_line(flag, "not __dalvo_config_place >/dev/null");
    }
    for (const CompletionCommand &command : model.commands) {
        text += command_lines(command);
    }
    return text;
}

} // namespace dalvo::tools
