"""What the access lists that the installer writes grant to users, in the folders themselves and in what is made there."""

import re
import unittest
from pathlib import Path

SCRIPT = Path(__file__).resolve().parent.parent.parent / "packaging" / "Backup.nsi"
FULL = 0x1F01FF
READ_AND_EXECUTE = 0x1200A9
MODIFY = 0x1301FF
WRITE_DATA, ADD_FOLDER, DELETE_CHILD, DELETE, WRITE_RIGHTS = 0x2, 0x4, 0x40, 0x10000, 0xC0000


def definition(name):
    """A definition of the script with the definitions in it put in."""
    text = re.search(rf'^!define {name} "(.*)"$', SCRIPT.read_text(encoding="utf-8"), re.M).group(1)
    return re.sub(r"\$\{(\w+)\}", lambda found: definition(found.group(1)), text)


def entries(descriptor):
    """Flags, mask and trustee of each entry; all of them must be allowing ones."""
    for kind, flags, mask, trustee in re.findall(r"\((\w*);(\w*);(\w*);;;(\w+)\)", descriptor):
        assert kind == "A", descriptor
        yield set(re.findall("..", flags)), FULL if mask == "FA" else int(mask, 16), trustee


def handed_down(access_list, is_folder):
    """The entries that a file or folder made in a folder with this access list gets."""
    for flags, mask, trustee in access_list:
        if is_folder and "CI" in flags:
            yield flags - {"IO"}, mask, trustee
        elif is_folder and "OI" in flags:
            yield flags | {"IO"}, mask, trustee
        elif not is_folder and "OI" in flags:
            yield set(), mask, trustee


def granted(access_list, trustee):
    """What an object grants to a trustee."""
    mask = 0
    for flags, right, who in access_list:
        if who == trustee and "IO" not in flags:
            mask |= right
    return mask


class RightsTest(unittest.TestCase):
    def setUp(self):
        self.program = list(entries(definition("PROGRAM_RIGHTS")))
        self.content = list(entries(definition("CONTENT_RIGHTS")))
        self.work_folder = list(handed_down(self.program, is_folder=True))

    def test_administrators_own_both_and_nothing_is_inherited_from_above(self):
        for name in ("PROGRAM_RIGHTS", "CONTENT_RIGHTS"):
            self.assertRegex(definition(name), "^O:BAD:PAI")
            self.assertEqual(granted(entries(definition(name)), "BA"), FULL)

    def test_users_read_and_execute_every_file_and_change_none(self):
        for access_list in (self.program, self.content):
            self.assertEqual(granted(handed_down(access_list, is_folder=False), "BU"), READ_AND_EXECUTE)

    def test_users_put_no_file_beside_the_program_but_may_make_the_work_folder(self):
        right = granted(self.program, "BU")
        self.assertEqual(right, READ_AND_EXECUTE | ADD_FOLDER)
        self.assertEqual(right & (WRITE_DATA | DELETE_CHILD | DELETE | WRITE_RIGHTS), 0)

    def test_users_make_nothing_in_the_other_folders(self):
        self.assertEqual(granted(self.content, "BU"), READ_AND_EXECUTE)
        self.assertEqual(granted(handed_down(self.content, is_folder=True), "BU"), READ_AND_EXECUTE)

    def test_every_user_fills_and_empties_a_work_folder_that_another_one_made(self):
        right = granted(self.work_folder, "BU")
        self.assertEqual(right, READ_AND_EXECUTE | MODIFY)
        # The right with which a folder lets its files be deleted, whoever made them.
        self.assertTrue(right & DELETE_CHILD and right & WRITE_DATA and right & DELETE)

    def test_who_makes_a_file_in_the_work_folder_may_do_everything_with_it(self):
        self.assertEqual(granted(handed_down(self.work_folder, is_folder=False), "CO"), FULL)

    def test_nobody_else_is_granted_anything(self):
        for access_list in (self.program, self.content):
            self.assertLessEqual({trustee for _, _, trustee in access_list}, {"SY", "BA", "BU", "CO"})


if __name__ == "__main__":
    unittest.main()
