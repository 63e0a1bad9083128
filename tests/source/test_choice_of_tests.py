"""What the words after ./test come to: the layers, the tests of each, and what is built for them."""

import re
import sys
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent.parent.parent / "tools"))

from test_choice import (DEFAULT_FUZZ_SECONDS, DEFAULT_LAYERS, PROJECT, Usage, choices, google_filter, matches, needs,  # noqa: E402
                         unit_programs, window_programs)


def built(*words):
    return needs(choices(words))


class ChoiceTest(unittest.TestCase):
    def test_without_a_word_every_layer_runs_whole(self):
        self.assertEqual([choice.layer for choice in choices([])], list(DEFAULT_LAYERS))
        self.assertEqual(built(), ["build native all", "build windows all", "build fuzz all", "archiver", "kit"])

    def test_all_is_every_layer_and_clang_tidy_last(self):
        self.assertEqual([choice.layer for choice in choices(["all"])], [*DEFAULT_LAYERS, "lint"])
        self.assertLessEqual(set(built()), set(built("all")))
        self.assertIn("configure windows", built("all"))

    def test_the_words_after_a_layer_choose_among_its_tests(self):
        unit, fuzz = choices(["unit", "BackupRunTest.*", "fuzz", "ControlFileFuzzer", "30"])
        self.assertEqual(unit.filters, ["BackupRunTest.*"])
        self.assertEqual((fuzz.names(), fuzz.seconds()), (["ControlFileFuzzer"], 30))

    def test_fuzzers_run_for_a_time_or_for_so_many_inputs(self):
        named, counted = choices(["fuzz", "ControlFileFuzzer"])[0], choices(["fuzz", "10000000", "inputs"])[0]
        self.assertEqual((named.inputs(), named.seconds()), (None, DEFAULT_FUZZ_SECONDS))
        self.assertEqual((counted.inputs(), counted.names()), (10000000, []))

    def test_a_word_before_any_layer_or_an_option_is_refused(self):
        for words in (["BackupRunTest.*"], ["unit", "all", "-v"], ["unit", "--gtest_filter=x"], ["-v"]):
            with self.assertRaises(Usage):
                choices(words)

    def test_native_unit_tests_build_nothing_for_windows(self):
        self.assertEqual(built("unit"), ["build native low_memory_tests unit_tests"])
        self.assertEqual(built("unit", "BackupRunTest.*"), ["build native low_memory_tests unit_tests"])

    def test_a_unit_test_is_looked_for_where_it_is(self):
        self.assertEqual(unit_programs([]), ["unit_tests", "low_memory_tests"])
        for words in (["BackupRunTest.*"], ["CheckWorkTest.*"], ["NoSuchTest.*"]):
            self.assertEqual(unit_programs(words), ["unit_tests"])
        self.assertEqual(unit_programs(["LowMemory.*"]), ["low_memory_tests"])
        self.assertEqual(unit_programs(["LowMemory.*", "BackupRunTest.*"]), ["unit_tests", "low_memory_tests"])

    def test_a_window_test_builds_the_program_that_has_it(self):
        self.assertEqual(window_programs(["RestoreWindow.*"]), ["window_tests"])
        self.assertEqual(window_programs(["FileStream*"]), ["disc_tests"])
        self.assertEqual(built("window", "RestoreWindow.EscapeCloses"), ["build windows window_tests"])

    def test_what_system_tests_take_from_the_build_is_built_for_them(self):
        programs = [line for line in built("system", "test_main_job") if line.startswith("build windows ")][0].split()[2:]
        # The archiver is a step of its own.
        taken = {name for path in sorted((PROJECT / "tests" / "system").glob("*.py"))
                 for name in re.findall(r'BINARIES / "(\w+)\.(?:exe|dll)"', path.read_text(encoding="utf-8"))} - {"7Za"}
        self.assertIn("disc_console", taken)
        self.assertEqual(taken - set(programs), set())

    def test_the_installer_is_built_for_its_tests_only(self):
        self.assertNotIn("installer", built("system", "test_main_job"))
        self.assertIn("installer", built("system", "test_installer"))
        self.assertIn("installer", built("system", "test_installer_rights"))

    def test_the_kit_is_built_for_its_test_and_brings_the_installer_with_it(self):
        self.assertNotIn("kit", built("system", "test_installer"))
        for words in (("system", "test_kit"), ("system",)):
            self.assertIn("kit", built(*words))
            self.assertNotIn("installer", built(*words))

    def test_a_bare_suite_stands_for_all_of_its_tests(self):
        self.assertEqual(google_filter(["BackupRunTest", "Form.Loads*"]), "BackupRunTest.*:Form.Loads*")

    def test_a_system_test_is_named_by_module_class_or_method(self):
        identity = "test_main_job.MainJobTest.test_every_byte_comes_back"
        for word in ("test_main_job", "MainJobTest", "test_every_byte_comes_back", "test_every_*",
                     "MainJobTest.test_every_byte_comes_back", identity):
            self.assertTrue(matches(identity, [word]), word)
        self.assertFalse(matches(identity, ["test_main"]))
        self.assertFalse(matches(identity, ["test_usb_backup"]))


if __name__ == "__main__":
    unittest.main()
