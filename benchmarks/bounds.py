# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
"""What the tool's commands take for ever more lines, and for ever longer ones, hostile ones too: time may grow as the
input does, memory of what streams not at all.

    bounds.py BGPDT FILE.svg   measures, tells the figures and plots them; fails where one grows faster
    bounds.py BGPDT --memory   small inputs, of which memory and exit status alone are looked at
"""
import math
import os
import resource
import subprocess
import sys
import tempfile
from dataclasses import dataclass

from plot import COLOURS, Line, Panel, plot
from report import table

MOST_POWER = 1.15  # of the input, by which time may grow: what is linear is disturbed by the processor's caches
SORT_POWER = 1.25  # a million lines are compared 20 times each, ten thousand 13 times
LEAST_STEP = 5  # how many times the smaller of two inputs the larger is that are compared
LEAST_SECONDS = 0.02  # less is told from nothing by chance alone
LEAST_MEGABYTES = 16
ROOM = 2  # megabytes by which a stream's memory may differ, of its buffers
SECONDS = 300  # of the processor, after which a run is ended
ROUNDS = 3


@dataclass(frozen=True)
class Job:
    """A command that reads one of the inputs below, or that has it as its argument {}."""

    words: str
    input: str
    exits: int = 0
    room: float = ROOM  # megabytes; math.inf: memory in proportion
    power: float = MOST_POWER
    most: int = 10**9  # that it is tried with
    drawn: str = ""  # its name in the plot, where it stands for those that are alike

    def name(self):
        return f"{self.words.replace(' {}', '')}, {self.input}"


# Inputs of so many lines.
MESSAGE = "ff" * 16 + "001e02" + "0000" + "0007" + "c00804fbf00064"
LINES = {
    "texts": lambda i: (f"{64496 + i % 16}:{i * 7919 % 65536}", f"192.0.2.{i % 256}:{i * 7919 % 65536}")[i % 2],
    "hex": lambda i: f"0000{64496 + i % 16:04x}{i * 7919 % 65536:08x}00000000",
    "octets": lambda i: f"0000{64496 + i % 16:04x}{i * 7919 % 65536:08x}",
    "objects": lambda i: f'{{"text":"{64496 + i % 16}:{i * 7919 % 65536}"}}',
    "refused texts": lambda i: f"192.0.2.{i % 256}:{65536 + i}",
    "messages": lambda i: MESSAGE,
    "packets": lambda i: f'{"," if i else "["}{{"_source":{{"layers":{{"frame":{{"frame.number":"{i + 1}"}},'
                         f'"bgp_raw":["{MESSAGE}",54,30,0,1]}}}}}}',
}
ENDS = {"packets": "]\n"}

MANY_LINES = (
    Job("convert VRFRD", "texts", drawn="convert"),
    Job("convert VRFRD -j 2", "texts"),
    Job("convert VRFRD --to json", "texts", drawn="convert --to json"),
    Job("convert VRFRD --from json", "objects"),
    Job("convert VRFRD --from hex --to csv", "hex"),
    Job("print VRFRD -", "hex"),
    Job("check VRFRD", "texts", drawn="check"),
    Job("canon VRFRD", "texts"),
    Job("uniq VRFRD", "texts"),
    Job("sort VRFRD", "texts", room=math.inf, power=SORT_POWER, drawn="sort"),
    Job("sort VRFRD --memory 4M", "texts", room=4 + ROOM, power=SORT_POWER, drawn="sort --memory 4M"),
    Job("wire RD -", "octets"),
    Job("import --from hex", "messages"),
    Job("import", "packets", drawn="import"),
    Job("convert VRFRD", "refused texts", exits=1),
    Job("canon VRFRD --rejects /dev/null", "refused texts", exits=1),
    Job("check VRFRD --show 1000000000", "refused texts", exits=1, most=10**6, drawn="refused, each told"),
)

