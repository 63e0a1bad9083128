"""The main window as it opens on differently prepared workstations."""

import unittest

from system_test import SystemTest

from burner import Burner, install_image_mastering

FRENCH_TITLE = "Copies de sécurité - Version 2.2.0"
ENGLISH_TITLE = "Backup - Version 2.2.0"


class LanguageTest(SystemTest):
    keeps = {"language": "what follows from the user's language is the test"}

    def title(self):
        return self.start().main_window().title

    def test_a_french_user_gets_french(self):
        self.assertEqual(self.title(), FRENCH_TITLE)

    def test_an_english_user_gets_english(self):
        self.station.set_user_language("en")
        self.assertEqual(self.title(), ENGLISH_TITLE)

    def test_20001_in_the_settings_is_french_for_an_english_user(self):
        self.station.set_user_language("en")
        self.station.set_settings_language("20001")
        self.assertEqual(self.title(), FRENCH_TITLE)

    def test_0_and_10000_in_the_settings_are_english_for_a_french_user(self):
        for value in ("0", "10000"):
            with self.subTest(value=value):
                self.station.set_settings_language(value)
                program = self.start()
                self.assertEqual(program.main_window().title, ENGLISH_TITLE)
                program.stop()

    def test_a_language_name_in_the_settings_is_reported_and_french_follows(self):
        self.station.set_user_language("en")
        self.station.set_settings_language("français")
        program = self.start()
        box = program.message_box()
        self.assertEqual((box.title, box.icon), ("Erreur fatale du logiciel de prise de sauvegarde", "critical"))
        self.assertTrue(box.text.startswith(
            "Erreur nº 13 (Type mismatch) dans la procédure InitLangue, module frmMain à la ligne nº 0\r\n\r\n"), box.text)
        program.answer()
        self.assertEqual(program.main_window().title, FRENCH_TITLE)

    def test_an_empty_value_in_the_settings_leaves_the_choice_to_windows(self):
        self.station.set_settings_language("")
        self.assertEqual(self.title(), FRENCH_TITLE)

    def test_a_value_of_400_characters_is_reported_and_french_follows(self):
        self.station.set_user_language("en")
        self.station.set_settings_language("9" * 400)
        program = self.start()
        self.assertIn("InitLangue, module frmMain", program.answer().text)
        self.assertEqual(program.main_window().title, FRENCH_TITLE)


class MediaTest(SystemTest):
    def media(self, program):
        main = program.main_window()
        return {name: main.control(name).enabled
                for name in ("optCD", "optDVD", "optDisqueAmovible", "optDisqueExterne")}

    def test_a_workstation_without_media_offers_none_and_next_opens_nothing(self):
        program = self.start()
        self.assertEqual(set(self.media(program).values()), {False})
        main = program.main_window()
        self.assertEqual({main.text(label) for label in ("lblDetCD", "lblDetDVD", "lblDetRemDisk", "lblDetExtDisk")},
                         {self.words("Non")})
        main.press("cmdBackup")
        program.main_window().press("cmdSortie")
        self.assertEqual(program.wait_exit(), 0)

    def test_a_removable_disk_is_detected_and_chosen(self):
        self.disk(label="SAUVEGARDE")
        program = self.start()
        self.assertTrue(self.media(program)["optDisqueAmovible"])
        main = program.main_window()
        self.assertEqual((main.text("lblDetRemDisk"), main.control("optDisqueAmovible").checked), (self.words("Oui"), 1))
        self.assertEqual(main.chosen("cboDrive"), ["E:\\"])

    def test_a_cd_writer_is_detected_and_comes_first(self):
        self.disk()
        install_image_mastering(self.station)
        Burner(self.station, "g", "cd")
        program = self.start()
        self.assertEqual(self.media(program),
                         {"optCD": True, "optDVD": False, "optDisqueAmovible": True, "optDisqueExterne": False})
        main = program.main_window()
        self.assertEqual((main.text("lblDetCD"), main.control("optCD").checked), (self.words("Oui"), 1))

    def test_three_removable_disks_are_listed_and_the_first_is_chosen(self):
        for letter in "fge":
            self.disk(letter)
        main = self.start().main_window()
        self.assertEqual(main.entries("cboDrive"), ["E:\\", "F:\\", "G:\\"])
        self.assertEqual(main.chosen("cboDrive"), ["E:\\"])

    def test_floppy_drives_a_and_b_are_not_offered(self):
        self.disk("a")
        self.disk("b")
        program = self.start()
        self.assertFalse(self.media(program)["optDisqueAmovible"])
        self.assertEqual(program.main_window().entries("cboDrive"), [])

    def test_restore_hides_the_media_and_changes_the_caption_of_next(self):
        self.disk()
        main = self.start().main_window()
        self.assertEqual(main.text("cmdBackup"), self.words("&Suivant..."))
        main.press("optRestaure")
        main.program.wait(lambda: main.text("cmdBackup") == self.words("&Restaure..."), "the caption for a restore")
        self.assertFalse(main.control("frmMedium").visible)

    def test_quit_ends_the_program(self):
        program = self.start()
        program.main_window().press("cmdSortie")
        self.assertEqual(program.wait_exit(), 0)


if __name__ == "__main__":
    unittest.main()
