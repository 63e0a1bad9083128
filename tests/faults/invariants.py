"""What holds whatever goes wrong. Each invariant gives a line for what breaks it, or nothing; docs/guarantees.md says them
in the words of a promise."""

from fault import DONE, EMPTY_LIST, KILLED, NEW, NOTHING, OLD, STOPPED

STILL_GOING = "no answer"
REPORT = "Erreur nº"


def is_told_of(fault, seen):
    """The program has said which error it goes on without."""
    return fault.expect.may_lose_what_is_told and any(REPORT in text for text in seen.told)


def is_left_to_the_check(fault, seen):
    """What the program cannot notice: the check calls such a disk faulty, or the comparison names each file; of a disc's image
    they are not asked here."""
    is_named = bool(seen.wrong) and all(name.rsplit("/", 1)[-1] in seen.compared for name in seen.wrong)
    is_allowed = fault.expect.unnoticed or is_told_of(fault, seen)
    return is_allowed and (seen.checked == "faulty" or is_named or fault.area == "disc")


def the_medium_holds_one_pair(fault, seen):
    """The old pair whole, the new pair whole, or what was there before: never one file of each, never a cut one."""
    if seen.medium in (OLD, NEW, NOTHING) or is_left_to_the_check(fault, seen):
        return None
    if fault.area == "disc" and seen.outcome != DONE:
        # A disc that was being written cannot be taken back.
        return None
    return f"on the medium: {seen.medium}"


def good_is_said_of_good_media_only(fault, seen):
    if fault.area == "restore" or seen.outcome != DONE or seen.medium == NEW:
        return None
    if is_left_to_the_check(fault, seen):
        return None
    return f"called finished, but on the medium: {seen.medium}, checked {seen.checked or 'never'}"


def no_failure_is_silent(fault, seen):
    """A person who is told nothing has what they asked for, or ended it themselves."""
    told = [text for text in seen.told if text != EMPTY_LIST or EMPTY_LIST in fault.expect.told]
    if told or seen.outcome in (KILLED, STOPPED) or fault.act is not None or seen.medium == NEW:
        return None
    return f"{seen.outcome}, and nothing was told"


def what_is_restored_is_whole(fault, seen):
    """Each file is back byte by byte or as it was, unless the program cannot notice."""
    if fault.area != "restore" or fault.expect.unnoticed or is_told_of(fault, seen):
        return None
    wrong = {name: state for name, state in seen.files.items() if state not in ("back", "untouched")}
    if seen.outcome == DONE:
        wrong |= {name: state for name, state in seen.files.items() if state != "back"}
    # What was being written when the power went is cut.
    return f"files {wrong}" if wrong and seen.outcome != KILLED else None


def what_goes_unnoticed_is_found_by_the_check(fault, seen):
    """A damaged medium is never called good by the check; what a restore called finished did not bring back, it names."""
    if seen.is_medium_damaged and seen.checked == "good":
        return "the check calls a damaged medium good"
    # A file that is missing in its place is no finding of the comparison: nothing of this computer lacks a backup then.
    unsaid = [name for name, state in seen.files.items() if seen.compared and state.startswith(("untouched", "other"))
              and name not in fault.expect.passed_over and name.rsplit("/", 1)[-1] not in seen.compared]
    return f"the comparison says nothing of {unsaid}" if unsaid and not seen.is_medium_damaged else None


def a_restore_leaves_the_medium_alone(fault, seen):
    return f"on the medium: {seen.medium}" if fault.area == "restore" and seen.medium != OLD else None


def nothing_outside_is_touched(_fault, seen):
    return f"outside: {seen.outside}" if seen.outside else None


def the_program_answers_and_ends(_fault, seen):
    if STILL_GOING in seen.outcome or seen.stray:
        return f"{seen.outcome}; left processes {seen.stray}"
    if seen.outcome != KILLED and seen.exit != "0":
        return f"ended with {seen.exit or 'nothing'}: {seen.outcome}"
    return None


def the_next_backup_is_good(_fault, seen):
    return None if seen.next_backup == "good" else f"next backup: {seen.next_backup}"


def the_next_restore_is_good(_fault, seen):
    return None if seen.next_restore == "good" else f"next restore: {seen.next_restore}"


def the_fault_happened(_fault, seen):
    return f"never met: {seen.unmet}" if seen.unmet else None


def what_may_go_unnoticed_is_wrong(fault, seen):
    """A run in which all is well has not tried what the program may overlook."""
    if not fault.expect.unnoticed or seen.outcome != DONE:
        return None
    is_well = set(seen.files.values()) == {"back"} and seen.checked == "good" if fault.area == "restore" else seen.medium == NEW
    return "nothing went wrong" if is_well else None


def it_is_as_declared(fault, seen):
    """The fault's own expectation."""
    problems = []
    if seen.outcome not in fault.expect.outcomes:
        problems.append(f"{seen.outcome!r} is none of {fault.expect.outcomes}")
    is_free = fault.area == "restore" or fault.expect.unnoticed or is_left_to_the_check(fault, seen)
    if seen.medium not in fault.expect.medium and not is_free:
        problems.append(f"{seen.medium!r} is none of {fault.expect.medium}")
    problems += [f"not told: {text!r}" for text in fault.expect.told if not any(text in line for line in seen.told)]
    return "; ".join(problems) or None


INVARIANTS = (the_medium_holds_one_pair, good_is_said_of_good_media_only, no_failure_is_silent, what_is_restored_is_whole,
              what_goes_unnoticed_is_found_by_the_check, a_restore_leaves_the_medium_alone, nothing_outside_is_touched,
              the_program_answers_and_ends, the_next_backup_is_good, the_next_restore_is_good,
              the_fault_happened, what_may_go_unnoticed_is_wrong, it_is_as_declared)


def breaches(fault, seen):
    """One line for each invariant that is broken."""
    found = [(invariant.__name__, invariant(fault, seen)) for invariant in INVARIANTS]
    return [f"{name.replace('_', ' ')}: {line}" for name, line in found if line]
