"""The folder in which archives are opened, whatever stands in its place."""

import unittest

from system_test import SystemTest

from program import IDOK


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
        restore = program.wait(lambda: program.find_window("frmRestaureCD"), "the restore window")
        if program.find_message_box():
            program.answer(IDOK)
        restore.wait_enabled("cmdFermer")
        restore.press("cmdFermer")
        program.stop()
        self.assertEqual((elsewhere / "dossier" / "these.doc").read_bytes(), b"irremplacable")


class PasswordWithABlankTest(SystemTest):
    def test_it_breaks_the_command_line_as_it_always_did(self):
        """Media that were made so are in the field: the archive has the part before the blank as its password."""
        self.disk()
        self.back_up(self.document("a.txt", b"contenu"), password="Abc1 defgh")
        self.assertEqual(self.check_archive_with_7zz("Abc1"), 0)
        self.assertNotEqual(self.check_archive_with_7zz("Abc1 defgh"), 0)
        self.assertEqual(self.inner_archives(password="Abc1"), {"Zip0001.zip": {"a.txt": b"contenu"}})


class DriveRootTest(SystemTest):
    def test_a_whole_drive_whose_path_ends_in_a_backslash_is_packed(self):
        self.disk()
        data = self.station.add_drive("d", kind="fixed")
        (data / "dossier").mkdir()
        (data / "dossier" / "a.txt").write_bytes(b"sur D")
        self.back_up("D:\\")
        packed = self.inner_archives()["Zip0001.zip"]
        self.assertIn(b"sur D", packed.values(), packed)


if __name__ == "__main__":
    unittest.main()
