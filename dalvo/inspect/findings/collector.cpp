#include "dalvo/inspect/findings/collector.h"

#include <algorithm>
#include <tuple>

#include "dalvo/inspect/words/printable.h"

namespace dalvo::inspect {

namespace {

constexpr std::size_t widest = 400; // bytes of an excerpt on each side of its place

/// The offset of the end of the line with the offset `place`, or some offset beyond what is shown of it.
std::size_t end_of_line(std::string_view contents, std::size_t place)
{
    const std::string_view seen = contents.substr(place, widest + 2); // a CR LF after what is shown counts, too
    const std::size_t end = std::min(seen.find('\n'), seen.size());
    const bool has_carriage_return =
        end > 0 && seen[end - 1] == '\r' && (end < seen.size() || seen.size() < widest + 2);
    return place + end - (has_carriage_return ? 1 : 0);
}

/// The line with `piece` that starts at `start` in `contents`, as far as it is shown. On a command line `end` ends it.
Excerpt excerpt_of(std::string_view contents, const char *start, std::string_view piece, const char *end)
{
    const auto line = static_cast<std::size_t>(start - contents.data());
    const auto place = static_cast<std::size_t>(piece.data() - contents.data());
    std::size_t begin = place - line > widest ? place - widest : line;
    while (begin > line && begin < place && (static_cast<unsigned char>(contents[begin]) & 0xC0U) == 0x80) {
        ++begin; // no half of a code point
    }
    const std::size_t line_end =
        end != nullptr ? static_cast<std::size_t>(end - contents.data()) : end_of_line(contents, place);
    const std::size_t shown_end = std::min(line_end, place + widest);
    return {std::string(contents.substr(begin, shown_end - begin)), place - begin, begin > line, shown_end < line_end};
}

} // namespace

Finding &Collector::add(Rule rule, const Filed &assignment, std::string_view piece, std::string message)
{
    const Text &text = text_of(assignment);
    if (text.kind == Text::Kind::built_in && info_of(rule).severity == Severity::warning) {
        return unwanted = Finding();
    }
    const Place place = text.place(assignment.line, assignment.line_start, piece);
    const bool is_direct = text.kind == Text::Kind::command_line;
    // On a command line there are no lines: what stands first there comes first.
    const Key key{2 * std::size_t{assignment.text} + 1, assignment.line,
                  is_direct ? static_cast<std::size_t>(piece.data() - text.contents.data()) : place.column, rule, 0};
    Finding &added = add_at(rule, key, place, std::move(message));
    added.option = assignment.name;
    added.excerpt = excerpt_of(text.contents, assignment.line_start, piece,
                               is_direct ? assignment.value.data() + assignment.value.size() : nullptr);
    return added;
}

Finding &Collector::add(Rule rule, std::size_t position, std::uint64_t line, const char *line_start,
                        std::string_view piece, std::string message)
{
    const Text &text = *checked.texts()[position];
    if (text.kind == Text::Kind::built_in && info_of(rule).severity == Severity::warning) {
        return unwanted = Finding();
    }
    const Place place = text.place(line, line_start, piece);
    Finding &added = add_at(rule, {2 * position + 1, line, place.column, rule, 0}, place, std::move(message));
    added.excerpt = excerpt_of(text.contents, line_start, piece, nullptr);
    return added;
}

Finding &Collector::add(Rule rule, std::size_t position, const std::string &source, std::string message)
{
    return add_at(rule, {2 * position, 0, 0, rule, 0}, {source, 0, 0, 0}, std::move(message));
}

Finding &Collector::add_at(Rule rule, const Key &key, Place place, std::string message)
{
    keys.push_back(key);
    keys.back().index = findings.size();
    Finding &added = findings.emplace_back();
    added.rule = rule;
    added.severity = info_of(rule).severity;
    added.place = std::move(place);
    added.message = std::move(message);
    return added;
}

std::string Collector::where(const Filed &other, const Filed &at) const
{
    const Text &text = text_of(other);
    if (other.text == at.text && other.line != 0) {
        return "line " + std::to_string(other.line);
    }
    return text.kind == Text::Kind::built_in ? text.source : text.place_of_name(other).text();
}

void Collector::note(Finding &finding, const Filed &assignment, const std::string &message) const
{
    finding.notes.push_back({message, text_of(assignment).place_of_name(assignment), true});
}

std::vector<Finding> Collector::take()
{
    std::sort(keys.begin(), keys.end(), [](const Key &a, const Key &b) {
        return std::tie(a.text, a.line, a.column, a.rule, a.index) <
               std::tie(b.text, b.line, b.column, b.rule, b.index);
    });
    std::vector<Finding> sorted;
    sorted.reserve(keys.size());
    for (const Key &key : keys) {
        sorted.push_back(std::move(findings[key.index]));
    }
    return sorted;
}

} // namespace dalvo::inspect
