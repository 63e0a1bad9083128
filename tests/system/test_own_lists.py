"""An installer with the lists of an IT department in the place of the examples."""

import shutil
import subprocess
import unittest

from installer_case import InstallerCase
from system_test import BUILD, PROJECT

OWN_LIST = b"C:\\Repres\\Contrats\r\n"


class OwnListsTest(InstallerCase):
    def setUp(self):
        super().setUp()
        self.scratch = BUILD / "own-lists-test"
        shutil.rmtree(self.scratch, ignore_errors=True)
        self.own = self.scratch / "lists of the firm"
        self.own.mkdir(parents=True)
        self.addCleanup(shutil.rmtree, self.scratch, ignore_errors=True)

    def build(self, *arguments):
        return subprocess.run([PROJECT / "packaging" / "build", "--output", self.scratch / "packaging", *arguments],
                              capture_output=True, text=True, check=False)

    def test_lists_of_another_folder_are_installed_instead_of_the_examples_and_removed_again(self):
        (self.own / "tarvel.lst").write_bytes(OWN_LIST)
        # It would take the place of every set.
        (self.own / "transfert.lst").write_bytes(OWN_LIST)
        (self.own / "read me.txt").write_bytes(b"no list")
        done = self.build("--lists", self.own)
        self.assertEqual(done.returncode, 0, done.stdout + done.stderr)
        shutil.copy2(self.scratch / "packaging" / "Backup-setup.exe", self.station.path(r"C:\Tools"))
        self.install()
        self.assertEqual({path.name: path.read_bytes() for path in self.lists.iterdir()}, {"tarvel.lst": OWN_LIST})
        self.uninstall()
        self.assertEqual(self.installed_files(), set())

    def test_a_folder_that_is_not_there_ends_the_build(self):
        done = self.build("--lists", self.scratch / "no such folder")
        self.assertEqual(done.returncode, 2)
        self.assertIn("--lists FOLDER", done.stdout)
        self.assertEqual(list(self.scratch.rglob("Backup-setup.exe")), [])


if __name__ == "__main__":
    unittest.main()
