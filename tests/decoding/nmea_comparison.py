#!/usr/bin/env python3
"""Holds the reader of NMEA 0183 to a second implementation: random sentences, a part of them damaged;
checksums, fields, and positions, which Python computes with fractions.

Usage: nmea_comparison.py PROGRAM [SEED]
"""
import fractions
import sys

import log_comparison


def checksum(body):
    total = 0
    for character in body:
        total ^= ord(character)
    return "%02X" % total


def make_position(random, degrees, width):
    number = random.randrange(degrees)
    minutes = random.randrange(60)
    decimals = random.randrange(0, 8)
    fraction = "" if decimals == 0 else "." + "".join(random.choices("0123456789", k=decimals))
    return f"{number:0{width}d}{minutes:02d}{fraction}"


def make_sentence(random):
    if random.random() < 0.5:
        fields = ["GPGGA", "%06d" % random.randrange(240000),
                  make_position(random, 90, 2), random.choice("NS"),
                  make_position(random, 180, 3), random.choice("EW"), "1", "08", "", "545.4", "M"]
        if random.random() < 0.1:
            fields[random.randrange(2, 6)] = ""
    else:
        fields = [random.choice(["GPHDT", "SDDBT", "PABC"])] + [
            "".join(random.choices("0123456789.-ABCxyz ", k=random.randrange(6)))
            for _ in range(random.randrange(6))]
    body = ",".join(fields)
    digits = checksum(body)
    return random.choice("$!") + body + "*" + (digits.lower() if random.random() < 0.2 else digits)


def damage(random, line):
    chance = random.random()
    place = random.randrange(len(line))
    if chance < 0.1:
        return line[:place] + chr(random.randrange(256)).replace("\n", "x").replace("\r", "y") + \
            line[place + 1:]
    if chance < 0.15:
        return line[:place]
    if chance < 0.2:
        return line[:place] + line[place + 1:]
    return line


def degrees_of(text, hemisphere):
    if not text or not hemisphere:
        return None
    number = fractions.Fraction(text)
    whole = number // 100
    degrees = whole + (number - 100 * whole) / 60
    return -degrees if hemisphere in "SW" else degrees


def expected_outcome(line):
    """None for a problem; else kind, fields and positions."""
    text = line.lstrip(" \t")
    if not text or text.startswith("#"):
        return "remark", [], None
    if text[0] not in "$!":
        return None
    body, star, digits = text[1:].partition("*")
    if not star or any(not " " <= character <= "~" for character in body):
        return None
    if len(digits) != 2 or any(digit not in "0123456789abcdefABCDEF" for digit in digits):
        return None
    if digits.upper() != checksum(body):
        return None
    fields = body.split(",")
    if not fields[0]:
        return None
    positions = None
    if fields[0].endswith("GGA") and len(fields) > 5:
        positions = [degrees_of(*fields[2:4]), degrees_of(*fields[4:6])]
    return "data", fields, positions


def is_same_position(wanted, given):
    if wanted is None:
        return given == "none"
    # One rounding of the number, one of the minutes' share, one of the sum.
    return abs(fractions.Fraction(float(given)) - wanted) <= fractions.Fraction(1, 10**12)


def is_same(wanted, given):
    number, outcome = wanted
    if outcome is None:
        return given.startswith(f"{number} problem ")
    kind, fields, positions = outcome
    if kind == "remark":
        return given == f"{number} remark"
    begin = f"{number} data {fields[0]} [{'|'.join(fields)}]"
    if positions is None:
        return given == begin
    if not given.startswith(begin + " at "):
        return False
    return all(map(is_same_position, positions, given[len(begin) + 4:].split(" ")))


def main(arguments):
    program, random = log_comparison.make_random(arguments)
    lines = [damage(random, make_sentence(random)) for _ in range(30_000)]
    expected = [(number, expected_outcome(line)) for number, line in enumerate(lines, 1)]
    found = log_comparison.run_reader(program, "nmea", lines)
    log_comparison.compare(lines, expected, found, is_same)
    problems = sum(outcome is None for _, outcome in expected)
    print(f"{len(lines)} lines, {problems} of them with a problem")
    if not 1_000 < problems < len(lines) / 2:
        sys.exit("too few or too many lines are damaged: that proves too little")


if __name__ == "__main__":
    main(sys.argv)
