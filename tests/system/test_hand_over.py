"""From the main window into the windows that it opens, and back."""

import unittest

from burner import Burner, install_image_mastering
from surroundings import BY_NAME
from system_test import SystemTest


class HandOverTest(SystemTest):
    own_surroundings = BY_NAME["en-winxp64-65001-comma"]

    def setUp(self):
        super().setUp()
        install_image_mastering(self.station)
        self.disk("e", label="PREMIER")
        self.disk("f", label="SECOND")

    def test_quit_in_the_backup_window_ends_the_program(self):
        program = self.start()
        self.open_backup(program).press("cmdQuitter")
        self.assertEqual(program.wait_exit(), 0)

    def test_back_leads_to_an_idle_main_window_from_which_it_opens_again(self):
        program = self.start()
        for _ in range(3):
            self.open_backup(program).press("cmdPrecedent")
            main = program.main_window()
            self.assertTrue(main["cmdSortie"].enabled)
        main.press("cmdSortie")
        self.assertEqual(program.wait_exit(), 0)

    def test_main_window_cannot_be_used_or_closed_under_the_backup_window(self):
        program = self.start()
        backup = self.open_backup(program)
        main = program.find_window("frmMain")
        self.assertFalse(main.enabled)
        main.close()
        backup.press("cmdPrecedent")
        program.main_window()

    def test_backup_window_gets_the_drive_that_was_chosen(self):
        program = self.start()
        main = program.main_window()
        main.press("optDisqueAmovible")
        main.wait_enabled("cboDrive")
        main.choose("cboDrive", "F:\\")
        main.press("cmdBackup")
        backup = program.window("frmBackup")
        self.assertIn("(F:\\)", backup.chosen("cmbGraveur")[0])

    def test_restore_window_closed_leads_back_and_opens_again(self):
        program = self.start()
        main = program.main_window()
        main.press("optRestaure")
        for _ in range(2):
            program.main_window().press("cmdBackup")
            program.window("frmRestaureCD").close()
            program.main_window()
        main.press("cmdSortie")
        self.assertEqual(program.wait_exit(), 0)

    def test_disc_media_open_without_a_drive_of_their_own(self):
        Burner(self.station, "g", "cd").insert("CD-R")
        program = self.start()
        main = program.main_window()
        main.press("optCD")
        main.press("cmdBackup")
        backup = program.window("frmBackup", 60)
        # It has its title once it is set up.
        backup.wait_enabled("cmdQuitter", 60)
        self.assertIn("CD", program.window("frmBackup").title)
        backup.press("cmdQuitter")
        self.assertEqual(program.wait_exit(60), 0)


if __name__ == "__main__":
    unittest.main()
