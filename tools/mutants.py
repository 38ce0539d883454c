"""Mutation testing: breaks the code in one place at a time and tells which changes no test finds.

    python3 tools/mutants.py [--seed N] [--count N] [--only PLACE] [--headers] [--jobs N]

PLACE is a folder, a file or FILE:LINE; without one it is korelpre/ and preprocessor/. A mutant is one
change of one source (tools/mutations.py). It is compiled and linked into the test programs that hold it,
and these run until one fails: first that of its folder, then the quick ones, the corpus and the others.
A change that does not compile, or that makes the same object file, is no mutant.

Everything happens in copies of the tree under build/mutants, one for each worker. All verdicts are
written to build/mutants/report.txt as they come; survivors and the sum are printed as well.
"""

import argparse
import collections
import json
import os
import pathlib
import random
import re
import shutil
import signal
import subprocess
import threading
import time

import mutations

ROOT = pathlib.Path(__file__).resolve().parent.parent
HOME = ROOT / "build" / "mutants"


class Workshop:
    """A copy of the tree, its build, and the running of its tests."""

    def __init__(self, number, originals):
        self.tree, self.build, self.scratch = (HOME / str(number) / part for part in ("tree", "build", "tmp"))
        self.originals, self.seen = originals, {}
        self.objects = collections.defaultdict(list)  # those that a source or header goes into
        self.environment = dict(os.environ, CCACHE_BASEDIR=str(HOME / str(number)), CCACHE_NOHASHDIR="1",
                                TMPDIR=str(self.scratch), TEST_TMPDIR=str(self.scratch))
        for name, (content, mode) in originals.items():
            path = self.tree / name
            if not path.is_file() or path.read_bytes() != content:
                self.write(name, content)
                path.chmod(mode)
            self.seen[name] = self.state(name)
        self.restore()

    def prepare(self):
        options = ["-DCMAKE_BUILD_TYPE=Debug", "-DKRPRE_TESTS=ON"]
        for language in ("C", "CXX"):
            options.append("-DCMAKE_%s_FLAGS_DEBUG=-O1 -w" % language)
            if shutil.which("ccache"):
                options.append("-DCMAKE_%s_COMPILER_LAUNCHER=ccache" % language)
        for command in (["cmake", "-S", self.tree, "-B", self.build, "-G", "Ninja", *options],
                        ["ninja", "-C", self.build, "-j", str(os.cpu_count())]):
            subprocess.run(command, env=self.environment, check=True, stdout=subprocess.DEVNULL)
        for line in self.ninja("-t", "deps").stdout.splitlines():
            if line.startswith(" "):
                name = os.path.relpath(os.path.normpath(self.build / line.strip()), self.tree)
                self.objects[name].append(made)
            else:
                made = line.split(":")[0]

    def state(self, name):
        status = (self.tree / name).stat()
        return status.st_size, status.st_mtime_ns

    def write(self, name, content):
        (self.tree / name).parent.mkdir(parents=True, exist_ok=True)
        (self.tree / name).write_bytes(content)

    def restore(self):
        """Undoes whatever a mutant or its tests have done to the tree."""
        for folder, _, files in os.walk(self.tree):
            for name in (os.path.relpath(os.path.join(folder, file), self.tree) for file in files):
                if name not in self.originals:
                    os.unlink(self.tree / name)
        for name, (content, _) in self.originals.items():
            if not (self.tree / name).is_file() or self.state(name) != self.seen[name]:
                self.write(name, content)
                self.seen[name] = self.state(name)
        shutil.rmtree(self.scratch, ignore_errors=True)
        self.scratch.mkdir(parents=True)

    def ninja(self, *targets):
        return subprocess.run(["ninja", "-C", self.build, "-j", "1", *targets], env=self.environment,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)

    def compiled(self, objects):
        """The bytes of object files, or None when they cannot be made."""
        if self.ninja(*objects).returncode != 0:
            return None
        return [(self.build / name).read_bytes() for name in objects]

    def failure(self, test):
        """Runs a test. What tells its failure: a case or the test, "time limit", or None."""
        command = ["bash", "-c", 'ulimit -t %d -d 4000000 -f 1000000 -c 0; exec "$@"' % test.processor,
                   "-", *(word.replace(str(HOME / "0"), str(self.tree.parent)) for word in test.command)]
        process = subprocess.Popen(
            command, cwd=self.scratch, env={**self.environment, **test.environment, "GTEST_FAIL_FAST": "1"},
            stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, start_new_session=True)
        late = threading.Timer(test.limit, lambda: os.killpg(process.pid, signal.SIGKILL))
        late.start()
        output = process.communicate()[0].decode(errors="replace")
        timedOut = not late.is_alive() or process.returncode == -signal.SIGXCPU
        late.cancel()
        try:
            os.killpg(process.pid, signal.SIGKILL)  # what the test has left running
        except ProcessLookupError:
            pass
        if timedOut:
            return "time limit"
        if process.returncode == 0 and not any(re.search(text, output) for text in test.failures):
            return None
        cases = (re.findall(r"^\[  FAILED  \] (\w[\w/]*\.[\w/]+)", output, re.M)[:1] or
                 re.findall(r"^\[ RUN      \] (\S+)", output, re.M)[-1:])
        return " ".join([test.name, *cases])


