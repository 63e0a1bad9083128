"""A workstation on which one fault happens, and what is seen there before, meanwhile and afterwards."""

import mmap
import random
import shutil
import subprocess
import sys
import tempfile
from dataclasses import dataclass, field
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent.parent / "system"))

from fault import NEW, NOTHING, OLD  # noqa: E402
from mischief import Mischief  # noqa: E402
from person import Person  # noqa: E402
from slow_machine import PRELOADED, build_preloaded  # noqa: E402
from system_test import ARCHIVE_NAME, LIST_NAME, PASSWORD, SEVEN_ZIP, SystemTest, run_check  # noqa: E402

from samples import snapshot  # noqa: E402
from workstation import BINARIES, CannotHave  # noqa: E402

OLD_LINE = r"**UserProfile**\Documents\ancien.txt,32,Zip0001"
OLD_CONTENT = b"ancien " * 400


@dataclass
class Seen:
    """What one fault came to; a row of the table."""

    outcome: str = ""
    told: list = field(default_factory=list)
    medium: str = ""
    checked: str = ""
    left: list = field(default_factory=list)
    next_backup: str = ""
    next_restore: str = ""
    outside: list = field(default_factory=list)
    files: dict = field(default_factory=dict)
    exit: str = ""
    stray: list = field(default_factory=list)
    is_medium_damaged: bool = False
    compared: str = ""
    unmet: list = field(default_factory=list)
    wrong: list = field(default_factory=list)


