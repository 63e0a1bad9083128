"""The check of a medium that Backup itself has just written, while some of what it saved could not be opened."""

import json
import os
import subprocess
import unittest

from check_test import FAULTY
from system_test import SystemTest, run_check


class CheckAfterBackupTest(SystemTest):
    def check(self, *arguments):
        """The exit code and the items of the report by the last names of their paths."""
        self.station.add_drive("d", "fixed")
        done = run_check(self.station, self.station.program_folder, "/check", "E:\\", "/report", "D:\\report.json", *arguments)
        report = json.loads((self.station.path("D:") / "report.json").read_text(encoding="utf-8"))
        return done.returncode, {item["path"].rsplit("\\", 1)[-1]: item for item in report["items"]}

    def close_to_all(self, path):
        """What a file that another program holds open is to the archiver: there, and not to be read."""
        place = self.station.path(path)
        os.utime(place, (1_600_000_000, 1_600_000_000))
        place.chmod(0)
        if subprocess.run([*self.station.wine_command("cmd", "/c", "type", path)], env=self.station.environment,
                          capture_output=True, check=False).returncode == 0:
            self.skipTest("this account reads every file, whatever its rights")
        self.addCleanup(place.chmod, 0o644)

    def test_what_was_open_while_it_was_saved_is_named(self):
        self.disk()
        folder = self.folder("Clients")
        self.document("Clients\\lettre.doc")
        held = self.document("Clients\\ouvert.pst")
        alone = self.document("seul ouvert.doc")
        good = self.document("budget.xls")
        self.close_to_all(held)
        self.close_to_all(alone)
        self.back_up(good, folder, alone)
        code, items = self.check("/compare")
        self.assertEqual(code, FAULTY)
        self.assertEqual(items["budget.xls"]["verdict"], "whole")
        self.assertIn(items["seul ouvert.doc"]["verdict"], ("empty", "missing"))
        self.assertIn("Clients/ouvert.pst", [finding["file"] for finding in items["Clients"]["findings"]
                                             if finding["what"] in ("absent", "addedSince")])
        self.assertEqual(items["Clients"]["files"], 1)


if __name__ == "__main__":
    unittest.main()
