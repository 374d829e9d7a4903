#include "tools/output/excerpt.h"

#include <algorithm>

#include "tools/inspection/printable.h"

namespace dalvo::tools {

namespace {

constexpr std::size_t widest = 100; // columns of an excerpt, about
constexpr const char *cut_mark = "...";

bool is_continuation(char c)
{
    return (static_cast<unsigned char>(c) & 0xC0U) == 0x80;
}

/// The number of bytes at the start of `text` that are plain ASCII.
std::size_t plain_size(std::string_view text)
{
    const auto end = std::find_if_not(text.begin(), text.end(), [](char c) { return c >= ' ' && c < '\x7F'; });
    return static_cast<std::size_t>(end - text.begin());
}

/// Text made fit for a terminal, piece by piece.
class Shown {
public:
    explicit Shown(std::string start) : text(std::move(start)), columns(text.size()) {}

    /// Adds what stands for `added` until `most` columns are full; false when not all of it was needed for that.
    bool add(std::string_view added, std::size_t most, bool tabs_are_blanks)
    {
        while (!added.empty() && columns < most) {
            std::size_t size = plain_size(added.substr(0, most - columns));
            if (size != 0) {
                append(added.substr(0, size), size);
            } else if ((size = printable_size(added)) != 0) {
                append(added.substr(0, size), 1);
            } else {
                size = 1;
                const std::string escape = added.front() == '\t' && tabs_are_blanks ? " " : escape_of(added.front());
                append(escape, escape.size());
            }
            added.remove_prefix(size);
        }
        return added.empty();
    }

    std::string text;
    std::size_t columns;

private:
    void append(std::string_view added, std::size_t width)
    {
        text += added;
        columns += width;
    }
};

} // namespace

Excerpt excerpt(std::string_view line, std::size_t column)
{
    if (!line.empty() && line.back() == '\r') {
        line.remove_suffix(1); // of a CR LF line end
    }
    const std::size_t place = std::min(column - 1, line.size());
    std::size_t start = line.size() > widest && place > widest / 2 ? place - widest / 2 : 0;
    while (start > 0 && start < place && is_continuation(line[start])) {
        ++start;
    }
    Shown result(start > 0 ? cut_mark : "");
    result.add(line.substr(start, place - start), std::string_view::npos, true);
    const std::size_t caret = result.columns;
    if (!result.add(line.substr(place), std::max(widest, caret + widest / 4), true)) {
        result.text += cut_mark;
    }
    return {std::move(result.text), caret};
}

std::string shown(std::string_view text, std::size_t most)
{
    Shown result("");
    const bool is_whole = result.add(text, most, false);
    return std::move(result.text) + (is_whole ? "" : cut_mark);
}

std::string shown_message(const OptionParser::error &e)
{
    const std::string text = e.message_stream.str();
    const std::size_t ending = (": " + e.option + ", value: " + e.value).size(); // no error here has a command line
    const std::string head = text.substr(0, text.size() - ending);
    const std::size_t name = head.find(e.option);
    const bool is_named = name != std::string::npos;
    return (is_named ? head.substr(0, name) + shown(e.option) + head.substr(name + e.option.size()) : head) + ": " +
           shown(e.option) + ", value: " + shown(e.value);
}

} // namespace dalvo::tools
