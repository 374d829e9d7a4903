#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "dalvo/inspect/knowledge/links.h"
#include "dalvo/inspect/runs/run.h"
#include "dalvo/inspect/runs/text.h"

// Which assignments of a run win, and what becomes of them. Inside of the library.

namespace dalvo::inspect {

/// A section of a text of a run.
struct SectionPart {
    const Text *text;
    std::size_t section;
};

/// The sections of a run, each with its parts in the texts, in their order; the unnamed one is not among them.
class RunSections {
public:
    explicit RunSections(const Run &run);

    std::size_t size() const { return starts.size() - 1; }
    const SectionPart *begin(std::size_t section) const { return parts.data() + starts[section]; }
    const SectionPart *end(std::size_t section) const { return parts.data() + starts[section + 1]; }

    /// The name; empty for one of a malformed header.
    std::string_view name(std::size_t section) const
    {
        return begin(section)->text->sections[begin(section)->section].name;
    }

private:
    std::vector<std::uint32_t> starts;
    std::vector<SectionPart> parts;
};

/// Assignments that apply one after the other: which one is the last for each option.
class Layer {
public:
    explicit Layer(std::size_t options) : last_ones(options, nullptr), accepted_ones(options, nullptr) {}

    void add(const Filed &assignment)
    {
        if (assignment.is_readable()) {
            const std::uint32_t option = assignment.option;
            if (last_ones[option] == nullptr) {
                assigned.push_back(option);
            }
            last_ones[option] = &assignment;
            if (assignment.verdict == Verdict::accepted) {
                accepted_ones[option] = &assignment;
            }
        }
    }

    void clear()
    {
        for (const std::uint32_t option : assigned) {
            last_ones[option] = nullptr;
            accepted_ones[option] = nullptr;
        }
        assigned.clear();
    }

    /// The last one that reaches the option, whether its value is within the range or not; null when there is none.
    const Filed *last(std::size_t option) const { return last_ones[option]; }

    /// The last one whose value the option accepts; null when there is none.
    const Filed *accepted(std::size_t option) const { return accepted_ones[option]; }

    /// The options that are assigned to, in the order of their first assignments.
    const std::vector<std::uint32_t> &options() const { return assigned; }

private:
    std::vector<const Filed *> last_ones;
    std::vector<const Filed *> accepted_ones;
    std::vector<std::uint32_t> assigned;
};

/// The run with one section chosen. Assignments whose values are not accepted count for nothing here, so that a run with
/// an error has values in force as well.
class Scenario {
public:
    /// The unnamed section of `run`, and what `direct_texts` assign.
    Scenario(const Run &run, const std::vector<std::shared_ptr<const Text>> &direct_texts);

    /// Chooses the section with the parts from `begin` to `end`, in place of the one before.
    void choose(const SectionPart *begin, const SectionPart *end);

    /// The assignment that wins; null when there is none.
    const Filed *winner(std::size_t option) const;

    /// Whether `assignment`, which reaches its option and applies, is the last to do so.
    bool is_last(const Filed &assignment) const;

    /// The option that forces `option` whatever its own assignment says, the first that does so; null when none does.
    const Links::Forcer *forcer_of(std::size_t option) const;

    /// Whether `forcer` has its way with `option` here.
    bool forces(const Links::Forcer &forcer, std::size_t option) const;

    /// The value that was asked for, as a number: that of the winner, or the initial one.
    double asked(std::size_t option) const;

    /// The value in force, as a number.
    double in_force(std::size_t option) const;

    /// Appends to `unmet` what keeps `option` from having an effect: conditions of its own, and of those that decide.
    void find_unmet(std::size_t option, std::vector<const Links::Decider *> &unmet) const;

    const Links &links() const { return *relations; }

    /// The last assignments of the unnamed section; of the chosen one; of the command line.
    const Layer &unnamed_layer() const { return unnamed; }
    const Layer &chosen_layer() const { return chosen; }
    const Layer &direct_layer() const { return direct; }

private:
    const Links *relations;
    Layer unnamed;
    Layer chosen;
    Layer direct;
};

} // namespace dalvo::inspect
