"""Finite automata over character codes: built of fragments, made deterministic, minimised.

A state of a deterministic automaton stands for the set of states that the nondeterministic one can
be in after the same text (subset construction); there are finitely many sets, so it ends.
Minimising groups states by what they decide and splits a group while two of its states go, on some
code, to different groups (Moore's partition refinement); every round but the last adds a group.
"""

from collections.abc import Callable, Hashable, Iterable
from dataclasses import dataclass, field
from functools import reduce
from itertools import pairwise
from typing import NamedTuple

Range = tuple[int, int]  # codes from low to high, inclusive
Move = tuple[int, int, int]  # on the codes low to high, to a state


class Fragment(NamedTuple):
    """A part of an automaton that matches an expression."""

    empty: bool  # whether it matches the empty text
    first: frozenset[int]  # the states in which a match can begin
    last: frozenset[int]  # and end


class Nfa:
    """A nondeterministic automaton (Glushkov's). Each occurrence of a character set in an
    expression is a state, entered by reading one of these characters; state 0 is the start."""

    def __init__(self) -> None:
        self.ranges: list[list[Range]] = [[]]  # by state
        self.follow: list[set[int]] = [set()]  # by state, the states that can be next
        self.rules: dict[int, int] = {}  # by state, the rule whose match ends there

    def characters(self, ranges: list[Range]) -> Fragment:
        state = frozenset([len(self.ranges)])
        self.ranges.append(ranges)
        self.follow.append(set())
        return Fragment(False, state, state)

    def sequence(self, parts: list[Fragment]) -> Fragment:
        return reduce(self.pair, parts)

    def pair(self, left: Fragment, right: Fragment) -> Fragment:
        for state in left.last:
            self.follow[state] |= right.first
        return Fragment(left.empty and right.empty,
                        left.first | right.first if left.empty else left.first,
                        left.last | right.last if right.empty else right.last)

    def choice(self, parts: list[Fragment]) -> Fragment:
        empty, first, last = zip(*parts)
        return Fragment(any(empty), frozenset().union(*first), frozenset().union(*last))

    def optional(self, part: Fragment) -> Fragment:
        return part._replace(empty=True)

    def many(self, part: Fragment) -> Fragment:
        for state in part.last:
            self.follow[state] |= part.first
        return part

    def add_rule(self, rule: int, whole: Fragment) -> None:
        self.follow[0] |= whole.first
        for state in whole.last | ({0} if whole.empty else set()):
            self.rules.setdefault(state, rule)


@dataclass
class DfaState:
    """A state of a deterministic automaton, a list whose first one is the start state."""

    rule: int | None  # the first rule whose match ends here
    moves: list[Move] = field(default_factory=list)  # ascending and disjoint


def joined(moves: Iterable[Move]) -> list[Move]:
    """Ascending moves, neighbours with the same target made one."""
    result: list[Move] = []
    for low, high, target in moves:
        if result and result[-1][1:] == (low - 1, target):
            low = result.pop()[0]
        result.append((low, high, target))
    return result


def deterministic(nfa: Nfa) -> tuple[list[DfaState], dict[int, int]]:
    """The states, in breadth-first order by ascending codes, and for each rule that loses a match
    to an earlier rule the first such rule."""
    states: list[DfaState] = []
    shadowed: dict[int, int] = {}
    sets: list[frozenset[int]] = []
    numbers: dict[frozenset[int], int] = {}

    def number_of(members: frozenset[int]) -> int:
        if members not in numbers:
            numbers[members] = len(sets)
            sets.append(members)
            rules = sorted({nfa.rules[state] for state in members if state in nfa.rules})
            states.append(DfaState(rules[0] if rules else None))
            for loser in rules[1:]:
                shadowed.setdefault(loser, rules[0])
        return numbers[members]

    number_of(frozenset([0]))
    for at, members in enumerate(sets):  # which grows meanwhile
        following = set().union(*(nfa.follow[state] for state in members))
        moves = [(low, high, to) for to in following for low, high in nfa.ranges[to]]
        # All codes between two cuts lead to the same set.
        cuts = sorted({cut for low, high, _ in moves for cut in (low, high + 1)})
        spans = ((low, end - 1, frozenset(to for first, last, to in moves if first <= low <= last))
                 for low, end in pairwise(cuts))
        states[at].moves = joined((low, high, number_of(targets))
                                  for low, high, targets in spans if targets)
    return states, shadowed


def numbered(keys: Iterable[Hashable]) -> list[int]:
    """A number for each key, equal for equal ones, in the order of their first appearance."""
    numbers: dict[Hashable, int] = {}
    return [numbers.setdefault(key, len(numbers)) for key in keys]


def minimised(states: list[DfaState], decision: Callable[[int | None], Hashable]) -> list[DfaState]:
    """The fewest states with the same decisions, in the order of the given ones. Rules with equal
    decisions count as the same."""
    groups: list[int] = []
    refined = numbered(decision(state.rule) for state in states)
    while refined != groups:
        groups = refined
        moves = [joined((low, high, groups[to]) for low, high, to in state.moves)
                 for state in states]
        refined = numbered((group, *own) for group, own in zip(groups, moves))
    small = {group: DfaState(state.rule, own)
             for group, state, own in reversed(list(zip(groups, states, moves)))}
    return [small[group] for group in sorted(small)]
