# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
"""Spark: columns of texts to columns of values, in every executor. The package has to be installed where they run.

A refused row is no error: it has no value, and its reason.
"""
import pyarrow

import bgpdt

_NUMBER = pyarrow.decimal128(20)  # Spark has no 64 bits without a sign
_SPARK_NAMES = {pyarrow.string(): "string", _NUMBER: "decimal(20,0)"}


def _kind_of(field):
    """The kind that a field has in Spark."""
    return _NUMBER if field.type == pyarrow.uint64() else pyarrow.string()


def _fields(name, values, fields):
    """Columns of the fields, in the order asked for."""
    if not fields:
        return []
    explained = pyarrow.array(bgpdt.explain_many(name, values, fields))
    return [explained.field(field).cast(_kind_of(explained.type.field(field))) for field in fields]


def _columns(name, texts, mode):
    """The values, as bgpdt has them, and the columns of values and reasons."""
    parsed = bgpdt.parse_many(name, texts, mode)
    return parsed, [pyarrow.array(parsed).cast(pyarrow.binary()), pyarrow.array(parsed.reasons()).cast(pyarrow.string())]


def with_values(frame, column, type, *, value="value", reason="reason", fields=(), mode=None):
    """The frame with the values of a column of texts, the reasons of those that are refused, and fields by their names."""
    from pyspark.sql.types import StructType

    names = [value, reason, *fields]
    kinds = ["binary", "string", *(_SPARK_NAMES[column.type] for column in _fields(type, [], fields))]

    def convert(batches):
        for batch in batches:
            parsed, added = _columns(type, batch.column(column), mode)
            columns = [*batch.columns, *added, *_fields(type, parsed, fields)]
            yield pyarrow.RecordBatch.from_arrays(columns, [*batch.schema.names, *names])

    added = StructType.fromDDL(", ".join(f"`{name}` {kind}" for name, kind in zip(names, kinds)))
    return frame.mapInArrow(convert, StructType([*frame.schema.fields, *added.fields]))


def value_of(type, mode=None):
    """A function of columns: a text to a struct of its value and, if it is refused, the reason."""
    from pyspark.sql.functions import arrow_udf

    def convert(texts):
        return pyarrow.StructArray.from_arrays(_columns(type, texts, mode)[1], ["value", "reason"])

    return arrow_udf(convert, "value binary, reason string")
