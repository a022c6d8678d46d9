#!/usr/bin/env python3
"""Tests scripts/check-interface on the libraries of a build folder and on altered lists of names.

Usage: check_interface_test.py linux|windows BUILD_FOLDER
"""
import pathlib
import subprocess
import sys
import tempfile
import unittest

SCRIPT = pathlib.Path(__file__).resolve().parents[2] / "scripts/check-interface"
PLATFORM, BUILD = sys.argv[1:3]


class CheckInterface(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.lists = pathlib.Path(folder.name)
        self.assertEqual(self.run_script("--update").returncode, 0)

    def run_script(self, *options, build=BUILD):
        return subprocess.run([SCRIPT, *options, PLATFORM, build, self.lists], text=True,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False)

    def alter(self, library, change):
        file = self.lists / f"{library}.txt"
        lines = file.read_text(encoding="utf-8").splitlines()
        file.write_text("".join(line + "\n" for line in sorted(change(lines))), encoding="utf-8")

    def test_accepts_the_lists_it_wrote(self):
        result = self.run_script()
        self.assertEqual(result.returncode, 0, result.stdout)

    def test_lists_hold_names_of_both_libraries_and_none_of_the_standard_library(self):
        names = {library: (self.lists / f"{library}.txt").read_text(encoding="utf-8")
                 for library in ("LumAttributes", "LumPlatform")}
        self.assertIn("\n_ZTV8CLumType\tvtable for CLumType\n", names["LumAttributes"])
        self.assertIn("\n_ZTV10FileObject\tvtable for FileObject\n", names["LumPlatform"])
        for text in names.values():
            self.assertNotRegex(text, r"(?m)^_ZN?K?(S|9__gnu)")

    def test_tells_a_name_that_is_missing(self):
        self.alter("LumPlatform", lambda lines: lines + ["_ZN10FileObject4GoneEv\twhatever"])
        result = self.run_script()
        self.assertEqual(result.returncode, 1)
        self.assertRegex(result.stdout, r"LumPlatform: MISSING.*\n  _ZN10FileObject4GoneEv\n"
                                        r"      FileObject::Gone\(\)\n")
        self.assertNotIn("NEW", result.stdout)
        self.assertIn("--update", result.stdout)

    def test_tells_a_name_that_is_new(self):
        self.alter("LumAttributes",
                   lambda lines: [line for line in lines if not line.startswith("_ZTV8CLumType\t")])
        result = self.run_script()
        self.assertEqual(result.returncode, 1)
        self.assertRegex(result.stdout, r"LumAttributes: NEW.*\n  _ZTV8CLumType\n"
                                        r"      vtable for CLumType\n")
        self.assertNotIn("MISSING", result.stdout)

    def test_only_the_names_as_the_linker_sees_them_count(self):
        self.alter("LumAttributes", lambda lines: [line.split("\t")[0] for line in lines])
        self.assertEqual(self.run_script().returncode, 0)

    def test_fails_without_libraries(self):
        result = self.run_script(build=str(self.lists))
        self.assertEqual(result.returncode, 2)
        self.assertIn("is missing; build it first", result.stdout)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
