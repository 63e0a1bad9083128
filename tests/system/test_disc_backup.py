"""Whole backups to discs by the shipped program, on virtual writers, and what can come between."""

import filecmp
import os
import shutil
import subprocess
import tempfile
import unittest
from pathlib import Path

from burner import Burner, install_image_mastering
from program import IDNO, IDOK, IDYES
from surroundings import Surroundings
from system_test import ARCHIVE_NAME, LIST_NAME, SEVEN_ZIP, SystemTest

MEGABYTE = 1024 * 1024

BURNT = "La copie de sécurité s’est terminée avec succès. Veuillez identifier votre copie et la placer en lieu sûr."
TOO_SMALL = ("L'espace requis pour la sauvegarde excède l'espace disponible sur le médium.\nEffacer certains fichiers et/ou "
             "répertoires à sauvegarder\nOU\nCliquer sur PRÉCÉDENT, sélectionner un media avec une capacité supérieur et "
             "reprendre la sélection.")
WRONG_KIND = ("Vous avez choisi de faire une copie de sécurité sur un %3. Le disque inséré est un %1. Veuillez insérer un %2 "
              "ou retourner à l'écran précédent afin de modifier votre choix.")


class DiscTest(SystemTest):
    """A workstation with an empty CD writer G: and an empty DVD writer K:."""

    def setUp(self):
        super().setUp()
        install_image_mastering(self.station)
        self.cd = Burner(self.station, "g", "cd")
        self.dvd = Burner(self.station, "k", "dvd")
        self.station.path(r"C:\Valcoreaux\Backup\Backup.ini").write_bytes(b"[DVD]\r\nDisponible=oui\r\n")

    def open_disc_backup(self, program, kind="CD-R"):
        main = program.main_window(60)
        main.press("optCD" if kind.startswith("CD") else "optDVD")
        main.press("cmdBackup")
        backup = program.window("frmBackup", 60)
        backup.wait_enabled("lvFichRep", 60)
        return backup

    def end_text(self):
        return self.words(BURNT)

    def nothing_used(self):
        return {"fr": "0.000 Mo", "en": "0.000 Mb"}[self.surroundings.language]

    def wrong_kind(self, inserted, wanted="CD-R/RW"):
        return self.words(WRONG_KIND).replace("%1", inserted).replace("%2", wanted).replace("%3", wanted)

    def writer(self, kind):
        return self.cd if kind.startswith("CD") else self.dvd

    def start_burn(self, kind="CD-R", *paths):
        """A backup up to its first burnt byte; gives the program and its backup window."""
        program = self.start()
        backup = self.open_disc_backup(program, kind)
        self.select(backup, *(paths or [self.document("lettre.txt", os.urandom(200_000))]))
        backup.press("cmdLancer")
        self.give_new_password(program)
        return program, backup

    def work_file(self, name):
        return self.station.path(rf"C:\Valcoreaux\Backup\zip\{name}")

    def leave(self, program, backup):
        backup.press("cmdQuitter")
        self.assertEqual(program.wait_exit(), 0)


class BurnTest(DiscTest):
    def check_burn(self, kind):
        self.writer(kind).insert(kind)
        documents = {"Lettre à Zoé.txt": "Chère Zoé".encode(), "vide.txt": b"", "grand.bin": os.urandom(3 * MEGABYTE)}
        paths = [self.document(name, content) for name, content in documents.items()]
        self.document(r"Dossier été\un, deux.txt", b"1, 2")
        paths.append(self.folder("Dossier été"))
        program, _ = self.start_burn(kind, *paths)
        self.assertIn(self.end_text(), program.answer(IDOK, 120).text)
        self.assertEqual(program.wait_exit(), 0)
        program.stop()
        self.check_image(self.writer(kind).image)
        self.check_restore(kind, documents)

    def check_image(self, image):
        listing = subprocess.run(["xorriso", "-indev", str(image), "-find", "/", "-type", "f"], capture_output=True,
                                 text=True, check=True).stdout.split()
        self.assertEqual(sorted(name.strip("'") for name in listing), sorted([f"/{LIST_NAME}", f"/{ARCHIVE_NAME}"]))
        target = Path(tempfile.mkdtemp(dir=self.station.prefix))
        subprocess.run([SEVEN_ZIP, "x", "-y", f"-o{target}", str(image)], check=True, capture_output=True)
        self.assertEqual(sorted(os.listdir(target)), sorted([LIST_NAME, ARCHIVE_NAME]))
        for name in (LIST_NAME, ARCHIVE_NAME):
            self.assertTrue(filecmp.cmp(target / name, self.work_file(name), shallow=False), name)
        shutil.rmtree(target)

    def check_restore(self, kind, documents):
        folder = self.station.documents
        shutil.rmtree(folder)
        folder.mkdir()
        program = self.start()
        program.main_window(60)
        restore = self.open_restore(program, "G:\\" if kind.startswith("CD") else "K:\\")
        self.wait_rows(restore, 4)
        restore.press("cmdLancerRestauration")
        self.give_password(program)
        program.answer(IDOK, 120)
        self.assertEqual(program.wait_exit(), 0)
        expected = dict(documents) | {"Dossier été/un, deux.txt": b"1, 2"}
        found = {str(path.relative_to(folder)): path.read_bytes() for path in folder.rglob("*") if path.is_file()}
        self.assertEqual(found, expected)

    def test_a_backup_to_cd_r_is_restored_from_the_disc(self):
        self.check_burn("CD-R")

    def test_a_backup_to_cd_rw_is_restored_from_the_disc(self):
        self.check_burn("CD-RW")

    def test_a_backup_to_dvd_plus_r_is_restored_from_the_disc(self):
        self.check_burn("DVD+R")

    def test_a_backup_to_dvd_minus_rw_is_restored_from_the_disc(self):
        self.check_burn("DVD-RW")


