#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
"""coverage.py ROOM PROFILE PROGRAM...: fails where too many lines, branches or conditions of a decision (MC/DC) in the
room's sources have no test, of src/ one. A template counts once, whichever of its instances was there. Code that only the
compiler runs is not in what it makes, and so not counted; nor is what unreached.txt names, which says why."""

import json
import re
import subprocess
import sys
from collections import defaultdict
from collections.abc import Iterator
from pathlib import Path

TOP = Path(__file__).resolve().parent.parent
UNREACHED = TOP / "setup" / "unreached.txt"
# The least share of lines, branches and conditions that tests reach, in percent.
LEAST_OF_PLUGIN = (100, 100, 100)
LEAST = (98, 95, 95)


def lines_left_out(room: Path) -> set[tuple[str, str]]:
    """The file and the text of each line of the room that unreached.txt names."""
    named = set()
    for block in UNREACHED.read_text().split("\n\n")[1:]:
        name, *rest = block.strip().splitlines()
        if not (TOP / name).is_relative_to(room):
            continue
        lines = [line.removeprefix("- ") for line in rest if line.startswith("- ")]
        if not lines or not rest[-1].startswith("= "):
            sys.exit(f"{UNREACHED}: {name}: lines behind '- ' and a reason behind '= ' are needed")
        there = {line.strip() for line in (TOP / name).read_text().splitlines()}
        for line in lines:
            if line not in there:
                sys.exit(f"{UNREACHED}: {name} has no line {line!r}")
            named.add((str(TOP / name), line))
    return named


class Sources:
    """The files of a room."""

    def __init__(self, room: Path) -> None:
        self.room = room
        self.lines: dict[str, list[str]] = {}
        self.left_out = lines_left_out(room)

    def has(self, name: str) -> bool:
        return Path(name).is_relative_to(self.room)

    def text_of(self, name: str, line: int) -> str:
        if name not in self.lines:
            self.lines[name] = Path(name).read_text().splitlines()
        return self.lines[name][line - 1]

    def text_at(self, name: str, line: int, column: int) -> str:
        return f"{name}:{line}:{column}: {self.text_of(name, line)[column - 1:]}"

    def is_left_out(self, name: str, line: int) -> bool:
        return (name, self.text_of(name, line).strip()) in self.left_out

    def is_past_all_cases(self, name: str, line: int, column: int) -> bool:
        """No value lies beside the cases of an enumeration, as -Wswitch knows."""
        return self.text_of(name, line)[: column - 1].endswith("switch (")


class Count:
    """Of lines, branches or conditions: how many there are, and where those stand that no test reaches."""

    def __init__(self, what: str, sources: Sources) -> None:
        self.what = what
        self.sources = sources
        self.total = 0
        self.left_out = 0
        self.missed: list[str] = []

    def add(self, reached: bool, where: tuple[str, int, int], how: str = "") -> None:
        if not reached and self.sources.is_left_out(*where[:2]):
            self.left_out += 1
            return
        self.total += 1
        if not reached:
            self.missed.append(how + self.sources.text_at(*where))

    def share(self) -> float:
        return 100 * (self.total - len(self.missed)) / max(self.total, 1)

    def tell(self) -> None:
        beside = f", {self.left_out} left out" if self.left_out else ""
        print(f"proved: {self.sources.room.name}: {self.share():.1f} % of {self.total} {self.what}{beside}")
        for where in self.missed:
            print(f"not reached, {self.what}: {where}")


def output_of(*command: str) -> str:
    return subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True, check=True).stdout


def functions_in(exported: str, programs: list[str], sources: Sources) -> list[tuple[str, dict]]:
    """Each function of the room that the programs have, with the name of its file."""
    made = set(output_of("nm", "--defined-only", "--format=just-symbols", *programs).split())
    return [
        (function["filenames"][0], function)
        for function in json.loads(exported)["data"][0]["functions"]
        if sources.has(function["filenames"][0]) and function["name"].rpartition(":")[2] in made
    ]


