#!/usr/bin/env python3
"""Runs the command-line cases of tests/tools/cli_cases against a built lumattr.

Usage: run_cases.py [--launcher PROGRAM] LUMATTR CASE_FILE...

The launcher runs programs of another system: wine those of Windows, whose names end in ".exe".

A case file holds cases; a case begins with "=== what it shows" and has blocks:

    == file NAME [OPTIONS]     a file that is there before; the block's lines are its content
    == dir NAME                a folder that is there before
    == link NAME TARGET        a symbolic link that is there before
    == mode NAME OCTAL         permissions of one of these; the steps then run without privileges
    == only SYSTEM REASON      run for programs of "posix" or "windows" alone
    == env                     NAME=VALUE lines for the steps that follow; without one no
                               previous versions of files are kept
    == args [OPTIONS]          arguments of a step as a shell would split them; "escaped" for
                               bytes, and where output goes: "full" (a full disk), "closed" (a
                               pipe nobody reads, with SIGPIPE ignored), "tty" (a terminal)
    == stdout [OPTIONS]        what the step writes; without the block nothing
    == stderr [OPTIONS]        the same for messages
    == exit                    the step's exit code; without the block 0
    == after NAME [OPTIONS]    what a file holds after the last step
    == gone NAME               a file that is not there after the last step

Whatever no "after" or "gone" names must be as it was, and nothing else may be there.

OPTIONS of contents: crlf (line ends), utf-8-bom, utf-16le, utf-16be (with mark), latin-1, escaped
(\\r \\n \\t \\e \\\\ \\xNN stand for bytes and line ends do not count), no-eol (none at the end),
repeat=N (the lines N times, {i} is the number). Of outputs: escaped, no-eol, crlf; contains (every
line of the block is somewhere in it); json (equal as JSON).
"""

import argparse
import json
import os
import pathlib
import re
import shlex
import subprocess
import sys
import tempfile
import unittest

ENCODINGS = {"utf-8-bom": (b"\xef\xbb\xbf", "utf-8"), "utf-16le": (b"\xff\xfe", "utf-16-le"),
             "utf-16be": (b"\xfe\xff", "utf-16-be"), "latin-1": (b"", "latin-1")}
ESCAPES = {"r": b"\r", "n": b"\n", "t": b"\t", "e": b"\x1b", "\\": b"\\"}
CONTENT_OPTIONS = {"crlf", "escaped", "no-eol", *ENCODINGS}
NOBODY = 65534
OUTPUTS = {"full", "closed", "tty"}
OUTPUT_OPTIONS = {"escaped", "no-eol", "crlf", "contains", "json"}


class CaseError(Exception):
    """A case file that says something the driver does not understand."""


def unescape(text):
    def replace(match):
        code = match.group(1).decode("ascii")
        return bytes([int(code[1:], 16)]) if code[0] == "x" else ESCAPES[code]
    return re.sub(rb"\\(x[0-9a-fA-F]{2}|[rnte\\])", replace, text.encode("utf-8"))


def check_options(options, allowed):
    for option in options:
        if option not in allowed and not option.startswith("repeat="):
            raise CaseError(f"unknown option {option}")


def content(lines, options):
    """The bytes a block stands for."""
    for option in options:
        if option.startswith("repeat="):
            count = int(option.partition("=")[2])
            lines = [line.replace("{i}", str(i)) for i in range(count) for line in lines]
    if "escaped" in options:
        return unescape("".join(lines))
    end = "\r\n" if "crlf" in options else "\n"
    text = end.join(lines) + ("" if "no-eol" in options or not lines else end)
    for name, (mark, codec) in ENCODINGS.items():
        if name in options:
            return mark + text.encode(codec)
    return text.encode("utf-8")


class Step:
    """One run of the tool and what it must give."""

    def __init__(self, arguments, output, env):
        self.arguments, self.output, self.env = arguments, output, dict(env)
        self.expected = {"stdout": ([], []), "stderr": ([], [])}
        self.exit = 0


