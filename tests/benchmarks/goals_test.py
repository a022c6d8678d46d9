#!/usr/bin/env python3
"""Tests how benchmarks/goals.py judges a run, and that the project's own goals can be judged."""
import re
import unittest

from sample import HEAP, ROOT, TIMES
import goals
from results import Results

DOUBLE = "double to text"  # Ours 80, fmt 40, swprintf 200, the limit 10.


class Judging(unittest.TestCase):
    def setUp(self):
        self.results = Results([TIMES, HEAP])

    def goal(self, **entry):
        return goals.Goal(entry, self.results)

    def test_bounds(self):
        for comparison, rule, expected in [
                ("at_most", {"value": 80.1}, True), ("at_most", {"value": 79.9}, False),
                ("at_most", {"times": 8.1, "of": ["limit"]}, True),
                ("at_most", {"times": 7.9, "of": ["limit"]}, False),
                ("below", {"plus": 71, "of": ["limit"]}, True),
                ("below", {"plus": 69, "of": ["limit"]}, False),
                ("below", {"of": ["swprintf"]}, True),
                ("below", {"of": ["swprintf", "fmt"]}, False),
                ("below", {"of": ["swprintf", "absent library"]}, True),
                ("below", {"of": "every peer"}, False),
                ("below", {"times": 2.1, "of": "every peer"}, True),
                ("at_most", {"times": 1.1, "of_workload": "heap"}, True),
                ("at_most", {"times": 1.1, "of_workload": "tree"}, False)]:
            with self.subTest(rule=rule):
                self.assertIs(self.goal(workload=DOUBLE, **{comparison: rule}).is_met, expected)

    def test_equal_values_are_at_most_but_not_below(self):
        for comparison, expected in [("at_most", True), ("below", False)]:
            goal = self.goal(workload="heap", **{comparison: {"value": 100}})
            self.assertIs(goal.is_met, expected)

    def test_growth_is_judged_by_its_exponent(self):
        self.assertIs(self.goal(growth="save", below={"value": 1.4}).is_met, True)
        self.assertIs(self.goal(growth="save", below={"value": 1.3}).is_met, False)

    def test_what_was_not_measured_is_neither_met_nor_not(self):
        for entry in [{"workload": "nothing", "below": {"value": 1}},
                      {"growth": "nothing", "below": {"value": 1}},
                      {"workload": DOUBLE, "below": {"of": ["absent library"]}},
                      {"workload": "tree", "below": {"of": "every peer"}},
                      {"workload": "tree", "below": {"of_workload": "nothing"}}]:
            with self.subTest(entry=entry):
                goal = self.goal(**entry)
                self.assertIsNone(goal.is_met)
                self.assertIn("not measured", goal.line())

    def test_line_tells_goal_verdict_and_finding(self):
        for entry, expected in [
                ({"workload": DOUBLE, "at_most": {"times": 3, "of": ["limit"]}},
                 "Goal: at most 3 × limit: **not met**, 8.00 × limit."),
                ({"workload": DOUBLE, "below": {"of": ["swprintf", "std::to_chars"]}},
                 "Goal: below each of swprintf, std::to_chars: met, 0.40 × swprintf."),
                ({"workload": "heap", "at_most": {"value": 120}},
                 "Goal: at most 120 bytes: met, 100.00 bytes."),
                ({"workload": "heap", "below": {"plus": 10, "of": ["limit"]}},
                 "Goal: below limit + 10 bytes: **not met**, limit + 60.0 bytes."),
                ({"growth": "save", "below": {"value": 1.4}},
                 "Goal: exponent below 1.4: met, 1.33.")]:
            with self.subTest(entry=entry):
                self.assertEqual(self.goal(**entry).line(), expected)

    def test_reason_is_told_only_when_the_goal_is_not_met(self):
        for value, expected in [(1, True), (1000, False)]:
            goal = self.goal(workload="tree", below={"value": value}, reason="The tree is wide.")
            self.assertIs(goal.line().endswith(" The tree is wide."), expected)


class OwnGoals(unittest.TestCase):
    def test_every_goal_names_a_workload_of_the_benchmarks(self):
        sources = "".join(path.read_text(encoding="utf-8")
                          for pattern in ("*.cpp", "*.h")
                          for path in sorted((ROOT / "benchmarks").glob(pattern)))
        own = goals.read_goals(Results([TIMES]))
        self.assertGreater(len(own), 30)
        for goal in own:
            # Names are put together of parts: the first stands in a source as it is.
            first = re.match("look-up among |[^,]+", goal.workload)[0]
            self.assertIn(f'"{first}', sources.replace('\\"', '"'), goal.workload)

    def test_every_goal_has_words(self):
        for goal in goals.read_goals(Results([TIMES])):
            self.assertRegex(goal.wanted(), "^(exponent )?(at most|below) .+")


if __name__ == "__main__":
    unittest.main()
