"""Who asks a command how it is used is told so, and nothing is set up, built, run or deleted."""

import os
import signal
import subprocess
import unittest
from pathlib import Path

PROJECT = Path(__file__).resolve().parent.parent.parent
COMMANDS = ("run", "test", "packaging/build", "packaging/kit", "packaging/pictures", "tests/faults/run", "bench/run")
SECONDS = 30


class CommandsTest(unittest.TestCase):
    def test_every_command_says_how_it_is_used(self):
        for command in COMMANDS:
            with self.subTest(command=command), subprocess.Popen(
                    [PROJECT / command, "--help"], stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, text=True,
                    start_new_session=True) as process:
                try:
                    said, _ = process.communicate(timeout=SECONDS)
                except subprocess.TimeoutExpired:
                    os.killpg(process.pid, signal.SIGKILL)
                    raise
                self.assertTrue(said.startswith("usage: "), said[:200])
                self.assertNotIn("\n== ", said, "it does something")
                self.assertEqual(process.returncode, 0)


if __name__ == "__main__":
    unittest.main()
