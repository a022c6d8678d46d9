#!/usr/bin/env python3
"""Tests what scripts/coverage counts and when it fails."""
import contextlib
import importlib.machinery
import importlib.util
import io
import pathlib
import unittest

ROOT = pathlib.Path(__file__).resolve().parent.parent
loader = importlib.machinery.SourceFileLoader("coverage", str(ROOT / "scripts/coverage"))
coverage = importlib.util.module_from_spec(importlib.util.spec_from_loader("coverage", loader))
loader.exec_module(coverage)


def branch(count, throw=False, fallthrough=False):
    return {"count": count, "throw": throw, "fallthrough": fallthrough}


def line(number, count, *branches):
    return {"line_number": number, "count": count, "gcovr/noncode": False,
            "branches": [branch(taken) for taken in branches]}


class ReadingGcov(unittest.TestCase):
    def test_branches_of_blocks_that_only_clean_up_are_left_out(self):
        text = ("      9*:   20:  return new A(b);\n"
                "      9:   20-block  0\n"
                "call    0 returned 9\n"
                "branch  1 taken 9 (fallthrough)\n"
                "branch  2 taken 0 (throw)\n"
                "    $$$$$:   20-block  1\n"
                "branch  3 never executed\n"
                "branch  4 never executed\n"
                "        -:   21:}\n")
        kept = coverage.without_clean_up(text)
        self.assertEqual(kept, "      9*:   20:  return new A(b);\n"
                               "call    0 returned 9\n"
                               "branch  1 taken 9 (fallthrough)\n"
                               "branch  2 taken 0 (throw)\n"
                               "        -:   21:}\n")

    def test_branches_of_a_handler_stay(self):
        text = ("    =====:   30:    if (kept) {\n"
                "    $$$$$:   30-block  0\n"
                "branch  0 never executed\n"
                "branch  1 never executed\n")
        self.assertEqual(coverage.without_clean_up(text).count("branch"), 2)

    def test_branches_never_taken_on_the_usual_way_stay(self):
        text = ("    #####:   30:    if (kept) {\n"
                "    %%%%%:   30-block  0\n"
                "branch  0 never executed\n"
                "branch  1 never executed\n")
        self.assertEqual(coverage.without_clean_up(text).count("branch"), 2)


class Decisions(unittest.TestCase):
    def test_a_call_that_returns_or_throws_decides_nothing(self):
        self.assertEqual(coverage.decisions([branch(9, fallthrough=True), branch(0, throw=True),
                                             branch(0), branch(9, fallthrough=True)]),
                         [branch(0), branch(9, fallthrough=True)])

    def test_a_reached_line_without_any_taken_branch_has_lost_them(self):
        lines = [line(1, 9, 0, 0), line(2, 0, 0, 0), line(3, 9, 9, 0)]
        report = {"files": [{"file": "a.cpp", "lines": lines}]}
        coverage.keep_decisions(report)
        self.assertEqual([len(kept["branches"]) for kept in report["files"][0]["lines"]], [0, 2, 2])

    def test_lines_without_code_are_left_out(self):
        report = {"files": [{"file": "a.cpp", "lines": [{**line(1, 0), "gcovr/noncode": True}]}]}
        coverage.keep_decisions(report)
        self.assertEqual(report["files"][0]["lines"], [])


