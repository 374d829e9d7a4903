"""The mutants of a source: small changes, each of which the tests should notice."""

import random
import re
import struct
from collections import namedtuple

# A change of bytes `start` to before `end` into `text`; `row` is not None in a file of rows, and tells its row.
Mutant = namedtuple("Mutant", "file line operator start end text original mutated row")

SWAPPED_MARKS = {
    "==": ["!="], "!=": ["=="], "<": ["<=", ">="], "<=": ["<", ">"], ">": [">=", "<="], ">=": [">", "<"],
    "&&": ["||"], "||": ["&&"], "+": ["-"], "-": ["+"], "*": ["/"], "/": ["*"], "%": ["/"], "+=": ["-="], "-=": ["+="],
    "&": ["|"], "|": ["&"], "^": ["|"], "<<": [">>"], ">>": ["<<"], "++": ["--"], "--": ["++"],
}
ALWAYS_OPERATORS = {"==", "!=", "<=", ">=", "+=", "-=", "++", "--", "||"}
COMPARISONS = {"==", "!=", "<", "<=", ">", ">="}

SWAPPED_WORDS = {
    "true": "false", "false": "true",
    "OPT_BOOL": "OPT_INT", "OPT_INT": "OPT_FLOAT", "OPT_FLOAT": "OPT_STR", "OPT_STR": "OPT_BOOL",
}

ROW_FILES = {"catalogue.cpp", "applier.cpp", "dump.cpp", "configuration.h", "primes.h"}


def mutants_of(source):
    """All mutants of a source, in the order of their places."""
    edits = []
    for at, token in enumerate(source.tokens):
        edits += [("operator", at, at, text) for text in changed_operator(source, at)]
        edits += [("literal", at, at, text) for text in changed_literal(source, at)]
        edits += [("condition", *edit) for edit in changed_condition(source, at)]
    for block in source.blocks():
        edits += [("drop", first, last, ";") for first, last in block if is_droppable(source, first, last)]
        edits += [("swap", *edit) for edit in swapped_rows(source, block)]
    found = [made(source, *edit) for edit in edits if not is_meaningless(source, edit[1])]
    return sorted(set(found), key=lambda m: (m.start, m.end, m.operator, m.text))


def changed_operator(source, at):
    token = source.tokens[at]
    if token.kind == "word":
        if token.text in SWAPPED_WORDS and source.tokens[at - 1].text != "case":
            yield SWAPPED_WORDS[token.text]
    elif token.text in SWAPPED_MARKS and (token.spaced or token.text in ALWAYS_OPERATORS):
        is_output = token.text in ("<<", ">>") and source.tokens[at + 1].kind != "number"
        if source.tokens[at - 1].text != "operator" and not is_output:
            yield from SWAPPED_MARKS[token.text]


def changed_literal(source, at):
    token = source.tokens[at]
    if token.kind == "string" and source.tokens[at - 1].text != "extern":
        yield '"X' + token.text[1:]
    elif token.kind == "char":
        yield changed_character(token.text)
    elif token.kind == "number" and not is_pure(source, at):
        yield from changed_number(token.text)


def is_pure(source, at):
    """Whether the number at token `at` is the 0 of a pure virtual function."""
    return source.tokens[at - 1].text == "=" and source.tokens[at - 2].text in (")", "const")


def changed_character(text):
    value = ord(text[1:-1].encode().decode("unicode_escape"))
    return f"'\\x{value + 1:02x}'"


def changed_number(text):
    digits, suffix = re.fullmatch(r"(0[xX][0-9a-fA-F]+|[\d.]+)(.*)", text).groups()
    if digits[:2] in ("0x", "0X"):
        yield f"0x{int(digits, 16) + 1:X}{suffix}"
    elif "." in digits:
        yield from changed_real(digits, suffix)
    else:
        yield f"{int(digits) + 1}{suffix}"
        if int(digits) > 0:
            yield f"{int(digits) - 1}{suffix}"


def changed_real(digits, suffix):
    """Moves the last digit by one; nothing where that is the same float."""
    places = len(digits.split(".")[1])
    for step in (1, -1):
        moved = float(digits) + step * 10.0**-places
        if moved >= 0 and struct.pack("f", moved) != struct.pack("f", float(digits)):
            yield f"{moved:.{places}f}{suffix}"


