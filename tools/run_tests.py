"""Runs the layers of tests that are named on the command line, or a part of them, and closes with one summary line."""

import json
import multiprocessing
import os
import re
import shutil
import signal
import subprocess
import sys
import time
import unittest
from concurrent.futures import ProcessPoolExecutor, ThreadPoolExecutor
from functools import partial
from itertools import repeat
from pathlib import Path

import surroundings
import workstation
from lint import lint_tests
from test_choice import choices, google_filter, matches, unit_programs, window_programs
from test_report import Report
from workstation import BUILD, PROJECT, Display, Workstation

LOGS = BUILD / "logs"
PROGRAM_TIMEOUT_SECONDS = 600
# Most tests wait more than they compute: two at once leave two thirds of two processors idle. More would disturb those that
# measure time.
AT_ONCE = 3
# Fonts grow in steps of their own: what fits at one scale of the screen may be cut at the next.
SCALES = (125, 150, 175, 200)
LAYOUT_TESTS = ("*CaptionFits*", "*CaptionsFit*", "*NoCaptionIsCut*", "*TheProgressStandsWhereItBelongs",
                "*PlaceholderRowsAreNotCut*", "*DialogUnitsAreNoLess*")
# Set by a machine that does not decide alone what a single failure among the slow tests means.
SECOND_TRY = "BACKUP_SECOND_TRY"
# Parts run in threads beside each other, and a process that was forked while others hold locks may hang.
SPAWN = multiprocessing.get_context("spawn")
# What a fuzzer frees is kept from use a little less long, and where it came from told in fewer steps: an input allocates
# little. A choice among found inputs by how rare they are would take a third of the time.
FUZZ_ENVIRONMENT = {"ASAN_OPTIONS": "quarantine_size_mb=8:malloc_context_size=4", **os.environ}


def google_test(report, command, result, **options):
    """Runs a GoogleTest program that writes its results to the given file."""
    result.unlink(missing_ok=True)
    log = LOGS / f"{report.name.replace(', ', '-').lower()}-tests.log"
    with open(log, "wb") as output:
        try:
            code = subprocess.run(command, stdout=output, stderr=subprocess.STDOUT, check=False,
                                  timeout=PROGRAM_TIMEOUT_SECONDS, **options).returncode
        except subprocess.TimeoutExpired:
            code = f"no answer within {PROGRAM_TIMEOUT_SECONDS} s"
    said = log.read_text(encoding="utf-8", errors="replace")
    where = f"(all of it: {log.relative_to(PROJECT)})"
    if not result.exists():
        report.count("failed", f"ended with {code} and left no results {where}", said[-4000:])
        return
    for suite in json.loads(result.read_text(encoding="utf-8", errors="replace"))["testsuites"]:
        for test in suite["testsuite"]:
            name = f"{suite['name']}.{test['name']}"
            if test.get("failures"):
                report.count("failed", name, "\n".join(failure["failure"] for failure in test["failures"]))
            elif test["status"] == "NOTRUN" or test.get("result") == "SKIPPED":
                report.count("skipped", name, skip_reason(said, name))
            else:
                report.count("passed")
    if code != 0 and report.failed == 0:
        report.count("failed", f"ended with {code} {where}", said[-4000:])


def skip_reason(said, test):
    found = re.search(rf"\[ RUN      \] {re.escape(test)}\r?\n(.*?)\[  SKIPPED", said, re.S)
    return " ".join(found.group(1).split()) if found else "disabled"


def filter_option(filters):
    return [f"--gtest_filter={google_filter(filters)}"] if filters else []


def native_tests(filters, name="unit, native", program="unit_tests"):
    report = Report(name)
    result = BUILD / "native" / f"{program}-report.json"
    google_test(report, [BUILD / "native" / "bin" / program, f"--gtest_output=json:{result}",
                         *filter_option(filters)], result, cwd=PROJECT)
    return report.close()


def windows_tests(name, program, filters=(), with_display=False, beside=(), scale=100):
    """Runs one of the Windows test programs, with the files it needs beside it, on a workstation with a removable drive."""
    report = Report(name)
    folder = BUILD / "workstation" / (program if scale == 100 else f"{program}-{scale}")
    shutil.rmtree(folder, ignore_errors=True)
    # A screen of that scale has as many more pixels; on a smaller one the system cuts windows that can be resized.
    size = f"{1280 * scale // 100}x{1024 * scale // 100}"
    display = Display(size) if with_display else None
    station = Workstation(folder, language="fr", display=display, has_program=False, scale_percent=scale)
    try:
        station.add_drive("e", label="SAUVEGARDE")
        for file in (f"{program}.exe", *beside):
            shutil.copy2(workstation.BINARIES / file, station.path(r"C:\Tools") / file)
        google_test(report,
                    station.wine_command(rf"C:\Tools\{program}.exe", r"--gtest_output=json:C:\Tools\report.json",
                                         *filter_option(filters)),
                    station.path(r"C:\Tools\report.json"), env=station.environment, cwd=station.path(r"C:\Tools"))
    finally:
        station.remove()
        if display:
            display.stop()
    return report.close()


