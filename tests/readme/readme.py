#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
"""readme.py BGPDT PLUGIN EXAMPLES PAGE...: what the README and other pages show is what happens.

Every block of console lines is run, block behind block in one folder for each page: a line behind "$ " is a command, the lines behind
it are what it answers, standard error included. The C and C++ that they
show stands word by word in a source of the folder EXAMPLES, which other tests build and run.
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


def wrong_commands(page, bgpdt, plugin):
    """How many commands there are, and how many of them answer something else."""
    failures = 0
    commands = list(transcripts(page.read_text()))
    with tempfile.TemporaryDirectory() as folder:
        pathlib.Path(folder, "bgpdt").symlink_to(bgpdt)
        environment = os.environ | {"BGPDT_PLUGIN": str(plugin), "PATH": f"{folder}:{os.environ['PATH']}"}
        for command, answer in commands:
            done = subprocess.run(["sh", "-c", command], cwd=folder, env=environment, text=True, check=False,
                                  stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
            if done.stdout != answer:
                failures += 1
                print(f"$ {command}\n{done.stdout}--- {page.name} says:\n{answer}")
    return len(commands), failures


def main():
    bgpdt, plugin, examples, *pages = (pathlib.Path(name).resolve() for name in sys.argv[1:])
    sources = [path.read_text() for path in examples.iterdir() if path.suffix in (".c", ".cpp")]
    commands, failures, snippets = 0, 0, []
    for page in pages:
        run, failed = wrong_commands(page, bgpdt, plugin)
        commands, failures = commands + run, failures + failed
        snippets += re.findall(r"^```c(?:pp)?\n(.*?)^```$", page.read_text(), re.MULTILINE | re.DOTALL)
    for snippet in snippets:
        if not any(source.endswith(snippet) for source in sources):
            failures += 1
            print(f"no whole example:\n{snippet}")
    if not commands or not snippets:
        sys.exit("the pages show no commands or no programs")
    sys.exit(1 if failures else 0)


main()
