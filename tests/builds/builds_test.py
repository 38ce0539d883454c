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
import shutil
import subprocess
import sys
import tempfile
import time
from pathlib import Path

from randomedits import SEARCH, Editor, Model

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
    output = Path("out")  # where outputs go
    precise = True        # a header that hides another one concerns those who included that one
    restores = True       # an output that is gone

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
        program = self.project / self.output / "program.txt"
        before = program.stat().st_mtime_ns if program.exists() else 0
        self.log.write_text("")
        printed = self.run(self.command()).stdout
        made = program.exists() and program.stat().st_mtime_ns != before
        return self.preprocessed(printed), made, printed

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


SYSTEMS = {"make": Make, "ninja": Ninja, "cmake-ninja": CMakeNinja, "cmake-make": CMakeMake}


# --- the project of the examples ------------------------------------------------------------------------

def expect(what, found, expected, printed):
    if found != expected:
        raise Failure("%s: expected %s, found %s\n%s" % (what, expected, found, printed))


def run_example(system):
    """Makes changes of every kind and tells of each what was preprocessed, and how long it took."""
    everything = sorted(path.name for path in (system.project / "sources").iterdir())
    part = [name for name in everything if name.startswith("part03")]

    def step(what, expected, made):
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
    for name in (*SEARCH, "sources"):
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
            project = Path(folder, "the project").resolve()
            subprocess.run([sys.executable, "-B", EXAMPLES / "generate.py", "--sources", str(given.sources), project],
                           check=True)
            run_example(system(project, prefix))
            if given.edits > 0:
                edited = Path(folder, "the edited").resolve()
                edit_at_random(system, edited, prefix, given.edits, given.seed)
        except Failure as failure:
            sys.exit("%s: %s" % (given.system, failure))


main()