class FaultScene(Mischief, Person, SystemTest):
    """The steps of a person and of a fault on a workstation with a disk E: that holds an older backup."""

    touched = ()
    """What the fault itself changes, as paths below the workstation's folder."""
    is_medium_damaged = False
    expected_on_medium = None
    """What a new pair holds, when that is not what was chosen."""

    def lay_out(self, size_megabytes=None, has_old=True, small_program_drive=None, small_temp=None, small_folders=()):
        """The disk and the documents. `small_program_drive`, `small_temp` (megabytes) and `small_folders` (folder below the
        profile, megabytes) become file systems of their own."""
        self.seen = Seen()
        self.program = None
        self._build_plan()
        self._allow_small(small_program_drive, small_temp, small_folders)
        self.root = self.disk(size_megabytes=size_megabytes)
        (self.root / "photo.jpg").write_bytes(b"photo of someone's own")
        self.write_documents()
        self.precious = self.station.path(r"C:\Precieux")
        self.precious.mkdir()
        (self.precious / "these.doc").write_bytes(b"of no concern to anyone")
        self.old = {}
        if has_old:
            self.write_backup([OLD_LINE], {1: {"ancien.txt": OLD_CONTENT}})
        self.old = self.pair()

    def _build_plan(self):
        build_preloaded()
        path = self.station.prefix / "fault-plan"
        path.write_bytes(b"-" + bytes(4095))
        with open(path, "r+b") as file:
            self.plan = mmap.mmap(file.fileno(), 4096)
        self.addCleanup(self.plan.close)
        self.station.environment.update(LD_PRELOAD=str(PRELOADED), FAULT_PLAN=str(path))

    def _allow_small(self, small_program_drive, small_temp, small_folders):
        places = [(self.program_folder(), small_program_drive)] if small_program_drive else []
        places += [(self.station.temp, small_temp)] if small_temp else []
        places += [(self.station.profile / name, megabytes) for name, megabytes in small_folders]
        for folder, megabytes in places:
            folder.mkdir(parents=True, exist_ok=True)
            try:
                self.station._mount(folder, megabytes)
            except CannotHave as reason:
                self.skipTest(str(reason))
        if small_program_drive:
            self.station.install()

    def program_folder(self):
        return self.station.path(self.station.program_folder)

    def write_documents(self, generation=1):
        """What the user chooses; each generation has other bytes."""
        generator = random.Random(generation)
        self.documents = {
            "budget.csv": b"".join(b"Agence %d;%d\r\n" % (row, row * generation) for row in range(500)),
            "grand.bin": generator.randbytes(600_000),
            "Lettres d'été/M. Bélanger.doc": generator.randbytes(20_000),
            "Lettres d'été/sous/vide.txt": b"",
            "Lettres d'été/sous/note.txt": b"note %d" % generation,
        }
        for name, content in self.documents.items():
            path = self.station.documents / name
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_bytes(content)
        self.chosen = [self.station.windows_path(self.station.documents / name)
                       for name in ("budget.csv", "grand.bin", "Lettres d'été")]

    # What there is

    def pair(self):
        """Name to content of what a backup's files at the disk's root are; other people's files are left out."""
        return {name: (self.root / name).read_bytes() for name in self.station.medium_files("e")
                if name.startswith((ARCHIVE_NAME, LIST_NAME))}

    def what_is_on(self, expected=None):
        """The state of the medium, as one of the words; what it should hold when it is new is given."""
        found = self.pair()
        if found == self.old:
            return OLD if self.old else NOTHING
        if not found:
            return NOTHING
        if sorted(found) != [ARCHIVE_NAME, LIST_NAME]:
            return f"mixture {sorted(found)}"
        wrong = self.unlike(expected or self.documents)
        self.seen.wrong = wrong
        return NEW if not wrong else f"other than what was chosen: {wrong}"

    def unlike(self, expected, root=None):
        """What the pair on the disk, or in a folder, holds otherwise than expected, by other tools than the program's."""
        root = root or self.root
        with tempfile.TemporaryDirectory(dir=self.station.prefix) as folder:
            outer, inner = Path(folder, "outer"), Path(folder, "inner")
            done = subprocess.run([SEVEN_ZIP, "x", "-y", f"-p{PASSWORD}", f"-o{outer}", str(root / ARCHIVE_NAME)],
                                  stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=False)
            if done.returncode != 0:
                return [f"the archive ends 7-Zip with {done.returncode}"]
            for archive in sorted(outer.glob("*.zip")):
                if subprocess.run([SEVEN_ZIP, "x", "-y", f"-o{inner}", str(archive)], stdout=subprocess.DEVNULL,
                                  stderr=subprocess.DEVNULL, check=False).returncode != 0:
                    return [f"{archive.name} is no whole archive"]
            found = {str(path.relative_to(inner)): path.read_bytes() for path in inner.rglob("*") if path.is_file()}
            items = len(list(outer.glob("*.zip")))
        lines = [line for line in (root / LIST_NAME).read_bytes().split(b"\r\n") if line]
        wrong = [name for name in {*found, *expected} if found.get(name) != expected.get(name)]
        return wrong + ([f"{len(lines)} lines for {items} archives"] if len(lines) != items else [])

    def check_medium(self, *options):
        """What the check of the medium says, as its exit code."""
        folder = self.station.path(r"C:\Check")
        if not folder.exists():
            folder.mkdir()
            shutil.copy2(BINARIES / "BackupCheck.exe", folder)
        return run_check(self.station, r"C:\Check", "/check", "E:\\", *options).returncode

    def others(self):
        """Everything on the workstation that is no concern of the program, by path: size and digest."""
        found = {}
        own = {str(self.program_folder() / "zip"), str(self.station.temp)}
        for place in (self.station.path(r"C:\users"), self.station.path(r"C:\Valcoreaux"), self.precious, self.root):
            for name, content in snapshot(place).items():
                path = str(place / name)
                is_pair = place == self.root and name.startswith((ARCHIVE_NAME, LIST_NAME))
                if not is_pair and not path.startswith(tuple(own)) and name != ".windows-label":
                    found[str(Path(path).relative_to(self.station.prefix))] = content
        return found

    def work_folder_names(self):
        work = self.program_folder() / "zip"
        return sorted(path.name for path in work.iterdir()) if work.is_dir() else []
