"""Random hands at the real mouse and keyboard: whatever is clicked and typed, in whatever order and however fast, there is a
window that takes input or no process, nothing fails, and what was on the medium is there whole.

A campaign: HANDS_RUNS=20 in the environment; one again: HANDS_SEED=4711, which is printed by a run that fails."""

import os
import random
import subprocess
import time
import unittest
import zipfile

from burner import install_image_mastering
from driver import DriverError, NotSeen
from program import DBT_DEVICEARRIVAL, DBT_DEVICEREMOVECOMPLETE, FORMS, IDOK
from samples import differences, snapshot, write_samples
from system_test import ARCHIVE_NAME, LIST_NAME, PASSWORD, SystemTest

STEPS = 60
LONGEST_SILENCE = 20
FATAL = ("Erreur fatale", "Fatal error")
LETTERS = "abcdefhilmnopqrstuvw"
KEYS = (["Tab"] * 6 + ["shift+Tab", "space", "space", "Return", "Return", "Escape", "Escape", "alt+F4", "F5", "Delete", "Up",
                       "Down", "Left", "Right", "Next", "Home", "End", "ctrl+a", "shift+Down", "alt+space", "F10"]
        + [f"alt+{letter}" for letter in LETTERS])
# What starts another program, whose windows would lie over this one.
LEFT_ALONE = ("explor", "aide", "help")


class RandomHands:
    """One run: a workstation with a backup on its disk, and hands."""

    def __init__(self, test, seed):
        self.test = test
        self.random = random.Random(seed)
        self.history = []
        self.is_plugged = True

    def xdotool(self, *arguments):
        subprocess.run(["xdotool", *arguments], env=dict(os.environ, DISPLAY=self.test.display.name), check=False)

    def note(self, text):
        self.history.append(text)

    def run(self):
        self.start()
        for _ in range(STEPS):
            if self.program.exit_code() is not None:
                self.start_again()
            self.random.choice([self.click] * 8 + [self.key] * 6 + [self.type_password] * 2
                               + [self.double_click] * 2 + [self.twice, self.plug, self.drop])()
            self.look()
        self.leave()

    def start(self):
        self.program = self.test.start()
        self.program.main_window(60)

    def start_again(self):
        self.test.assertEqual(self.program.exit_code(), 0)
        self.program.stop()
        self.note("start")
        self.start()

    def controls(self):
        """What a person may point at in the windows that are open; those that stand behind others included."""
        found = []
        for window in self.program.windows():
            try:
                found += [control for control in window.controls()
                          if control.visible and control.width and control.class_name.lower() not in ("static", "#32770")
                          and not any(word in control.text.replace("&", "").lower() for word in LEFT_ALONE)]
            except DriverError:
                pass
        return found

    def point(self):
        controls = self.controls()
        if not controls:
            return False
        control = self.random.choice(controls)
        left = control.left + int(control.width * self.random.uniform(0.05, 0.95))
        top = control.top + int(control.height * self.random.uniform(0.1, 0.9))
        self.note(f"at {control.class_name} {control.id} {control.text[:12]!r}")
        self.xdotool("mousemove", str(left), str(top))
        return True

    def click(self):
        if self.point():
            self.xdotool("click", "1")

    def double_click(self):
        if self.point():
            self.note("double")
            self.xdotool("click", "--repeat", "2", "--delay", "50", "1")

    def key(self):
        key = self.random.choice(KEYS)
        self.note(key)
        self.xdotool("key", key)

    def twice(self):
        """Two things without a look in between."""
        self.random.choice((self.click, self.key))()
        self.random.choice((self.click, self.key))()

    def type_password(self):
        password = self.random.choice((PASSWORD, PASSWORD, "facile"))
        self.note(f"type {password}")
        self.xdotool("type", "--delay", "5", password)
        key = self.random.choice(("Tab", "Return", "Return"))
        self.note(key)
        self.xdotool("key", key)

    def plug(self):
        self.note("pull out" if self.is_plugged else "plug in")
        (self.program.pull_out if self.is_plugged else self.program.plug_in)("e")
        self.is_plugged = not self.is_plugged
        event = DBT_DEVICEARRIVAL if self.is_plugged else DBT_DEVICEREMOVECOMPLETE
        for window in self.program.windows():
            try:
                window.device_change(event, "e")
            except DriverError:
                pass

    def drop(self):
        backup = self.program.find_window("frmBackup", enabled=True)
        try:
            if backup and backup.control("lvFichRep").enabled:
                self.note("drop")
                documents = self.test.station.windows_path(self.test.station.documents)
                backup.drop("lvFichRep", documents + r"\Lettres", documents + r"\vide.txt")
        except (DriverError, NotSeen):
            pass

    def look(self):
        """What must hold after whatever was done."""
        deadline = time.monotonic() + LONGEST_SILENCE
        while True:
            state = self.state()
            if state == "":
                return
            self.test.assertLess(time.monotonic(), deadline, f"{state}: {self.program.describe()}")
            time.sleep(0.1)

    def state(self):
        """Empty when all is well."""
        if self.program.exit_code() is not None:
            return ""
        windows = [window for window in self.program.windows() if window.class_name == "#32770"]
        if not windows:
            return "a process without a window"
        try:
            box = self.program.find_message_box()
            if box and any(word in box.title for word in FATAL):
                if not self.is_expected(box):
                    self.test.fail(f"{box}")
                self.program.answer(IDOK)
                return "a report was read"
            for window in windows:
                self.program.driver._call_once("send", window.handle, 0, 0, 0)
        except (DriverError, NotSeen) as failure:
            return f"no answer ({failure})"
        if sum(window.enabled for window in windows) != 1:
            return "not exactly one window that takes input"
        title = self.test.words("Prise de copie de sécurité")
        backups = [window for window in windows if title in window.title and "Version" in window.title]
        self.test.assertLessEqual(len(backups), 1, "two backup windows")
        return ""

    def is_expected(self, box):
        """A disk that was pulled out in the midst of something is reported."""
        return not self.is_plugged or "pull out" in self.history[-8:]

    def leave(self):
        """A person who has enough finds a way out."""
        if not self.is_plugged:
            self.plug()
        deadline = time.monotonic() + 180
        while self.program.exit_code() is None:
            self.test.assertLess(time.monotonic(), deadline, f"no way out: {self.program.describe()}")
            self.xdotool("key", "Escape")
            for form, name in (("frmMotPasse", "cmdCancel"), ("frmEffacerCDRW", "cmdFermer"), ("frmInfoDisque", "cmdOK"),
                               ("frmRestaureCD", "cmdFermer"), ("frmBackup", "cmdQuitter"), ("frmMain", "cmdSortie")):
                self.press(form, name)
            if self.program.exit_code() is None:
                try:
                    box = self.program.find_message_box()
                    if box:
                        self.program.answer(next(iter(box.buttons)))
                except (DriverError, NotSeen):
                    pass
            time.sleep(0.2)
        self.test.assertEqual(self.program.exit_code(), 0)
        self.program.stop()
        self.test.assertEqual(self.test.station.processes("backup", "7za"), [], "processes that are left")

    def press(self, form, name):
        assert form in FORMS
        try:
            window = self.program.find_window(form, enabled=True)
            control = window and window.control(name)
            if control and control.enabled and control.visible:
                self.program.driver.call("click", control.handle)
        except (DriverError, NotSeen):
            pass


