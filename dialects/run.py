# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
"""run.py BUILD [--renew]: has all speakers announce the texts, decodes what they announce by our tool and by tshark,
announces again what we print of it, and compares all of that with table.json, or writes it anew."""

import argparse
import sys
import tempfile
import time
from pathlib import Path

import capture
import gather
import independent
import page
import standard
import table
from gather import Heard
from ours import Tool
from speaker import Ask
from subjects import SUBJECTS


def decode(tool: Tool, asks: list[Ask], heard: list[Heard]) -> tuple[int, list[str]]:
    """How many values we and tshark read alike, and those that we do not."""
    by_index = {ask.index: ask for ask in asks}
    announced = {}  # each value once, whoever sends it
    for each in heard:
        for index, route in each.routes.items():
            announced.setdefault((by_index[index].type, each.cells[index]), route)
    with tempfile.TemporaryDirectory(prefix="interop-") as folder:
        read = capture.decoded(Path(folder), list(announced.values()))
    alike, differences = 0, []
    for (kind, cell), fields in zip(announced, read):
        ours = tool.plain(kind, cell)
        theirs = independent.READERS[kind](fields)
        if ours == theirs:
            alike += 1
        elif ours is not None:
            differences.append(f"{kind} {cell}: {ours} here, {theirs} by tshark")
    return alike, differences


def announce_again(tool: Tool, whole: table.Table) -> tuple[int, list[list[str]]]:
    """Has every speaker announce what we print of its bytes: how many give the same bytes, and those that do not. What the
    table has as not taken is not asked."""
    known = {(row.type, row.text): row.cells for row in whole.rows()}
    asks: dict[str, list[Ask]] = {name: [] for name in whole.speakers}
    wanted: dict[tuple[str, int], str] = {}
    for name in whole.speakers:
        values = dict.fromkeys((row.type, row.cells[name]) for row in whole.rows() if table.is_value(row.cells[name]))
        for kind, value in values:
            text = tool.printed(kind, value)
            if text is None or not table.is_value(known.get((kind, text), {}).get(name, value)):
                continue
            asks[name].append(Ask(len(asks[name]) + 1, kind, text))
            wanted[name, asks[name][-1].index] = value
    same, others = 0, []
    for each in gather.hear_all(asks):
        for ask in asks[each.name]:
            value, got = wanted[each.name, ask.index], each.cells[ask.index]
            if got == value:
                same += 1
            else:
                others.append([each.name, ask.type, ask.text, value, got])
    return same, sorted(others)


def gathered(tool: Tool) -> dict:
    asks = [Ask(index, kind, text) for index, (kind, text) in enumerate(table.read_texts(), 1)]
    names = [speaker.NAME for speaker in gather.SPEAKERS]
    heard = gather.hear_all({name: asks for name in names})
    alike, differences = decode(tool, asks, heard)
    types = {}
    for kind in dict.fromkeys(ask.type for ask in asks):
        of_kind = [ask for ask in asks if ask.type == kind]
        patterns = standard.cells(tool, kind, [ask.text for ask in of_kind])
        types[kind] = {
            "about": SUBJECTS[kind].about,
            "written": {speaker.NAME: speaker.WRITTEN.get(kind, "") for speaker in gather.SPEAKERS},
            "rows": [
                [ask.text, tool.verdict(kind, ask.text), *(each.cells[ask.index] for each in heard), said]
                for ask, said in zip(of_kind, patterns)
            ],
        }
    data = {
        "speakers": {each.name: each.version for each in heard},
        "decoder": capture.version(),
        "types": types,
    }
    again, others = announce_again(tool, table.Table(data))
    data["decoded_alike"] = alike
    data["decoded_otherwise"] = differences
    data["announced_again"] = again
    data["announced_otherwise"] = others
    return data


def changed_cells(old: table.Table, new: table.Table) -> list[str]:
    """Of who is there."""
    before = {(row.type, row.text): row for row in old.rows()}
    found = []
    for row in new.rows():
        was = before.pop((row.type, row.text), None)
        if was is None:
            found.append(f"{row.type} {row.text}: not asked before")
            continue
        cells = {table.OWN: row.own, "RFC 8294": row.standard} | row.cells
        then = {table.OWN: was.own, "RFC 8294": was.standard} | was.cells
        found += [
            f"{row.type} {row.text}, {name}: {cell}, was {then.get(name)}"
            for name, cell in cells.items()
            if cell != then.get(name) and new.speakers.get(name) != ""
        ]
    return found + [f"{kind} {text}: not asked any more" for kind, text in before]


def changed_facts(old: dict, new: dict) -> list[str]:
    """Versions and proofs."""
    names = [name for name in new if name != "types"]
    return [f"{name}: {new[name]}, was {old.get(name)}" for name in names if new[name] != old.get(name)]


def changes(new: table.Table) -> list[str]:
    old = table.load()
    missing = [name for name, version in new.speakers.items() if version == ""]
    for name in missing:
        print(f"{name} is not there: its column is not compared")
    return changed_cells(old, new) + ([] if missing else changed_facts(old.data, new.data))


def main() -> int:
    parser = argparse.ArgumentParser(prog="./interop", description=__doc__.split(": ", 1)[1])
    parser.add_argument("build", type=Path, help=argparse.SUPPRESS)
    parser.add_argument("--renew", action="store_true", help="write the table anew, and what is made of it")
    options = parser.parse_args()
    began = time.monotonic()
    data = gathered(Tool(options.build))
    whole = table.Table(data)
    if options.renew:
        table.FILE.write_text(table.written(data))
        page.write(whole)
    changed = [] if options.renew else changes(whole)
    print("".join(line + "\n" for line in changed), end="")
    rows = whole.rows()
    print(
        f"proved: {len(rows)} texts of {len(data['types'])} types, "
        f"{sum(table.is_value(cell) for row in rows for cell in row.cells.values())} announcements; "
        f"{data['decoded_alike']} values decoded alike by tshark, {data['announced_again']} announced again alike; "
        f"{time.monotonic() - began:.0f} s"
    )
    if changed:
        print("the table is another now: read what changed, then ./interop --renew", file=sys.stderr)
    return 1 if changed else 0


if __name__ == "__main__":
    sys.exit(main())
