#include <cstddef>
#include <iostream>
#include <memory>
#include <optional>
#include <vector>

#include "dalvo/inspect/runs/resolution.h"
#include "dalvo/inspect/words/printable.h"
#include "tools/commands/commands.h"
#include "tools/commands/inputs.h"
#include "tools/output/diagnostics.h"
#include "tools/output/findings.h"
#include "tools/output/jsontext.h"
#include "tools/output/knowledgejson.h"
#include "tools/output/table.h"

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
    ColourChoice colour;
};

/// The settings of one option on both sides.
struct Difference {
    std::string name;
    inspect::Value a;
    inspect::Value b;
};

/// None where the side has an error, which is then reported.
std::optional<inspect::Resolution> resolved(const Side &side, const Arguments &arguments)
{
    const inspect::Run run = run_of({arguments.presets, {side.path}, side.section, {}, arguments.with_defaults});
    inspect::Resolution resolution(run);
    if (resolution.applies()) {
        return resolution;
    }
    report_errors(run, arguments.colour);
    return std::nullopt;
}

std::vector<Difference> differences(const inspect::Resolution &a, const inspect::Resolution &b)
{
    std::vector<Difference> found;
    for (const std::size_t position : a.catalogue().dump_order()) {
        const inspect::Setting &left = a.settings()[position];
        const inspect::Setting &right = b.settings()[position];
        if (!inspect::same_value(left.value, right.value)) {
            found.push_back({left.option->name, left.value, right.value});
        }
    }
    return found;
}

void write_side(const char *letter, const Side &side)
{
    std::cout << letter << ": " << inspect::escaped(file_name(side.path));
    if (!side.section.empty()) {
        std::cout << ", section " << inspect::escaped(side.section);
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
        rows.push_back({difference.name, inspect::value_words(difference.a), inspect::value_words(difference.b)});
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
        list.push_back({{"name", difference.name}, {"a", json_value(difference.a)}, {"b", json_value(difference.b)}});
    }
    nlohmann::ordered_json json;
    json["a"] = json_side(arguments.a);
    json["b"] = json_side(arguments.b);
    json["differences"] = std::move(list);
    std::cout << json_text(json);
}

int diff(const Arguments &arguments)
{
    require_one_standard_input({arguments.a.path, arguments.b.path});
    const std::optional<inspect::Resolution> a = resolved(arguments.a, arguments);
    const std::optional<inspect::Resolution> b = resolved(arguments.b, arguments);
    if (!a || !b) {
        return status_usage; // never the one that says that the two differ
    }
    const std::vector<Difference> found = differences(*a, *b);
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
    add_no_defaults(*app, arguments->with_defaults);
    add_format(*app, arguments->format, {"text", "json"});
    add_colour(*app, arguments->colour);
    app->footer("Lists the options whose settings differ, with both settings, a text in quotes. What is only written "
                "differently (1 or true, 0.50 or .5, the order of the lines) is no difference.\n\n"
                "Example:\n"
                "  dalvo-config diff solver.cfg solver.cfg --section-a fast --section-b thorough\n\n"
                "Exit status: 0 when nothing differs; 1 when something does; 2 for wrong usage, a file that cannot be "
                "read, a section that it does not have, or an error in what applies.");
    return {app, [arguments] { return diff(*arguments); }};
}

} // namespace dalvo::tools
