"""What a person does with mouse and keyboard while the predefined sets are being measured."""

import os
import subprocess
import time

from system_test import SystemTest

# The whole folder of a full workstation takes minutes to lay out: 60000 of them are tried by hand.
FILE_COUNT = int(os.environ.get("BACKUP_LOADING_FILES", "6000"))
MOMENTS = 20


class LoadingTest(SystemTest):
    def setUp(self):
        super().setUp()
        self.disk()
        folder = self.station.path(r"C:\Donnees")
        for number in range(FILE_COUNT):
            place = folder / f"Dossier{number % 50:02d}"
            place.mkdir(parents=True, exist_ok=True)
            (place / f"Fichier{number:05d}.txt").touch()
        self.sets = self.station.path(r"C:\Valcoreaux\Backup\Fichierlst\Medium")
        self.sets.mkdir(parents=True)
        (self.sets / "qamor.lst").write_bytes(b"C:\\Donnees\r\n")
        self.program = self.start()
        self.main = self.program.main_window()
        self.main.press("optDisqueAmovible")

    def mouse(self, window, name, count=1):
        """Clicks of a real mouse; gives what a person sees of it: nothing."""
        control = window.control(name)
        self.xdotool("mousemove", str(control.left + control.width // 2), str(control.top + control.height // 2),
                     "click", "--repeat", str(count), "--delay", "60", "1")

    def xdotool(self, *arguments):
        subprocess.run(["xdotool", *arguments], env=dict(os.environ, DISPLAY=self.display.name), check=True)

    def forms(self):
        """The names of the program's windows that a person sees, in no order."""
        found = []
        for form in ("frmMain", "frmBackup"):
            window = self.program.find_window(form)
            if window:
                found.append((form, window.enabled))
        return found

    def settled(self):
        """One window that can be used: the backup window over the main window, or the main window alone."""
        self.assertIsNone(self.program.exit_code(), "the program has ended")
        forms = self.forms()
        return forms if sum(enabled for _, enabled in forms) == 1 and len(self.backups()) <= 1 else None

    def backups(self):
        titles = [window.title for window in self.program.windows() if self.words("Prise de copie de sécurité") in window.title]
        return [title for title in titles if "Version" in title]

    def open_by_mouse(self, then, seconds):
        """Clicks on Next with the mouse and does something else after a time."""
        self.mouse(self.main, "cmdBackup")
        time.sleep(seconds)
        then()
        return self.program.wait(self.settled, "one window", 120)

    def go_back(self):
        backup = self.program.find_window("frmBackup", enabled=True)
        if backup:
            backup.press("cmdPrecedent")
        self.main = self.program.window("frmMain", 120)

    def test_nothing_done_meanwhile_opens_a_second_window_or_leaves_none(self):
        started = time.monotonic()
        self.mouse(self.main, "cmdBackup")
        self.program.window("frmBackup", 120)
        lasted = time.monotonic() - started
        self.go_back()
        actions = [("a second click", lambda: self.mouse(self.main, "cmdBackup", 2)),
                   ("Quit", lambda: self.mouse(self.main, "cmdSortie")),
                   ("Escape", lambda: self.xdotool("key", "Escape")),
                   ("the cross", lambda: self.xdotool("key", "alt+F4"))]
        for moment in range(MOMENTS):
            name, action = actions[moment % len(actions)]
            with self.subTest(action=name, seconds=round(lasted * moment / MOMENTS, 2)):
                self.open_by_mouse(action, lasted * moment / MOMENTS)
                self.assertIn("frmMain", [form for form, _ in self.forms()])
                self.go_back()
        self.mouse(self.main, "cmdSortie")
        self.assertEqual(self.program.wait_exit(), 0)
