"""Pictures of every window, to be looked at: in both languages, at each scale of the screen, in the colours that Windows
offers. With them goes a table of the windows' sizes against the screens that they have to fit.

    ./run --gallery [fr|en|100|125|150|175|200|black|white|dark|NAME OF A WINDOW]...
"""

import shutil
import subprocess
import time

from burner import Burner, install_image_mastering
from driver import NotSeen
from program import IDNO, IDOK, IDYES, Program
from samples import write_samples
from schemes import SCHEMES, apply_scheme
from screens import outer_size, size_table
from workstation import BUILD, Display, Workstation

GALLERY = BUILD / "gallery"
LANGUAGES = ("fr", "en")
SCALES = (100, 125, 150, 175, 200)
PASSWORD = "Valcoreaux1"
SETS = {"vexal.lst": r"C:\Quillet", "qamor.lst": r"C:\Qamor\Clients.mdb"}


class Visit:
    """One workstation with its program, gone through window by window."""

    def __init__(self, language, scale, scheme, wanted):
        self.name = f"{language}-{scale}" + (f"-{scheme}" if scheme else "")
        self.scale = scale
        self.wanted = wanted
        self.sizes = {}
        self.display = Display("2560x1600")
        folder = BUILD / "workstation" / f"gallery-{self.name}"
        shutil.rmtree(folder, ignore_errors=True)
        self.station = Workstation(folder, language=language, display=self.display, scale_percent=scale)
        if scheme:
            apply_scheme(self.station, scheme)
        self._furnish()

    def _furnish(self):
        station = self.station
        station.add_usb_storage()
        write_samples(station.documents)
        for name, path in SETS.items():
            place = station.path(path)
            place.parent.mkdir(parents=True, exist_ok=True)
            place.write_bytes(b"x" * 250_000)
            target = station.path(r"C:\Valcoreaux\Backup\Fichierlst\Medium") / name
            target.parent.mkdir(parents=True, exist_ok=True)
            target.write_bytes(path.encode("cp1252") + b"\r\n")
        station.add_drive("e", label="SAUVEGARDE")
        install_image_mastering(station)
        Burner(station, "g", "cd").insert("CD-RW")
        Burner(station, "h", "dvd").insert("DVD+R")
        station.path(r"C:\Valcoreaux\Backup\Backup.ini").write_bytes(b"[DVD]\r\nDisponible=OUI\r\n")

    def close(self):
        self.station.remove()
        self.display.stop()

    def picture(self, name, window):
        """A picture of a window, once it no longer changes, and its size."""
        path = GALLERY / f"{self.name}-{name}.png"
        if self.wanted and name not in self.wanted:
            return
        self._settle(window, path)
        self.sizes[name] = outer_size(window, self.scale)

    def _settle(self, window, path):
        seen = None
        for _ in range(20):
            window.screenshot(path)
            pixels = subprocess.run(["identify", "-format", "%#", str(path)], capture_output=True, check=True).stdout
            if pixels == seen:
                return
            seen = pixels
            time.sleep(0.15)

    def box(self, program, name, button=IDOK):
        """A picture of the message box that is open, which is answered then."""
        box = program.message_box()
        window = next(window for window in program.windows() if window.handle == box.handle)
        self.picture(name, window)
        program.answer(button)


def main_window(visit, program):
    """The question whether USB disks are to be used comes with the first detection of each run."""
    visit.box(program, "usb-question", IDYES)
    return program.main_window()


def disk(visit, program):
    gone = visit.station.documents / "Zones"
    gone.mkdir()
    main = main_window(visit, program)
    visit.picture("main", main)
    main.press("optRestaure")
    visit.picture("main-restore", program.window("frmMain"))
    main.press("optBackup")
    main = program.main_window()
    main.press("optDisqueAmovible")
    main.press("cmdBackup")
    backup = program.window("frmBackup")
    backup.wait_enabled("flbSelectFichier")
    documents = visit.station.windows_path(visit.station.documents)
    program.wait(lambda: backup.row_count("lvFichRep") == 2, "the sets' rows")
    backup.choose("flbSelectFichier", 0)
    backup.press("cmdAjouterFichier")
    backup.drop("lvFichRep", documents + r"\Photos", documents + r"\Lettres")
    program.wait(lambda: backup.row_count("lvFichRep") == 5, "5 rows")
    visit.picture("backup", backup)
    backup.press("cmdInfoDisque")
    information = program.window("frmInfoDisque")
    visit.picture("information-disk", information)
    information.press("cmdOK")
    backup = program.window("frmBackup")
    backup.drop("lvFichRep", "E:\\")
    visit.box(program, "root-refused")
    left_out = visit.station.documents / "Łódź.txt"
    left_out.write_bytes(b"x")
    backup.drop("lvFichRep", visit.station.windows_path(left_out))
    visit.box(program, "left-out")
    left_out.unlink()
    shutil.rmtree(gone)
    backup.click_entry("dlbSelectRep", gone.name)
    visit.box(program, "report")
    run(visit, program, backup)


def to_the_end(visit, program, password_dialog, at_work, ended):
    """The password is given: the window at its work, and the box at the end."""
    password_dialog.press("cmdOK")
    program.message_box(120)
    name, form = at_work
    visit.picture(name, program.find_window(form))
    visit.box(program, ended)
    program.wait_exit()


