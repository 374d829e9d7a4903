#pragma once

#include <unordered_map>
#include <vector>

#include "dalvo/inspect/findings/collector.h"
#include "dalvo/inspect/findings/elsewhere.h"
#include "dalvo/inspect/runs/scenario.h"

// The inside of `check`: what looks for what. Each adds its findings to a collector.

namespace dalvo::inspect {

/// Which sections are judged.
enum class Scope {
    chosen, ///< the unnamed one and the one that the run has chosen
    every,
};

/// What is wrong with inputs, with headers and with the choice of a section.
void check_inputs(Collector &collector, Scope scope);

/// What is wrong with, or doubtful about, a line by itself. Values out of range are left to `SectionChecker`.
void check_line(Collector &collector, const Filed &assignment);

/// Lines that later ones of their section replace.
void check_replaced(Collector &collector, Scope scope);

/// Sections whose names look like slips.
void check_section_names(Collector &collector, Scope scope);

/// Looks at what the lines of a section come to where it is chosen.
class SectionChecker {
public:
    SectionChecker(Collector &target, Scope judged_scope);

    /// Judges what applies where no section is chosen. To be called after all sections that are judged.
    void check_unnamed();

    /// Judges the lines of the section with these parts.
    void check_section(const SectionPart *begin, const SectionPart *end);

private:
    void check_range(const Filed &assignment);
    void check_effects(const Layer &layer);
    void check_effect(const Filed &assignment);
    bool tell_forced(const Filed &assignment);
    bool tell_no_effect(const Filed &assignment);
    void tell_needs(const Filed &assignment);
    void tell_need(const Filed &at, std::size_t needing, const Links::Needed &needed, std::size_t other);
    bool has_effect(std::size_t option) const;
    bool is_judged(const Filed *assignment) const;
    const Filed *decides(std::size_t option) const;
    std::string value_and_place(std::size_t option, const Filed &at) const;

    /// Whether the assignment is met with the rule for the first time, and with `about`, where there are several.
    bool is_first(const Filed &assignment, Rule rule, const void *about = nullptr);
    /// Counts it; true once that was so in all sections that are judged.
    bool is_in_all(const Filed &assignment, Rule rule);

    Collector &collector;
    Scope scope;
    Scenario scenario;
    Elsewhere elsewhere;
    const Layer *judged = nullptr; // of every section: the one whose lines are looked at

    struct Tally {
        Rule rule;
        const void *about;
        std::uint32_t count;
    };
    std::unordered_map<const Filed *, std::vector<Tally>> tallies; // of lines in several sections
};

} // namespace dalvo::inspect
