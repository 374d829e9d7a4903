"""Tests the making of mutants on small texts; run by `scripts/mutate --self-test`."""

import unittest

from mutation import mutants, report, sources


def changed_lines(text, name="dalvo/x.cpp", operator=None):
    """The mutated lines of a text that stands in a function."""
    source = sources.Source(name, f"void f()\n{{\n{text}\n}}\n")
    return [m.mutated for m in mutants.mutants_of(source) if operator in (None, m.operator)]


class Mutants(unittest.TestCase):
    rows = [
        # text, operator, expected mutated lines, why
        ("x = a < b;", "operator", ["x = a <= b;", "x = a >= b;"], "a comparison: its bound, and its opposite"),
        ("x = a && b;", "operator", ["x = a || b;"], "and becomes or"),
        ("x = true;", "operator", ["x = false;"], "a truth value"),
        ("++x;", "operator", ["--x;"], "counts the other way"),
        ("vector<int> x;", "operator", [], "brackets of a template are no comparison"),
        ("Node &x = *y;", "operator", [], "a reference and a dereference are no arithmetic"),
        ("x = y << 8U;", "operator", ["x = y >> 8U;"], "a shift"),
        ("out << x;", "operator", [], "output is no shift"),
        ("x = 0;", "literal", ["x = 1;"], "nothing below 0: many are unsigned"),
        ("x = 16U;", "literal", ["x = 15U;", "x = 17U;"], "a number moves both ways and keeps its suffix"),
        ("x = 0.7;", "literal", ["x = 0.6;", "x = 0.8;"], "a real number moves by its last digit"),
        ("x = 18446744073709551616.0F;", "literal", [], "the same float"),
        ('x = "a\\n";', "literal", ['x = "Xa\\n";'], "a string"),
        ("x = ' ';", "literal", ["x = '\\x21';"], "a character"),
        ("// x = 1", None, [], "a comment"),
        ("static_assert(x == 1);", None, [], "an assertion"),
        ("#ifdef A\nf(1);\n#else\nf(2);\n#endif", "literal", ["f(0);", "f(2);"], "what #else leaves out stays"),
        ("if (f(x)) { g(); }", "condition", ["if (!(f(x))) { g(); }"], "a condition"),
        ("if (a < b) { g(); }", "condition", [], "a comparison's operator is changed instead"),
        ("for (T x : xs) { g(); }", "condition", [], "a loop over a range has no condition"),
        ("x = a ? b : c;", "condition", ["x = a ? c : b;"], "the results of a choice"),
        ("f(x);", "drop", [";"], "a statement"),
        ("std::string x(y);", "drop", [], "a declaration stays"),
        ("if (a) { return 1; }", "drop", ["if (a) { ; }"], "an early return"),
        ("return 1;", "drop", [], "a function's result stays"),
        ("v.a(1);\nv.b(2);", "swap", ["v.b(2); v.a(1);"], "rows that call one object"),
        ("a(v);\nb(v);", "swap", ["b(v); a(v);"], "rows that hand on one argument"),
        ("v.a(1);\nw.b(2);", "swap", [], "not rows of one sequence"),
    ]

    def test_each_operator_makes_what_its_row_says(self):
        for text, operator, expected, why in self.rows:
            with self.subTest(why):
                self.assertEqual(sorted(changed_lines(text, operator=operator)), sorted(expected))

    def test_a_row_keeps_one_of_its_mutants_and_other_code_keeps_all(self):
        source = sources.Source("dalvo/applier.cpp", 'void f()\n{\nv.a("a", 1);\nv.b("b", 1);\nif (x) { y = 1; }\n}\n')
        kept = mutants.one_of_each_row(mutants.mutants_of(source), 1)
        self.assertEqual([m.line for m in kept], [3, 4, 5, 5, 5, 5])

    def test_a_sample_is_the_same_each_time_and_takes_from_each_file(self):
        files = [sources.Source(name, "int x = 1 + 2 + 3 + 4 + 5;\n") for name in ("dalvo/a.cpp", "dalvo/b.cpp")]
        found = [mutant for source in files for mutant in mutants.mutants_of(source)]
        sample = mutants.sampled(found, 6, 7)
        self.assertEqual(sample, mutants.sampled(found, 6, 7))
        self.assertEqual({m.file for m in sample}, {"dalvo/a.cpp", "dalvo/b.cpp"})
        self.assertEqual(len(sample), 6)

    def test_a_report_counts_what_was_killed_among_what_could_be(self):
        source = sources.Source("dalvo/a.cpp", "int x = 1 + 2;\n")
        found = mutants.mutants_of(source)
        outcomes = ["killed", "survived", "did not compile", "killed", "killed"]
        results = {mutant: (outcome, "") for mutant, outcome in zip(found, outcomes, strict=True)}
        self.assertEqual(report.share(report.counted(found, results)["dalvo/a.cpp"]), 0.75)
        self.assertFalse(report.is_enough(found, results))


def run():
    suite = unittest.defaultTestLoader.loadTestsFromTestCase(Mutants)
    return 0 if unittest.TextTestRunner().run(suite).wasSuccessful() else 1