class Gaps(unittest.TestCase):
    SOURCE = ["void F() {", "  if (a && b) {", "    G();", "    H();", "  }", "}", "void I() {"]

    def gaps(self, *lines, functions=()):
        file = {"file": "a.cpp", "lines": list(lines),
                "functions": [{"lineno": number, "execution_count": count}
                              for number, count in functions]}
        return [(gap.missing, gap.text) for gap in coverage.gaps_of_file(file, self.SOURCE)]

    def test_a_fully_covered_file_has_none(self):
        self.assertEqual(self.gaps(line(1, 5), line(2, 5, 2, 3, 1, 1), line(3, 2)), [])

    def test_a_branch_and_the_lines_behind_it_are_one(self):
        self.assertEqual(self.gaps(line(1, 5), line(2, 5, 0, 5), line(3, 0), line(4, 0)),
                         [("1 of 2", "if (a && b) {")])

    def test_lines_that_only_an_exception_leads_to_are_one(self):
        self.assertEqual(self.gaps(line(2, 5), line(3, 0), line(4, 0)),
                         [("never reached", "G();")])

    def test_a_function_that_is_never_called_stands_for_itself(self):
        self.assertEqual(self.gaps(line(2, 5, 0, 5), line(3, 0), line(7, 0), functions=[(7, 0)]),
                         [("1 of 2", "if (a && b) {"), ("never reached", "void I() {")])

    def test_an_instance_that_is_called_is_enough(self):
        self.assertEqual(self.gaps(line(1, 5), functions=[(1, 0), (1, 5)]), [])

    def test_a_line_on_which_a_called_lambda_begins_is_reached(self):
        self.assertEqual(self.gaps(line(1, 5), line(2, 0), functions=[(2, 5)]), [])


class Explaining(unittest.TestCase):
    TEXT = ("# About this file.\n"
            "pending: late.cpp\n"
            "\n"
            "a.cpp | 1 of 2 | if (a | b) {\n"
            "  Because,\n"
            "  really.\n"
            "sometimes: a.cpp | 1 of 2 | c\n"
            "  Now and then.\n")
    GAP = coverage.Gap("a.cpp", "1 of 2", "if (a | b) {")

    RARE = coverage.Gap("a.cpp", "1 of 2", "c")

    def test_places_and_pending_files_are_read(self):
        self.assertEqual(coverage.read_exceptions(self.TEXT),
                         ([self.GAP, self.RARE], [self.RARE], ["late.cpp"]))

    def test_what_depends_on_threads_may_be_there_or_not(self):
        for gaps in ([], [self.RARE]):
            self.assertEqual(coverage.compare(gaps, [self.RARE], [self.RARE]), [])
        self.assertEqual(len(coverage.compare([], [self.GAP, self.RARE], [self.RARE])), 1)

    def test_a_reason_is_asked_for(self):
        with self.assertRaisesRegex(coverage.CoverageError, "no reason"):
            coverage.read_exceptions("a.cpp | 1 of 2 | if (a)\nb.cpp | 1 of 2 | if (b)\n  Why.\n")

    def test_other_lines_are_refused(self):
        for text in ("a.cpp: if (a)\n", "  A reason without a place.\n"):
            with self.assertRaises(coverage.CoverageError):
                coverage.read_exceptions(text)

    def test_explained_gaps_pass(self):
        self.assertEqual(coverage.compare([self.GAP, self.GAP], [self.GAP, self.GAP]), [])

    def test_each_gap_needs_its_own_explanation(self):
        self.assertEqual(coverage.compare([self.GAP, self.GAP], [self.GAP]),
                         ["not covered: a.cpp | 1 of 2 | if (a | b) {"])

    def test_another_branch_of_an_explained_line_fails_twice(self):
        faults = coverage.compare([self.GAP._replace(missing="2 of 2")], [self.GAP])
        self.assertEqual(faults, ["not covered: a.cpp | 2 of 2 | if (a | b) {",
                                  "explained, but not a gap: a.cpp | 1 of 2 | if (a | b) {"])

    def test_the_check_prints_shares_by_folder_and_fails_for_a_gap(self):
        report = {"files": [{"file": "scripts/coverage", "lines": [line(1, 5, 0, 5)]}]}
        place = "scripts/coverage | 1 of 2 | #!/usr/bin/env python3\n  Why.\n"
        for exceptions, passes in (("", False), (place, True),
                                   ("pending: scripts/coverage\n", True)):
            output, errors = io.StringIO(), io.StringIO()
            with contextlib.redirect_stdout(output), contextlib.redirect_stderr(errors):
                self.assertEqual(coverage.check(report, exceptions), passes)
            self.assertRegex(output.getvalue(), r"scripts +1 of +1 +100.0 % +1 of +2 +50.0 %")
            self.assertEqual("not covered" in errors.getvalue(), not passes)


if __name__ == "__main__":
    unittest.main()
