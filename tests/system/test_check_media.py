"""The check by its command line on media that are large, that come from a disc, that go, and whose work is broken off."""

import errno
import io
import json
import os
import shutil
import struct
import subprocess
import time
import unittest
import zipfile
import zlib

from burner import Burner, install_image_mastering
from check_test import CANNOT, FAULTY, GOOD, WRONG_PASSWORD, CheckTest, protected_zip, zip_of
from slow_machine import SlowMachine
from system_test import ARCHIVE_NAME, LIST_NAME

from workstation import BINARIES

# Some seconds each on a quiet machine: with this they run too.
IS_LARGE_WANTED = os.environ.get("BACKUP_LARGE_MEDIA") == "1"
IS_LARGE_SKIPPED = "an archive over 4 GiB takes a minute; BACKUP_LARGE_MEDIA=1 runs it"
ZERO_PIECE = bytes(1 << 20)
MANY_ITEMS = 100_000 if IS_LARGE_WANTED else 10_000


def plain_zip(entries):
    """An outer archive without a password, quickly."""
    stream = io.BytesIO()
    with zipfile.ZipFile(stream, "w", allowZip64=True) as outer:
        for name, content in entries:
            outer.writestr(name, content)
    return stream.getvalue()


def checksum(before, zeros, behind=b""):
    """Of some bytes, as many MB of zeros, and what stands behind them."""
    value = zlib.crc32(before)
    for _ in range(zeros >> 20):
        value = zlib.crc32(ZERO_PIECE, value)
    return zlib.crc32(behind, value)


def around_stored(name, size, sum_of_content):
    """What stands before and behind the content of a zip archive with one stored entry, all sizes in 64 bits."""
    name = name.encode()
    sizes = struct.pack("<HHQQ", 1, 16, size, size)
    common = struct.pack("<HHHHHIIIH", 45, 0, 0, 0, 0x5921, sum_of_content, 0xFFFFFFFF, 0xFFFFFFFF, len(name))
    header = b"PK\3\4" + common + struct.pack("<H", len(sizes)) + name + sizes
    directory = (b"PK\1\2" + struct.pack("<H", 45) + common + struct.pack("<HHHHII", len(sizes), 0, 0, 0, 32, 0)
                 + name + sizes)
    place = len(header) + size
    end = struct.pack("<IQHHIIQQQQ", 0x06064B50, 44, 45, 45, 0, 0, 1, 1, len(directory), place)
    end += struct.pack("<IIQI", 0x07064B50, 0, place + len(directory), 1)
    end += struct.pack("<IHHHHIIH", 0x06054B50, 0, 0, 1, 1, len(directory), 0xFFFFFFFF, 0)
    return header, directory + end


class LargeMediaTest(CheckTest):
    @unittest.skipUnless(IS_LARGE_WANTED, IS_LARGE_SKIPPED)
    def test_an_archive_over_four_gib_is_read_to_its_end(self):
        zeros = (4 << 30) + (100 << 20)
        inner_header, inner_tail = around_stored("grand.bin", zeros, checksum(b"", zeros))
        header, tail = around_stored("Zip0001.zip", len(inner_header) + zeros + len(inner_tail),
                                     checksum(inner_header, zeros, inner_tail))
        with open(self.archive(), "wb") as stream:
            stream.write(header + inner_header)
            stream.seek(zeros, os.SEEK_CUR)
            stream.write(inner_tail + tail)
        self.write_list(r"C:\grand.bin,32,Zip0001")
        code, report = self.check(seconds=600)
        self.assertEqual((code, self.verdicts(report)), (GOOD, ["whole"]), self.lines)
        self.assertEqual(report["totals"]["bytes"], zeros)
        with open(self.archive(), "r+b") as stream:
            stream.seek((4 << 30) + 5000)
            stream.write(b"x")
        code, report = self.check(seconds=600)
        self.assertEqual((code, self.verdicts(report)), (FAULTY, ["damaged"]), self.lines)

    def test_many_items_are_read(self):
        content = zip_of({"a.txt": b"a"})
        self.archive().write_bytes(plain_zip((f"Zip{number:04d}.zip", content) for number in range(1, MANY_ITEMS + 1)))
        self.write_list(*(rf"C:\Dossier {number}\a.txt,32,Zip{number:04d}" for number in range(1, MANY_ITEMS + 1)))
        code, report = self.check(password=None, seconds=600)
        self.assertEqual((code, report["totals"]["files"], len(report["items"])), (GOOD, MANY_ITEMS, MANY_ITEMS))


class SlowMachineTest(CheckTest):
    """On a machine whose reads and writes wait when they are told to."""

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.machine = SlowMachine(cls.station)

    @classmethod
    def tearDownClass(cls):
        cls.machine.close()
        super().tearDownClass()

    def setUp(self):
        super().setUp()
        self.addCleanup(self.machine.go_on)


