"""What goes wrong between the selection and the finished copy, and on the way back: each failure has its message, the
program goes on, and what was there before is still there."""

import random
import unittest

from surroundings import BY_NAME
from system_test import ARCHIVE_NAME, FAILED_COPY, LIST_NAME, PASSWORD, SystemTest

from program import IDOK

BACKUP_TITLE = "Prise de copie de sécurité"

OLD_FORMAT = ("La version de votre copie de sécurité (2.1) n'est pas compatible avec la version utilisé en ce moment (2.2).\n"
              "Pour la restaurer, S.V.P. contacter Ardel-Services au 1-800-555-0199")


class FailingBackupTest(SystemTest):
    def open_with(self, *paths):
        program = self.start()
        backup = self.open_backup(program)
        self.select(backup, *paths)
        return program, backup

    def assert_usable(self, program):
        """The backup window is back in front and can be worked with."""
        backup = program.window("frmBackup")
        backup.wait_enabled("cmdPrecedent")
        return backup

    def test_cancelling_the_password_leaves_the_medium_and_the_selection_as_they_were(self):
        self.disk()
        program, backup = self.open_with(self.document("a.txt"))
        backup.press("cmdLancer")
        program.window("frmMotPasse").press("cmdCancel")
        self.assert_usable(program)
        self.assertEqual(backup.row_count("lvFichRep"), 1)
        self.assertEqual(self.station.medium_files("e"), [])

    def test_a_weak_password_is_refused_and_may_be_mended(self):
        self.disk()
        program, backup = self.open_with(self.document("a.txt"))
        backup.press("cmdLancer")
        self.give_new_password(program, "facile")
        box = program.answer(IDOK)
        self.assertEqual((box.title, box.icon), (self.words("Mot de passe invalide"), "information"))
        dialog = program.window("frmMotPasse")
        self.assertEqual((dialog.text("txtMotPasse"), dialog.text("txtConfirmation")), ("", ""))
        self.give_new_password(program)
        self.assertEqual(program.answer(IDOK, 60).title, self.words("Copie de sécurité terminée"))

    def test_two_different_passwords_are_refused_and_the_confirmation_is_emptied(self):
        self.disk()
        program, backup = self.open_with(self.document("a.txt"))
        backup.press("cmdLancer")
        dialog = program.window("frmMotPasse")
        dialog.set_text("txtMotPasse", PASSWORD)
        dialog.set_text("txtConfirmation", "Valcoreaux2")
        dialog.press("cmdOK")
        box = program.answer(IDOK)
        self.assertEqual((box.title, box.icon), (self.words("Mot de passe pas identique"), "information"))
        self.assertEqual((dialog.text("txtMotPasse"), dialog.text("txtConfirmation")), (PASSWORD, ""))

    def test_an_item_deleted_after_its_selection_fails_the_run_and_leaves_the_medium_alone(self):
        medium = self.disk()
        (medium / ARCHIVE_NAME).write_bytes(b"older archive")
        (medium / LIST_NAME).write_bytes(b"older list")
        kept = self.document("a.txt")
        gone = self.document("b.txt")
        program, backup = self.open_with(kept, gone)
        self.station.path(gone).unlink()
        backup.press("cmdLancer")
        self.give_new_password(program)
        box = program.answer(IDOK, 60)
        self.assertEqual((box.title, box.text, box.icon), ("Error", self.words(FAILED_COPY), "critical"))
        self.assert_usable(program)
        self.assertEqual((medium / ARCHIVE_NAME).read_bytes(), b"older archive")
        self.assertEqual((medium / LIST_NAME).read_bytes(), b"older list")

    def test_a_disk_pulled_out_before_the_start_is_reported_and_asks_for_no_password(self):
        self.disk()
        program, backup = self.open_with(self.document("a.txt"))
        self.station.pull_out("e")
        backup.press("cmdLancer")
        box = program.answer(IDOK)
        self.assertEqual((box.text, box.icon), (self.words("Disque amovible") + " " + self.words("non disponible"), "none"))
        self.assertEqual(self.station.medium_files("e"), [])

    def test_a_disk_pulled_out_and_put_back_can_be_used(self):
        self.disk()
        program, backup = self.open_with(self.document("a.txt"))
        self.station.pull_out("e")
        backup.press("cmdLancer")
        program.answer(IDOK)
        self.station.plug_in("e")
        backup = self.assert_usable(program)
        # The disk's space is read again when the disk is chosen.
        backup.choose("cmbGraveur", 0)
        backup.press("cmdLancer")
        self.give_new_password(program)
        self.assertEqual(program.answer(IDOK, 60).title, self.words("Copie de sécurité terminée"))
        self.assertEqual(self.station.medium_files("e"), [ARCHIVE_NAME, LIST_NAME])

    def test_a_selection_larger_than_the_disk_is_announced_and_cannot_be_started(self):
        self.disk(size_megabytes=2)
        program = self.start()
        backup = self.open_backup(program)
        backup.drop("lvFichRep", self.document("grand.bin", random.Random(3).randbytes(3_000_000)))
        box = program.answer(IDOK)
        self.assertEqual((box.title, box.icon), (self.words("Capacité maximale atteinte"), "exclamation"))
        self.assertFalse(backup.control("cmdLancer").enabled)

    def test_a_disk_that_fills_up_before_the_copy_fails_the_run(self):
        medium = self.disk(size_megabytes=4)
        program, backup = self.open_with(self.document("a.bin", random.Random(3).randbytes(2_000_000)))
        (medium / "autre.bin").write_bytes(bytes(3_000_000))
        backup.press("cmdLancer")
        self.give_new_password(program)
        report = program.answer(IDOK, 60)
        self.assertIn("CopierUSB, Class clsCopie", report.text)
        self.assertIn("61", report.text)
        self.assertEqual(program.answer(IDOK).text, self.words(FAILED_COPY))
        self.assert_usable(program)
        self.assertEqual((medium / "autre.bin").stat().st_size, 3_000_000)

    def test_an_older_backup_on_the_disk_is_replaced_whole(self):
        self.disk()
        self.back_up(self.document("ancien.txt", b"ancien"))
        self.back_up(self.document("nouveau.txt", b"nouveau"))
        self.assertEqual(self.station.medium_files("e"), [ARCHIVE_NAME, LIST_NAME])
        self.assertEqual(self.inner_archives(), {"Zip0001.zip": {"nouveau.txt": b"nouveau"}})
        self.assertEqual(self.list_lines(), [r"**UserProfile**\Documents\nouveau.txt,32,Zip0001", ""])

    def test_other_files_on_the_disk_stay(self):
        medium = self.disk()
        (medium / "photo.jpg").write_bytes(b"photo")
        self.back_up(self.document("a.txt"))
        self.assertEqual(self.station.medium_files("e"), [ARCHIVE_NAME, LIST_NAME, "photo.jpg"])
        self.assertEqual((medium / "photo.jpg").read_bytes(), b"photo")

    def test_a_missing_archiver_is_reported_before_any_password_is_asked_for(self):
        self.disk()
        program, backup = self.open_with(self.document("a.txt"))
        (self.station.path(self.station.program_folder) / "7Za.exe").unlink()
        backup.press("cmdLancer")
        box = program.answer(IDOK)
        self.assertEqual((box.title, box.icon), (self.words("Erreur fatale du logiciel de prise de sauvegarde"), "critical"))
        self.assertIn(self.words("Compression des données impossible."), box.text)
        self.assertIn("7Za.exe", box.text)
        self.assert_usable(program)
        self.assertEqual(self.station.medium_files("e"), [])

    def test_back_and_forth_between_the_windows_keeps_the_program_running(self):
        self.disk()
        program = self.start()
        for _ in range(3):
            self.open_backup(program).press("cmdPrecedent")
            program.main_window()
        self.open_backup(program).press("cmdQuitter")
        self.assertEqual(program.wait_exit(), 0)


