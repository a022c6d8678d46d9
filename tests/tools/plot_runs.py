#!/usr/bin/env python3
"""Runs lumattr plot as a process: the drawings that gnuplot makes, and what stays when it fails.

Usage: plot_runs.py LUMATTR EXAMPLE_DATA

Without gnuplot it says so and ends with 77.
"""

import os
import pathlib
import re
import shutil
import signal
import struct
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree

PATIENCE = 60  # Seconds until a run that hangs is given up.
SKIPPED = 77
PNG = b"\x89PNG\r\n\x1a\n"
# In the place of gnuplot, one that fails half way;
FAILING = """#!/bin/sh
part=$(sed -n 's/^set output "\\(.*\\)"$/\\1/p')
echo half a drawing >"$part"
exit 1
"""
# one that ends before it has read anything;
DEAF = "#!/bin/sh\nexit 1\n"
# one that draws nothing.
SILENT = "#!/bin/sh\ncat >/dev/null\n"
# one that takes long, and says when it has begun.
SLOW = "#!/bin/sh\ncat >/dev/null\necho begun >&2\nexec sleep 60\n"


class Settings:
    """What the command line says."""
    tool, data = "", pathlib.Path()


class PlotRun(unittest.TestCase):
    """Each in a folder of its own, in which nothing but the drawing may be left."""

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def plot(self, *arguments, log=b"", path=None):
        """Exit code and messages; standard output must stay empty."""
        done = subprocess.run([Settings.tool, "plot", *map(str, arguments)], cwd=self.folder,
                              input=log, capture_output=True, timeout=PATIENCE, check=False,
                              env=self.environment(path))
        self.assertEqual(done.stdout, b"")
        return done.returncode, done.stderr.decode()

    def environment(self, path):
        """Programs of the folder come before others of their names."""
        return {**os.environ, "PATH": f"{path}:{os.environ['PATH']}" if path else os.environ["PATH"]}

    def draw(self, output, *arguments, log=b""):
        """The drawing's bytes. gnuplot has nothing to complain of."""
        self.assertEqual(self.plot("-o", output, *arguments, log=log), (0, ""))
        self.assertEqual(self.names(), [output])
        return (self.folder / output).read_bytes()

    def names(self):
        return sorted(path.name for path in self.folder.iterdir())

    def example(self, name, log):
        return "-p", Settings.data / f"{name}.profile", Settings.data / log

    def texts(self, svg):
        """All texts of the drawing, its words joined by blanks."""
        root = xml.etree.ElementTree.fromstring(svg)
        self.assertEqual(root.tag, "{http://www.w3.org/2000/svg}svg")
        return [" ".join("".join(node.itertext()).split())
                for node in root.iter("{http://www.w3.org/2000/svg}text")]

    def fake(self, script):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        program = pathlib.Path(folder.name) / "gnuplot"
        program.write_text(script)
        program.chmod(0o755)
        return folder.name

    def test_engine_columns_are_drawn_with_titles_and_units(self):
        texts = self.texts(self.draw("a.svg", *self.example("engine", "engine.candump")))
        for text in ["EEC1 Speed", "EEC1 Torque", "ET1 Coolant", "EFL OilPressure", "Motion Roll",
                     "Gearbox Hours", "rpm", "%", "degC", "kPa", "deg", "h", "time (UTC)"]:
            self.assertIn(text, texts)

    def test_survey_columns_are_drawn_with_titles_and_units(self):
        texts = self.texts(self.draw("a.svg", *self.example("survey", "survey.nmea")))
        for text in ["GGA Latitude", "GGA Satellites", "RMC Speed", "DBT Depth", "HDT Heading",
                     "deg", "m/s", "m", "time (UTC)"]:
            self.assertIn(text, texts)

    def test_png_has_the_size_of_its_panels(self):
        for name, log, panels in [("engine", "engine.candump", None), ("survey", "survey.nmea", 4)]:
            png = self.draw("a.png", *self.example(name, log))
            self.assertEqual(png[:8], PNG)
            width, height = struct.unpack(">II", png[16:24])
            self.assertEqual(width, 1200)
            self.assertEqual((height - 90) % 260, 0)
            if panels:
                self.assertEqual((height - 90) // 260, panels)

    def test_chosen_columns_are_drawn_alone(self):
        arguments = self.example("survey", "survey.nmea")
        texts = self.texts(self.draw("a.svg", "-c", "Depth", "-c", "RMC.Speed", *arguments))
        self.assertIn("DBT Depth", texts)
        self.assertIn("RMC Speed", texts)
        self.assertNotIn("GGA Latitude", texts)
        self.assertNotIn("deg", texts)

    def test_standard_input_and_formulas_are_drawn(self):
        log = b"".join(b"%d %d\n" % (i, i * i) for i in range(20))
        texts = self.texts(self.draw("a.svg", "-f", "Square=field(1)", log=log))
        self.assertIn("Square", texts)
        self.assertIn("line", texts)

    def test_values_before_the_first_time_stamp_are_not_drawn_as_times(self):
        log = b"7\n7\n(1749463200.0) 98F00400 8\n(1749463260.0) 98F00400 9\n"
        texts = self.texts(self.draw("a.svg", "--format", "plain", "-f", "A=number", log=log))
        self.assertIn("time (UTC)", texts)
        self.assertTrue(any("10:00" in text for text in texts), texts)

    def test_one_value_alone_is_drawn(self):
        self.assertIn("A", self.texts(self.draw("a.svg", "-f", "A=field(0)", log=b"5\n")))

    def test_a_value_between_two_gaps_of_a_long_curve_is_drawn(self):
        many = b"".join(b"%d\n" % (i % 7) for i in range(600))
        for lone, points in [(b"", 0), (b"none\n3\nnone\n", 1)]:
            svg = self.draw("a.svg", "-f", "A=field(0)", log=many + lone + many)
            self.assertEqual(len(re.findall(rb"<use [^>]*scale", svg)), points)

    def test_names_of_a_profile_are_no_commands_of_gnuplot(self):
        for unit in ["'; system('touch stolen') #", "\"; system(\"touch stolen\") #",
                     "`touch stolen`", "\\\"; system('touch stolen') #", "@A", "it's"]:
            with self.subTest(unit):
                profile = self.folder / "a.profile"
                profile.write_text(f"[Message M]\nA.Formula=field(0)\nA.Unit={unit}\n")
                code, messages = self.plot("-p", profile, "-o", "`it's`.svg", log=b"5\n6\n")
                self.assertEqual((code, messages), (0, ""))
                self.assertEqual(self.names(), ["`it's`.svg", "a.profile"])
                self.assertIn(unit, self.texts((self.folder / "`it's`.svg").read_bytes()))

    def test_trouble_leaves_no_file(self):
        survey = self.example("survey", "survey.nmea")
        for arguments, message in [
                (["-o", "a.svg", "-c", "Deep", *survey], "there is no column 'Deep'"),
                (["-o", "a.svg", "-f", "A=field(9)", survey[-1], "--format", "plain"],
                 "no column has a value: there is nothing to draw"),
                (["-o", "a.svg", "-f", "A=field(9)"],
                 "no column has a value: there is nothing to draw"),
                (["-o", "a.svg"], "needs --formula or --profile; see lumattr plot --help"),
                (["-o", "a.gif", *survey], "--output is a file .svg or .png, not 'a.gif'"),
                (["-o", "missing/a.svg", *survey],
                 "cannot write 'missing/a.svg': No such file or directory"),
                (["-o", "a.svg", *survey[:2], "missing.nmea"],
                 "cannot open 'missing.nmea': No such file or directory")]:
            with self.subTest(message):
                self.assertEqual(self.plot(*arguments), (2, f"lumattr: {message}\n"))
                self.assertEqual(self.names(), [])

    def test_an_old_drawing_stays_whole_when_gnuplot_fails(self):
        old = self.folder / "a.svg"
        for script in [FAILING, DEAF, SILENT]:
            with self.subTest(script):
                old.write_text("old")
                code, messages = self.plot("-o", "a.svg", *self.example("engine", "engine.candump"),
                                           path=self.fake(script))
                self.assertEqual(code, 2)
                self.assertIn("gnuplot made no drawing", messages)
                self.assertEqual(self.names(), ["a.svg"])
                self.assertEqual(old.read_text(), "old")

    def test_files_of_names_like_the_drawing_stay(self):
        names = ["a.svg.part", "a.svg.part1", "a.svg.part2"]
        for name in names[:2]:
            (self.folder / name).write_text("mine")
        (self.folder / names[2]).mkdir()
        self.assertEqual(self.plot("-o", "a.svg", "-f", "A=field(0)", log=b"5\n"), (0, ""))
        self.assertEqual(self.names(), ["a.svg", *names])
        for name in names[:2]:
            self.assertEqual((self.folder / name).read_text(), "mine")

    def test_an_interruption_while_gnuplot_draws_leaves_no_file(self):
        with subprocess.Popen([Settings.tool, "plot", "-o", "a.svg", "-f", "A=field(0)"],
                              cwd=self.folder, stdin=subprocess.PIPE, stderr=subprocess.PIPE,
                              env=self.environment(self.fake(SLOW)), start_new_session=True) as run:
            run.stdin.write(b"5\n")
            run.stdin.close()
            self.assertEqual(run.stderr.readline(), b"begun\n")
            os.killpg(run.pid, signal.SIGINT)
            self.assertEqual(run.wait(PATIENCE), 2)
            self.assertIn(b"gnuplot made no drawing", run.stderr.read())
        self.assertEqual(self.names(), [])

    def test_a_folder_is_not_replaced(self):
        (self.folder / "a.svg").mkdir()
        code, messages = self.plot("-o", "a.svg", "-f", "A=field(0)", log=b"5\n")
        self.assertEqual(code, 2)
        self.assertIn("cannot write 'a.svg'", messages)
        self.assertEqual(self.names(), ["a.svg"])


def main():
    Settings.tool = os.path.abspath(sys.argv[1])
    Settings.data = pathlib.Path(sys.argv[2]).absolute()
    if shutil.which("gnuplot") is None:
        print("Not tested: drawings, which need gnuplot (on Debian: gnuplot-nox)")
        sys.exit(SKIPPED)
    # Programs in the background of a script ignore Ctrl-C, and so would what they start.
    signal.signal(signal.SIGINT, signal.default_int_handler)
    unittest.main(argv=sys.argv[:1])


if __name__ == "__main__":
    main()
