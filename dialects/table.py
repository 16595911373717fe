# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
"""The table: its file, and what a row tells: who takes a text, as which value, and by which change."""

import json
import re
import struct
from dataclasses import dataclass
from itertools import chain
from pathlib import Path

import evpn

ROUTE_WITHOUT_TAG = 4  # of an Ethernet segment
FILE = Path(__file__).with_name("table.json")
TEXTS = Path(__file__).with_name("texts.txt")
OWN = "bgpdt"
ABSENT = ("no syntax", "missing")  # nothing was asked
ALIKE, CLAMPS, WRAPS, OTHER, FAILS, PARTLY = "alike", "clamps", "wraps", "reads otherwise", "fails", "refused by some"


def is_value(cell: str) -> bool:
    return re.fullmatch("([0-9a-f]{2})+", cell) is not None


def bandwidth(value: bytes) -> float:
    return struct.unpack(">f", value[4:])[0]


def numbers_of(kind: str, value: bytes) -> list[tuple[int, ...]]:
    """Each way in which the value's numbers may be written."""

    def number(first: int, last: int) -> int:
        return int.from_bytes(value[first:last], "big")

    if kind in ("VRFRD", "VRFRT", "SOO", "EXTCOMMUNITY"):
        code = value[1] if kind == "VRFRD" else value[0]
        if code == 0:
            return [(number(2, 4), number(4, 8))]
        if code == 1:
            return [(*value[2:6], number(6, 8))]
        return [(number(2, 6), number(6, 8)), (number(2, 4), number(4, 6), number(6, 8))]
    if kind == "COMMUNITY":
        return [(number(0, 4),), (number(0, 2), number(2, 4))]
    if kind == "LARGECOMMUNITY":
        return [(number(0, 4), number(4, 8), number(8, 12))]
    if kind == "ASNUM":
        return [(number(0, 4),), (number(0, 2), number(2, 4))]
    if kind == "EXTCOMMUNITY_BW":
        return [(number(2, 4), int(bandwidth(value)))]
    if kind == "EVNPREFIX" and value[0] != ROUTE_WITHOUT_TAG:
        tag = 11 if value[0] == 1 else 1  # behind the segment identifier, else behind the type
        return [(number(tag, tag + 4),)]
    return []


def meaning(kind: str, cell: str) -> str:
    """The value in numbers; empty where they say no more than the bytes."""
    value = bytes.fromhex(cell)
    if kind == "EXTCOMMUNITY_BW":
        return f"{int.from_bytes(value[2:4], 'big')}:{bandwidth(value):.0f}, type 0x{cell[:2]}"
    if kind == "EVNPREFIX":
        return ""
    if kind == "COMMUNITY":
        return ":".join(map(str, numbers_of(kind, value)[-1]))
    first = next(iter(numbers_of(kind, value)), ())
    if len(first) == 5:
        return ".".join(map(str, first[:4])) + f":{first[4]}"
    return ":".join(map(str, first))


def change_of_number(written: int, read: int) -> str:
    if read == written:
        return ""
    if read in (0xFFFF, 0xFFFFFFFF) and written > read:
        return CLAMPS
    if any(read == written & mask for mask in (0xFFFF, 0xFFFFFFFF)):
        return WRAPS
    return OTHER


def written_numbers(kind: str, text: str) -> list[int] | None:
    """None where the text is a name."""
    if kind == "EVNPREFIX":
        parts = evpn.parts_of(text)
        return [int(parts.tag)] if parts and parts.tag else None
    if not re.fullmatch(r"([-+.:]|0x[0-9a-f]+|\d)+", text):
        return None
    return [int(digits, 16 if digits.startswith("0x") else 10) for digits in re.findall(r"0x[0-9a-f]+|-?\d+", text)]


def without_type(kind: str, text: str, value: bytes, written: list[int]) -> list[int]:
    """Some let the type code of a route distinguisher stand in front."""
    return written[1:] if kind == "VRFRD" and re.match("[012]:.*:", text) and written[0] == value[1] else written


