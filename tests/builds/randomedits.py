"""A small project that is edited at random, and a model of what has to be preprocessed then.

The model knows nothing of build systems: it follows the includes, and keeps of each source the states of the
files that it was made from last.
"""
import re
from pathlib import Path

SEARCH = ("headers", "company")
PLACES = ("sources", *SEARCH)  # where krpre looks for a header
HEADERS = 8


class Model:
    def __init__(self, root):
        self.root = root
        self.states = {}  # file -> how often it was written
        self.last = {}    # source -> the states of what it was made from; None after an error

    def text(self, name):
        return (self.root / name).read_text()

    def wrote(self, name):
        self.states[name] = self.states.get(name, 0) + 1

    def write(self, name, text):
        (self.root / name).write_text(text)
        self.wrote(name)

    def save(self, name, text):
        """Writes as editors do, a new file that takes the name."""
        self.write("saved", text)
        (self.root / "saved").rename(self.root / name)
        self.wrote(name)

    def sources(self):
        return sorted("sources/" + path.name for path in self.root.glob("sources/*.prw"))

    def headers(self):
        return sorted(str(path.relative_to(self.root)) for place in PLACES for path in self.root.glob(place + "/*.ch"))

    def find(self, header):
        places = ("%s/%s" % (place, header) for place in PLACES)
        return next((place for place in places if (self.root / place).exists()), None)

    def hidden(self):
        """Those that one of the same name, found earlier, hides."""
        return [name for name in self.headers() if self.find(Path(name).name) != name]

    def read(self, name):
        """The states of all that `name` is made from; None when it has an error."""
        found = {name: self.states[name]}
        for line in self.text(name).splitlines():
            if line == "#else":
                return None
            if line.startswith("#include"):
                header = self.find(line.split('"')[1])
                inner = self.read(header) if header else None
                if inner is None:
                    return None
                found.update(inner)
        return found

    def due(self):
        now = {source: self.read(source) for source in self.sources()}
        return [Path(source).name for source, states in now.items()
                if states is None or states != self.last.get(source)]

    def built(self):
        self.last = {source: self.read(source) for source in self.sources()}

    def failed(self):
        return None in self.last.values()


class Editor:
    """Makes the project, then one edit after the other. Each edit tells what it did."""

    def __init__(self, model, generator, outputs, restores):
        """`outputs`: where they are; `restores`: whether the build makes one again that is lost."""
        self.model, self.random, self.outputs = model, generator, outputs
        self.counter = 0
        for number in range(HEADERS):
            self.write_header("company/h%d.ch" % number)
        for number in range(12):
            self.write_source("sources/s%d.prw" % number)
        self.edits = [self.nothing, self.value, self.value, self.comment, self.touch, self.touch, self.new_text,
                      self.new_text, self.hide, self.hide, self.show, self.remove_header, self.damage,
                      self.new_header, self.new_source, self.remove_source] + [self.lose_output] * restores

    def edit(self):
        if self.model.failed() and self.random.random() < 0.6:
            return self.repair()
        return self.random.choice(self.edits)()

    def number(self):
        self.counter += 1
        return self.counter

    def source(self):
        return self.random.choice(self.model.sources())

    def header(self):
        return self.random.choice(self.model.headers())

    def write_header(self, name):
        """With a rule and a define, and perhaps with one of the headers behind it."""
        own = int(re.search(r"h(\d+)", name)[1])
        text = '#xcommand PUT%d <x> => Put(<x>, %d)\n#define VALUE%d 0\n' % (own, self.number(), own)
        if own < HEADERS - 1 and self.random.random() < 0.4:
            text += '#include "h%d.ch"\n' % self.random.randrange(own + 1, HEADERS)
        self.model.save(name, text)

    def write_source(self, name):
        used = self.random.sample(range(HEADERS), self.random.randrange(1, 5))
        self.model.write(name, "".join('#include "h%d.ch"\nPUT%d VALUE%d\n' % (n, n, n) for n in used))

    def nothing(self):
        return "nothing"

    def value(self):
        name = self.header()
        self.model.write(name, re.sub(r"(VALUE\d+) .*", r"\1 %d" % self.number(), self.model.text(name)))
        return "value in " + name

    def comment(self):
        name = self.header()
        self.model.save(name, self.model.text(name) + "// %d\n" % self.number())
        return "comment in " + name

    def touch(self):
        name = self.random.choice([self.header(), self.source()])
        (self.model.root / name).touch()
        self.model.wrote(name)
        return "touch " + name

    def new_text(self):
        name = self.random.choice([self.header(), self.source()])
        (self.write_source if name.endswith(".prw") else self.write_header)(name)
        return "write anew " + name

    def hide(self):
        name = self.header()
        other = "%s/%s" % (self.random.choice(PLACES[:-1]), Path(name).name)
        self.write_header(other)
        return "hide %s by %s" % (name, other)

    def show(self):
        for name in self.model.hidden()[:1]:
            (self.model.root / self.model.find(Path(name).name)).unlink()
            return "show again " + name
        return "nothing"

    def remove_header(self):
        name = self.header()
        (self.model.root / name).unlink()
        return "remove " + name

    def damage(self):
        name = self.header()
        self.model.write(name, self.model.text(name) + "#else\n")
        return "damage " + name

    def repair(self):
        for number in range(HEADERS):
            name = self.model.find("h%d.ch" % number)
            if name is None or "#else" in self.model.text(name):
                self.write_header(name or "company/h%d.ch" % number)
        return "repair headers"

    def new_header(self):
        name = "headers/h%d.ch" % (HEADERS + self.number())
        self.write_header(name)
        return "add %s, which nobody includes" % name

    def new_source(self):
        name = "sources/s%d.prw" % (12 + self.number())
        self.write_source(name)
        return "add " + name

    def remove_source(self):
        name = self.source()
        if len(self.model.sources()) > 6:
            (self.model.root / name).unlink()
        return "remove " + name

    def lose_output(self):
        name = self.source()
        (self.outputs / Path(name).with_suffix(".ppo").name).unlink(missing_ok=True)
        self.model.last[name] = None
        return "lose the output of " + name
