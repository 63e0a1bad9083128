"""Runs the layers of tests that are named on the command line and closes with one summary line."""

import json
import os
import re
import shutil
import signal
import subprocess
import sys
import time
import unittest
from concurrent.futures import ProcessPoolExecutor
from pathlib import Path

import workstation
from workstation import BUILD, PROJECT, Display, Workstation

LOGS = BUILD / "logs"
FUZZ_SECONDS = 8
SYSTEM_TESTS_AT_ONCE = 2


class Tally:
    """What the layers have come to so far."""

    def __init__(self):
        self.passed = self.failed = self.skipped = 0

    def add(self, name, passed, failed, skipped, started):
        self.passed += passed
        self.failed += failed
        self.skipped += skipped
        print(f"-- {name}: {passed} passed, {failed} failed, {skipped} skipped ({time.monotonic() - started:.0f} s)",
              flush=True)
        if passed + failed == 0:
            self.fail(f"{name} ran no test")

    def fail(self, reason):
        self.failed += 1
        print(f"FAILED {reason}", flush=True)


def google_test(tally, name, command, report, **options):
    """Runs a GoogleTest program that writes its report to the given file."""
    started = time.monotonic()
    report.unlink(missing_ok=True)
    log = LOGS / f"{name.replace(', ', '-').lower()}-tests.log"
    with open(log, "wb") as output:
        code = subprocess.run(command, stdout=output, stderr=subprocess.STDOUT, check=False, **options).returncode
    if not report.exists():
        print(log.read_text(encoding="utf-8", errors="replace")[-4000:])
        tally.fail(f"{name} ended with {code} and left no report (all of it: {log.relative_to(PROJECT)})")
        return
    passed = failed = skipped = 0
    for suite in json.loads(report.read_text(encoding="utf-8", errors="replace"))["testsuites"]:
        for test in suite["testsuite"]:
            test_name = f"{suite['name']}.{test['name']}"
            label = f"{name}: {test_name}"
            if test.get("failures"):
                failed += 1
                print(f"FAILED {label}")
                for failure in test["failures"]:
                    print("    " + failure["failure"].replace("\n", "\n    "))
            elif test["status"] == "NOTRUN" or test.get("result") == "SKIPPED":
                skipped += 1
                print(f"SKIPPED {label}: {skip_reason(log, test_name)}")
            else:
                passed += 1
    tally.add(name, passed, failed, skipped, started)
    if code != 0 and failed == 0:
        print(log.read_text(encoding="utf-8", errors="replace")[-4000:])
        tally.fail(f"{name} ended with {code} (all of it: {log.relative_to(PROJECT)})")


def skip_reason(log, test):
    found = re.search(rf"\[ RUN      \] {re.escape(test)}\r?\n(.*?)\[  SKIPPED", log.read_text(errors="replace"), re.S)
    return " ".join(found.group(1).split()) if found else "disabled"


def windows_google_test(tally, name, program, with_display, beside=()):
    """Runs one of the Windows test programs, with the files it needs beside it, on a workstation with a removable drive."""
    folder = BUILD / "workstation" / program
    shutil.rmtree(folder, ignore_errors=True)
    display = Display() if with_display else None
    station = Workstation(folder, language="fr", display=display)
    try:
        station.add_drive("e", label="SAUVEGARDE")
        for file in (f"{program}.exe", *beside):
            shutil.copy2(workstation.BINARIES / file, station.path(r"C:\Tools") / file)
        google_test(tally, name,
                    station.wine_command(rf"C:\Tools\{program}.exe", r"--gtest_output=json:C:\Tools\report.json"),
                    station.path(r"C:\Tools\report.json"), env=station.environment, cwd=station.path(r"C:\Tools"))
    finally:
        station.remove()
        if display:
            display.stop()


def load_python_tests(folder):
    sys.path.insert(0, str(folder))
    return unittest.defaultTestLoader.discover(str(folder), pattern="test_*.py", top_level_dir=str(folder))


def flatten(suite):
    for entry in suite:
        if isinstance(entry, unittest.TestSuite):
            yield from flatten(entry)
        else:
            yield entry


def run_python_test(folder, identity):
    """Runs one test in this process; a failure's or a skip's text comes back with the kind of outcome."""
    if str(folder) not in sys.path:
        sys.path.insert(0, str(folder))
    result = unittest.TestResult()
    unittest.defaultTestLoader.loadTestsFromName(identity).run(result)
    problems = [text for _, text in result.failures + result.errors]
    problems += [f"{test} passed although it was expected to fail" for test in result.unexpectedSuccesses]
    if problems:
        return identity, "failed", "\n".join(problems)
    if result.skipped:
        return identity, "skipped", "; ".join(reason for _, reason in result.skipped)
    return identity, "passed" if result.testsRun else "failed", "" if result.testsRun else "did not run"


