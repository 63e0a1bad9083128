"""What a fault is: a few lines that say how the workstation is arranged, when what goes wrong, and what must come of it."""

from dataclasses import dataclass, field

AREAS = ("disk", "disc", "restore", "selection", "start", "end")
# What may be on the medium afterwards.
OLD, NEW, NOTHING = "old pair whole", "new pair whole", "nothing"
# How the user's action ended.
DONE, REFUSED, FAILED, ENDED, KILLED = "done", "refused", "failed", "program ended", "program killed"
STOPPED = "stopped by the person"
# A list without a row, which is all that a medium with an empty list of items says.
EMPTY_LIST = "in the list: nothing"


def nothing(_scene):
    """A step in which nothing goes wrong."""


@dataclass(frozen=True)
class Expect:
    """What must come of a fault, beside the invariants that hold for all."""

    outcomes: tuple = (FAILED,)
    """One of these ends the action."""
    told: tuple = ()
    """Each of these stands in a box that the user reads."""
    medium: tuple = (OLD,)
    """One of these is on the medium after the next start."""
    unnoticed: bool = False
    """The program may call good what is not whole; then the check of the medium must find it. For a restore: files may be
    missing or cut though the restore is called finished. Something has to be wrong then, or the fault tried nothing."""
    may_lose_what_is_told: bool = False
    """What the program tells of by its number, and goes on without, may be missing; of a medium the check finds it."""
    passed_over: tuple = ()
    """Files that the comparison cannot open in their places, and says nothing of."""


@dataclass(frozen=True)
class Fault:
    name: str
    area: str
    expect: Expect
    arrange: object = nothing
    """Before the program starts."""
    when_open: object = nothing
    """The window is open, nothing chosen yet."""
    when_chosen: object = nothing
    """All is chosen; next comes the start button."""
    when_asked: object = nothing
    """The password dialog is open."""
    when_running: object = nothing
    """The password has been given; the program works."""
    when_over: object = nothing
    """The action has come to its end; the program may still run."""
    holds: str = ""
    """The program's call at which `when_held` happens: "write" or "read" and a part of the file's path."""
    when_held: object = nothing
    heal: object = nothing
    """What a person does afterwards, beside plugging in, freeing the disk and starting the computer again."""
    act: object = None
    """In place of the area's usual steps."""
    options: dict = field(default_factory=dict, hash=False)
    """What the scene is laid out with."""
    is_short: bool = False
    """Belongs to the short form, which runs with all tests."""


FAULTS = {}


def fault(name, area, expect, **steps):
    """Declares a fault."""
    if area not in AREAS or name in FAULTS:
        raise ValueError(f"{name}: {area} is no area, or the name is taken")
    FAULTS[name] = Fault(name, area, expect, **steps)


def all_faults():
    """Every declared fault by its name, area by area."""
    # The declarations need the table that stands above.
    import account_faults
    import disc_faults
    import disk_faults
    import memory_faults
    import restore_faults
    import selection_faults
    import start_faults
    declared = (disk_faults, disc_faults, restore_faults, selection_faults, memory_faults, start_faults,
                account_faults)
    if not all(declared):
        raise ImportError("a list of faults")
    return dict(sorted(FAULTS.items(), key=lambda entry: AREAS.index(entry[1].area)))
