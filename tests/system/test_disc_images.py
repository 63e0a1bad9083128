"""What the disc writer leaves on a disc, looked at with other tools, and under the drive's letter."""

import filecmp
import hashlib
import os
import re
import shutil
import subprocess
import tempfile
import time
import unittest
from pathlib import Path

from burner import Burner, install_image_mastering
from system_test import ARCHIVE_NAME, LIST_NAME, SEVEN_ZIP, SystemTest
from workstation import BINARIES

CONSOLE = r"C:\Tools\disc_console.exe"


def digest(path):
    with open(path, "rb") as stream:
        return hashlib.file_digest(stream, "sha256").hexdigest()


class DiscImageTest(SystemTest):
    def setUp(self):
        super().setUp()
        install_image_mastering(self.station)
        shutil.copy2(BINARIES / "disc_console.exe", self.station.path(CONSOLE))
        self.work = self.station.path(r"C:\work")
        self.work.mkdir()
        self.scratch = Path(tempfile.mkdtemp(dir=self.station.prefix))

    def make(self, archive_bytes, text="C:\\Documents\\été.txt\t32\tZip0001.zip\r\n"):
        """The two files of a backup; an archive that is not small is mostly holes."""
        (self.work / LIST_NAME).write_bytes(text.encode("cp1252"))
        with open(self.work / ARCHIVE_NAME, "wb") as stream:
            stream.write(os.urandom(min(archive_bytes, 1_000_003)))
            stream.truncate(archive_bytes)
            stream.seek(-7, os.SEEK_END)
            stream.write(b"the end")

    def console(self, *arguments):
        done = subprocess.run(self.station.wine_command(CONSOLE, *arguments), env=self.station.environment,
                              cwd=self.work, capture_output=True, text=True, encoding="cp1252", check=False)
        self.assertEqual(done.returncode, 0, done.stdout)
        return done.stdout

    def burn(self, family="cd", label="21 nov., 2026"):
        return self.console(family, "0", "burn", label, rf"C:\work\{LIST_NAME}", rf"C:\work\{ARCHIVE_NAME}")

    def originals(self):
        return {name: digest(self.work / name) for name in (LIST_NAME, ARCHIVE_NAME)}

    def seen_by_7z(self, image):
        target = self.scratch / "by 7-Zip"
        subprocess.run([SEVEN_ZIP, "x", "-y", f"-o{target}", str(image)], check=True, capture_output=True)
        return {str(path.relative_to(target)): digest(path) for path in target.rglob("*")}

    def seen_by_xorriso(self, image):
        target = self.scratch / "by xorriso"
        subprocess.run(["xorriso", "-osirrox", "on", "-indev", str(image), "-extract", "/", str(target)], check=True,
                       capture_output=True)
        subprocess.run(["chmod", "-R", "u+w", str(target)], check=True)
        return {str(path.relative_to(target)): digest(path) for path in target.rglob("*")}

    def shown(self, drive):
        """What the drive's letter shows once the disc is mounted."""
        self.wait_shown(drive)
        return {path.name: digest(path) for path in drive.volume.iterdir() if path.name != ".windows-label"}

    def wait_shown(self, drive, seconds=60):
        deadline = time.monotonic() + seconds
        while drive.disc_settings().get("content") != "shown":
            self.assertLess(time.monotonic(), deadline, drive.disc_settings())
            time.sleep(0.05)

    def test_a_cd_holds_exactly_the_two_files_for_other_tools(self):
        drive = Burner(self.station, "g", "cd")
        drive.insert("CD-R")
        self.make(5_000_001)
        self.burn()
        self.assertEqual(self.seen_by_xorriso(drive.image), self.originals())
        self.assertEqual(self.seen_by_7z(drive.image), self.originals())
        self.assertEqual(self.shown(drive), self.originals())
        listed = subprocess.run([SEVEN_ZIP, "l", "-slt", str(drive.image)], check=True, capture_output=True, text=True).stdout
        self.assertRegex(listed, r"(?m)^Type = Iso$")

    def test_the_label_is_the_date_in_an_acceptable_form(self):
        drive = Burner(self.station, "g", "cd")
        drive.insert("CD-R")
        self.make(1000)
        self.burn(label="21 nov., 2026")
        told = subprocess.run(["xorriso", "-indev", str(drive.image), "-toc"], check=True, capture_output=True, text=True)
        self.assertIn("21_NOV._2026".replace(".", "_"), told.stdout + told.stderr)
        self.wait_shown(drive)
        self.assertEqual((drive.volume / ".windows-label").read_text().strip(), "21_nov._2026")

    def test_an_archive_of_two_gib_is_written_whole_as_udf(self):
        drive = Burner(self.station, "k", "dvd")
        drive.insert("DVD+R")
        self.make(2**31 + 4321)
        self.burn("dvd")
        listed = subprocess.run([SEVEN_ZIP, "l", "-slt", str(drive.image)], check=True, capture_output=True, text=True).stdout
        self.assertRegex(listed, r"(?m)^Type = Udf$")
        self.assertEqual(sorted(re.findall(r"(?m)^Path = (\S+)$", listed)[1:]), sorted([LIST_NAME, ARCHIVE_NAME]))
        compared = subprocess.run(f'{SEVEN_ZIP} x -so "{drive.image}" {ARCHIVE_NAME} | cmp - "{self.work / ARCHIVE_NAME}"',
                                  shell=True, check=False, capture_output=True, text=True)
        self.assertEqual((compared.returncode, compared.stdout), (0, ""))
        self.wait_shown(drive)
        self.assertTrue(filecmp.cmp(drive.volume / ARCHIVE_NAME, self.work / ARCHIVE_NAME, shallow=False))

    def test_a_second_session_takes_the_place_of_the_first_for_other_tools(self):
        drive = Burner(self.station, "g", "cd")
        drive.insert("CD-R")
        self.make(3_000_000)
        self.burn()
        self.wait_shown(drive)
        first_used = int(drive.disc_settings()["used"])
        self.make(2_000_000, "another line\r\n")
        self.burn()
        self.assertGreater(int(drive.disc_settings()["used"]), first_used + 2_000_000)
        self.assertEqual(self.seen_by_xorriso(drive.image), self.originals())
        self.assertEqual(self.shown(drive), self.originals())

    def test_an_erased_disc_shows_nothing_and_takes_a_new_backup(self):
        drive = Burner(self.station, "g", "cd")
        drive.insert("CD-RW")
        self.make(100_000)
        self.burn()
        self.wait_shown(drive)
        self.assertRegex(self.console("cd", "0", "erase", "quick"), r"operation 1 stage \d percent 100")
        self.assertEqual(list(drive.volume.iterdir()), [])
        self.assertFalse(drive.image.exists())
        self.burn()
        self.assertEqual(self.seen_by_xorriso(drive.image), self.originals())

    def test_every_percentage_is_told_once_and_in_order(self):
        drive = Burner(self.station, "g", "cd")
        drive.insert("CD-R")
        self.make(30_000_000)
        percentages = [int(found) for found in re.findall(r"operation 11 stage 1 percent (\d+)", self.burn())]
        self.assertEqual(percentages, sorted(set(percentages)))
        self.assertEqual(percentages[-1], 100)


if __name__ == "__main__":
    unittest.main()
