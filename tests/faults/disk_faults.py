"""What goes wrong with a backup to a disk."""

import errno
import random
import time

from fault import DONE, FAILED, KILLED, NEW, OLD, Expect, fault

NEW_ARCHIVE = "OKRBACKUP.ZIP.~new"
NEW_LIST = "_listFich.lst.~part"
COPY_REPORT = "CopierUSB, Class clsCopie"
FAILED_BACKUP = "Veuillez réessayer"
KILOBYTE = 1024
WM_QUERYENDSESSION = 0x11
# From not a byte to all but a little, of a pair of some 630 kilobytes.
SIZES = (0, 4, 64, 128, 256, 384, 512, 584, 592, 600)
SMALL_DISK = {"size_megabytes": 4}
FAILED_COPY = Expect(told=(COPY_REPORT, FAILED_BACKUP))
# The archiver's exit codes say nothing to the program.
UNNOTICED = Expect(outcomes=(DONE, FAILED), medium=(OLD, NEW), unnoticed=True)


def disk(name, expect=FAILED_COPY, **steps):
    fault(name, "disk", expect, **steps)


for size in SIZES:
    disk(f"medium-full-{size}-kb-left", options=SMALL_DISK, is_short=size == 256,
         when_chosen=lambda scene, size=size: scene.fill(scene.root, size * KILOBYTE))
    disk(f"work-drive-full-{size}-kb-left", UNNOTICED, options={"small_program_drive": 16},
         when_chosen=lambda scene, size=size: scene.fill(scene.program_folder(), size * KILOBYTE))


disk("medium-with-just-enough-room", Expect(outcomes=(DONE,), medium=(NEW,)), options=SMALL_DISK,
     when_chosen=lambda scene: scene.fill(scene.root, 640 * KILOBYTE))


def write_long_names(scene):
    """Forty files whose lines fill some ten kilobytes of the list."""
    folder = scene.station.documents / ("d" * 100)
    folder.mkdir()
    for number in range(40):
        (folder / ("f" * 100 + f"{number:04d}.txt")).write_bytes(b"x")


def choose_long_names(scene):
    folder = scene.station.documents / ("d" * 100)
    scene.choose(scene.program.window("frmBackup"), [scene.station.windows_path(path) for path in sorted(folder.iterdir())])


for size in (0, 4, 8):
    disk(f"temp-full-{size}-kb-left", Expect(told=("EnregistrerListeFichiers", FAILED_BACKUP)),
         options={"small_temp": 1}, arrange=write_long_names,
         when_open=choose_long_names,
         when_chosen=lambda scene, size=size: scene.fill(scene.station.temp, size * KILOBYTE))

disk("medium-pulled-before-the-start", Expect(outcomes=(FAILED,), told=("non disponible",)),
     when_chosen=lambda scene: scene.pull_out(), is_short=True)
disk("medium-pulled-while-the-password-is-asked-for", Expect(told=(FAILED_BACKUP,)),
     when_asked=lambda scene: scene.pull_out())
disk("medium-pulled-when-the-archive-comes", holds=f"write {NEW_ARCHIVE}", when_held=lambda scene: scene.pull_out())
disk("medium-pulled-when-the-list-comes", holds=f"write {NEW_LIST}", when_held=lambda scene: scene.pull_out())
disk("medium-write-protected", when_chosen=lambda scene: scene.protect())
disk("medium-write-protected-during-the-copy", holds=f"write {NEW_ARCHIVE}", when_held=lambda scene: scene.protect())
disk("medium-with-a-bad-block-in-the-archive",
     when_chosen=lambda scene: scene.fail_writes(NEW_ARCHIVE, errno.EIO, 300_000))
disk("medium-with-a-bad-block-in-the-list", when_chosen=lambda scene: scene.fail_writes(NEW_LIST, errno.EIO))
disk("medium-full-when-the-list-comes", when_chosen=lambda scene: scene.fail_writes(NEW_LIST, errno.ENOSPC))
disk("medium-slow", Expect(outcomes=(DONE,), medium=(NEW,)),
     when_chosen=lambda scene: scene.slow("write", NEW_ARCHIVE, 300))
disk("list-on-the-medium-held-by-another-program", when_chosen=lambda scene: scene.hold_file(scene.root / "_listFich.lst"))
disk("archive-on-the-medium-held-by-another-program",
     when_chosen=lambda scene: scene.hold_file(scene.root / "OKRBACKUP.ZIP"))


def swap_archive_on_medium(scene):
    (scene.root / "OKRBACKUP.ZIP").write_bytes(b"of another backup")


def remove_list(scene):
    (scene.root / "_listFich.lst").unlink()


disk("old-archive-damaged-before-the-copy", Expect(outcomes=(DONE,), medium=(NEW,)), when_chosen=swap_archive_on_medium)
disk("old-list-missing-before-the-copy", Expect(outcomes=(DONE,), medium=(NEW,)), when_chosen=remove_list)


# The archiver

def remove_archiver(scene):
    (scene.program_folder() / "7Za.exe").unlink()


def change_archiver(word, number=0):
    """A step after which the archiver behaves as the word says."""
    return lambda scene: scene.replace_archiver(word, number)


