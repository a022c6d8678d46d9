#!/usr/bin/env python3
"""Runs benchmark programs and prints one table for each workload, our contender first.

Usage: report.py [--short] [--repetitions N] [--write FILE] PROGRAM...

Times are medians of the repetitions, in nanoseconds of processor time for each item. The run fails
when a benchmark reports an error or a workload lacks our contender. --write makes the page of FILE
anew; what stands there between the marks of the notes stays.
"""
import argparse
import datetime
import json
import os
import pathlib
import platform
import statistics
import subprocess
import sys

OURS = "LumAttributes"
LIMIT = "limit"
NOTES_BEGIN = "<!-- notes, kept by hand -->"
NOTES_END = "<!-- end of the notes -->"


class ReportError(Exception):
    """What makes the run fail."""


def run_program(program, repetitions, short):
    """The program's results as Google Benchmark's JSON."""
    command = [program, "--benchmark_format=json", f"--benchmark_repetitions={repetitions}",
               f"--benchmark_min_time={0.001 if short else 0.1}",
               # Whatever else the machine does meanwhile falls on all contenders alike.
               "--benchmark_enable_random_interleaving=true"]
    result = subprocess.run(command, stdout=subprocess.PIPE, text=True, check=False)
    if result.returncode != 0:
        raise ReportError(f"{program} ended with {result.returncode}")
    return json.loads(result.stdout)


def collect(documents):
    """{workload: {contender: [nanoseconds for an item, one for each repetition]}}, in order."""
    workloads = {}
    for document in documents:
        # Results come in the order of the runs, which is random.
        for run in sorted(document["benchmarks"], key=lambda run: run["family_index"]):
            if run.get("run_type") == "aggregate":
                continue
            name = run["name"].split("/repeats:")[0]
            if run.get("error_occurred"):
                raise ReportError(f"{name}: {run.get('error_message', 'failed')}")
            workload, contender = name.split("/", 1)
            times = workloads.setdefault(workload, {}).setdefault(contender, [])
            times.append(1e9 / run["items_per_second"])
    for workload, contenders in workloads.items():
        if OURS not in contenders:
            raise ReportError(f"{workload}: {OURS} is missing")
    if not workloads:
        raise ReportError("there are no benchmarks")
    return workloads


def rows_of(contenders):
    """(contender, ns, ratio to the best peer, ratio to the limit): ours, peers by time, the limit.

    A ratio is None where there is nothing to compare with.
    """
    medians = {name: statistics.median(times) for name, times in contenders.items()}
    peers = [time for name, time in medians.items() if name not in (OURS, LIMIT)]
    best = min(peers, default=None)
    limit = medians.get(LIMIT)
    order = sorted(medians, key=lambda name: (name != OURS, name == LIMIT, medians[name]))
    return [(name, medians[name], medians[name] / best if best else None,
             medians[name] / limit if limit else None) for name in order]


def table_of(workload, contenders):
    """A workload's heading and its table in Markdown."""
    def ratio(number):
        return "–" if number is None else f"{number:.2f}"

    rows = [f"| {name} | {time:.1f} | {ratio(to_best)} | {ratio(to_limit)} |"
            for name, time, to_best, to_limit in rows_of(contenders)]
    header = ["| contender | ns per item | × best peer | × limit |", "|---|--:|--:|--:|"]
    return "\n".join([f"### {workload}", "", *header, *rows]) + "\n"


def context_of(documents):
    """What the programs told of compiler and peers: ({key: value}, [absent peer])."""
    told = {}
    for document in documents:
        told.update({key: value for key, value in document["context"].items()
                     if key == "compiler" or key.startswith("peer ")})
    absent = sorted(key.removeprefix("peer ") for key, value in told.items() if value == "absent")
    return {key: value for key, value in told.items() if value != "absent"}, absent


def processor():
    try:
        lines = pathlib.Path("/proc/cpuinfo").read_text(encoding="utf-8").splitlines()
    except OSError:
        lines = []
    names = [line.split(":", 1)[1].strip() for line in lines if line.startswith("model name")]
    return names[0] if names else platform.processor() or platform.machine()


def facts_of(documents, repetitions, load):
    """Where and how the times were taken, a Markdown list."""
    told, absent = context_of(documents)
    peers = ", ".join(f"{key.removeprefix('peer ')} {value}" for key, value in sorted(told.items())
                      if key.startswith("peer "))
    facts = [("date", datetime.date.today().isoformat()),
             ("machine", f"{processor()}, {os.cpu_count()} cores, load {load:.1f} at the start"),
             ("compiler", told.get("compiler", "unknown")),
             ("C library", " ".join(platform.libc_ver())),
             ("peers", peers or "none"),
             ("peers absent", ", ".join(absent) or "none"),
             ("repetitions", str(repetitions))]
    return "".join(f"- {name}: {value}\n" for name, value in facts)


def notes_of(page):
    """What stands between the marks; nothing when one is missing."""
    _, begin, rest = page.partition(NOTES_BEGIN)
    notes, end, _ = rest.partition(NOTES_END)
    return notes if begin and end else "\n"


def write_page(file, facts, tables):
    try:
        old = file.read_text(encoding="utf-8")
    except FileNotFoundError:
        old = ""
    file.write_text(f"# Performance\n\n{NOTES_BEGIN}{notes_of(old)}{NOTES_END}\n\n"
                    f"## Measured\n\n{facts}\n{tables}", encoding="utf-8")


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("programs", nargs="+", metavar="PROGRAM")
    parser.add_argument("--short", action="store_true", help="once and briefly: are all right?")
    parser.add_argument("--repetitions", type=int, default=5)
    parser.add_argument("--write", type=pathlib.Path, metavar="FILE")
    options = parser.parse_args()
    repetitions = 1 if options.short else options.repetitions
    load = os.getloadavg()[0]
    try:
        documents = [run_program(program, repetitions, options.short)
                     for program in options.programs]
        tables = "\n".join(table_of(*item) for item in collect(documents).items())
    except (OSError, ReportError) as error:
        print(f"report.py: {error}", file=sys.stderr)
        return 1
    facts = facts_of(documents, repetitions, load)
    print(facts, tables, sep="\n", end="")
    if options.write:
        write_page(options.write, facts, tables)
    return 0


if __name__ == "__main__":
    sys.exit(main())
