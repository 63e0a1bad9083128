"""What the tests of the check's window share: the window of the shipped program, driven by a person's clicks."""

import os
import shutil
from pathlib import Path

from check_test import PASSWORD, CheckTest
from slow_machine import SlowMachine
from system_test import IDOK, Program, ProgramEnd

from workstation import Display

# The system's list of file names, and the edit field in it.
IDC_FILE_NAME = 0x47C
SECONDS = 60


class CheckWindowTest(ProgramEnd, CheckTest):
    """One workstation with a display for a class; the window lies alone in a folder."""

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.display = Display()
        cls.station.environment["DISPLAY"] = cls.display.name
        cls.station.program_folder = r"C:\Check"
        cls.machine = SlowMachine(cls.station)

    @classmethod
    def tearDownClass(cls):
        cls.machine.close()
        super().tearDownClass()
        cls.display.stop()

    def open(self, is_chosen=True):
        """The window with the drive E: chosen and its list read."""
        self.station.display = self.display
        self.program = Program(self.station, executable="BackupCheck.exe")
        self.addCleanup(self.end, self.program)
        window = self.program.window("CheckWindow", SECONDS)
        if is_chosen:
            self.program.wait(lambda: window.chosen("Places"), "the drive chosen", SECONDS)
            self.wait_idle(window)
        return window

    def wait_idle(self, window):
        self.program.wait(lambda: window.control("Close").visible and window.control("Browse").enabled, "an idle window",
                          SECONDS)

    def start_check(self, window, password=PASSWORD):
        window.set_text("Password", password)
        window.press("Check")

    def check_to_end(self, window, password=PASSWORD):
        """The box at the end of a check."""
        self.start_check(window, password)
        return self.program.answer(IDOK, SECONDS)

    def processor_seconds(self):
        """What the program has used of the processor, whatever else runs on the machine."""
        prefix = f"WINEPREFIX={self.station.prefix}\0".encode()
        for process in Path("/proc").glob("[0-9]*"):
            try:
                is_own = (process / "comm").read_text().startswith("BackupCheck") and prefix in (process / "environ").read_bytes()
                times = (process / "stat").read_text().rsplit(")", 1)[1].split()[11:13]
            except OSError:
                continue
            if is_own:
                return sum(map(int, times)) / os.sysconf("SC_CLK_TCK")
        raise LookupError("the program is not there")

    def results(self, window):
        return [row.texts[-1] for row in window.rows("Items")]

    def dialog(self, control_id=1):
        """The system's dialog that is open over the window."""
        def found():
            for window in self.program.windows():
                is_own = window.class_name == "#32770" and window.owner
                if is_own and any(control.id == control_id for control in window.controls()):
                    return window
            return None

        return self.program.wait(found, "a dialog of the system", SECONDS)

    def press_in(self, dialog, control_id):
        for control in dialog.controls():
            if control.id == control_id and control.class_name == "Button":
                self.program.driver.call("click", control.handle)

    def choose_folder(self, path):
        """Answers the system's dialog for folders."""
        dialog = self.dialog()
        self.program.driver.call("browse", dialog.handle, path)
        self.press_in(dialog, IDOK)

    def choose_new_file(self, path):
        """Answers the system's dialog for saving a file."""
        dialog = self.dialog(IDC_FILE_NAME)
        for control in dialog.controls():
            if control.id == IDC_FILE_NAME and control.class_name == "Edit":
                self.program.driver.call("settext", control.handle, path)
        self.press_in(dialog, IDOK)

    def put_small_archive_aside(self):
        """A folder with a copy of the medium."""
        folder = self.target / "copie"
        shutil.copytree(self.medium, folder)
        return folder
