"""Results in the form in which the benchmark programs give them, for the tests."""
import pathlib
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "benchmarks"))


def run(family, name, nanoseconds):
    return {"family_index": family, "name": name, "run_type": "iteration",
            "items_per_second": 1e9 / nanoseconds}


TIMES = {
    "context": {"date": "2024-02-29", "compiler": "GCC 12", "peer fmt": "9.1.0",
                "peer Qt": "absent"},
    "benchmarks": [
        run(4, "tree/LumAttributes", 5.0),
        run(3, "double to text/LumAttributes", 80.0),
        run(0, "double to text/limit", 10.0),
        run(1, "double to text/fmt/repeats:3", 20.0),
        run(2, "double to text/swprintf", 200.0),
        run(1, "double to text/fmt/repeats:3", 90.0),
        run(1, "double to text/fmt/repeats:3", 40.0),
        {**run(1, "double to text/fmt_median", 1.0), "run_type": "aggregate"},
        run(5, "save, 1k/LumAttributes", 100.0),
        run(6, "save, 10k/LumAttributes", 150.0),
        run(7, "save, 1M/LumAttributes", 1000.0),
    ],
}

HEAP = [{"workload": "heap", "unit": "bytes", "contender": "limit", "value": 40.0},
        {"workload": "heap", "unit": "bytes", "contender": "LumAttributes", "value": 100.0}]
