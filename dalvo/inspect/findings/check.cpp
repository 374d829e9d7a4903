#include "dalvo/inspect/findings/check.h"

#include "dalvo/inspect/findings/checkers.h"
#include "dalvo/inspect/runs/resolution.h"

namespace dalvo::inspect {

namespace {

bool is_judged(const FiledSection &section, const Run &run, Scope scope)
{
    return scope == Scope::every || section.line == 0 || (!section.name.empty() && section.name == run.section());
}

void check_lines(Collector &collector, Scope scope)
{
    for (const auto &text : collector.run().texts()) {
        if (scope == Scope::every) { // each line once, however many sections it is filed in
            for (const Filed &assignment : text->assignments) {
                check_line(collector, assignment);
            }
            continue;
        }
        for (std::size_t section = 0; section < text->sections.size(); ++section) {
            if (is_judged(text->sections[section], collector.run(), scope)) {
                for (const std::uint32_t *at = text->begin(section); at != text->end(section); ++at) {
                    check_line(collector, text->assignments[*at]);
                }
            }
        }
    }
    for (const auto &text : collector.direct_texts()) {
        for (const Filed &assignment : text->assignments) {
            check_line(collector, assignment);
        }
    }
}

void check_sections(Collector &collector, Scope scope)
{
    SectionChecker checker(collector, scope);
    const RunSections sections(collector.run());
    if (scope == Scope::every) {
        for (std::size_t section = 0; section < sections.size(); ++section) {
            checker.check_section(sections.begin(section), sections.end(section));
        }
        checker.check_unnamed();
        return;
    }
    const std::string &chosen = collector.run().section();
    for (std::size_t section = 0; section < sections.size(); ++section) {
        if (!chosen.empty() && sections.name(section) == chosen) {
            checker.check_section(sections.begin(section), sections.end(section));
            return;
        }
    }
    checker.check_section(nullptr, nullptr);
}

std::vector<Finding> checked(const Run &run, Scope scope)
{
    Collector collector(run);
    check_inputs(collector, scope);
    check_lines(collector, scope);
    check_replaced(collector, scope);
    check_sections(collector, scope);
    check_section_names(collector, scope);
    return collector.take();
}

} // namespace

std::vector<Finding> check(const Run &run)
{
    return checked(run, Scope::chosen);
}

std::vector<Finding> check_every_section(const Run &run)
{
    return checked(run, Scope::every);
}

std::vector<Finding> check_text(const std::string &source, const std::string &contents, const Catalogue &catalogue)
{
    Run run(catalogue);
    run.add_default();
    run.add_text(source, contents);
    return check_every_section(run);
}

std::vector<Finding> fill(const Run &run, Configuration *record)
{
    std::vector<Finding> findings = check(run);
    if (!has_errors(findings)) {
        fill_record(run, record);
    }
    return findings;
}

} // namespace dalvo::inspect
