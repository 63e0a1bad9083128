"""What Windows reads from the program's file before it starts it."""

import struct
import unittest

from system_test import PROJECT  # noqa: F401  (puts the tools on the path)
from workstation import BINARIES

AWARE_OF_TERMINAL_SERVERS = 0x8000


class ProgramFileTest(unittest.TestCase):
    def test_it_runs_on_a_terminal_server_as_it_is(self):
        content = (BINARIES / "Backup.exe").read_bytes()
        header, = struct.unpack_from("<I", content, 0x3C)
        # The signature and the file header come before the optional header.
        characteristics, = struct.unpack_from("<H", content, header + 24 + 70)
        self.assertTrue(characteristics & AWARE_OF_TERMINAL_SERVERS)
