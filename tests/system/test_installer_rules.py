"""What an IT department asks of the installer: who may do what, versions, languages, a log, signatures."""

import subprocess
import unittest

from installer_case import INSTALLER, PACKAGING, REFUSED, UNINSTALL_KEY, InstallerCase

EVENT_SOURCE_KEY = r"System\CurrentControlSet\Services\Eventlog\Application\Backup"
CONTENT_FILES = ("Backup.exe", "BackupCheck.exe", "7Za.exe", "Copie de Sauvegarde.pdf", "Backup.pdf", "NOTICE.txt", "Backup.sample.ini")


def with_version(program, version):
    """A program file with another file version in its fixed version record (signature 0xFEEF04BD)."""
    at = program.index(bytes.fromhex("bd04effe")) + 8
    major, minor, revision, build = version
    return program[:at] + b"".join(part.to_bytes(2, "little") for part in (minor, major, build, revision)) + program[at + 8:]


class InstallerRulesTest(InstallerCase):
    def log(self):
        return (self.station.path(r"C:\Tools") / "setup.log").read_text(encoding="utf-16")

    def test_rights_are_given_to_the_program_s_folders(self):
        self.install(r"/LOG=C:\Tools\setup.log")
        for folder in ("", r"\LICENSES", r"\Fichierlst"):
            self.assertIn(rf"rights of C:\Valcoreaux\Backup{folder}: 0", self.log())

    def test_a_file_that_somebody_prepared_does_not_stay(self):
        self.folder.mkdir(parents=True)
        prepared = self.folder / "Backup.exe"
        prepared.write_bytes(b"prepared")
        twin = self.station.path(r"C:\Tools") / "twin"
        twin.hardlink_to(prepared)
        self.install()
        self.assertEqual(prepared.read_bytes(), (PACKAGING / "content" / "Backup.exe").read_bytes())
        self.assertEqual(twin.read_bytes(), b"prepared")

    def test_nothing_is_replaced_while_one_of_the_files_is_in_use(self):
        self.install()
        guide = self.folder / "NOTICE.txt"
        for name in CONTENT_FILES:
            (self.folder / name).write_bytes(b"older")
        # A folder in a file's place cannot be written to, as a file that is open elsewhere cannot.
        guide.unlink()
        guide.mkdir()
        self.install(r"/LOG=C:\Tools\setup.log", expected=REFUSED)
        for name in CONTENT_FILES:
            if name != guide.name:
                self.assertEqual((self.folder / name).read_bytes(), b"older", name)
        self.assertIn("NOTICE.txt", self.log())

    def test_a_newer_program_stays_unless_told_otherwise(self):
        newer = with_version((PACKAGING / "content" / "Backup.exe").read_bytes(), (9, 1, 0, 0))
        self.folder.mkdir(parents=True)
        (self.folder / "Backup.exe").write_bytes(newer)
        self.install(r"/LOG=C:\Tools\setup.log", expected=REFUSED)
        self.assertEqual((self.folder / "Backup.exe").read_bytes(), newer)
        self.assertIn("9.1.0.0", self.log())
        self.install("/DOWNGRADE")
        self.assertEqual((self.folder / "Backup.exe").read_bytes(), (PACKAGING / "content" / "Backup.exe").read_bytes())

    def test_an_older_program_is_replaced(self):
        self.folder.mkdir(parents=True)
        older = with_version((PACKAGING / "content" / "Backup.exe").read_bytes(), (1, 0, 0, 0))
        (self.folder / "Backup.exe").write_bytes(older)
        self.install()
        self.assertEqual((self.folder / "Backup.exe").read_bytes(), (PACKAGING / "content" / "Backup.exe").read_bytes())

    def test_the_language_asked_for_goes_before_that_of_windows(self):
        self.install("/LANG=en")
        self.assertEqual(self.shortcuts()[0][0], "Backup.lnk")
        self.install("/LANG=fr")
        self.assertEqual(self.shortcuts(), [["Copies de sécurité.lnk"],
                                            ["Copies de sécurité.lnk", "Vérifier une copie de sécurité.lnk"]])

    def test_the_event_log_knows_the_program_until_it_is_removed_quietly(self):
        self.install()
        self.wait_until_idle()
        self.assertIn("EventCreate.exe", self.registry_values(EVENT_SOURCE_KEY)["EventMessageFile"])
        quiet = self.registry_values(UNINSTALL_KEY)["QuietUninstallString"]
        self.assertEqual(quiet.replace("\\\\", "\\").replace("\\\"", "\""), r'""C:\Valcoreaux\Backup\Uninstall.exe" /S"')
        self.uninstall()
        self.assertIsNone(self.registry_values(EVENT_SOURCE_KEY))

    def test_the_sum_beside_the_setup_is_its_own(self):
        done = subprocess.run(["sha256sum", "--check", f"{INSTALLER.name}.sha256"], cwd=PACKAGING, capture_output=True,
                              text=True, check=False)
        self.assertEqual(done.returncode, 0, done.stdout + done.stderr)


if __name__ == "__main__":
    unittest.main()
