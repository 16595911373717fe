#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
"""Types words and tabs into an interactive shell, and looks at what stands on its terminal then.

completion_test.py SHELL BGPDT COMPLETIONS: a shell's program (bash or zsh), the tool, the folder of the completions.
"""
import os
import pty
import re
import select
import sys
import tempfile
import time

# What is typed, and what must be there before the line is ended. A tab lists what there is when pressed twice.
cases = [
    ("bgpdt expl\t", "bgpdt explain "),
    ("bgpdt describe BOLRD \t", "bgpdt describe BOLRD RT "),
    ("bgpdt convert VRFRD --as-format \t\t", "plain", "dotted", "as-written"),
    ("bgpdt describe largec\t", "bgpdt describe LARGECOMMUNITY "),
    ("bgpdt describe BOLPREFIX srp\t", "bgpdt describe BOLPREFIX SRPOLICY "),
    ("bgpdt describe BOLPREFIX NG_TYPE_4\t\t", "NG_TYPE_4_2", "NG_TYPE_4-3", "NG_TYPE_4-1"),
    ("bgpdt sort --uni\t", "bgpdt sort --unique "),
    ("bgpdt convert VRFRD --to js\t", "bgpdt convert VRFRD --to json "),
    ("bgpdt explain --color=al\t", "bgpdt explain --color=always "),
    ("bgpdt convert VRFRD file\\ of\t", "bgpdt convert VRFRD file\\ of\\ lines.txt "),
    ("bgpdt lua scr\t", "bgpdt lua script.lua "),
    ("bgpdt sort VRFRD --names=scr\t", "bgpdt sort VRFRD --names=script.lua "),
]


class Terminal:
    def __init__(self, words, folder):
        self.text = ""
        pid, self.fd = pty.fork()
        if pid == 0:
            os.chdir(folder)
            os.environ.update(TERM="dumb", PS1="prompt> ", HISTFILE="", ZDOTDIR=folder, COLUMNS="200")
            os.execv(words[0], words)

    def type(self, text):
        os.write(self.fd, text.encode())

    def wait_for(self, *parts, seconds=10):
        """Everything that came, once the parts are in it."""
        end = time.monotonic() + seconds
        while not all(part in self.plain() for part in parts):
            ready, _, _ = select.select([self.fd], [], [], max(0, end - time.monotonic()))
            if not ready:
                return None
            self.text += os.read(self.fd, 65536).decode(errors="replace")
        return self.plain()

    def plain(self):
        """Without escape sequences and bells, with what backspaces took away taken away."""
        text = re.sub(r"\x1b\[[0-9;?]*[a-zA-Z]|\x1b[=>]|\x07|\r", "", self.text)
        while "\b" in text:
            text = re.sub(r"[^\x08]\x08|^\x08", "", text, count=1)
        return text


def started(shell, completions, folder):
    name = os.path.basename(shell)
    options = ["--norc", "--noprofile", "-i"] if name == "bash" else ["-f", "-i"]
    terminal = Terminal([shell, *options], folder)
    load = {"bash": f"source '{completions}/bgpdt.bash'; bind 'set page-completions off'",
            "zsh": f"fpath=('{completions}' $fpath); autoload -U compinit; compinit -u -D; unsetopt zle_bracketed_paste"}
    terminal.type(f"{load[name]}; PS1='prompt> '; PROMPT=$PS1; echo star''ted\n")
    if terminal.wait_for("started\n") is None:
        sys.exit("the shell does not start: " + terminal.plain())
    return terminal


def main():
    shell, tool, completions = sys.argv[1:]
    os.environ["PATH"] = os.path.dirname(tool) + ":" + os.environ["PATH"]
    failed = []
    with tempfile.TemporaryDirectory() as folder:
        for name in ("file of lines.txt", "script.lua"):
            open(os.path.join(folder, name), "w", encoding="ascii").close()
        terminal = started(shell, completions, folder)
        for typed, *wanted in cases:
            terminal.text = ""
            terminal.type(typed)
            if terminal.wait_for(*wanted) is None:
                failed.append(f"{typed!r} must become {wanted}, and the terminal shows\n{terminal.plain()}")
            terminal.type("\x15")  # kills the line
            terminal.text = ""
            terminal.type("echo en''ded\n")
            terminal.wait_for("ended\n")
        terminal.type("exit\n")
    if failed:
        sys.exit("\n".join(failed))
    print(f"{len(cases)} completions by {shell}")


main()
