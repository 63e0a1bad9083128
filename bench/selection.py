"""Time and memory of the selection list in its real window: adding, removing, predefined sets, measuring folders."""

import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent.parent / "tools"))

from workstation import BINARIES, BUILD, Display, Workstation  # noqa: E402

COUNTS = (1000, 10000, 100000)
SET_ENTRIES = 10000
FOLDERS = 500
FILES_PER_FOLDER = 100


def fill(folder, count, name):
    folder.mkdir(parents=True)
    for number in range(count):
        # Files without a byte are made much faster, and their size takes as long to look up.
        with open(folder / name.format(number), "xb") as stream:
            if number == 0:
                stream.write(b"x" * 1000)


def lay_out(bench):
    for count in COUNTS:
        fill(bench / str(count) / "Documents", count, "Dossier de client numéro {:06d}.docx")
    (bench / "empty" / "Documents").mkdir(parents=True)
    for folder in range(FOLDERS):
        fill(bench / "tree" / f"Dossier {folder:03d}", FILES_PER_FOLDER, "Document {:03d}.txt")
    lists = bench / "sets" / "backup" / "Fichierlst" / "Medium"
    lists.mkdir(parents=True)
    entries = "".join(rf"C:\bench\10000\Documents\Dossier de client numéro {number:06d}.docx" + "\r\n"
                      for number in range(SET_ENTRIES))
    (lists / "qamor.lst").write_bytes(entries.encode("cp1252"))


def main():
    folder = BUILD / "workstation" / "bench-selection"
    shutil.rmtree(folder, ignore_errors=True)
    display = Display()
    station = Workstation(folder, display=display)
    # In memory: it is the program that is measured, and the disk may be busy otherwise.
    files = tempfile.TemporaryDirectory(dir="/dev/shm" if Path("/dev/shm").is_dir() else None)
    try:
        lay_out(Path(files.name))
        station.path(r"C:\bench").symlink_to(files.name)
        program = station.path(r"C:\Tools") / "selection_bench.exe"
        shutil.copy2(BINARIES / program.name, program)
        done = subprocess.run(station.wine_command(r"C:\Tools\selection_bench.exe"), env=station.environment, check=False)
    finally:
        station.remove()
        display.stop()
        files.cleanup()
    return done.returncode


if __name__ == "__main__":
    sys.exit(main())
