#!/usr/bin/env python3
"""Times krpre against GNU cpp and clang -E on the same programs; `./dev bench` runs this.

Every timed run of krpre and of clang has a run of cpp just before it, and ratios are taken pair by
pair, so a machine that drifts or shares its cores does not move their median much. Times are wall
times of whole processes, read outside them. A run counts only when it exits with 0 and leaves the
output that was checked before: every landmark of the live text, and no name that should have been
replaced.
"""
import argparse
import json
import os
import re
import shutil
import statistics
import subprocess
import sys
import tempfile
from pathlib import Path

sys.dont_write_bytecode = True  # no byte code in the source folder
import workloads

ROOT = Path(__file__).resolve().parent.parent
FULL = 200_000  # the targets hold for sources of this many lines
NOISE = 1.05  # what "no more than" allows for the clock
DIRECTIVE = re.compile(rb"(?m)^#.*$")

# Workload: wall time to that of cpp (must reach, aim), peak memory likewise where it has a target.
TARGETS = {
    "tiny": ((0.25, 0.20), (0.85, 0.50)),
    "plain": ((0.33, 0.25), (0.85, 0.50)),
    "conds": ((0.36, 0.28), (0.85, 0.50)),
    "defines": ((0.38, 0.30), (0.85, 0.50)),
    "includes": ((0.42, 0.33), (0.85, 0.50)),
    "fdefines": ((0.50, 0.38), (0.85, 0.50)),
}
# Workload of rules: the cost of a line with 10,000 rules to that with 100 (must reach, aim), and
# with 1,000 rules to the cost to cpp of a line of fdefines with 1,000 macros.
RULE_TARGETS = {
    "manyrules": ((1.15, 1.05), (0.28, 0.20)),
    "samekey": ((1.15, 1.05), (0.28, 0.20)),
    "translates": ((1.15, 1.05), (0.33, 0.24)),
}
RULE_COUNTS = (100, 1000, 10000)
RULE_LINES = 60_000
READING = (4.0, 1.7)  # microseconds for reading one rule where there are 10,000
LONG_LINES = (3.0, 1.5)  # the cost of a byte of a line of 1,900 words to that of ten words
AGAIN = (25.0, 10.0)  # milliseconds
SECTIONS = (*TARGETS, "growth", "files", "jobs", "rules", "words", "headers", "entry", "again")


class Failure(Exception):
    """A run that does not count: a wrong exit status or a wrong output."""


class Tool:
    """A program under the clock: its dialect and how it is called."""

    def __init__(self, name, dialect, words):
        self.name, self.dialect, self.words = name, dialect, words

    def command(self, work, outdir):
        return self.words(work["dialects"][self.dialect], outdir)


def c_preprocessor(name, program):
    return Tool(
        name,
        "c",
        lambda work, outdir: [
            *program,
            *("-I" + folder for folder in work["includes"]),
            *work["inputs"],
            "-o",
            outdir + "main.i",
        ],
    )


def krpre(program):
    return Tool(
        "krpre",
        "korel",
        lambda work, outdir: [
            program,
            "--classic",
            *("@F" + path for path in work["inputs"]),
            "@O" + outdir,
            "-I" + ";".join(work["includes"]),
        ],
    )


def krpre_jobs(program, jobs):
    """The program itself, which starts threads, and not the classic run that hosts start."""
    return Tool(
        "krpre-j%d" % jobs,
        "korel",
        lambda work, outdir: [
            program,
            "-q",
            "--always-write",
            "-j%d" % jobs,
            *("-I" + folder for folder in work["includes"]),
            "-o",
            outdir,
            *work["inputs"],
        ],
    )


