"""The Windows-side helper that looks at the program's windows and sends them what a person's clicks send."""

import subprocess
import time

DEFAULT_SECONDS = 20


class DriverError(Exception):
    """A request that the window could not answer: "gone", "busy" or what else was wrong with it."""


class NotSeen(AssertionError):
    """What was waited for did not come; says what was seen instead."""


def _escape(field):
    return (str(field).replace("\\", "\\\\").replace("\t", "\\t").replace("\n", "\\n").replace("\r", "\\r"))


def _unescape(field):
    pieces = {"t": "\t", "n": "\n", "r": "\r"}
    text, escaped = [], False
    for character in field:
        if escaped:
            text.append(pieces.get(character, character))
            escaped = False
        elif character == "\\":
            escaped = True
        else:
            text.append(character)
    return "".join(text)


class Driver:
    """The Windows-side helper, one request and one answer at a time."""

    def __init__(self, workstation):
        self._process = subprocess.Popen(workstation.wine_command(r"C:\Tools\uidriver.exe"),
                                         env=workstation.environment, cwd=workstation.prefix,
                                         stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)

    def call(self, verb, *fields):
        """The rows that answer a request. A window that is busy is asked again for a while."""
        deadline = time.monotonic() + DEFAULT_SECONDS
        while True:
            try:
                return self._call_once(verb, *fields)
            except DriverError as failure:
                if str(failure) != "busy" or time.monotonic() > deadline:
                    raise

    def _call_once(self, verb, *fields):
        line = "\t".join([verb, *map(_escape, fields)]) + "\n"
        self._process.stdin.write(line.encode("utf-8"))
        self._process.stdin.flush()
        head = self._read_line()
        if head.startswith("error "):
            raise DriverError(head[6:])
        return [[_unescape(field) for field in self._read_line().split("\t")] for _ in range(int(head[3:]))]

    def _read_line(self):
        line = self._process.stdout.readline()
        if not line:
            raise DriverError("the driver ended")
        return line.decode("utf-8").rstrip("\n")

    def has_ended(self):
        return self._process.stdin.closed

    def stop(self):
        self._process.stdin.close()
        try:
            self._process.wait(5)
        except subprocess.TimeoutExpired:
            self._process.kill()
            self._process.wait()
        self._process.stdout.close()
