#include <algorithm>
#include <string>

#include "dalvo/inspect/findings/checkers.h"
#include "dalvo/inspect/findings/fixes.h"
#include "dalvo/inspect/findings/linewords.h"
#include "dalvo/inspect/words/printable.h"
#include "dalvo/utils/str.h"

namespace dalvo::inspect {

namespace {

constexpr const char *no_equals = "no '=': the whole line is the name, and the value is empty";

std::string_view stripped(std::string_view text)
{
    return str::stripped(text, str::is_space);
}

/// Looks at one assignment.
class LineChecker {
public:
    LineChecker(Collector &target, const Filed &line)
        : collector(target), catalogue(target.catalogue()), text(target.text_of(line)), assignment(line)
    {
    }

    void check()
    {
        switch (assignment.verdict) {
        case Verdict::unknown: unknown_option(); break;
        case Verdict::unreadable: invalid_value(); break;
        case Verdict::out_of_range: break;
        case Verdict::accepted:
            if (catalogue.options()[assignment.option].type == OPT_STR) {
                doubtful_string();
            } else {
                doubtful_number();
            }
        }
    }

private:
    const OptionInfo &option() const { return catalogue.options()[assignment.option]; }

    /// A note at `piece` of the line.
    void note(Finding &finding, std::string_view piece, const std::string &message) const
    {
        finding.notes.push_back({message, text.place(assignment.line, assignment.line_start, piece), false});
    }

    // ---- Names --------------------------------------------------------------------------------------------------

    void unknown_option()
    {
        const std::string_view name = assignment.name;
        if (name.empty()) {
            collector.add(Rule::unknown_option, assignment, name, "no option name before '='");
        } else if (name.front() == ';' || name.substr(0, 2) == "//") {
            other_comment(name.substr(0, name.front() == ';' ? 1 : 2));
        } else if (!colon_for_equals() && !blank_for_equals()) {
            misspelt_name();
        }
    }

    void other_comment(std::string_view mark)
    {
        Finding &finding = collector.add(Rule::unknown_option, assignment, assignment.name,
                                         "'" + std::string(mark) + "' starts no comment: comments start with '#'");
        fix_piece(finding, text, assignment, mark, "#", true, "make it a comment");
    }

    /// "name: value", and "name := value".
    bool colon_for_equals()
    {
        const std::size_t colon = assignment.name.find(':');
        const std::string_view name = stripped(assignment.name.substr(0, std::min(colon, assignment.name.size())));
        const OptionInfo *const meant = catalogue.find(name);
        if (colon == std::string_view::npos || meant == nullptr) {
            return false;
        }
        const std::string_view mark = assignment.name.substr(colon, 1);
        const bool is_extra = assignment.has_equals && stripped(assignment.name.substr(colon + 1)).empty();
        const char *const end = assignment.has_equals ? assignment.value.data() + assignment.value.size()
                                                      : assignment.name.data() + assignment.name.size();
        const std::string_view value =
            is_extra ? assignment.value : stripped({mark.data() + 1, static_cast<std::size_t>(end - mark.data() - 1)});
        Finding &finding = collector.add(Rule::unknown_option, assignment, assignment.name, unknown_words(name, value));
        finding.suggestions = {meant->name};
        note(finding, mark, "an assignment is written with '=', not with ':'");
        const bool is_blank_before = colon > 0 && str::is_space(assignment.name[colon - 1]);
        const bool is_blank_after = colon + 1 == assignment.name.size() || str::is_space(assignment.name[colon + 1]);
        const bool has_comment = comment_start(value) != std::string_view::npos; // it would become a part of the value
        fix_piece(finding, text, assignment, mark,
                  is_extra ? "" : str::joined({is_blank_before ? "" : " ", "=", is_blank_after ? "" : " "}),
                  meant->accepts(meant->parse(value)) && !has_comment,
                  is_extra ? "take the ':' out" : "write '=' for ':'");
        return true;
    }

    /// "name value", without anything between them.
    bool blank_for_equals()
    {
        const auto blank = std::find_if(assignment.name.begin(), assignment.name.end(), str::is_space);
        const std::string_view name =
            assignment.name.substr(0, static_cast<std::size_t>(blank - assignment.name.begin()));
        const OptionInfo *const meant = catalogue.find(name);
        if (assignment.has_equals || meant == nullptr) {
            return false;
        }
        const std::string_view rest = assignment.name.substr(name.size());
        const std::string_view value = stripped(rest);
        Finding &finding = collector.add(Rule::unknown_option, assignment, assignment.name, unknown_words(name, value));
        finding.suggestions = {meant->name};
        note(finding, assignment.name, no_equals);
        fix_piece(finding, text, assignment, rest.substr(0, static_cast<std::size_t>(value.data() - rest.data())),
                  " = ", false, "write '=' between name and value");
        return true;
    }

    std::string unknown_words(std::string_view name, std::string_view value) const
    {
        return "unknown option " + shown(assignment.name) + " (did you mean " + shown(name) + " = " + shown(value) +
               "?)";
    }