class Test:
    """A test of ctest: its command, the target that makes it, and what that is made of."""

    def __init__(self, workshop, entry):
        properties = {p["name"]: p["value"] for p in entry.get("properties", [])}
        self.name, self.command, self.seconds = entry["name"], entry["command"], 0
        # Seconds: what turns in circles is found by the first, and a busy machine takes longer.
        self.processor, self.limit = 300, 600
        self.environment = dict(p.split("=", 1) for p in properties.get("ENVIRONMENT", []))
        self.failures = properties.get("FAIL_REGULAR_EXPRESSION", [])
        program = os.path.relpath(self.command[0], workshop.build)
        self.target = "all" if program.startswith("..") else program
        self.inputs = set(workshop.ninja("-t", "inputs", self.target).stdout.split())

    def rank(self, path):
        """Tests of a low rank run first: that of the folder, quick ones, the corpus, the others."""
        return not path.startswith(self.name + "/"), self.seconds > 1 and self.name != "corpus", self.seconds


def testsOf(workshop):
    """The tests that run something built, each tried once on the code as it is. One that fails then, on a busy
    machine say, would find every mutant, so it is left out."""
    listing = subprocess.run(["ctest", "--test-dir", workshop.build, "--show-only=json-v1"], check=True,
                             stdout=subprocess.PIPE).stdout
    tests = [Test(workshop, entry) for entry in json.loads(listing)["tests"]
             if any(str(workshop.build) in word for word in entry["command"])]
    sound = []
    for test in tests:
        began = time.monotonic()
        failure = workshop.failure(test)
        if failure is not None:
            print("mutants: left out, fails without any change: " + failure, flush=True)
            continue
        sound.append(test)
        test.seconds = time.monotonic() - began
        test.processor, test.limit = 10 + 5 * int(test.seconds), 60 + 30 * int(test.seconds)
    return sound


def judge(workshop, change, text, tests):
    """What becomes of a mutant: a verdict and what found it."""
    source = workshop.originals[change.path][0].decode()
    objects = workshop.objects[change.path]
    tests = [test for test in tests if test.inputs & set(objects)]
    if not tests:
        return "in no test", ""
    before = workshop.compiled(objects)
    try:
        workshop.write(change.path, (source[:change.start] + text + source[change.end:]).encode())
        after = workshop.compiled(objects)
        if after is None:
            return "does not compile", ""
        if after == before:
            return "same object", ""
        for test in sorted(tests, key=lambda t: t.rank(change.path)):
            if workshop.ninja(test.target).returncode != 0:
                return "does not compile", ""
            failure = workshop.failure(test)
            if failure is not None:
                return "TIMED OUT" if failure == "time limit" else "KILLED", failure
        return "SURVIVED", ""
    finally:
        workshop.restore()


