# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
"""Columns of lists and iterators; Arrow's own are tried where there are libraries that speak it."""
import gc
import random
import threading

import pytest

import bgpdt

TEXTS = ["64496:1", "64496:x", None, "192.0.2.1:7", "1.15:100", ""]


def test_values_of_texts():
    column = bgpdt.parse_many("VRFRD", TEXTS)
    assert list(column) == [bgpdt.VRFRD("64496:1"), None, None, bgpdt.VRFRD("192.0.2.1:7"), bgpdt.VRFRD("1.15:100"), None]
    assert (len(column), column.null_count, column.refused, column.type) == (6, 3, [1, 5], bgpdt.VRFRD)
    assert column[-3] == bgpdt.VRFRD("192.0.2.1:7")
    assert repr(column) == "<bgpdt.Column of 6 rows of VRFRD, 2 refused>"
    for row in (6, -7):
        with pytest.raises(IndexError):
            column[row]


def test_reasons():
    column = bgpdt.parse_many("VRFRD", TEXTS)
    assert column.refusal(1).text == "64496:x" and column.refusal(1).position == 6
    for row in (0, 2, 99):
        with pytest.raises(KeyError):
            column.refusal(row)
    reasons = list(column.reasons())
    assert reasons == [None, bgpdt.why("VRFRD", "64496:x").message, None, None, None, bgpdt.why("VRFRD", "").message]
    with pytest.raises(TypeError):
        bgpdt.print_many("VRFRD", column).reasons()


def test_texts_of_values():
    values = bgpdt.parse_many("VRFRD", TEXTS)
    assert list(bgpdt.print_many("VRFRD", values)) == ["64496:1", None, None, "192.0.2.1:7", "1.15:100", None]
    mixed = [bgpdt.VRFRD("64496:1"), bytes(bgpdt.VRFRD("64496:2")), None, b"short", b"\xff" * 12]
    column = bgpdt.print_many(bgpdt.VRFRD, mixed)
    assert list(column) == ["64496:1", "64496:2", None, None, None] and column.refused == [3, 4]


def test_long_texts_have_room():
    text = " ".join(["4294967295"] * 256)
    values = bgpdt.parse_many("ASNUM_ENHANCE", [text] * 100)
    assert list(bgpdt.print_many("ASNUM_ENHANCE", values)) == [text] * 100


def test_fields_of_values():
    values = bgpdt.parse_many("VRFRD", TEXTS)
    column = bgpdt.explain_many("VRFRD", values, ["assigned number", "administrator"])
    assert list(column)[:2] == [{"administrator": "64496", "assigned number": 1}, None]
    assert list(bgpdt.explain_many("VRFRD", [b"short"])) == [None]
    keys = bgpdt.parse_many("EVNPREFIX", ["100:32:192.0.2.1", "100:192.0.2.0:24"])
    first, second = bgpdt.explain_many("EVNPREFIX", keys)
    assert first["originator"] == "192.0.2.1" and "prefix" not in first and second["prefix length"] == 24
    with pytest.raises(KeyError, match="no value of VRFRD has a field nothing"):
        bgpdt.explain_many("VRFRD", values, ["nothing"])


def test_anything_that_can_be_walked_through():
    texts = ["64496:1", "64496:2"]
    expected = [bgpdt.VRFRD(text) for text in texts]
    for column in (texts, tuple(texts), iter(texts), (text for text in texts), dict.fromkeys(texts)):
        assert list(bgpdt.parse_many("VRFRD", column)) == expected
    assert list(bgpdt.parse_many("VRFRD", [])) == []
    assert list(bgpdt.parse_many("VRFRD", [float("nan"), None])) == [None, None]


@pytest.mark.parametrize("column", ["64496:1", b"64496:1", 7, None, ["64496:1", 7], [b"64496:1"], [["64496:1"]], [1.5]])
def test_what_is_no_column(column):
    with pytest.raises(TypeError):
        bgpdt.parse_many("VRFRD", column)


def test_many_chunks():
    rows = [f"{64496 + i % 16}:{i}" if i % 7 else ("x" if i % 2 else None) for i in range(50_001)]
    column = bgpdt.parse_many("VRFRD", rows)
    assert [None if value is None else str(value) for value in column] == [row if row and row != "x" else None for row in rows]
    assert column.refused == [i for i, row in enumerate(rows) if row == "x"]
    assert list(bgpdt.print_many("VRFRD", column)) == [row if row != "x" else None for row in rows]


def test_a_mode():
    assert bgpdt.parse_many("VRFRD", ["64496:1"], mode=4).refused == [0]
    assert "mode 4" in bgpdt.parse_many("VRFRD", ["64496:1"], mode=4).reasons()[0]


def test_a_list_that_changes_meanwhile():
    texts = ["64496:1"] * 200_000
    stop = threading.Event()

    def change():
        while not stop.is_set():
            texts[random.randrange(len(texts))] = random.choice(["192.0.2.1:1", "x", None])
            if random.random() < 0.01:
                del texts[random.randrange(1, len(texts)):]
                texts.extend(["64496:2"] * 100_000)

    thread = threading.Thread(target=change)
    thread.start()
    try:
        for _ in range(20):
            column = bgpdt.parse_many("VRFRD", texts)
            assert all(value is None or type(value) is bgpdt.VRFRD for value in column)
    finally:
        stop.set()
        thread.join()


def test_a_column_outlives_what_made_it():
    column = bgpdt.parse_many("VRFRD", ["64496:1"])
    schema, array = column.__arrow_c_array__()
    stream = column.__arrow_c_stream__()
    del column, schema
    gc.collect()
    assert repr(array) and repr(stream)


def test_names_stay_while_columns_are_converted(tmp_path):
    names = tmp_path / "names"
    names.write_text("7 red\n")
    texts = ["7", "red"] * 200_000
    refused = []

    def load():
        for _ in range(200):
            try:
                bgpdt.load_names(names)
            except RuntimeError as error:
                refused.append(str(error))

    bgpdt.load_names(names)
    thread = threading.Thread(target=load)
    thread.start()
    for _ in range(5):
        assert bgpdt.parse_many("PDID2PDNAME", texts).refused == []
    thread.join()
    assert all("other threads convert columns" in sentence for sentence in refused)


def test_printed_texts_are_utf8():
    """A name of bytes that are no UTF-8 is a str, as Python has names of files, but no row of a column of texts."""
    names = [b"red", b"\xff", b"\xc3\xa9", b"\xed\xa0\x80", b"\xc0\x80", b"\xf0\x9f\x98\x80", b"\xf4\x90\x80\x80", b"\xe4\xb8"]
    values = [bgpdt.CVRFNAME.from_bytes(name.ljust(32, b"\0")) for name in names]

    def decoded(name):
        try:
            return name.decode()
        except UnicodeDecodeError:
            return None

    assert list(bgpdt.print_many("CVRFNAME", values)) == [decoded(name) for name in names]
    assert [str(value).encode("utf-8", "surrogateescape") for value in values] == names
    assert bgpdt.print_many("CVRFNAME", values).refused == [row for row, name in enumerate(names) if not decoded(name)]