class Case:
    """A case as its file states it."""

    def __init__(self, title, line):
        self.title, self.line = title, line
        self.before, self.after, self.steps, self.env = [], {}, [], {}
        self.modes = []
        self.only = None

    def add(self, header, lines):
        kind, *words = shlex.split(header)
        getattr(self, "add_" + kind, self.unknown)(words, lines)

    def unknown(self, words, lines):
        raise CaseError(f"unknown block {words}")

    def add_file(self, words, lines):
        check_options(words[1:], CONTENT_OPTIONS)
        self.before.append(("file", words[0], content(lines, words[1:])))

    def add_dir(self, words, _):
        self.before.append(("dir", words[0], None))

    def add_link(self, words, _):
        self.before.append(("link", words[0], words[1]))

    def add_only(self, words, _):
        system, reason = words
        if system not in ("posix", "windows"):
            raise CaseError(f"unknown system {system}")
        self.only = (system, reason)

    def add_mode(self, words, _):
        self.modes.append((words[0], int(words[1], 8)))

    def add_env(self, _, lines):
        self.env = dict(line.split("=", 1) for line in lines)

    def add_args(self, words, lines):
        check_options(words, OUTPUTS | {"escaped"})
        arguments = shlex.split("\n".join(lines), posix="escaped" not in words)
        encode = unescape if "escaped" in words else os.fsencode
        output = next((word for word in words if word in OUTPUTS), "pipe")
        self.steps.append(Step([encode(argument) for argument in arguments], output, self.env))

    def add_stdout(self, words, lines):
        check_options(words, OUTPUT_OPTIONS)
        self.steps[-1].expected["stdout"] = (lines, words)

    def add_stderr(self, words, lines):
        check_options(words, OUTPUT_OPTIONS)
        self.steps[-1].expected["stderr"] = (lines, words)

    def add_exit(self, _, lines):
        self.steps[-1].exit = int(lines[0])

    def add_after(self, words, lines):
        check_options(words[1:], CONTENT_OPTIONS)
        self.after[words[0]] = ("file", content(lines, words[1:]))

    def add_gone(self, words, _):
        self.after[words[0]] = None


def read_cases(path):
    cases, header, lines = [], None, []

    def finish_block():
        if header is not None:
            while lines and not lines[-1]:
                lines.pop()
            try:
                cases[-1].add(header, list(lines))
            except (CaseError, IndexError, ValueError) as error:
                raise CaseError(f"{path}: case '{cases[-1].title}', block '{header}': {error}")

    for number, line in enumerate(path.read_text(encoding="utf-8").split("\n"), 1):
        if line.startswith("=== "):
            finish_block()
            header, lines = None, []
            cases.append(Case(line[4:], number))
        elif line.startswith("== "):
            finish_block()
            header, lines = line[3:], []
        elif header is not None:
            lines.append(line)
    finish_block()
    return cases


def snapshot(folder):
    """Everything in the folder: name to kind and content."""
    found = {}
    for path in sorted(folder.rglob("*")):
        name = path.relative_to(folder).as_posix()
        if path.is_symlink():
            found[name] = ("link", os.readlink(path))
        elif path.is_dir():
            found[name] = ("dir", None)
        else:
            found[name] = ("file", path.read_bytes())
    return found


def environment(step):
    env = {name: value for name, value in os.environ.items()
           if name not in ("LUMATTR_DEFS", "NO_COLOR")}
    return {**env, "TERM": "xterm", "LUMATTR_KEEP": "0", **step.env}


def run_on_terminal(command, **options):
    import pty
    master, slave = pty.openpty()
    with subprocess.Popen(command, stdout=slave, stderr=subprocess.PIPE, **options) as process:
        os.close(slave)
        output = b""
        while True:
            try:
                piece = os.read(master, 65536)
            except OSError:  # How Linux says that the other side is closed.
                break
            if not piece:
                break
            output += piece
        messages = process.stderr.read()
    os.close(master)
    return process.returncode, output.replace(b"\r\n", b"\n"), messages


def run_with_closed_pipe(command, **options):
    import signal
    reader, writer = os.pipe()
    os.close(reader)
    result = subprocess.run(command, stdout=writer, stderr=subprocess.PIPE, restore_signals=False,
                            preexec_fn=lambda: signal.signal(signal.SIGPIPE, signal.SIG_IGN),
                            **options)
    os.close(writer)
    return result.returncode, b"", result.stderr


def run_step(tool, step, folder, user):
    command = [*map(os.fsencode, tool), *step.arguments]
    options = {"cwd": folder, "env": environment(step), "stdin": subprocess.DEVNULL, **user}
    if step.output == "tty":
        return run_on_terminal(command, **options)
    if step.output == "closed":
        return run_with_closed_pipe(command, **options)
    if step.output == "full":
        with open("/dev/full", "wb") as full:
            result = subprocess.run(command, stdout=full, stderr=subprocess.PIPE, timeout=120,
                                    **options)
        return result.returncode, b"", result.stderr
    result = subprocess.run(command, capture_output=True, timeout=120, **options)
    return result.returncode, result.stdout, result.stderr


