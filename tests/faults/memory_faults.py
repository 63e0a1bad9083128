"""What happens where memory ends in the shipped program: one of its allocations fails, or all from one on until the user's
action is over. Those of Windows itself succeed."""

import os

from fault import DONE, FAILED, NEW, OLD, REFUSED, Expect, fault

from driver import NotSeen

# With 1 every allocation has its fault.
STEP = int(os.environ.get("FAULT_ALLOCATIONS", "0"))
ALL_LATER = 1_000_000
# How long a person waits for rows of which nothing is said.
PATIENCE_SECONDS = 10
LIST_FILE = r"C:\Valcoreaux\Backup\Fichierlst\Medium\vexal.lst"
# Some allocations fewer than each action makes, and of which the bench tries one.
ACTIONS = {"opening-the-backup": (390, 65), "a-selection": (80, 16), "a-run": (500, 62), "opening-the-restore": (165, 41),
           "a-restore": (350, 58)}
TRIES_OF_ALL_LATER = 3
SHORT = ("allocation-1-fails-in-a-selection", "memory-ends-at-allocation-167-of-a-run")


def usable(scene, form, control):
    """The window with its control; a control that found no memory may be missing."""
    try:
        return scene._usable(form, control)
    except NotSeen:
        return None


def open_window(scene, form, control, closing_button):
    """Whether it has come whole. One that was told to be without something is closed."""
    def can_be_closed():
        return usable(scene, form, closing_button) or scene._main()

    scene.program.find_window("frmMain").press("cmdBackup")
    scene.read_boxes(lambda: usable(scene, form, control) or (scene.seen.told and can_be_closed()), 60)
    scene.read_boxes(can_be_closed, 60)
    if not scene.seen.told:
        return True
    scene.give_memory_back()
    if window := usable(scene, form, closing_button):
        # By the cross: its own button may be among what it is without.
        window.close()
    return False


def open_backup(scene, fault, first, count):
    """The window with its drives and lists. Where it cannot be opened, that is told, and it can be opened again."""
    scene.start_program()
    main = scene.main_window(90)
    scene.fail_allocations(first, count)
    main.press("optDisqueAmovible")
    scene.read_boxes(lambda: main.control("cboDrive").enabled or scene.seen.told, 60)
    is_whole = main.control("cboDrive").enabled and open_window(scene, "frmBackup", "lvFichRep", "cmdPrecedent")
    scene.give_memory_back()
    backup = scene.program.window("frmBackup") if is_whole else scene.open_backup_window()
    choose_again(scene, backup)
    scene.press_start(fault, backup, "cmdLancer", scene.give_new_password)
    scene.follow()


def choose_again(scene, backup):
    if backup.row_count("lvFichRep"):
        backup.press("cmdEffacerTouteListe")
        scene.read_boxes(lambda: backup.row_count("lvFichRep") == 0)
    scene.choose(backup)


def select(scene, fault, first, count):
    """Where something was told, or nothing came, all is chosen once more."""
    scene.start_program()
    backup = scene.open_backup_window()
    scene.fail_allocations(first, count)
    backup.drop("lvFichRep", *scene.chosen)
    # The rows come in a task of their own, after the drop.
    scene.read_boxes(lambda: scene.seen.told or backup.row_count("lvFichRep") == len(scene.chosen), PATIENCE_SECONDS)
    scene.read_boxes(lambda: scene._usable("frmBackup", "lvFichRep"), 60)
    scene.give_memory_back()
    if scene.seen.told or not backup.row_count("lvFichRep"):
        choose_again(scene, backup)
    scene.press_start(fault, backup, "cmdLancer", scene.give_new_password)
    scene.follow()


def open_restore(scene, fault, first, count):
    """The window with the list of the disk's items."""
    scene.start_program()
    main = scene.main_window(90)
    scene.fail_allocations(first, count)
    main.press("optRestaure")
    if is_whole := open_window(scene, "frmRestaureCD", "lstDrive", "cmdFermer"):
        restore = scene.program.window("frmRestaureCD")
        scene.choose_drive(restore, scene.restore_drive)
        scene.read_boxes(lambda: scene.seen.told or restore.control("cmdLancerRestauration").enabled, 60)
    scene.give_memory_back()
    if scene.seen.told:
        if is_whole:
            restore.press("cmdFermer")
        restore = scene.open_restore_window()
    scene.press_start(fault, restore, "cmdLancerRestauration", scene.give_password)
    scene.follow()


def shorten(first, count):
    return lambda scene: scene.fail_allocations(first, count)


def give_back(scene):
    scene.give_memory_back()


def declare(name, action, first, count):
    is_short = name in SHORT
    told = Expect(outcomes=(DONE, FAILED, REFUSED), medium=(OLD, NEW), may_lose_what_is_told=True)
    if action in ("a-run", "a-restore"):
        fault(name, "disk" if action == "a-run" else "restore", told, when_chosen=shorten(first, count), when_over=give_back,
              is_short=is_short)
    else:
        area, steps = {"opening-the-backup": ("selection", open_backup), "a-selection": ("selection", select),
                       "opening-the-restore": ("restore", open_restore)}[action]
        fault(name, area, Expect(outcomes=(DONE,), medium=(NEW,)), is_short=is_short,
              act=lambda scene, fault: steps(scene, fault, first, count))


for action, (most, step) in ACTIONS.items():
    for first in range(1, most + 1, STEP or step):
        declare(f"allocation-{first}-fails-in-{action}", action, first, 1)
    for first in range(1, most + 1, most // TRIES_OF_ALL_LATER):
        declare(f"memory-ends-at-allocation-{first}-of-{action}", action, first, ALL_LATER)
