#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
"""target.py PROGRAM EMULATOR...: instructions per conversion on the target, as the emulator executes them.

The emulator writes a line for each instruction; the program's cases stand between two calls of bench_mark.
"""
import subprocess
import sys
import tempfile


def main(program, *emulator):
    with tempfile.TemporaryFile("w+") as names:
        run = subprocess.Popen([*emulator, "-singlestep", "-d", "exec,nochain", "-D", "/dev/stderr", program],
                               stdout=names, stderr=subprocess.PIPE)
        counts, count, begun, marked = [], 0, False, False
        for line in run.stderr:
            count += 1
            was_marked, marked = marked, line.endswith(b" bench_mark\n")
            if marked and not was_marked:
                if begun:
                    counts.append(count)
                begun, count = not begun, 0
        if run.wait() != 0:
            sys.exit("the program failed")
        names.seek(0)
        for name, count in zip(names.read().splitlines(), counts, strict=True):
            kind, direction, _, _, conversions = name.rsplit("/", 4)
            print(f"{kind:27}{direction:6}{count / int(conversions):8.0f}")


main(*sys.argv[1:])
