"""A check by the shipped program against the archive library by itself over the same bytes, and against the archiver that
tests the outer and then every inner archive; its memory, also with 100,000 items and in its window; the time to a wrong
password's answer and to 100,000 rows.

The rounds take turns and the fastest of each counts, since the machine's other work only adds to it. Processor time is
told beside the time on the clock: it says the same on a machine that is busy with something else.
"""

import os
import random
import shutil
import subprocess
import sys
import tempfile
import time
from pathlib import Path

PROJECT = Path(__file__).resolve().parent.parent
sys.path[:0] = [str(PROJECT / "tools"), str(PROJECT / "tests" / "system")]

from check_test import PASSWORD, protected_zip, zip_of  # noqa: E402
from system_test import IDOK, SEVEN_ZIP, Program  # noqa: E402

from workstation import BINARIES, BUILD, Display, Workstation  # noqa: E402

MEGABYTES = int(os.environ.get("CHECK_MEGABYTES", "400"))
ROUNDS = int(os.environ.get("CHECK_ROUNDS", "5"))
MANY = 100_000
TARGET_RATIO = 1.05
TARGET_MEMORY = 24 << 20
TARGET_ANSWER_SECONDS = 1
TARGET_ROWS_SECONDS = 2
WINDOW_SECONDS = 120


class Run:
    """One run of a program on the workstation: its time, its processor time, and the most private memory it was seen with."""

    def __init__(self, station, *command, entry=b""):
        started = time.perf_counter()
        with tempfile.TemporaryFile() as given, tempfile.TemporaryFile() as taken:
            given.write(entry)
            given.seek(0)
            process = subprocess.Popen(station.wine_command(*command), env=station.environment, cwd=station.prefix,
                                       stdin=given, stdout=taken, stderr=subprocess.DEVNULL)
            self.peak = 0
            while True:
                ended, self.status, usage = os.wait4(process.pid, os.WNOHANG)
                if ended:
                    break
                self.peak = max(self.peak, private_bytes(process.pid))
                time.sleep(0.02)
            process.returncode = os.waitstatus_to_exitcode(self.status)
            self.code = process.returncode
            taken.seek(0)
            self.output = taken.read().decode("utf-8", "replace")
        self.seconds = time.perf_counter() - started
        self.processor = usage.ru_utime + usage.ru_stime


def private_bytes(process_id):
    try:
        fields = dict(line.split(":", 1) for line in Path(f"/proc/{process_id}/status").read_text().splitlines())
        return int(fields["RssAnon"].split()[0]) * 1024
    except (OSError, KeyError):
        return 0


def write_medium(root):
    """Files as agents have them: half of it packs well, half does not."""
    generator = random.Random(4)
    inner = {}
    share = MEGABYTES // 8
    for number in range(1, 9):
        noise = generator.randbytes(share << 19)
        text = b"".join(b"Ligne %d du dossier client\r\n" % line for line in range(share << 15))[:share << 19]
        inner[f"Zip{number:04d}.zip"] = zip_of({f"Dossier{number}/bruit.bin": noise, f"Dossier{number}/texte.txt": text})
    with tempfile.TemporaryDirectory() as folder:
        for name, content in inner.items():
            (Path(folder) / name).write_bytes(content)
        subprocess.run([SEVEN_ZIP, "a", "-tzip", "-mx1", f"-p{PASSWORD}", str(root / "OKRBACKUP.ZIP"), *inner], cwd=folder,
                       check=True, stdout=subprocess.DEVNULL)
    (root / "_listFich.lst").write_bytes("".join(
        f"C:\\Dossier{number}\\*.*,-1,Zip{number:04d}\r\n" for number in range(1, 9)).encode("cp1252"))


def write_many(root):
    content = zip_of({"a.txt": b"a"})
    root.joinpath("OKRBACKUP.ZIP").write_bytes(protected_zip(
        {f"Zip{number:04d}.zip": content for number in range(1, MANY + 1)}, PASSWORD.encode()))
    root.joinpath("_listFich.lst").write_bytes("".join(
        f"C:\\Dossier {number}\\a.txt,32,Zip{number:04d}\r\n" for number in range(1, MANY + 1)).encode("cp1252"))


def check(station, drive, password=PASSWORD):
    return Run(station, r"C:\Check\BackupCheck.exe", "/check", drive, "/password-file", "-", entry=password.encode())


def test_by_archiver(station):
    """The archiver tests the outer archive, takes the inner ones out and tests each."""
    archiver = r"C:\Check\7Za.exe"
    scratch = station.path(r"C:\scratch")
    runs = [Run(station, archiver, "t", f"-p{PASSWORD}", r"E:\OKRBACKUP.ZIP"),
            Run(station, archiver, "x", "-y", f"-p{PASSWORD}", r"-oC:\scratch", r"E:\OKRBACKUP.ZIP"),
            Run(station, archiver, "t", r"C:\scratch\*.zip")]
    shutil.rmtree(scratch, ignore_errors=True)
    assert all(run.code == 0 for run in runs), [run.output for run in runs]
    return runs


