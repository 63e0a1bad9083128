"""What Windows says of itself reaches the programs, and the main job is the same whatever it says."""

import unittest
from dataclasses import fields
from itertools import combinations, product

from driver import Driver
from program import IDOK
from samples import differences, snapshot
from surroundings import BY_NAME, COVER, UTF8, Surroundings
from system_test import SystemTest
from test_main_job import ComesBack

LANGUAGE_NAMES = {"fr": "français", "en": "English"}
VERSIONS = {"win10": "10.0", "win7": "6.1", "winxp64": "5.2"}
EVERYTHING = {field.name: "a test sets one combination" for field in fields(Surroundings)}
LIST_FOLDER = r"C:\Valcoreaux\Backup\Fichierlst\Medium"
OEM_CODE_PAGES = {"fr": "850", "en": "437"}


class CoverTest(unittest.TestCase):
    def test_any_two_values_of_different_sorts_meet(self):
        for first, second in combinations([field.name for field in fields(Surroundings)], 2):
            met = {(getattr(one, first), getattr(one, second)) for one in COVER}
            self.assertEqual(met, set(product({getattr(one, first) for one in COVER},
                                              {getattr(one, second) for one in COVER})))


class AnswersTest(SystemTest):
    keeps = EVERYTHING

    def answers(self):
        driver = Driver(self.station)
        try:
            return driver.call("surroundings")[0]
        finally:
            driver.stop()

    def test_a_program_sees_each_combination(self):
        for one in COVER:
            with self.subTest(str(one)):
                self.station.stop()
                self.station.surround(one)
                oem = str(UTF8) if one.code_page == UTF8 else OEM_CODE_PAGES[one.language]
                self.assertEqual(self.answers(), [LANGUAGE_NAMES[one.language], VERSIONS[one.version],
                                                  str(one.code_page), oem, one.separator])

    def test_without_one_it_sees_the_language_with_its_own_separator(self):
        for language, separator in (("fr", ","), ("en", ".")):
            with self.subTest(language):
                self.station.stop()
                self.station.set_user_language(language)
                seen = self.answers()
                self.assertEqual((seen[0], seen[2], seen[4]), (LANGUAGE_NAMES[language], "1252", separator))


class MainJobTest(ComesBack, SystemTest):
    """What a user sees and what lands on the medium: words by the language, figures by the separator, the set for Outlook by
    the version, and the list in the code page."""

    keeps = EVERYTHING

    def mail_store(self):
        """One for each age of Windows, of which only the right one may be taken."""
        ages = {"outlookVista.lst": r"C:\Donnees\récent.pst", "outlookXP.lst": r"C:\Donnees\ancien.pst"}
        folder = self.station.path(LIST_FOLDER)
        folder.mkdir(parents=True)
        for name, path in ages.items():
            (folder / name).write_bytes(f"{path}\r\n".encode(self.surroundings.encoding))
            self.station.path(path).parent.mkdir(exist_ok=True)
            self.station.path(path).write_bytes(b"courrier")
        return ages["outlookXP.lst" if self.surroundings.is_before_vista else "outlookVista.lst"]

    def assert_main_job(self, name):
        self.surroundings = BY_NAME[name]
        self.station.surround(self.surroundings)
        self.disk(label="SAUVEGARDE")
        store = self.mail_store()
        letter = self.document("Été à Québec.txt", bytes(2_000_000))
        clients = self.folder("Clients")
        self.document(r"Clients\Bélanger, Éric.doc", b"contrat")
        before = snapshot(self.station.documents)

        program = self.start()
        backup = self.open_backup(program)
        self.assertEqual([row.texts[1] for row in backup.rows("lvFichRep")], [store])
        self.select(backup, letter, clients)
        megabytes = self.number(f"{(2_000_000 + len(b'contrat') + len(b'courrier')) * 1.05 / 1024 / 1024:.3f}")
        self.assertEqual(backup.text("lblEspaceRequis"),
                         f"{self.words('Espace requis pour sauvegarde :')}   {megabytes} {self.words('Megs')}")
        backup.press("cmdLancer")
        self.give_new_password(program)
        self.assertEqual(program.answer(IDOK, 60).title, self.done_title())
        self.assertEqual(program.wait_exit(), 0)
        program.stop()
        self.assertEqual(self.list_lines(), [f"{store},32,Zip0001",
                                             r"**UserProfile**\Documents\Été à Québec.txt,32,Zip0002",
                                             r"**UserProfile**\Documents\Clients\*.*,-1,Zip0003", ""])
        self.delete_documents()
        self.assertEqual(self.restore_all().title, self.restored_title())
        self.assertEqual(differences(before, snapshot(self.station.documents)), [])

    def test_in_french_on_windows_10(self):
        self.assert_main_job("fr-win10-1252-comma")

    def test_in_english_on_windows_10_in_utf_8(self):
        self.assert_main_job("en-win10-65001-point")

    def test_in_french_on_windows_7_in_utf_8_with_a_decimal_point(self):
        self.assert_main_job("fr-win7-65001-point")

    def test_in_english_on_windows_7_with_a_decimal_comma(self):
        self.assert_main_job("en-win7-1252-comma")

    def test_in_french_on_windows_xp_with_a_decimal_point(self):
        self.assert_main_job("fr-winxp64-1252-point")

    def test_in_english_on_windows_xp_in_utf_8_with_a_decimal_comma(self):
        self.assert_main_job("en-winxp64-65001-comma")


if __name__ == "__main__":
    unittest.main()
