#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
"""The figures in the documents are of these sources.

    figures.py                   fails where packaging/figures.txt has another digest than the sources
    figures.py --measured FILE   writes there that the figures of the file are measured just now
"""
import hashlib
import subprocess
import sys
from pathlib import Path

TOP = Path(__file__).resolve().parent.parent
TABLE = TOP / "packaging/figures.txt"
COMMENTS = {".cpp": "//", ".hpp": "//", ".h": "//", ".js": "//", ".mjs": "//", ".py": "#", ".grammar": "#"}


def digest(folders):
    """Of the lines that are no comments, in the files that git knows."""
    listed = subprocess.run(["git", "ls-files", "-z", *folders], cwd=TOP, capture_output=True, text=True, check=True)
    total = hashlib.sha256()
    for name in sorted(filter(None, listed.stdout.split("\0"))):
        path = TOP / name
        if comment := COMMENTS.get(path.suffix):
            lines = [line for line in map(str.strip, path.read_text().splitlines())
                     if line and not line.startswith(comment) and "SPDX-" not in line]
            total.update("\n".join([name, *lines]).encode())
    return total.hexdigest()[:16]


def rows():
    for line in TABLE.read_text().splitlines():
        if not line.startswith("#"):
            yield [cell.strip() for cell in line.split("|")]


def check():
    """The number of files whose figures are of other sources."""
    stale = [(file, command) for file, command, folders, told in rows() if told != digest(folders.split())]
    for file, command in stale:
        print(f"{file} has figures of other sources: measure by {command}, then packaging/figures.py --measured {file}")
    return len(stale)


def measured(wanted):
    if wanted not in [file for file, *_ in rows()]:
        sys.exit(f"{TABLE.name} does not have {wanted}")
    head = [line for line in TABLE.read_text().splitlines() if line.startswith("#")]
    made = [" | ".join([file, command, folders, digest(folders.split()) if file == wanted else told])
            for file, command, folders, told in rows()]
    TABLE.write_text("\n".join(head + made) + "\n")


def main():
    if sys.argv[1:2] == ["--measured"] and len(sys.argv) == 3:
        measured(sys.argv[2])
    elif len(sys.argv) == 1:
        sys.exit(1 if check() else 0)
    else:
        sys.exit(__doc__)


main()
