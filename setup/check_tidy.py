#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
"""check_tidy.py BUILD: fails where clang-tidy finds anything in the sources that are not tests, as BUILD compiles them.

The static analyzer, most of the time by far, walks through the plug-in and the host alone, and through every fifth of their
files, others by the day; BGPDT_TEST_SHARE=1 sends it through all. Rooms that BUILD compiles in
few large files are looked at in these; that leaves out misc-unused-using-decls, and performance-unnecessary-value-param
is left out there, which takes a third of the time. What was clean with the same headers is not looked at again: BUILD
keeps a list."""

import hashlib
import json
import os
import re
import subprocess
import sys
import time
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

TOP = Path(__file__).resolve().parent.parent
ANALYZED = ("src", "host")
NOT_ANALYZED = "-clang-analyzer-*"
SECONDS_OF_A_DAY = 24 * 60 * 60
ROOMS = ("toolkit", "library", "wire", "grammar", "tool", "lua", "sqlite", "python", "web")


def parts_of(source: Path) -> list[Path]:
    """The files that a large one includes; of any other itself."""
    included = re.findall(r'^#include "(.*\.cpp)"', source.read_text(), re.MULTILINE)
    return [Path(name) for name in included] or [source]


def digest(paths: list[Path], *further: str) -> str:
    total = hashlib.sha256("\n".join(further).encode())
    for path in paths:
        total.update(path.read_bytes() + b"\0")
    return total.hexdigest()


def sources_of(build: Path) -> dict[Path, str]:
    """What is compiled, and which checks it gets besides those of .clang-tidy."""
    sources: dict[Path, str] = {}
    analyzed = []
    for entry in json.loads((build / "compile_commands.json").read_text()):
        path = Path(entry["file"])
        if path.is_relative_to(build):
            if path.relative_to(build).parts[0] in ROOMS:
                sources[path] = f"{NOT_ANALYZED},-bugprone-suspicious-include,-performance-unnecessary-value-param"
        elif path.relative_to(TOP).parts[0] in ANALYZED:
            analyzed.append(path)
    share = int(os.environ.get("BGPDT_TEST_SHARE", "5"))
    today = int(os.environ.get("BGPDT_TEST_SEED", time.time() // SECONDS_OF_A_DAY))
    for turn, path in enumerate(sorted(analyzed)):
        sources[path] = "" if turn % share == today % share else NOT_ANALYZED
    return sources


def is_clean(build: Path, source: Path, checks: str) -> bool:
    command = ["clang-tidy", "-p", str(build), "--quiet", "--warnings-as-errors=*", f"--checks={checks}", str(source)]
    done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
    if done.returncode != 0:
        print(done.stdout, flush=True)
    return done.returncode == 0


def main() -> int:
    build = Path(sys.argv[1]).resolve()
    headers = sorted(path for room in ("include", *ANALYZED, *ROOMS) for path in (TOP / room).rglob("*.h*"))
    rules = digest([TOP / ".clang-tidy", Path(__file__), *headers])
    sources = sources_of(build)
    keys = {source: digest(parts_of(source), rules, str(source), checks) for source, checks in sources.items()}
    kept = build / "clean.txt"
    clean = set(kept.read_text().split()) if kept.is_file() else set()
    wanted = [source for source, key in keys.items() if key not in clean]
    # The analyzer's longest first.
    wanted.sort(key=lambda source: (sources[source] == "", source.stat().st_size), reverse=True)
    with ThreadPoolExecutor(os.cpu_count()) as workers:
        results = list(workers.map(lambda source: is_clean(build, source, sources[source]), wanted))
    clean |= {keys[source] for source, result in zip(wanted, results) if result}
    kept.write_text("\n".join(sorted(clean & set(keys.values()))) + "\n")
    files = {part for source in sources for part in parts_of(source)}
    analyzed = list(sources.values()).count("")
    print(f"proved: {len(files)} sources are clean, {analyzed} of them under the analyzer")
    return 0 if all(results) else 1


if __name__ == "__main__":
    sys.exit(main())
