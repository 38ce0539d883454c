"""Every text of the sources that is translated is in every language.

    python3 tests/translations_test.py ROOT
"""

import pathlib
import re
import sys
import xml.etree.ElementTree as ElementTree

FOLDERS = ("lib_base", "lib_gzip", "ssvp40xpf", "korelpre", "preprocessor", "cli")
CALL = re.compile(r'\b(?:translated?|noted|choice\.add)\(\s*"((?:[^"\\]|\\.)*)"')
WORDS = re.compile(r"\{([^{}]+)\}")  # of a table of messages
TEXTS = re.compile(r'(?<=[ (])"([^"\n]* [^"\n]*)"')  # of a table of warnings: all but slugs
TABLES = {"messages.def": WORDS, "warnings.def": TEXTS}


def texts_of(root):
    found = {}
    for folder in FOLDERS:
        for path in sorted((root / folder).rglob("*.*")):
            if path.name == "translateqt.cpp":  # names the context
                continue
            pattern = TABLES.get(path.name, CALL if path.suffix == ".cpp" else None)
            for text in pattern.findall(path.read_text(encoding="utf-8")) if pattern else ():
                found.setdefault(text, path.name)
    return found


def main():
    root = pathlib.Path(sys.argv[1])
    texts = texts_of(root)
    if len(texts) < 30:
        sys.exit("only %d texts found: what looks for them is wrong" % len(texts))
    findings = []
    for path in sorted((root / "translations").glob("*.ts")):
        messages = {m.findtext("source"): m.find("translation")
                    for m in ElementTree.parse(path).getroot().iter("message")}
        for text, where in texts.items():
            translation = messages.get(text)
            if translation is None or not translation.text or translation.get("type"):
                findings.append("%s: no translation of \"%s\" (%s)" % (path.name, text, where))
    if findings:
        sys.exit("\n".join(findings))


main()
