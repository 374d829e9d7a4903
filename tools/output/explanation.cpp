#include "tools/output/explanation.h"

#include <algorithm>
#include <iterator>
#include <ostream>
#include <string>

#include "dalvo/inspect/runs/explanation.h"
#include "dalvo/inspect/words/printable.h"
#include "dalvo/utils/textwrap.h"
#include "tools/output/listing.h"
#include "tools/output/table.h"
#include "tools/output/terminal.h"

namespace dalvo::tools {

namespace {

using inspect::Assigned;
using inspect::Fate;
using inspect::value_words;
using Row = std::vector<std::string>;

/// Writes `text` behind two blanks, wrapped to the terminal.
void write_indented(std::ostream &out, const std::string &text)
{
    for (const std::string &line : str::wrap(text, terminal_width() - 2)) {
        out << (line.empty() ? "" : "  ") << line << '\n';
    }
}

/// The value as written, the place, when it applies, the level.
void append_cells(Row &row, const Assigned &assigned)
{
    row.push_back(assigned.value.empty() ? "=" : "= " + inspect::escaped(assigned.value));
    row.push_back(assigned.place.text());
    row.push_back(assigned.kind == Assigned::Kind::command_line ? "applies last"
                  : assigned.section.empty()                    ? "always applies"
                                                                : "section " + inspect::escaped(assigned.section));
    row.push_back("level " + std::to_string(level_of(assigned.kind)));
}

void write_option(std::ostream &out, const inspect::OptionInfo &option)
{
    out << option.name << " (" << inspect::type_name(option.type) << ")\n";
    write_table(out, {{"Group:", group_title(option.group)},
                      {"Default:", value_words(option.default_value)},
                      {"Accepts:", option.accepted()}});
    out << '\n';
    write_indented(out, option.help);
    const std::vector<std::string> relations = relation_sentences(option);
    out << (relations.empty() ? "" : "\n");
    for (const std::string &relation : relations) {
        write_indented(out, relation);
    }
}

/// What is wrong with the value of an assignment; empty when nothing is.
std::string verdict_note(const Assigned &assigned, const inspect::OptionInfo &option)
{
    const bool is_rejected = assigned.fate == Fate::rejected;
    if (assigned.is_accepted) {
        return "";
    }
    const std::string note = is_rejected ? "rejected: " : "not accepted: ";
    return assigned.is_readable
               ? note + "the option takes " + option.accepted() + (assigned.fate == Fate::replaced ? "; replaced" : "")
               : note + "not of the type " + inspect::type_name(option.type);
}

void write_assignments(std::ostream &out, const Explanation &explanation)
{
    const std::size_t applying = explanation.applying().size();
    const std::size_t digits = std::to_string(applying).size();
    std::vector<Row> applied;
    std::vector<Row> others;
    for (const Assigned &assigned : explanation.assignments) {
        const bool applies = assigned.fate != Fate::never_applied;
        std::vector<Row> &rows = applies ? applied : others;
        const std::string number = std::to_string(rows.size() + 1);
        rows.push_back({applies ? std::string(digits - number.size(), ' ') + number + "." : "-"});
        append_cells(rows.back(), assigned);
        rows.back().push_back(verdict_note(assigned, *explanation.setting.option));
    }
    if (!applied.empty()) {
        out << "\nAssignments, in the order in which they apply:\n";
        write_table(out, applied);
    }
    if (!others.empty()) {
        out << "\nAssignments that do not apply, since their section is not chosen:\n";
        write_table(out, others);
    }
}

void write_in_force(std::ostream &out, const Explanation &explanation)
{
    const inspect::Setting &setting = explanation.setting;
    const std::vector<Assigned> applying = explanation.applying();
    out << "\nIn force: " << value_words(setting.value) << '\n';
    if (applying.empty()) {
        write_indented(out, setting.is_forced() ? "Nothing assigns it, but other options force it."
                                                : "Nothing assigns it: it keeps its initial value.");
    } else {
        write_indented(out, "Assignment " + std::to_string(applying.size()) + " wins: " + why_it_wins(applying) + ".");
        if (setting.is_forced()) {
            write_indented(out, "It has no effect: other options force the setting.");
        }
    }
    if (!setting.is_forced() && !setting.forced_by.empty()) {
        write_indented(out, "Other options force it to the same value anyway.");
    }
    if (!setting.has_effect()) {
        write_indented(out, "Nothing reads it now: " + why_no_effect(setting) + ".");
    }
    for (const std::string &need : unmet_needs(setting)) {
        write_indented(out, "A need is not met: " + need + ".");
    }
}

void write_forcing(std::ostream &out, const Explanation &explanation)
{
    const inspect::Setting &setting = explanation.setting;
    if (!setting.forced_by.empty()) {
        out << "\nForced by:\n";
        std::vector<Row> rows;
        for (const inspect::Forcing &forcing : setting.forced_by) {
            rows.push_back({forcing.option->name});
            append_cells(rows.back(), forcing.assigned);
        }
        write_table(out, rows);
    }
    const std::vector<std::size_t> forced = explanation.resolution.forced_by(setting.option->name);
    if (!forced.empty()) {
        out << "\nForces:\n";
        std::vector<Row> rows;
        for (const std::size_t position : forced) {
            const inspect::Setting &other = explanation.resolution.settings()[position];
            rows.push_back({other.option->name, "= " + value_words(other.value)});
        }
        write_table(out, rows);
    }
}

} // namespace

bool Explanation::has_rejected() const
{
    return std::any_of(assignments.begin(), assignments.end(),
                       [](const Assigned &assigned) { return assigned.fate == Fate::rejected; });
}

std::vector<Assigned> Explanation::applying() const
{
    std::vector<Assigned> found;
    std::copy_if(assignments.begin(), assignments.end(), std::back_inserter(found),
                 [](const Assigned &assigned) { return assigned.fate != Fate::never_applied; });
    return found;
}

int level_of(Assigned::Kind kind)
{
    return kind == Assigned::Kind::built_in ? 3 : kind == Assigned::Kind::file ? 2 : 1;
}

void write_explanation(std::ostream &out, const Explanation &explanation)
{
    write_option(out, *explanation.setting.option);
    write_assignments(out, explanation);
    if (explanation.has_rejected()) {
        out << "\nNothing is in force: an assignment is rejected.\n";
        return;
    }
    write_in_force(out, explanation);
    write_forcing(out, explanation);
}

} // namespace dalvo::tools
