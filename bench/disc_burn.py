"""Time of writing a 600 MB archive to the virtual burner, against a plain copy of the same bytes by the system, and how
long the thread of the windows was kept from its messages meanwhile."""

import random
import re
import shutil
import statistics
import subprocess
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent.parent / "tools"))

from burner import Burner, install_image_mastering  # noqa: E402
from workstation import BINARIES, BUILD, Display, Workstation  # noqa: E402

ROUNDS = 7
ARCHIVE_MEGABYTES = 600
TARGET_RATIO = 1.15
TARGET_WAIT_MILLISECONDS = 100


def run(station, *arguments):
    done = subprocess.run(station.wine_command(r"C:\Tools\disc_console.exe", *arguments), env=station.environment,
                          cwd=station.path("C:"), capture_output=True, text=True, encoding="cp1252", check=False)
    found = re.search(r"milliseconds (\d+)(?: longest wait ([\d.]+))?", done.stdout)
    if done.returncode or not found:
        raise RuntimeError(f"{arguments} ended with {done.returncode}: {done.stdout[-500:]}")
    return int(found.group(1)), float(found.group(2) or 0)


def copy_once(path):
    """Brings the file into memory, and as much memory again into use: a virtual machine pays for what it takes from its
    host anew, and that price would fall on whichever comes first."""
    scratch = path.with_name("scratch.bin")
    shutil.copyfile(path, scratch)
    scratch.unlink()


def main():
    folder = BUILD / "workstation" / "bench-discs"
    shutil.rmtree(folder, ignore_errors=True)
    display = Display()
    station = Workstation(folder, display=display)
    try:
        install_image_mastering(station)
        drive = Burner(station, "g", "cd", shows_content="no")
        shutil.copy2(BINARIES / "disc_console.exe", station.path(r"C:\Tools\disc_console.exe"))
        generator = random.Random(4)
        archive = station.path(r"C:\OKRBACKUP.ZIP")
        with open(archive, "wb") as stream:
            for _ in range(ARCHIVE_MEGABYTES):
                stream.write(generator.randbytes(2**20))
        station.path(r"C:\_listFich.lst").write_bytes(b"C:\\Documents\t32\tZip0001.zip\r\n")
        burns, waits, copies = [], [], []
        for _ in range(1 + ROUNDS):
            copy_once(archive)
            copies.append(run(station, "copy", r"C:\OKRBACKUP.ZIP", r"C:\copy.bin")[0])
            station.path(r"C:\copy.bin").unlink()
            drive.insert("CD-R")
            copy_once(archive)
            elapsed, wait = run(station, "cd", "0", "burn", "21 nov., 2026", r"C:\_listFich.lst", r"C:\OKRBACKUP.ZIP")
            burns.append(elapsed)
            waits.append(wait)
    finally:
        station.remove()
        display.stop()
    ratio = statistics.median(burns[1:]) / statistics.median(copies[1:])
    print(f"Medians of {ROUNDS} rounds after one that does not count, write and copy in turn.\n")
    print("| case | write s | copy s | ratio | at most | longest wait ms | at most |")
    print("|---|---|---|---|---|---|---|")
    print(f"| {ARCHIVE_MEGABYTES} MB to a CD-R | {statistics.median(burns[1:]) / 1000:.2f} | "
          f"{statistics.median(copies[1:]) / 1000:.2f} | {ratio:.3f} | {TARGET_RATIO} | {max(waits):.0f} | "
          f"{TARGET_WAIT_MILLISECONDS} |", flush=True)


if __name__ == "__main__":
    main()
