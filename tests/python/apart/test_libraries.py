# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
"""Columns of pyarrow, polars, DuckDB, pandas and NumPy go in as they are, and come out as their own."""
import duckdb
import numpy
import pandas
import polars
import pyarrow
import pyarrow.compute
import pytest

import bgpdt

LONG = "64496:00000000000001"  # longer than what a view holds in itself
TEXTS = ["64496:1", "x", None, "192.0.2.1:7", LONG, "", "0064496:1", "\u00e9"]
VALUES = [bgpdt.VRFRD(text) if text and bgpdt.why("VRFRD", text) is None else None for text in TEXTS]
BYTES = [None if value is None else bytes(value) for value in VALUES]
REFUSED = [1, 5, 7]

ARROW = {
    "string": pyarrow.array(TEXTS),
    "large": pyarrow.array(TEXTS, pyarrow.large_string()),
    "view": pyarrow.array(TEXTS, pyarrow.string_view()),
    "binary": pyarrow.array(TEXTS).cast(pyarrow.binary()),
    "large binary": pyarrow.array(TEXTS, pyarrow.large_string()).cast(pyarrow.large_binary()),
    "dictionary": pyarrow.array(TEXTS).dictionary_encode(),
    "dictionary of small numbers": pyarrow.DictionaryArray.from_arrays(
        pyarrow.array([0, 1, None, 2, 3, 4, 5, 6], pyarrow.uint8()), pyarrow.array([t for t in TEXTS if t is not None])),
    "slice": pyarrow.array(["64496:9", None, *TEXTS, "64496:9"])[2:-1],
    "slice of views": pyarrow.array(["64496:9", None, *TEXTS, "64496:9"], pyarrow.string_view())[2:-1],
    "slice of a dictionary": pyarrow.array(["64496:9", None, *TEXTS, "64496:9"]).dictionary_encode()[2:-1],
    "chunks": pyarrow.chunked_array([TEXTS[:1], [], TEXTS[1:5], TEXTS[5:]], pyarrow.string()),
    "table": pyarrow.table({"rd": TEXTS}),
    "polars": polars.Series(TEXTS),
    "polars categories": polars.Series(TEXTS, dtype=polars.Categorical),
    "polars frame": polars.DataFrame({"rd": TEXTS}),
    "pandas": pandas.Series(TEXTS),
    "pandas objects": pandas.Series(TEXTS, dtype=object),
    "pandas categories": pandas.Series(TEXTS).astype("category"),
    "pandas on Arrow": pandas.Series(TEXTS, dtype=pandas.ArrowDtype(pyarrow.string())),
    "numpy objects": numpy.array(TEXTS, dtype=object),
    "duckdb": duckdb.sql("select unnest(?) as rd", params=[TEXTS]),
}


@pytest.mark.parametrize("name", ARROW)
def test_texts_go_in(name):
    column = bgpdt.parse_many("VRFRD", ARROW[name])
    assert list(column) == VALUES and column.refused == REFUSED


def test_numpy_texts_go_in():
    texts = [text or "" for text in TEXTS]
    expected = [None if text == "" else value for text, value in zip(texts, VALUES)]
    assert list(bgpdt.parse_many("VRFRD", numpy.array(texts))) == expected
    assert list(bgpdt.parse_many("VRFRD", numpy.array(texts, numpy.dtypes.StringDType()))) == expected


def test_nothing_but_nulls_and_nothing_at_all():
    assert list(bgpdt.parse_many("VRFRD", pyarrow.nulls(3))) == [None] * 3
    for empty in (pyarrow.array([], pyarrow.string()), pyarrow.chunked_array([], pyarrow.string()),
                  polars.Series([], dtype=polars.String), pyarrow.array(TEXTS)[3:3]):
        assert list(bgpdt.parse_many("VRFRD", empty)) == []


@pytest.mark.parametrize("column", [pyarrow.array([1, 2]), pyarrow.array([["1:1"]]), pyarrow.table({"a": TEXTS, "b": TEXTS}),
                                    polars.Series([1.5]), numpy.array([1, 2]), numpy.array([["1:1"]])])
def test_what_is_no_column_of_texts(column):
    with pytest.raises(TypeError):
        bgpdt.parse_many("VRFRD", column)


def test_values_come_out():
    column = bgpdt.parse_many("VRFRD", TEXTS)
    assert pyarrow.array(column).to_pylist() == BYTES and pyarrow.array(column).type == pyarrow.binary(12)
    assert polars.Series(column).cast(polars.Binary).to_list() == BYTES
    assert [bytes(row) for row in numpy.asarray(column)] == [row or bytes(12) for row in BYTES]
    values = pyarrow.table({"rd": pyarrow.array(column)})
    assert [row for row, in duckdb.sql("select rd from values").fetchall()] == BYTES
    assert pandas.Series(pyarrow.array(column), dtype=pandas.ArrowDtype(pyarrow.binary(12))).to_list()[0] == BYTES[0]


