"""The list files that are shipped are such as the program reads: named as it names them, ANSI, one path a line."""

import re
import unittest
from pathlib import Path

PROJECT = Path(__file__).resolve().parent.parent.parent
LISTS = PROJECT / "packaging" / "Fichierlst"
ENTRY = re.compile(r'"?([A-Z]:|\*\*UserProfile\*\*)\\[^"]*[^"\\]"?')


def names_in_program():
    source = (PROJECT / "src" / "selection" / "PredefinedSets.cpp").read_text(encoding="utf-8")
    return set(re.findall(r'L"(\w+\.lst)"', source))


class ListFiles(unittest.TestCase):
    def test_every_set_has_its_list_where_the_program_looks(self):
        shipped = {path.name for path in (LISTS / "Medium").iterdir()}
        self.assertEqual(shipped, names_in_program() - {"transfert.lst"})

    def test_the_transfer_list_is_not_where_it_would_take_the_place_of_the_sets(self):
        self.assertIn("transfert.lst", names_in_program())
        self.assertTrue((LISTS / "transfert.lst").is_file())

    def test_lists_are_ansi_with_one_whole_path_a_line(self):
        for path in sorted(LISTS.rglob("*.lst")):
            content = path.read_bytes()
            self.assertTrue(content.endswith(b"\r\n"), path)
            for line in content.decode("cp1252").split("\r\n")[:-1]:
                self.assertRegex(line, f"^{ENTRY.pattern}$", path)
                self.assertTrue(line.startswith('"') or "," not in line, f"{path}: {line}")


if __name__ == "__main__":
    unittest.main()
