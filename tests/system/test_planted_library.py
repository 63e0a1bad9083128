"""A library beside the program that bears the name of one of the system's is not loaded."""

import shutil
import unittest

from system_test import SystemTest
from workstation import BINARIES

# One that Windows does not hold ready for every program, and that the program uses.
NAME = "USERENV.dll"


class PlantedLibraryTest(SystemTest):
    def test_a_library_planted_beside_the_program_is_left_alone(self):
        folder = self.station.path(self.station.program_folder)
        shutil.copy2(BINARIES / "planted.dll", folder / NAME)
        # Wine takes its own libraries first; Windows does not.
        self.station.environment["WINEDLLOVERRIDES"] += f";{NAME.lower().removesuffix('.dll')}=n,b"
        program = self.start()
        program.main_window().press("cmdSortie")
        self.assertEqual(program.wait_exit(), 0)
        self.assertFalse((self.station.path(r"C:\Tools") / "planted.txt").exists())


if __name__ == "__main__":
    unittest.main()