class Run:
    """Mutants in the order chosen, handed to workers until enough are judged."""

    def __init__(self, chosen, count, originals):
        self.waiting, self.count, self.originals = iter(chosen), count, originals
        self.sums, self.busy, self.changed = collections.Counter(), 0, threading.Condition()
        self.report = open(HOME / "report.txt", "w", encoding="utf-8", buffering=1)

    def judged(self):
        return self.sums["KILLED"] + self.sums["TIMED OUT"] + self.sums["SURVIVED"]

    def work(self, workshop, tests):
        while True:
            with self.changed:
                self.changed.wait_for(lambda: self.judged() + self.busy < self.count or self.busy == 0)
                change, text = next(self.waiting, (None, "")) if self.judged() < self.count else (None, "")
                if change is None:
                    return
                self.busy += 1
            verdict, by = judge(workshop, change, text, tests)
            with self.changed:
                self.busy -= 1
                self.sums[verdict] += 1
                self.tell(verdict, by, change, text)
                self.changed.notify_all()

    def tell(self, verdict, by, change, text):
        source = self.originals[change.path][0].decode()
        begin, end = source.rfind("\n", 0, change.start) + 1, source.find("\n", change.end)
        after = source[begin:change.start] + text + source[change.end:end]
        told = "%s:%d: %s %s\n    - %s\n    + %s" % (change.path, lineOf(source, change), verdict, by,
                                                 " ".join(source[begin:end].split()), " ".join(after.split()))
        print(told, file=self.report)
        if verdict == "SURVIVED":
            print(told, flush=True)


def lineOf(source, change):
    return source.count("\n", 0, change.start) + 1


def candidates(place, headers, originals):
    folder, _, line = place.partition(":")
    folders = [folder.rstrip("/")] if folder else ["korelpre", "preprocessor"]
    suffixes = (".cpp", ".h") if headers or folder.endswith(".h") else (".cpp",)
    for path, (content, _) in sorted(originals.items()):
        if path.endswith(suffixes) and any(path == f or path.startswith(f + "/") for f in folders):
            for change in mutations.Source(path, content.decode()).changes():
                if not line or lineOf(content.decode(), change) == int(line):
                    yield change


def filesOfTheTree():
    names = subprocess.run(["git", "ls-files", "-z", "--cached", "--others", "--exclude-standard"], cwd=ROOT,
                           check=True, stdout=subprocess.PIPE, text=True).stdout.split("\0")
    return {name: ((ROOT / name).read_bytes(), (ROOT / name).stat().st_mode) for name in names
            if (ROOT / name).is_file()}


def main():
    parser = argparse.ArgumentParser(prog="mutants", description="Breaks the code and tells what no test finds.")
    parser.add_argument("--seed", type=int, default=1, help="choose other mutants")
    parser.add_argument("--count", type=int, default=100, help="how many mutants (100)")
    parser.add_argument("--only", default="", metavar="PLACE", help="a folder, a file or FILE:LINE")
    parser.add_argument("--headers", action="store_true", help="change headers too (slow: all that include them)")
    parser.add_argument("--jobs", type=int, default=os.cpu_count(), help="workers (one per core)")
    arguments = parser.parse_args()

    originals = filesOfTheTree()
    order = random.Random(arguments.seed)
    chosen = [(change, order.choice(change.texts))
              for change in candidates(arguments.only, arguments.headers, originals)]
    order.shuffle(chosen)
    workshops = [Workshop(number, originals) for number in range(arguments.jobs)]
    for workshop in workshops:
        workshop.prepare()
    tests = testsOf(workshops[0])
    print("mutants: %d places, %d tests" % (len(chosen), len(tests)), flush=True)
    run = Run(chosen, arguments.count, originals)
    threads = [threading.Thread(target=run.work, args=(workshop, tests)) for workshop in workshops]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    found = run.judged() - run.sums["SURVIVED"]
    print("mutants: %d of %d found, %.1f %% (%d by the time limit); dropped: %d that do not compile, %d that make"
          " the same object" % (found, run.judged(), 100 * found / max(run.judged(), 1), run.sums["TIMED OUT"],
                                run.sums["does not compile"], run.sums["same object"]))


if __name__ == "__main__":
    main()
