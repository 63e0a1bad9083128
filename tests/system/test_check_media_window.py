"""The check's window, in both languages, on one medium of each sort that the restore window brings less of than all."""

import io
import unittest
import zipfile

from check_test import PASSWORD, zip_of
from check_window_test import SECONDS, CheckWindowTest
from system_test import IDOK, LIST_NAME, Surroundings

from texts import translated

GOOD = "La copie de sécurité est bonne : tout a été lu et tout est intact."
FAULTS = "La copie de sécurité a des défauts : %1 élément(s) sur %2 sont touchés."
AROUND = "Les éléments sont intacts, mais la copie de sécurité elle-même a un défaut."
NO_DIRECTORY = ("La table des matières de l'archive manque ou est endommagée : l'archive est coupée ou abîmée à sa fin. Elle a été "
                "lue aussi loin que possible.")
NO_LIST = "La liste _listFich.lst manque : la fenêtre de restauration ne verra pas cette copie."
FIRST_WORD = ("Attention : seul le premier mot du mot de passe protège cette copie. C'est lui qui l'ouvre, sans l'espace ni la "
              "suite.")
RECOVERED_WITH_FAULTS = "La récupération est terminée, mais %1 élément(s) sur %2 ont des défauts."
REFUSED = "%1 : refusé, car son nom mène hors du dossier."
HOSTILE_NAMES = ("../../../up.txt", "/abs.txt", "C:/Windows/drive.txt", "..\\..\\back.txt", "\\\\server\\share\\x.txt")


