"""Runs the fault bench: campaign.py [--short] [NAME|AREA|PATTERN]... and leaves its table below build/faults."""

import json
import multiprocessing
import os
import sys
import unittest
from concurrent.futures import ProcessPoolExecutor, as_completed
from fnmatch import fnmatchcase
from pathlib import Path

HERE = Path(__file__).resolve().parent
sys.path[:0] = [str(HERE), str(HERE.parent / "system"), str(HERE.parent.parent / "tools")]

from fault import all_faults  # noqa: E402
from fault_test import FaultTest  # noqa: E402
from slow_machine import build_preloaded  # noqa: E402

from workstation import BUILD, prepare  # noqa: E402

TABLE = BUILD / "faults" / "table.json"
MOST_SHOWN = 700
AT_ONCE = int(os.environ.get("FAULTS_AT_ONCE", "2"))


def run_one(name):
    """The row of a fault; one that could not be run says so."""
    rows = []

    class OneFault(FaultTest):
        def test(self):
            rows.append(self.check(all_faults()[name]))

        def id(self):
            return f"fault.{name}"

    result = unittest.TestResult()
    OneFault("test").run(result)
    if rows:
        return rows[0]
    skipped = "; ".join(reason for _, reason in result.skipped)
    problems = "\n".join(text for _, text in result.errors + result.failures)
    return {"name": name, "area": all_faults()[name].area, "skipped": skipped, "told": [],
            "breaches": [] if skipped else [problems[-1500:] or "did not run"]}


def chosen(words):
    faults = all_faults()
    if "--short" in words:
        return [name for name, fault in faults.items() if fault.is_short]
    wanted = [word for word in words if not word.startswith("--")]
    if not wanted:
        return list(faults)
    # In the order of the words, each fault once.
    return list(dict.fromkeys(name for word in wanted for name, fault in faults.items()
                              if fnmatchcase(name, word) or word == fault.area))


def line(row):
    if row.get("skipped"):
        return f"SKIPPED {row['name']}: {row['skipped']}"
    verdict = "BROKEN" if row["breaches"] else "held"
    told = " | ".join(text[:110] for text in row["told"]) or "nothing"
    text = (f"{verdict:6} {row['area']:9} {row['name']} ({row.get('seconds', 0)} s): {row.get('outcome')}; medium: "
            f"{row.get('medium')}{', checked ' + row['checked'] if row.get('checked') else ''}; work folder: "
            f"{' '.join(row.get('left') or []) or 'nothing'}; next backup {row.get('next_backup')}, next restore "
            f"{row.get('next_restore')}; outside: {row.get('outside') or 'untouched'}; told: {told}")
    return text[:MOST_SHOWN] + "".join(f"\n       ! {breach[:MOST_SHOWN]}" for breach in row["breaches"])


def write_table(rows):
    """Renews these rows of the table; those of other runs stay."""
    TABLE.parent.mkdir(parents=True, exist_ok=True)
    kept = {row["name"]: row for row in json.loads(TABLE.read_text(encoding="utf-8"))} if TABLE.exists() else {}
    kept.update((row["name"], row) for row in rows)
    TABLE.write_text(json.dumps(list(kept.values()), indent=1, ensure_ascii=False), encoding="utf-8")


def main():
    names = chosen(sys.argv[1:])
    if not names:
        print("no fault of that name; the areas are disk, disc, restore, selection, start and end")
        return 2
    prepare()
    build_preloaded()
    rows = []
    with ProcessPoolExecutor(AT_ONCE, multiprocessing.get_context("spawn")) as pool:
        for done in as_completed([pool.submit(run_one, name) for name in names]):
            rows.append(done.result())
            print(line(rows[-1]), flush=True)
            write_table(rows)
    broken = sum(bool(row["breaches"]) for row in rows)
    skipped = sum(bool(row.get("skipped")) for row in rows)
    print(f"{len(rows) - broken - skipped} faults held, {broken} broken, {skipped} skipped; the table: {TABLE}")
    return 1 if broken else 0


if __name__ == "__main__":
    sys.exit(main())
