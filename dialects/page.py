# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
"""page.py: docs/dialects.md and the rows that the toolkit holds, made of table.json alone."""

import json
from pathlib import Path

import table
from table import ALIKE, CLAMPS, FAILS, OTHER, OWN, PARTLY, WRAPS, Row, Table

TOP = Path(__file__).resolve().parent.parent
FILE = TOP / "docs" / "dialects.md"
ROWS = TOP / "toolkit" / "dialects_table.inc"
EXPLANATIONS = Path(__file__).with_name("explanations.json")
GROUPS = {
    CLAMPS: (
        "Clamps",
        "A number that does not fit becomes the largest that does. Two texts that differ then are one value: a target\n"
        "that was to be private joins whatever else was clamped to it.",
    ),
    WRAPS: (
        "Wraps",
        "Of a number that does not fit the low 16 or 32 bits are kept: a text becomes the value of quite another one.",
    ),
    OTHER: (
        "Reads otherwise",
        "The text is taken for another notation, another type or another number.",
    ),
    FAILS: (
        "Fails",
        "`ends`: the speaker does not survive the text. `no answer`: it neither takes nor refuses it, since its interface\n"
        "fails; a program that waits for the answer waits for ever.",
    ),
    PARTLY: (
        "Refused by some",
        "Who takes the text reads it alike. What is taken here and refused there breaks when it is copied, but loudly.",
    ),
}
VERBS = {CLAMPS: "clamps", WRAPS: "wraps", OTHER: "reads otherwise"}


def code(text: str) -> str:
    return f"`{text}`"


def markdown(heads: list[str], rows: list[list[str]]) -> str:
    lines = [heads, ["---"] * len(heads), *rows]
    return "".join("| " + " | ".join(cell.replace("|", "\\|") for cell in line) + " |\n" for line in lines)


def counted(count: int, what: str) -> str:
    return f"{count} {what}" + ("" if count == 1 else "s")


def shown_value(row: Row, cell: str) -> str:
    """Its bytes, and what they mean."""
    meaning = table.meaning(row.type, cell)
    change = table.change_of(row.type, row.text, cell)
    return code(cell) + (f"<br>{meaning}" if meaning else "") + (f", **{VERBS[change]}**" if change else "")


def shown_cell(row: Row, cell: str) -> str:
    if cell == "no syntax":
        return "-"
    if not table.is_value(cell):
        return cell
    return "same" if cell == row.own else shown_value(row, cell)


def shown_own(row: Row) -> str:
    return code(row.own) if table.is_value(row.own) else row.own.replace("no syntax", "takes no text")


def row_cells(row: Row) -> list[str]:
    return [
        row.type,
        code(row.text),
        shown_own(row),
        *(shown_cell(row, cell) for cell in row.cells.values()),
        row.standard,
    ]


def heads(whole: Table) -> list[str]:
    return ["type", "text", OWN, *whole.speakers, "RFC 8294"]


def in_short(whole: Table) -> str:
    """What each speaker does to texts, and how often."""
    lines = []
    for name in whole.speakers:
        for change in VERBS:
            rows = [
                row
                for row in whole.rows()
                if table.is_value(row.cells[name]) and table.change_of(row.type, row.text, row.cells[name]) == change
            ]
            if rows:
                first = rows[0]
                becomes = table.meaning(first.type, first.cells[name])
                lines.append(
                    f"- **{name} {VERBS[change]}** {counted(len(rows), 'text')}: the {whole.about(first.type)} {code(first.text)} is "
                    f"announced as {code(becomes)}"
                )
        ends = [row for row in whole.rows() if row.cells[name] == "ends"]
        if ends:
            lines.append(f"- **{name} ends** at the {whole.about(ends[0].type)} {code(ends[0].text)}")
    return ";\n".join(lines) + ".\n"


def counts(whole: Table) -> str:
    kinds = [ALIKE, CLAMPS, WRAPS, OTHER, FAILS, PARTLY]
    lines = []
    for kind in whole.types():
        found = [row.kind() for row in whole.rows_of(kind) if row.asked()]
        if found:
            numbers = (len(found), *(found.count(each) for each in kinds))
            lines.append([f"[{kind}](types/{kind}.md)", whole.about(kind), *map(str, numbers)])
    sums = [str(sum(int(line[column]) for line in lines)) for column in range(2, 3 + len(kinds))]
    return markdown(["type", "", "texts", *kinds], [*lines, ["", "all", *sums]])


def agreement(whole: Table) -> str:
    """Of each speaker: how often it answers as we do."""
    lines = []
    for name in whole.speakers:
        asked = [row for row in whole.rows() if row.cells[name] not in table.ABSENT]
        both = [row for row in asked if table.is_value(row.own) and table.is_value(row.cells[name])]
        same = [row for row in both if row.own == row.cells[name]]
        taken = sum(table.is_value(row.cells[name]) for row in asked)
        lines.append([name, *map(str, (len(asked), taken, len(both), len(same)))])
    return markdown(["speaker", "texts", "taken", f"taken by {OWN} too", "with the same bytes"], lines)


def spelling(whole: Table) -> str:
    lines = [[kind, *(code(line) if line else "-" for line in whole.written(kind).values())] for kind in whole.types()]
    return markdown(["type", *whole.speakers], lines)


