"""Generates the table of translated messages from Qt Linguist sources.

    python3 tools/translations.py OUT.cpp krpre_de.ts ...

The language of a file is an attribute of its root element. All contexts are merged into one table:
the same English text has the same translation everywhere. A message without a finished translation
stays in English.
"""

import sys
import xml.etree.ElementTree as ElementTree


def messages(root):
    found = {}
    for message in root.iter("message"):
        translation = message.find("translation")
        if translation is None or translation.get("type") is not None or not translation.text:
            continue
        found[message.findtext("source")] = translation.text
    return found


def literal(text):
    """A C++ string literal. Non-ASCII bytes become octal escapes, whose length is limited."""
    plain = "".join(chr(b) if 32 <= b < 127 and chr(b) not in '"\\\\?' else "\\%03o" % b
                    for b in text.encode("utf-8"))
    return '"%s"' % plain


def table(path):
    root = ElementTree.parse(path).getroot()
    language = root.get("language")
    found = messages(root)
    if not all(ord(c) < 256 for text in found.values() for c in text):
        sys.exit(path + ": a letter that Latin-1 does not have")
    rows = ["    {%s, %s}," % (literal(text), literal(found[text]))
            for text in sorted(found, key=lambda text: text.encode("utf-8"))]
    return language, ["constexpr tTranslation k_%s[] = {" % language, *rows, "};", ""]


def main():
    out, *paths = sys.argv[1:]
    lines = ["// Made by tools/translations.py.", '#include "lib_base/language.h"', "",
             "namespace {", ""]
    names = []
    for path in paths:
        language, rows = table(path)
        names.append(language)
        lines += rows
    lines += ["constexpr tNamedWords kAll[] = {"]
    lines += ["    {%s, k_%s}," % (literal(name), name) for name in names]
    lines += ["};", "", "}  // namespace", "", "constinit const std::span<const tNamedWords> kLanguages = kAll;", ""]
    with open(out, "w", encoding="ascii") as file:
        file.write("\n".join(lines))


main()