class BrokenOffTest(SlowMachineTest):
    MEGABYTES = 16

    def large_medium(self):
        """A small file, and behind it one of which as much can be unreadable as is taken for a medium that has gone."""
        self.write_list(r"C:\petit.txt,32,Zip0001", r"C:\grand.bin,32,Zip0002")
        self.content = os.urandom(1 << 20) * self.MEGABYTES
        self.write_archive(zip_of({"petit.txt": b"petit"}), zip_of({"grand.bin": self.content}))

    def start_recovery(self):
        """Starts to recover; gives the process once it stands still in the middle of the large file."""
        (self.station.path("C:") / "p.txt").write_bytes(b"Valcoreaux1")
        self.machine.hold("write", "grand.bin", 4 << 20)
        process = subprocess.Popen(
            self.station.wine_command(r"C:\Check\BackupCheck.exe", "/recover", "E:\\", "/to", "D:\\Target",
                                      "/password-file", r"C:\p.txt", "/report", r"C:\report.json"),
            env=self.station.environment, cwd=self.station.prefix, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.addCleanup(process.wait)
        self.addCleanup(process.kill)
        deadline = time.monotonic() + 60
        while not self.machine.is_met():
            self.assertLess(time.monotonic(), deadline, "the large file is not reached")
            self.assertIsNone(process.poll(), "it has ended already")
            time.sleep(0.01)
        return process

    def report(self):
        return json.loads((self.station.path("C:") / "report.json").read_text(encoding="utf-8"))

    def take_up_again(self):
        code, report = self.recover()
        self.assertEqual((code, report["totals"]["recoveredFiles"], report["totals"]["presentFiles"]), (GOOD, 1, 1))
        self.assertEqual(self.recovered()["C/grand.bin"], self.content)

    def test_a_recovery_that_is_killed_leaves_nothing_that_looks_whole_and_is_taken_up_again(self):
        self.large_medium()
        process = self.start_recovery()
        process.kill()
        process.wait()
        self.machine.go_on()
        found = self.recovered()
        self.assertEqual(found["C/petit.txt"], b"petit")
        self.assertNotIn("C/grand.bin", found)
        self.take_up_again()
        self.assertIn("C/grand.bin.damaged", self.recovered(), "who made it is not known any more")

    def test_a_medium_that_goes_ends_with_what_is_whole_and_a_report(self):
        self.large_medium()
        process = self.start_recovery()
        self.station.pull_out("e")
        self.addCleanup(self.put_back, "e")
        self.machine.fail("read", errno.EIO, ARCHIVE_NAME)
        self.assertEqual(process.wait(60), CANNOT)
        self.assertEqual(self.report()["verdict"], "unreadable")
        self.assertEqual(self.recovered()["C/petit.txt"], b"petit")
        self.assertNotIn("C/grand.bin", self.recovered())
        self.put_back("e")
        self.machine.go_on()
        self.take_up_again()

    def test_a_target_that_goes_ends_with_what_is_whole_and_a_report(self):
        self.large_medium()
        process = self.start_recovery()
        self.station.pull_out("d")
        self.addCleanup(self.put_back, "d")
        self.machine.go_on()
        self.assertEqual(process.wait(60), CANNOT)
        self.assertEqual(self.report()["verdict"], "notWritable")
        self.assertEqual(self.recovered()["C/petit.txt"], b"petit")
        self.assertNotIn("C/grand.bin", self.recovered())
        self.put_back("d")
        self.take_up_again()

    def put_back(self, letter):
        if not (self.station.prefix / "dosdevices" / f"{letter}:").is_symlink():
            self.station.plug_in(letter)


class AnswerTest(SlowMachineTest):
    ITEMS = 3000
    READ_MILLISECONDS = 30
    LONGEST_MILLISECONDS = 1000

    def test_a_wrong_password_is_answered_after_as_many_reads_as_a_slow_disk_does_in_a_second(self):
        # A directory of more bytes than are read at once, and as much again between the entries.
        content = zip_of({"a.txt": b"a"})
        names = [f"Zip{number:04d}.zip" for number in range(1, self.ITEMS + 1)]
        self.archive().write_bytes(protected_zip(dict.fromkeys(names, content), b"Valcoreaux1"))
        self.write_list(*(rf"C:\Dossier {number}\a.txt,32,Zip{number:04d}" for number in range(1, self.ITEMS + 1)))
        self.machine.slow_reads(ARCHIVE_NAME, self.READ_MILLISECONDS)
        self.assertEqual(self.check(password="Valcoreaux2")[0], WRONG_PASSWORD)
        self.assertTrue(self.machine.is_met(), "the reads were slow")
        self.assertLess(self.machine.hits() * self.READ_MILLISECONDS, self.LONGEST_MILLISECONDS)


class DiscTest(CheckTest):
    def test_a_disc_of_the_writer_is_good_and_comes_back(self):
        install_image_mastering(self.station)
        console = self.station.path(r"C:\Tools\disc_console.exe")
        shutil.copy2(BINARIES / "disc_console.exe", console)
        drive = Burner(self.station, "g", "cd")
        drive.insert("CD-R")
        self.good_medium()
        done = subprocess.run(
            self.station.wine_command(r"C:\Tools\disc_console.exe", "cd", "0", "burn", "21 nov. 2026", rf"E:\{LIST_NAME}",
                                      rf"E:\{ARCHIVE_NAME}"),
            env=self.station.environment, cwd=self.station.prefix, capture_output=True, check=False)
        self.assertEqual(done.returncode, 0, done.stdout)
        deadline = time.monotonic() + 60
        while drive.disc_settings().get("content") != "shown":
            self.assertLess(time.monotonic(), deadline, drive.disc_settings())
            time.sleep(0.05)
        code, report = self.check(place="G:\\")
        self.assertEqual((code, self.verdicts(report)), (GOOD, ["whole"] * 3))
        self.run_program("/recover", "G:\\", "/to", "D:\\Target")
        self.assertEqual(self.recovered(), self.files)


if __name__ == "__main__":
    unittest.main()
