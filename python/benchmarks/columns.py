#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
"""columns.py BGPDT [ROWS]: what a column of route distinguishers costs, in one process, beside the tool's `convert -j 1` of
the same lines. Time is that of the processor, the least of seven, in turn."""
import random
import resource
import subprocess
import sys
import tempfile
import time

import pyarrow

import bgpdt

ROUNDS = 7


def text_of(row):
    return (f"{64496 + row % 16}:{random.randrange(1 << 32)}", f"192.0.2.{row % 256}:{row % 65536}",
            f"{65536 + row % 1000}:{row % 65536}")[row % 3]


def of_process(call):
    began = time.process_time()
    call()
    return time.process_time() - began


def of_tool(command):
    before = resource.getrusage(resource.RUSAGE_CHILDREN)
    subprocess.run(command, stdout=subprocess.DEVNULL, check=True)
    after = resource.getrusage(resource.RUSAGE_CHILDREN)
    return after.ru_utime - before.ru_utime + after.ru_stime - before.ru_stime


def main():
    tool, rows = sys.argv[1], int(sys.argv[2]) if len(sys.argv) > 2 else 10_000_000
    random.seed(1)
    texts = [text_of(row) for row in range(rows)]
    array = pyarrow.array(texts)
    values = bgpdt.parse_many("VRFRD", array)
    assert not values.refused
    with tempfile.NamedTemporaryFile("w") as file:
        file.writelines(text + "\n" for text in texts)
        file.flush()
        runs = {
            "bgpdt convert VRFRD --to binary -j 1": lambda: of_tool([tool, "convert", "VRFRD", "--to", "binary", "-j", "1", file.name]),
            "parse_many of an Arrow array": lambda: of_process(lambda: bgpdt.parse_many("VRFRD", array)),
            "parse_many of a list": lambda: of_process(lambda: bgpdt.parse_many("VRFRD", texts)),
            "print_many": lambda: of_process(lambda: bgpdt.print_many("VRFRD", values)),
        }
        least = dict.fromkeys(runs, float("inf"))
        for _ in range(ROUNDS):
            for name, run in runs.items():
                least[name] = min(least[name], run())
    tool_seconds = next(iter(least.values()))
    for name, seconds in least.items():
        print(f"{seconds:7.3f} s  {seconds / rows * 1e9:5.0f} ns a row  {seconds / tool_seconds:5.2f}  {name}")


main()
