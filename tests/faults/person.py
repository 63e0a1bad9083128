"""What a person at the workstation does, reads and presses."""

import time

from fault import DONE, ENDED, FAILED, KILLED, REFUSED
from mischief import ARCHIVERS, HITS_AT

from driver import DriverError, NotSeen
from program import IDCANCEL, IDNO, IDOK

SUCCESS = ("Copie de sécurité terminée", "Restauration des fichiers")
DISC_SUCCESS = "s’est terminée avec succès"
STARTUP_BOX = "InitGraveur"


class Person:
    """Steps for a scene that has `station`, `root`, `program` and `seen`."""

    restore_drive = "E:\\"
    """What is restored from."""

    def read_boxes(self, stop=lambda: False, seconds=90):
        """Reads and closes what the program shows until `stop`, or until the program has ended; gives whether it did not
        fall silent."""
        deadline = time.monotonic() + seconds
        while time.monotonic() < deadline:
            try:
                if self.program.exit_code() is not None:
                    return True
                box = self.program.find_message_box()
                if box:
                    self._read(box)
                    continue
                if stop():
                    return True
            except (DriverError, NotSeen):
                pass
            time.sleep(0.02)
        return False

    def _read(self, box):
        if STARTUP_BOX not in box.text:
            self.seen.told.append(f"{box.title}: {' '.join(box.text.split())}")
        try:
            self.program.answer(next(button for button in (IDOK, IDNO, IDCANCEL) if button in box.buttons), 5)
        except (DriverError, NotSeen):
            # It went with its window.
            pass

    def succeeded(self):
        return any(line.startswith(SUCCESS) or DISC_SUCCESS in line for line in self.seen.told)

    def start_program(self):
        self.program = self.start()
        return self.program

    def main_window(self, seconds=60):
        self.read_boxes(lambda: self._main() is not None, seconds)
        main = self._main()
        if main is None:
            raise NotSeen(f"the main window; seen: {self.program.describe()}; told: {self.seen.told}")
        return main

    def _main(self):
        main = self.program.find_window("frmMain", enabled=True)
        return main if main and main.control("cmdBackup").enabled else None

    def open_backup_window(self):
        main = self.main_window()
        main.press("optDisqueAmovible")
        self.program.wait(lambda: main.control("cboDrive").enabled, "cboDrive enabled")
        main.press("cmdBackup")
        self.read_boxes(lambda: self._usable("frmBackup", "lvFichRep"))
        return self.program.window("frmBackup", 5)

    def open_restore_window(self):
        main = self.main_window()
        main.press("optRestaure")
        main.press("cmdBackup")
        self.read_boxes(lambda: self._usable("frmRestaureCD", "lstDrive"))
        restore = self.program.window("frmRestaureCD", 5)
        self.choose_drive(restore, self.restore_drive)
        self.read_boxes(lambda: restore.row_count("lvFichiersRepertoires") > 0 or
                        not restore.control("cmdLancerRestauration").enabled, 20)
        return restore

    def _usable(self, form, control):
        window = self.program.find_window(form, enabled=True)
        return window if window and window.control(control).enabled else None

    def choose(self, backup, paths=None):
        """Drops paths on the list; what the program says of them is read."""
        paths = self.chosen if paths is None else paths
        count = backup.row_count("lvFichRep") + len(paths)
        backup.drop("lvFichRep", *paths)
        self.read_boxes(lambda: backup.row_count("lvFichRep") >= count, 60)

    def press_start(self, fault, window, button, give):
        """The start button, the password, and what comes then, with the fault's steps between. Gives False when no password
        was asked for."""
        fault.when_chosen(self)
        if not (window.control(button).enabled and window.control(button).visible):
            return False
        window.press(button)
        self.read_boxes(lambda: self.program.find_window("frmMotPasse", enabled=True) or self._settled(), 60)
        if not self.program.find_window("frmMotPasse", enabled=True):
            return False
        fault.when_asked(self)
        if fault.holds:
            operation, part = fault.holds.split(" ", 1)
            self.rule(f"{operation} -1 0 0 {part}")
        give(self.program)
        if fault.holds:
            self.wait_for(self.hits, f"the program at {fault.holds}", 120)
            fault.when_held(self)
            if self.plan[:HITS_AT].startswith(f"{operation} -1".encode()):
                self.rule()
        fault.when_running(self)
        return True

    def _is_asked_again(self):
        return self.seen.told and self.program.find_window("frmMotPasse", enabled=True) is not None

    def _settled(self):
        """A window of the program can be used again, and no dialog stands over it."""
        for form, control in (("frmBackup", "cmdPrecedent"), ("frmRestaureCD", "cmdFermer"), ("frmMain", "cmdSortie")):
            window = self.program.find_window(form, enabled=True)
            if window and window.control(control).enabled and window.control(control).visible:
                return True
        return False

    def follow(self, seconds=150):
        """Reads the program's messages until it has ended or waits for the person again, and notes which."""
        answers = self.read_boxes(lambda: self._settled() or self._is_asked_again(), seconds)
        while answers and self.program.exit_code() is None and self._is_asked_again():
            # The password does not open the archive; the person knows no other.
            self.program.find_window("frmMotPasse", enabled=True).press("cmdCancel")
            answers = self.read_boxes(self._settled, seconds)
        if self.seen.outcome:
            return
        exit_code = self.program.exit_code()
        if not answers:
            self.seen.outcome = f"no answer within {seconds} s: {self.program.describe()}"
        elif self.succeeded():
            self.seen.outcome = DONE
        elif exit_code is not None:
            self.seen.outcome = ENDED if exit_code == 0 else KILLED
        else:
            self.seen.outcome = FAILED if self.seen.told else REFUSED

    def leave(self):
        """Ends the program as a person does; notes how it ended."""
        deadline, known = time.monotonic() + 60, len(self.seen.told)
        while self.program.exit_code() is None and time.monotonic() < deadline:
            self.read_boxes(self._settled, 20)
            for form, button in (("frmMotPasse", "cmdCancel"), ("frmBackup", "cmdQuitter"),
                                 ("frmRestaureCD", "cmdFermer"), ("frmMain", "cmdSortie")):
                window = self.program.exit_code() is None and self.program.find_window(form, enabled=True)
                if window:
                    try:
                        window.press(button)
                    except (DriverError, NotSeen):
                        pass
                    break
        code = self.program.exit_code()
        self.seen.exit = "does not end" if code is None else str(code)
        if code is None:
            self.seen.exit += f": {self.program.describe()}"
        if self.seen.outcome == REFUSED and len(self.seen.told) > known:
            # The window could be used a moment before the message came.
            self.seen.outcome = FAILED
        self.program.stop()
        self.seen.stray = self.wait_for_no_process()

    def wait_for_no_process(self):
        names = ("backup", *ARCHIVERS)
        deadline = time.monotonic() + 5
        while self.station.processes(*names) and time.monotonic() < deadline:
            time.sleep(0.05)
        return self.station.processes(*names)

    def cure_medium(self):
        """The disk is plugged in and reads and writes again, and nobody holds a file."""
        self.rule()
        self.let_go()
        if not (self.station.prefix / "dosdevices" / "e:").is_symlink():
            self.station.plug_in("e")

    def cure(self, fault):
        """What a person does before trying again."""
        self.cure_medium()
        for filler in getattr(self, "fillers", []):
            filler.unlink(missing_ok=True)
        self.root.chmod(0o755)
        self.let_go()
        fault.heal(self)
        self.give_archiver_back()