class RandomHandsTest(SystemTest):
    def lay_out(self):
        install_image_mastering(self.station)
        write_samples(self.station.documents)
        sets = self.station.path(r"C:\Valcoreaux\Backup\Fichierlst\Medium")
        sets.mkdir(parents=True)
        (sets / "qamor.lst").write_bytes(b"C:\\Qamor\\Clients.mdb\r\n")
        data = self.station.path(r"C:\Qamor\Clients.mdb")
        data.parent.mkdir()
        data.write_bytes(os.urandom(500_000))
        self.station.add_drive("e", label="SAUVEGARDE")
        self.back_up(self.document(r"Lettres\.brouillon", b"avant"))

    def check_medium(self):
        """No backup, or a whole one: a line for each inner archive."""
        root = self.station.path("e:")
        if not (root / LIST_NAME).exists():
            return
        lines = [line for line in self.list_lines() if line]
        with zipfile.ZipFile(root / ARCHIVE_NAME) as outer:
            self.assertEqual(len(outer.namelist()), len(lines))

    def test_random_hands_at_mouse_and_keyboard(self):
        first = os.environ.get("HANDS_SEED")
        runs = int(os.environ.get("HANDS_RUNS", "1" if first else "0"))
        if runs == 0:
            self.skipTest("a campaign of its own: HANDS_RUNS=20 runs it, HANDS_SEED=N repeats one run")
        self.lay_out()
        before = snapshot(self.station.documents)
        for seed in [int(first)] if first else range(1000, 1000 + runs):
            hands = RandomHands(self, seed)
            try:
                hands.run()
                self.assertEqual(differences(before, snapshot(self.station.documents)), [])
                self.check_medium()
            except Exception as failure:
                raise AssertionError(f"again with HANDS_SEED={seed}; steps: {hands.history}; {failure}") from failure
            print(f"seed {seed}: {len(hands.history)} steps", flush=True)


if __name__ == "__main__":
    unittest.main()
