"""What Windows reads from the programs' files before it starts them."""

import re
import struct
import unittest

from system_test import PROJECT
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


def version_texts(name):
    """The texts of a program's version resource."""
    content = (BINARIES / name).read_bytes()
    keys = ("CompanyName", "FileDescription", "FileVersion", "InternalName", "LegalCopyright", "OriginalFilename",
            "ProductName", "ProductVersion")
    found = {}
    for key in keys:
        value = re.search(re.escape(f"{key}\0".encode("utf-16-le")) + rb"(?:\0\0)*((?:[^\0]\0)+)\0\0", content)
        found[key] = value[1].decode("utf-16-le") if value else ""
    return found


class ProgramFileTest(unittest.TestCase):
    def test_the_programs_run_on_a_terminal_server_as_they_are(self):
        for name in ("Backup.exe", "BackupCheck.exe"):
            self.assertTrue(characteristics(name) & TERMINAL_SERVERS, name)

    def test_every_program_that_is_installed_lies_at_random_addresses_and_runs_no_data(self):
        for name in ("Backup.exe", "BackupCheck.exe", "7Za.exe"):
            self.assertEqual(characteristics(name) & PROTECTED, PROTECTED, name)

    def test_the_properties_of_a_program_are_complete(self):
        version = re.search(r"^project\(.* VERSION ([0-9.]+)", (PROJECT / "CMakeLists.txt").read_text(encoding="utf-8"), re.M)[1]
        for name in ("Backup.exe", "BackupCheck.exe"):
            texts = version_texts(name)
            self.assertEqual([key for key, text in texts.items() if not text.strip()], [], name)
            self.assertEqual([texts[key] for key in ("CompanyName", "FileVersion", "ProductVersion", "OriginalFilename")],
                             ["Ardel-Services", version, version, name])


if __name__ == "__main__":
    unittest.main()
