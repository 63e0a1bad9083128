"""The main job on real files: what is backed up to a removable disk comes back byte by byte."""

import os
import random
import shutil
import stat
import unittest

from surroundings import Surroundings
from system_test import ARCHIVE_NAME, LIST_NAME, PASSWORD, SystemTest

from program import IDOK
from samples import differences, snapshot

PATH_LENGTH = 250


class ComesBack:
    """The whole way: to the disk, and back after the originals are gone."""

    def done_title(self):
        return self.words("Copie de sécurité terminée")

    def restored_title(self):
        return self.words("Restauration des fichiers")

    def assert_comes_back(self, *paths, seconds=240):
        before = snapshot(self.station.documents)
        self.assertEqual(self.back_up(*paths, seconds=seconds).title, self.done_title())
        self.assertEqual(self.station.medium_files("e"), [ARCHIVE_NAME, LIST_NAME])
        self.assertEqual(self.check_archive_with_7zip(), 0)
        self.delete_documents()
        self.assertEqual(self.restore_all(seconds=seconds).title, self.restored_title())
        self.assertEqual(differences(before, snapshot(self.station.documents)), [])

    def delete_documents(self):
        for path in self.station.documents.rglob("*"):
            path.chmod(0o777 if path.is_dir() else 0o666)
        shutil.rmtree(self.station.documents)
        self.station.documents.mkdir()


class MainJob(ComesBack):
    """Both languages run the same tests."""

    def test_files_and_folders_of_every_sort_come_back(self):
        self.disk(label="SAUVEGARDE")
        generator = random.Random(7)
        paths = [
            self.document("budget.xls", generator.randbytes(50_000)),
            self.document("vide.txt", b""),
            self.document("Été à Québec.txt", "réunion à l'été".encode("cp1252")),
            self.document(".caché", b"point"),
            self.document("avec espaces.doc", b"espaces"),
            self.folder("Dossier vide"),
            self.folder("Clients"),
        ]
        self.document(r"Clients\Bélanger, Éric.doc", generator.randbytes(3_000))
        self.document(r"Clients\.profil", b"point")
        self.document(r"Clients\sous dossier\à lire.txt", b"lire")
        self.folder(r"Clients\vide")
        self.assert_comes_back(*paths)

    def test_the_medium_holds_one_archive_for_each_item_and_each_line_names_one(self):
        self.disk()
        paths = [self.document("a.txt", b"premier"), self.folder("Dossier"), self.document("c.txt", b"troisieme")]
        self.document(r"Dossier\b.txt", b"second")
        self.back_up(*paths)
        self.assertEqual(self.list_lines(), [
            r"**UserProfile**\Documents\a.txt,32,Zip0001",
            r"**UserProfile**\Documents\Dossier\*.*,-1,Zip0002",
            r"**UserProfile**\Documents\c.txt,32,Zip0003",
            "",
        ])
        self.assertEqual(self.inner_archives(), {
            "Zip0001.zip": {"a.txt": b"premier"},
            "Zip0002.zip": {"Dossier/": None, "Dossier/b.txt": b"second"},
            "Zip0003.zip": {"c.txt": b"troisieme"},
        })

    def test_the_archive_does_not_open_with_another_password(self):
        self.disk()
        self.back_up(self.document("a.txt"))
        self.assertEqual(self.check_archive_with_7zip(PASSWORD), 0)
        self.assertNotEqual(self.check_archive_with_7zip("Valcoreaux2"), 0)

    def test_the_work_folder_is_gone_after_backup_and_after_restore(self):
        self.disk()
        work_folder = self.station.path(self.station.program_folder) / "zip"
        self.back_up(self.document("a.txt"))
        self.assertFalse(work_folder.exists())
        self.restore_all()
        self.assertFalse(work_folder.exists())

    def test_a_ticked_row_comes_back_and_an_unticked_one_does_not(self):
        self.disk()
        self.back_up(self.document("garder.txt", b"garder"), self.document("laisser.txt", b"laisser"))
        self.delete_documents()
        program = self.start()
        restore = self.open_restore(program)
        self.wait_rows(restore, 2)
        restore.click_row("lvFichiersRepertoires", 1, "tick")
        program.wait(lambda: [row.ticked for row in restore.rows("lvFichiersRepertoires")] == [True, False],
                     "the second row unticked")
        restore.press("cmdLancerRestauration")
        self.give_password(program)
        program.answer(IDOK)
        self.assertEqual(program.wait_exit(), 0)
        self.assertEqual(os.listdir(self.station.documents), ["garder.txt"])

    def test_the_rows_say_path_and_kind(self):
        self.disk()
        self.back_up(self.document("a.txt"), self.folder("Dossier"))
        program = self.start()
        restore = self.open_restore(program)
        self.wait_rows(restore, 2)
        documents = self.station.windows_path(self.station.documents)
        self.assertEqual([row.texts[:2] for row in restore.rows("lvFichiersRepertoires")],
                         [(documents + r"\a.txt", self.file_word), (documents + r"\Dossier\*.*", self.folder_word)])


