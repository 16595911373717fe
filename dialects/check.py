# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
"""check.py BUILD: what holds of the table without any speaker. Its own column is what the tool answers now, that of RFC 8294
what the patterns say, the page is what the table says, the texts are those to ask, and every row in which nobody answers
as we do is explained."""

import json
import sys
from pathlib import Path

import page
import standard
import table
from ours import Tool


def stale_cells(whole: table.Table, tool: Tool) -> list[str]:
    stale = []
    for kind in whole.types():
        rows = whole.rows_of(kind)
        said = standard.cells(tool, kind, [row.text for row in rows])
        for row, cell in zip(rows, said):
            if row.own != (now := tool.verdict(kind, row.text)):
                stale.append(f"{kind} {row.text}: {now}, the table has {row.own}")
            if row.standard != cell:
                stale.append(f"{kind} {row.text}: RFC 8294 {cell}, the table has {row.standard}")
    return stale


def misread_values(whole: table.Table, tool: Tool) -> list[str]:
    """Values whose numbers the page tells otherwise than the tool prints them."""
    wrong = []
    for row in whole.rows():
        for cell in row.values():
            told = table.meaning(row.type, cell)
            if told and row.type != "EXTCOMMUNITY_BW" and tool.plain(row.type, cell) not in (told, None):
                wrong.append(f"{row.type} {cell}: the page has {told}")
    return wrong


def unexplained(whole: table.Table) -> list[str]:
    odd = {(row.type, row.text) for row in whole.rows() if row.own_is_odd()}
    told = [(each["type"], text) for each in json.loads(page.EXPLANATIONS.read_text()) for text in each["texts"]]
    return [f"{kind} {text}: no explanation" for kind, text in sorted(odd - set(told))] + [
        f"{kind} {text}: explained, but ours is not the odd one out" for kind, text in told if (kind, text) not in odd
    ]


def main() -> int:
    tool = Tool(Path(sys.argv[1]))
    whole = table.load()
    rows = whole.rows()
    wrong = stale_cells(whole, tool) + misread_values(whole, tool) + unexplained(whole)
    if [(row.type, row.text) for row in rows] != table.read_texts():
        wrong.append("texts.txt has other texts than the table: ./interop --renew")
    for file, text in page.made(whole).items():
        if file.read_text() != text:
            wrong.append(f"{file.relative_to(page.TOP)} is not what the table says: dialects/page.py")
    if "missing" in {cell for row in rows for cell in row.cells.values()} or "" in whole.speakers.values():
        wrong.append("a speaker was not there when the table was made")
    print("".join(line + "\n" for line in wrong), end="")
    odd = sum(row.own_is_odd() for row in rows)
    print(
        f"proved: the table of {len(rows)} texts is current, and the {odd} in which ours differs from all others are explained"
    )
    return 1 if wrong else 0


sys.exit(main())
