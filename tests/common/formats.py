#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
"""formats.py SOURCE...: prints the formats that the sources scan by and print by, each once, as rows of formats_test.cpp."""
import pathlib
import re
import sys

kinds = {"scan": "SCAN", "print": "PRINT", "write": "PRINT"}
literal = r'"(?:\\.|[^"\\])*"'
found = set()
for path in map(pathlib.Path, sys.argv[1:]):
    lines = path.read_text(encoding="utf-8").splitlines()
    code = "\n".join(line for line in lines if not line.lstrip().startswith("//"))
    for name, texts in re.findall(rf"\b({'|'.join(kinds)})<\s*({literal}(?:\s+{literal})*)", code):
        found.add((kinds[name], "".join(text[1:-1] for text in re.findall(literal, texts))))
for kind in sorted(set(kinds.values())):
    print(f"constexpr Row {kind.lower()}s[] = {{")
    for of_kind, text in sorted(found):
        if of_kind == kind:
            print(f'    {kind}("{text}"),')
    print("};")