def changed_condition(source, at):
    """Negates what decides an if, while or for; swaps the two results of a choice."""
    tokens = source.tokens
    if tokens[at].text in ("if", "while", "for") and tokens[at + 1].text == "(":
        first, last = at + 2, source.match[at + 1] - 1
        if tokens[at].text == "for":
            ends = [source.end_of_statement(first, last + 1)]
            if tokens[ends[0]].text != ";":
                return  # over a range
            first, last = ends[0] + 1, source.end_of_statement(ends[0] + 1, last + 1) - 1
        inside = [token.text for token in tokens[first : last + 1] if token.spaced]
        is_comparison = COMPARISONS.intersection(inside) and not {"&&", "||"}.intersection(inside)
        if first <= last and not is_comparison:  # whose operator is changed anyway
            yield first, last, f"!({source.text_of(first, last)})"
    elif tokens[at].text == "?":
        colon = end_of_choice(source, at + 1, {":"})
        end = end_of_choice(source, colon + 1, {";", ",", ")", "}", "]", ":"})
        swapped = source.text_of(colon + 1, end - 1) + " : " + source.text_of(at + 1, colon - 1)
        yield at + 1, end - 1, swapped


def end_of_choice(source, at, ends):
    depth = 0
    while depth > 0 or source.tokens[at].text not in ends:
        text = source.tokens[at].text
        depth += (text == "?") - (text == ":" and depth > 0)
        at = source.match[at] + 1 if text in ("(", "[", "{") else at + 1
    return at


def is_droppable(source, first, last):
    """All but declarations and the result at a function's end."""
    if source.is_declaration(first, last):
        return False
    tokens = source.tokens
    if tokens[first].text != "return" or last == first + 1 or tokens[last + 1].text != "}":
        return True
    before = source.match[last + 1] - 1
    if tokens[before].text == ")":
        before = source.match[before] - 1
    return tokens[before].text in ("if", "else", "for", "while", "switch", "try", "catch")


def swapped_rows(source, block):
    """Swaps statements that stand one behind the other and look alike: rows of one sequence."""
    for (first, last), (second, end) in zip(block, block[1:]):
        if second == last + 1 and row_shape(source, first, last) == row_shape(source, second, end) is not None:
            between = source.text[source.tokens[last].end : source.tokens[second].start]
            rows = source.text_of(first, last), source.text_of(second, end)
            if rows[0] != rows[1]:
                yield first, end, rows[1] + between + rows[0]


def row_shape(source, first, last):
    """What rows of one sequence share: the object that they call, or the arguments that they hand on."""
    tokens = source.tokens
    if tokens[first].kind != "word" or source.is_declaration(first, last):
        return None
    if tokens[first + 1].text == "." and tokens[last - 1].text == ")":
        return tokens[first].text + "."
    if tokens[first + 1].text == "(" and source.match[first + 1] == last - 1:
        arguments = [token.text for token in tokens[first + 2 : last - 1]]
        return "".join(arguments[:1]) if tokens[first + 2].kind == "word" else tokens[first].text
    return None


def is_meaningless(source, at):
    """Whether token `at` stands in an assertion or in a deleted function."""
    start = at
    while start > 0 and source.tokens[start - 1].text not in (";", "{", "}"):
        start -= 1
    return source.tokens[start].text in ("assert", "static_assert")


def made(source, operator, first, last, text):
    start, end = source.tokens[first].start, source.tokens[last].end
    around, after = source.lines_around(start, end)
    original = source.text[around:after]
    mutated = source.text[around:start] + text + source.text[end:after]
    squeezed = [" ".join(lines.split()) for lines in (original, mutated)]
    row = row_of(source, first) if source.name.rsplit("/", 1)[-1] in ROW_FILES else None
    return Mutant(source.name, source.line_of(start), operator, start, end, text, *squeezed, row)


def row_of(source, at):
    """The row that token `at` belongs to, as a number; None outside of rows."""
    if source.name.endswith("primes.h"):
        return at if source.tokens[at].kind == "number" and source.tokens[at - 1].text in ("{", ",") else None
    start = at
    while start > 0 and source.tokens[start - 1].text not in (";", "{", "}"):
        start = source.match[start - 1] if source.tokens[start - 1].text in (")", "]") else start - 1
    while source.tokens[start].text in ("(", "["):
        start += 1
    if source.name.endswith("configuration.h"):
        return start
    named = source.tokens[start].text in ("v", "put", "options", "add")
    return start if named and source.tokens[start + 1].text in (".", "(") else None


def one_of_each_row(mutants, seed):
    """All mutants outside of rows, and of each row one."""
    rows = {}
    for mutant in mutants:
        rows.setdefault((mutant.file, mutant.row), []).append(mutant)
    chosen = []
    for (file, row), of_row in rows.items():
        chosen += of_row if row is None else [random.Random(f"{seed} {file} {row}").choice(of_row)]
    return sorted(chosen, key=mutants.index)


def sampled(mutants, count, seed):
    """`count` of the mutants, from each file its share and at least one."""
    files = {}
    for mutant in mutants:
        files.setdefault(mutant.file, []).append(mutant)
    chosen = set()
    for file, of_file in files.items():
        share = max(1, round(count * len(of_file) / len(mutants)))
        chosen.update(random.Random(f"{seed} {file}").sample(of_file, min(share, len(of_file))))
    return [mutant for mutant in mutants if mutant in chosen]
