"""Writes what a grammar makes as C++."""

from collections.abc import Iterable, Mapping

from grammar import Rule, Token
from indexes import LexIndex, YaccIndex
from lexspec import LexList
from report import Report


def origin(grammar: str) -> str:
    return f"// Made from {grammar}.lex and {grammar}.y; edit those.\n"


def header(grammar: str, *parts: str) -> str:
    return (f"{origin(grammar)}#pragma once\n\n#include <cstdint>\n\nnamespace {grammar} {{\n"
            + "".join(parts) + f"\n}}  // namespace {grammar}\n")


def capitalised(name: str) -> str:
    return name[0].upper() + name[1:]


def enum(comment: str, declaration: str, values: Iterable[str]) -> str:
    return f"\n/// {comment}\nenum {declaration} {{\n" + "".join(
        f"  {value}\n" for value in values) + "};\n"


def predicates(noun: str, marked: Iterable[Rule] | Iterable[Token]) -> str:
    """A question such as `isDirectiveToken` for each group."""
    groups: dict[str, set[int]] = {}
    for each in marked:
        for group in each.groups:
            groups.setdefault(group, set()).add(each.number)
    return "".join(f"""
/// Whether a {noun} is one of those marked @{group}.
constexpr bool is{capitalised(group)}{capitalised(noun)}(std::uint32_t {noun}) {{
  switch ({noun}) {{
{cases(groups[group], "    ")}      return true;
    default:
      return false;
  }}
}}
""" for group in sorted(groups))


def cases(numbers: Iterable[int], indent: str) -> str:
    return "".join(f"{indent}case {number}:\n" for number in sorted(numbers))


def token_header(grammar: str, tokens: Mapping[str, Token], lists: list[LexList]) -> str:
    """The tokens, the expression lists, and a question for each group of tokens."""
    return header(
        grammar,
        enum("The tokens of the scanner and their numbers.", "eToken : std::uint32_t",
             (f"kTok{token.name} = {token.number},"
              + (f'  // "{token.spelling}"' if token.spelling else "")
              for token in tokens.values())),
        enum("The expression lists of the scanner.", "eList : std::uint32_t",
             (f"kList{capitalised(each.name)}," for each in lists)),
        "\n/// The spelling of a token, null for one without.\n"
        "const char* tokenSpelling(std::uint32_t token);\n",
        predicates("token", tokens.values()))


def production_header(grammar: str, rules: list[Rule], report: Report) -> str:
    """The labels of each nonterminal, the nonterminals, the left sides of the productions, a
    question for each group of productions, and the productions that single tokens make."""
    labels: dict[str, list[str]] = {}
    for rule in sorted(rules, key=lambda rule: rule.number):
        if rule.label:
            labels.setdefault(rule.left, []).append(f"{rule.label} = {rule.number},")
    return header(
        grammar,
        *(enum(f"The productions of `{left}`.",
               f"e{capitalised(left)}Production : std::uint32_t", labels[left])
          for left in sorted(labels)),
        left_sides(report),
        predicates("production", rules),
        token_productions(report, sorted(labels)))


def symbol_name(nonterminal: str) -> str:
    return f"kSym{capitalised(nonterminal)}"


def left_sides(report: Report) -> str:
    symbols = enum("The nonterminals.", "eSymbol : std::uint8_t",
                   (f"{symbol_name(name)}," for name in report.nonterminals()))
    names = "".join(f"    {symbol_name(left)},\n" for left, _ in report.productions[1:])
    return f"""{symbols}
/// The nonterminal that a production, counted from 1, makes.
constexpr eSymbol leftSideOf(std::uint32_t production) {{
  constexpr eSymbol kLeftSides[] = {{
{names}  }};
  return kLeftSides[production - 1];
}}
"""


def single_tokens(report: Report, symbol: str, visited: set[str]) -> set[int]:
    """The tokens that the symbol can consist of on their own."""
    if symbol in report.terminals:
        return {report.terminals[symbol]}
    if symbol in visited:
        return set()
    visited.add(symbol)
    return {token for left, right in report.productions if left == symbol and len(right) == 1
            for token in single_tokens(report, right[0], visited)}


