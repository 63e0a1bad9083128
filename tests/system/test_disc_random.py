"""Random users on random drives, with the shipped program: whatever is pressed and whatever the drive does, the window goes
on answering, and a disc that is called good is good.

The short form takes a few seeds of its own. More: DISC_RUNS=200 in the environment; one again: DISC_SEED=4711, which is
printed by a run that fails."""

import os
import random
import subprocess
import tempfile
import time
import unittest
from pathlib import Path

from program import IDCANCEL, IDOK, IDYES, DriverError, NotSeen
from system_test import ARCHIVE_NAME, LIST_NAME
from test_disc_backup import DiscTest

LONGEST_SILENCE = 5
ACTIONS = 9
CD_KINDS = ("CD-R", "CD-RW", "CD-RW", "CD-ROM", "DVD+R")
DVD_KINDS = ("DVD+R", "DVD+RW", "DVD+RW", "DVD-RAM", "DVD-RW", "DVD-R", "CD-R")
STATES = ("blank", "blank", "blank", "blank", "closed", "damaged", "protected", "final session")


class RandomUser:
    """One run: a program, a drive and a user who presses what can be pressed."""

    def __init__(self, test, seed):
        self.test = test
        self.random = random.Random(seed)
        self.is_dvd = self.random.random() < 0.5
        self.kind = "DVD+R" if self.is_dvd else "CD-R"
        self.drive = test.writer(self.kind)
        self.history = []
        self.successes = 0

    def note(self, text):
        self.history.append(text)

    def arrange_drive(self):
        roll = self.random.random
        self.drive.set(write_milliseconds=self.random.choice((0, 300, 1500)),
                       stop_milliseconds=self.random.choice((0, 500, 2000)),
                       ready_milliseconds=self.random.choice((0, 300, 2000)),
                       answer_milliseconds=self.random.choice((0, 1, 30)),
                       quick_erase_milliseconds=self.random.choice((0, 800)),
                       fail_at=self.random.choice((5, 50, 99)) if roll() < 0.2 else -1,
                       eject_at=self.random.choice((10, 60)) if roll() < 0.1 else -1,
                       random_write="no" if roll() < 0.2 else "yes", busy="no")

    def insert(self):
        kind = self.random.choice(DVD_KINDS if self.is_dvd else CD_KINDS)
        state = "closed" if kind.endswith("ROM") else self.random.choice(STATES)
        self.note(f"insert {kind} {state}")
        if self.drive.disc.exists():
            self.drive.take_out()
        self.drive.insert(kind, state=state, used=0 if state == "blank" else 40_960_000)

    def run(self):
        self.arrange_drive()
        self.insert()
        self.program = self.test.start()
        self.program.main_window(90)
        self.open_backup()
        for _ in range(ACTIONS):
            self.random.choice((self.start, self.start, self.start, self.stop, self.eject, self.insert, self.insert,
                                self.hold, self.erase, self.back, self.cross, self.wait))()
            self.settle()
            if self.program.exit_code() is not None:
                break
        self.end()

    def backup(self):
        return self.program.find_window("frmBackup", enabled=True)

    def pressed(self, window, name):
        """Presses a control when a person could."""
        try:
            control = window.control(name)
            if not (control.enabled and control.visible):
                return False
            self.program.driver.call("click", control.handle)
            self.note(f"press {name}")
            return True
        except (DriverError, NotSeen, LookupError):
            return False

    def open_backup(self):
        main = self.program.find_window("frmMain", enabled=True)
        if not main:
            return
        self.pressed(main, "optDVD" if self.is_dvd else "optCD")
        self.pressed(main, "cmdBackup")
        self.program.wait(lambda: self.answer_box() or self.backup(), "the backup window", 90)
        self.settle()
        backup = self.backup()
        if backup and backup.row_count("lvFichRep") == 0:
            try:
                backup.wait_enabled("lvFichRep", 60)
                backup.drop("lvFichRep", self.test.document("lettre.txt", os.urandom(300_000)))
            except (DriverError, NotSeen):
                pass

    def start(self):
        backup = self.backup()
        if not backup or not self.pressed(backup, "cmdLancer"):
            return
        dialog = self.program.wait(lambda: self.answer_box() or self.program.find_window("frmMotPasse", enabled=True)
                                   or self.backup(), "the password", 30)
        if dialog is True or "frmMotPasse" not in dialog.forms:
            return
        if self.random.random() < 0.15:
            dialog.close()
        else:
            self.test.give_new_password(self.program)

    def stop(self):
        backup = self.backup()
        if backup:
            self.pressed(backup, "cmdStopWrite")

    def eject(self):
        if self.drive.disc.exists():
            self.note("eject")
            self.drive.take_out()

    def hold(self):
        is_held = self.random.random() < 0.5
        self.note("held" if is_held else "free")
        self.drive.set(busy="yes" if is_held else "no")

    def erase(self):
        backup = self.backup()
        if not backup or not self.pressed(backup, "cmdEffacerDisque"):
            return
        erase = self.program.wait(lambda: self.answer_box() or self.program.find_window("frmEffacerCDRW", enabled=True)
                                  or self.backup(), "the erase window", 30)
        if erase is True or "frmEffacerCDRW" not in erase.forms:
            return
        self.pressed(erase, "cmdEffacerCD")
        deadline = time.monotonic() + 60
        while self.program.find_window("frmEffacerCDRW") and time.monotonic() < deadline:
            if not self.answer_box():
                window = self.program.find_window("frmEffacerCDRW", enabled=True)
                if window:
                    self.pressed(window, "cmdFermer")
            self.check_answers()
            time.sleep(0.1)
        self.test.assertIsNone(self.program.find_window("frmEffacerCDRW"), "the erase window does not end")

    def back(self):
        backup = self.backup()
        if backup and self.pressed(backup, "cmdPrecedent"):
            self.program.wait(lambda: self.answer_box() or self.program.find_window("frmMain", enabled=True),
                              "the main window", 60)
            self.open_backup()

    def cross(self):
        backup = self.backup()
        if backup:
            self.note("cross")
            backup.close()
            time.sleep(0.2)
            self.settle()
            self.open_backup()

    def wait(self):
        time.sleep(self.random.choice((0.2, 1.0, 2.5)))

    def settle(self):
        """Reads and closes the boxes that are open."""
        for _ in range(20):
            self.check_answers()
            if not self.answer_box():
                return
        self.test.fail(f"boxes without end: {self.program.describe()}")

    def answer_box(self):
        if self.program.exit_code() is not None:
            return False
        try:
            box = self.program.find_message_box()
            if not box:
                return False
            self.note(f"box {box.text[:60]!r}")
            if self.test.end_text in box.text:
                self.successes += 1
                self.check_disc()
            self.program.answer(next(button for button in (IDOK, IDYES, IDCANCEL) if button in box.buttons))
        except (DriverError, NotSeen):
            # It went by itself, with its window.
            pass
        return True

    def check_answers(self):
        """No window of the program is silent for long."""
        start = time.monotonic()
        while True:
            try:
                for window in self.program.windows():
                    self.program.driver._call_once("send", window.handle, 0, 0, 0)
                return
            except DriverError as failure:
                if str(failure) != "busy":
                    return
                self.test.assertLess(time.monotonic() - start, LONGEST_SILENCE, "the window does not answer")

    def check_disc(self):
        """What was called good is read back by other tools, byte by byte."""
        image = next(path for path in (self.drive.image, self.drive.folder / "outside" / "disc.iso",
                                       self.drive.folder / "ejected" / "disc.iso") if path.exists())
        for tool in (["7zz", "x", "-y"], ["xorriso", "-osirrox", "on"]):
            target = Path(tempfile.mkdtemp(dir=self.test.station.prefix)) / "read"
            by_7z = tool[0] == "7zz"
            command = [*tool, f"-o{target}", str(image)] if by_7z else [*tool, "-indev", str(image), "-extract", "/",
                                                                        str(target)]
            subprocess.run(command, check=True, capture_output=True)
            for name in (LIST_NAME, ARCHIVE_NAME):
                self.test.assertEqual((target / name).read_bytes(), self.test.work_file(name).read_bytes(),
                                      f"{name} read by {tool[0]}")
            subprocess.run(["chmod", "-R", "u+w", str(target)], check=True)

    def end(self):
        self.drive.set(busy="no", fail_at=-1, eject_at=-1)
        deadline = time.monotonic() + 90
        while self.program.exit_code() is None and time.monotonic() < deadline:
            self.settle()
            for form, buttons in (("frmBackup", ("cmdStopWrite", "cmdQuitter")), ("frmMotPasse", ("cmdCancel",)),
                                  ("frmMain", ("cmdSortie",))):
                window = self.program.find_window(form, enabled=True)
                if window:
                    for name in buttons:
                        self.pressed(window, name)
            time.sleep(0.2)
        self.test.assertEqual(self.program.exit_code(), 0, self.program.describe())
        self.program.stop()
        left = [name for name in running_programs(self.test.station.prefix) if name in ("Backup.exe", "7Za.exe")]
        self.test.assertEqual(left, [], "processes that are left")


