#!/usr/bin/env python3
"""Holds the reader of J1939 logs to a second implementation: random traffic of many senders, with
frames lost, repeated and delayed, sessions aborted, asked for again and announced anew.

Usage: j1939_comparison.py PROGRAM [SEED]
"""
import collections
import sys

import log_comparison

MANAGEMENT, PACKET = 0xEC00, 0xEB00
LIMITS = {True: 750_000, False: 1_250_000}  # microseconds: broadcast, handshake


class Traffic:
    """Lines of several senders whose messages are interleaved."""

    def __init__(self, random):
        self.random = random
        self.frames = []  # (microseconds, channel, identifier, bytes)

    def add(self, time, channel, pgn, source, destination, data, priority=6):
        field = pgn | (destination if (pgn >> 8 & 0xFF) < 240 else 0)
        self.frames.append((time, channel, priority << 26 | field << 8 | source, bytes(data)))

    def add_single(self, time):
        random = self.random
        self.add(time, "can0", random.choice([0xF004, 0xFEF1, 0xEF00, 0x1EF00]),
                 random.randrange(6), random.randrange(6),
                 random.randbytes(random.randrange(9)), random.randrange(8))

    def add_message(self, time):
        random = self.random
        size = random.choice([9, 10, 13, 14, 15, random.randrange(9, 1786), random.randrange(9, 40)])
        payload = random.randbytes(size)
        packets = [bytes([number + 1]) + payload[7 * number:7 * number + 7].ljust(7, b"\xFF")
                   for number in range((size + 6) // 7)]
        channel, source = random.choice(["can0", "can1"]), random.randrange(6)
        pgn = random.choice([0xFEEB, 0xFECA, 0xEF00, 0x1FE10])
        if random.random() < 0.5:
            self.add_broadcast(time, channel, source, pgn, size, packets)
        else:
            self.add_handshake(time, channel, source, pgn, size, packets)

    def step(self):
        """Microseconds to the next frame: mostly short, now and then at the time-outs."""
        chance = self.random.random()
        if chance < 0.004:
            return self.random.choice([749_999, 750_000, 750_001, 1_249_999, 1_250_000, 1_250_001])
        return self.random.randrange(1_000, 60_000)

    def disturb(self, packets):
        """The packets as they arrive: now and then one lost, twice, out of order, cut or wrong."""
        random, disturbed = self.random, list(packets)
        chance, place = random.random(), random.randrange(len(packets))
        if chance < 0.08:
            del disturbed[place]
        elif chance < 0.14:
            disturbed.insert(place, disturbed[place])
        elif chance < 0.20:
            other = random.randrange(len(packets))
            disturbed[place], disturbed[other] = disturbed[other], disturbed[place]
        elif chance < 0.25:
            disturbed[place] = disturbed[place][:random.randrange(8)]
        elif chance < 0.28:
            disturbed[place] = bytes([random.randrange(256)]) + disturbed[place][1:]
        elif chance < 0.32:
            del disturbed[place:]
        return disturbed

    def announcement(self, control, size, count, last, pgn):
        random = self.random
        if random.random() < 0.05:
            size = random.choice([0, 8, 1786, size + 7, size])
            count = random.choice([0, count, count + 1])
        if random.random() < 0.02:
            pgn = random.choice([0x40000, 0xEF01, 0xFFFFFF])
        data = bytes([control, size & 0xFF, size >> 8, count & 0xFF, last]) + pgn.to_bytes(3, "little")
        return data if random.random() < 0.98 else data[:random.randrange(8)]

    def add_broadcast(self, time, channel, source, pgn, size, packets):
        to = 0xFF if self.random.random() < 0.98 else 3
        self.add(time, channel, MANAGEMENT, source, to,
                 self.announcement(32, size, len(packets), 0xFF, pgn))
        for packet in self.disturb(packets):
            time += self.step()
            self.add(time, channel, PACKET, source, to, packet)

    def add_handshake(self, time, channel, source, pgn, size, packets):
        random = self.random
        to = random.choice([number for number in range(6) if number != source])
        if random.random() < 0.02:
            to = 0xFF
        self.add(time, channel, MANAGEMENT, source, to,
                 self.announcement(16, size, len(packets), 0xFF, pgn))
        place = 0
        while place < len(packets):
            time += self.step()
            if random.random() < 0.05:  # hold
                self.control(time, channel, to, source, [17, 0, 0xFF], pgn)
                continue
            if random.random() < 0.08:  # once more from an earlier packet, or from anywhere
                place = random.randrange(place + 1)
            count = random.randrange(1, 9)
            first = place + 1 if random.random() < 0.97 else random.randrange(256)
            self.control(time, channel, to, source, [17, count, first], pgn)
            for packet in self.disturb(packets[place:place + count]):
                time += self.step()
                self.add(time, channel, PACKET, source, to, packet)
            place += count
            if random.random() < 0.02:
                sides = [(source, to), (to, source)]
                self.control(time + 1, channel, *random.choice(sides), [255, 1, 0xFF], pgn)
                if random.random() < 0.5:
                    return
        if random.random() < 0.9:
            self.control(time + self.step(), channel, to, source,
                         [19, size & 0xFF, size >> 8], pgn)

    def control(self, time, channel, source, destination, begin, pgn):
        data = (bytes(begin) + b"\xFF" * 5)[:5] + pgn.to_bytes(3, "little")
        self.add(time, channel, MANAGEMENT, source, destination, data)

    def sorted_frames(self):
        return sorted(self.frames, key=lambda frame: frame[0])


Session = collections.namedtuple("Session", "pgn size count priority")


class Assembler:
    """The transport protocol once more, on dictionaries and lists of packets."""

    def __init__(self):
        self.open = {}  # (channel, source, destination) -> state

    def is_late(self, key, now):
        state = self.open[key]
        return now - state["time"] > LIMITS[key[2] == 0xFF]

    def drop(self, key, reason):
        state = self.open.pop(key)
        return "part", None if state["done"] else reason

    def touch(self, key, now, line):
        state = self.open.pop(key)  # The order of the dictionary is that of the last frames.
        state.update(time=now, line=line)
        self.open[key] = state

    def take(self, now, line, channel, parts, data):
        priority, pgn, source, destination = parts
        key = (channel, source, destination)
        if pgn == PACKET:
            return self.take_packet(now, line, key, data)
        if pgn != MANAGEMENT:
            return None, None
        if len(data) < 8:
            return "part", "frame of the transport protocol has fewer than 8 bytes"
        carried = int.from_bytes(data[5:8], "little")
        if data[0] in (16, 32):
            return self.announce(now, line, key, priority, data, carried)
        back = (channel, destination, source)
        if data[0] == 255:
            for candidate in (key, back):
                if candidate in self.open and self.open[candidate]["what"].pgn == carried:
                    return self.drop(candidate, "message is aborted")
        if data[0] in (17, 19) and back in self.open and self.open[back]["what"].pgn == carried:
            if data[0] == 19:
                return self.drop(back, "message is acknowledged, but packets are missing")
            return self.clear(now, line, back, data)
        return "part", None

    def announce(self, now, line, key, priority, data, pgn):
        size, count = data[1] + 256 * data[2], data[3]
        broadcast = data[0] == 32
        if not 9 <= size <= 1785:
            return "part", "announced message has fewer than 9 or more than 1785 bytes"
        if count != -(-size // 7):
            return "part", "announced numbers of bytes and packets do not fit"
        if pgn > 0x3FFFF or ((pgn >> 8) % 256 < 240 and pgn % 256):
            return "part", "announced parameter group is none"
        if broadcast and key[2] != 0xFF:
            return "part", "broadcast is announced to one address only"
        if not broadcast and key[2] == 0xFF:
            return "part", "request to send goes to all addresses"
        reason = None
        if key in self.open:
            late = self.is_late(key, now)
            reason = self.drop(key, "message was not continued in time" if late else
                               "message is announced while one is not complete")[1]
        self.open[key] = {"what": Session(pgn, size, count, priority), "time": now, "line": line,
                          "packets": [], "done": False}
        return "part", reason

    def clear(self, now, line, key, data):
        state = self.open[key]
        if self.is_late(key, now):
            return self.drop(key, "message was not continued in time")
        if data[1] and not state["done"]:
            if not 1 <= data[2] <= state["what"].count:
                return self.drop(key, "packets are asked for that were not announced")
            if data[2] > len(state["packets"]) + 1:
                return self.drop(key, "packets before those that are asked for are missing")
            del state["packets"][data[2] - 1:]
        self.touch(key, now, line)
        return "part", None

    def take_packet(self, now, line, key, data):
        if key not in self.open:
            return "part", None
        state = self.open[key]
        what, got = state["what"], len(state["packets"])
        if self.is_late(key, now):
            return self.drop(key, "message was not continued in time")
        if state["done"]:
            self.touch(key, now, line)
            return "part", None
        number = data[0] if data else 0
        if not 1 <= number <= what.count:
            return self.drop(key, "packet has a number that was not announced")
        if number <= got:
            return self.drop(key, "packet came again or too late")
        if number > got + 1:
            return self.drop(key, "a packet before this one is missing")
        wanted = min(7, what.size - 7 * got)
        if len(data) - 1 < wanted:
            return self.drop(key, "packet has fewer bytes than the message needs of it")
        state["packets"].append(data[1:1 + wanted])
        self.touch(key, now, line)
        if number < what.count:
            return "part", None
        state["done"] = True
        if key[2] == 0xFF:
            del self.open[key]
        return (what, key, b"".join(state["packets"])), None

    def finish(self):
        return [(state["line"], "log ends before the message is complete")
                for state in self.open.values() if not state["done"]]


def split(identifier):
    field = identifier >> 8 & 0x3FFFF
    destination = 0xFF
    if (field >> 8) % 256 < 240:
        destination, field = field % 256, field // 256 * 256
    return identifier >> 26, field, identifier % 256, destination


def message_text(pgn, source, destination, priority, data):
    return ">%02X%02X%05X%d%s;" % (source, destination, pgn, priority, data.hex().upper())


def describe(kind, time, channel, identifier, data, parts, frames):
    priority, pgn, source, destination = parts
    frame = ""
    if frames is None:
        frame = " frame %08X%d%s" % (identifier | 1 << 31, len(data), data.hex().upper())
    return "%s %d.%06d %s %08X %s%s message %s pgn %d frames %d" % (
        kind, time // 10**6, time % 10**6, channel, identifier, data.hex().upper(), frame,
        message_text(pgn, source, destination, priority, data), pgn, frames or 1)


def expected_outcomes(frames):
    assembler, outcomes = Assembler(), []
    counts = collections.Counter()
    for number, (time, channel, identifier, data) in enumerate(frames, 1):
        parts = split(identifier)
        result, reason = assembler.take(time, number, channel, parts, data)
        if isinstance(result, tuple):
            what, (_, source, destination), payload = result
            whole = (what.priority, what.pgn, source,
                     destination if (what.pgn >> 8) % 256 < 240 else destination)
            field = what.pgn | (destination if (what.pgn >> 8) % 256 < 240 else 0)
            text = describe("data", time, channel, what.priority << 26 | field << 8 | source,
                            payload, whole, what.count)
            counts["complete"] += 1
        else:
            text = describe(result or "data", time, channel, identifier, data, parts, None)
        outcomes.append(f"{number} {text}")
        if reason:
            outcomes.append(f"{number} problem {reason}")
            counts[reason] += 1
    for number, reason in assembler.finish():
        outcomes.append(f"{number} problem {reason}")
        counts[reason] += 1
    return outcomes, counts


def main(arguments):
    program, random = log_comparison.make_random(arguments)
    traffic = Traffic(random)
    start = 1_436_509_052_249_713
    for _ in range(3_000):
        traffic.add_message(start + random.randrange(1_200_000_000))
        traffic.add_single(start + random.randrange(1_200_000_000))
    end = start + 1_200_000_000
    traffic.add(end, "can0", MANAGEMENT, 9, 0xFF, bytes([32, 9, 0, 2, 255, 0xEB, 0xFE, 0]))
    frames = traffic.sorted_frames()
    lines = ["(%d.%06d) %s %08X#%s" % (time // 10**6, time % 10**6, channel, identifier,
                                       data.hex().upper())
             for time, channel, identifier, data in frames]
    expected, counts = expected_outcomes(frames)
    print(f"{len(lines)} frames: {dict(counts)}")
    log_comparison.compare(lines, expected, log_comparison.run_reader(program, "j1939", lines))
    if len(counts) < 15:
        sys.exit("the traffic does not show every outcome: it proves too little")


if __name__ == "__main__":
    main(sys.argv)
