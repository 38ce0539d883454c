"""Kills krpre at every system call, and plants files under the names that it uses while it runs.

    python3 tests/kill_sweep.py PROGRAM [--seconds N] [SCENARIO...]

After each kill every output is as it was or as it is to be; none stands beside the rule of another
one, and where both change it may be gone. What stands outside the directory is never written. The
next run gives what an undisturbed one gives and clears away what is left. Needs strace.
"""

import argparse
import collections
import hashlib
import multiprocessing
import os
import pathlib
import random
import re
import shutil
import signal
import stat
import subprocess
import sys
import tempfile
import threading
import time

OLD = {"a.prw": '#include "old.ch"\nx := OLD\n', "b.prw": "y := 1\n", "h.ch": "#define ONE 1\n"}
NEW = {"a.prw": '#include "h.ch"\nx := ONE\n', "b.prw": '#include "h.ch"\ny := ONE\n',
       "h.ch": "#define ONE 11\n"}
STEADY = {"std.ch": "#define STD 1\n", "old.ch": "#define OLD 0\n", "c.prw": "z := STD\n"}

# The arguments, standard input, and what is written, each output with its rule.
COMMANDS = {
    "output": ("-q -I. a.prw", None, [("a.ppo", None)]),
    "rule": ("-q -I. -MD a.prw", None, [("a.ppo", "a.d")]),
    "always": ("-q -I. --always-write -MD -MP a.prw", None, [("a.ppo", "a.d")]),
    "target": ("-q -I. -MD -MT $T a.prw", None, [("a.ppo", "a.d")]),
    "directory": ("-q -I. -MD -o out a.prw", None, [("out/a.ppo", "out/a.d")]),
    "chosen": ("-q -I. -MD -o out/x -MF out/y a.prw", None, [("out/x", "out/y")]),
    "input": ("-q -I. -MD -o out/x - --stdin-name=a.prw", "a.prw", [("out/x", "out/x.d")]),
    "saved": ("-q -I. -MD --precompiled=. a.prw", None, [("a.ppo", "a.d"), ("std-*.pch", None)]),
    "jobs": ("-q -I. -MD -j2 a.prw b.prw c.prw", None,
             [("a.ppo", "a.d"), ("b.ppo", "b.d"), ("c.ppo", "c.d")]),
    "failing": ("-q -I. -MD -DONE2 e.prw", None, [("e.ppo", "e.d")]),
    "pack": ("pack h.ch", None, [("h.ch", None)]),
    "copy": ("pack -o p h.ch", None, [("p", None)]),
    "classic": ("--classic @Fa.prw -I.", None, [("a.ppo", None)]),
}
STANDINGS = ["none", "old", "same", "link", "hard", "pipe", "left", "left-link", "left-hard",
             "left-pipe"]
# Where a link is followed and a pipe waited for, since the user has named it.
CHOSEN = {"chosen", "input", "copy", "pack"}


def scenarios():
    for command in COMMANDS:
        for standing in STANDINGS:
            if command not in CHOSEN or standing not in ("link", "pipe"):
                yield command, standing


def write(directory, files):
    for name, text in files.items():
        (directory / name).write_text(text)


def state_of(path):
    """What stands there: None, a link with its target, the bytes of a file, or another kind."""
    try:
        mode = os.lstat(path).st_mode
    except FileNotFoundError:
        return None
    if stat.S_ISLNK(mode):
        return "link", os.readlink(path)
    return ("file", path.read_bytes()) if stat.S_ISREG(mode) else ("kind", stat.S_IFMT(mode))


def tree_of(directory):
    return {str(path.relative_to(directory)): state_of(path) for path in directory.rglob("*")}


def outside_of(directory):
    files = sorted((directory.parent / "outside").iterdir())
    return [(file.name, file.read_bytes(), file.stat().st_mode, file.stat().st_mtime_ns)
            for file in files]


def place(kind, path, outside):
    """Puts a link, a pipe or a file there, in one step."""
    staged = path.with_name("staged%d" % threading.get_ident())
    staged.unlink(missing_ok=True)
    if kind == "link":
        staged.symlink_to(outside)
    elif kind == "hard":
        os.link(outside, staged)
    elif kind == "pipe":
        os.mkfifo(staged)
    else:
        staged.write_text("half")
    os.replace(staged, path)


