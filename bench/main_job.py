"""Time of a backup and of a restore by the program, against a bare program that runs the same archiver command lines."""

import random
import shutil
import statistics
import subprocess
import sys
import threading
import time
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent.parent / "tools"))

from program import IDOK, Program  # noqa: E402
from workstation import BINARIES, BUILD, Display, Workstation  # noqa: E402

PASSWORD = "Valcoreaux1"
ROUNDS = 3
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


class MemoryWatch:
    """The most private memory that a program was seen to hold; the window is not asked, so that it is not disturbed."""

    def __init__(self, program):
        self.peak = 0
        self._program = program
        self._ended = threading.Event()
        self._thread = threading.Thread(target=self._watch)
        self._thread.start()

    def _watch(self):
        while not self._ended.wait(0.05):
            self.peak = max(self.peak, private_bytes(self._program))

    def stop(self):
        self._ended.set()
        self._thread.join()
        return self.peak


def private_bytes(program):
    """Private memory of the process on this machine, without what it shares with Wine's other processes."""
    if not hasattr(program, "unix_id"):
        program.unix_id = find_process(program)
    fields = dict(line.split(":", 1) for line in Path(f"/proc/{program.unix_id}/status").read_text().splitlines())
    return int(fields["RssAnon"].split()[0]) * 1024


def find_process(program):
    prefix = f"WINEPREFIX={program.workstation.prefix}".encode()
    for process in Path("/proc").iterdir():
        try:
            if (process / "comm").read_text().startswith("Backup.exe") and prefix in (process / "environ").read_bytes():
                return int(process.name)
        except OSError:
            continue
    raise LookupError("the program's process is not there")


def timed(program, start, seconds=600):
    """Seconds from an action to the message box that ends the run, and the memory meanwhile."""
    memory = MemoryWatch(program)
    # Only which windows there are is asked for: a question to a window itself would take of its time.
    before = {window.handle for window in program.windows()}
    started = time.monotonic()
    start()
    program.wait(lambda: {window.handle for window in program.windows()} - before, "the last message", seconds)
    elapsed = time.monotonic() - started
    peak = memory.stop()
    program.answer(IDOK)
    program.wait_exit()
    return elapsed, peak


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
        return timed(program, lambda: dialog.press("cmdOK"))
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
        return timed(program, lambda: dialog.press("cmdOK"))
    finally:
        program.stop()


def measure_floor(station, action, item_list):
    done = subprocess.run(station.wine_command(station.program_folder + r"\floor.exe", action, "E:\\", PASSWORD, item_list),
                          env=station.environment, cwd=station.path(station.program_folder), check=True,
                          capture_output=True, text=True)
    return int(done.stdout.split("milliseconds")[1]) / 1000


def measure(name, make):
    folder = BUILD / "workstation" / "bench"
    shutil.rmtree(folder, ignore_errors=True)
    display = Display()
    station = Workstation(folder, display=display)
    rows = {"backup": ([], []), "restore": ([], [])}
    peak = 0
    try:
        station.add_drive("e")
        shutil.copy2(BINARIES / "floor.exe", station.path(station.program_folder) / "floor.exe")
        items = [station.windows_path(path) for path in make(station.documents)]
        item_list = station.path(r"C:\items.txt")
        item_list.write_text("".join(item + "\n" for item in items), encoding="utf-8")
        for _ in range(ROUNDS):
            rows["backup"][1].append(measure_floor(station, "backup", r"C:\items.txt"))
            seconds, seen = measure_program_backup(station, items)
            rows["backup"][0].append(seconds)
            peak = max(peak, seen)
            rows["restore"][1].append(measure_floor(station, "restore", r"C:\items.txt"))
            seconds, seen = measure_program_restore(station)
            rows["restore"][0].append(seconds)
            peak = max(peak, seen)
    finally:
        station.remove()
        display.stop()
    for action, (program, floor) in rows.items():
        ratio = statistics.median(program) / statistics.median(floor)
        print(f"| {name} | {action} | {statistics.median(program):.2f} | {statistics.median(floor):.2f} | {ratio:.3f} | "
              f"{TARGET_RATIO} | {peak / 2**20:.1f} |", flush=True)


def main():
    print(f"Medians of {ROUNDS} rounds, program and floor in turn. Memory: the most private memory seen, "
          f"{TARGET_MEGABYTES} MB at most.\n")
    print("| case | action | program s | floor s | ratio | at most | memory MB |")
    print("|---|---|---|---|---|---|---|")
    for name, make in CASES:
        measure(name, make)


if __name__ == "__main__":
    main()
