# SPDX-License-Identifier: Apache-2.0
"""Spark: columns of texts to columns of values, in every executor. The package has to be installed where they run.

A refused row is no error: it has no value, and its reason.
"""
from collections.abc import Callable, Iterator, Sequence
from typing import TYPE_CHECKING, Any

import pyarrow

import bgpdt

if TYPE_CHECKING:
    from pyspark.sql import Column, DataFrame

_ARROW_TYPES = {pyarrow.uint64(): "decimal(20,0)"}  # Spark has no numbers without a sign


def _spark_type(kind: pyarrow.DataType) -> str:
    return _ARROW_TYPES.get(kind, "string")


def _fields_column(name: str, values: Any, fields: Sequence[str]) -> pyarrow.StructArray:
    """The fields in the order asked for, of kinds that Spark has."""
    explained = pyarrow.array(bgpdt.explain_many(name, values, fields))
    kinds = [pyarrow.decimal128(20) if explained.type.field(field).type == pyarrow.uint64() else pyarrow.string()
             for field in fields]
    return [explained.field(field).cast(kind) for field, kind in zip(fields, kinds)]


def _columns(name: str, texts: Any, mode: int | None, fields: Sequence[str]) -> list[Any]:
    parsed = bgpdt.parse_many(name, texts, mode)
    return [pyarrow.array(parsed).cast(pyarrow.binary()), pyarrow.array(parsed.reasons()).cast(pyarrow.string()),
            *(_fields_column(name, parsed, fields) if fields else [])]


def _kinds(name: str, fields: Sequence[str]) -> list[str]:
    if not fields:
        return []
    explained = pyarrow.array(bgpdt.explain_many(name, [], fields)).type
    return [_spark_type(explained.field(field).type) for field in fields]


def with_values(frame: "DataFrame", column: str, type: str, *, value: str = "value", reason: str = "reason",
                fields: Sequence[str] = (), mode: int | None = None) -> "DataFrame":
    """The frame with the values of a column of texts, the reasons of those that are refused, and fields by their names."""
    names = [value, reason, *fields]

    def convert(batches: Iterator[pyarrow.RecordBatch]) -> Iterator[pyarrow.RecordBatch]:
        for batch in batches:
            added = _columns(type, batch.column(column), mode, fields)
            yield pyarrow.RecordBatch.from_arrays([*batch.columns, *added], [*batch.schema.names, *names])

    from pyspark.sql.types import StructType, _parse_datatype_string

    added = StructType.fromDDL(", ".join(f"`{name}` {kind}" for name, kind in
                                         zip(names, ["binary", "string", *_kinds(type, fields)])))
    return frame.mapInArrow(convert, StructType([*frame.schema.fields, *added.fields]))


def value_of(type: str, mode: int | None = None) -> "Callable[[Column], Column]":
    """A function of columns: a text to a struct of its value and, if it is refused, the reason."""
    from pyspark.sql.functions import arrow_udf

    def convert(texts: pyarrow.Array) -> pyarrow.Array:
        return pyarrow.StructArray.from_arrays(_columns(type, texts, mode, ()), ["value", "reason"])

    return arrow_udf(convert, "value binary, reason string")
