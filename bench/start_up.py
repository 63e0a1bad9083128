"""Time from the start of the process to a main window that can be used, less the waits for the two disc writers.

Each wait lasts to the next whole second of the clock from the moment at which the writer's label is filled in, so what
it takes follows from when the label was seen. A label is seen late rather than early: the figure errs upwards.
"""

import math
import shutil
import statistics
import sys
import time
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent.parent / "tools"))

from burner import Burner, install_image_mastering  # noqa: E402
from controlids import control_ids  # noqa: E402
from driver import Driver, DriverError  # noqa: E402
from main_job import private_bytes  # noqa: E402
from program import Program  # noqa: E402
from workstation import BUILD, Display, Workstation  # noqa: E402

ROUNDS = 10
TARGET_SECONDS = 0.5
UNCLEAR_SECONDS = 0.04


class TimedProgram(Program):
    """A program whose start is timed; the driver runs before it."""

    def __init__(self, workstation):
        self.workstation = workstation
        self.executable = "Backup.exe"
        self.driver = Driver(workstation)
        self.driver.call("windows", 0)
        self.started = time.time()
        folder = workstation.program_folder
        self.process_id = int(self.driver.call("start", folder, f'"{folder}\\{self.executable}"')[0][0])

    def moment(self, control, is_reached):
        """The clock's time at which a control was seen as wanted. The program is not asked, so that it is not held up."""
        number = control_ids("frmMain")[control]

        def seen():
            for window in self.windows():
                try:
                    text, is_enabled, _ = self.driver.call("glance", window.handle, number)[0]
                except DriverError:
                    continue
                if is_reached(text, is_enabled == "1"):
                    return time.time()
            return None

        return self.wait(seen, control)


def wait_after(moment):
    return math.ceil(moment) - moment


def is_clear(moment):
    return UNCLEAR_SECONDS < wait_after(moment) < 1 - UNCLEAR_SECONDS


def measure_start(station):
    """Seconds of the program's own, seconds in all, and bytes of private memory; None when the waits are unclear."""
    program = TimedProgram(station)
    try:
        cd_looked_for = program.moment("lblDetCD", lambda text, _: text)
        dvd_looked_for = program.moment("lblDetDVD", lambda text, _: text)
        usable = program.moment("cmdBackup", lambda _, is_enabled: is_enabled)
        if not (is_clear(cd_looked_for) and is_clear(dvd_looked_for)):
            return None
        total = usable - program.started
        own = total - wait_after(cd_looked_for) - wait_after(dvd_looked_for)
        return own, total, private_bytes(program)
    finally:
        program.stop()


def main():
    folder = BUILD / "workstation" / "bench-start"
    shutil.rmtree(folder, ignore_errors=True)
    display = Display()
    station = Workstation(folder, display=display)
    try:
        station.add_drive("e")
        install_image_mastering(station)
        Burner(station, "g", "cd").insert("CD-R")
        Burner(station, "h", "dvd").insert("DVD+R")
        measure_start(station)  # starts what the workstation itself needs
        rounds = []
        while len(rounds) < ROUNDS:
            if measured := measure_start(station):
                rounds.append(measured)
    finally:
        station.remove()
        display.stop()
    own, total, memory = zip(*rounds)
    print(f"{ROUNDS} starts after a first one. Own time: without the waits for the writers.\n")
    print("| | median s | slowest s | at most |")
    print("|---|---|---|---|")
    print(f"| process start to usable window, own time | {statistics.median(own):.2f} | {max(own):.2f} | {TARGET_SECONDS} |")
    print(f"| the same with the waits | {statistics.median(total):.2f} | {max(total):.2f} | |")
    print(f"\nPrivate memory of the idle window: {max(memory) / 2**20:.1f} MB.")


if __name__ == "__main__":
    main()
