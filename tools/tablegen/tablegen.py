"""Makes OUT/GRAMMARtokens.h, OUT/GRAMMARproductions.h and OUT/GRAMMARtables.cpp from a scanner
source, a bison grammar, the XML report that bison writes of it, and the header with the layout of
tables. Fails when the grammar has a reduce/reduce conflict, or a shift/reduce conflict of a
production that is not said to yield.
"""

import argparse
import pathlib
import sys

import emitcpp
from generror import GenError
from grammar import read_rules, read_tokens
from images import lex_image, yacc_image
from indexes import lex_indexes, yacc_index
from layout import Layout
from lexspec import LexReader
from report import ReportReader, expect_conflicts, renumber, shift_conflicts


def read(file: str) -> str:
    """One character for each byte, as scanners see them."""
    return pathlib.Path(file).read_bytes().decode("latin-1")


def generate(options: argparse.Namespace) -> None:
    layout = Layout(read(options.layout), options.layout)
    yacc = read(options.yacc)
    tokens = read_tokens(yacc, options.yacc)
    rules = read_rules(yacc, options.yacc)
    lists = LexReader(options.lex, tokens, layout).read(read(options.lex))
    scanner = lex_image(lists, options.lex, layout)

    report = ReportReader(options.report, layout).read(pathlib.Path(options.report).read_bytes())
    renumber(report, rules, options.yacc)
    conflicts = shift_conflicts(report)
    expect_conflicts(rules, conflicts, options.yacc)
    parser = yacc_image(report, layout)

    grammar = options.grammar
    for name, text in (
            ("tokens.h", emitcpp.token_header(grammar, tokens, lists)),
            ("productions.h", emitcpp.production_header(grammar, rules, report)),
            ("tables.cpp", emitcpp.table_source(
                grammar, tokens, scanner, parser, lex_indexes(scanner, layout),
                yacc_index(parser, layout)))):
        pathlib.Path(options.out, grammar + name).write_bytes(text.encode("latin-1"))
    print(f"{grammar}: {len(rules)} productions, {len(report.states)} states, "
          f"{len(conflicts)} known conflicts")


def main() -> None:
    parser = argparse.ArgumentParser(description=__doc__, allow_abbrev=False)
    for option in ("grammar", "lex", "yacc", "report", "layout", "out"):
        parser.add_argument(f"--{option}", required=True)
    try:
        generate(parser.parse_args())
    except GenError as error:
        sys.exit(str(error))
    except OSError as error:
        sys.exit(f"{error.filename}: {error.strerror}")


if __name__ == "__main__":
    main()
