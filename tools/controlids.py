"""The numbers of the program's controls by their names, read from the headers that the forms and their templates share."""

import re
from functools import lru_cache
from pathlib import Path

SOURCES = Path(__file__).resolve().parent.parent / "src"
_DEFINITION = re.compile(r"^\s*#define\s+ID[CM]_(\w+)\s+(0x[0-9A-Fa-f]+|\d+)", re.MULTILINE)


@lru_cache(maxsize=None)
def control_ids(form):
    """Name to number for a form such as frmMain; KeyError-like failure when there is no such form."""
    headers = list(SOURCES.glob(f"*/forms/{form}Ids.h"))
    if len(headers) != 1:
        raise LookupError(f"no single {form}Ids.h below src")
    return {name: int(number, 0) for name, number in _DEFINITION.findall(headers[0].read_text(encoding="utf-8"))}
