#include "dalvo/inspect/runs/run.h"

#include <algorithm>
#include <string_view>
#include <unordered_map>

#include "dalvo/inspect/runs/text.h"

namespace dalvo::inspect {

namespace {

std::shared_ptr<const Text> text_of(const Catalogue &catalogue, Text::Kind kind, const std::string &source,
                                    std::string contents, std::size_t position)
{
    return std::make_shared<const Text>(catalogue, kind, source, std::move(contents),
                                        static_cast<std::uint32_t>(position));
}

} // namespace

Run::Run(const Catalogue &catalogue) : known(&catalogue) {}

void Run::add_default()
{
    list.push_back(text_of(*known, Text::Kind::built_in, "built-in default", known->default_text(), list.size()));
}

void Run::add_text(const std::string &source, std::string contents)
{
    list.push_back(text_of(*known, Text::Kind::file, source, std::move(contents), list.size()));
}

void Run::add_contents(const std::string &source, Contents contents)
{
    if (contents.error.empty()) {
        add_text(source, std::move(contents.bytes));
    } else {
        failures.push_back({source, std::move(contents.error), list.size()});
    }
}

void Run::add_file(const std::string &path)
{
    add_contents(path, read_file(path));
}

void Run::add_stream(const std::string &source, std::istream &in)
{
    add_contents(source, read_stream(in));
}

void Run::choose_section(const std::string &name)
{
    chosen = name;
}

void Run::assign(const std::string &name, const std::string &value, const std::string &source)
{
    if (direct.empty() || direct.back().source != source) {
        direct.push_back({source, {{name, value}}});
    } else {
        direct.back().pairs.emplace_back(name, value);
    }
}

bool Run::has_section(const std::string &name) const
{
    return name.empty() || std::any_of(list.begin(), list.end(), [&](const auto &text) {
               return std::any_of(text->sections.begin(), text->sections.end(),
                                  [&](const FiledSection &section) { return section.name == name; });
           });
}

std::vector<Run::Section> Run::sections() const
{
    std::vector<Section> found{{"", 0}};
    std::unordered_map<std::string_view, std::size_t> positions{{"", 0}};
    for (const auto &text : list) {
        for (const FiledSection &filed : text->sections) {
            if (filed.is_nameless) {
                continue;
            }
            const auto [at, is_new] = positions.emplace(filed.name, found.size());
            if (is_new) {
                found.push_back({std::string(at->first), 0});
            }
            found[at->second].assignments += filed.filings;
        }
    }
    return found;
}

std::vector<std::shared_ptr<const Text>> Run::direct_texts() const
{
    std::vector<std::shared_ptr<const Text>> made;
    made.reserve(direct.size());
    for (const Direct &group : direct) {
        made.push_back(std::make_shared<const Text>(*known, group.source, group.pairs,
                                                    static_cast<std::uint32_t>(list.size() + made.size())));
    }
    return made;
}

} // namespace dalvo::inspect
