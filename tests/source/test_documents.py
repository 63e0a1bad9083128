"""The files that the documents name are there, so that a reader is not sent to a door that has gone."""

import re
import unittest
from pathlib import Path

PROJECT = Path(__file__).resolve().parent.parent.parent
# Inside one room a document leaves the room's name out; where a document speaks of the sources, it leaves `src/` out.
ROOTS = (PROJECT, PROJECT / "src", PROJECT / "src" / "platform")
NAMED = re.compile(r"`((?:[\w.-]+/)*[\w.-]+\.(?:h|cpp|def|rc|py|nsi|md|cmake|toml|json|sh|txt))`")
# Made by a build or a run, or another program's.
MADE_ELSEWHERE = ("build/", "libarchive/")


def documents():
    return [PROJECT / "README.md", *sorted((PROJECT / "docs").glob("*.md")), *sorted((PROJECT / "packaging").rglob("*.md"))]


def missing_from(text, folder):
    """The named files with a folder before them that stand nowhere."""
    named = {name for name in NAMED.findall(text) if "/" in name and not name.startswith(MADE_ELSEWHERE)}
    return sorted(name for name in named if not any((root / name).exists() for root in (*ROOTS, folder)))


class DocumentsTest(unittest.TestCase):
    def test_every_file_that_a_document_names_is_there(self):
        for document in documents():
            with self.subTest(document=document.name):
                self.assertEqual(missing_from(document.read_text(encoding="utf-8"), document.parent), [])

    def test_a_file_that_has_gone_is_noticed(self):
        self.assertEqual(missing_from("see `core/Gone.h` and `core/Medium.h`, `Gone.h`", PROJECT), ["core/Gone.h"])

    def test_the_table_of_beginnings_names_files(self):
        text = (PROJECT / "docs" / "architecture.md").read_text(encoding="utf-8")
        table = text.split("## Where a change begins")[1].split("\n## ")[0]
        rows = [row for row in table.splitlines() if row.startswith("| ")][1:]
        self.assertGreater(len(rows), 15)
        for row in rows:
            self.assertTrue(NAMED.search(row), row)


if __name__ == "__main__":
    unittest.main()
