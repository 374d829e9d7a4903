#include "dalvo/inspect/runs/text.h"

#include <algorithm>
#include <unordered_map>

#include "dalvo/configuration/reader.h"
#include "dalvo/inspect/words/printable.h"
#include "dalvo/utils/str.h"

namespace dalvo::inspect {

namespace {

constexpr std::string_view byte_order_mark = "\xEF\xBB\xBF";

/// Looks up the option and judges the value.
void judge(const Catalogue &catalogue, Filed &assignment)
{
    const std::size_t position = catalogue.position(assignment.name);
    if (position == Catalogue::npos) {
        assignment.option = Filed::no_option;
        assignment.verdict = Verdict::unknown;
        return;
    }
    const OptionInfo &option = catalogue.options()[position];
    assignment.option = static_cast<std::uint32_t>(position);
    if (option.type == OPT_STR) {
        assignment.verdict = Verdict::accepted;
        return;
    }
    const Value value = option.parse(assignment.value);
    assignment.number = number_of(value);
    assignment.verdict = std::holds_alternative<std::monostate>(value) ? Verdict::unreadable
                         : option.accepts(value)                       ? Verdict::accepted
                                                                       : Verdict::out_of_range;
}

Filed filed_as(std::string_view name, std::string_view value, std::uint64_t line, const char *line_start)
{
    return {name, value, line_start, line, 0.0, 0, Filed::no_option, 0, Verdict::unknown, true};
}

std::string joined_pairs(const std::vector<std::pair<std::string, std::string>> &pairs)
{
    std::string contents;
    for (const auto &[name, value] : pairs) {
        contents.append(name).append("=").append(value).append("\n");
    }
    return contents;
}

/// Whether `text` (not empty) starts as comments do, here or elsewhere.
bool starts_comment(std::string_view text)
{
    return text.front() == '#' || text.front() == ';' || text.substr(0, 2) == "//";
}

/// The names in a header, what stands between its brackets, up to an empty one.
std::vector<std::string_view> names_in(std::string_view inside)
{
    if (str::stripped(inside, str::is_space) == "default") {
        return {std::string_view()};
    }
    std::vector<std::string_view> names;
    for (std::size_t begin = 0; begin <= inside.size();) {
        const std::size_t comma = std::min(inside.find(',', begin), inside.size());
        const std::string_view name = str::stripped(inside.substr(begin, comma - begin), str::is_space);
        if (name.empty()) {
            break;
        }
        names.push_back(name);
        begin = comma + 1;
    }
    return names;
}

} // namespace

/// Files the lines of a text as the library does, but for malformed headers, which do not end it.
class TextFiler : public TextReceiver {
public:
    TextFiler(Text &target, const Catalogue &options) : text(target), catalogue(options), open{0}
    {
        text.sections.push_back({"", 0, text.contents.data(), 0, false, 0});
        positions.emplace(std::string_view(), 0);
    }

    void header(const TextLine &line, const std::vector<TextPiece> &names) override
    {
        open.clear();
        repeated.clear();
        for (const TextPiece &name : names) {
            const bool is_first = open_section(line, name.text);
            if (is_first && name.text == "default") { // alone it has no name
                add_problem(HeaderProblem::Kind::default_among_names, line, name.text);
            }
        }
    }

    void assignment(const TextLine &line, const TextAssignment &assignment) override
    {
        const auto position = static_cast<std::uint32_t>(text.assignments.size());
        Filed &added = text.assignments.emplace_back(
            filed_as(assignment.name.text, assignment.value.text, line.number, start_of(line)));
        added.has_equals = assignment.has_equals;
        added.sections = static_cast<std::uint32_t>(open.size());
        added.text = text.position;
        judge(catalogue, added);
        for (const std::uint32_t section : open) {
            entries.emplace_back(section, position);
            ++text.sections[section].filings;
        }
        for (const std::uint32_t section : repeated) {
            ++text.sections[section].filings;
        }
    }

    /// The lines below belong to the sections that the header is meant to name, or to one of their own.
    void malformed(const TextLine &line, const TextPiece &stripped, const std::vector<TextPiece> &names) override
    {
        open.clear();
        repeated.clear();
        const bool has_end = stripped.text.size() > 1 && stripped.text.back() == ']';
        if (has_end) {
            add_problem(HeaderProblem::Kind::empty_name, line, stripped.text);
            for (const TextPiece &name : names) {
                open_section(line, name.text);
            }
        } else {
            read_without_end(line, stripped.text);
        }
        if (open.empty()) {
            open.push_back(static_cast<std::uint32_t>(text.sections.size()));
            text.sections.push_back({"", line.number, start_of(line), line.number, true, 0});
        }
    }

