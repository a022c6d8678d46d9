#!/usr/bin/env python3
"""Tests how scripts/check-counts compares counts with its reference."""
import copy
import importlib.machinery
import importlib.util
import json
import pathlib
import tempfile
import unittest

from sample import ROOT

loader = importlib.machinery.SourceFileLoader("check_counts", str(ROOT / "scripts/check-counts"))
check_counts = importlib.util.module_from_spec(
    importlib.util.spec_from_loader("check_counts", loader))
loader.exec_module(check_counts)

REFERENCE = {
    "compiler": "GCC 12",
    "operations": {"CanVal": {"items": 1000, "allocations": 0, "instructions": 90000},
                   "deep copy": {"items": 100, "allocations": 230, "instructions": 70000}}}


class Comparing(unittest.TestCase):
    def compare(self, operation=None, **changed):
        counted = copy.deepcopy(REFERENCE)
        if operation:
            counted["operations"].setdefault(operation, {"items": 1}).update(changed)
        else:
            counted.update(changed)
        return check_counts.compare(counted, REFERENCE)

    def test_equal_counts_pass(self):
        self.assertEqual(self.compare(), ([], []))

    def test_more_allocations_fail_with_operation_count_reference_and_bound(self):
        faults, _ = self.compare("deep copy", allocations=231)
        self.assertEqual(faults, ["deep copy: 231 allocations for 100 items (2.3 each), the "
                                  "reference has 230 (2.3); the bound is exactly that"])

    def test_fewer_allocations_fail_and_ask_for_an_update(self):
        (fault,), _ = self.compare("deep copy", allocations=229)
        self.assertTrue(fault.endswith("update the reference"), fault)

    def test_instructions_may_grow_by_few_hundredths(self):
        self.assertEqual(self.compare("CanVal", instructions=92600), ([], []))
        (fault,), _ = self.compare("CanVal", instructions=92800)
        self.assertEqual(fault, "CanVal: 92,800 instructions for 1,000 items (92.8 each), the "
                                "reference has 90,000 (90.0); the bound is 1.03 times that")

    def test_far_fewer_instructions_are_told_but_pass(self):
        faults, (note,) = self.compare("CanVal", instructions=45000)
        self.assertEqual(faults, [])
        self.assertIn("--update", note)

    def test_instructions_of_another_compiler_are_not_compared_which_is_told(self):
        counted = copy.deepcopy(REFERENCE)
        counted["compiler"] = "GCC 13"
        counted["operations"]["CanVal"].update(instructions=1_000_000)
        faults, (note,) = check_counts.compare(counted, REFERENCE)
        self.assertEqual(faults, [])
        self.assertIn("GCC 13", note)
        counted["operations"]["CanVal"].update(allocations=1)
        self.assertEqual(len(check_counts.compare(counted, REFERENCE)[0]), 1)

    def test_operations_must_be_the_same(self):
        self.assertEqual(len(self.compare("overload", items=1)[0]), 1)
        self.assertEqual(len(self.compare(operations={})[0]), 2)
        self.assertEqual(len(self.compare("CanVal", items=500)[0]), 1)


class Dumps(unittest.TestCase):
    def test_instructions_are_taken_from_dumps_that_were_asked_for(self):
        dump = "desc: Trigger: Client Request: tree to file text, 1k\nfn=(1)\n1 2\ntotals: 491\n"
        self.assertEqual(check_counts.instructions_in(dump), ("tree to file text, 1k", 491))
        self.assertIsNone(check_counts.instructions_in("desc: Trigger: Program termination\n"))

    def test_program_that_fails_is_an_error(self):
        with tempfile.TemporaryDirectory() as folder:
            program = pathlib.Path(folder) / "program"
            program.write_text("#!/bin/sh\nexit 3\n", encoding="utf-8")
            program.chmod(0o755)
            with self.assertRaises((OSError, check_counts.CountError)):
                check_counts.count(program)


class Reference(unittest.TestCase):
    def test_what_is_written_reads_back(self):
        self.assertEqual(json.loads(check_counts.text_of(REFERENCE)), REFERENCE)

    def test_the_projects_own_reference_is_whole(self):
        own = json.loads(check_counts.REFERENCE.read_text(encoding="utf-8"))
        self.assertGreaterEqual(len(own["operations"]), 20)
        for operation, counts in own["operations"].items():
            self.assertEqual(set(counts), {"items", "allocations", "instructions"}, operation)
            self.assertGreater(counts["instructions"], 0, operation)


if __name__ == "__main__":
    unittest.main()
