r"""Regular expressions over character codes.

    a  \n \t \r \\ \x2A \x{2A}  a character; any punctuation can be escaped with a backslash
    "text"  'text'              a string; single quotes make it case-insensitive, and a "~" in it
                                marks the end of the shortest abbreviation
    [a-z_]  [^a-z_]             one character that is, or is not, among these
    {name}                      a definition
    ab  a|b  (a)  a?  a*  a+    the usual operators
"""

import re
import string
from collections.abc import Mapping

from automaton import Fragment, Nfa, Range

MAX_CODE = 0xFFFF  # the largest code in a negated class: that of 16-bit input

CHARACTER = r"\\x{[0-9A-Fa-f]{1,4}}|\\x[0-9A-Fa-f]{2}|\\.|."
CHARACTERS = re.compile(CHARACTER)
RANGES = re.compile(rf"({CHARACTER})(?:-({CHARACTER}))?")
ATOM = re.compile(rf"""(?P<group>\() | {{(?P<definition>[^}}]*)}}
    | \[(?P<members>(?:\\.|[^]\\])*)]
    | "(?P<text>(?:\\.|[^"\\])*)" | '(?P<anycase>(?:\\.|[^'\\])*)'
    | (?P<unclosed>["'[{{]) | (?P<misplaced>[])}}?*+]) | (?P<character>{CHARACTER})""", re.VERBOSE)
CLOSING = {"[": '"]"', "{": '"}"', '"': "the closing quote", "'": "the closing quote"}
CONTROLS = {"n": 0x0A, "r": 0x0D, "t": 0x09}


class CharExprError(Exception):
    """A syntax error in an expression."""


def code_of(written: str) -> int:
    """The code of a character, which may be escaped."""
    if written[0] != "\\":
        return ord(written)
    escaped = written[1:]
    if not escaped:
        raise CharExprError("the character behind a backslash is missing")
    if escaped == "x":
        raise CharExprError("a hexadecimal code is malformed")
    if escaped[0] == "x":
        return int(escaped[1:].strip("{}"), 16)
    if escaped not in CONTROLS and escaped not in string.punctuation:
        raise CharExprError(f'"{written}" is no known escape')
    return CONTROLS.get(escaped, ord(escaped))


def class_ranges(members: str) -> list[Range]:
    negated = members.startswith("^")
    ranges = []
    for first, last in RANGES.findall(members[negated:]):
        ranges.append((code_of(first), code_of(last or first)))
        if ranges[-1][0] > ranges[-1][1]:
            raise CharExprError("a range goes downwards")
    if negated:
        ranges = complement(ranges)
    if not ranges:
        raise CharExprError("a class is empty")
    return ranges


def complement(ranges: list[Range]) -> list[Range]:
    rest = []
    begin = 0
    for low, high in sorted(ranges):
        if low > begin:
            rest.append((begin, low - 1))
        begin = max(begin, high + 1)
    return rest + [(begin, MAX_CODE)] if begin <= MAX_CODE else rest


def spellings(code: int, any_case: bool) -> list[Range]:
    folds = any_case and chr(code) in string.ascii_letters
    return [(each, each) for each in ({code & ~0x20, code | 0x20} if folds else {code})]


class ExpressionReader:
    """Builds the expression at the start of a text in an automaton. It ends, at `at`, with the text
    or at the first blank outside quotes, classes and parentheses."""

    def __init__(self, text: str, definitions: Mapping[str, str], nfa: Nfa) -> None:
        self.text = text
        self.definitions = definitions
        self.nfa = nfa
        self.at = 0
        self.depth = 0  # of parentheses

    def next(self) -> str:
        """The next character; empty at the end, and so a part of every text."""
        return self.text[self.at:self.at + 1]

    def accept(self, among: str) -> str:
        """Takes the next character if it is one of these; empty if it is not."""
        char = self.next() if self.next() in among else ""
        self.at += len(char)
        return char

    def choice(self) -> Fragment:
        parts = [self.sequence()]
        while self.accept("|"):
            parts.append(self.sequence())
        return self.nfa.choice(parts)

    def sequence(self) -> Fragment:
        parts = []
        while self.next() not in ("|)" if self.depth else "| \t"):
            if not self.accept(" \t"):
                parts.append(self.repeated())
        if not parts:
            raise CharExprError("an expression is missing")
        return self.nfa.sequence(parts)

    def repeated(self) -> Fragment:
        part = self.atom()
        while operator := self.accept("?*+"):
            if operator != "?":
                part = self.nfa.many(part)
            if operator != "+":
                part = self.nfa.optional(part)
        return part

    def atom(self) -> Fragment:
        found = ATOM.match(self.text, self.at)
        self.at = found.end()
        content = found[found.lastgroup]
        match found.lastgroup:
            case "group":
                return self.group()
            case "definition":
                return self.definition(content)
            case "members":
                return self.nfa.characters(class_ranges(content))
            case "text" | "character":
                return self.string(content, any_case=False)
            case "anycase":
                return self.string(content, any_case=True)
            case "misplaced":
                raise CharExprError(f'"{content}" is out of place')
        raise CharExprError(f"{CLOSING[content]} is missing")

    def group(self) -> Fragment:
        self.depth += 1
        inner = self.choice()
        self.depth -= 1
        if not self.accept(")"):
            raise CharExprError('")" is missing')
        return inner

    def definition(self, name: str) -> Fragment:
        if name not in self.definitions:
            raise CharExprError(f'"{name}" is not defined')
        # Read anew, for each use needs states of its own.
        return ExpressionReader(self.definitions[name], self.definitions, self.nfa).choice()

    def string(self, text: str, any_case: bool) -> Fragment:
        written = CHARACTERS.findall(text)
        shortest = written.index("~") if any_case and "~" in written else len(written)
        del written[shortest:shortest + 1]
        if any_case and "~" in written:
            raise CharExprError('a second "~" in a text')
        if shortest == 0:
            raise CharExprError("a text is empty")
        parts = [self.nfa.characters(spellings(code_of(each), any_case)) for each in written]
        ends = self.nfa.choice(parts[shortest - 1:]).last
        return self.nfa.sequence(parts)._replace(last=ends)
