"""The installer, run silently on a workstation where the program never was."""

import os
import unittest

from installer_case import LIST_SOURCES, PACKAGING, REFUSED, STAMPS_KEY, UNINSTALL_KEY, InstallerCase, registry_stamp
from system_test import PROJECT, Program

# On the desktop and in the Start menu.
FRENCH_SHORTCUTS = [["Copies de sécurité.lnk"], ["Copies de sécurité.lnk", "Vérifier une copie de sécurité.lnk"]]


class InstallerTest(InstallerCase):
    def test_everything_is_installed_and_the_program_starts_from_there(self):
        self.install()
        self.wait_until_idle()
        own = {"Backup.exe", "BackupCheck.exe", "7Za.exe", "Uninstall.exe", "Copie de Sauvegarde.pdf", "Backup.pdf", "NOTICE.txt",
               "Backup.sample.ini"}
        licences = {f"LICENSES/{path.name}" for path in (PROJECT / "LICENSES").iterdir()}
        lists = {f"Fichierlst/Medium/{name}" for name in LIST_SOURCES}
        self.assertEqual(self.installed_files(), {f"Backup/{name}" for name in own | licences | lists})
        for name in ("Copie de Sauvegarde.pdf", "Backup.pdf"):
            self.assertTrue((self.folder / name).read_bytes().startswith(b"%PDF-"), name)
        for name, source in LIST_SOURCES.items():
            self.assertEqual((self.lists / name).read_bytes(), source.read_bytes(), name)
        self.assertEqual(self.shortcuts(), FRENCH_SHORTCUTS)
        entry = self.registry_values(UNINSTALL_KEY)
        self.assertEqual((entry["DisplayVersion"], entry["Publisher"]), ('"2.2.0"', '"Ardel-Services"'))

        program = self.start()
        program.main_window().press("cmdSortie")
        self.assertEqual(program.wait_exit(), 0)

    def test_the_shortcut_of_the_check_starts_it_in_the_language_of_windows(self):
        self.install()
        shortcut = r"C:\ProgramData\Microsoft\Windows\Start Menu\Programs\Vérifier une copie de sécurité.lnk"
        self.assertIn("BackupCheck.exe".encode("utf-16-le"), self.station.path(shortcut).read_bytes())
        check = Program(self.station, executable="BackupCheck.exe")
        self.addCleanup(self.end, check)
        self.assertEqual(check.window("CheckWindow").title, "Vérification d'une copie de sécurité")

    def test_only_settings_stay_after_removal(self):
        self.install()
        (self.folder / "Backup.ini").write_bytes(b"[DVD]\r\nDisponible=OUI\r\n")
        (self.folder / "zip").mkdir()
        (self.folder / "zip" / "Zip0001.zip").write_bytes(b"left by an interrupted restore")
        (self.root / "Accueil").mkdir()
        (self.root / "Accueil" / "accueil.ini").write_bytes(b"[ACCUEIL-DEFAULTS]\r\nLang=20001\r\n")
        changed = self.list_names()[0]
        (self.lists / changed).write_bytes(b"C:\\Repres\\Documents\r\n")
        self.uninstall()
        self.assertEqual(self.installed_files(),
                         {"Backup/Backup.ini", "Accueil/accueil.ini", f"Backup/Fichierlst/Medium/{changed}"})
        self.assertFalse((self.folder / "zip").exists())
        self.assertEqual(self.shortcuts(), [[], []])
        self.assertIsNone(self.registry_values(UNINSTALL_KEY))
        self.assertIsNone(self.registry_values(STAMPS_KEY))

    def test_an_older_version_is_replaced_and_what_was_changed_is_kept(self):
        older, changed, missing = self.list_names()[:3]
        self.lists.mkdir(parents=True)
        (self.folder / "Backup.exe").write_bytes(b"older program")
        (self.folder / "Backup.ini").write_bytes(b"[DVD]\r\nDisponible=OUI\r\n")
        for name in (older, changed):
            (self.lists / name).write_bytes(b"C:\\Older\r\n")
        os.utime(self.lists / older, (1_600_000_000, 1_600_000_000))
        os.utime(self.lists / changed, (1_600_000_000, 1_600_000_000))
        self.station.set_registry("system.reg", STAMPS_KEY,
                                  f'"{older}"="{registry_stamp(self.lists / older)}"',
                                  f'"{changed}"="{registry_stamp(self.lists / changed)}"')
        (self.lists / changed).write_bytes(b"C:\\Mine_\r\n")
        shortcuts = self.station.path(r"C:\users\Public\Desktop")
        shortcuts.mkdir(parents=True, exist_ok=True)
        (shortcuts / "Backup.lnk").write_bytes(b"made in English")
        self.install()
        self.assertEqual((self.folder / "Backup.exe").read_bytes(), (PACKAGING / "content" / "Backup.exe").read_bytes())
        self.assertEqual((self.folder / "Backup.ini").read_bytes(), b"[DVD]\r\nDisponible=OUI\r\n")
        self.assertEqual((self.lists / older).read_bytes(), LIST_SOURCES[older].read_bytes())
        self.assertEqual((self.lists / changed).read_bytes(), b"C:\\Mine_\r\n")
        self.assertTrue((self.lists / missing).exists())
        self.assertEqual(self.shortcuts(), FRENCH_SHORTCUTS)

    def test_nothing_is_touched_while_the_program_runs_and_everything_goes_afterwards(self):
        self.install()
        program = self.start()
        program.main_window()
        (self.folder / "Backup.pdf").write_bytes(b"older document")
        before = self.installed_files()
        self.install(expected=REFUSED)
        # Told its folder, the uninstaller works in its first process, whose exit code is then its answer.
        self.run_silently(r"C:\Valcoreaux\Backup\Uninstall.exe", r"_?=C:\Valcoreaux\Backup", expected=REFUSED)
        self.assertEqual((self.folder / "Backup.pdf").read_bytes(), b"older document")
        self.assertEqual(self.installed_files(), before)
        program.main_window().press("cmdSortie")
        self.assertEqual(program.wait_exit(), 0)
        program.stop()
        self.uninstall()
        self.assertFalse(self.root.exists())


if __name__ == "__main__":
    unittest.main()
