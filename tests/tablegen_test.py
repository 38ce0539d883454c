"""The table generator: what its scanners match, and what it refuses.

    python3 -B -W error tests/tablegen_test.py
"""

import itertools
import pathlib
import re
import sys
import unittest

ROOT = pathlib.Path(__file__).resolve().parent.parent
sys.path.insert(0, str(ROOT / "tools/tablegen"))

from generror import GenError
from grammar import read_rules, read_tokens
from images import lex_image
from layout import Layout
from lexspec import LexReader
from report import ReportReader, expect_conflicts, renumber, shift_conflicts

LAYOUT = Layout((ROOT / "ssvp40xpf/sstableformat.h").read_text(), "sstableformat.h")
TOKENS = read_tokens('%token One 51 "one"\n%token Two 52 "two"\n%token Three 53\n'
                     "%%\n%token Ignored", "t.y")


class Case(unittest.TestCase):
    def refused(self, read, *faults):
        """Expects that each source is refused with the message beside it."""
        for source, message in faults:
            with self.subTest(source=source):
                with self.assertRaises(GenError) as caught:
                    read(source)
                self.assertEqual(str(caught.exception), message)


def lex(source):
    return lex_image(LexReader("t.lex", TOKENS, LAYOUT).read(source), "t.lex", LAYOUT)


def automaton(image, number):
    """The rows, triples (low, high, next), and the final-state records of a list."""
    start = LAYOUT.kLexHeaderWords
    for _ in range(number):
        start += image[start + LAYOUT.kBlockSize] // LAYOUT.kWordSize
    finals, index = (start + image[start + field] // LAYOUT.kWordSize
                     for field in (LAYOUT.kBlockFinals, LAYOUT.kBlockRowIndex))
    rows, records = [], []
    for state in range(image[start + LAYOUT.kBlockStateCount]):
        row = start + image[index + state] // LAYOUT.kWordSize
        rows.append(tuple(zip(*[iter(image[row + 1:row + 1 + 3 * image[row]])] * 3)))
        final = finals + state * LAYOUT.kFinalWords
        records.append(tuple(image[final + field] for field in (
            LAYOUT.kFinalToken, LAYOUT.kFinalList, LAYOUT.kFinalFlags)))
    return rows, records


def report_of(productions, *states):
    """What bison would write, read; productions are given as "left: right"."""
    rules = terminals = ""
    for number, production in enumerate(productions):
        left, _, right = production.partition(":")
        symbols = "".join(f"<symbol>{symbol}</symbol>" for symbol in right.split()) or "<empty/>"
        rules += f"<rule number='{number}'><lhs>{left}</lhs><rhs>{symbols}</rhs></rule>"
    for number, name in enumerate(("$end", "a", "b", "c"), 70):
        terminals += f"<terminal token-number='{number}' name='{name}'/>"
    text = (f"<bison-xml-report><grammar><rules>{rules}</rules><terminals>{terminals}</terminals>"
            f"</grammar>\n<automaton>{''.join(states)}</automaton></bison-xml-report>")
    return ReportReader("t.xml", LAYOUT).read(text.encode())


def state(number, *actions):
    return f"<state number='{number}'><actions>{''.join(actions)}</actions></state>\n"


def shift(symbol):
    return f"<transition type='shift' symbol='{symbol}' state='1'/>"


def reduction(symbol, production, enabled="true"):
    return f"<reduction symbol='{symbol}' rule='{production}' enabled='{enabled}'/>"


