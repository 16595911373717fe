#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
"""Compares what the exported expressions match with the automata they are made of, and with the vectors.

    engines.py BGPDT TRY_TEXTS COUNT [NAME...]    so many texts for each type and kind that takes text

Engines: Python's re, grep -P (PCRE), grep -E on the portable expressions, and node where there is one."""
import os
import re
import shutil
import subprocess
import sys
import tempfile
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

TOP = Path(__file__).resolve().parent.parent
NODE = """
const fs = require('fs');
const expression = new RegExp(fs.readFileSync(process.argv[1], 'latin1').trimEnd());
const lines = fs.readFileSync(process.argv[2], 'latin1').split('\\n');
lines.pop();
process.stdout.write(lines.map((line) => expression.test(line) ? '+' : '-').join(''));
"""


def run(*words, **options):
    return subprocess.run(words, stdout=subprocess.PIPE, check=False, env={**os.environ, "LC_ALL": "C"}, **options)


class Engines:
    """What each engine says of lines of text: a '+' or '-' for each."""

    def __init__(self, tool, name, folder):
        self.ask = lambda language: run(tool, "grammar", *name.split(), "--as", language).stdout
        self.folder = Path(folder)

    def python(self, lines):
        matches = re.compile(self.ask("python").rstrip(b"\n")).match
        return "".join("+" if matches(line) else "-" for line in lines)

    def grep(self, kind, expression, lines):
        (self.folder / "expression").write_bytes(expression)
        found = run("grep", kind, "-a", "-n", "-f", str(self.folder / "expression"), str(self.folder / "lines")).stdout
        numbers = {int(line.split(b":", 1)[0]) for line in found.splitlines()}
        return "".join("+" if i + 1 in numbers else "-" for i in range(len(lines)))

    def pcre(self, lines):
        return self.grep("-P", self.ask("pcre"), lines)

    def portable(self, lines):
        """Rows of conditions; within a row all hold."""
        least, most, rows = 0, None, [[]]
        for line in self.ask("regex").splitlines():
            word, _, rest = line.partition(b" ")
            if word == b"length":
                least, _, most = rest.partition(b"..")
                least, most = int(least), int(most) if most else None if b".." in rest else int(least)
            elif word == b"or":
                rows.append([])
            else:
                rows[-1].append(("+" if word == b"match" else "-", self.grep("-E", rest + b"\n", lines)))
        in_some_row = [any(all(said[i] == wanted for wanted, said in row) for row in rows) for i in range(len(lines))]
        return "".join("+" if good and least <= len(line) and (most is None or len(line) <= most) else "-"
                       for good, line in zip(in_some_row, lines))

    def ecmascript(self, lines):
        (self.folder / "expression").write_bytes(self.ask("ecmascript"))
        return run("node", "-e", NODE, str(self.folder / "expression"), str(self.folder / "lines")).stdout.decode()


def vector_texts(name):
    """Plain texts of the vectors, with what they say of them in mode 2."""
    subject = re.escape(name.split()[-1])
    found = {}
    for path in (TOP / "tests/vectors").glob("*/*.vec"):
        about = None
        for line in path.read_text(encoding="utf-8").splitlines():
            if head := re.match(r"(type|row) (\S+)", line):
                about = head[2]
            text = re.match(r'(in|bad)(?:@([\d,]+))? +"([!#-\[\]-~]*)" ', line)
            if text and about and re.fullmatch(subject, about) and "2" in (text[2] or "2").split(","):
                found[text[3]] = "+" if text[1] == "in" else "-"
    return found


def has_expression(grammar):
    return re.search("^text = ", grammar, re.M) and not re.search("^loose$", grammar, re.M)


def judged_texts(try_texts, name, count):
    """By text what the grammar says of it, those left out of which it says nothing; and where the vectors differ."""
    told = {} if name.startswith("BOLPREFIX NG") else vector_texts(name)  # these rows take each other's texts
    made = run(try_texts, name, str(count)).stdout
    made += run(try_texts, name, "-", input="".join(text + "\n" for text in told).encode()).stdout
    texts = {line[1:]: chr(line[0]) for line in made.splitlines() if line[:1] != b"?"}
    wrong = [f"{name}: the vectors do not say {texts[text.encode()]} of {text}" for text, said in told.items()
             if texts.get(text.encode(), said) != said]
    return texts, wrong


def compare(tool, try_texts, name, count):
    texts, wrong = judged_texts(try_texts, name, count)
    lines, wanted = list(texts), "".join(texts.values())
    with tempfile.TemporaryDirectory() as folder:
        (Path(folder) / "lines").write_bytes(b"".join(line + b"\n" for line in lines))
        engines = Engines(tool, name, folder)
        used = [engines.python, engines.pcre, engines.portable] + [engines.ecmascript] * bool(shutil.which("node"))
        for engine in used:
            said = engine(lines)
            differing = [i for i in range(len(lines)) if said[i:i + 1] != wanted[i]]
            if differing:
                wrong.append(f"{name}: {engine.__name__} differs in {len(differing)} texts, first "
                             f"{lines[differing[0]]!r}, which is {wanted[differing[0]]}")
    return len(lines), wanted.count("+"), len(used), wrong


def main():
    tool, try_texts, count = sys.argv[1], sys.argv[2], int(sys.argv[3])
    names = sys.argv[4:] or [path.stem.replace(".", " ", 1) for path in sorted((TOP / "grammar/texts").glob("*.grammar"))
                             if has_expression(path.read_text(encoding="utf-8"))]
    with ThreadPoolExecutor(os.cpu_count()) as pool:
        results = list(pool.map(lambda name: compare(tool, try_texts, name, count), names))
    for line in (line for result in results for line in result[3]):
        print(line)
    print(f"proved: {len(names)} exported expressions in {results[0][2]} engines on {sum(r[0] for r in results)} texts, "
          f"{sum(r[1] for r in results)} of them good")
    sys.exit(any(result[3] for result in results))


main()