def change_of(kind: str, text: str, cell: str) -> str:
    """How the value differs from what the text's numbers say; empty if it does not."""
    value = bytes.fromhex(cell)
    written = written_numbers(kind, text)
    if written is None:
        return ""
    written = without_type(kind, text, value, written)
    readings = [
        {change_of_number(*pair) for pair in zip(written, read)} - {""}
        for read in numbers_of(kind, value)
        if len(read) == len(written)
    ]
    if not readings:
        return OTHER
    found = min(readings, key=len)
    return next((change for change in (OTHER, CLAMPS, WRAPS) if change in found), "")


@dataclass(frozen=True)
class Row:
    type: str
    text: str
    own: str
    cells: dict[str, str]  # of the speakers
    standard: str  # what the pattern of RFC 8294 says; empty if it has none for the type

    def asked(self) -> dict[str, str]:
        return {name: cell for name, cell in self.cells.items() if cell not in ABSENT}

    def values(self) -> set[str]:
        return {cell for cell in (self.own, *self.asked().values()) if is_value(cell)}

    def changes(self) -> set[str]:
        return {change_of(self.type, self.text, cell) for cell in self.asked().values() if is_value(cell)} - {""}

    def kind(self) -> str:
        """The group it stands in: the most dangerous that fits."""
        outcomes = set(self.asked().values())
        if not outcomes:
            return PARTLY
        if len(self.values()) > 1 or self.changes():
            found = self.changes()
            return next((change for change in (CLAMPS, WRAPS) if change in found), OTHER)
        if outcomes & {"ends", "no answer"}:
            return FAILS
        return ALIKE if len(outcomes | {self.own}) == 1 else PARTLY

    def own_is_odd(self) -> bool:
        """Nobody who was asked answers as we do; not taking a text is one answer, however it is said."""

        def outcome(cell: str) -> str:
            return cell if is_value(cell) else ""

        return bool(self.asked()) and outcome(self.own) not in {outcome(cell) for cell in self.asked().values()}


def read_texts() -> list[tuple[str, str]]:
    found = []
    kind = ""
    for line in TEXTS.read_text().splitlines():
        if line.startswith(" "):
            found.append((kind, line.strip()))
        elif line and not line.startswith("#"):
            kind = line
    return found


class Table:
    def __init__(self, data: dict) -> None:
        self.data = data
        self.speakers: dict[str, str] = data["speakers"]

    def types(self) -> list[str]:
        return list(self.data["types"])

    def about(self, kind: str) -> str:
        return self.data["types"][kind]["about"]

    def written(self, kind: str) -> dict[str, str]:
        """How each speaker is told a text of the type; empty where it has no words for it."""
        return self.data["types"][kind]["written"]

    def rows(self) -> list[Row]:
        return list(chain.from_iterable(self.rows_of(kind) for kind in self.types()))

    def rows_of(self, kind: str) -> list[Row]:
        return [
            Row(kind, text, own, dict(zip(self.speakers, cells)), standard)
            for text, own, *cells, standard in self.data["types"][kind]["rows"]
        ]


def load() -> Table:
    return Table(json.loads(FILE.read_text()))


def written(data: dict) -> str:
    """JSON with a line for each row, so that a difference is a line."""
    placeholders: dict[str, str] = {}

    def keep(rows: list[list[str]]) -> str:
        name = f"@{len(placeholders)}@"
        placeholders[f'"{name}"'] = "[\n" + ",\n".join("        " + json.dumps(row) for row in rows) + "\n      ]"
        return name

    types = {kind: {**each, "rows": keep(each["rows"])} for kind, each in data["types"].items()}
    text = json.dumps({**data, "types": types}, indent=2)
    for name, rows in placeholders.items():
        text = text.replace(name, rows)
    return text + "\n"