def check_output(work, outdir):
    """Raises Failure unless the files in `outdir` hold the live text, expanded. Returns their size."""
    texts = [path.read_bytes() for path in sorted(Path(outdir).iterdir())]
    body = b"\n".join(DIRECTIVE.sub(b"", text) for text in texts)
    found, wanted = body.count(workloads.LANDMARK.encode()), work["landmarks"]
    if found != wanted:
        raise Failure("%d of %d landmarks in the output" % (found, wanted))
    if work["prefix"] and work["prefix"].encode() in body.upper():
        raise Failure("names with %s left in the output" % work["prefix"])
    return sum(map(len, texts))


class Clock:
    """Runs commands through the small launcher and checks what they leave."""

    def __init__(self, folder):
        self.folder, self.launcher = folder, folder / "measure"
        self.environment = {"PATH": os.environ["PATH"], "LC_ALL": "C"}
        self.sizes = {}  # output size that was checked, by tool and workload
        source = Path(__file__).with_name("measure.c")
        folder.mkdir(parents=True, exist_ok=True)
        if not self.launcher.exists() or self.launcher.stat().st_mtime < source.stat().st_mtime:
            subprocess.run(["cc", "-O2", "-o", self.launcher, source], check=True)

    def run(self, tool, work):
        """Wall time in milliseconds and peak memory in megabytes."""
        outdir = self.folder / ("out-" + tool.name)
        shutil.rmtree(outdir, ignore_errors=True)
        outdir.mkdir()
        command = [str(self.launcher), *tool.command(work, "%s/" % outdir)]
        done = subprocess.run(
            command, stdout=subprocess.PIPE, env=self.environment, timeout=120, check=True
        )
        status, nanoseconds, kibibytes = map(int, done.stdout.split())
        if status != 0:
            raise Failure("%s: exit status %d" % (tool.name, status))
        known = self.sizes.get((tool.name, work["folder"]))
        if known is None:
            self.sizes[tool.name, work["folder"]] = check_output(work, outdir)
        elif sum(path.stat().st_size for path in outdir.iterdir()) != known:
            raise Failure("%s: the output changed" % tool.name)
        return nanoseconds / 1e6, kibibytes / 1024

    def pairs(self, baseline, tool, work, rounds):
        """Wall and peak of the baseline and of the tool for each round, after a warm-up pair."""
        rows = [self.run(baseline, work) + self.run(tool, work) for _ in range(rounds + 1)]
        return rows[1:]

    def best(self, tool, works, rounds):
        """For each workload in turn, round by round, the least wall time and the largest peak."""
        rows = [[self.run(tool, work) for work in works] for _ in range(rounds)]
        return [
            (min(wall for wall, _ in runs), max(peak for _, peak in runs)) for runs in zip(*rows)
        ]


