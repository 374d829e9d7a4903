// Any text: the reader's events and the setter's sections are those of the second reader.

#include <sstream>
#include <string>
#include <vector>

#include "dalvo/configuration/reader.h"
#include "fuzz/filed.h"
#include "fuzz/target.h"
#include "tests/support/second_reader.h"

namespace {

using dalvo::fuzz::require;
using dalvo::testing::SecondLine;
using dalvo::testing::SecondPiece;
using dalvo::testing::SecondSections;

/// Copies what it is told.
class Recorder : public dalvo::TextReceiver {
public:
    std::vector<SecondLine> lines;

    void header(const dalvo::TextLine &line, const std::vector<dalvo::TextPiece> &names) override
    {
        record(line, SecondLine::Kind::header, names, false);
    }

    void assignment(const dalvo::TextLine &line, const dalvo::TextAssignment &assignment) override
    {
        record(line, SecondLine::Kind::assignment, {assignment.name, assignment.value}, assignment.has_equals);
    }

    void malformed(const dalvo::TextLine &line, const dalvo::TextPiece &stripped,
                   const std::vector<dalvo::TextPiece> &names) override
    {
        std::vector<dalvo::TextPiece> pieces = {stripped};
        pieces.insert(pieces.end(), names.begin(), names.end());
        record(line, SecondLine::Kind::malformed, pieces, false);
    }

private:
    void record(const dalvo::TextLine &line, SecondLine::Kind kind, const std::vector<dalvo::TextPiece> &pieces,
                bool has_equals)
    {
        std::vector<SecondPiece> copies;
        for (const dalvo::TextPiece &piece : pieces) {
            require(piece.column >= 1 && piece.column - 1 + piece.text.size() <= line.text.size(),
                    "a piece lies in its line", std::string(line.text));
            copies.push_back({std::string(piece.text), piece.column});
        }
        lines.push_back({line.number, std::string(line.text), kind, copies, has_equals});
    }
};

std::string described(const std::vector<SecondLine> &lines)
{
    std::string text;
    for (const SecondLine &line : lines) {
        text += std::to_string(line.number) + " kind " + std::to_string(static_cast<int>(line.kind));
        for (const SecondPiece &piece : line.pieces) {
            text += " |" + piece.text + "| at " + std::to_string(piece.column);
        }
        text += line.has_equals ? " =\n" : "\n";
    }
    return text;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const std::string text = dalvo::fuzz::bytes_of(data, size);

    Recorder recorder;
    std::istringstream in(text);
    dalvo::read_text(in, recorder);
    const std::vector<SecondLine> expected = dalvo::testing::read_second(text);
    require(recorder.lines == expected, "the reader finds what the second reader finds",
            described(recorder.lines) + "instead of\n" + described(expected));
    Recorder in_memory;
    dalvo::read_text(text, in_memory);
    require(in_memory.lines == expected, "a text in memory is read as a stream is",
            described(in_memory.lines) + "instead of\n" + described(expected));

    dalvo::ConfigurationSetter setter;
    SecondSections sections;
    dalvo::fuzz::load_beside(setter, sections, text, 7);
    require(dalvo::fuzz::filed_in(setter) == sections, "a text is filed as the second reader files it");
    dalvo::fuzz::load_beside(setter, sections, text, -1);
    require(dalvo::fuzz::filed_in(setter) == sections, "a further text is filed behind the first");
    return 0;
}
