"""Time of a backup and of a restore by the program, against a bare program that runs the same archiver command lines."""

import contextlib
import os
import random
import re
import select
import shutil
import statistics
import subprocess
import sys
import threading
import time
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent.parent / "tools"))

from driver import NotSeen  # noqa: E402
from program import IDOK, Program  # noqa: E402
from workstation import BINARIES, BUILD, Display, Workstation  # noqa: E402

PASSWORD = "Valcoreaux1"
ITEM_LIST = r"C:\items.txt"
RESULT = r"C:\result.txt"
ROUNDS = int(os.environ.get("MAIN_JOB_ROUNDS", "3"))
TARGET_RATIO = 1.03
TARGET_MEGABYTES = 15


def one_large_file(documents):
    path = documents / "grand.bin"
    generator = random.Random(1)
    with open(path, "wb") as stream:
        for _ in range(500):
            stream.write(generator.randbytes(16 * 1024) * 64)
    return [path]


def folder_of_small_files(documents):
    folder = documents / "Petits"
    folder.mkdir()
    generator = random.Random(2)
    for number in range(5000):
        (folder / f"fichier {number}.txt").write_bytes(generator.randbytes(number % 3000))
    return [folder]


def many_selected_files(documents):
    generator = random.Random(3)
    paths = [documents / f"fichier {number}.txt" for number in range(150)]
    for path in paths:
        path.write_bytes(generator.randbytes(2000))
    return paths


CASES = (("one file of 500 MB", one_large_file),
         ("one folder of 5,000 small files", folder_of_small_files),
         ("150 selected small files", many_selected_files))


class ProcessWatch:
    """The most private memory that a program was seen to hold, and the processor time that it took itself. Its windows
    are not asked for anything meanwhile."""

    def __init__(self, program):
        self.peak = 0
        self._program = program
        self._before = processor_seconds(program)
        self._ended = threading.Event()
        self._thread = threading.Thread(target=self._watch)
        self._thread.start()

    def _watch(self):
        while not self._ended.wait(0.25):
            self.peak = max(self.peak, private_bytes(self._program))

    def stop(self):
        self._ended.set()
        self._thread.join()
        return self.peak, processor_seconds(self._program) - self._before


@contextlib.contextmanager
def processors_awake():
    """Keeps every processor from falling asleep with work that anything else goes before.

    A virtual machine's processor takes the longer to wake the longer it slept. The archiver and Wine's server wake each
    other some thousands of times a second, so that a millisecond between two runs, in which one of the two processors
    sleeps, makes the next run some fifteen milliseconds longer: what would be measured is the machine.
    """
    idle_work = ("import os\n"
                 "os.sched_setscheduler(0, os.SCHED_IDLE, os.sched_param(0))\n"
                 "while True: pass\n")
    with contextlib.ExitStack() as ending:
        for _ in os.sched_getaffinity(0):
            process = subprocess.Popen([sys.executable, "-c", idle_work])
            ending.callback(process.wait)
            ending.callback(process.kill)
        yield


class ShownWindows:
    """The windows on a display, told by the display itself: to ask Wine again and again would take of its one server's
    time, which the measured programs need."""

    def __init__(self, display):
        self._process = subprocess.Popen(["xprop", "-display", display.name, "-root", "-spy", "_NET_CLIENT_LIST"],
                                         stdout=subprocess.PIPE)
        self._before = self._next(10)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self._process.kill()
        self._process.wait()
        self._process.stdout.close()

    def wait_for_another(self, seconds):
        deadline = time.monotonic() + seconds
        shown = self._next(deadline - time.monotonic())
        while not shown - self._before:
            shown = self._next(deadline - time.monotonic())
        self._before |= shown

    def _next(self, seconds):
        if not select.select([self._process.stdout], [], [], max(seconds, 0))[0]:
            raise TimeoutError("no window came or went")
        # Unbuffered, so that no line waits where select does not see it.
        line = bytearray()
        while not line.endswith(b"\n"):
            line += os.read(self._process.stdout.fileno(), 1) or b"\n"
        return set(re.findall(rb"0x[0-9a-f]+", line))


def private_bytes(program):
    """Private memory of the process on this machine, without what it shares with Wine's other processes."""
    fields = dict(line.split(":", 1) for line in (process_of(program) / "status").read_text().splitlines())
    return int(fields["RssAnon"].split()[0]) * 1024


def processor_seconds(program):
    fields = (process_of(program) / "stat").read_text().rsplit(")", 1)[1].split()
    return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")


def process_of(program):
    """The folder in /proc of the program's process."""
    if hasattr(program, "process_folder"):
        return program.process_folder
    prefix = f"WINEPREFIX={program.workstation.prefix}".encode()
    for process in Path("/proc").iterdir():
        try:
            if ((process / "comm").read_text().startswith(program.executable)
                    and prefix in (process / "environ").read_bytes()):
                program.process_folder = process
                return process
        except OSError:
            continue
    raise LookupError("the program's process is not there")


