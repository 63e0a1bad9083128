"""The list files that are shipped are such as the program reads: named as it names them, ANSI, one path a line."""

import re
import unittest
from pathlib import Path

PROJECT = Path(__file__).resolve().parent.parent.parent
LISTS = PROJECT / "packaging" / "Fichierlst"
ENTRY = re.compile(r'([A-Z]:|\*\*UserProfile\*\*)\\[^"]*[^"\\]')

RESTORED_STORES = "\\outlookbk\\"
LOCK_FILES = (".ldb", ".laccdb", ".lock", ".lck")


def shipped_lines():
    """Each list with its lines; a list ends with a whole line."""
    for path in sorted(LISTS.rglob("*.lst")):
        text = path.read_bytes().decode("cp1252")
        assert text.endswith("\r\n"), f"{path} ends within a line"
        yield path, text.split("\r\n")[:-1]


def as_newer_windows_names(line):
    """The place of an entry; from Vista on "Application Data" is a link to where the same files lie."""
    return line.lower().replace("\\local settings\\application data\\", "\\appdata\\local\\").replace(
        "\\application data\\", "\\appdata\\roaming\\")


def names_in_program():
    sources = (PROJECT / "src" / "selection").glob("*Set*.*")
    return {name for source in sources for name in re.findall(r'L"(\w+\.lst)"', source.read_text(encoding="utf-8"))}


class ListFiles(unittest.TestCase):
    def test_every_set_has_its_list_where_the_program_looks(self):
        shipped = {path.name for path in (LISTS / "Medium").iterdir()}
        self.assertEqual(shipped, names_in_program() - {"transfert.lst"})

    def test_the_transfer_list_is_not_where_it_would_take_the_place_of_the_sets(self):
        self.assertIn("transfert.lst", names_in_program())
        self.assertTrue((LISTS / "transfert.lst").is_file())

    def test_lists_are_ansi_with_one_whole_path_a_line(self):
        for path, lines in shipped_lines():
            for line in lines:
                self.assertRegex(line, f"^{ENTRY.pattern}$", path)

    def test_no_entry_has_a_comma(self):
        # The control file ends a path at a comma: what lies behind it would not come back.
        self.assertEqual([f"{path.name}: {line}" for path, lines in shipped_lines() for line in lines if "," in line], [])

    def test_no_list_saves_the_folder_into_which_stores_are_restored(self):
        # A later restore would put an older store over today's of the same name.
        found = [path.name for path, lines in shipped_lines() for line in lines if RESTORED_STORES in line.lower()]
        self.assertEqual(found, [])

    def test_the_stores_of_a_list_come_from_one_folder(self):
        # Stores of one name from two folders would be restored over each other.
        for path, lines in shipped_lines():
            stores = [line for line in lines if line.lower().endswith(".pst")]
            self.assertLessEqual(len(stores), 1, path)

    def test_no_list_names_a_file_twice_or_a_lock(self):
        for path, lines in shipped_lines():
            places = [as_newer_windows_names(line) for line in lines]
            self.assertEqual(len(places), len(set(places)), path)
            self.assertEqual([line for line in lines if line.lower().endswith(LOCK_FILES)], [], path)


if __name__ == "__main__":
    unittest.main()
