#include "tools/completion/model.h"

namespace dalvo::tools {

namespace {

using Kind = CompletionValue::Kind;

constexpr const char *functions = R"bash(
# Sets `words` to the words up to the cursor. COMP_WORDS has them cut at COMP_WORDBREAKS, "=" among it: a piece that no
# blank parts from the piece before it belongs to that one's word.
_dalvo_config_split()
{
    local rest=${COMP_LINE:0:COMP_POINT} piece blanks i
    words=()
    for (( i = 0; i <= COMP_CWORD; ++i )); do
        blanks=${rest%%[![:blank:]]*}
        rest=${rest#"$blanks"}
        piece=${COMP_WORDS[i]}
        [[ $rest == "$piece"* ]] || piece=$rest # the cursor stands within it
        if [[ i -eq 0 || -n $blanks ]]; then
            words+=("$piece")
        else
            words[${#words[@]} - 1]+=$piece
        fi
        rest=${rest#"$piece"}
    done
}

# Offers each line of $2 that starts with $1, behind the text $3, which stands in the word already. Bash replaces only
# what follows the last "=" where that breaks words.
_dalvo_config_offer()
{
    local line kept=
    [[ $COMP_WORDBREAKS == *=* && $current == *=* ]] && kept=${current%"${current##*=}"}
    while IFS= read -r line; do
        if [[ -n $line && $line == "$1"* ]]; then
            line=$3$line
            COMPREPLY+=("${line#"$kept"}")
        fi
    done <<< "$2"
}

_dalvo_config_offer_assignments()
{
    local values=
    if [[ $1 == *=* ]]; then
        _dalvo_config_values "${1%%=*}"
        _dalvo_config_offer "${1#*=}" "$values" "$2${1%%=*}="
    else
        _dalvo_config_offer "$1" "${_dalvo_config_options//$'\n'/=$'\n'}=" "$2"
        compopt -o nospace 2>/dev/null
    fi
}

# Readline's own completion of file names knows quotes and "~"; before bash 4 there is no asking for it.
_dalvo_config_offer_files()
{
    compopt -o default 2>/dev/null || _dalvo_config_offer "$1" "$(compgen -f -- "$1")" "$2"
}

# Offers what a place of the kind $1 takes and starts with $2, behind the text $3.
_dalvo_config_offer_kind()
{
    case $1 in
        @files) _dalvo_config_offer_files "$2" "$3" ;;
        @presets) _dalvo_config_offer "$2" "$_dalvo_config_presets" "$3" ;;
        @options) _dalvo_config_offer "$2" "$_dalvo_config_options" "$3" ;;
        @assignments) _dalvo_config_offer_assignments "$2" "$3" ;;
        @unknown) ;;
        *) _dalvo_config_offer "$2" "$1" "$3" ;;
    esac
}

