# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
"""Reads the vectors as far as Python can try them: the lines about registered types. vectors/README.md tells their
grammar."""
import functools
import re
from dataclasses import dataclass, field
from pathlib import Path

FOLDER = Path(__file__).resolve().parent.parent / "vectors"
HOST_HEADER = FOLDER.parent.parent / "include" / "bgp_datatype" / "host.h"
ESCAPES = {"t": b"\t", "n": b"\n", "r": b"\r", '"': b'"', "\\": b"\\"}


@dataclass
class Line:
    place: str
    type: str
    verb: str
    modes: list[int]
    words: list = field(default_factory=list)  # texts and bytes as bytes, tables as Python has them, other words
    marked: bool = False
    reports: bool = False  # behind a line `reports`: the host hands it over as another type's


def logical_lines(path):
    """Lines without comments, those that go on joined."""
    joined, number = "", 0
    for count, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
        line = re.match(r'\s*((?:[^"#]|"(?:[^"\\]|\\.)*")*)', line).group(1).rstrip()
        number = number or count
        if line.endswith("\\"):
            joined += line[:-1]
            continue
        if (joined + line).strip():
            yield number, joined + line
        joined, number = "", 0


def repeat(content, rest):
    """What stands there as often as a `*3` behind it tells, and what is left."""
    times = re.match(r"\*(\d+)", rest)
    return (content * int(times[1]), rest[times.end():]) if times else (content, rest)


def unescaped(quoted):
    parts = re.findall(rb"\\x([0-9a-fA-F]{2})|\\(.)|([^\\])", quoted, re.DOTALL)
    return b"".join(bytes.fromhex(x.decode()) if x else ESCAPES[e.decode()] if e else c for x, e, c in parts)


def take_text(rest):
    text = b""
    while rest.startswith('"'):
        quoted = re.match(r'"((?:[^"\\]|\\.)*)"', rest)
        piece, rest = repeat(unescaped(quoted[1].encode()), rest[quoted.end():])
        text += piece
    return text, rest


def take_bytes(rest):
    word, rest = re.match(r"(\S+)(.*)", rest, re.DOTALL).groups()
    return bytes_of(word), rest


def bytes_of(word):
    content, word = b"", word.strip("_")
    while word and word != "-":
        if word.startswith("("):
            end = word.index(")")
            piece, word = repeat(bytes_of(word[1:end]), word[end + 1:].lstrip("_"))
        else:
            digits = re.match(r"([0-9a-fA-F]{2})_*", word)
            piece, word = repeat(bytes.fromhex(digits[1]), word[digits.end():])
        content, word = content + piece, word.lstrip("_")
    return content


TABLE_WORD = re.compile(r'\s*(?:(nil|true|false)\b|([A-Za-z_]\w*)\s*=|(-?0x[0-9a-fA-F]+|-?\d+(?:\.\d+)?)|([{},]))')
CONSTANTS = {"nil": None, "true": True, "false": False}


class NotATable(Exception):
    """What JSON cannot say, such as a table with holes, or a string of bytes."""


def take_table(rest):
    rest = rest.lstrip()
    if rest.startswith('"'):
        text, rest = take_text(rest)
        try:
            return text.decode("utf-8"), rest
        except UnicodeDecodeError:
            raise NotATable(rest) from None
    word = TABLE_WORD.match(rest)
    if not word or word[2] or word[4] not in (None, "{"):
        raise NotATable(rest)
    rest = rest[word.end():]
    if word[1]:
        return CONSTANTS[word[1]], rest
    if word[3]:
        return (float(word[3]) if "." in word[3] else int(word[3], 0)), rest
    return take_entries(rest)


def take_entries(rest):
    """A table's, behind its brace: a list, or a dictionary."""
    array, fields = [], {}
    while not (rest := rest.lstrip(" ,")).startswith("}"):
        name = re.match(r"([A-Za-z_]\w*)\s*=", rest)
        value, rest = take_table(rest[name.end():] if name else rest)
        if name:
            fields[name[1]] = value
        else:
            values, rest = repeat([value], rest)
            array += values
    if array and fields:
        raise NotATable(rest)
    return (fields or array), rest[1:]


FORMS = {"in": "tb", "bad": "tw", "out": "bt", "bare": "bt", "copy": "bb", "skip": "b", "noout": "bww", "check": "bw",
         "cmp": "bbw", "set": "bv", "noset": "bw", "get": "vb", "noget": "vwo", "swap": "bb"}
TAKERS = {"t": take_text, "b": take_bytes, "v": take_table,
          "o": lambda rest: take_bytes(rest) if re.match("[0-9a-f(]", rest) else (None, rest),
         "w": lambda rest: re.match(r"(\S+)(.*)", rest, re.DOTALL).groups()}


def parse_line(line, rest):
    for kind in FORMS[line.verb]:
        word, rest = TAKERS[kind](rest.lstrip())
        line.words.append(word)
    line.marked = rest.strip().startswith("!")
    return line


@functools.cache
def read_vectors():
    lines = []
    for path in sorted(FOLDER.rglob("*.vec")):
        subject, reports = None, False
        for number, content in logical_lines(path):
            verb, _, rest = content.strip().partition(" ")
            verb, _, modes = verb.partition("@")
            if verb in ("type", "row"):
                subject, reports = (rest.strip() if verb == "type" else None), False
            elif verb == "reports":
                reports = True
            elif verb in FORMS and subject:
                line = Line(f"{path.name}:{number}", subject, verb, [int(m) for m in modes.split(",")] if modes else [2],
                            reports=reports)
                try:
                    lines.append(parse_line(line, rest))
                except NotATable:
                    continue
    return lines


@functools.cache
def status_codes():
    text = HOST_HEADER.read_text(encoding="utf-8")
    codes = {name: int(value, 0) for name, value in re.findall(r"\bSYSDT_ERR_(\w+)\s*(?:=\s*|\()?\s*(0x[0-9A-Fa-f]+)", text)}
    return codes | {"0": 0}
