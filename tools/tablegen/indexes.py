"""Lays images out for direct lookup, as the runtime does with those that it loads."""

from dataclasses import dataclass

from layout import Layout

CODES = 256
LINE_FEED = 10


@dataclass
class LexIndex:
    block: int  # where its words begin in the image
    finals: list[tuple[int, ...]]
    moves: list[int]  # CODES of each state


@dataclass
class YaccIndex:
    states: int
    productions: int  # where they begin in the image, in words
    columns: list[int]
    action_columns: int
    goto_columns: int
    actions: list[int]
    gotos: list[int]


def lex_indexes(image: list[int], layout: Layout) -> list[LexIndex]:
    found = []
    at = layout.kLexHeaderWords
    for _ in range(image[layout.kLexListCount]):
        end = at + image[at + layout.kBlockSize] // layout.kWordSize
        found.append(lex_index(at, image[at:end], layout))
        at = end
    return found


def lex_index(at: int, block: list[int], layout: Layout) -> LexIndex:
    states = block[layout.kBlockStateCount]
    rows = block[layout.kBlockRowIndex] // layout.kWordSize
    records = block[layout.kBlockFinals] // layout.kWordSize
    moves = [layout.kNoState] * (states * CODES)
    for state in range(states):
        row = block[rows + state] // layout.kWordSize
        for low, high, target in zip(*[iter(block[row + 1:row + 1 + 3 * block[row]])] * 3):
            for code in range(low, min(high, CODES - 1) + 1):
                moves[state * CODES + code] = target
    fed = behind_line_feeds(moves, layout)
    finals = []
    for state in range(states):
        record = block[records + state * layout.kFinalWords:]
        finals.append((*(record[part] for part in (
            layout.kFinalToken, layout.kFinalList, layout.kFinalFlags, layout.kFinalKeywordTable,
            layout.kFinalType)), int(state in fed)))
    return LexIndex(at, finals, moves)


def behind_line_feeds(moves: list[int], layout: Layout) -> set[int]:
    """The states that a text with a line feed can lead to."""
    pending = [target for target in moves[LINE_FEED::CODES] if target != layout.kNoState]
    found: set[int] = set()
    while pending:
        state = pending.pop()
        if state not in found:
            found.add(state)
            pending += set(moves[state * CODES:(state + 1) * CODES]) - {layout.kNoState}
    return found


def yacc_index(image: list[int], layout: Layout) -> YaccIndex:
    states = image[layout.kYaccStateCount]
    actions: list[dict[int, int]] = []
    gotos: list[dict[int, int]] = []
    for offset in image[layout.kYaccRowIndex:layout.kYaccRowIndex + states]:
        row = offset // layout.kWordSize
        first = row + layout.kRowPairs
        middle = first + 2 * image[row + layout.kRowActionCount]
        end = middle + 2 * image[row + layout.kRowGotoCount]
        actions.append({image[at + 1]: image[at] for at in range(first, middle, 2)})
        gotos.append({image[at + 1] - layout.kFirstNonterminal: image[at] & layout.kActionOperand
                      for at in range(middle, end, 2)})
    symbols = sorted({symbol + 2 & layout.kNone for row in actions for symbol in row})
    columns = [0] * (symbols[-1] + 1)
    for column, symbol in enumerate(symbols, 1):
        columns[symbol] = column
    goto_columns = max(symbol + 1 for row in gotos for symbol in row)
    by_column = [0] * (states * (len(symbols) + 1))
    by_nonterminal = [layout.kNoState] * (states * goto_columns)
    for state in range(states):
        for symbol, action in actions[state].items():
            by_column[state * (len(symbols) + 1) + columns[symbol + 2 & layout.kNone]] = action
        for symbol, target in gotos[state].items():
            by_nonterminal[state * goto_columns + symbol] = target
    return YaccIndex(states, image[layout.kYaccProductions] // layout.kWordSize, columns,
                     len(symbols) + 1, goto_columns, by_column, by_nonterminal)
