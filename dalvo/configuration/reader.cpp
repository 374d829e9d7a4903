#include "dalvo/configuration/reader.h"

#include <istream>
#include <new>
#include <string>

#include "dalvo/utils/str.h"

namespace dalvo {

namespace {

/// Reads a stream line by line. A failure of the stream ends the text, whichever exceptions its owner has asked it for;
/// but memory that runs out inside the stream is thrown on, since the text would otherwise end unnoticed.
class LineSource {
public:
    explicit LineSource(std::istream &stream) : in(stream), owners_mask(stream.exceptions())
    {
        in.exceptions(in.bad() ? std::ios_base::goodbit : std::ios_base::badbit);
    }

    LineSource(const LineSource &) = delete;
    LineSource &operator=(const LineSource &) = delete;

    ~LineSource()
    {
        try {
            in.exceptions(owners_mask);
        } catch (...) { // thrown where the stream's state meets the mask, which is set nevertheless
        }
    }

    bool next(std::string &line)
    {
        try {
            return static_cast<bool>(std::getline(in, line));
        } catch (const std::bad_alloc &) {
            throw;
        } catch (...) {
            return false;
        }
    }

private:
    std::istream &in;
    std::ios_base::iostate owners_mask;
};

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
    LineSource lines(in);
    std::string line;
    for (std::uint64_t number = 1; lines.next(line); ++number) {
        reader.read_line({number, line});
    }
}

} // namespace dalvo
