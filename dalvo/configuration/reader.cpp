#include "dalvo/configuration/reader.h"

#include <algorithm>
#include <istream>
#include <new>
#include <string>

#include "dalvo/utils/str.h"
#include "dalvo/utils/streammask.h"

namespace dalvo {

namespace {

/// Reads the next line; false at the end of the text, which a failure of the stream is, too. Memory that runs out inside
/// the stream is thrown on, since the text would otherwise end unnoticed.
bool next_line(std::istream &in, std::string &line)
{
    try {
        return static_cast<bool>(std::getline(in, line));
    } catch (const std::bad_alloc &) {
        throw;
    } catch (...) {
        return false;
    }
}

/// The part of `line` from offset `begin` to before `end`, stripped.
TextPiece piece(std::string_view line, std::size_t begin, std::size_t end)
{
    const std::string_view part = str::stripped(line.substr(begin, end - begin), str::is_space);
    return {part, static_cast<std::size_t>(part.data() - line.data()) + 1};
}

/// Tells the lines of one text apart.
class LineReader {
public:
    explicit LineReader(TextReceiver &text_receiver) : receiver(text_receiver) {}

    void read_line(const TextLine &line)
    {
        const TextPiece stripped = piece(line.text, 0, line.text.size());
        if (stripped.text.empty() || stripped.text.front() == '#') {
            return;
        }
        if (stripped.text.front() == '[') {
            read_header(line, stripped);
        } else {
            read_assignment(line, stripped);
        }
    }

private:
    void read_header(const TextLine &line, const TextPiece &stripped)
    {
        names.clear();
        const std::size_t end = end_of(stripped);
        if (stripped.text.size() < 2 || stripped.text.back() != ']') {
            receiver.malformed(line, stripped, names);
            return;
        }
        const TextPiece inside = piece(line.text, stripped.column, end - 1);
        if (inside.text == "default") { // only as the whole header: among several names it is one like any other
            names.push_back({inside.text.substr(0, 0), inside.column});
            receiver.header(line, names);
        } else if (split_names(line.text, inside)) {
            receiver.header(line, names);
        } else {
            receiver.malformed(line, stripped, names);
        }
    }

    /// Splits `inside` at each comma; false at the first empty name.
    bool split_names(std::string_view line, const TextPiece &inside)
    {
        const std::string text(inside.text);
        const auto tokens = str::get_tokenizer(text, ",", 0);
        for (auto at = tokens->begin(); at != tokens->end(); ++at) {
            const std::size_t begin = inside.column - 1 + at.offset;
            names.push_back(piece(line, begin, begin + (*at).size()));
            if (names.back().text.empty()) {
                names.pop_back();
                return false;
            }
        }
        return true;
    }

    void read_assignment(const TextLine &line, const TextPiece &stripped)
    {
        const std::size_t begin = stripped.column - 1;
        const std::size_t end = end_of(stripped);
        const std::size_t equals = line.text.substr(0, end).find('=', begin);
        if (equals == std::string_view::npos) {
            receiver.assignment(line, {stripped, piece(line.text, end, end), false});
        } else {
            receiver.assignment(line, {piece(line.text, begin, equals), piece(line.text, equals + 1, end), true});
        }
    }

    /// The offset behind a piece of a line.
    static std::size_t end_of(const TextPiece &part) { return part.column - 1 + part.text.size(); }

    TextReceiver &receiver;
    std::vector<TextPiece> names; // of the header at hand
};

} // namespace

TextReceiver::~TextReceiver() = default;

void read_text(std::istream &in, TextReceiver &receiver)
{
    LineReader reader(receiver);
    const StreamMask mask(in);
    std::string line;
    for (std::uint64_t number = 1; next_line(in, line); ++number) {
        reader.read_line({number, line});
    }
}

void read_text(std::string_view text, TextReceiver &receiver)
{
    LineReader reader(receiver);
    for (std::uint64_t number = 1; !text.empty(); ++number) { // nothing behind the last newline is no line
        const std::size_t size = std::min(text.find('\n'), text.size());
        reader.read_line({number, text.substr(0, size)});
        text.remove_prefix(std::min(size + 1, text.size()));
    }
}

} // namespace dalvo
