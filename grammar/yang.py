#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
"""Has yanglint load the exported module and validate texts by it.

    yang.py TRY_TEXTS COUNT    so many texts for each type: all good ones at once, bad ones one by one"""
import json
import os
import re
import subprocess
import sys
import tempfile
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

TOP = Path(__file__).resolve().parent.parent
MODULE = TOP / "docs/yang/bgpdt-texts.yang"


def leaf(name):
    return re.sub("[ _]", "-", name).lower()


def judged(try_texts, name, count):
    """Good and bad texts that XML, and so YANG, can hold."""
    made = subprocess.run([try_texts, name, str(count)], stdout=subprocess.PIPE, check=True).stdout.decode("latin-1")
    lines = {line for line in made.split("\n") if re.fullmatch("[-+][ -~]*", line)}
    return [line[1:] for line in sorted(lines) if line[0] == "+"], [line[1:] for line in sorted(lines) if line[0] == "-"]


def is_valid(folder, name, texts):
    with tempfile.NamedTemporaryFile("w", suffix=".json", dir=folder) as data:
        json.dump({"try:" + leaf(name): texts}, data)
        data.flush()
        run = subprocess.run(["yanglint", "-QQ", "-p", MODULE.parent, Path(folder) / "try.yang", data.name], check=False,
                             stderr=subprocess.DEVNULL)
        return run.returncode == 0


def main():
    try_texts, count = sys.argv[1], int(sys.argv[2])
    typedefs = re.findall(r"^  typedef (\S+) \{", MODULE.read_text(encoding="utf-8"), re.M)
    names = [name for path in sorted((TOP / "grammar/texts").glob("*.grammar"))
             if leaf(name := path.stem.replace(".", " ", 1)) in typedefs]
    tried = {name: judged(try_texts, name, count) for name in names}
    with tempfile.TemporaryDirectory() as folder, ThreadPoolExecutor(os.cpu_count()) as pool:
        leaves = "".join(f"  leaf-list {leaf(name)} {{ type t:{leaf(name)}; }}\n" for name in names)
        (Path(folder) / "try.yang").write_text(
            "module try {\n  yang-version 1.1;\n  namespace \"urn:try\";\n  prefix try;\n"
            f"  import bgpdt-texts {{ prefix t; }}\n{leaves}}}\n", encoding="utf-8")
        wrong = [f"{name}: a good text is refused" for name, (good, _) in tried.items()
                 if not is_valid(folder, name, good)]
        bad = [(name, text) for name, (_, texts) in tried.items() for text in texts]
        taken = pool.map(lambda one: is_valid(folder, one[0], [one[1]]), bad)
        wrong += [f"{name}: {text} is taken" for (name, text), valid in zip(bad, taken) if valid]
    for line in wrong:
        print(line)
    print(f"proved: yanglint takes {sum(len(good) for good, _ in tried.values())} texts by {len(names)} typedefs, and "
          f"refuses {len(bad)} others")
    sys.exit(bool(wrong) or len(names) != len(typedefs))


main()