def flatten(suite):
    for entry in suite:
        if isinstance(entry, unittest.TestSuite):
            yield from flatten(entry)
        else:
            yield entry


def run_python_test(folder, identity, round_name):
    """Runs one test in this process; a failure's or a skip's text comes back with the kind of outcome."""
    os.environ[surroundings.VARIABLE] = round_name
    if str(folder) not in sys.path:
        sys.path.insert(0, str(folder))
    result = unittest.TestResult()
    begun = time.monotonic()
    tests = unittest.defaultTestLoader.loadTestsFromName(identity)
    around = next((str(surroundings.chosen(type(test))) for test in flatten(tests) if hasattr(test, "keeps")), "")
    tests.run(result)
    seconds = time.monotonic() - begun
    problems = [text for _, text in result.failures + result.errors]
    problems += [f"{test} passed although it was expected to fail" for test in result.unexpectedSuccesses]
    if problems:
        problems += [f"Surroundings: {around}"] if around else []
        return identity, seconds, "failed", "\n".join(problems)
    if result.skipped:
        return identity, seconds, "skipped", "; ".join(reason for _, reason in result.skipped)
    return identity, seconds, "passed" if result.testsRun else "failed", "" if result.testsRun else "did not run"


def tried_again(outcomes, folder, round_name):
    """The outcomes; where the machine asks for it, a single failure among them is tried once more, alone. A test that
    passes then is told as unsteady, with what it said at first: a defect to be mended, but of the test or of the machine
    as likely as of the program."""
    failures = [place for place, outcome in enumerate(outcomes) if outcome[2] == "failed"]
    if not os.environ.get(SECOND_TRY) or len(failures) != 1:
        return outcomes
    identity, seconds, _, text = outcomes[failures[0]]
    with ProcessPoolExecutor(1, SPAWN) as pool:
        again = pool.submit(run_python_test, folder, identity, round_name).result()
    outcome = "unsteady" if again[2] == "passed" else "failed"
    outcomes[failures[0]] = (identity, seconds + again[1], outcome, text if outcome == "unsteady" else again[3])
    return outcomes


def python_tests(name, folder, filters=(), round_name=""):
    report = Report(f"{name}, {round_name}" if round_name else name)
    sys.path.insert(0, str(folder))
    suite = unittest.defaultTestLoader.discover(str(folder), pattern="test_*.py", top_level_dir=str(folder))
    identities, took = [], []
    for test in flatten(suite):
        if type(test).__name__ == "_FailedTest":
            report.count("failed", f"{test.id()} cannot be loaded", str(getattr(test, "_exception", "")))
        elif matches(test.id(), filters) and (not round_name or hasattr(test, "keeps")):
            identities.append(test.id())
    with ProcessPoolExecutor(AT_ONCE, SPAWN) as pool:
        outcomes = list(pool.map(run_python_test, repeat(folder), identities, repeat(round_name)))
    if name == "system":
        outcomes = tried_again(outcomes, folder, round_name)
    for identity, seconds, outcome, text in outcomes:
        report.count(outcome, identity, text)
        took.append((seconds, identity))
    lines = [f"{seconds:7.1f} s  {identity}\n" for seconds, identity in sorted(took, reverse=True)]
    (LOGS / f"{report.name.replace(', ', '-')}-times.txt").write_text("".join(lines), encoding="utf-8")
    return report.close()


def fuzz_tests(choice):
    """A run of each fuzzer, or of those named, for some seconds or for so many inputs."""
    report = Report("fuzz")
    inputs = choice.inputs()
    limits = [f"-max_total_time={choice.seconds()}"] if inputs is None else [f"-runs={inputs}", "-print_coverage=1"]
    targets = [target for target in sorted((BUILD / "fuzz" / "bin").glob("*Fuzzer"))
               if not choice.names() or target.name in choice.names()]
    with ProcessPoolExecutor(AT_ONCE, SPAWN) as pool:
        for name, code, text in pool.map(run_fuzzer, targets, [limits] * len(targets)):
            report.count("failed" if code else "passed", f"{name} ended with {code}", text)
            if inputs is not None:
                print(f"{name}: {reached(text)}")
    return report.close()


