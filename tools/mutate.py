#!/usr/bin/env python3
"""Breaks the logic of the rooms in small ways, one at a time, and tells which breaks no native unit test notices.

The sources are copied to build/mutants and built there without sanitizers and optimisation. A mutant is one object,
compiled from a changed text beside that copy and linked in place of the library's own: no source is ever changed. What
was found is kept, so a run that was broken off goes on, and a later one tries again only what no test had noticed.
"""

import argparse
import hashlib
import json
import os
import re
import resource
import shlex
import shutil
import subprocess
import sys
import time
import tomllib
from dataclasses import dataclass
from functools import cached_property
from pathlib import Path

from mutations import Mutation, mutations_of

PROJECT = Path(__file__).resolve().parent.parent
FOLDER = PROJECT / "build" / "mutants"
TREE = FOLDER / "tree"
BUILD = TREE / "build" / "native"
RESULTS = FOLDER / "results.jsonl"
EQUIVALENT = PROJECT / "tests" / "equivalent_mutants.toml"
# What the build reads.
COPIED = ("CMakeLists.txt", "CMakePresets.json", "cmake", "src", "tests", "docs", "packaging")
MEMORY_BYTES = 4 << 30
NOTICED, UNNOTICED, REFUSED = "noticed", "unnoticed", "refused"


@dataclass(frozen=True)
class Mutant:
    file: str
    source: str
    mutation: Mutation

    @cached_property
    def identity(self):
        change = self.mutation
        text = f"{change.start} {change.end} {change.text}\0{self.source}"
        return f"{self.file} {hashlib.sha256(text.encode()).hexdigest()[:16]}"

    def __str__(self):
        number, before, after = self.mutation.lines(self.source)
        return f"{self.file}:{number}: {self.mutation.kind}\n    - {before}\n    + {after}"

    def is_listed(self, entry):
        """Whether an entry means this mutant; where the line stands more than once, it names the one before it."""
        number, before, after = self.mutation.lines(self.source)
        above = self.source.split("\n")[number - 2].strip() if number > 1 else ""
        return (entry["file"], entry["line"], entry["becomes"]) == (self.file, before, after) and \
            entry.get("below", above) == above


def room_of(file):
    return str(Path(file).parent.relative_to("src"))


def equivalent_entries():
    return tomllib.loads(EQUIVALENT.read_text(encoding="utf-8")).get("mutant", []) if EQUIVALENT.exists() else []


def copy_sources():
    """Brings the copy up to date; what is the same keeps its time, so that it is not built again."""
    wanted = set()
    for name in COPIED:
        root = PROJECT / name
        for path in [root] if root.is_file() else [entry for entry in root.rglob("*") if entry.is_file()]:
            copy = TREE / path.relative_to(PROJECT)
            wanted.add(copy)
            if not copy.is_file() or copy.read_bytes() != path.read_bytes():
                copy.parent.mkdir(parents=True, exist_ok=True)
                shutil.copyfile(path, copy)
    for name in COPIED:
        for path in (TREE / name).rglob("*"):
            if path.is_file() and path not in wanted:
                path.unlink()


def run(command, **options):
    done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, errors="replace",
                          check=False, **options)
    if done.returncode:
        sys.exit(f"{' '.join(map(str, command))} ended with {done.returncode}\n{done.stdout[-4000:]}")
    return done.stdout


