"""Who may do what in the installed folders, read back from their security descriptors.

Wine keeps of a descriptor what fits into a file's mode: what everybody may do. The owner that it names is always the
account that runs it, the group of the users is dropped, and so is what a folder hands down to what is made in it later.
What the descriptors grant to the users is calculated in tests/source/test_rights.py; that Windows does as they say is
read on a real one by the kit.
"""

import re
import unittest

from driver import Driver
from installer_case import InstallerCase

READ_AND_EXECUTE = 0x1200A9
MODIFY = 0x1301FF
EVERYBODY = "WD"


class InstallerRightsTest(InstallerCase):
    def prepare(self, *names):
        """Folders that somebody made before, in which everybody may do everything."""
        for name in names:
            folder = self.folder / name
            folder.mkdir(parents=True, exist_ok=True)
            folder.chmod(0o777)

    def rights(self, *names):
        """The right of everybody in each of the files and folders, as its descriptor says."""
        driver = Driver(self.station)
        self.addCleanup(driver.stop)
        return {name: self.right_of_everybody(driver.call("rights", rf"C:\Valcoreaux\Backup{name}")[0][0])
                for name in names}

    def right_of_everybody(self, descriptor):
        right = 0
        for kind, mask, trustee in re.findall(r"\((\w+);[^;]*;(\w+);[^;]*;[^;]*;([\w-]+)\)", descriptor):
            self.assertEqual(kind, "A", descriptor)
            if trustee == EVERYBODY:
                right |= int(mask, 16)
        return right

    def test_folders_that_somebody_had_opened_to_everybody_are_closed_again(self):
        self.prepare("", "LICENSES", "Fichierlst")
        self.assertEqual(self.rights(""), {"": MODIFY})
        self.install()
        places = ("", r"\LICENSES", r"\Fichierlst", r"\Backup.exe", r"\7Za.exe", r"\LICENSES\GPL-3.0.txt")
        self.assertEqual(self.rights(*places), dict.fromkeys(places, READ_AND_EXECUTE))


if __name__ == "__main__":
    unittest.main()
