"""clang-tidy over all that is shipped and over the tests; what did not change since it was found clean is not read again.

Each file is read with the options of the build that compiles it: the logic natively, windows with the headers of MinGW.
Nearly all of the time goes into the headers, so files with the same options are read together.
"""

import hashlib
import json
import os
import re
import shlex
import subprocess
from concurrent.futures import ThreadPoolExecutor
from dataclasses import dataclass, field
from fnmatch import fnmatchcase
from functools import partial
from pathlib import Path

from test_report import Report
from workstation import BUILD, PROJECT

CLEAN = BUILD / "lint"
CONFIGURATION = PROJECT / ".clang-tidy"
VOCABULARY = PROJECT / "docs" / "vocabulary.md"
HEADERS = f"--header-filter=^{re.escape(str(PROJECT))}/(src|tests|bench)/"
# The slow three quarters of the checks look for faults that reach a user.
LEFT_OUT_FOR_TESTS = "-bugprone-*,-clang-analyzer-*"
INCLUDE = re.compile(r'^\s*#\s*include\s+[<"]([^">]+)[">]', re.MULTILINE)
# A file that two presets compile is read as the first of them does.
PRESETS = ("native", "windows", "fuzz")
# How many files are read together, of the tests (which the quick checks read) and of what is shipped.
BATCH_OF_TESTS, BATCH_OF_SOURCES = 12, 6
# Without it the analyzer follows no paths but those of the one main file.
ALL_PATHS = ("-Xclang", "-analyzer-opt-analyze-headers")
# A name that a file gives to something outside classes, and perhaps keeps to itself as another file does.
OWN_NAME = re.compile(r"^[^\s#/}].*?(?<![\w:])([A-Z]\w*[a-z]\w*)(?=\(|\{| =| \{| :| final)", re.MULTILINE)
# Whether an alias is used, clang-tidy asks in the one main file only.
ALIAS = re.compile(r"^\s*namespace \w+ =", re.MULTILINE)
FINDING = re.compile(r"^(?=(?:/[^\s:]+:\d+:\d+: )?(?:error|warning): )", re.MULTILINE)
NAME_FINDING = re.compile(r"[^\n]*: invalid case style for ([\w ]+) '(\w+)' \[readability-identifier-naming")
# What comes of reading files together: it has no place in a file.
OWN_INCLUDE = "error: suspicious #include of file with '.cpp' extension"
EXEMPTION = re.compile(r"^ *- \{ key: readability-identifier-naming\.(\w+)IgnoredRegexp, value: '(.*)' \}\n", re.MULTILINE)


@dataclass(frozen=True)
class Unit:
    file: Path
    options: tuple

    def name(self):
        return str(self.file.relative_to(PROJECT))

    def is_shipped(self):
        return self.file.is_relative_to(PROJECT / "src")

    def text(self):
        return self.file.read_text(encoding="utf-8")


@dataclass
class Batch:
    kind: tuple
    units: list = field(default_factory=list)
    names: set = field(default_factory=set)


def clang_options(command, target_options):
    """What of a compiler's command line says how the file reads, for clang."""
    words = iter(shlex.split(command))
    kept = []
    for word in words:
        if word in ("-isystem", "-include"):
            kept += [word, next(words)]
        elif word.startswith(("-D", "-I", "-std=", "-isystem")):
            kept.append(word)
    return (*target_options, *kept)


def mingw_options():
    """The target and the headers of the compiler that builds for Windows; clang brings its own built-in ones."""
    said = subprocess.run(["x86_64-w64-mingw32-g++-posix", "-E", "-x", "c++", "/dev/null", "-v"],
                          capture_output=True, text=True, check=True).stderr
    folders = re.search(r"<\.\.\.> search starts here:\n(.*?)End of search list", said, re.S).group(1).split()
    own = [folder for folder in folders if not re.search(r"/gcc/[^/]+/[^/]+/include$", folder)]
    return ("--target=x86_64-w64-mingw32", "-nostdinc++", *[word for folder in own for word in ("-isystem", folder)])


def units():
    """Every source of the project, once."""
    found = {}
    for preset in PRESETS:
        target_options = mingw_options() if preset == "windows" else ()
        commands = json.loads((BUILD / preset / "compile_commands.json").read_text(encoding="utf-8"))
        for command in commands:
            file = Path(command["file"])
            if file.is_relative_to(PROJECT) and file.suffix == ".cpp" and file not in found:
                found[file] = Unit(file, clang_options(command["command"], target_options))
    return [found[file] for file in sorted(found)]


def given_names():
    """The names that the vocabulary lists, and those of the forms' controls, which their members and handlers carry."""
    headers = (PROJECT / "src").rglob("*Ids.h")
    # Controls of one name that differ by a number share their handlers.
    controls = [name for header in headers
                for number in re.findall(r"#define IDC_(\w+)", header.read_text(encoding="utf-8"))
                for name in (number, number.rstrip("0123456789"))]
    rows = [line for line in VOCABULARY.read_text(encoding="utf-8").splitlines() if line.startswith("| `")]
    listed = [word for row in rows for word in re.findall(r"`(\w+)`", row.split("|")[1]) if word.isidentifier()]
    return sorted({*controls, *listed})


