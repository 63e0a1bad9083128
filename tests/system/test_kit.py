"""The kit for a real Windows, run whole or thinned on a workstation, and its report read."""

import base64
import os
import re
import shutil
import subprocess
import unittest
import zipfile
from html.parser import HTMLParser

from installer_case import InstallerCase
from system_test import ARCHIVE_NAME, BUILD, LIST_NAME, PROJECT

KIT = BUILD / "packaging" / "Backup-kit.zip"
# All of its tests take a quarter of an hour.
IS_WHOLE = bool(os.environ.get("BACKUP_WHOLE_KIT"))
WINDOWS = ("frmMain", "frmBackup", "frmInfoDisque", "frmMotPasse", "frmRestaureCD", "MessageBox")
NOT_RUN = 2
PNG = b"\x89PNG\r\n\x1a\n"


class ReportReader(HTMLParser):
    """The lines of a report by outcome, and its pictures by caption."""

    def __init__(self, path):
        super().__init__()
        self.lines = []
        self.pictures = {}
        self._cell = None
        self.feed(path.read_text(encoding="utf-8"))

    def handle_starttag(self, tag, attributes):
        attributes = dict(attributes)
        if tag == "tr":
            self.lines.append([attributes["class"]])
        elif tag == "td":
            self.lines[-1].append("")
            self._cell = True
        elif tag == "img":
            self.pictures[attributes["alt"]] = base64.b64decode(attributes["src"].partition(",")[2])

    def handle_endtag(self, tag):
        if tag == "td":
            self._cell = None

    def handle_data(self, data):
        if self._cell:
            self.lines[-1][-1] += data

    def of(self, outcome):
        return [line for line in self.lines if line[0] == outcome]

    def told(self, name):
        return [line[3] for line in self.lines if line[1] == name]


class KitCase(InstallerCase):
    keeps = InstallerCase.keeps | {"code_page": "the report tells it"}

    def setUp(self):
        super().setUp()
        if self.surroundings.is_before_vista:
            self.skipTest("the kit is for Windows 7 and newer: it lays the trial's documents where these have them")
        if not KIT.exists():
            self.fail("packaging/kit did not build build/packaging/Backup-kit.zip")
        with zipfile.ZipFile(KIT) as archive:
            archive.extractall(self.station.path("C:"))
        self.stick = self.disk("e", label="PRETEE")
        (self.stick / "photo.jpg").write_bytes(b"the person's own")

    def run_kit(self, *words, letter="E"):
        """The exit code of kit.cmd, and the reports that are there then."""
        command = self.station.wine_command("cmd", "/c", r"C:\Backup-kit\kit.cmd", letter, *words)
        done = subprocess.run(command, env=self.station.environment, cwd=self.station.path("C:"), check=False,
                              stdin=subprocess.DEVNULL, capture_output=True, timeout=1800 if IS_WHOLE else 600)
        self.said = done.stdout.decode("utf-8", "replace")
        return done.returncode, sorted(self.station.path(r"C:\Backup-kit").glob("report-*.html"))

    def on_the_stick(self):
        return {name: (self.stick / name).read_bytes() for name in self.station.medium_files("e")}


class KitOptionsTest(unittest.TestCase):
    def test_another_place_for_the_setup_is_refused(self):
        before = KIT.stat().st_mtime_ns if KIT.exists() else None
        done = subprocess.run([PROJECT / "packaging" / "kit", "--output", BUILD], capture_output=True, text=True, check=False)
        self.assertEqual(done.returncode, 1)
        self.assertIn("--output would leave an older setup there", done.stderr)
        self.assertEqual(KIT.stat().st_mtime_ns if KIT.exists() else None, before)


class KitTest(KitCase):
    def test_the_kit_goes_through_everything_and_leaves_nothing_but_its_report(self):
        documents = self.station.documents
        (documents / "le mien.txt").write_bytes(b"the person's own")
        before = {path for path in self.station.path("C:").rglob("*") if "Backup-kit" in path.parts or "users" in path.parts}
        code, reports = self.run_kit("--install", *([] if IS_WHOLE else ["--quick"]))
        self.assertEqual(len(reports), 1, self.said)
        shutil.copy2(reports[0], BUILD / "logs" / "kit-report.html")
        report = ReportReader(reports[0])
        self.assertEqual((report.of("failed"), code), ([], 0), self.said)

        self.assertIn("NON : Wine", report.told("Windows véritable")[0])
        self.assertRegex(report.told("Windows")[0], r", \d+\.\d+\.\d+\.\d+$")
        self.assertIn("100 %", report.told("Échelle et écran")[0])
        self.assertEqual(report.told("Pages de codes"), ["ANSI 1252, OEM 850"])
        for name in ("copie de sécurité par les fenêtres", "restauration par les fenêtres",
                     "comparaison avec les originaux", "installation silencieuse", "désinstallation",
                     "la clé est comme avant", "rien ne reste sur l'ordinateur"):
            self.assertIn(name, [line[1] for line in report.of("passed")])
        for name in ("copie : programme / archiveur seul", "restauration : programme / archiveur seul"):
            self.assertRegex(report.told(name)[0], r"^\d+\.\d\d s / \d+\.\d\d s = \d+\.\d{3}$")
        tests = {line[1].partition(".")[0] for line in report.of("passed")}
        self.assertLessEqual({"FilesContract/1", "OperatingSystemContract/1", "HeldFiles", "ScanControlTest",
                              "Windows/PowerContract/0"}, tests)
        for window in WINDOWS:
            picture = report.pictures[f"fr {window}"]
            self.assertTrue(picture.startswith(PNG), window)
            self.assertGreater(len(picture), 2000, f"{window} is one colour")

        self.assertEqual(self.on_the_stick(), {"photo.jpg": b"the person's own"})
        after = {path for path in self.station.path("C:").rglob("*") if "Backup-kit" in path.parts or "users" in path.parts}
        # Wine writes the menus of this machine's desktop as well.
        left = {path for path in after - before if not re.search(r"AppData|ProgramData|Temp$|\.lnk$|\.desktop$", str(path))}
        self.assertEqual({path.name for path in left}, {reports[0].name})
        self.assertFalse(self.station.path(r"C:\Valcoreaux").exists())
        self.assertEqual([path for path in self.station.profile.rglob("Backup-kit-*")], [])

    def test_a_stick_with_a_backup_and_a_drive_that_is_no_stick_are_refused_untouched(self):
        for name in (ARCHIVE_NAME, LIST_NAME):
            (self.stick / name).write_bytes(b"a backup")
            before = self.on_the_stick()
            code, reports = self.run_kit("--quick")
            self.assertEqual((code, reports), (NOT_RUN, []), self.said)
            self.assertIn("déjà une copie de sécurité", self.said)
            self.assertEqual(self.on_the_stick(), before)
            (self.stick / name).unlink()
        before = self.on_the_stick()
        self.assertEqual(self.run_kit("--quick", letter="C"), (NOT_RUN, []), self.said)
        self.assertIn("ni une clé USB ni un disque externe", self.said)
        self.assertEqual(self.on_the_stick(), before)
        self.assertFalse(self.station.path(rf"C:\{LIST_NAME}").exists())


if __name__ == "__main__":
    unittest.main()
