"""C++ text as tokens, with just enough structure to find statements in it."""

import bisect
import re

TOKEN = re.compile(
    r"""(?P<comment>//[^\n]*|/\*.*?\*/)
      | (?P<directive>^[ \t]*\#(?:[^\\\n]|\\.)*)
      | (?P<string>"(?:[^"\\\n]|\\.)*")
      | (?P<char>'(?:[^'\\\n]|\\.)*')
      | (?P<number>(?:0[xX][0-9a-fA-F]+|\d+(?:\.\d+)?)[uUlLfF]*)
      | (?P<word>[A-Za-z_]\w*)
      | (?P<space>\s+)
      | (?P<mark><<=|>>=|\+\+|--|&&|\|\||==|!=|<=|>=|\+=|-=|->|::|<<|>>|.)""",
    re.MULTILINE | re.DOTALL | re.VERBOSE,
)

CLOSING = {"(": ")", "[": "]", "{": "}"}

# What stands before the brace of a block of statements; before other braces stand names, "=", "," and the like.
BEFORE_BLOCK = {")", "]", "const", "noexcept", "override", "else", "try", "do"}

DECLARING = {
    "alignas", "assert", "auto", "bool", "char", "class", "const", "constexpr", "double", "enum", "extern", "float",
    "friend", "int", "mutable", "namespace", "static", "static_assert", "struct", "template", "typedef", "typename",
    "union", "unsigned", "using", "void",
}


class Token:
    def __init__(self, kind, text, start, spaced):
        self.kind = kind
        self.text = text
        self.start = start
        self.end = start + len(text)
        self.spaced = spaced  # has white space on both sides


class Source:
    """The code of one file: its tokens without comments, directives and what `#else` leaves out, and how its brackets
    belong together (`match` holds both directions)."""

    def __init__(self, name, text):
        self.name = name
        self.text = text
        self.line_starts = [0] + [at.end() for at in re.finditer("\n", text)]
        self.tokens = list(self._code())
        self.match = self._brackets()

    def line_of(self, offset):
        return bisect.bisect_right(self.line_starts, offset)

    def lines_around(self, start, end):
        """The offsets of the whole lines that hold `start` to before `end`."""
        first = self.line_starts[self.line_of(start) - 1]
        after = self.text.find("\n", end)
        return first, len(self.text) if after < 0 else after

    def text_of(self, first, last):
        """The text from token `first` to token `last`, both included."""
        return self.text[self.tokens[first].start : self.tokens[last].end]

    def _code(self):
        skipping = False
        for found in TOKEN.finditer(self.text):
            kind = found.lastgroup
            if kind == "directive":
                word = found.group().strip().lstrip("#").split()[0]
                skipping = word == "else" or (skipping and word != "endif")
            elif kind not in ("comment", "space") and not skipping:
                around = self.text[found.start() - 1 : found.start()], self.text[found.end() : found.end() + 1]
                yield Token(kind, found.group(), found.start(), all(side.isspace() for side in around))

    def _brackets(self):
        match, open_ones = {}, []
        for at, token in enumerate(self.tokens):
            if token.kind != "mark":
                continue
            if token.text in CLOSING:
                open_ones.append(at)
            elif token.text in CLOSING.values():
                opener = open_ones.pop()
                assert CLOSING[self.tokens[opener].text] == token.text, f"{self.name}: brackets do not match"
                match[opener], match[at] = at, opener
        return match

    def is_block(self, at):
        """Whether the brace at token `at` opens a block of statements."""
        return self.tokens[at].text == "{" and at > 0 and self.tokens[at - 1].text in BEFORE_BLOCK

    def blocks(self):
        """Every block as a list of its own statements, each a pair of its first token and its semicolon."""
        for at in range(len(self.tokens)):
            if at in self.match and self.is_block(at):
                yield list(self._statements(at + 1, self.match[at]))

    def _statements(self, at, end):
        """Those between tokens `at` and `end`; what stands in braces within is a block of its own."""
        while at < end:
            word = self.tokens[at].text
            if word in ("if", "for", "while", "switch", "catch"):
                at = self.match[at + 1] + 1
            elif word in ("else", "do", "try"):
                at += 1
            elif word in ("case", "default"):
                while self.tokens[at].text != ":":
                    at += 1
                at += 1
            elif word == "{":
                at = self.match[at] + 1
            else:
                last = self.end_of_statement(at, end)
                yield at, last
                at = last + 1

    def end_of_statement(self, at, end):
        while at < end and self.tokens[at].text != ";":
            at = self.match[at] + 1 if self.tokens[at].text in CLOSING else at + 1
        return min(at, end - 1)

    def is_declaration(self, first, last):
        """Whether a statement declares something: a type, then a name."""
        words = [token.text for token in self.tokens[first : last + 1]]
        if words[0] in DECLARING:
            return True
        if words[0] in ("return", "throw", "break", "continue", "delete"):
            return False
        flat = re.sub(r"<[^<>()]*>", "", re.sub(r"<[^<>()]*>", "", " ".join(words)))
        return re.match(r"\w+( :: \w+)*( [*&])* +(const )?[A-Za-z_]\w* [;=({\[,]", flat) is not None
