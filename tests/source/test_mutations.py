"""The ways in which the mutation command breaks a source, and the mutants that are known to change nothing."""

import sys
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent.parent.parent / "tools"))

from mutate import EQUIVALENT, PROJECT, Mutant, equivalent_entries, in_order  # noqa: E402
from mutations import mutations_of  # noqa: E402


def changes(source, kind=None):
    """The line that each mutation of a source changes, as it becomes."""
    return [mutation.lines(source)[2] for mutation in mutations_of(source) if kind in (None, mutation.kind)]


class MutationsTest(unittest.TestCase):
    def test_a_comparison_is_turned_round_and_moved_by_one(self):
        self.assertEqual(changes("bool B = a < b;"), ["bool B = a <= b;", "bool B = a >= b;"])

    def test_the_brackets_of_a_template_are_no_comparison(self):
        self.assertEqual(changes("std::vector<std::pair<int, char>> Names();"), [])

    def test_and_becomes_or_and_plus_becomes_minus(self):
        self.assertEqual(changes("x = a && b + c;", "operator"), ["x = a || b + c;", "x = a && b - c;"])

    def test_constants_become_others(self):
        self.assertEqual(changes("constexpr int Size = 8;"), ["constexpr int Size = 9;"])
        self.assertEqual(changes("constexpr int Size = 1;"), ["constexpr int Size = 0;"])
        self.assertEqual(changes("constexpr double Factor = 1.05;"), ["constexpr double Factor = 3.1;"])
        self.assertEqual(changes("constexpr bool Is = true;"), ["constexpr bool Is = false;"])
        self.assertEqual(changes('constexpr auto Name = L"a + b";'), ['constexpr auto Name = L"";'])

    def test_the_label_of_an_error_report_stays(self):
        self.assertEqual(changes('constexpr auto Label = L"ExecCmd, Class clsCopie";'), [])

    def test_comments_and_includes_stay(self):
        self.assertEqual(changes('#include "core/a.h"\n// a + b\n/* 1 */\n#define B 1\n'), [])

    def test_a_condition_is_negated_once(self):
        self.assertEqual(changes("void f() {\nif (a(b)) return;\n}", "condition"), ["if (!(a(b))) return;"])
        self.assertEqual(changes("void f() {\nif (!a) return;\n}", "condition"), ["if (a) return;"])
        self.assertEqual(changes("void f() {\nif (a == b) return;\n}", "condition"), [])
        self.assertEqual(changes("void f() {\nif (const auto a = b(); a) return;\n}", "condition"),
                         ["if (const auto a = b(); !(a)) return;"])
        self.assertEqual(changes("void f() {\nif (const auto a = b()) return;\n}", "condition"), [])

    def test_calls_and_assignments_are_left_out_and_declarations_stay(self):
        source = "void f() {\nconst int a = b();\nstd::vector<int> c;\nd.e(a);\n}"
        self.assertEqual(changes(source, "statement"), [";"])

    def test_what_asks_for_memory_only_or_returns_nothing_already_stays(self):
        self.assertEqual(changes("auto f() {\na.reserve(b);\nreturn std::nullopt;\n}", "statement"), [])
        self.assertEqual(changes("auto f() {\na.reserve(b);\nreturn std::nullopt;\n}", "early return"),
                         ["auto f() { return {};"])

    def test_the_statements_of_a_lambda_are_left_out_too(self):
        self.assertEqual(changes("int f() {\nreturn g([&] { h(); });\n}", "statement"), ["return g([&] { ; });"])

    def test_a_function_returns_at_once_and_a_value_is_lost(self):
        self.assertEqual(changes("void a::f() const {\ng();\n}", "early return"), ["void a::f() const { return;"])
        self.assertEqual(changes("int f(int a) {\nreturn a + b;\n}", "early return"),
                         ["int f(int a) { return {};", "return {};"])

    def test_a_constructor_does_not_return_at_once_but_its_body_is_read(self):
        source = "A::A(int a) : a_(a), b_{a} {\ng();\n}"
        self.assertEqual(changes(source, "early return"), [])
        self.assertEqual(changes(source, "statement"), [";"])

    def test_the_branches_of_a_choice_are_swapped(self):
        self.assertEqual(changes("x = f(a ? b(c, d) : e);", "branches"), ["x = f(a ? e : b(c, d));"])


class OrderTest(unittest.TestCase):
    def test_the_seed_decides_it_and_a_mutant_that_goes_moves_no_other(self):
        source = "bool B = a < b && c + 1 == d;"
        mutants = [Mutant("src/a.cpp", source, mutation) for mutation in mutations_of(source)]
        order = in_order(mutants, 7)
        self.assertEqual(in_order(reversed(mutants), 7), order)
        self.assertGreater(len({tuple(map(str, in_order(mutants, seed))) for seed in range(10)}), 5)
        for gone in mutants:
            self.assertEqual(in_order([mutant for mutant in mutants if mutant != gone], 7),
                             [mutant for mutant in order if mutant != gone])


class EquivalentMutantsTest(unittest.TestCase):
    def test_each_is_a_mutant_of_today_and_has_its_reason(self):
        for entry in equivalent_entries():
            with self.subTest(entry=entry):
                source = (PROJECT / entry["file"]).read_text(encoding="utf-8")
                meant = [mutation for mutation in mutations_of(source)
                         if Mutant(entry["file"], source, mutation).is_listed(entry)]
                self.assertEqual(len(meant), 1, EQUIVALENT.name)
                self.assertGreater(len(entry["reason"]), 20)


if __name__ == "__main__":
    unittest.main()
