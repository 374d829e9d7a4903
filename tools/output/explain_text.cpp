#include <iostream>

#include "dalvo/utils/textwrap.h"
#include "tools/output/diagnostics.h"
#include "tools/output/table.h"
#include "tools/output/diff_value.h"
#include "tools/output/explain_report.h"
#include "tools/output/terminal.h"

namespace dalvo::tools {

namespace {

using Row = std::vector<std::string>;

/// Writes `text` behind two blanks, wrapped to the terminal.
void write_indented(const std::string &text)
{
    for (const std::string &line : str::wrap(text, terminal_width() - 2)) {
        std::cout << (line.empty() ? "" : "  ") << line << '\n';
    }
}

/// The value as written, the place, when it applies, the level.
void append_cells(Row &row, const Assignment &assignment)
{
    row.push_back(assignment.value.empty() ? "=" : "= " + escaped(assignment.value));
    row.push_back(assignment.place.text());
    row.push_back(assignment.level == override_level ? "applies last"
                  : assignment.section.empty()       ? "always applies"
                                                     : "section " + escaped(assignment.section));
    row.push_back("level " + std::to_string(assignment.level));
}

void write_option(const OptionInfo &option)
{
    const std::string group = option.group.substr(0, option.group.find_last_not_of(':') + 1);
    std::cout << option.name << " (" << option.type_name() << ")\n";
    write_table(std::cout, {{"Group:", group},
                            {"Default:", shown_value(setting_named(settings_of(Configuration()), option.name))},
                            {"Accepts:", option.accepted()}});
    std::cout << '\n';
    write_indented(option.help);
}

/// What is wrong with the value of a step; empty when nothing is.
std::string verdict_note(const Trail &trail, std::size_t i)
{
    const OptionInfo &option = *trail.option;
    const bool applies = i < trail.steps.size();
    const std::string note = applies && trail.is_rejected(i) ? "rejected: " : "not accepted: ";
    switch (trail.verdicts[i]) {
    case Verdict::accepted: return "";
    case Verdict::out_of_range:
        return note + "the option takes " + option.accepted() + (applies && !trail.is_rejected(i) ? "; replaced" : "");
    case Verdict::unreadable: break;
    }
    return note + "not of the type " + option.type_name();
}

void write_steps(const Trail &trail)
{
    if (!trail.steps.empty()) {
        std::cout << "\nAssignments, in the order in which they apply:\n";
        std::vector<Row> rows;
        const std::size_t digits = std::to_string(trail.steps.size()).size();
        for (std::size_t i = 0; i < trail.steps.size(); ++i) {
            const std::string number = std::to_string(i + 1);
            rows.push_back({std::string(digits - number.size(), ' ') + number + "."});
            append_cells(rows.back(), trail.steps[i].assignment);
            rows.back().push_back(verdict_note(trail, i));
        }
        write_table(std::cout, rows);
    }
    if (!trail.others.empty()) {
        std::cout << "\nAssignments that do not apply, since their section is not chosen:\n";
        std::vector<Row> rows;
        for (std::size_t i = 0; i < trail.others.size(); ++i) {
            rows.push_back({"-"});
            append_cells(rows.back(), trail.others[i].assignment);
            rows.back().push_back(verdict_note(trail, trail.steps.size() + i));
        }
        write_table(std::cout, rows);
    }
}

void write_setting(const Trail &trail, const Forcing &forcing)
{
    const std::string &name = trail.option->name;
    const bool is_forced = forcing.is_forced(name);
    std::cout << "\nIn force: " << shown_value(setting_named(forcing.settings(), name)) << '\n';
    if (trail.steps.empty()) {
        write_indented(is_forced ? "Nothing assigns it, but other options force it."
                                 : "Nothing assigns it: it keeps its initial value.");
        return;
    }
    write_indented("Assignment " + std::to_string(trail.steps.size()) + " wins: " + trail.reason() + ".");
    if (is_forced) {
        write_indented("It has no effect: other options force the setting.");
    }
}

void write_forcing(const std::string &name, const Forcing &forcing)
{
    const std::vector<const Assignment *> forcers = forcing.forcing(name);
    if (!forcers.empty()) {
        std::cout << "\nForced by:\n";
        std::vector<Row> rows;
        for (const Assignment *const forcer : forcers) {
            rows.push_back({forcer->name});
            append_cells(rows.back(), *forcer);
        }
        write_table(std::cout, rows);
    }
    const std::vector<std::string> forced = forcing.forced_by(name);
    if (!forced.empty()) {
        std::cout << "\nForces:\n";
        std::vector<Row> rows;
        rows.reserve(forced.size());
        for (const std::string &other : forced) {
            rows.push_back({other, "= " + shown_value(setting_named(forcing.settings(), other))});
        }
        write_table(std::cout, rows);
    }
}

} // namespace

void write_explanation(const Trail &trail, const Forcing *forcing)
{
    write_option(*trail.option);
    write_steps(trail);
    if (forcing != nullptr) {
        write_setting(trail, *forcing);
        write_forcing(trail.option->name, *forcing);
    } else {
        std::cout << "\nNothing is in force: an assignment is rejected.\n";
    }
}

} // namespace dalvo::tools
