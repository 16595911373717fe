# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
"""Converts a file of route distinguishers to hexadecimal by bgpdt, beside the hand-written least with and without the
host's calls, the plain port, and sed replacing a character. Prints the processor time of each, user's and system's, the
least of some interleaved runs.

Usage: batch.py BGPDT BATCH [LINES [RUNS]]
"""
import os
import random
import resource
import subprocess
import sys
import tempfile


def distinguishers(count):
    """Each form in turn (RFC 4364 section 4.2), with an assigned number of 1 to 65535."""
    number = random.Random(7).randrange
    forms = (
        lambda: f"{number(64496, 64512)}",
        lambda: f"192.0.2.{number(256)}",
        lambda: f"{number(65536, 65552)}",
        lambda: f"{number(1, 17)}.{number(65536)}",
    )
    return "".join(f"{forms[i % 4]()}:{number(1, 65536)}\n" for i in range(count))


def seconds(command, source, sink=subprocess.DEVNULL):
    before = resource.getrusage(resource.RUSAGE_CHILDREN)
    with open(source, "rb") as lines:
        subprocess.run(command, stdin=lines, stdout=sink, check=True)
    after = resource.getrusage(resource.RUSAGE_CHILDREN)
    return after.ru_utime - before.ru_utime + after.ru_stime - before.ru_stime


def main(bgpdt, batch, lines=4_000_000, runs=15):
    commands = {
        "floor, host's calls": [batch, "floor"],
        "floor without them": [batch, "bare"],
        "bgpdt convert -j 1": [bgpdt, "convert", "VRFRD", "-j", "1"],
        "bgpdt convert -j 2": [bgpdt, "convert", "VRFRD", "-j", "2"],
        "sed 's/:/ /'": ["sed", "s/:/ /"],
        "plain port": [batch, "plain"],
    }
    with tempfile.TemporaryDirectory() as folder:
        source = os.path.join(folder, "input")
        with open(source, "w", encoding="ascii") as file:
            file.write(distinguishers(lines))
        answers = set()
        for name in commands.keys() - {"sed 's/:/ /'"}:
            with open(os.path.join(folder, "output"), "w+b") as sink:
                seconds(commands[name], source, sink)
                sink.seek(0)
                answers.add(sink.read())
        if len(answers) != 1:
            sys.exit("the converters do not answer the same")
        best = {}
        for _ in range(runs):
            for name, command in commands.items():
                best[name] = min(best.get(name, float("inf")), seconds(command, source))
    floor = best["floor, host's calls"]
    print(f"{'program':22}{'ns a line':>10}{'lines/s, of the floor':>24}")
    for name, time in best.items():
        print(f"{name:22}{time / lines * 1e9:10.1f}{floor / time:24.2f}")


if __name__ == "__main__":
    main(*sys.argv[1:3], *map(int, sys.argv[3:]))
