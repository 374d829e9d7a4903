#include "tools/inspection/check_text.h"

#include <sstream>

#include "dalvo/configuration/reader.h"
#include "tools/inspection/check.h"

namespace dalvo::tools {

namespace {

/// Files the lines of a text as the library does, but for malformed headers, which do not end it.
class CheckReceiver : public TextReceiver {
public:
    explicit CheckReceiver(CheckedText &target) : text(target), open{0}
    {
        text.sections.emplace_back();
        positions.emplace(std::string_view(), 0);
    }

    void header(const TextLine &line, const std::vector<TextPiece> &names) override
    {
        open.clear();
        for (const TextPiece &name : names) {
            if (name.text == "default") { // alone it has no name
                text.marks.push_back({line.number, name.column, Problem::default_among_names});
            }
            open_section(line, name, true);
        }
    }

    void assignment(const TextLine &line, const TextAssignment &assignment) override
    {
        const std::size_t position = text.assignments.size();
        text.assignments.push_back({line.number, kept(line, assignment.name), assignment.name.column,
                                    kept(line, assignment.value), assignment.value.column, assignment.has_equals});
        for (const std::size_t section : open) {
            text.sections[section].assignments.push_back(position);
        }
    }

    /// The lines below belong to the sections that the header does name, or to one of their own.
    void malformed(const TextLine &line, const TextPiece &stripped, const std::vector<TextPiece> &names) override
    {
        text.marks.push_back({line.number, stripped.column, Problem::malformed_header});
        text.add_detail(stripped.text.size() > 1 && stripped.text.back() == ']' ? "a section name is empty"
                                                                                : "it does not end with ']'");
        open.clear();
        for (const TextPiece &name : names) {
            open_section(line, name, false);
        }
        if (open.empty()) {
            open.push_back(text.sections.size());
            text.sections.emplace_back();
        }
    }

private:
    void open_section(const TextLine &line, const TextPiece &name, bool mark_repeated)
    {
        const auto [found, is_new] = positions.emplace(kept(line, name), text.sections.size());
        if (is_new) {
            text.sections.push_back({found->first, line.number, name.column});
        }
        CheckedSection &section = text.sections[found->second];
        if (section.last_line != line.number) {
            section.last_line = line.number;
            open.push_back(found->second);
        } else if (mark_repeated) {
            text.marks.push_back({line.number, name.column, Problem::repeated_name, found->second});
        }
    }

    /// The piece as a view that stays good.
    std::string_view kept(const TextLine &line, const TextPiece &piece) const
    {
        return text.line(line.number).substr(piece.column - 1, piece.text.size());
    }

    CheckedText &text;
    std::vector<std::size_t> open; // the sections that assignments go to, each once
    std::unordered_map<std::string_view, std::size_t> positions;
};

} // namespace

CheckedText::CheckedText(std::string_view text) : contents(text), line_starts{0}
{
    for (std::size_t end = text.find('\n'); end != std::string_view::npos; end = text.find('\n', end + 1)) {
        line_starts.push_back(end + 1);
    }
    line_starts.push_back(text.size() + 1);
}

std::string_view CheckedText::line(std::uint64_t number) const
{
    const std::size_t start = line_starts[number - 1];
    return contents.substr(start, line_starts[number] - 1 - start);
}

void CheckedText::mark_name(std::size_t assignment, Problem problem, std::size_t other)
{
    marks.push_back({assignments[assignment].line, assignments[assignment].name_column, problem, assignment, other});
}

void CheckedText::mark_value(std::size_t assignment, Problem problem)
{
    marks.push_back({assignments[assignment].line, assignments[assignment].value_column, problem, assignment});
}

void CheckedText::add_detail(const std::string &detail)
{
    marks.back().detail = details.size();
    details.push_back(detail);
}

void read_checked(CheckedText &text)
{
    constexpr std::string_view byte_order_mark = "\xEF\xBB\xBF";
    if (text.contents.substr(0, byte_order_mark.size()) == byte_order_mark) {
        text.marks.push_back({1, 1, Problem::byte_order_mark});
    }
    text.assignments.reserve(text.line_starts.size());
    CheckReceiver receiver(text);
    std::istringstream in{std::string(text.contents)};
    read_text(in, receiver);
}

std::vector<Finding> check_text(const std::string &file_name, const std::string &contents)
{
    CheckedText text(contents);
    read_checked(text);
    check_lines(text);
    check_sections(text);
    check_section_names(text);
    return findings_of(text, file_name);
}

} // namespace dalvo::tools
