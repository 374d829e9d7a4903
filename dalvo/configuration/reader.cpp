#include "dalvo/configuration/configurationsetter.h"

#include <istream>
#include <memory>
#include <new>

#include "dalvo/utils/str.h"

namespace dalvo {

namespace {

using Section = std::vector<ConfigurationSetter::OptEntry>;

/// The white space of the format: what isspace accepts in the "C" locale, whatever locale the host has set.
int is_space(int c)
{
    return c == ' ' || (c >= '\t' && c <= '\r') ? 1 : 0;
}

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

/// Files the assignments of one text. The sections' addresses stay good while the table grows.
class SectionFiler {
public:
    SectionFiler(ConfigurationSetter::SectionTable &table, std::int32_t text_level)
        : sections(table), level(text_level), current(&table[""])
    {
    }

    /// `line` is stripped.
    void file_line(const std::string &line)
    {
        if (line.empty() || line.front() == '#') {
            return;
        }
        if (line.front() == '[') {
            open_header(line);
        } else {
            file_assignment(line);
        }
    }

private:
    static OptionParser::error bad_format(const std::string &line)
    {
        return {"bad format of configuration file", line, "", ""};
    }

    void open_header(const std::string &line)
    {
        additional.clear();
        if (line.size() < 2 || line.back() != ']') {
            throw bad_format(line);
        }
        std::string names = str::strip(line.substr(1, line.size() - 2), is_space);
        if (names.empty()) {
            throw bad_format(line);
        }
        if (names == "default") { // only as the whole header: among several names it is a name like any other
            names.clear();
        }
        if (names.find(',') == std::string::npos) {
            current = &sections[names];
        } else {
            open_several(names, line);
        }
    }

    void open_several(const std::string &names, const std::string &line)
    {
        const auto pieces = str::get_tokenizer(names, ",", 0);
        for (auto at = pieces->begin(); at != pieces->end(); ++at) {
            const std::string name = str::strip(*at, is_space);
            if (name.empty()) {
                throw bad_format(line);
            }
            additional.push_back(&sections[name]);
        }
        current = additional.back();
        additional.pop_back();
    }

    void file_assignment(const std::string &line)
    {
        const auto sides = str::get_tokenizer(line, "=", 1);
        auto at = sides->begin();
        ConfigurationSetter::OptEntry entry{str::strip(*at, is_space), "", level};
        if (++at != sides->end()) {
            entry.value = str::strip(*at, is_space);
        }
        current->push_back(entry);
        for (Section *section : additional) {
            section->push_back(entry);
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
    LineSource lines(in);
    std::string line;
    while (lines.next(line)) {
        filer.file_line(str::strip(line, is_space));
    }
}

} // namespace dalvo
