"""Disks that come and go while the restore window is open."""

import time
import unittest

from system_test import ARCHIVE_NAME, LIST_NAME, SystemTest

from program import DBT_DEVICEARRIVAL, DBT_DEVICEREMOVECOMPLETE, IDOK

CHANGES = 500
STORM_SECONDS = 60
VK_SPACE = 0x20


class DeviceChangeTest(SystemTest):
    def medium(self, letter, lines, label):
        root = self.disk(letter, label=label)
        (root / LIST_NAME).write_bytes("".join(line + "\r\n" for line in lines).encode("cp1252"))
        (root / ARCHIVE_NAME).write_bytes(b"archive")
        return root

    def open_window(self, program):
        main = program.main_window()
        main.press("optRestaure")
        main.press("cmdBackup")
        return program.window("frmRestaureCD")

    def come(self, program, restore, letter):
        program.plug_in(letter)
        restore.device_change(DBT_DEVICEARRIVAL, letter)

    def go(self, program, restore, letter):
        program.pull_out(letter)
        restore.device_change(DBT_DEVICEREMOVECOMPLETE, letter)

    def drives(self, restore):
        return [entry[:3] for entry in restore.entries("lstDrive")]

    def wait_drives(self, restore, *roots):
        restore.program.wait(lambda: self.drives(restore) == list(roots), f"drives {roots}")

    def ticks(self, restore):
        return [row.ticked for row in restore.rows("lvFichiersRepertoires")]

    def test_a_disk_that_arrives_is_listed_and_shown_by_itself_within_half_a_second(self):
        self.medium("e", [r"C:\Donnees\a.txt,32,Zip0001"], "ARRIVE")
        program = self.start()
        program.pull_out("e")
        restore = self.open_window(program)
        self.come(program, restore, "e")
        arrived = time.monotonic()
        self.wait_rows(restore, 1)
        self.assertLess(time.monotonic() - arrived, 0.5)
        self.assertEqual(self.ticks(restore), [True])

    def test_a_disk_that_goes_takes_its_rows_with_it(self):
        self.medium("e", [r"C:\Donnees\a.txt,32,Zip0001"], "PART")
        self.disk("f", label="RESTE")
        program = self.start()
        restore = self.open_restore(program)
        self.wait_rows(restore, 1)
        self.go(program, restore, "e")
        self.wait_drives(restore, "F:\\")
        self.wait_rows(restore, 2)
        self.assertFalse(restore.control("cmdLancerRestauration").enabled)

    def test_ticks_stay_while_another_disk_comes_and_goes(self):
        self.medium("e", [rf"C:\Donnees\{number}.txt,32,Zip{number:04d}" for number in range(1, 4)], "TENU")
        self.disk("f", label="PASSAGER")
        program = self.start()
        program.pull_out("f")
        restore = self.open_restore(program)
        self.wait_rows(restore, 3)
        self.untick_first(restore)
        self.come(program, restore, "f")
        self.wait_drives(restore, "E:\\", "F:\\")
        self.assertEqual(self.ticks(restore), [False, True, True])
        self.go(program, restore, "f")
        self.wait_drives(restore, "E:\\")
        self.assertEqual(self.ticks(restore), [False, True, True])

    def test_a_disk_that_blinks_comes_back_with_its_ticks(self):
        self.medium("e", [rf"C:\Donnees\{number}.txt,32,Zip{number:04d}" for number in range(1, 4)], "CLIGNOTE")
        program = self.start()
        restore = self.open_restore(program)
        self.wait_rows(restore, 3)
        self.untick_first(restore)
        self.go(program, restore, "e")
        self.wait_rows(restore, 2)
        self.come(program, restore, "e")
        self.wait_rows(restore, 3)
        self.assertEqual(self.ticks(restore), [False, True, True])

    def go_under_the_password(self, label):
        """A medium of one row goes while its password is asked for."""
        root = self.medium("e", [r"C:\Donnees\a.txt,32,Zip0001"], label)
        program = self.start()
        restore = self.open_restore(program)
        self.wait_rows(restore, 1)
        restore.press("cmdLancerRestauration")
        program.window("frmMotPasse")
        self.go(program, restore, "e")
        return root, program, restore

    def test_a_disk_that_goes_while_the_password_is_asked_for_means_back_to_the_list(self):
        _, program, restore = self.go_under_the_password("PART")
        self.give_password(program)
        restore = program.window("frmRestaureCD")
        restore.wait_enabled("lstDrive")
        self.wait_rows(restore, 2)
        self.assertFalse(restore.control("cmdLancerRestauration").enabled)
        self.assertIsNone(program.find_message_box())
        self.assert_usable_to_the_end(program, restore)

    def test_another_medium_that_comes_while_the_password_is_asked_for_is_shown_and_not_restored(self):
        root, program, restore = self.go_under_the_password("PREMIER")
        (root / LIST_NAME).write_bytes(b"C:\\Donnees\\b.txt,32,Zip0001\r\nC:\\Donnees\\c.txt,32,Zip0002\r\n")
        self.come(program, restore, "e")
        self.give_password(program)
        restore = program.window("frmRestaureCD")
        restore.wait_enabled("lstDrive")
        self.wait_rows(restore, 2)
        self.assertEqual([row.texts[0] for row in restore.rows("lvFichiersRepertoires")],
                         [r"C:\Donnees\b.txt", r"C:\Donnees\c.txt"])
        self.assertIsNone(program.find_message_box())
        self.assertFalse(self.station.path(r"C:\Donnees").exists())
        self.assert_usable_to_the_end(program, restore)

    def test_a_disk_that_blinks_while_the_password_is_asked_for_is_restored_with_its_ticks(self):
        self.disk("e", label="CLIGNOTE")
        paths = [self.document(f"f{number}.txt", b"sauvegarde") for number in range(2)]
        self.back_up(*paths)
        for path in paths:
            self.station.path(path).write_bytes(b"plus recent")
        program = self.start()
        restore = self.open_restore(program)
        self.wait_rows(restore, 2)
        self.untick_first(restore)
        restore.press("cmdLancerRestauration")
        program.window("frmMotPasse")
        self.go(program, restore, "e")
        self.come(program, restore, "e")
        self.give_password(program)
        program.answer(IDOK, 60)
        self.assertEqual(program.wait_exit(), 0)
        self.assertEqual([self.station.path(path).read_bytes() for path in paths], [b"plus recent", b"sauvegarde"])

    def assert_usable_to_the_end(self, program, restore):
        restore.press("cmdFermer")
        program.main_window().press("cmdSortie")
        self.assertEqual(program.wait_exit(), 0)

    def untick_first(self, restore):
        restore.key("lvFichiersRepertoires", 0x24)  # Home
        restore.key("lvFichiersRepertoires", VK_SPACE)
        restore.program.wait(lambda: not self.ticks(restore)[0], "the first row without its tick")

    def test_500_changes_in_a_minute_leave_the_lists_right_and_nothing_behind(self):
        self.medium("e", [rf"C:\Donnees\{number}.txt,32,Zip{number:04d}" for number in range(1, 1001)], "TENU")
        self.disk("f", label="PASSAGER")
        program = self.start()
        program.pull_out("f")
        restore = self.open_restore(program)
        self.wait_rows(restore, 1000)
        restore.press("cmdLancerRestauration")
        program.window("frmMotPasse").press("cmdCancel")
        program.window("frmRestaureCD")

        def storm():
            started = time.monotonic()
            for change in range(CHANGES):
                (self.come if change % 2 == 0 else self.go)(program, restore, "f")
                if change % 50 == 10:
                    restore.choose("lstDrive", 0)
                if change % 50 == 20:
                    restore.press("cmdToutDeselectionner")
                    restore.press("cmdToutSelectionner")
                if change % 50 == 30:
                    restore.press("cmdLancerRestauration")
                if change % 50 == 40:
                    program.window("frmMotPasse").press("cmdCancel")
                    program.window("frmRestaureCD")
            seconds = time.monotonic() - started
            self.wait_drives(restore, "E:\\")
            self.wait_rows(restore, 1000)
            self.assertTrue(all(self.ticks(restore)))
            self.assertIsNone(program.find_message_box())
            self.assertLess(seconds, STORM_SECONDS)

        self.assert_a_round_leaves_nothing(program, storm)
        restore.press("cmdFermer")
        program.main_window().press("cmdSortie")
        self.assertEqual(program.wait_exit(), 0)

    def test_during_the_copy_the_lists_do_not_move(self):
        self.disk("e", label="SAUVEGARDE")
        paths = [self.document(f"f{number}.txt", b"contenu") for number in range(40)]
        self.back_up(*paths)
        self.disk("f", label="PASSAGER")
        program = self.start()
        program.pull_out("f")
        restore = self.open_restore(program)
        self.wait_rows(restore, 40)
        restore.press("cmdLancerRestauration")
        self.give_password(program)
        program.wait(lambda: not restore.control("lstDrive").enabled or program.find_message_box(), "the copy", 60)
        self.come(program, restore, "f")
        self.assertEqual(self.drives(restore), ["E:\\"])
        program.answer(IDOK, 120)
        self.assertEqual(program.wait_exit(), 0)


if __name__ == "__main__":
    unittest.main()