class CaseTest(unittest.TestCase):
    """Runs one case."""

    maxDiff = None

    def __init__(self, tool, path, case):
        super().__init__("run_case")
        self.tool, self.path, self.case = tool, path, case

    def __str__(self):
        return f"{self.path.name}:{self.case.line}: {self.case.title}"

    def check_output(self, found, lines, options, what):
        if "contains" in options:
            for line in lines:
                self.assertIn(line, found.decode("utf-8"), what)
        elif "json" in options:
            self.assertEqual(json.loads(found), json.loads("\n".join(lines)), what)
        else:
            self.assertEqual(found.decode("utf-8", "backslashreplace"),
                             content(lines, options).decode("utf-8", "backslashreplace"), what)

    def check_step(self, step, folder, user):
        code, stdout, stderr = run_step(self.tool, step, folder, user)
        what = "lumattr " + b" ".join(step.arguments).decode("utf-8", "backslashreplace")
        self.check_output(stderr, *step.expected["stderr"], what + ": stderr")
        self.check_output(stdout, *step.expected["stdout"], what + ": stdout")
        self.assertEqual(code, step.exit, what + ": exit code")

    def set_up_files(self, folder):
        for kind, name, value in self.case.before:
            path = folder / name
            if kind == "dir":
                path.mkdir(parents=True)
            elif kind == "link":
                path.symlink_to(value)
            else:
                path.parent.mkdir(parents=True, exist_ok=True)
                path.write_bytes(value)

    def can_run(self, folder, user):
        """Whether somebody may run the tool: it may stand in a folder that is closed to others."""
        try:
            return subprocess.run([*self.tool, "--version"], cwd=folder, capture_output=True,
                                  **user).returncode == 0
        except PermissionError:
            return False

    def drop_privileges(self, folder):
        """Sets permissions; the superuser, whom none hold back, runs the steps as somebody else."""
        if not self.case.modes:
            return {}
        if os.name != "posix":
            self.skipTest("needs POSIX permissions")
        user = {}
        if os.geteuid() == 0:
            user = {"user": NOBODY, "group": NOBODY, "extra_groups": []}
            for path in [folder, *folder.rglob("*")]:
                os.chown(path, NOBODY, NOBODY, follow_symlinks=False)
            if not self.can_run(folder, user):
                self.skipTest("the superuser passes all permissions, and others may not run the "
                              "tool where it stands")
        for name, mode in self.case.modes:
            os.chmod(folder / name, mode)
        return user

    def skip_what_the_system_lacks(self):
        outputs = {step.output for step in self.case.steps}
        if os.name != "posix" and outputs & OUTPUTS:
            self.skipTest("needs a POSIX system's terminals, pipes and /dev/full")
        system = "windows" if self.tool[-1].suffix == ".exe" else "posix"
        if self.case.only and self.case.only[0] != system:
            self.skipTest(self.case.only[1])
        if system == "posix":
            return
        if "tty" in outputs:
            self.skipTest("a POSIX terminal is no Windows console")
        if self.case.modes:
            self.skipTest("Windows has no POSIX permissions")
        if any(kind == "link" for kind, _, _ in self.case.before):
            self.skipTest("a Windows program cannot see that a file is a POSIX link")

    def run_case(self):
        self.skip_what_the_system_lacks()
        self.assertTrue(self.case.steps, "a case without steps shows nothing")
        with tempfile.TemporaryDirectory() as name:
            folder = pathlib.Path(name)
            self.set_up_files(folder)
            user = self.drop_privileges(folder)
            expected = {**snapshot(folder), **self.case.after}
            expected = {name: value for name, value in expected.items() if value is not None}
            for step in self.case.steps:
                self.check_step(step, folder, user)
            for name, _ in self.case.modes:
                os.chmod(folder / name, 0o755)
            self.assertEqual(snapshot(folder), expected, "files afterwards")


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--launcher", type=pathlib.Path)
    parser.add_argument("tool", type=pathlib.Path)
    parser.add_argument("case_files", type=pathlib.Path, nargs="+")
    options = parser.parse_args()
    tool = [*filter(None, [options.launcher]), options.tool.resolve()]
    suite = unittest.TestSuite()
    for path in options.case_files:
        cases = read_cases(path)
        if not cases:
            sys.exit(f"{path}: no cases")
        suite.addTests(CaseTest(tool, path, case) for case in cases)
    result = unittest.TextTestRunner(verbosity=1).run(suite)
    for case, reason in result.skipped:
        print(f"skipped: {case}: {reason}", file=sys.stderr)
    sys.exit(0 if result.wasSuccessful() and result.testsRun > 0 else 1)


if __name__ == "__main__":
    main()
