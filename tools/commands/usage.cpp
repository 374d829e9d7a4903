#include "tools/commands/usage.h"

#include <algorithm>

#include "dalvo/inspect/words/printable.h"
#include "dalvo/inspect/words/words.h"
#include "dalvo/options/nearby.h"
#include "tools/commands/inputs.h"

namespace dalvo::tools {

namespace {

/// " (did you mean ...?)", of `candidates`.
std::string hint(const std::string &word, const std::vector<std::string> &candidates)
{
    NearbyNames nearby(word);
    for (const std::string &candidate : candidates) {
        nearby.offer(candidate);
    }
    return inspect::did_you_mean(nearby.nearest(3));
}

std::vector<std::string> command_names(const CLI::App &tool)
{
    std::vector<std::string> names;
    for (const CLI::App *const command : tool.get_subcommands({})) {
        if (!command->get_group().empty()) {
            names.push_back(command->get_name());
        }
    }
    return names;
}

/// With their dashes.
std::vector<std::string> flag_names(const CLI::App &app)
{
    std::vector<std::string> names;
    for (const CLI::Option *const option : app.get_options({})) {
        for (const std::string &name : option->get_lnames()) {
            names.push_back("--" + name);
        }
        for (const std::string &name : option->get_snames()) {
            names.push_back("-" + name);
        }
    }
    return names;
}

/// What is wrong with a word that starts with a dash.
std::string flag_problem(const CLI::App &app, const std::string &word)
{
    const std::vector<std::string> known = flag_names(app);
    const bool is_long = word.compare(0, 2, "--") == 0;
    const std::string name = is_long ? word.substr(0, word.find('=')) : word.substr(0, 2);
    if (std::find(known.begin(), known.end(), name) != known.end()) {
        return "";
    }
    const std::string shown = inspect::shown(is_long ? name : word);
    if (is_long) {
        return "no option " + shown + hint(name, known);
    }
    return shown + " looks like an option, and there is none of that name; a file of that name is ./" + shown;
}

} // namespace

std::string usage_problem(const CLI::App &tool, const std::vector<std::string> &words)
{
    const CLI::App *app = &tool;
    for (const std::string &guarded_word : words) {
        const std::string word = plain(guarded_word);
        if (word == "--") {
            break;
        }
        if (word.size() > 1 && word.front() == '-') {
            const std::string problem = flag_problem(*app, word);
            if (!problem.empty()) {
                return problem;
            }
        } else if (app == &tool) {
            const auto commands =
                tool.get_subcommands([&](const CLI::App *command) { return command->get_name() == word; });
            if (commands.empty()) {
                return "no command " + inspect::quoted(word) + hint(word, command_names(tool));
            }
            app = commands.front();
        }
    }
    return "";
}

} // namespace dalvo::tools
