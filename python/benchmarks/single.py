#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
"""What one text costs in Python: bgpdt beside a regular expression that does not look at numbers, a strict one that packs
the bytes, ipaddress, and a BGP speaker's class (pip install exabgp; left out if it is not there). All are measured in turn,
again and again, in one run; the least of each counts."""
import ipaddress
import re
import struct
import sys
import timeit

import bgpdt

ROUNDS, CALLS = 15, 20_000
TEXT = "64496:100"
VALUE = bgpdt.VRFRD(TEXT)
LOOSE = re.compile(r"(\d+):(\d+)")
STRICT = re.compile(r"(?:(\d{1,10})|(\d{1,5})\.(\d{1,5})|(\d{1,3})\.(\d{1,3})\.(\d{1,3})\.(\d{1,3})):(\d{1,10})", re.ASCII)


def strict(text):
    """A route distinguisher by a regular expression: the limits are looked at, the bytes packed."""
    found = STRICT.fullmatch(text)
    if found is None:
        raise ValueError(text)
    plain, high, low, *octets, number = found.groups()
    number = int(number)
    if plain is not None:
        administrator = int(plain)
        if administrator <= 0xFFFF and number <= 0xFFFFFFFF and (administrator or number):
            return struct.pack(">HHI", 0, administrator, number)
        if administrator > 0xFFFFFFFF or number > 0xFFFF or administrator <= 0xFFFF:
            raise ValueError(text)
        return struct.pack(">HIH", 2, administrator, number)
    if number > 0xFFFF:
        raise ValueError(text)
    if high is not None:
        if int(high) > 0xFFFF or int(low) > 0xFFFF:
            raise ValueError(text)
        return struct.pack(">HHHH", 2, int(high), int(low), number)
    return struct.pack(">H4BH", 1, *map(int, octets), number)


def refused(call, text):
    try:
        call(text)
    except ValueError:
        return True
    return False


def measured():
    rows = {
        "bgpdt.parse('VRFRD', text)": lambda: bgpdt.parse("VRFRD", TEXT),
        "bgpdt.parse(bgpdt.VRFRD, text)": lambda: bgpdt.parse(bgpdt.VRFRD, TEXT),
        "bgpdt.VRFRD(text)": lambda: bgpdt.VRFRD(TEXT),
        "re.match, two numbers": lambda: LOOSE.match(TEXT),
        "a strict expression, packed": lambda: strict(TEXT),
        "ipaddress.ip_address": lambda: ipaddress.ip_address("192.0.2.1"),
        "str(value)": lambda: str(VALUE),
        "value.fields()": lambda: VALUE.fields(),
        "bgpdt.VRFRD, refused": lambda: refused(bgpdt.VRFRD, "64496:x"),
        "strict, refused": lambda: refused(strict, "64496:x"),
    }
    try:
        from exabgp.bgp.message.update.nlri.qualifier.rd import RouteDistinguisher
    except ImportError:
        return rows

    def speaker(text):
        administrator, _, number = text.partition(":")
        return RouteDistinguisher.fromElements(administrator, int(number))

    assert speaker(TEXT).pack() == bytes(VALUE)[:8]
    rows["a speaker's class, split by hand"] = lambda: speaker(TEXT)
    return rows


def main():
    rows = measured()
    assert bytes(VALUE)[:8] == strict(TEXT)
    least = dict.fromkeys(rows, float("inf"))
    for _ in range(ROUNDS):
        for name, call in rows.items():
            least[name] = min(least[name], timeit.timeit(call, number=CALLS) / CALLS)
    empty = min(timeit.repeat(lambda: None, number=CALLS, repeat=ROUNDS)) / CALLS
    print(f"Python {sys.version.split()[0]}, nanoseconds; the lambda's own {empty * 1e9:.0f} are taken off")
    for name, seconds in least.items():
        print(f"{(seconds - empty) * 1e9:8.0f}  {name}")


main()
