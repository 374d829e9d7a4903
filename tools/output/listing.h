#pragma once

#include <cstddef>
#include <iosfwd>
#include <string>
#include <vector>

#include "dalvo/inspect/knowledge/catalogue.h"

namespace dalvo::tools {

/// Options of a catalogue, in the order of registration; they are the catalogue's.
using OptionList = std::vector<const inspect::OptionInfo *>;

/// What patterns choose from the catalogue.
struct Selection {
    OptionList options;
    std::vector<std::string> unmatched; ///< the patterns that no option matches, in their order
};

/// Whether option `name` matches `pattern`: a glob, which is a text with "*", "?" or "[" in it, matches whole names,
/// any other text the names that it is a part of.
bool option_matches(const std::string &pattern, const std::string &name);

/// The options of `catalogue` that match one of `patterns`; all options when there are no patterns.
Selection select_options(const inspect::Catalogue &catalogue, const std::vector<std::string> &patterns);

/// "no option matches 'PATTERN'", with names that may be meant where there are some.
std::string unmatched_pattern(const inspect::Catalogue &catalogue, const std::string &pattern);

// Each writes a listing of `options`, group by group.

/// Help in lines of at most `width` columns, but for words that are longer.
void write_listing_text(std::ostream &out, const OptionList &options, std::size_t width);
/// docs/json.md describes it.
void write_listing_json(std::ostream &out, const OptionList &options);
/// docs/options.md is this for all options.
void write_listing_markdown(std::ostream &out, const OptionList &options);

/// `options` by group, both in the order of their first appearance; no list is empty.
std::vector<OptionList> by_group(const OptionList &options);

/// `group` without the colon at its end.
std::string group_title(const std::string &group);

/// `text` for a line of a markdown document, where it then stands for itself.
std::string markdown_line(const std::string &text);

/// `help` as markdown: paragraphs with their line breaks, and lists of the lines that start with "- ".
std::string markdown_help(const std::string &help);

} // namespace dalvo::tools
