"""The check's window, driven from outside: what an agent does with a medium, good or bad."""

import random
import unittest

from check_test import PASSWORD, zip_of
from check_window_test import SECONDS, CheckWindowTest
from system_test import ARCHIVE_NAME, IDOK, LIST_NAME

from program import IDNO, IDYES


class ShippedCheckWindowTest(CheckWindowTest):
    def large_medium(self, megabytes):
        """A medium of one large file that cannot be packed, and a small one behind it."""
        content = random.Random(3).randbytes(1 << 20) * megabytes
        self.write_list(r"C:\grand.bin,32,Zip0001", r"C:\petit.txt,32,Zip0002")
        self.write_archive(zip_of({"grand.bin": content}), zip_of({"petit.txt": b"petit"}))

    def hold(self, operation, part, after_bytes=0):
        """Makes the work stand still in the middle, however fast the machine is."""
        self.machine.hold(operation, part, after_bytes)
        self.addCleanup(self.machine.go_on)

    def wait_held(self):
        self.program.wait(self.machine.is_met, "the work in the middle", SECONDS, pause_seconds=0.01)

    def damage_second_item(self):
        place, length = self.data_place("Zip0002.zip")
        self.change(place + length // 2)

    def test_a_good_medium_is_good_and_its_report_is_saved(self):
        self.good_medium()
        window = self.open()
        self.program.wait(lambda: window.row_count("Items") == 3, "the rows of the list")
        self.assertEqual([row.texts[1] for row in window.rows("Items")],
                         [r"C:\Docs\budget.xls", r"C:\Docs\Clients", r"C:\Docs\fin.txt"])
        self.assertEqual(self.results(window), ["Not checked"] * 3)
        box = self.check_to_end(window)
        self.assertEqual((box.icon, box.title), ("information", "Check a backup"))
        self.assertIn("The backup is good", box.text)
        self.assertEqual(self.results(window), ["Whole"] * 3)
        window.press("SaveReport")
        self.choose_new_file(r"D:\rapport.txt")
        self.assertIn(r"D:\rapport.txt", self.program.answer(IDOK, SECONDS).text)
        self.assertIn("The backup is good", (self.target / "rapport.txt").read_text(encoding="utf-8-sig"))
        window.press("Close")
        self.assertEqual(self.program.wait_exit(), 0)
        self.assertEqual(sorted(path.name for path in self.medium.iterdir()), [ARCHIVE_NAME, LIST_NAME])

    def test_a_wrong_password_is_told_and_the_right_one_goes_on(self):
        self.good_medium()
        window = self.open()
        box = self.check_to_end(window, "Valcoreaux2")
        self.assertIn("The password does not open this backup", box.text)
        self.assertEqual(window.progress("Progress"), 0, "told before anything else is read")
        self.assertEqual(window.text("Verdict"), box.text)
        self.assertIn("The backup is good", self.check_to_end(window).text)

    def test_a_damaged_item_is_told_with_its_details_and_the_others_are_recovered(self):
        self.good_medium()
        self.damage_second_item()
        window = self.open()
        box = self.check_to_end(window)
        self.assertEqual((box.icon, self.results(window)), ("critical", ["Whole", "Damaged", "Whole"]))
        window.click_row("Items", 1)
        self.program.wait(lambda: "Damaged on the medium" in window.text("Details"), "the details of the item")
        window.press("Recover")
        self.choose_folder("D:\\")
        self.program.answer(IDOK, SECONDS)
        found = {str(path.relative_to(self.target)): path.read_bytes() for path in self.target.rglob("*") if path.is_file()}
        for name in ("C/Docs/budget.xls", "C/Docs/fin.txt"):
            self.assertEqual(found.get(name), self.files[name], name)

    def test_only_ticked_items_are_recovered(self):
        self.good_medium()
        window = self.open()
        window.press("DeselectAll")
        self.assertFalse(window.control("Recover").enabled)
        window.click_row("Items", 2, "tick")
        self.program.wait(lambda: window.control("Recover").enabled, "Recover enabled")
        window.set_text("Password", "Valcoreaux1")
        window.press("Recover")
        self.choose_folder("D:\\")
        self.assertIn("Everything was recovered", self.program.answer(IDOK, SECONDS).text)
        found = [str(path.relative_to(self.target)) for path in self.target.rglob("*") if path.is_file()]
        self.assertEqual(found, ["C/Docs/fin.txt"])
        self.assertEqual(self.results(window), ["Not checked", "Not checked", "Whole"])

    def test_nothing_is_recovered_onto_the_medium(self):
        self.good_medium()
        window = self.open()
        window.set_text("Password", "Valcoreaux1")
        window.press("Recover")
        self.choose_folder("E:\\")
        self.assertIn("Nothing is written to the medium", self.program.answer(IDOK, SECONDS).text)
        self.assertEqual(sorted(path.name for path in self.medium.iterdir()), [ARCHIVE_NAME, LIST_NAME])

    def test_a_copied_medium_is_browsed_for(self):
        self.good_medium()
        self.put_small_archive_aside()
        window = self.open()
        window.press("Browse")
        self.choose_folder(r"D:\copie")
        self.program.wait(lambda: window.chosen("Places") == [r"D:\copie"], "the copy chosen", SECONDS)
        self.wait_idle(window)
        self.assertIn("The backup is good", self.check_to_end(window).text)

    def test_cancel_ends_the_item_at_hand_and_leaves_nothing_that_looks_whole(self):
        self.large_medium(8)
        window = self.open()
        window.set_text("Password", PASSWORD)
        self.hold("write", "grand.bin", 4 << 20)
        window.press("Recover")
        self.choose_folder("D:\\")
        self.wait_held()
        window.press("Cancel")
        self.machine.go_on()
        self.program.wait(lambda: window.control("Close").visible, "an idle window", SECONDS, pause_seconds=0.01)
        self.assertEqual(window.text("Verdict"), "The work was stopped before its end.")
        # Where the disk hangs, the window does not wait for what was written last.
        self.program.wait(lambda: not list((self.target / "C").iterdir()), "no file of this item and of the one behind it",
                          SECONDS)

    def test_closing_while_it_works_is_asked_about(self):
        self.large_medium(8)
        window = self.open()
        self.hold("read", ARCHIVE_NAME)
        self.start_check(window)
        self.wait_held()
        window.close()
        self.assertIn("Do you want to stop it", self.program.answer(IDNO, SECONDS).text)
        window.close()
        self.program.answer(IDYES, SECONDS)
        self.machine.go_on()
        self.assertEqual(self.program.wait_exit(SECONDS), 0)

    def test_the_medium_that_goes_ends_the_check_with_a_verdict(self):
        self.large_medium(32)
        window = self.open()
        # Slow enough that half a minute is left when there is some progress.
        self.machine.slow_reads(ARCHIVE_NAME, 250)
        self.addCleanup(self.machine.go_on)
        self.start_check(window)
        self.program.wait(lambda: window.progress("Progress") > 20, "some progress", SECONDS, pause_seconds=0.01)
        self.hold("read", ARCHIVE_NAME)
        self.wait_held()
        # What a file system without its device answers: the file ends.
        with open(self.archive(), "r+b") as archive:
            archive.truncate(1000)
        self.machine.go_on()
        box = self.program.answer(IDOK, SECONDS)
        self.assertNotEqual(box.icon, "information")
        self.assertNotIn("is good", box.text)

    def test_a_hundred_thousand_rows_are_shown_soon(self):
        self.good_medium()
        rows = [rf"C:\Docs\Client {number}.doc,32,Zip{number}" for number in range(1, 100_001)]
        self.write_list(*rows)
        window = self.open(is_chosen=False)
        self.program.wait(lambda: window.row_count("Items") == 100_000, "all rows", SECONDS, pause_seconds=0.01)
        print(f"\n   100,000 rows after {self.processor_seconds():.1f} s of the processor; "
              f"private bytes now and at most {self.program.usage()[:2]}")
        self.assertLess(self.processor_seconds(), 2)


if __name__ == "__main__":
    unittest.main()
