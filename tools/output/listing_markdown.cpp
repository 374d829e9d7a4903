#include <algorithm>
#include <ostream>
#include <sstream>
#include <string_view>

#include "dalvo/inspect/runs/explanation.h"
#include "tools/output/listing.h"

namespace dalvo::tools {

namespace {

// In ASCII, whatever the locale: these decide about markdown's own characters only.

bool is_digit(char c)
{
    return c >= '0' && c <= '9';
}

bool is_word(char c)
{
    return is_digit(c) || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

/// Whether the underscore at `position` is one inside a word, which marks nothing.
bool inside_word(std::string_view text, std::size_t position)
{
    return position > 0 && position + 1 < text.size() && is_word(text[position - 1]) && is_word(text[position + 1]);
}

/// The position of the character that would make a heading, a list or an underline of a line; npos when there is none.
std::size_t block_mark(std::string_view line)
{
    const std::size_t after_digits = std::min(
        static_cast<std::size_t>(std::find_if_not(line.begin(), line.end(), is_digit) - line.begin()), line.size());
    if (after_digits == line.size()) {
        return std::string_view::npos;
    }
    const std::string_view marks = after_digits == 0 ? "#+-=" : ".)";
    return marks.find(line[after_digits]) != std::string_view::npos ? after_digits : std::string_view::npos;
}

std::string code_span(const std::string &text)
{
    return text.find('`') == std::string::npos ? "`" + text + "`" : markdown_line(text);
}

/// A sentence, with the names of options as code.
std::string markdown_sentence(const std::string &sentence)
{
    std::string text;
    std::istringstream words(markdown_line(sentence));
    for (std::string word; words >> word;) {
        const bool is_name = inspect::Catalogue::standard().find(word) != nullptr;
        text += (text.empty() ? "" : " ") + (is_name ? code_span(word) : word);
    }
    return text;
}

void write_entry(std::ostream &out, const inspect::OptionInfo &option)
{
    const std::string default_text = inspect::value_text(option.default_value);
    out << "\n### " << code_span(option.name) << "\n\n"
        << "- Type: " << inspect::type_name(option.type) << '\n'
        << "- Default: " << (default_text.empty() ? "empty" : code_span(default_text)) << '\n'
        << "- Accepted: " << markdown_line(option.accepted()) << '\n';
    for (const std::string &relation : relation_sentences(option)) {
        out << "- " << markdown_sentence(relation) << '\n';
    }
    out << '\n' << markdown_help(option.help);
}

} // namespace

std::string markdown_line(const std::string &text)
{
    const std::string_view line = std::string_view(text).substr(std::min(text.find_first_not_of(" \t"), text.size()));
    const std::size_t mark = block_mark(line);
    std::string shown;
    for (std::size_t i = 0; i < line.size(); ++i) {
        const char c = line[i];
        if (i == mark || std::string_view("\\`*[]<>|~&$").find(c) != std::string_view::npos ||
            (c == '_' && !inside_word(line, i))) {
            shown += '\\';
        }
        shown += c;
    }
    return shown;
}

std::string markdown_help(const std::string &help)
{
    enum class Line { none, blank, plain, item };
    Line last = Line::none;
    std::string shown;
    std::istringstream lines(help);
    for (std::string line; std::getline(lines, line);) {
        const bool is_item = line.rfind("- ", 0) == 0;
        const std::string content = markdown_line(is_item ? line.substr(2) : line);
        if (content.empty()) {
            last = last == Line::none ? Line::none : Line::blank;
            continue;
        }
        const Line kind = is_item ? Line::item : Line::plain;
        if (last != Line::none) {
            shown += last != kind ? "\n\n" : is_item ? "\n" : "\\\n";
        }
        shown += (is_item ? "- " : "") + content;
        last = kind;
    }
    return shown + "\n";
}

void write_listing_markdown(std::ostream &out, const OptionList &options)
{
    out << "# Options\n\n"
           "This page is the output of `dalvo-config options --format markdown`, which takes it from the catalogue.\n"
           "To make it anew, from the root of the sources:\n\n"
           "```sh\n"
           "dalvo-config options --format markdown > docs/options.md\n"
           "```\n";
    for (const OptionList &group : by_group(options)) {
        out << "\n## " << markdown_line(group_title(group.front()->group)) << '\n';
        for (const inspect::OptionInfo *const option : group) {
            write_entry(out, *option);
        }
    }
}

} // namespace dalvo::tools
