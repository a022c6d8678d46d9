"""What the comparisons of the log readers share: running the program, and telling differences."""
import os
import random
import subprocess
import sys
import tempfile


def seed_of(arguments):
    """The seed of a run: LUM_LOG_SEED, else a fixed one, so that a run can be repeated."""
    return int(os.environ.get("LUM_LOG_SEED", arguments[2] if len(arguments) > 2 else "1"))


def run_reader(program, log_format, lines):
    """What the program prints for a log of these lines."""
    with tempfile.TemporaryDirectory() as folder:
        path = os.path.join(folder, "test.log")
        with open(path, "w", encoding="latin-1", newline="") as log:
            log.writelines(line + "\n" for line in lines)
        result = subprocess.run([program, log_format, path], capture_output=True, check=False)
    if result.returncode != 0:
        sys.exit(f"the reader ended with {result.returncode}: {result.stderr.decode()}")
    return result.stdout.decode("latin-1").splitlines()


def compare(lines, expected, found, is_same=lambda wanted, given: wanted == given):
    """Ends the program with the first difference."""
    for index, (wanted, given) in enumerate(zip(expected, found)):
        if not is_same(wanted, given):
            number = int(given.split(" ", 1)[0])
            context = "\n".join(f"  {i + 1} {lines[i]}"
                                for i in range(max(0, number - 12), min(number, len(lines))))
            sys.exit(f"outcome {index + 1} differs\nexpected {wanted}\nfound    {given}\n{context}")
    if len(expected) != len(found):
        sys.exit(f"expected {len(expected)} outcomes, found {len(found)}")


def make_random(arguments):
    """The program that is tested and a generator of random numbers."""
    return arguments[1], random.Random(seed_of(arguments))