class FailingRestoreTest(SystemTest):
    def test_a_wrong_password_three_times_and_then_the_right_one_restores(self):
        self.disk()
        path = self.document("a.txt", b"revenu")
        self.back_up(path)
        self.station.path(path).unlink()
        program = self.start()
        self.open_restore(program).press("cmdLancerRestauration")
        for attempt in range(3):
            self.give_password(program, f"Faux-{attempt}")
            box = program.answer(IDOK)
            self.assertEqual((box.title, box.icon), (self.words("Mot de passe invalide"), "exclamation"))
        self.give_password(program)
        self.assertEqual(program.answer(IDOK).title, self.words("Restauration des fichiers"))
        self.assertEqual(program.wait_exit(), 0)
        self.assertEqual(self.station.path(path).read_bytes(), b"revenu")

    def test_cancelling_the_password_restores_nothing_and_leaves_the_window_open(self):
        self.disk()
        path = self.document("a.txt", b"avant")
        self.back_up(path)
        self.station.path(path).write_bytes(b"apres")
        program = self.start()
        self.open_restore(program).press("cmdLancerRestauration")
        program.window("frmMotPasse").press("cmdCancel")
        program.window("frmRestaureCD").wait_enabled("cmdLancerRestauration")
        self.assertEqual(self.station.path(path).read_bytes(), b"apres")

    def test_an_older_file_in_its_place_is_overwritten(self):
        self.disk()
        path = self.document("a.txt", b"sauvegarde")
        self.back_up(path)
        self.station.path(path).write_bytes(b"changement plus recent")
        self.restore_all()
        self.assertEqual(self.station.path(path).read_bytes(), b"sauvegarde")

    def test_a_medium_with_the_list_alone_is_refused_as_the_older_format(self):
        medium = self.disk()
        (medium / LIST_NAME).write_bytes(b"C:\\a.txt,32,Zip0001\r\n")
        program = self.start()
        main = program.main_window()
        main.press("optRestaure")
        main.press("cmdBackup")
        restore = program.wait(lambda: program.find_window("frmRestaureCD"), "the restore window")
        if not program.find_message_box():
            self.choose_drive(restore)
        box = program.answer(IDOK)
        self.assertEqual((box.title, box.icon), (self.words(BACKUP_TITLE), "critical"))
        self.assertEqual(box.text, self.words(OLD_FORMAT))
        self.assertEqual(restore.row_count("lvFichiersRepertoires"), 0)

    def test_a_medium_without_a_backup_shows_two_rows_that_say_so(self):
        self.disk()
        program = self.start()
        restore = self.open_restore(program)
        self.wait_rows(restore, 2)
        for name in ("cmdLancerRestauration", "cmdToutSelectionner", "cmdToutDeselectionner"):
            self.assertFalse(restore.control(name).enabled, name)

    def test_closing_the_window_goes_back_to_the_main_window(self):
        self.disk()
        program = self.start()
        self.open_restore(program).press("cmdFermer")
        program.main_window().press("cmdSortie")
        self.assertEqual(program.wait_exit(), 0)