disk("archiver-missing", Expect(told=("7Za.exe",)), when_chosen=remove_archiver, is_short=True)
disk("archiver-vanishes-under-the-password", Expect(told=(FAILED_BACKUP,)), when_asked=remove_archiver)
disk("archiver-fails", Expect(told=(FAILED_BACKUP,)), when_chosen=change_archiver("fail", 2))
disk("archiver-crashes", Expect(told=(FAILED_BACKUP,)), when_chosen=change_archiver("crash"))
disk("archiver-answers-late", Expect(outcomes=(DONE,), medium=(NEW,)),
     when_chosen=change_archiver("late", 3000))
disk("archiver-claims-a-failure", Expect(outcomes=(DONE,), medium=(NEW,)),
     when_chosen=change_archiver("claim", 8))


def end_hanging_archiver(scene):
    """The user ends it in the task manager; the next ones work."""
    scene.wait_for(scene.is_archiver_met, "the archiver that hangs")
    scene.give_archiver_back_later()
    scene.kill_archiver()


disk("archiver-hangs-until-it-is-ended", Expect(told=(FAILED_BACKUP,)),
     when_chosen=change_archiver("hang"), when_running=end_hanging_archiver)


def kill_archiver_in_run(scene, number):
    met = set()

    def has_come():
        met.update(scene.station.processes("7za"))
        return len(met) >= number

    scene.wait_for(has_come, f"run {number} of the archiver")
    scene.kill_archiver()


for number in (1, 2, 3):
    disk(f"archiver-killed-in-run-{number}", UNNOTICED,
         when_running=lambda scene, number=number: kill_archiver_in_run(scene, number))


def kill_after(scene, seconds):
    time.sleep(seconds)
    scene.kill_program()


for moment in (50, 200, 400, 700, 1000, 1500):
    disk(f"program-killed-after-{moment}-ms", Expect(outcomes=(KILLED,), medium=(OLD, NEW)),
         when_running=lambda scene, moment=moment: kill_after(scene, moment / 1000))
disk("program-killed-when-the-archive-comes", Expect(outcomes=(KILLED,)), holds=f"write {NEW_ARCHIVE}",
     when_held=lambda scene: scene.kill_program(), is_short=True)
disk("program-killed-when-the-list-comes", Expect(outcomes=(KILLED,)), holds=f"write {NEW_LIST}",
     when_held=lambda scene: scene.kill_program())


# The workstation

disk("clock-set-back-during-the-run", Expect(outcomes=(DONE,), medium=(NEW,)),
     when_running=lambda scene: scene.rule("clock -86400"))
disk("few-handles-8-free", Expect(outcomes=(FAILED, DONE), medium=(OLD, NEW)),
     when_chosen=lambda scene: scene.limit_files(8))


def change_list_in_temp(scene):
    """Another copy of the program, in another folder, writes its own list to the one place."""
    scene.wait_for(lambda: scene.station.processes("7za"), "the archiver")
    (scene.station.temp / "_listFich.lst").write_bytes(b"C:\\autre.txt,32,Zip0001\r\n")


def remove_list_in_temp(scene):
    scene.wait_for(lambda: scene.station.processes("7za"), "the archiver")
    (scene.station.temp / "_listFich.lst").unlink()


disk("list-of-another-copy-in-temp", Expect(told=("CopierListeFichiers", FAILED_BACKUP)), when_running=change_list_in_temp)
disk("list-in-temp-deleted-during-the-run", Expect(told=("CopierListeFichiers", FAILED_BACKUP)),
     when_running=remove_list_in_temp)


def damage_work_archive(scene):
    """Another program empties the work folder's archive before it is copied."""
    work = scene.program_folder() / "zip" / "OKRBACKUP.ZIP"
    scene.wait_for(work.exists, "the archive in the work folder")
    work.unlink(missing_ok=True)


disk("archive-in-the-work-folder-deleted", UNNOTICED, when_running=damage_work_archive)


def write_random(scene, path):
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_bytes(random.Random(9).randbytes(100_000))


disk("work-folder-holds-what-was-left", Expect(outcomes=(DONE,), medium=(NEW,)),
     when_chosen=lambda scene: write_random(scene, scene.program_folder() / "zip" / "Zip0001.zip"))
disk("work-folder-held-by-another-program", Expect(told=(FAILED_BACKUP,)),
     when_chosen=lambda scene: hold_work_folder(scene))


def hold_work_folder(scene):
    path = scene.program_folder() / "zip" / "tenu.bin"
    write_random(scene, path)
    scene.hold_file(path)


def log_off(scene, title="Prise de copie", needs_archiver=True):
    """Windows asks every window whether the session may end, and is told to wait."""
    if needs_archiver:
        # While it runs, the windows answer nobody.
        scene.wait_for(scene.is_archiver_met, "the archiver")
    else:
        scene.wait_for(lambda: scene.program.find_window("frmMotPasse") is None, "the end of the password dialog")
    answers = {window.title: scene.program.driver.call("send", window.handle, WM_QUERYENDSESSION, 0, 0)[0][0]
               for window in scene.program.windows() if window.title}
    if not any(title in name and answer == "0" for name, answer in answers.items()):
        scene.seen.told.append(f"the session may end: {answers}")
        scene.seen.outcome = "the session may end"


disk("log-off-during-the-run", Expect(outcomes=(DONE,), medium=(NEW,)), when_chosen=change_archiver("late", 1500),
     when_running=log_off)


def start_again(scene):
    """The impatient user starts the program once more."""
    other = scene.start()
    scene.wait_for(lambda: other.exit_code() is not None, "the end of the second one", 30)
    other.stop()


disk("started-again-during-the-run", Expect(outcomes=(DONE,), medium=(NEW,)),
     when_chosen=change_archiver("late", 500), when_running=start_again)
