#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
"""coverage.py ROOM PROFILE PROGRAM...: fails where a line, a branch, or a condition of a decision (MC/DC) in
the room's sources has no test. A template counts once, whichever of its instances was there. Code that only the compiler
runs is not in what it makes, and so not counted."""

import json
import re
import subprocess
import sys
from collections import defaultdict
from pathlib import Path

TOP = Path(__file__).resolve().parent.parent


class Sources:
    """The files of a room."""

    def __init__(self, room: Path) -> None:
        self.room = room
        self.lines: dict[str, list[str]] = {}

    def has(self, name: str) -> bool:
        return Path(name).is_relative_to(self.room)

    def text_of(self, name: str, line: int) -> str:
        if name not in self.lines:
            self.lines[name] = Path(name).read_text().splitlines()
        return self.lines[name][line - 1]

    def text_at(self, name: str, line: int, column: int) -> str:
        return f"{name}:{line}:{column}: {self.text_of(name, line)[column - 1:]}"

    def is_past_all_cases(self, name: str, line: int, column: int) -> bool:
        """No value lies beside the cases of an enumeration, as -Wswitch knows."""
        return self.text_of(name, line)[: column - 1].endswith("switch (")


class Count:
    """Of lines, branches or conditions: how many there are, and where those stand that no test reaches."""

    def __init__(self, what: str) -> None:
        self.what = what
        self.total = 0
        self.missed: list[str] = []

    def add(self, reached: bool, where: str) -> None:
        self.total += 1
        if not reached:
            self.missed.append(where)

    def tell(self) -> None:
        share = 100 * (self.total - len(self.missed)) / self.total
        print(f"proved: {share:.1f} % of {self.total} {self.what}")
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


def count_lines(functions: list, sources: Sources) -> Count:
    count = Count("lines")
    reached: dict[tuple[str, int], bool] = defaultdict(bool)
    for name, function in functions:
        for line, _, end_line, end_column, runs, file, _, kind in function["regions"]:
            if kind == 0 and file == 0:
                for inside in range(line, end_line + (end_column > 1)):
                    reached[name, inside] |= runs > 0
    for (name, line), ran in sorted(reached.items()):
        count.add(ran, sources.text_at(name, line, 1))
    return count


def count_branches(functions: list, sources: Sources) -> Count:
    count = Count("branches")
    taken: dict[tuple[str, int, int], list[bool]] = defaultdict(lambda: [False, False])
    for name, function in functions:
        for line, column, _, _, trues, falses, file, *_ in function["branches"]:
            if file == 0:
                taken[name, line, column][0] |= trues > 0
                taken[name, line, column][1] |= falses > 0
    for place, sides in sorted(taken.items()):
        if sources.is_past_all_cases(*place):
            continue
        for side, was_taken in zip(("true", "false"), sides):
            count.add(was_taken, f"never {side}: {sources.text_at(*place)}")
    return count


def count_conditions(shown: str, sources: Sources) -> Count:
    """A condition counts where a pair of runs shows that it alone decides; one that an instance has as a constant does not
    count there. The export does not tell constants, the page for people does."""
    count = Count("conditions that decide alone")
    alone: dict[tuple[str, int, int], bool] = defaultdict(bool)
    name, places = "", {}
    for line in shown.splitlines():
        if line.startswith("/"):
            name = line.rstrip(":")
        elif "MC/DC Decision Region" in line:
            places = {}
        elif place := re.search(r"Condition (C\d+) --> \((\d+):(\d+)\)", line):
            places[place[1]] = (name, int(place[2]), int(place[3]))
        elif (pair := re.search(r"(C\d+)-Pair: (.*)", line)) and pair[2] != "constant folded":
            alone[places[pair[1]]] |= pair[2].startswith("covered")
    for place, is_alone in sorted(alone.items()):
        if sources.has(place[0]):
            count.add(is_alone, sources.text_at(*place))
    return count


def main() -> int:
    room, profile, *programs = sys.argv[1:]
    sources = Sources(TOP / room)
    what = [programs[0], *(f"-object={program}" for program in programs[1:]), f"-instr-profile={profile}"]
    functions = functions_in(output_of("llvm-cov-19", "export", *what), programs, sources)
    shown = output_of("llvm-cov-19", "show", "--show-mcdc", *what, str(sources.room))
    counts = [
        count_lines(functions, sources),
        count_branches(functions, sources),
        count_conditions(shown, sources),
    ]
    for count in counts:
        count.tell()
    return 1 if any(count.missed or count.total == 0 for count in counts) else 0


sys.exit(main())
