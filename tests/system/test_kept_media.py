"""Media that an earlier Backup wrote: every later check must read them and get all of it out."""

import shutil
import unittest

from check_test import GOOD, CheckTest
from system_test import PROJECT

FIXTURES = PROJECT / "tests" / "fixtures"
DOCUMENTS = "C/users/agent/Documents/"


class KeptMediaTest(CheckTest):
    keeps = CheckTest.keeps | {"code_page": "the media were written in 1252, and no list tells its code page"}

    def put_in(self, name):
        for path in (FIXTURES / name).iterdir():
            shutil.copy(path, self.medium)

    def test_a_whole_medium_comes_back_byte_by_byte(self):
        self.put_in("whole")
        code, report = self.recover()
        self.assertEqual((code, report["verdict"], report["password"]), (GOOD, "good", "whole"))
        self.assertEqual(self.recovered(), {
            DOCUMENTS + "budget.xls": b"budget " * 300,
            DOCUMENTS + "Été à Québec.txt": "réunion".encode("cp1252"),
            DOCUMENTS + "vide.txt": b"",
            DOCUMENTS + "Clients/Łukasz 日本 Ωmega.txt": "Ω".encode(),
            DOCUMENTS + "Clients/sous dossier/note.doc": b"note " * 50,
        })

    def test_a_medium_under_the_first_word_of_its_password_comes_back(self):
        self.put_in("first-word")
        code, report = self.recover(password="Mon Secret 2026")
        self.assertEqual((code, report["password"]), (GOOD, "firstWord"))
        self.assertEqual(self.recovered(), {DOCUMENTS + "note.txt": b"note " * 40})


if __name__ == "__main__":
    unittest.main()
