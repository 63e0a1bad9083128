"""What Windows reads from the programs' files before it starts them."""

import struct
import unittest

from system_test import PROJECT  # noqa: F401  (puts the tools on the path)
from workstation import BINARIES

# Random addresses in the whole of the address space, no code where data is, awareness of terminal servers.
HIGH_ENTROPY, RANDOM_ADDRESSES, NO_CODE_IN_DATA, TERMINAL_SERVERS = 0x20, 0x40, 0x100, 0x8000
PROTECTED = HIGH_ENTROPY | RANDOM_ADDRESSES | NO_CODE_IN_DATA


def characteristics(name):
    content = (BINARIES / name).read_bytes()
    header, = struct.unpack_from("<I", content, 0x3C)
    # The signature and the file header come before the optional header.
    flags, = struct.unpack_from("<H", content, header + 24 + 70)
    return flags


class ProgramFileTest(unittest.TestCase):
    def test_the_programs_run_on_a_terminal_server_as_they_are(self):
        for name in ("Backup.exe", "BackupCheck.exe"):
            self.assertTrue(characteristics(name) & TERMINAL_SERVERS, name)

    def test_every_program_that_is_installed_lies_at_random_addresses_and_runs_no_data(self):
        for name in ("Backup.exe", "BackupCheck.exe", "7Za.exe"):
            self.assertEqual(characteristics(name) & PROTECTED, PROTECTED, name)


if __name__ == "__main__":
    unittest.main()
