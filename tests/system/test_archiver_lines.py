"""What the archiver makes of the command lines that are out of the ordinary."""

import unittest
import zipfile

from system_test import ARCHIVE_NAME, FAILED_COPY, SystemTest

from program import IDOK

SPACED = "Ab1 defgh"
FIRST_WORD = "Ab1"
ACCENTED = "Eté12345"
QUOTED = 'Ab1"defgh'


class ArchiverLinesTest(SystemTest):
    def test_a_folder_dropped_with_a_backslash_at_its_end_comes_back_as_a_folder(self):
        self.disk()
        folder = self.folder("Clients")
        path = self.document(r"Clients\a.txt", b"contenu")
        program = self.start()
        backup = self.open_backup(program)
        backup.drop("lvFichRep", folder + "\\")
        program.wait(lambda: backup.row_count("lvFichRep") == 1, "the folder's row")
        backup.press("cmdLancer")
        self.give_new_password(program)
        self.assertEqual(program.answer(IDOK, 60).title, self.words("Copie de sécurité terminée"))
        self.assertEqual(program.wait_exit(), 0)
        program.stop()
        self.assertEqual(self.inner_archives(), {"Zip0001.zip": {"Clients/": None, "Clients/a.txt": b"contenu"}})
        self.station.path(path).unlink()
        self.restore_all()
        self.assertEqual(self.station.path(path).read_bytes(), b"contenu")

    def test_a_password_with_a_space_protects_with_its_first_word_and_brings_nothing_back(self):
        self.disk()
        path = self.document("a.txt", b"sauvegarde")
        # The line falls apart at the space on both ways; no exit code is looked at.
        self.assertEqual(self.back_up(path, password=SPACED).title, self.words("Copie de sécurité terminée"))
        self.assertEqual(self.check_archive_with_7zip(FIRST_WORD), 0)
        self.assertNotEqual(self.check_archive_with_7zip(SPACED), 0)
        self.assertEqual(self.inner_archives(password=FIRST_WORD), {"Zip0001.zip": {"a.txt": b"sauvegarde"}})
        self.station.path(path).write_bytes(b"plus recent")
        self.assertEqual(self.restore_all(password=SPACED).title, self.words("Restauration des fichiers"))
        self.assertEqual(self.station.path(path).read_bytes(), b"plus recent")
        self.restore_all(password=FIRST_WORD)
        self.assertEqual(self.station.path(path).read_bytes(), b"sauvegarde")

    def test_a_password_with_an_accent_gives_no_backup_and_says_so(self):
        self.disk()
        path = self.document("a.txt", b"sauvegarde")
        program = self.start()
        backup = self.open_backup(program)
        self.select(backup, path)
        backup.press("cmdLancer")
        self.give_new_password(program, ACCENTED)
        self.assertIn("53", program.answer(IDOK, 60).text)
        self.assertEqual(program.answer(IDOK, 60).text, self.words(FAILED_COPY))
        backup.wait_enabled("cmdPrecedent")
        self.assertEqual(self.station.medium_files("e"), [])

    def test_a_password_with_a_quotation_mark_takes_no_item_into_the_backup(self):
        self.disk()
        path = self.document("a.txt", b"sauvegarde")
        self.assertEqual(self.back_up(path, password=QUOTED).title, self.words("Copie de sécurité terminée"))
        # The mark takes the rest of the line into the password, and the archiver packs what lies in the folder where it is.
        with zipfile.ZipFile(self.station.path("e:") / ARCHIVE_NAME) as outer:
            names = outer.namelist()
        self.assertEqual([name for name in names if name.startswith("Zip")], [])

    def test_of_two_mail_stores_of_one_name_the_later_one_stays(self):
        self.disk()
        self.write_backup([r"C:\Donnees\archive.pst,32,Zip0001", r"C:\Anciens\archive.pst,32,Zip0002"],
                          {1: {"archive.pst": b"premier"}, 2: {"archive.pst": b"second"}})
        self.restore_all()
        self.assertEqual(self.station.path(r"C:\ValcoreauxTechno\OutlookBK\archive.pst").read_bytes(), b"second")

    def test_a_comma_in_the_first_path_of_a_list_lets_nothing_come_back(self):
        self.disk()
        paths = [self.document("Roy, Anne.txt", b"1"), self.document("b.txt", b"2")]
        self.assertEqual(self.back_up(*paths).title, self.words("Copie de sécurité terminée"))
        self.assertEqual(self.inner_archives(),
                         {"Zip0001.zip": {"Roy, Anne.txt": b"1"}, "Zip0002.zip": {"b.txt": b"2"}})
        for path in paths:
            self.station.path(path).unlink()
        self.restore_all()
        self.assertEqual([self.station.path(path).exists() for path in paths], [False, False])

    def test_an_item_of_a_drive_that_is_not_there_does_not_come_back_and_nothing_says_so(self):
        self.disk()
        path = self.document("b.txt")
        self.write_backup([r"X:\Plans\plan.txt,32,Zip0001", f"{path},32,Zip0002"],
                          {1: {"plan.txt": b"plan"}, 2: {"b.txt": b"sauvegarde"}})
        box = self.restore_all()
        self.assertEqual((box.title, box.icon), (self.words("Restauration des fichiers"), "exclamation"))
        self.assertEqual(self.station.path(path).read_bytes(), b"sauvegarde")
        self.assertEqual(list(self.station.path("C:").rglob("plan.txt")), [])


if __name__ == "__main__":
    unittest.main()
