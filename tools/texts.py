"""The program's texts in both languages, by the French one."""

import functools
import re
from pathlib import Path

STRINGS = Path(__file__).resolve().parent.parent / "src" / "resources" / "Strings.def"
ROW = re.compile(r'^STRING\(\w+, \d+, "((?:[^"\\]|\\.)*)", "((?:[^"\\]|\\.)*)"\)', re.MULTILINE)
ESCAPES = {"\\r": "\r", "\\n": "\n", "\\t": "\t", '\\"': '"', "\\\\": "\\"}


def _unescaped(literal):
    return re.sub(r"\\.", lambda found: ESCAPES[found.group()], literal)


@functools.cache
def _pairs():
    pairs = {}
    for french, english in ROW.findall(STRINGS.read_text(encoding="utf-8")):
        pairs.setdefault(_unescaped(french), set()).add(_unescaped(english))
    return pairs


def translated(french, language):
    """A text of the program in a language; a French one that stands for two English ones has no translation."""
    found = _pairs().get(french, set())
    if len(found) != 1:
        raise LookupError(f"{len(found)} English texts for {french!r}")
    return french if language == "fr" else next(iter(found))
