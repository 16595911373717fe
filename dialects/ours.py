# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
"""What the project itself says of a text, asked from its own tool, and what it prints of bytes from the wire."""

import json
import subprocess
from functools import cache
from pathlib import Path

import evpn
from speaker import NO_SYNTAX, REFUSED, TAKEN, Refuses
from subjects import SUBJECTS


class Tool:
    def __init__(self, build: Path) -> None:
        self.tool = build / "tool" / "bgpdt"
        self.patterns = build / "grammar" / "bgpdt_rfc8294"
        self.ask = cache(self.ask)

    def ask(self, *words: str) -> dict:
        done = subprocess.run([self.tool, "--json", *words], capture_output=True, text=True, check=False)
        if done.returncode not in (0, 1):
            raise Refuses(f"bgpdt: {done.stderr or done.stdout}")
        return json.loads(done.stdout or done.stderr)

    def verdict(self, kind: str, text: str) -> str:
        """Its bytes, where our record holds what is on the wire."""
        answer = self.ask("parse", kind, "--", text)
        if "hex" not in answer:
            return NO_SYNTAX if "status" not in answer else REFUSED
        if kind == "EVNPREFIX":
            return evpn.own_part(self.ask("explain", kind, "--", text)["parts"]).hex()
        return answer["hex"][: 2 * SUBJECTS[kind].wire_size] or TAKEN

    def printed(self, kind: str, on_wire: str) -> str | None:
        """The text of bytes from the wire; none if we have no text for them."""
        make = SUBJECTS[kind].value
        value = make(bytes.fromhex(on_wire)) if make else None
        return (self.ask("print", kind, value.hex()).get("text") or None) if value else None

    def plain(self, kind: str, on_wire: str) -> str | None:
        """The same with numbers where we print the name of a community, and as short as tshark has it."""
        if kind == "COMMUNITY":
            value = next(part["number"] for part in self.ask("explain", kind, f"0x{on_wire}00000001")["parts"])
            return f"{value >> 16}:{value & 0xFFFF}"
        if kind == "EXTCOMMUNITY_BW" and (text := self.printed(kind, on_wire)):
            own, _, number = text.partition(":")
            return f"{own}:{float(number):g}"  # as tshark writes a float
        return self.printed(kind, on_wire)

    def matches(self, pattern: str, texts: list[str]) -> list[bool]:
        """Whether a pattern of RFC 8294 takes each."""
        said = subprocess.run(
            [self.patterns, pattern],
            input="".join(text + "\n" for text in texts),
            capture_output=True,
            text=True,
            check=True,
        )
        return [line.startswith("+") for line in said.stdout.splitlines()]
