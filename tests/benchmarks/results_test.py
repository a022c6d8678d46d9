#!/usr/bin/env python3
"""Tests how benchmarks/results.py runs programs and puts their results in order."""
import copy
import json
import pathlib
import tempfile
import unittest

from sample import HEAP, TIMES
import results


class Collecting(unittest.TestCase):
    def setUp(self):
        self.times = copy.deepcopy(TIMES)

    def results(self):
        return results.Results([self.times, HEAP])

    def test_workloads_stand_in_the_order_in_which_they_were_added(self):
        self.assertEqual(list(self.results().workloads), ["double to text", "tree", "heap"])

    def test_values_are_medians_and_aggregates_are_left_out(self):
        medians = self.results().workloads["double to text"]
        self.assertEqual(list(medians), ["limit", "fmt", "swprintf", "LumAttributes"])
        for name, expected in [("limit", 10), ("fmt", 40), ("LumAttributes", 80)]:
            self.assertAlmostEqual(medians[name], expected)

    def test_rows_are_ours_then_peers_by_median_time_then_the_limit(self):
        rows = results.rows_of(self.results().workloads["double to text"])
        self.assertEqual([row[0] for row in rows], ["LumAttributes", "fmt", "swprintf", "limit"])
        for row, expected in zip(rows, [(80, 2, 8), (40, 1, 4), (200, 5, 20), (10, 0.25, 1)]):
            for number, wanted in zip(row[1:], expected):
                self.assertAlmostEqual(number, wanted)

    def test_single_values_bring_their_unit(self):
        collected = self.results()
        self.assertEqual(collected.workloads["heap"], {"limit": 40.0, "LumAttributes": 100.0})
        self.assertEqual(collected.unit("heap"), "bytes")
        self.assertEqual(collected.unit("tree"), "ns per item")

    def test_sizes_are_collected_apart(self):
        growth = self.results().growth
        self.assertEqual(list(growth), ["save"])
        for size, expected in [("1k", 100), ("10k", 150), ("1M", 1000)]:
            self.assertAlmostEqual(growth["save"][size], expected)

    def test_fails_when_a_benchmark_reports_an_error(self):
        self.times["benchmarks"][3] = {
            "family_index": 1, "name": "double to text/fmt", "run_type": "iteration",
            "error_occurred": True, "error_message": "wrong answer"}
        with self.assertRaisesRegex(results.ReportError, "double to text/fmt: wrong answer"):
            self.results()

    def test_fails_when_our_contender_is_missing(self):
        del self.times["benchmarks"][1]
        with self.assertRaisesRegex(results.ReportError,
                                    "double to text: LumAttributes is missing"):
            self.results()

    def test_fails_without_benchmarks(self):
        self.times["benchmarks"] = []
        with self.assertRaises(results.ReportError):
            results.Results([self.times])


class Growth(unittest.TestCase):
    def test_exponent_is_one_when_the_time_for_an_item_stays(self):
        self.assertAlmostEqual(results.growth_exponent({"1k": 70, "10k": 90, "1M": 70}), 1)

    def test_exponent_is_two_when_the_time_for_an_item_grows_with_their_number(self):
        self.assertAlmostEqual(results.growth_exponent({"1k": 7, "1M": 7000}), 2)

    def test_exponent_needs_the_least_and_the_largest_size(self):
        self.assertIsNone(results.growth_exponent({"1k": 7, "100k": 7}))
        self.assertIsNone(results.growth_exponent({"10k": 7, "1M": 7}))


class Running(unittest.TestCase):
    def run_script(self, script, **options):
        with tempfile.TemporaryDirectory() as folder:
            program = pathlib.Path(folder) / "program"
            program.write_text(f"#!/bin/sh\n{script}\n", encoding="utf-8")
            program.chmod(0o755)
            return results.run_program(str(program), 1, **{"short": True, **options})

    def test_program_that_fails_or_is_not_there_fails_the_run(self):
        with self.assertRaises(results.ReportError):
            results.run_program("/bin/false", 1, True)
        with self.assertRaises(OSError):
            results.run_program("/nowhere/benchmarks", 1, True)

    def test_program_is_run_with_its_results_taken(self):
        printed = json.dumps(TIMES)
        self.assertEqual(self.run_script(f"cat <<'END'\n{printed}\nEND"), TIMES)

    def test_program_without_a_chosen_benchmark_has_no_results(self):
        self.assertEqual(self.run_script("true"), {"context": {}, "benchmarks": []})

    def test_short_run_leaves_out_the_largest_sizes(self):
        tell = """printf '["%s"]' "$(echo "$@" | sed -e 's/.*filter=//')" """
        self.assertEqual(self.run_script(tell), ["-(, 100k/|, 1M/)"])
        self.assertEqual(self.run_script(tell, names="CanVal"), ["CanVal"])


if __name__ == "__main__":
    unittest.main()