def explained(whole: Table) -> str:
    """Where nobody reads a text as we do."""
    rows = {(row.type, row.text): row for row in whole.rows()}
    parts = []
    for each in json.loads(EXPLANATIONS.read_text()):
        listed = [row_cells(rows[each["type"], text]) for text in each["texts"] if (each["type"], text) in rows]
        parts.append(f"{each['why']}\n\n{markdown(heads(whole), listed)}")
    return "\n".join(parts)


def alike(whole: Table) -> str:
    rows = [row for row in whole.rows() if row.kind() == ALIKE]
    taken = [[row.type, code(row.text), code(row.own)] for row in rows if table.is_value(row.own)]
    text = markdown(["type", "text", "bytes"], taken) + "\nRefused by all who can be asked:\n\n"
    for kind in whole.types():
        refused = [code(row.text) for row in rows if row.type == kind and not table.is_value(row.own)]
        if refused:
            text += f"- {kind}: {', '.join(refused)}\n"
    return text


def proof(whole: Table) -> str:
    data = whole.data
    text = (
        f"{data['decoded_alike']} values that the speakers announced were decoded here and by tshark {data['decoder']}, with the\n"
        f"same fields. {data['announced_again']} texts that are printed here of what a speaker announced were taken back by it, and gave\n"
        "the same bytes.\n"
    )
    if data["decoded_otherwise"]:
        text += "\nDecoded otherwise by tshark:\n\n" + "".join(f"- {line}\n" for line in data["decoded_otherwise"])
    if data["announced_otherwise"]:
        lines = [
            [name, kind, code(text), code(value), code(got)]
            for name, kind, text, value, got in data["announced_otherwise"]
        ]
        text += "\nWhat is printed here of a speaker's bytes, and does not give these bytes there:\n\n"
        text += markdown(["speaker", "type", "printed here", "its bytes", "its answer"], lines)
    return text


def written(whole: Table) -> str:
    speakers = ", ".join(f"{name} {version}" for name, version in whole.speakers.items())
    unasked = [row for row in whole.rows() if not row.asked()]
    text = f"""# How others read the same text

A wrong route distinguisher or target joins two networks that should never meet. Whether a text is wrong depends on who
reads it: this table tells how {speakers}
(as Debian 12 packages them) read {len(whole.rows()) - len(unasked)} texts of {len({row.type for row in whole.rows() if row.asked()})} types, and what they announce for them, byte by byte.
`./interop` asks them all anew and fails where a cell has changed. `bgpdt explain --dialects TYPE TEXT` shows the row of a
text, or of the one most like it.

{in_short(whole)}
## What was asked

{counts(whole)}
Each row counts once, under the most dangerous thing that happens to it.

{agreement(whole)}
In the tables below, `same` are the bytes that {OWN} has, `-` is what a speaker has no words for, `nothing` is taken and not
announced (of `no-advertise` as it should be). Bytes are those on the wire, of an EVPN route those from its type on without
route distinguisher, label and length. RFC 8294 is what the patterns of the YANG module `ietf-routing-types` say; its raw
form is a type and a value in hexadecimal ([more](rfc8294.md)).

"""
    for kind, (head, words) in GROUPS.items():
        rows = [row_cells(row) for row in whole.rows() if row.kind() == kind and row.asked()]
        if rows:
            text += f"## {head}\n\n{words}\n\n{markdown(heads(whole), rows)}\n"
    text += f"## Where {OWN} differs from all others\n\n{explained(whole)}\n"
    text += f"## Read alike by all\n\n{alike(whole)}\n"
    text += f"## How each is told\n\nTEXT stands for the text.\n\n{spelling(whole)}\n"
    if unasked:
        none = "; ".join(f"{row.type}, such as {code(row.text)}" for row in unasked)
        text += f"None of them has words for: {none}.\n\n"
    return text + f"## Both ways\n\n{proof(whole)}"


def literal(text: str) -> str:
    """As C++ writes it; JSON's escapes are its own."""
    return json.dumps(text)


def packed_cell(row: Row, cell: str) -> str:
    """For a value, which is hexadecimal, what it means and what became of the text's numbers."""
    if not table.is_value(cell):
        return cell
    change = table.change_of(row.type, row.text, cell)
    return "|".join((cell, table.meaning(row.type, cell), VERBS.get(change, ""))).rstrip("|")


def toolkit_rows(whole: Table) -> str:
    text = "// SPDX-FileCopyrightText: 2026 The bgpdt authors\n// SPDX-License-Identifier: Apache-2.0\n"
    text += "// Made by dialects/page.py of dialects/table.json.\nconstexpr Speaker speakers[] = {\n"
    text += "".join(f"    {{{literal(name)}, {literal(version)}}},\n" for name, version in whole.speakers.items())
    text += "};\nconstexpr std::string_view rows[] = {\n"
    for row in whole.rows():
        cells = [packed_cell(row, cell) for cell in (row.own, *row.cells.values())]
        text += f"    {literal(chr(9).join((row.type, row.text, *cells, row.standard)))},\n"
    return text + "};\n"


def made(whole: Table) -> dict[Path, str]:
    """What is written of the table, by file."""
    return {FILE: written(whole), ROWS: toolkit_rows(whole)}


def write(whole: Table) -> None:
    for file, text in made(whole).items():
        file.write_text(text)


if __name__ == "__main__":
    write(table.load())
