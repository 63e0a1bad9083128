"""The short form of the fault bench: a few cheap faults. tests/faults/run runs all of them."""

import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent.parent / "faults"))

from fault import all_faults  # noqa: E402
from fault_test import FaultTest  # noqa: E402


class FaultBenchTest(FaultTest):
    pass


def _test_of(fault):
    def test(self):
        row = self.check(fault)
        self.assertEqual(row["breaches"], [], row)
    return test


for _name, _fault in all_faults().items():
    if _fault.is_short:
        setattr(FaultBenchTest, f"test_{_name.replace('-', '_')}", _test_of(_fault))
del FaultTest
