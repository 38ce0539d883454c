"""Generates the chapters that "krpre --explain" prints from the tables of the manual.

    python3 tools/chapters.py OUT.cpp docs/errors.md ...

Each row of a table is a chapter. It is found by the numbers and slugs in it; the first column that
holds what is printed is its title, the others are its parts.
"""

import re
import sys

# Columns that hold what a chapter is found by.
KEYS = ("code", "number", "slug")
# Columns that hold titles.
TITLES = ("text", "message", "warning")

CELL = re.compile(r"(?<!\\)\|")
LINK = re.compile(r"\[([^]]*)\]\([^)]*\)")


def literal(text):
    plain = "".join(chr(b) if 32 <= b < 127 and chr(b) not in '"\\?' else "\\%03o" % b
                    for b in text.encode("utf-8"))
    return '"%s"' % plain


def plain(cell):
    """A cell without the marks of Markdown."""
    return LINK.sub(r"\1", cell).replace("`", "").replace(r"\|", "|").strip()


def cells_of(line):
    return CELL.split(line.strip())[1:-1]


def tables_of(page):
    """The tables of a page: the names of the columns, and the rows."""
    header = None
    for line, following in zip(page, page[1:] + [""]):
        if not line.startswith("|"):
            header = None
        elif header is None:
            if not following.startswith("|--"):
                sys.exit("a table without a header: " + line)
            header = [plain(cell) for cell in cells_of(line)]
        elif not line.startswith("|--"):
            yield dict(zip(header, cells_of(line)))


def chapter_of(row):
    keys = [key for name in KEYS for key in re.findall(r"[\w-]+", row.get(name, ""))]
    title = next((plain(row[name]) for name in TITLES if name in row), "")
    keys += re.findall(r"^(?:C|SS\w*?)0*(\d+)e?\b", title)
    parts = [(name, plain(cell)) for name, cell in row.items()
             if name not in KEYS + TITLES and plain(cell) not in ("", "—")]
    slugs = [key for key in keys if not key.lstrip("-").isdigit()]
    if slugs:
        title = (title + " [%s]" % ", ".join(slugs)).strip()
    return " ".join(dict.fromkeys(keys)), title, parts


def main():
    out, *pages = sys.argv[1:]
    lines = ["// Made by tools/chapters.py.", '#include "cli/chapters.h"', "", "namespace {", ""]
    rows = []
    for page in pages:
        with open(page, encoding="utf-8") as file:
            chapters = [chapter_of(row) for row in tables_of(file.read().splitlines())]
        for keys, title, parts in chapters:
            name = "kParts%d" % len(rows)
            lines += ["constexpr tChapterPart %s[] = {" % name]
            lines += ["    {%s, %s}," % (literal(part), literal(text)) for part, text in parts]
            lines += ["    {nullptr, nullptr}};"]
            rows.append("    {%s, %s, %s}," % (literal(keys), literal(title), name))
    lines += ["", "constexpr tChapter kChapters[] = {", *rows, "};", "", "}  // namespace", "",
              "std::span<const tChapter> chapters() {", "  return kChapters;", "}", ""]
    with open(out, "w", encoding="ascii") as file:
        file.write("\n".join(lines))


main()