class Window:
    """The check's window on the medium of very many items: how soon its rows are shown, and the most private memory that
    it was seen with up to the end of a check."""

    def __init__(self, station):
        station.program_folder = r"C:\Check"
        program = Program(station, executable="BackupCheck.exe")
        try:
            window = program.window("CheckWindow", WINDOW_SECONDS)
            place = program.wait(lambda: next((line for line in window.entries("Places") if line.startswith("F:")), None),
                                 "the drive F:", WINDOW_SECONDS)
            process_id = program_on(station)
            started = time.perf_counter()
            window.choose("Places", place)
            program.wait(lambda: window.row_count("Items") == MANY, "all rows", WINDOW_SECONDS, pause_seconds=0.005)
            self.rows_seconds = time.perf_counter() - started
            program.wait(lambda: window.control("Close").visible, "an idle window", WINDOW_SECONDS)
            self.listed = private_bytes(process_id)
            window.set_text("Password", PASSWORD)
            window.press("Check")
            self.peak = 0
            while not program.find_message_box():
                self.peak = max(self.peak, private_bytes(process_id))
                time.sleep(0.01)
            self.told = program.answer(IDOK).text
        finally:
            program.stop()


def program_on(station):
    prefix = f"WINEPREFIX={station.prefix}\0".encode()
    for process in Path("/proc").glob("[0-9]*"):
        try:
            if (process / "comm").read_text().startswith("BackupCheck") and prefix in (process / "environ").read_bytes():
                return int(process.name)
        except OSError:
            continue
    raise LookupError("the program is not there")


def main():
    folder = BUILD / "workstation" / "bench-check"
    shutil.rmtree(folder, ignore_errors=True)
    display = Display()
    station = Workstation(folder, display=display, language="en")
    station.environment["DISPLAY"] = display.name
    try:
        programs = station.path(r"C:\Check")
        programs.mkdir()
        for name in ("BackupCheck.exe", "check_floor.exe", "7Za.exe"):
            shutil.copy2(BINARIES / name, programs)
        write_medium(station.add_drive("e"))
        write_many(station.add_drive("f"))
        # Windows stays started between the runs.
        keeper = subprocess.Popen(station.wine_command("cmd", "/c", "pause"), env=station.environment, cwd=station.prefix,
                                  stdin=subprocess.PIPE, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        floors, checks, wrong = [], [], []
        for _ in range(ROUNDS):
            floors.append(Run(station, r"C:\Check\check_floor.exe", r"E:\OKRBACKUP.ZIP", PASSWORD))
            checks.append(check(station, "E:\\"))
            wrong.append(check(station, "E:\\", "Valcoreaux2"))
        archiver = test_by_archiver(station)
        many = check(station, "F:\\")
        keeper.communicate(b"\n")
        window = Window(station)
        assert {run.code for run in floors + checks} == {0} and many.code == 0, (floors[0].output, checks[0].output)
        assert {run.code for run in wrong} == {2}
        assert "is good" in window.told, window.told
    finally:
        station.remove()
        display.stop()
    report(floors, checks, wrong, archiver, many, window)


def report(floors, checks, wrong, archiver, many, window):
    def best(runs, what):
        return min(getattr(run, what) for run in runs)

    def peak(runs):
        return max(run.peak for run in runs) / 2**20

    print(f"{MEGABYTES} MB in 8 items, {ROUNDS} rounds, the fastest of each; load {os.getloadavg()[0]:.1f}.\n")
    print("| what | s | processor s | private MB |")
    print("|---|---|---|---|")
    rows = (("library alone", floors), ("check", checks), ("check, wrong password", wrong),
            (f"check, {MANY:,} items", [many]))
    for name, runs in rows:
        print(f"| {name} | {best(runs, 'seconds'):.2f} | {best(runs, 'processor'):.2f} | {peak(runs):.1f} |")
    archiver_seconds = sum(run.seconds for run in archiver)
    archiver_processor = sum(run.processor for run in archiver)
    print(f"| archiver, outer and inner | {archiver_seconds:.2f} | {archiver_processor:.2f} | |")
    print(f"| window, {MANY:,} items: its rows | {window.rows_seconds:.2f} | | {window.listed / 2**20:.1f} |")
    print(f"| window, {MANY:,} items: their check | | | {window.peak / 2**20:.1f} |\n")
    memory = max(peak([*checks, *wrong, many]), window.peak / 2**20)
    marks = (("against the library, on the clock", best(checks, "seconds") / best(floors, "seconds"), TARGET_RATIO),
             ("against the library, processor time", best(checks, "processor") / best(floors, "processor"), TARGET_RATIO),
             ("against the archiver, on the clock", best(checks, "seconds") / archiver_seconds, 1),
             ("against the archiver, processor time", best(checks, "processor") / archiver_processor, 1),
             ("private memory, MB", memory, TARGET_MEMORY / 2**20),
             ("a wrong password's answer, s", best(wrong, "seconds"), TARGET_ANSWER_SECONDS),
             (f"{MANY:,} rows, s", window.rows_seconds, TARGET_ROWS_SECONDS))
    print("| mark | measured | at most | |")
    print("|---|---|---|---|")
    for name, measured, most in marks:
        print(f"| {name} | {measured:.3f} | {most:g} | {'kept' if measured <= most else 'MISSED'} |")


if __name__ == "__main__":
    main()
