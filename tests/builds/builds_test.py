"""Runs the examples of builds: each build system does what is necessary and nothing more.

    python3 -B builds_test.py SYSTEM CMAKE BUILD [--sources N] [--edits N] [--seed N]

Builds the project of examples/builds with an installation of BUILD, at first and after changes, then one that
is edited at random, and compares what was preprocessed with what had to be. Prints how often krpre ran, and how
long a build took. Ends with 77 when SYSTEM is not installed.
"""
import argparse
import os
import random
import re
import shlex
import shutil
import subprocess
import sys
import tempfile
import time
from pathlib import Path

from randomedits import PLACES, SEARCH, Editor, Model

EXAMPLES = Path(__file__).resolve().parent.parent.parent / "examples/builds"
# Tells which sources were preprocessed.
LOGGED = """\
#!/bin/sh
for source; do :; done
case $source in *.prw) echo "${source##*/}" >>'%s' ;; esac
exec '%s' "$@"
"""


class Failure(Exception):
    pass


class System:
    """How a build system is called, in a project and with an installation."""

    needs = ()
    folder = "the project"
    output = Path("out")  # where outputs go
    program = None        # what is made of them; by default there
    finest = True         # preprocesses single sources
    precise = True        # a header that hides another one concerns those who included that one
    restores = True       # an output that is gone
    randomly = True       # is put to the random edits

    def __init__(self, project, prefix):
        self.project, self.prefix = project, prefix
        self.log = prefix / "log"
        self.configure()

    def configure(self):
        pass

    def command(self):
        raise NotImplementedError

    def shown(self, name):
        """How a source or a directory is named to krpre."""
        return name

    def run(self, command):
        environment = dict(os.environ, PATH="%s:%s" % (self.prefix / "bin", os.environ["PATH"]))
        for name in ("INCLUDE", "MAKEFLAGS", "MFLAGS", "MAKELEVEL"):
            environment.pop(name, None)
        return subprocess.run(command, cwd=self.project, env=environment, text=True,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT)

    def build(self):
        """Builds, and tells which sources were preprocessed, whether the program was made and what was printed."""
        program = self.project / (self.program or self.output / "program.txt")
        before = program.stat().st_mtime_ns if program.exists() else 0
        self.log.write_text("")
        printed = self.run(self.command()).stdout
        made = program.exists() and program.stat().st_mtime_ns != before
        return self.preprocessed(printed), made, printed

    def finish(self):
        pass

    def preprocessed(self, _printed):
        return sorted(self.log.read_text().split())


class Make(System):
    needs = ("make",)

    def command(self):
        return ["make", "-k", "-j4"]


class Ninja(System):
    needs = ("ninja",)

    def configure(self):
        self.run(["./configure.py"])

    def command(self):
        return ["ninja", "-k", "0"]


class CMakeNinja(System):
    needs = ("ninja",)
    output = Path("build/out")
    precise = False
    generator, flags = "Ninja", ("-k", "0")

    def shown(self, name):
        return str(self.project / name)

    def configure(self):
        done = self.run([CMAKE, "-G", self.generator, "-S", ".", "-B", "build"])
        if done.returncode != 0:
            raise Failure(done.stdout)

    def command(self):
        return [CMAKE, "--build", "build", "--", *self.flags]


class CMakeMake(CMakeNinja):
    needs = ("make",)
    restores = False
    generator, flags = "Unix Makefiles", ("-k", "-j4")


class Gradle(System):
    needs = ("gradle", "java")
    output, program = Path("build/out"), Path("build/program.txt")
    finest = False
    randomly = False

    def command(self):
        return ["gradle", "--no-daemon", "--offline", "--gradle-user-home", self.prefix / "gradle",
                "-Pkrpre=%s" % self.prefix, "program"]

    def preprocessed(self, printed):
        return sorted(re.findall(r"Precompilation of file sources/(\S+) ok", printed))


