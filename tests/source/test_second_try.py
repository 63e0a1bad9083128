"""What a second try of a failed system test may turn into, and where it is not made."""

import os
import sys
import tempfile
import unittest
from pathlib import Path
from unittest import mock

sys.path.insert(0, str(Path(__file__).resolve().parent.parent.parent / "tools"))

from run_tests import SECOND_TRY, tried_again  # noqa: E402

# A test that fails as often as its file says.
CASE = """
import unittest
from pathlib import Path
class CaseTest(unittest.TestCase):
    def test_it(self):
        left = Path(__file__).with_name("left")
        failures = int(left.read_text())
        left.write_text(str(failures - 1))
        self.assertLessEqual(failures, 0, "as arranged")
"""


class SecondTryTest(unittest.TestCase):
    def outcomes(self, *kinds, failures_left=0, is_asked_for=True):
        outcomes = [("test_case_of_second_try.CaseTest.test_it", 1.0, kind, "first words") for kind in kinds]
        with tempfile.TemporaryDirectory() as folder:
            Path(folder, "test_case_of_second_try.py").write_text(CASE, encoding="utf-8")
            Path(folder, "left").write_text(str(failures_left), encoding="utf-8")
            with mock.patch.dict(os.environ, {SECOND_TRY: "1" if is_asked_for else ""}):
                return [(outcome[2], outcome[3]) for outcome in tried_again(outcomes, Path(folder), "")]

    def test_a_test_that_passes_alone_is_told_as_unsteady_with_its_first_words(self):
        self.assertEqual(self.outcomes("passed", "failed"), [("passed", "first words"), ("unsteady", "first words")])

    def test_a_test_that_fails_again_has_failed(self):
        (outcome, text), = self.outcomes("failed", failures_left=1)
        self.assertEqual(outcome, "failed")
        self.assertIn("as arranged", text)

    def test_two_failures_are_tried_no_further(self):
        self.assertEqual([kind for kind, _ in self.outcomes("failed", "failed")], ["failed", "failed"])

    def test_nothing_is_tried_again_where_it_is_not_asked_for(self):
        self.assertEqual([kind for kind, _ in self.outcomes("failed", is_asked_for=False)], ["failed"])


if __name__ == "__main__":
    unittest.main()