_dalvo_config()
{
    local words current command= position=0 kind= pending= no_flags= i
    _dalvo_config_split
    current=${words[${#words[@]} - 1]}
    COMPREPLY=()
    for (( i = 1; i < ${#words[@]} - 1; ++i )); do
        if [[ -n $pending ]]; then
            pending=
        elif [[ -z $no_flags && ${words[i]} == -- ]]; then
            no_flags=yes
        elif [[ -z $no_flags && ${words[i]} == -?* ]]; then
            _dalvo_config_value "$command ${words[i]}"
            pending=$kind
        elif [[ -z $command ]]; then
            command=${words[i]}
        else
            position=$(( position + 1 ))
        fi
    done
    if [[ -n $pending ]]; then
        _dalvo_config_offer_kind "$pending" "$current" ''
    elif [[ -z $no_flags && $current == --*=* ]]; then
        _dalvo_config_value "$command ${current%%=*}"
        _dalvo_config_offer_kind "$kind" "${current#*=}" "${current%%=*}="
    elif [[ -z $no_flags && $current == -[!-]?* ]]; then
        _dalvo_config_value "$command ${current:0:2}"
        [[ -n $kind ]] && _dalvo_config_offer_kind "$kind" "${current:2}" "${current:0:2}"
    elif [[ -z $no_flags && $current == -* ]]; then
        _dalvo_config_flags "$command"
    elif [[ -z $command ]]; then
        _dalvo_config_offer "$current" "$_dalvo_config_commands" ''
    else
        _dalvo_config_positional "$command $position"
        _dalvo_config_offer_kind "$kind" "$current" ''
    fi
    return 0
}

complete -F _dalvo_config dalvo-config
)bash";

std::string lines(const std::vector<CompletionWord> &words)
{
    std::string text;
    for (const CompletionWord &word : words) {
        text += (text.empty() ? "" : "\n") + word.text;
    }
    return text;
}

/// `words` as one word of bash, on one line.
std::string short_lines(const std::vector<CompletionWord> &words)
{
    std::string text = "$'";
    for (const CompletionWord &word : words) {
        text += (text.size() == 2 ? "" : "\\n") + word.text;
    }
    return text + "'";
}

std::string kind_text(const CompletionValue &value)
{
    switch (value.kind) {
    case Kind::unknown: break;
    case Kind::words: return short_lines(value.words);
    case Kind::files: return "@files";
    case Kind::presets: return "@presets";
    case Kind::options: return "@options";
    case Kind::assignments: return "@assignments";
    }
    return "@unknown";
}

std::string flags_row(const CompletionCommand &command)
{
    std::vector<CompletionWord> names;
    for (const CompletionFlag &flag : command.flags) {
        for (const std::string &name : flag.names) {
            names.push_back({name, ""});
        }
    }
    return "        '" + command.name + "') _dalvo_config_offer \"$current\" " + short_lines(names) + " '' ;;\n";
}

std::string value_rows(const CompletionCommand &command)
{
    std::string rows;
    for (const CompletionFlag &flag : command.flags) {
        if (flag.takes_value) {
            std::string patterns;
            for (const std::string &name : flag.names) {
                patterns += (patterns.empty() ? "'" : " | '") + command.name + " " + name + "'";
            }
            rows += "        " + patterns + ") kind=" + kind_text(flag.value) + " ;;\n";
        }
    }
    return rows;
}

std::string positional_rows(const CompletionCommand &command)
{
    std::string rows;
    for (std::size_t i = 0; i < command.positionals.size(); ++i) {
        const CompletionPositional &positional = command.positionals[i];
        const std::string pattern =
            positional.repeats ? "'" + command.name + " '*" : "'" + command.name + " " + std::to_string(i) + "'";
        rows += "        " + pattern + ") kind=" + kind_text(positional.value) + " ;;\n";
    }
    return rows;
}

std::string case_function(const std::string &comment, const std::string &name, const std::string &rows)
{
    return "\n# " + comment + "\n" + name + "()\n{\n    case $1 in\n" + rows + "    esac\n}\n";
}

std::string variable(const std::string &name, const std::vector<CompletionWord> &words)
{
    return "\n" + name + "=" + shell_quoted(lines(words)) + "\n";
}

} // namespace

std::string bash_completion(const CompletionModel &model)
{
    std::string flags = flags_row(model.tool);
    std::string values = value_rows(model.tool);
    std::string positionals;
    std::vector<CompletionWord> names;
    for (const CompletionCommand &command : model.commands) {
        names.push_back({command.name, ""});
        flags += flags_row(command);
        values += value_rows(command);
        positionals += positional_rows(command);
    }
    std::string listed;
    for (const ListedValues &option : listed_values()) {
        listed += "        " + option.option + ") values=" + short_lines(option.values) + " ;;\n";
    }
    return "# Completion of dalvo-config in bash: source <(dalvo-config completion bash)\n" +
           variable("_dalvo_config_commands", names) + variable("_dalvo_config_presets", preset_words()) +
           variable("_dalvo_config_options", option_words()) +
           case_function("Offers the flags of the command $1; '' stands for none yet.", "_dalvo_config_flags", flags) +
           case_function("Sets `kind` to what the flag takes that $1 names, \"COMMAND FLAG\"; to '' for nothing.",
                         "_dalvo_config_value", values + "        *) kind= ;;\n") +
           case_function("Sets `kind` to what the command takes at the place that $1 names, \"COMMAND NUMBER\".",
                         "_dalvo_config_positional", positionals + "        *) kind=@unknown ;;\n") +
           case_function("Sets `values` to the documented values of the option $1.", "_dalvo_config_values", listed) +
           functions;
}

} // namespace dalvo::tools
