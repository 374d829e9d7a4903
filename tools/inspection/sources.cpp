#include "tools/inspection/sources.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iostream>
#include <iterator>
#include <sstream>
#include <unordered_map>

#include "dalvo/configuration/default_config.h"
#include "dalvo/configuration/reader.h"
#include "dalvo/options/optionparser.h"
#include "tools/output/diagnostics.h"
#include "tools/output/excerpt.h"

namespace dalvo::tools {

namespace {

/// Files the assignments of one text by section, as the library does.
class SourceReceiver : public TextReceiver {
public:
    SourceReceiver(Source &target, std::int32_t text_level) : source(target), level(text_level), open{0}
    {
        source.sections.push_back({"", {}});
        positions.emplace("", 0);
    }

    void header(const TextLine &, const std::vector<TextPiece> &names) override
    {
        open.clear();
        for (const TextPiece &name : names) {
            const auto [found, is_new] = positions.emplace(name.text, source.sections.size());
            if (is_new) {
                source.sections.push_back({found->first, {}});
            }
            open.push_back(found->second);
        }
    }

    void assignment(const TextLine &line, const TextAssignment &assignment) override
    {
        for (const std::size_t position : open) {
            Section &section = source.sections[position];
            // clang-format off
            section.assignments.push_back({std::string(assignment.name.text), std::string(assignment.value.text), level,
                                           {source.name, line.number}, section.name});
            // clang-format on
        }
    }

    void malformed(const TextLine &line, const TextPiece &stripped, const std::vector<TextPiece> &) override
    {
        const OptionParser::error e("bad format of configuration file", std::string(stripped.text), "", "");
        throw Failure(Place{source.name, line.number}.text(), shown_message(e));
    }

private:
    Source &source;
    std::int32_t level;
    std::vector<std::size_t> open; // the sections that assignments go to
    std::unordered_map<std::string, std::size_t> positions;
};

} // namespace

std::string Place::text() const
{
    return escaped(source) + (line != 0 ? ":" + std::to_string(line) : "");
}

Source read_source(std::istream &in, const std::string &name, std::int32_t level)
{
    Source source{name, {}};
    SourceReceiver receiver(source, level);
    read_text(in, receiver);
    if (in.bad()) {
        throw Failure(name, "cannot be read", status_usage);
    }
    return source;
}

std::string file_name(const std::string &path)
{
    return path == "-" ? "standard input" : path.empty() ? "''" : path;
}

std::string file_contents(const std::string &path)
{
    std::ifstream file;
    if (path != "-") {
        errno = 0;
        file.open(path, std::ios_base::binary);
        if (!file) {
            throw Failure(file_name(path), errno != 0 ? std::strerror(errno) : "cannot be opened", status_usage);
        }
    }
    std::istream &in = path == "-" ? std::cin : file;
    std::ostringstream contents;
    if (in.peek() != std::istream::traits_type::eof()) {
        contents << in.rdbuf();
    }
    if (in.bad() || (path == "-" && std::ferror(stdin) != 0)) { // of std::cin's failures only stdin knows
        throw Failure(file_name(path), "cannot be read", status_usage);
    }
    return contents.str();
}

Source read_file(const std::string &path)
{
    std::istringstream in(file_contents(path));
    return read_source(in, file_name(path), file_level);
}

Source read_default()
{
    std::string text;
    for (const char *const *piece = dalvo_default_config; *piece != nullptr; ++piece) {
        text += *piece;
    }
    std::istringstream in(text);
    return read_source(in, "built-in default", default_level);
}

} // namespace dalvo::tools