class ForeignControlFileTest(SystemTest):
    own_surroundings = BY_NAME["en-winxp64-65001-comma"]

    """Control files as other versions, other programs or a damaged disk leave them."""

    def rows_of(self, content, count):
        medium = self.disk()
        (medium / LIST_NAME).write_bytes(content)
        (medium / ARCHIVE_NAME).write_bytes(b"archive")
        program = self.start()
        restore = self.open_restore(program)
        if count is not None:
            self.wait_rows(restore, count)
        return program, restore

    def assert_goes_on(self, program, restore):
        restore.press("cmdFermer")
        program.main_window().press("cmdSortie")
        self.assertEqual(program.wait_exit(), 0)

    def test_an_empty_list_shows_no_rows(self):
        program, restore = self.rows_of(b"", 0)
        self.assert_goes_on(program, restore)

    def test_a_path_with_a_comma_is_split_at_it_and_spoils_no_other_row(self):
        lines = (b"C:\\un.txt,32,Zip0001\r\nC:\\deux,trois.txt,32,Zip0002\r\n\r\nC:\\quatre.txt,32,Zip0003\r\n")
        program, restore = self.rows_of(lines, 3)
        self.assertEqual([row.texts[0] for row in restore.rows("lvFichiersRepertoires")],
                         ["C:\\un.txt", "C:\\deux", "C:\\quatre.txt"])
        self.assertIsNone(program.find_message_box())
        self.assert_goes_on(program, restore)

    def test_a_line_that_is_cut_is_reported_once_when_all_are_listed(self):
        medium = self.disk()
        (medium / LIST_NAME).write_bytes(b"C:\\un.txt,32,Zip0001\r\nC:\\deux.txt\r\nC:\\trois,32\r\nC:\\quatre,32,Zip0004\r\n")
        (medium / ARCHIVE_NAME).write_bytes(b"archive")
        program = self.start()
        main = program.main_window()
        main.press("optRestaure")
        main.press("cmdBackup")
        restore = program.wait(lambda: program.find_window("frmRestaureCD"), "the restore window")
        if not program.find_message_box():
            self.choose_drive(restore)
        box = program.message_box()
        self.assertIn(self.words("Erreur nº ") + "62 ", box.text)
        self.assertIn("MAJListeFich, module frmRestaureCD", box.text)
        self.assertEqual(restore.row_count("lvFichiersRepertoires"), 4)
        program.answer(IDOK)
        program.window("frmRestaureCD").wait_enabled("cmdLancerRestauration")
        self.assertIsNone(program.find_message_box())

    def test_the_two_field_form_is_read_for_every_line(self):
        program, restore = self.rows_of(b"C:\\a.txt,32\r\nC:\\Dossier\\*.*,-1\r\n", 2)
        rows = restore.rows("lvFichiersRepertoires")
        self.assertEqual([(row.texts[0], row.texts[2], row.texts[3]) for row in rows],
                         [("C:\\a.txt", "32", "C:\\a.txt"), ("C:\\Dossier\\*.*", "-1", "C:\\Dossier\\*.*")])
        self.assert_goes_on(program, restore)

    def test_a_list_of_100000_lines_is_shown_whole_and_ticked(self):
        lines = "".join(f"C:\\Donnees\\{number}.txt,32,Zip{number:04d}\r\n" for number in range(1, 100_001))
        program, restore = self.rows_of(lines.encode(), 100_000)
        last = restore.rows("lvFichiersRepertoires", 99_999, 1)[0]
        self.assertEqual((last.ticked, last.texts[0]), (True, "C:\\Donnees\\100000.txt"))
        self.assert_goes_on(program, restore)

    def test_random_bytes_do_no_harm(self):
        program, restore = self.rows_of(random.Random(5).randbytes(20_000), None)
        # Some line has too few fields, which is told once all are listed.
        self.assertIn(self.words("Erreur nº ") + "62", program.answer(IDOK).text)
        self.assert_goes_on(program, restore)

    def test_an_outlook_store_is_listed_for_its_own_folder(self):
        program, restore = self.rows_of(b"C:\\Donnees\\archive.pst,32,Zip0001\r\n", 1)
        self.assertEqual(restore.rows("lvFichiersRepertoires")[0].texts[0],
                         "c:\\ValcoreauxTechno\\OutlookBK\\archive.pst")

    def test_a_backup_of_another_account_is_restored_into_this_profile(self):
        self.disk()
        self.write_backup([r"**UserProfile**\Documents\a.txt,32,Zip0001"], {1: {"a.txt": b"autre poste"}})
        self.restore_all()
        self.assertEqual((self.station.documents / "a.txt").read_bytes(), b"autre poste")

    def test_an_outlook_store_lands_in_its_own_folder(self):
        self.disk()
        self.write_backup([r"C:\Donnees\archive.pst,32,Zip0001"], {1: {"archive.pst": b"courrier"}})
        self.restore_all()
        self.assertEqual(self.station.path(r"C:\ValcoreauxTechno\OutlookBK\archive.pst").read_bytes(), b"courrier")
        self.assertFalse(self.station.path(r"C:\Donnees\archive.pst").exists())


if __name__ == "__main__":
    unittest.main()
