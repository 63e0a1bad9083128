"""Random users on random drives, with the shipped program: whatever is pressed and whatever the drive does, the window goes
on answering, a disc that is called good is good, and nothing stays behind.

A few seeds always run. More: DISC_RUNS=200 in the environment, from DISC_FIRST=N on where it is set; one again: DISC_SEED=N,
which is printed by a run that fails."""

import os
import random
import subprocess
import tempfile
import time
import unittest
from pathlib import Path

from program import IDCANCEL, IDOK, IDYES, DriverError, NotSeen
from system_test import ARCHIVE_NAME, LIST_NAME, SEVEN_ZIP
from test_disc_backup import DiscTest

LONGEST_SILENCE = 5
ACTIONS = 9
# What the process keeps for good comes once, and perhaps late; what an action leaves comes with each round of the same steps.
MOST_ROUNDS = 4
CAMPAIGN_FIRST = 1000
SHORT_SEEDS = (2000, 2004)
CD_KINDS = ("CD-R", "CD-RW", "CD-RW", "CD-ROM", "DVD+R")
DVD_KINDS = ("DVD+R", "DVD+RW", "DVD+RW", "DVD-RAM", "DVD-RW", "DVD-R", "CD-R")
STATES = ("blank", "blank", "blank", "blank", "blank", "blank", "blank", "open", "closed", "damaged", "protected", "final session")


class Plan:
    """What a seed makes a user do and a drive be, settled before the first step: what is met on the way changes nothing."""

    def __init__(self, seed):
        chance = random.Random(seed)
        self.is_dvd = chance.random() < 0.5
        self.drive = {
            "write_milliseconds": chance.choice((0, 300, 1500)),
            "stop_milliseconds": chance.choice((0, 500, 2000)),
            "ready_milliseconds": chance.choice((0, 300, 2000)),
            "answer_milliseconds": chance.choice((0, 1, 30)),
            "quick_erase_milliseconds": chance.choice((0, 800)),
            "fail_at": chance.choice((5, 50, 99)) if chance.random() < 0.2 else -1,
            "eject_at": chance.choice((10, 60)) if chance.random() < 0.1 else -1,
            "erase_code": "0x80AA0905" if chance.random() < 0.1 else "",
            "random_write": "no" if chance.random() < 0.2 else "yes",
            "busy": "no",
        }
        self.first_disc = self._disc(chance)
        self.steps = []
        for _ in range(ACTIONS):
            self.steps.append(self._step(chance))
            if self.steps[-1][0] == "start" and chance.random() < 0.5:
                self.steps.append(("finish", (), 0))

    def _disc(self, chance):
        kind = chance.choice(DVD_KINDS if self.is_dvd else CD_KINDS)
        state = chance.choice(STATES)
        return kind, "closed" if kind.endswith("ROM") else state

    def _step(self, chance):
        """The name of an action, its arguments, and how long the user waits afterwards."""
        name = chance.choice(("start", "start", "start", "start", "start", "stop", "stop", "eject", "insert", "insert",
                              "hold", "hold", "erase", "erase", "inform", "back", "cross"))
        arguments = {"insert": lambda: self._disc(chance), "hold": lambda: (chance.random() < 0.4,),
                     "start": lambda: (chance.random() < 0.85,)}.get(name, tuple)()
        return name, arguments, chance.choice((0, 0, 0.2, 0.5, 1.0, 2.5))


