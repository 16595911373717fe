#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""readme.py README BGPDT PLUGIN SOURCE: what the README shows is what happens.

Every block of console lines is run, block behind block in one folder: a line behind "$ " is a command, the lines behind
it are what it answers, standard error included. The C++ that it shows stands word by word in SOURCE, which is compiled.
"""
import os
import pathlib
import re
import subprocess
import sys
import tempfile


def transcripts(text):
    for block in re.findall(r"^```console\n(.*?)^```$", text, re.MULTILINE | re.DOTALL):
        for part in re.split(r"^\$ ", block, flags=re.MULTILINE)[1:]:
            command, _, answer = part.partition("\n")
            yield command, answer


def main():
    readme, bgpdt, plugin, source = (pathlib.Path(name).resolve() for name in sys.argv[1:])
    text = readme.read_text()
    failures = 0
    commands = list(transcripts(text))
    snippets = re.findall(r"^```cpp\n(.*?)^```$", text, re.MULTILINE | re.DOTALL)
    with tempfile.TemporaryDirectory() as folder:
        pathlib.Path(folder, "bgpdt").symlink_to(bgpdt)
        environment = os.environ | {"BGPDT_PLUGIN": str(plugin), "PATH": f"{folder}:{os.environ['PATH']}"}
        for command, answer in commands:
            done = subprocess.run(["sh", "-c", command], cwd=folder, env=environment, text=True, check=False,
                                  stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
            if done.stdout != answer:
                failures += 1
                print(f"$ {command}\n{done.stdout}--- the README says:\n{answer}")
    for snippet in snippets:
        if snippet not in source.read_text():
            failures += 1
            print(f"not in {source.name}:\n{snippet}")
    if not commands or not snippets:
        sys.exit(f"{readme} shows no commands or no C++")
    sys.exit(1 if failures else 0)


main()
