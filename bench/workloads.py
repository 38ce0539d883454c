#!/usr/bin/env python3
"""Makes the programs that `./dev bench` times: one logical program, written in Korel and in C.

A program is first a list of neutral lines, made from decisions that depend on the workload, its
size and the seed alone. A dialect then spells every line, so line k of the Korel file and line k of
the C file are the same statement, the same macro use or the same directive, and timing a Korel
preprocessor on one against a C preprocessor on the other is fair.

  tiny        one function of 12 lines: start-up
  plain       no directive and no macro
  defines     2,000 names without parameters in one header, about one use a line
  fdefines    300 function-like macros of 1 to 3 parameters, nested two deep
  conds       half of the text in false blocks, conditionals nested three deep
  includes    a tree of 500 small headers below one source
  manyrules   (Korel alone) N commands, four to each first word; every third statement uses one
  samekey     (Korel alone) as manyrules, with one first word for all
  translates  (Korel alone) N translations, used inside expressions
"""
import argparse
import hashlib
import json
import random
import shutil
from pathlib import Path

from program import C, KOREL, LANDMARK, NOUNS, PHRASES, Program, line, parts, vocabulary


class Plain:
    """A workload: its headers, its macro uses and the shape of its function bodies."""

    dialects = (KOREL, C)
    count = 0  # how many names, macros, headers or rules when nothing else is asked for
    prefix = ""  # begins every name that must not be left in the output
    serves = ()  # grammar symbols in whose place a macro use may stand,
    share = 0.0  # how often it does,
    limit = 0  # and how many a statement may hold

    def __init__(self, rng, count):
        self.rng, self.total = rng, count
        self.pools = vocabulary()

    def headers(self):
        return {}

    def top(self):
        return []

    def commands_due(self, program):
        return False

    def body(self, program, goal):
        program.block(1, goal)


class Defines(Plain):
    count, prefix, serves, share, limit = 2000, "KD_", ("number", "text"), 0.7, 4
    again = 0.4  # chance that a number goes on with one more name

    def define(self, serial, numbers, texts):
        """One name. A quarter of them are texts, a third of the others expressions."""
        name = "%s%s_%s_%d" % (
            self.prefix,
            *(noun.upper() for noun in self.rng.sample(NOUNS, 2)),
            serial,
        )
        chance = self.rng.random()
        if chance < 0.25:
            texts.append(name)
            return line("define", name, '"%s"' % self.rng.choice(PHRASES))
        value = str(self.rng.randrange(10000))
        if chance > 0.75:
            value = "(%s + %s)" % (self.rng.choice(numbers[-50:] or self.pools["n"]), value)
        if chance > 0.87:
            value = "(%s + %d)" % (self.rng.choice(self.pools["n"]), serial)
        numbers.append(name)
        return line("define", name, value)

    def headers(self):
        self.names = {"number": [], "text": []}
        lines = []
        for serial in range(self.total):
            if serial % 40 == 0:
                lines.append(line("slash note", self.rng.choice(PHRASES)))
            lines.append(self.define(serial, self.names["number"], self.names["text"]))
        return {"inc0/limits$h": lines}

    def top(self):
        return [line("include", "limits$h")]

    def use(self, program, symbol):
        name = program.rng.choice(self.names[symbol])
        if symbol == "text" or not program.allowed(self.again):
            return name
        return "%s %s %s" % (name, program.expand("operator"), self.use(program, symbol))


