"""What the tests of the check share: media as the real archiver makes them, and the program by its command line."""

import json
import os
import random
import shutil
import struct
import subprocess
import tempfile
import unittest
import zipfile
import zlib
from pathlib import Path

from system_test import ARCHIVE_NAME, LIST_NAME, PASSWORD, SEVEN_ZIP, run_check

from surroundings import Surroundings, chosen
from workstation import BINARIES, Workstation

CRC_TABLE = []
for number in range(256):
    for _ in range(8):
        number = (number >> 1) ^ (0xEDB88320 if number & 1 else 0)
    CRC_TABLE.append(number)
# An even second: archives keep no others at each entry.
WRITTEN_AT = 1_500_000_000
READ_ONLY = 0x21
GOOD, FAULTY, WRONG_PASSWORD, NO_BACKUP, CANNOT, WRONG_USAGE = range(6)


def zip_of(files):
    """An inner archive as the archiver makes it: names to contents. All of it was written at the same moment."""
    with tempfile.TemporaryDirectory() as folder:
        for name, content in files.items():
            path = Path(folder, name)
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_bytes(content)
        for path in sorted(Path(folder).rglob("*"), reverse=True):
            os.utime(path, (WRITTEN_AT, WRITTEN_AT))
        tops = sorted({name.split("/")[0] for name in files})
        subprocess.run([SEVEN_ZIP, "a", "-tzip", "inner.zip", *tops], cwd=folder, check=True, stdout=subprocess.DEVNULL)
        return Path(folder, "inner.zip").read_bytes()


def with_attributes(archive, attributes):
    """The archive of one entry with these attributes of Windows, where the archiver of this machine puts its own."""
    content = bytearray(archive)
    record = content.index(b"PK\1\2")
    content[record + 5] = 0
    content[record + 38:record + 42] = struct.pack("<I", attributes)
    return bytes(content)


def encrypted(content, password, check_byte):
    """The content with the header before it, in the encryption that the archiver uses for zip archives."""
    keys = [0x12345678, 0x23456789, 0x34567890]

    def crc(value, byte):
        return (value >> 8) ^ CRC_TABLE[(value ^ byte) & 0xFF]

    def update(byte):
        keys[0] = crc(keys[0], byte)
        keys[1] = ((keys[1] + (keys[0] & 0xFF)) * 134775813 + 1) & 0xFFFFFFFF
        keys[2] = crc(keys[2], keys[1] >> 24)

    for byte in password:
        update(byte)
    result = bytearray()
    for byte in bytes(11) + bytes([check_byte]) + content:
        mask = (keys[2] & 0xFFFF) | 2
        result.append(byte ^ (((mask * (mask ^ 1)) >> 8) & 0xFF))
        update(byte)
    return bytes(result)


def protected_zip(entries, password):
    """An outer archive under a password of any bytes."""
    body, directory = bytearray(), bytearray()
    protected = {}
    for name, content in entries.items():
        crc = zlib.crc32(content)
        if content not in protected:
            protected[content] = encrypted(content, password, crc >> 24)
        data = protected[content]
        common = struct.pack("<HHHHHIIIHH", 20, 1, 0, 0, 0x5921, crc, len(data), len(content), len(name), 0)
        directory += b"PK\1\2" + struct.pack("<H", 20) + common + struct.pack("<HHHII", 0, 0, 0, 32, len(body)) + name.encode()
        body += b"PK\3\4" + common + name.encode() + data
    return bytes(body + directory + end_of_zip(len(entries), len(directory), len(body)))


def end_of_zip(count, length, place):
    """What stands behind an archive's directory; more entries than two bytes count are counted before it as well."""
    large = b""
    if count > 0xFFFF:
        large = struct.pack("<IQHHIIQQQQ", 0x06064B50, 44, 45, 45, 0, 0, count, count, length, place)
        large += struct.pack("<IIQI", 0x07064B50, 0, place + length, 1)
        count = 0xFFFF
    return large + struct.pack("<IHHHHIIH", 0x06054B50, 0, 0, count, count, length, place, 0)


