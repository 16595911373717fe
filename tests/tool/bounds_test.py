#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
"""./bench --bounds tells what grows too fast, and of the tool nothing does in memory.

bounds_test.py BGPDT BENCHMARKS: the tool, the folder of the measurement.
"""
import math
import subprocess
import sys

BGPDT, BENCHMARKS = sys.argv[1:]
sys.path.insert(0, BENCHMARKS)

import bounds  # noqa: E402
from bounds import Job, Point  # noqa: E402

problems = []


def expect(sentences, job, *points):
    """That so many faults are found, each with its figures."""
    found = list(bounds.faults(job, "lines", [Point(*point) for point in points]))
    if len(found) != len(sentences) or not all(part in told for part, told in zip(sentences, found)):
        problems.append(f"{points}: {found}, not {sentences}")


stream, whole = Job("convert", "texts"), Job("sort", "texts", room=math.inf)
# 10 to the power of 1.15 is 14.1.
expect([], stream, (1000, 0.1, 5), (10_000, 1.4, 5), (100_000, 19.0, 5))
expect(["10,000 lines take 1.50 s"], stream, (1000, 0.1, 5), (10_000, 1.5, 5))
expect(["by the power 2.00"], stream, (1000, 0.001, 5), (10_000, 0.02, 5), (100_000, 2.0, 5))
expect([], stream, (1000, 0.0001, 5), (10_000, 0.02, 5))  # too little to tell
expect([], stream, (50_000, 0.1, 5), (60_000, 0.2, 5))  # too near to each other
expect(["60,000 lines take 9.00 s and 10,000"], stream, (10_000, 1.0, 5), (50_000, 5.0, 5), (60_000, 9.0, 5))
expect([], stream, (1000, 0.1, 5), (10_000, 0.1, 6.9))
expect(["over 2 MB"], stream, (1000, 0.1, 5), (10_000, 0.1, 6.0), (100_000, 0.1, 7.1))
expect([], whole, (1000, 0.1, 20), (10_000, 0.1, 200), (100_000, 0.1, 2000))
expect(["by the power 2.00"], whole, (1000, 0.1, 20), (10_000, 0.1, 2000))


def measured(tool, job):
    measure = bounds.Measure("", "lines", (job,), bounds.write_lines, (), (1000, 100_000))
    return bounds.measured(tool, measure, measure.small, 1)[job]


# sort holds the lines, so as a stream it has a fault; grep, that finds none of these, exits with 1.
if not any("need" in told for told in bounds.faults(Job("-r -", "texts"), "lines", measured("sort", Job("-r -", "texts")), False)):
    problems.append("sort is taken for a stream")
try:
    measured("grep", Job("--count none", "texts"))
    problems.append("another exit status passes")
except bounds.Unbounded as fault:
    if str(fault) != "--count none, texts: the exit status for 1,000 lines is 1, not 0":
        problems.append(str(fault))

answered = subprocess.run([sys.executable, f"{BENCHMARKS}/bounds.py", BGPDT, "--memory"], capture_output=True, text=True)
print(answered.stdout, end="")
if answered.returncode != 0:
    problems.append(answered.stderr)
sys.exit("\n".join(problems) or 0)