@pytest.mark.parametrize("values", [
    pyarrow.array(BYTES, pyarrow.binary(12)), pyarrow.array(BYTES), pyarrow.array(BYTES, pyarrow.large_binary()),
    pyarrow.array([b"", *BYTES], pyarrow.binary_view())[1:], polars.Series(BYTES), pandas.Series(BYTES, dtype=object),
    bgpdt.parse_many("VRFRD", TEXTS), BYTES, VALUES])
def test_values_go_in(values):
    texts = [None if value is None else str(value) for value in VALUES]
    printed = bgpdt.print_many("VRFRD", values)
    assert list(printed) == pyarrow.array(printed).to_pylist() == polars.Series(printed).to_list() == texts
    fields = bgpdt.explain_many("VRFRD", values, ["administrator", "assigned number"])
    assert pyarrow.array(fields).to_pylist() == list(fields) == [
        value and {"administrator": str(value.administrator), "assigned number": value.assigned_number} for value in VALUES]


def test_values_of_numpy_go_in():
    array = numpy.asarray(bgpdt.parse_many("VRFRD", ["64496:1", "64496:2"]))
    assert list(bgpdt.print_many("VRFRD", array)) == ["64496:1", "64496:2"]


def test_fields_are_a_table():
    fields = bgpdt.explain_many("VRFRD", bgpdt.parse_many("VRFRD", TEXTS))
    assert pyarrow.table(fields)["assigned number"].to_pylist() == [v and v.assigned_number for v in VALUES]
    assert polars.DataFrame(fields)["assigned number"].sum() == sum(v.assigned_number for v in VALUES if v)
    assert duckdb.sql('select sum("assigned number") from fields').fetchall() == [
        (sum(v.assigned_number for v in VALUES if v),)]


def test_no_fields_at_all():
    nothing = bgpdt.explain_many("VRFRD", [bytes(12), None], [])
    assert list(nothing) == pyarrow.array(nothing).to_pylist() == [{}, None]


def test_columns_outlive_what_they_came_from():
    array = pyarrow.array(bgpdt.parse_many("VRFRD", TEXTS))
    again = pyarrow.array(bgpdt.explain_many("VRFRD", array))
    array.validate(full=True), again.validate(full=True)
    assert again.field("assigned number").to_pylist() == [v and v.assigned_number for v in VALUES]


def test_arrays_are_sound():
    for cls in bgpdt.types():
        info = bgpdt.describe(cls)
        values = [bytes(info.size), None, b"\xff" * info.size, b""]
        pyarrow.array(bgpdt.explain_many(cls, values)).validate(full=True)
        if "print" in info.operations:
            pyarrow.array(bgpdt.print_many(cls, values)).validate(full=True)
        if "parse" in info.operations and info.grammar:
            pyarrow.array(bgpdt.parse_many(cls, [*info.samples, None, "?"])).validate(full=True)
            pyarrow.array(bgpdt.parse_many(cls, [*info.samples, None, "?"]).reasons()).validate(full=True)


def test_what_others_change_meanwhile_does_not_break_it():
    """A buffer of Arrow's is not to change; if it does, that is an error or other values, never a crash."""
    memory = bytearray(numpy.arange(0, 8 * 20_001, 8, dtype=numpy.int32).tobytes())
    offsets, texts = pyarrow.py_buffer(memory), pyarrow.py_buffer(b"64496:01" * 20_000)
    array = pyarrow.Array.from_buffers(pyarrow.string(), 20_000, [None, offsets, texts])
    assert bgpdt.parse_many("VRFRD", array).refused == []
    for broken in (b"\xff\xff\xff\x7f", b"\xff\xff\xff\xff"):
        memory[40_000:40_004] = broken
        with pytest.raises(RuntimeError, match="offsets of an Arrow array make no sense"):
            bgpdt.parse_many("VRFRD", array)


def test_a_stream_that_ends_with_an_error():
    def batches():
        yield pyarrow.record_batch({"rd": ["64496:1"]})
        raise OSError("the disk is gone")

    reader = pyarrow.RecordBatchReader.from_batches(pyarrow.schema({"rd": pyarrow.string()}), batches())
    with pytest.raises(RuntimeError, match="the disk is gone"):
        bgpdt.parse_many("VRFRD", reader)
