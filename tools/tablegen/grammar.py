"""Reads the parts of a bison grammar that are missing from bison's report: its tokens, and of its
productions labels, groups, numbers and lines. Actions, %prec and rules without ";" are not
supported.

A token is declared on a line, `%token Name 61 "spelling" /* @group */`. A comment at the end of a
production holds the annotations that the program needs:

    | "_include" includeName   /* kInclude @group yields = 205 */

- kInclude: its label, which names its number in the program.
- @group: a named set of tokens or productions that the program tests for.
- yields: its conflicts are expected and resolved in favour of a shift.
- = 205: its number. By default productions are numbered from 1 in source order; an explicit number
  allows adding a production anywhere without renumbering the others.

A comment before a production, as in `token:  /* 73 */`, gives its expected number.
"""

import re
from collections.abc import Iterator
from dataclasses import dataclass, field
from typing import NamedTuple, NoReturn

from generror import GenError

TOKEN = re.compile(r"""%token \s+ (\w+) \s+ (\d{1,5}) \s*
    (?:"((?:[^"\\]|\\.)+)")? \s* (?:/\* ((?:\s+@\w+)*) \s+\*/)? \s*""", re.ASCII | re.VERBOSE)
SECTION = re.compile(r"^%%.*", re.MULTILINE)
PIECE = re.compile(r'/\*.*?\*/|[:|;]|"(?:[^"\\\n]|\\.)*"|%empty\b|\w+|(?P<stray>/\*|\S)',
                   re.ASCII | re.DOTALL)
STRAY = {"/*": "the comment has no end", '"': "the spelling has no closing quote"}
NUMBER = re.compile(r"\d{1,5}", re.ASCII)
GROUP = re.compile(r"@\w+", re.ASCII)
LABEL = re.compile(r"k[A-Z]\w*", re.ASCII)


class Token(NamedTuple):
    name: str
    number: int
    spelling: str  # without its quotes, escapes unresolved; empty if it has none
    groups: list[str]


def read_tokens(text: str, file: str) -> dict[str, Token]:
    """The tokens by name, in source order."""
    tokens: dict[str, Token] = {}
    taken: set[str | int] = set()
    for number, line in enumerate(SECTION.split(text)[0].split("\n"), 1):
        if not line.startswith("%token"):
            continue
        found = TOKEN.fullmatch(line)
        if not found:
            raise GenError(file, number, 'expected %token Name number "spelling" /* @group */')
        groups = [word[1:] for word in (found[4] or "").split()]
        token = Token(found[1], int(found[2]), found[3] or "", groups)
        # A spelling has its quotes here, to be told from a name.
        marks = {token.name, token.number} | ({f'"{token.spelling}"'} if token.spelling else set())
        if taken & marks:
            raise GenError(file, number,
                           f"name, number or spelling of {token.name} stands twice")
        taken |= marks
        tokens[token.name] = token
    return tokens


@dataclass
class Rule:
    """A production as written in the grammar."""

    left: str
    line: int = 0
    symbols: int = 0  # of the right side
    label: str = ""
    groups: list[str] = field(default_factory=list)
    yields: bool = False
    stated: int = 0  # its explicit number; 0 when it has none
    expected: int = 0
    number: int = 0


class RuleReader:
    """Reads the rules piece by piece: symbols, comments, and the marks ":", "|" and ";"."""

    def __init__(self, text: str, file: str) -> None:
        self.file = file
        self.rules: list[Rule] = []
        self.pieces = self.read_pieces(text)
        self.line = 0

    def fail(self, text: str) -> NoReturn:
        raise GenError(self.file, self.line, text)

    def read_pieces(self, text: str) -> Iterator[str]:
        """What stands between the first and the second "%%"."""
        declarations, rules, *_ = SECTION.split(text) + [""]
        first = declarations.count("\n") + 1
        for found in PIECE.finditer(rules):
            self.line = first + rules.count("\n", 0, found.start())
            if stray := found["stray"]:
                self.fail(STRAY.get(stray, f'"{stray}" has no place in a rule'))
            yield found[0]

    def read(self) -> list[Rule]:
        for left in self.pieces:
            if left.startswith("/*"):
                continue
            if not re.match(r"\w", left, re.ASCII):
                self.fail("expected a nonterminal")
            if next(self.pieces, "") != ":":
                self.fail('expected ":"')
            mark = "|"
            while mark == "|":
                self.rules.append(Rule(left))
                mark = self.read_production(self.rules[-1])
        return self.rules

    def read_production(self, rule: Rule) -> str:
        """Reads a right side and the mark behind it, which is returned."""
        empty = True
        commented = False
        while (piece := next(self.pieces, "")) not in ("|", ";"):
            if empty:
                rule.line = self.line
            if piece == "":
                self.fail('expected ";"')
            if piece == ":":
                self.fail('expected ";" before the next rule')
            if piece.startswith("/*"):
                words = piece[2:-2].split()
                if empty and not rule.expected and words and NUMBER.fullmatch(words[0]):
                    rule.expected = int(words[0])
                    continue
                if empty or commented:
                    self.fail("one comment stands in a production, at its end")
                commented = True
                self.read_annotations(rule, iter(words))
                continue
            if commented:
                self.fail("a label stands at the end of its production")
            empty = False
            rule.symbols += piece != "%empty"
        if empty:
            self.fail("an empty right side is written %empty")
        return piece

    def read_annotations(self, rule: Rule, words: Iterator[str]) -> None:
        for word in words:
            if word == "=":
                number = next(words, "")
                if rule.stated or not NUMBER.fullmatch(number) or not int(number):
                    self.fail('expected one number behind "="')
                rule.stated = int(number)
            elif word == "yields":
                rule.yields = True
            elif GROUP.fullmatch(word):
                rule.groups.append(word[1:])
            elif LABEL.fullmatch(word) and not rule.label:
                rule.label = word
            else:
                self.fail(f'"{word}" is no label, @group, "yields" or "= number"')


def number_rules(rules: list[Rule], file: str) -> None:
    """Explicit numbers follow the implicit ones, so adding a production does not renumber the
    others."""
    counted = 0
    for rule in rules:
        counted += not rule.stated
        rule.number = rule.stated or counted
    for rule in rules:
        if rule.expected not in (0, rule.number):
            raise GenError(file, rule.line,
                           f"production {rule.number}, {rule.expected} expected; a new production "
                           f'states a number of its own, "= {len(rules)}"')
    taken = set(range(1, counted + 1))
    for rule in rules:
        if rule.stated in taken:
            raise GenError(file, rule.line, f"number {rule.stated} is taken")
        taken |= {rule.stated} - {0}
    for rule in rules:
        if rule.number > len(rules):
            free = min(set(range(1, len(rules) + 1)) - taken)
            raise GenError(file, rule.line, f"the next free number is {free}")


def check_labels(rules: list[Rule], file: str) -> None:
    lines: dict[str, int] = {}
    for rule in rules:
        if rule.label in lines:
            raise GenError(file, rule.line,
                           f"label {rule.label} stands in line {lines[rule.label]} already")
        if rule.label:
            lines[rule.label] = rule.line
    labelled = {rule.left for rule in rules if rule.label}
    for rule in rules:
        if rule.left in labelled and not rule.label:
            raise GenError(file, rule.line, f"this production of {rule.left} has no label")


def read_rules(text: str, file: str) -> list[Rule]:
    """The productions, in source order."""
    rules = RuleReader(text, file).read()
    number_rules(rules, file)
    check_labels(rules, file)
    return rules
