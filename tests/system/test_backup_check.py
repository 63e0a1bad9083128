"""The check by its command line: good media, passwords, places, and what is not to happen."""

import io
import os
import shutil
import stat
import unittest
import zipfile

from check_test import (CANNOT, FAULTY, GOOD, NO_BACKUP, PASSWORD, WRITTEN_AT, WRONG_PASSWORD, WRONG_USAGE, CheckTest,
                        protected_zip, zip_of)
from system_test import ARCHIVE_NAME

from workstation import CannotHave


class GoodMediumTest(CheckTest):
    def test_a_good_medium_is_good_by_every_name_of_its_place(self):
        self.good_medium()
        for place in ("E:\\", "E:", "e:\\", "E:\\" + ARCHIVE_NAME, "E:\\\\"):
            code, report = self.check(place=place)
            self.assertEqual((code, report["verdict"], self.verdicts(report)), (GOOD, "good", ["whole"] * 3), place)
        self.assertEqual(report["totals"]["files"], 4)
        self.assertEqual(report["totals"]["bytes"], sum(map(len, self.files.values())))

    def test_a_copied_medium_in_a_folder_with_blanks_is_found(self):
        self.good_medium()
        folder = self.target / "une copie"
        shutil.copytree(self.medium, folder)
        self.assertEqual(self.check(place="D:\\une copie\\")[0], GOOD)
        self.assertEqual(self.check(place="D:\\une copie")[0], GOOD)

    def test_everything_comes_back_with_its_time_and_attributes_and_nothing_is_written_to_the_medium(self):
        self.good_medium()
        before = {path.name: path.read_bytes() for path in self.medium.iterdir()}
        code, report = self.recover()
        self.assertEqual((code, self.recovered()), (GOOD, self.files))
        self.assertEqual(report["totals"]["recoveredFiles"], 4)
        self.assertEqual({path.name: path.read_bytes() for path in self.medium.iterdir()}, before)
        root = self.target / "Target"
        written = {str(path.relative_to(root)): path.stat().st_mtime for path in root.rglob("*")}
        for name in (*self.files, "C/Docs/Clients", "C/Docs/Clients/sous"):
            self.assertEqual(written[name], WRITTEN_AT, name)
        for folder in ("C", "C/Docs"):
            self.assertGreater(written[folder], WRITTEN_AT, "it was no part of the backup")
        read_only = [name for name in self.files if not (root / name).stat().st_mode & stat.S_IWUSR]
        self.assertEqual(read_only, ["C/Docs/fin.txt"])

    def test_a_second_recovery_finds_everything_there(self):
        self.good_medium()
        self.recover()
        code, report = self.recover()
        self.assertEqual((code, self.recovered()), (GOOD, self.files))
        self.assertEqual((report["totals"]["recoveredFiles"], report["totals"]["presentFiles"]), (0, 4))

    def test_another_file_in_the_place_is_left_alone(self):
        self.good_medium()
        other = self.target / "Target/C/Docs/fin.txt"
        other.parent.mkdir(parents=True)
        other.write_bytes(b"FIN")
        self.assertEqual(self.recover()[0], GOOD)
        self.assertEqual((other.read_bytes(), other.with_name("fin (2).txt").read_bytes()), (b"FIN", b"fin"))

    def test_a_password_file_serves_as_standard_input_does(self):
        self.good_medium()
        (self.target / "p.txt").write_bytes(PASSWORD.encode() + b"\r\n")
        self.assertEqual(self.check("/password-file", "D:\\p.txt", password=None)[0], GOOD)
        self.assertEqual(self.run_program("/check", "E:\\", "/password-file", "D:\\none.txt", password=None)[0], CANNOT)

    def test_what_is_told_is_told_in_words_too(self):
        self.good_medium()
        self.check()
        self.assertIn("The backup is good", self.lines)
        self.run_program("/check", "E:\\", "/report", "D:\\report.txt")
        self.assertIn("The backup is good", (self.target / "report.txt").read_text(encoding="utf-8-sig"))


class PasswordTest(CheckTest):
    keeps = CheckTest.keeps | {"code_page": "in UTF-8 a password has no bytes of another encoding to be tried"}

    def test_a_wrong_password_and_a_missing_one_are_no_damage(self):
        self.good_medium()
        for wrong in ("Valcoreaux2", "valcoreaux1", "", " Valcoreaux1x", "Été12345"):
            self.assertEqual(self.check(password=wrong)[0], WRONG_PASSWORD, wrong)
        code, report = self.check(password=None)
        self.assertEqual((code, report["verdict"]), (WRONG_PASSWORD, "passwordMissing"))

    def test_line_ends_are_no_part_of_it(self):
        self.good_medium()
        for end in (b"\r\n", b"\n", b"\r\nmore\r\n"):
            self.assertEqual(self.check(password=PASSWORD.encode() + end)[0], GOOD, end)

    def test_the_first_word_opens_what_the_archiver_made_with_it(self):
        self.write_list(r"C:\fin.txt,32,Zip0001")
        self.write_archive(zip_of({"fin.txt": b"fin"}), password="Mon")
        code, report = self.check(password="Mon secret 2026")
        self.assertEqual((code, report["password"]), (GOOD, "firstWord"))
        self.assertIn("first word", self.lines)

    def test_an_accented_password_opens(self):
        self.write_list(r"C:\fin.txt,32,Zip0001", r"C:\b.txt,32,Zip0002")
        # The archiver itself takes none; other programs do, in one of these encodings.
        for encoding in ("cp437", "cp1252", "utf-8"):
            self.archive().write_bytes(protected_zip(
                {"Zip0001.zip": zip_of({"fin.txt": b"fin"}), "Zip0002.zip": zip_of({"b.txt": b"b" * 500})},
                "Eté12345".encode(encoding)))
            code, report = self.check(password="Eté12345")
            self.assertEqual((code, report["password"]), (GOOD, "whole"), encoding)


