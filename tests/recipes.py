"""Carries out recipes of ARCHITECTURE.md, "To add ...", in a copy of the tree.

    python3 -B tests/recipes.py [FOLDER]

Adds a directive, a marker of rules and an option of the program as the recipes say, builds the
program and sees the three work. The copy is made in FOLDER, which must be empty and is kept, or in a
temporary one. Prints a line for each thing seen; stops at the first that fails.
"""

import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent


class Failure(Exception):
    pass


class Copy:
    """The tree, to be changed."""

    def __init__(self, folder):
        self.folder = folder
        listed = subprocess.run(["git", "-C", str(ROOT), "ls-files", "-z"], check=True, stdout=subprocess.PIPE)
        for name in filter(None, listed.stdout.decode().split("\0")):
            if not (ROOT / name).is_file():
                continue
            (folder / name).parent.mkdir(parents=True, exist_ok=True)
            shutil.copy2(ROOT / name, folder / name)

    def insert(self, name, anchor, text, before=False):
        """Puts lines behind, or before, the one line that the expression `anchor` matches."""
        lines = (self.folder / name).read_text(encoding="utf-8").split("\n")
        found = [at for at, line in enumerate(lines) if re.search(anchor, line)]
        if len(found) != 1:
            raise Failure("%s: %d lines match %s; is the recipe out of date?" % (name, len(found), anchor))
        at = found[0] if before else found[0] + 1
        lines[at:at] = text.strip("\n").split("\n")
        (self.folder / name).write_text("\n".join(lines), encoding="utf-8")

    def raise_number(self, name, constant):
        text = (self.folder / name).read_text(encoding="utf-8")
        raised, count = re.subn(r"(\b%s = )(\d+)(;)" % constant,
                                lambda found: found[1] + str(int(found[2]) + 1) + found[3], text)
        if count != 1:
            raise Failure("%s: no %s; is the recipe out of date?" % (name, constant))
        (self.folder / name).write_text(raised, encoding="utf-8")

    def productions(self):
        """How many the directive grammar has."""
        rules = (self.folder / "tools/grammars/korelpre.y").read_text().split("\n%%\n")[1]
        return len(re.findall(r"^(?:\w+:|  \|)", rules, re.MULTILINE))

    def build(self):
        environment = dict(os.environ, CCACHE_BASEDIR=str(self.folder), CCACHE_NOHASHDIR="1")
        configure = ["cmake", "--preset", "debug", "-DKRPRE_TESTS=OFF"]
        if shutil.which("ccache"):
            configure += ["-DCMAKE_%s_COMPILER_LAUNCHER=ccache" % language for language in ("C", "CXX")]
        for command in (configure, ["ninja", "-C", "build/debug", "krpre_cli"]):
            done = subprocess.run(command, cwd=self.folder, env=environment, text=True,
                                  stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
            if done.returncode != 0:
                raise Failure("%s failed:\n%s" % (" ".join(command), done.stdout[-4000:]))


class Bench:
    """The program that was built, and a folder of its own to run it in."""

    def __init__(self, copy):
        self.program = copy.folder / "build/debug/bin/krpre"
        self.folder = copy.folder / "build/seen"
        self.folder.mkdir()

    def write(self, name, text):
        (self.folder / name).write_text(text, encoding="utf-8")

    def read(self, name):
        return (self.folder / name).read_text(encoding="utf-8")

    def run(self, *arguments, status=0):
        done = subprocess.run([str(self.program), *arguments], cwd=self.folder, text=True,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        if done.returncode != status:
            raise Failure("krpre %s: status %d\n%s" % (" ".join(arguments), done.returncode, done.stdout))
        return done.stdout

    def lines(self, source, *arguments):
        """What the lines of a source become, without the markers of the standard header."""
        self.write("a.prw", source)
        self.run(*arguments, "a.prw")
        return [line for line in self.read("a.ppo").splitlines() if not line.startswith("#line")]


def see(what, found, expected):
    if found != expected:
        raise Failure("%s: expected %r, not %r" % (what, expected, found))
    print("seen: " + what)


def see_in(what, text, part):
    if part not in text:
        raise Failure("%s: %r is not in\n%s" % (what, part, text))
    print("seen: " + what)


# A directive: "#note text", which does nothing.

def add_directive(copy):
    number = copy.productions() + 1
    copy.insert("tools/grammars/korelpre.lex", r"^'#UNDEF' ", "'#NOTE'         DirNote")
    copy.insert("tools/grammars/korelpre.y", r"^%token DirUndef ",
                '%token DirNote          200 "_note"    /* @directive */')
    copy.insert("tools/grammars/korelpre.y", r"/\* kUndef \*/",
                '  | "_note" tokenList    /* kNote = %d */' % number)
    copy.insert("korelpre/text/directives.def", r"^DIRECTIVE\(kStdout,", 'DIRECTIVE(kNote, "#note", kIgnored)')


def see_directive(bench):
    source = 'x := 1\n#note "one" (\nx := 2\n  #NOTE two\nx := 3\n'
    see("the directive in column 1 and indented", bench.lines(source),
        ["x := 1", "", "x := 2", "", "x := 3"])
    see("a word that makes no directive", bench.lines("#nope one\n"), ["#nope one"])


# A marker of results: "<!name!>" writes what was taken in parentheses.

def add_marker(copy):
    number = copy.productions() + 1
    copy.insert("tools/grammars/korelpre.y", r"/\* kSmartResult \*/",
                '  | "<" "!" name "!" ">"  /* kGroupedResult = %d */' % number)
    copy.insert("korelpre/rules/markers.def", r"^MARKER\(tResultMarkerBlock,", before=True, text="""
MARKER(tResultMarkerGrouped, kResultMarkerGrouped, 15, kResult, kGroupedResult, kKindBang,
       kKindBang, "<!", "!>")
""")
    copy.raise_number("korelpre/headers/headerimage.cpp", "kFormat")
    copy.insert("korelpre/rules/resultmarker.h", r"^/// `<\.id\.>`", before=True, text="""
/// `<!id!>`: the capture in parentheses.
class tResultMarkerGrouped : public tResultMarker {
 public:
  explicit tResultMarkerGrouped(const tSpcString& token)
      : tResultMarker(token, kResultMarkerGrouped) {}
  bool replace(tTknString* t, int level) override;
};

""")
    copy.insert("korelpre/rules/resultquote.cpp", r"^bool tResultMarkerBlock::replace", before=True, text="""
bool tResultMarkerGrouped::replace(tTknString* t, int level) {
  tDressing dressing(*t);
  if (!dressing.open() || !copyLinks(t, level)) return false;
  return dressing.nothingCopied() || dressing.enclose("(", ")");
}

""")


def see_marker(bench):
    # A comment inside the directive leaves the second one to the grammar.
    rules = "#command SAY <x> => Said(<!x!>)\n#command /* */ TELL <x> => Told(<!x!>)\n"
    use = "SAY 1 + 2\nTELL 3 * 4\n"
    rewritten = ["Said((1 + 2))", "Told((3 * 4))"]
    see("the marker in a rule, read directly and by the grammar", bench.lines(rules + use), ["", ""] + rewritten)
    listing = bench.run("rules", "--json", "a.prw")
    see("the marker in the listing of both rules", listing.count("(<!x!>)"), 2)
    (bench.folder / "kept").mkdir()
    bench.write("kept/std.ch", rules)
    for what in ("made", "taken"):
        see("the marker in a precompiled header that is " + what,
            bench.lines(use, "-I", "kept", "--precompiled=kept"), rewritten)
    see("one precompiled header", len(list((bench.folder / "kept").glob("*.pch"))), 1)


# An option of the program: "--count".

def add_option(copy):
    copy.insert("cli/commandline.h", r"^  bool alwaysWrite = ", "  bool count = false;")
    copy.insert("cli/optiontable.cpp", r'^    \{"q", "quiet",', before=True, text="""
    {"", "count", nullptr, kPreprocess, kMessages, "print the number of sources when all are done",
     setFlag<&tCommandLine::count>},
""")
    copy.insert("cli/build.cpp", r"^  int status = kSomeFailed",
                '  if (line.count) printText(std::to_string(plan.jobs.size()) + " sources\\n");')


def see_option(bench):
    see_in("the option in the help", bench.run("--help"), "--count")
    completions = bench.run("--completions=bash")
    bench.write("completions", completions)
    complete = "source completions; COMP_WORDS=(krpre --cou) COMP_CWORD=1; _krpre; echo ${COMPREPLY[@]}"
    done = subprocess.run(["bash", "-c", complete], cwd=bench.folder, text=True, stdout=subprocess.PIPE)
    see("the option in bash", done.stdout, "--count\n")
    see_in("the option in zsh", bench.run("--completions=zsh"), "--count")
    see_in("the option in the manual", bench.run("--completions=man"), "count")
    for name in ("one.prw", "two.prw"):
        bench.write(name, "x := 1\n")
    see_in("the option in effect", bench.run("--count", "one.prw", "two.prw"), "2 sources")
    see_in("a misspelt option", bench.run("--cuont", "one.prw", status=2), "--count")


def run(folder):
    start = time.monotonic()
    copy = Copy(folder)
    add_directive(copy)
    add_marker(copy)
    add_option(copy)
    copy.build()
    print("built in %d seconds" % (time.monotonic() - start))
    bench = Bench(copy)
    see_directive(bench)
    see_marker(bench)
    see_option(bench)


def main():
    try:
        if len(sys.argv) > 1:
            folder = pathlib.Path(sys.argv[1]).resolve()
            folder.mkdir(exist_ok=True)
            if any(folder.iterdir()):
                raise Failure("%s is not empty" % folder)
            run(folder)
        else:
            with tempfile.TemporaryDirectory(prefix="recipes") as folder:
                run(pathlib.Path(folder).resolve())
    except Failure as failure:
        sys.exit("recipes: %s" % failure)


if __name__ == "__main__":
    main()
