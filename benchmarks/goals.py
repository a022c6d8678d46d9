"""The goals of benchmarks/goals.json, and whether a run meets them.

A goal names a workload, or with "growth" the exponent of one, and a bound, "at_most" or "below":

    {"value": 10}                                in the workload's unit
    {"times": 3, "of": ["limit"]}                of each of these contenders that was measured
    {"plus": 10, "of": ["limit"]}                likewise
    {"of": "every peer"}
    {"times": 1.1, "of_workload": "deep copy"}   of our own value there

"reason" says, for when it is not met, what stands in the way.
"""
import json
import pathlib

from results import LIMIT, OURS, growth_exponent

FILE = pathlib.Path(__file__).resolve().parent / "goals.json"
COMPARISONS = {"at_most": "at most", "below": "below"}
EVERY_PEER = "every peer"


class Goal:
    """One goal. `measured` and `bound` are numbers, or None: not measured."""

    def __init__(self, entry, results):
        self.workload = entry.get("growth", entry.get("workload"))
        self.is_growth = "growth" in entry
        self.reason = entry.get("reason", "")
        (self.comparison,) = COMPARISONS.keys() & entry.keys()
        rule = entry[self.comparison]
        self._rule = rule
        medians = results.workloads.get(self.workload, {})
        self.unit = "" if self.is_growth else results.unit(self.workload)
        self.measured = (growth_exponent(results.growth.get(self.workload, {})) if self.is_growth
                         else medians.get(OURS))
        self.of, reference = self._reference(rule, medians, results)
        self.reference = reference
        self.bound = rule["value"] if "value" in rule else (
            None if reference is None
            else rule.get("times", 1) * reference + rule.get("plus", 0))

    @staticmethod
    def _reference(rule, medians, results):
        """The name and the value of what ours is compared with: the least of all that are named."""
        if "of_workload" in rule:
            value = results.workloads.get(rule["of_workload"], {}).get(OURS)
            return rule["of_workload"], value
        wanted = rule.get("of", [])
        if wanted == EVERY_PEER:
            wanted = [name for name in medians if name not in (OURS, LIMIT)]
        present = [name for name in wanted if name in medians]
        best = min(present, key=medians.get, default=None)
        return best, medians.get(best)

    @property
    def is_met(self):
        """None when it was not measured."""
        if self.measured is None or self.bound is None:
            return None
        if self.comparison == "at_most":
            return self.measured <= self.bound
        return self.measured < self.bound

    def wanted(self):
        """The goal in words."""
        rule = self._rule
        if "value" in rule:
            what = f"{rule['value']:g} {self.unit}".strip()
        else:
            of = rule.get("of_workload", rule.get("of"))
            names = of if isinstance(of, str) else ", ".join(of)
            if isinstance(of, list) and len(of) > 1:
                names = f"each of {names}"
            times = f"{rule['times']:g} × " if "times" in rule else ""
            plus = f" + {rule['plus']:g} {self.unit}" if "plus" in rule else ""
            what = f"{times}{names}{plus}"
        return f"{'exponent ' if self.is_growth else ''}{COMPARISONS[self.comparison]} {what}"

    def line(self):
        """The goal and the verdict on this run."""
        if self.is_met is None:
            return f"Goal: {self.wanted()}: not measured."
        if self.of is None:
            found = f"{self.measured:.2f} {self.unit}".strip()
        elif "plus" in self._rule:
            found = f"{self.of} + {self.measured - self.reference:.1f} {self.unit}"
        else:
            found = f"{self.measured / self.reference:.2f} × {self.of}"
        if self.is_met:
            return f"Goal: {self.wanted()}: met, {found}."
        return f"Goal: {self.wanted()}: **not met**, {found}. {self.reason}".rstrip()


def read_goals(results, file=FILE):
    return [Goal(entry, results) for entry in json.loads(file.read_text(encoding="utf-8"))]
