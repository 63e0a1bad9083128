"""What the main window offers on workstations with different systems, disks and writers."""

import unittest

from burner import Burner, install_image_mastering
from program import IDNO, IDYES, Program
from surroundings import BY_NAME
from system_test import SystemTest
from workstation import HELP_DOCUMENTS, INSTALL_FOLDER, Workstation

MEDIA = ("optCD", "optDVD", "optDisqueAmovible", "optDisqueExterne")
LABELS = ("lblDetCD", "lblDetDVD", "lblDetRemDisk", "lblDetExtDisk")
FRENCH_QUESTION = ("Utilisation d'un périphérique USB pour la prise de copie",
                   "Un périphérique de masse USB (disque externe et/ou disque amovible) a été détecté.  Désirez-vous "
                   "l'utiliser pour faire une copie de sécurité ? ")
ENGLISH_QUESTION = ("Utilization of a USB device for your backup",
                    "A mass storage device USB (removable disk and/or external disk) has been detected.  Do you want tu "
                    "use that device to do your backup ? ")
SUPPORT = "Veuillez contacter Ardel-Services au 1-800-555-0199 en citant la première partie de ce message."


class DetectionTest(SystemTest):
    def setUp(self):
        super().setUp()
        install_image_mastering(self.station)

    def offered(self, main):
        return [name for name in MEDIA if main.control(name).enabled]

    def labels(self, main):
        words = {self.words(word): word for word in ("Oui", "Non")}
        return [words[main.text(name)] for name in LABELS]

    def detect_again(self, main):
        """Clicks the action for a backup and waits until its detection is over: the label that it fills in last, wiped
        before, has its text again."""
        main.set_text(LABELS[-1], "?")
        main.press("optBackup")
        main.program.wait(lambda: main.text(LABELS[-1]) != "?", "the end of the detection")

    def allow_dvd(self, value):
        (self.station.path(r"C:\Valcoreaux\Backup") / "Backup.ini").write_bytes(
            f"[DVD]\r\nDisponible={value}\r\n".encode("cp1252"))


def box_with_icon(program, icon):
    """The open message box once its icon, which is read off the screen, is the wanted one."""
    return program.wait(lambda: (box := program.find_message_box()) and box.icon == icon and box, f"a box with icon {icon}")


class UsbQuestionTest(DetectionTest):
    keeps = {"language": "the question and its default differ by language, and a test asks each",
             "version": "an older Windows asks nothing, and tests set each"}

    def setUp(self):
        super().setUp()
        self.disk()
        self.station.add_usb_storage()

    def test_french_question_warns_with_no_as_default_and_yes_offers_the_disk(self):
        program = self.start()
        box = box_with_icon(program, "information")
        self.assertEqual((box.title, box.text), FRENCH_QUESTION)
        self.assertEqual((sorted(box.buttons), box.default_button), ([IDYES, IDNO], IDNO))
        program.answer(IDYES)
        main = program.main_window()
        self.assertEqual(self.offered(main), ["optDisqueAmovible"])
        self.assertEqual(self.labels(main), ["Non", "Non", "Oui", "Non"])

    def test_english_question_has_no_icon_and_yes_as_default(self):
        self.station.set_user_language("en")
        program = self.start()
        box = program.message_box()
        self.assertNotIn(box.icon, ("information", "question", "critical", "exclamation"))
        self.assertEqual((box.title, box.text), ENGLISH_QUESTION)
        self.assertEqual((sorted(box.buttons), box.default_button), ([IDYES, IDNO], IDYES))

    def test_yes_is_kept_and_the_question_is_not_asked_again(self):
        program = self.start()
        program.answer(IDYES)
        main = program.main_window()
        self.detect_again(main)
        self.assertIsNone(program.find_message_box())
        self.assertEqual(self.offered(main), ["optDisqueAmovible"])

    def test_no_hides_the_disks_for_the_rest_of_the_run(self):
        program = self.start()
        program.answer(IDNO)
        main = program.main_window()
        self.assertEqual(self.offered(main), [])
        self.detect_again(main)
        self.assertIsNone(program.find_message_box())
        self.assertEqual(self.offered(main), [])
        self.assertEqual(main.entries("cboDrive"), [])
        self.assertEqual(self.labels(main), ["Non", "Non", "Non", "Non"])

    def test_windows_xp_asks_nothing(self):
        self.station.set_windows_version("winxp64")
        program = self.start()
        main = program.main_window()
        self.assertIsNone(program.find_message_box())
        self.assertEqual(self.offered(main), ["optDisqueAmovible"])

    def test_windows_7_asks(self):
        self.station.set_windows_version("win7")
        self.assertEqual(self.start().message_box().title, FRENCH_QUESTION[0])


class DiskTest(DetectionTest):
    def test_without_mass_storage_nothing_is_asked_and_the_disk_is_offered(self):
        self.disk()
        for version in ("winxp64", "win7", "win10"):
            with self.subTest(version=version):
                self.station.stop()
                self.station.set_windows_version(version)
                program = self.start()
                main = program.main_window()
                self.assertEqual(self.offered(main), ["optDisqueAmovible"])
                self.assertEqual(main.entries("cboDisqueExterne"), [])
                program.stop()

    def test_backup_clicked_again_finds_a_disk_attached_since_and_misses_it_when_it_is_gone(self):
        program = self.start()
        main = program.main_window()
        self.assertEqual(self.offered(main), [])
        program.plug_in("e")
        self.detect_again(main)
        self.assertEqual(self.offered(main), ["optDisqueAmovible"])
        self.assertEqual(self.labels(main), ["Non", "Non", "Oui", "Non"])
        self.assertEqual(main.chosen("cboDrive"), ["E:\\"])
        main.press("optDisqueAmovible")
        program.pull_out("e")
        self.detect_again(main)
        self.assertEqual(self.offered(main), [])
        self.assertEqual(main.entries("cboDrive"), [])
        main.press("cmdBackup")
        self.assertEqual(program.main_window().control("optDisqueAmovible").checked, 0)

    def test_drive_list_is_usable_for_its_own_medium_only(self):
        self.disk()
        Burner(self.station, "g", "cd").insert("CD-R")
        main = self.start().main_window()
        self.assertEqual((main["optCD"].checked, main["cboDrive"].enabled), (1, False))
        main.press("optDisqueAmovible")
        main.wait_enabled("cboDrive")
        main.press("optCD")
        main.program.wait(lambda: not main["cboDrive"].enabled, "the drive list disabled")


