"""What the system tests share: a workstation and a display for each test, and the steps of a backup and a restore."""

import io
import os
import shutil
import subprocess
import sys
import unittest
import zipfile
from pathlib import Path

PROJECT = Path(__file__).resolve().parent.parent.parent
sys.path.insert(0, str(PROJECT / "tools"))

from program import IDOK, Program  # noqa: E402
from surroundings import Surroundings, chosen  # noqa: E402
from texts import translated  # noqa: E402
from workstation import BUILD, CannotHave, Display, Workstation  # noqa: E402

PASSWORD = "Valcoreaux1"
LIST_NAME = "_listFich.lst"
ARCHIVE_NAME = "OKRBACKUP.ZIP"
FAILED_COPY = ("La copie de sécurité a été annulée ou a rencontré des erreurs. Veuillez réessayer. Si l'erreur persiste, "
               "veuillez contacter Ardel-Services au 1-800-555-0199")
# The package 7zip names its program so or so, by release.
SEVEN_ZIP = shutil.which("7zz") or "7z"
SAME_LOOKS = 15
MOST_ROUNDS = 4


def run_check(station, folder, *arguments, password=PASSWORD, seconds=120):
    """One run of the BackupCheck.exe in a folder, with what it wrote; a password comes by standard input."""
    entry = b""
    if password is not None:
        arguments += ("/password-file", "-")
        entry = password if isinstance(password, bytes) else password.encode(station.surroundings.encoding)
    return subprocess.run(station.wine_command(folder + r"\BackupCheck.exe", *arguments), env=station.environment,
                          cwd=station.prefix, input=entry, capture_output=True, timeout=seconds, check=False)


class ProgramEnd:
    """The end of a program, for a test that has a display; of a test that failed, a picture is kept."""

    def end(self, program):
        if self.has_failed():
            picture = BUILD / "logs" / f"{self.id()}.png"
            self.display.screenshot(picture)
        program.stop()

    def has_failed(self):
        outcome = getattr(self, "_outcome", None)
        return outcome is not None and not outcome.success


