#!/usr/bin/env python3
"""Tests the tables and the page of benchmarks/report.py."""
import pathlib
import tempfile
import unittest

from sample import HEAP, TIMES
import report
from goals import Goal
from results import Results


class Tables(unittest.TestCase):
    def setUp(self):
        self.results = Results([TIMES, HEAP])

    def table(self, workload, goals=()):
        return report.table_of(workload, self.results.workloads[workload],
                               self.results.unit(workload), goals)

    def test_table_has_one_line_for_each_contender(self):
        self.assertEqual(self.table("double to text").splitlines(), [
            "### double to text", "", "| contender | ns per item | × best peer | × limit |",
            "|---|--:|--:|--:|", "| LumAttributes | 80.0 | 2.00 | 8.00 |",
            "| fmt | 40.0 | 1.00 | 4.00 |", "| swprintf | 200.0 | 5.00 | 20.00 |",
            "| limit | 10.0 | 0.25 | 1.00 |"])

    def test_ratios_without_peer_and_limit_are_dashes(self):
        self.assertTrue(self.table("tree").endswith("| LumAttributes | 5.0 | – | – |\n"))

    def test_single_values_stand_in_their_unit(self):
        self.assertEqual(self.table("heap").splitlines()[2:], [
            "| contender | bytes | × best peer | × limit |", "|---|--:|--:|--:|",
            "| LumAttributes | 100.0 | – | 2.50 |", "| limit | 40.0 | – | 1.00 |"])

    def test_goals_stand_below_the_table_of_their_workload(self):
        goals = [Goal({"workload": "tree", "below": {"value": 4}}, self.results),
                 Goal({"growth": "save", "below": {"value": 2}}, self.results)]
        text = report.tables_of(self.results, goals)
        self.assertIn(f"| LumAttributes | 5.0 | – | – |\n\n{goals[0].line()}\n\n### heap\n", text)
        self.assertTrue(text.endswith(f"\n\nsave: {goals[1].line()}\n"), text)
        self.assertEqual(text.count("Goal: "), 2)

    def test_growth_is_one_table_with_the_sizes_side_by_side(self):
        lines = report.growth_table(self.results.growth).splitlines()
        self.assertEqual(lines[-3:], ["| workload | 1k | 10k | 100k | 1M | exponent |",
                                      "|---|--:|--:|--:|--:|--:|",
                                      "| save | 100 | 150 | – | 1000 | 1.33 |"])

    def test_there_is_no_growth_table_without_growth(self):
        self.assertEqual(report.growth_table({}), "")


class Facts(unittest.TestCase):
    def facts(self, *arguments):
        options = report.options_of([*arguments, "program"])
        return report.facts_of([TIMES, HEAP], [], options, 0.5).splitlines()

    def test_facts_name_the_peers_with_versions_and_those_absent(self):
        for fact in ["- compiler: GCC 12", "- peers: fmt 9.1.0", "- peers absent: Qt",
                     "- repetitions: 3"]:
            self.assertIn(fact, self.facts("--repetitions", "3"))

    def test_facts_tell_when_only_some_benchmarks_ran(self):
        self.assertEqual(self.facts("--filter", "CanVal")[-1], "- only the benchmarks: `CanVal`")

    def test_verdicts_are_counted_and_goals_not_met_named(self):
        results = Results([TIMES])
        rules = [("tree", 6), ("tree", 4), ("double to text", 7), ("nothing", 1)]
        goals = [Goal({"workload": name, "below": {"value": value}}, results)
                 for name, value in rules]
        self.assertEqual(report.verdicts_of(goals),
                         "1 met, 2 not met, 1 not measured (double to text; tree)")


    def test_short_run_tells_how_much_is_right_and_what_is_absent(self):
        self.assertEqual(report.checked_line(Results([TIMES, HEAP]), [TIMES, HEAP]),
                         "7 contenders of 3 workloads and 3 further sizes are right; "
                         "peers absent: Qt")


class Page(unittest.TestCase):
    def test_page_keeps_the_notes_and_replaces_the_rest(self):
        with tempfile.TemporaryDirectory() as folder:
            file = pathlib.Path(folder) / "performance.md"
            report.write_page(file, "- old facts\n", "old tables\n")
            page = file.read_text(encoding="utf-8")
            page = page.replace(report.NOTES_BEGIN, report.NOTES_BEGIN + "\n\nWhat we think.\n")
            file.write_text(page, encoding="utf-8")
            for facts in ["- facts\n", "- newer facts\n"]:
                report.write_page(file, facts, "tables\n")
            page = file.read_text(encoding="utf-8")
        self.assertEqual(page.count("What we think."), 1)
        self.assertIn("- newer facts\n\ntables\n", page)
        self.assertNotIn("old", page)


if __name__ == "__main__":
    unittest.main()