class MediaInTheWindowTest(CheckWindowTest):
    """A drive for each medium, so that one start of the program shows all of them."""

    own_surroundings = Surroundings("fr")
    keeps = {"language": "the class has a second one for the other language",
             "code_page": "which letters a list has lost depends on it"}

    # By drive: how the medium is made, the password, the icon, the sentence of the whole with its values, the remarks
    # behind it, and the result of each row.
    MEDIA = {
        "f": ("cut", PASSWORD, "critical", FAULTS, (2, 3), [NO_DIRECTORY], ["Intact", "Endommagé", "Absent"]),
        "g": ("one_missing_and_one_extra", PASSWORD, "critical", FAULTS, (2, 4), [],
              ["Intact", "Intact", "Absent", "En trop"]),
        "h": ("two_swapped", PASSWORD, "critical", FAULTS, (2, 3), [], ["Autre contenu", "Autre contenu", "Intact"]),
        "i": ("no_list", PASSWORD, "exclamation", AROUND, (), [NO_LIST], ["Intact"] * 3),
        "j": ("two_fields", PASSWORD, "exclamation", FAULTS, (3, 3), [], ["Intact, à récupérer ici"] * 3),
        "k": ("a_comma", PASSWORD, "exclamation", FAULTS, (1, 2), [], ["Intact", "Intact, à récupérer ici"]),
        "l": ("other_alphabets", PASSWORD, "exclamation", FAULTS, (3, 4), [], ["Intact, à récupérer ici"] * 3 + ["Intact"]),
        "m": ("the_first_word", "Mon secret 2026", "information", GOOD, (), [FIRST_WORD], ["Intact"]),
        "n": ("hostile_names", PASSWORD, "critical", FAULTS, (1, 1), [], ["Autre contenu"]),
    }

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.drives = {letter: cls.station.add_drive(letter) for letter in cls.MEDIA}

    def make(self, letter, name):
        self.medium = self.drives[letter]
        getattr(self, f"make_{name}")()

    def make_cut(self):
        self.good_medium()
        place, length = self.data_place("Zip0002.zip")
        self.archive().write_bytes(self.archive().read_bytes()[:place + length // 2])

    def make_one_missing_and_one_extra(self):
        self.good_medium()
        self.write_archive(*self.inner, names=["Zip0001.zip", "Zip0002.zip", "Zip0007.zip"])

    def make_two_swapped(self):
        self.good_medium()
        self.write_archive(self.inner[1], self.inner[0], self.inner[2])

    def make_no_list(self):
        self.good_medium()
        (self.medium / LIST_NAME).unlink()

    def make_two_fields(self):
        self.good_medium()
        self.write_list(r"C:\Docs\budget.xls,32", r"C:\Docs\Clients\*.*,-1", r"C:\Docs\fin.txt,32")

    def make_a_comma(self):
        self.write_list(r"C:\Docs\a.txt,32,Zip0001", r"C:\Docs\Roy, Anne.doc,32,Zip0002")
        self.write_archive(zip_of({"a.txt": b"a"}), zip_of({"Roy, Anne.doc": b"roy"}))

    def make_other_alphabets(self):
        self.write_list("C:\\?ukasz.txt,32,Zip0001", "C:\\??.txt,32,Zip0002", "C:\\?mega.txt,32,Zip0003", "C:\\é.txt,32,Zip0004")
        self.write_archive(*(zip_of({name: b"1"}) for name in ("Łukasz.txt", "日本.txt", "Ωmega.txt", "é.txt")))

    def make_the_first_word(self):
        self.write_list(r"C:\fin.txt,32,Zip0001")
        self.write_archive(zip_of({"fin.txt": b"fin"}), password="Mon")

    def make_hostile_names(self):
        stream = io.BytesIO()
        with zipfile.ZipFile(stream, "w") as inner:
            for name in (*HOSTILE_NAMES, "good.txt"):
                inner.writestr(name, name)
        self.write_list("C:\\..\\..\\good.txt,32,Zip0001")
        self.write_archive(stream.getvalue())

    def words(self, french, *values):
        """A text of the program in the language of this class."""
        text = translated(french, self.surroundings.language)
        for number, value in enumerate(values, 1):
            text = text.replace(f"%{number}", str(value))
        return text

    def choose(self, window, letter):
        line = self.program.wait(
            lambda: next((line for line in window.entries("Places") if line.upper().startswith(f"{letter.upper()}:")), None),
            f"the drive {letter}", SECONDS)
        window.choose("Places", line)
        self.wait_idle(window)

    def test_each_medium_is_told_by_its_rows_and_as_a_whole(self):
        for letter, (name, *_) in self.MEDIA.items():
            self.make(letter, name)
        window = self.open(is_chosen=False)
        for letter, (name, password, icon, sentence, values, remarks, results) in self.MEDIA.items():
            with self.subTest(name):
                self.choose(window, letter)
                box = self.check_to_end(window, password)
                whole = self.words(sentence, *values)
                self.assertEqual((box.title, box.icon), (self.words("Vérification d'une copie de sécurité"), icon))
                self.assertEqual(box.text, "\n\n".join([whole, *map(self.words, remarks)]))
                self.assertEqual(window.text("Verdict"), whole)
                self.assertEqual(self.results(window), [self.words(result) for result in results])
        # The last one is recovered as well: nothing of it leaves the target.
        window.press("Recover")
        self.choose_folder("D:\\")
        self.assertEqual(self.program.answer(IDOK, SECONDS).text, self.words(RECOVERED_WITH_FAULTS, 1, 1))
        found = [str(path.relative_to(self.target)) for path in self.target.rglob("*") if path.is_file()]
        self.assertEqual(found, ["Zip0001/good.txt"])
        window.click_row("Items", 0)
        self.program.wait(lambda: self.words(REFUSED, HOSTILE_NAMES[0]) in window.text("Details"), "the refused names", SECONDS)
        details = window.text("Details")
        for hostile in HOSTILE_NAMES:
            self.assertIn(self.words(REFUSED, hostile.replace("\\", "/")), details)


class MediaInTheEnglishWindowTest(MediaInTheWindowTest):
    own_surroundings = Surroundings("en")


if __name__ == "__main__":
    unittest.main()
