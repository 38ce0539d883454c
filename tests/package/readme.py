"""Runs every example of README.md against an installation.

    python3 -B readme.py PREFIX SOURCES JAVA FLAGS

Takes the examples out of the installed README and runs each as it stands: commands with the
installed program, programs built against the installed library. Only the prefix /usr is replaced by
PREFIX, and "./dev krpre", which builds what is installed here, by "krpre". JAVA is the command that
starts a virtual machine, FLAGS are compiler flags that the library needs of its hosts.
"""

import os
import pathlib
import re
import shlex
import shutil
import subprocess
import sys
import tempfile

STRICT = "-Wall -Wextra -Wconversion -Werror"


def blocks(page):
    """The indented blocks of a page: heading -> texts."""
    found, heading = {}, ""
    for part in re.split(r"\n(?=## )", page):
        heading = part.partition("\n")[0].strip("# ")
        for block in re.findall(r"(?<=\n\n)(?:    .*\n|\n(?=\n*    ))+", part + "\n"):
            found.setdefault(heading, []).append(re.sub(r"(?m)^    ", "", block).strip("\n") + "\n")
    return found


class Readme:
    def __init__(self, prefix, sources, java, flags):
        self.prefix, self.sources = pathlib.Path(prefix), pathlib.Path(sources)
        self.documents = self.prefix / "share/doc/krpre"
        self.page = (self.documents / "README.md").read_text(encoding="utf-8")
        self.functions = 'cc() { command cc %s "$@"; }; java() { %s "$@"; }\n' % (flags, java)
        library = str(self.prefix / "lib")
        self.environment = dict(os.environ, PATH="%s:%s" % (self.prefix / "bin", os.environ["PATH"]),
                                PKG_CONFIG_PATH=library + "/pkgconfig", LD_LIBRARY_PATH=library)
        self.environment.pop("INCLUDE", None)
        self.output = ""

    def run(self, command, folder="."):
        command = command.replace("/usr/", shlex.quote(str(self.prefix)) + "/")
        done = subprocess.run(["/bin/sh", "-ec", self.functions + command], cwd=folder, env=self.environment,
                              text=True, stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        if done.returncode != 0:
            sys.exit("%s\nstatus %d\n%s" % (command, done.returncode, done.stdout))
        return done.stdout

    def expect(self, what, found, expected):
        if found != expected:
            sys.exit("%s: expected\n%s\nfound\n%s" % (what, expected, found))

    def preprocess(self, command, output="area.ppo"):
        """Runs a command that preprocesses area.prw, as the shell, C and Java do alike."""
        pathlib.Path("area.ppo").unlink(missing_ok=True)
        printed = self.run(command)
        self.expect(command, pathlib.Path(output).read_text().rstrip("\n"), self.output.rstrip("\n"))
        return printed

    # --- one operation for each example ---

    def two_commands(self, text):
        krpre, test = text.splitlines()
        self.expect("what runs this", test, "./dev test")
        shutil.copytree(self.documents / "examples", "examples")
        expected = {path: path.read_bytes() for path in pathlib.Path("examples/orders").glob("*.ppo")}
        for path in expected:
            path.unlink()
        self.run(krpre.replace("./dev krpre", "krpre"))
        self.expect(krpre, {path: path.read_bytes() for path in pathlib.Path("examples/orders").glob("*.ppo")},
                    expected)

    def source(self, text):
        pathlib.Path("area.prw").write_text(text)

    def header(self, text):
        pathlib.Path("units.ch").write_text(text)

    def result(self, text):
        self.output = text
        self.preprocess("krpre area.prw")

    def synopsis(self, text):
        pathlib.Path("DIR").mkdir()
        self.preprocess(re.sub(r"[][]|\.\.\.", "", text).replace("FILE", "area.prw"), "DIR/area.ppo")

    def explanation(self, text):
        self.expect("explain", self.run("krpre explain " + text.partition("\n")[0], self.documents), text)

    def c_host(self, text):
        pathlib.Path("host.c").write_text(text)
        comment = "".join(" *     %s" % line if line.strip() else " *\n" for line in text.splitlines(True))
        if comment not in (self.prefix / "include/krpre.h").read_text():
            sys.exit("krpre.h has another example than README.md")

    def c_build(self, text):
        self.preprocess(text)
        for compiler in ("cc -std=c11 -pedantic-errors", "c++ -x c++ -std=c++17 -pedantic-errors"):
            self.run("%s -fsyntax-only %s host.c $(pkg-config --cflags krpre)" % (compiler, STRICT))

    def java_host(self, text):
        pathlib.Path("Area.java").write_text(text)
        comment = re.search(r"<pre>\n(.*?) \* </pre>", (self.sources / "java/Krpre.java").read_text(), re.DOTALL)
        for line in comment[1].splitlines():
            if line.strip(" *") not in text:
                sys.exit("Krpre.java has another example than README.md: " + line)

    def java_run(self, text):
        header = pathlib.Path("units.ch").read_text()
        self.expect("getCH", self.preprocess(text)[-len(header) - 1:].strip(), header.strip())

    EXAMPLES = {
        "Two commands": (two_commands,),
        "A source and what becomes of it": (source, header, result),
        "From the shell": (synopsis,),
        "Why does my command do that?": (explanation,),
        "From C": (c_host, c_build),
        "From Java": (java_host, java_run),
    }

    def run_all(self):
        found = blocks(self.page)
        self.expect("number of examples below each heading",
                    {heading: len(texts) for heading, texts in found.items()},
                    {heading: len(operations) for heading, operations in self.EXAMPLES.items()})
        for heading, operations in self.EXAMPLES.items():
            for operation, text in zip(operations, found[heading]):
                operation(self, text)
        # Those in running text; "FILE:LINE" is any place.
        commands = re.findall(r"`((?:krpre|pkg-config) [^`]+)`", self.page)
        self.expect("commands in running text", len(commands) > 3, True)
        for command in commands:
            self.run(command.replace("FILE", "area.prw").replace("LINE", "10"))


def main():
    readme = Readme(*sys.argv[1:])
    with tempfile.TemporaryDirectory(prefix="readme") as folder:
        os.chdir(folder)
        readme.run_all()
        os.chdir("/")


main()
