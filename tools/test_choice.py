"""What the words after ./test mean: which layers run, what of each, and what has to be built for that."""

import re
import sys
from dataclasses import dataclass, field
from fnmatch import fnmatchcase
from pathlib import Path

PROJECT = Path(__file__).resolve().parent.parent
LAYERS = ("unit", "windows-unit", "window", "system", "fuzz", "lint")
DEFAULT_LAYERS = LAYERS[:-1]
# The two programs of the layer "window", each with the folder of its tests.
WINDOW_PROGRAMS = {"window_tests": PROJECT / "tests" / "window", "disc_tests": PROJECT / "tests" / "virtual_burner"}
SYSTEM_TARGETS = ("Backup", "BackupCheck", "uidriver", "disc_console", "VirtualBurner", "faulty_archiver", "faulty_memory",
                  "planted")
DEFAULT_FUZZ_SECONDS = 5
INPUTS = "inputs"

USAGE = """usage: ./test [LAYER [WHAT...]]...
  ./test                                 every layer but lint
  ./test all                             every layer, clang-tidy too
  ./test unit BackupRunTest.*            one suite of the native unit tests
  ./test windows-unit BackupRunTest.*    the same under Wine
  ./test window RestoreWindow.Escape*    one test of a window, under Wine
  ./test system test_main_job            system tests by module, class or test
  ./test fuzz ControlFileFuzzer 30       one fuzzer for 30 seconds
  ./test fuzz 10000000 inputs            every fuzzer for so many inputs, and what of the code they reached
  ./test lint src/backup/BackupRun.cpp   clang-tidy over one file
Without WHAT, a layer runs whole; unit begins with the rules that every source keeps to."""


class Usage(Exception):
    """The words mean nothing."""


@dataclass
class Choice:
    """A layer with what of it is wanted; with no filters, all of it."""
    layer: str
    filters: list = field(default_factory=list)

    def _number(self):
        numbers = [int(word) for word in self.filters if word.isdigit()]
        return numbers[-1] if numbers else None

    def inputs(self):
        """How many inputs each fuzzer is to try; nothing when it runs for a time."""
        return self._number() if INPUTS in self.filters else None

    def seconds(self):
        return self._number() or DEFAULT_FUZZ_SECONDS

    def names(self):
        return [word for word in self.filters if not word.isdigit() and word != INPUTS]


def choices(words):
    if list(words) == ["all"]:
        return [Choice(layer) for layer in LAYERS]
    found = []
    for word in words:
        if word in LAYERS:
            found.append(Choice(word))
        elif found and not word.startswith("-"):
            found[-1].filters.append(word)
        else:
            raise Usage(word)
    return found or [Choice(layer) for layer in DEFAULT_LAYERS]


def google_filter(filters):
    """The filter as GoogleTest reads it; a bare suite stands for all of its tests."""
    return ":".join(word if re.search(r"[.*?]", word) else f"{word}.*" for word in filters) or "*"


def tests_in(folder):
    """The names of the tests that a folder's sources define."""
    for source in folder.glob("*Test.cpp"):
        for suite, test in re.findall(r"^TEST(?:_F|_P)?\((\w+), (\w+)\)", source.read_text(encoding="utf-8"), re.MULTILINE):
            yield f"{suite}.{test}"


def has_one(folder, filters):
    patterns = google_filter(filters).split("-")[0].split(":")
    return any(fnmatchcase(test, pattern) for test in tests_in(folder) for pattern in patterns if pattern)


def window_programs(filters):
    """The programs that have one of the tests; both when no source knows the name, and the run will say so."""
    return [program for program, folder in WINDOW_PROGRAMS.items() if has_one(folder, filters)] or list(WINDOW_PROGRAMS)


def unit_programs(filters):
    """The same natively, where the large one also has tests whose names are put together."""
    if not filters:
        return ["unit_tests", "low_memory_tests"]
    tests = PROJECT / "tests"
    is_low_memory = has_one(tests / "low_memory", filters)
    is_unit = not is_low_memory or any(has_one(tests / folder, filters) for folder in ("unit", "check"))
    return ["unit_tests"] * is_unit + ["low_memory_tests"] * is_low_memory


def matches(identity, filters):
    """Whether a Python test, named module.class.test, is one of those wanted."""
    return not filters or any(fnmatchcase(f".{identity}.", f"*.{word}.*") for word in filters)


def is_wanted(filters, case):
    """Whether the filters let a system test run that stands on a case such as InstallerCase."""
    for path in (PROJECT / "tests" / "system").glob("test_*.py"):
        text = path.read_text(encoding="utf-8")
        names = re.findall(r"^class (\w+)|^    def (test_\w+)", text, re.M) if f"({case})" in text else []
        if any(matches(f"{path.stem}.{name or test}", filters) for name, test in names):
            return True
    return False


def packages(filters):
    """What of packaging/ has to be run before the system tests; the kit brings the installer with it."""
    if is_wanted(filters, "KitCase"):
        return ["kit"]
    return ["installer"] * any(is_wanted(filters, case) for case in ("InstallerCase", "PackagedCase"))


def needs(wanted):
    """The steps of the set-up, in order: a preset with its targets (none: all of it), or another step's name."""
    targets, steps = {}, []

    def build(preset, *names):
        targets.setdefault(preset, set()).update(names)

    for choice in wanted:
        if choice.layer == "unit":
            build("native", "low_memory_tests", "unit_tests")
        elif choice.layer == "windows-unit":
            build("windows", "unit_tests")
        elif choice.layer == "window":
            programs = window_programs(choice.filters)
            build("windows", *programs, *(("VirtualBurner",) if "disc_tests" in programs else ()))
        elif choice.layer == "system":
            build("windows", *SYSTEM_TARGETS)
            steps += ["archiver", *packages(choice.filters)]
        elif choice.layer == "fuzz":
            build("fuzz", *(choice.names() or ["all"]))
        elif choice.layer == "lint":
            steps += ["configure native", "configure windows", "configure fuzz"]
    if {choice.layer for choice in wanted if not choice.filters} >= set(DEFAULT_LAYERS):
        targets = {preset: {"all"} for preset in targets}
    return [f"build {preset} {' '.join(sorted(names))}" for preset, names in targets.items()] + steps


def main():
    try:
        wanted = choices(sys.argv[1:])
    except Usage:
        print(USAGE)
        return 0 if sys.argv[1:] == ["--help"] else 2
    print("\n".join(needs(wanted)))
    return 0


if __name__ == "__main__":
    sys.exit(main())