class Bazel(System):
    """Outputs come from the disk cache where an earlier build has left them."""

    needs = ("bazel", "strace")
    output = Path("bazel-bin")
    folder = "project"    # it refuses blanks
    randomly = False

    def configure(self):
        # What runs in a sandbox can log nothing.
        if (self.prefix / "bin/krpre-itself").exists():
            (self.prefix / "bin/krpre-itself").replace(self.prefix / "bin/krpre")

    def bazel(self, *arguments):
        return ["env", "KRPRE_PREFIX=%s" % self.prefix, "bazel", "--output_user_root=%s" % (self.prefix / "bazel"),
                "--max_idle_secs=60", *arguments]

    def command(self):
        return self.bazel("build", "--subcommands", "--disk_cache=%s" % (self.prefix / "cache"), "//:program")

    def preprocessed(self, printed):
        return sorted(re.findall(r"\[action 'krpre sources/(\S+)'", printed))

    def finish(self):
        """Elsewhere nothing has to be run again; and an action reads what it declares and nothing else."""
        actions = self.run(self.bazel("aquery", "mnemonic(Korel, //:part07)")).stdout
        elsewhere = Bazel(self.project.parent / "elsewhere", self.prefix)
        shutil.copytree(self.project, elsewhere.project, ignore=shutil.ignore_patterns("bazel-*"))
        asked, made, printed = elsewhere.build()
        done = re.search(r"INFO: \d+ processes: (.*)\.", printed)
        expect("built elsewhere", (made, done and done[1]), (True, "%d remote cache hit, 1 internal" % (len(asked) + 1)),
               printed)
        inputs, output, command = (re.search(pattern, actions, re.DOTALL)[1] for pattern in (
            r"Inputs: \[(.*?)\]", r"Outputs: \[(.*?)\]", r"\(exec (.*?)\)\n"))
        (elsewhere.project / "sources/part07_job0.prw").write_text('#include "part08.ch"\n')
        printed = elsewhere.build()[2]
        expect("a header that is not declared", "File not found part08.ch" in printed, True, printed)
        base = self.run(self.bazel("info", "output_base")).stdout.splitlines()[-1]
        self.run_as_worker(inputs.split(", "), output, shlex.split(command.replace("\\\n", "")), Path(base))
        for system in (self, elsewhere):
            system.run(system.bazel("shutdown"))

    def run_as_worker(self, inputs, output, command, base):
        """Runs an action as another machine does: in a directory that holds copies of its inputs alone."""
        worker = self.prefix / "worker"
        for name in (*inputs, output):
            (worker / name).parent.mkdir(parents=True, exist_ok=True)
        for name in inputs:
            shutil.copy((base if name.startswith("external/") else self.project) / name, worker / name)
        calls = worker.parent / "calls"
        done = subprocess.run(["strace", "-f", "-y", "-e", "trace=execve,open,openat", "-o", calls, *command], cwd=worker,
                              env={}, text=True, stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        expect("action", done.returncode, 0, done.stdout)
        name = Path(output).name
        expect("output of the action", (worker / output).read_bytes(), (self.project / self.output / name).read_bytes(),
               done.stdout)
        # Behind what was opened stands the name that it has when links are followed.
        read = set(re.findall(r"O_RDONLY.* = \d+<(.*)>", calls.read_text()))
        here = {os.path.relpath(path, worker) for path in read if path.startswith(str(worker))}
        expect("read and not declared", sorted(here - {*inputs}), [], calls.read_text())
        others = sorted(path for path in read if not path.startswith(str(worker)))
        system = re.compile(r"/etc/ld\.so\.cache|(/usr)?/lib/.*/lib[^/]*\.so[^/]*|/sys/devices/system/cpu/online")
        expect("read elsewhere", [path for path in others if not system.fullmatch(path)], [], calls.read_text())
        print("an action reads %d of its %d inputs, and of the machine %s" % (len(here), len(inputs), ", ".join(others)))


SYSTEMS = {"make": Make, "ninja": Ninja, "cmake-ninja": CMakeNinja, "cmake-make": CMakeMake, "gradle": Gradle,
           "bazel": Bazel}


# --- the project of the examples ------------------------------------------------------------------------

def expect(what, found, expected, printed):
    if found != expected:
        raise Failure("%s: expected %s, found %s\n%s" % (what, expected, found, printed))


def run_example(system):
    """Makes changes of every kind and tells of each what was preprocessed, and how long it took."""
    everything = sorted(path.name for path in (system.project / "sources").iterdir())
    part = [name for name in everything if name.startswith("part03")]

    def step(what, expected, made):
        if expected and not system.finest:
            expected = everything
        time.sleep(0.01)
        started = time.monotonic()
        ran, program, printed = system.build()
        taken = time.monotonic() - started
        expect(what, ran, expected, printed)
        expect(what + ": program made", program, made, printed)
        print("%-30s %5d preprocessed, %6.2f s" % (what, len(ran), taken), flush=True)

    header = system.project / "headers/part03.ch"
    common = system.project / "company/common.ch"
    step("first run", everything, True)
    step("nothing changed", [], False)
    header.write_text("#define FACTOR 33\n")
    step("header changed", part, True)
    output = (system.project / system.output / "part03_job0.ppo").read_text()
    expect("output", "nValue * 33" in output, True, output)
    header.write_text("#define FACTOR 33 // of the third part\n")
    step("its rules unchanged", part, False)
    step("nothing changed then", [], False)
    common.write_text("#define LIMIT 2000\n")
    step("common header changed", everything, True)
    (system.project / "sources" / part[0]).write_text("x := 1\n")
    step("one source changed", part[:1], True)
    step("nothing changed at last", [], False)


# --- a project that is edited at random ---------------------------------------------------------------------

def outputs_in(folder):
    return {path.name: path.read_bytes() for path in folder.glob("*.ppo")}


def clean_outputs(system, model):
    """What outputs have to be: name -> bytes, made by krpre itself in an empty directory."""
    with tempfile.TemporaryDirectory() as folder:
        system.run(["krpre", "-q", *("-I" + system.shown(name) for name in SEARCH), "-o", folder,
                    *(system.shown(name) for name in model.sources())])
        return outputs_in(Path(folder))


def edit_at_random(make_system, project, prefix, count, seed):
    for name in PLACES:
        (project / name).mkdir(parents=True)
    for path in EXAMPLES.iterdir():
        if path.is_file():
            shutil.copy(path, project)
    model = Model(project)
    editor = Editor(model, random.Random(seed), project / make_system.output, make_system.restores)
    system = make_system(project, prefix)
    hidden, runs, idle = model.hidden(), 0, 0
    listed, written = None, True  # what the program was made of, and whether any of it is newer
    for step in range(count + 1):
        did = editor.edit() if step else "first run"
        due = model.due()
        if not system.precise and model.hidden() != hidden:
            due = [Path(source).name for source in model.sources()]
        hidden = model.hidden()
        at = "seed %d, edit %d, %s" % (seed, step, did)
        before = outputs_in(project / system.output)
        ran, made, printed = system.build()
        expect(at, ran, due, printed)
        model.built()
        after, clean = outputs_in(project / system.output), clean_outputs(system, model)
        names = [Path(source).stem + ".ppo" for source in model.sources()]
        for name in names:
            expect("%s: %s" % (at, name), after.get(name), clean.get(name), printed)
        written = written or any(before.get(name) != after.get(name) for name in names)
        expect(at + ": program made", made, not model.failed() and (written or names != listed), printed)
        if not model.failed():
            listed, written = names, False
        again, made, printed = system.build()
        expect(at + ", built again", (again, made), (model.due(), False), printed)
        runs, idle = runs + len(ran), idle + (not ran)
        time.sleep(0.01)
    print("%d random edits, %d of which needed no run: %d runs of krpre, none missing, none superfluous" %
          (count, idle, runs))


def main():
    options = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    options.add_argument("system", choices=SYSTEMS)
    options.add_argument("cmake")
    options.add_argument("build")
    options.add_argument("--sources", type=int, default=40)
    options.add_argument("--edits", type=int, default=40)
    options.add_argument("--seed", type=int, default=1)
    given = options.parse_args()
    global CMAKE
    CMAKE = given.cmake
    system = SYSTEMS[given.system]
    for tool in system.needs:
        if shutil.which(tool) is None:
            print("skipped: %s is not installed" % tool)
            sys.exit(77)
    with tempfile.TemporaryDirectory(prefix="builds") as folder:
        prefix = Path(folder, "installed").resolve()
        subprocess.run([given.cmake, "--install", given.build, "--prefix", prefix], check=True,
                       stdout=subprocess.DEVNULL)
        program, real = prefix / "bin/krpre", prefix / "bin/krpre-itself"
        program.rename(real)
        program.write_text(LOGGED % (prefix / "log", real))
        program.chmod(0o755)
        try:
            project = Path(folder, system.folder).resolve()
            subprocess.run([sys.executable, "-B", EXAMPLES / "generate.py", "--sources", str(given.sources), project],
                           check=True)
            example = system(project, prefix)
            run_example(example)
            example.finish()
            if system.randomly and given.edits > 0:
                edited = Path(folder, "the edited").resolve()
                edit_at_random(system, edited, prefix, given.edits, given.seed)
        except Failure as failure:
            sys.exit("%s: %s" % (given.system, failure))


main()
