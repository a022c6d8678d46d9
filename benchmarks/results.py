"""What benchmark programs measured: runs them and puts their results in order."""
import json
import math
import re
import statistics
import subprocess

OURS = "LumAttributes"
LIMIT = "limit"
TIME_UNIT = "ns per item"
SIZES = {"1k": 1_000, "10k": 10_000, "100k": 100_000, "1M": 1_000_000}
GROWTH_NAME = re.compile(rf"(.+), ({'|'.join(SIZES)})")
# What takes seconds for the sake of its size, and is checked in small as well.
LARGE_NAMES = "(, 100k/|, 1M/)"


class ReportError(Exception):
    """What makes the run fail."""


def run_program(program, repetitions, short, names=None):
    """The program's results: Google Benchmark's JSON, or a list of single values."""
    filtered = names or (f"-{LARGE_NAMES}" if short else None)
    command = [program, "--benchmark_format=json", f"--benchmark_repetitions={repetitions}",
               f"--benchmark_min_time={0.001 if short else 0.1}",
               # Whatever else the machine does meanwhile falls on all contenders alike.
               "--benchmark_enable_random_interleaving=true"]
    if filtered:
        command.append(f"--benchmark_filter={filtered}")
    result = subprocess.run(command, stdout=subprocess.PIPE, text=True, check=False)
    if result.returncode != 0:
        raise ReportError(f"{program} ended with {result.returncode}")
    # Nothing is printed when no name is chosen.
    return json.loads(result.stdout or '{"context": {}, "benchmarks": []}')


class Results:
    """Medians: `workloads` is {workload: {contender: value}}, in the order of the programs, `units`
    what a workload is measured in, and `growth` {workload: {size: nanoseconds for an item}}."""

    def __init__(self, documents):
        values, self.units = _collect(documents)
        self.workloads = {}
        self.growth = {}
        for workload, contenders in values.items():
            if OURS not in contenders:
                raise ReportError(f"{workload}: {OURS} is missing")
            medians = {name: statistics.median(runs) for name, runs in contenders.items()}
            sized = GROWTH_NAME.fullmatch(workload)
            if sized:
                self.growth.setdefault(sized[1], {})[sized[2]] = medians[OURS]
            else:
                self.workloads[workload] = medians
        if not values:
            raise ReportError("there are no benchmarks")

    def unit(self, workload):
        return self.units.get(workload, TIME_UNIT)


def _collect(documents):
    """{workload: {contender: [value of each repetition]}} and {workload: unit}."""
    values = {}
    units = {}

    def add(workload, contender, value):
        values.setdefault(workload, {}).setdefault(contender, []).append(value)

    for document in documents:
        if isinstance(document, list):
            for entry in document:
                add(entry["workload"], entry["contender"], entry["value"])
                units[entry["workload"]] = entry["unit"]
            continue
        # Results come in the order of the runs, which is random.
        for run in sorted(document["benchmarks"], key=lambda run: run["family_index"]):
            if run.get("run_type") == "aggregate":
                continue
            name = run["name"].split("/repeats:")[0]
            if run.get("error_occurred"):
                raise ReportError(f"{name}: {run.get('error_message', 'failed')}")
            add(*name.split("/", 1), 1e9 / run["items_per_second"])
    return values, units


def rows_of(medians):
    """(contender, value, ratio to the best peer, ratio to the limit): ours, peers by value, the limit.

    A ratio is None where there is nothing to compare with.
    """
    peers = [value for name, value in medians.items() if name not in (OURS, LIMIT)]
    best = min(peers, default=None)
    limit = medians.get(LIMIT)
    order = sorted(medians, key=lambda name: (name != OURS, name == LIMIT, medians[name]))
    return [(name, medians[name], medians[name] / best if best else None,
             medians[name] / limit if limit else None) for name in order]


def growth_exponent(times):
    """By which power of the number of items the whole time grows from the least size to the largest;
    None unless both were measured. `times` are those for an item."""
    least, *_, most = SIZES
    if least not in times or most not in times:
        return None
    ratio = times[most] * SIZES[most] / (times[least] * SIZES[least])
    return math.log(ratio) / math.log(SIZES[most] / SIZES[least])