class Bench:
    """The build that mutants are linked into, and its tests."""

    def __init__(self):
        copy_sources()
        # Each mutant is one link; where there is a quicker linker than the usual one, it does them.
        linker = "-fuse-ld=lld" if shutil.which("ld.lld") else ""
        run(["cmake", "--preset", "native", "-DBACKUP_SANITIZE=OFF", "-DCMAKE_BUILD_TYPE=None",
             "-DCMAKE_CXX_FLAGS=-O0 -g0 -w", f"-DCMAKE_EXE_LINKER_FLAGS={linker}"], cwd=TREE)
        run(["cmake", "--build", "--preset", "native", "--target", "unit_tests"], cwd=TREE)
        link = run(["ninja", "-t", "commands", "unit_tests"], cwd=BUILD).splitlines()[-1]
        self._link = re.sub(r"-o bin/unit_tests", f"{FOLDER}/mutant.o -o {FOLDER}/unit_tests", link)
        self._compile = {}
        libraries = re.compile(r" -o (?:\S*/)?(?:backup|check)_logic\.dir/")
        for entry in json.loads((BUILD / "compile_commands.json").read_text(encoding="utf-8")):
            if libraries.search(entry["command"]):
                file = str(Path(entry["file"]).relative_to(TREE))
                self._compile[file] = self._compile_command(entry)
        self._tests = [self._with_benches(path) for folder in ("unit", "check")
                       for path in sorted((TREE / "tests" / folder).glob("*Test.cpp"))]
        everything = b"".join(path.read_bytes() for path in sorted((TREE / "tests").rglob("*")) if path.suffix in (".cpp", ".h"))
        self.tests_digest = hashlib.sha256(everything).hexdigest()[:16]
        before = resource.getrusage(resource.RUSAGE_CHILDREN)
        verdict, said = self._verdict([BUILD / "bin" / "unit_tests"], 600)
        if verdict != UNNOTICED:
            sys.exit(f"The tests fail without any mutant: {said}")
        after = resource.getrusage(resource.RUSAGE_CHILDREN)
        self._cpu_seconds = int(5 * (after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime)) + 5

    @property
    def files(self):
        return sorted(self._compile)

    @staticmethod
    def _compile_command(entry):
        words = shlex.split(entry["command"])
        if Path(words[0]).name == "ccache":
            words = words[1:]
        words[words.index("-o") + 1] = str(FOLDER / "mutant.o")
        words[words.index(entry["file"])] = str(FOLDER / "mutant.cpp")
        return [*words, "-iquote", str(Path(entry["file"]).parent)]

    def mutants_of(self, file):
        source = (TREE / file).read_text(encoding="utf-8")
        return [Mutant(file, source, mutation) for mutation in mutations_of(source)]

    def judge(self, mutant):
        """What became of a mutant: refused by the compiler, or noticed by the test that is named, or not noticed."""
        (FOLDER / "mutant.cpp").write_text(mutant.mutation.applied_to(mutant.source), encoding="utf-8")
        for command in (self._compile[mutant.file], ["/bin/sh", "-c", self._link]):
            done = subprocess.run(command, cwd=BUILD, capture_output=True, text=True, errors="replace", check=False)
            if done.returncode:
                return REFUSED, done.stderr.split("\n", 1)[0]
        near = self._suites_near(mutant.file)
        filters = ([[f"--gtest_filter={':'.join(f'{suite}.*' for suite in near)}"]] if near else []) + [[]]
        for words in filters:
            verdict, said = self._verdict([FOLDER / "unit_tests", *words], self._cpu_seconds)
            if verdict == NOTICED:
                break
        return verdict, said

    @staticmethod
    def _with_benches(test):
        """A test's source together with the benches that it stands on."""
        text = test.read_text(encoding="utf-8")
        benches = [TREE / "tests" / name for name in re.findall(r'^#include "(support/\w*Bench\.h)"', text, re.MULTILINE)]
        return text + "".join(bench.read_text(encoding="utf-8") for bench in benches)

    def _suites_near(self, file):
        """The suites that a file's own tests form: those whose sources include its header."""
        header = f'#include "{Path(file).relative_to("src").with_suffix(".h")}"'
        found = {suite for text in self._tests if header in text
                 for suite in re.findall(r"^TEST(?:_F|_P)?\((\w+), ", text, re.MULTILINE)}
        return sorted(found)

    @staticmethod
    def _verdict(command, cpu_seconds):
        def limit():
            resource.setrlimit(resource.RLIMIT_CPU, (cpu_seconds, cpu_seconds))
            resource.setrlimit(resource.RLIMIT_AS, (MEMORY_BYTES, MEMORY_BYTES))
            resource.setrlimit(resource.RLIMIT_CORE, (0, 0))

        scratch = FOLDER / "scratch"
        scratch.mkdir(parents=True, exist_ok=True)
        try:
            done = subprocess.run([*command, "--gtest_fail_fast", "--gtest_brief=1"], cwd=TREE, preexec_fn=limit,
                                  env={**os.environ, "TMPDIR": str(scratch)}, stdin=subprocess.DEVNULL,
                                  capture_output=True, text=True, errors="replace", check=False, timeout=20 * cpu_seconds)
        except subprocess.TimeoutExpired:
            return NOTICED, "no end"
        finally:
            shutil.rmtree(scratch, ignore_errors=True)
        if done.returncode == 0:
            return UNNOTICED, ""
        failed = re.search(r"^\[  FAILED  \] (\S+?\.\S+?)(?:,| |$)", done.stdout, re.MULTILINE)
        return NOTICED, failed[1] if failed else f"ended with {done.returncode}"