class PlaceTest(CheckTest):
    def test_places_without_a_backup(self):
        code, report = self.check()
        self.assertEqual((code, report["verdict"]), (NO_BACKUP, "noBackup"))
        self.assertEqual(self.check(place="Q:\\")[0], NO_BACKUP)
        self.write_list(r"C:\a.txt,32,Zip0001")
        code, report = self.check()
        self.assertEqual((code, report["verdict"]), (NO_BACKUP, "olderFormat"))

    def test_an_empty_archive_is_not_good(self):
        self.write_list()
        self.archive().write_bytes(b"")
        self.assertEqual(self.check()[0], FAULTY)
        self.archive().write_bytes(b"PK\5\6" + bytes(18))
        self.assertEqual(self.check()[0], FAULTY)

    def test_wrong_usage(self):
        for arguments in (["/check"], ["/check", "E:\\", "/to", "D:\\x"], ["/recover", "E:\\"], ["/nonsense"],
                          ["/check", "E:\\", "/check", "E:\\"], ["/check", "E:\\", "/report"]):
            self.assertEqual(self.run_program(*arguments, password=None)[0], WRONG_USAGE, arguments)

    def test_hostile_names_stay_in_the_target(self):
        stream = io.BytesIO()
        with zipfile.ZipFile(stream, "w") as inner:
            for name in ("../../../up.txt", "/abs.txt", "C:/Windows/drive.txt", "..\\..\\back.txt", "a.txt:stream", "NUL",
                         "COM1.txt", "\\\\server\\share\\x.txt", "dot./x.txt", "good.txt"):
                inner.writestr(name, name)
        self.write_list("C:\\..\\..\\good.txt,32,Zip0001")
        self.write_archive(stream.getvalue())
        before = self.outside()
        code, report = self.recover()
        self.assertEqual(code, FAULTY)
        self.assertEqual(self.outside(), before)
        self.assertIn("Zip0001/good.txt", self.recovered())
        self.assertTrue([finding for finding in report["items"][0]["findings"] if finding["what"] == "refused"])

    def outside(self):
        """Every file of the workstation but those of the target and the report."""
        skipped = (self.target / "Target", self.target / "report.json")
        return sorted(str(path) for drive in self.station.prefix.glob("drive_*") for path in drive.rglob("*")
                      if path.is_file() and "windows" not in path.parts
                      and not any(path.is_relative_to(place) for place in skipped))

    def test_a_target_without_room_is_told_and_left_clean(self):
        self.write_list(r"C:\a.bin,32,Zip0001", r"C:\b.bin,32,Zip0002")
        self.write_archive(zip_of({"a.bin": b"a" * 1000}), zip_of({"b.bin": bytes(30_000_000)}))
        try:
            small = self.station.add_drive("f", "fixed", size_megabytes=8)
        except CannotHave as reason:
            self.skipTest(str(reason))
        code, _ = self.run_program("/recover", "E:\\", "/to", "F:\\Target")
        self.assertEqual(code, CANNOT)
        found = {str(path.relative_to(small)): path.stat().st_size for path in small.rglob("*") if path.is_file()}
        self.assertEqual(found, {"Target/C/a.bin": 1000})

    def test_a_target_that_cannot_be_written_is_told(self):
        self.good_medium()
        (self.target / "Target").write_bytes(b"a file")
        self.assertEqual(self.recover()[0], CANNOT)


class ComparisonTest(CheckTest):
    def test_what_the_backup_lacks_is_told(self):
        self.good_medium()
        here = self.station.path(r"C:\Docs")
        for path, content in self.files.items():
            place = here.parent / path[2:]
            place.parent.mkdir(parents=True, exist_ok=True)
            place.write_bytes(content)
            os.utime(place, (1_600_000_000, 1_600_000_000))
        self.assertEqual(self.check("/compare")[0], GOOD)
        (here / "fin.txt").write_bytes(b"FIN")
        os.utime(here / "fin.txt", (4_000_000_000, 4_000_000_000))
        absent = here / "Clients" / "ouvert.pst"
        absent.write_bytes(b"x")
        os.utime(absent, (1_600_000_000, 1_600_000_000))
        code, report = self.check("/compare")
        found = {(finding["file"], finding["what"]) for item in report["items"] for finding in item["findings"]}
        self.assertIn(("fin.txt", "newer"), found)
        self.assertTrue({("Clients/ouvert.pst", "absent"), ("Clients/ouvert.pst", "addedSince")} & found)


if __name__ == "__main__":
    unittest.main()