class EnglishBurnTest(BurnTest):
    own_surroundings = Surroundings("en")
    keeps = {"language": "its words are English"}

    def end_text(self):
        return "The backup is successfully completed."


class DiscStateTest(DiscTest):
    def opened(self, kind, **settings):
        """The backup window with something selected that would fit a blank disc."""
        if settings.pop("inserted", True):
            self.writer(kind).insert(settings.pop("disc", kind), **settings)
        program = self.start()
        backup = self.open_disc_backup(program, kind)
        return program, backup

    def assert_start(self, backup, is_enabled):
        backup.program.wait(lambda: backup.control("cmdLancer").enabled == is_enabled,
                            f"a start button that is {'live' if is_enabled else 'grey'}")

    def test_without_a_disc_nothing_starts_until_one_is_inserted(self):
        program, backup = self.opened("CD-R", inserted=False)
        self.assertEqual(backup.text("stBarDataWriter"), self.words("Aucun disque"))
        backup.drop("lvFichRep", self.document("a.txt"))
        # Without a disc no space is available, so whatever is added exceeds it.
        self.assertEqual(program.answer(IDOK).title, self.words("Capacité maximale atteinte"))
        self.assert_start(backup, False)
        self.cd.insert("CD-R")
        program.wait(lambda: backup.text("stBarDataWriter") == "CD-R", "the new disc")
        self.assert_start(backup, True)
        self.leave(program, backup)

    def test_a_disc_of_the_wrong_kind_is_said(self):
        self.cd.insert("CD-ROM", state="closed")
        program = self.start()
        main = program.main_window(60)
        main.press("optCD")
        main.press("cmdBackup")
        box = program.answer(IDOK, 60)
        self.assertEqual(box.title, self.words("Erreur format de disque"))
        self.assertEqual(box.text, self.wrong_kind(inserted={"fr": "CD-R/RW", "en": "CD-ROM"}[self.surroundings.language]))

    def test_a_closed_disc_cannot_be_started(self):
        program, backup = self.opened("CD-R", state="closed")
        backup.drop("lvFichRep", self.document("a.txt"))
        box = program.answer(IDOK)
        self.assertEqual(box.title, self.words("Capacité maximale atteinte"))
        self.assert_start(backup, False)
        self.leave(program, backup)

    def test_a_disc_that_is_too_small_is_said_at_once(self):
        program, backup = self.opened("CD-R", capacity=3 * MEGABYTE)
        backup.drop("lvFichRep", self.document("grand.bin", os.urandom(4 * MEGABYTE)))
        box = program.answer(IDOK)
        self.assertEqual(box.text, self.words(TOO_SMALL))
        self.assertEqual(box.title, self.words("Capacité maximale atteinte"))
        self.assert_start(backup, False)

    def test_a_double_layer_dvd_passes_the_kind_check_but_cannot_be_started(self):
        program, backup = self.opened("DVD+R DL", capacity=8_500_000_000)
        self.assertEqual(backup.text("stBarDataWriter"), "DVD+R DL")
        self.assertIsNone(program.find_message_box())
        self.assert_start(backup, False)
        self.leave(program, backup)

    def test_800_megabytes_reported_free_offer_700(self):
        program, backup = self.opened("CD-R", capacity=900 * MEGABYTE, free=800 * MEGABYTE)
        program.wait(lambda: backup.text("lblEspaceDispo") ==
                     f"{self.words('Espace disponible sur médium :')}   {self.number('700.000')} {self.words('Megs')}",
                     "700 megabytes")
        self.leave(program, backup)

    def test_the_information_window_shows_the_disc(self):
        program, backup = self.opened("CD-R")
        backup.press("cmdInfoDisque")
        information = program.window("frmInfoDisque")
        self.assertEqual([information.text(name) for name in ("lblTypeCD", "lblStatutCD", "lblEspaceUtilise")],
                         ["CD-R", self.words("Vierge"), self.nothing_used()])
        information.press("cmdOK")
        self.leave(program, program.window("frmBackup"))