class WriterTest(DetectionTest):
    def offered_with_both_writers(self):
        Burner(self.station, "g", "cd").insert("CD-R")
        Burner(self.station, "h", "dvd").insert("DVD+R")
        program = self.start()
        main = program.main_window()
        self.assertIsNone(program.find_message_box())
        return self.offered(main), self.labels(main)

    def test_dvd_is_not_offered_on_windows_10_without_the_settings_file(self):
        self.station.set_windows_version("win10")
        self.assertEqual(self.offered_with_both_writers(), (["optCD"], ["Oui", "Non", "Non", "Non"]))

    def test_dvd_is_offered_on_windows_10_where_the_settings_file_allows_it_in_any_case(self):
        self.station.set_windows_version("win10")
        self.allow_dvd("oui")
        self.assertEqual(self.offered_with_both_writers(), (["optCD", "optDVD"], ["Oui", "Oui", "Non", "Non"]))

    def test_dvd_is_not_offered_on_windows_7_where_the_settings_file_says_no(self):
        self.station.set_windows_version("win7")
        self.allow_dvd("NON")
        self.assertEqual(self.offered_with_both_writers(), (["optCD"], ["Oui", "Non", "Non", "Non"]))

    def test_dvd_is_offered_on_windows_xp_without_the_settings_file(self):
        self.station.set_windows_version("winxp64")
        self.assertEqual(self.offered_with_both_writers(), (["optCD", "optDVD"], ["Oui", "Oui", "Non", "Non"]))

    def test_workstation_without_writers_reports_nothing(self):
        program = self.start()
        main = program.main_window()
        self.assertIsNone(program.find_message_box())
        self.assertEqual(self.labels(main), ["Non", "Non", "Non", "Non"])


class ReportTest(SystemTest):
    def test_missing_image_mastering_is_reported_by_both_detections_and_start_up_goes_on(self):
        self.disk()
        program = self.start()
        for _ in range(2):
            box_with_icon(program, "critical")
            box = program.answer()
            self.assertEqual(box.title, self.words("Erreur fatale du logiciel de prise de sauvegarde"))
            self.assertIn(self.words(" dans la procédure ") + "InitGraveur, module frmMain" + self.words(" à la ligne nº ") +
                          "0\r\n\r\n" + self.words(SUPPORT), box.text)
        self.assertEqual(program.main_window().text("lblDetRemDisk"), self.words("Oui"))


class PlaceTest(SystemTest):
    def lay_out(self, program_folder):
        """Another workstation, with the program in another place."""
        folder = self.station.prefix.with_name(self.station.prefix.name + "-elsewhere")
        self.station = Workstation(folder, surroundings=self.surroundings, display=self.display,
                                   program_folder=program_folder)
        self.addCleanup(self.station.remove)
        install_image_mastering(self.station)

    def test_program_folder_at_a_drive_root_reads_the_settings_beside_it(self):
        self.lay_out(r"C:\Backup")
        self.station.set_settings_language("10000")
        self.assertTrue(self.station.path(r"C:\Accueil\accueil.ini").exists())
        self.assertEqual(self.start().main_window().title, "Backup - Version 2.2.0")


class SecondCopyTest(SystemTest):
    def test_second_copy_ends_at_once_and_leaves_the_first_alone(self):
        install_image_mastering(self.station)
        first = self.start()
        main = first.main_window()
        second = Program(self.station)
        self.addCleanup(second.stop)
        self.assertEqual(second.wait_exit(), 0)
        main.press("cmdSortie")
        self.assertEqual(first.wait_exit(), 0)

    def test_copy_started_after_the_end_of_the_first_runs(self):
        install_image_mastering(self.station)
        for _ in range(2):
            program = self.start()
            program.main_window().press("cmdSortie")
            self.assertEqual(program.wait_exit(), 0)
            program.stop()


class LeavingTest(SystemTest):
    own_surroundings = BY_NAME["en-winxp64-65001-comma"]

    def test_closing_the_window_while_it_loads_ends_the_program(self):
        install_image_mastering(self.station)
        program = self.start()
        main = program.wait(lambda: program.find_window("frmMain"), "the main window")
        self.assertFalse(main["cmdBackup"].enabled)
        main.close()
        self.assertEqual(program.wait_exit(), 0)

    def test_escape_ends_the_program(self):
        install_image_mastering(self.station)
        program = self.start()
        program.main_window().key("optBackup", 0x1B)
        self.assertEqual(program.wait_exit(), 0)

    def test_missing_help_document_gives_no_message(self):
        install_image_mastering(self.station)
        for document in HELP_DOCUMENTS:
            self.station.path(INSTALL_FOLDER).joinpath(document).unlink(missing_ok=True)
        program = self.start()
        main = program.main_window()
        main.press("cmdAide")
        main.press("cmdSortie")
        self.assertEqual(program.wait_exit(), 0)


if __name__ == "__main__":
    unittest.main()