def temporary_names(command, outputs):
    """The temporary names of the outputs and their rules."""
    if command in ("pack", "copy"):
        return [outputs[0][0] + ".krpre-new"]
    names = []
    for output, rule in outputs:
        if output.endswith(".pch"):
            names.append(output + ".krpre")
            continue
        tag = 0xCBF29CE484222325
        for byte in os.path.basename(output).encode():
            tag = (tag ^ byte) * 0x100000001B3 % (1 << 64)
        start = os.path.join(os.path.dirname(output), "krpre~%016x" % tag)
        names += [start + ".ppo"] + ([start + ".d"] if rule else [])
    return ["krpre0.ppo"] if command == "classic" else names


class Scenario:
    def __init__(self, program, command, standing, root):
        self.program, self.command, self.standing = program, command, standing
        self.directory = root / "work"
        self.start = root / "start"
        self.outside = root / "outside"
        text, self.input, self.outputs = COMMANDS[command]
        self.arguments = text.split()
        self.arguments_before = [word.replace("$T", "before") for word in self.arguments]
        self.arguments = [word.replace("$T", "after") for word in self.arguments]
        self.findings = []

    def run(self, arguments=None, under=()):
        source = self.directory / self.input if self.input else os.devnull
        with open(source, "rb") as text:
            return subprocess.run([*under, self.program, *(arguments or self.arguments)],
                                  cwd=self.directory, stdin=text, stdout=subprocess.DEVNULL,
                                  stderr=subprocess.DEVNULL, timeout=60).returncode

    def files(self):
        return [name for pair in self.outputs for name in pair if name]

    def name_saved(self):
        """The number in the name of a saved header depends on the directory."""
        self.run()
        for file in self.directory.glob("std-*.pch"):
            self.outputs = [(file.name if output == "std-*.pch" else output, rule)
                            for output, rule in self.outputs]
        for name in self.files():
            (self.directory / name).unlink()

    def prepare(self):
        for directory in (self.directory / "out", self.outside):
            directory.mkdir(parents=True)
        write(self.directory, {**STEADY, **OLD, "e.prw": "x := 1\n"})
        if self.command == "saved":
            self.name_saved()
        if self.standing not in ("none", "pipe"):
            self.run(self.arguments_before)
        write(self.directory, {**NEW, "e.prw": "x := 1\n#else\n"})
        if self.standing == "same":
            self.run()
        left = self.standing.startswith("left")
        kind = self.standing.rpartition("-")[2]
        names = temporary_names(self.command, self.outputs) if left else self.files()
        for number, name in enumerate(names if kind not in ("none", "old", "same") else ()):
            path, target = self.directory / name, self.outside / str(number)
            target.write_bytes(path.read_bytes() if path.is_file() else b"theirs")
            place(kind, path, target)
        shutil.copytree(self.directory, self.start, symlinks=True, copy_function=os.link)
        self.initial, self.theirs = tree_of(self.directory), outside_of(self.directory)
        self.status = self.run()
        self.final = tree_of(self.directory)
        self.check_outside("a run that nobody disturbs")
        self.reset()

    def reset(self):
        shutil.rmtree(self.directory)
        # The inodes stay those of the first time, so what writes into one of them is found out.
        shutil.copytree(self.start, self.directory, symlinks=True, copy_function=os.link)

    def complain(self, when, what):
        self.findings.append("%s/%s, %s: %s" % (self.command, self.standing, when, what))

    def check_outside(self, when):
        if outside_of(self.directory) != self.theirs:
            self.complain(when, "what stands outside was written")

    def check_killed(self, when, tree):
        for output, rule in self.outputs:
            before, after, now = self.initial.get(output), self.final.get(output), tree.get(output)
            old, new, is_now = (each.get(rule) if rule else None
                                for each in (self.initial, self.final, tree))
            may_go = now is None and (old != new or self.status != 0)
            if now not in (before, after) and not may_go:
                self.complain(when, "%s is neither old nor new" % output)
            if is_now not in (old, new):
                self.complain(when, "%s is neither old nor new" % rule)
            if old != new and before != after and now is not None:
                if (now == after) != (is_now == new):
                    self.complain(when, "%s stands beside the rule of another output" % output)
        for name in set(tree) - set(self.initial) - set(self.final):
            if "krpre" not in name:
                self.complain(when, "%s is left behind" % name)

    def calls(self):
        """Every system call of a run that nobody disturbs: its name, and which one of that name."""
        log = self.directory.parent / "log"
        self.run(under=["strace", "-qq", "-f", "-o", str(log)])
        self.reset()
        count = collections.Counter()
        for found in re.finditer(r"^(\d+ +)(\w+)\(", log.read_text(errors="replace"), re.M):
            count[found.groups()] += 1  # of each thread; strace counts them apart
        most = {}
        for (_, name), each in count.items():
            most[name] = max(most.get(name, 0), each)
        return [(name, number + 1) for name in most for number in range(most[name])]

    def sweep(self):
        self.prepare()
        seen, kills = set(), 0
        for call, number in self.calls():
            kill = "--inject=%s:signal=SIGKILL:when=%d" % (call, number)
            if self.run(under=["strace", "-qq", "-f", "-o", os.devnull, kill]) != -signal.SIGKILL:
                self.reset()  # with threads, no two runs have the same calls
                continue
            kills += 1
            when = "killed at %s %d" % (call, number)
            tree = tree_of(self.directory)
            self.check_outside(when)
            if tree == self.initial and seen:
                continue
            state = hashlib.sha256(repr(sorted(tree.items())).encode()).digest()
            if state not in seen:
                seen.add(state)
                self.check_killed(when, tree)
                if self.run() != self.status or tree_of(self.directory) != self.final:
                    self.complain(when, "the next run gives something else")
                self.check_outside(when + ", next run")
            self.reset()
        return "%s/%s" % (self.command, self.standing), kills, len(seen), self.findings