def reached(said):
    """How many inputs a fuzzer tried and what they reached, by its own last words."""
    found = re.findall(r"^#(\d+)\s+DONE\s+cov: (\d+) ft: (\d+) corp: (\d+)", said, re.MULTILINE)
    functions = len(re.findall(r"^COVERED_FUNC", said, re.MULTILINE))
    missed = len(re.findall(r"^UNCOVERED_FUNC: .* (?:/|\.\./)\S*src/", said, re.MULTILINE))
    return "{} inputs, {} edges, {} features, corpus {}".format(*found[-1]) + \
        f", {functions} functions reached, {missed} of src not" if found else "no end"


def run_fuzzer(target, limits):
    """Starts from the inputs that once broke the reader and from what earlier runs found."""
    kept = PROJECT / "tests" / "fuzz" / "corpus" / target.name
    found = BUILD / "fuzz" / "corpus" / target.name
    found.mkdir(parents=True, exist_ok=True)
    log = LOGS / f"{target.name}.log"
    corpora = [str(folder) for folder in (found, kept) if folder.is_dir()]
    with open(log, "wb") as output:
        code = subprocess.run([target, *limits, "-timeout=10", "-print_final_stats=1", "-entropic=0",
                               f"-artifact_prefix={BUILD / 'fuzz'}/{target.name}-", *corpora], env=FUZZ_ENVIRONMENT,
                              stdout=output, stderr=subprocess.STDOUT, check=False).returncode
    said = log.read_text(encoding="utf-8", errors="replace")
    return target.name, code, said if "-print_coverage=1" in limits else said[-3000:]


def parts(choice):
    """The parts of a layer, as functions that give their reports."""
    filters = choice.filters
    if choice.layer == "unit":
        rules = [partial(python_tests, "source", PROJECT / "tests" / "source")]
        names = {"unit_tests": "unit, native", "low_memory_tests": "unit, low memory"}
        return ([] if filters else rules) + [partial(native_tests, filters, names[program], program)
                                             for program in unit_programs(filters)]
    if choice.layer == "windows-unit":
        return [partial(windows_tests, "unit, Windows", "unit_tests", filters, with_display=False)]
    if choice.layer == "window":
        programs = {"disc_tests": partial(windows_tests, "window, discs", "disc_tests", filters, with_display=True,
                                          beside=["VirtualBurner.dll"]),
                    "window_tests": partial(windows_tests, "window", "window_tests", filters, with_display=True)}
        scaled = [] if filters else [partial(windows_tests, f"window, {scale} %", "window_tests", LAYOUT_TESTS,
                                             with_display=True, scale=scale) for scale in SCALES]
        return [part for program, part in programs.items() if program in window_programs(filters)] + scaled
    if choice.layer == "system":
        return [partial(python_tests, "system", PROJECT / "tests" / "system", filters, name)
                for name in surroundings.rounds()]
    return [partial(fuzz_tests if choice.layer == "fuzz" else lint_tests, choice)]


def run_part(part):
    try:
        return part()
    except (workstation.CannotHave, OSError, subprocess.SubprocessError) as failure:
        report = Report(next((word for word in part.args if isinstance(word, str)), part.func.__name__.replace("_", " ")))
        report.count("failed", "could not be run", str(failure))
        return report.close()


# Their parts need little of the machine and run beside each other; the other layers use all of it.
LIGHT_LAYERS = ("unit", "windows-unit", "window")


def main():
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(1))
    LOGS.mkdir(parents=True, exist_ok=True)
    wanted = choices(sys.argv[1:])
    if any(choice.layer in ("windows-unit", "window", "system") for choice in wanted):
        workstation.prepare()
    reports = []
    with ThreadPoolExecutor(AT_ONCE) as pool:
        reports += pool.map(run_part, [part for choice in wanted if choice.layer in LIGHT_LAYERS for part in parts(choice)])
    for choice in wanted:
        if choice.layer not in LIGHT_LAYERS:
            reports += map(run_part, parts(choice))
    passed, failed, skipped = (sum(getattr(report, kind) for report in reports)
                               for kind in ("passed", "failed", "skipped"))
    unsteady = sum(report.unsteady for report in reports)
    if unsteady:
        print(f"{unsteady} UNSTEADY: failed, then passed alone; told above")
    print(f"{passed} passed, {failed} failed, {skipped} skipped")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
