# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
"""Every vector through Python gives the same bytes, text and refusal."""
import collections
import sys

import pytest

import bgpdt
from vectors import read_vectors, status_codes


def lines(*verbs):
    return [line for line in read_vectors() if line.verb in verbs]


def text_in(line, index=0):
    """As Python has names of files: bytes that are no UTF-8 are lone surrogates."""
    return line.words[index].decode("utf-8", "surrogateescape")


def cls(line):
    return getattr(bgpdt, line.type)


def padded(line, content):
    """What the type's values have behind a shorter delivery, a host's string."""
    return content.ljust(bgpdt.describe(line.type).size, b"\0")


def tried(count, least, what):
    """Each test tells how much it tried, and cannot pass by trying nothing."""
    assert count >= least, count
    print(f"proved: {count} {what} of the vectors")


def test_accepted_texts_give_the_bytes():
    count = 0
    for line in lines("in"):
        text, content = line.words
        for mode in line.modes:
            if line.reports or b"\0" in text:
                continue
            value = bgpdt.parse(line.type, text_in(line), mode=mode)
            assert bytes(value) == padded(line, content), line.place
            count += 1
        if bgpdt.describe(line.type).mode in line.modes and b"\0" not in text and not line.reports:
            assert cls(line)(text_in(line)) == cls(line).from_bytes(padded(line, content)), line.place
    tried(count, 1000, "accepted texts")


def test_refused_texts_are_refused_with_the_status():
    count = 0
    for line in lines("bad"):
        for mode in line.modes:
            if line.words[1] == "0":  # the type has no values of text
                with pytest.raises(TypeError):
                    bgpdt.parse(line.type, text_in(line), mode=mode)
                continue
            with pytest.raises(bgpdt.Refusal) as caught:
                bgpdt.parse(line.type, text_in(line), mode=mode)
            if not line.reports and b"\0" not in line.words[0]:
                assert caught.value.status == status_codes()[line.words[1]], line.place
                count += 1
            assert caught.value.text == text_in(line)
    tried(count, 2000, "refused texts")


def test_texts_with_nul_are_refused():
    holding = [line for line in lines("in", "bad") if b"\0" in line.words[0]]
    assert holding
    for line in holding:
        assert isinstance(bgpdt.why(line.type, text_in(line)), bgpdt.Refusal), line.place


def test_values_print_the_text():
    count = 0
    for line in lines("out", "bare", "copy", "skip", "noout"):
        size = bgpdt.describe(line.type).size
        if len(line.words[0]) != size or line.reports or line.type == "ATTRIDBITMAP":
            continue  # a bitmap prints with its display record
        value = cls(line).from_bytes(line.words[0])
        for mode in line.modes:
            count += 1
            if line.verb == "bare" and not line.words[1]:
                with pytest.raises(bgpdt.Refusal):  # no text, and not even its end
                    value.text(mode)
            elif line.verb == "out":
                assert value.text(mode) == text_in(line, 1), line.place
            elif line.verb == "bare" and isinstance(value.text(mode), bytes):
                assert value.text(mode) == line.words[1], line.place
            elif line.verb == "copy" and line.type != "CVRFNAME":
                assert value.text(mode) == cls(line).from_bytes(line.words[1]).to_bytes(sys.byteorder), line.place
            elif line.verb in ("skip", "noout"):
                with pytest.raises(bgpdt.Refusal):
                    value.text(mode)
    tried(count, 800, "printed values")


def test_check_and_compare():
    count = 0
    for line in lines("check"):
        if len(line.words[0]) == bgpdt.describe(line.type).size and "check" in bgpdt.describe(line.type).operations:
            value = cls(line).from_bytes(line.words[0])
            count += 1
            if line.words[1] == "0":
                assert value.check() is None, line.place
            else:
                with pytest.raises(bgpdt.Refusal):
                    value.check()
    for line in lines("cmp"):
        if len(line.words[0]) != bgpdt.describe(line.type).size:
            continue
        first, second = (cls(line).from_bytes(word) for word in line.words[:2])
        count += 1
        if line.words[2] in ("-1", "0", "1"):
            assert first.compare(second) == int(line.words[2]), line.place
        else:
            with pytest.raises(bgpdt.Refusal):
                first.compare(second)
    tried(count, 400, "checks and comparisons")


def test_tables():
    count = collections.Counter()
    for line in lines("get", "noget"):
        read = cls(line).from_dict
        if line.verb == "get":
            if len(line.words[1]) == bgpdt.describe(line.type).size:
                assert bytes(read(line.words[0])) == line.words[1], line.place
                count["get"] += 1
        elif line.words[2] is None or len(line.words[2]) == bgpdt.describe(line.type).size:
            with pytest.raises(bgpdt.Refusal):
                read(line.words[0])
            count["noget"] += 1
    for line in lines("set"):
        if len(line.words[0]) == bgpdt.describe(line.type).size:
            assert cls(line).from_bytes(line.words[0]).to_dict() == line.words[1], line.place
            count["set"] += 1
    tried(sum(count.values()), 600, "script tables")
    assert min(count.values()) > 100


def test_swap():
    for line in lines("swap"):
        if line.type == "BGPLSPREFIX":
            continue  # one side is a key of the other byte order, whose route type no field table knows
        if len(line.words[0]) == bgpdt.describe(line.type).size and "swap" in bgpdt.describe(line.type).operations:
            assert bytes(cls(line).from_bytes(line.words[0]).swapped()) == line.words[1], line.place


def test_columns_say_what_single_texts_say():
    for cls_ in bgpdt.types():
        texts = [text_in(line) for line in lines("in", "bad") if line.type == cls_.__name__]
        if "parse" not in bgpdt.describe(cls_).operations:
            continue
        if cls_ is bgpdt.L2VPNPREFIX:
            continue  # its parser takes texts, and gives no values
        column = bgpdt.parse_many(cls_, texts)
        singles = [None if bgpdt.why(cls_, text) else cls_(text) for text in texts]
        assert list(column) == singles
        assert column.refused == [row for row, value in enumerate(singles) if value is None]
        assert all(column.refusal(row).text == texts[row] for row in column.refused)
        if "print" in bgpdt.describe(cls_).operations:
            printed = list(bgpdt.print_many(cls_, column))
            assert printed == [None if value is None else utf8_text(value) for value in singles]
        assert list(bgpdt.explain_many(cls_, column)) == [None if v is None else column_fields(v) for v in singles]


def utf8_text(value):
    """None for a value that does not print, or with bytes that are no UTF-8."""
    try:
        value.text().encode()
        return value.text()
    except (bgpdt.Refusal, UnicodeEncodeError):
        return None


def column_fields(value):
    """A column's fields have one type each: what is no number in some values is text in all."""
    known = {row: field for row, field in bgpdt.explain_many(type(value), [value])[0].items()}
    fields = {name: content for name, content in value.fields().items() if name in known}
    return {name: type(known[name])(content) for name, content in fields.items()}