def run(visit, program, backup):
    backup.press("cmdLancer")
    dialog = program.window("frmMotPasse")
    visit.picture("new-password", dialog)
    dialog.set_text("txtMotPasse", PASSWORD)
    dialog.set_text("txtConfirmation", "autre")
    dialog.press("cmdOK")
    visit.box(program, "passwords-differ")
    program.window("frmMotPasse").set_text("txtMotPasse", "facile")
    dialog.press("cmdOK")
    visit.box(program, "weak-password")
    # The window grows before it shows this button.
    program.window("frmMotPasse").wait_enabled("cmdAideMin")
    dialog = program.window("frmMotPasse")
    visit.picture("new-password-help", dialog)
    dialog.set_text("txtMotPasse", PASSWORD)
    dialog.set_text("txtConfirmation", PASSWORD)
    to_the_end(visit, program, dialog, ("backing-up", "frmBackup"), "backed-up")


def discs(visit, program):
    main = main_window(visit, program)
    for option, kind in (("optCD", "cd"), ("optDVD", "dvd")):
        main.press(option)
        main.press("cmdBackup")
        backup = program.window("frmBackup", 60)
        backup.wait_enabled("lvFichRep", 60)
        visit.picture(f"backup-{kind}", backup)
        backup.press("cmdInfoDisque")
        information = program.window("frmInfoDisque")
        visit.picture(f"information-{kind}", information)
        information.press("cmdRafraichir")
        information.press("cmdOK")
        if kind == "cd":
            erase(visit, program, program.window("frmBackup"))
        program.window("frmBackup").press("cmdPrecedent")
        main = program.window("frmMain")
    main.press("cmdSortie")
    program.wait_exit()


def erase(visit, program, backup):
    backup.press("cmdEffacerDisque")
    window = program.window("frmEffacerCDRW")
    visit.picture("erase", window)
    window.press("optEffacementComplet")
    window.press("cmdEffacerCD")
    visit.box(program, "full-erase", IDNO)
    program.window("frmEffacerCDRW").press("cmdFermer")


def restore(visit, program):
    main = main_window(visit, program)
    main.press("optRestaure")
    main.press("cmdBackup")
    window = program.window("frmRestaureCD")
    visit.picture("restore-opened", window)
    for drive, name in (("G:\\", "restore-no-backup"), ("E:\\", "restore")):
        line = program.wait(
            lambda drive=drive: next((entry for entry in window.entries("lstDrive") if entry.startswith(drive)), None), drive)
        window.choose("lstDrive", line)
        if drive == "E:\\":
            program.wait(lambda: window.rows("lvFichiersRepertoires")[0].ticked, "ticked rows")
        visit.picture(name, window)
    window.press("cmdLancerRestauration")
    dialog = program.window("frmMotPasse")
    visit.picture("password", dialog)
    dialog.press("cmdAideMax")
    dialog.wait_enabled("cmdAideMin")
    visit.picture("password-help", program.window("frmMotPasse"))
    dialog.set_text("txtMotPasse", "Valcoreaux2")
    dialog.press("cmdOK")
    visit.box(program, "wrong-password")
    dialog = program.window("frmMotPasse")
    dialog.set_text("txtMotPasse", PASSWORD)
    to_the_end(visit, program, dialog, ("restoring", "frmRestaureCD"), "restored")


def check(visit, program):
    """The check of the backup that was made, at its end."""
    window = program.window("CheckWindow", 60)
    visit.picture("check-opened", window)
    window.choose("Places", next(entry for entry in window.entries("Places") if entry.startswith("E:")))
    program.wait(lambda: window.row_count("Items") and window.control("Browse").enabled, "the backup's list", 60)
    window.set_text("Password", PASSWORD)
    window.press("Check")
    visit.box(program, "checked")
    visit.picture("check", program.window("CheckWindow"))
    program.window("CheckWindow").press("Close")
    program.wait_exit()


# What is gone through, each in a run of a program of its own.
ROUNDS = (
    ("Backup.exe", disk),
    ("BackupCheck.exe", check),
    ("Backup.exe", discs),
    ("Backup.exe", restore),
)


def visit_windows(language, scale, scheme, wanted):
    visit = Visit(language, scale, scheme, wanted)
    try:
        for executable, steps in ROUNDS:
            program = Program(visit.station, executable)
            try:
                steps(visit, program)
            except NotSeen:
                visit.display.screenshot(GALLERY / f"{visit.name}-99-failure.png")
                raise
            finally:
                program.stop()
        return visit.sizes
    finally:
        visit.close()


def combinations(words):
    """Every language at every scale in the usual colours, and in each other scheme at 100 %; or what of it is named."""
    languages = [word for word in words if word in LANGUAGES] or LANGUAGES
    scales = [int(word) for word in words if word.isdigit()]
    schemes = [word for word in words if word in SCHEMES]
    for language in languages:
        if scales or not schemes:
            yield from ((language, scale, None) for scale in scales or SCALES)
        if schemes or not scales:
            yield from ((language, 100, scheme) for scheme in schemes or SCHEMES)


def run_gallery(words):
    wanted = {word for word in words if word not in LANGUAGES and word not in SCHEMES and not word.isdigit()}
    GALLERY.mkdir(parents=True, exist_ok=True)
    sizes = {}
    for language, scale, scheme in combinations(words):
        started = time.monotonic()
        found = visit_windows(language, scale, scheme, wanted)
        if not scheme:
            for name, size in found.items():
                sizes.setdefault(name, {}).setdefault(scale, size)
        print(f"   {language} {scale} % {scheme or ''}: {len(found)} windows ({time.monotonic() - started:.0f} s)", flush=True)
    # In another scheme the sizes are those of 100 %.
    if sizes:
        table = size_table(sizes)
        (GALLERY / "sizes.txt").write_text(table, encoding="utf-8")
        print(table)
    print(f"== the pictures are in {GALLERY.relative_to(BUILD.parent)}: look at them")
    return 0