# Inputs of so many bytes in a line.
LONG = {
    "digits": lambda n: "7" * n,
    "blanks": lambda n: " " * n,
    "brackets": lambda n: "[" * n,
    "nested arrays": lambda n: '{"table":' + "[" * n,
    "nested objects": lambda n: '{"a":' * (n // 5),
    "a string": lambda n: '["' + "7" * n + '"]',
    "hundred of digits": lambda n: "\n".join(["7" * n] * 100),
    "hundred of brackets": lambda n: "\n".join(["[" * n] * 100),
    "hundred of numbers": lambda n: "\n".join(["1 " * (n // 2)] * 100),
}
LONGEST_ARGUMENT = 100_000  # that Linux takes is 131,071 bytes
LONGEST_TOLD = 60_000  # of longer ones it is told that they are
LONGEST_STRING = 10**7  # a packet of more than 64 MiB is refused

LONG_LINES = (
    *(Job(words, "digits", exits=1) for words in (
        "convert VRFRD", "check VRFRD", "canon VRFRD", "uniq VRFRD", "sort VRFRD", "print VRFRD -", "wire RD -")),
    Job("import --from hex", "digits", exits=1, room=4 + ROOM, drawn="import --from hex"),
    Job("convert VRFRD", "blanks", exits=1, drawn="convert"),
    Job("convert VRFRD --from json", "nested arrays", exits=1, drawn="--from json, nested"),
    Job("convert VRFRD --from json", "nested objects", exits=1),
    Job("import", "nested objects", exits=1, drawn="import, nested objects"),
    Job("import", "brackets", exits=1, room=math.inf, drawn="import, nested arrays"),
    Job("import", "a string", room=math.inf, most=LONGEST_STRING, drawn="import, a string"),
    Job("check VRFRD --show 100", "hundred of digits", exits=1, most=LONGEST_TOLD, drawn="a hundred, each told"),
    Job("check BGPLSPREFIX --show 100", "hundred of brackets", exits=1, most=LONGEST_TOLD),
    Job("check ASNUM_ENHANCE --show 100", "hundred of numbers", exits=1, most=LONGEST_TOLD),
    *(Job(f"{words} {{}}", "brackets", exits=1, room=math.inf, most=LONGEST_ARGUMENT) for words in (
        "parse BGPLSPREFIX", "check BGPLSPREFIX", "canon BGPLSPREFIX", "explain BGPLSPREFIX", "table BGPLSPREFIX",
        "diff BGPLSPREFIX {}", "compare BGPLSPREFIX {}")),
)


@dataclass(frozen=True)
class Measure:
    """One kind of input, and how large it is."""

    words: str
    of: str  # the size's unit
    jobs: tuple
    write: object  # (input, size, file)
    sizes: tuple
    small: tuple  # for --memory


@dataclass(frozen=True)
class Point:
    size: int
    seconds: float
    megabytes: float


def write_lines(kind, count, file):
    file.writelines(LINES[kind](i) + "\n" for i in range(count))
    file.write(ENDS.get(kind, ""))


def write_long(kind, length, file):
    file.write(LONG[kind](length) + "\n")


MEASURES = (
    Measure("many lines", "lines", MANY_LINES, write_lines, (10**4, 10**5, 10**6), (10**4, 10**5)),
    Measure("long lines", "bytes", LONG_LINES, write_long, (10**3, 10**4, LONGEST_TOLD, 10**5, 10**6, 10**7, 10**8),
            (10**3, LONGEST_TOLD, 10**6)),
)


class Unbounded(Exception):
    """A sentence."""


def run(command, input_file, peak_file):
    """Seconds of the processor, megabytes at the most, and the exit status; 128 and a signal's number for one."""
    process = subprocess.Popen(["time", "--quiet", "--format=%M", f"--output={peak_file.name}", *command], stdin=input_file,
                               stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                               preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_CPU, (SECONDS, SECONDS)))
    _, status, used = os.wait4(process.pid, 0)
    process.returncode = os.waitstatus_to_exitcode(status)
    peak_file.seek(0)
    return used.ru_utime + used.ru_stime, int(peak_file.read()) / 1024, process.returncode


def point(tool, job, of, size, path, rounds=ROUNDS):
    """The least of some rounds, of one where that takes long."""
    with open(path, encoding="ascii") as text:
        argument = text.read().rstrip("\n") if "{}" in job.words else ""
    command = [tool, *(argument if word == "{}" else word for word in job.words.split())]
    seconds, megabytes = math.inf, math.inf
    for _ in range(rounds):
        with open(path, "rb") as source, tempfile.NamedTemporaryFile("r") as peak:
            took, held, exits = run(command, source, peak)
        if exits != job.exits:
            raise Unbounded(f"{job.name()}: the exit status for {size:,} {of} is {exits}, not {job.exits}")
        seconds, megabytes = min(seconds, took), min(megabytes, held)
        if took > 1:
            break
    return Point(size, seconds, megabytes)


def power(sizes, costs, least):
    """Of the size, by which the cost grows."""
    return math.log(max(costs[1], least) / max(costs[0], least)) / math.log(sizes[1] / sizes[0])


def pairs(points):
    """Each point, and the last of those that are smaller enough."""
    for larger in points:
        smaller = [point for point in points if point.size * LEAST_STEP <= larger.size]
        if smaller:
            yield smaller[-1], larger


def faults(job, of, points, time_counts=True):
    """In what the command grows faster than it may, a sentence each."""
    for smaller, larger in pairs(points):
        sizes = smaller.size, larger.size
        grown = power(sizes, (smaller.seconds, larger.seconds), LEAST_SECONDS)
        if time_counts and grown > job.power:
            yield (f"{job.name()}: {larger.size:,} {of} take {larger.seconds:.2f} s and {smaller.size:,} take "
                   f"{smaller.seconds:.2f} s: that grows by the power {grown:.2f}, and {job.power} is the most")
        grown = power(sizes, (smaller.megabytes, larger.megabytes), LEAST_MEGABYTES)
        if job.room == math.inf and grown > job.power:
            yield (f"{job.name()}: {larger.size:,} {of} need {larger.megabytes:.1f} MB and {smaller.size:,} need "
                   f"{smaller.megabytes:.1f} MB: that grows by the power {grown:.2f}, and {job.power} is the most")
        if larger.megabytes > points[0].megabytes + job.room:
            yield (f"{job.name()}: {larger.size:,} {of} need {larger.megabytes:.1f} MB and {points[0].size:,} need "
                   f"{points[0].megabytes:.1f} MB: that is more by over {job.room} MB")


def measured(tool, measure, sizes, rounds=ROUNDS):
    """The points of each job. Each input is there but once."""
    points = {job: [] for job in measure.jobs}
    with tempfile.TemporaryDirectory() as folder:
        path = os.path.join(folder, "input")
        for size in sizes:
            for kind in dict.fromkeys(job.input for job in measure.jobs if size <= job.most):
                with open(path, "w", encoding="ascii") as file:
                    measure.write(kind, size, file)
                for job in measure.jobs:
                    if job.input == kind and size <= job.most:
                        points[job].append(point(tool, job, measure.of, size, path, rounds))
    return points


def print_points(of, points):
    sizes = sorted({point.size for row in points.values() for point in row})
    rows = []
    for job, row in points.items():
        by_size = {point.size: point for point in row}
        rows.append([job.name(), "s"] + [f"{by_size[size].seconds:.3f}" if size in by_size else "" for size in sizes])
        rows.append(["", "MB"] + [f"{by_size[size].megabytes:.1f}" if size in by_size else "" for size in sizes])
    table([of, ""] + [f"{size:,}" for size in sizes], rows)
    print(flush=True)


def panels(measure, points):
    shown = [(job, row) for job, row in points.items() if job.drawn]

    def panel(title, unit, of_point):
        lines = [Line(job.drawn, colour, [(point.size, of_point(point)) for point in row])
                 for (job, row), colour in zip(shown, COLOURS)]
        return Panel(f"{title}, {measure.words}", (measure.of, unit), lines, logarithmic=True)

    return [panel("time of the processor", "s", lambda point: point.seconds),
            panel("memory at the most", "MB", lambda point: point.megabytes)]


def main(tool, target):
    small = target == "--memory"
    problems, drawn = [], []
    for measure in MEASURES:
        points = measured(tool, measure, measure.small, 1) if small else measured(tool, measure, measure.sizes)
        problems += [fault for job, row in points.items() for fault in faults(job, measure.of, row, not small)]
        if not small:
            print_points(measure.of, points)
            drawn += panels(measure, points)
    if drawn:
        plot(drawn, target, columns=2)
    if problems:
        sys.exit("\n".join(problems))
    print(f"proved: {sum(len(measure.jobs) for measure in MEASURES)} commands are bounded in memory"
          f"{'' if small else ' and time'}, however much they read")


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    try:
        main(*sys.argv[1:])
    except Unbounded as fault:
        sys.exit(str(fault))
