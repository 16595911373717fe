#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
"""check_tidy.py BUILD: fails where clang-tidy finds anything in the sources that are not tests, as BUILD compiles them.

The static analyzer, most of the time by far, walks through the plug-in and the host alone, and through every fifth of their
files, others by the day; BGPDT_TEST_SHARE=1 sends it through all. What it does not walk through is looked at many files at a
time: as BUILD compiles them, or the others of a folder together. That leaves out misc-unused-using-decls, and
performance-unnecessary-value-param is left out there, which takes a third of the time. What was clean with the same headers
is not looked at again: BUILD keeps a list."""

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
APART = (TOP / "src/route_keys/policy", TOP / "src/vpn_id")  # whose files call different things by one name
MANY = f"{NOT_ANALYZED},-bugprone-suspicious-include,-performance-unnecessary-value-param"
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


def write_together(folder: Path, sources: list[Path]) -> Path:
    """A file that includes all of the sources."""
    path = folder / ("_".join(sources[0].parent.relative_to(TOP).parts) + ".cpp")
    path.write_text("".join(f'#include "{source}"\n' for source in sources))
    return path


def sources_of(build: Path, folder: Path) -> dict[Path, str]:
    """What is looked at, and which checks it gets besides those of .clang-tidy; how it is compiled goes to the folder."""
    commands = {Path(entry["file"]): entry for entry in json.loads((build / "compile_commands.json").read_text())}
    sources: dict[Path, str] = {}
    analyzed = []
    for path in commands:
        if path.is_relative_to(build):
            if path.relative_to(build).parts[0] in ROOMS:
                sources[path] = MANY
        elif path.relative_to(TOP).parts[0] in ANALYZED:
            analyzed.append(path)
    share = int(os.environ.get("BGPDT_TEST_SHARE", "5"))
    today = int(os.environ.get("BGPDT_TEST_SEED", time.time() // SECONDS_OF_A_DAY))
    others: dict[Path, list[Path]] = {}
    for turn, path in enumerate(sorted(analyzed)):
        if turn % share == today % share:
            sources[path] = ""
        elif path.parent in APART:
            sources[path] = NOT_ANALYZED
        else:
            others.setdefault(path.parent, []).append(path)
    for members in others.values():
        together = write_together(folder, members)
        sources[together] = MANY
        entry = commands[members[0]]
        command = entry["command"].replace(str(members[0]), str(together))
        commands[together] = {**entry, "command": command, "file": str(together)}
    (folder / "compile_commands.json").write_text(json.dumps(list(commands.values())))
    return sources


def is_clean(folder: Path, source: Path, checks: str) -> bool:
    command = ["clang-tidy", "-p", str(folder), "--quiet", "--warnings-as-errors=*", f"--checks={checks}", str(source)]
    done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
    if done.returncode != 0:
        print(done.stdout, flush=True)
    return done.returncode == 0


def main() -> int:
    build = Path(sys.argv[1]).resolve()
    headers = sorted(path for room in ("include", *ANALYZED, *ROOMS) for path in (TOP / room).rglob("*.h*"))
    rules = digest([TOP / ".clang-tidy", Path(__file__), *headers])
    folder = build / "tidy"
    folder.mkdir(exist_ok=True)
    sources = sources_of(build, folder)
    keys = {source: digest(parts_of(source), rules, str(source), checks) for source, checks in sources.items()}
    kept = build / "clean.txt"
    clean = set(kept.read_text().split()) if kept.is_file() else set()
    wanted = [source for source, key in keys.items() if key not in clean]
    # The analyzer's longest first.
    wanted.sort(key=lambda source: (sources[source] == "", source.stat().st_size), reverse=True)
    with ThreadPoolExecutor(os.cpu_count()) as workers:
        results = list(workers.map(lambda source: is_clean(folder, source, sources[source]), wanted))
    clean |= {keys[source] for source, result in zip(wanted, results) if result}
    kept.write_text("\n".join(sorted(clean & set(keys.values()))) + "\n")
    files = {part for source in sources for part in parts_of(source)}
    analyzed = list(sources.values()).count("")
    print(f"proved: {len(files)} sources are clean, {analyzed} of them under the analyzer")
    return 0 if all(results) else 1


if __name__ == "__main__":
    sys.exit(main())
