#!/usr/bin/env python3
"""Runs lumattr decode as a process: live pipes, interruptions and resumes, progress, memory.

Usage: decode_runs.py [--launcher PROGRAM] [--sanitized] LUMATTR EXAMPLE_DATA

The launcher runs programs of another system: wine those of Windows, whose names end in ".exe". A
program with sanitizers is slow and large: its log is small then, and its memory is not measured.
With LUM_LARGE_LOG=1 in the environment the log for the memory has 1 GB; LUM_INTERRUPTIONS says how many
runs are interrupted while they wait.
"""

import argparse
import gzip
import os
import pathlib
import random
import re
import select
import signal
import subprocess
import sys
import tempfile
import time
import unittest

MB = 1_000_000
LIMIT_OF_MEMORY = 32 * MB
PATIENCE = 30  # Seconds until a run that hangs is given up.
OFFSET = re.compile(rb"go on with (--format \w+ )?--resume-from (\d+)\n")


class Settings:
    """What the command line says."""
    tool, data, sanitized = [], pathlib.Path(), False

    @classmethod
    def is_windows(cls):
        return cls.tool[-1].endswith(".exe")


def start(*arguments, **options):
    pipes = {"stdin": subprocess.PIPE, "stdout": subprocess.PIPE, "stderr": subprocess.PIPE}
    return subprocess.Popen([*Settings.tool, "decode", *map(str, arguments)], **{**pipes, **options})


def run(*arguments, log=b""):
    """Exit code, standard output and standard error."""
    with start(*arguments) as process:
        out, err = process.communicate(log, timeout=PATIENCE)
    return process.returncode, out, err


def largest_memory(pid):
    """The most bytes that were resident since the program began; rusage counts what was before."""
    status = pathlib.Path(f"/proc/{pid}/status")
    match = re.search(r"VmHWM:\s+(\d+) kB", status.read_text() if status.exists() else "")
    return int(match.group(1)) * 1024 if match else None


def rows_of(csv):
    return csv.split(b"\r\n", 1)[1]


def bus_log(seconds):
    """Three senders whose messages of four packets mesh, and one frame by itself in each round."""
    lines = []
    for turn in range(seconds * 10):
        stamp = 1000 + turn * 0.1

        def add(ident, data, at):
            lines.append(f"({stamp + at:.6f}) can0 {ident}#{data}")
        for sender in range(3):
            add(f"18ECFF{sender:02X}", "201A0004FF21FF00", sender / 1e4)
        for packet in range(1, 5):
            for sender in range(3):
                data = "".join(f"{turn + sender + packet + i & 255:02X}" for i in range(7))
                add(f"18EBFF{sender:02X}", f"{packet:02X}{data}", packet / 100 + sender / 1e4)
        add("18F00400", f"F0FF7D{turn & 255:02X}{turn >> 8 & 255:02X}FFFFFF", 0.06)
    return ("\n".join(lines) + "\n").encode()


BUS_PROFILE = """[Message Long]
Match.Pgn=0xFF21
Last.Formula=J1939Val(message, 6, 25)
Line.Formula=number
[Message Speed]
Match.Pgn=61444
Speed.Formula=J1939Val(message, 7, 3)
"""


