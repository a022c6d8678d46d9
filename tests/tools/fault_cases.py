#!/usr/bin/env python3
"""Lets every system call with which lumattr saves a file fail, or kills lumattr there, by strace.

Usage: fault_cases.py LUMATTR

Afterwards the file must be the old one or the new one, whole; exit code and message must say which;
nothing may be left beside it, at the latest after the next save. Where strace is missing or may not
trace, that is printed and the exit code is 77.
"""

import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

SKIPPED = 77
ERRORS = {"ENOSPC": "No space left on device", "EIO": "Input/output error",
          "EACCES": "Permission denied"}
KILL = "SIGKILL"
OLD = b"; notes\n[S]\nAttrVersion=0,2\nDepth=1,2.5\n"
NEW = b"; notes\n[S]\nAttrVersion=0,2\nDepth=1,3.5\n"
FILE_CALLS = {"access", "close", "faccessat", "faccessat2", "fchmod", "fchmodat", "fchown", "fcntl",
              "fdatasync", "flock", "fstat", "fsync", "getdents64", "link", "linkat", "lstat",
              "newfstatat", "open", "openat", "pread64", "pwrite64", "read", "readlink",
              "readlinkat", "rename", "renameat", "renameat2", "stat", "statx", "unlink",
              "unlinkat", "write"}


class Situation:
    """A command that saves, and what it makes of its file."""

    def __init__(self, title, target, arguments, old, new):
        self.title, self.target, self.arguments = title, target, arguments
        self.old, self.new = old, new

    def set_up(self, folder):
        (folder / "a.cfg").write_bytes(OLD)

    def content(self, folder):
        path = folder / self.target
        return path.read_bytes() if path.exists() else None


SITUATIONS = [
    Situation("an existing file", "a.cfg", ["set", "a.cfg", "S", "Depth", "3.5"], OLD, NEW),
    Situation("a new file", "new.cfg", ["merge", "a.cfg", "a.cfg", "-o", "new.cfg"], None, OLD),
]


class Call:
    """A call of the save: its line in the trace, its name and which one of that name it is."""

    def __init__(self, line, occurrence):
        self.line, self.occurrence = line, occurrence
        self.name = name_of(line)


def name_of(line):
    found = re.match(r"(?:\d+ +)?(\w+)\(", line)
    return found.group(1) if found else None


def trace(tool, situation, folder, *options):
    log = folder.parent / "trace"
    result = subprocess.run(["strace", "-o", log, *options, tool, *situation.arguments],
                            cwd=folder, capture_output=True, timeout=60, check=False,
                            stdin=subprocess.DEVNULL)
    return result, log.read_text(encoding="utf-8", errors="replace").splitlines()


def calls_of_save(lines, target):
    """The file calls from the save's first look at its target on."""
    looks = [i for i, line in enumerate(lines)
             if f'"{target}"' in line and "AT_SYMLINK_NOFOLLOW" in line]
    if not looks:
        raise AssertionError(f"no look at {target} in the trace")
    seen, calls = {}, []
    for i, line in enumerate(lines):
        name = name_of(line)
        seen[name] = seen.get(name, 0) + 1
        # What the tool prints is no part of the save.
        if i >= looks[-1] and name in FILE_CALLS and not re.search(r"write\([12],", line):
            calls.append(Call(line, seen[name]))
    return calls


def folder_descriptor(calls):
    """The number of the open folder that is flushed at the end."""
    flushes = [call.line for call in calls if call.name == "fsync"]
    return re.search(r"fsync\((\d+)", flushes[-1]).group(1)


def may_be_in_place(call, folder):
    """True when the new file is in place although its name could not be made durable."""
    return f"fsync({folder})" in call.line or "O_DIRECTORY" in call.line


def check_result(result, situation, content, call, effect, folder):
    if content not in (situation.old, situation.new):
        return f"torn file: {content!r}"
    if effect == KILL:
        # strace ends as the program that it traced.
        return None if result.returncode == -9 else f"not killed: {result.returncode}"
    message = result.stderr.decode("utf-8", "replace")
    if result.returncode == 0:
        if content != situation.new:
            return "success without the new content"
        return f"success with a message: {message}" if message else None
    expected = f'lumattr: cannot write "{situation.target}": {ERRORS[effect]}\n'
    if message != expected:
        return f"message {message!r}"
    if content != situation.old and not may_be_in_place(call, folder):
        return "failure with the new content"
    return None


def strays(folder, situation):
    """What is neither a file of the situation nor a previous version with a whole content."""
    found = []
    for path in sorted(folder.iterdir()):
        is_version = re.fullmatch(re.escape(situation.target) + r"\.bak\d", path.name)
        if path.name not in ("a.cfg", situation.target) and not (
                is_version and path.read_bytes() in (situation.old, situation.new)):
            found.append(path.name)
    return found


def run_one(tool, situation, call, effect, flushed):
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name) / "files"
        folder.mkdir()
        situation.set_up(folder)
        kind = "signal" if effect == KILL else "error"
        result, lines = trace(tool, situation, folder, "-e", f"trace={call.name}", "-e",
                              f"inject={call.name}:{kind}={effect}:when={call.occurrence}")
        if effect != KILL and not any("INJECTED" in line for line in lines):
            return "nothing was injected"
        problem = check_result(result, situation, situation.content(folder), call, effect, flushed)
        if problem:
            return problem
        if effect != KILL and call.name != "unlink" and strays(folder, situation):
            return f"left behind: {strays(folder, situation)}"
        again = subprocess.run([tool, *situation.arguments], cwd=folder, capture_output=True,
                               check=False, stdin=subprocess.DEVNULL)
        if again.returncode != 0 or situation.content(folder) != situation.new:
            return f"the next save fails: {again.stderr!r}"
        if strays(folder, situation):
            return f"left behind after the next save: {strays(folder, situation)}"
    return None


def run_situation(tool, situation):
    """The number of runs and the problems found."""
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name) / "files"
        folder.mkdir()
        situation.set_up(folder)
        result, lines = trace(tool, situation, folder)
        if result.returncode != 0 or situation.content(folder) != situation.new:
            return 0, [f"{situation.title}: {result.stderr!r}"]
    calls = calls_of_save(lines, situation.target)
    flushed = folder_descriptor(calls)
    runs, problems = 0, []
    for call in calls:
        for effect in [*ERRORS, KILL]:
            runs += 1
            problem = run_one(tool, situation, call, effect, flushed)
            if problem:
                problems.append(f"{situation.title}: {effect} at {call.line}: {problem}")
    return runs, problems


def why_not_here():
    if shutil.which("strace") is None:
        return "there is no strace"
    result = subprocess.run(["strace", "-o", os.devnull, "true"], capture_output=True, check=False)
    return None if result.returncode == 0 else "strace may not trace: " + \
        result.stderr.decode("utf-8", "replace").strip()


def main():
    tool = pathlib.Path(sys.argv[1]).resolve()
    reason = why_not_here()
    if reason:
        print(f"skipped: faults in lumattr's system calls: {reason}")
        sys.exit(SKIPPED)
    runs, problems = 0, []
    for situation in SITUATIONS:
        count, found = run_situation(tool, situation)
        print(f"{situation.title}: {count} faults, {len(found)} problems")
        if count < 50:
            found.append(f"{situation.title}: only {count} faults")
        runs += count
        problems += found
    for problem in problems:
        print(problem)
    print(f"faults injected by strace: {runs}")
    sys.exit(1 if problems else 0)


if __name__ == "__main__":
    main()
