"""Reads a scanner source:

    # comment
    %let NAME EXPRESSION
    %list NAME
    EXPRESSION TOKEN [drop] [push LIST | goto LIST | pop]

Lists are numbered from 0 in the order of their sections and may be referenced before they are
defined. The token "-" means none. Of two rules with equally long matches, the earlier one wins.
"""

import re
from collections.abc import Mapping
from dataclasses import dataclass, field
from typing import NamedTuple, NoReturn

from automaton import Fragment, Nfa
from charexpr import CharExprError, ExpressionReader
from generror import GenError
from grammar import Token
from layout import Layout


class Decision(NamedTuple):
    """What is done with a match: the words of a final-state record."""

    token: int = 0
    list: int = 0
    flags: int = 0


@dataclass
class LexList:
    name: str
    rules: list[Decision] = field(default_factory=list)
    lines: list[int] = field(default_factory=list)  # of the rules
    nfa: Nfa = field(default_factory=Nfa)


class LexReader:
    def __init__(self, file: str, tokens: Mapping[str, Token], layout: Layout) -> None:
        self.file = file
        self.layout = layout
        self.line = 0
        self.tokens = {name: token.number for name, token in tokens.items()} | {"-": layout.kNone}
        self.definitions: dict[str, str] = {}
        self.numbers: dict[str, int] = {}  # of lists
        self.lists: list[LexList] = []

    def fail(self, text: str) -> NoReturn:
        raise GenError(self.file, self.line, text)

    def read(self, text: str) -> list[LexList]:
        for number, name in enumerate(re.findall(r"^%list[^\S\n]+(\S+)", text, re.MULTILINE)):
            self.numbers.setdefault(name, number)
        for self.line, line in enumerate(text.split("\n"), 1):
            if line.startswith("%"):
                self.read_section(line)
            elif line.strip() and not line.startswith("#"):
                self.read_rule(line)
        if not self.lists:
            self.fail("the source opens no list")
        return self.lists

    def read_section(self, line: str) -> None:
        keyword, name, rest = (line.split(maxsplit=2) + ["", ""])[:3]
        if keyword == "%let":
            if self.expression(rest, Nfa())[1].strip():
                self.fail("text behind the expression")
            if name in self.definitions:
                self.fail(f'"{name}" is defined twice')
            self.definitions[name] = rest
        elif keyword == "%list":
            if not name:
                self.fail("the list has no name")
            if self.numbers[name] != len(self.lists):
                self.fail(f'list "{name}" is opened twice')
            self.lists.append(LexList(name))
        else:
            self.fail(f'"{keyword}" is neither %let nor %list')

    def read_rule(self, line: str) -> None:
        if not self.lists:
            self.fail("a rule stands before the first %list")
        made = self.lists[-1]
        fragment, behind = self.expression(line, made.nfa)
        made.nfa.add_rule(len(made.rules), fragment)
        made.rules.append(self.decision(behind.split()))
        made.lines.append(self.line)

    def expression(self, text: str, nfa: Nfa) -> tuple[Fragment, str]:
        """The expression at the start of a text, and the text behind it."""
        reader = ExpressionReader(text, self.definitions, nfa)
        try:
            return reader.choice(), text[reader.at:]
        except CharExprError as error:
            self.fail(str(error))

    def decision(self, words: list[str]) -> Decision:
        if not words:
            self.fail("the rule names no token")
        if words[0] not in self.tokens:
            self.fail(f'the grammar declares no token "{words[0]}"')
        token, target, flags = self.tokens[words[0]], 0, self.layout.kLexAccept
        push, pop, drop = self.layout.kLexPush, self.layout.kLexPop, self.layout.kLexDrop
        changes = {"push": push, "pop": pop, "goto": push | pop}
        rest = iter(words[1:])
        for action in rest:
            if action == "drop":
                flags |= drop
            elif flags & (push | pop):
                self.fail("a rule changes the list once at most")
            elif action not in changes:
                self.fail(f'"{action}" is no action')
            else:
                flags |= changes[action]
                target = 0 if action == "pop" else self.list_number(action, next(rest, ""))
        if token == self.layout.kNone and not flags & drop:
            self.fail("a rule without a token must drop its text")
        return Decision(token, target, flags)

    def list_number(self, action: str, name: str) -> int:
        if not name:
            self.fail(f'"{action}" names no list')
        if name not in self.numbers:
            self.fail(f'there is no list "{name}"')
        return self.numbers[name]