class FDefines(Plain):
    count, prefix, serves, share, limit = 300, "KF_", ("number", "text"), 0.6, 1
    BODIES = ("BaseOf(xa, %d)", "(xa * xb + %d)", "StepOf(xa, xb, xc - %d)")
    PARAMETERS = ("xa", "xa, xb", "xa, xb, xc")

    def headers(self):
        self.inner, self.outer, lines = [], [], []
        for serial in range(self.total):
            arity = serial % 3
            nested = serial >= self.total // 2
            name = "%s%s_%d" % (self.prefix, self.rng.choice(NOUNS).upper(), serial)
            (self.outer if nested else self.inner).append((name, arity + 1))
            body = self.calling(arity) if nested else self.BODIES[arity] % serial
            lines.append(line("define", "%s(%s)" % (name, self.PARAMETERS[arity]), body))
        return {"inc0/calls$h": lines}

    def calling(self, arity):
        name, wanted = self.rng.choice(self.inner)
        given = self.PARAMETERS[arity].split(", ")
        return "(%s(%s) + %s)" % (name, ", ".join((given * 3)[:wanted]), given[-1])

    def use(self, program, symbol):
        name, arity = program.rng.choice(self.outer)
        return "%s(%s)" % (name, ", ".join([program.expand("operand") for _ in range(arity)]))

    def top(self):
        return [line("include", "calls$h")]


class Conds(Plain):
    prefix = "KC_"
    FLAGS = 40

    def headers(self):
        return {"inc0/flags$h": [line("define", "KC_ON_%d" % k, "1") for k in range(self.FLAGS)]}

    def top(self):
        return [line("include", "flags$h")]

    def __init__(self, rng, count):
        super().__init__(rng, count)
        self.text = {True: 0, False: 0}  # lines so far that are live, dead

    def body(self, program, goal):
        """Conditionals in a row, each taken or not as evens out live and dead text."""
        end = len(program.lines) + goal
        self.text[True] += 6  # the function's own lines
        while len(program.lines) + 20 < end:
            self.conditional(program, 3, True, self.text[True] <= self.text[False])
            if self.text[True] < self.text[False]:
                self.segment(program, 4, True)

    def conditional(self, program, depth, live, taken):
        form = self.rng.choice(("ifdef", "ifndef"))
        name = "ON" if taken == (form == "ifdef") else "OFF"
        program.emit(0, form, "KC_%s_%d" % (name, self.rng.randrange(self.FLAGS)))
        self.segment(program, 2, live and taken)
        if depth > 1:
            self.conditional(program, depth - 1, live and taken, self.rng.random() < 0.5)
        if self.rng.random() < 0.6:
            program.emit(0, "#else")
            self.segment(program, 3, live and not taken)
        program.emit(0, "#endif")

    def segment(self, program, goal, live):
        """Text of which a part names itself: live by a landmark, dead by the prefix."""
        before = len(program.lines)
        if self.rng.random() < 0.25:
            program.emit(1, "call", "%sStep()" % (LANDMARK if live else self.prefix))
            program.landmarks += live
        program.block(1, goal)
        self.text[live] += len(program.lines) - before


class Includes(Defines):
    count, share, limit, again = 500, 0.3, 2, 0.1
    LINES, NAMES, FANOUT = 40, 13, 7

    def headers(self):
        """The source includes the first FANOUT headers, header 0 the next, and so on."""
        self.names = {"number": [], "text": []}
        files = {}
        for k in range(self.total):
            lines = [line("ifndef", "KD_GUARD_%d" % k), line("define", "KD_GUARD_%d" % k, "1")]
            lines += self.includes(
                range(self.FANOUT * (k + 1), min(self.FANOUT * (k + 2), self.total))
            )
            lines += [
                self.define(k * self.NAMES + i, self.names["number"], self.names["text"])
                for i in range(self.NAMES)
            ]
            while len(lines) < self.LINES - 1:
                words = (self.rng.choice(PHRASES), self.rng.choice(PHRASES))
                lines.append(
                    line("slash note", "%s, %s" % words)
                    if self.rng.random() < 0.8
                    else line("blank")
                )
            files["inc%d/part%03d$h" % (k % 4, k)] = lines + [line("#endif")]
        return files

    def includes(self, numbers):
        return [line("include", "part%03d$h" % k) for k in numbers]

    def top(self):
        return self.includes(range(min(self.FANOUT, self.total)))


def rule_words(count, seed, prefix):
    """Made-up words that no other word of the language begins with."""
    rng, words = random.Random(seed), {}
    while len(words) < count:
        words[
            prefix
            + "".join(
                rng.choice("BDFGKLMNPRSTV") + rng.choice("AEIOU")
                for _ in range(rng.choice((2, 3, 3)))
            )
        ] = None
    return list(words)


