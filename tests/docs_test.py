"""What the documents name exists: tests, cases of the corpus, files that links lead to."""
import re
import sys
import unittest
from pathlib import Path

ROOT = Path(sys.argv.pop(1))
PAGES = [*ROOT.glob("*.md"), *ROOT.glob("docs/*.md")]
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
        for page in PAGES:
            for target in re.findall(r"\]\((?!https?:|#)([^)#]+)", page.read_text()):
                with self.subTest(page=page.name):
                    self.assertTrue((page.parent / target).exists(), f"there is no {target}")


unittest.main()
