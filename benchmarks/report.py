#!/usr/bin/env -S python3 -B
"""Runs benchmark programs and prints one table for each workload, our contender first.

Usage: report.py [--short] [--repetitions N] [--filter NAMES] [--write FILE] PROGRAM...

Times are medians of the repetitions, in nanoseconds of processor time for each item. A table of its
own shows how our times grow with the size of the tree, and each goal of benchmarks/goals.json stands
below its table with whether this run meets it. The run fails when a benchmark reports an error or a
workload lacks our contender. --filter chooses benchmarks by a regular expression. --write makes the
page of FILE anew; what stands there between the marks of the notes stays.
"""
import argparse
import datetime
import os
import pathlib
import platform
import sys

from goals import read_goals
from results import OURS, SIZES, ReportError, Results, growth_exponent, rows_of, run_program

NOTES_BEGIN = "<!-- notes, kept by hand -->"
NOTES_END = "<!-- end of the notes -->"


def ratio_text(number):
    return "–" if number is None else f"{number:.2f}"


def table_of(workload, medians, unit, goals=()):
    """A workload's heading, its table in Markdown and its goals."""
    rows = [f"| {name} | {value:.1f} | {ratio_text(to_best)} | {ratio_text(to_limit)} |"
            for name, value, to_best, to_limit in rows_of(medians)]
    header = [f"| contender | {unit} | × best peer | × limit |", "|---|--:|--:|--:|"]
    lines = [f"### {workload}", "", *header, *rows]
    for goal in goals:
        lines += ["", goal.line()]
    return "\n".join(lines) + "\n"


def growth_table(growth, goals=()):
    """How the times for an item grow, as a table in Markdown; nothing without such times."""
    if not growth:
        return ""
    rows = []
    for workload, times in growth.items():
        cells = [f"{times[size]:.0f}" if size in times else "–" for size in SIZES]
        rows.append(f"| {' | '.join([workload, *cells, ratio_text(growth_exponent(times))])} |")
    lines = ["### growth with the number of attributes", "",
             f"Nanoseconds for an attribute, {OURS} alone. The exponent is the power of the number of "
             "attributes by which the whole time grows from 1k to 1M.", "",
             f"| workload | {' | '.join(SIZES)} | exponent |", "|---" + "|--:" * (len(SIZES) + 1) + "|",
             *rows]
    for goal in goals:
        lines += ["", f"{goal.workload}: {goal.line()}"]
    return "\n".join(lines) + "\n"


def tables_of(results, goals):
    tables = [table_of(workload, medians, results.unit(workload),
                       [goal for goal in goals if goal.workload == workload and not goal.is_growth])
              for workload, medians in results.workloads.items()]
    tables.append(growth_table(results.growth, [goal for goal in goals if goal.is_growth]))
    return "\n".join(table for table in tables if table)


def verdicts_of(goals):
    """How many goals were met, and which were not."""
    def those(is_met):
        return [goal for goal in goals if goal.is_met is is_met]

    text = f"{len(those(True))} met, {len(those(False))} not met"
    if those(None):
        text += f", {len(those(None))} not measured"
    names = sorted({goal.workload for goal in those(False)})
    return text + (f" ({'; '.join(names)})" if names else "")


def context_of(documents):
    """What the programs told of compiler and peers: ({key: value}, [absent peer])."""
    told = {}
    for document in documents:
        if isinstance(document, dict):
            told.update({key: value for key, value in document["context"].items()
                         if key == "compiler" or key.startswith("peer ")})
    absent = sorted(key.removeprefix("peer ") for key, value in told.items() if value == "absent")
    return {key: value for key, value in told.items() if value != "absent"}, absent


def checked_line(results, documents):
    """What a short run tells: its times mean nothing."""
    contenders = sum(len(medians) for medians in results.workloads.values())
    sizes = sum(len(times) for times in results.growth.values())
    absent = context_of(documents)[1]
    return (f"{contenders} contenders of {len(results.workloads)} workloads and {sizes} further "
            f"sizes are right; peers absent: {', '.join(absent) or 'none'}")


def processor():
    try:
        lines = pathlib.Path("/proc/cpuinfo").read_text(encoding="utf-8").splitlines()
    except OSError:
        lines = []
    names = [line.split(":", 1)[1].strip() for line in lines if line.startswith("model name")]
    return names[0] if names else platform.processor() or platform.machine()


def facts_of(documents, goals, options, load):
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
             ("repetitions", str(options.repetitions)),
             ("goals", verdicts_of(goals))]
    if options.names:
        facts.append(("only the benchmarks", f"`{options.names}`"))
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


def options_of(arguments):
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("programs", nargs="+", metavar="PROGRAM")
    parser.add_argument("--short", action="store_true", help="once and briefly: are all right?")
    parser.add_argument("--repetitions", type=int, default=5)
    parser.add_argument("--filter", dest="names", metavar="NAMES", help="only these benchmarks")
    parser.add_argument("--write", type=pathlib.Path, metavar="FILE")
    options = parser.parse_args(arguments)
    if options.short:
        options.repetitions = 1
    return options


def main():
    options = options_of(sys.argv[1:])
    load = os.getloadavg()[0]
    try:
        documents = [run_program(program, options.repetitions, options.short, options.names)
                     for program in options.programs]
        results = Results(documents)
    except (OSError, ReportError) as error:
        print(f"report.py: {error}", file=sys.stderr)
        return 1
    if options.short:
        print(checked_line(results, documents))
        return 0
    goals = read_goals(results)
    facts = facts_of(documents, goals, options, load)
    tables = tables_of(results, goals)
    print(facts, tables, sep="\n", end="")
    if options.write:
        write_page(options.write, facts, tables)
    return 0


if __name__ == "__main__":
    sys.exit(main())