def running_programs(prefix):
    """The names of the Windows programs that run on a workstation."""
    found = []
    for process in Path("/proc").iterdir():
        if not process.name.isdigit():
            continue
        try:
            environment = (process / "environ").read_bytes()
            command = (process / "cmdline").read_bytes().split(b"\0")[0].decode(errors="replace")
        except OSError:
            continue
        if f"WINEPREFIX={prefix}\0".encode() in environment:
            found.append(command.replace("/", "\\").rsplit("\\", 1)[-1])
    return found


class RandomDriveTest(DiscTest):
    def test_random_users_on_random_drives(self):
        first = os.environ.get("DISC_SEED")
        runs = int(os.environ.get("DISC_RUNS", "1" if first else "0"))
        if runs == 0:
            self.skipTest("a campaign of its own: DISC_RUNS=200 runs it, DISC_SEED=N repeats one run")
        seeds = [int(first)] if first else range(1000, 1000 + runs)
        good = 0
        for seed in seeds:
            user = RandomUser(self, seed)
            try:
                user.run()
            except Exception as failure:
                raise AssertionError(f"again with DISC_SEED={seed}; steps: {user.history}; {failure}") from failure
            good += user.successes
            if runs > 1:
                print(f"seed {seed}: {len(user.history)} steps, {user.successes} discs called good", flush=True)
        if runs > 1:
            print(f"{len(seeds)} runs, {good} discs read back")


class HandlesTest(DiscTest):
    def test_windows_on_drives_that_misbehave_leave_no_handle(self):
        self.cd.insert("CD-RW")
        program = self.start()
        program.main_window(90)

        def visit(busy):
            self.cd.set(busy=busy)
            backup = self.open_disc_backup(program, "CD-RW")
            backup.press("cmdPrecedent")
            program.window("frmMain")

        def visit_both(times):
            for _ in range(times):
                visit("no")
                visit("yes")

        # The first ones make what the process keeps anyway.
        visit_both(2)
        before = program.usage()[2]
        visit_both(4)
        program.wait(lambda: program.usage()[2] <= before, f"{before} handles again, not {program.usage()[2]}")
        self.assertGreater(before, 0)


if __name__ == "__main__":
    unittest.main()