class Results:
    """What became of each mutant, kept in a file."""

    def __init__(self, tests_digest):
        self._tests_digest = tests_digest
        self._known = {}
        if RESULTS.exists():
            for line in RESULTS.read_text(encoding="utf-8").splitlines():
                record = json.loads(line)
                self._known[record["mutant"]] = record

    def verdict(self, mutant):
        """Nothing for one that was not judged yet; what no test noticed may be noticed by tests that are new."""
        record = self._known.get(mutant.identity)
        if record is None or record["verdict"] == UNNOTICED and record["tests"] != self._tests_digest:
            return None
        return record["verdict"]

    def keep(self, mutant, verdict, said):
        record = {"mutant": mutant.identity, "verdict": verdict, "said": said, "tests": self._tests_digest,
                  "change": str(mutant)}
        self._known[mutant.identity] = record
        with open(RESULTS, "a", encoding="utf-8") as file:
            file.write(json.dumps(record) + "\n")


@dataclass
class Room:
    name: str
    mutants: list
    equivalent: int = 0
    noticed: int = 0
    unnoticed: tuple = ()

    @property
    def tried(self):
        return self.noticed + len(self.unnoticed)

    def row(self):
        share = f"{100 * self.noticed / self.tried:5.1f} %" if self.tried else "      -"
        return f"{self.name:<16}{len(self.mutants):>10}{self.equivalent:>12}{self.tried:>8}{self.noticed:>10}{share:>10}"


def in_order(mutants, seed):
    """In an order that the seed decides. One that goes, as into the list of those that change nothing, moves no other."""
    return sorted(mutants, key=lambda mutant: hashlib.sha256(f"{seed} {mutant.identity}".encode()).digest())


def try_room(room, count, seed, bench, results):
    """Tries so many of a room's mutants; those that do not compile do not count."""
    for mutant in in_order(room.mutants, seed):
        if room.tried >= count:
            return
        verdict = results.verdict(mutant)
        if verdict is None:
            verdict, said = bench.judge(mutant)
            results.keep(mutant, verdict, said)
            if verdict == UNNOTICED:
                print(f"unnoticed: {mutant}", flush=True)
        if verdict == NOTICED:
            room.noticed += 1
        elif verdict == UNNOTICED:
            room.unnoticed += (mutant,)


def rooms_of(bench, wanted):
    entries, rooms = equivalent_entries(), {}
    for file in bench.files:
        if wanted and not {file, room_of(file)} & set(wanted):
            continue
        room = rooms.setdefault(room_of(file), Room(room_of(file), []))
        for mutant in bench.mutants_of(file):
            if any(mutant.is_listed(entry) for entry in entries):
                room.equivalent += 1
            else:
                room.mutants.append(mutant)
    return list(rooms.values())


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n", 1)[0])
    parser.add_argument("where", nargs="*", help="rooms (archive, platform/discs) or files (src/core/Currency.cpp); else all")
    parser.add_argument("--count", type=int, default=300, help="how many mutants to try, the same number in each room")
    parser.add_argument("--seed", type=int, default=1, help="which of them")
    arguments = parser.parse_args()
    os.nice(10)
    FOLDER.mkdir(parents=True, exist_ok=True)
    begin = time.monotonic()
    bench = Bench()
    results = Results(bench.tests_digest)
    rooms = rooms_of(bench, arguments.where)
    if not rooms:
        parser.error("there is no such room or file: " + " ".join(arguments.where))
    for room in rooms:
        try_room(room, -(-arguments.count // len(rooms)), arguments.seed, bench, results)
    print("\nNo test noticed:\n" + "\n".join(str(mutant) for room in rooms for mutant in room.unnoticed) + "\n")
    print(f"{'room':<16}{'mutants':>10}{'equivalent':>12}{'tried':>8}{'noticed':>10}")
    for room in rooms:
        print(room.row())
    cpu = resource.getrusage(resource.RUSAGE_CHILDREN)
    print(f"{time.monotonic() - begin:.0f} s, of the processor {cpu.ru_utime + cpu.ru_stime:.0f} s")
    return 1 if any(room.unnoticed for room in rooms) else 0


if __name__ == "__main__":
    sys.exit(main())
