#pragma once

#include <string>
#include <vector>

#include <CLI/CLI.hpp>

namespace dalvo::tools {

// What completion scripts say, whatever the shell: read off the tool's own commands and the catalogue.

/// Something to complete to, and what it means, in one line, which may be empty.
struct CompletionWord {
    std::string text;
    std::string meaning;
};

/// What a place of the command line takes.
struct CompletionValue {
    enum class Kind {
        unknown,     ///< something that cannot be listed
        words,       ///< one of `words`
        files,       ///< a path
        presets,     ///< the name of a preset
        options,     ///< the name of an option of the catalogue
        assignments, ///< NAME=VALUE, with such a name
    };

    Kind kind = Kind::unknown;
    std::vector<CompletionWord> words;
};

struct CompletionFlag {
    std::vector<std::string> names; ///< with their dashes
    std::string description;
    bool repeats;
    bool takes_value;
    std::string value_name; ///< for people: "NAME=VALUE"
    CompletionValue value;
};

struct CompletionPositional {
    std::string name;
    bool repeats;
    CompletionValue value;
};

struct CompletionCommand {
    std::string name;
    std::string description;
    std::vector<CompletionFlag> flags;
    std::vector<CompletionPositional> positionals;
};

struct CompletionModel {
    CompletionCommand tool; ///< what stands before a command, itself without a name
    std::vector<CompletionCommand> commands;
};

/// All but what is hidden from the help.
CompletionModel completion_model(const CLI::App &tool);

/// The words that `option` takes: those of its `CLI::IsMember` check, or of its type where that is like "text|json";
/// empty where it says nothing of the kind.
std::vector<std::string> members_of(const CLI::Option &option);

/// The type of `option`'s values for people: without what its checks add to it.
std::string value_name_of(const CLI::Option &option);

/// The presets with their summaries.
std::vector<CompletionWord> preset_words();

/// The options of the catalogue, with the first lines of their help.
std::vector<CompletionWord> option_words();

/// An option of the catalogue with values that can be listed: both of a bool, the documented codes of an int.
struct ListedValues {
    std::string option;
    std::vector<CompletionWord> values;
};

std::vector<ListedValues> listed_values();

/// `text` in single quotes, as sh, bash and zsh read it.
std::string shell_quoted(const std::string &text);

/// The texts of the words, with a blank between them.
std::string texts_of(const std::vector<CompletionWord> &words);

// The scripts.
std::string bash_completion(const CompletionModel &model);
std::string fish_completion(const CompletionModel &model);
std::string zsh_completion(const CompletionModel &model);

} // namespace dalvo::tools
