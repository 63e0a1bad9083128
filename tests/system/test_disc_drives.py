"""What the shipped program shows when drives behave as real ones do."""

import os
import time
import unittest

from program import IDOK
from test_disc_backup import DiscTest


class DriveTest(DiscTest):
    def test_a_start_after_a_stop_waits_for_the_drive_and_then_writes_the_backup(self):
        self.dvd.insert("DVD+RW")
        self.dvd.set(write_milliseconds=6000, stop_milliseconds=6000)
        program, backup = self.start_burn("DVD+RW")
        program.wait(lambda: backup.progress("pbProgressTotal") >= 20, "20 %", 60)
        backup.press("cmdStopWrite")
        backup.wait_enabled("cmdPrecedent")
        self.assertFalse(backup.control("cmdLancer").enabled)
        self.dvd.set(write_milliseconds=0)
        backup.wait_enabled("cmdLancer", 60)
        # What was cut off cannot be added to: the disc is erased first.
        backup.press("cmdEffacerDisque")
        program.window("frmEffacerCDRW").press("cmdEffacerCD")
        program.answer(IDOK, 60)
        backup = program.window("frmBackup")
        backup.wait_enabled("cmdLancer", 60).enabled
        backup.press("cmdLancer")
        self.give_new_password(program)
        self.assertIn(self.end_text(), program.answer(IDOK, 120).text)
        self.assertEqual(program.wait_exit(), 0)
        self.assertGreater((self.dvd.image).stat().st_size, 200_000)

    def test_a_dvd_plus_rw_keeps_its_files(self):
        self.dvd.insert("DVD+RW")
        for turn in range(2):
            program, _ = self.start_burn("DVD+RW", self.document(f"lettre{turn}.txt", os.urandom(200_000)))
            self.assertIn(self.end_text(), program.answer(IDOK, 120).text)
            self.assertEqual(program.wait_exit(), 0)
            program.stop()
            deadline = time.monotonic() + 60
            while self.dvd.disc_settings().get("content") != "shown" and time.monotonic() < deadline:
                time.sleep(0.1)
        # The second backup follows the first on the disc.
        self.assertGreater(self.dvd.image.stat().st_size, 2 * 200_000)

    def test_a_dvd_plus_rw_that_cannot_be_added_to_is_kept_and_erase_is_named(self):
        self.dvd.insert("DVD+RW")
        self.dvd.image.write_bytes(b"x" * 3_000_000)
        program, backup = self.start_burn("DVD+RW")
        box = program.answer(IDOK, 60)
        self.assertIn(self.words("Effacez-le avec le bouton « Effacer le disque... », ou insérez un disque vierge."), box.text)
        backup.wait_enabled("cmdPrecedent")
        self.assertEqual(self.dvd.image.read_bytes(), b"x" * 3_000_000)
        self.leave(program, backup)

    def test_the_cross_is_refused_during_a_burn(self):
        self.cd.insert("CD-R")
        self.cd.set(write_milliseconds=4000)
        program, backup = self.start_burn()
        program.wait(lambda: backup.progress("pbProgressTotal") >= 10, "10 %", 60)
        backup.close()
        self.assertIn(self.end_text(), program.answer(IDOK, 120).text)
        self.assertEqual(program.wait_exit(), 0)
        self.assertEqual(self.cd.disc_settings()["writes"], "1")

    def test_two_wrong_discs_bring_one_box_at_a_time(self):
        program = self.start()
        backup = self.open_disc_backup(program, "CD-R")
        self.cd.insert("DVD+R")
        program.message_box(30)
        self.cd.insert("DVD-R")
        # By the time that the window answers with the second disc it has also done what it does about it.
        program.wait(lambda: backup.panels("stBarDataWriter")[0] == "DVD-R", "the second disc", 60)
        boxes = [window for window in program.windows() if window.title == self.words("Erreur format de disque")]
        self.assertEqual(len(boxes), 1)
        program.answer(IDOK)
        self.assertEqual(program.answer(IDOK).text, self.wrong_kind(inserted="DVD-R"))
        self.leave(program, backup)

    def test_an_empty_drive_has_no_kind_and_is_unknown(self):
        program = self.start()
        backup = self.open_disc_backup(program, "CD-R")
        backup.press("cmdInfoDisque")
        information = program.window("frmInfoDisque")
        self.assertEqual([information.text(name) for name in ("lblTypeCD", "lblStatutCD", "lblEspaceUtilise",
                                                              "lblEstimEspaceUtilise")],
                         ["", self.words("Inconnu"), self.nothing_used(), self.nothing_used()])
        information.press("cmdOK")
        self.leave(program, program.window("frmBackup"))

    def test_a_failed_erase_can_be_left_by_its_close_button(self):
        self.cd.insert("CD-RW", state="closed", used=10_485_760)
        self.cd.set(erase_code="0x80AA0905")
        program = self.start()
        backup = self.open_disc_backup(program, "CD-RW")
        backup.press("cmdEffacerDisque")
        erase = program.window("frmEffacerCDRW")
        erase.press("cmdEffacerCD")
        program.answer(IDOK, 30)
        program.answer(IDOK, 30)
        erase.press("cmdFermer")
        self.leave(program, program.window("frmBackup"))

    def test_a_writer_that_is_plugged_in_while_the_window_is_open_is_listed(self):
        self.cd.set(writes="")
        second = self.dvd
        second.set(writes="dvd cd")
        self.cd.insert("CD-R")
        program = self.start()
        backup = self.open_disc_backup(program, "CD-R")
        self.assertEqual(len(backup.entries("cmbGraveur")), 1)
        outside = self.dvd.folder.parent.parent / "unplugged"
        self.dvd.folder.rename(outside)
        program.wait(lambda: not backup.entries("cmbGraveur"), "an empty list", 30)
        outside.rename(self.dvd.folder)
        program.wait(lambda: len(backup.entries("cmbGraveur")) == 1, "the writer again", 30)
        self.leave(program, backup)


if __name__ == "__main__":
    unittest.main()