def token_productions(report: Report, nonterminals: list[str]) -> str:
    """The function that maps a token to the production of a nonterminal that derives it."""
    switches = ""
    for left in nonterminals:
        known: set[int] = set()
        text = ""
        for number, (other, right) in enumerate(report.productions):
            if other != left or len(right) != 1:
                continue
            tokens = single_tokens(report, right[0], {left}) - known
            known |= tokens
            if tokens:
                text += f"{cases(tokens, '        ')}          return {number};\n"
        if text:
            switches += f"""    case {symbol_name(left)}:
      switch (token) {{
{text}        default:
          return 0;
      }}
"""
    return f"""
/// The production of `left` that a single token makes, at once or by way of other
/// nonterminals; 0 when there is none. It knows the nonterminals with labels.
constexpr std::uint32_t productionOf(eSymbol left, std::uint32_t token) {{
  switch (left) {{
{switches}    default:
      return 0;
  }}
}}
"""


def array(name: str, numbers: list[int], bits: int = 32) -> str:
    rows = ("    " + " ".join(f"0x{number:x}u," for number in numbers[at:at + 8])
            for at in range(0, len(numbers), 8))
    return f"constexpr std::uint{bits}_t {name}[] = {{\n" + "\n".join(rows) + "\n};\n"


def lex_arrays(lists: list[LexIndex]) -> str:
    text = ""
    for number, each in enumerate(lists):
        finals = "".join(f"    {{{', '.join(map(str, final))}}},\n" for final in each.finals)
        text += (f"constexpr SSLexFinal kFinals{number}[] = {{\n{finals}}};\n"
                 + array(f"kMoves{number}", each.moves, 16))
    rows = "".join(
        f"    {{kLexImage + {each.block}, {len(each.finals)}, kFinals{number}, kMoves{number}}},\n"
        for number, each in enumerate(lists))
    return f"{text}constexpr SSLexIndex kLists[] = {{\n{rows}}};\n"


def yacc_arrays(index: YaccIndex) -> str:
    return (array("kColumns", index.columns, 16) + array("kActions", index.actions)
            + array("kGotos", index.gotos, 16)
            + f"constexpr SSYaccIndex kParser = {{kYaccImage, {index.states}, "
              f"kYaccImage + {index.productions}, kColumns, {len(index.columns)}, "
              f"{index.action_columns}, {index.goto_columns}, kActions, kGotos}};\n")


def table_source(grammar: str, tokens: Mapping[str, Token], lex_image: list[int],
                 yacc_image: list[int], lists: list[LexIndex], parser: YaccIndex) -> str:
    """The spellings and both tables, declared in ssvp40xpf/builtintables.h."""
    spellings = {token.number: f'"{token.spelling}"' for token in tokens.values() if token.spelling}
    by_number = (spellings.get(at, "nullptr") for at in range(max(spellings, default=0) + 1))
    rows = "".join(f"    {spelling},\n" for spelling in by_number)
    return f"""{origin(grammar)}#include "ssvp40xpf/{grammar}tokens.h"

#include <iterator>

#include "ssvp40xpf/builtintables.h"

namespace {{

constexpr const char* kSpellings[] = {{
{rows}}};

{array("kLexImage", lex_image)}
{lex_arrays(lists)}
{array("kYaccImage", yacc_image)}
{yacc_arrays(parser)}
}}  // namespace

namespace {grammar} {{

const char* tokenSpelling(std::uint32_t token) {{
  return token < std::size(kSpellings) ? kSpellings[token] : nullptr;
}}

}}  // namespace {grammar}

namespace builtin {{

constinit const sstable::tLexImage {grammar}Dfa = {{
    {{kLexImage, sizeof kLexImage, "{grammar}.dfa"}}, kLists}};
constinit const sstable::tYaccImage {grammar}Llr = {{
    {{kYaccImage, sizeof kYaccImage, "{grammar}.llr"}}, kParser}};

}}  // namespace builtin
"""
