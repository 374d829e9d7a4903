"""Many mutants in one text: each function body stands in it once unchanged and once for each of its mutants, and the
environment tells at run time which of them runs. One compilation then serves all mutants of a file."""

from collections import namedtuple

VARIABLE = "DALVO_MUTANT"
HEAD = f"""#ifndef DALVO_MUTANT_CHOICE
#define DALVO_MUTANT_CHOICE
#include <cstdlib>
inline bool dalvo_runs_mutant(int number)
{{
    static const char *const chosen = std::getenv("{VARIABLE}");
    static const int chosen_number = chosen != nullptr ? std::atoi(chosen) : 0;
    return number == chosen_number;
}}
#endif
"""

# `numbers` holds the number of each mutant, `lines` the lines of the text that a number has to itself.
Schema = namedtuple("Schema", "text numbers lines")


def bodies(source):
    """The function bodies of a source that are no constant expressions: their braces as offsets."""
    end = -1
    for at, token in enumerate(source.tokens):
        if at > end and token.text == "{" and source.is_block(at):
            end = source.match[at]
            if "constexpr" not in head_of(source, at):
                yield token.start, source.tokens[end].end


def head_of(source, at):
    words = []
    while at > 0 and source.tokens[at - 1].text not in (";", "{", "}"):
        at -= 1
        words.append(source.tokens[at].text)
    return words


def initial_values(source):
    """The literals that members of classes begin with, as offsets, where no body holds them."""
    inside = list(bodies(source))
    for at, token in enumerate(source.tokens[1:-1], 1):
        is_value = token.kind == "number" or token.text in ("true", "false")
        if is_value and source.tokens[at - 1].text == "=" and source.tokens[at + 1].text == ";":
            is_constant = {"constexpr", "static", "const"}.intersection(head_of(source, at))
            if not is_constant and not any(start < token.start < end for start, end in inside):
                yield token.start, token.end


def able(source, mutants):
    """Those mutants that stand inside of a body, or are an initial value."""
    inside, values = list(bodies(source)), set(initial_values(source))
    return [
        m for m in mutants
        if (m.start, m.end) in values or any(start < m.start and m.end < end for start, end in inside)
    ]


def schema_of(source, numbers):
    """The text for mutants by their numbers, which begin at 1."""
    written, lines, at = [HEAD], {}, 0
    count = HEAD.count("\n")

    def write(text):
        nonlocal count
        written.append(text)
        count += text.count("\n")

    def write_body(start, end):
        write("{\n")
        for mutant, number in numbers.items():
            if start < mutant.start and mutant.end < end:
                write(f"if (dalvo_runs_mutant({number}))\n")
                first = count + 1
                write(source.text[start : mutant.start] + mutant.text + source.text[mutant.end : end] + " else\n")
                lines.update((line, mutant) for line in range(first, count + 1))
        write(source.text[start:end] + "\n}")

    def write_value(start, end):
        choices = [(m, number) for m, number in numbers.items() if (m.start, m.end) == (start, end)]
        write("".join(f"dalvo_runs_mutant({number}) ? {m.text} : " for m, number in choices) + source.text[start:end])
        lines.update((count + 1, m) for m, _ in choices)

    sites = [(*place, write_body) for place in bodies(source)]
    sites += [(*place, write_value) for place in initial_values(source)]
    for start, end, write_site in sorted(sites, key=lambda site: site[0]):
        write(source.text[at:start])
        write_site(start, end)
        at = end
    write(source.text[at:])
    return Schema("".join(written), numbers, lines)
