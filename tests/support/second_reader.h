#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

/// A second reader of configuration texts: plain, slow, and without a line of the component's. It copies whatever it
/// looks at. What it says of a text is what the component's reader and setter have to say, too.
namespace dalvo::testing {

/// A piece of a line.
struct SecondPiece {
    std::string text;
    std::size_t column; ///< of its first byte, from 1

    friend bool operator==(const SecondPiece &a, const SecondPiece &b)
    {
        return a.text == b.text && a.column == b.column;
    }
};

/// What a line that is not blank and no comment turns out to be.
struct SecondLine {
    enum class Kind { header, assignment, malformed };

    std::size_t number; ///< from 1
    std::string whole;  ///< as it stands
    Kind kind;
    /// A header's names; an assignment's name and value; a malformed line, stripped, and the names before an empty one.
    std::vector<SecondPiece> pieces;
    bool has_equals; ///< of an assignment

    friend bool operator==(const SecondLine &a, const SecondLine &b)
    {
        return a.number == b.number && a.whole == b.whole && a.kind == b.kind && a.pieces == b.pieces &&
               a.has_equals == b.has_equals;
    }
};

inline bool is_second_space(char c)
{
    return c == ' ' || c == '\t' || c == '\n' || c == '\v' || c == '\f' || c == '\r';
}

/// The bytes of `line` from offset `begin` to before `end`, without white space at the end, then at the start.
inline SecondPiece second_stripped(const std::string &line, std::size_t begin, std::size_t end)
{
    while (end > begin && is_second_space(line[end - 1])) {
        --end;
    }
    while (begin < end && is_second_space(line[begin])) {
        ++begin;
    }
    return {line.substr(begin, end - begin), begin + 1};
}

/// Cuts at every newline; the text behind the last one is a line, too.
inline std::vector<std::string> second_lines(const std::string &text)
{
    std::vector<std::string> lines(1);
    for (const char c : text) {
        if (c == '\n') {
            lines.emplace_back();
        } else {
            lines.back() += c;
        }
    }
    return lines;
}

/// `stripped` starts with "[".
inline SecondLine read_second_header(std::size_t number, const std::string &line, const SecondPiece &stripped)
{
    const SecondLine malformed{number, line, SecondLine::Kind::malformed, {stripped}, false};
    const std::size_t open = stripped.column - 1;
    const std::size_t close = open + stripped.text.size() - 1;
    if (close == open || line[close] != ']') {
        return malformed;
    }
    const SecondPiece inside = second_stripped(line, open + 1, close);
    if (inside.text.empty()) {
        return malformed;
    }
    if (inside.text == "default") {
        return {number, line, SecondLine::Kind::header, {{"", inside.column}}, false};
    }
    SecondLine header{number, line, SecondLine::Kind::header, {}, false};
    std::size_t begin = inside.column - 1;
    const std::size_t end = begin + inside.text.size();
    for (std::size_t at = begin; at <= end; ++at) {
        if (at == end || line[at] == ',') {
            const SecondPiece name = second_stripped(line, begin, at);
            if (name.text.empty()) {
                SecondLine cut_short = malformed;
                cut_short.pieces.insert(cut_short.pieces.end(), header.pieces.begin(), header.pieces.end());
                return cut_short;
            }
            header.pieces.push_back(name);
            begin = at + 1;
        }
    }
    return header;
}

inline SecondLine read_second_assignment(std::size_t number, const std::string &line, const SecondPiece &stripped)
{
    const std::size_t begin = stripped.column - 1;
    const std::size_t end = begin + stripped.text.size();
    for (std::size_t at = begin; at < end; ++at) {
        if (line[at] == '=') {
            return {number, line, SecondLine::Kind::assignment,
                    {second_stripped(line, begin, at), second_stripped(line, at + 1, end)}, true};
        }
    }
    return {number, line, SecondLine::Kind::assignment, {stripped, {"", end + 1}}, false};
}

/// The whole text's lines, in their order; malformed ones do not end it.
inline std::vector<SecondLine> read_second(const std::string &text)
{
    std::vector<SecondLine> read;
    std::size_t number = 0;
    for (const std::string &line : second_lines(text)) {
        ++number;
        const SecondPiece stripped = second_stripped(line, 0, line.size());
        if (stripped.text.empty() || stripped.text[0] == '#') {
            continue;
        }
        read.push_back(stripped.text[0] == '[' ? read_second_header(number, line, stripped)
                                               : read_second_assignment(number, line, stripped));
    }
    return read;
}

/// An assignment as it is to be filed.
struct SecondEntry {
    std::string name;
    std::string value;
    std::int32_t level;

    friend bool operator==(const SecondEntry &a, const SecondEntry &b)
    {
        return a.name == b.name && a.value == b.value && a.level == b.level;
    }
};

/// Section name to the section's assignments, in their order.
using SecondSections = std::map<std::string, std::vector<SecondEntry>>;

/// Files a text behind what `sections` holds. The stripped line that is malformed, if one is; nothing behind it counts.
inline std::optional<std::string> file_second(SecondSections &sections, const std::string &text, std::int32_t level)
{
    std::vector<std::string> open = {""}; // the sections that assignments go to
    sections[""];
    for (const SecondLine &line : read_second(text)) {
        if (line.kind == SecondLine::Kind::assignment) {
            for (const std::string &name : open) {
                sections[name].push_back({line.pieces[0].text, line.pieces[1].text, level});
            }
            continue;
        }
        const bool malformed = line.kind == SecondLine::Kind::malformed;
        open.clear();
        for (std::size_t i = malformed ? 1 : 0; i < line.pieces.size(); ++i) {
            sections[line.pieces[i].text];
            open.push_back(line.pieces[i].text);
        }
        if (malformed) {
            return line.pieces[0].text;
        }
    }
    return std::nullopt;
}

/// The assignments that a setter replays, in their order: the unnamed section's, then the active one's.
inline std::vector<SecondEntry> replayed_second(const SecondSections &sections, const std::string &active)
{
    std::vector<SecondEntry> replayed;
    for (const std::string &name : {std::string(), active}) {
        const auto section = sections.find(name);
        if (section != sections.end()) {
            replayed.insert(replayed.end(), section->second.begin(), section->second.end());
        }
        if (active.empty()) {
            break;
        }
    }
    return replayed;
}

} // namespace dalvo::testing
