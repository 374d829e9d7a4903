#include <algorithm>

#include "dalvo/inspect/findings/checkers.h"
#include "dalvo/inspect/findings/fixes.h"
#include "dalvo/inspect/findings/slips.h"
#include "dalvo/inspect/words/printable.h"
#include "dalvo/options/nearby.h"

namespace dalvo::inspect {

namespace {

/// The sections that somebody who chose `name` may mean.
std::vector<std::string> near_sections(const Run &run, const std::string &name)
{
    std::vector<std::string> found;
    NearbyNames nearby(name);
    for (const Run::Section &section : run.sections()) {
        if (section.name.empty()) {
            continue;
        }
        nearby.offer(section.name);
        if (is_slip(name, section.name)) {
            found.push_back(section.name);
        }
    }
    for (const std::string &near : nearby.nearest(3)) {
        if (std::find(found.begin(), found.end(), near) == found.end()) {
            found.push_back(near);
        }
    }
    found.resize(std::min<std::size_t>(found.size(), 3));
    return found;
}

void check_choice(Collector &collector)
{
    const Run &run = collector.run();
    if (run.has_section(run.section()) || !run.unreadable().empty()) { // it may stand in what cannot be read
        return;
    }
    const std::vector<std::string> near = near_sections(run, run.section());
    std::vector<std::string> sources; // of the user's texts
    for (const auto &text : run.texts()) {
        if (text->kind == Text::Kind::file) {
            sources.push_back(text->source);
        }
    }
    Finding &finding =
        collector.add(Rule::unknown_section, 0, sources.size() == 1 ? sources.front() : "",
                      "no section " + quoted(run.section()) + did_you_mean(near) +
                          (run.section() == "default" ? "; what stands below [default] always applies" : ""));
    finding.suggestions = near;
}

void check_byte_order_mark(Collector &collector, std::size_t position, const Text &text)
{
    const std::string_view mark = std::string_view(text.contents).substr(0, 3);
    Finding &finding = collector.add(Rule::byte_order_mark, position, 1, text.contents.data(), mark,
                                     "byte-order mark: it is part of the first line, and makes that line wrong");
    finding.fixes.push_back({"take the byte-order mark off", true, {{0, mark.size(), ""}}});
}

void check_header(Collector &collector, std::size_t position, const Text &text, const HeaderProblem &problem)
{
    const auto add = [&](Rule rule, const std::string &message) -> Finding & {
        return collector.add(rule, position, problem.line, problem.line_start, problem.piece, message);
    };
    switch (problem.kind) {
    case HeaderProblem::Kind::empty_name:
        add(Rule::malformed_header, "malformed header: a section name is empty");
        break;
    case HeaderProblem::Kind::no_end: {
        Finding &finding = add(Rule::malformed_header, "malformed header: it does not end with ']'");
        fix_header_comment(finding, text, problem);
        break;
    }
    case HeaderProblem::Kind::default_among_names:
        add(Rule::default_among_names, "'default' among several names is an ordinary section, not the unnamed one");
        break;
    case HeaderProblem::Kind::repeated_name: {
        Finding &finding =
            add(Rule::repeated_name, "section " + quoted(problem.piece) + " is named twice in this header");
        fix_repeated_name(finding, text, problem);
        break;
    }
    }
}

bool is_judged(const HeaderProblem &problem, const Run &run, Scope scope)
{
    return scope == Scope::every || problem.kind != HeaderProblem::Kind::repeated_name ||
           problem.piece == run.section();
}

} // namespace

void check_inputs(Collector &collector, Scope scope)
{
    const Run &run = collector.run();
    if (scope == Scope::chosen) {
        check_choice(collector);
    }
    for (const Run::Unreadable &input : run.unreadable()) {
        collector.add(Rule::unreadable_file, input.text, input.source, input.error);
    }
    for (std::size_t position = 0; position < run.texts().size(); ++position) {
        const Text &text = *run.texts()[position];
        if (text.has_byte_order_mark) {
            check_byte_order_mark(collector, position, text);
        }
        for (const HeaderProblem &problem : text.header_problems) {
            if (is_judged(problem, run, scope)) {
                check_header(collector, position, text, problem);
            }
        }
    }
}

} // namespace dalvo::inspect
