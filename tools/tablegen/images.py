"""Lays automata out as table images, lists of words; ssvp40xpf/sstableformat.h tells how."""

from automaton import DfaState, deterministic, minimised
from generror import GenError
from layout import Layout
from lexspec import Decision, LexList
from report import END_OF_INPUT, Report, State


def words(count: int, known: dict[int, int]) -> list[int]:
    """So many words, 0 but for the known ones."""
    made = [0] * count
    for at, word in known.items():
        made[at] = word
    return made


def lex_image(lists: list[LexList], file: str, layout: Layout) -> list[int]:
    image = words(layout.kLexHeaderWords, {layout.kLexListCount: len(lists),
                                           layout.kLexHeaderMagic: layout.kLexMagic})
    for each in lists:
        decisions = {None: Decision(), **dict(enumerate(each.rules))}
        states = minimised(matching_states(each, file), decisions.get)
        image += lex_block(states, [decisions[state.rule] for state in states], layout)
    return image


def matching_states(each: LexList, file: str) -> list[DfaState]:
    """The states of a list, each of whose rules must match something."""
    if not each.rules:
        raise GenError(file, 0, f'list "{each.name}" is empty')
    states, shadowed = deterministic(each.nfa)
    if states[0].rule is not None:
        raise GenError(file, each.lines[states[0].rule], "the rule matches the empty text")
    winners = {state.rule for state in states}
    for rule, line in enumerate(each.lines):
        if rule not in winners:
            first = each.lines[shadowed[rule]]
            raise GenError(file, line, f"the rule can never match, line {first} comes first")
    return states


def lex_block(states: list[DfaState], decisions: list[Decision], layout: Layout) -> list[int]:
    body: list[int] = []

    def here() -> int:
        return (layout.kBlockHeaderWords + len(body)) * layout.kWordSize

    finals = here()
    for token, target, flags in decisions:
        body += words(layout.kFinalWords, {layout.kFinalToken: token, layout.kFinalList: target,
                                           layout.kFinalFlags: flags})
    rows = []
    for state in states:
        rows.append(here())
        body += [len(state.moves), *(word for move in state.moves for word in move)]
    row_index = here()
    body += rows
    return words(layout.kBlockHeaderWords, {
        layout.kBlockMagic: layout.kLexMagic,
        layout.kBlockSize: here(),
        layout.kBlockStateCount: len(states),
        layout.kBlockSizeAgain: here(),
        layout.kBlockRowIndex: row_index,
        layout.kBlockFinals: finals,
    }) + body


def yacc_image(report: Report, layout: Layout) -> list[int]:
    """States correspond one to one to bison's. For the start production "lines, end of input" bison
    has a state after the end of input, in which it accepts; the image accepts on seeing the end of
    input, one state earlier, and that last state remains as a row without pairs."""
    if len(report.productions) > 0xFFFF:
        raise GenError(report.file, 0, "more productions than the image can count")
    numbers = report.terminals | {
        name: number for number, name in enumerate(report.nonterminals(), layout.kFirstNonterminal)}
    header_words = layout.kYaccRowIndex + len(report.states)
    rows: list[int] = []
    body: list[int] = []
    for state in report.states:
        rows.append((header_words + len(body)) * layout.kWordSize)
        body += yacc_row(state, report, numbers, layout)
    productions = (header_words + len(body)) * layout.kWordSize
    for number, (left, right) in enumerate(report.productions):
        body += [len(right), numbers[left] if number else 0]
    return words(layout.kYaccRowIndex, {
        layout.kYaccHeaderMagic: layout.kYaccMagic,
        layout.kYaccCounts: len(report.productions),
        layout.kYaccStateCount: len(report.states),
        layout.kYaccFirstRow: header_words * layout.kWordSize,
        layout.kYaccProductions: productions,
    }) + rows + body


def yacc_row(state: State, report: Report, numbers: dict[str, int], layout: Layout) -> list[int]:
    gotos = [(numbers[symbol], target) for symbol, target in state.moves.items()
             if symbol not in report.terminals]
    actions = [(numbers[symbol], layout.kActionAccept if symbol == END_OF_INPUT
                else layout.kActionShift | target) for symbol, target in state.moves.items()
               if symbol in report.terminals]
    actions += [(numbers[symbol], layout.kActionReduce | production)
                for symbol, production, enabled in state.reductions if enabled and production]
    pairs = (word for symbol, target in sorted(actions) + sorted(gotos)
             for word in (target, symbol))
    return [*words(layout.kRowPairs, {layout.kRowGotoCount: len(gotos),
                                      layout.kRowActionCount: len(actions)}), *pairs]
