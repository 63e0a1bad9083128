"""What goes wrong with a restore. The medium is never written to, and each file comes back whole or stays as it was, unless
the archiver fails, which the program is not to look at; then the check of the medium tells."""

import errno
import random
import shutil

from disk_faults import change_archiver, end_hanging_archiver, kill_after, log_off, remove_archiver
from fault import DONE, EMPTY_LIST, FAILED, KILLED, REFUSED, Expect, fault

ARCHIVE = "OKRBACKUP.ZIP"
LIST = "_listFich.lst"
ON_MEDIUM = "drive_e/" + ARCHIVE
DONE_WELL = Expect(outcomes=(DONE,))
UNNOTICED = Expect(outcomes=(DONE, FAILED), unnoticed=True)
REFUSED_PASSWORD = "ne concorde pas"


def restore(name, expect, **steps):
    fault(name, "restore", expect, **steps)


def put_on_medium(scene, name, content):
    """The medium is as a damaged or foreign one would be; it has to stay so."""
    if name == ARCHIVE:
        scene.is_medium_damaged = True
    (scene.root / name).write_bytes(content)
    scene.old = scene.pair()


def cut_archive(scene, percent):
    content = (scene.root / ARCHIVE).read_bytes()
    put_on_medium(scene, ARCHIVE, content[:len(content) * percent // 100])


def change_byte(scene, percent):
    content = bytearray((scene.root / ARCHIVE).read_bytes())
    content[len(content) * percent // 100] ^= 0x10
    put_on_medium(scene, ARCHIVE, bytes(content))


for percent in (0, 25, 75, 99):
    # A cut archive ends the archiver with the code of a wrong password.
    restore(f"archive-cut-at-{percent}-percent", Expect(outcomes=(FAILED, DONE), unnoticed=True),
            arrange=lambda scene, percent=percent: cut_archive(scene, percent), is_short=percent == 75)
for percent in (10, 50, 90):
    restore(f"archive-with-a-changed-bit-at-{percent}-percent", Expect(outcomes=(FAILED, DONE), unnoticed=True),
            arrange=lambda scene, percent=percent: change_byte(scene, percent))


def swap_archive(scene):
    """The archive of another backup under the same password, beside this list."""
    lines = (scene.root / LIST).read_bytes()
    (scene.root / ARCHIVE).unlink()
    scene.write_backup([r"C:\x.txt,32,Zip0001"], {1: {"autre.txt": b"of another backup"}})
    put_on_medium(scene, LIST, lines)
    scene.is_medium_damaged = True
    scene.touched = (str((scene.station.documents / "autre.txt").relative_to(scene.station.prefix)),)


def swap_list(scene):
    put_on_medium(scene, LIST, b"C:\\Precieux\\autre.txt,32,Zip0007\r\n")
    scene.is_medium_damaged = True


restore("archive-of-another-backup", UNNOTICED, arrange=swap_archive)
restore("list-of-another-backup", UNNOTICED, arrange=swap_list)
restore("list-empty", Expect(outcomes=(REFUSED,), told=(EMPTY_LIST,)),
        arrange=lambda scene: put_on_medium(scene, LIST, b""))
restore("list-of-random-bytes", Expect(outcomes=(FAILED, DONE), told=("MAJListeFich",), unnoticed=True),
        arrange=lambda scene: put_on_medium(scene, LIST, random.Random(3).randbytes(5_000)))


def cut_list(scene):
    content = (scene.root / LIST).read_bytes()
    put_on_medium(scene, LIST, content[:len(content) - 30])


def remove_from_medium(scene, name):
    (scene.root / name).unlink()
    scene.old = scene.pair()


restore("list-cut-in-its-last-line", Expect(outcomes=(DONE, FAILED), told=("MAJListeFich",), unnoticed=True), arrange=cut_list)
restore("list-missing", Expect(outcomes=(REFUSED,)), arrange=lambda scene: remove_from_medium(scene, LIST))
restore("archive-missing", Expect(outcomes=(FAILED,), told=("(2.1)",)),
        arrange=lambda scene: remove_from_medium(scene, ARCHIVE))


def pull_out_while_it_is_read(scene):
    """What has been opened goes with the disk."""
    scene.pull_out()
    scene.fail_reads(ON_MEDIUM, errno.ENODEV)


restore("medium-pulled-before-the-restore", Expect(outcomes=(REFUSED,)), when_chosen=lambda scene: scene.pull_out())
restore("medium-pulled-under-the-password", Expect(outcomes=(REFUSED,)), when_asked=lambda scene: scene.pull_out())
restore("medium-pulled-while-the-archive-is-read", UNNOTICED, holds=f"read {ON_MEDIUM}",
        when_held=pull_out_while_it_is_read)
restore("medium-with-a-bad-block", UNNOTICED,
        when_asked=lambda scene: scene.fail_reads(ON_MEDIUM, errno.EIO, 200_000))
restore("medium-read-slowly", DONE_WELL, when_asked=lambda scene: scene.slow("read", ON_MEDIUM, 200))
restore("medium-protected-during-the-restore", DONE_WELL, arrange=lambda scene: scene.protect())


def give_wrong_password_first(scene):
    scene.give_password(scene.program, "Faux-mot-1")
    scene.read_boxes(lambda: scene.program.find_window("frmMotPasse", enabled=True))


restore("wrong-password-first", Expect(outcomes=(DONE,), told=(REFUSED_PASSWORD,)), when_asked=give_wrong_password_first)

# The archiver
restore("archiver-missing-for-a-restore", UNNOTICED, when_asked=remove_archiver)
restore("archiver-fails-in-a-restore", UNNOTICED, when_asked=change_archiver("fail", 7))
restore("archiver-crashes-in-a-restore", UNNOTICED, when_asked=change_archiver("crash"))
restore("archiver-claims-a-wrong-password", Expect(outcomes=(FAILED,), told=(REFUSED_PASSWORD,)),
        when_asked=change_archiver("claim", 2))
restore("archiver-answers-late-in-a-restore", DONE_WELL, when_asked=change_archiver("late", 2000))


restore("archiver-hangs-in-a-restore-until-it-is-ended", UNNOTICED, when_asked=change_archiver("hang"),
        when_running=end_hanging_archiver)
for moment in (100, 400, 800):
    restore(f"program-killed-{moment}-ms-into-a-restore", Expect(outcomes=(KILLED,)),
            when_running=lambda scene, moment=moment: kill_after(scene, moment / 1000))

# The places that files go back to


def make_file_read_only(scene):
    (scene.station.documents / "budget.csv").chmod(0o444)


def allow_writing(scene):
    (scene.station.documents / "budget.csv").chmod(0o644)


def put_folder_in_place(scene):
    path = scene.station.documents / "budget.csv"
    path.unlink()
    path.mkdir()
    (path / "dedans.txt").write_bytes(b"inside")


def put_file_in_place(scene):
    """Where the folder was is a file of that name now."""
    folder = scene.station.documents / "Lettres d'été"
    for path in sorted(folder.rglob("*"), reverse=True):
        path.unlink() if path.is_file() else path.rmdir()
    folder.rmdir()
    folder.write_bytes(b"a file of that name")
    scene.touched = (*scene.touched, str(folder.relative_to(scene.station.prefix)))


def clear_place(scene):
    for name in ("budget.csv", "Lettres d'été"):
        path = scene.station.documents / name
        if name == "budget.csv" and path.is_dir():
            shutil.rmtree(path)
        elif name != "budget.csv" and path.is_file():
            path.unlink()


restore("target-file-read-only", DONE_WELL, arrange=make_file_read_only, heal=allow_writing)
restore("target-file-held-by-another-program", UNNOTICED,
        when_asked=lambda scene: scene.hold_file(scene.station.documents / "budget.csv"))
restore("target-file-is-a-folder-now", UNNOTICED, arrange=put_folder_in_place, heal=clear_place)
restore("target-folder-is-a-file-now", UNNOTICED, arrange=put_file_in_place, heal=clear_place)
restore("target-drive-full", UNNOTICED, options={"small_folders": (("Documents", 3),)},
        when_asked=lambda scene: scene.fill(scene.station.documents, 100_000))
for size in (0, 256, 600):
    restore(f"work-drive-full-in-a-restore-{size}-kb-left", UNNOTICED, options={"small_program_drive": 16},
            when_asked=lambda scene, size=size: scene.fill(scene.program_folder(), size * 1024))

# The workstation
restore("few-handles-in-a-restore", DONE_WELL, when_asked=lambda scene: scene.limit_files(2))
restore("clock-set-back-in-a-restore", DONE_WELL, when_asked=lambda scene: scene.rule("clock -86400"))
restore("log-off-during-a-restore", DONE_WELL, when_asked=change_archiver("late", 1000),
        when_running=lambda scene: log_off(scene, "Restauration"))


def choose_other_account(scene):
    """The list names a folder in the profile of another account, which this one may not enter."""
    profile = scene.station.path(r"C:\users\autre")
    (profile / "Documents").mkdir(parents=True)
    (profile / "Documents" / "budget.csv").write_bytes(b"of the other account")
    profile.chmod(0o000)
    scene.addCleanup(profile.chmod, 0o755)
    lines = (scene.root / LIST).read_bytes().replace(b"**UserProfile**\\Documents\\budget.csv",
                                                     b"C:\\users\\autre\\Documents\\budget.csv")
    put_on_medium(scene, LIST, lines)


def open_other_account(scene):
    scene.station.path(r"C:\users\autre").chmod(0o755)


restore("folder-of-another-account", Expect(outcomes=(DONE, FAILED), unnoticed=True, passed_over=("budget.csv",)),
        arrange=choose_other_account, heal=open_other_account)
