"""A library beside the program that bears the name of one of the system's is not loaded."""

import shutil
import unittest

from system_test import Program, SystemTest
from workstation import BINARIES

# One that Windows does not hold ready for every program, and that the program uses.
NAME = "USERENV.dll"
# One that it does not use; what Windows loads into it asks for libraries by their bare names.
NAME_UNUSED = "cabinet.dll"


class PlantedLibraryTest(SystemTest):
    def plant(self, name=NAME):
        shutil.copy2(BINARIES / "planted.dll", self.station.path(self.station.program_folder) / name)
        # Wine takes its own libraries first; Windows does not.
        self.station.environment["WINEDLLOVERRIDES"] += f";{name.lower().removesuffix('.dll')}=n,b"

    def check_left_alone(self, program):
        self.assertEqual(program.wait_exit(), 0)
        self.assertFalse((self.station.path(r"C:\Tools") / "planted.txt").exists())

    def test_a_library_planted_beside_the_program_is_left_alone(self):
        self.plant()
        program = self.start()
        program.main_window().press("cmdSortie")
        self.check_left_alone(program)

    def test_one_that_others_load_by_its_bare_name_is_left_alone(self):
        self.plant(NAME_UNUSED)
        program = self.start()
        main = program.main_window()
        program.driver.call("loadlibrary", program.process_id, NAME_UNUSED)
        main.press("cmdSortie")
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
