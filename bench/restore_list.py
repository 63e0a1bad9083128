"""Time from choosing a medium to its rows being listed and ticked in the restore window, for short and long lists.

Every medium is chosen after one with a single row. What choosing one with two rows takes is the measurement's own cost,
and is taken off; the fastest round counts, since the machine's other work only adds to it.
"""

import shutil
import sys
import time
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent.parent / "tools"))

from program import Program  # noqa: E402
from workstation import BUILD, Display, Workstation  # noqa: E402

ONE, TWO, FEW, MANY = 1, 2, 1_000, 100_000
ROUNDS = 25
TARGET_SECONDS = 2
TARGET_RATIO = 1.3
MEDIA = {ONE: "e", TWO: "f", FEW: "g", MANY: "h"}


def write_medium(station, letter, count):
    root = station.add_drive(letter, label=f"LISTE{count}")
    lines = (f"**UserProfile**\\Documents\\Dossier {number}\\fichier.txt,32,Zip{number:04d}\r\n"
             for number in range(1, count + 1))
    (root / "_listFich.lst").write_bytes("".join(lines).encode("cp1252"))
    (root / "OKRBACKUP.ZIP").write_bytes(b"archive")


def seconds_to_list(program, drive_list, file_list, entry, count):
    """From the choice to the moment at which the window answers with the medium's number of rows."""
    started = time.perf_counter()
    program.driver.call("choose", drive_list, entry)
    while int(program.driver.call("rowcount", file_list)[0][0]) != count:
        pass
    return time.perf_counter() - started


def main():
    folder = BUILD / "workstation" / "bench-restore-list"
    shutil.rmtree(folder, ignore_errors=True)
    display = Display()
    station = Workstation(folder, display=display)
    try:
        for count, letter in MEDIA.items():
            write_medium(station, letter, count)
        program = Program(station)
        main_window = program.main_window()
        main_window.press("optRestaure")
        main_window.press("cmdBackup")
        restore = program.window("frmRestaureCD")
        drive_list = restore.control("lstDrive").handle
        file_list = restore.control("lvFichiersRepertoires").handle
        entries = restore.entries("lstDrive")

        def choose(count):
            entry = next(row for row, text in enumerate(entries) if text.startswith(MEDIA[count].upper()))
            return seconds_to_list(program, drive_list, file_list, entry, count)

        measured = {count: [] for count in MEDIA}
        for _ in range(ROUNDS):
            for count in (TWO, FEW, MANY):
                choose(ONE)
                measured[count].append(choose(count))
                assert restore.rows("lvFichiersRepertoires", count - 1, 1)[0].ticked
        program.stop()
    finally:
        station.remove()
        display.stop()
    own_cost = min(measured[TWO])
    seconds = {count: min(measured[count]) - own_cost for count in (FEW, MANY)}
    per_row = {count: seconds[count] / count for count in (FEW, MANY)}
    print(f"{ROUNDS} rounds, the fastest of each; {own_cost * 1000:.1f} ms of the measurement's own taken off.\n")
    print("| rows | s | microseconds per row |")
    print("|---|---|---|")
    for count in (FEW, MANY):
        print(f"| {count:,} | {seconds[count]:.3f} | {per_row[count] * 1e6:.2f} |")
    print(f"\nSlowest {MANY:,} rows: {max(measured[MANY]) - own_cost:.3f} s, at most {TARGET_SECONDS} s wanted. "
          f"Per row {per_row[MANY] / per_row[FEW]:.2f} times that of {FEW:,}, at most {TARGET_RATIO} wanted.")


if __name__ == "__main__":
    main()
