"""What happens to files and folders between the user's choice and the archive."""

import os
import shutil
import threading
import time

from disk_faults import FAILED_BACKUP, SMALL_DISK, UNNOTICED, change_archiver
from fault import DONE, FAILED, NEW, REFUSED, Expect, fault

GIGABYTE = 1024 ** 3
TOO_LARGE = "Capacité maximale atteinte"
BACKED_UP = Expect(outcomes=(DONE,), medium=(NEW,))
NOT_BACKED_UP = Expect(told=(FAILED_BACKUP,))


def selection(name, expect, **steps):
    fault(name, "selection", expect, **steps)


def document(scene, name):
    return scene.station.documents / name


def own(scene, *names):
    """What the fault itself does to documents is not held against the program."""
    folder = scene.station.documents.relative_to(scene.station.prefix)
    scene.touched = (*scene.touched, *(str(folder / name) for name in names))


def remove_file(scene):
    own(scene, "budget.csv")
    document(scene, "budget.csv").unlink()


def remove_folder(scene):
    own(scene, "Lettres d'été")
    shutil.rmtree(document(scene, "Lettres d'été"))


def rename_file(scene):
    own(scene, "budget.csv", "budget 2004.csv")
    document(scene, "budget.csv").rename(document(scene, "budget 2004.csv"))


def replace_file_by_folder(scene):
    own(scene, "budget.csv")
    document(scene, "budget.csv").unlink()
    document(scene, "budget.csv").mkdir()
    (document(scene, "budget.csv") / "dedans.txt").write_bytes(b"inside")
    scene.documents = {**scene.documents, "budget.csv/dedans.txt": b"inside"}
    del scene.documents["budget.csv"]


def put_file_back(scene):
    scene.expected_on_medium = dict(scene.documents)
    shutil.rmtree(document(scene, "budget.csv"))


def remove_part_of_folder(scene):
    own(scene, "Lettres d'été")
    document(scene, "Lettres d'été/sous/note.txt").unlink()
    scene.expected_on_medium = {name: content for name, content in scene.documents.items() if not name.endswith("note.txt")}


selection("file-vanishes-after-the-choice", NOT_BACKED_UP, when_chosen=remove_file)
selection("folder-vanishes-after-the-choice", NOT_BACKED_UP, when_chosen=remove_folder)
selection("file-renamed-after-the-choice", NOT_BACKED_UP, when_chosen=rename_file,
          heal=lambda scene: document(scene, "budget 2004.csv").unlink())
selection("file-vanishes-under-the-password", NOT_BACKED_UP, when_asked=remove_file)
selection("file-becomes-a-folder", BACKED_UP, when_chosen=replace_file_by_folder, heal=put_file_back)
selection("part-of-a-folder-vanishes", BACKED_UP, when_chosen=remove_part_of_folder)


def grow(scene, size):
    own(scene, "grand.bin")
    content = scene.documents["grand.bin"] + os.urandom(size)
    document(scene, "grand.bin").write_bytes(content)
    scene.documents = {**scene.documents, "grand.bin": content}


def grow_while_archived(scene):
    """Grows on while the archiver reads it."""
    own(scene, "grand.bin")

    def write_on():
        with open(document(scene, "grand.bin"), "ab") as file:
            for _ in range(200):
                file.write(os.urandom(2_000))
                file.flush()
                time.sleep(0.005)

    thread = threading.Thread(target=write_on)
    thread.start()
    scene.addCleanup(thread.join)


def accept_any_moment(scene):
    """The file on the medium is the one of some moment: it begins with what was chosen."""
    grown = document(scene, "grand.bin").read_bytes()
    for length in range(600_000, len(grown) + 1, 2_000):
        scene.expected_on_medium = {**scene.documents, "grand.bin": grown[:length]}
        if scene.what_is_on(scene.expected_on_medium) == NEW:
            return


selection("file-grows-after-the-choice", BACKED_UP, when_chosen=lambda scene: grow(scene, 400_000))
selection("file-grows-beyond-the-disk", Expect(outcomes=(FAILED, REFUSED), told=(TOO_LARGE,)), options=SMALL_DISK,
          when_asked=lambda scene: grow(scene, 5_000_000))
selection("file-grows-while-it-is-archived", BACKED_UP, when_asked=grow_while_archived, heal=accept_any_moment)


def hold(name):
    return lambda scene: scene.hold_file(document(scene, name))


def forbid(name):
    def change(scene):
        document(scene, name).chmod(0o000)
    return change


def allow(name):
    def change(scene):
        document(scene, name).chmod(0o755)
    return change


selection("file-held-by-another-program", UNNOTICED, when_chosen=hold("budget.csv"))
selection("part-of-a-folder-held-by-another-program", UNNOTICED, when_chosen=hold("Lettres d'été/M. Bélanger.doc"))
selection("file-of-another-account", UNNOTICED, when_chosen=forbid("budget.csv"), heal=allow("budget.csv"))
selection("folder-of-another-account-inside-the-choice", UNNOTICED, when_chosen=forbid("Lettres d'été/sous"),
          heal=allow("Lettres d'été/sous"))
selection("file-with-a-bad-block", UNNOTICED, when_chosen=lambda scene: scene.fail_reads("Documents/grand.bin", 5, 300_000))


def add_huge_file(scene):
    """Five gigabytes that take no room on this machine."""
    path = document(scene, "cinq.bin")
    own(scene, "cinq.bin")
    with open(path, "wb") as file:
        file.truncate(5 * GIGABYTE)
    backup = scene.program.window("frmBackup")
    scene.choose(backup, [scene.station.windows_path(path)])
    text = backup.text("lblEspaceRequis")
    if "5 376," not in text.replace("\u00a0", " ").replace("\u202f", " "):
        scene.seen.outcome = f"five gigabytes are measured as {text}"


def remove_huge_file(scene):
    document(scene, "cinq.bin").unlink()


selection("file-of-5-gigabytes-for-a-small-disk", Expect(outcomes=(FAILED, REFUSED), told=(TOO_LARGE,)), options=SMALL_DISK,
          when_open=add_huge_file, heal=remove_huge_file)
selection("folder-measured-while-it-grows", BACKED_UP, when_open=grow_while_archived, heal=accept_any_moment)


def add_unwritable_name(scene):
    """A name that the list cannot say is not taken; the rest of the choice is."""
    path = document(scene, "Łukasz 日本.txt")
    own(scene, path.name)
    path.write_bytes(b"of another alphabet")
    backup = scene.program.window("frmBackup")
    backup.drop("lvFichRep", scene.station.windows_path(path))
    scene.read_boxes(lambda: scene.seen.told, 30)


selection("file-with-letters-that-the-list-lacks", Expect(outcomes=(DONE,), medium=(NEW,)), when_open=add_unwritable_name,
          heal=lambda scene: document(scene, "Łukasz 日本.txt").unlink())
selection("archiver-late-while-files-vanish", NOT_BACKED_UP, when_chosen=change_archiver("late", 1500),
          when_running=lambda scene: (scene.wait_for(scene.is_archiver_met, "the archiver"), remove_folder(scene)))
