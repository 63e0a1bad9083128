"""A check by the shipped program against the archive library by itself over the same bytes, and against the archiver that
tests the outer and then every inner archive; its memory, also with 100,000 items; the time to a wrong password's answer.

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
from system_test import SEVEN_ZIP  # noqa: E402

from workstation import BINARIES, BUILD, Workstation  # noqa: E402

MEGABYTES = int(os.environ.get("CHECK_MEGABYTES", "400"))
ROUNDS = int(os.environ.get("CHECK_ROUNDS", "5"))
MANY = 100_000
TARGET_RATIO = 1.05
TARGET_MEMORY = 24 << 20


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


def main():
    folder = BUILD / "workstation" / "bench-check"
    shutil.rmtree(folder, ignore_errors=True)
    station = Workstation(folder, language="en", has_program=False)
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
        assert {run.code for run in floors + checks} == {0} and many.code == 0, (floors[0].output, checks[0].output)
        assert {run.code for run in wrong} == {2}
        keeper.communicate(b"\n")
    finally:
        station.remove()
    report(floors, checks, wrong, archiver, many)


def report(floors, checks, wrong, archiver, many):
    def best(runs, what):
        return min(getattr(run, what) for run in runs)

    print(f"{MEGABYTES} MB in 8 items, {ROUNDS} rounds, the fastest of each; load {os.getloadavg()[0]:.1f}.\n")
    print("| what | s | processor s | private MB |")
    print("|---|---|---|---|")
    rows = (("library alone", floors), ("check", checks), ("check, wrong password", wrong),
            (f"check, {MANY:,} items", [many]))
    for name, runs in rows:
        print(f"| {name} | {best(runs, 'seconds'):.2f} | {best(runs, 'processor'):.2f} | "
              f"{max(run.peak for run in runs) / 2**20:.1f} |")
    print(f"| archiver, outer and inner | {sum(run.seconds for run in archiver):.2f} | "
          f"{sum(run.processor for run in archiver):.2f} | |")
    print(f"\nAgainst the library {best(checks, 'seconds') / best(floors, 'seconds'):.3f} on the clock, "
          f"{best(checks, 'processor') / best(floors, 'processor'):.3f} of processor time, at most {TARGET_RATIO} wanted; "
          f"{TARGET_MEMORY >> 20} MB wanted.")


if __name__ == "__main__":
    main()
