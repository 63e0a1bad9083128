"""What goes wrong on a workstation: the steps of which the faults are made."""

import os
import resource
import shutil
import signal
import time

from driver import Driver, NotSeen
from workstation import BINARIES

HITS_AT = 2048
# The second one does the work of a faulty one.
ARCHIVERS = ("7za", "7za.real")
ARCHIVER_MARK = "7Za.met"
MEMORY_LIBRARY = "faulty_memory.dll"


class Mischief:
    """Steps for a scene that has `station`, `root`, `plan` and `program`."""

    was_killed = False
    is_memory_short = False
    _keeper = None

    def rule(self, text=""):
        """Puts a rule of the preloaded library in force; without one, none is. Gives nothing."""
        self._note_rule_unmet()
        data = (text or "-").encode()
        # The first byte comes last: until then no rule is read.
        self.plan[0:1] = b"-"
        self.plan[1:HITS_AT] = data[1:] + bytes(HITS_AT - len(data))
        self.plan[HITS_AT:HITS_AT + 8] = bytes(8)
        self.plan[0:1] = data[:1]

    def _note_rule_unmet(self):
        rule = self.plan[:HITS_AT].rstrip(b"\0").decode()
        if rule != "-" and not self.hits():
            self.seen.unmet.append(rule)

    def hits(self):
        """How many calls have met the rule."""
        return int.from_bytes(self.plan[HITS_AT:HITS_AT + 8], "little")

    def fail_writes(self, part, error, after_bytes=0):
        self.rule(f"write {error} 0 {after_bytes} {part}")

    def fail_reads(self, part, error, after_bytes=0):
        self.rule(f"read {error} 0 {after_bytes} {part}")

    def slow(self, operation, part, milliseconds):
        self.rule(f"{operation} 0 {milliseconds} 0 {part}")

    def fill(self, folder, free_bytes):
        """Fills a small file system so far that a file of so many bytes still fits, in whole pages."""
        filler = folder / "remplissage.bin"
        room = os.statvfs(folder).f_bavail * os.statvfs(folder).f_frsize
        if room <= free_bytes:
            raise NotSeen(f"{folder} has {room} bytes free, too few to fill it")
        with open(filler, "wb") as file:
            os.posix_fallocate(file.fileno(), 0, room - free_bytes)
        self.fillers = [*getattr(self, "fillers", []), filler]

    def pull_out(self):
        self.station.pull_out("e")

    def protect(self):
        """The write-protect switch of the disk: no entry of its root can be made, renamed or deleted."""
        self.root.chmod(0o555)
        self.addCleanup(self.root.chmod, 0o755)

    def hold_file(self, path):
        """Another program has the file open and shares it with nobody, until this scene ends or lets go."""
        if not self._keeper:
            self._keeper = Driver(self.station)
            self.addCleanup(self.let_go)
        self._keeper.call("hold", self.station.windows_path(path))

    def let_go(self):
        if self._keeper:
            self._keeper.stop()
            self._keeper = None

    def replace_archiver(self, word, number=0):
        """From now on the archiver behaves as the word says; see archiver/FaultyArchiver.cpp."""
        folder = self.program_folder()
        if not (folder / "7Za.real.exe").exists():
            (folder / "7Za.exe").rename(folder / "7Za.real.exe")
            shutil.copy2(BINARIES / "faulty_archiver.exe", folder / "7Za.exe")
        (folder / "7Za.fault").write_text(f"{word} {number}\n", encoding="ascii")

    def is_archiver_met(self):
        return (self.program_folder() / ARCHIVER_MARK).exists()

    def give_archiver_back(self):
        folder = self.program_folder()
        if (folder / "7Za.real.exe").exists() and not self.is_archiver_met():
            self.seen.unmet.append("the faulty archiver")
        (folder / ARCHIVER_MARK).unlink(missing_ok=True)
        for name in ("7Za.fault", "7Za.exe") if (folder / "7Za.real.exe").exists() else ():
            (folder / name).unlink(missing_ok=True)
        shutil.copy2(BINARIES / "7Za.exe", folder / "7Za.exe")
        (folder / "7Za.real.exe").unlink(missing_ok=True)

    def give_archiver_back_later(self):
        """The next runs of the archiver work as they should; the one that runs now goes on as it is."""
        (self.program_folder() / "7Za.fault").write_text("work 0\n", encoding="ascii")

    def kill_archiver(self, seconds=20):
        """Ends the archiver as soon as one runs."""
        self.wait_for(lambda: any([_kill(process) for process in self.station.processes(*ARCHIVERS)]), "an archiver", seconds)

    def kill_program(self):
        """The program and its archiver end at once, as in a power cut."""
        if not any([_kill(process) for process in self.station.processes("backup")]):
            raise NotSeen("the program, to end it")
        self.was_killed = True
        for process in self.station.processes(*ARCHIVERS):
            _kill(process)

    def limit_files(self, free):
        """The running program can open so many files and pipes more than it has."""
        processes = self.station.processes("backup")
        if not processes:
            raise NotSeen("the program, to limit it")
        for process in processes:
            most = max(int(number) for number in os.listdir(f"/proc/{process}/fd")) + 1 + free
            resource.prlimit(process, resource.RLIMIT_NOFILE, (most, most))

    def fail_allocations(self, first, count):
        """From now on so many allocations of the running program fail, from the first one on."""
        library = self.station.path(r"C:\Tools") / MEMORY_LIBRARY
        if not library.exists():
            shutil.copy2(BINARIES / MEMORY_LIBRARY, library)
        driver, process = self.program.driver, self.program.process_id
        driver.call("loadlibrary", process, self.station.windows_path(library))
        driver.call("allocations", process, first, count)
        self.is_memory_short = True

    def give_memory_back(self):
        """Nothing the second time."""
        if not self.is_memory_short:
            return
        self.is_memory_short = False
        driver, process = self.program.driver, self.program.process_id
        made, failed = map(int, driver.call("allocations", process)[0])
        driver.call("allocations", process, 0, 0)
        if not failed:
            self.seen.unmet.append(f"an allocation that fails; {made} were made")

    def wait_for(self, condition, description, seconds=60):
        deadline = time.monotonic() + seconds
        while not (value := condition()):
            if time.monotonic() > deadline:
                raise NotSeen(f"waited {seconds} s for {description}")
            time.sleep(0.002)
        return value


def _kill(process):
    """Whether the process still ran."""
    try:
        os.kill(process, signal.SIGKILL)
    except ProcessLookupError:
        return False
    return True