def sweep(task):
    program, command, standing = task
    with tempfile.TemporaryDirectory() as root:
        return Scenario(program, command, standing, pathlib.Path(root)).sweep()


def plant(scenario, names, stop, planted):
    chance = random.Random(1)
    while not stop.is_set():
        path = scenario.directory / chance.choice(names)
        kind = chance.choice(["link", "hard", "pipe", "file", "gone"])
        try:
            if kind == "gone":
                path.unlink(missing_ok=True)
            else:
                place(kind, path, scenario.outside / "theirs")
            planted[0] += 1
        except OSError:
            pass  # it is being replaced


def plant_beside(program, command, seconds):
    """Runs the command again and again beside somebody who plants; returns what was counted."""
    with tempfile.TemporaryDirectory() as root:
        scenario = Scenario(program, command, "planted", pathlib.Path(root))
        for directory in (scenario.directory / "out", scenario.outside):
            directory.mkdir(parents=True)
        write(scenario.directory, {**STEADY, **NEW, "e.prw": "x := 1\n#else\n"})
        if command == "saved":
            scenario.name_saved()
        (scenario.outside / "theirs").write_text("theirs")
        scenario.theirs = outside_of(scenario.directory)
        names = scenario.files() + temporary_names(command, scenario.outputs)
        # Those that the user names are followed; that is what was asked for.
        names = [name for name in names if command not in CHOSEN or "krpre" in name]
        stop, planted, runs, good = threading.Event(), [0], 0, 0
        thread = threading.Thread(target=plant, args=(scenario, names, stop, planted))
        thread.start()
        end = time.monotonic() + seconds
        while time.monotonic() < end and not scenario.findings:
            write(scenario.directory, {"a.prw": NEW["a.prw"] + "y := %d\n" % runs})
            try:
                good += scenario.run() == 0
            except subprocess.TimeoutExpired:
                scenario.complain("run %d" % runs, "it waits for ever")
            runs += 1
            scenario.check_outside("run %d" % runs)
        stop.set()
        thread.join()
        return command, runs, good, planted[0], scenario.findings


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("program")
    parser.add_argument("--seconds", type=int, default=10, help="of planting beside each command")
    parser.add_argument("scenario", nargs="*", help="COMMAND/STANDING; default: all")
    options = parser.parse_args()
    program = os.path.abspath(options.program)
    tasks = [(program, *each) for each in scenarios()
             if not options.scenario or "/".join(each) in options.scenario]
    findings, kills = [], 0
    with multiprocessing.Pool() as pool:
        for name, count, states, found in pool.imap(sweep, tasks):
            print("%-20s %4d kills %3d states" % (name, count, states), flush=True)
            kills += count
            findings += found
    print("%d scenarios, %d kills" % (len(tasks), kills))
    if kills < 50 * len(tasks):
        findings.append("hardly anything was killed: what kills is wrong")
    for command in COMMANDS if not options.scenario else ():
        name, runs, good, planted, found = plant_beside(program, command, options.seconds)
        print("%-20s %4d runs, %d with success, beside %d plantings" % (name, runs, good, planted))
        findings += found
        if runs == 0 or planted == 0:
            findings.append(name + ": nothing was planted")
    print("\n".join(findings) or "nothing found")
    sys.exit(1 if findings else 0)


if __name__ == "__main__":
    main()