def lines_of(regions: list, sources: Sources, name: str) -> Iterator[tuple[int, bool]]:
    """Each line of a function, and whether it ran: what begins in it, or else the innermost region around its begin."""
    first, last = min(region[0] for region in regions), max(region[2] for region in regions)
    for line in range(first, last + 1):
        text = sources.text_of(name, line)
        begin = (line, len(text) - len(text.lstrip()) + 1)
        around = [r for r in regions if (r[0], r[1]) <= begin < (r[2], r[3])]
        inside = [r for r in regions if r[0] == line and (r[0], r[1]) > begin]
        innermost = max(around, key=lambda r: ((r[0], r[1]), (-r[2], -r[3])), default=None)
        if text.strip() and (innermost or inside):
            yield line, any(r[4] > 0 for r in [*inside, *([innermost] if innermost else [])])


def count_lines(functions: list, sources: Sources) -> Count:
    count = Count("lines", sources)
    reached: dict[tuple[str, int], bool] = defaultdict(bool)
    for name, function in functions:
        code = [region for region in function["regions"] if region[5] == 0 and region[7] == 0]
        for line, ran in lines_of(code, sources, name):
            reached[name, line] |= ran
    for (name, line), ran in sorted(reached.items()):
        count.add(ran, (name, line, 1))
    return count


Taken = dict[tuple[str, int, int], list[bool]]


def branches_taken(functions: list) -> Taken:
    """Of each branch, whether it was ever true, and whether ever false."""
    taken: dict[tuple[str, int, int], list[bool]] = defaultdict(lambda: [False, False])
    for name, function in functions:
        for line, column, _, _, trues, falses, file, *_ in function["branches"]:
            if file == 0:
                taken[name, line, column][0] |= trues > 0
                taken[name, line, column][1] |= falses > 0
    return taken


def count_branches(taken: Taken, sources: Sources) -> Count:
    count = Count("branches", sources)
    for place, sides in sorted(taken.items()):
        if sources.is_past_all_cases(*place):
            continue
        for side, was_taken in zip(("true", "false"), sides):
            count.add(was_taken, place, f"never {side}: ")
    return count


def count_conditions(shown: str, first: str, taken: Taken, sources: Sources) -> Count:
    """A condition counts where a pair of runs shows that it alone decides; one that an instance has as a constant does not
    count there. The export does not tell constants, the page for people does; it names no file, the first, if it is of one
    alone. Of a decision between two objects ("a && b ? x : y") clang 19 records no run: such conditions count as branches."""
    count = Count("conditions that decide alone", sources)
    alone: dict[tuple[str, int, int], bool] = defaultdict(bool)
    name, places, is_recorded = first, {}, True
    for line in shown.splitlines():
        if line.startswith("/"):
            name = line.rstrip(":")
        elif "MC/DC Decision Region" in line:
            places, is_recorded = {}, True
        elif place := re.search(r"Condition (C\d+) --> \((\d+):(\d+)\)", line):
            places[place[1]] = (name, int(place[2]), int(place[3]))
        elif re.search(r"\|     None\.$", line):
            is_recorded = not any(any(taken.get(place, ())) for place in places.values())
        elif is_recorded and (pair := re.search(r"(C\d+)-Pair: (.*)", line)) and pair[2] != "constant folded":
            alone[places[pair[1]]] |= pair[2].startswith("covered")
    for place, is_alone in sorted(alone.items()):
        if sources.has(place[0]):
            count.add(is_alone, place)
    return count


def main() -> int:
    room, profile, *programs = sys.argv[1:]
    sources = Sources(TOP / room)
    what = [programs[0], *(f"-object={program}" for program in programs[1:]), f"-instr-profile={profile}"]
    functions = functions_in(output_of("llvm-cov-19", "export", *what), programs, sources)
    taken = branches_taken(functions)
    shown = output_of("llvm-cov-19", "show", "--show-mcdc", *what, str(sources.room))
    counts = [
        count_lines(functions, sources),
        count_branches(taken, sources),
        count_conditions(shown, functions[0][0], taken, sources),
    ]
    for count in counts:
        count.tell()
    least = LEAST_OF_PLUGIN if room == "src" else LEAST
    low = [count for count, share in zip(counts, least) if count.total == 0 or count.share() < share]
    for count in low:
        print(f"{room}: too few {count.what}")
    return 1 if low else 0


sys.exit(main())
