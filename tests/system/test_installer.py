"""The installer, run silently on a workstation where the program never was."""

import os
import re
import shutil
import subprocess
import unittest

from system_test import BUILD, PROJECT, SystemTest

from driver import Driver

PACKAGING = BUILD / "packaging"
INSTALLER = PACKAGING / "Backup-setup.exe"
LIST_SOURCES = {path.name: path for path in (PROJECT / "packaging" / "Fichierlst").rglob("*.lst")
                if path.name != "transfert.lst"}
STAMPS_KEY = r"Software\Ardel-Services\Backup\ListFiles"
UNINSTALL_KEY = r"Software\Microsoft\Windows\CurrentVersion\Uninstall\ArdelServices.Backup"
REFUSED = 2


def registry_stamp(path):
    """A file's size and time of change as the installer notes them."""
    status = path.stat()
    ticks = status.st_mtime_ns // 100 + 116_444_736_000_000_000
    halves = [half - 2**32 if half >= 2**31 else half for half in (ticks >> 32, ticks & 0xFFFFFFFF)]
    return f"{status.st_size} {halves[0]} {halves[1]}"


class InstallerTest(SystemTest):
    def setUp(self):
        for tool in ("makensis", "weasyprint"):
            if not shutil.which(tool):
                self.skipTest(f"the installer cannot be built: there is no {tool} on this machine")
        if not INSTALLER.exists():
            self.fail("packaging/build did not build build/packaging/Backup-setup.exe")
        super().setUp()
        self.root = self.station.path(r"C:\Valcoreaux")
        shutil.rmtree(self.root)
        self.folder = self.root / "Backup"
        self.lists = self.folder / "Fichierlst" / "Medium"
        shutil.copy2(INSTALLER, self.station.path(r"C:\Tools"))
        self.awake = None

    def list_names(self):
        if not LIST_SOURCES:
            self.skipTest("the installer has no list files: there are none in packaging/Fichierlst")
        return sorted(LIST_SOURCES)

    def stay_awake(self):
        """Keeps Windows running between the programs: starting it takes most of a test's time."""
        if not self.awake:
            self.awake = Driver(self.station)
            self.addCleanup(self.awake.stop)

    def wait_until_idle(self):
        if self.awake:
            self.awake.stop()
            self.awake = None
        self.station.wait_until_idle()

    def run_silently(self, program, *arguments, expected=0):
        self.stay_awake()
        code = subprocess.run(self.station.wine_command(program, "/S", *arguments), env=self.station.environment,
                              cwd=self.station.path(r"C:\Tools"), check=False, timeout=60,
                              stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL).returncode
        self.assertEqual(code, expected, program)

    def install(self, expected=0):
        self.run_silently(r"C:\Tools\Backup-setup.exe", expected=expected)

    def uninstall(self):
        self.run_silently(r"C:\Valcoreaux\Backup\Uninstall.exe")
        # The uninstaller goes on from a copy of itself.
        self.wait_until_idle()

    def installed_files(self):
        return {str(path.relative_to(self.root)) for path in self.root.rglob("*") if not path.is_dir()}

    def shortcuts(self):
        places = (r"C:\users\Public\Desktop", r"C:\ProgramData\Microsoft\Windows\Start Menu\Programs")
        return [sorted(path.name for path in self.station.path(place).glob("*.lnk")) for place in places]

    def registry_values(self, key):
        """The values below a key of the machine, None without it; once the workstation is idle."""
        hive = (self.station.prefix / "system.reg").read_text(encoding="utf-8")
        section = re.search(rf"^\[{re.escape(key)}\][^\n]*\n(.*?)(?:\n\n|\Z)", hive.replace("\\\\", "\\"), re.M | re.S)
        return dict(re.findall(r'^"(.+?)"=(.*)$', section.group(1), re.M)) if section else None

    def test_everything_is_installed_and_the_program_starts_from_there(self):
        self.install()
        self.wait_until_idle()
        own = {"Backup.exe", "7Za.exe", "Uninstall.exe", "Copie de Sauvegarde.pdf", "Backup.pdf", "NOTICE.txt"}
        licences = {f"LICENSES/{path.name}" for path in (PROJECT / "LICENSES").iterdir()}
        lists = {f"Fichierlst/Medium/{name}" for name in LIST_SOURCES}
        self.assertEqual(self.installed_files(), {f"Backup/{name}" for name in own | licences | lists})
        for name in ("Copie de Sauvegarde.pdf", "Backup.pdf"):
            self.assertTrue((self.folder / name).read_bytes().startswith(b"%PDF-"), name)
        for name, source in LIST_SOURCES.items():
            self.assertEqual((self.lists / name).read_bytes(), source.read_bytes(), name)
        self.assertEqual(self.shortcuts(), [["Copies de sécurité.lnk"]] * 2)
        entry = self.registry_values(UNINSTALL_KEY)
        self.assertEqual((entry["DisplayVersion"], entry["Publisher"]), ('"2.2.0"', '"Ardel-Services"'))

        program = self.start()
        program.main_window().press("cmdSortie")
        self.assertEqual(program.wait_exit(), 0)

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
        self.assertEqual(self.shortcuts(), [["Copies de sécurité.lnk"]] * 2)

    def test_nothing_is_touched_while_the_program_runs_and_everything_goes_afterwards(self):
        self.install()
        program = self.start()
        program.main_window()
        (self.folder / "Backup.pdf").write_bytes(b"older document")
        before = self.installed_files()
        self.install(REFUSED)
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