class CheckTest(unittest.TestCase):
    """One workstation for a class; the program lies alone in a folder."""

    own_surroundings = Surroundings("en")
    keeps = {"language": "its words are English"}

    @classmethod
    def setUpClass(cls):
        cls.folder = Path(tempfile.mkdtemp(prefix="check-"))
        cls.surroundings = chosen(cls)
        cls.station = Workstation(cls.folder / "station", surroundings=cls.surroundings)
        target = cls.station.path(r"C:\Check")
        target.mkdir()
        shutil.copy2(BINARIES / "BackupCheck.exe", target)
        cls.medium = cls.station.add_drive("e")
        cls.target = cls.station.add_drive("d", "fixed")

    @classmethod
    def tearDownClass(cls):
        cls.station.remove()
        shutil.rmtree(cls.folder, ignore_errors=True)

    def setUp(self):
        for drive in (self.medium, self.target):
            for entry in drive.iterdir():
                shutil.rmtree(entry) if entry.is_dir() else entry.unlink()

    def run_program(self, *arguments, password=PASSWORD, seconds=60):
        """The exit code and what the program wrote; the password comes by standard input."""
        done = run_check(self.station, r"C:\Check", *arguments, password=password, seconds=seconds)
        return done.returncode, done.stdout.decode("utf-8")

    def check(self, *arguments, place="E:\\", **options):
        """The exit code and the report of a check."""
        code, self.lines = self.run_program("/check", place, "/report", "D:\\report.json", *arguments, **options)
        return code, json.loads((self.target / "report.json").read_text(encoding="utf-8"))

    def recover(self, **options):
        code, self.lines = self.run_program("/recover", "E:\\", "/to", "D:\\Target", "/report", "D:\\report.json", **options)
        return code, json.loads((self.target / "report.json").read_text(encoding="utf-8"))

    def recovered(self):
        """Path below the target to content."""
        root = self.target / "Target"
        return {str(path.relative_to(root)): path.read_bytes() for path in root.rglob("*") if path.is_file()}

    def write_list(self, *rows, encoding=None):
        text = "".join(row + "\r\n" for row in rows)
        (self.medium / LIST_NAME).write_bytes(text.encode(encoding or self.surroundings.encoding))

    def write_archive(self, *inner, password=PASSWORD, names=None):
        """The outer archive, as the archiver makes it item by item."""
        with tempfile.TemporaryDirectory() as folder:
            for number, content in enumerate(inner, 1):
                name = names[number - 1] if names else f"Zip{number:04d}.zip"
                Path(folder, name).write_bytes(content)
                subprocess.run([SEVEN_ZIP, "a", "-tzip", f"-p{password}", "outer.zip", name], cwd=folder, check=True,
                               stdout=subprocess.DEVNULL)
            shutil.copy(Path(folder, "outer.zip"), self.medium / ARCHIVE_NAME)

    def good_medium(self):
        generator = random.Random(5)
        self.files = {
            "C/Docs/budget.xls": generator.randbytes(40_000),
            "C/Docs/Clients/note.txt": b"note " * 9_000,
            "C/Docs/Clients/sous/b.bin": generator.randbytes(9_000),
            "C/Docs/fin.txt": b"fin",
        }
        self.write_list(r"C:\Docs\budget.xls,32,Zip0001", r"C:\Docs\Clients\*.*,-1,Zip0002", r"C:\Docs\fin.txt,32,Zip0003")
        self.inner = [
            zip_of({"budget.xls": self.files["C/Docs/budget.xls"]}),
            zip_of({"Clients/note.txt": self.files["C/Docs/Clients/note.txt"],
                    "Clients/sous/b.bin": self.files["C/Docs/Clients/sous/b.bin"]}),
            with_attributes(zip_of({"fin.txt": b"fin"}), READ_ONLY),
        ]
        self.write_archive(*self.inner)

    def archive(self):
        return self.medium / ARCHIVE_NAME

    def change(self, place, length=1, flip=1):
        content = bytearray(self.archive().read_bytes())
        for at in range(place, min(place + length, len(content))):
            content[at] ^= flip
        self.archive().write_bytes(content)

    def verdicts(self, report):
        return [item["verdict"] for item in report["items"]]

    def data_place(self, name):
        """Where the compressed data of an entry of the outer archive begins, and how long it is."""
        with zipfile.ZipFile(self.archive()) as outer:
            info = outer.getinfo(name)
        head = self.archive().read_bytes()[info.header_offset:info.header_offset + 30]
        name_length, extra_length = struct.unpack("<HH", head[26:30])
        return info.header_offset + 30 + name_length + extra_length, info.compress_size
