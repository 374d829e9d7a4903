#include "dalvo/inspect/findings/checkers.h"
#include "dalvo/inspect/findings/slips.h"
#include "dalvo/inspect/words/printable.h"

namespace dalvo::inspect {

namespace {

/// A section of a run, once for all texts.
struct NamedSection {
    std::string_view name;
    const Text *text;            // the first that has it
    const FiledSection *section; // there; null for the word "default"
};

class NameChecker {
public:
    NameChecker(Collector &target, Scope judged) : collector(target), scope(judged), sections(target.run()) {}

    void check()
    {
        collect();
        std::vector<SlipName> names;
        names.reserve(named.size());
        for (std::size_t i = 0; i < named.size(); ++i) {
            names.push_back({named[i].name, sizes[i] > 1});
        }
        const std::vector<std::size_t> slips = find_slips(names);
        for (std::size_t i = 0; i < slips.size(); ++i) {
            if (slips[i] != no_slip && is_judged(named[i], named[slips[i]])) {
                tell(named[i], named[slips[i]]);
            }
        }
    }

private:
    void collect()
    {
        named.push_back({"default", nullptr, nullptr});
        sizes.push_back(0);
        for (std::size_t i = 0; i < sections.size(); ++i) {
            const SectionPart &first = *sections.begin(i);
            const FiledSection &section = first.text->sections[first.section];
            if (section.is_nameless || section.name == "default") {
                continue;
            }
            named.push_back({section.name, first.text, &section});
            std::size_t size = 0;
            for (const SectionPart *part = sections.begin(i); part != sections.end(i); ++part) {
                size += part->text->size(part->section);
            }
            sizes.push_back(size);
        }
    }

    bool is_judged(const NamedSection &slip, const NamedSection &near) const
    {
        const std::string &chosen = collector.run().section();
        return scope == Scope::every || slip.name == chosen || near.name == chosen || near.section == nullptr;
    }

    void tell(const NamedSection &slip, const NamedSection &near)
    {
        std::string message = "section " + quoted(slip.name) + " looks like a slip for " + quoted(near.name);
        Place place;
        if (near.section != nullptr) {
            place = near.text->place(near.section->line, near.section->line_start, near.name);
            message += slip.text == near.text                    ? " (line " + std::to_string(place.line) + ")"
                       : near.text->kind == Text::Kind::built_in ? " (" + place.source + ")"
                                                                 : " (" + place.text() + ")";
        }
        Finding &finding = collector.add(Rule::similar_section, slip.text->position, slip.section->line,
                                         slip.section->line_start, slip.name, std::move(message));
        finding.suggestions = {std::string(near.name)};
        if (near.section != nullptr) {
            finding.notes.push_back({"this is the other section", place, true});
        }
    }

    Collector &collector;
    Scope scope;
    RunSections sections;
    std::vector<NamedSection> named;
    std::vector<std::size_t> sizes; // the numbers of their assignments
};

} // namespace

void check_section_names(Collector &collector, Scope scope)
{
    NameChecker(collector, scope).check();
}

} // namespace dalvo::inspect
