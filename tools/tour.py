"""The scripted tour: what a person does in the program's main job, step by step, with a look at the result of each."""

import shutil
import time
import zipfile

from driver import NotSeen
from program import IDOK, Program
from samples import differences, snapshot, write_samples
from workstation import BUILD, Display, Workstation

PICTURES = BUILD / "tour"
PASSWORD = "Valcoreaux1"
GOOD = {"fr": "La copie de sécurité est bonne", "en": "The backup is good"}


class Tour:
    def __init__(self, language, display, station):
        self.language = language
        self.display = display
        self.station = station
        self.pictures = 0

    def step(self, text, action):
        started = time.monotonic()
        result = action()
        print(f"   {self.language}  {text}: {result or 'done'} ({time.monotonic() - started:.1f} s)", flush=True)

    def picture(self, name, window=None):
        self.pictures += 1
        path = PICTURES / f"{self.language}-{self.pictures:02d}-{name}.png"
        if window:
            window.screenshot(path)
        else:
            self.display.screenshot(path)

    def take(self):
        write_samples(self.station.documents)
        self.medium = self.station.add_drive("e", label="SAUVEGARDE")
        self.before = snapshot(self.station.documents)
        self.back_up()
        self.step("look at the medium with other tools", self.check_medium)
        self.step("check the medium", self.check_backup)
        self.step("delete the originals", self.delete_originals)
        self.restore()
        self.step("compare with the originals byte by byte", self.compare)

    def back_up(self):
        program = Program(self.station)
        try:
            main = program.main_window()
            self.step("open the program", lambda: self.picture("main", main) or main.title)
            self.step("choose Backup and Removable disk", lambda: self.choose_removable(main))
            backup = program.window("frmBackup")
            self.step("pick files and folders", lambda: self.pick(program, backup))
            self.step("start", lambda: backup.press("cmdLancer"))
            self.step("give a password that is too weak", lambda: self.weak_password(program))
            self.step("give a password", lambda: self.password(program))
            self.step("back up", lambda: self.finish(program, "backed-up"))
        finally:
            program.stop()

    def choose_removable(self, main):
        main.press("optDisqueAmovible")
        chosen = main.chosen("cboDrive")
        main.press("cmdBackup")
        return f"drive {chosen[0]}"

    def pick(self, program, backup):
        backup.wait_enabled("flbSelectFichier")
        program.wait(lambda: backup.entries("flbSelectFichier"), "the documents' files")
        for index in range(len(backup.entries("flbSelectFichier"))):
            backup.choose("flbSelectFichier", index)
        backup.press("cmdAjouterFichier")
        documents = self.station.windows_path(self.station.documents)
        expected = len(backup.entries("flbSelectFichier"))
        program.wait(lambda: backup.row_count("lvFichRep") == expected, f"{expected} rows")
        backup.drop("lvFichRep", documents + r"\Photos", documents + r"\Lettres")
        program.wait(lambda: backup.row_count("lvFichRep") == expected + 2, f"{expected + 2} rows")
        self.picture("backup", backup)
        return f"{expected} files and 2 folders; {backup.text('lblEspaceRequis')}"

    def weak_password(self, program):
        dialog = program.window("frmMotPasse")
        dialog.set_text("txtMotPasse", "facile")
        dialog.set_text("txtConfirmation", "facile")
        dialog.press("cmdOK")
        box = program.message_box()
        self.picture("weak-password")
        program.answer(IDOK)
        return box.title

    def password(self, program):
        dialog = program.window("frmMotPasse")
        dialog.set_text("txtMotPasse", PASSWORD)
        if dialog.control("txtConfirmation").visible:
            dialog.set_text("txtConfirmation", PASSWORD)
        self.picture("password", dialog)
        dialog.press("cmdOK")

    def finish(self, program, picture):
        box = program.message_box(seconds=120)
        self.picture(picture)
        program.answer(IDOK)
        code = program.wait_exit()
        if code != 0:
            raise NotSeen(f"the program ended with {code}")
        return box.title

    def check_medium(self):
        names = self.station.medium_files("e")
        if names != ["OKRBACKUP.ZIP", "_listFich.lst"]:
            raise NotSeen(f"the medium holds {names}")
        listed = (self.medium / "_listFich.lst").read_bytes().decode("cp1252").splitlines()
        with zipfile.ZipFile(self.medium / "OKRBACKUP.ZIP") as outer:
            entries = sorted(outer.namelist())
            broken = outer.testzip() if not entries else self.test_inner(outer, entries)
        if broken or entries != [f"Zip{index:04d}.zip" for index in range(1, len(listed) + 1)]:
            raise NotSeen(f"{len(listed)} lines but the archive holds {entries} {broken or ''}")
        return f"{len(listed)} lines in the list, {len(entries)} inner archives"

    def check_backup(self):
        program = Program(self.station, executable="BackupCheck.exe")
        try:
            window = program.window("CheckWindow")
            program.wait(lambda: window.row_count("Items"), "the rows of the list")
            window.set_text("Password", PASSWORD)
            window.press("Check")
            box = program.answer(IDOK, seconds=120)
            window.click_row("Items", 0)
            program.wait(lambda: window.text("Details"), "the details of the first item")
            self.picture("check", window)
            window.press("Close")
            program.wait_exit()
        finally:
            program.stop()
        # By its words: under load a box is there before its icon can be seen.
        if GOOD[self.language] not in box.text:
            raise NotSeen(str(box))
        return box.text

    @staticmethod
    def test_inner(outer, entries):
        for entry in entries:
            with outer.open(entry, pwd=PASSWORD.encode()) as stream, zipfile.ZipFile(stream) as inner:
                if inner.testzip():
                    return f"{entry} is damaged"
        return None

    def delete_originals(self):
        shutil.rmtree(self.station.documents)
        self.station.documents.mkdir()

    def restore(self):
        program = Program(self.station)
        try:
            main = program.main_window()
            main.press("optRestaure")
            main.press("cmdBackup")
            window = program.window("frmRestaureCD")
            self.step("choose Restore and the disk", lambda: self.choose_medium(program, window))
            window.press("cmdLancerRestauration")
            self.step("give a wrong password", lambda: self.wrong_password(program))
            self.step("give the password", lambda: self.password(program))
            self.step("restore", lambda: self.finish(program, "restored"))
        finally:
            program.stop()

    def choose_medium(self, program, window):
        line = program.wait(
            lambda: next((entry for entry in window.entries("lstDrive") if entry.startswith("E:\\")), None), "drive E:")
        window.choose("lstDrive", line)
        program.wait(lambda: window.row_count("lvFichiersRepertoires") and window.rows("lvFichiersRepertoires")[0].ticked,
                     "ticked rows")
        self.picture("restore", window)
        return f"{line}; {window.row_count('lvFichiersRepertoires')} rows"

    def wrong_password(self, program):
        dialog = program.window("frmMotPasse")
        dialog.set_text("txtMotPasse", "Valcoreaux2")
        dialog.press("cmdOK")
        box = program.message_box()
        self.picture("wrong-password")
        program.answer(IDOK)
        return box.title

    def compare(self):
        after = snapshot(self.station.documents)
        found = differences(self.before, after)
        if found:
            raise NotSeen("; ".join(found))
        return f"{len(after)} files and folders are back"


def run():
    """Takes the tour in both languages; 0 when everything was as it should be."""
    shutil.rmtree(PICTURES, ignore_errors=True)
    PICTURES.mkdir(parents=True)
    outcome = 0
    for language in ("fr", "en"):
        folder = BUILD / "workstation" / f"tour-{language}"
        shutil.rmtree(folder, ignore_errors=True)
        display = Display()
        station = Workstation(folder, language=language, display=display)
        try:
            Tour(language, display, station).take()
        except (NotSeen, OSError, zipfile.BadZipFile, RuntimeError) as failure:
            display.screenshot(PICTURES / f"{language}-99-failure.png")
            print(f"   {language}  FAILED: {failure}", flush=True)
            outcome = 1
        finally:
            station.remove()
            display.stop()
    print(f"== the tour's pictures are in {PICTURES.relative_to(BUILD.parent)}")
    print("== the tour went well" if outcome == 0 else "== the tour FAILED")
    return outcome
