"""Runs one fault: the usual steps of its area with the fault between them, then the next backup and the next restore, and
holds what was seen against the invariants."""

import json
import shutil
import subprocess
import tempfile
import time
from pathlib import Path

from burner import Burner, install_image_mastering
from fault import DONE, EMPTY_LIST, KILLED, NEW, NOTHING, Expect, Fault
from invariants import breaches
from scene import FaultScene, Seen

from driver import DriverError, NotSeen
from system_test import ARCHIVE_NAME, LIST_NAME, SEVEN_ZIP

NO_FAULT = Fault("none", "disk", Expect())
VERDICTS = {0: "good", 1: "faulty", 2: "wrong password", 3: "no backup"}


class FaultTest(FaultScene):
    """Faults of every area; a program's test of one is made by the runner."""

    keeps = {"language": "what a person is told is looked for in French"}

    def check(self, fault):
        """Runs the fault and fails where an invariant is broken. Gives the row of the table."""
        started = time.monotonic()
        try:
            self.run_fault(fault)
        except (DriverError, NotSeen, OSError) as failure:
            self.seen.outcome = self.seen.outcome or f"{type(failure).__name__}: {failure}"
        row = {"name": fault.name, "area": fault.area, **vars(self.seen), "seconds": round(time.monotonic() - started, 1)}
        row["breaches"] = breaches(fault, self.seen)
        return row

    def run_fault(self, fault):
        if fault.area == "disc":
            install_image_mastering(self.station)
            self.burner = Burner(self.station, "g", "cd")
            self.burner.insert("CD-R")
            self.restore_drive = "G:\\"
        self.lay_out(**fault.options)
        if fault.area == "restore":
            self.lay_out_backup()
        fault.arrange(self)
        before = self.others()
        (fault.act or ACTS[fault.area])(self, fault)
        fault.when_over(self)
        if self.program and self.program.exit_code() is None:
            self.leave()
        elif self.program:
            self.seen.exit = self.seen.exit or str(self.program.exit_code())
            self.program.stop()
            self.seen.stray = self.wait_for_no_process()
        if self.was_killed:
            self.seen.outcome = KILLED
            self.seen.stray = []
        self.seen.left = self.work_folder_names()
        if fault.area == "restore":
            self.note_files()
        self.cure(fault)
        self.note_outside(before, fault)
        self.look_at_medium(fault)
        self.try_again(fault)

    # The usual steps

    def back_up_to_disk(self, fault):
        self.start_program()
        backup = self.open_backup_window()
        fault.when_open(self)
        self.choose(backup)
        self.press_start(fault, backup, "cmdLancer", self.give_new_password)
        self.follow()

    def back_up_to_disc(self, fault):
        self.start_program()
        main = self.main_window(90)
        main.press("optCD")
        main.press("cmdBackup")
        self.read_boxes(lambda: self._usable("frmBackup", "lvFichRep"))
        backup = self.program.window("frmBackup", 10)
        fault.when_open(self)
        self.choose(backup)
        self.press_start(fault, backup, "cmdLancer", self.give_new_password)
        self.follow()

    def restore(self, fault):
        self.start_program()
        restore = self.open_restore_window()
        fault.when_open(self)
        self.press_start(fault, restore, "cmdLancerRestauration", self.give_password)
        self.follow()
        self.read_list()

    def read_list(self):
        """What the list says instead of items is told as well."""
        restore = self.program.exit_code() is None and self.program.find_window("frmRestaureCD", enabled=True)
        if restore and not restore.control("cmdLancerRestauration").enabled:
            rows = restore.rows("lvFichiersRepertoires")
            self.seen.told.append(f"in the list: {rows[0].texts[0]}" if rows else EMPTY_LIST)

    # A medium to restore from

    def lay_out_backup(self):
        """On the disk the backup of the documents; in their places newer ones."""
        lines = [r"**UserProfile**\Documents\budget.csv,32,Zip0001", r"**UserProfile**\Documents\grand.bin,32,Zip0002",
                 r"**UserProfile**\Documents\Lettres d'été\*.*,-1,Zip0003"]
        for name in self.pair():
            (self.root / name).unlink()
        self.write_backup(lines, {1: {"budget.csv": self.documents["budget.csv"]},
                                  2: {"grand.bin": self.documents["grand.bin"]},
                                  3: {name: content for name, content in self.documents.items() if "/" in name}})
        self.saved = dict(self.documents)
        self.old = self.pair()
        self.newer = {name: b"newer " + name.encode() for name in self.saved}
        for name, content in self.newer.items():
            (self.station.documents / name).write_bytes(content)

    def files_state(self):
        """Each saved file as back, untouched, missing or other."""
        states = {}
        for name, content in self.saved.items():
            path = self.station.documents / name
            found = path.read_bytes() if path.is_file() else None
            states[name] = ("back" if found == content else "untouched" if found == self.newer[name] else
                            "missing" if found is None else f"other ({len(found)} bytes)")
        return states

    # What is found afterwards

    def note_files(self):
        """Where the restore was called finished though something is not back, the comparison with the medium is asked."""
        self.seen.files = self.files_state()
        self.seen.is_medium_damaged = self.is_medium_damaged
        if self.seen.outcome == DONE and set(self.seen.files.values()) != {"back"}:
            self.cure_medium()
            self.seen.compared = self.differences_found()

    def differences_found(self):
        """Every finding of a comparison of this computer with the medium, as one text."""
        report = self.station.path(r"C:\Check\compared.json")
        self.check_medium("/compare", "/report", r"C:\Check\compared.json")
        items = json.loads(report.read_text(encoding="utf-8"))["items"]
        return json.dumps([item["findings"] for item in items], ensure_ascii=False)

    def note_outside(self, before, fault):
        """Files that changed though nobody asked for it; a restore brings the documents back."""
        after = self.others()
        allowed = self.allowed_changes(fault)
        changed = sorted(f"{'missing' if name not in after else 'new' if name not in before else 'other'}: {name}"
                         for name in {*before, *after}
                         if before.get(name) != after.get(name) and not name.startswith(allowed))
        self.seen.outside = changed[:3] + ([f"and {len(changed) - 3} more"] if len(changed) > 3 else [])

    def allowed_changes(self, fault):
        folder = self.program_folder().relative_to(self.station.prefix)
        documents = str(self.station.documents.relative_to(self.station.prefix))
        allowed = [str(folder / name) for name in ("7Za", "remplissage.bin")] + [f"{documents}/remplissage.bin"]
        allowed += [f"{documents}/{name}" for name in self.documents] if fault.area == "restore" else []
        return tuple(allowed + list(self.touched))

    def look_at_medium(self, fault):
        """The next start on the medium finishes or undoes what was broken off; what is then on it is noted."""
        if fault.area == "disc":
            self.seen.medium = self.what_is_on_disc()
            return
        if [name for name in self.pair() if name not in self.old or "~" in name]:
            self.start_program()
            self.open_restore_window()
            told, outcome = list(self.seen.told), self.seen.outcome
            self.leave_quietly()
            self.seen.told, self.seen.outcome = told, outcome
        self.seen.medium = self.what_is_on(self.expected_on_medium)
        if self.seen.medium != NOTHING:
            self.seen.checked = VERDICTS.get(self.check_medium(), "failed")
        if self.seen.wrong and self.seen.checked == "good":
            self.seen.compared = self.differences_found()

    def leave_quietly(self):
        seen, self.seen = self.seen, Seen()
        self.leave()
        self.seen = seen

    def what_is_on_disc(self):
        image = next((path for path in (self.burner.image, self.burner.folder / "outside" / "disc.iso") if path.exists()), None)
        if image is None:
            return NOTHING
        return NEW if self.image_holds(image) else "an unfinished disc"

    def image_holds(self, image):
        """Whether the image holds the documents whole; read by another tool than the program."""
        with tempfile.TemporaryDirectory(dir=self.station.prefix) as folder:
            subprocess.run([SEVEN_ZIP, "x", "-y", f"-o{folder}", str(image)], stdout=subprocess.DEVNULL,
                           stderr=subprocess.DEVNULL, check=False)
            names = sorted(path.name for path in Path(folder).iterdir())
            return names == sorted([ARCHIVE_NAME, LIST_NAME]) and not self.unlike(self.documents, Path(folder))

    def try_again(self, fault):
        """The next backup and the next restore, as if nothing had ever happened."""
        seen, self.seen = self.seen, Seen()
        try:
            seen.next_backup = self.next_backup(fault)
            seen.next_restore = self.next_restore() if seen.next_backup == "good" else "not tried"
        except (DriverError, NotSeen, OSError, StopIteration) as failure:
            place = "next_backup" if not seen.next_backup else "next_restore"
            setattr(seen, place, f"{type(failure).__name__}: {failure}")
        finally:
            self.seen = seen

    def next_backup(self, fault):
        self.write_documents(generation=7)
        self.expected_on_medium = None
        if fault.area == "disc":
            self.burner.set(**{name: -1 for name in ("fail_at", "eject_at")}, start_code="", busy="no", write_milliseconds=0)
            self.burner.insert("CD-R")
            self.back_up_to_disc(NO_FAULT)
        else:
            self.back_up_to_disk(NO_FAULT)
        told = "; ".join(self.seen.told)
        if self.seen.outcome != DONE:
            return f"{self.seen.outcome}: {told}"
        self.leave()
        state = self.what_is_on_disc() if fault.area == "disc" else self.what_is_on()
        if state == NEW and self.work_folder_names() and fault.area != "disc":
            return f"the work folder stays: {self.work_folder_names()}"
        return "good" if state == NEW else state

    def next_restore(self):
        for name in ("budget.csv", "grand.bin"):
            (self.station.documents / name).unlink()
        shutil.rmtree(self.station.documents / "Lettres d'été")
        self.seen = Seen()
        self.restore(NO_FAULT)
        self.leave()
        found = {name: (self.station.documents / name).read_bytes() for name in self.documents
                 if (self.station.documents / name).is_file()}
        wrong = [name for name, content in self.documents.items() if found.get(name) != content]
        if self.seen.outcome != DONE or wrong:
            return f"{self.seen.outcome}, not back: {wrong}"
        return "good"


ACTS = {"disk": FaultTest.back_up_to_disk, "disc": FaultTest.back_up_to_disc, "restore": FaultTest.restore,
        "selection": FaultTest.back_up_to_disk, "start": FaultTest.back_up_to_disk, "end": FaultTest.back_up_to_disk}