class ScannerTables(Case):
    # Rules, each an expression and the same as Python spells it.
    LISTS = [
        [("'AB~CA'", "(?i:ab(c(a)?)?)"), ("[a-c]+", "[a-c]+"), ('"-"', "-")],
        [("(ab|a)(c|bc)*", "(ab|a)(c|bc)*"), ("a(b?c)+-", "a(b?c)+-"), ("[^a]-?", "[^a]-?")],
        [("{x}+-{x}", "(a|bc)+-(a|bc)"), ("{x}+", "(a|bc)+"), ("({x} | -)*c", "(a|bc|-)*c")],
        [("(a+|b)c?", "(a+|b)c?"), ("(b|(c-)+)+a", "(b|(c-)+)+a"), ("[^c]", "[^c]")],
        [("(a*b*)*c", "(a*b*)*c"), ("((a|b)(a|b))+", "((a|b)(a|b))+"), ("-", "-")],
        [('"a""b"', "ab"), ("a(b(c(-)?)?)?", "a(b(c(-)?)?)?"), (r"[b-c\-]+", r"[b-c\-]+")],
        [(r"\x61[^\x2D-\x{62}]", "ac"), ('[a-]"B"?', "[a-]B?"), ("[ac-](a?|bc)c", "[ac-](a?|bc)c")],
    ]

    def test_match_exactly_what_the_rules_say(self):
        texts = ["".join(text) for length in range(1, 7)
                 for text in itertools.product("aBbc-", repeat=length)]
        for rules in self.LISTS:
            source = "%let x a|bc\n%list a\n" + "".join(
                f"{rule} {token}\n" for (rule, _), token in zip(rules, TOKENS))
            rows, records = automaton(lex(source), 0)
            tokens = [(re.compile(rule), token.number)
                      for (_, rule), token in zip(rules, TOKENS.values())]
            states = {"": 0}  # None where no way leads on
            for text in texts:
                before = states[text[:-1]]
                row = () if before is None else rows[before]
                states[text] = next((to for low, high, to in row if low <= ord(text[-1]) <= high),
                                    None)
                found = 0 if states[text] is None else records[states[text]][0]
                expected = next((token for rule, token in tokens if rule.fullmatch(text)), 0)
                self.assertEqual(found, expected, source + text)
            self.assertEqual(len(set(zip(rows, records))), len(rows), "equal states")
            for row in rows:
                for (_, high, to), (low, _, other) in itertools.pairwise(row):
                    self.assertTrue(high + 1 < low or high < low and to != other, row)

    def test_faults_name_file_and_line(self):
        self.refused(
            lex,
            ("%list a\n[a-z]+ One\nabc Two\n",
             "t.lex:3: the rule can never match, line 2 comes first"),
            ("%list a\na One\n\n(b)? Two\n", "t.lex:4: the rule matches the empty text"),
            ("%list a\na Four\n", 't.lex:2: the grammar declares no token "Four"'),
            ("%list a\na One push b\n", 't.lex:2: there is no list "b"'),
            ("%list a\na One pop push a\n", "t.lex:2: a rule changes the list once at most"),
            ("%list a\na -\n", "t.lex:2: a rule without a token must drop its text"),
            ("%list a\n{x} One\n", 't.lex:2: "x" is not defined'),
            ("%list a\n(a One\n", 't.lex:2: ")" is missing'),
            ("%list a\n+a One\n", 't.lex:2: "+" is out of place'),
            ("%let x a\n%let x b\n", 't.lex:2: "x" is defined twice'),
            ("a One\n", "t.lex:1: a rule stands before the first %list"),
            ("%lst a\n", 't.lex:1: "%lst" is neither %let nor %list'))

    def test_token_declarations_are_checked(self):
        form = 'expected %token Name number "spelling" /* @group */'
        self.refused(
            lambda source: read_tokens(source, "t.y"),
            ('%token A 5 "a"\n%token A 6\n', "t.y:2: name, number or spelling of A stands twice"),
            ("\n%token A 5\n%token B 5\n", "t.y:3: name, number or spelling of B stands twice"),
            ('%token A 5 "a" /* b */\n', f"t.y:1: {form}"),
            ("%token A\n", f"t.y:1: {form}"))


def rules_of(text):
    return read_rules("%token A 70\n%%\n" + text, "t.y")