def python_tests(tally, name, folder, at_once):
    started = time.monotonic()
    counts = {"passed": 0, "failed": 0, "skipped": 0}
    tests = list(flatten(load_python_tests(folder)))
    broken = [test for test in tests if type(test).__name__ == "_FailedTest"]
    for test in broken:
        counts["failed"] += 1
        print(f"FAILED {name}: {test.id()} cannot be loaded\n{getattr(test, '_exception', '')}")
    identities = [test.id() for test in tests if test not in broken]
    with ProcessPoolExecutor(at_once) as pool:
        for identity, outcome, text in pool.map(run_python_test, [folder] * len(identities), identities):
            counts[outcome] += 1
            if outcome != "passed":
                indented = text.strip().replace("\n", "\n    ")
                print(f"{outcome.upper()} {name}: {identity}\n    {indented}", flush=True)
    tally.add(name, counts["passed"], counts["failed"], counts["skipped"], started)


def unit_layer(tally):
    python_tests(tally, "source", PROJECT / "tests" / "source", 2)
    report = BUILD / "native" / "unit-report.json"
    google_test(tally, "unit, native", [BUILD / "native" / "bin" / "unit_tests", f"--gtest_output=json:{report}"], report,
                cwd=PROJECT)
    windows_google_test(tally, "unit, Windows", "unit_tests", with_display=False)


def window_layer(tally):
    windows_google_test(tally, "window", "window_tests", with_display=True)
    windows_google_test(tally, "window, discs", "disc_tests", with_display=False, beside=["VirtualBurner.dll"])


def system_layer(tally):
    python_tests(tally, "system", PROJECT / "tests" / "system", SYSTEM_TESTS_AT_ONCE)


def fuzz_layer(tally):
    """A short run of each fuzzer."""
    started = time.monotonic()
    passed = failed = 0
    with ProcessPoolExecutor(os.cpu_count()) as pool:
        for name, code, text in pool.map(run_fuzzer, sorted((BUILD / "fuzz" / "bin").glob("*Fuzzer"))):
            if code == 0:
                passed += 1
            else:
                failed += 1
                print(f"FAILED fuzz: {name} ended with {code}\n{text}")
    tally.add("fuzz", passed, failed, 0, started)


def run_fuzzer(target):
    """Starts from the inputs that once broke the reader and from what earlier runs found."""
    kept = PROJECT / "tests" / "fuzz" / "corpus" / target.name
    found = BUILD / "fuzz" / "corpus" / target.name
    found.mkdir(parents=True, exist_ok=True)
    log = LOGS / f"{target.name}.log"
    corpora = [str(folder) for folder in (found, kept) if folder.is_dir()]
    with open(log, "wb") as output:
        code = subprocess.run([target, f"-max_total_time={FUZZ_SECONDS}", "-timeout=10", "-print_final_stats=1",
                               f"-artifact_prefix={BUILD / 'fuzz'}/{target.name}-", *corpora],
                              stdout=output, stderr=subprocess.STDOUT, check=False).returncode
    return target.name, code, log.read_text(encoding="utf-8", errors="replace")[-3000:]


def lint_layer(tally):
    """clang-tidy over every file of the native build."""
    started = time.monotonic()
    commands = json.loads((BUILD / "native" / "compile_commands.json").read_text(encoding="utf-8"))
    files = sorted({command["file"] for command in commands if Path(command["file"]).is_relative_to(PROJECT / "src")})
    failed = 0
    with ProcessPoolExecutor(os.cpu_count()) as pool:
        for file, output in pool.map(tidy, files):
            if output:
                failed += 1
                print(f"FAILED lint: {Path(file).relative_to(PROJECT)}\n{output}")
    tally.add("lint", len(files) - failed, failed, 0, started)


def tidy(file):
    done = subprocess.run(["clang-tidy", "-p", BUILD / "native", "--quiet", "--warnings-as-errors=*", file],
                          capture_output=True, text=True, check=False)
    return file, "" if done.returncode == 0 else done.stdout


LAYERS = {"unit": unit_layer, "window": window_layer, "system": system_layer, "fuzz": fuzz_layer, "lint": lint_layer}


def main():
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(1))
    LOGS.mkdir(parents=True, exist_ok=True)
    tally = Tally()
    for name in sys.argv[1:]:
        try:
            if name in ("unit", "window", "system"):
                workstation.prepare()
            LAYERS[name](tally)
        except (workstation.CannotHave, OSError) as failure:
            tally.fail(f"{name}: {failure}")
    print(f"{tally.passed} passed, {tally.failed} failed, {tally.skipped} skipped")
    return 1 if tally.failed else 0


if __name__ == "__main__":
    sys.exit(main())