    /// Sorts what was filed by section.
    void finish()
    {
        text.starts.assign(text.sections.size() + 1, 0);
        for (const auto &[section, position] : entries) {
            ++text.starts[section + 1];
        }
        for (std::size_t section = 0; section < text.sections.size(); ++section) {
            text.starts[section + 1] += text.starts[section];
        }
        std::vector<std::uint32_t> next(text.starts.begin(), text.starts.end() - 1);
        text.filed.resize(entries.size());
        for (const auto &[section, position] : entries) {
            text.filed[next[section]++] = position;
        }
    }

private:
    /// The byte-order mark is not read, and yet it is of the first line.
    const char *start_of(const TextLine &line) const
    {
        return line.number == 1 ? text.contents.data() : line.text.data();
    }

    void add_problem(HeaderProblem::Kind kind, const TextLine &line, std::string_view piece, std::size_t section = 0)
    {
        text.header_problems.push_back({kind, line.number, start_of(line), piece, section});
    }

    /// Whether the header has not named it before.
    bool open_section(const TextLine &line, std::string_view name)
    {
        const auto [found, is_new] = positions.emplace(name, static_cast<std::uint32_t>(text.sections.size()));
        if (is_new) {
            text.sections.push_back({name, line.number, start_of(line), 0, false, 0});
        }
        FiledSection &section = text.sections[found->second];
        if (section.last_line != line.number) {
            section.last_line = line.number;
            open.push_back(found->second);
            return true;
        }
        repeated.push_back(found->second);
        add_problem(HeaderProblem::Kind::repeated_name, line, name, found->second);
        return false;
    }

    /// A header with something after its "]", which is at fault, or without one. Where a comment stands there, what
    /// stands before it says which sections are meant.
    void read_without_end(const TextLine &line, std::string_view stripped)
    {
        std::string_view rest = stripped;
        std::size_t close = stripped.find(']');
        for (; close != std::string_view::npos; close = stripped.find(']', close + 1)) {
            rest = str::stripped(stripped.substr(close + 1), str::is_space);
            if (starts_comment(rest)) {
                break;
            }
        }
        add_problem(HeaderProblem::Kind::no_end, line, rest);
        if (close != std::string_view::npos) {
            for (const std::string_view name : names_in(stripped.substr(1, close - 1))) {
                open_section(line, name);
            }
        }
    }

    Text &text;
    const Catalogue &catalogue;
    std::vector<std::uint32_t> open;     // the sections that assignments go to, each once
    std::vector<std::uint32_t> repeated; // those of them that the header names again
    std::unordered_map<std::string_view, std::uint32_t> positions;
    std::vector<std::pair<std::uint32_t, std::uint32_t>> entries; // section and assignment, in the order of the lines
};

Text::Text(const Catalogue &catalogue, Kind text_kind, std::string text_source, std::string text_contents,
           std::uint32_t text_position)
    : kind(text_kind), position(text_position), source(std::move(text_source)), contents(std::move(text_contents))
{
    std::string_view read = contents;
    has_byte_order_mark = read.substr(0, byte_order_mark.size()) == byte_order_mark;
    if (has_byte_order_mark) { // it makes its line wrong; what the line says without it is judged all the same
        read.remove_prefix(byte_order_mark.size());
    }
    TextFiler filer(*this, catalogue);
    read_text(read, filer);
    filer.finish();
}

Text::Text(const Catalogue &catalogue, std::string text_source,
           const std::vector<std::pair<std::string, std::string>> &pairs, std::uint32_t text_position)
    : kind(Kind::command_line), position(text_position), source(std::move(text_source)), contents(joined_pairs(pairs))
{
    sections.push_back({"", 0, contents.data(), 0, false, pairs.size()});
    const char *at = contents.data();
    for (const auto &[name, value] : pairs) {
        const std::string_view name_piece(at, name.size());
        const std::string_view value_piece(at + name.size() + 1, value.size());
        Filed &added = assignments.emplace_back(filed_as(name_piece, value_piece, 0, at));
        added.text = position;
        added.sections = 1;
        judge(catalogue, added);
        filed.push_back(static_cast<std::uint32_t>(filed.size()));
        at = value_piece.data() + value.size() + 1;
    }
    starts = {0, static_cast<std::uint32_t>(filed.size())};
}

std::string Place::text() const
{
    return escaped(source) + (line != 0 ? ":" + std::to_string(line) : "");
}

Place Text::place(std::uint64_t line, const char *line_start, std::string_view piece) const
{
    const auto column = static_cast<std::size_t>(piece.data() - line_start) + 1;
    return {source, line, column, column + piece.size()};
}

Place Text::place_of_name(const Filed &assignment) const
{
    return place(assignment.line, assignment.line_start, assignment.name);
}

Place Text::place_of_value(const Filed &assignment) const
{
    return place(assignment.line, assignment.line_start, assignment.value);
}

bool Text::has_malformed_header() const
{
    return std::any_of(header_problems.begin(), header_problems.end(), [](const HeaderProblem &problem) {
        return problem.kind == HeaderProblem::Kind::no_end || problem.kind == HeaderProblem::Kind::empty_name;
    });
}

} // namespace dalvo::inspect