class GrammarRules(Case):
    RULES = """list: /* 1 */
        "a" word /* kBoth */
      | word      /* kWord @some = 5 */
      ;
    /* the rest */
    list: /* 2 */ %empty /* kNone yields */ ;
    word: /* 3 */ "b" /* @some */ | "c" ;
    """
    REPORTED = ["$accept: list $end", "list: a word", "list: word", "list:", "word: b", "word: c"]

    def test_stated_numbers_move_no_other_production(self):
        report = report_of(self.REPORTED, state(0, reduction("a", 2), reduction("b", 5),
                                                reduction("$default", "accept")))
        renumber(report, rules_of(self.RULES), "t.y")
        self.assertEqual([(left.strip(), right) for left, right in report.productions[1:]], [
            ("list", ["a", "word"]), ("list", []), ("word", ["b"]), ("word", ["c"]),
            ("list", ["word"])])
        self.assertEqual([production for _, production, _ in report.states[0].reductions],
                         [5, 4, 0])

    def test_report_of_another_grammar_is_refused(self):
        for productions in (self.REPORTED[:-1], [*self.REPORTED[:-1], "word:"],
                            [*self.REPORTED[:-1], "list: c"]):
            self.refused(lambda states: renumber(report_of(productions, states),
                                                 rules_of(self.RULES), "t.y"),
                         (state(0), "t.y: its productions are not those of t.xml"))

    def test_known_conflicts_are_those_of_yielding_productions(self):
        rules = rules_of(self.RULES)
        expect_conflicts(rules, [("a", 2), ("b", 2)], "t.y")
        self.refused(
            lambda conflicts: expect_conflicts(rules, conflicts, "t.y"),
            ([], "t.y:8: the production yields in no conflict"),
            ([("a", 2), ("b", 3)],
             't.y:9: shift/reduce conflict on b; "yields" in the '
             "production's comment says that the shift is right"))

    def test_faults_name_file_and_line(self):
        no_label = 'is no label, @group, "yields" or "= number"'
        self.refused(
            rules_of,
            ('a: "x" /* kOne */\n | "y" /* kOne */ ;',
             "t.y:4: label kOne stands in line 3 already"),
            ('a: "x" /* kOne */\n | "y" ;', "t.y:4: this production of a has no label"),
            ('a: "x" /* one */ ;', f't.y:3: "one" {no_label}'),
            ('a: "x" /* kOne */ "y" ;', "t.y:3: a label stands at the end of its production"),
            ('a: "x" /* kOne */ /* @two */ ;',
             "t.y:3: one comment stands in a production, at its end"),
            ('a: "x"\n | "y" /* = 1 */ ;', "t.y:4: number 1 is taken"),
            ('a: "x"\n | "y" /* = 3 */ ;', "t.y:4: the next free number is 2"),
            ('a: "x" /* = */ ;', 't.y:3: expected one number behind "="'),
            ('a: /* 1 */ "x" | "y" ;\nb: /* 2 */ "z" ;',
             't.y:4: production 3, 2 expected; a new production states a number of its own, "= 3"'),
            ('a: "x"\nb: "y" ;', 't.y:4: expected ";" before the next rule'),
            ('a: "x" { act(); } ;', 't.y:3: "{" has no place in a rule'),
            ('a: "x" /* kOne', "t.y:3: the comment has no end"))


class ParserTables(Case):
    PRODUCTIONS = ["$accept: list $end", "list: list a tail", "list:", "tail:"]

    def test_conflicts_are_found_by_state_and_token(self):
        report = report_of(
            self.PRODUCTIONS,
            state(0, shift("a"), shift("b"), reduction("a", 2, "false"),
                  reduction("b", 3, "false")),
            state(1, shift("a"), reduction("a", 2, "false"), reduction("b", 2)),
            state(2, shift("a")))
        self.assertEqual(shift_conflicts(report), [("a", 2), ("b", 3), ("a", 2)])

    def test_faults_name_file_and_line(self):
        self.refused(
            lambda states: shift_conflicts(report_of(self.PRODUCTIONS, states)),
            (state(0) + state(1, reduction("a", 2), reduction("a", 3, "false")),
             "t.xml:3: reduce/reduce conflict in state 1 on a between productions 2 and 3"),
            (state(0, reduction("$default", 2)),
             "t.xml:2: a reduction on $default; the grammar needs %define lr.default-reduction "
             "accepting"),
            (state(0, reduction("a", 4)), "t.xml:2: there is no production 4"),
            (state(0, shift("d")), "t.xml:2: no production has d"),
            ("<state/>", 't.xml:2: attribute "number" is missing'),
            ("", "t.xml:2: the report has no automaton"),
            ("<state", "t.xml:2: not well-formed (invalid token)"))


class Build(Case):
    def test_follows_every_module(self):
        listed = re.search(r"set\(modules (.*)\)", (ROOT / "cmake/TableGen.cmake").read_text())[1]
        modules = sorted(path.stem for path in (ROOT / "tools/tablegen").glob("*.py"))
        self.assertEqual(listed.split(), modules)

    def test_layout_header_is_read_as_a_whole(self):
        text = "enum eA : std::size_t {\n  kA = 1u << 3,  // kB = 2,\n};\n"
        self.assertEqual(Layout(text, "t.h").constants, {"kA": 8})
        self.refused(lambda line: Layout(text + line, "t.h").kB,
                     ("", "t.h: kB is missing"),
                     ("kB = kA,", 't.h:4: "kB = kA," is no constant that tablegen can read'))


if __name__ == "__main__":
    unittest.main()
