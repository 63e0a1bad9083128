"""What a second account of the same computer finds, and what it does to the first one. Each has a profile of its own; the
program, its settings and its work folder are there once."""

from disk_faults import FAILED_BACKUP
from fault import DONE, ENDED, NEW, OLD, Expect, fault

from driver import Driver

OTHER = "autre"
BACKED_UP = Expect(outcomes=(DONE,), medium=(NEW,))


def log_on(scene):
    """The second account logs on; the first one's documents are among what has to stay as it is."""
    station = scene.station
    temp = station.temp.relative_to(station.profile)
    station.environment.update(USER=OTHER, LOGNAME=OTHER)
    station.profile = station.path(rf"C:\users\{OTHER}")
    station.documents, station.temp = station.profile / "Documents", station.profile / temp
    for folder in (station.documents, station.temp):
        folder.mkdir(parents=True)
    place = station.windows_path(station.temp).replace("\\", "\\\\")
    station.set_registry("user.reg", "Environment", f'"TEMP"="{place}"', f'"TMP"="{place}"')


def log_on_with_documents(scene):
    log_on(scene)
    scene.write_documents(generation=3)


def open_other_session(scene):
    scene.other_session = Driver(scene.station)
    scene.addCleanup(scene.other_session.stop)
    return scene.other_session


def run_in_other_session(scene):
    """What a program of another account's session leaves to be seen: its mutex, which this account may not open."""
    session = open_other_session(scene)
    numbers = session.call("folderid", scene.station.program_folder)[0]
    session.call("foreignmutex", "Global\\Backup." + ".".join(numbers))


def change_medium_in_other_session(scene):
    """The same of a copy that is installed in another folder and is changing the disk."""
    open_other_session(scene).call("foreignmutex", "Global\\Backup.Medium.E")


def end_other_session(scene):
    scene.other_session.stop()


def start_only(scene, _fault):
    scene.start_program()
    scene.follow()


def leave_foreign_work_folder(scene):
    """What a run of the other account left when it was killed; this account may read it."""
    work = scene.program_folder() / "zip"
    work.mkdir()
    (work / "Zip0001.zip").write_bytes(b"of the other account")
    work.chmod(0o555)
    scene.addCleanup(work.chmod, 0o755)


def give_work_folder_back(scene):
    (scene.program_folder() / "zip").chmod(0o755)


fault("program-of-another-account-runs", "start", Expect(outcomes=(ENDED,), told=("Backup: ",), medium=(OLD,)),
      arrange=run_in_other_session, act=start_only, heal=end_other_session)
fault("medium-changed-by-a-copy-of-another-account", "disk",
      Expect(told=("70 (Another copy of this program", FAILED_BACKUP)), arrange=change_medium_in_other_session, heal=end_other_session)
fault("backup-by-another-account", "start", BACKED_UP, arrange=log_on_with_documents)
fault("work-folder-of-another-account", "start", Expect(told=(FAILED_BACKUP,)), arrange=leave_foreign_work_folder,
      heal=give_work_folder_back)
fault("restore-by-another-account", "restore", Expect(outcomes=(DONE,)), arrange=log_on)
