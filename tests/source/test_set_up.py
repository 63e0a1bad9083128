"""What the set-up says of a failure and of the room that it needs."""

import os
import subprocess
import tempfile
import unittest
from pathlib import Path

SET_UP = Path(__file__).resolve().parent.parent.parent / "tools" / "setup.sh"
INNOCENT = "[7/9] c++ -Wall -Werror -o ErrorReport.cpp.o -c src/check/ErrorReport.cpp"


class SetUpTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)

    def stand_in(self, command, *said):
        program = self.folder / command
        program.write_text("#!/bin/sh\ncat <<'SAID'\n" + "\n".join(said) + "\nSAID\n", encoding="utf-8")
        program.chmod(0o755)

    def call(self, *words):
        return subprocess.run(["bash", "-c", '. "$0"; "$@"', SET_UP, *words], capture_output=True, text=True, check=False,
                              env=os.environ | {"PATH": f"{self.folder}:{os.environ['PATH']}"})

    def reason(self, *lines):
        log = self.folder / "log"
        log.write_text("\n".join(lines) + "\n", encoding="utf-8")
        return self.call("LastReason", log).stdout

    def test_the_compiler_s_own_word_is_the_reason_and_no_file_or_option_named_like_one(self):
        fault = "src/core/Amounts.cpp:3:1: error: expected ';'"
        self.assertEqual(self.reason(INNOCENT, fault, "ninja: build stopped"), fault)
        self.assertEqual(self.reason(INNOCENT, "the end"), "the end")

    def test_a_full_disk_and_a_missing_network_are_called_so(self):
        full = "as: write: No space left on device"
        self.assertEqual(self.reason("Error: as broke off", full), f"the disk is full: {full}")
        away = "Err:1 Temporary failure resolving 'somewhere'"
        self.assertEqual(self.reason(away, "E: Unable to fetch some archives"), f"no network: {away}")

    def test_packages_need_what_the_system_says_of_them(self):
        self.stand_in("apt-get", "Need to get 368 MB/400 MB of archives.",
                      "After this operation, 1,900 MB of additional disk space will be used.")
        self.assertEqual(self.call("InstallationSizes", "some").stdout.strip(), "369 1901")
        self.stand_in("apt-get", "Need to get 512 kB of archives.",
                      "After this operation, 1.5 GB of additional disk space will be used.")
        self.assertEqual(self.call("InstallationSizes", "some").stdout.strip(), "1 1501")

    def test_too_little_room_ends_the_set_up_with_both_figures(self):
        self.stand_in("df", "Filesystem 1048576-blocks Used Available Capacity Mounted on", "/dev/a 900 800 100 89% /")
        done = self.call("NeedRoom", "/var", "101", "fetching packages")
        self.assertEqual((done.returncode, done.stderr.partition(": ")[2]),
                         (1, "the disk is full: fetching packages needs 101 MB in /var, 100 MB are free\n"))
        self.assertEqual(self.call("NeedRoom", "/var", "100", "fetching packages").returncode, 0)


if __name__ == "__main__":
    unittest.main()
