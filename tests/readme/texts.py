#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
"""texts.py PAGE BGPDT: the types make of the texts in the page's tables what stands there.

A table's first column holds texts, a column below a type's name what the type prints for them, or "refused".
"""
import pathlib
import re
import subprocess
import sys


def cells(line):
    return [cell[1:-1] for cell in line.strip()[1:-1].split("|")]


def tables(page):
    for block in re.findall(r"(?:^\|.*\n)+", page, re.MULTILINE):
        head, _, *rows = block.splitlines()
        yield [name.strip("`") for name in cells(head)], [cells(row) for row in rows]


def main():
    page, bgpdt = pathlib.Path(sys.argv[1]).read_text(encoding="utf-8"), sys.argv[2]
    asked, failed = 0, 0
    for head, rows in tables(page):
        for text, *verdicts in rows:
            for name, verdict in zip(head[1:], verdicts):
                if not re.fullmatch("[A-Z0-9_]+", name):
                    continue
                run = subprocess.run([bgpdt, "canon", name, "--", text.strip("`")], capture_output=True, text=True,
                                     check=False)
                printed = "`" + run.stdout.removesuffix("\n") + "`" if run.returncode == 0 else "refused"
                asked += 1
                if printed != verdict:
                    failed += 1
                    print(f"{name} {text}: {printed}, the page says {verdict}")
    print(f"{asked} verdicts")
    sys.exit(1 if failed or asked < 150 else 0)


main()
