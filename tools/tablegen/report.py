"""A grammar and its automaton as described by bison's XML report."""

import re
from collections.abc import Iterator
from dataclasses import dataclass, field
from typing import NamedTuple, NoReturn
from xml.etree.ElementTree import Element, TreeBuilder
from xml.parsers import expat

from generror import GenError
from grammar import Rule
from layout import Layout

END_OF_INPUT = "$end"


class Production(NamedTuple):
    left: str
    right: list[str]


class Reduction(NamedTuple):
    symbol: str
    production: int  # 0 accepts
    enabled: bool  # false if a conflict was resolved against it


@dataclass
class State:
    line: int  # in the report
    moves: dict[str, int] = field(default_factory=dict)  # by symbol
    reductions: list[Reduction] = field(default_factory=list)


@dataclass
class Report:
    """Symbols are named as in the report: a terminal by its quoted spelling, or by its name if it
    has none."""

    file: str
    productions: list[Production]
    terminals: dict[str, int]  # their token numbers
    states: list[State] = field(default_factory=list)

    def nonterminals(self) -> list[str]:
        """In the order of their first appearance in the productions."""
        symbols = (symbol for left, right in self.productions[1:] for symbol in (left, *right))
        return [symbol for symbol in dict.fromkeys(symbols) if symbol not in self.terminals]


class ReportReader:
    def __init__(self, file: str, layout: Layout) -> None:
        self.file = file
        self.layout = layout

    def read(self, data: bytes) -> Report:
        root = self.element_tree(data)
        if root.tag != "bison-xml-report":
            self.fail(root, "not a bison report")
        productions = [Production(rule.findtext("lhs", ""),
                                  [symbol.text or "" for symbol in rule.iterfind("rhs/symbol")])
                       for rule in self.in_order(root, "grammar/rules/*", "productions")]
        terminals = dict(map(self.terminal, root.iterfind("grammar/terminals/*")))
        report = Report(self.file, productions, terminals)
        known = {*terminals, *report.nonterminals()}
        report.states = [self.state(state, report, known)
                         for state in self.in_order(root, "automaton/*", "states")]
        if not productions or not report.states:
            self.fail(list(root.iter())[-1], "the report has no automaton")
        return report

    def element_tree(self, data: bytes) -> Element:
        """The root. Each element has its line as one more attribute, for messages."""
        parser = expat.ParserCreate()
        builder = TreeBuilder()
        parser.StartElementHandler = lambda tag, attributes: builder.start(
            tag, attributes | {"line": str(parser.CurrentLineNumber)})
        parser.EndElementHandler = builder.end
        parser.CharacterDataHandler = builder.data
        try:
            parser.Parse(data, True)
        except expat.ExpatError as error:
            raise GenError(self.file, error.lineno, expat.ErrorString(error.code)) from None
        return builder.close()

    def fail(self, element: Element, text: str) -> NoReturn:
        raise GenError(self.file, int(element.attrib["line"]), text)

    def attribute(self, element: Element, name: str) -> str:
        if name not in element.attrib:
            self.fail(element, f'attribute "{name}" is missing')
        return element.attrib[name]

    def number(self, element: Element, name: str) -> int:
        value = self.attribute(element, name)
        if not re.fullmatch("[0-9]{1,9}", value):
            self.fail(element, f'attribute "{name}" is no number')
        return int(value)

    def in_order(self, root: Element, path: str, what: str) -> Iterator[Element]:
        for at, element in enumerate(root.iterfind(path)):
            if self.number(element, "number") != at:
                self.fail(element, f"{what} are out of order")
            yield element

    def terminal(self, element: Element) -> tuple[str, int]:
        name = self.attribute(element, "name")
        if name == END_OF_INPUT:
            return name, self.layout.kTokenEof
        return name, self.number(element, "token-number")

    def state(self, element: Element, report: Report, known: set[str]) -> State:
        state = State(int(element.attrib["line"]))
        for transition in element.iter("transition"):
            symbol = self.attribute(transition, "symbol")
            if symbol not in known:
                self.fail(transition, f"no production has {symbol}")
            state.moves[symbol] = self.number(transition, "state")
        for reduction in element.iter("reduction"):
            symbol = self.attribute(reduction, "symbol")
            accepts = self.attribute(reduction, "rule") == "accept"
            production = 0 if accepts else self.number(reduction, "rule")
            enabled = self.attribute(reduction, "enabled") == "true"
            if production >= len(report.productions):
                self.fail(reduction, f"there is no production {production}")
            if enabled and production and symbol not in report.terminals:
                self.fail(reduction, f"a reduction on {symbol}; the grammar needs "
                                     "%define lr.default-reduction accepting")
            state.reductions.append(Reduction(symbol, production, enabled))
        return state


def renumber(report: Report, rules: list[Rule], file: str) -> None:
    """Changes bison's numbers of productions to those of the grammar, which is `file`."""
    start, *productions = report.productions
    if [(left, len(right)) for left, right in productions] != [
            (rule.left, rule.symbols) for rule in rules]:
        raise GenError(file, 0, f"its productions are not those of {report.file}")
    numbers = [0, *(rule.number for rule in rules)]
    ordered = sorted(zip(numbers[1:], productions))
    report.productions = [start, *(production for _, production in ordered)]
    for state in report.states:
        state.reductions = [each._replace(production=numbers[each.production])
                            for each in state.reductions]


def shift_conflicts(report: Report) -> list[tuple[str, int]]:
    """The symbols that a state shifts although it could also reduce, with the production that it
    would reduce, one per state and symbol. A reduce/reduce conflict is an error."""
    conflicts = []
    for number, state in enumerate(report.states):
        reducers: dict[str, int] = {}
        for symbol, production, _ in state.reductions:
            if symbol not in reducers and symbol in state.moves:
                conflicts.append((symbol, production))
            other = reducers.setdefault(symbol, production)
            if other != production:
                raise GenError(report.file, state.line,
                               f"reduce/reduce conflict in state {number} on {symbol} between "
                               f"productions {other} and {production}")
    return conflicts


def expect_conflicts(rules: list[Rule], conflicts: list[tuple[str, int]], file: str) -> None:
    """Checks that exactly the productions that lose a conflict are annotated with "yields"."""
    lost = {production: symbol for symbol, production in reversed(conflicts)}
    for rule in rules:
        if rule.yields and rule.number not in lost:
            raise GenError(file, rule.line, "the production yields in no conflict")
        if not rule.yields and rule.number in lost:
            raise GenError(file, rule.line,
                           f'shift/reduce conflict on {lost[rule.number]}; "yields" in the '
                           "production's comment says that the shift is right")
