"""The page that holds the guides' statements against tests names tests that there are."""

import re
import unittest
from pathlib import Path

PROJECT = Path(__file__).resolve().parent.parent.parent
TESTS = PROJECT / "tests"


def existing():
    for source in TESTS.rglob("*Test.cpp"):
        text = source.read_text(encoding="utf-8")
        yield from (".".join(names) for names in re.findall(r"^\w*TEST\w*\((\w+), (\w+)\)", text, re.M))
    for source in TESTS.rglob("test_*.py"):
        yield from re.findall(r"def (test_\w+)", source.read_text(encoding="utf-8"))


class GuideRowsTest(unittest.TestCase):
    def setUp(self):
        page = (PROJECT / "docs" / "guides.md").read_text(encoding="utf-8")
        self.rows = [line.split("|")[1:3] for line in page.splitlines() if line.startswith("|")][2:]

    def test_every_statement_names_a_test(self):
        self.assertGreater(len(self.rows), 40)
        self.assertEqual([statement for statement, shown in self.rows if not re.search(r"`\w+", shown)], [])

    def test_every_test_that_is_named_is_there(self):
        named = {name for _, shown in self.rows for name in re.findall(r"`([^`]+)`", shown)}
        self.assertEqual(named - set(existing()), set())


if __name__ == "__main__":
    unittest.main()
