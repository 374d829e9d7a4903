#include <cstddef>
#include <iostream>
#include <memory>
#include <vector>

#include "tools/commands/commands.h"
#include "tools/output/diagnostics.h"
#include "tools/output/table.h"
#include "tools/output/diff_value.h"
#include "tools/commands/inputs.h"
#include "tools/output/jsontext.h"

namespace dalvo::tools {

namespace {

/// One of the two sides.
struct Side {
    std::string path;
    std::string section; ///< empty for none
};

struct Arguments {
    Side a;
    Side b;
    std::vector<std::string> presets; ///< of both
    bool with_defaults = true;
    std::string format = "text";
};

/// The settings of one option on both sides.
struct Difference {
    Setting a;
    Setting b;
};

std::vector<Setting> settings_of_side(const Side &side, const Arguments &arguments)
{
    const Inputs inputs{arguments.presets, {side.path}, side.section, {}, arguments.with_defaults};
    return settings_of(record_of(applying_assignments(inputs)));
}

std::vector<Difference> differences(const Arguments &arguments)
{
    const std::vector<Setting> a = settings_of_side(arguments.a, arguments);
    const std::vector<Setting> b = settings_of_side(arguments.b, arguments);
    std::vector<Difference> found;
    for (std::size_t i = 0; i < a.size(); ++i) { // the same options in the same order
        if (!same_value(a[i], b[i])) {
            found.push_back({a[i], b[i]});
        }
    }
    return found;
}

void write_side(const char *letter, const Side &side)
{
    std::cout << letter << ": " << escaped(file_name(side.path));
    if (!side.section.empty()) {
        std::cout << ", section " << escaped(side.section);
    }
    std::cout << '\n';
}

void write_text(const Arguments &arguments, const std::vector<Difference> &found)
{
    if (found.empty()) {
        return;
    }
    write_side("A", arguments.a);
    write_side("B", arguments.b);
    std::cout << '\n';
    std::vector<std::vector<std::string>> rows{{"", "A", "B"}};
    for (const Difference &difference : found) {
        rows.push_back({difference.a.name, shown_value(difference.a), shown_value(difference.b)});
    }
    write_table(std::cout, rows);
}

nlohmann::ordered_json json_side(const Side &side)
{
    nlohmann::ordered_json json;
    json["file"] = file_name(side.path);
    json["section"] = side.section.empty() ? nlohmann::ordered_json() : nlohmann::ordered_json(side.section);
    return json;
}

void write_json(const Arguments &arguments, const std::vector<Difference> &found)
{
    nlohmann::ordered_json list = nlohmann::ordered_json::array();
    for (const Difference &difference : found) {
        nlohmann::ordered_json json;
        json["name"] = difference.a.name;
        json["a"] = json_value(difference.a);
        json["b"] = json_value(difference.b);
        list.push_back(std::move(json));
    }
    nlohmann::ordered_json json;
    json["a"] = json_side(arguments.a);
    json["b"] = json_side(arguments.b);
    json["differences"] = std::move(list);
    std::cout << json_text(json);
}

/// `e` with the status of wrong usage: a failure never ends with the one that says that the two differ.
Failure usage_failure(const Failure &e)
{
    const std::string text = e.what(); // "where: what"
    const std::size_t colon = text.find(": ");
    return {text.substr(0, colon), text.substr(colon + 2), status_usage};
}

int diff(const Arguments &arguments)
{
    if (arguments.a.path == "-" && arguments.b.path == "-") {
        throw CLI::ValidationError("A and B", "only one of them can be standard input");
    }
    std::vector<Difference> found;
    try {
        found = differences(arguments);
    } catch (const Failure &e) {
        throw usage_failure(e);
    }
    if (arguments.format == "json") {
        write_json(arguments, found);
    } else {
        write_text(arguments, found);
    }
    if (!std::cout.flush()) {
        throw Failure("standard output", "cannot be written", status_usage);
    }
    return found.empty() ? status_fine : status_problem;
}

} // namespace

Command add_diff(CLI::App &tool)
{
    const auto arguments = std::make_shared<Arguments>();
    CLI::App *const app = tool.add_subcommand("diff", "Compare the settings that two texts make");
    add_text(*app, "A", arguments->a.path, "A configuration text; - is standard input")->type_name("")->required();
    add_text(*app, "B", arguments->b.path, "Another; only one of them can be -")->type_name("")->required();
    add_presets_option(*app, arguments->presets);
    add_text(*app, "--section-a", arguments->a.section, "The section to choose in A")->type_name("NAME");
    add_text(*app, "--section-b", arguments->b.section, "The section to choose in B")->type_name("NAME");
    app->add_flag_callback(
           "--no-defaults", [arguments] { arguments->with_defaults = false; },
           "Start without the built-in default text")
        ->disable_flag_override();
    app->add_option("--format", arguments->format, "The form of the answer")
        ->type_name("FORMAT")
        ->check(CLI::IsMember({"text", "json"}));
    app->footer("Lists the options whose settings differ, with both settings, a text in quotes. What is only written\n"
                "differently (1 or true, 0.50 or .5, the order of the lines) is no difference.\n\n"
                "Example:\n"
                "  dalvo-config diff solver.cfg solver.cfg --section-a fast --section-b thorough\n\n"
                "Exit status: 0 when nothing differs; 1 when something does; 2 for wrong usage, a file that cannot be "
                "read,\na malformed line, or an option or a value that is not accepted.");
    return {app, [arguments] { return diff(*arguments); }};
}

} // namespace dalvo::tools
