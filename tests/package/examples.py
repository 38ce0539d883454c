"""Runs every example of README.md and of docs/ against an installation.

    python3 -B examples.py PREFIX SOURCES JAVA FLAGS [PAGE]...

Takes the examples out of the installed pages and runs each as it stands: commands with the installed
program, programs built against the installed library. Only the prefix /usr is replaced by PREFIX, and
"./dev krpre", which builds what is installed here, by "krpre". JAVA is the command that starts a virtual
machine, FLAGS are compiler flags that the library needs of its hosts. With names of pages ("sql.md") only
those are run.

In the pages of docs/ an indented block is an example, by what stands before it:

    `NAME.EXT`:                      a file of that name
    `COMMAND` writes `NAME.EXT`:     what that file holds after the command
    ... becomes                      what the block above becomes, without its empty lines

A block that begins with "$ " is a session at a shell. All of a page happens in one directory, with
examples/ in it. What cannot be run stands in a fenced block instead.

With KRPRE_ACCEPT=1 in the environment the pages in SOURCES are given what is found. Read the difference.
"""

import itertools
import os
import pathlib
import re
import shlex
import shutil
import subprocess
import sys
import tempfile

STRICT = "-Wall -Wextra -Wconversion -Werror"


BLOCK = re.compile(r"(?<=\n\n)(?:    .*\n|\n(?=\n*    ))+")


def without_indentation(block):
    return re.sub(r"(?m)^    ", "", block).strip("\n") + "\n"


def blocks(page):
    """The indented blocks of a page: heading -> texts."""
    found, heading = {}, ""
    for part in re.split(r"\n(?=## )", page):
        heading = part.partition("\n")[0].strip("# ")
        for block in BLOCK.findall(part + "\n"):
            found.setdefault(heading, []).append(without_indentation(block))
    return found


class Installation:
    def __init__(self, prefix, sources, java, flags):
        self.prefix, self.sources = pathlib.Path(prefix), pathlib.Path(sources)
        self.documents = self.prefix / "share/doc/krpre"
        self.functions = 'cc() { command cc %s "$@"; }; java() { %s "$@"; }\n' % (flags, java)
        library = str(self.prefix / "lib")
        self.environment = dict(os.environ, PATH="%s:%s" % (self.prefix / "bin", os.environ["PATH"]),
                                PKG_CONFIG_PATH=library + "/pkgconfig", LD_LIBRARY_PATH=library, LC_ALL="C.UTF-8")
        self.environment.pop("INCLUDE", None)

    def read(self, page):
        folder = self.documents if page == "README.md" else self.documents / "docs"
        return (folder / page).read_text(encoding="utf-8")

    def shell(self, command, folder="."):
        command = command.replace("/usr/", shlex.quote(str(self.prefix)) + "/")
        done = subprocess.run(["/bin/sh", "-c", self.functions + command], cwd=folder, env=self.environment,
                              text=True, stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        return done.returncode, done.stdout.replace(str(self.prefix) + "/", "/usr/")

    def run(self, command, folder="."):
        status, printed = self.shell(command, folder)
        if status != 0:
            sys.exit("%s\nstatus %d\n%s" % (command, status, printed))
        return printed

    def expect(self, what, found, expected):
        if found != expected:
            sys.exit("%s: expected\n%s\nfound\n%s" % (what, expected, found))


class Readme(Installation):
    output = ""

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
        page = self.read("README.md")
        found = blocks(page)
        self.expect("number of examples below each heading",
                    {heading: len(texts) for heading, texts in found.items()},
                    {heading: len(operations) for heading, operations in self.EXAMPLES.items()})
        for heading, operations in self.EXAMPLES.items():
            for operation, text in zip(operations, found[heading]):
                operation(self, text)
        # Those in running text; "FILE:LINE" is any place.
        commands = re.findall(r"`((?:krpre|pkg-config) [^`]+)`", page)
        self.expect("commands in running text", len(commands) > 3, True)
        for command in commands:
            self.run(command.replace("FILE", "area.prw").replace("LINE", "10"))


class Page(Installation):
    """A page of docs/."""

    def run_all(self, name):
        page = self.read(name)
        self.source = None  # a block that is still to become something
        found = BLOCK.sub(lambda block: self.example(block, page[:block.start()]), page + "\n")[:-1]
        self.expect_no_source()
        if os.environ.get("KRPRE_ACCEPT"):
            (self.sources / "docs" / name).write_text(found, encoding="utf-8")
            return
        for line, (is_now, stands) in enumerate(itertools.zip_longest(found.splitlines(), page.splitlines()), 1):
            self.expect("docs/%s:%d" % (name, line), is_now, stands)

    def expect_no_source(self):
        if self.source:
            sys.exit("What becomes of this? A block that is not to be run is fenced.\n" + self.source)

    def example(self, block, before):
        """The block as it should be."""
        text, lead = without_indentation(block[0]), " ".join(before.rstrip().rpartition("\n\n")[2].split())
        if not re.search(r"\b(becomes|The output is)$", lead):
            self.expect_no_source()
            found = self.session_or_file(text, lead)
        else:
            pathlib.Path("example.prw").write_text(self.source, encoding="utf-8")
            self.source = None
            self.run("krpre example.prw")
            found = "\n".join(filter(None, self.lines("example.ppo").split("\n")))
        return re.sub(r"(?m)^(?=.)", "    ", found.rstrip("\n")) + block[0][len(block[0].rstrip("\n")):]

    def session_or_file(self, text, lead):
        written = re.search(r"`([^`]+)` writes `([^`]+)`:$", lead)
        named = re.search(r"(?:^|[.;] )`([^` ]+\.\w+)`(?:, [^:`]*)?:$", lead)
        if text.startswith("$ "):
            commands = re.findall(r"(?m)^\$ (.*)$", text)
            return "".join("$ %s\n%s" % (command, self.shell(command)[1]) for command in commands)
        if written:
            self.run(written[1])
            return self.lines(written[2])
        if named:
            pathlib.Path(named[1]).parent.mkdir(parents=True, exist_ok=True)
            pathlib.Path(named[1]).write_text(text, encoding="utf-8")
        else:
            self.source = text
        return text

    def lines(self, name):
        return pathlib.Path(name).read_bytes().decode().replace("\r\n", "\n").lstrip("\n")


def in_new_folder(work, *arguments):
    with tempfile.TemporaryDirectory(prefix="examples") as folder:
        os.chdir(folder)
        work(*arguments)
        os.chdir("/")


def main():
    installation, names = sys.argv[1:5], sys.argv[5:]
    if not names:
        in_new_folder(Readme(*installation).run_all)
    page = Page(*installation)
    for name in names or sorted(path.name for path in (page.sources / "docs").glob("*.md")):
        in_new_folder(page.run_all, name)


main()
