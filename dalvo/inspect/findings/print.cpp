#include "dalvo/inspect/findings/print.h"

#include <algorithm>
#include <ostream>

#include "dalvo/inspect/words/printable.h"

namespace dalvo::inspect {

namespace {

constexpr std::size_t widest = 100; // columns of an excerpt, about
constexpr const char *indentation = "    ";

struct Colours {
    const char *bold;
    const char *error;
    const char *warning;
    const char *note;
    const char *caret;
    const char *end;
};

constexpr Colours coloured = {"\033[1m", "\033[1;31m", "\033[1;35m", "\033[1;36m", "\033[1;32m", "\033[0m"};
constexpr Colours plain = {"", "", "", "", "", ""};

/// A piece of a line that has been made fit for a terminal.
struct Cell {
    std::string text;
    std::size_t columns;
};

class LineFitter {
public:
    explicit LineFitter(const PrintStyle &print_style) : style(print_style) {}

    /// What stands for the first code point or byte of `text`, which is then taken off.
    Cell next(std::string_view &text) const
    {
        Cell cell;
        const std::size_t size = printable_size(text);
        if (size != 0) {
            cell = {std::string(text.substr(0, size)), width_of(text)};
        } else {
            const std::string escape = text.front() == '\t' ? " " : escape_of(text.front());
            cell = {escape, escape.size()};
        }
        text.remove_prefix(std::max<std::size_t>(size, 1));
        return cell;
    }

private:
    std::size_t width_of(std::string_view text) const
    {
        const std::size_t code = first_code_point(text).code;
        const int width = style.width != nullptr && code >= 0x80 ? style.width(static_cast<char32_t>(code)) : 1;
        return width > 0 ? static_cast<std::size_t>(width) : 0;
    }

    const PrintStyle &style;
};

/// Writes the line, cut where it is long, and a caret below the place.
void print_excerpt(std::ostream &out, const Excerpt &excerpt, const Colours &colours, const LineFitter &fitter)
{
    std::vector<Cell> before;
    std::string_view rest = std::string_view(excerpt.bytes).substr(0, excerpt.place);
    std::size_t columns = 0;
    while (!rest.empty()) {
        before.push_back(fitter.next(rest));
        columns += before.back().columns;
    }
    const std::size_t after = excerpt.bytes.size() - excerpt.place;
    bool is_cut = excerpt.is_cut_before;
    auto first = before.begin();
    if (columns + after > widest || is_cut) {
        for (; first != before.end() && columns > widest / 2; ++first) {
            columns -= first->columns;
            is_cut = true;
        }
    }
    out << indentation << (is_cut ? "..." : "");
    for (; first != before.end(); ++first) {
        out << first->text;
    }
    const std::size_t caret = columns + (is_cut ? 3 : 0);
    const std::size_t most = std::max(widest, caret + widest / 4);
    rest = std::string_view(excerpt.bytes).substr(excerpt.place);
    for (columns = caret; !rest.empty() && columns < most;) {
        const Cell cell = fitter.next(rest);
        out << cell.text;
        columns += cell.columns;
    }
    out << (!rest.empty() || excerpt.is_cut_after ? "..." : "") << '\n'
        << indentation << std::string(caret, ' ') << colours.caret << '^' << colours.end << '\n';
}

/// "source:line:column: ", as far as there are any.
void print_heading(std::ostream &out, const Place &place, const Colours &colours)
{
    if (!place.source.empty()) {
        out << colours.bold << place.text() << (place.line != 0 ? ":" + std::to_string(place.column) : "") << ':'
            << colours.end << ' ';
    }
}

void print_finding(std::ostream &out, const Finding &finding, const Colours &colours, const LineFitter &fitter)
{
    const bool is_error = finding.severity == Severity::error;
    print_heading(out, finding.place, colours);
    out << (is_error ? colours.error : colours.warning) << (is_error ? "error:" : "warning:") << colours.end << ' '
        << finding.message;
    if (info_of(finding.rule).severity == Severity::warning) {
        out << " [" << info_of(finding.rule).name << ']';
    }
    out << '\n';
    if (finding.place.column != 0) {
        print_excerpt(out, finding.excerpt, colours, fitter);
    }
    for (const Note &note : finding.notes) {
        if (!note.is_in_message) {
            print_heading(out, note.place, colours);
            out << colours.note << "note:" << colours.end << ' ' << note.message << '\n';
        }
    }
}

std::string number_of(std::size_t number, const std::string &what)
{
    return std::to_string(number) + " " + what + (number == 1 ? "" : "s");
}

} // namespace

void print(std::ostream &out, const std::vector<Finding> &findings, const PrintStyle &style)
{
    const LineFitter fitter(style);
    for (const Finding &finding : findings) {
        print_finding(out, finding, style.has_colour ? coloured : plain, fitter);
    }
}

std::string counts(const std::vector<Finding> &findings)
{
    const std::size_t errors = count(findings, Severity::error);
    const std::size_t warnings = count(findings, Severity::warning);
    const std::string shown_errors = errors != 0 ? number_of(errors, "error") : "";
    const std::string shown_warnings = warnings != 0 ? number_of(warnings, "warning") : "";
    return shown_errors + (errors != 0 && warnings != 0 ? ", " : "") + shown_warnings;
}

} // namespace dalvo::inspect