def timed(program, button, seconds=600):
    """Seconds from a click to the message box that ends the run; then the program's processor time and memory."""
    watch = ProcessWatch(program)
    with ShownWindows(program.workstation.display) as shown:
        started = time.monotonic()
        program.driver.call("click", button.handle)
        is_box = False
        # A newer Wine shows a window anew under another number; what is no box is not asked for long.
        while not is_box:
            shown.wait_for_another(seconds)
            elapsed = time.monotonic() - started
            with contextlib.suppress(NotSeen):
                is_box = bool(program.message_box(2))
    peak, own_seconds = watch.stop()
    program.answer(IDOK)
    program.wait_exit()
    return elapsed, own_seconds, peak


def measure_program_backup(station, items):
    program = Program(station)
    try:
        main = program.main_window()
        main.press("optDisqueAmovible")
        main.press("cmdBackup")
        backup = program.window("frmBackup")
        backup.drop("lvFichRep", *items)
        program.wait(lambda: backup.row_count("lvFichRep") == len(items), "all rows", 120)
        backup.press("cmdLancer")
        dialog = program.window("frmMotPasse")
        dialog.set_text("txtMotPasse", PASSWORD)
        dialog.set_text("txtConfirmation", PASSWORD)
        return timed(program, dialog.wait_enabled("cmdOK"))
    finally:
        program.stop()


def measure_program_restore(station):
    program = Program(station)
    try:
        main = program.main_window()
        main.press("optRestaure")
        main.press("cmdBackup")
        restore = program.window("frmRestaureCD")
        restore.choose("lstDrive", 0)
        restore.press("cmdLancerRestauration")
        dialog = program.window("frmMotPasse")
        dialog.set_text("txtMotPasse", PASSWORD)
        return timed(program, dialog.wait_enabled("cmdOK"))
    finally:
        program.stop()


def measure_floor(station, action):
    """As the program is measured; then the seconds that the command lines and the copy alone took."""
    result = station.path(RESULT)
    result.unlink(missing_ok=True)
    floor = Program(station, "floor.exe", f"{action} E:\\ {PASSWORD} {ITEM_LIST} {RESULT} boxes")
    try:
        controls = floor.controls_of(floor.message_box())
        elapsed, own_seconds, _ = timed(floor, next(control for control in controls if control.id == IDOK))
    finally:
        floor.stop()
    text = result.read_text()
    if not text.isdecimal():
        raise RuntimeError(f"the floor failed: {text}")
    return elapsed, own_seconds, int(text) / 1000


def started_session(station):
    """A driver in a Windows session that has shown windows already: what follows is measured in one and the same."""
    program = Program(station)
    program.main_window().press("cmdSortie")
    program.wait_exit()
    return program.driver


def measure(name, make):
    folder = BUILD / "workstation" / "bench"
    shutil.rmtree(folder, ignore_errors=True)
    runs = {action: {column: [] for column in ("floor", "floor own", "bare", "program", "own", "peak")}
            for action in ("backup", "restore")}
    with contextlib.ExitStack() as ending:
        display = Display()
        ending.callback(display.stop)
        station = Workstation(folder, display=display)
        ending.callback(station.remove)
        station.add_drive("e")
        shutil.copy2(BINARIES / "floor.exe", station.path(station.program_folder) / "floor.exe")
        items = [station.windows_path(path) for path in make(station.documents)]
        station.path(ITEM_LIST).write_text("".join(item + "\n" for item in items), encoding="utf-8")
        driver = started_session(station)
        ending.callback(driver.stop)
        measures = {"backup": lambda: measure_program_backup(station, items),
                    "restore": lambda: measure_program_restore(station)}
        for _ in range(ROUNDS):
            for action, run in runs.items():
                for column, value in zip(("floor", "floor own", "bare"), measure_floor(station, action)):
                    run[column].append(value)
                for column, value in zip(("program", "own", "peak"), measures[action]()):
                    run[column].append(value)
    for action, run in runs.items():
        median = {column: statistics.median(values) for column, values in run.items()}
        # Each round by itself: what slows the machine down for a while slows both.
        ratio = statistics.median(program / floor for program, floor in zip(run["program"], run["floor"]))
        spread = " ".join(f"{seconds:.2f}" for seconds in sorted(run["floor"]))
        print(f"| {name} | {action} | {median['program']:.2f} | {median['floor']:.2f} | {ratio:.3f} | {TARGET_RATIO} | "
              f"{median['bare']:.2f} | {median['own']:.2f} | {median['floor own']:.2f} | "
              f"{max(run['peak']) / 2**20:.1f} | {spread} |", flush=True)


def main():
    print(f"Medians of {ROUNDS} rounds, program and floor in turn, with every processor kept awake. Both are measured from a "
          "click in a dialog to the box at the end; the ratio is the median of the rounds' own. Alone: the command lines "
          "and the copy without dialog and box. Own: the processor time of the program or the floor itself. Memory: the "
          f"most private memory seen, {TARGET_MEGABYTES} MB at most. The floor's runs tell how steady the machine was.\n")
    print("| case | action | program s | floor s | ratio | at most | alone s | own s | floor's own s | memory MB | "
          "floor's runs s |")
    print("|---|---|---|---|---|---|---|---|---|---|---|")
    with processors_awake():
        for name, make in CASES:
            measure(name, make)


if __name__ == "__main__":
    main()
