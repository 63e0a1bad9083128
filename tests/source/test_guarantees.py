"""Every promise names faults that the bench has, and every fault of the bench proves a promise or shows a limit."""

import re
import sys
import unittest
from fnmatch import fnmatchcase
from pathlib import Path

PROJECT = Path(__file__).resolve().parent.parent.parent
sys.path[:0] = [str(PROJECT / "tests" / "faults"), str(PROJECT / "tests" / "system"), str(PROJECT / "tools")]

from fault import all_faults  # noqa: E402

# Named in the text, and no fault of the bench.
OTHERS = {"low_memory_tests", "LowMemory", "PasswordWithABlankTest"}


def named():
    """The patterns after "Proven by" and in the table of limits."""
    text = (PROJECT / "docs" / "guarantees.md").read_text(encoding="utf-8")
    proofs = [part.split("\n\n")[0] for part in text.split("Proven by:")[1:]]
    limits = [line.rsplit("|", 2)[1] for line in text.split("## Limits")[1].splitlines() if line.startswith("| ")]
    words = [word for part in proofs + limits for word in re.findall(r"`([^`]+)`", part)]
    return [word for word in words if word not in OTHERS]


class GuaranteesTest(unittest.TestCase):
    def test_every_fault_that_is_named_exists(self):
        faults = all_faults()
        self.assertGreater(len(named()), 40)
        self.assertEqual([word for word in named() if not any(fnmatchcase(name, word) for name in faults)], [])

    def test_every_fault_is_named(self):
        patterns = named()
        self.assertEqual([name for name in all_faults() if not any(fnmatchcase(name, word) for word in patterns)], [])

    def test_the_bench_has_at_least_forty_faults_and_a_short_form(self):
        faults = all_faults()
        self.assertGreaterEqual(len(faults), 40)
        self.assertGreaterEqual(sum(fault.is_short for fault in faults.values()), 5)


if __name__ == "__main__":
    unittest.main()