    void misspelt_name()
    {
        const std::string name(assignment.name);
        std::vector<std::string> near = catalogue.suggestions(name);
        if (near.empty() && !assignment.has_equals) { // perhaps the first word is a name
            near = catalogue.suggestions(name.substr(0, name.find_first_of(" \t")));
        }
        Finding &finding = collector.add(Rule::unknown_option, assignment, assignment.name,
                                         "unknown option " + shown(name) + did_you_mean(near));
        finding.suggestions = near;
        if (!assignment.has_equals) {
            note(finding, assignment.name, no_equals);
        }
        const bool is_one_word = std::none_of(name.begin(), name.end(), str::is_space);
        for (const std::string &meant : near) {
            if (is_one_word) { // else something would be lost
                fix_piece(finding, text, assignment, assignment.name, meant, false, "write " + quoted(meant));
            }
        }
    }

    // ---- Values that are not of the type ------------------------------------------------------------------------

    void invalid_value()
    {
        if (assignment.value.empty()) {
            empty_value();
            return;
        }
        const ValueParts parts = parts_of(assignment.value, option());
        const std::string_view number = parts.is_readable ? "" : parts.core;
        Finding &finding = collector.add(Rule::invalid_value, assignment, assignment.value, "");
        finding.accepted = option().accepted_texts();
        if (option().type == OPT_BOOL && !parts.is_readable) {
            finding.suggestions = bool_words_near(parts.core);
        }
        const std::string size = size_problem(number, option().type);
        finding.message = !size.empty()
                              ? "value " + shown(assignment.value) + " is " + size + " for " + kind_of(option())
                              : "invalid value " + quoted(assignment.value) + ": " + option().name + " is " +
                                    kind_of(option()) + " and accepts " + finding.accepted +
                                    did_you_mean(finding.suggestions);
        if (!parts.quotes.empty()) {
            note(finding, parts.quotes, "the quotes are part of the value");
        }
        if (!parts.comment.empty()) {
            note(finding, parts.comment,
                 "'" + comment_mark(parts.comment) + "' starts no comment here: it is part of the value");
        }
        if (parts.is_readable) {
            fix_value(finding, text, assignment, std::string(parts.core), parts.comment, true,
                      parts.comment.empty() ? "take the quotes off" : "put the comment on a line of its own");
        }
        for (const std::string &word : finding.suggestions) {
            fix_value(finding, text, assignment, word, parts.comment, false, "write " + quoted(word));
        }
    }

    void empty_value()
    {
        Finding &finding = collector.add(Rule::invalid_value, assignment, assignment.value,
                                         "the value is empty: " + option().name + " is " + kind_of(option()) +
                                             " and accepts " + option().accepted_texts());
        finding.accepted = option().accepted_texts();
        if (!assignment.has_equals) {
            note(finding, assignment.name, no_equals);
            if (option().type == OPT_BOOL) {
                fix_value(finding, text, assignment, " = true", "", false,
                          "write " + quoted(option().name + " = true"));
            }
        }
    }

    // ---- Values that are accepted, but probably a mistake --------------------------------------------------------

    void doubtful_string()
    {
        if (!assignment.has_equals) {
            collector.add(Rule::no_equals, assignment, assignment.name, no_equals);
        }
        const bool is_one_quotation = is_quoted(assignment.value) &&
                                      assignment.value.find(assignment.value.front(), 1) == assignment.value.size() - 1;
        const std::size_t start = is_one_quotation ? std::string_view::npos : comment_start(assignment.value);
        const std::string_view comment =
            start != std::string_view::npos ? assignment.value.substr(start) : std::string_view();
        const std::string_view before = stripped(assignment.value.substr(0, start));
        if (is_quoted(before)) {
            Finding &finding =
                collector.add(Rule::quoted_value, assignment, before, "the quotes are part of the value");
            if (comment.empty()) {
                fix_value(finding, text, assignment, std::string(stripped(before.substr(1, before.size() - 2))), "",
                          false, "take the quotes off");
            }
        }
        if (!comment.empty()) {
            Finding &finding = collector.add(Rule::comment_in_value, assignment, comment,
                                             "'#' starts no comment here: it is part of the value");
            fix_value(finding, text, assignment, std::string(before), comment, false,
                      "put the comment on a line of its own");
        }
    }

    void doubtful_number()
    {
        const std::optional<double> lowest = option().lowest_sensible;
        if (!lowest || assignment.number >= *lowest) {
            return;
        }
        const std::string value = shown(assignment.value);
        const std::string start = value_text(Value(static_cast<std::int32_t>(*lowest)));
        if (!option().codes.empty()) {
            collector.add(Rule::negative_code, assignment, assignment.value,
                          value + " is none of the codes of " + option().name + ", which start at " + start);
        } else {
            collector.add(Rule::doubtful_value, assignment, assignment.value,
                          value + " makes no sense for " + option().name + ", which starts at " + start);
        }
    }

    Collector &collector;
    const Catalogue &catalogue;
    const Text &text;
    const Filed &assignment;
};

} // namespace

void check_line(Collector &collector, const Filed &assignment)
{
    LineChecker(collector, assignment).check();
}

} // namespace dalvo::inspect
