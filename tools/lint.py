"""clang-tidy over every file of the logic."""

import json
import os
import subprocess
from concurrent.futures import ThreadPoolExecutor
from fnmatch import fnmatchcase
from pathlib import Path

from test_report import Report
from workstation import BUILD, PROJECT


def lint_tests(choice):
    report = Report("lint")
    commands = json.loads((BUILD / "native" / "compile_commands.json").read_text(encoding="utf-8"))
    files = sorted({Path(command["file"]) for command in commands})
    names = [str(file.relative_to(PROJECT)) for file in files if file.is_relative_to(PROJECT / "src")]
    wanted = [name for name in names if not choice.filters or any(fnmatchcase(name, word) for word in choice.filters)]
    with ThreadPoolExecutor(os.cpu_count()) as pool:
        for name, output in zip(wanted, pool.map(tidy, wanted)):
            report.count("failed" if output else "passed", name, output)
    return report.close()


def tidy(name):
    # The compiler of the native build is GCC, which has warnings that clang does not know.
    done = subprocess.run(["clang-tidy", "-p", BUILD / "native", "--quiet", "--warnings-as-errors=*",
                           "--extra-arg=-Wno-unknown-warning-option", PROJECT / name],
                          capture_output=True, text=True, check=False)
    return "" if done.returncode == 0 else done.stdout
