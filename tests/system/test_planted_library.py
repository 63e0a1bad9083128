"""A library beside the program that bears the name of one of the system's is not loaded."""

import shutil
import unittest

from system_test import Program, SystemTest
from workstation import BINARIES

# One that Windows does not hold ready for every program, and that the program uses.
NAME = "USERENV.dll"


class PlantedLibraryTest(SystemTest):
    def plant(self):
        shutil.copy2(BINARIES / "planted.dll", self.station.path(self.station.program_folder) / NAME)
        # Wine takes its own libraries first; Windows does not.
        self.station.environment["WINEDLLOVERRIDES"] += f";{NAME.lower().removesuffix('.dll')}=n,b"

    def check_left_alone(self, program):
        self.assertEqual(program.wait_exit(), 0)
        self.assertFalse((self.station.path(r"C:\Tools") / "planted.txt").exists())

    def test_a_library_planted_beside_the_program_is_left_alone(self):
        self.plant()
        program = self.start()
        program.main_window().press("cmdSortie")
        self.check_left_alone(program)

    def test_one_beside_the_check_is_left_alone(self):
        self.plant()
        program = Program(self.station, executable="BackupCheck.exe")
        self.addCleanup(self.end, program)
        window = program.window("CheckWindow")
        window.wait_enabled("Close")
        window.press("Close")
        self.check_left_alone(program)


if __name__ == "__main__":
    unittest.main()
