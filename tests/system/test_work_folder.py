"""The folder in which archives are opened, whatever stands in its place."""

import unittest

from system_test import SystemTest


class WorkFolderTest(SystemTest):
    def test_of_a_link_in_its_place_nothing_is_lost_that_it_leads_to(self):
        self.disk()
        elsewhere = self.station.path(r"C:\Precieux")
        (elsewhere / "dossier").mkdir(parents=True)
        (elsewhere / "dossier" / "these.doc").write_bytes(b"irremplacable")
        link = self.station.path(self.station.program_folder) / "zip"
        link.symlink_to(elsewhere)
        program = self.start()
        main = program.main_window()
        main.press("optRestaure")
        main.press("cmdBackup")
        # Where the system cannot remove the link, that is told; what it leads to stays either way.
        program.wait(lambda: program.find_message_box() or program.find_window("frmRestaureCD", enabled=True),
                     "the restore window or a report")
        program.stop()
        self.assertEqual((elsewhere / "dossier" / "these.doc").read_bytes(), b"irremplacable")


class PasswordWithABlankTest(SystemTest):
    def test_it_breaks_the_command_line_as_it_always_did(self):
        """Media that were made so are in the field: the archive has the part before the blank as its password."""
        self.disk()
        self.back_up(self.document("a.txt", b"contenu"), password="Abc1 defgh")
        self.assertEqual(self.check_archive_with_7zip("Abc1"), 0)
        self.assertNotEqual(self.check_archive_with_7zip("Abc1 defgh"), 0)
        self.assertEqual(self.inner_archives(password="Abc1"), {"Zip0001.zip": {"a.txt": b"contenu"}})


if __name__ == "__main__":
    unittest.main()
