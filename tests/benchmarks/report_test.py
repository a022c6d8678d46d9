#!/usr/bin/env python3
"""Tests the tables and the page of benchmarks/report.py on results in Google Benchmark's form."""
import copy
import json
import pathlib
import sys
import tempfile
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "benchmarks"))
import report  # noqa: E402


def run(family, name, nanoseconds):
    return {"family_index": family, "name": name, "run_type": "iteration",
            "items_per_second": 1e9 / nanoseconds}


RESULTS = {
    "context": {"date": "2024-02-29", "compiler": "GCC 12", "peer fmt": "9.1.0",
                "peer Qt": "absent"},
    "benchmarks": [
        run(4, "tree/LumAttributes", 5.0),
        run(3, "double to text/LumAttributes", 80.0),
        run(0, "double to text/limit", 10.0),
        run(1, "double to text/fmt/repeats:3", 20.0),
        run(2, "double to text/swprintf", 200.0),
        run(1, "double to text/fmt/repeats:3", 90.0),
        run(1, "double to text/fmt/repeats:3", 40.0),
        {**run(1, "double to text/fmt_median", 1.0), "run_type": "aggregate"},
    ],
}


class Report(unittest.TestCase):
    def setUp(self):
        self.results = copy.deepcopy(RESULTS)

    def collect(self):
        return report.collect([self.results])

    def test_workloads_stand_in_the_order_in_which_they_were_added(self):
        self.assertEqual(list(self.collect()), ["double to text", "tree"])

    def test_rows_are_ours_then_peers_by_median_time_then_the_limit(self):
        rows = report.rows_of(self.collect()["double to text"])
        self.assertEqual([row[0] for row in rows], ["LumAttributes", "fmt", "swprintf", "limit"])
        for row, expected in zip(rows, [(80, 2, 8), (40, 1, 4), (200, 5, 20), (10, 0.25, 1)]):
            for number, wanted in zip(row[1:], expected):
                self.assertAlmostEqual(number, wanted)

    def test_table_has_one_line_for_each_contender(self):
        table = report.table_of("double to text", self.collect()["double to text"])
        self.assertEqual(table.splitlines(), [
            "### double to text", "", "| contender | ns per item | × best peer | × limit |",
            "|---|--:|--:|--:|", "| LumAttributes | 80.0 | 2.00 | 8.00 |",
            "| fmt | 40.0 | 1.00 | 4.00 |", "| swprintf | 200.0 | 5.00 | 20.00 |",
            "| limit | 10.0 | 0.25 | 1.00 |"])

    def test_ratios_without_peer_and_limit_are_dashes(self):
        table = report.table_of("tree", self.collect()["tree"])
        self.assertTrue(table.endswith("| LumAttributes | 5.0 | – | – |\n"), table)

    def test_fails_when_a_benchmark_reports_an_error(self):
        self.results["benchmarks"][3] = {
            "family_index": 1, "name": "double to text/fmt", "run_type": "iteration",
            "error_occurred": True, "error_message": "wrong answer"}
        with self.assertRaisesRegex(report.ReportError, "double to text/fmt: wrong answer"):
            self.collect()

    def test_fails_when_our_contender_is_missing(self):
        del self.results["benchmarks"][1]
        with self.assertRaisesRegex(report.ReportError, "double to text: LumAttributes is missing"):
            self.collect()

    def test_fails_without_benchmarks(self):
        self.results["benchmarks"] = []
        with self.assertRaises(report.ReportError):
            self.collect()

    def test_facts_name_the_peers_with_versions_and_those_absent(self):
        facts = report.facts_of([self.results], 3, 0.5).splitlines()
        for fact in ["- compiler: GCC 12", "- peers: fmt 9.1.0", "- peers absent: Qt",
                     "- repetitions: 3"]:
            self.assertIn(fact, facts)

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

    def test_program_that_fails_or_is_not_there_fails_the_run(self):
        with self.assertRaises(report.ReportError):
            report.run_program("/bin/false", 1, True)
        with self.assertRaises(OSError):
            report.run_program("/nowhere/benchmarks", 1, True)

    def test_program_is_run_with_its_results_taken(self):
        with tempfile.TemporaryDirectory() as folder:
            program = pathlib.Path(folder) / "program"
            program.write_text(f"#!/bin/sh\ncat <<'END'\n{json.dumps(RESULTS)}\nEND\n",
                               encoding="utf-8")
            program.chmod(0o755)
            self.assertEqual(report.run_program(str(program), 1, True), RESULTS)


if __name__ == "__main__":
    unittest.main()
