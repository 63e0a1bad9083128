"""What of clang-tidy's answers counts, and which files it is given together."""

import sys
import unittest
from pathlib import Path
from unittest.mock import patch

sys.path.insert(0, str(Path(__file__).resolve().parent.parent.parent / "tools"))

import lint  # noqa: E402

TESTS = lint.PROJECT / "tests" / "unit"


def naming(kind, name):
    return (f"/x/File.cpp:1:5: error: invalid case style for {kind} '{name}' [readability-identifier-naming,-warnings-as-errors]\n"
            f"int {name};\n    ^\n")


class NamesTest(unittest.TestCase):
    def setUp(self):
        self.rules = lint.Rules()

    def test_given_names_and_their_handlers_may_be_as_they_are(self):
        for kind, name in (("class", "frmMain"), ("function", "cmdLancer_Click"), ("class", "Suite_Case_Test")):
            self.assertEqual(self.rules.findings(naming(kind, name)), "")

    def test_any_other_name_is_told_with_its_lines(self):
        for kind, name in (("class", "frmOther"), ("struct", "Suite_Case_Test"), ("private member", "count")):
            self.assertEqual(self.rules.findings(naming("class", "frmMain") + naming(kind, name)), naming(kind, name).strip())

    def test_what_is_no_finding_about_a_place_is_told(self):
        self.assertEqual(self.rules.findings(naming("class", "frmMain") + "error: no such file [clang-diagnostic-error]\n"),
                         "error: no such file [clang-diagnostic-error]")

    def test_a_source_that_includes_another_is_told_and_one_that_is_read_with_another_is_not(self):
        said = "error: suspicious #include of file with '.cpp' extension [bugprone-suspicious-include,-warnings-as-errors]\n"
        self.assertEqual(self.rules.findings(said + "/x/File.cpp:1:10: " + said), "/x/File.cpp:1:10: " + said.strip())

    def test_clang_tidy_is_not_given_the_names(self):
        self.assertIn("frmMain", self.rules.text)
        self.assertNotIn("IgnoredRegexp", self.rules.for_clang_tidy)


class BatchesTest(unittest.TestCase):
    def batches(self, **texts):
        units = {name: lint.Unit(TESTS / f"{name}.cpp", ("-std=c++20",)) for name in texts}
        with patch.object(lint.Unit, "text", lambda unit: texts[unit.file.stem]):
            return [[unit.file.stem for unit in batch] for batch in lint.batches(units.values())]

    def test_files_without_a_name_in_common_are_read_together(self):
        self.assertEqual(self.batches(a="int First() {\n}\n", b="TEST(Second, Case) {\n    First();\n}\n"), [["a", "b"]])

    def test_files_with_a_name_in_common_are_not(self):
        for text in ("int Same() {\n", "constexpr int Same = 1;\n", "struct Same {\n", "class Same : public Base {\n"):
            self.assertEqual(self.batches(a=text, b=text, c="int Other() {\n"), [["a", "c"], ["b"]])

    def test_a_file_with_an_alias_is_read_alone(self):
        self.assertEqual(self.batches(a="", b="namespace fs = std::filesystem;\n", c=""), [["a", "c"], ["b"]])


class ReadingTest(unittest.TestCase):
    def verdicts(self, answer):
        units = [lint.Unit(TESTS / f"{name}.cpp", ()) for name in "abcd"]
        with patch.object(lint, "tidy", lambda batch, _: answer([unit.file.stem for unit in batch])):
            return {unit.file.stem: said for unit, said in lint.read(units, None).items()}

    def test_only_the_file_with_a_finding_fails(self):
        found = f"{TESTS}/b.cpp:3:1: error: bad [check]"
        self.assertEqual(self.verdicts(lambda names: found if "b" in names else ""), {"a": "", "b": found, "c": "", "d": ""})

    def test_what_comes_of_reading_two_files_together_is_none_of_theirs(self):
        clash = f"{TESTS}/c.cpp:3:1: error: redefinition [clang-diagnostic-error]"
        self.assertEqual(set(self.verdicts(lambda names: clash if {"a", "c"} <= set(names) else "").values()), {""})

    def test_a_finding_in_a_header_fails_those_that_include_it(self):
        found = "/x/Header.h:3:1: error: bad [check]"
        self.assertEqual(self.verdicts(lambda names: found if "a" in names or "d" in names else ""),
                         {"a": found, "b": "", "c": "", "d": found})


if __name__ == "__main__":
    unittest.main()
