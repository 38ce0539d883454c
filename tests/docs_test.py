"""What the documents name exists: tests, cases of the corpus, files that links lead to. The manual pages
name all that there is."""
import re
import shutil
import subprocess
import sys
import unittest
from pathlib import Path

ROOT = Path(sys.argv.pop(1))
PAGES = [*ROOT.glob("*.md"), *ROOT.glob("docs/*.md"), *ROOT.glob("examples/*/*.md")]
SOURCES = "\n".join(path.read_text() for path in ROOT.glob("tests/**/*.cpp"))
TESTS = {".".join(names) for names in re.findall(r"\bTEST(?:_F|_P)?\((\w+),\s*(\w+)\)", SOURCES)}


class Documents(unittest.TestCase):
    def test_oddities_name_tests_that_exist(self) -> None:
        for row in (ROOT / "docs/oddities.md").read_text().splitlines():
            if not re.search(r"\| [^|]*`[^|`]*` \|$", row):
                continue
            for name in re.findall(r"`([^`]+)`", re.split(r"(?<!\\)\|", row)[-2]):
                with self.subTest(row=row):
                    case = [*ROOT.glob(f"tests/corpus/{name}.*")]
                    self.assertTrue(name in TESTS or case or (ROOT / name).exists(),
                                    f"there is no {name}")

    def test_links_lead_to_files(self) -> None:
        self.assertGreater(len(PAGES), 10)
        for page in PAGES:
            for target in re.findall(r"\]\((?!https?:|#)([^)#]+)", page.read_text()):
                with self.subTest(page=page.name):
                    self.assertTrue((page.parent / target).exists(), f"there is no {target}")

    def test_index_lists_every_page(self) -> None:
        listed = re.findall(r"\]\((\w+\.md)\)", (ROOT / "docs/index.md").read_text())
        self.assertEqual(sorted([*listed, "index.md"]), sorted(page.name for page in ROOT.glob("docs/*.md")))


HTML = sorted(ROOT.glob("html/*.html"))


@unittest.skipUnless(HTML, "only the Debian package has pages in HTML")
class HtmlPages(unittest.TestCase):
    def test_references_lead_to_files_and_headings(self) -> None:
        places = {page: set(re.findall(r'\bid="([^"]*)"', page.read_text())) for page in HTML}
        self.assertGreaterEqual(len(HTML), len([*ROOT.glob("docs/*.md")]))
        for page in HTML:
            for tag, target in re.findall(r'<(\w+)\b[^>]*?\b(?:href|src)="([^"]*)"', page.read_text()):
                if tag == "a" and re.match("https?:", target):
                    continue
                name, _, place = target.partition("#")
                file = (page.parent / name).resolve() if name else page.resolve()
                with self.subTest(page=page.name, target=target):
                    # In the package or, by a link to elsewhere in /usr, in one that it depends on.
                    self.assertTrue(file.is_file() and file.is_relative_to(ROOT.resolve().parents[2]))
                    self.assertTrue(not place or place in places.get(file, ()))


def unmarked(name: str) -> str:
    """The text of a manual page, without fonts and line ends."""
    return " ".join(re.sub(r"\\f.|\\(?=-)", "", (ROOT / "docs" / name).read_text()).split())


class ManualPages(unittest.TestCase):
    @unittest.skipUnless(shutil.which("mandoc"), "mandoc is not installed")
    def test_mandoc_finds_nothing(self) -> None:
        pages = sorted(str(page) for page in ROOT.glob("docs/*.[137]"))
        found = subprocess.run(["mandoc", "-T", "lint", *pages], stdout=subprocess.PIPE, text=True)
        self.assertEqual((len(pages), found.stdout), (3, ""))

    def test_library_page_has_what_the_header_declares(self) -> None:
        header = re.sub(r"/\*.*?\*/", "", (ROOT / "include/krpre.h").read_text(), flags=re.DOTALL)
        page = unmarked("krpre.3")
        functions = [" ".join(text.split()) for text in re.findall(r"\nKRPRE_API ([^;]*;)", header)
                     if "JNI" not in text]
        host = re.search(r"\nstruct krpre_host \{(.*?)\n\};", header, re.DOTALL)[1]
        fields = re.findall(r"(\w+)(?:\)\([^;]*\))?;", host)
        results, flags, packed = (re.findall(r"\b(KRPRE_\w+) = ", header[header.index(first):].split("};")[0])
                                  for first in ("KRPRE_OK", "KRPRE_NO_OUTPUT", "KRPRE_PACKED"))
        self.assertGreater(min(map(len, (functions, fields, results, flags, packed))), 3)
        for name in [*functions, *fields, *results, *flags, *packed]:
            with self.subTest(name=name):
                self.assertRegex(page, r"(?<!\w)%s(?!\w)" % re.escape(name))

    def test_synopsis_has_every_subcommand(self) -> None:
        synopsis, _, rest = unmarked("krpre.1").partition(".SH DESCRIPTION")
        commands = re.findall(r"\.SS krpre (\w+)", rest)
        self.assertGreater(len(commands), 5)
        for command in commands:
            with self.subTest(command=command):
                self.assertRegex(synopsis, r"\b%s\b" % command)


unittest.main()