class DecodeRun(unittest.TestCase):
    """One process each, or two that share a log."""

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def write(self, name, content):
        path = self.folder / name
        path.write_bytes(content if isinstance(content, bytes) else content.encode())
        return path

    def need_posix(self, what):
        if Settings.is_windows():
            self.skipTest(f"{what} of Windows is another one")

    def read_within_patience(self, stream, until):
        """Reads until the text has come; what a run says late or never is a failure."""
        found, end = b"", time.monotonic() + PATIENCE
        while until not in found and time.monotonic() < end:
            if select.select([stream], [], [], 0.1)[0]:
                piece = os.read(stream.fileno(), 65536)
                if not piece:
                    break
                found += piece
        self.assertIn(until, found)
        return found

    def test_a_row_comes_before_the_next_line_is_there(self):
        with start("-f", "x=field(0)", "--format", "plain", "--csv", "-") as process:
            for number in range(1, 6):
                process.stdin.write(b"%d\n" % (number * 7))
                process.stdin.flush()
                self.read_within_patience(process.stdout, b"%d,,%d\r\n" % (number, number * 7))
            process.stdin.close()
            self.assertEqual(process.stdout.read(), b"")
        self.assertEqual(process.returncode, 0)

    def test_a_line_that_has_not_ended_waits_and_then_counts(self):
        with start("-f", "x=field(0)", "--format", "plain", "--csv", "-") as process:
            process.stdin.write(b"1\n2")
            process.stdin.flush()
            begun = self.read_within_patience(process.stdout, b"1,,1\r\n")
            self.assertNotIn(b"2,,2", begun)
            process.stdin.write(b"3")
            process.stdin.close()
            self.assertEqual(process.stdout.read(), b"2,,23\r\n")
        self.assertEqual(process.returncode, 0)

    def test_an_interruption_ends_a_wait_and_leaves_the_begun_line(self):
        self.need_posix("Ctrl-C")
        with start("-f", "x=field(0)", "--csv", "-") as process:
            process.stdin.write(b"1\n2\n3")
            process.stdin.flush()
            out = self.read_within_patience(process.stdout, b"2,,2\r\n")
            time.sleep(0.3)  # Until it waits for the rest of the third line.
            process.send_signal(signal.SIGINT)
            process.wait(PATIENCE)
            err = process.stderr.read()
            self.assertEqual(process.stdout.read(), b"")
        self.assertEqual(process.returncode, 130)
        self.assertEqual(rows_of(out), b"1,,1\r\n2,,2\r\n")
        self.assertIn(b"interrupted; go on with --format plain --resume-from 4\n", err)

    def wait_for_handler(self, process):
        """Until the program takes interruptions: before, one is its end."""
        status = pathlib.Path(f"/proc/{process.pid}/status")
        end = time.monotonic() + PATIENCE
        while time.monotonic() < end:
            caught = re.search(r"SigCgt:\s+([0-9a-f]+)", status.read_text())
            if int(caught.group(1), 16) >> (signal.SIGINT - 1) & 1:
                return
        self.fail("the program does not take interruptions")

    def interrupt_soon(self, process, pause):
        """It must end by itself, with a summary, although nothing comes any more."""
        end = time.perf_counter() + pause
        while time.perf_counter() < end:
            pass
        process.send_signal(signal.SIGINT)
        try:
            process.wait(PATIENCE)
        except subprocess.TimeoutExpired:
            process.kill()
            self.fail("the interruption had no effect")
        err = process.stderr.read()
        self.assertEqual(process.returncode, 130, err)
        return err

    def test_an_interruption_at_any_moment_ends_a_wait(self):
        self.need_posix("Ctrl-C")
        rounds = int(os.environ.get("LUM_INTERRUPTIONS", "20" if Settings.sanitized else "100"))
        moments = random.Random(37)
        for turn in range(rounds):
            with start("-f", "x=field(0)", "--csv", "-") as process:
                process.stdin.write(b"1\n")
                process.stdin.flush()
                self.read_within_patience(process.stdout, b"1,,1\r\n")
                err = self.interrupt_soon(process, moments.random() / 5000)
                self.assertRegex(err, rb"^lumattr: [^\n]+ 1 line, 1 row\n"
                                      rb"lumattr: [^\n]+: interrupted; go on with [^\n]+\n$",
                                 f"turn {turn}")

    def test_an_interruption_ends_the_wait_for_the_writer_of_a_named_pipe(self):
        self.need_posix("Ctrl-C")
        if not pathlib.Path("/proc/self/status").exists():
            self.skipTest("the system does not tell the signals of a process in /proc")
        os.mkfifo(self.folder / "fifo")
        moments = random.Random(41)
        for _ in range(5 if Settings.sanitized else 30):
            with start("-f", "x=field(0)", self.folder / "fifo") as process:
                self.wait_for_handler(process)
                err = self.interrupt_soon(process, moments.random() / 500)
                # Before the file is opened or after.
                self.assertRegex(err, rb"^lumattr: (1 log was not read\n$|"
                                      rb"[^\n]+ 0 lines, 0 rows\n"
                                      rb"lumattr: [^\n]+: interrupted; go on with [^\n]+\n$)")

    def test_a_program_that_is_to_ignore_interruptions_ignores_them(self):
        self.need_posix("Ctrl-C")
        ignore = {"preexec_fn": lambda: signal.signal(signal.SIGINT, signal.SIG_IGN)}
        with start("-f", "x=field(0)", "--csv", "-", **ignore) as process:
            process.stdin.write(b"1\n")
            process.stdin.flush()
            self.read_within_patience(process.stdout, b"1,,1\r\n")
            process.send_signal(signal.SIGINT)
            process.stdin.write(b"2\n")
            process.stdin.close()
            self.assertEqual(process.stdout.read(), b"2,,2\r\n")
        self.assertEqual(process.returncode, 0)

    def test_logs_that_an_interruption_left_out_are_told(self):
        self.need_posix("Ctrl-C")
        log = self.write("a.log", b"".join(b"%d\n" % i for i in range(60_000)))
        with start("-f", "x=field(0)", "--csv", log, log, log) as process:
            os.read(process.stdout.fileno(), 4096)
            process.send_signal(signal.SIGINT)
            process.stdout.read()
            err = process.stderr.read()
        self.assertEqual(process.returncode, 130)
        self.assertTrue(err.endswith(b"\nlumattr: 2 logs were not read\n"), err)

    def interrupt_after_first_rows(self, arguments):
        """The pipe is full when the signal comes, so the run is in the middle of its log."""
        with start(*arguments, stdin=subprocess.DEVNULL) as process:
            out = os.read(process.stdout.fileno(), 4096)
            process.send_signal(signal.SIGINT)
            out += process.stdout.read()
            err = process.stderr.read()
        self.assertEqual(process.returncode, 130, err)
        match = OFFSET.search(err)
        self.assertIsNotNone(match, err)
        return out, int(match.group(2))

    def check_resume(self, log, arguments):
        first, offset = self.interrupt_after_first_rows([*arguments, log])
        code, second, err = run(*arguments, "--resume-from", offset, log)
        self.assertEqual(code, 0, err)
        _, whole, _ = run(*arguments, log)
        self.assertGreater(whole.count(b"\n"), first.count(b"\n") + 100)
        self.assertTrue(first.endswith(b"\r\n"))
        self.assertEqual(first + rows_of(second), whole)
        return offset

    def test_two_runs_give_the_rows_of_one(self):
        self.need_posix("Ctrl-C")
        text = b"".join(b"(%d.%06d) %d\n" % (1000 + i, i, i) for i in range(60_000))
        for name, content in (("a.log", text), ("a.log.gz", gzip.compress(text, 1))):
            with self.subTest(name):
                offset = self.check_resume(self.write(name, content), ["-f", "x=field(0)", "--csv"])
                self.assertEqual(text[offset - 1:offset], b"\n")

    def test_two_runs_give_the_rows_of_one_with_messages_under_way(self):
        self.need_posix("Ctrl-C")
        profile = self.write("bus.profile", BUS_PROFILE)
        text = bus_log(300)
        for name, content in (("a.log", text), ("a.log.gz", gzip.compress(text, 1))):
            with self.subTest(name):
                self.check_resume(self.write(name, content), ["-p", profile, "--csv"])

    def test_a_log_can_be_resumed_at_every_line(self):
        profile = self.write("bus.profile", BUS_PROFILE)
        text = bus_log(1)[:2000]
        log = self.write("a.log", text)
        _, whole, _ = run("-p", profile, "--csv", log)
        ends = [i + 1 for i, byte in enumerate(text) if byte == 10]
        self.assertGreater(len(ends), 30)
        for line, end in enumerate(ends, 1):
            _, rest, err = run("-p", profile, "--csv", "--resume-from", end, log)
            rows = [row for row in rows_of(whole).splitlines() if int(row.split(b",")[0]) > line]
            self.assertEqual(rows_of(rest).splitlines(), rows, f"from {end}: {err}")

    def test_lines_keep_their_numbers_far_behind_the_beginning(self):
        text = b"".join(b"%060d\n" % i for i in range(100_000))
        for name, content in (("a.log", text), ("a.log.gz", gzip.compress(text, 1))):
            log = self.write(name, content)
            code, out, err = run("-f", "x=field(0)", "--csv", "--resume-from", 99_998 * 61, log)
            self.assertEqual(code, 0, err)
            self.assertEqual(rows_of(out), b"99999,,99998\r\n100000,,99999\r\n")
            _, piped, _ = run("-f", "x=field(0)", "--csv", "--resume-from", 99_998 * 61, "-",
                              log=content)
            self.assertEqual(piped, out)

    def test_half_a_compressed_log_gives_its_rows_and_then_an_error(self):
        text = b"".join(b"%d\n" % (i * i) for i in range(40_000))
        packed = gzip.compress(text)
        log = self.write("a.log.gz", packed[:len(packed) // 2])
        code, out, err = run("-f", "x=field(0)", "--csv", log)
        rows = [tuple(map(float, row.split(b",,"))) for row in rows_of(out).splitlines()]
        self.assertGreater(len(rows), 1000)
        self.assertEqual(rows, [(i + 1, i * i) for i in range(len(rows))])
        self.assertIn(b"compressed data break off", err)
        self.assertEqual(code, 2)

    def test_a_log_that_breaks_off_does_not_keep_the_next_from_being_decoded(self):
        packed = gzip.compress(b"1\n2\n")
        logs = [self.write("a.gz", packed[:len(packed) - 6]), self.write("b.log", b"3\n")]
        code, out, err = run("-f", "x=field(0)", "--csv", *logs)
        self.assertEqual([row.split(b",")[1:] for row in rows_of(out).splitlines()],
                         [[b"1", b"", b"1"], [b"2", b"", b"2"], [b"1", b"", b"3"]])
        self.assertIn(b"compressed data break off", err)
        self.assertEqual(code, 2)

    def test_progress_shows_on_a_terminal_and_is_wiped(self):
        self.need_posix("the terminal")
        import pty
        master, slave = pty.openpty()
        block = b"12345\n" * 100_000
        try:
            with start("-f", "x=field(0)", "--csv", "-", stdout=subprocess.DEVNULL,
                       stderr=slave) as process:
                os.close(slave)
                for _ in range(4):
                    process.stdin.write(block)
                    process.stdin.flush()
                    time.sleep(0.25)
                process.stdin.write(block)
                process.stdin.close()
                process.wait(PATIENCE)
            shown = b""
            while b"rows" not in shown:
                shown += os.read(master, 65536)
        finally:
            os.close(master)
        self.assertRegex(shown, rb"\r\d+\.\d MB, \d+\.\d MB/s")
        progress, _, summary = shown.rpartition(b"\r")[0].rpartition(b"\rlumattr: ")
        self.assertRegex(progress, rb"\r +\Z")
        self.assertEqual(len(re.findall(rb"\r +\r", shown)), 1, "it stays until the end")
        self.assertTrue(summary.startswith(b"standard input: "), shown)

    def test_no_progress_shows_in_a_file(self):
        code, _, err = run("-f", "x=field(0)", "--csv", "-", log=b"12345\n" * 200_000)
        self.assertEqual(code, 0)
        self.assertEqual(err, b"lumattr: standard input: plain by its looks: 200000 lines, "
                         b"200000 rows\n")

    def test_memory_does_not_grow_with_the_log(self):
        self.need_posix("memory")
        large = os.environ.get("LUM_LARGE_LOG") == "1"
        size = 4 * MB if Settings.sanitized else 1000 * MB if large else 200 * MB
        block = (Settings.data / "engine.candump").read_bytes()
        block *= max(MB // len(block), 1)
        profile = self.write("a.profile", "[Message EEC1]\nMatch.Pgn=61444\n"
                             "Speed.Formula=J1939Val(message, 7, 3) * 0.125\n")
        with open(os.devnull, "wb") as nothing, start("-p", profile, "--show-bad", "0", "--csv", "-", stdout=nothing,
                                                      stderr=nothing) as process:
            for _ in range(size // len(block) + 1):
                process.stdin.write(block)
            process.stdin.flush()
            resident = largest_memory(process.pid)
            process.stdin.close()
        self.assertEqual(process.returncode, 1)  # The example lacks a packet.
        if Settings.sanitized:
            self.skipTest("the memory of a program with sanitizers says nothing")
        if resident is None:
            self.skipTest("the system does not tell the memory of a process in /proc")
        print(f"{size // MB} MB of log: {resident / MB:.1f} MB resident", file=sys.stderr)
        self.assertLess(resident, LIMIT_OF_MEMORY)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--launcher")
    parser.add_argument("--sanitized", action="store_true")
    parser.add_argument("tool", type=pathlib.Path)
    parser.add_argument("data", type=pathlib.Path)
    options = parser.parse_args()
    Settings.tool = [*filter(None, [options.launcher]), str(options.tool.resolve())]
    Settings.data, Settings.sanitized = options.data, options.sanitized
    # Programs in the background of a script ignore Ctrl-C, and so would what they start.
    signal.signal(signal.SIGINT, signal.default_int_handler)
    suite = unittest.defaultTestLoader.loadTestsFromTestCase(DecodeRun)
    result = unittest.TextTestRunner(verbosity=1).run(suite)
    for case, reason in result.skipped:
        print(f"skipped: {case}: {reason}", file=sys.stderr)
    sys.exit(0 if result.wasSuccessful() and result.testsRun > 0 else 1)


if __name__ == "__main__":
    main()