class Cleanness:
    """Which files were found clean, each together with all that it includes and the rules it was read by."""

    def __init__(self, rules):
        self._rules = rules
        self._contents = {}
        CLEAN.mkdir(parents=True, exist_ok=True)

    def mark_of(self, unit):
        digest = hashlib.sha256(self._rules.encode())
        for word in unit.options:
            digest.update(word.replace(str(PROJECT), "").encode() + b"\0")
        for path in sorted(self._with_includes(unit)):
            digest.update(str(path.relative_to(PROJECT)).encode() + b"\0" + self._content(path)[0])
        return CLEAN / digest.hexdigest()

    def _with_includes(self, unit):
        folders = [Path(word[2:]) for word in unit.options if word.startswith(f"-I{PROJECT}")]
        seen, waiting = set(), [unit.file]
        while waiting:
            path = waiting.pop()
            if path not in seen:
                seen.add(path)
                for name in self._content(path)[1]:
                    places = [folder / name for folder in (path.parent, *folders)]
                    waiting += [place.resolve() for place in places if place.is_file()][:1]
        return seen

    def _content(self, path):
        if path not in self._contents:
            data = path.read_bytes()
            self._contents[path] = (hashlib.sha256(data).digest(), INCLUDE.findall(data.decode("utf-8", "replace")))
        return self._contents[path]


class Rules:
    """The checks. Whether a name may be as it is, is decided here: clang-tidy would hold every name of every header of the
    system against the whole vocabulary, which took it longer than all else."""

    def __init__(self):
        _, checks = CONFIGURATION.read_text(encoding="utf-8").split("Checks:", 1)
        self.text = "Checks:" + checks.replace("GIVEN_NAMES", "|".join(given_names()))
        self.for_clang_tidy = EXEMPTION.sub("", self.text)
        self._exemptions = {kind: re.compile(names) for kind, names in EXEMPTION.findall(self.text)}

    def _is_exempt(self, finding):
        if finding.startswith(OWN_INCLUDE):
            return True
        said = NAME_FINDING.match(finding)
        exempt = said and self._exemptions.get(said.group(1).title().replace(" ", ""))
        return bool(exempt and exempt.fullmatch(said.group(2)))

    def findings(self, output):
        return "".join(finding for finding in FINDING.split(output) if not self._is_exempt(finding)).strip()


def batches(waiting):
    """The units in groups that are read together: of the same options and rules, and without a name that two of them have."""
    found = []
    for unit in waiting:
        text, limit = unit.text(), BATCH_OF_SOURCES if unit.is_shipped() else BATCH_OF_TESTS
        kind, names = (unit.options, unit.is_shipped(), unit if ALIAS.search(text) else None), set(OWN_NAME.findall(text))
        place = next((batch for batch in found if batch.kind == kind and len(batch.units) < limit
                      and not names & batch.names), None)
        if place is None:
            place = Batch(kind)
            found.append(place)
        place.units.append(unit)
        place.names |= names
    return [batch.units for batch in found]


def tidy(batch, rules):
    """What is found in files that are read as if the last one included the others."""
    checks = [] if batch[0].is_shipped() else [f"--checks={LEFT_OUT_FOR_TESTS}"]
    included = [word for unit in batch[:-1] for word in ("-include", str(unit.file))]
    done = subprocess.run(["clang-tidy", "--quiet", "--warnings-as-errors=*", HEADERS, f"--config={rules.for_clang_tidy}",
                           *checks, str(batch[-1].file), "--", "clang++", *batch[-1].options, *ALL_PATHS, *included],
                          capture_output=True, text=True, check=False)
    if done.returncode in (0, 1) and (done.returncode == 0 or done.stdout.strip()):
        return rules.findings(done.stdout)
    return done.stdout.strip() + done.stderr[-2000:]


def read(batch, rules):
    """Each unit with what is wrong with it. Where that is something, the files that it names are read again without the
    others, down to one: what only comes of reading files together is none of theirs."""
    output = tidy(batch, rules)
    if not output or len(batch) == 1:
        return {unit: output for unit in batch}
    named = [unit for unit in batch if re.search(rf"^{re.escape(str(unit.file))}:.*(?:error|warning): ", output, re.MULTILINE)]
    others = [unit for unit in batch if unit not in named]
    parts = [named, others] if named and others else [[unit] for unit in batch]
    return {unit: said for part in parts for unit, said in read(part, rules).items()}


def lint_tests(choice):
    report = Report("lint")
    rules = Rules()
    version = subprocess.run(["clang-tidy", "--version"], capture_output=True, text=True, check=True).stdout
    cleanness = Cleanness(rules.text + LEFT_OUT_FOR_TESTS + version)
    wanted = [unit for unit in units()
              if not choice.filters or any(fnmatchcase(unit.name(), pattern) for pattern in choice.filters)]
    marks = {unit: cleanness.mark_of(unit) for unit in wanted}
    with ThreadPoolExecutor(os.cpu_count()) as pool:
        unread = [unit for unit in wanted if not marks[unit].exists()]
        for verdicts in pool.map(partial(read, rules=rules), batches(unread)):
            for unit, output in verdicts.items():
                report.count("failed" if output else "passed", unit.name(), output)
                if not output:
                    marks[unit].touch()
    for _ in range(len(wanted) - len(unread)):
        report.count("passed")
    if not choice.filters:
        for stale in set(CLEAN.iterdir()) - set(marks.values()):
            stale.unlink()
    return report.close()
