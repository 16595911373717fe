# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
"""Started by ExaBGP, with its standard input and output: tells it the lines of FOLDER/lines.json one by one, and writes
the answers to FOLDER/answers.json; one that does not come is empty. They are fewer where one of the lines ends ExaBGP."""

import contextlib
import json
import sys
import time
from pathlib import Path

# It answers in order, but for a line that makes its reader fail: that has no answer. Behind each line stand one that it
# takes and one that it refuses; so what comes tells which happened.
TAKEN = "announce route 192.0.2.0/24 next-hop 192.0.2.1"
REFUSED = "announce route 192.0.2.0/24 next-hop 192.0.2.1 rd 1:2:3 label 16"


class Ends(Exception):
    """ExaBGP says neither."""


def told() -> str:
    line = sys.stdin.readline().strip()
    if line not in ("done", "error"):
        raise Ends
    return line


def answer_to(line: str) -> str:
    sys.stdout.write(f"{line}\n{TAKEN}\n{REFUSED}\n")
    sys.stdout.flush()
    first, second = told(), told()
    if (first, second) == ("done", "error"):
        return ""
    told()
    return first


def main() -> None:
    folder = Path(sys.argv[1])
    time.sleep(1)  # until the session is there
    answers = []
    with contextlib.suppress(Ends):
        for line in json.loads((folder / "lines.json").read_text()):
            answers.append(answer_to(line))
    unfinished = folder / "answers.unfinished"
    unfinished.write_text(json.dumps(answers))
    unfinished.rename(folder / "answers.json")
    time.sleep(600)


main()
