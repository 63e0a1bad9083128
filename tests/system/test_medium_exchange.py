"""A copy that fails, loses its disk or is ended takes no older backup with it: the disk keeps the old pair or has the new
one, and the next start leaves these two files alone on it."""

import os
import random
import time
import unittest

from system_test import ARCHIVE_NAME, LIST_NAME, SystemTest

from program import IDOK

OLD_LINE = r"**UserProfile**\Documents\ancien.txt,32,Zip0001"
NEW_ARCHIVE = ARCHIVE_NAME + ".~new"
LIST_NAMES = (LIST_NAME + ".~part", LIST_NAME + ".~new")
OLD_NAMES = (ARCHIVE_NAME + ".~old", LIST_NAME + ".~old")


class MediumExchangeTest(SystemTest):
    def disk_with_backup(self, **properties):
        """A disk with an older backup on it; gives its root and keeps what it holds."""
        root = self.disk(**properties)
        self.write_backup([OLD_LINE], {1: {"ancien.txt": b"ancien"}})
        self.old = self.contents(root)
        return root

    def contents(self, root):
        return {name: (root / name).read_bytes() for name in self.station.medium_files("e")}

    def start_copy(self, megabytes=1):
        program = self.start()
        backup = self.open_backup(program)
        self.select(backup, self.document("nouveau.bin", random.Random(3).randbytes(megabytes * 1_000_000)))
        return program, backup

    def assert_failed(self, program, number):
        report = program.answer(IDOK, 60)
        self.assertIn("CopierUSB, Class clsCopie", report.text)
        self.assertIn(f"{self.words('Erreur nº ')}{number} ", report.text)
        self.assertEqual(program.answer(IDOK).title, "Error")
        program.window("frmBackup").wait_enabled("cmdPrecedent")

    def wait_for(self, root, names, seconds=240):
        """As soon as one of the names is seen; false when the copy was over before."""
        deadline = time.monotonic() + seconds
        has_begun = False
        while time.monotonic() < deadline:
            found = os.listdir(root)
            if any(name in found for name in names):
                return True
            has_begun = has_begun or NEW_ARCHIVE in found
            if has_begun and NEW_ARCHIVE not in found and all(name not in found for name in LIST_NAMES + OLD_NAMES):
                return False
            time.sleep(0.0005)
        self.fail(f"none of {names} within {seconds} s; seen: {os.listdir(root)}")

    def assert_whole_after_next_start(self, root):
        """The restore window opens on the disk: its rows are those of a whole pair, and nothing else is left."""
        program = self.start()
        restore = self.open_restore(program)
        self.wait_rows(restore, 1)
        path = restore.rows("lvFichiersRepertoires")[0].texts[0]
        found = self.contents(root)
        self.assertEqual(sorted(found), [ARCHIVE_NAME, LIST_NAME])
        if path.endswith("ancien.txt"):
            self.assertEqual(found, self.old)
        else:
            self.assertTrue(path.endswith("nouveau.bin"), path)
            self.assertGreater(len(found[ARCHIVE_NAME]), 900_000)
            self.assertEqual(self.check_archive_with_7zip(), 0)
        program.stop()

    def test_a_disk_without_room_for_both_keeps_the_old_backup(self):
        root = self.disk_with_backup(size_megabytes=4)
        program, backup = self.start_copy(2)
        (root / "autre.bin").write_bytes(bytes(2_500_000))
        backup.press("cmdLancer")
        self.give_new_password(program)
        self.assert_failed(program, 61)
        (root / "autre.bin").unlink()
        self.assertEqual(self.contents(root), self.old)

    def test_a_list_that_is_read_only_keeps_its_archive(self):
        root = self.disk_with_backup()
        (root / LIST_NAME).chmod(0o444)
        program, backup = self.start_copy()
        backup.press("cmdLancer")
        self.give_new_password(program)
        self.assert_failed(program, 70)
        self.assertEqual(self.contents(root), self.old)

    def test_a_disk_that_another_copy_of_the_program_is_changing_keeps_the_old_backup(self):
        root = self.disk_with_backup()
        program, backup = self.start_copy()
        # As one of another account would have it.
        program.driver.call("foreignmutex", "Global\\Backup.Medium.E")
        backup.press("cmdLancer")
        self.give_new_password(program)
        self.assert_failed(program, 70)
        self.assertEqual(self.contents(root), self.old)

    def test_a_disk_pulled_out_during_the_copy_keeps_a_whole_backup(self):
        root = self.disk_with_backup()
        program, backup = self.start_copy(8)
        backup.press("cmdLancer")
        self.give_new_password(program)
        self.assertTrue(self.wait_for(root, [NEW_ARCHIVE]))
        self.station.pull_out("e")
        report = program.answer(IDOK, 60)
        self.assertIn("CopierUSB, Class clsCopie", report.text)
        program.stop()
        self.station.plug_in("e")
        self.assert_whole_after_next_start(root)

    def kill_when_seen(self, names):
        root = self.disk_with_backup()
        program, backup = self.start_copy(8)
        backup.press("cmdLancer")
        self.give_new_password(program)
        was_seen = self.wait_for(root, names)
        program.stop()
        if not was_seen:
            self.skipTest(f"the copy was over before one of {names} was seen")
        self.assert_whole_after_next_start(root)

    def test_a_program_ended_while_it_copies_the_archive_leaves_a_whole_backup(self):
        self.kill_when_seen([NEW_ARCHIVE])

    def test_a_program_ended_when_the_list_has_come_leaves_a_whole_backup(self):
        self.kill_when_seen(LIST_NAMES)

    def test_a_program_ended_while_the_names_change_leaves_a_whole_backup(self):
        self.kill_when_seen(OLD_NAMES)

    def test_a_copy_after_one_that_was_ended_has_the_room_that_it_took(self):
        root = self.disk(size_megabytes=8)
        (root / NEW_ARCHIVE).write_bytes(bytes(6_000_000))
        self.back_up(self.document("nouveau.bin", random.Random(3).randbytes(4_000_000)))
        self.assertEqual(self.station.medium_files("e"), [ARCHIVE_NAME, LIST_NAME])

    def test_a_half_exchanged_disk_that_takes_no_writing_is_still_shown(self):
        root = self.disk_with_backup()
        (root / NEW_ARCHIVE).write_bytes(b"half")
        root.chmod(0o555)
        self.addCleanup(root.chmod, 0o755)
        program = self.start()
        restore = self.open_restore(program)
        self.wait_rows(restore, 1)
        if not (root / NEW_ARCHIVE).exists():
            self.skipTest("this account may write into read-only folders")
        self.assertIsNone(program.find_message_box())
        self.assertTrue(restore.rows("lvFichiersRepertoires")[0].texts[0].endswith("ancien.txt"))
        self.assertTrue(restore.control("cmdLancerRestauration").enabled)


if __name__ == "__main__":
    unittest.main()
