"""The check on media that are broken in every way, and on lists that do not fit."""

import random
import unittest
import zipfile

from check_test import FAULTY, GOOD, CheckTest, zip_of
from system_test import LIST_NAME


class DamageTest(CheckTest):
    def test_one_bit_in_a_compressed_stream_spoils_its_item_alone(self):
        self.good_medium()
        for name, index in (("Zip0001.zip", 0), ("Zip0002.zip", 1)):
            place, length = self.data_place(name)
            self.change(place + length // 2)
            code, report = self.check()
            self.change(place + length // 2)
            expected = ["whole"] * 3
            expected[index] = "damaged"
            self.assertEqual((code, self.verdicts(report)), (FAULTY, expected), name)
            item = report["items"][index]
            # A small inner archive is packed again: damage then spoils it before a file of it is reached.
            self.assertTrue(item["findings"] or item["reason"], name)

    def test_a_megabyte_of_damage_is_told_and_what_is_whole_is_recovered(self):
        generator = random.Random(9)
        self.write_list(r"C:\a.bin,32,Zip0001", r"C:\b.txt,32,Zip0002")
        self.write_archive(zip_of({"a.bin": generator.randbytes(3_000_000)}), zip_of({"b.txt": b"b"}))
        self.change(800_000, 1_048_576, 0xA5)
        code, report = self.recover()
        self.assertEqual((code, self.verdicts(report)), (FAULTY, ["damaged", "whole"]))
        self.assertEqual(self.recovered().get("C/b.txt"), b"b")
        self.assertNotIn("C/a.bin", self.recovered())

    def test_damage_anywhere_in_the_outer_directory_is_never_good(self):
        self.good_medium()
        content = self.archive().read_bytes()
        directory = content.index(b"PK\1\2")
        for place in list(range(directory, directory + 46, 3)) + [directory + 48, len(content) - 22, len(content) - 10]:
            self.change(place, flip=0xFF)
            code, report = self.check()
            self.archive().write_bytes(content)
            # Some of its bytes repeat nothing and mean nothing: then everything is there and whole.
            self.assertIn(code, (GOOD, FAULTY), place - directory)
            self.assertEqual(self.verdicts(report).count("whole") + self.verdicts(report).count("damaged"), 3, place - directory)
        self.archive().write_bytes(content[:directory] + bytes(len(content) - directory))
        code, report = self.check()
        self.assertEqual((code, self.verdicts(report), report["archive"]["directory"]), (FAULTY, ["whole"] * 3, "missing"))

    def test_a_destroyed_item_header_does_not_hide_the_next_items(self):
        self.good_medium()
        with zipfile.ZipFile(self.archive()) as outer:
            self.change(outer.getinfo("Zip0002.zip").header_offset, 4, 0xFF)
        code, report = self.check()
        self.assertEqual((code, self.verdicts(report)), (FAULTY, ["whole", "missing", "whole"]))

    def test_a_cut_archive_is_read_as_far_as_it_goes(self):
        self.good_medium()
        content = self.archive().read_bytes()
        begin_of_third = self.data_place("Zip0003.zip")[0]
        for step in range(20):
            length = len(content) * step // 20
            self.archive().write_bytes(content[:length])
            code, report = self.check()
            self.assertEqual(code, FAULTY, length)
            if length > begin_of_third:
                self.assertEqual(self.verdicts(report)[:2], ["whole", "whole"], length)

    def test_damage_in_an_inner_directory_is_told_apart(self):
        self.good_medium()
        inner = bytearray(self.inner[1])
        inner[inner.index(b"PK\1\2") + 3] ^= 1
        self.write_archive(self.inner[0], bytes(inner), self.inner[2])
        code, report = self.check()
        self.assertEqual((code, self.verdicts(report)), (FAULTY, ["whole", "directoryDamaged", "whole"]))
        self.assertEqual(self.recover()[0], FAULTY)
        self.assertEqual(self.recovered(), self.files)

    def test_an_inner_archive_that_was_damaged_when_it_was_saved_is_told_apart(self):
        self.good_medium()
        inner = bytearray(self.inner[0])
        inner[2000] ^= 1
        self.write_archive(bytes(inner), *self.inner[1:])
        self.assertEqual(self.verdicts(self.check()[1]), ["damagedWhenSaved", "whole", "whole"])

    def test_inner_archives_that_are_cut_or_empty_are_told(self):
        self.good_medium()
        self.write_archive(self.inner[0][:20_000], self.inner[1][:-30], b"PK\5\6" + bytes(18))
        code, report = self.check()
        self.assertEqual((code, self.verdicts(report)), (FAULTY, ["cut", "directoryDamaged", "empty"]))


class ListTest(CheckTest):
    keeps = CheckTest.keeps | {"code_page": "which letters a list has lost depends on it"}

    def test_missing_extra_and_swapped_inner_archives_are_told(self):
        self.good_medium()
        self.write_archive(self.inner[1], self.inner[0], self.inner[2], names=["Zip0001.zip", "Zip0002.zip", "Zip0007.zip"])
        code, report = self.check()
        self.assertEqual((code, self.verdicts(report)), (FAULTY, ["otherBackup", "otherBackup", "missing", "notListed"]))

    def test_without_its_list_a_backup_is_recovered_by_its_archives(self):
        self.good_medium()
        (self.medium / LIST_NAME).unlink()
        code, report = self.recover()
        self.assertEqual((code, report["list"]), (FAULTY, "missing"))
        self.assertEqual(self.recovered()["Zip0001/budget.xls"], self.files["C/Docs/budget.xls"])
        self.assertEqual(self.recovered()["Zip0002/Clients/note.txt"], self.files["C/Docs/Clients/note.txt"])

    def test_a_list_of_two_fields_is_told_and_recovered(self):
        self.good_medium()
        self.write_list(r"C:\Docs\budget.xls,32", r"C:\Docs\Clients\*.*,-1", r"C:\Docs\fin.txt,32")
        code, report = self.recover()
        self.assertEqual((code, report["items"][0]["problems"]), (FAULTY, ["twoFields"]))
        self.assertEqual(self.recovered(), self.files)

    def test_a_comma_is_told_and_recovered(self):
        self.write_list(r"C:\Docs\a.txt,32,Zip0001", r"C:\Docs\Roy, Anne.doc,32,Zip0002")
        self.write_archive(zip_of({"a.txt": b"a"}), zip_of({"Roy, Anne.doc": b"roy"}))
        code, report = self.recover()
        self.assertEqual((code, report["items"][1]["problems"], report["items"][0]["verdict"]), (FAULTY, ["comma"], "whole"))
        self.assertEqual(self.recovered(), {"C/Docs/a.txt": b"a", "C/Docs/Roy, Anne.doc": b"roy"})

    def test_names_of_other_alphabets_come_back(self):
        names = ["Łukasz.txt", "日本.txt", "Ωmega.txt", "é.txt"]
        self.write_list("C:\\?ukasz.txt,32,Zip0001", "C:\\??.txt,32,Zip0002", "C:\\?mega.txt,32,Zip0003", "C:\\é.txt,32,Zip0004")
        self.write_archive(*(zip_of({name: name.encode()}) for name in names))
        code, report = self.recover()
        self.assertEqual((code, [item["problems"] for item in report["items"]]),
                         (FAULTY, [["lostLetters"]] * 3 + [[]]))
        self.assertEqual(self.recovered(), {f"C/{name}": name.encode() for name in names})

    def test_mail_stores_of_one_name_are_told(self):
        self.write_list(r"C:\a\mail.pst,32,Zip0001", r"C:\b\mail.pst,32,Zip0002")
        self.write_archive(zip_of({"mail.pst": b"1"}), zip_of({"mail.pst": b"2"}))
        code, report = self.recover()
        self.assertEqual((code, report["items"][0]["problems"]), (FAULTY, ["sharedMailStore"]))
        self.assertEqual(self.recovered(), {"C/a/mail.pst": b"1", "C/b/mail.pst": b"2"})


if __name__ == "__main__":
    unittest.main()
