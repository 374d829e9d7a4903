#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "dalvo/inspect/findings/finding.h"
#include "dalvo/inspect/runs/run.h"
#include "dalvo/inspect/runs/text.h"

// The inside of `check`: findings on their way into their order.

namespace dalvo::inspect {

/// Makes the findings of one run and puts them into their order. Of the built-in text it keeps errors alone.
class Collector {
public:
    explicit Collector(const Run &run) : checked(run), direct(run.direct_texts()) {}

    const Run &run() const { return checked; }
    const Catalogue &catalogue() const { return checked.catalogue(); }
    const OptionInfo &option_of(const Filed &assignment) const { return catalogue().options()[assignment.option]; }
    const std::vector<std::shared_ptr<const Text>> &direct_texts() const { return direct; }

    /// The text that `assignment` is of.
    const Text &text_of(const Filed &assignment) const
    {
        return assignment.text < checked.texts().size() ? *checked.texts()[assignment.text]
                                                        : *direct[assignment.text - checked.texts().size()];
    }

    /// Adds a finding of `rule` at `piece` of an assignment: its name, its value or a part of these. The reference is
    /// good until the next one is added.
    Finding &add(Rule rule, const Filed &assignment, std::string_view piece, std::string message);

    /// Adds one at `piece` of a header in the text at `position`.
    Finding &add(Rule rule, std::size_t position, std::uint64_t line, const char *line_start, std::string_view piece,
                 std::string message);

    /// Adds one that is about no line, before those of the text at `position`.
    Finding &add(Rule rule, std::size_t position, const std::string &source, std::string message);

    /// What a message about `at` calls the place of `other`: "line 3", "built-in default", "FILE:3", ...
    std::string where(const Filed &other, const Filed &at) const;

    /// Adds a note to `finding` at the name of `assignment`; its place is in the message.
    void note(Finding &finding, const Filed &assignment, const std::string &message) const;

    /// All of them, in their order.
    std::vector<Finding> take();

private:
    struct Key {
        std::size_t text; // 2 n + 1 for the n-th text, 2 n for what comes before it
        std::uint64_t line;
        std::size_t column;
        Rule rule;
        std::size_t index;
    };

    Finding &add_at(Rule rule, const Key &key, Place place, std::string message);

    const Run &checked;
    std::vector<std::shared_ptr<const Text>> direct;
    std::vector<Finding> findings;
    std::vector<Key> keys;
    Finding unwanted; // where those go that are not kept
};

} // namespace dalvo::inspect
