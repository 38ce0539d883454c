"""Includes go downwards only, and no two units need each other.

    python3 tests/layers_test.py ROOT

Reads every #include in the tree. A finding is one line, "file:line: what is wrong".
"""

import collections
import pathlib
import re
import sys

# Folder -> what of ours its files may include besides the folder itself, as beginnings of paths.
FOLDERS = {
    "include": (),
    "lib_base": (),
    "lib_gzip": ("lib_base/",),
    "ssvp40xpf": (),
    "korelpre": ("ssvp40xpf/", "lib_gzip/", "lib_base/"),
    "preprocessor": ("korelpre/", "lib_gzip/", "lib_base/", "include/"),
    "cli": ("include/",),
}

# Files that may include more than their folder may.
EXCEPTIONS = {
    "ssvp40xpf/languageparser": ("lib_base/",),
    "cli/argumentreader": ("lib_base/nearest.h",),
    "cli/chapters": ("lib_base/nearest.h",),
    "cli/main": ("lib_base/nearest.h",),
    "cli/warninglist": ("lib_base/nearest.h",),
}

# Folder with rooms -> room -> the rooms of the same folder that it may include besides itself. Files
# that stand in no room may include every room; a room may not include them, unless FOR_EVERYBODY
# says so, and then they include no room.
ROOMS = {
    "korelpre": {
        "errors": (),
        "text": ("errors",),
        "rules": ("text", "errors"),
        "tables": ("rules", "text", "errors"),
        "statements": ("tables", "rules", "text", "errors"),
        "headers": ("tables", "rules", "text", "errors"),
        "directives": ("headers", "statements", "tables", "rules", "text", "errors"),
        "lint": ("directives", "headers", "statements", "tables", "rules", "text", "errors"),
    },
    "preprocessor": {
        "messages": (),
        "copy": ("messages",),
        "convert": ("copy", "messages"),
        "recovery": ("copy",),
        "run": ("recovery", "convert", "copy", "messages"),
        "host": ("run", "convert", "copy", "messages"),
    },
}
FOR_EVERYBODY = {"korelpre/korelpreobjs.h"}

# Outside headers -> the files that may use them.
OUTSIDE = [(re.compile(headers), re.compile(users)) for headers, users in (
    (r"Q[A-Za-z]|Qt[A-Z]", r"lib_base/translateqt\."),
    (r"z(lib|conf)\.h$", r"lib_gzip/"),
    (r"xxhash\.h$", r"korelpre/headers/contenthash\.cpp$"),
    (r"jni(_md)?\.h$", r"preprocessor/host/jni[a-z]*\."),
    (r"CLI/|nlohmann/", r"cli/"),
    (r"g(test|mock)/|benchmark/", r"$"),
)]

# The only header that leaves the tree is plain C.
C_HEADERS = {"stddef.h", "stdint.h", "stdbool.h", "limits.h"}

INCLUDE = re.compile(r'\s*#\s*include\s*([<"])([^>"]+)[>"]')


def unit_of(path):
    """A header and its source are one unit."""
    return path.rpartition(".")[0]


def room_of(path):
    folder, *rest = path.split("/")
    return rest[0] if folder in ROOMS and len(rest) > 1 else ""


def wrong_room(path, name):
    """Whether `path` and `name`, of one folder, stand in rooms that forbid the include."""
    folder = path.split("/")[0]
    source, target = room_of(path), room_of(name)
    if folder not in ROOMS or name in FOR_EVERYBODY or target == source:
        return False
    if source == "":
        return path in FOR_EVERYBODY
    return target not in ROOMS[folder][source]


def complaint(path, bracket, name, root):
    """What is wrong with an include of `name` in `path`; None when nothing is."""
    folder = path.split("/")[0]
    if bracket == "<":
        if folder == "include" and name not in C_HEADERS:
            return "must not include <%s>" % name
        for headers, users in OUTSIDE:
            if headers.match(name) and not users.match(path):
                return "must not include <%s>" % name
        return None
    # What is generated stands at the same path under the build folder.
    if "/" not in name and not (root / name).exists():
        return "write the path of %s from the root" % name
    allowed = (folder + "/", *FOLDERS[folder], *EXCEPTIONS.get(unit_of(path), ()))
    own = name.startswith(folder + "/")
    if not name.startswith(allowed) or own and wrong_room(path, name):
        return "must not include %s" % name
    return None


def includes_of(root):
    """Every include: file, line, bracket, name."""
    for folder in FOLDERS:
        for path in sorted((root / folder).rglob("*")):
            if path.suffix not in (".h", ".c", ".cpp", ".def"):
                continue
            text = path.read_text(encoding="utf-8")
            for number, line in enumerate(text.splitlines(), 1):
                if found := INCLUDE.match(line):
                    yield path.relative_to(root).as_posix(), number, *found.groups()


def reachable(graph, start):
    """The units that `start` needs, directly or through others."""
    found, waiting = set(), [start]
    while waiting:
        for unit in graph.get(waiting.pop(), ()):
            if unit not in found:
                found.add(unit)
                waiting.append(unit)
    return found


def cycles(includes):
    """A finding for each include that is part of a cycle between units."""
    graph = collections.defaultdict(set)
    for path, _, bracket, name in includes:
        if bracket == '"' and unit_of(path) != unit_of(name):
            graph[unit_of(path)].add(unit_of(name))
    needs = {unit: reachable(graph, unit) for unit in graph}
    for path, number, bracket, name in includes:
        source, target = unit_of(path), unit_of(name)
        if bracket == "<" or source == target:
            continue
        if source in needs.get(target, ()):
            yield "%s:%d: a cycle, for %s includes %s" % (path, number, target, source)


def main():
    root = pathlib.Path(sys.argv[1])
    includes = list(includes_of(root))
    if len(includes) < 1000:
        sys.exit("only %d includes found: what looks for them is wrong" % len(includes))
    findings = []
    for path, number, bracket, name in includes:
        if wrong := complaint(path, bracket, name, root):
            findings.append("%s:%d: %s" % (path, number, wrong))
    findings += cycles(includes)
    if findings:
        sys.exit("\n".join(findings))


main()