class RandomUser:
    """One run: a program, a drive and a user who presses what can be pressed."""

    def __init__(self, test, seed):
        self.test = test
        self.plan = Plan(seed)
        self.is_dvd = self.plan.is_dvd
        self.drive = test.writer("DVD+R" if self.is_dvd else "CD-R")
        self.history = []
        self.successes = 0

    def note(self, text):
        self.history.append(text)

    def insert(self, kind, state):
        self.note(f"insert {kind} {state}")
        if self.drive.disc.exists():
            self.drive.take_out()
        self.drive.insert(kind, state=state, used=0 if state == "blank" else 40_960_000)

    def run(self):
        self.prepare()
        self.program = self.test.start()
        self.program.main_window(90)
        held = [self.handles()]
        while self.play():
            held.append(self.handles())
            if held[-1] <= held[-2]:
                break
            self.test.assertLessEqual(len(held), MOST_ROUNDS, f"handles before and after each round: {held}")
            self.prepare()
        self.leave()

    def prepare(self):
        self.drive.set(**self.plan.drive)
        self.insert(*self.plan.first_disc)

    def handles(self):
        return self.test.settled_usage(self.program)[0]

    def play(self):
        """The steps, from the main window back to it; gives whether the program still runs."""
        self.open_backup()
        for name, arguments, pause_seconds in self.plan.steps:
            getattr(self, name)(*arguments)
            time.sleep(pause_seconds)
            self.settle()
            if self.program.exit_code() is not None:
                break
        return self.come_back()

    def main(self):
        return self.program.find_window("frmMain", enabled=True)

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

    def start(self, gives_password):
        backup = self.backup()
        if not backup or not self.pressed(backup, "cmdLancer"):
            return
        dialog = self.program.wait(lambda: self.answer_box() or self.program.find_window("frmMotPasse", enabled=True)
                                   or self.backup(), "the password", 30)
        if dialog is True or "frmMotPasse" not in dialog.forms:
            return
        if gives_password:
            self.give_password()
        else:
            dialog.close()

    def give_password(self):
        """A box that tells of another disc may come over the dialog."""
        try:
            self.test.give_new_password(self.program)
        except NotSeen:
            self.settle()
            self.test.give_new_password(self.program)

    def finish(self):
        """Waits for the end of what runs, if it has one."""
        deadline = time.monotonic() + 20
        while self.program.exit_code() is None and time.monotonic() < deadline:
            self.settle()
            backup = self.backup()
            if not backup or not backup.control("fProgression").visible:
                return
            time.sleep(0.1)

    def stop(self):
        backup = self.backup()
        if backup:
            self.pressed(backup, "cmdStopWrite")

    def eject(self):
        if self.drive.disc.exists():
            self.note("eject")
            self.drive.take_out()

    def hold(self, is_held):
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

    def inform(self):
        backup = self.backup()
        if not backup or not self.pressed(backup, "cmdInfoDisque"):
            return
        window = self.program.wait(lambda: self.answer_box() or self.program.find_window("frmInfoDisque", enabled=True)
                                   or self.backup(), "the information window", 30)
        if window is not True and "frmInfoDisque" in window.forms:
            self.pressed(window, "cmdRafraichir")
            self.pressed(window, "cmdOK")

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
            if self.test.end_text() in box.text:
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
        for tool in ([SEVEN_ZIP, "x", "-y"], ["xorriso", "-osirrox", "on"]):
            target = Path(tempfile.mkdtemp(dir=self.test.station.prefix)) / "read"
            by_7z = tool[0] == SEVEN_ZIP
            command = [*tool, f"-o{target}", str(image)] if by_7z else [*tool, "-indev", str(image), "-extract", "/",
                                                                        str(target)]
            subprocess.run(command, check=True, capture_output=True)
            for name in (LIST_NAME, ARCHIVE_NAME):
                self.test.assertEqual((target / name).read_bytes(), self.test.work_file(name).read_bytes(),
                                      f"{name} read by {tool[0]}")
            subprocess.run(["chmod", "-R", "u+w", str(target)], check=True)

    def come_back(self):
        self.drive.set(busy="no", fail_at=-1, eject_at=-1)
        self.reach(("frmBackup", ("cmdStopWrite", "cmdPrecedent")), ("frmMotPasse", ("cmdCancel",)),
                   ("frmEffacerCDRW", ("cmdFermer",)), ("frmInfoDisque", ("cmdOK",)), until=self.main)
        if self.program.exit_code() is not None:
            return False
        self.test.assertTrue(self.main(), self.program.describe())
        return True

    def leave(self):
        self.reach(("frmMain", ("cmdSortie",)), until=lambda: False)
        self.test.assertEqual(self.program.exit_code(), 0, self.program.describe())
        self.program.stop()
        self.test.assertEqual(self.test.station.processes("backup", "7za"), [], "processes that are left")

    def reach(self, *presses, until):
        """Presses what leads out of windows, until they are left or the program has ended."""
        deadline = time.monotonic() + 90
        while self.program.exit_code() is None and time.monotonic() < deadline:
            self.settle()
            if until():
                return
            for form, buttons in presses:
                window = self.program.find_window(form, enabled=True)
                for name in buttons if window else ():
                    self.pressed(window, name)
            time.sleep(0.2)


class RandomDriveTest(DiscTest):
    def seeds(self):
        if "DISC_SEED" in os.environ:
            return [int(os.environ["DISC_SEED"])]
        if "DISC_RUNS" in os.environ:
            first = int(os.environ.get("DISC_FIRST", CAMPAIGN_FIRST))
            return range(first, first + int(os.environ["DISC_RUNS"]))
        return SHORT_SEEDS

    def test_random_users_on_random_drives(self):
        seeds = self.seeds()
        good = 0
        failures = []
        for seed in seeds:
            user = RandomUser(self, seed)
            try:
                user.run()
            except Exception as failure:
                failures.append(f"again with DISC_SEED={seed}: {failure}; steps: {user.history}")
                print(failures[-1], flush=True)
                user.program.stop()
            good += user.successes
            if "DISC_RUNS" in os.environ:
                print(f"seed {seed}: {len(user.history)} steps, {user.successes} discs called good", flush=True)
        self.assertEqual(failures, [])
        if "DISC_RUNS" in os.environ:
            print(f"{len(seeds)} runs, {good} discs read back")


if __name__ == "__main__":
    unittest.main()