class Bench:
    def __init__(self, options):
        self.options, self.folder = options, Path(options.work)
        self.clock = Clock(self.folder)
        self.rounds = options.rounds or (3 if options.quick else 9)
        self.cpp = c_preprocessor("cpp", ["cpp"])
        self.clang = c_preprocessor("clang", ["clang", "-E"]) if shutil.which("clang") else None
        self.ours = None if options.peers_only else krpre(options.program)
        self.missed, self.failed = [], []
        self.results = {"lines": options.lines, "rounds": self.rounds, "workloads": {}}

    def workload(self, name, lines, files=1, count=0):
        return workloads.generate(
            name,
            lines,
            self.folder / ("%s-%d-%d-%d" % (name, lines, files, count)),
            count=count,
            seed=self.options.seed,
            files=files,
        )

    def verdict(self, what, value, target):
        """The target and how `value` stands to it, for the end of a row."""
        must, aim = target
        sized = what in ("tiny", "entry from Java", "words")
        sized = sized or what.startswith(("saved header", "again"))
        judged = self.options.lines == FULL or sized
        if judged and value > must:
            self.missed.append(what)
        mark = (
            ""
            if not judged
            else "**MISSED**"
            if value > must
            else "ok"
            if value > aim
            else "aim reached"
        )
        return "%.2f / %.2f | %s" % (must, aim, mark)

    # ---- the workloads against the peers

    def compare(self, name):
        lines = 12 if name == "tiny" else self.options.lines
        work = self.workload(name, lines)
        rounds = self.rounds * (3 if name == "tiny" else 1)
        base, row = [], {}
        for tool in filter(None, (self.ours, self.clang)):
            runs = self.clock.pairs(self.cpp, tool, work, rounds)
            base += runs
            ratios = [wall / base_wall for base_wall, _, wall, _ in runs]
            row[tool.name] = {
                "wall": statistics.median(run[2] for run in runs),
                "peak": max(run[3] for run in runs),
                "ratio": statistics.median(ratios),
                "least": min(ratios),
                "most": max(ratios),
            }
        base = base or [self.clock.run(self.cpp, work) for _ in range(rounds)]
        row["cpp"] = {
            "wall": statistics.median(run[0] for run in base),
            "least": min(run[0] for run in base),
            "most": max(run[0] for run in base),
            "peak": max(run[1] for run in base),
        }
        row["megabytes"] = work["dialects"]["korel"]["bytes"] / 1e6
        self.results["workloads"][name] = row
        self.print_row(name, row)

    def print_row(self, name, row):
        wall, memory = TARGETS[name]
        ours, cpp, clang = row.get("krpre"), row["cpp"], row.get("clang")
        cells = [
            "%.1f" % cpp["wall"],
            "%.1f" % cpp["peak"],
            "%.2f" % clang["ratio"] if clang else "",
        ]
        if ours:
            share = ours["peak"] / cpp["peak"]
            cells += [
                "%.1f" % ours["wall"],
                "%.1f" % (row["megabytes"] / ours["wall"] * 1e3),
                "%.2f" % ours["ratio"],
                "%.2f-%.2f" % (ours["least"], ours["most"]),
                self.verdict(name, ours["ratio"], wall),
                "%.1f" % ours["peak"],
                "%.2f" % share,
                self.verdict(name + " memory", share, memory) if memory else " | ",
            ]
        print("| %s | %s |" % (name, " | ".join(cells)), flush=True)

    def table(self):
        names = [
            name
            for name in TARGETS
            if self.wanted(name)
        ]
        if not names:
            return
        head = ["workload", "cpp ms", "cpp MB", "clang / cpp"]
        if self.ours:
            head += [
                "krpre ms",
                "MB/s",
                "krpre / cpp",
                "min-max",
                "must / aim",
                "",
                "krpre MB",
                "MB / cpp",
                "must / aim",
                "",
            ]
        print("\n| %s |\n|%s" % (" | ".join(head), "---|" * len(head)))
        for name in names:
            self.guarded(name, lambda: self.compare(name))

    # ---- growth with the size and with the number of sources

    def growth(self):
        """Cost of a line in a source of a tenth of the lines and in a whole one. The headers and the
        start, timed with a source of next to nothing, are taken off."""
        print(
            "\n| cost of a line | us at %d lines | us at %d lines | ratio | must / aim | |\n|%s"
            % (self.options.lines // 10, self.options.lines, "---|" * 6)
        )
        for name in ("plain", "defines"):
            sizes = (100, self.options.lines // 10, self.options.lines)
            runs = self.clock.best(
                self.ours, [self.workload(name, size) for size in sizes], 3 * self.rounds
            )
            small, large = [
                (wall - runs[0][0]) / (size - sizes[0]) * 1e3
                for (wall, _), size in zip(runs[1:], sizes[1:])
            ]
            self.results["growth " + name] = {"small": small, "large": large}
            print(
                "| %s | %.3f | %.3f | %.2f | %s |"
                % (
                    name,
                    small,
                    large,
                    large / small,
                    self.verdict("growth of " + name, large / small, (NOISE, 1.0)),
                ),
                flush=True,
            )

    def files(self):
        """Ten sources in one run, each as long as the one they are set against."""
        print(
            "\n| sources in one run | us a line, one | ten | ratio | must / aim | "
            "| MB, one | ten | ratio | must / aim | |\n|%s" % ("---|" * 11)
        )
        works = [self.workload("defines", self.options.lines, files) for files in (1, 10)]
        (wall, peak), (walls, peaks) = self.clock.best(self.ours, works, max(3, self.rounds // 2))
        cost, costs = (t / work["lines"] * 1e3 for t, work in zip((wall, walls), works))
        self.results["files"] = {"cost": [cost, costs], "peak": [peak, peaks]}
        print(
            "| defines | %.3f | %.3f | %.2f | %s | %.1f | %.1f | %.2f | %s |"
            % (
                cost,
                costs,
                costs / cost,
                self.verdict("ten sources", costs / cost, (NOISE, 1.0)),
                peak,
                peaks,
                peaks / peak,
                self.verdict("memory of ten sources", peaks / peak, (NOISE, 1.0)),
            ),
            flush=True,
        )

    # ---- the number of rules

    def line_costs(self, tool, name, counts):
        """Microseconds a line and milliseconds of start and header, for each number of rules. A
        source of next to nothing, which the same header belongs to, tells the latter."""
        lines = RULE_LINES // 10 if self.options.quick else RULE_LINES
        sizes = (100, lines)
        works = [self.workload(name, size, count=count) for count in counts for size in sizes]
        walls = [wall for wall, _ in self.clock.best(tool, works, self.rounds)]
        return [
            ((whole - head) / (lines - sizes[0]) * 1e3, head)
            for head, whole in zip(walls[::2], walls[1::2])
        ]

    def rules(self):
        ((peer, _),) = self.line_costs(self.cpp, "fdefines", (1000,))
        print("\nA line of fdefines with 1,000 macros costs cpp %.3f us." % peer)
        print(
            "\n| rules | us a line at %s | %s | %s | last : first | must / aim | "
            "| 1,000 : cpp | must / aim | | us a rule read | must / aim | |\n|%s"
            % (*RULE_COUNTS, "---|" * 13)
        )
        for name, (growth, share) in RULE_TARGETS.items():
            self.guarded(name, lambda: self.rule_row(name, growth, share, peer))

    def rule_row(self, name, growth, share, peer):
        measured = self.line_costs(self.ours, name, RULE_COUNTS)
        costs = [cost for cost, _ in measured]
        reading = (measured[-1][1] - measured[0][1]) / (RULE_COUNTS[-1] - RULE_COUNTS[0]) * 1e3
        self.results["rules " + name] = {"costs": costs, "cpp": peer, "reading": reading}
        ratio = costs[-1] / costs[0]
        cells = ["%.3f" % cost for cost in costs]
        cells += ["%.2f" % ratio, self.verdict("growth of " + name, ratio, growth)]
        against = costs[1] / peer
        cells += ["%.2f" % against, self.verdict(name + " : cpp", against, share)]
        cells += ["%.2f" % reading, self.verdict("reading " + name, reading, READING)]
        print("| %s | %s |" % (name, " | ".join(cells)), flush=True)

    def words(self):
        """Lines of words of which each begins a rule that does not match: the cost of a byte in long
        ones to that in short ones."""
        folder = self.folder / "words"
        folder.mkdir(exist_ok=True)
        (folder / "std.ch").write_bytes(b"")
        costs = []
        for name, count in (("none", 0), ("short", 10), ("long", 1900)):
            line = b"E " * count + b"\n"
            text = b"#xtranslate E <a> Z => y\n" + line * (2_000_000 // len(line) if count else 1)
            path = folder / (name + ".prw")
            path.write_bytes(text)
            command = [str(self.clock.launcher), str(self.options.program), "-q", "--always-write"]
            command += ["-I%s" % folder, "-o", "%s/" % folder, str(path)]
            runs = [subprocess.run(command, stdout=subprocess.PIPE, timeout=120, check=True)
                    .stdout.split() for _ in range(self.rounds)]
            if any(int(status) != 0 for status, _, _ in runs):
                raise Failure("krpre fails on the words")
            costs.append((min(int(wall) for _, wall, _ in runs), len(text)))
        (start, _), *rest = costs
        short, long = ((wall - start) / size for wall, size in rest)
        self.results["words"] = {"short": short, "long": long}
        print(
            "\n| each word begins a rule | ns a byte, 10 words a line | 1,900 | ratio | must / aim | |"
            "\n|%s\n| words | %.1f | %.1f | %.2f | %s |"
            % ("---|" * 6, short, long, long / short,
               self.verdict("words", long / short, LONG_LINES)),
            flush=True,
        )

    # ---- the ways in from C and Java

    def again(self):
        """krpre_text over one source of 10,000 lines with 5,000 rules in headers kept."""
        print("\n| the same text again | ms | must / aim | |\n|%s" % ("---|" * 4))
        program = self.c_program("text")
        for name in RULE_TARGETS:
            work = self.workload(name, 10_000, count=5000)["dialects"]["korel"]
            time = self.nanoseconds([program, "30", work["inputs"][0], work["includes"][0]]) / 1e6
            self.results["again " + name] = time
            print("| %s | %.1f | %s |" % (name, time, self.verdict("again " + name, time, AGAIN)),
                  flush=True)

    def c_program(self, name):
        """A program of this folder, built against the library beside the timed program."""
        folder = self.folder / "entry"
        folder.mkdir(parents=True, exist_ok=True)
        library = Path(self.options.program).resolve().parent.parent / "lib"
        subprocess.run(
            ["cc", "-O2", "-I", ROOT, Path(__file__).with_name(name + ".c"), "-o", folder / name]
            + ["-L", library, "-lkrpre", "-Wl,-rpath,%s" % library],
            check=True,
        )
        return str(folder / name)

    def entry(self):
        """Calls of one process on the tiny workload: Krpre.prebuild to doPreProc, the least time of
        each. The output goes to memory, where there is such a place, so that the calls are not lost
        in it."""
        c, java = self.entry_programs()
        work = self.workload("tiny", 12)["dialects"]["korel"]
        calls = 6_000 if self.options.quick else 18_000
        memory = "/dev/shm" if os.access("/dev/shm", os.W_OK) else None
        with tempfile.TemporaryDirectory(dir=memory) as outdir:
            arguments = [
                str(calls),
                *("@F" + path for path in work["inputs"]),
                "@O" + outdir,
                "-I" + ";".join(work["includes"]),
            ]
            runs = [
                [self.nanoseconds([*command, *arguments]) / 1e3 for command in (c, java)]
                for _ in range(self.rounds)
            ]
        ratios = [java_time / c_time for c_time, java_time in runs]
        c_time, java_time = (min(times) for times in zip(*runs))
        ratio = java_time / c_time
        self.results["entry"] = {"c": c_time, "java": java_time, "ratio": ratio}
        print(
            "\n| entry point | us a call from C | from Java | ratio | min-max | must / aim | |\n|%s"
            % ("---|" * 7)
        )
        print(
            "| prebuild, tiny | %.1f | %.1f | %.2f | %.2f-%.2f | %s |"
            % (
                c_time,
                java_time,
                ratio,
                min(ratios),
                max(ratios),
                self.verdict("entry from Java", ratio, (1.20, 1.05)),
            ),
            flush=True,
        )

    def entry_programs(self):
        """The commands that make the calls, built against the library beside the timed program."""
        jar = Path(self.options.program).resolve().parent.parent / "share" / "java" / "krpre.jar"
        if not jar.exists():
            raise Failure("no krpre.jar in the build; a JDK makes it")
        program, folder = self.c_program("entry"), self.folder / "entry"
        java = Path(__file__).with_name("EntryBench.java")
        subprocess.run(["javac", "-cp", jar, "-d", folder, java], check=True)
        return [program], ["java", "-cp", "%s:%s" % (jar, folder), "EntryBench"]

    def nanoseconds(self, command):
        done = subprocess.run(
            command, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, timeout=120, check=True
        )
        return float(done.stderr.split()[-1])

    # ---- a standard header that is saved

    def headers(self):
        """1,000 small sources with a standard header of 5,000 rules: the time of a run that finds it
        saved to that of a run that does not save it, one process for each source and one for all.
        The first run, which saves it, is shown but not judged; nor is one process for all, which
        reads the header once in any case."""
        print(
            "\n| 1,000 sources, 5,000 rules | ms | saving | saved | saved : not | min-max "
            "| must / aim | |\n|%s" % ("---|" * 8)
        )
        work = self.standard_rules()
        some = work["inputs"][:: len(work["inputs"]) // 100]
        for name, calls, target in (
            ("a process for each (100 of them)", [[path] for path in some], (0.5, 0.2)),
            ("one process for all", [work["inputs"]], None),
        ):
            rows = []
            for _ in range(max(3, self.rounds // 3)):
                kept = Path(work["includes"][0]) / "kept"
                shutil.rmtree(kept, ignore_errors=True)
                without = self.calls_time(work, calls, [])
                saves = ["@@PRECOMPILED=%s" % kept]
                saving = self.calls_time(work, calls, saves)
                rows.append((without, saving, self.calls_time(work, calls, saves)))
            ratios = [saved / without for without, _, saved in rows]
            ratio = statistics.median(ratios)
            self.results["headers " + name] = {"times": rows, "ratio": ratio}
            print(
                "| %s | %.1f | %.1f | %.1f | %.2f | %.2f-%.2f | %s |"
                % (
                    name,
                    *(statistics.median(times) for times in zip(*rows)),
                    ratio,
                    min(ratios),
                    max(ratios),
                    self.verdict("saved header", ratio, target) if target else " | ",
                ),
                flush=True,
            )

    def standard_rules(self):
        """The workload manyrules with its rules in the standard header."""
        work = self.workload("manyrules", 30, files=1000, count=5000)
        folder = Path(work["folder"]) / "standard"
        folder.mkdir(exist_ok=True)
        rules = Path(work["dialects"]["korel"]["includes"][0]) / "rules.ch"
        (folder / "std.ch").write_bytes(rules.read_bytes())
        (folder / "rules.ch").write_bytes(b"")
        inputs = work["dialects"]["korel"]["inputs"]
        return {**work, "inputs": inputs, "includes": [str(folder)]}

    def calls_time(self, work, calls, options):
        """Milliseconds of processes over the sources of each call, one after the other; all outputs
        are checked."""
        outdir = self.folder / "out-headers"
        shutil.rmtree(outdir, ignore_errors=True)
        outdir.mkdir()
        total = 0
        for sources in calls:
            command = [str(self.clock.launcher), str(self.options.program), "--classic"]
            command += [*("@F" + path for path in sources), "@O%s/" % outdir]
            command += ["-I" + work["includes"][0], *options]
            done = subprocess.run(command, stdout=subprocess.PIPE, timeout=600, check=True)
            status, nanoseconds, _ = map(int, done.stdout.split())
            if status != 0:
                raise Failure("krpre: exit status %d" % status)
            total += nanoseconds
        count = sum(map(len, calls))
        landmarks = work["landmarks"] // len(work["inputs"]) * count
        check_output({**work, "landmarks": landmarks}, outdir)
        return total / 1e6
    def jobs(self):
        """40 sources that include one header of 2,000 rules, by one thread and by two."""
        print(
            "\n| jobs | ms with -j1 | ms with -j2 | ratio | min-max | must / aim | |\n|%s"
            % ("---|" * 7)
        )
        work = self.workload("defines", max(self.options.lines // 40, 500), files=40)
        tools = [krpre_jobs(self.options.program, jobs) for jobs in (1, 2)]
        runs = self.clock.pairs(*tools, work, self.rounds)
        one, two = (statistics.median(run[i] for run in runs) for i in (0, 2))
        ratios = [run[2] / run[0] for run in runs]
        ratio = statistics.median(ratios)
        self.results["jobs"] = {"one": one, "two": two, "ratio": ratio}
        print(
            "| 40 sources | %.1f | %.1f | %.2f | %.2f-%.2f | %s |"
            % (one, two, ratio, min(ratios), max(ratios), self.verdict("jobs", ratio, (0.60, 0.52))),
            flush=True,
        )

    # ---- the whole

    def wanted(self, section):
        return not self.options.only or section in self.options.only

    def guarded(self, section, action):
        try:
            action()
        except (Failure, subprocess.SubprocessError) as failure:
            self.failed.append(section)
            print("| %s | **FAILS**: %s |" % (section, failure), flush=True)

    def machine(self):
        version = lambda *command: subprocess.run(
            command, capture_output=True, text=True
        ).stdout.splitlines()[0]
        self.results["machine"] = {
            "cores": len(os.sched_getaffinity(0)),
            "load": os.getloadavg()[0],
            "cpp": version("cpp", "--version"),
            "clang": version("clang", "--version") if self.clang else None,
        }
        print(
            "%d lines a source, %d rounds; %s"
            % (
                self.options.lines,
                self.rounds,
                "; ".join(
                    "%s: %s" % (name, value)
                    for name, value in self.results["machine"].items()
                    if value is not None
                ),
            )
        )

    def main(self):
        self.machine()
        self.table()
        if self.ours:
            for section in SECTIONS[len(TARGETS):]:
                if self.wanted(section):
                    self.guarded(section, getattr(self, section))
        print()
        if self.options.lines != FULL:
            print("Targets are for %d lines; here only tiny, words, headers, entry and again are judged." % FULL)
        if self.missed:
            print("Missed: %s." % ", ".join(self.missed))
        if self.failed:
            print("Failed: %s." % ", ".join(self.failed))
        self.results.update(missed=self.missed, failed=self.failed)
        if self.options.json:
            Path(self.options.json).write_text(json.dumps(self.results, indent=1) + "\n")
        return 1 if self.failed or (self.missed and self.options.check) else 0


def parse():
    options = argparse.ArgumentParser(
        prog="./dev bench",
        description=__doc__,
        formatter_class=argparse.RawDescriptionHelpFormatter,
    )
    options.add_argument(
        "--lines", type=int, help="lines of a source (%d; with --quick a tenth)" % FULL
    )
    options.add_argument("--quick", action="store_true", help="short sources and few rounds")
    options.add_argument("--rounds", type=int, default=0, help="pairs of runs (9; with --quick 3)")
    options.add_argument(
        "--only",
        type=lambda text: text.split(","),
        default=[],
        metavar="NAME,...",
        help="some of: " + " ".join(SECTIONS),
    )
    options.add_argument("--peers-only", action="store_true", help="time cpp and clang alone")
    options.add_argument(
        "--check",
        action="store_true",
        help="exit with 1 when a target that must be reached is missed",
    )
    options.add_argument("--json", metavar="FILE", help="write the figures there too")
    options.add_argument("--program", help="the krpre to time (that of the bench or release build)")
    options.add_argument(
        "--work", default=str(ROOT / "build" / "workloads"), help="folder for sources and outputs"
    )
    options.add_argument("--seed", type=int, default=1)
    given = options.parse_args()
    given.lines = given.lines or (FULL // 10 if given.quick else FULL)
    unknown = set(given.only) - set(SECTIONS)
    if unknown:
        options.error("no such section: " + " ".join(sorted(unknown)))
    if given.check and (given.lines != FULL or given.peers_only):
        options.error("--check needs krpre and %d lines" % FULL)
    builds = [ROOT / "build" / build / "bin" / "krpre" for build in ("bench", "release")]
    given.program = given.program or next((str(path) for path in builds if path.exists()), None)
    if not given.program and not given.peers_only:
        options.error("no krpre is built; ./dev bench builds it")
    return given


if __name__ == "__main__":
    sys.exit(Bench(parse()).main())