class SystemTest(ProgramEnd, unittest.TestCase):
    """A test with a workstation of its own, laid out anew and removed afterwards."""

    own_surroundings = Surroundings()
    # What a class keeps of these in every round, with the reason: {"language": "..."}.
    keeps = {}
    maxDiff = None

    def setUp(self):
        folder = BUILD / "workstation" / f"test-{self.id()}-{os.getpid()}"
        shutil.rmtree(folder, ignore_errors=True)
        self.display = Display()
        self.addCleanup(self.display.stop)
        self.surroundings = chosen(type(self))
        self.station = Workstation(folder, surroundings=self.surroundings, display=self.display)
        self.addCleanup(self.station.remove)

    def start(self):
        """Starts the program; it is ended with the test at the latest."""
        program = Program(self.station)
        self.addCleanup(self.end, program)
        return program

    def settled_usage(self, program):
        """Handles, GDI objects and user objects once they stay the same; the first use of a control keeps some for good."""
        seen = []

        def is_settled():
            seen.append(program.usage()[2:])
            return len(seen) >= SAME_LOOKS and len(set(seen[-SAME_LOOKS:])) == 1

        program.wait(is_settled, f"the same usage {SAME_LOOKS} times")
        return seen[-1]

    def assert_a_round_leaves_nothing(self, program, play):
        """Plays the same round until one leaves no handle, GDI or user object. What the process keeps for good comes once,
        and perhaps late; what a round leaves comes each time."""
        held = [self.settled_usage(program)]
        for _ in range(MOST_ROUNDS):
            play()
            held.append(self.settled_usage(program))
            if all(now <= then for then, now in zip(held[-2], held[-1], strict=True)):
                return
        self.fail(f"handles, GDI and user objects before and after each round: {held}")

    def words(self, french):
        """A text of the program in the language of this round."""
        return translated(french, self.surroundings.language)

    def number(self, with_point):
        """A number as it is written here."""
        return with_point.replace(".", self.surroundings.separator)

    def disk(self, letter="e", **properties):
        """A removable disk; the test is skipped where the machine refuses one of the wanted sort."""
        try:
            return self.station.add_drive(letter, **properties)
        except CannotHave as reason:
            self.skipTest(str(reason))

    def document(self, name, content=b"contenu"):
        """A file in the user's documents; gives its Windows path."""
        path = self.station.documents.joinpath(*name.split("\\"))
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(content)
        return self.station.windows_path(path)

    def folder(self, name):
        path = self.station.documents.joinpath(*name.split("\\"))
        path.mkdir(parents=True, exist_ok=True)
        return self.station.windows_path(path)

    # The steps of a backup

    def open_backup(self, program):
        """From the main window to the backup window for the removable disk."""
        main = program.main_window()
        main.press("optDisqueAmovible")
        program.wait(lambda: main.control("cboDrive").enabled, "cboDrive enabled")
        main.press("cmdBackup")
        backup = program.window("frmBackup")
        backup.wait_enabled("lvFichRep")
        return backup

    def select(self, backup, *paths):
        """Drops paths on the list and waits until each has its row."""
        count = backup.row_count("lvFichRep") + len(paths)
        backup.drop("lvFichRep", *paths)
        backup.program.wait(lambda: backup.row_count("lvFichRep") == count, f"{count} rows", 60)

    def give_new_password(self, program, password=PASSWORD):
        dialog = program.window("frmMotPasse")
        dialog.set_text("txtMotPasse", password)
        dialog.set_text("txtConfirmation", password)
        dialog.press("cmdOK")

    def give_password(self, program, password=PASSWORD):
        dialog = program.window("frmMotPasse")
        dialog.set_text("txtMotPasse", password)
        dialog.press("cmdOK")

    def back_up(self, *paths, password=PASSWORD, seconds=240):
        """A whole backup of the given paths, from the start of the program to its end; gives the last message."""
        program = self.start()
        backup = self.open_backup(program)
        self.select(backup, *paths)
        backup.press("cmdLancer")
        self.give_new_password(program, password)
        box = program.answer(IDOK, seconds)
        self.assertEqual(program.wait_exit(), 0)
        program.stop()
        return box

    # The steps of a restore

    def open_restore(self, program, drive="E:\\"):
        """From the main window to the restore window, with the drive's line chosen."""
        main = program.main_window()
        main.press("optRestaure")
        main.press("cmdBackup")
        restore = program.window("frmRestaureCD")
        self.choose_drive(restore, drive)
        return restore

    def choose_drive(self, restore, drive="E:\\"):
        line = restore.program.wait(
            lambda: next((entry for entry in restore.entries("lstDrive") if entry.startswith(drive)), None),
            f"a line for {drive}")
        restore.choose("lstDrive", line)
        return line

    def wait_rows(self, restore, count):
        restore.program.wait(lambda: restore.row_count("lvFichiersRepertoires") == count, f"{count} rows", 60)

    def restore_all(self, password=PASSWORD, seconds=240):
        """A whole restore of everything on E:, from the start of the program to its end; gives the last message."""
        program = self.start()
        restore = self.open_restore(program)
        restore.press("cmdLancerRestauration")
        self.give_password(program, password)
        box = program.answer(IDOK, seconds)
        self.assertEqual(program.wait_exit(), 0)
        program.stop()
        return box

    # What is on the medium

    def list_lines(self, letter="e"):
        return (self.station.path(f"{letter}:") / LIST_NAME).read_bytes().decode(self.surroundings.encoding).split("\r\n")

    def inner_archives(self, letter="e", password=PASSWORD):
        """Name of each inner archive to the names and contents inside; a folder's content is None."""
        found = {}
        with zipfile.ZipFile(self.station.path(f"{letter}:") / ARCHIVE_NAME) as outer:
            for entry in outer.namelist():
                with zipfile.ZipFile(io.BytesIO(outer.read(entry, pwd=password.encode("cp1252")))) as inner:
                    found[entry] = {info.filename: None if info.is_dir() else inner.read(info)
                                    for info in inner.infolist()}
        return found

    def check_archive_with_7zip(self, password=PASSWORD):
        """The exit code of Debian's own archiver when it tests the archive on E:."""
        return subprocess.run([SEVEN_ZIP, "t", f"-p{password}", str(self.station.path("e:") / ARCHIVE_NAME)],
                              stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=False).returncode

    def write_backup(self, lines, items, letter="e", password=PASSWORD):
        """A medium as another workstation might have written it: control-file lines, and inner archives by number."""
        root = self.station.path(f"{letter}:")
        (root / LIST_NAME).write_bytes("".join(line + "\r\n" for line in lines).encode(self.surroundings.encoding))
        scratch = self.station.prefix / "scratch"
        scratch.mkdir(exist_ok=True)
        for number, files in items.items():
            name = f"Zip{number:04d}.zip"
            with zipfile.ZipFile(scratch / name, "w") as inner:
                for path, content in files.items():
                    inner.writestr(path, content)
            subprocess.run([SEVEN_ZIP, "a", "-tzip", f"-p{password}", str(root / ARCHIVE_NAME), name], cwd=scratch, check=True,
                           stdout=subprocess.DEVNULL)
        shutil.rmtree(scratch)