class ManyRules(Plain):
    dialects = (KOREL,)
    count, prefix = 1000, "ZK"
    # Pattern, result, use; the optional parts of a use follow it in any order.
    SHAPES = (
        (
            "<x1> TO <x2> [WITH <x3>] [TINT <x4>]",
            "OpenEntry%d(<x1>, <x2>, <x3>, <x4>)",
            "<operand> TO <operand>",
            ("WITH <operand>", "TINT <operand>"),
        ),
        (
            "<x1> OF <x2> [ITEMS <l1,...>] [<o1: MODAL, FIXED>]",
            "MakeEntry%d(<x1>, <x2>, {<l1>}, <.o1.>)",
            "<operand> OF <o>",
            ("ITEMS <operand>, <string>, <operand>", "MODAL"),
        ),
        (
            "<x1> SIZE <x2>, <x3> [VALID <b1>]",
            "SizeEntry%d(<x1>, <x2>, <x3>, <{b1}>)",
            "<operand> SIZE <operand>, <operand>",
            ("VALID <n> > <n>",),
        ),
        (
            "<x1> ON <x2> [FROM <x3>]",
            'PostEntry%d(<(x1)>, <"x2">, <x3>)',
            "<operand> ON <c>",
            ("FROM <operand>",),
        ),
    )

    def keys(self):
        firsts = rule_words(-(-self.total // 4), "first words", self.prefix)
        return [
            "%s %s" % (firsts[k // 4], ("WINDOW", "BUTTON", "GRID", "PANEL")[k % 4])
            for k in range(self.total)
        ]

    def headers(self):
        self.rules, lines = self.keys(), []
        for k, key in enumerate(self.rules):
            pattern, result = self.SHAPES[k % 4][:2]
            halves = ("#xcommand %s %s" % (key, pattern), "=> " + result % k)
            if k % 3 == 0:
                lines += [line("rule", halves[0] + " ;"), line("rule", "   " + halves[1])]
            else:
                lines.append(line("rule", " ".join(halves)))
        return {"inc0/rules$h": lines}

    def top(self):
        return [line("include", "rules$h")]

    def commands_due(self, program):
        return program.uses * 3 < program.statements

    def command(self, program):
        rng, k = program.rng, program.rng.randrange(self.total)
        use, options = self.SHAPES[k % 4][2:]
        chosen = [option for option in options if rng.random() < 0.5]
        if rng.random() < 0.4:
            chosen.reverse()
        key = self.rules[k].title() if rng.random() < 0.3 else self.rules[k]
        return " ".join([key] + [program.fill(parts(part)) for part in [use] + chosen])


class SameKey(ManyRules):
    def keys(self):
        return ["ZKDEFINE " + word for word in rule_words(self.total, "second words", "W")]


class Translates(Plain):
    dialects = (KOREL,)
    count, prefix, serves, share, limit = 1000, "ZT", ("number", "text"), 0.6, 1
    SHAPES = (
        ("%s(<x1>, <x2>)", "CalcEntry(<x1>, %d, <x2>)", "%s(<operand>, <operand>)"),
        ("%s:VALUE", "EntryList():Read(%d)", "%s:VALUE"),
        (
            "%s(<x1> BY <x2> [SCALE <x3>])",
            "ScaleEntry(%d, <x1>, <x2>, <x3>)",
            "%s(<operand> BY <operand> SCALE <int>)",
        ),
    )

    def headers(self):
        self.words = rule_words(self.total, "translated words", self.prefix)
        rows = [(word, k, self.SHAPES[k % 3]) for k, word in enumerate(self.words)]
        return {
            "inc0/entries$h": [
                line("rule", "#xtranslate %s => %s" % (shape[0] % word, shape[1] % k))
                for word, k, shape in rows
            ]
        }

    def top(self):
        return [line("include", "entries$h")]

    def use(self, program, symbol):
        k = program.rng.randrange(self.total)
        return program.fill(parts(self.SHAPES[k % 3][2] % self.words[k]))


WORKLOADS = {
    "tiny": Plain,
    "plain": Plain,
    "defines": Defines,
    "fdefines": FDefines,
    "conds": Conds,
    "includes": Includes,
    "manyrules": ManyRules,
    "samekey": SameKey,
    "translates": Translates,
}
STANDARD_HEADER = (
    "inc0/std.ch",
    [line("slash note", "standard header"), line("define", "STD_CH", "")],
)


def sources(workload, rng, lines, files):
    """`files` lists of `lines` lines each, and the program that made the first of them. The others
    hold its functions in other orders."""
    program = Program(rng, workload)
    top = workload.top()
    program.lines += top
    starts, serial = [], 0
    while lines - len(program.lines) > 220:
        starts.append(len(program.lines))
        program.function(serial, rng.randrange(15, 90), workload.body)
        serial += 1
    rest = len(program.lines)
    program.finish(lines, serial)
    functions = [program.lines[a:b] for a, b in zip(starts, starts[1:] + [rest])]
    programs = [program.lines]
    for _ in range(files - 1):
        rng.shuffle(functions)
        programs.append(
            top + [row for function in functions for row in function] + program.lines[rest:]
        )
    return programs, program


def generator_digest():
    texts = [Path(__file__).with_name(name).read_bytes() for name in ("program.py", "workloads.py")]
    return hashlib.sha256(b"".join(texts)).hexdigest()


def generate(name, lines, out, count=0, seed=1, files=1):
    """Writes the workload below `out`, a folder for each dialect, and returns its description, which
    is also kept there as workload.json. What is there already and was made from the same arguments
    by the same generator stays."""
    out = Path(out).resolve()
    key = [generator_digest(), name, lines, count, seed, files]
    try:
        description = json.loads((out / "workload.json").read_text())
        if description["key"] == key and description["folder"] == str(out):
            (out / "workload.json").touch()  # a build that asked for it sees that it is up to date
            return description
    except (OSError, ValueError, KeyError):
        pass
    shutil.rmtree(out, ignore_errors=True)
    rng = random.Random("%s %d" % (name, seed))
    workload = WORKLOADS[name](rng, count or WORKLOADS[name].count)
    headers = workload.headers()
    programs, program = sources(workload, rng, lines, files)
    description = {
        "key": key,
        "folder": str(out),
        "lines": lines * files,
        "uses": program.uses,
        "landmarks": program.landmarks * files,
        "prefix": workload.prefix,
        "dialects": {},
    }
    for dialect in workload.dialects:
        folder, size, inputs, folders = out / dialect.name, 0, [], {}
        extra = [STANDARD_HEADER] if dialect is KOREL else []
        for path, rows in [*headers.items(), *extra]:
            path = folder / dialect.spell(path)
            size += dialect.write(path, rows)
            folders[str(path.parent)] = None
        for k, rows in enumerate(programs):
            path = folder / ("main%d%s" % (k, dialect.extension))
            size += dialect.write(path, rows)
            inputs.append(str(path))
        description["dialects"][dialect.name] = {
            "inputs": inputs,
            "includes": list(folders),
            "bytes": size,
        }
    (out / "workload.json").write_text(json.dumps(description, indent=1))
    return description


def main():
    options = argparse.ArgumentParser(
        description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter
    )
    options.add_argument("name", choices=WORKLOADS)
    options.add_argument("--lines", type=int, default=20000, help="physical lines of a source")
    options.add_argument(
        "--count",
        type=int,
        default=0,
        help="names, macros, headers or rules (0: the workload's own)",
    )
    options.add_argument("--files", type=int, default=1, help="sources")
    options.add_argument("--seed", type=int, default=1)
    options.add_argument("--out", required=True, help="folder to write")
    given = options.parse_args()
    generate(given.name, given.lines, given.out, given.count, given.seed, given.files)


if __name__ == "__main__":
    main()
