"""Starts the program on a workstation of its own, takes the scripted tour through it, or pictures of all its windows:
launch.py start|tour|gallery"""

import os
import shutil
import subprocess
import sys

import gallery
import tour
from burner import Burner, install_image_mastering
from samples import write_samples
from workstation import BUILD, CannotHave, Workstation, prepare

STATION = BUILD / "workstation" / "desk"
LAID_OUT = BUILD / "workstation" / "desk-is-laid-out"


def has_display():
    if not os.environ.get("DISPLAY"):
        return False
    return subprocess.run(["xprop", "-root", "_NET_SUPPORTED"], capture_output=True, check=False).returncode == 0


def user_language():
    spoken = os.environ.get("LC_ALL") or os.environ.get("LC_MESSAGES") or os.environ.get("LANG") or ""
    return "fr" if spoken.startswith("fr") else "en"


def start():
    """Opens the program on this machine's display and stays until it is closed. The workstation and what was backed up
    on its disk stay for the next time."""
    if STATION.exists() and not LAID_OUT.exists():
        shutil.rmtree(STATION)
    is_new = not STATION.exists()
    station = Workstation(STATION, language=user_language(), display=os.environ["DISPLAY"], keep=not is_new)
    if is_new:
        station.add_drive("e", label="SAUVEGARDE")
        install_image_mastering(station)
        Burner(station, "g", "cd").insert("CD-RW")
        Burner(station, "h", "dvd").insert("DVD+R")
        # Without this a Windows of today offers no DVD.
        station.path(r"C:\Valcoreaux\Backup\Backup.ini").write_bytes(b"[DVD]\r\nDisponible=OUI\r\n")
        write_samples(station.documents)
        LAID_OUT.touch()
    print(f"== the workstation's drive C: is {station.path('C:')}, its removable disk E: is {station.path('E:')}")
    print("== G: is a virtual CD writer and H: a virtual DVD writer, with a disc in each")
    print("== the program is open; this command ends when it is closed", flush=True)
    try:
        return subprocess.run(station.wine_command(station.program_folder + r"\Backup.exe"), env=station.environment,
                              cwd=station.path(station.program_folder), check=False).returncode
    finally:
        station.stop()


def main():
    try:
        prepare()
        if sys.argv[1] == "tour":
            return tour.run()
        if sys.argv[1] == "gallery":
            return gallery.run_gallery(sys.argv[2:])
        if not has_display():
            print("== there is no display: taking the tour on a virtual one")
            return tour.run()
        return start()
    except CannotHave as failure:
        print(f"run: {failure}", file=sys.stderr)
        return 1


if __name__ == "__main__":
    sys.exit(main())