class FrenchMainJobTest(MainJob, SystemTest):
    keeps = {"language": "its words are French"}
    file_word = "Fichier"
    folder_word = "Rep."


class EnglishMainJobTest(MainJob, SystemTest):
    own_surroundings = Surroundings("en")
    keeps = {"language": "its words are English"}
    file_word = "File"
    folder_word = "Dir."

    def done_title(self):
        return "Backup successfully completed"

    def restored_title(self):
        return "Restore of files"


class DemandingContentTest(ComesBack, SystemTest):
    """What takes long, or does not depend on the language, is shown in one."""

    def test_a_file_of_300_megabytes_comes_back(self):
        self.disk()
        generator = random.Random(11)
        path = self.document("grand.bin")
        with open(self.station.path(path), "wb") as stream:
            for _ in range(300):
                stream.write(generator.randbytes(4096) + bytes(1024 * 1024 - 4096))
        self.assert_comes_back(path)

    def test_500_small_files_come_back(self):
        self.disk()
        for number in range(500):
            self.document(rf"Petits\{number % 10}\fichier {number:03d}.txt", f"contenu {number}".encode() * (number % 7))
        self.assert_comes_back(self.folder("Petits"))

    def test_a_path_of_250_characters_comes_back(self):
        self.disk()
        parent = self.folder("Profond\\" + "\\".join("dossier-%02d-%s" % (number, "x" * 20) for number in range(5)))
        name = "f" * (PATH_LENGTH - len(parent) - 1 - len(".txt")) + ".txt"
        path = parent + "\\" + name
        self.assertEqual(len(path), PATH_LENGTH)
        self.station.path(path).write_bytes(b"loin")
        self.assert_comes_back(path, self.folder("Profond"))

    def test_read_only_and_hidden_files_come_back_as_such(self):
        self.disk()
        read_only = self.station.path(self.document(r"Dossier\lecture seule.txt", b"lecture"))
        read_only.chmod(0o444)
        hidden = self.station.path(self.document(r"Dossier\masqué.txt", b"masque"))
        try:
            os.setxattr(hidden, "user.DOSATTRIB", b"0x22")
        except OSError as reason:
            self.skipTest(f"this file system keeps no hidden attribute: {reason}")
        self.assert_comes_back(self.folder("Dossier"))
        self.assertFalse(read_only.stat().st_mode & stat.S_IWUSR)
        self.assertEqual(int(os.getxattr(hidden, "user.DOSATTRIB"), 16) & 2, 2)

    def test_25_selected_items_come_back_in_the_order_of_the_list(self):
        self.disk()
        paths = [self.document(f"fichier {number:02d}.txt", f"numéro {number}".encode()) for number in range(25)]
        self.assert_comes_back(*paths)
        self.assertEqual([line.rsplit(",", 1)[-1] for line in self.list_lines()[:-1]],
                         [f"Zip{number:04d}" for number in range(1, 26)])


if __name__ == "__main__":
    unittest.main()
