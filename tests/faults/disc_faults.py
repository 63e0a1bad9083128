"""What goes wrong with a backup to a disc, in a virtual writer. A disc that was being written cannot be taken back; what is
called finished is whole."""

import errno

from disk_faults import change_archiver, kill_after, log_off, remove_archiver
from fault import DONE, FAILED, KILLED, NEW, NOTHING, REFUSED, STOPPED, Expect, fault

UNFINISHED = "an unfinished disc"
BURNT = Expect(outcomes=(DONE,), medium=(NEW,))
# The window stays for another try; what had reached the disc may be whole by chance.
FAILED_BURN = Expect(outcomes=(FAILED, REFUSED), told=("Error: ",), medium=(NOTHING, UNFINISHED, NEW))
# A failed archive is told of, and then an empty disc is written and called finished.
EMPTY_DISC = Expect(outcomes=(FAILED, DONE), medium=(NOTHING, UNFINISHED), unnoticed=True)


def disc(name, expect, **steps):
    fault(name, "disc", expect, **steps)


def drive(**settings):
    """A step after which the drive behaves so."""
    return lambda scene: scene.burner.set(**settings)


disc("disc-write-refused", FAILED_BURN, when_chosen=drive(start_code="0xC0AA0406"))
for percent in (5, 50, 99):
    disc(f"disc-write-fails-at-{percent}-percent", FAILED_BURN, when_chosen=drive(fail_at=percent, write_milliseconds=800))
disc("disc-pulled-during-the-write", FAILED_BURN, when_chosen=drive(eject_at=40, write_milliseconds=1500))
disc("disc-written-slowly", BURNT, when_chosen=drive(write_milliseconds=8000))
disc("disc-drive-busy-at-the-start", Expect(outcomes=(FAILED, REFUSED, DONE), medium=(NOTHING, NEW)),
     when_chosen=drive(busy="yes"), heal=drive(busy="no"))
disc("disc-taken-out-under-the-password", Expect(outcomes=(FAILED, REFUSED), medium=(NOTHING,)),
     when_asked=lambda scene: scene.burner.take_out())
disc("disc-exchanged-for-a-small-one-under-the-password", Expect(outcomes=(FAILED, REFUSED), medium=(NOTHING,)),
     when_asked=lambda scene: scene.burner.insert("CD-R", capacity=300 * 1024))
disc("disc-exchanged-for-a-closed-one-under-the-password", Expect(outcomes=(FAILED, REFUSED), medium=(NOTHING,)),
     when_asked=lambda scene: scene.burner.insert("CD-R", state="closed"))
disc("archiver-missing-for-a-disc", Expect(told=("7Za.exe",), medium=(NOTHING,)), when_chosen=remove_archiver)
disc("archiver-fails-for-a-disc", EMPTY_DISC,
     when_chosen=change_archiver("fail", 2))
disc("archiver-answers-late-for-a-disc", BURNT, when_chosen=change_archiver("late", 1500))
disc("work-drive-full-for-a-disc", EMPTY_DISC,
     options={"small_program_drive": 16}, when_chosen=lambda scene: scene.fill(scene.program_folder(), 300 * 1024))
disc("work-archive-unreadable-for-a-disc", Expect(outcomes=(FAILED,), medium=(NOTHING, UNFINISHED)),
     when_chosen=drive(write_milliseconds=1500),
     when_asked=lambda scene: scene.fail_reads("zip/OKRBACKUP.ZIP", errno.EIO, 500_000))


def kill_during_write(scene):
    backup = scene.program.find_window("frmBackup")
    scene.program.wait(lambda: backup.progress("pbProgressTotal") >= 20 and backup.control("cmdStopWrite").enabled,
                       "20 % of the write", 60)
    scene.kill_program()


def stop_write(scene):
    backup = scene.program.find_window("frmBackup")
    scene.program.wait(lambda: backup.progress("pbProgressTotal") >= 20 and backup.control("cmdStopWrite").enabled,
                       "20 % of the write", 60)
    backup.press("cmdStopWrite")
    backup.wait_enabled("cmdPrecedent", 60)
    scene.seen.outcome = STOPPED


disc("program-killed-during-the-write", Expect(outcomes=(KILLED,), medium=(NOTHING, UNFINISHED)),
     when_chosen=drive(write_milliseconds=5000), when_running=kill_during_write)
disc("program-killed-before-the-write", Expect(outcomes=(KILLED,), medium=(NOTHING,)),
     when_running=lambda scene: kill_after(scene, 0.3))
disc("write-stopped-by-the-user", Expect(outcomes=(STOPPED,), medium=(NOTHING, UNFINISHED)),
     when_chosen=drive(write_milliseconds=6000, stop_milliseconds=1500), when_running=stop_write)


def log_off_during_write(scene):
    backup = scene.program.find_window("frmBackup")
    scene.program.wait(lambda: backup.control("cmdStopWrite").visible, "the write", 60)
    log_off(scene, needs_archiver=False)


disc("log-off-during-the-write", BURNT, when_chosen=drive(write_milliseconds=4000), when_running=log_off_during_write)
