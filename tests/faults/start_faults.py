"""What the program finds when it starts, and how it comes to its end."""

import random
import shutil

from disk_faults import FAILED_BACKUP, NEW_ARCHIVE, change_archiver, start_again
from fault import DONE, FAILED, KILLED, NEW, OLD, Expect, fault

BACKED_UP = Expect(outcomes=(DONE,), medium=(NEW,))
LIST_FOLDER = r"C:\Valcoreaux\Backup\Fichierlst\Medium"
SETTINGS = {"shared-settings": r"C:\Valcoreaux\Accueil\accueil.ini", "own-settings": r"C:\Valcoreaux\Backup\Backup.ini",
            "list-file": LIST_FOLDER + r"\vexal.lst"}
HUGE = 30_000_000


def start(name, expect=BACKED_UP, **steps):
    fault(name, "start", expect, **steps)


def end(name, expect=BACKED_UP, **steps):
    fault(name, "end", expect, **steps)


def write(scene, place, content):
    path = scene.station.path(place)
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_bytes(content)
    return path


def random_bytes(count):
    return random.Random(11).randbytes(count)


def forbid(scene, place):
    path = write(scene, place, b"[DVD]\r\nDisponible=oui\r\n")
    path.chmod(0o000)
    scene.addCleanup(path.chmod, 0o644)


def put_folder_there(scene, place):
    scene.station.path(place).mkdir(parents=True)


for name, place in SETTINGS.items():
    start(f"{name}-of-random-bytes", arrange=lambda scene, place=place: write(scene, place, random_bytes(4_000)))
    start(f"{name}-huge", arrange=lambda scene, place=place: write(scene, place, b"x=" * (HUGE // 2)))
    start(f"{name}-held-by-another-program",
          arrange=lambda scene, place=place: scene.hold_file(write(scene, place, b"[DVD]\r\nDisponible=oui\r\n")))
    start(f"{name}-of-another-account", arrange=lambda scene, place=place: forbid(scene, place))
    start(f"{name}-is-a-folder", arrange=lambda scene, place=place: put_folder_there(scene, place))


def remove_temp(scene):
    shutil.rmtree(scene.station.temp)


def make_temp(scene):
    scene.station.temp.mkdir(exist_ok=True)
    scene.station.temp.chmod(0o755)


start("temp-folder-missing", Expect(told=("EnregistrerListeFichiers", FAILED_BACKUP)), arrange=remove_temp, heal=make_temp)
start("temp-folder-of-another-account", Expect(told=("EnregistrerListeFichiers", FAILED_BACKUP)),
      arrange=lambda scene: scene.station.temp.chmod(0o555), heal=make_temp)
start("program-folder-takes-no-writing", Expect(told=("CopierListeFichiers", FAILED_BACKUP)),
      arrange=lambda scene: scene.program_folder().chmod(0o555), heal=lambda scene: scene.program_folder().chmod(0o755))
start("clock-twenty-years-back", arrange=lambda scene: scene.rule("clock -630720000"))
start("clock-thirty-years-ahead", arrange=lambda scene: scene.rule("clock 315360000"))


def leave_half_an_exchange(scene):
    """As a power cut leaves a disk while the archive comes."""
    (scene.root / NEW_ARCHIVE).write_bytes(random_bytes(50_000))


def leave_work_folder(scene):
    write(scene, r"C:\Valcoreaux\Backup\zip\Zip0001.zip", random_bytes(5_000))
    write(scene, r"C:\Valcoreaux\Backup\zip\OKRBACKUP.ZIP", random_bytes(5_000))


def put_file_in_place_of_work_folder(scene):
    write(scene, r"C:\Valcoreaux\Backup\zip", b"a file of that name")
    folder = scene.program_folder().relative_to(scene.station.prefix)
    scene.touched = (str(folder / "zip"),)


def remove_file_of_work_folder(scene):
    path = scene.program_folder() / "zip"
    if path.is_file():
        path.unlink()


start("half-an-exchange-on-the-disk", arrange=leave_half_an_exchange)
start("work-folder-left-by-a-run-that-was-killed", arrange=leave_work_folder)
start("work-folder-is-a-file", Expect(told=("CopierListeFichiers", FAILED_BACKUP)), arrange=put_file_in_place_of_work_folder,
      heal=remove_file_of_work_folder)


def start_and_kill(scene, _fault):
    """The program is ended while it starts; the next start knows nothing of it."""
    scene.start_program()
    scene.wait_for(lambda: scene.station.processes("backup"), "the program")
    scene.kill_program()


def start_twice(scene, fault):
    scene.start_program()
    # Before its window is there, the second one can only say that it runs.
    scene.main_window(90)
    start_again(scene)
    backup = scene.open_backup_window()
    scene.choose(backup)
    scene.press_start(fault, backup, "cmdLancer", scene.give_new_password)
    scene.follow()


start("program-killed-while-it-starts", Expect(outcomes=(KILLED,)), act=start_and_kill)
start("program-started-twice", act=start_twice)


# The end

def hold_rest_of_work_folder(scene):
    scene.hold_file(write(scene, r"C:\Valcoreaux\Backup\zip\tenu.bin", b"held"))


def press_cross(scene):
    for window in scene.program.windows():
        if "Prise de copie" in window.title:
            window.close()


def pull_and_plug_in(scene):
    scene.pull_out()
    scene.station.plug_in("e")


end("work-folder-held-when-it-is-removed", Expect(outcomes=(FAILED,), told=("CopierUSB",), medium=(NEW,)),
    holds=f"write {NEW_ARCHIVE}", when_held=hold_rest_of_work_folder)
end("cross-pressed-during-the-run", when_chosen=change_archiver("late", 500), when_running=press_cross)
end("program-killed-when-the-end-is-told", Expect(outcomes=(KILLED,), medium=(NEW,)),
    when_running=lambda scene: (scene.wait_for(lambda: scene.program.find_message_box(), "the end"), scene.kill_program()))
end("medium-pulled-when-the-end-is-told",
    when_running=lambda scene: (scene.wait_for(lambda: scene.program.find_message_box(), "the end"), scene.pull_out()))
end("medium-blinks-during-the-copy", Expect(outcomes=(DONE, FAILED), medium=(OLD, NEW)), holds=f"write {NEW_ARCHIVE}",
    when_held=pull_and_plug_in)
