"""Makes the calls of a workstation's programs wait, so that what a test looks at lasts as long as it looks."""

import mmap
import os
import subprocess
from pathlib import Path

from workstation import BUILD

SOURCE = Path(__file__).resolve().parent.parent / "faults" / "medium_faults.c"
PRELOADED = BUILD / "faults" / "medium_faults.so"
PAGE_BYTES = 4096
HITS_AT = 2048


def build_preloaded():
    """The library that makes the machine's calls fail, built when it is not there or older than its source."""
    if PRELOADED.exists() and PRELOADED.stat().st_mtime > SOURCE.stat().st_mtime:
        return
    PRELOADED.parent.mkdir(parents=True, exist_ok=True)
    written = PRELOADED.with_suffix(f".{os.getpid()}")
    subprocess.run(["cc", "-shared", "-fPIC", "-O2", "-o", str(written), str(SOURCE)], check=True)
    written.rename(PRELOADED)


class SlowMachine:
    """For the programs that are started on the station from now on; nothing waits until it is told to."""

    def __init__(self, station):
        build_preloaded()
        path = station.prefix / "slow-machine"
        path.write_bytes(b"-" + bytes(PAGE_BYTES - 1))
        with open(path, "r+b") as file:
            self.page = mmap.mmap(file.fileno(), PAGE_BYTES)
        station.environment.update(LD_PRELOAD=str(PRELOADED), FAULT_PLAN=str(path))

    def slow_reads(self, part, milliseconds):
        """Each read of a file whose path has this part takes so long."""
        self._rule(f"read 0 {milliseconds} 0 {part}")

    def hold(self, operation, part, after_bytes=0):
        """A "read" or "write" that goes beyond so many bytes of such a file waits until it is told otherwise."""
        self._rule(f"{operation} -1 0 {after_bytes} {part}")

    def fail(self, operation, error, part):
        """A "read" or "write" of such a file fails with the error."""
        self._rule(f"{operation} {error} 0 0 {part}")

    def go_on(self):
        self._rule("-")

    def is_met(self):
        """Whether a call has met what holds or slows it."""
        return self.hits() > 0

    def hits(self):
        """How many calls have met the rule."""
        return int.from_bytes(self.page[HITS_AT:HITS_AT + 8], "little")

    def close(self):
        self.go_on()
        self.page.close()

    def _rule(self, text):
        data = text.encode()
        # The first byte comes last: until then no rule is read.
        self.page[0:1] = b"-"
        self.page[1:HITS_AT] = data[1:] + bytes(HITS_AT - len(data))
        self.page[HITS_AT:HITS_AT + 8] = bytes(8)
        self.page[0:1] = data[:1]
