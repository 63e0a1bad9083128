"""What the tests of the installer share: a workstation where the program never was, and its silent runs."""

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


class PackagedCase(unittest.TestCase):
    """What looks at build/packaging and needs no workstation."""

    def setUp(self):
        for tool in ("makensis", "weasyprint"):
            if not shutil.which(tool):
                self.skipTest(f"the installer cannot be built: there is no {tool} on this machine")
        if not INSTALLER.exists():
            self.fail("packaging/build did not build build/packaging/Backup-setup.exe")


class InstallerCase(SystemTest):
    keeps = {"language": "what it installs is named in French"}

    def setUp(self):
        PackagedCase.setUp(self)
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
        """Runs a setup or an uninstaller and compares its exit code."""
        self.stay_awake()
        code = subprocess.run(self.station.wine_command(program, "/S", *arguments), env=self.station.environment,
                              cwd=self.station.path(r"C:\Tools"), check=False, timeout=60,
                              stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL).returncode
        self.assertEqual(code, expected, program)

    def install(self, *arguments, expected=0):
        self.run_silently(r"C:\Tools\Backup-setup.exe", *arguments, expected=expected)

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
        # Newer releases of Wine keep the current set of the system's settings as a link to the first one.
        name = re.escape(key).replace("CurrentControlSet", "(?:CurrentControlSet|ControlSet001)")
        section = re.search(rf"^\[{name}\][^\n]*\n(.*?)(?:\n\n|\Z)", hive.replace("\\\\", "\\"), re.M | re.S)
        return dict(re.findall(r'^"(.+?)"=(.*)$', section.group(1), re.M)) if section else None