class DiscFaultTest(DiscTest):
    def test_a_write_that_is_refused_shows_its_code_and_the_window_comes_back(self):
        self.cd.insert("CD-R")
        self.cd.set(start_code="0xC0AA0406")
        program, backup = self.start_burn()
        box = program.answer(IDOK, 60)
        self.assertEqual(box.text, "Error: -1062599674. " + self.words("Ce disque ne convient pas à cette opération."))
        self.assertEqual(box.title, "Backup")
        backup.wait_enabled("cmdPrecedent")
        self.leave(program, backup)

    def test_a_write_that_fails_at_50_shows_its_code_and_the_window_comes_back(self):
        self.cd.insert("CD-R")
        self.cd.set(fail_at=50, write_milliseconds=1500)
        program, backup = self.start_burn()
        box = program.answer(IDOK, 60)
        self.assertTrue(box.text.startswith("Error: "), box.text)
        backup.wait_enabled("cmdPrecedent")
        self.leave(program, backup)

    def test_a_disc_that_is_pulled_out_is_an_error_with_its_code(self):
        self.cd.insert("CD-R")
        self.cd.set(eject_at=40, write_milliseconds=1500)
        program, backup = self.start_burn()
        box = program.answer(IDOK, 60)
        self.assertTrue(box.text.startswith("Error: "), box.text)
        backup.wait_enabled("cmdPrecedent")
        program.wait(lambda: backup.text("stBarDataWriter") == self.words("Aucun disque"), "the empty drive")
        self.leave(program, backup)

    def test_a_stop_at_30_brings_the_window_back_without_a_question(self):
        self.cd.insert("CD-R")
        self.cd.set(write_milliseconds=6000, stop_milliseconds=1500)
        program, backup = self.start_burn()
        program.wait(lambda: backup.progress("pbProgressTotal") >= 30 and backup.control("cmdStopWrite").enabled,
                     "30 %", 60)
        backup.press("cmdStopWrite")
        program.wait(lambda: backup.control("cmdPrecedent").enabled, "the settings", 2)
        self.assertIsNone(program.find_message_box())
        backup.press("cmdQuitter")
        self.assertEqual(program.wait_exit(60), 0)


class EraseTest(DiscTest):
    def open_erase(self, **settings):
        self.cd.insert("CD-RW", state="closed", used=10 * MEGABYTE)
        self.cd.set(**settings)
        program = self.start()
        backup = self.open_disc_backup(program, "CD-RW")
        backup.press("cmdEffacerDisque")
        return program, backup, program.window("frmEffacerCDRW")

    def assert_erased(self, program, how):
        box = program.answer(IDOK, 60)
        self.assertEqual((box.text, box.title),
                         (self.words("L'effacement du disque s'est correctement terminé"), self.words("Effacement du disque")))
        program.wait(lambda: program.find_window("frmEffacerCDRW") is None, "the erase window's end")
        self.assertEqual(self.cd.disc_settings()["erased"], how)

    def test_a_quick_erase_asks_nothing(self):
        program, backup, erase = self.open_erase()
        erase.press("cmdEffacerCD")
        self.assert_erased(program, "quickly")
        self.leave(program, program.window("frmBackup"))

    def test_a_full_erase_asks_first(self):
        program, backup, erase = self.open_erase(full_erase_milliseconds=1500)
        erase.press("optEffacementComplet")
        erase.press("cmdEffacerCD")
        self.assertEqual(program.answer(IDYES).title, self.words("Effacement complet"))
        self.assert_erased(program, "fully")

    def test_a_declined_full_erase_leaves_the_disc_untouched(self):
        program, backup, erase = self.open_erase()
        before = self.cd.disc_settings()
        erase.press("optEffacementComplet")
        erase.press("cmdEffacerCD")
        program.answer(IDNO)
        erase.wait_enabled("cmdFermer")
        erase.press("cmdFermer")
        program.window("frmBackup")
        self.assertEqual(self.cd.disc_settings(), before)

    def test_an_erase_without_a_disc_shows_no_code_but_that_it_failed(self):
        program, backup, erase = self.open_erase()
        self.cd.take_out()
        program.wait(lambda: backup.text("stBarDataWriter") == self.words("Aucun disque"), "the empty drive")
        erase.press("cmdEffacerCD")
        box = program.answer(IDOK, 30)
        self.assertEqual((box.text, box.title), (self.words("L'effacement du disque a généré une ou des erreurs"),
                                                 self.words("Effacement du disque")))
        self.assertIsNone(program.find_message_box())
        erase.close()
        self.leave(program, program.window("frmBackup"))

    def test_an_erase_that_stays_at_99_is_taken_as_finished(self):
        program, backup, erase = self.open_erase(stall_at=99, stall_milliseconds=30000)
        erase.press("cmdEffacerCD")
        box = program.answer(IDOK, 25)
        self.assertEqual(box.text, self.words("L'effacement du disque s'est correctement terminé"))


if __name__ == "__main__":
    unittest.main()
