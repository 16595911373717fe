# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
"""memory_job.py SHIM: every call with each of its requests for memory refused, alone and with all that follow: it raises
MemoryError or answers as ever, and goes on."""
import ctypes
import os
import sys

import bgpdt

shim = ctypes.CDLL(sys.argv[1])
refuse = shim.refuse
refuse.argtypes = [ctypes.c_long, ctypes.c_int]
refuse.restype = None
relent = os.getppid

RD = bgpdt.VRFRD("64496:1")
TABLE = RD.to_dict()
TEXTS = ["64496:1", "64496:x", None, "192.0.2.1:7"]
COLUMN = bgpdt.parse_many("VRFRD", TEXTS)


def refusal():
    try:
        bgpdt.VRFRD("64496:x")
    except bgpdt.Refusal as refused:
        return str(refused)


CALLS = {
    "parse": lambda: bgpdt.parse("VRFRD", "64496:1"),
    "parse in a mode": lambda: bgpdt.parse("VRFRD", "64496:1", mode=6),
    "class": lambda: bgpdt.VRFRD("192.0.2.1:7"),
    "other case": lambda: bgpdt.parse("vrfrd", "64496:1"),
    "surrogate": lambda: bgpdt.why("VRFRD", "\ud80064496:1") is None,
    "refusal": refusal,
    "bytes": lambda: bgpdt.VRFRD.from_bytes(bytes(RD)),
    "hex": lambda: bgpdt.VRFRD.from_hex(RD.hex()),
    "fields": lambda: RD.fields(),
    "attribute": lambda: RD.administrator,
    "repr": lambda: repr(RD),
    "text": lambda: RD.text(mode=1),
    "hash": lambda: hash(RD) == hash(bgpdt.VRFRD("64496:1")),
    "compare": lambda: RD.compare(RD),
    "swapped": lambda: RD.swapped().swapped(),
    "parse_many": lambda: list(bgpdt.parse_many("VRFRD", TEXTS)),
    "refused row": lambda: str(COLUMN.refusal(1)),
    "reasons": lambda: list(COLUMN.reasons()),
    "print_many": lambda: list(bgpdt.print_many("VRFRD", COLUMN)),
    "dialects": lambda: bgpdt.dialects("VRFRD", "65551:9"),
    "explain_many": lambda: list(bgpdt.explain_many("VRFRD", COLUMN)),
    "array interface": lambda: COLUMN.__array_interface__["shape"],
    "arrow": lambda: list(bgpdt.print_many("VRFRD", COLUMN)),
}


# Where memory is out, the process is ended by json.dumps() of Python 3.12, by json.loads() of 3.13.
if sys.version_info < (3, 12):
    CALLS["from table"] = lambda: bgpdt.VRFRD.from_dict(TABLE)
if sys.version_info < (3, 13):
    CALLS["to table"] = lambda: RD.to_dict() == TABLE
    CALLS["explain"] = RD.explain
    CALLS["describe"] = lambda: bgpdt.describe("BOLPREFIX")


def is_of_memory(error):
    """Python's own json makes another error of it in some versions."""
    return error is not None and (isinstance(error, MemoryError) or is_of_memory(error.__cause__ or error.__context__))


def tried(call, number, alone):
    """What became of it, and whether anything was refused."""
    refuse(number, alone)
    try:
        answer = call()
    except Exception as error:
        refused = relent()
        if not is_of_memory(error):
            raise
        return MemoryError, refused
    refused = relent()
    return answer, refused


def main():
    met = 0
    for name, call in CALLS.items():
        right = call()
        for alone in (1, 0):
            number, quiet = 1, 0
            while quiet < 3:
                try:
                    answer, refused = tried(call, number, alone)
                except MemoryError:
                    answer, refused = MemoryError, relent() or 1
                if answer is not MemoryError and answer != right:
                    sys.exit(f"{name}, request {number}, alone {alone}: {answer!r}")
                met += refused != 0
                quiet = 0 if refused else quiet + 1
                number += 1
            if call() != right:
                sys.exit(f"{name} answers {call()!r} afterwards")
    print(met)


main()
