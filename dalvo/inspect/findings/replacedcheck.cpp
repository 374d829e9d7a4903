#include <algorithm>
#include <string>

#include "dalvo/inspect/findings/checkers.h"
#include "dalvo/inspect/words/printable.h"
#include "dalvo/utils/str.h"

namespace dalvo::inspect {

namespace {

/// The name of the section that is judged, for a message; nothing for the unnamed one.
std::string in_section(std::string_view name)
{
    return name.empty() ? "" : " in section " + quoted(name);
}

/// Looks at one text, section by section.
class ReplacedChecker {
public:
    ReplacedChecker(Collector &target, const Text &looked_at, Scope judged)
        : collector(target), text(looked_at), scope(judged), last(target.catalogue().options().size(), nullptr)
    {
    }

    void check()
    {
        for (std::size_t section = 0; section < text.sections.size(); ++section) {
            check(section);
        }
    }

private:
    void check(std::size_t section)
    {
        for (const std::uint32_t *at = text.begin(section); at != text.end(section); ++at) {
            const Filed &assignment = text.assignments[*at];
            if (!assignment.is_readable()) {
                continue;
            }
            const Filed *&before = last[assignment.option];
            if (before == nullptr) {
                touched.push_back(assignment.option);
            } else if (before->verdict == Verdict::accepted) {
                replaced(*before, assignment, section);
            }
            before = &assignment;
        }
        for (const std::uint32_t option : touched) {
            last[option] = nullptr;
        }
        touched.clear();
    }

    /// Where a line is replaced in one of its sections.
    struct Replacement {
        const Filed *by;
        const FiledSection *section;
    };

    /// A line in several sections still holds where it is replaced in some of them only.
    void replaced(const Filed &line, const Filed &by, std::size_t section)
    {
        const Replacement replacement{&by, &text.sections[section]};
        if (line.sections <= 1) {
            tell(line, {replacement});
            return;
        }
        std::vector<Replacement> &all = replacements[&line];
        all.push_back(replacement);
        if (all.size() == line.sections) {
            tell(line, all);
        }
    }

    void tell(const Filed &line, const std::vector<Replacement> &all)
    {
        const auto is_judged = [&](const Replacement &replacement) {
            const FiledSection &in = *replacement.section;
            return scope == Scope::every ||
                   (!in.is_nameless && (in.name.empty() || in.name == collector.run().section()));
        };
        const auto first = std::find_if(all.begin(), all.end(), is_judged);
        if (first == all.end()) {
            return;
        }
        Finding &finding = collector.add(
            Rule::replaced, line, line.name,
            str::joined({collector.option_of(line).name, " (", collector.where(line, line), ") is replaced by ",
                         collector.where(*first->by, line), in_section(first->section->name)}));
        for (const Replacement &replacement : all) {
            collector.note(finding, *replacement.by,
                           "this assignment replaces it" + in_section(replacement.section->name));
            finding.notes.back().is_in_message = replacement.by == first->by;
        }
    }

    Collector &collector;
    const Text &text;
    Scope scope;
    std::vector<const Filed *> last; // by option, of the section at hand
    std::vector<std::uint32_t> touched;
    std::unordered_map<const Filed *, std::vector<Replacement>> replacements; // of lines in several sections
};

} // namespace

void check_replaced(Collector &collector, Scope scope)
{
    for (const auto &text : collector.run().texts()) {
        if (text->kind == Text::Kind::file) {
            ReplacedChecker(collector, *text, scope).check();
        }
    }
}

} // namespace dalvo::inspect
