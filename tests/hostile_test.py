#!/usr/bin/env python3
"""Runs the program over sources that are made to cost too much. Each must end within its time and
memory, on a small stack, with the right message.

    hostile_test.py PROGRAM [--slow N] [--stack KIB] [--only TEXT]
"""
import argparse
import os
import resource
import struct
import subprocess
import sys
import tempfile
import zlib
from pathlib import Path

MIB = 1 << 20
LARGEST = 16 * MIB  # of a text
OK = "a.prw ok."
CIRCULAR = "Error C2078  Circular"
ALL = '#include "h0.ch"\n'
BEHIND = '#line 3 "a.prw"\r\n'


def limit(name, line):
    return "a.prw(%d) Error C9999  ERRO generico: %s\n" % (line, name)


def packed(text, size=None):
    data = zlib.compress(text)
    return b"#zip" + struct.pack("<II", len(text) if size is None else size, len(data)) + data


def numbered(form, count):
    return "".join(form.replace("%d", str(i)) for i in range(count))


def whole(piece):
    """As often as a source of the largest size holds it, when each line end takes two bytes."""
    return piece * ((LARGEST - 4096) // (len(piece) + piece.count("\n")))


def header(text):
    """A source that is all in a header, where lines may be long."""
    return {"h0.ch": text, "a.prw": ALL}


def headers(count, text):
    names = numbered("h%d.ch ", count).split()
    return {**{name: text for name in names}, "a.prw": numbered('#include "h%d.ch"\n', count)}


def chain(count, last):
    """Headers of which each includes the next."""
    files = {"h%d.ch" % i: '#include "h%d.ch"\n' % (i + 1) for i in range(count - 1)}
    return {**files, "h%d.ch" % (count - 1): last, "a.prw": ALL}


def dialog(line, count):
    """A dialog whose code is `line`, `count` times."""
    code = (line + "\r\n").encode().hex().upper() + "\r\n"
    begin = "//$BEGINDIALOGDEF_\r\n//$DIALOGCODE=\r\n"
    return begin + code * count + "//$ENDDIALOGDEF_\r\n"


def nested(depth):
    return "(" * depth + "x" + ")" * depth


class Sparse(int):
    """The size of a file that holds nothing but zeros."""


class Sample:
    """What a source, or files, must come to: a part of what is told, the end of the output, and
    what it may cost."""

    def __init__(self, name, files, told=OK, ends=None, seconds=2, mib=192, args=("a.prw",)):
        self.name, self.files, self.told, self.ends = name, files, told, ends
        self.seconds, self.mib, self.args = seconds, mib, args

    def write(self, folder):
        files = self.files()
        if not isinstance(files, dict):
            files = {"a.prw": files}
        (folder / "std.ch").touch()
        for name, content in files.items():
            if isinstance(content, Sparse):
                with open(folder / name, "wb") as file:
                    file.truncate(content)
            else:
                data = content if isinstance(content, bytes) else content.encode()
                (folder / name).write_bytes(data)


E = "#xtranslate E <a> Z => y\n"
LONG_SUM = ";\n" + "+1" * 2000
MANY_GROUPS = "#xtranslate A <x> " + numbered("[W%d <x%d>]", 2000) + " END => b\n"
DOUBLING = "#define d0 x\n" + "".join(
    "#define d%d d%d d%d\n" % (i, i - 1, i - 1) for i in range(1, 30)
)
LARGE_NAME = "#define N " + "x" * 4000 + "\n"
MANY_MARKERS = "#xcommand A" + numbered(" <x%d>,", 20000) + " => b\n"
COMMAND = "#xcommand A <x> B <y> => f(<x>)\n"
EXPLAINED = numbered("#xtranslate E X%d Y => y\n", 50) + "#define N 1\n"

SAMPLES = (
    # What is included, packed and not.
    Sample(
        "packed headers of 1 GiB",
        lambda: headers(140, packed(b"//" + b"x" * (8 * MIB))),
        limit("included text", 128),
        seconds=5,
    ),
    Sample("packed line feeds", lambda: headers(10, packed(b"\n" * (8 * MIB - 8))), seconds=3),
    Sample("a lie of 2 GiB", lambda: header(packed(b"x", 1 << 31)), limit("damaged file", 1)),
    Sample("a source that lies", lambda: packed(b"x", LARGEST), limit("damaged file", 0)),
    Sample("packed zero bytes", lambda: packed(b"\0" * (LARGEST - 1)), "TOO BIG - file a.prw line"),
    Sample("a packed source that grows", lambda: packed(b"\n" * (9 * MIB)), "Cannot copy a.prw"),
    Sample("a header that grows", lambda: header("\n" * (9 * MIB)), limit("file size", 1)),
    Sample("a header of 16 MiB", lambda: header("*" * LARGEST), limit("file size", 1)),
    Sample("a header of 1 GiB", lambda: header(Sparse(1 << 30)), limit("file size", 1), mib=64),
    Sample("a source of 16 GiB", lambda: {"a.prw": Sparse(1 << 34)}, "Cannot copy a.prw", mib=64),
    Sample(
        "a saved header of 1 GiB",
        lambda: {"std-%d.pch" % n: Sparse(1 << 30) for n in range(64)} | {"a.prw": "x := 1\n"},
        mib=64,
        args=("--precompiled=.", "a.prw"),
    ),
    Sample("headers 200 deep", lambda: chain(200, "x := 1\n"), ends="x := 1\r\n" + BEHIND),
    Sample("headers 201 deep", lambda: chain(201, "x := 1\n"), limit("include depth", 1)),
    Sample("a ring of headers", lambda: chain(150, ALL + "#define A 1\n")),
    Sample("a header that includes itself", lambda: header('#include "./h0.ch"\n' * 20000)),
    Sample(
        "a header of 2,000 names",
        lambda: {
            "e.ch": "",
            "a.prw": "".join('#include "%se.ch"\n' % ("./" * i) for i in range(2000)),
        },
    ),
    # Sources as large as they may be.
    Sample("lines of a semicolon", lambda: whole(";\n")),
    Sample("lines of semicolons", lambda: whole(";" * 4000 + "\n"), limit("statement size", 1)),
    Sample("line feeds", lambda: whole("\n")),
    Sample("statements of a letter", lambda: whole("x\n")),
    Sample("escaped characters", lambda: "x \\x\n" * 800000, mib=64),
    Sample(
        "a statement of 14 MiB",
        lambda: "x := 0" + whole(LONG_SUM) + "\n",
        limit("statement size", 1),
        mib=224,
    ),
    Sample(
        "a rule of 14 MiB",
        lambda: "#xtranslate a => b" + whole(LONG_SUM) + "\n",
        limit("statement size", 1),
        mib=224,
    ),
    Sample("redefinitions", lambda: whole("#define N 1\n"), mib=160),
    Sample("definitions", lambda: numbered("#define N%d 1\n", 300000), mib=144),
    Sample("commands", lambda: numbered("#xcommand N%d <x> => y <x>\n", 400000), mib=160),
    Sample("quotes", lambda: whole('"' * 4000 + "\n")),
    Sample("open quotes", lambda: "'x\n" * 1000000, "a.prw(1) Error C2002", mib=64),
    Sample("open conditionals", lambda: "#ifdef A\n" * 1000000, "Error C2068"),
    Sample(
        "conditionals 500,000 deep",
        lambda: "#ifndef A\n" * 500000 + "x\n" + "#else\ny\n#endif\n" * 500000 + "z\n",
        ends="x\r\n" + "\r\n" * 1500000 + "z\r\n",
    ),
    Sample(
        "structures 500,000 deep, closed",
        lambda: "While a\n" + "If a\nExit\n" * 500000 + "EndIf\n" * 500000 + "EndDo\n",
    ),
    Sample(
        "brackets 40,000 deep",
        lambda: header(COMMAND + "A " + nested(40000) + " B c\n"),
        ends="f(" + nested(40000) + ")\r\n" + BEHIND,
    ),
    Sample("open brackets", lambda: header(COMMAND + "A " + "(" * 200000), "Error C2002"),
    Sample(
        "embedded SQL of quotes",
        lambda: "BeginSql alias X\n" + whole("'" + '"' * 4000 + "'\n") + "EndSql\n",
        limit("statement size", 1),
    ),
    Sample("a name of 16 MiB", lambda: header("#define " + "N" * (LARGEST - 100) + " 1\n")),
    Sample("a string of 15 MiB", lambda: header("x := '" + "n" * (15 * MIB) + "'\n")),
    # What comes out.
    Sample("a large output", lambda: LARGE_NAME + "N\n" * 5000, limit("output size", 4195)),
    Sample("time stamps", lambda: "__COMPTIMESTAMP__\n" * 900000, limit("file size", 838861)),
    Sample("unfinished dialogs", lambda: whole("//$BEGINDIALOGDEF_" * 200 + "\n")),
    Sample(
        "dialogs that grow",
        lambda: "x := 1\n" + dialog("", 90000) * 7,
        limit("file size", 270011),
    ),
    Sample(
        "a line that time stamps make long",
        lambda: "x\n" + "__COMPTIMESTAMP__" * 240 + "\n",
        "a.prw:2: error: Source line too big",
        args=("--diagnostics=gcc", "a.prw"),
    ),
    # Rules.
    Sample("a marker whose word is missing", lambda: E + whole("E " * 1900 + "\n")),
    Sample(
        "a marker whose word comes last",
        lambda: E + whole("E " * 1900 + "Z\n"),
        "Error C9999  ERRO generico: matcher steps\n",
        seconds=3,
    ),
    Sample(
        "20,000 markers",
        lambda: header(MANY_MARKERS + ("A " + "b, " * 1200 + "\n") * 2000),
    ),
    Sample("2,000 groups", lambda: header(MANY_GROUPS + "A x + " * 20000 + "x END\n"), CIRCULAR),
    Sample(
        "groups 200,000 deep",
        lambda: header("#xcommand A " + "[a" * 200000 + " => b\nA\n"),
        "Error C2001",
    ),
    Sample("names that double", lambda: DOUBLING + "d29\n" * 100000, CIRCULAR),
    Sample("a name of itself", lambda: "#define a b b\n#define b a a\n" + "a\n" * 100000, CIRCULAR),
    Sample("a translation that grows", lambda: "#xtranslate A => A A\nA\n", CIRCULAR),
    Sample("a command that grows", lambda: "#xcommand A <*x*> => A <x> <x>\nA b\n", CIRCULAR),
    Sample(
        "a result of many tokens",
        lambda: header("#xcommand A <x> => B " + "<x>," * 5000 + "\nA f(" + "x+" * 1000 + "x)\n"),
        CIRCULAR,
    ),
    Sample(
        "10,000 keys that a word may mean",
        lambda: numbered("#xcommand K%d" + "x" * 56 + " <x> => y\n", 10000) + ("K" + "y" * 59 + " x\n") * 300,
        seconds=3,
        args=("-Wall", "a.prw"),
    ),
    Sample(
        "20,000 directives on a line",
        lambda: header(numbered("#xcommand A%d => b ", 20000) + "\nA0\nA19999\n"),
        ends="\r\nb\r\nb\r\n" + BEHIND,
    ),
    Sample("100,000 parameters", lambda: "#define F(" + "a,;\n" * 100000 + "b) b\nF(1)\n"),
    Sample(
        "a statement that is explained",
        lambda: EXPLAINED + "E " * 1500 + "N " * 99 + "\n",
        "Final form after 99 rewrites",
        args=("explain", "a.prw:52"),
    ),
)


class Outcome:
    """How the program ended, and what it cost."""

    def __init__(self, program, sample, folder, allowed, stack):
        def confine():
            resource.setrlimit(resource.RLIMIT_STACK, (stack, stack))
            resource.setrlimit(resource.RLIMIT_CPU, (allowed, allowed))
            resource.setrlimit(resource.RLIMIT_CORE, (0, 0))

        messages = () if sample.args[0] == "explain" else ("--diagnostics=classic",)
        with tempfile.TemporaryFile() as told:
            child = subprocess.Popen(
                [program, *messages, *sample.args],
                cwd=folder,
                stdin=subprocess.DEVNULL,
                stdout=told,
                stderr=told,
                preexec_fn=confine,
            )
            _, state, usage = os.wait4(child.pid, 0)
            child.returncode = self.status = os.waitstatus_to_exitcode(state)
            told.seek(0)
            self.told = told.read().decode("latin-1")
        output = folder / "a.ppo"
        self.output = output.read_bytes().decode("latin-1") if output.exists() else ""
        self.seconds = usage.ru_utime + usage.ru_stime
        self.mib = usage.ru_maxrss / 1024

    def faults(self, sample, slow):
        if self.status not in (0, 1):
            yield "ended with %d" % self.status
        if sample.told not in self.told or "in file" in self.told:
            yield "told " + self.told[-300:]
        if sample.ends is not None and not self.output.endswith(sample.ends):
            yield "the output ends in " + repr(self.output[-100:])
        if self.seconds > sample.seconds * slow:
            yield "took %.1f s" % self.seconds
        if self.mib > sample.mib:
            yield "took %d MiB" % self.mib


def main():
    options = argparse.ArgumentParser(
        description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter
    )
    options.add_argument("program")
    options.add_argument("--slow", type=int, default=1, help="allow this many times the seconds")
    options.add_argument("--stack", type=int, default=64, help="of so many KiB")
    options.add_argument("--only", default="", help="samples with this text in their names")
    given = options.parse_args()
    program = os.path.abspath(given.program)
    failed = False
    for sample in SAMPLES:
        if given.only not in sample.name:
            continue
        with tempfile.TemporaryDirectory() as name:
            sample.write(Path(name))
            outcome = Outcome(program, sample, Path(name), 30 * given.slow, given.stack << 10)
        for fault in outcome.faults(sample, given.slow):
            print("%s: %s" % (sample.name, fault), flush=True)
            failed = True
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
