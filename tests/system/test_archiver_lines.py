"""What the archiver makes of the command lines that are out of the ordinary."""

import unittest

from system_test import SystemTest

from program import IDOK

SPACED = "Ab1 defgh"
FIRST_WORD = "Ab1"


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
        self.assertEqual(program.answer(IDOK, 60).title, "Copie de sécurité terminée")
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
        self.assertEqual(self.back_up(path, password=SPACED).title, "Copie de sécurité terminée")
        self.assertEqual(self.check_archive_with_7zip(FIRST_WORD), 0)
        self.assertNotEqual(self.check_archive_with_7zip(SPACED), 0)
        self.assertEqual(self.inner_archives(password=FIRST_WORD), {"Zip0001.zip": {"a.txt": b"sauvegarde"}})
        self.station.path(path).write_bytes(b"plus recent")
        self.assertEqual(self.restore_all(password=SPACED).title, "Restauration des fichiers")
        self.assertEqual(self.station.path(path).read_bytes(), b"plus recent")
        self.restore_all(password=FIRST_WORD)
        self.assertEqual(self.station.path(path).read_bytes(), b"sauvegarde")


if __name__ == "__main__":
    unittest.main()
