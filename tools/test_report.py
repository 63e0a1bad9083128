"""What one part of the tests has come to, and how it is told."""

import time


class Report:
    """What one part of a layer has come to."""

    def __init__(self, name):
        self.name = name
        self.passed = self.failed = self.skipped = self.unsteady = 0
        self._lines = []
        self._started = time.monotonic()

    def count(self, outcome, test="", text=""):
        setattr(self, outcome, getattr(self, outcome) + 1)
        if outcome != "passed":
            indented = text.strip().replace("\n", "\n    ")
            self._lines.append(f"{outcome.upper()} {self.name}: {test}\n    {indented}")

    def close(self):
        """Prints all of it at once; a part that ran no test has failed."""
        if self.passed + self.failed + self.unsteady == 0:
            self.count("failed", "no test ran")
        seconds = time.monotonic() - self._started
        unsteady = f", {self.unsteady} unsteady" if self.unsteady else ""
        self._lines.append(f"-- {self.name}: {self.passed} passed, {self.failed} failed, {self.skipped} skipped{unsteady} "
                           f"({seconds:.0f} s)")
        print("\n".join(self._lines), flush=True)
        return self
