#!/usr/bin/env python3
"""Tests of the workload generator and of the checks that decide whether a timed run counts."""
import re
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

sys.dont_write_bytecode = True  # no byte code in the source folder
import run
import workloads

LINES = 3000
PEERS = [
    command
    for command in (
        ["cpp", "-Wall", "-Wextra", "-Werror"],
        ["clang", "-E", "-Wall", "-Wextra", "-Werror"],
    )
    if shutil.which(command[0])
]
BOTH = [
    name for name, kind in workloads.WORKLOADS.items() if len(kind.dialects) == 2 and name != "tiny"
]
OPENING = re.compile(r"(Function|If|For|While|Do Case)\b(?! :=)")
CLOSING = {
    "Return": "Function",
    "EndIf": "If",
    "Next": "For",
    "EndDo": "While",
    "EndCase": "Do Case",
}


def setUpModule():
    global scratch
    scratch = tempfile.TemporaryDirectory()


def tearDownModule():
    scratch.cleanup()


def make(name, lines=LINES, folder="", **given):
    return workloads.generate(
        name, lines, Path(scratch.name) / ("%s%s-%d" % (folder, name, lines)), **given
    )


def read(work, dialect, source=0):
    return Path(work["dialects"][dialect]["inputs"][source]).read_text()


def contents(work):
    folder = Path(work["folder"])
    return {
        path.relative_to(folder): path.read_bytes()
        for path in folder.rglob("*.*")
        if path.name != "workload.json"
    }


def invariants(line):
    """What a line has in common in both dialects: indentation, names, numbers and texts."""
    line = line.replace("&&", "//").replace('.ch"', '.h"')
    words = re.findall(r'"[^"]*"|[nclao][A-Z]\w*|K[A-Z]_\w+|\d+(?:\.\d+)?', line)
    return len(line) - len(line.lstrip("\t")), list(dict.fromkeys(words))


class Generator(unittest.TestCase):
    def test_the_seed_decides_every_byte(self):
        for name in workloads.WORKLOADS:
            first, again, other = (
                make(name, 900, folder, seed=seed)
                for folder, seed in (("a", 1), ("b", 1), ("c", 2))
            )
            self.assertEqual(contents(first), contents(again), name)
            self.assertNotEqual(contents(first), contents(other), name)

    def test_sources_have_the_lines_asked_for(self):
        for name in workloads.WORKLOADS:
            for lines in (100, 777, LINES):
                work = make(name, lines)
                for dialect in work["dialects"]:
                    self.assertEqual(read(work, dialect).count("\n"), lines, name)
        self.assertEqual(read(make("tiny", 12), "korel").count("\n"), 12)

    def test_a_line_is_the_same_statement_in_both_dialects(self):
        for name in BOTH:
            work = make(name)
            for korel, c in zip(read(work, "korel").splitlines(), read(work, "c").splitlines()):
                if korel.lstrip().startswith("Next "):
                    korel = korel.replace(korel.split()[1], "")
                self.assertEqual(invariants(korel)[0], invariants(c)[0], korel)
                self.assertEqual(sorted(invariants(korel)[1]), sorted(invariants(c)[1]), korel)

    def test_structures_are_closed_in_order(self):
        for name in workloads.WORKLOADS:
            depth = []
            for line in read(make(name), "korel").splitlines():
                opened = OPENING.match(line.strip())
                closed = CLOSING.get(line.split()[0]) if line.strip() else None
                if opened:
                    depth.append(opened.group(1))
                elif closed:
                    self.assertEqual(depth.pop(), closed, line)
            self.assertEqual(depth, [])

    def test_half_of_the_text_of_conds_is_dead_three_deep(self):
        stack, count, deepest = [], {True: 0, False: 0}, 0
        for line in read(make("conds", 20000), "korel").splitlines():
            word = line.split(" ")[0]
            if word in ("#ifdef", "#ifndef"):
                stack.append(("_ON_" in line) == (word == "#ifdef"))
            elif word == "#else":
                stack[-1] = not stack[-1]
            elif word == "#endif":
                stack.pop()
            elif not line.startswith("#"):
                count[all(stack)] += 1
            deepest = max(deepest, len(stack))
        self.assertEqual((stack, deepest), ([], 3))
        self.assertAlmostEqual(count[False] / sum(count.values()), 0.5, delta=0.05)

    def test_macro_uses_are_as_frequent_as_the_names_say(self):
        for name, least, most in (
            ("plain", 0, 0),
            ("defines", 0.7, 1.1),
            ("includes", 0.25, 0.5),
            ("fdefines", 0.35, 0.6),
        ):
            work = make(name, 20000)
            self.assertTrue(least <= work["uses"] / 20000 <= most, name)
            if most:
                self.assertGreaterEqual(read(work, "korel").count(work["prefix"]), work["uses"])
        work = make("manyrules", 20000)
        self.assertEqual(len(re.findall(r"(?mi)^\s*ZK", read(work, "korel"))), work["uses"])
        self.assertGreater(work["uses"], 20000 // 5)

    def test_further_sources_hold_the_same_lines_in_another_order(self):
        work = make("defines", 2000, "many", files=3)
        first, second, third = (read(work, "korel", k) for k in range(3))
        self.assertEqual(len({first, second, third}), 3)
        self.assertEqual(sorted(first.splitlines()), sorted(third.splitlines()))


class Checks(unittest.TestCase):
    def setUp(self):
        self.outdir = Path(tempfile.mkdtemp(dir=scratch.name))

    def expand(self, work, program):
        folders = ["-I" + folder for folder in work["dialects"]["c"]["includes"]]
        subprocess.run(
            [*program, *folders, *work["dialects"]["c"]["inputs"], "-o", self.outdir / "main.i"],
            check=True,
        )

    def test_peers_expand_every_workload_without_a_warning(self):
        for name in BOTH:
            for program in PEERS:
                self.expand(make(name), program)
                self.assertGreater(run.check_output(make(name), self.outdir), LINES, name)

    def test_lost_or_unexpanded_output_does_not_count(self):
        work = make("conds")
        self.expand(work, PEERS[0])
        output = self.outdir / "main.i"
        good = output.read_bytes()
        for bad in (
            b"",
            good[:-60],
            good.replace(b"ZzProc1(", b"Proc1("),
            good + b"\nkc_step()\n",
            good + good,
        ):
            output.write_bytes(bad)
            with self.assertRaises(run.Failure):
                run.check_output(work, self.outdir)

    def test_unexpanded_source_does_not_count(self):
        for name in workloads.WORKLOADS:
            work = make(name, 900)
            if not work["prefix"]:
                continue
            (self.outdir / "main.ppo").write_text(read(work, "korel"))
            with self.assertRaises(run.Failure):
                run.check_output(work, self.outdir)

    def test_a_failing_program_does_not_count(self):
        clock = run.Clock(Path(scratch.name) / "clock")
        for program, reason in (("false", "exit status 1"), ("true", "0 of . landmarks")):
            with self.assertRaisesRegex(run.Failure, reason):
                clock.run(run.krpre(program), make("plain", 100))


if __name__ == "__main__":
    unittest.main()
