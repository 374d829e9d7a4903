#include "dalvo/configuration/configurationsetter.h"

#include "dalvo/configuration/reader.h"

namespace dalvo {

namespace {

/// Files the assignments of one text. The sections' addresses stay good while the table grows.
class SectionFiler : public TextReceiver {
public:
    SectionFiler(ConfigurationSetter::SectionTable &table, std::int32_t text_level)
        : sections(table), level(text_level), current(&table[""])
    {
    }

    void header(const TextLine &, const std::vector<TextPiece> &names) override
    {
        open(names);
        current = additional.back();
        additional.pop_back();
    }

    void assignment(const TextLine &, const TextAssignment &assignment) override
    {
        if (current->capacity() == 0) {
            current->reserve(usual_entries);
        }
        current->push_back({std::string(assignment.name.text), std::string(assignment.value.text), level});
        for (Section *section : additional) {
            section->push_back(current->back());
        }
    }

    void malformed(const TextLine &, const TextPiece &stripped, const std::vector<TextPiece> &names) override
    {
        open(names);
        throw OptionParser::error("bad format of configuration file", std::string(stripped.text), "", "");
    }

private:
    using Section = std::vector<ConfigurationSetter::OptEntry>;

    static constexpr std::size_t usual_entries = 4; // an assignment rarely stands alone in its section

    /// Makes the sections, created where they are new, the additional ones.
    void open(const std::vector<TextPiece> &names)
    {
        additional.clear();
        for (const TextPiece &name : names) {
            additional.push_back(&sections[std::string(name.text)]);
        }
    }

    ConfigurationSetter::SectionTable &sections;
    std::int32_t level;
    Section *current;
    std::vector<Section *> additional; // the header's other sections, in its order
};

} // namespace

void ConfigurationSetter::load(std::istream &in, std::int32_t level)
{
    SectionFiler filer(configs, level);
    read_text(in, filer);
}

} // namespace dalvo
